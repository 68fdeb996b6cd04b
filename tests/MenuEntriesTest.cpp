// Every entry of the add-in's menu and toolbar, reached through the office's
// dispatch as a click is, and what it does: its dialog, its message, or its
// change to the sheet, the selection, a setting or the window. Built twice:
// in addin_tests for the menu and toolbar of the extension's configuration
// (the road of version 12), and in commandbar_tests for the command bar of
// the road below 12, whose popups also hold the office's own commands.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <tuple>
#include <thread>

#include "AddinFixture.h"
#include "AddinProbe.h"
#include "Interior.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeRange.h"
#include "ToolbarProbe.h"
#include "UndoList.h"
#include "Window.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using namespace office;

// The office of this binary opens web pages with a stand-in for the
// desktop's opener, which notes the address it was given.
struct PageOpener {
  PageOpener() : folder("/tmp/nivarel-opener-" + std::to_string(getpid())) {
    fs::create_directories(folder);
    std::ofstream(folder + "/xdg-open") << "#!/bin/sh\necho \"$1\" >> '" << folder << "/opened'\n";
    fs::permissions(folder + "/xdg-open", fs::perms::owner_all);
    const char* path = getenv("PATH");
    setenv("PATH", (folder + ":" + (path ? path : "/usr/bin:/bin")).c_str(), 1);
  }
  ~PageOpener() {
    std::error_code ec;
    fs::remove_all(folder, ec);
  }
  std::string Opened() const { return testing::FileBytes(folder + "/opened"); }
  std::string folder;
};
const PageOpener& Opener() {
  static PageOpener opener;
  return opener;
}
const bool kOpenerSet = !Opener().folder.empty();

#ifdef NIVAREL_BAR_ROAD
constexpr bool kBarRoad = true;
#else
constexpr bool kBarRoad = false;
#endif

class MenuEntryTest : public testing::AddinFixture, public ::testing::WithParamInterface<std::string> {
 public:
  // The checks below work the fixture from outside.
  using testing::AddinFixture::Drive;
  using testing::AddinFixture::Eventually;
  using testing::OfficeTest::App;
  using testing::OfficeTest::book_;
  using testing::OfficeTest::sheet_;
  using testing::OfficeTest::Ui;

  // The title and text of the message box or window that the entry brings
  // up, closed again; a title "(nothing)" when none comes.
  std::pair<std::string, std::string> WindowOf(const std::string& url) {
    Ui().RunCommand(url, true);
    if (!Ui().WaitForModal()) return {"(nothing)", ""};
    std::string title = Ui().Title();
    std::string text;
    try {
      text = Ui().MessageText();
    } catch (const std::exception&) {
    }
    for (int i = 0; i < 10 && !Ui().WaitForNoModal(1000); ++i) CloseTopWindow();
    return {title, text};
  }
  void Run(const std::string& url) { Ui().RunCommand(url); }

  Shape AddProcess(double left, double top) {
    return sheet_->GetShapes().AddShape(msoShapeFlowchartProcess, left, top, 60, 30);
  }
  // A process, a decision, a label and a line between the two symbols.
  void DrawAChart() {
    Shapes shapes = sheet_->GetShapes();
    process_ = AddProcess(40, 40);
    decision_ = shapes.AddShape(msoShapeFlowchartDecision, 40, 120, 60, 40);
    label_ = shapes.AddTextbox(msoTextOrientationHorizontal, 140, 40, 50, 20);
    line_ = shapes.AddConnector(msoConnectorStraight, 70, 70, 70, 120);
  }
  // The names of the selected shapes, in the office's order.
  std::set<std::string> Selected() {
    std::set<std::string> names;
    auto selection = App().GetSelection();
    if (selection.shapes)
      for (int i = 1; i <= selection.shapes->Count(); ++i) names.insert(selection.shapes->Item(i).Name());
    return names;
  }
  // The state the office tells a command's listeners, after one settles.
  driver::StatusWatch::Told StateOf(const std::string& url) {
    driver::StatusWatch watch(App(), url);
    Eventually([&] { return watch.Last().times > 0; });
    return watch.Last();
  }

  std::optional<Shape> process_, decision_, label_, line_;
};

using Check = std::function<void(MenuEntryTest&)>;

// What an entry brings up: a window or message box of this title.
Check Shows(const std::string& title) {
  return [title](MenuEntryTest& t) {
    EXPECT_EQ(title, t.WindowOf(t.GetParam()).first);
  };
}

