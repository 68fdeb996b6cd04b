// The symbol key on real sheets, its question and its prompt answered in the
// office's own windows: which rows it draws and in what order, read back
// from the shapes the office drew (kinds, texts, places and sizes); where it
// goes; how it replaces a key already there; the menu command as one entry
// of the undo list.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "AddinFixture.h"
#include "CEventHandler.h"
#include "CFlowchartKey.h"
#include "Font.h"
#include "MShapeRanges.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeRange.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using namespace office;
using Rows = std::vector<std::pair<std::string, std::string>>;

constexpr char kPrompt[] = "Select the cell to place the Flowchart Symbol Key";
constexpr char kQuestion[] = "Flowchart Key Already Exists";
constexpr char kQuestionText[] =
    "A Flowchart Key already exists on this worksheet.\n\n"
    "Click OK to Delete the existing Flowchart Key\n"
    "Click Cancel to cancel this operation";
constexpr long kWhite = 0xFFFFFF;

class FlowchartKeyTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    settings_ = testing::ShippedSettings("flowchart-key");
    host::ClearLogFile();
  }
  void TearDown() override {
    settings_.reset();
    AddinFixture::TearDown();
  }

  // A shape of the type, out of the key's way, each beside the one before.
  Shape Add(int type, const std::string& name = "") {
    Shape s = sheet_->GetShapes().AddShape(type, 400 + 60 * (added_ % 5), 200 + 60 * (added_ / 5), 48, 36);
    ++added_;
    if (!name.empty()) s.SetName(name);
    return s;
  }
  Shape Connector(bool dashed) {
    Shape line = sheet_->GetShapes().AddConnector(msoConnectorStraight, 400, 500 + 10 * added_, 450, 520 + 10 * added_);
    ++added_;
    if (dashed) line.Line().SetDashStyle(msoLineDash);
    return line;
  }

  // The key's operation beside the test, as the menu's handler runs it, with
  // the cell typed into its picker.
  void KeyAt(const std::string& address) {
    output::CFlowchartKey key;
    Pick([&] { key.CreateFlowchartKey(); }, kPrompt, address);
  }

  // Runs show beside the test and answers the question about the key
  // already there with button, then works on with then; the question's
  // text, empty when none came.
  std::string Answer(const std::function<void()>& show, const std::string& button,
                     const std::function<void()>& then = [] {}) {
    Ui();
    auto shown = std::async(std::launch::async, show);
    std::string text;
    if (Ui().WaitForModal() && Ui().Title() == kQuestion) {
      text = Ui().MessageText();
      Ui().ClickButton(button);
      then();
    }
    AwaitClosed(shown);
    return text;
  }

  // The group "Flowchart Key" on ws; none when there is none.
  static std::optional<Shape> KeyOn(const Worksheet& ws) {
    Shapes shapes = ws.GetShapes();
    std::optional<Shape> key;
    for (int i = 1; i <= shapes.Count(); ++i)
      if (shapes.Item(i).Name() == "Flowchart Key") {
        EXPECT_FALSE(key) << "a second key";
        key = shapes.Item(i);
      }
    return key;
  }
  // The key's rows as drawn: each symbol's shape type, or a line's "solid"
  // or "dashed", with the text beside it. The box is the group's first
  // member, sent to the back; the rows follow, symbol then label.
  static Rows RowsOf(const Shape& key) {
    std::vector<Shape> items = key.GroupItems();
    Rows rows;
    for (size_t i = 1; i + 1 < items.size(); i += 2) {
      const Shape& symbol = items[i];
      std::string kind = symbol.Connector() ? (symbol.Line().DashStyle() == msoLineSolid ? "solid" : "dashed")
                                            : std::to_string(symbol.AutoShapeType());
      rows.emplace_back(kind, items[i + 1].GetTextFrame().GetCharacters().Text());
    }
    return rows;
  }

  std::unique_ptr<testing::SettingsFolder> settings_;
  int added_ = 0;
};

