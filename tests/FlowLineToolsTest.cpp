// The flow line tools worked as a person works them: the insertion dialog
// opened from its menu command or by the word FL typed in a live run, the
// prompt that a live run opens when a new step has no plain line to the one
// before; lists, search boxes and options read back through the
// accessibility tree, and each drawn line read from where the office glued
// its ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>

#include "AddinFixture.h"
#include "CEventHandler.h"
#include "CInteractiveFlowcharter.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "ShapeRange.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using office::Shape;
using Control = driver::UiDriver::DialogControl;

const char kInsert[] = " Insert Flow Line Connector";
const char kPrompt[] = " Add Flow Line Connector";
enum Side { kTop, kRight, kBottom, kLeft };

// A line as the office holds it: the shapes its ends are glued to, by text,
// and the side of each that the end's site lies on.
struct Glue {
  std::string from, to;
  int fromSide = -1, toSide = -1;
  bool operator==(const Glue& o) const {
    return from == o.from && to == o.to && fromSide == o.fromSide && toSide == o.toSide;
  }
};
std::ostream& operator<<(std::ostream& out, const Glue& g) {
  return out << g.from << " (side " << g.fromSide << ") -> " << g.to << " (side " << g.toSide << ")";
}

class FlowLineToolsTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("flow-line-tools");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    host::ClearLogFile();
  }
  void TearDown() override {
    run_.reset();
    folder_.reset();
    AddinFixture::TearDown();
  }

  // A process symbol of 72 by 36 points with its top left at left, top.
  Shape AddSymbol(const std::string& text, double left, double top) {
    Shape s = sheet_->GetShapes().AddShape(office::msoShapeFlowchartProcess, left, top, 72, 36);
    s.GetTextFrame().GetCharacters().SetText(text);
    return s;
  }
  // Four symbols: three down a column, A over B over C, and D to the right
  // of C in its row. Drawn in that order.
  void AddFourSymbols() {
    AddSymbol("Fetch order", 40, 40);
    AddSymbol("Check stock", 40, 120);
    AddSymbol("Pack goods", 40, 200);
    AddSymbol("Ship it", 240, 200);
  }
  Shape Named(const std::string& text) {
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i)
      if (!shapes.Item(i).Connector() && Text(shapes.Item(i)) == text) return shapes.Item(i);
    throw std::runtime_error("no symbol reads " + text);
  }
  static std::string Text(const Shape& s) {
    try {
      return s.GetTextFrame().GetCharacters().Text();
    } catch (const std::exception&) {
      return "";
    }
  }

  void OpenFromMenu(const std::function<void()>& steps) { Drive([&] { handler_.InsertFlowLine(); }, kInsert, steps); }

  // The entries of the dialog's lists.
  std::vector<Control> Items() {
    std::vector<Control> out;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "item") out.push_back(c);
    return out;
  }
  // The selected entries: the From list's, on the left, then the To list's.
  std::vector<std::string> SelectedEntries() {
    std::vector<Control> items = Items();
    int left = items.empty() ? 0 : items[0].left;
    for (const Control& c : items) left = std::min(left, c.left);
    std::vector<std::string> out(2);
    for (const Control& c : items)
      if (c.selected) out[c.left == left ? 0 : 1] = c.text;
    return out;
  }
  // The options read row by row, the From group's beside the To group's.
  std::vector<Control> Options() {
    std::vector<Control> out;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "radio") out.push_back(c);
    return out;
  }
  // The option marked in each group, From then To; -1 for none.
  std::pair<int, int> MarkedSides() {
    std::vector<Control> options = Options();
    std::pair<int, int> marked{-1, -1};
    for (size_t i = 0; i < options.size() && i < 8; ++i)
      if (options[i].checked) (i % 2 == 0 ? marked.first : marked.second) = static_cast<int>(i / 2);
    return marked;
  }
  bool SidesShown(std::pair<int, int> sides) {
    return Eventually([&] { return MarkedSides() == sides; });
  }
  // Whether the selected entries come to end with these texts.
  bool Proposes(const std::vector<std::string>& texts) {
    return Eventually([&] {
      auto selected = SelectedEntries();
      if (selected.size() != texts.size()) return false;
      for (size_t i = 0; i < texts.size(); ++i)
        if (selected[i].size() < texts[i].size() ||
            selected[i].compare(selected[i].size() - texts[i].size(), texts[i].size(), texts[i]) != 0)
          return false;
      return true;
    });
  }
  // Tabs into a group of options (0 From, 1 To) and marks side there with
  // the arrow keys, as a person does.
  void MarkSide(int group, int side) {
    bool in = false;
    for (int i = 0; i < 40 && !in; ++i) {
      std::vector<Control> options = Options();
      for (size_t k = 0; k < options.size(); ++k)
        if (options[k].focused && static_cast<int>(k % 2) == group) in = true;
      if (!in) Ui().PressDialogKey("TAB");
    }
    ASSERT_TRUE(in) << "the options of group " << group << " never took the focus";
    auto marked = [&] { return group == 0 ? MarkedSides().first : MarkedSides().second; };
    for (int i = 0; i < 4 && marked() != side; ++i) {
      Ui().PressDialogKey(marked() < side ? "DOWN" : "UP");
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    ASSERT_EQ(side, marked());
  }

  // The side of a shape that a connection site lies on: the side whose
  // middle is nearest the site as the office draws it.
  static int SideOf(const Shape& s, int site) {
    auto [x, y] = s.ConnectionSitePosition(site);
    double l = s.Left(), t = s.Top(), w = s.Width(), h = s.Height();
    double middles[4][2] = {{l + w / 2, t}, {l + w, t + h / 2}, {l + w / 2, t + h}, {l, t + h / 2}};
    int best = -1;
    double nearest = 1e300;
    for (int side = 0; side < 4; ++side) {
      double d = std::hypot(x - middles[side][0], y - middles[side][1]);
      if (d < nearest) nearest = d, best = side;
    }
    return best;
  }
  std::vector<Glue> Glues() {
    std::vector<Glue> out;
    for (Shape& line : Lines()) {
      office::ConnectorFormat c = line.GetConnectorFormat();
      auto begin = c.BeginConnectedShape(), end = c.EndConnectedShape();
      Glue g;
      if (begin) g.from = Text(*begin), g.fromSide = SideOf(*begin, c.BeginConnectionSite());
      if (end) g.to = Text(*end), g.toSide = SideOf(*end, c.EndConnectionSite());
      out.push_back(g);
    }
    return out;
  }

  // A live run begun at C3 with a start terminator, asking nothing at the end.
  void StartRun() {
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    rules::CConfig config;
    config.LoadConfigData();
    config.StartTerminator = true;
    config.EndTerminator = false;
    config.AddFlowLine = true;
    config.FlowDirection = 2;
    config.BranchLabelOption = 0;
    config.StartLocation = "C3";
    config.UseRestartLocation = false;
    run_ = std::make_unique<flowcharting::CInteractiveFlowcharter>();
    ASSERT_TRUE(run_->StartFlowcharting(config));
  }
  std::string Selected() { return App().ActiveCell()->Address(false); }

  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
  std::unique_ptr<flowcharting::CInteractiveFlowcharter> run_;
};

