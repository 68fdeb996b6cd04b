// The wizard run that the command line sends into the office: the hidden
// command rxNivarelRunFlowchartWizard dispatched to the document's window
// with the choices as arguments, the add-in's answer, and the chart read back
// from the sheet it names.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "AddinCommand.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "MsoConstants.h"
#include "OfficeTest.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Window.h"

namespace nivarel {
namespace {

using driver::AddinCommand;
using office::Shape;
using office::Worksheet;

constexpr char kRunWizard[] = "vnd.nivarel:rxNivarelRunFlowchartWizard";

// Where a symbol stands, by its text.
struct Placed {
  int column = 0, row = 0, rows = 0, type = 0;
};

class WizardCommandTest : public testing::OfficeTest {
 protected:
  // Column B: a step, a question and a step; column D: two steps. None of
  // the texts holds a keyword of the symbol rules.
  void WriteTwoColumns(Worksheet& sheet) {
    for (const auto& [address, text] : std::vector<std::pair<std::string, std::string>>{
             {"B1", "Take the order"}, {"B2", "Is it in stock?"}, {"B3", "Order more"},
             {"D1", "Pack the parcel"}, {"D2", "Ship it"}})
      sheet.GetRange(address).SetValue(text);
  }

  AddinCommand::Answer Send(const std::vector<std::pair<std::string, AddinCommand::Value>>& arguments) {
    return AddinCommand::Send(*book_, kRunWizard, arguments, 60);
  }

  static std::string Text(const Shape& s) { return s.GetTextFrame().GetCharacters().Text(); }

  // The symbols of the sheet by their text: top-left cell, the rows of the
  // grid their height covers, their type.
  static std::map<std::string, Placed> Symbols(const Worksheet& sheet) {
    std::map<std::string, Placed> out;
    double unit = sheet.Cells(1, 1).Height();
    office::Shapes shapes = sheet.GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      if (s.Type() != office::msoAutoShape || s.Connector()) continue;
      office::Range cell = s.TopLeftCell();
      out[Text(s)] = {cell.Column(), cell.Row(), static_cast<int>(std::nearbyint(s.Height() / unit)),
                      s.AutoShapeType()};
    }
    return out;
  }


  // The columns and rows where the five symbols of WriteTwoColumns stand;
  // each symbol's own height is checked first, as the rows below a symbol
  // follow from it.
  static void ExpectPlaces(const std::map<std::string, Placed>& symbols, int columnB, int columnD,
                           const std::vector<int>& rowsB, const std::vector<int>& rowsD) {
    ASSERT_EQ(5u, symbols.size());
    ASSERT_EQ(2, symbols.at("Take the order").rows) << "a short step is a process of its least height";
    ASSERT_EQ(4, symbols.at("Is it in stock?").rows) << "a decision of its least height";
    const char* b[] = {"Take the order", "Is it in stock?", "Order more"};
    const char* d[] = {"Pack the parcel", "Ship it"};
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(columnB, symbols.at(b[i]).column) << b[i];
      EXPECT_EQ(rowsB[i], symbols.at(b[i]).row) << b[i];
    }
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(columnD, symbols.at(d[i]).column) << d[i];
      EXPECT_EQ(rowsD[i], symbols.at(d[i]).row) << d[i];
    }
  }

  const std::set<std::pair<std::string, std::string>> kJoins = {
      {"Take the order", "Is it in stock?"}, {"Is it in stock?", "Order more"}, {"Pack the parcel", "Ship it"}};
};

TEST_F(WizardCommandTest, WithoutArgumentsItDrawsAsTheDialogsDefaultsDoOnANewSheetAndAnswersWhere) {
  WriteTwoColumns(*sheet_);
  int sheets = book_->SheetCount();
  AddinCommand::Answer answer = Send({});
  ASSERT_TRUE(answer.succeeded) << answer.values["Message"];

  ASSERT_EQ(sheets + 1, book_->SheetCount()) << "a new sheet";
  Worksheet drawn = book_->Sheet(book_->SheetCount());
  EXPECT_EQ(drawn.Name(), answer.values["Sheet"]) << "behind the last sheet, and named in the answer";
  EXPECT_EQ("Take the order", sheet_->GetRange("B1").Text()) << "the sheet read keeps its text";
  EXPECT_EQ(0, sheet_->GetShapes().Count());
  EXPECT_EQ("", drawn.GetRange("B1").Text()) << "the copy's cells are cleared as their symbols are drawn";
  EXPECT_EQ(std::to_string(drawn.GetShapes().Count()), answer.values["Shapes"]);
  EXPECT_FALSE(office::Window(book_->Impl()).DisplayGridlines()) << "the shipped settings hide the gridlines";

  // Columns 2 and 4 are spread 8 + 4 apart (2 and 14), then moved right to
  // start in column 3; row 1 moves down to row 3. Down a column each symbol
  // stands 2 rows plus one below the symbol above (one more below a
  // decision): 3 + 2 + 3 = 8, 8 + 4 + 3 = 15.
  std::map<std::string, Placed> symbols = Symbols(drawn);
  ExpectPlaces(symbols, 3, 15, {3, 8, 15}, {3, 8});
  EXPECT_EQ(office::msoShapeFlowchartDecision, symbols.at("Is it in stock?").type);
  EXPECT_EQ(office::msoShapeFlowchartProcess, symbols.at("Ship it").type);
  EXPECT_EQ(kJoins, testing::JoinedTexts(drawn)) << "each cell joined to the one below it in its column";
}

TEST_F(WizardCommandTest, TheChoicesGivenAsArgumentsReachTheWizard) {
  // Keep the layout, on the sheet named, which is not the active one: the
  // columns are spread by the widest symbol alone (2 and 10, then 3 and 11),
  // and a symbol goes right below the one above (a row more below a
  // decision): 3 + 2 = 5, 5 + 4 + 1 = 10.
  WriteTwoColumns(*sheet_);
  std::string name = sheet_->Name();
  book_->AddSheet();
  int sheets = book_->SheetCount();
  AddinCommand::Answer kept = Send({{"Sheet", name}, {"Layout", std::string("keep")}, {"NewSheet", false}});
  ASSERT_TRUE(kept.succeeded) << kept.values["Message"];
  EXPECT_EQ(name, kept.values["Sheet"]);
  EXPECT_EQ(sheets, book_->SheetCount()) << "no sheet added";
  EXPECT_EQ("", sheet_->GetRange("B1").Text()) << "drawn over the sheet read";
  ExpectPlaces(Symbols(*sheet_), 3, 11, {3, 5, 10}, {3, 5});
  EXPECT_EQ(kJoins, testing::JoinedTexts(*sheet_));
}

TEST_F(WizardCommandTest, ASheetWithoutTextOrNotThereIsRefusedWithTheReason) {
  int sheets = book_->SheetCount();
  AddinCommand::Answer empty = Send({});
  EXPECT_FALSE(empty.succeeded);
  EXPECT_EQ("No text was found on the current worksheet.", empty.values["Message"]);

  AddinCommand::Answer missing = Send({{"Sheet", std::string("No such sheet")}});
  EXPECT_FALSE(missing.succeeded);
  EXPECT_NE(std::string::npos, missing.values["Message"].find("'No such sheet'")) << missing.values["Message"];
  EXPECT_EQ(sheets, book_->SheetCount()) << "nothing was drawn";
  EXPECT_EQ(0, sheet_->GetShapes().Count());
}

}  // namespace
}  // namespace nivarel