// Five terminators are one row; rows come in the order the kinds are first
// met in the drawing order, symbols before lines, whatever the lines' order;
// a group's members count. Each row is the cell's size (a terminator half
// its height, from the cell's middle) 12 points in, two rows apart, its
// label 24 points right of the cell and fitted to its text; the white box
// takes them in with 12 points to spare, behind them.
TEST_F(FlowchartKeyTest, EachKindIsOneRowInTheOrderFirstMetSymbolsBeforeLines) {
  Add(msoShapeFlowchartTerminator, "Start");
  Connector(true);
  Add(msoShapeFlowchartProcess);
  Add(msoShapeFlowchartTerminator);
  sheet_->GetShapes().AddLine(400, 20, 480, 20);  // a plain solid line
  Add(msoShapeFlowchartDecision);
  for (int i = 0; i < 3; ++i) Add(msoShapeFlowchartTerminator);
  Shape data = Add(msoShapeFlowchartData, "In A");
  Shape inner = Add(msoShapeFlowchartProcess, "In B");
  sheet_->GetShapes().GetRange({data.Name(), inner.Name()}).Group();
  const long counted = host::GetNonTemplateShapeCount(*sheet_);

  KeyAt("C3");
  std::optional<Shape> key = KeyOn(*sheet_);
  ASSERT_TRUE(key) << host::ReadLogFile();
  EXPECT_EQ((Rows{{"69", "Terminator"}, {"61", "Process"}, {"63", "Decision"}, {"64", "Data"},
                  {"dashed", "Alternate Path"}, {"solid", "Flow Line"}}),
            RowsOf(*key));
  EXPECT_EQ(counted, host::GetNonTemplateShapeCount(*sheet_)) << "the key is not counted";

  std::vector<Shape> items = key->GroupItems();
  ASSERT_EQ(13u, items.size());
  double right = 0, bottom = 0;
  for (size_t row = 0; row < 6; ++row) {
    SCOPED_TRACE("row " + std::to_string(row));
    Range cell = sheet_->Cells(5 + 2 * static_cast<int>(row), 3);
    Shape& symbol = items[1 + 2 * row];
    Shape& label = items[2 + 2 * row];
    bool terminator = row == 0;
    EXPECT_NEAR(cell.Left() + 12, symbol.Left(), 0.1);
    EXPECT_NEAR(cell.Width(), symbol.Width(), 0.1);
    EXPECT_NEAR(terminator ? cell.Top() + cell.Height() / 2 : cell.Top(), symbol.Top(), 0.1);
    EXPECT_NEAR(terminator ? cell.Height() / 2 : cell.Height(), symbol.Height(), 0.1);
    if (!symbol.Connector()) EXPECT_NEAR(1.0, symbol.Line().Weight(), 0.05) << "the style's 2 points thinned";
    EXPECT_EQ(msoTextBox, label.Type());
    EXPECT_NEAR(cell.Left() + cell.Width() + 24, label.Left(), 0.1);
    EXPECT_NEAR(cell.Top(), label.Top(), 0.1);
    EXPECT_FALSE(label.Line().Visible());
    EXPECT_NEAR(items[2].Height(), label.Height(), 0.1) << "one line of text each";
    right = std::max(right, label.Left() + label.Width());
    bottom = std::max(bottom, label.Top() + label.Height());
  }
  EXPECT_GT(items[10].Width(), items[8].Width() + 20) << "\"Alternate Path\" is wider than \"Data\"";

  Shape& box = items[0];
  Range c3 = sheet_->GetRange("C3");
  EXPECT_EQ(msoShapeFlowchartProcess, box.AutoShapeType());
  EXPECT_EQ("Flowchart Key", box.GetTextFrame().GetCharacters().Text());
  EXPECT_TRUE(box.GetTextFrame().GetCharacters().GetFont().Bold());
  EXPECT_EQ(xlTop, box.GetTextFrame().VerticalAlignment());
  EXPECT_EQ(kWhite, box.Fill().ForeColor().RGB());
  EXPECT_NEAR(c3.Left(), box.Left(), 0.1);
  EXPECT_NEAR(c3.Top(), box.Top(), 0.1);
  EXPECT_NEAR(right + 12, box.Left() + box.Width(), 0.1);
  EXPECT_NEAR(bottom + 12, box.Top() + box.Height(), 0.1);
  EXPECT_EQ("", host::ReadLogFile());
}

// A group box at the top level is no row, one inside a group is; so are
// action buttons and text boxes none. A callout counts at the top level, not
// inside a group, where only plain auto shapes are looked at.
TEST_F(FlowchartKeyTest, GroupBoxesCountOnlyInsideAGroupAndActionButtonsNever) {
  Add(msoShapeRectangle, "group_box_1");
  Add(130);  // an action button
  sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 20, 400, 80, 20);
  Add(105);  // a rectangular callout
  Shape oval = Add(9);
  Shape box = Add(msoShapeRectangle, "GROUP_BOX_2");
  Shape callout = Add(106);
  sheet_->GetShapes().GetRange({oval.Name(), box.Name(), callout.Name()}).Group();

  KeyAt("B2");
  std::optional<Shape> key = KeyOn(*sheet_);
  ASSERT_TRUE(key);
  EXPECT_EQ((Rows{{"105", "Rectangular Callout"}, {"9", "Oval"}, {"1", "Rectangle"}}), RowsOf(*key));
}

