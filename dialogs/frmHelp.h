// The door to help: the help pages, the maker's support page, and the event
// log. "View Event Log" only closes the window and says so through
// ViewLog(); the caller then opens the log's window.
#pragma once

namespace nivarel::dialogs {

class frmHelp {
 public:
  // Clears ViewLog and shows the window modally.
  void Display();
  // The user asked to see the event log.
  bool ViewLog() const { return viewLog_; }

 private:
  bool viewLog_ = false;
};

}  // namespace nivarel::dialogs
