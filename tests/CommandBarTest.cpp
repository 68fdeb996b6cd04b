// The command bar of the road below version 12, in an office started with
// the object model of version 11: the bar in every spreadsheet window with
// its buttons and drop-down menus, a bar of the same name left behind
// removed first, the bar's place kept between sessions of the office, and
// its buttons following a flowcharting session.
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "AddinFixture.h"
#include "OfficeProcess.h"
#include "ToolbarProbe.h"
#include "UiDriver.h"
#include "Workbooks.h"

namespace nivarel {

// The offices of this binary offer the object model of version 11.
inline const bool kRoadBelow12 = setenv("NIVAREL_OBJECT_MODEL", "11", 1) == 0;

}  // namespace nivarel

using namespace nivarel::office;
using namespace nivarel::driver;

namespace {

namespace fs = std::filesystem;
using nivarel::testing::AddinFixture;

constexpr char kBar[] = "Nivarel";
constexpr char kStart[] = "vnd.nivarel:rxNivarelStartFlowcharting";
constexpr char kStop[] = "vnd.nivarel:rxNivarelStopFlowcharting";

// Waits until check passes; false when it never does within the time.
bool Eventually(const std::function<bool()>& check, int seconds = 20) {
  auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  while (!check()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return true;
}

// The bar's buttons as the window shows them: caption, tooltip, greyed or
// not, a drop-down menu or not.
std::string Shown(const Application& app) {
  std::string seen;
  for (const auto& b : ToolbarButtons(app, kBar))
    seen += "[" + b.caption + "|" + b.tooltip + "|" + (b.enabled ? "on" : "off") + (b.dropDown ? "|menu" : "") + "]";
  return seen;
}

class CommandBarTest : public AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    ASSERT_TRUE(Eventually([&] { return !ToolbarsTitled(App(), kBar).empty(); })) << "no bar in the new window";
  }
  bool ButtonEnabled(const Application& app, const std::string& caption) {
    for (const auto& b : ToolbarButtons(app, kBar))
      if (b.caption == caption) return b.enabled;
    ADD_FAILURE() << "no button " << caption;
    return false;
  }
};

// The bar shows once in a spreadsheet window: its buttons with their
// captions and tooltips in the bar's order, the arrow tool as the office's
// own, the four popups as drop-down menus, Stop greyed.
TEST_F(CommandBarTest, TheBarShowsItsButtonsAndPopups) {
  EXPECT_EQ(std::vector<std::string>{"private:resource/toolbar/custom_nivarel"}, ToolbarsTitled(App(), kBar));
  EXPECT_EQ(
      "[Settings|Edit the Nivarel Settings|on][Start|Start / Restart Flowcharting|on][Stop|Stop Flowcharting|off]"
      "[Flowchart Wizard|Text-To-Flowchart Wizard|on][Symbols|Toggle the Symbol Toolbars|on]"
      "[Select Objects|Select Objects|on][Diagram Tools||on|menu][Insert||on|menu][Layout||on|menu][Help||on|menu]",
      Shown(App()));
  auto place = PlaceOfToolbar(App(), kBar);
  EXPECT_TRUE(place.visible);
  EXPECT_FALSE(place.floating);

  std::string commands;
  for (const auto& c : ToolbarCommands(App(), kBar))
    commands += (c.separatorBefore ? "|" : "") + c.menu + ">" + c.caption + "=" + c.command + "\n";
  EXPECT_EQ("", commands);
}

