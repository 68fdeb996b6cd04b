// The live run, typed into cells through the office's user interface: each
// committed step comes back as a symbol over its cell, joined to the one
// before, and the cursor goes where the next step belongs.
#include <gtest/gtest.h>

#include <cmath>

#include <filesystem>
#include <fstream>
#include <map>

#include "AddinFixture.h"
#include "AddinProbe.h"
#include "CConfig.h"
#include "CInteractiveFlowcharter.h"
#include "ConnectorFormat.h"
#include "Interior.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "PngFile.h"
#include "Range.h"
#include "SavedXlsx.h"
#include "Shape.h"
#include "Shapes.h"
#include "UserSettings.h"
#include "Window.h"
#include "Worksheet.h"

namespace nivarel {
namespace {

using office::Shape;

class LiveRunTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = std::make_unique<testing::SettingsFolder>(testing::ConfigHome() + "/live-run");
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    config_.LoadConfigData();
    // The shipped settings, less the prompts a typed test cannot answer.
    config_.StartTerminator = true;
    config_.EndTerminator = false;
    config_.AddFlowLine = true;
    config_.ShowGuides = true;
    config_.BranchLabelOption = 0;
    config_.StartLocation = "C3";
    config_.UseRestartLocation = false;
  }
  void TearDown() override {
    run_.reset();
    EXPECT_EQ("", host::ReadLogFile()) << "no step may fail quietly";
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Start() {
    run_ = std::make_unique<flowcharting::CInteractiveFlowcharter>();
    ASSERT_TRUE(run_->StartFlowcharting(config_));
  }
  std::string Selected() { return App().ActiveCell()->Address(false); }
  // Types a step where the run put the cursor and commits it with Enter.
  void Step(const std::string& text) { Ui().TypeIntoCell(Selected(), text); }

  // The sheet's shapes that are not lines, in drawing order.
  std::vector<Shape> Symbols() {
    std::vector<Shape> out;
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      if (!s.Connector()) out.push_back(s);
    }
    return out;
  }
  std::string Text(const Shape& s) { return s.GetTextFrame().GetCharacters().Text(); }

  std::unique_ptr<testing::SettingsFolder> folder_;
  rules::CConfig config_;
  std::unique_ptr<flowcharting::CInteractiveFlowcharter> run_;
};

TEST_F(LiveRunTest, IdenticalStepsAreDrawnAtEqualGaps) {
  Start();
  for (int i = 0; i < 30; ++i) Step("check the order");
  std::vector<Shape> symbols = Symbols();
  ASSERT_EQ(31u, symbols.size());
  // Measured in points, not through the cell lookup that places them.
  double row = sheet_->GetRange("A1").Height();
  std::vector<long> gaps;
  for (size_t i = 2; i < symbols.size(); ++i) gaps.push_back(std::lround((symbols[i].Top() - symbols[i - 1].Top()) / row));
  for (size_t i = 1; i < gaps.size(); ++i) EXPECT_EQ(gaps[0], gaps[i]) << "gap " << i + 1 << " in rows";
}