TEST_F(FlowLineToolsTest, TheMenuWantsTwoShapesThatAreNotPartOfATemplate) {
  AddSymbol("Fetch order", 40, 40);
  sheet_->GetShapes().AddShape(office::msoShapeRectangle, 200, 40, 100, 40).SetName("TEMPLATE_Lane");
  sheet_->GetShapes().AddConnector(office::msoConnectorStraight, 0, 0, 50, 50);
  EXPECT_EQ(std::make_pair(std::string("Cannot Insert Flow Line"),
                           std::string("There must be at least 2 shapes on the current\n"
                                       "worksheet to use the Insert Flow Line feature.")),
            MessageOf([&] { handler_.InsertFlowLine(); }));
  EXPECT_EQ(1u, Lines().size()) << "nothing drawn";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowLineToolsTest, WithACellSelectedTheNewestSymbolIsJoinedToTheOneBeforeAsOneUndoEntry) {
  AddFourSymbols();
  office::UndoList undo(sheet_->Parent());
  size_t entries = undo.Titles().size();
  OpenFromMenu([&] {
    EXPECT_EQ(8u, Items().size()) << "every symbol in both lists";

    EXPECT_TRUE(Proposes({"Ship it", "Pack goods"})) << ::testing::PrintToString(SelectedEntries());
    // Pack goods lies left of Ship it in its row, nothing between: out of the
    // left side, into the right.
    EXPECT_TRUE(SidesShown({kLeft, kRight})) << MarkedSides().first << "," << MarkedSides().second;
    Ui().ClickInDialog("Add flow line");
  });
  EXPECT_EQ((std::vector<Glue>{{"Ship it", "Pack goods", kLeft, kRight}}), Glues());
  ASSERT_EQ(entries + 1, undo.Titles().size());
  EXPECT_EQ("Nivarel: Insert Flow Line", undo.Titles().front());
  undo.Undo();
  EXPECT_TRUE(Lines().empty()) << "Ctrl+Z takes the line back";
  EXPECT_EQ(4, sheet_->GetShapes().Count());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowLineToolsTest, ListingTheMembersOfAGroupLeavesTheGroupWholeAndTheUndoListAsItWas) {
  AddFourSymbols();
  sheet_->GetShapes().GetRange({Named("Fetch order").Name(), Named("Check stock").Name()}).Group();
  office::UndoList undo(sheet_->Parent());
  const std::vector<std::string> entries = undo.Titles();
  OpenFromMenu([&] {
    EXPECT_EQ(8u, Items().size()) << "the group's members are listed with the others";
    Ui().ClickInDialog("Don't add flow line");
  });
  office::Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(3, shapes.Count()) << "the group is closed again";
  int groups = 0;
  for (int i = 1; i <= shapes.Count(); ++i) groups += shapes.Item(i).Type() == office::msoGroup;
  EXPECT_EQ(1, groups);
  EXPECT_EQ(entries, undo.Titles()) << "opening and closing the group is not a change to undo";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowLineToolsTest, TwoSelectedSymbolsAreProposedAndASideSetByHandStaysUntilTheNextChoiceOfSymbol) {
  AddFourSymbols();
  sheet_->GetShapes().GetRange({Named("Fetch order").Name(), Named("Pack goods").Name()}).Select();
  OpenFromMenu([&] {
    EXPECT_TRUE(Proposes({"Fetch order", "Pack goods"})) << ::testing::PrintToString(SelectedEntries());
    // Check stock stands between them in their column: the line goes round
    // on the right.
    EXPECT_TRUE(SidesShown({kRight, kRight})) << MarkedSides().first << "," << MarkedSides().second;
    MarkSide(0, kLeft);
    EXPECT_TRUE(SidesShown({kLeft, kRight})) << "the other side stays";
    // Another first symbol: the sides are worked out anew, Check stock
    // right above Pack goods.
    // Back to the From list, and down a row.
    for (int i = 0; i < 4; ++i) Ui().PressDialogKey("SHIFT+TAB");
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Proposes({"Check stock", "Pack goods"})) << ::testing::PrintToString(SelectedEntries());
    EXPECT_TRUE(SidesShown({kBottom, kTop})) << MarkedSides().first << "," << MarkedSides().second;
    MarkSide(1, kLeft);
    EXPECT_TRUE(SidesShown({kBottom, kLeft}));
    Ui().ClickInDialog("Add flow line");
  });
  EXPECT_EQ((std::vector<Glue>{{"Check stock", "Pack goods", kBottom, kLeft}}), Glues());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowLineToolsTest, QuickSearchSelectsTheFirstSymbolWhoseTextBeginsWithWhatIsTyped) {
  AddFourSymbols();
  OpenFromMenu([&] {
    ASSERT_TRUE(FocusControl([](const Control& c) { return c.kind == "edit"; })) << "the From list's search box";
    Ui().TypeInDialog("ch");  // "Fetch order" holds it, "Check stock" begins with it
    EXPECT_TRUE(Proposes({"Check stock", "Pack goods"})) << ::testing::PrintToString(SelectedEntries());
    Ui().PressDialogKey("TAB");  // on to the To list
    Ui().PressDialogKey("TAB");  // and its search box
    Ui().TypeInDialog("FE");
    EXPECT_TRUE(Proposes({"Check stock", "Fetch order"})) << ::testing::PrintToString(SelectedEntries());
    // Fetch order right above Check stock: out of the top, into the bottom.
    EXPECT_TRUE(SidesShown({kTop, kBottom})) << MarkedSides().first << "," << MarkedSides().second;
    Ui().TypeInDialog("x");  // "FEX" begins nothing: the choice stays
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(Proposes({"Check stock", "Fetch order"}));
    Ui().ClickInDialog("Add flow line");
  });
  EXPECT_EQ((std::vector<Glue>{{"Check stock", "Fetch order", kTop, kBottom}}), Glues());
}

