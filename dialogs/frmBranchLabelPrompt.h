// Asks for the texts of the labels around a decision: four boxes, top,
// right, bottom and left, filled with the stored texts. Nothing is stored
// here; the caller reads the results after Display.
#pragma once

#include <string>

#include "CConfig.h"

namespace nivarel::dialogs {

class frmBranchLabelPrompt {
 public:
  // Shows the prompt modally over the spreadsheet.
  void Display(const rules::CConfig& config);
  bool OK() const { return ok_; }
  const std::string& TopText() const { return top_; }
  const std::string& RightText() const { return right_; }
  const std::string& BottomText() const { return bottom_; }
  const std::string& LeftText() const { return left_; }

 private:
  bool ok_ = false;
  std::string top_, right_, bottom_, left_;
};

}  // namespace nivarel::dialogs
