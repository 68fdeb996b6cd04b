#include "frmRestart.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

void frmRestart::Display() {
  ok_ = false;
  show_ = false;
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmRestart", [&](const std::string& method) {
      if (method != "cmdOK_Click") return;
      ok_ = true;
      show_ = !form->Checked("chkNoShow");
      form->EndDialog(1);
    });
    form = &dialog;
    dialog.Execute();
    if (dialog.ClosedByEscape()) show_ = !dialog.Checked("chkNoShow");
  } catch (...) {
    host::ErrorHandler("frmRestart", "Display", false);
  }
}

}  // namespace nivarel::dialogs
