// The event log's window: the add-in's error log as the user can read it,
// copy it to the clipboard for a support request, or erase it; and a button
// that shows the date as the system gives it, for support to diagnose date
// problems with.
#pragma once

#include <string>

namespace nivarel::dialogs {

class frmEventViewer {
 public:
  // Shows the window modally until OK or Escape closes it.
  void Display();
  // The log's text as the window shows it: its lines, or the placeholder
  // "<There are no events logged for Nivarel>" when it has none.
  static std::string GetLogText();
};

}  // namespace nivarel::dialogs
