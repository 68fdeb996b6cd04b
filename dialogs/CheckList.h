// A list of lines with a check box each, shown in a dialog as a column of
// check boxes ("<boxes>0", "<boxes>1"...) and a scroll bar beside them that
// moves the lines through the boxes when there are more lines than boxes. A
// click on a box checks or unchecks the line it shows. The dialog file binds
// every box's change to "<boxes>_Click" and the scroll bar's to
// "<scroll>_Change"; the dialog's event handler passes every method to Handle
// first. Boxes without a line, and the scroll bar when all lines fit, are put
// on a page the dialog never shows; they show again with the dialog's next
// page change.
#pragma once

#include <string>
#include <vector>

#include "UserDialog.h"

namespace nivarel::dialogs {

class CheckList {
 public:
  // page: the dialog page the list stands on.
  CheckList(host::UserDialog& dialog, std::string boxes, int boxCount, std::string scroll, int page);

  // The lines, all checked or all unchecked, from the first.
  void SetLines(std::vector<std::string> lines, bool checked);
  int Lines() const { return static_cast<int>(lines_.size()); }
  bool Checked(int line) const { return line >= 0 && line < Lines() && checked_[line]; }
  // Checks or unchecks one line, shown at once when its box shows it.
  void SetChecked(int line, bool checked);

  // True when method was the list's.
  bool Handle(const std::string& method);

 private:
  std::string Box(int k) const { return boxes_ + std::to_string(k); }
  void Show();  // the lines from top_ on into the boxes

  host::UserDialog& dialog_;
  std::string boxes_, scroll_;
  int boxCount_, page_;
  std::vector<std::string> lines_;
  std::vector<bool> checked_;
  int top_ = 0;         // the line in the first box
  bool showing_ = false;  // boxes being filled, not clicked
};

}  // namespace nivarel::dialogs