// Three typed steps as a picture at a known scale shows them: each flow line
// ends in a triangle at least three line widths across, and each symbol's
// text sits centred between its outlines.
TEST_F(LiveRunTest, APictureOfTheChartShowsArrowheadsAndCentredText) {
  Start();
  for (const char* step : {"take the order", "check the stock levels", "ship it"}) Step(step);
  const double scale = 2;  // pixels per point
  const std::string path = testing::ConfigHome() + "/three-steps.png";
  office::Worksheet::PictureArea area = sheet_->ExportDrawingPicture(path, scale);
  testing::PngFile picture(path);
  ASSERT_GT(picture.Width(), 0) << "a picture was written";
  ASSERT_NEAR(area.width * scale, picture.Width(), 1);
  auto px = [&](double x) { return static_cast<int>(std::lround((x - area.left) * scale)); };
  auto py = [&](double y) { return static_cast<int>(std::lround((y - area.top) * scale)); };

  // The width of the ink across row y through the ink nearest column x.
  auto across = [&](int x, int y) {
    int at = -1;
    for (int d = 0; d <= 3 && at < 0; ++d)
      for (int c : {x - d, x + d})
        if (at < 0 && picture.Inked(c, y)) at = c;
    if (at < 0) return 0;
    int l = at, r = at;
    while (picture.Inked(l - 1, y)) --l;
    while (picture.Inked(r + 1, y)) ++r;
    return r - l + 1;
  };
  office::Shapes shapes = sheet_->GetShapes();
  int lines = 0;
  for (int i = 1; i <= shapes.Count(); ++i) {
    Shape line = shapes.Item(i);
    if (!line.Connector()) continue;
    ++lines;
    auto [bx, by] = line.GetConnectorFormat().BeginPoint();
    auto [ex, ey] = line.GetConnectorFormat().EndPoint();
    ASSERT_NEAR(bx, ex, 0.5) << "the steps run straight down";
    double width = line.Line().Weight() * scale;
    EXPECT_NEAR(width, across(px(bx), py((by + ey) / 2)), 2) << line.Name() << ": the line itself";
    int widest = 0;
    // Above the tip, clear of the outline of the symbol it points at.
    for (int y = py(ey) - static_cast<int>(8 * width); y <= py(ey) - static_cast<int>(2 * width); ++y)
      widest = std::max(widest, across(px(ex), y));
    // A triangle three line widths across at its base covers a little less
    // than that in any one row of pixels: one pixel is allowed for that.
    EXPECT_GE(widest + 1, 3 * width) << line.Name() << ": the arrowhead near the end";
    EXPECT_GE(widest, 2 * across(px(bx), py((by + ey) / 2))) << line.Name() << ": plainly wider than the line";
  }
  EXPECT_EQ(3, lines);

  // Text pixels are dark grey; outlines and fills are coloured or light.
  auto text = [&](int x, int y) {
    testing::PngFile::Rgb c = picture.At(x, y);
    int hi = std::max({c.r, c.g, c.b}), lo = std::min({c.r, c.g, c.b});
    return hi < 160 && hi - lo < 30;
  };
  for (const Shape& symbol : Symbols()) {
    int mid = py(symbol.Top() + symbol.Height() / 2);
    int left = px(symbol.Left()) - 4, right = px(symbol.Left() + symbol.Width()) + 4;
    while (left < right && !picture.Inked(left, mid)) ++left;  // the outline's outer edges
    while (right > left && !picture.Inked(right, mid)) --right;
    int first = right, last = left;
    for (int y = py(symbol.Top()); y <= py(symbol.Top() + symbol.Height()); ++y)
      for (int x = left; x <= right; ++x)
        if (text(x, y)) first = std::min(first, x), last = std::max(last, x);
    ASSERT_LT(first, last) << Text(symbol) << ": its text is drawn";
    EXPECT_NEAR((left + right) / 2.0, (first + last) / 2.0, 2) << Text(symbol) << ": centred";
  }
}

