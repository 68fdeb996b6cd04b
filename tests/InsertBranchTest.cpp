// The branch tool worked as a person works it: opened from its command or by
// the word BR typed in a live run, boxes typed into, Enter pressed, pictures
// and buttons clicked, and the fan it draws read back from the sheet: where
// each symbol stands on the grid, what its text says, where its line is
// glued, and what Ctrl+Z and Ctrl+Y do with it.
#include <gtest/gtest.h>

#include <cmath>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CEventHandler.h"
#include "CFlowLineAdder.h"
#include "CIniSymbolDataAccess.h"
#include "CInteractiveFlowcharter.h"
#include "CPageLayout.h"
#include "CShapeAdder.h"
#include "CShapeDimensions.h"
#include "CShapeFormatter.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeRange.h"
#include "TextFrame.h"
#include "UndoList.h"

namespace nivarel {
namespace {

using office::Shape;
using Control = driver::UiDriver::DialogControl;

const char kTitle[] = " Insert Branch";
constexpr int kProcess = 61;
constexpr int kTop = 0, kRight = 1, kBottom = 2, kLeft = 3;

class InsertBranchTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("insert-branch");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    shapes::CPageLayout().CreateGrid();  // square cells: a process is 8 columns by 2 rows
    config_.LoadConfigData();
    rules::RuleTable prefixes, keywords;
    rules::CIniSymbolDataAccess().InitializeRules(symbols_, prefixes, keywords);
    host::ClearLogFile();
  }
  void TearDown() override {
    EXPECT_EQ("", host::ReadLogFile());
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Open(const std::function<void()>& steps) { Drive([&] { handler_.InsertBranch(); }, kTitle, steps); }

  // A process drawn by the shape engine over a cell, as a run draws it.
  Shape Process(const std::string& cell, const std::string& text) {
    std::optional<office::Worksheet> ws = *sheet_;
    shapes::CShapeFormatter formatter;
    auto shape = shapes::CShapeAdder().AddShape(ws, symbols_, config_, formatter, text, cell, kProcess, "");
    shapes::CShapeDimensions().SetShapeDimensions(*shape, config_, symbols_, 8, false, text);
    return *shape;
  }

  // Adds an item through the boxes and the Add button.
  void AddItem(const std::string& text, const std::string& label = "") {
    size_t before = Listed().size();
    TypeBeside("Text in Shape:", text);
    if (!label.empty()) TypeBeside("Label (Optional):", label);
    Ui().ClickInDialog("Add");
    ASSERT_TRUE(Eventually([&] { return Listed().size() == before + 1; })) << text;
  }

  // The sheet's symbols (not lines, not text boxes) by their text.
  std::optional<Shape> Symbol(const std::string& text) {
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      if (s.Type() == office::msoAutoShape && !s.Connector() && s.GetTextFrame().GetCharacters().Text() == text)
        return s;
    }
    return std::nullopt;
  }
  std::vector<Shape> OfType(int type) {
    std::vector<Shape> out;
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i)
      if (shapes.Item(i).Type() == type) out.push_back(shapes.Item(i));
    return out;
  }
  static std::string Cell(const Shape& s) { return s.TopLeftCell().Address(false); }
  // The line from one shape to another is glued to these sides of them.
  void ExpectGlued(const Shape& from, int fromSide, const Shape& to, int toSide) {
    for (Shape& line : Lines()) {
      auto c = line.GetConnectorFormat();
      auto begin = c.BeginConnectedShape(), end = c.EndConnectedShape();
      if (!begin || !end || begin->Name() != from.Name() || end->Name() != to.Name()) continue;
      EXPECT_EQ(shapes::CFlowLineAdder::GetConnectionPoint(kProcess, fromSide), c.BeginConnectionSite()) << to.Name();
      EXPECT_EQ(shapes::CFlowLineAdder::GetConnectionPoint(kProcess, toSide), c.EndConnectionSite()) << to.Name();
      return;
    }
    ADD_FAILURE() << "no line from " << from.Name() << " to " << to.Name() << "; " << LinesText();
  }
  std::string Selected() { return App().ActiveCell()->Address(false); }

  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
  rules::CConfig config_;
  rules::CSymbolData symbols_;
};

