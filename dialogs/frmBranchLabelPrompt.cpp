#include "frmBranchLabelPrompt.h"

namespace nivarel::dialogs {

void frmBranchLabelPrompt::Display(const rules::CConfig& config) {
  // The prompt's window arrives with the add-in's dialogs; until then the
  // prompt answers as a cancelled one would.
  ok_ = false;
  top_ = config.TopBranchText;
  right_ = config.RightBranchText;
  bottom_ = config.BottomBranchText;
  left_ = config.LeftBranchText;
}

}  // namespace nivarel::dialogs
