// Text extraction on real sheets, its prompt answered in the office's range
// picker: what is listed and in what order, read back from the cells the
// office holds; where the list goes; what is read inside groups; the
// refusal; one entry of the undo list.
#include <gtest/gtest.h>

#include "AddinFixture.h"
#include "CEventHandler.h"
#include "CExtractText.h"
#include "Font.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeRange.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using namespace office;
using Texts = std::vector<std::string>;

constexpr char kPrompt[] = "Please select the cell to output the flowchart text:";

class ExtractTextTest : public testing::AddinFixture {
 protected:
  // A shape with its text, out of the list's way, each below the one before
  // unless a top is given.
  Shape Add(int type, const std::string& text, double top = -1) {
    Shape s = sheet_->GetShapes().AddShape(type, 300, top >= 0 ? top : 40 + 50 * added_++, 90, 36);
    if (!text.empty()) s.GetTextFrame().GetCharacters().SetText(text);
    return s;
  }
  Shape Group(const std::vector<Shape>& members, const std::string& name) {
    std::vector<std::string> names;
    for (const Shape& m : members) names.push_back(m.Name());
    Shape g = sheet_->GetShapes().GetRange(names).Group();
    g.SetName(name);
    return g;
  }

  // The extraction beside the test, as the menu's handler runs it, with the
  // cell typed into its picker.
  void ExtractAt(const std::string& address) {
    output::CExtractText extract;
    ASSERT_TRUE(extract.IsValid()) << extract.ErrorMessage();
    Pick([&] { extract.ExtractTextFromFlowchartSymbols(); }, kPrompt, address);
  }

  // The texts down a column from a cell, to the first empty one.
  static Texts Column(const Worksheet& ws, const std::string& from) {
    Texts texts;
    Range cell = ws.GetRange(from);
    for (int row = 0; row < 30; ++row) {
      std::string text = cell.Offset(row, 0).Value();
      if (text.empty()) break;
      texts.push_back(text);
    }
    return texts;
  }

  int added_ = 0;
};

// Auto shapes are read in drawing order, not by where they stand; a text
// box and a connector are not; the whole words Start, Begin, Stop and End
// are left out in any case, a longer text beginning with one is listed, as
// is a terminator with another text. The heading is row 0; the cells below
// are written over without a question, and those further down stay.
TEST_F(ExtractTextTest, SymbolsAreListedInDrawingOrderBelowTheHeading) {
  Add(msoShapeFlowchartTerminator, "Start");
  Add(msoShapeFlowchartProcess, "Take the order");
  sheet_->GetShapes()
      .AddTextbox(msoTextOrientationHorizontal, 420, 40, 80, 20)
      .GetTextFrame()
      .GetCharacters()
      .SetText("A note");
  Add(msoShapeFlowchartProcess, "  Check stock  ");
  Add(msoShapeFlowchartTerminator, "Start the engine");
  Add(msoShapeFlowchartDecision, "In stock?");
  Add(9, "");
  sheet_->GetShapes().AddConnector(msoConnectorStraight, 300, 20, 300, 400);
  Add(msoShapeFlowchartTerminator, "end");
  Add(msoShapeFlowchartProcess, "BEGIN");
  Add(msoShapeFlowchartTerminator, "Stop");
  Add(msoShapeFlowchartProcess, "Ship", 0);  // drawn last, standing first
  for (int row = 4; row <= 10; ++row) sheet_->Cells(row, 3).SetValue("old");
  Ui().SelectCell("E2");

  output::CExtractText extract;
  EXPECT_EQ("$E$2", extract.CellAddress()) << "the active cell is proposed";
  ExtractAt("C3");
  EXPECT_EQ((Texts{"Process Steps", "Take the order", "Check stock", "Start the engine", "In stock?", "Ship", "old",
                   "old"}),
            Column(*sheet_, "C3"));
  EXPECT_TRUE(sheet_->GetRange("C3").GetFont().Bold());
  EXPECT_FALSE(sheet_->GetRange("C4").GetFont().Bold());
  EXPECT_EQ("", sheet_->GetRange("C11").Value());
  EXPECT_EQ("", host::ReadLogFile());
}

// A cell on another sheet takes the list there; the shapes are still read
// from the sheet the command began on, whose cells stay as they were.
TEST_F(ExtractTextTest, AListForAnotherSheetLandsThere) {
  Worksheet out = book_->AddSheet();
  out.SetName("Steps");
  sheet_->Activate();
  Add(msoShapeFlowchartProcess, "Pack");
  Add(msoShapeFlowchartProcess, "Ship");

  ExtractAt("$Steps.B2");
  EXPECT_EQ((Texts{"Process Steps", "Pack", "Ship"}), Column(out, "B2"));
  EXPECT_EQ("", sheet_->GetRange("B2").Value());
  EXPECT_EQ("Steps", App().ActiveSheet()->Name());
}