// On an empty sheet the dialog makes the symbol to join from at the cell in
// front; its checks speak before anything is drawn; Enter walks from the text
// box to the label box, adds the item, and with both boxes empty runs the
// tool. One item hangs below the base's left column, a row lower for its
// label, its text broken at "|"; Ctrl+Z takes the whole fan back.
TEST_F(InsertBranchTest, OnAnEmptySheetTheBaseIsMadeAndOneLabelledItemHangsBelowItsLeftColumn) {
  sheet_->GetRange("E5").Select();
  office::UndoList undo(sheet_->Parent());
  size_t entries = undo.Titles().size();
  const std::string location = "Location (worksheet cell)";
  Open([&] {
    ASSERT_TRUE(Shows("Step 1 - Add Shape to Connect From"));
    EXPECT_EQ("E5", Beside(location).text) << "the active cell";
    EXPECT_TRUE(Listed().empty()) << "no list of symbols to join from";
    TypeBeside(location, "");
    EXPECT_EQ(std::make_pair(std::string("No Location Set"), std::string("The location cell must be set.")),
              MessageOverDialog(kTitle, [&] { Ui().ClickInDialog("OK"); }));
    TypeBeside(location, "not a cell");
    EXPECT_EQ(std::make_pair(std::string("Invalid Location"),
                             std::string("The location cell is invalid.\nPlease use the Select Cell button to set it.")),
              MessageOverDialog(kTitle, [&] { Ui().ClickInDialog("OK"); }));
    TypeBeside(location, "E5");
    EXPECT_EQ(std::make_pair(std::string("No Branches Entered"),
                             std::string("Thee are no branch items entered. Use the 'Text in Shape'\n"
                                         "field and the 'Add' button to add branches.")),
              MessageOverDialog(kTitle, [&] { Ui().ClickInDialog("OK"); }));
    EXPECT_EQ(std::make_pair(std::string("No Text Entered"), std::string("You must enter text for the shape.")),
              MessageOverDialog(kTitle, [&] { Ui().ClickInDialog("Add"); }));

    TypeBeside("Text in Shape:", "Ship|it");
    Ui().PressDialogKey("RETURN");
    EXPECT_TRUE(Eventually([&] { return Beside("Label (Optional):").focused; })) << "Enter goes on to the label";
    EXPECT_TRUE(Listed().empty());
    Ui().TypeInDialog("Yes");
    Ui().PressDialogKey("RETURN");
    EXPECT_TRUE(Eventually([&] { return Listed() == std::vector<std::string>{"Ship|it   Yes"}; }))
        << ::testing::PrintToString(Listed());
    EXPECT_EQ("", Beside("Text in Shape:").text);
    EXPECT_EQ("", Beside("Label (Optional):").text);
    EXPECT_TRUE(Beside("Text in Shape:").focused);
    Ui().PressDialogKey("RETURN");  // both boxes empty: the tool runs
  });
  auto base = Symbol(" "), item = Symbol("Ship\nit");
  ASSERT_TRUE(base) << "the empty base text is one blank; " << LinesText();
  ASSERT_TRUE(item) << "\"|\" is a line break; " << LinesText();
  EXPECT_EQ("E5", Cell(*base));
  EXPECT_EQ("M7", base->BottomRightCell().Address(false)) << "8 columns by 2 rows";
  // One item keeps the base's left column; its row is the base's bottom row
  // (7) + the gap (2) + 1 for the label + 1 on version 12.
  EXPECT_EQ("E11", Cell(*item));
  ExpectGlued(*base, kBottom, *item, kTop);
  auto labels = OfType(office::msoTextBox);
  ASSERT_EQ(1u, labels.size());
  EXPECT_EQ("Yes", labels[0].GetTextFrame().GetCharacters().Text());
  EXPECT_NEAR(sheet_->GetRange("E9").Top(), labels[0].Top(), 0.5) << "two rows above the item";
  EXPECT_NEAR(item->Left() + item->Width() / 2, labels[0].Left() + labels[0].Width() / 2, 1) << "centred on it";
  EXPECT_EQ(office::xlCenter, labels[0].GetTextFrame().HorizontalAlignment());
  EXPECT_EQ(testing::SavedSettings().BranchFontName, labels[0].GetTextFrame().GetCharacters().GetFont().Name())
      << "in the branch font";
  EXPECT_FALSE(labels[0].Line().Visible()) << "without an outline";
  EXPECT_EQ("E15", Selected()) << "two rows below the item's bottom row";

  ASSERT_EQ(entries + 1, undo.Titles().size()) << "one entry of the undo list";
  EXPECT_EQ("Nivarel: Insert Branch", undo.Titles().front());
  undo.Undo();
  EXPECT_EQ(0, sheet_->GetShapes().Count()) << "Ctrl+Z takes the whole fan back";
  undo.Redo();
  EXPECT_EQ(4, sheet_->GetShapes().Count()) << "Ctrl+Y brings base, item, line and label back";
  base = Symbol(" ");
  item = Symbol("Ship\nit");
  ASSERT_TRUE(base && item);
  ExpectGlued(*base, kBottom, *item, kTop);
}

