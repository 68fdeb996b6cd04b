// The style wizard ("Style Wizard"): every symbol of the active sheet with
// its text, symbol and style, which the user changes one by one or with the
// style picker for several at once, with the flow line style and the font.
// OK restyles the listed symbols and every line of the sheet as one entry
// of the undo list. Settings chosen with the pickers are saved as each
// picker closes, so they stay after Cancel too.
#pragma once

namespace nivarel::dialogs {

class frmStyleWizard {
 public:
  void Display();
};

}  // namespace nivarel::dialogs