// A chart of nothing but its terminators gives the heading alone.
TEST_F(ExtractTextTest, AChartOfStartAndEndGivesTheHeadingAlone) {
  Add(msoShapeFlowchartTerminator, "Start");
  Add(msoShapeFlowchartTerminator, "End");
  ExtractAt("A1");
  EXPECT_EQ((Texts{"Process Steps"}), Column(*sheet_, "A1"));
}

// The members of groups are read where their group stands in the drawing
// order, nested ones too, as if the groups were opened layer by layer; the
// symbol key and a template's groups, even inside another group, are not
// looked into. Every group stays as it was.
TEST_F(ExtractTextTest, GroupMembersAreReadWhereTheirGroupStandsButNotTheKeysOrATemplates) {
  Add(msoShapeFlowchartProcess, "Zero");
  Shape one = Add(msoShapeFlowchartProcess, "One");
  Shape two = Add(msoShapeFlowchartProcess, "Two");
  Shape three = Add(msoShapeFlowchartProcess, "Three");
  Shape inner = Group({two, three}, "Inner");
  Group({one, inner}, "Outer");
  Group({Add(msoShapeFlowchartProcess, "Key text"), Add(msoShapeFlowchartTerminator, "Terminator")}, "Flowchart Key");
  Shape frame = Group({Add(msoShapeFlowchartProcess, "Title"), Add(msoShapeRectangle, "Page")}, "Template_Frame");
  Group({frame, Add(msoShapeFlowchartProcess, "Four")}, "Mixed");
  Add(msoShapeFlowchartProcess, "Five");
  Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(5, shapes.Count());

  ExtractAt("A1");
  EXPECT_EQ((Texts{"Process Steps", "Zero", "One", "Two", "Three", "Four", "Five"}), Column(*sheet_, "A1"));
  ASSERT_EQ(5, shapes.Count());
  std::vector<Shape> outer = shapes.Item("Outer").GroupItems();
  ASSERT_EQ(2u, outer.size());
  EXPECT_EQ("Inner", outer[1].Name());
  EXPECT_EQ(2u, outer[1].GroupItems().size());
  EXPECT_EQ(msoGroup, shapes.Item("Flowchart Key").Type());
  EXPECT_EQ(2u, shapes.Item("Mixed").GroupItems().size());
  EXPECT_EQ("", host::ReadLogFile());
}

// The menu command refuses a sheet without shapes with its reason; the
// run-together word of the message stands.
TEST_F(ExtractTextTest, TheMenuCommandRefusesASheetWithoutShapes) {
  Ui().RunCommand("vnd.nivarel:rxNivarelExtractText", true);
  ASSERT_TRUE(Ui().WaitForModal());
  EXPECT_EQ("Extract Text Error", Ui().Title());
  EXPECT_EQ("No shapes found on current worksheet\n\n"
            "You must select the worksheet containing the\n"
            "flowchart sbefore running this feature.",
            Ui().MessageText());
  Ui().ClickButton("ok");
  EXPECT_TRUE(Ui().WaitForDocument());
  EXPECT_EQ("", sheet_->GetRange("A1").Value());
}

// The extraction is one entry of the undo list: Ctrl+Z takes the list back
// and leaves the groups whole, Ctrl+Y writes it again.
TEST_F(ExtractTextTest, AnExtractionIsOneEntryOfTheUndoList) {
  Shape a = Add(msoShapeFlowchartProcess, "Pack");
  Shape b = Add(msoShapeFlowchartProcess, "Ship");
  Group({a, b}, "Steps");
  UndoList undo(*book_);
  const size_t entries = undo.Titles().size();
  auto grouped = [&] {
    Shapes shapes = sheet_->GetShapes();
    return shapes.Count() == 1 && shapes.Item(1).Type() == msoGroup && shapes.Item(1).Name() == "Steps" &&
           shapes.Item(1).GroupItems().size() == 2;
  };

  host::CEventHandler handler;
  Pick([&] { handler.ExtractText(); }, kPrompt, "B2");
  EXPECT_EQ((Texts{"Process Steps", "Pack", "Ship"}), Column(*sheet_, "B2"));
  ASSERT_EQ(entries + 1, undo.Titles().size());
  EXPECT_EQ("Nivarel: Extract Flowchart Text", undo.Titles()[0]);
  EXPECT_TRUE(grouped());

  for (int round = 0; round < 2; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    Ui().PressKey("CTRL+z");
    EXPECT_EQ(Texts{}, Column(*sheet_, "B2"));
    EXPECT_TRUE(grouped());
    Ui().PressKey("CTRL+y");
    EXPECT_EQ((Texts{"Process Steps", "Pack", "Ship"}), Column(*sheet_, "B2"));
    EXPECT_TRUE(grouped());
  }
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