// The list offers the sheet's symbols nearest first, group members too but
// no template frame, and the groups are closed again afterwards. Many items
// near column A start at column 2 instead of centring, and spacing 0 still
// leaves the gap of 2 rows.
TEST_F(InsertBranchTest, WideFansNearColumnAAreFlooredAndTheListSkipsTemplatesButListsGroups) {
  Shape base = Process("B3", "Start here");
  Shape frame = sheet_->GetShapes().AddShape(office::msoShapeRectangle, 600, 40, 40, 20);
  frame.SetName("Template_x");
  Shape a = Process("B30", "Grouped a"), b = Process("L30", "Grouped b");
  sheet_->GetShapes().GetRange({a.Name(), b.Name()}).Group();
  sheet_->GetRange("A1").Select();  // distances from A1's corner: the base is nearest
  const std::string spacing = "Branch spacing:";
  Open([&] {
    ASSERT_TRUE(Shows("Step 1 - Select Shape to Connect From"));
    std::vector<std::string> rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Listed()).size() == 3; })) << ::testing::PrintToString(rows);
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ(0u, rows[0].rfind("B3   Start here   " + base.Name() + "   ", 0)) << rows[0];
    EXPECT_EQ(0u, rows[1].rfind("B30   Grouped a", 0)) << rows[1];
    EXPECT_EQ(0u, rows[2].rfind("L30   Grouped b", 0)) << rows[2];
    EXPECT_EQ(1u, OfType(office::msoGroup).size()) << "the group is back while the dialog shows";
    EXPECT_EQ("2", Beside(spacing).text);
    TypeBeside(spacing, "75");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Eventually([&] { return Beside(spacing).text == "50"; })) << "50 at most, not " << Beside(spacing).text;
    TypeBeside(spacing, "0");
    // Items entered out of order and put right: moved, deleted, edited. The
    // item list's entries are those that are not the symbols' rows.
    auto items = [&] {
      std::vector<std::string> out;
      for (const std::string& entry : Listed())
        if (std::find(rows.begin(), rows.end(), entry) == rows.end()) out.push_back(entry);
      return out;
    };
    auto buttons = [&] {
      std::string out;
      for (const Control& c : Ui().DialogControls())
        if (c.kind == "button" && (c.text == "Edit" || c.text == "Delete" || c.text == "Up" || c.text == "Down"))
          out += c.enabled ? "1" : "0";
      return out;
    };
    EXPECT_EQ("0000", buttons()) << "no rows: Edit, Delete, Up and Down are off";
    for (const char* text : {"Two", "One", "Oops"}) AddItem(text);
    Ui().ClickItem("One");
    EXPECT_TRUE(Eventually([&] { return buttons() == "1111"; })) << buttons();
    Ui().ClickInDialog("Up");
    const std::vector<std::string> moved = {"One", "Two", "Oops"};
    EXPECT_TRUE(Eventually([&] { return items() == moved; })) << ::testing::PrintToString(items());
    EXPECT_TRUE(Eventually([&] { return buttons() == "1101"; })) << "up is off on the first row: " << buttons();
    Ui().ClickItem("Oops");
    EXPECT_TRUE(Eventually([&] { return buttons() == "1110"; })) << "down is off on the last row: " << buttons();
    Ui().ClickInDialog("Delete");
    EXPECT_TRUE(Eventually([&] { return items() == std::vector<std::string>{"One", "Two"}; }))
        << ::testing::PrintToString(items());
    Ui().ClickItem("Two");
    Ui().ClickInDialog("Edit");
    EXPECT_TRUE(Eventually([&] { return Beside("Text in Shape:").text == "Two"; }));
    EXPECT_EQ((std::vector<std::string>{"One"}), items()) << "the row goes back into the boxes";
    Ui().ClickInDialog("Add");
    AddItem("Three");
    const std::vector<std::string> done = {"One", "Two", "Three"};
    EXPECT_TRUE(Eventually([&] { return items() == done; })) << ::testing::PrintToString(items());
    Ui().ClickInDialog("OK");
  });
  auto one = Symbol("One"), two = Symbol("Two"), three = Symbol("Three");
  ASSERT_TRUE(one && two && three) << LinesText();
  // total = 3 × (8 + 0) = 24; the base's middle column is 2 + (10 - 2) / 2 = 6;
  // 6 - 24 / 2 is below 2, so the fan starts at column 2. Row: the base's
  // bottom row 5 + the least gap 2 + 1 on version 12.
  EXPECT_EQ("B8", Cell(*one));
  EXPECT_EQ("J8", Cell(*two)) << "right behind the first, spacing 0";
  EXPECT_EQ("R8", Cell(*three));
  for (const Shape* item : {&*one, &*two, &*three}) ExpectGlued(base, kBottom, *item, kTop);
  auto groups = OfType(office::msoGroup);
  ASSERT_EQ(1u, groups.size()) << "the group is closed again";
  EXPECT_EQ(2u, groups[0].GroupItems().size());
}

