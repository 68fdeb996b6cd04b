#include "CheckList.h"

#include <algorithm>

namespace nivarel::dialogs {

namespace {
constexpr int kNowhere = 1000;  // a page no dialog shows
}  // namespace

CheckList::CheckList(host::UserDialog& dialog, std::string boxes, int boxCount, std::string scroll, int page)
    : dialog_(dialog), boxes_(std::move(boxes)), scroll_(std::move(scroll)), boxCount_(boxCount), page_(page) {}

void CheckList::SetLines(std::vector<std::string> lines, bool checked) {
  lines_ = std::move(lines);
  checked_.assign(lines_.size(), checked);
  top_ = 0;
  for (int k = 0; k < boxCount_; ++k) dialog_.SetControlPage(Box(k), k < Lines() ? page_ : kNowhere);
  bool scrolls = Lines() > boxCount_;
  dialog_.SetControlPage(scroll_, scrolls ? page_ : kNowhere);
  if (scrolls) dialog_.SetScrollBar(scroll_, 0, Lines(), boxCount_);
  Show();
}

void CheckList::SetChecked(int line, bool checked) {
  if (line < 0 || line >= Lines()) return;
  checked_[line] = checked;
  int k = line - top_;
  if (k < 0 || k >= boxCount_) return;
  showing_ = true;
  dialog_.SetChecked(Box(k), checked);
  showing_ = false;
}

void CheckList::Show() {
  showing_ = true;
  for (int k = 0; k < boxCount_ && top_ + k < Lines(); ++k) {
    dialog_.SetLabel(Box(k), lines_[top_ + k]);
    dialog_.SetChecked(Box(k), checked_[top_ + k]);
  }
  showing_ = false;
}

bool CheckList::Handle(const std::string& method) {
  if (method == boxes_ + "_Click") {
    if (showing_) return true;
    for (int k = 0; k < boxCount_ && top_ + k < Lines(); ++k) checked_[top_ + k] = dialog_.Checked(Box(k));
    return true;
  }
  if (method == scroll_ + "_Change") {
    int top = std::clamp(dialog_.ScrollValue(scroll_), 0, std::max(Lines() - boxCount_, 0));
    if (top != top_) {
      top_ = top;
      Show();
    }
    return true;
  }
  return false;
}

}  // namespace nivarel::dialogs
