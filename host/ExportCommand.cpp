#include "ExportCommand.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>

#include "CImageExportController.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "frmExport.h"

namespace nivarel::host {

namespace {

constexpr char kSource[] = "ExportCommand";

ExportOutcome Refused(const std::string& message) {
  ExportOutcome outcome;
  outcome.message = message;
  return outcome;
}

std::string TypeOf(const std::string& path) {
  std::string type = std::filesystem::path(path).extension().string();
  std::transform(type.begin(), type.end(), type.begin(), [](unsigned char c) { return std::tolower(c); });
  return type;
}

}  // namespace

bool ExportCommand::FormatOf(const std::string& type, int& format, int& flags) {
  const auto& filters = dialogs::frmExport::SaveFilters();
  for (size_t i = 0; i < filters.size(); ++i) {
    if (filters[i].second != "*" + type) continue;
    dialogs::frmExport::SaveTarget target = dialogs::frmExport::TargetOf("x" + type, static_cast<int>(i) + 1);
    format = target.format;
    flags = target.flags;
    return true;
  }
  return false;
}

ExportOutcome ExportCommand::Run(const ExportChoices& choices) {
  try {
    std::string type = TypeOf(choices.path);
    int format = 0, flags = 0;
    bool drawing = type == ".svg" || type == ".pdf";
    if (!drawing && !FormatOf(type, format, flags))
      return Refused("A picture is written as .bmp, .emf, .gif, .jpg, .png, .tif, .svg or .pdf, not as '" + type + "'.");
    if (choices.scale < 1 || choices.scale > 10) return Refused("The scale must be a whole number from 1 to 10.");
    if (!ExcelApp) return Refused("Nivarel is not connected to the office.");
    std::optional<office::Workbook> book = choices.workbook ? choices.workbook : ExcelApp->ActiveWorkbook();
    if (!book) return Refused("There are no workbooks open. You must open a workbook before using Nivarel.");
    // The controller works on the active sheet.
    book->Activate();
    if (!choices.sheet.empty()) {
      bool found = false;
      for (int i = 1, n = book->SheetCount(); i <= n && !found; ++i) {
        office::Worksheet sheet = book->Sheet(i);
        if (sheet.Name() == choices.sheet) {
          sheet.Activate();
          found = true;
        }
      }
      if (!found) return Refused("There is no sheet named '" + choices.sheet + "' in the workbook.");
    }

    auto start = std::chrono::steady_clock::now();
    output::CImageExportController controller;
    if (!controller.IsSheetValid()) return Refused(controller.ErrorMessage());
    controller.SetScale(choices.scale);
    bool captured = false;
    if (!choices.range.empty()) {
      captured = controller.CaptureRangeImage(choices.range);
    } else if (controller.ShapeCount() > 0) {
      captured = controller.CaptureShapesImage();
    } else {
      std::string content = controller.GetWorksheetRange();
      if (content.empty()) return Refused("There is no content on the current sheet.");
      captured = controller.CaptureRangeImage(content);
    }
    if (!captured)
      return Refused(controller.ErrorMessage().empty() ? "No picture could be taken." : controller.ErrorMessage());
    if (drawing) {
      try {
        controller.CurrentImage()->SaveDrawing(choices.path);
      } catch (const office::HostError& e) {
        return Refused(e.Description() + ".");
      }
    } else if (!controller.SaveFlowchartAsPicture(choices.path, format, flags)) {
      return Refused(controller.ErrorMessage().empty() ? "Unable to save image" : controller.ErrorMessage());
    }
    ExportOutcome outcome;
    outcome.written = true;
    outcome.width = controller.ImageWidth();
    outcome.height = controller.ImageHeight();
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
  } catch (...) {
    ErrObject error = CurrentError();
    ErrorHandler(kSource, "Run", false, error);
    return Refused("The export failed: " + error.Description);
  }
}

}  // namespace nivarel::host
