// What the spreadsheet window in front shows of a toolbar, read as a person
// sees it (the toolbar's accessibility tree: captions, enabled states), the
// tooltips the office gives its buttons' commands, the commands behind its
// buttons and drop-down menus as the window's toolbar holds them, and its
// place; and a toolbar moved as a person drags it. For tests of the add-in's
// command bar.
#pragma once

#include <string>
#include <vector>

#include "Application.h"

namespace nivarel::driver {

struct ToolbarButton {
  std::string caption;
  bool enabled = false;
  bool dropDown = false;  // opens a menu
};

// One command of a toolbar: a button's, or an entry's of one of its
// drop-down menus (menu is the path of captions down to the entry's menu,
// "Insert/Callout"; empty for a button).
struct ToolbarCommand {
  std::string menu;
  std::string caption;
  std::string command;
  bool separatorBefore = false;
};

struct ToolbarPlace {
  bool visible = false;
  bool floating = false;
  int x = 0, y = 0, width = 0, height = 0;
};

// The resource names of the toolbars titled title that the window in front
// shows
// ("private:resource/toolbar/custom_nivarel").
std::vector<std::string> ToolbarsTitled(const office::Application& app, const std::string& title);
// The buttons of the first toolbar titled title that the window in front
// shows, in
// their order (separators left out); none when there is no such toolbar.
std::vector<ToolbarButton> ToolbarButtons(const office::Application& app, const std::string& title);
// Every command of that toolbar and of its drop-down menus, in their order.
std::vector<ToolbarCommand> ToolbarCommands(const office::Application& app, const std::string& title);
// Where that toolbar shows on the screen, and whether it floats.
ToolbarPlace PlaceOfToolbar(const office::Application& app, const std::string& title);
// Makes that toolbar float at x, y of the screen, as a person unlocks the
// toolbars and drags it off its docking area.
void FloatToolbar(const office::Application& app, const std::string& title, int x, int y);
// Opens the drop-down menu of the button with this caption as a person
// clicks it, reads the menu's entries as it shows them (separators left
// out) and closes it again with Escape.
std::vector<std::string> DropDownEntries(const office::Application& app, const std::string& title,
                                         const std::string& caption);
// The tooltip that the office's description of a command gives a button of
// it in a spreadsheet window; empty when it gives none.
std::string CommandTooltip(const office::Application& app, const std::string& command);
// Whether the office's toolbar of this resource name ("flowchartshapes")
// shows in the window in front.
bool OfficeToolbarShown(const office::Application& app, const std::string& resource);

}  // namespace nivarel::driver
