// The text-to-flowchart wizard's engine on real sheets: text written into
// cells, the engine run as the dialog runs it (its table read, perhaps
// edited, then the columns worked out and the chart drawn), and the chart
// read back from the office: where each symbol stands, of which type, which
// lines join which symbols, what is left in the cells.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <set>

#include "AddinFixture.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "FlowchartWizard.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "Text.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using office::Shape;
using office::Worksheet;
using tools::FlowchartWizard;

class FlowchartWizardTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("flowchart-wizard");
  }
  void TearDown() override {
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Write(const std::vector<std::pair<std::string, std::string>>& cells) {
    for (const auto& [address, text] : cells) sheet_->GetRange(address).SetValue(text);
  }

  // The symbols of a sheet (lines left out), in drawing order.
  static std::vector<Shape> Symbols(const Worksheet& sheet) {
    std::vector<Shape> out;
    office::Shapes shapes = sheet.GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      if (s.Type() == office::msoAutoShape && !s.Connector()) out.push_back(s);
    }
    return out;
  }
  static std::string Text(const Shape& s) { return s.GetTextFrame().GetCharacters().Text(); }
  static Shape SymbolWithText(const Worksheet& sheet, const std::string& text) {
    for (const Shape& s : Symbols(sheet))
      if (Text(s) == text) return s;
    throw std::runtime_error("no symbol reads '" + text + "'");
  }
  // How many rows of the grid a shape's height covers.
  static int RowsOf(const Shape& s) { return static_cast<int>(std::nearbyint(s.Height() / host::GlobalRowHeight)); }

  // Waits up to five seconds for what Ctrl+Z or Ctrl+Y does.
  static bool Eventually(const std::function<bool()>& done) {
    for (int i = 0; i < 100; ++i) {
      if (done()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return done();
  }

  std::unique_ptr<testing::SettingsFolder> folder_;
};

TEST_F(FlowchartWizardTest, TheSymbolsWaitingInTheTextAreFound) {
  FlowchartWizard wizard(*sheet_);
  auto type = [&](std::string text, std::string expectedText = "\x01") {
    int16_t t = wizard.SetShapeType(text);
    if (expectedText != "\x01") EXPECT_EQ(expectedText, text);
    return t;
  };
  EXPECT_EQ(office::msoShapeFlowchartDecision, type("d: is the order paid", "Is the order paid"))
      << "a prefix, taken off, the rest capitalised";
  EXPECT_EQ(office::msoShapeFlowchartProcess, type("Nod: keep going", "Nod: keep going")) << "no such prefix";
  EXPECT_EQ(office::msoShapeFlowchartDecision, type("In stock?"));
  EXPECT_EQ(office::msoShapeFlowchartOffpageConnector, type("12"));
  EXPECT_EQ(office::msoShapeFlowchartConnector, type("A1")) << "two characters, upper case";
  EXPECT_EQ(office::msoShapeFlowchartProcess, type("Ab"));
  EXPECT_EQ(office::msoShapeFlowchartTerminator, type("Stop the line"));
  EXPECT_EQ(office::msoShapeFlowchartTerminator, type("full stop"));
  EXPECT_EQ(office::msoShapeFlowchartProcess, type("Unstoppable")) << "a keyword inside a word";
  EXPECT_EQ(office::msoShapeFlowchartData, type("(Read) the file"));
}

TEST_F(FlowchartWizardTest, OneColumnEndsInColumnThreeItsRowsSteppedByTheSymbolAboveAndIsOneUndoEntry) {
  Write({{"B2", "Receive order"}, {"B3", "Is it in stock?"}, {"B4", "Ship"}});
  FlowchartWizard wizard(*sheet_);
  wizard.newSheet = false;
  wizard.InitializeGrid();
  ASSERT_EQ(3u, wizard.Rows().size());
  EXPECT_EQ("2", wizard.Rows()[0].connect_to) << "each cell joined to the one below it";
  EXPECT_EQ("3", wizard.Rows()[1].connect_to);
  EXPECT_EQ("", wizard.Rows()[2].connect_to);
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();

  Shape order = SymbolWithText(*sheet_, "Receive order"), stock = SymbolWithText(*sheet_, "Is it in stock?"),
        ship = SymbolWithText(*sheet_, "Ship");
  for (const Shape* s : {&order, &stock, &ship}) EXPECT_EQ(3, s->TopLeftCell().Column()) << Text(*s);
  EXPECT_EQ(office::msoShapeFlowchartDecision, stock.AutoShapeType());
  EXPECT_EQ(3, order.TopLeftCell().Row()) << "row 2 moves down to row 3";
  // Below the symbol above: its rows, two between, and one more.
  EXPECT_EQ(3 + RowsOf(order) + 3, stock.TopLeftCell().Row());
  EXPECT_EQ(stock.TopLeftCell().Row() + RowsOf(stock) + 3, ship.TopLeftCell().Row());
  EXPECT_EQ((std::set<std::pair<std::string, std::string>>{{"Receive order", "Is it in stock?"},
                                                          {"Is it in stock?", "Ship"}}),
            testing::JoinedTexts(*sheet_));
  for (const char* cell : {"B2", "B3", "B4"}) EXPECT_EQ("", sheet_->GetRange(cell).Text()) << cell;
  EXPECT_EQ("", host::ReadLogFile());

  office::UndoList undo(sheet_->Parent());
  ASSERT_FALSE(undo.Titles().empty());
  EXPECT_EQ("Nivarel: Flowchart Wizard", undo.Titles().front());
  undo.Undo();
  EXPECT_EQ(0, sheet_->GetShapes().Count()) << "symbols, labels and lines taken back at once";
  EXPECT_EQ("Is it in stock?", sheet_->GetRange("B3").Text());
}

TEST_F(FlowchartWizardTest, ColumnsSpreadByTheWidestSymbolOnACopyOfTheSheet) {
  Write({{"B5", "Receive order"}, {"B6", "Check stock"}, {"D5", "Pack"}, {"D6", "Ship"}});
  int sheets = sheet_->Parent().SheetCount();
  FlowchartWizard wizard(*sheet_);
  wizard.InitializeGrid();
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();

  ASSERT_EQ(sheets + 1, sheet_->Parent().SheetCount()) << "a new sheet behind the last";
  Worksheet output = sheet_->Parent().Sheet(sheets + 1);
  ASSERT_TRUE(wizard.OutputSheet() && wizard.OutputSheet()->SameAs(output));
  // Widest symbol 8 and 4 columns between: the second column 12 after the
  // first, both moved right to begin in column 3.
  EXPECT_EQ(3, SymbolWithText(output, "Receive order").TopLeftCell().Column());
  EXPECT_EQ(15, SymbolWithText(output, "Pack").TopLeftCell().Column());
  EXPECT_EQ(5, SymbolWithText(output, "Receive order").TopLeftCell().Row()) << "text from row 5 stays";
  EXPECT_EQ(5, SymbolWithText(output, "Pack").TopLeftCell().Row());
  EXPECT_EQ((std::set<std::pair<std::string, std::string>>{{"Receive order", "Check stock"}, {"Pack", "Ship"}}),
            testing::JoinedTexts(output));
  EXPECT_EQ("", output.GetRange("D6").Text()) << "the copy's cells are cleared";
  EXPECT_EQ("Ship", sheet_->GetRange("D6").Text()) << "the source keeps its text";
  EXPECT_EQ(0, sheet_->GetShapes().Count());
  int drawn = output.GetShapes().Count();

  // Ctrl+Z takes the new sheet back with its chart, Ctrl+Y brings both again.
  ASSERT_TRUE(Ui().WaitForDocument());
  Ui().PressKey("CTRL+z");
  EXPECT_TRUE(Eventually([&] { return sheet_->Parent().SheetCount() == sheets; }));
  Ui().PressKey("CTRL+y");
  ASSERT_TRUE(Eventually([&] { return sheet_->Parent().SheetCount() == sheets + 1; }));
  Worksheet again = sheet_->Parent().Sheet(sheets + 1);
  EXPECT_TRUE(Eventually([&] { return again.GetShapes().Count() == drawn; }));
  EXPECT_EQ((std::set<std::pair<std::string, std::string>>{{"Receive order", "Check stock"}, {"Pack", "Ship"}}),
            testing::JoinedTexts(again));
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowchartWizardTest, TextInRowOneMovesDownAndASingleCellStaysWhereItIs) {
  Write({{"B1", "Receive order"}, {"B2", "Ship"}});
  FlowchartWizard wizard(*sheet_);
  wizard.newSheet = false;
  wizard.InitializeGrid();
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();
  EXPECT_EQ(3, SymbolWithText(*sheet_, "Receive order").TopLeftCell().Row());

  Worksheet single = sheet_->Parent().AddSheet();
  single.GetRange("E1").SetValue("Ship");
  FlowchartWizard one(single);
  one.newSheet = false;
  one.InitializeGrid();
  one.UpdateGridColumns();
  one.RunFlowchartWizard();
  Shape ship = SymbolWithText(single, "Ship");
  EXPECT_EQ(5, ship.TopLeftCell().Column());
  EXPECT_EQ(1, ship.TopLeftCell().Row());
}

TEST_F(FlowchartWizardTest, ConnectorsByNumberOrTextExcludedRowsAndLongTexts) {
  Write({{"B2", "Receive order"},
         {"B3", "Check stock"},
         {"B4", "Ship order"},
         {"B5", "Send bill"},
         {"B6", "Archive, then copy"}});
  FlowchartWizard wizard(*sheet_);
  wizard.newSheet = false;
  wizard.InitializeGrid();
  ASSERT_EQ(5u, wizard.Rows().size());
  auto& rows = wizard.Rows();
  rows[0].connect_to = "3, 4";
  rows[1].connect_to = "\"SHIP\"";  // the first included row that holds it, in any case
  rows[2].connect_to = "5";         // excluded: no line
  rows[3].connect_to = "";
  rows[4].included = false;
  std::string longText;
  for (int i = 0; longText.size() < 300; ++i) longText += "Word" + std::to_string(i) + " ";
  longText.resize(300);
  rows[3].entry = longText;
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();

  EXPECT_EQ((std::set<std::pair<std::string, std::string>>{{"Receive order", "Ship order"},
                                                          {"Receive order", longText},
                                                          {"Check stock", "Ship order"}}),
            testing::JoinedTexts(*sheet_));
  EXPECT_EQ(4u, Symbols(*sheet_).size());
  EXPECT_EQ(300u, Text(SymbolWithText(*sheet_, longText)).size()) << "a long text goes in whole";
  // The excluded text goes to column A, a cell for each piece between commas.
  EXPECT_EQ("Archive", sheet_->GetRange("A1").Text());
  EXPECT_EQ("then copy", rules::Trim(sheet_->GetRange("A2").Text()));
  EXPECT_EQ("", sheet_->GetRange("B6").Text());
}

TEST_F(FlowchartWizardTest, NoRowsBetweenPutsTheNextSymbolOneRowBelowItsHeight) {
  Write({{"B3", "Receive order"}, {"B4", "Ship"}});
  FlowchartWizard wizard(*sheet_);
  wizard.newSheet = false;
  wizard.rowsBetween = 0;
  wizard.InitializeGrid();
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();
  Shape order = SymbolWithText(*sheet_, "Receive order");
  EXPECT_EQ(order.TopLeftCell().Row() + RowsOf(order) + 1, SymbolWithText(*sheet_, "Ship").TopLeftCell().Row());
}

TEST_F(FlowchartWizardTest, TheAngleFromOneSymbolToAnother) {
  office::Shapes shapes = sheet_->GetShapes();
  Shape a = shapes.AddShape(office::msoShapeFlowchartProcess, 100, 100, 40, 20);
  Shape below = shapes.AddShape(office::msoShapeFlowchartProcess, 100, 200, 40, 20);
  Shape right = shapes.AddShape(office::msoShapeFlowchartProcess, 200, 100, 40, 20);
  Shape upLeft = shapes.AddShape(office::msoShapeFlowchartProcess, 0, 0, 40, 20);
  EXPECT_EQ(270, FlowchartWizard::GetAngleBetweenShapes(a, below)) << "same centre x, no division by zero";
  EXPECT_EQ(90, FlowchartWizard::GetAngleBetweenShapes(below, a));
  EXPECT_EQ(0, FlowchartWizard::GetAngleBetweenShapes(a, right));
  EXPECT_EQ(180, FlowchartWizard::GetAngleBetweenShapes(right, a));
  EXPECT_EQ(135, FlowchartWizard::GetAngleBetweenShapes(a, upLeft));
}

}  // namespace
}  // namespace nivarel