TEST_F(LiveRunTest, TypedStepsBecomeJoinedSymbolsAndTheCursorMovesOn) {
  Start();
  ASSERT_EQ(1u, Symbols().size());
  Shape start = Symbols()[0];
  EXPECT_EQ(69, start.AutoShapeType());
  EXPECT_EQ("Start", Text(start));
  EXPECT_EQ("C3", start.TopLeftCell().Address(false));
  std::string first = Selected();
  EXPECT_EQ(3, App().ActiveCell()->Column());

  // A blank commit makes nothing.
  Ui().TypeIntoCell(first, "   ");
  EXPECT_EQ(1u, Symbols().size());
  EXPECT_EQ(1, run_->ChangeCount());

  Step("receive the order");
  ASSERT_EQ(2u, Symbols().size());
  Shape order = Symbols()[1];
  EXPECT_EQ(61, order.AutoShapeType());
  EXPECT_EQ("Receive the order", Text(order)) << "capitalised";
  EXPECT_NEAR(sheet_->GetRange(first).Top(), order.Top(), 0.1) << "at the cell's top";
  EXPECT_EQ("", sheet_->GetRange(first).Value()) << "the step leaves its cell";
  EXPECT_TRUE(Joined(start, order)) << LinesText();
  EXPECT_NEAR(start.Left() + start.Width() / 2, order.Left() + order.Width() / 2, 0.5) << "centred under the start";
  EXPECT_EQ(order.BottomRightCell().Row() + 3, App().ActiveCell()->Row());
  EXPECT_EQ(3, App().ActiveCell()->Column()) << "the run stays in its column";
  EXPECT_EQ(15, sheet_->GetRange(Selected()).GetInterior().ColorIndex()) << "the guide cross marks the cursor";

  Step("is it in stock?");
  ASSERT_EQ(3u, Symbols().size());
  ASSERT_EQ(office::msoGroup, Symbols()[2].Type()) << "the decision, grouped with its labels";
  Shape decision = Symbols()[2].GroupItems()[0];
  EXPECT_EQ(63, decision.AutoShapeType());
  EXPECT_EQ(3u, Symbols()[2].GroupItems().size());
  EXPECT_TRUE(Joined(order, decision)) << LinesText();
  EXPECT_EQ(decision.BottomRightCell().Row() + 3, App().ActiveCell()->Row());

  // A label leaves the cursor and the previous shape as they were: the next
  // step joins the decision.
  std::string beforeLabel = Selected();
  Ui().TypeIntoCell("H4", "LBL: backorder");
  EXPECT_EQ(office::msoTextBox, sheet_->GetShapes().Item(sheet_->GetShapes().Count()).Type());
  Ui().SelectCell(beforeLabel);
  Step("ship it");
  Shape ship = Symbols().back();
  EXPECT_EQ("Ship it", Text(ship));
  EXPECT_TRUE(Joined(decision, ship)) << LinesText();

  // Stopping without a terminator still puts the lines behind and takes the
  // guides away.
  run_->StopFlowcharting(true);
  EXPECT_EQ(office::xlNone, sheet_->GetRange(Selected()).GetInterior().ColorIndex());
  office::Shapes shapes = sheet_->GetShapes();
  for (Shape& line : Lines())
    for (Shape& s : Symbols()) EXPECT_LT(line.ZOrderPosition(), s.ZOrderPosition());
  EXPECT_EQ(Symbols().size(), 5u) << "4 steps and the label, no end terminator";
}

TEST_F(LiveRunTest, APastedColumnIsDrawnStepByStepWhereTheRunWantsIt) {
  Start();
  std::string first = Selected();
  // Three steps put on the sheet out of the run's sight, then copied and
  // pasted at the cursor as one change.
  App().SetEnableEvents(false);
  sheet_->GetRange("J20").SetValue("pick");
  sheet_->GetRange("J21").SetValue("pack");
  sheet_->GetRange("J22").SetValue("post");
  App().SetEnableEvents(true);
  Ui().SelectCell("J20:J22");
  Ui().RunCommand(".uno:Copy");
  Ui().SelectCell(first);
  Ui().RunCommand(".uno:Paste");
  auto symbols = Symbols();
  ASSERT_EQ(4u, symbols.size());
  EXPECT_NEAR(sheet_->GetRange(first).Top(), symbols[1].Top(), 0.1) << "the first at its own cell";
  EXPECT_EQ(symbols[1].BottomRightCell().Row() + 3, symbols[2].TopLeftCell().Row()) << "the others where the run chose";
  EXPECT_EQ(symbols[2].BottomRightCell().Row() + 3, symbols[3].TopLeftCell().Row());
  EXPECT_TRUE(Joined(symbols[1], symbols[2])) << LinesText();
  EXPECT_TRUE(Joined(symbols[2], symbols[3])) << LinesText();
}