// An office command that puts the sheet into drawing a shape of this kind:
// the office then tells its family command the shape.
Check DrawsShape(const std::string& family, const std::string& kind) {
  return [family, kind](MenuEntryTest& t) {
    t.Run(t.GetParam());
    EXPECT_EQ(kind, t.StateOf(family).label.value_or("(none)"));
  };
}

// An office command that switches a drawing tool on.
Check SwitchesOn() {
  return [](MenuEntryTest& t) {
    t.Run(t.GetParam());
    EXPECT_TRUE(t.StateOf(t.GetParam()).checked.value_or(false));
  };
}

// Every entry and its check. Entries of one road only say so by their
// place in the office's menus: the coverage test below finds them there.
const std::map<std::string, Check>& Checks() {
  static const std::map<std::string, Check> checks = [] {
    std::map<std::string, Check> c;
    const std::string n = "vnd.nivarel:rxNivarel";
    c[n + "StartFlowcharting"] = [](MenuEntryTest& t) {
      t.Drive([&] { t.Ui().RunCommand(t.GetParam(), true); }, "  Start Flowcharting",
              [&] { t.Ui().PressDialogKey("RETURN"); });
      EXPECT_TRUE(t.Eventually([&] { return t.sheet_->GetShapes().Count() == 1; })) << "the start terminator";
      t.Drive([&] { t.Ui().RunCommand("vnd.nivarel:rxNivarelStopFlowcharting", true); }, " Add End Terminator?",
              [&] { t.Ui().PressDialogKey("ESC"); });
    };
    c[n + "StopFlowcharting"] = [](MenuEntryTest& t) {
      t.Drive([&] { t.Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting", true); }, "  Start Flowcharting",
              [&] { t.Ui().PressDialogKey("RETURN"); });
      ASSERT_TRUE(t.Eventually([&] { return t.sheet_->GetShapes().Count() == 1; })) << "the run began";
      EXPECT_EQ(" Add End Terminator?", t.WindowOf(t.GetParam()).first) << "the run ends, offering its end";
      EXPECT_EQ("(nothing)", t.WindowOf(t.GetParam()).first) << "no run is left to stop";
    };
    c[n + "FlowchartWizard"] = Shows("No Text Found");
    c[n + "NivarelSettings"] = Shows("Nivarel Settings");
    c[n + "CreateTemplate"] = Shows(" Template Generator");
    c[n + "LoadTemplate"] = Shows("Select Template");
    c[n + "SavePicture"] = Shows("Cannot Export Image");
    c[n + "CreateKey"] = Shows("No shapes found");
    c[n + "ExtractText"] = Shows("Extract Text Error");
    c[n + "StyleWizard"] = Shows("No Symbols Found");
    c[n + "CopyMermaid"] = Shows("Copy as Mermaid");
    c[n + "ImportMermaid"] = Shows(" Import Mermaid");
    c[n + "InsertFlowLine"] = Shows("Cannot Insert Flow Line");
    c[n + "InsertBranch"] = Shows(" Insert Branch");
    c[n + "InsertLabel"] = [](MenuEntryTest& t) {
      t.Ui().SelectCell("C3");
      EXPECT_EQ(" Add Label", t.WindowOf(t.GetParam()).first);
    };
    c[n + "AboutNivarel"] = Shows("About Nivarel");
    c[n + "InsertGroupBox"] = Shows(" Insert Group Box");
    c[n + "ShapeSelectionTool"] = Shows("No Shapes Found");
    c[n + "HelpContents"] = Shows(" Nivarel Help Resources");
    c[n + "NivarelHelp"] = Shows(" Nivarel Help Resources");
    c[n + "OpenWalkthrough"] = [](MenuEntryTest& t) {
      t.Run(t.GetParam());
      auto opened = [&] {
        auto book = t.App().ActiveWorkbook();
        return book && book->SheetNamed("Try It").has_value();
      };
      ASSERT_TRUE(t.Eventually(opened, 20000)) << "the walkthrough workbook opens";
      t.App().ActiveWorkbook()->Close();
    };
    c[n + "CheckForUpdates"] = [](MenuEntryTest& t) {
      // Other tests of the binary may have opened pages before: the opener
      // keeps every address it was given.
      t.Run(t.GetParam());
      EXPECT_TRUE(t.Eventually(
          [&] { return Opener().Opened().find("https://www.nivarel.org/updates.php") != std::string::npos; }))
          << "the update page went to the desktop's opener; it was given: " << Opener().Opened();
    };
    c[n + "ApplyStyles"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.process_->Fill().ForeColor().SetRGB(0x123456);
      t.Run(t.GetParam());
      EXPECT_NE(0x123456, t.process_->Fill().ForeColor().RGB()) << "the process took its style";
    };
    c[n + "CreateGrid"] = [](MenuEntryTest& t) {
      EXPECT_GT(t.sheet_->GetRange("D1").ColumnWidth(), 5.0);
      t.Run(t.GetParam());
      EXPECT_NEAR(1.71, t.sheet_->GetRange("D1").ColumnWidth(), 0.01);
    };
    c[n + "ToggleGridLines"] = [](MenuEntryTest& t) {
      bool before = t.App().ActiveWindow()->DisplayGridlines();
      t.Run(t.GetParam());
      EXPECT_EQ(!before, t.App().ActiveWindow()->DisplayGridlines());
    };
    c[n + "ClearShading"] = [](MenuEntryTest& t) {
      t.sheet_->GetRange("C3").GetInterior().SetColorIndex(6);
      t.Run(t.GetParam());
      EXPECT_EQ(xlNone, t.sheet_->GetRange("C3").GetInterior().ColorIndex());
    };
    c[n + "GroupAllShapes"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.Run(t.GetParam());
      Shapes shapes = t.sheet_->GetShapes();
      ASSERT_EQ(1, shapes.Count());
      EXPECT_EQ(msoGroup, shapes.Item(1).Type());
    };
    c[n + "UngroupAllShapes"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.sheet_->GetShapes().GetRange({t.process_->Name(), t.decision_->Name()}).Group();
      ASSERT_EQ(3, t.sheet_->GetShapes().Count());
      t.Run(t.GetParam());
      EXPECT_EQ(4, t.sheet_->GetShapes().Count());
    };
    c[n + "SelectAllShapes"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.Run(t.GetParam());
      EXPECT_EQ((std::set<std::string>{t.process_->Name(), t.decision_->Name(), t.label_->Name(), t.line_->Name()}),
                t.Selected());
    };
    c[n + "SelectLines"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.Run(t.GetParam());
      EXPECT_EQ(std::set<std::string>{t.line_->Name()}, t.Selected());
    };
    c[n + "SelectFlowchartSymbols"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.Run(t.GetParam());
      EXPECT_EQ((std::set<std::string>{t.process_->Name(), t.decision_->Name()}), t.Selected());
    };
    c[n + "SelectLabels"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.Run(t.GetParam());
      EXPECT_EQ(std::set<std::string>{t.label_->Name()}, t.Selected());
    };
    // The command bar's own: the office's drawing toolbars as a set.
    c[n + "SymbolToolbars"] = [](MenuEntryTest& t) {
      bool before = driver::OfficeToolbarShown(t.App(), "flowchartshapes");
      t.Run(t.GetParam());
      EXPECT_TRUE(t.Eventually([&] { return driver::OfficeToolbarShown(t.App(), "flowchartshapes") != before; }));
      t.Run(t.GetParam());
      EXPECT_TRUE(t.Eventually([&] { return driver::OfficeToolbarShown(t.App(), "flowchartshapes") == before; }));
    };
    // The office's own commands in the command bar's popups.
    c[".uno:SelectObject"] = [](MenuEntryTest& t) {
      t.Run(".uno:FlowChartShapes.flowchart-process");
      t.Run(t.GetParam());
      EXPECT_TRUE(t.StateOf(t.GetParam()).checked.value_or(false)) << "the arrow tool is on again";
    };
    const std::pair<const char*, const char*> flowchart[] = {
        {"alternate-process", ""}, {"card", ""}, {"collate", ""}, {"connector", ""}, {"data", ""}, {"decision", ""},
        {"delay", ""}, {"direct-access-storage", ""}, {"display", ""}, {"document", ""}, {"extract", ""},
        {"internal-storage", ""}, {"magnetic-disk", ""}, {"manual-input", ""}, {"manual-operation", ""},
        {"merge", ""}, {"multidocument", ""}, {"off-page-connector", ""}, {"or", ""}, {"predefined-process", ""},
        {"preparation", ""}, {"process", ""}, {"punched-tape", ""}, {"sequential-access", ""}, {"sort", ""},
        {"stored-data", ""}, {"summing-junction", ""}, {"terminator", ""}};
    for (const auto& [kind, unused] : flowchart)
      c[std::string(".uno:FlowChartShapes.flowchart-") + kind] =
          DrawsShape(".uno:FlowChartShapes", std::string("flowchart-") + kind);
    for (const char* kind : {"rectangular-callout", "round-rectangular-callout", "round-callout", "cloud-callout",
                             "line-callout-1", "line-callout-2", "line-callout-3"})
      c[std::string(".uno:CalloutShapes.") + kind] = DrawsShape(".uno:CalloutShapes", kind);
    for (const char* kind : {"right-arrow", "left-arrow", "up-arrow", "down-arrow"})
      c[std::string(".uno:ArrowShapes.") + kind] = DrawsShape(".uno:ArrowShapes", kind);
    for (const char* line : {".uno:LineArrowEnd", ".uno:LineArrows", ".uno:Line"}) c[line] = SwitchesOn();
    c[".uno:ToggleObjectRotateMode"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.process_->Select();
      t.Run(t.GetParam());
      EXPECT_TRUE(t.StateOf(t.GetParam()).checked.value_or(false)) << "the shape is in rotation mode";
    };
    // The hyperlink dialog stays open beside the sheet, and snapping to the
    // grid is a switch: each entry turns its state over, and back.
    for (const char* toggle : {".uno:HyperlinkDialog", ".uno:GridUse"})
      c[toggle] = [](MenuEntryTest& t) {
        bool before = t.StateOf(t.GetParam()).checked.value_or(false);
        t.Run(t.GetParam());
        EXPECT_EQ(!before, t.StateOf(t.GetParam()).checked.value_or(before));
        t.Run(t.GetParam());
        EXPECT_EQ(before, t.StateOf(t.GetParam()).checked.value_or(!before));
      };
    c[".uno:FormatGroup"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      t.sheet_->GetShapes().GetRange({t.process_->Name(), t.decision_->Name()}).Select();
      t.Run(t.GetParam());
      EXPECT_EQ(3, t.sheet_->GetShapes().Count());
    };
    c[".uno:FormatUngroup"] = [](MenuEntryTest& t) {
      t.DrawAChart();
      Shape group = t.sheet_->GetShapes().GetRange({t.process_->Name(), t.decision_->Name()}).Group();
      group.Select();
      t.Run(t.GetParam());
      EXPECT_EQ(4, t.sheet_->GetShapes().Count());
    };
    // Order: the process moves among four shapes, from the bottom (drawn
    // first) or from the top.
    const std::tuple<const char*, bool, std::function<bool(int)>> order[] = {
        {".uno:BringToFront", false, [](int z) { return z == 4; }},
        {".uno:ObjectForwardOne", false, [](int z) { return z > 1; }},
        {".uno:SendToBack", true, [](int z) { return z == 1; }},
        {".uno:ObjectBackOne", true, [](int z) { return z < 4; }}};
    for (const auto& [command, fromTop, moved] : order)
      c[command] = [fromTop = fromTop, moved = moved](MenuEntryTest& t) {
        t.DrawAChart();
        if (fromTop) t.process_->ZOrder(msoBringToFront);
        ASSERT_EQ(fromTop ? 4 : 1, t.process_->ZOrderPosition());
        t.process_->Select();
        t.Run(t.GetParam());
        EXPECT_TRUE(moved(t.process_->ZOrderPosition())) << t.process_->ZOrderPosition();
      };
    // Align: the process (left 40, 60 wide, top 40) and a second process
    // (left 200, top 200) selected together.
    const std::pair<const char*, std::function<bool(const Shape&, const Shape&)>> aligned[] = {
        {".uno:ObjectAlignLeft", [](const Shape& a, const Shape& b) { return a.Left() == b.Left(); }},
        {".uno:AlignCenter",
         [](const Shape& a, const Shape& b) { return std::abs(a.Left() + a.Width() / 2 - b.Left() - b.Width() / 2) < 0.1; }},
        {".uno:ObjectAlignRight",
         [](const Shape& a, const Shape& b) { return std::abs(a.Left() + a.Width() - b.Left() - b.Width()) < 0.1; }},
        {".uno:AlignUp", [](const Shape& a, const Shape& b) { return a.Top() == b.Top(); }},
        {".uno:AlignMiddle",
         [](const Shape& a, const Shape& b) { return std::abs(a.Top() + a.Height() / 2 - b.Top() - b.Height() / 2) < 0.1; }},
        {".uno:AlignDown",
         [](const Shape& a, const Shape& b) { return std::abs(a.Top() + a.Height() - b.Top() - b.Height()) < 0.1; }}};
    for (const auto& [command, same] : aligned)
      c[command] = [same = same](MenuEntryTest& t) {
        Shape a = t.AddProcess(40, 40);
        Shape b = t.sheet_->GetShapes().AddShape(msoShapeFlowchartDecision, 200, 200, 80, 50);
        ASSERT_FALSE(same(a, b));
        t.sheet_->GetShapes().GetRange({a.Name(), b.Name()}).Select();
        t.Run(t.GetParam());
        EXPECT_TRUE(same(a, b));
      };
    for (const char* flip : {".uno:ObjectMirrorVertical", ".uno:ObjectMirrorHorizontal"})
      c[flip] = [](MenuEntryTest& t) {
        // The office flips the selected arrow in its box and records it.
        Shape arrow = t.sheet_->GetShapes().AddShape(33, 40, 40, 80, 40);  // a right arrow
        double left = arrow.Left(), top = arrow.Top();
        arrow.Select();
        size_t entries = UndoList(*t.book_).Titles().size();
        t.Run(t.GetParam());
        EXPECT_EQ(entries + 1, UndoList(*t.book_).Titles().size());
        EXPECT_NEAR(left, arrow.Left(), 0.1);
        EXPECT_NEAR(top, arrow.Top(), 0.1);
      };
    return c;
  }();
  return checks;
}

// The entries of this road as the office shows them: the command bar's, or
// the menu's and toolbar's of the extension's configuration.
std::set<std::string> EntriesShown(const Application& app) {
  std::set<std::string> urls;
  if (kBarRoad)
    for (const auto& c : driver::ToolbarCommands(app, "Nivarel")) urls.insert(c.command);
  // The extension's menu stands on both roads.
  std::ifstream in(NIVAREL_SOURCE_DIR "/extension/Addons.xcu");
  std::string xml((std::istreambuf_iterator<char>(in)), {});
  std::regex url("vnd\\.nivarel:rxNivarel[A-Za-z]+");
  const size_t menus = xml.find("<node oor:name=\"OfficeToolBar\">");
  for (auto it = std::sregex_iterator(xml.begin(), xml.end(), url); it != std::sregex_iterator(); ++it) {
    // The icons' list names commands of both roads; the menus are above it.
    if (static_cast<size_t>(it->position()) > xml.find("<node oor:name=\"Images\">")) break;
    // The extension's toolbar is hidden while the command bar stands.
    if (kBarRoad && static_cast<size_t>(it->position()) > menus) continue;
    urls.insert(it->str());
  }
  return urls;
}

// The entries this binary's road has, known before the office starts.
std::vector<std::string> RoadEntries() {
  std::vector<std::string> out;
  for (const auto& [url, check] : Checks()) {
    bool barOnly = url.rfind(".uno:", 0) == 0 || url == "vnd.nivarel:rxNivarelSymbolToolbars" ||
                   url == "vnd.nivarel:rxNivarelSelectAllShapes" || url == "vnd.nivarel:rxNivarelInsertLabel" ||
                   url == "vnd.nivarel:rxNivarelNivarelHelp";
    if (kBarRoad || !barOnly) out.push_back(url);
  }
  return out;
}

// Each entry that the office shows on this road is checked here, and each
// entry checked here shows.
TEST_F(MenuEntryTest, EveryEntryOfTheRoadIsChecked) {
  std::set<std::string> shown = EntriesShown(App());
  ASSERT_GT(shown.size(), 20u);
  const std::vector<std::string> entries = RoadEntries();
  std::set<std::string> checked(entries.begin(), entries.end());
  for (const auto& url : shown)
    EXPECT_TRUE(checked.count(url)) << url << " shows, and nothing checks it";
  for (const auto& url : checked) EXPECT_TRUE(shown.count(url)) << url << " is checked, and does not show";
}

TEST_P(MenuEntryTest, DoesWhatItSays) {
  Checks().at(GetParam())(*this);
  EXPECT_EQ("", host::ReadLogFile());
}

std::string NameOf(const ::testing::TestParamInfo<std::string>& info) {
  std::string name;
  for (char c : info.param.substr(info.param.find(':') + 1))
    name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Entries, MenuEntryTest, ::testing::ValuesIn(RoadEntries()), NameOf);

}  // namespace
}  // namespace nivarel
