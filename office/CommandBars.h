// The host's command bars over the office's toolbars: a bar is a toolbar of
// the spreadsheet module's user-interface configuration, made at run time and
// never stored there, shown in every spreadsheet window; its popups are
// drop-down menus of the bar. A bar is found by its name (the toolbar's
// title). Its place is the host's: docked at a side of the window in a row,
// or floating. Buttons ask the command's handler whether they are enabled,
// as every menu entry and button of the office does.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace nivarel::office {

struct HostSession;

// CommandBar.Position
constexpr int msoBarLeft = 0;
constexpr int msoBarTop = 1;
constexpr int msoBarRight = 2;
constexpr int msoBarBottom = 3;
constexpr int msoBarFloating = 4;

// One control of a bar. A button runs its command (an office command URL);
// a popup (no command) holds controls and shows as a drop-down menu.
// beginGroup draws a separator before the control.
struct CommandBarControl {
  std::string caption;
  std::string tooltip;
  std::string command;
  int style = 3;  // msoButtonIcon 1 (picture only), msoButtonCaption 2, msoButtonIconAndCaption 3
  bool beginGroup = false;
  std::string parameter;  // a popup's name
  std::vector<CommandBarControl> controls;
  bool IsPopup() const { return command.empty(); }
};

// Where a bar stands, in the host's terms: a position above; the row it is
// docked in (0 the outermost); left, top, width and height in pixels (along
// its row when docked, on the screen when floating).
struct CommandBarPlace {
  bool visible = true;
  int position = msoBarTop;
  int rowIndex = 0;
  int left = 0, top = 0, width = 0, height = 0;
};

class CommandBars {
 public:
  explicit CommandBars(std::shared_ptr<HostSession> session);

  // The office's command that stands for a built-in control of the host
  // (182, the arrow tool, is ".uno:SelectObject"); empty when the office
  // has none for spreadsheets.
  std::string BuiltInCommand(int controlId) const;
  // A built-in popup of the host (30078, the order popup) as the office's
  // commands that stand for its entries; no controls when it has none.
  CommandBarControl BuiltInPopup(int controlId) const;
  // Whether a bar of this name exists.
  bool Exists(const std::string& name) const;
  // Deletes the first bar of this name, with its drop-down menus and its
  // place, from the configuration and from every window. False when there
  // is none.
  bool Delete(const std::string& name);
  // Makes a bar of this name with these controls, docked at the top unless
  // a place is set, in every spreadsheet window open now or later.
  void Add(const std::string& name, const std::vector<CommandBarControl>& controls);

  // The bar's place as the office keeps it (its window state, where the
  // office notes a bar's moves).
  CommandBarPlace Place(const std::string& name) const;
  // Moves the bar, in the windows that show it and in those to come.
  void SetPlace(const std::string& name, const CommandBarPlace& place);

  // Whether one of the office's own toolbars ("flowchartshapes") shows in
  // a spreadsheet window; showing or hiding it there and in the windows to
  // come.
  bool Visible(const std::string& toolbar) const;
  void SetVisible(const std::string& toolbar, bool visible);
  // Whether the windows to come show it, written to the user's profile at
  // once; the windows open now keep theirs.
  void KeepVisible(const std::string& toolbar, bool visible);

 private:
  std::shared_ptr<HostSession> session_;
};

}  // namespace nivarel::office