TEST_F(LiveRunTest, ConnectorsInANewColumnStandAloneAndAnEndIsFoundByItsText) {
  config_.StartTerminator = false;
  config_.EndTerminator = true;
  Start();
  Step("take payment");
  Ui().TypeIntoCell("H3", "5");  // an off-page reference in a new column
  Step("send");                  // a process under it, joined to it
  auto symbols = Symbols();
  ASSERT_EQ(3u, symbols.size());
  EXPECT_EQ(74, symbols[1].AutoShapeType());
  EXPECT_FALSE(Joined(symbols[0], symbols[1])) << "a reference to elsewhere needs no line";
  EXPECT_TRUE(Joined(symbols[1], symbols[2])) << LinesText();

  // An on-page connector in the same column is joined like any step.
  Step("a");
  ASSERT_EQ(4u, Symbols().size());
  EXPECT_EQ(73, Symbols()[3].AutoShapeType());
  EXPECT_TRUE(Joined(Symbols()[2], Symbols()[3])) << LinesText();

  // A terminator reading "Send" holds END: stopping finds it and asks nothing.
  Shape end = sheet_->GetShapes().AddShape(69, 300, 400, 80, 30);
  end.GetTextFrame().GetCharacters().SetText("Send");
  auto stopped = std::async(std::launch::async, [&] { run_->StopFlowcharting(false); });
  bool asked = WaitForTitle(" Add End Terminator?", 3000);
  EXPECT_FALSE(asked) << "an end exists already";
  if (asked) Ui().PressDialogKey("ESC");
  stopped.get();
  EXPECT_EQ(5u, Symbols().size());
}

TEST_F(LiveRunTest, AStepWhoseSymbolCannotBeMadeStaysInItsCellAndIsLogged) {
  // Symbol rules where the prefix "BAD" names a symbol the office has not.
  std::string folder = testing::ConfigHome() + "/live-run-bad";
  std::filesystem::create_directories(folder + "/Tamrisk/Nivarel");
  std::ifstream shipped(NIVAREL_SOURCE_DIR "/extension/symbols.ini");
  std::string rules, line;
  bool first = false;
  while (std::getline(shipped, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.rfind("[", 0) == 0) first = line == "[Shape 1]";
    if (first && line.rfind("is_active=", 0) == 0) line = "is_active=True";
    if (first && line.rfind("prefix=", 0) == 0) line = "prefix=BAD";
    if (first && line.rfind("symbol_id=", 0) == 0) line = "symbol_id=200";
    rules += line + "\r\n";
  }
  std::ofstream(folder + "/Tamrisk/Nivarel/symbols.ini") << rules;
  testing::SettingsFolder bad(folder);
  config_.StartTerminator = false;
  Start();
  Ui().TypeIntoCell("C5", "bad: no such symbol");
  EXPECT_EQ(0u, Symbols().size());
  EXPECT_EQ("bad: no such symbol", sheet_->GetRange("C5").Value()) << "the step stays where it was typed";
  EXPECT_NE(std::string::npos, host::ReadLogFile().find("No shape could be made for C5: \"No such symbol\""))
      << host::ReadLogFile();
  host::ClearLogFile();
}

TEST_F(LiveRunTest, AFlowUpPastTheTopOfTheSheetEndsAtA1) {
  // Following the flow, a turn takes effect one step late: the second step
  // above the first still sends the cursor down, the third, going up again
  // from row 3, would leave the sheet and lands on A1.
  config_.StartTerminator = false;
  config_.FlowDirection = 2;
  Start();
  Ui().TypeIntoCell("C30", "one");
  Ui().TypeIntoCell("C15", "two");
  EXPECT_GT(App().ActiveCell()->Row(), 15) << "the turn up waits a step";
  Ui().TypeIntoCell("C3", "three");
  EXPECT_EQ("A1", Selected());
  EXPECT_EQ(3u, Symbols().size());
}

}  // namespace
}  // namespace nivarel