// An id is listed once as "id,", and one found anywhere in the list is not
// listed again: after a Decision ("63,") a Trapezoid ("3,") is taken as
// listed; the other way round both are. So a rounded rectangle ("5,") after
// a callout ("105,") gets none.
TEST_F(FlowchartKeyTest, ATrapezoidAfterADecisionGetsNoRowButBeforeItDoes) {
  Add(msoShapeFlowchartDecision);
  Add(3);
  KeyAt("B2");
  std::optional<Shape> key = KeyOn(*sheet_);
  ASSERT_TRUE(key);
  EXPECT_EQ((Rows{{"63", "Decision"}}), RowsOf(*key));

  sheet_ = book_->AddSheet();
  added_ = 0;
  Add(3);
  Add(msoShapeFlowchartDecision);
  KeyAt("B2");
  key = KeyOn(*sheet_);
  ASSERT_TRUE(key);
  EXPECT_EQ((Rows{{"3", "Trapezoid"}, {"63", "Decision"}}), RowsOf(*key));
}

// A cell picked on another sheet takes the key there, drawn at that cell,
// with the rows of the sheet the command began on; the office shows the
// key's sheet.
TEST_F(FlowchartKeyTest, ACellOnAnotherSheetTakesTheKeyThere) {
  Worksheet other = book_->AddSheet();
  other.SetName("Legend");
  other.Column(2).SetColumnWidth(20);
  sheet_->Activate();
  Add(msoShapeFlowchartProcess);
  Add(msoShapeFlowchartDecision);

  KeyAt("$Legend.B4");
  EXPECT_FALSE(KeyOn(*sheet_));
  std::optional<Shape> key = KeyOn(other);
  ASSERT_TRUE(key);
  EXPECT_EQ((Rows{{"61", "Process"}, {"63", "Decision"}}), RowsOf(*key));
  EXPECT_EQ("Legend", App().ActiveSheet()->Name());
  Range b6 = other.GetRange("B6");
  Shape symbol = key->GroupItems()[1];
  EXPECT_NEAR(b6.Left() + 12, symbol.Left(), 0.1);
  EXPECT_NEAR(b6.Top(), symbol.Top(), 0.1);
  EXPECT_NEAR(b6.Width(), symbol.Width(), 0.1) << "the wide column of the other sheet";
}

// A key already there is asked about: Cancel leaves everything as it was;
// OK deletes it before anything else, so a cancelled picker then leaves no
// key at all, and a picked cell a new key of the sheet's kinds now.
TEST_F(FlowchartKeyTest, AKeyAlreadyThereIsReplacedOnOkAndKeptOnCancel) {
  Add(msoShapeFlowchartProcess);
  KeyAt("B2");
  ASSERT_TRUE(KeyOn(*sheet_));
  Add(msoShapeFlowchartDecision);
  const int shapes = sheet_->GetShapes().Count();
  output::CFlowchartKey key;

  EXPECT_EQ(kQuestionText, Answer([&] { key.CreateFlowchartKey(); }, "cancel"));
  EXPECT_EQ(shapes, sheet_->GetShapes().Count());
  ASSERT_TRUE(KeyOn(*sheet_));
  EXPECT_EQ((Rows{{"61", "Process"}}), RowsOf(*KeyOn(*sheet_)));

  EXPECT_EQ(kQuestionText, Answer([&] { key.CreateFlowchartKey(); }, "ok", [&] {
              ASSERT_TRUE(WaitForPicker(kPrompt));
              Ui().PressDialogKey("ESC");
            }));
  EXPECT_FALSE(KeyOn(*sheet_)) << "deleted on OK";
  EXPECT_EQ(shapes - 1, sheet_->GetShapes().Count());

  KeyAt("B2");
  ASSERT_TRUE(KeyOn(*sheet_));
  EXPECT_EQ((Rows{{"61", "Process"}, {"63", "Decision"}}), RowsOf(*KeyOn(*sheet_)));
  EXPECT_EQ("", host::ReadLogFile());
}

// A sheet without shapes is told so; a sheet without symbols or lines gets
// a box alone, a margin's size at the cell, which makes no group.
TEST_F(FlowchartKeyTest, WithoutShapesItSaysSoAndWithoutSymbolsTheBoxStandsAlone) {
  output::CFlowchartKey key;
  EXPECT_EQ(std::make_pair(std::string("No shapes found"), std::string("There are no shapes on the current sheet.")),
            MessageOf([&] { key.CreateFlowchartKey(); }));
  EXPECT_EQ(0, sheet_->GetShapes().Count());

  sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 300, 300, 80, 20);
  KeyAt("D4");
  Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(2, shapes.Count());
  Shape box = shapes.Item(1);
  Range d4 = sheet_->GetRange("D4");
  EXPECT_EQ(msoShapeFlowchartProcess, box.AutoShapeType());
  EXPECT_EQ("Flowchart Key", box.GetTextFrame().GetCharacters().Text());
  EXPECT_NEAR(d4.Left(), box.Left(), 0.1);
  EXPECT_NEAR(12, box.Width(), 0.1);
  EXPECT_FALSE(KeyOn(*sheet_));
}