// Start greys itself, Settings and the Flowchart Wizard, and offers Stop;
// Stop gives the bar back its state without a session.
TEST_F(CommandBarTest, StartDisablesItselfAndEnablesStop) {
  const std::string none =
      "[Settings|on][Start|on][Stop|off][Flowchart Wizard|on][Symbols|on][Select Objects|on][Diagram Tools|on]"
      "[Insert|on][Layout|on][Help|on]";
  auto states = [&] {
    std::string seen;
    for (const auto& b : ToolbarButtons(App(), kBar)) seen += "[" + b.caption + "|" + (b.enabled ? "on" : "off") + "]";
    return seen;
  };
  EXPECT_TRUE(Eventually([&] { return states() == none; }, 10)) << states();
  Drive([&] { Ui().RunCommand(kStart, true); }, "  Start Flowcharting", [&] { Ui().PressDialogKey("RETURN"); });
  const std::string running =
      "[Settings|off][Start|off][Stop|on][Flowchart Wizard|off][Symbols|on][Select Objects|on][Diagram Tools|on]"
      "[Insert|on][Layout|on][Help|on]";
  EXPECT_TRUE(Eventually([&] { return states() == running; }, 10)) << states();
  EXPECT_GT(sheet_->GetShapes().Count(), 0) << "the run began with its start terminator";

  Drive([&] { Ui().RunCommand(kStop, true); }, " Add End Terminator?", [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_TRUE(Eventually([&] { return states() == none; }, 10)) << states();
  EXPECT_EQ("", nivarel::host::ReadLogFile());
}

// An office of the test's own on a profile and settings folder of its own,
// started again on them as a user starts the office the next day.
class CommandBarLifeTest : public AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    root_ = nivarel::testing::ConfigHome() + "/own-office";
    fs::remove_all(root_);
    fs::create_directories(root_ + "/config");
    savedConfig_ = getenv("XDG_CONFIG_HOME");
  }
  void TearDown() override {
    office_.reset();
    setenv("XDG_CONFIG_HOME", savedConfig_.c_str(), 1);
    fs::remove_all(root_);
    AddinFixture::TearDown();
  }
  // Starts the office on the test's profile (installing the extension the
  // first time) and opens a spreadsheet, where the bar comes.
  void StartOwnOffice() {
    OfficeProcess::Options options;
    options.profileDir = root_ + "/profile";
    if (!installed_) options.extension = NIVAREL_OXT;
    installed_ = true;
    setenv("XDG_CONFIG_HOME", (root_ + "/config").c_str(), 1);
    office_ = OfficeProcess::Start(options);
    setenv("XDG_CONFIG_HOME", savedConfig_.c_str(), 1);
    office_->App().GetWorkbooks().Add();
    ASSERT_TRUE(Eventually([&] { return !ToolbarsTitled(Own(), kBar).empty(); })) << "no bar came";
  }
  void StopOwnOffice() {
    ASSERT_TRUE(office_->Terminate());
    office_.reset();
  }
  Application Own() { return office_->App(); }
  // A value of the bar's place as the add-in stored it.
  std::string Stored(const std::string& key) {
    std::ifstream in(root_ + "/config/Tamrisk/user-settings.ini");
    std::string line;
    bool inSection = false;
    while (std::getline(in, line)) {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (!line.empty() && line[0] == '[') inSection = line == "[Nivarel\\CommandBarSettings]";
      else if (inSection && line.rfind(key + "=", 0) == 0) return line.substr(key.size() + 1);
    }
    return "(none)";
  }

  std::string root_, savedConfig_;
  bool installed_ = false;
  std::unique_ptr<OfficeProcess> office_;
};

// A bar of the same name that an earlier session left in the user's
// configuration is removed before the bar is made: one bar shows, the new one.
TEST_F(CommandBarLifeTest, ABarOfTheSameNameLeftBehindIsRemovedFirst) {
  StartOwnOffice();
  StopOwnOffice();
  const std::string folder = root_ + "/profile/user/config/soffice.cfg/modules/scalc/toolbar";
  fs::create_directories(folder);
  std::ofstream(folder + "/custom_toolbar_c0ffee.xml")
      << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<toolbar:toolbar xmlns:toolbar=\"http://openoffice.org/2001/toolbar\" "
         "xmlns:xlink=\"http://www.w3.org/1999/xlink\" toolbar:id=\"toolbar\" toolbar:uiname=\"Nivarel\">\n"
         " <toolbar:toolbaritem xlink:href=\".uno:About\" toolbar:text=\"Left over\"/>\n"
         "</toolbar:toolbar>\n";
  StartOwnOffice();
  EXPECT_EQ(std::vector<std::string>{"private:resource/toolbar/custom_nivarel"}, ToolbarsTitled(Own(), kBar));
  auto buttons = ToolbarButtons(Own(), kBar);
  ASSERT_FALSE(buttons.empty());
  EXPECT_EQ("Settings", buttons.front().caption);
  StopOwnOffice();
  EXPECT_FALSE(fs::exists(folder + "/custom_toolbar_c0ffee.xml")) << "the left-over bar stays in the profile";
}

// A bar moved off its docking area comes back where it was left, at the
// same place and size, when the office starts again; the place is stored
// under CommandBarSettings.
TEST_F(CommandBarLifeTest, ABarLeftFloatingComesBackWhereItWas) {
  StartOwnOffice();
  auto first = PlaceOfToolbar(Own(), kBar);
  EXPECT_FALSE(first.floating) << "a first start docks the bar";
  FloatToolbar(Own(), kBar, 230, 170);
  auto said = [&] {
    auto p = PlaceOfToolbar(Own(), kBar);
    return std::string(p.floating ? "floating " : "docked ") + std::to_string(p.x) + "," + std::to_string(p.y) + " " +
           std::to_string(p.width) + "x" + std::to_string(p.height);
  };
  ASSERT_TRUE(Eventually([&] { return PlaceOfToolbar(Own(), kBar).floating; }, 10)) << said();
  auto moved = PlaceOfToolbar(Own(), kBar);
  StopOwnOffice();
  EXPECT_EQ("Y", Stored("Visible"));
  EXPECT_EQ("4", Stored("Position"));
  EXPECT_NE("(none)", Stored("Left"));
  EXPECT_NE("(none)", Stored("Width"));

  StartOwnOffice();
  auto back = PlaceOfToolbar(Own(), kBar);
  EXPECT_TRUE(back.floating);
  EXPECT_EQ(moved.x, back.x);
  EXPECT_EQ(moved.y, back.y);
  EXPECT_EQ(moved.width, back.width);
  EXPECT_EQ(moved.height, back.height);
}

}  // namespace
