#include "frmAbout.h"

#include <string>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

void frmAbout::Display() {
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmAbout", [&](const std::string& method) {
      if (method != "lnkSupport_Click") return;
      try {
        host::ExcelApp->OpenInBrowser(host::kSupportPage);
      } catch (...) {
      }
      form->EndDialog(0);
    });
    form = &dialog;
    dialog.SetTitle(std::string("About ") + host::kAppTitle);
    dialog.SetLabel("lblTitle", host::kAppTitle);
    dialog.SetLabel("lblVersion", "Version " + std::to_string(host::kVersionMajor) + "." +
                                      std::to_string(host::kVersionMinor) + "." +
                                      std::to_string(host::kVersionRevision));
    dialog.SetChecked("chkTextOnlyToolbar", host::GetBoolSetting("TextOnlyToolbars", "False"));
    dialog.Execute();
  } catch (...) {
    host::ErrorHandler("frmAbout", "Display", false);
  }
}

}  // namespace nivarel::dialogs
