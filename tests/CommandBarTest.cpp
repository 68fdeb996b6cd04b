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
#include <future>
#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "AddinFixture.h"
#include "AddinProbe.h"
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

// The bar's buttons as the window shows them: caption, greyed or not, a
// drop-down menu or not.
std::string Shown(const Application& app) {
  std::string seen;
  for (const auto& b : ToolbarButtons(app, kBar))
    seen += "[" + b.caption + "|" + (b.enabled ? "on" : "off") + (b.dropDown ? "|menu" : "") + "]";
  return seen;
}

// Whether the bar's button with this caption shows enabled.
bool ButtonEnabled(const Application& app, const std::string& caption) {
  for (const auto& b : ToolbarButtons(app, kBar))
    if (b.caption == caption) return b.enabled;
  ADD_FAILURE() << "no button " << caption;
  return false;
}

class CommandBarTest : public AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    ASSERT_TRUE(Eventually([&] { return !ToolbarsTitled(App(), kBar).empty(); }, 20000)) << "no bar in the new window";
  }
};

// The bar shows once in a spreadsheet window, docked: its buttons with
// their captions in the bar's order, the arrow tool as the office's own, the
// four popups as drop-down menus, Stop greyed; the buttons' tooltips; the
// popups' entries in their order and groups, the office's own commands
// standing in for the host's built-in controls, those Calc lacks left out
// (the connector tools, the fourth and accent line callouts, snapping to
// shapes, regrouping, rerouting connectors).
TEST_F(CommandBarTest, TheBarShowsItsButtonsAndPopups) {
  EXPECT_EQ(std::vector<std::string>{"private:resource/toolbar/custom_nivarel"}, ToolbarsTitled(App(), kBar));
  const std::string none =
      "[Settings|on][Start|on][Stop|off][Flowchart Wizard|on][Symbols|on][Select Objects|on][Diagram Tools|on|menu]"
      "[Insert|on|menu][Layout|on|menu][Help|on|menu]";
  EXPECT_TRUE(Eventually([&] { return Shown(App()) == none; }, 10000)) << Shown(App());
  auto place = PlaceOfToolbar(App(), kBar);
  EXPECT_TRUE(place.visible);
  EXPECT_FALSE(place.floating);
  const std::pair<const char*, const char*> tooltips[] = {
      {"NivarelSettings", "Edit the Nivarel Settings"}, {"StartFlowcharting", "Start / Restart Flowcharting"},
      {"StopFlowcharting", "Stop Flowcharting"},        {"FlowchartWizard", "Text-To-Flowchart Wizard"},
      {"SymbolToolbars", "Toggle the Symbol Toolbars"}};
  for (const auto& [key, tooltip] : tooltips)
    EXPECT_EQ(tooltip, CommandTooltip(App(), std::string("vnd.nivarel:rxNivarel") + key)) << key;

  // The drop-down menus as they open under their buttons.
  auto entries = [&](const char* popup) {
    std::string out;
    for (const auto& e : DropDownEntries(App(), kBar, popup)) out += "[" + e + "]";
    return out;
  };
  EXPECT_EQ("[Help Contents...][Open Walkthrough...][Check for Updates...][About Nivarel...]", entries("Help"));
  EXPECT_EQ("[Create a Template...][Load Template...][Export as Picture...][Create a Symbol Key]"
            "[Extract Flowchart Text][Apply Styles][Style Wizard][Copy as Mermaid][Import Mermaid...]",
            entries("Diagram Tools"));
  EXPECT_EQ("[Flow Line Insertion Tool...][Insert Branch...][Insert Group Box...][Insert Borderless Label...]"
            "[Flowchart Symbol][Connector (flow line)][Callout][Block Arrow][Hyperlink]",
            entries("Insert"));
  EXPECT_EQ("[Create a Grid][View Gridlines][Clear Shading][Snap to Grid][Group Selected Shapes]"
            "[Ungroup Selected Shapes][Group All Shapes][Ungroup All Shapes]"
            "[Shape Selection Tool...][Select All Shapes][Select Lines and Connectors][Select Flowchart Symbols]"
            "[Select Labels and Textboxes][Order][Align or Distribute][Rotate or Flip]",
            entries("Layout"));

  // Every command behind the buttons and the menus' entries.
  std::string commands;
  for (const auto& c : ToolbarCommands(App(), kBar))
    commands += (c.separatorBefore ? "|" : "") + c.menu + ">" + c.caption + "=" + c.command + "\n";
  EXPECT_EQ(
      ">Settings=vnd.nivarel:rxNivarelNivarelSettings\n"
      "|>Start=vnd.nivarel:rxNivarelStartFlowcharting\n"
      "|>Stop=vnd.nivarel:rxNivarelStopFlowcharting\n"
      "|>Flowchart Wizard=vnd.nivarel:rxNivarelFlowchartWizard\n"
      "|>Symbols=vnd.nivarel:rxNivarelSymbolToolbars\n"
      "|>Select Objects=.uno:SelectObject\n"
      "Diagram Tools>Create a Template...=vnd.nivarel:rxNivarelCreateTemplate\n"
      "Diagram Tools>Load Template...=vnd.nivarel:rxNivarelLoadTemplate\n"
      "|Diagram Tools>Export as Picture...=vnd.nivarel:rxNivarelSavePicture\n"
      "|Diagram Tools>Create a Symbol Key=vnd.nivarel:rxNivarelCreateKey\n"
      "Diagram Tools>Extract Flowchart Text=vnd.nivarel:rxNivarelExtractText\n"
      "|Diagram Tools>Apply Styles=vnd.nivarel:rxNivarelApplyStyles\n"
      "Diagram Tools>Style Wizard=vnd.nivarel:rxNivarelStyleWizard\n"
      "|Diagram Tools>Copy as Mermaid=vnd.nivarel:rxNivarelCopyMermaid\n"
      "Diagram Tools>Import Mermaid...=vnd.nivarel:rxNivarelImportMermaid\n"
      "Insert>Flow Line Insertion Tool...=vnd.nivarel:rxNivarelInsertFlowLine\n"
      "Insert>Insert Branch...=vnd.nivarel:rxNivarelInsertBranch\n"
      "Insert>Insert Group Box...=vnd.nivarel:rxNivarelInsertGroupBox\n"
      "Insert>Insert Borderless Label...=vnd.nivarel:rxNivarelInsertLabel\n"
      "Insert/Flowchart Symbol>Alternate Process=.uno:FlowChartShapes.flowchart-alternate-process\n"
      "Insert/Flowchart Symbol>Card=.uno:FlowChartShapes.flowchart-card\n"
      "Insert/Flowchart Symbol>Collate=.uno:FlowChartShapes.flowchart-collate\n"
      "Insert/Flowchart Symbol>Connector=.uno:FlowChartShapes.flowchart-connector\n"
      "Insert/Flowchart Symbol>Data=.uno:FlowChartShapes.flowchart-data\n"
      "Insert/Flowchart Symbol>Decision=.uno:FlowChartShapes.flowchart-decision\n"
      "Insert/Flowchart Symbol>Delay=.uno:FlowChartShapes.flowchart-delay\n"
      "Insert/Flowchart Symbol>Direct Access Storage=.uno:FlowChartShapes.flowchart-direct-access-storage\n"
      "Insert/Flowchart Symbol>Display=.uno:FlowChartShapes.flowchart-display\n"
      "Insert/Flowchart Symbol>Document=.uno:FlowChartShapes.flowchart-document\n"
      "Insert/Flowchart Symbol>Extract=.uno:FlowChartShapes.flowchart-extract\n"
      "Insert/Flowchart Symbol>Internal Storage=.uno:FlowChartShapes.flowchart-internal-storage\n"
      "Insert/Flowchart Symbol>Magnetic Disk=.uno:FlowChartShapes.flowchart-magnetic-disk\n"
      "Insert/Flowchart Symbol>Manual Input=.uno:FlowChartShapes.flowchart-manual-input\n"
      "Insert/Flowchart Symbol>Manual Operation=.uno:FlowChartShapes.flowchart-manual-operation\n"
      "Insert/Flowchart Symbol>Merge=.uno:FlowChartShapes.flowchart-merge\n"
      "Insert/Flowchart Symbol>Multidocument=.uno:FlowChartShapes.flowchart-multidocument\n"
      "Insert/Flowchart Symbol>Off-page Connector=.uno:FlowChartShapes.flowchart-off-page-connector\n"
      "Insert/Flowchart Symbol>Or=.uno:FlowChartShapes.flowchart-or\n"
      "Insert/Flowchart Symbol>Predefined Process=.uno:FlowChartShapes.flowchart-predefined-process\n"
      "Insert/Flowchart Symbol>Preparation=.uno:FlowChartShapes.flowchart-preparation\n"
      "Insert/Flowchart Symbol>Process=.uno:FlowChartShapes.flowchart-process\n"
      "Insert/Flowchart Symbol>Punched Tape=.uno:FlowChartShapes.flowchart-punched-tape\n"
      "Insert/Flowchart Symbol>Sequential Access Storage=.uno:FlowChartShapes.flowchart-sequential-access\n"
      "Insert/Flowchart Symbol>Sort=.uno:FlowChartShapes.flowchart-sort\n"
      "Insert/Flowchart Symbol>Stored Data=.uno:FlowChartShapes.flowchart-stored-data\n"
      "Insert/Flowchart Symbol>Summing Junction=.uno:FlowChartShapes.flowchart-summing-junction\n"
      "Insert/Flowchart Symbol>Terminator=.uno:FlowChartShapes.flowchart-terminator\n"
      "Insert/Connector (flow line)>Straight Arrow=.uno:LineArrowEnd\n"
      "Insert/Connector (flow line)>Straight Double-Arrow=.uno:LineArrows\n"
      "|Insert/Connector (flow line)>Straight=.uno:Line\n"
      "Insert/Callout>Rectangular=.uno:CalloutShapes.rectangular-callout\n"
      "Insert/Callout>Rounded Rectangular=.uno:CalloutShapes.round-rectangular-callout\n"
      "Insert/Callout>Oval=.uno:CalloutShapes.round-callout\n"
      "Insert/Callout>Cloud=.uno:CalloutShapes.cloud-callout\n"
      "|Insert/Callout>Line 1 - Border=.uno:CalloutShapes.line-callout-1\n"
      "Insert/Callout>Line 2 - Border=.uno:CalloutShapes.line-callout-2\n"
      "Insert/Callout>Line 3 - Border=.uno:CalloutShapes.line-callout-3\n"
      "Insert/Block Arrow>Right Arrow=.uno:ArrowShapes.right-arrow\n"
      "Insert/Block Arrow>Left Arrow=.uno:ArrowShapes.left-arrow\n"
      "Insert/Block Arrow>Up Arrow=.uno:ArrowShapes.up-arrow\n"
      "Insert/Block Arrow>Down Arrow=.uno:ArrowShapes.down-arrow\n"
      "|Insert>Hyperlink=.uno:HyperlinkDialog\n"
      "Layout>Create a Grid=vnd.nivarel:rxNivarelCreateGrid\n"
      "Layout>View Gridlines=vnd.nivarel:rxNivarelToggleGridLines\n"
      "Layout>Clear Shading=vnd.nivarel:rxNivarelClearShading\n"
      "|Layout>Snap to Grid=.uno:GridUse\n"
      "|Layout>Group Selected Shapes=.uno:FormatGroup\n"
      "Layout>Ungroup Selected Shapes=.uno:FormatUngroup\n"
      "Layout>Group All Shapes=vnd.nivarel:rxNivarelGroupAllShapes\n"
      "Layout>Ungroup All Shapes=vnd.nivarel:rxNivarelUngroupAllShapes\n"
      "|Layout>Shape Selection Tool...=vnd.nivarel:rxNivarelShapeSelectionTool\n"
      "Layout>Select All Shapes=vnd.nivarel:rxNivarelSelectAllShapes\n"
      "Layout>Select Lines and Connectors=vnd.nivarel:rxNivarelSelectLines\n"
      "Layout>Select Flowchart Symbols=vnd.nivarel:rxNivarelSelectFlowchartSymbols\n"
      "Layout>Select Labels and Textboxes=vnd.nivarel:rxNivarelSelectLabels\n"
      "Layout/Order>Bring to Front=.uno:BringToFront\n"
      "Layout/Order>Send to Back=.uno:SendToBack\n"
      "Layout/Order>Bring Forward=.uno:ObjectForwardOne\n"
      "Layout/Order>Send Backward=.uno:ObjectBackOne\n"
      "Layout/Align or Distribute>Align Left=.uno:ObjectAlignLeft\n"
      "Layout/Align or Distribute>Align Center=.uno:AlignCenter\n"
      "Layout/Align or Distribute>Align Right=.uno:ObjectAlignRight\n"
      "Layout/Align or Distribute>Align Top=.uno:AlignUp\n"
      "Layout/Align or Distribute>Align Middle=.uno:AlignMiddle\n"
      "Layout/Align or Distribute>Align Bottom=.uno:AlignDown\n"
      "Layout/Rotate or Flip>Free Rotate=.uno:ToggleObjectRotateMode\n"
      "Layout/Rotate or Flip>Flip Vertical=.uno:ObjectMirrorVertical\n"
      "Layout/Rotate or Flip>Flip Horizontal=.uno:ObjectMirrorHorizontal\n"
      "Help>Help Contents...=vnd.nivarel:rxNivarelNivarelHelp\n"
      "Help>Open Walkthrough...=vnd.nivarel:rxNivarelOpenWalkthrough\n"
      "Help>Check for Updates...=vnd.nivarel:rxNivarelCheckForUpdates\n"
      "Help>About Nivarel...=vnd.nivarel:rxNivarelAboutNivarel\n",
      commands);
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
  EXPECT_TRUE(Eventually([&] { return states() == none; }, 10000)) << states();
  Drive([&] { Ui().RunCommand(kStart, true); }, "  Start Flowcharting", [&] { Ui().PressDialogKey("RETURN"); });
  const std::string running =
      "[Settings|off][Start|off][Stop|on][Flowchart Wizard|off][Symbols|on][Select Objects|on][Diagram Tools|on]"
      "[Insert|on][Layout|on][Help|on]";
  EXPECT_TRUE(Eventually([&] { return states() == running; }, 10000)) << states();
  EXPECT_GT(sheet_->GetShapes().Count(), 0) << "the run began with its start terminator";

  Drive([&] { Ui().RunCommand(kStop, true); }, " Add End Terminator?", [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_TRUE(Eventually([&] { return states() == none; }, 10000)) << states();
  EXPECT_EQ("", nivarel::host::ReadLogFile());
}

// A click on the bar is refused while a cell is being edited, in the bar's
// own words; an unexpected failure of a button is shown and logged under the
// click sink, and the bar then shows the state of no run, even during one.
TEST_F(CommandBarTest, TheBarsChecksAndFailuresSpeakForTheBar) {
  Ui().SelectCell("B2");
  Ui().Type("half typed");
  EXPECT_EQ(std::make_pair(std::string("Nivarel - Calc in Edit Mode"),
                           std::string("Cannot run a Nivarel function when Calc is in Edit mode. "
                                       "Press {ENTER} or {ESC} to exit edit mode.")),
            MessageOf([&] { Ui().RunCommand("vnd.nivarel:rxNivarelNivarelSettings", true); }));
  Ui().PressKey("ESC");

  Drive([&] { Ui().RunCommand(kStart, true); }, "  Start Flowcharting", [&] { Ui().PressDialogKey("RETURN"); });
  ASSERT_TRUE(Eventually([&] { return ButtonEnabled(App(), "Stop"); }, 10000));
  auto fault = MessageOf([&] { Ui().RunCommand("vnd.nivarel:rxNivarelFaultKey", true); });
  EXPECT_EQ("Nivarel", fault.first);
  EXPECT_NE(std::string::npos, fault.second.find("Test fault on command 'faultkey' (m_CBButton_Click)")) << fault.second;
  EXPECT_NE(std::string::npos, nivarel::host::ReadLogFile().find("CControlEvents.m_CBButton_Click"))
      << nivarel::host::ReadLogFile();
  EXPECT_TRUE(Eventually([&] { return !ButtonEnabled(App(), "Stop") && ButtonEnabled(App(), "Start"); }, 10000));
  // The run itself goes on; Stop from the menu ends it.
  Drive([&] { Ui().RunCommand(kStop, true); }, " Add End Terminator?", [&] { Ui().PressDialogKey("ESC"); });
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
    ownBook_.reset();
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
    ownBook_ = office_->App().GetWorkbooks().Add();
    ASSERT_TRUE(Eventually([&] { return !ToolbarsTitled(Own(), kBar).empty(); }, 20000)) << "no bar came";
  }
  void StopOwnOffice() {
    ownBook_.reset();
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
  std::optional<Workbook> ownBook_;
};

// A bar of the same name that an earlier session left in the user's
// configuration is removed before the bar is made: one bar shows, the new one.
TEST_F(CommandBarLifeTest, ABarOfTheSameNameLeftBehindIsRemovedFirst) {
  StartOwnOffice();
  StopOwnOffice();
  // The extension's own toolbar, which the bar stood in for, is to show
  // again in the next session.
  const std::string settings = nivarel::testing::FileBytes(root_ + "/profile/user/registrymodifications.xcu");
  ASSERT_FALSE(settings.empty());
  EXPECT_EQ(std::string::npos, settings.find("addin.Toolbar']\"><prop oor:name=\"Visible\" oor:op=\"fuse\"><value>false"))
      << "the extension's toolbar stays hidden";
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
  EXPECT_FALSE(fs::exists(folder + "/custom_nivarel.xml")) << "the bar was stored in the profile";
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
  ASSERT_TRUE(Eventually([&] { return PlaceOfToolbar(Own(), kBar).floating; }, 10000)) << said();
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

// Asked to end with a changed workbook, the office asks about saving: when
// the user cancels and the office goes on, the bar is as it was, and the
// extension's own toolbar stays hidden in the windows to come.
TEST_F(CommandBarLifeTest, TheBarStaysWhenTheOfficeGoesOnAfterAll) {
  StartOwnOffice();
  ownBook_->Sheet(1).GetRange("A1").SetValue("changed");
  UiDriver own(Own());
  auto asked = std::async(std::launch::async, [&] { return AskOfficeToEnd(Own()); });
  ASSERT_TRUE(own.WaitForModal()) << "no question about saving";
  EXPECT_EQ("QuerySaveDialog", own.FocusWindowId());
  own.ClickButton("cancel");
  EXPECT_FALSE(asked.get()) << "the office ended";
  EXPECT_EQ(std::vector<std::string>{"private:resource/toolbar/custom_nivarel"}, ToolbarsTitled(Own(), kBar));
  EXPECT_TRUE(Eventually([&] { return !ButtonEnabled(Own(), "Stop") && ButtonEnabled(Own(), "Start"); }, 10000));
  Own().GetWorkbooks().Add();
  EXPECT_TRUE(Eventually([&] { return !ToolbarsTitled(Own(), kBar).empty(); }, 20000));
  EXPECT_EQ(std::vector<std::string>{"private:resource/toolbar/custom_nivarel"}, ToolbarsTitled(Own(), kBar))
      << "a new window shows the extension's toolbar beside the bar";
}

}  // namespace
