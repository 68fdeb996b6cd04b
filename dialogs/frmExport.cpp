#include "frmExport.h"

#include "CRangePrompt.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsgBox.h"
#include "Text.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {

constexpr char kSource[] = "frmExport";
constexpr char kErrorTitle[] = "Image Processing Error";
// How the dialog ends when the user asks to pick the range on the sheet.
constexpr int kPickRange = 2;

struct FormatOfFilter {
  const char* extension;
  int format, flags;
};
// By filter index, from 1.
const FormatOfFilter kFormats[] = {{".bmp", 0, 0},  {".emf", 99, 0}, {".gif", 25, 0},
                                   {".jpg", 2, 95}, {".png", 13, 0}, {".tif", 18, 16384}};

// Every "..", left to right, made ".".
std::string SingleDots(const std::string& name) {
  std::string out;
  for (size_t i = 0; i < name.size(); ++i) {
    out += name[i];
    if (name[i] == '.' && i + 1 < name.size() && name[i + 1] == '.') ++i;
  }
  return out;
}

}  // namespace

const std::vector<std::pair<std::string, std::string>>& frmExport::SaveFilters() {
  static const std::vector<std::pair<std::string, std::string>> filters = {
      {"Windows Bitmap  (*.bmp)", "*.bmp"},
      {"Enhanced Metafile  (*.emf)", "*.emf"},
      {"Graphics Interchange Format  (*.gif)", "*.gif"},
      {"Joint Photographic Experts Group  (*.jpg)", "*.jpg"},
      {"Portable Network Graphics  (*.png)", "*.png"},
      {"Tag Image File Format  (*.tif)", "*.tif"}};
  return filters;
}

frmExport::SaveTarget frmExport::TargetOf(const std::string& fileName, int filterIndex) {
  SaveTarget target;
  std::string extension;
  if (filterIndex >= 1 && filterIndex <= 6) {
    const FormatOfFilter& f = kFormats[filterIndex - 1];
    extension = f.extension;
    target.format = f.format;
    target.flags = f.flags;
  }
  std::string name = rules::Trim(fileName);
  bool endsInIt = name.size() >= extension.size() && name.compare(name.size() - extension.size(), extension.size(), extension) == 0;
  if (!endsInIt) name = SingleDots(name + extension);
  target.fileName = name;
  return target;
}

void frmExport::Display(output::CImageExportController& controller, const std::string& rangeAddress,
                        const std::string& caption) {
  isSaveOperation_ = false;
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    bool settingUp = true;

    auto enableRangeSelection = [&](bool on) {
      for (const char* control : {"lblCells", "txtWorksheetRange", "cmdSelectRange", "cmdRefresh"})
        form->SetEnabled(control, on);
    };
    auto showPreview = [&](bool captured) {
      output::CImageExportController::Preview preview;
      if (captured && controller.SetPictureImage(preview, kLongestSide, kFrameSize)) {
        form->SetPicture("imgPreview", preview.picture);
        return;
      }
      form->SetPicture("imgPreview", "");
      if (!controller.ErrorMessage().empty()) host::MsgBox(controller.ErrorMessage(), office::vbExclamation, kErrorTitle);
    };
    auto copyRangeAndSetPicture = [&] {
      showPreview(controller.CaptureRangeImage(rules::Trim(form->Text("txtWorksheetRange"))));
    };
    auto copyShapesAndSetPicture = [&] { showPreview(controller.CaptureShapesImage()); };
    auto chooseRange = [&] {
      settingUp = true;
      form->SetChecked("optRange", true);
      settingUp = false;
      enableRangeSelection(true);
      copyRangeAndSetPicture();
    };

    host::UserDialog dialog(*host::ExcelApp, "frmExport", [&](const std::string& method) {
      try {
        host::FailWhenAsked(std::string(kSource) + "." + method, "dialog event");
        if (settingUp) return;
        if (method == "optShapes_Click") {
          if (!form->Checked("optShapes")) return;
          enableRangeSelection(false);
          if (controller.ShapeCount() > 0) {
            copyShapesAndSetPicture();
          } else {
            host::MsgBox("There are no shapes on the current worksheet.", office::vbExclamation);
            chooseRange();
          }
        } else if (method == "optRange_Click") {
          if (!form->Checked("optRange")) return;
          enableRangeSelection(true);
          copyRangeAndSetPicture();
        } else if (method == "cmdRefresh_Click") {
          copyRangeAndSetPicture();
        } else if (method == "cmdSelectRange_Click") {
          form->EndDialog(kPickRange);  // the dialog steps aside while the user picks
        } else if (method == "cmdSave_Click") {
          isSaveOperation_ = true;
          form->EndDialog(1);
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = &dialog;
    dialog.SetTitle(caption);
    dialog.SetText("txtWorksheetRange", rangeAddress);
    dialog.SetChecked("optShapes", true);
    enableRangeSelection(false);
    settingUp = false;
    // What the dialog opens with.
    if (controller.ShapeCount() > 0)
      copyShapesAndSetPicture();
    else
      chooseRange();

    while (dialog.Execute() == kPickRange) {
      output::CRangePrompt picker;
      picker.GetRangeFromPrompt("Select the worksheet range to save as a picture.", "Select Range",
                                rules::Trim(dialog.Text("txtWorksheetRange")));
      if (picker.IsValid()) {
        dialog.SetText("txtWorksheetRange", picker.RangeAddress());
        copyRangeAndSetPicture();
      } else if (!picker.UserCanceled()) {
        host::MsgBox(picker.ErrorMessage(), office::vbExclamation, "Range Selection Error");
      }
    }
    if (isSaveOperation_) SetPropertiesFromSaveDialog(controller);
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

void frmExport::SetPropertiesFromSaveDialog(const output::CImageExportController& controller) {
  try {
    std::optional<office::Application::SaveChoice> choice = host::ExcelApp->GetSaveAsFilename(
        "Save Picture", SaveFilters(), 5, host::GetFlowchartsPath(), controller.ImageName());
    if (!choice) {
      isSaveOperation_ = false;
      return;
    }
    SaveTarget target = TargetOf(choice->path, choice->filterIndex);
    imageFileName_ = target.fileName;
    imageFileFormat_ = target.format;
    imageFlags_ = target.flags;
  } catch (...) {
    isSaveOperation_ = false;
    host::ErrorHandler(kSource, "SetPropertiesFromSaveDialog", false);
  }
}

}  // namespace nivarel::dialogs