TEST_F(FlowLineToolsTest, ASymbolDeletedWhileTheDialogIsOpenIsNotFoundAndTheDialogStays) {
  AddFourSymbols();
  OpenFromMenu([&] {
    ASSERT_TRUE(Proposes({"Ship it", "Pack goods"}));
    Named("Pack goods").Delete();
    Ui().ClickInDialog("Add flow line");
    ASSERT_TRUE(WaitForTitle("Shape not found"));
    EXPECT_EQ(
        "An error occured when Nivarel tried to locate the 'To' symbol.\n"
        "Please select another symbol or click Cancel to exit.",
        Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog(kInsert)) << "the dialog stays";
    Ui().ClickInDialog("Don't add flow line");
  });
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowLineToolsTest, ALiveStepOutOfLineAsksForItsLineNearestSymbolFirst) {
  StartRun();
  Ui().TypeIntoCell(Selected(), "one");
  ASSERT_EQ(1u, Lines().size()) << "Start and One are joined as usual";
  office::UndoList undo(sheet_->Parent());
  size_t entries = undo.Titles().size();
  // Far off in another column: no line follows by itself.
  Drive([&] { Ui().TypeIntoCell("H20", "elsewhere"); }, kPrompt, [&] {
    std::vector<Control> items = Items();
    ASSERT_EQ(2u, items.size()) << "the other symbols, not the new one";
    EXPECT_NE(std::string::npos, items[0].text.find("One")) << "the nearer first: " << items[0].text;
    EXPECT_NE(std::string::npos, items[1].text.find("Start")) << items[1].text;
    EXPECT_TRUE(items[0].selected) << "and proposed";
    Ui().ClickInDialog("Don't add flow line");
  });
  EXPECT_EQ(1u, Lines().size()) << "no line drawn: " << LinesText();
  EXPECT_EQ(4, sheet_->GetShapes().Count()) << "Start, One, their line and the new step";
  EXPECT_EQ(entries + 1, undo.Titles().size());

  // Once more, further off; this time the nearest symbol is joined to it.
  Drive([&] { Ui().TypeIntoCell("L40", "far away"); }, kPrompt, [&] {
    ASSERT_FALSE(Items().empty());
    EXPECT_NE(std::string::npos, Items()[0].text.find("Elsewhere")) << Items()[0].text;
    Ui().ClickInDialog("Add flow line");
  });
  ASSERT_EQ(2u, Lines().size()) << LinesText();
  EXPECT_TRUE(Joined(Named("Elsewhere"), Named("Far away"))) << LinesText();
  ASSERT_EQ(entries + 2, undo.Titles().size()) << "the step and its line are one entry";
  EXPECT_EQ("Nivarel: Far away", undo.Titles().front());
  undo.Undo();
  EXPECT_EQ(1u, Lines().size()) << "Ctrl+Z takes the step back with its line: " << LinesText();
  EXPECT_EQ(4, sheet_->GetShapes().Count());
  EXPECT_EQ("far away", sheet_->GetRange("L40").Text()) << "and leaves the typed text";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowLineToolsTest, TheWordFLTypedInALiveRunOpensTheInsertionDialog) {
  StartRun();
  Ui().TypeIntoCell(Selected(), "one");
  std::string cell = Selected();
  int shapes = sheet_->GetShapes().Count();
  Drive([&] { Ui().TypeIntoCell(cell, "fl"); }, kInsert, [&] {
    EXPECT_TRUE(Proposes({"One", "Start"})) << ::testing::PrintToString(SelectedEntries());
    Ui().ClickInDialog("Don't add flow line");
  });
  EXPECT_EQ("", sheet_->GetRange(cell).Text()) << "the word is taken out of its cell";
  EXPECT_EQ(shapes, sheet_->GetShapes().Count()) << "nothing drawn";

  // Again, and this time a line back up from One to Start: one entry.
  office::UndoList undo(sheet_->Parent());
  size_t entries = undo.Titles().size();
  Drive([&] { Ui().TypeIntoCell(cell, "FL"); }, kInsert, [&] {
    // Start right above One: out of the top, into the bottom.
    EXPECT_TRUE(SidesShown({kTop, kBottom})) << MarkedSides().first << "," << MarkedSides().second;
    Ui().ClickInDialog("Add flow line");
  });
  std::vector<Glue> glues = Glues();
  ASSERT_EQ(2u, glues.size()) << LinesText();
  EXPECT_NE(glues.end(), std::find(glues.begin(), glues.end(), Glue{"One", "Start", kTop, kBottom}))
      << "beside the run's own line: " << ::testing::PrintToString(glues);
  EXPECT_EQ(entries + 1, undo.Titles().size());
  undo.Undo();
  EXPECT_EQ(1u, Lines().size()) << "Ctrl+Z takes the line back: " << LinesText();
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