namespace nivarel {
namespace {

class MenuRunTest : public testing::AddinFixture {};

// The run as the user starts it: from the menu, inside the office, with the
// shipped settings; stopping offers the end terminator at the cursor. The
// menu's feature entries carry their labels and are told anew, greyed out,
// when the run starts and again when it stops.
TEST_F(MenuRunTest, TheMenuStartsARunInsideTheOfficeAndStopsItWithAnEnd) {
  const std::string start = "vnd.nivarel:rxNivarelStartFlowcharting", stop = "vnd.nivarel:rxNivarelStopFlowcharting";
  const std::map<std::string, std::string> labels = {
      {"ApplyStyles", "Default Styles"},        {"StyleWizard", "Style Wizard"},
      {"SavePicture", "Export as Picture"},     {"FlowchartWizard", "Flowchart Wizard"},
      {"CreateTemplate", "Create a Template"}};
  std::map<std::string, std::unique_ptr<driver::StatusWatch>> features;
  for (const auto& [key, label] : labels)
    features[key] = std::make_unique<driver::StatusWatch>(App(), "vnd.nivarel:rxNivarel" + key);
  driver::StatusWatch key(App(), "vnd.nivarel:rxNivarelCreateKey");
  auto told = [&](int times, bool enabled) {
    for (const auto& [name, watch] : features) {
      driver::StatusWatch::Told t = watch->Last();
      EXPECT_EQ(times, t.times) << name;
      EXPECT_EQ(enabled, t.enabled) << name;
      EXPECT_EQ(labels.at(name), t.label.value_or("(no label)")) << name;
    }
    EXPECT_FALSE(key.Last().label.has_value()) << "only the feature entries are relabelled";
    EXPECT_EQ(times, key.Last().times);
  };
  told(1, true);
  EXPECT_TRUE(driver::CommandEnabled(App(), start));
  EXPECT_FALSE(driver::CommandEnabled(App(), stop)) << "nothing to stop yet";
  EXPECT_TRUE(driver::CommandEnabled(App(), "vnd.nivarel:rxNivarelGroupAllShapes"));
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting",
        [&] { Ui().PressDialogKey("RETURN"); });
  office::Shapes shapes = sheet_->GetShapes();
  for (int i = 0; i < 100 && shapes.Count() == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  ASSERT_EQ(1, shapes.Count()) << "the start terminator";
  EXPECT_EQ("Start", shapes.Item(1).GetTextFrame().GetCharacters().Text());
  EXPECT_EQ("C3", shapes.Item(1).TopLeftCell().Address(false)) << "the stored start cell";
  EXPECT_EQ(3, App().ActiveCell()->Column()) << "the cursor waits under the terminator";
  EXPECT_GT(App().ActiveCell()->Row(), shapes.Item(1).BottomRightCell().Row());
  office::Range far = sheet_->GetRange("M60");
  EXPECT_NEAR(far.Height(), far.Width(), 0.1) << "the sheet is a square grid";
  EXPECT_EQ(0xFFFFFF, far.GetInterior().Color()) << "filled white, which hides the gridlines";
  EXPECT_FALSE(App().ActiveWindow()->DisplayGridlines());
  EXPECT_FALSE(driver::CommandEnabled(App(), start)) << "one run at a time";
  EXPECT_FALSE(driver::CommandEnabled(App(), "vnd.nivarel:rxNivarelFlowchartWizard"));
  told(2, false);
  EXPECT_TRUE(driver::CommandEnabled(App(), stop));
  EXPECT_TRUE(driver::CommandEnabled(App(), "vnd.nivarel:rxNivarelGroupAllShapes")) << "not a session command";
  Ui().TypeIntoCell(App().ActiveCell()->Address(false), "check the order");
  EXPECT_EQ(3, shapes.Count()) << "the step and its line";

  std::string cursor = App().ActiveCell()->Address(false);
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStopFlowcharting"); }, " Add End Terminator?", [&] {
    EXPECT_EQ(cursor, Ui().DialogControls()[3].text) << "offered at the cursor";
    Ui().PressDialogKey("RETURN");
  });
  for (int i = 0; i < 100 && shapes.Count() < 5; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  ASSERT_EQ(5, shapes.Count()) << "the end terminator and its line";
  std::vector<Shape> terminators;
  for (int i = 1; i <= shapes.Count(); ++i)
    if (shapes.Item(i).AutoShapeType() == 69) terminators.push_back(shapes.Item(i));
  ASSERT_EQ(2u, terminators.size());
  EXPECT_EQ("End", terminators[1].GetTextFrame().GetCharacters().Text()) << "the end terminator with the stored text";
  // Both ends are sized alike from the symbol rules, whatever their short texts.
  EXPECT_NEAR(terminators[0].Width(), terminators[1].Width(), 0.1);
  EXPECT_NEAR(terminators[0].Height(), terminators[1].Height(), 0.1);
  EXPECT_TRUE(driver::CommandEnabled(App(), start)) << "Start is offered again";
  EXPECT_FALSE(driver::CommandEnabled(App(), stop));
  told(3, true);
  EXPECT_EQ("", host::ReadLogFile());
}

// Saving the workbook during a run ends the run, without the end terminator,
// and the save goes on.
TEST_F(MenuRunTest, SavingTheWorkbookEndsTheRunQuietly) {
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting",
        [&] { Ui().PressDialogKey("RETURN"); });
  office::Shapes shapes = sheet_->GetShapes();
  for (int i = 0; i < 100 && shapes.Count() == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  Ui().TypeIntoCell(App().ActiveCell()->Address(false), "check the order");
  ASSERT_EQ(3, shapes.Count());

  std::string saved = testing::ConfigHome() + "/saved-during-run.ods";
  book_->SaveAs(saved);
  EXPECT_TRUE(std::filesystem::exists(saved));
  EXPECT_EQ("", Ui().DialogTitle()) << "no end terminator is offered";
  Ui().TypeIntoCell("H20", "after the run");
  EXPECT_EQ(3, shapes.Count()) << "the run no longer listens";
  EXPECT_EQ("after the run", sheet_->GetRange("H20").Value());
}

// A chart the user saves as .xlsx, and later saves again with the office's
// own Save after the run: each time the file's lines name the shapes they are
// glued to, so other programs open them glued.
TEST_F(MenuRunTest, SavingTheChartAsXlsxKeepsItsLinesGluedInTheFile) {
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting",
        [&] { Ui().PressDialogKey("RETURN"); });
  office::Shapes shapes = sheet_->GetShapes();
  for (int i = 0; i < 100 && shapes.Count() == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  Ui().TypeIntoCell(App().ActiveCell()->Address(false), "check the order");
  Ui().TypeIntoCell(App().ActiveCell()->Address(false), "is it complete?");
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStopFlowcharting"); }, " Add End Terminator?",
        [&] { Ui().PressDialogKey("RETURN"); });
  // The lines as the office holds them glued.
  std::map<std::string, testing::XlsxConnector> glued;
  std::vector<office::Shape> all;
  for (int i = 1; i <= shapes.Count(); ++i) all.push_back(shapes.Item(i));
  for (const office::Shape& s : all) {
    if (!s.Connector()) continue;
    office::ConnectorFormat c = s.GetConnectorFormat();
    glued[s.Name()] = {s.Name(), c.BeginConnectedShape()->Name(), c.EndConnectedShape()->Name(),
                       c.BeginConnectionSite(), c.EndConnectionSite()};
  }
  ASSERT_EQ(3u, glued.size());

