#include "frmOpenWalkthrough.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

void frmOpenWalkthrough::Display() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    host::UserDialog dialog(*host::ExcelApp, "frmOpenWalkthrough", ok_);
    dialog.Execute();
  } catch (...) {
    host::ErrorHandler("frmOpenWalkthrough", "Display", false);
  }
}

}  // namespace nivarel::dialogs
