#include "frmOpenWalkthrough.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

void frmOpenWalkthrough::Display() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmOpenWalkthrough", [&](const std::string& method) {
      if (method != "cmdOK_Click") return;
      ok_ = true;
      form->EndDialog(1);
    });
    form = &dialog;
    dialog.Execute();
  } catch (...) {
    host::ErrorHandler("frmOpenWalkthrough", "Display", false);
  }
}

}  // namespace nivarel::dialogs