// The table of names behind the key: the built-in names, misspelt ones
// kept, each replaced by a display name that is not blank in the "Shape n"
// sections the rules file counts, and no further.
TEST_F(FlowchartKeyTest, TheNameTableTakesTheRulesFilesDisplayNamesWithinItsCount) {
  const std::string folder = testing::ConfigHome() + "/key-names";
  std::filesystem::create_directories(folder + "/Tamrisk/Nivarel");
  std::ofstream(folder + "/Tamrisk/Nivarel/symbols.ini")
      << "[Shape 1]\r\ndisplay_name=Box\r\n[Shape 2]\r\ndisplay_name=  \r\n[Shape 46]\r\ndisplay_name=Bent Left\r\n";
  testing::SettingsFolder names(folder);
  output::CFlowchartKey key;
  EXPECT_EQ("Box", key.SymbolName(1));
  EXPECT_EQ("Parallelogram", key.SymbolName(2)) << "a blank name keeps the built-in one";
  EXPECT_EQ("Trapezoid", key.SymbolName(3));
  EXPECT_EQ("Curved Left Arow", key.SymbolName(46)) << "beyond the file's three sections";
  EXPECT_EQ("Balloon", key.SymbolName(137));
  EXPECT_EQ("", key.SymbolName(0));
  EXPECT_EQ("", key.SymbolName(138));
}

// The menu command reaches the key: a sheet without shapes is told so.
TEST_F(FlowchartKeyTest, TheMenuCommandRunsTheKey) {
  Ui().RunCommand("vnd.nivarel:rxNivarelCreateKey", true);
  ASSERT_TRUE(Ui().WaitForModal());
  EXPECT_EQ("No shapes found", Ui().Title());
  EXPECT_EQ("There are no shapes on the current sheet.", Ui().MessageText());
  Ui().ClickButton("ok");
  EXPECT_TRUE(Ui().WaitForDocument());
}

// The key is one entry of the undo list, the old key's deletion with it:
// Ctrl+Z takes the whole new key away and brings the old one back, Ctrl+Y
// does the replacement again, and the office goes on.
TEST_F(FlowchartKeyTest, AKeyIsOneEntryOfTheUndoList) {
  Add(msoShapeFlowchartProcess);
  Add(msoShapeFlowchartTerminator);
  Connector(false);
  host::CEventHandler handler;
  Pick([&] { handler.CreateFlowchartKey(); }, kPrompt, "B2");
  const Rows first = {{"61", "Process"}, {"69", "Terminator"}, {"solid", "Flow Line"}};
  ASSERT_TRUE(KeyOn(*sheet_));
  EXPECT_EQ(first, RowsOf(*KeyOn(*sheet_)));
  UndoList undo(*book_);
  ASSERT_FALSE(undo.Titles().empty());
  EXPECT_EQ("Nivarel: Create a Symbol Key", undo.Titles()[0]);

  Add(msoShapeFlowchartDecision);
  const size_t entries = undo.Titles().size();
  const int shapes = sheet_->GetShapes().Count();
  const Rows second = {{"61", "Process"}, {"69", "Terminator"}, {"63", "Decision"}, {"solid", "Flow Line"}};
  // The decision came in unrecorded, as a program draws: the history
  // before it is not walked back here.
  EXPECT_EQ(kQuestionText, Answer([&] { handler.CreateFlowchartKey(); }, "ok", [&] {
              ASSERT_TRUE(WaitForPicker(kPrompt));
              PickAddress("B2");
            }));
  ASSERT_TRUE(KeyOn(*sheet_));
  EXPECT_EQ(second, RowsOf(*KeyOn(*sheet_)));
  ASSERT_EQ(entries + 1, undo.Titles().size()) << "one entry";
  EXPECT_EQ("Nivarel: Create a Symbol Key", undo.Titles()[0]);

  for (int round = 0; round < 2; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    Ui().PressKey("CTRL+z");
    ASSERT_TRUE(KeyOn(*sheet_)) << "the old key is back";
    EXPECT_EQ(first, RowsOf(*KeyOn(*sheet_)));
    EXPECT_EQ(shapes, sheet_->GetShapes().Count());
    Ui().PressKey("CTRL+y");
    ASSERT_TRUE(KeyOn(*sheet_));
    EXPECT_EQ(second, RowsOf(*KeyOn(*sheet_)));
  }
  Ui().TypeIntoCell("H20", "still here");
  EXPECT_EQ("still here", sheet_->GetRange("H20").Value());
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
