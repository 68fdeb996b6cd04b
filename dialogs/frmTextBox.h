// Asks for the text of a free label (" Add Label"). OK is true only after the
// OK button; the text comes back trimmed.
#pragma once

#include <string>

namespace nivarel::dialogs {

class frmTextBox {
 public:
  // Shows the prompt modally over the spreadsheet, starting empty.
  void Display();
  bool OK() const { return ok_; }
  const std::string& TextBoxText() const { return text_; }

 private:
  bool ok_ = false;
  std::string text_;
};

}  // namespace nivarel::dialogs
