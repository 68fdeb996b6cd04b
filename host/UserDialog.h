// One of the add-in's dialogs: a dialog file shipped in the extension
// ("dialogs/<name>.xdl"), made by the office's dialog provider as a modal
// window over the spreadsheet. The events that the file binds to
// "vnd.sun.star.UNO:<method>" reach the handler by method name. Text boxes
// select all of their text when they get the focus.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Application.h"

namespace nivarel::host {

class UserDialog {
 public:
  // Throws HostError when the dialog cannot be made.
  UserDialog(const office::Application& app, const std::string& name, std::function<void(const std::string&)> handler);
  // A dialog whose OK button ("cmdOK_Click") sets ok and closes it with 1.
  UserDialog(const office::Application& app, const std::string& name, bool& ok);
  ~UserDialog();
  UserDialog(const UserDialog&) = delete;
  UserDialog& operator=(const UserDialog&) = delete;

  // Shows the dialog and waits until it closes: 1 when ended with 1, 0 when
  // cancelled (Escape, the close box or a cancel button).
  int Execute();
  // Whether the Escape key was what closed the dialog.
  bool ClosedByEscape() const;
  void EndDialog(int result);

  void SetTitle(const std::string& title);
  std::string Text(const std::string& control) const;
  void SetText(const std::string& control, const std::string& text);
  // The caption of a label, button or check box.
  void SetLabel(const std::string& control, const std::string& label);
  // A check box ticked, or an option button selected.
  bool Checked(const std::string& control) const;
  void SetChecked(const std::string& control, bool on);
  void SetFocus(const std::string& control);
  // Greys a control out or back in.
  void SetEnabled(const std::string& control, bool enabled);
  // Shows or hides a control.
  void SetControlVisible(const std::string& control, bool visible);
  // The selected entry of a list box, 0-based; -1 when none is.
  int ListIndex(const std::string& control) const;
  void SetListIndex(const std::string& control, int index);

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivarel::host
