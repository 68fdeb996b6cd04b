// The shape selection tool worked as a person works it: opened from the menu
// through the office's dispatch, its filters and rows checked and its buttons
// clicked, and what it leaves selected read back from the office's own
// selection.
#include <gtest/gtest.h>

#include <set>

#include "AddinFixture.h"
#include "Characters.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeRange.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "frmSelectShapes.h"

namespace nivarel {
namespace {

using office::Shape;

const char kTitle[] = " Shape Selection Tool";
const char kCommand[] = "vnd.nivarel:rxNivarelShapeSelectionTool";

class ShapeSelectionTest : public testing::AddinFixture {
 protected:
  void Open(const std::function<void()>& steps) { Drive([&] { Ui().RunCommand(kCommand, true); }, kTitle, steps); }

  Shape Symbol(int type, double left, double top, const std::string& text) {
    Shape s = sheet_->GetShapes().AddShape(type, left, top, 96, 36);
    s.GetTextFrame().GetCharacters().SetText(text);
    return s;
  }

  // The check boxes the dialog shows: the filters are the kinds' names, the
  // table's rows hold their columns apart by blanks.
  std::vector<driver::UiDriver::DialogControl> Checks(bool rows) {
    std::vector<driver::UiDriver::DialogControl> out;
    for (const auto& c : Ui().DialogControls())
      if (c.kind == "check" && !c.text.empty() && (c.text.find("   ") != std::string::npos) == rows)
        out.push_back(c);
    return out;
  }
  // The rows as "kind|column|row|text", each with whether it is checked.
  std::vector<std::pair<std::string, bool>> Rows() {
    std::vector<std::pair<std::string, bool>> out;
    for (const auto& c : Checks(true)) out.emplace_back(testing::Columns(c.text), c.checked);
    return out;
  }
  std::vector<std::string> Filters() {
    std::vector<std::string> out;
    for (const auto& c : Checks(false)) out.push_back(c.text);
    return out;
  }
  bool RowsChecked(const std::vector<bool>& wanted) {
    return Eventually([&] {
      auto rows = Rows();
      if (rows.size() != wanted.size()) return false;
      for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].second != wanted[i]) return false;
      return true;
    });
  }

  static std::string Names(const std::set<std::string>& names) {
    std::string out;
    for (const auto& n : names) out += "'" + n + "' ";
    return out;
  }
  // The names of the shapes the office has selected.
  std::set<std::string> SelectedNames() {
    std::set<std::string> names;
    office::Selection selection = App().GetSelection();
    if (selection.shapes)
      for (const Shape& s : selection.shapes->Items()) names.insert(s.Name());
    return names;
  }
};

TEST_F(ShapeSelectionTest, EachKindIsAFilterAndOKSelectsTheCheckedShapes) {
  office::Range c3 = sheet_->GetRange("C3"), c8 = sheet_->GetRange("C8");
  Shape process = Symbol(office::msoShapeFlowchartProcess, c3.Left(), c3.Top(), "Check the order");
  Shape decision = Symbol(office::msoShapeFlowchartDecision, c8.Left(), c8.Top(), "In stock?");
  Shape line = sheet_->GetShapes().AddConnector(office::msoConnectorElbow, 10, 10, 50, 50);
  Shape label = sheet_->GetShapes().AddTextbox(office::msoTextOrientationHorizontal, c8.Left() + 150, c8.Top(), 60, 20);
  label.GetTextFrame().GetCharacters().SetText("Yes");
  Shape other = Symbol(office::msoShapeFlowchartProcess, c8.Left(), c8.Top() + 100, "Ship it");
  sheet_->GetRange("B2").Select();
  Open([&] {
    EXPECT_EQ((std::vector<std::string>{"Process", "Decision", "Flow Line", "TextBox"}), Filters())
        << "the kinds in the order first met, each once";
    auto rows = Rows();
    ASSERT_EQ(5u, rows.size());
    EXPECT_EQ("Process|C|3|Check the order", rows[0].first);
    EXPECT_EQ("Decision|C|8|In stock?", rows[1].first);
    EXPECT_EQ("Flow Line|A|1", rows[2].first);
    EXPECT_EQ("TextBox|" + label.TopLeftCell().Address(false).substr(0, 1) + "|8|Yes", rows[3].first);
    EXPECT_TRUE(RowsChecked({false, false, false, false, false})) << "nothing checked at first";

    Ui().ClickInDialog("Process");
    Ui().ClickInDialog("Apply Filters");
    EXPECT_TRUE(RowsChecked({true, false, false, false, true})) << "both processes";
    Ui().ClickInDialog("Process");
    Ui().ClickInDialog("Decision");
    Ui().ClickInDialog("Apply Filters");
    EXPECT_TRUE(RowsChecked({false, true, false, false, false})) << "applying sets the whole table";
    Ui().ClickInDialog(Checks(true)[3].text);  // the label, by hand
    EXPECT_TRUE(RowsChecked({false, true, false, true, false}));
    Ui().ClickInDialog("OK");
  });
  EXPECT_TRUE(Eventually([&] {
    return SelectedNames() == std::set<std::string>{decision.Name(), label.Name()};
  })) << "the decision and the label are selected";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeSelectionTest, ApplyingWithNoFilterCheckedClearsEveryRowAndOKKeepsTheSelection) {
  Symbol(office::msoShapeFlowchartProcess, 100, 40, "Check the order");
  Symbol(office::msoShapeFlowchartDecision, 100, 140, "In stock?");
  sheet_->GetRange("B2").Select();
  Open([&] {
    Ui().ClickInDialog("Select All Shapes");
    EXPECT_TRUE(RowsChecked({true, true}));
    Ui().ClickInDialog("Select All Filters");
    EXPECT_TRUE(Eventually([&] {
      for (const auto& c : Checks(false))
        if (!c.checked) return false;
      return true;
    }));
    Ui().ClickInDialog("Clear Filters");
    Ui().ClickInDialog("Apply Filters");
    EXPECT_TRUE(RowsChecked({false, false})) << "each kind is unchecked, so each row";
    Ui().ClickInDialog("Select All Shapes");
    Ui().ClickInDialog("Unselect All Shapes");
    EXPECT_TRUE(RowsChecked({false, false}));
    Ui().ClickInDialog("OK");
  });
  office::Selection selection = App().GetSelection();
  ASSERT_TRUE(selection.cells) << "the cell stays selected";
  EXPECT_EQ("B2", selection.cells->Address(false));
}

