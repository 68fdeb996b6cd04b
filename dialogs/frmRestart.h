// Tells the user how to go on with a run on a sheet that already holds
// shapes (" Restart Flowcharting"). ShowRestartMessage is false when the user
// ticked "Don't show this message again" and closed with OK or Escape, true
// when the box was left empty; closing any other way leaves it false.
#pragma once

namespace nivarel::dialogs {

class frmRestart {
 public:
  void Display();
  bool OK() const { return ok_; }
  bool ShowRestartMessage() const { return show_; }

 private:
  bool ok_ = false;
  bool show_ = false;
};

}  // namespace nivarel::dialogs
