#include "frmBranchLabelPrompt.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"
#include "Text.h"

namespace nivarel::dialogs {

void frmBranchLabelPrompt::Display(const rules::CConfig& config) {
  ok_ = false;
  top_ = config.TopBranchText;
  right_ = config.RightBranchText;
  bottom_ = config.BottomBranchText;
  left_ = config.LeftBranchText;
  try {
    if (!host::ExcelApp) return;
    host::UserDialog dialog(*host::ExcelApp, "frmBranchLabelPrompt", ok_);
    dialog.SetText("txtTop", top_);
    dialog.SetText("txtRight", right_);
    dialog.SetText("txtBottom", bottom_);
    dialog.SetText("txtLeft", left_);
    dialog.Execute();
    top_ = rules::Trim(dialog.Text("txtTop"));
    right_ = rules::Trim(dialog.Text("txtRight"));
    bottom_ = rules::Trim(dialog.Text("txtBottom"));
    left_ = rules::Trim(dialog.Text("txtLeft"));
  } catch (...) {
    host::ErrorHandler("frmBranchLabelPrompt", "Display", false);
  }
}

}  // namespace nivarel::dialogs