TEST_F(ShapeSelectionTest, ASheetWithOnlyATemplatesShapesListsNothing) {
  Shape frame = sheet_->GetShapes().AddShape(office::msoShapeRectangle, 10, 10, 300, 200);
  frame.SetName("TEMPLATE_Frame");
  sheet_->GetRange("D4").Select();
  Open([&] {
    EXPECT_TRUE(Rows().empty());
    EXPECT_TRUE(Filters().empty());
    Ui().ClickInDialog("Select All Shapes");
    Ui().ClickInDialog("OK");
  });
  office::Selection selection = App().GetSelection();
  ASSERT_TRUE(selection.cells);
  EXPECT_EQ("D4", selection.cells->Address(false));
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeSelectionTest, MembersOfAGroupAreListedAndSelectedAndTheGroupStays) {
  Shape a = Symbol(office::msoShapeFlowchartProcess, 100, 40, "Pick");
  Shape b = Symbol(office::msoShapeFlowchartTerminator, 100, 140, "Pack");
  const std::string pick = a.Name();
  Shape group = sheet_->GetShapes().GetRange({a.Name(), b.Name()}).Group();
  std::string groupName = group.Name();
  const auto entries = office::UndoList(*book_).Titles();
  Open([&] {
    auto rows = Rows();
    ASSERT_EQ(2u, rows.size());
    EXPECT_NE(std::string::npos, rows[0].first.find("|Pick"));
    EXPECT_NE(std::string::npos, rows[1].first.find("|Pack"));
    Ui().ClickInDialog(Checks(true)[0].text);
    EXPECT_TRUE(RowsChecked({true, false}));
    Ui().ClickInDialog("OK");
  });
  EXPECT_TRUE(Eventually([&] { return SelectedNames() == std::set<std::string>{pick}; }))
      << "the member is selected, not its group; selected: " << Names(SelectedNames());
  office::Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(1, shapes.Count()) << "the group is closed again";
  EXPECT_EQ(office::msoGroup, shapes.Item(1).Type());
  EXPECT_EQ(groupName, shapes.Item(1).Name());
  EXPECT_EQ(2u, shapes.Item(1).GroupItems().size());
  EXPECT_EQ(entries, office::UndoList(*book_).Titles()) << "opening and closing the group is not a change to undo";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeSelectionTest, ASheetWithoutShapesSaysSo) {
  auto message = MessageOf([&] { Ui().RunCommand(kCommand, true); });
  EXPECT_EQ(std::make_pair(std::string("No Shapes Found"),
                           std::string("There must be at least 1 shape on the current\n"
                                       "worksheet to use the Shape Selection Tool.")),
            message);
  // The tool's own check, when it is called on such a sheet.
  EXPECT_EQ(std::make_pair(std::string("No Shapes Found"),
                           std::string("There are no shapes on the active sheet. Make sure\n"
                                       "you have the correct worksheet open selected.")),
            MessageOf([&] { dialogs::frmSelectShapes().Display(); }));
}

}  // namespace
}  // namespace nivarel