  const std::string path = testing::ConfigHome() + "/menu-saved.xlsx";
  book_->SaveAs(path);
  Ui().TypeIntoCell("M2", "changed after the save");
  // Where the office asks whether to keep the foreign format, the user keeps it.
  Ui().RunCommand(".uno:Save", true);
  auto written = [&] {
    return testing::PackageMember(path, "xl/sharedStrings.xml", false).find("changed after") != std::string::npos;
  };
  for (int i = 0; i < 200 && !written(); ++i) {
    if (Ui().WaitForModal(100)) Ui().PressDialogKey("RETURN");
  }
  ASSERT_TRUE(written()) << "the office saved the change";
  ASSERT_TRUE(Ui().WaitForDocument());
  // The add-in rewrites the file once the office has written it.
  std::vector<testing::XlsxConnector> saved;
  auto repaired = [&] {
    saved = testing::XlsxConnectorsOf(path);
    for (const auto& c : saved)
      if (c.begin.empty() || c.end.empty()) return false;
    return !saved.empty();
  };
  for (int i = 0; i < 50 && !repaired(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(100));
  ASSERT_EQ(glued.size(), saved.size());
  for (const auto& c : saved) {
    ASSERT_TRUE(glued.count(c.name)) << c.name;
    EXPECT_EQ(glued[c.name].begin, c.begin) << c.name;
    EXPECT_EQ(glued[c.name].end, c.end) << c.name;
    EXPECT_EQ(glued[c.name].beginSite, c.beginSite) << c.name;
    EXPECT_EQ(glued[c.name].endSite, c.endSite) << c.name;
  }
  EXPECT_EQ("", host::ReadLogFile());
}

// A sheet that holds a chart restarts with the note; template frames alone
// are no chart.
TEST_F(MenuRunTest, AChartOnTheSheetRestartsTheRunAfterTheNote) {
  office::Shapes shapes = sheet_->GetShapes();
  shapes.AddTextbox(1, 10, 10, 80, 20).SetName("TEMPLATE title");
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting",
        [&] { Ui().PressDialogKey("ESC"); });

