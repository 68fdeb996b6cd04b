// One of the add-in's dialogs: a dialog file shipped in the extension
// ("dialogs/<name>.xdl"), made by the office's dialog provider as a modal
// window over the spreadsheet. The events that the file binds to
// "vnd.sun.star.UNO:<method>" reach the handler by method name, and the F1
// key pressed while the dialog is in front reaches it as "Form_Help". Text
// boxes select all of their text when they get the focus.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

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
  // Moves the focus to the control; with selectText, a text box's text is
  // all selected, so that what is typed next replaces it.
  void SetFocus(const std::string& control, bool selectText = false);
  // The control that has the focus now, or had it last; "" before any had.
  std::string FocusedControl() const;
  // Greys a control out or back in.
  void SetEnabled(const std::string& control, bool enabled);
  // Shows or hides a control.
  void SetControlVisible(const std::string& control, bool visible);
  // Moves and sizes a control, in the dialog file's units.
  void SetBounds(const std::string& control, int left, int top, int width, int height);
  // The selected entry of a list box, 0-based; -1 when none is.
  int ListIndex(const std::string& control) const;
  void SetListIndex(const std::string& control, int index);
  // The selected entries of a list box that allows more than one, 0-based
  // and ascending; setting them selects those and no others.
  std::vector<int> ListIndices(const std::string& control) const;
  void SetListIndices(const std::string& control, const std::vector<int>& indices);
  // A spin button's value; setting it sets its range too.
  int SpinValue(const std::string& control) const;
  void SetSpinValue(const std::string& control, int value, int min, int max);
  // A list box's entries, each a caption, a picture (a PNG's path), or both.
  struct Item {
    std::string text, picture;
  };
  void SetItems(const std::string& control, const std::vector<Item>& items);
  // Appends an entry, or changes the entry at index.
  void AddItem(const std::string& control, const Item& item);
  void SetItem(const std::string& control, int index, const Item& item);

  // An image control's picture; "" clears it.
  void SetPicture(const std::string& control, const std::string& path);
  // Where the last mouse press that the dialog file binds to a method fell
  // on its control, as fractions of the control's width and height.
  bool LastPress(double& x, double& y) const;
  // A scroll bar's place, and its range: 0 to maximum less visible.
  int ScrollValue(const std::string& control) const;
  void SetScrollBar(const std::string& control, int value, int maximum, int visible);

  // Shows the controls of one page of the dialog (and those on every page).
  void SetPage(int page);
  // Moves a control to a page (0: every page); shown when the dialog next
  // shows a page.
  void SetControlPage(const std::string& control, int page);
  // The font a control shows its text in.
  void SetFont(const std::string& control, const std::string& name, double size, bool bold, bool italic);
  // The colour a control shows its text in, as the host's RGB value (red in
  // the low byte).
  void SetTextColor(const std::string& control, long rgb);


 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivarel::host
