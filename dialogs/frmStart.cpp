#include "frmStart.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "PickCell.h"
#include "UserDialog.h"
#include "Text.h"
#include "frmTemplates.h"

namespace nivarel::dialogs {

namespace {

const char* const kSource = "frmStart";
// How the form ends when the user asks to pick the first cell on the sheet.
constexpr int kPickCell = 2;
constexpr int kHelpTopic = 1700;
constexpr int16_t kPaperCodes[] = {1, 3, 8, 9};

int PaperIndex(int16_t code) {
  for (int i = 0; i < 4; ++i)
    if (kPaperCodes[i] == code) return i;
  return 0;
}

void TerminatorReaction(host::UserDialog& form) {
  bool on = form.Checked("chkStartTerminator");
  for (const char* control : {"txtTerminator", "lblTerminator", "txtCell", "lblCell", "cmdChooseCell"})
    form.SetEnabled(control, on);
}

void PageFieldsReaction(host::UserDialog& form, bool on) {
  bool custom = on && form.Checked("optCustomLayout1");
  for (const char* control : {"cboPageSize", "lblPageSize", "cboOrientation", "lblOrientation", "cboMargins", "lblMargins"})
    form.SetEnabled(control, custom);
}

void GridReaction(host::UserDialog& form) {
  bool on = !form.Checked("optGrid2");
  form.SetEnabled("optCustomLayout0", on);
  form.SetEnabled("optCustomLayout1", on);
  PageFieldsReaction(form, on);
  for (const char* control : {"fraPageSetup", "optCustomLayout0", "optCustomLayout1", "lblPageSize", "cboPageSize",
                              "lblOrientation", "cboOrientation", "lblMargins", "cboMargins"})
    form.SetControlVisible(control, on);
  for (const char* control : {"fraTemplate", "lblTemplateFile", "txtTemplateFile", "cmdTemplateSelector"})
    form.SetControlVisible(control, !on);
}

bool ValidateForm(host::UserDialog& form, bool& blockDiagram) {
  if (!form.Checked("optGrid2")) {
    blockDiagram = false;
    return true;
  }
  std::string file = rules::Trim(form.Text("txtTemplateFile"));
  if (file.empty()) {
    host::MsgBox("You have selected to load a template,\r\nbut the template file field is empty.",
                 office::vbExclamation, "Invalid Template");
    form.SetFocus("txtTemplateFile");
    return false;
  }
  if (!host::FileExists(file)) {
    host::MsgBox("The template file entered does not exist.", office::vbExclamation, "Invalid Template");
    form.SetFocus("txtTemplateFile");
    return false;
  }
  return true;
}

}  // namespace

void frmStart::ChooseTemplate(host::UserDialog& form) {
  bool updating = host::ExcelApp->ScreenUpdating();
  frmTemplates chooser;
  chooser.Display(templateFolderPath_, "Select Template", "&OK");
  if (chooser.OK()) {
    templateFolderPath_ = chooser.TemplateFolderPath();
    blockDiagram_ = chooser.BlockDiagram();
    form.SetText("txtTemplateFile", chooser.TemplateFilePath());
    form.SetText("txtCell", chooser.StartLocation());
  }
  host::ExcelApp->SetScreenUpdating(updating);
}

void frmStart::Display(const rules::CConfig& config) {
  ok_ = false;
  blockDiagram_ = false;
  templateFolderPath_ = config.TemplateFolderPath;
  try {
    if (!host::ExcelApp) return;
    bool initialising = true;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmStart", [&](const std::string& method) {
      try {
        if (initialising) return;
        if (method == "cmdOK_Click") {
          if (!ValidateForm(*form, blockDiagram_)) return;
          ok_ = true;
          form->EndDialog(1);
        } else if (method == "cmdChooseCell_Click") {
          form->EndDialog(kPickCell);
        } else if (method == "cmdHelp_Click") {
          host::ShowHelpTopic(kHelpTopic);
        } else if (method == "chkStartTerminator_Click") {
          TerminatorReaction(*form);
        } else if (method == "optGrid_Click") {
          GridReaction(*form);
        } else if (method == "optCustomLayout_Click") {
          PageFieldsReaction(*form, !form->Checked("optGrid2"));
        } else if (method == "cboMargins_Click") {
          if (form->ListIndex("cboMargins") == 2) form->SetListIndex("cboOrientation", 1);
        } else if (method == "cmdTemplateSelector_Click") {
          ChooseTemplate(*form);
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = &dialog;
    dialog.SetChecked("chkStartTerminator", config.StartTerminator);
    dialog.SetText("txtTerminator", config.StartTerminatorText);
    dialog.SetText("txtCell", config.StartLocation);
    dialog.SetChecked("optGrid0", true);
    dialog.SetChecked("chkHideGridlines", config.HideGridlines);
    dialog.SetChecked("chkShowGuidelines", config.ShowGuides);
    dialog.SetChecked(config.CustomLayout ? "optCustomLayout1" : "optCustomLayout0", true);
    dialog.SetListIndex("cboPageSize", PaperIndex(config.PaperSize));
    dialog.SetListIndex("cboOrientation", config.Orientation == 1 || config.Orientation == 2 ? config.Orientation - 1 : 0);
    dialog.SetListIndex("cboMargins", config.Margins >= 0 && config.Margins <= 2 ? config.Margins : 0);
    TerminatorReaction(dialog);
    GridReaction(dialog);
    initialising = false;

    while (dialog.Execute() == kPickCell)
      PickCellInto(dialog, "txtCell", "Select the worksheet cell to place the first symbol.");

    addTerminator_ = dialog.Checked("chkStartTerminator");
    terminatorText_ = rules::Trim(dialog.Text("txtTerminator"));
    startLocation_ = rules::Trim(dialog.Text("txtCell"));
    showGuidelines_ = dialog.Checked("chkShowGuidelines");
    hideGridlines_ = dialog.Checked("chkHideGridlines");
    isGrid_ = dialog.Checked("optGrid0");
    loadTemplate_ = dialog.Checked("optGrid2");
    customLayout_ = dialog.Checked("optCustomLayout1");
    int paper = dialog.ListIndex("cboPageSize");
    paperSize_ = kPaperCodes[paper >= 0 && paper < 4 ? paper : 0];
    int margins = dialog.ListIndex("cboMargins");
    margins_ = std::to_string(margins < 0 ? 0 : margins);
    int orientation = dialog.ListIndex("cboOrientation");
    orientation_ = static_cast<int16_t>((orientation < 0 ? 0 : orientation) + 1);
    templateFilePath_ = loadTemplate_ ? rules::Trim(dialog.Text("txtTemplateFile")) : std::string();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
