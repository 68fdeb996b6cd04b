#include "frmTextBox.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"
#include "Text.h"

namespace nivarel::dialogs {

void frmTextBox::Display() {
  ok_ = false;
  text_.clear();
  try {
    if (!host::ExcelApp) return;
    host::UserDialog dialog(*host::ExcelApp, "frmTextBox", ok_);
    dialog.Execute();
    text_ = rules::Trim(dialog.Text("txtContent"));
  } catch (...) {
    host::ErrorHandler("frmTextBox", "Display", false);
  }
}

}  // namespace nivarel::dialogs