  shapes.AddShape(office::msoShapeFlowchartProcess, 200, 200, 100, 40);
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, " Restart Flowcharting", [&] {
    Ui().ClickInDialog("Don't show this message again");
    Ui().PressDialogKey("RETURN");
  });
  // The run picked up has no step before: the first one asks what to join
  // it to.
  Drive([&] { Ui().TypeIntoCell("C20", "go on"); }, " Add Flow Line Connector",
        [&] { Ui().ClickInDialog("Don't add flow line"); });
  EXPECT_EQ(3, shapes.Count()) << "the run listens again: the step became a symbol";
  EXPECT_EQ("", sheet_->GetRange("C20").Value());

  // Told not to, the note stays away the next time, and the run restarts.
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStopFlowcharting"); }, " Add End Terminator?",
        [&] { Ui().PressDialogKey("ALT+N"); });
  auto restarted = std::async(std::launch::async, [&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); });
  if (restarted.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
    std::string title;
    try {
      title = Ui().Title();
    } catch (const std::exception& e) {
      title = e.what();
    }
    ADD_FAILURE() << "the restart did not return; in front: '" << title << "'";
    for (int i = 0; i < 20 && restarted.wait_for(std::chrono::milliseconds(500)) != std::future_status::ready; ++i)
      CloseTopWindow();
  }
  restarted.get();
  host::SaveSetting("Nivarel", "Settings", "ShowRestart", "True");
  int before = shapes.Count();
  Drive([&] { Ui().TypeIntoCell("C40", "and on"); }, " Add Flow Line Connector",
        [&] { Ui().ClickInDialog("Don't add flow line"); });
  EXPECT_EQ(before + 1, shapes.Count()) << "restarted: the step became a symbol";
}

}  // namespace
}  // namespace nivarel
