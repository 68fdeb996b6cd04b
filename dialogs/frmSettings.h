// The settings ("Nivarel Settings"): the table of symbols with their
// evaluation order, style, name, prefix, keywords and size, which list of
// symbols is active, and the rules for decisions, flow lines and terminators.
// The form works on its own copy of the settings and writes nivarel.cfg only
// on OK; the symbol rules are written to symbols.ini on OK and whenever the
// active list changes, the symbol list is edited or the delimiter changes
// (what was written then stays after Cancel). A run started afterwards loads
// the new rules.
#pragma once

namespace nivarel::dialogs {

class frmSettings {
 public:
  // Shows the dialog until OK or Cancel.
  void Show();
};

}  // namespace nivarel::dialogs