// Each layout from one base, each run taken back with Ctrl+Z before the next:
// a label on any item moves an upward fan a row higher and a side fan a
// column out; the lines leave and reach the sides the layout names. A
// layout's picture selects its option.
TEST_F(InsertBranchTest, EachLayoutPlacesItsFanAndALabelMovesItOut) {
  Shape base = Process("Z20", "Base");  // columns 26 to 33, rows 20 and 21: middle column 30, row 21
  ASSERT_EQ("AH22", base.BottomRightCell().Address(false));
  office::UndoList undo(sheet_->Parent());
  struct Case {
    const char* option;  // caption of the layout's option button
    int picture;         // its picture's place among the dialog's pictures
    bool label;          // the second item has one
    const char *first, *second;
    int fromSide, toSide;
    const char* selected;
    const char* firstText = "First";
  };
  // Two items of 8 columns, spacing 2: total 20. Standard and inverted start
  // at 30 - 18 / 2 = 21 (U), the second item at 21 + 8 + 2 = 31 (AE); down
  // at row 22 + 2 + 1 (label) + 1 = 26, up at row 20 - 4 - 1 (label) = 15.
  // Left: column 26 - 8 - 3 - 1 (label) = 14 (N); right: 34 + 3 + 1 = 38
  // (AL); rows from 21 - (4 + 2) / 2 = 18, the second at 20 + 2 = 22, and
  // centring moves them by 18 - round(21 - 6 / 2) = 0. Hanging: columns
  // 30 - 8 - 3 = 19 (S) and 30 + 3 = 33 (AG), rows 22 + 2 + 1 = 25 and 29.
  const Case cases[] = {
      {"Standard branch", 0, true, "U26", "AE26", kBottom, kTop, "U30"},
      {"Inverted branch", 1, true, "U15", "AE15", kTop, kBottom, "U19"},
      {"Left branch", 2, true, "N18", "N22", kLeft, kRight, "N26"},
      {"Right branch", 3, true, "AL18", "AL22", kRight, kLeft, "AL26"},
      {"Left hanging branch", 4, false, "S25", "S29", kBottom, kRight, "S33"},
      {"Right hanging branch", 5, false, "AG25", "AG29", kBottom, kLeft, "AG33"},
      // An inverted fan with an item taller than two rows goes up to row 2,
      // the place it should have gone to never being read; the cell to go
      // on from was taken before, below the first item where it was drawn.
      {"Inverted branch", 1, false, "U2", "AE2", kTop, kBottom, nullptr,
       "So many words in one item that the grid needs more than two rows to hold them all"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.option);
    Open([&] {
      ASSERT_TRUE(Shows("Step 2 - Choose Branch Type"));
      Ui().ClickPicture(c.picture, 0.5, 0.5);
      EXPECT_TRUE(Eventually([&] {
        for (const Control& k : Ui().DialogControls())
          if (k.kind == "radio" && k.text == c.option) return k.checked;
        return false;
      })) << "the picture selects its option";
      AddItem(c.firstText);
      AddItem("Second", c.label ? "Maybe" : "");
      Ui().ClickInDialog("OK");
    });
    auto first = Symbol(c.firstText), second = Symbol("Second");
    ASSERT_TRUE(first && second) << LinesText();
    EXPECT_EQ(c.first, Cell(*first));
    EXPECT_EQ(c.second, Cell(*second));
    EXPECT_EQ(first->Height(), second->Height());
    ExpectGlued(base, c.fromSide, *first, c.toSide);
    ExpectGlued(base, c.fromSide, *second, c.toSide);
    if (c.selected) EXPECT_EQ(c.selected, Selected());
    EXPECT_GE(first->BottomRightCell().Row() - first->TopLeftCell().Row(), c.selected ? 2 : 3);
    EXPECT_EQ(c.label ? 1u : 0u, OfType(office::msoTextBox).size());
    ASSERT_EQ("Nivarel: Insert Branch", undo.Titles().front());
    undo.Undo();
    ASSERT_EQ(1, sheet_->GetShapes().Count()) << "only the base is left";
  }
}

