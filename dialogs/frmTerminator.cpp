#include "frmTerminator.h"

#include "CConfig.h"
#include "CIniDataAccess.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"
#include "PickCell.h"
#include "UserDialog.h"
#include "Text.h"

namespace nivarel::dialogs {

namespace {

// How the form ends when the user asks to pick the cell on the sheet.
constexpr int kPickCell = 2;

const char* const kCellAdvice =
    "Please select a cell using the selector button [...]\r\n"
    "or click No to cancel adding a Terminator.";

// Checks the entries in order; false leaves the form open with the focus on
// the box to mend.
bool ValidateForm(host::UserDialog& form) {
  if (rules::Trim(form.Text("txtTerminator")).empty()) {
    int answer = host::MsgBox(
        "The terminator text you entered was blank.\r\n\r\n"
        "- Click OK to add a blank Terminator symbol.\r\n"
        "- Click Cancel to to edit the text.",
        office::vbOKCancel | office::vbQuestion, "No Terminator Text - Edit Text");
    if (answer == office::vbCancel) {
      form.SetFocus("txtTerminator");
      return false;
    }
  }
  std::string cell = rules::Trim(form.Text("txtCell"));
  if (cell.empty()) {
    host::MsgBox(std::string("The cell address you entered was blank.\r\n") + kCellAdvice, office::vbExclamation,
                 "Empty Cell Address");
    form.SetFocus("txtCell");
    return false;
  }
  bool valid = false;
  try {
    auto sheet = host::ExcelApp->ActiveSheet();
    if (sheet) {
      sheet->GetRange(cell);
      valid = true;
    }
  } catch (...) {
  }
  if (!valid) {
    host::MsgBox(std::string("The cell address entered was invalid.\r\n") + kCellAdvice, office::vbExclamation,
                 "Invalid Cell Address");
    form.SetFocus("txtCell");
  }
  return valid;
}

}  // namespace

void frmTerminator::Display(const std::string& location, const std::string& terminatorType) {
  ok_ = false;
  text_.clear();
  location_.clear();
  try {
    if (!host::ExcelApp) return;
    rules::CConfig config;
    config.LoadConfigData();
    bool stop = rules::UpperCase(terminatorType) == "STOP";

    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmTerminator", [&](const std::string& method) {
      try {
        if (method == "cmdOK_Click") {
          ok_ = true;
          if (!ValidateForm(*form)) return;
          if (form->Checked("chkSetDefaultTerminatorText")) {
            std::string text = rules::Trim(form->Text("txtTerminator"));
            (stop ? config.EndTerminatorText : config.StartTerminatorText) = text;
            rules::CIniDataAccess().SaveConfigData(config);
          }
          form->EndDialog(1);
        } else if (method == "cmdSelectRange_Click") {
          // The form steps aside while the user picks the cell on the sheet.
          form->EndDialog(kPickCell);
        }
      } catch (...) {
        host::ErrorHandler("frmTerminator", method, false);
      }
    });
    form = &dialog;
    dialog.SetTitle(stop ? " Add End Terminator?" : " Add Start Terminator?");
    dialog.SetLabel("chkSetDefaultTerminatorText",
                    stop ? "Set as default End Terminator text" : "Set as default Start Terminator text");
    dialog.SetText("txtTerminator", stop ? config.EndTerminatorText : config.StartTerminatorText);
    dialog.SetText("txtCell", location);
    while (dialog.Execute() == kPickCell)
      PickCellInto(dialog, "txtCell", "Select the worksheet cell to place the Terminator.");
    text_ = rules::Trim(dialog.Text("txtTerminator"));
    location_ = rules::Trim(dialog.Text("txtCell"));
  } catch (...) {
    host::ErrorHandler("frmTerminator", "Display", false);
  }
}

}  // namespace nivarel::dialogs
