// Drives the office's user interface as a person would, through the office's
// UI-test service: select a cell, type, press keys, and work dialogs. Cell
// edits made this way raise the sheet's Change event like real typing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Application.h"

namespace nivarel::driver {

class UiDriver {
 public:
  explicit UiDriver(const office::Application& app);

  // Selects a cell or range by A1 address on the active sheet's grid.
  void SelectCell(const std::string& address);
  // Clicks a cell of the grid of the spreadsheet in front with the mouse, as
  // a person points at a cell (while the office's range picker is open, the
  // cell goes into the picker).
  void ClickCell(const std::string& address);
  // Types text into the focused window (a cell enters edit mode).
  void Type(const std::string& text);
  // Presses a key by its name: "RETURN", "ESC", "TAB", "DOWN", "CTRL+Z"...
  void PressKey(const std::string& key);
  // Selects the cell, types the text and commits it with Enter.
  void TypeIntoCell(const std::string& address, const std::string& text);

  // Runs an office command (".uno:..." or the add-in's) on the office's
  // thread, as a menu click does, and returns when it is done; with
  // opensDialog it is only handed to the office's event loop, and returns at once.
  void RunCommand(const std::string& command, bool opensDialog = false);
  // The identifier of the window that has the focus (a dialog's id when one shows).
  std::string FocusWindowId() const;
  // Clicks a button of the dialog that has the focus, by its id.
  void ClickButton(const std::string& id);
  // Sets the text of a box of the office's own dialog that has the focus, by
  // its id, as typing does: the box's change handlers run.
  void SetBoxText(const std::string& id, const std::string& text);
  // The text of a control of that dialog, by its id.
  std::string BoxText(const std::string& id) const;

  // Waits until a modal window (a dialog or message box) has the focus, one
  // whose id isn't notId when that is given; false when none comes in time.
  bool WaitForModal(int timeoutMs = 10000, const std::string& notId = "\x01") const;
  // Waits until a document's cell grid has the focus again.
  bool WaitForDocument(int timeoutMs = 10000) const;
  // Waits until the focused window is no longer modal.
  bool WaitForNoModal(int timeoutMs = 10000) const;
  // The focused window's title.
  std::string Title() const;
  // The text of the message box that has the focus (lines joined by LF).
  std::string MessageText() const;

  // The add-in's own dialogs show no control ids to the UI-test service, so
  // these work the active dialog through the office toolkit's robot instead:
  // key presses and mouse clicks posted to the dialog, which the office
  // handles exactly as a person's (focus, default button, mnemonics).
  struct DialogControl {
    std::string kind;  // "text", "edit", "button", "check", "radio", "list" (a drop-down), "item" (an entry of a list) or "other"
    std::string text;  // caption, an edit's content, or a list's chosen entry
    bool checked = false;
    bool selected = false;  // an entry of a list that is selected
    int left = 0;           // where it begins on the screen, in pixels
    bool enabled = true;
    bool focused = false;
    long color = -1;  // a caption's text colour as the office draws it, 0xRRGGBB
  };
  // The title of the active dialog, empty when no dialog is active.
  std::string DialogTitle() const;
  // The title of the active window, a message box's too, read through the
  // toolkit ("" when none is active): safe while the office takes a window
  // down, which reading through the UI-test service is not.
  std::string ActiveTitle() const;
  // The active window's controls, in the order the window holds them.
  std::vector<DialogControl> DialogControls() const;
  // Whether a control of the active window, a list box too, has the focus:
  // keys typed now reach the window.
  bool DialogFocused() const;
  // Types text into the focused control of the active window.
  void TypeInDialog(const std::string& text);
  // Presses a key in the active window: "RETURN", "ESC", "TAB", "SPACE", "DOWN", "ALT+N"...
  void PressDialogKey(const std::string& key);
  // Clicks the button, check box, option or link with this caption ("~" ignored).
  void ClickInDialog(const std::string& caption);
  // Clicks the entry of a list that reads text (the first such entry shown).
  void ClickItem(const std::string& text);
  // Clicks the arrow at the far (forward) or near end of the index-th scroll
  // bar shown in the active dialog (in reading order, from 0).
  void ClickScrollBar(int index, bool forward);
  // Clicks a point of the index-th picture shown in the active dialog (in
  // reading order, from 0), given as fractions of its width and height.
  void ClickPicture(int index, double x, double y);
  // Writes what the index-th picture shown in the active dialog shows on the
  // screen, pixel for pixel, to a PNG file.
  void SavePictureShown(int index, const std::string& path);


 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivarel::driver