// BR typed in a live run opens the tool with the run's last symbol chosen;
// the next step typed goes on below the fan's first new symbol.
TEST_F(InsertBranchTest, BRInALiveRunOpensTheToolAndTheRunGoesOnBelowTheNewSymbol) {
  config_.StartTerminator = true;
  config_.EndTerminator = false;
  config_.AddFlowLine = true;
  config_.BranchLabelOption = 0;
  config_.StartLocation = "C3";
  config_.UseRestartLocation = false;
  flowcharting::CInteractiveFlowcharter run;
  ASSERT_TRUE(run.StartFlowcharting(config_));
  Ui().TypeIntoCell(Selected(), "Receive the order");
  auto received = Symbol("Receive the order");
  ASSERT_TRUE(received);
  Drive([&] { Ui().TypeIntoCell(Selected(), "BR"); }, kTitle, [&] {
    std::vector<std::string> rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Listed()).size() == 2; })) << ::testing::PrintToString(rows);
    ASSERT_FALSE(rows.empty());
    EXPECT_NE(std::string::npos, rows[0].find("Receive the order   " + received->Name() + "   0"))
        << "the run's last symbol, nearest: " << rows[0];
    AddItem("Pack it");
    Ui().ClickInDialog("OK");
  });
  std::optional<Shape> pack;
  ASSERT_TRUE(Eventually([&] { return (pack = Symbol("Pack it")).has_value(); })) << LinesText();
  ExpectGlued(*received, kBottom, *pack, kTop);
  Ui().TypeIntoCell(Selected(), "Ship it");
  auto ship = Symbol("Ship it");
  ASSERT_TRUE(ship) << LinesText();
  EXPECT_TRUE(Joined(*pack, *ship)) << LinesText();
  EXPECT_EQ(pack->TopLeftCell().Column(), ship->TopLeftCell().Column());
  // Below the new symbol as below any step: its bottom row + 2, + 1 on version 12.
  EXPECT_EQ(pack->BottomRightCell().Row() + 3, ship->TopLeftCell().Row());
  run.StopFlowcharting(true);
}

}  // namespace
}  // namespace nivarel
