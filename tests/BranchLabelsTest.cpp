// Labels beside a decision in a real office: which sides get one, where each
// stands after fitting its text, their look, and when they are grouped with
// the decision.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CDecisionLabelAdder.h"
#include "CShapeFormatter.h"
#include "CShapeWizard.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using office::Shape;

constexpr double kTolerance = 0.1;
constexpr long kWhite = 0xFFFFFF;

// The shipped settings, with a font that the test office has.
rules::CConfig Defaults() {
  rules::CConfig c;
  c.TopBranchText = "";
  c.RightBranchText = "No";
  c.BottomBranchText = "Yes";
  c.LeftBranchText = "";
  c.BranchLabelOption = 0;
  c.BranchPosition = 1;
  c.GroupBranchLabels = true;
  c.BranchesUseDefaultFont = true;
  c.FontName = "Liberation Sans";
  c.FontSize = 8;
  c.BranchFontColor = 0;
  return c;
}

rules::CConfig FourSides(int16_t branchPosition) {
  rules::CConfig c = Defaults();
  c.TopBranchText = "Top";
  // Two lines at the sides: a label's height after fitting is two rows' worth.
  c.RightBranchText = "Right\nside";
  c.BottomBranchText = "Bottom";
  c.LeftBranchText = "Left\nside";
  c.BranchPosition = branchPosition;
  c.GroupBranchLabels = false;
  return c;
}

double CentreX(const Shape& s) { return s.Left() + s.Width() / 2; }
double CentreY(const Shape& s) { return s.Top() + s.Height() / 2; }
double Right(const Shape& s) { return s.Left() + s.Width(); }
double Bottom(const Shape& s) { return s.Top() + s.Height(); }
std::string Text(const Shape& s) { return s.GetTextFrame().GetCharacters().Text(); }

// Points the settings folder and the install folder (the source tree's
// shipped files) elsewhere while it lives.
class BranchLabelsTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    ASSERT_TRUE(host::GlobalRowHeightSet);
    unit_ = host::GlobalRowHeight;
  }
  void TearDown() override {
    EXPECT_EQ("", host::ReadLogFile()) << "no step may fail quietly";
    AddinFixture::TearDown();
  }

  // A decision 8 by 4 grid units at the cell's top left corner.
  Shape Decision(const std::string& cell) {
    office::Range r = sheet_->GetRange(cell);
    return sheet_->GetShapes().AddShape(office::msoShapeFlowchartDecision, r.Left(), r.Top(), 8 * unit_, 4 * unit_);
  }

  Shape Add(Shape& decision, const rules::CConfig& config) {
    return adder_.AddBranchLabels(*sheet_, decision, config, formatter_);
  }

  // The sheet's text boxes, found by their text.
  Shape Label(const std::string& text) {
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      std::vector<Shape> inside = s.Type() == office::msoGroup ? s.GroupItems() : std::vector<Shape>{s};
      for (Shape& item : inside)
        if (item.Type() == office::msoTextBox && Text(item) == text) return item;
    }
    ADD_FAILURE() << "no label \"" << text << "\"";
    return shapes.Item(1);
  }

  void ClearShapes() {
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = shapes.Count(); i >= 1; --i) shapes.Item(i).Delete();
  }

  // The labels of FourSides on a decision at E10, checked against where the
  // labels at the top and bottom stand across the line and the side labels
  // along it.
  void ExpectFourSides(int16_t branchPosition, double acrossOffset, double alongOffset) {
    Shape decision = Decision("E10");
    Add(decision, FourSides(branchPosition));
    EXPECT_EQ(5, sheet_->GetShapes().Count());
    Shape top = Label("Top"), right = Label("Right\nside"), bottom = Label("Bottom"), left = Label("Left\nside");
    SCOPED_TRACE("BranchPosition " + std::to_string(branchPosition));
    EXPECT_GT(right.Height(), unit_ + 4);
    EXPECT_NEAR(decision.Top() - unit_, Bottom(top), kTolerance);
    EXPECT_NEAR(Bottom(decision) + unit_, bottom.Top(), kTolerance);
    EXPECT_NEAR(Right(decision) + unit_, right.Left(), kTolerance);
    EXPECT_NEAR(decision.Left() - unit_, Right(left), kTolerance);
    for (Shape* s : {&top, &bottom}) {
      double anchor = branchPosition == 0 ? s->Left() : CentreX(*s);
      EXPECT_NEAR(CentreX(decision) + acrossOffset, anchor, kTolerance) << Text(*s);
    }
    for (Shape* s : {&right, &left}) {
      double anchor = branchPosition == 0 ? Bottom(*s) : CentreY(*s);
      EXPECT_NEAR(CentreY(decision) + alongOffset, anchor, kTolerance) << Text(*s);
    }
  }

  shapes::CDecisionLabelAdder adder_;
  shapes::CShapeFormatter formatter_;
  double unit_ = 0;
};

TEST_F(BranchLabelsTest, DefaultsGroupYesBelowAndNoRightWithTheDecision) {
  Shape decision = Decision("E5");
  std::string decisionName = decision.Name();
  Shape result = Add(decision, Defaults());

  office::Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(1, shapes.Count()) << "decision and labels are one group";
  EXPECT_EQ(office::msoGroup, result.Type());
  EXPECT_EQ(shapes.Item(1).Name(), result.Name());
  std::vector<Shape> items = result.GroupItems();
  ASSERT_EQ(3u, items.size());
  EXPECT_EQ(decisionName, items[0].Name());
  EXPECT_EQ(office::xlMove, result.Placement());

  int labels = 0;
  for (Shape& item : items) {
    if (item.Type() != office::msoTextBox) continue;
    ++labels;
    SCOPED_TRACE(Text(item));
    EXPECT_FALSE(item.Line().Visible());
    EXPECT_EQ(kWhite, item.Fill().ForeColor().RGB());
    EXPECT_EQ("Liberation Sans", item.GetTextFrame().GetCharacters().GetFont().Name());
    // Fitted to its one line of text, without wrapping.
    EXPECT_LT(item.Width(), 3 * unit_);
  }
  EXPECT_EQ(2, labels);

  // Centred on the line, one unit off the decision.
  Shape yes = Label("Yes"), no = Label("No");
  EXPECT_NEAR(Bottom(decision) + unit_, yes.Top(), kTolerance);
  EXPECT_NEAR(CentreX(decision), CentreX(yes), kTolerance);
  EXPECT_NEAR(Right(decision) + unit_, no.Left(), kTolerance);
  EXPECT_NEAR(CentreY(decision), CentreY(no), kTolerance);
}

TEST_F(BranchLabelsTest, BranchPositionZeroStandsOffTheLineOthersCentreOnIt) {
  // Top and bottom labels start a unit right of the centre line; side labels
  // end a unit above it.
  ExpectFourSides(0, unit_, -unit_);
  ClearShapes();
  ExpectFourSides(1, 0, 0);
  ClearShapes();
  ExpectFourSides(2, 0, 0);
}

TEST_F(BranchLabelsTest, LabelsAtTheSheetsEdgeStayOnTheSheet) {
  Shape decision = Decision("A1");
  ASSERT_NEAR(0, decision.Top(), kTolerance);
  ASSERT_NEAR(0, decision.Left(), kTolerance);
  for (int16_t position : {0, 1}) {
    SCOPED_TRACE("BranchPosition " + std::to_string(position));
    rules::CConfig config = FourSides(position);
    config.RightBranchText = config.BottomBranchText = "";
    Add(decision, config);
    Shape top = Label("Top"), left = Label("Left\nside");
    EXPECT_EQ(0, top.Top());
    EXPECT_EQ(0, left.Left());
    // The other coordinate is not moved by the edge.
    double topAnchor = position == 0 ? top.Left() - unit_ : CentreX(top);
    EXPECT_NEAR(CentreX(decision), topAnchor, kTolerance);
    if (position == 0) {
      // Two lines and a unit don't fit above the line, two rows down the sheet.
      ASSERT_LT(CentreY(decision), left.Height() + unit_);
      EXPECT_EQ(0, left.Top());
    } else {
      EXPECT_NEAR(CentreY(decision), CentreY(left), kTolerance);
    }
    top.Delete();
    left.Delete();
  }
}

TEST_F(BranchLabelsTest, NoGroupUnlessAskedForAndALabelIsMade) {
  // Grouping turned off: decision and labels stay shapes of their own.
  Shape decision = Decision("E5");
  rules::CConfig apart = Defaults();
  apart.GroupBranchLabels = false;
  EXPECT_TRUE(Add(decision, apart).SameAs(decision));
  office::Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(3, shapes.Count());
  for (int i = 1; i <= 3; ++i) EXPECT_NE(office::msoGroup, shapes.Item(i).Type());
  EXPECT_EQ(office::msoTextBox, Label("Yes").Type());
  EXPECT_EQ(office::msoTextBox, Label("No").Type());

  // Four empty texts: no text box, and no group of the decision alone.
  Shape lone = Decision("E20");
  rules::CConfig empty = Defaults();
  empty.RightBranchText = empty.BottomBranchText = "";
  Shape result = Add(lone, empty);
  EXPECT_TRUE(result.SameAs(lone));
  EXPECT_EQ(office::msoAutoShape, result.Type());
  EXPECT_EQ(4, shapes.Count());
}

TEST_F(BranchLabelsTest, OptionTwoDrawsNoneAndOptionOneAsksWithoutStoring) {
  Shape decision = Decision("E5");
  rules::CConfig none = Defaults();
  none.BranchLabelOption = 2;
  EXPECT_TRUE(Add(decision, none).SameAs(decision));
  EXPECT_EQ(1, sheet_->GetShapes().Count());

  // The settings file, copied from the shipped one into a folder of this
  // test's own, holds "Yes" and "No"; the run's texts differ, so that storing
  // them would show.
  testing::SettingsFolder folder(testing::ConfigHome() + "/branch-labels");
  rules::CConfig ask = Defaults();
  ask.BranchLabelOption = 1;
  ask.RightBranchText = "Nein";
  ask.BottomBranchText = "Ja";
  Drive([&] { EXPECT_TRUE(Add(decision, ask).SameAs(decision)); }, " Add Branch Labels?",
        [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_EQ(1, sheet_->GetShapes().Count()) << "a cancelled prompt draws nothing";

  // The prompt offers the run's texts; what the user leaves in the boxes is
  // drawn: here the right box is emptied and the top one filled.
  Shape group = decision;
  Drive([&] { group = Add(decision, ask); }, " Add Branch Labels?", [&] {
    Ui().TypeInDialog("  Maybe ");  // the top box has the focus and selects its text
    Ui().PressDialogKey("TAB");
    Ui().PressDialogKey("BACKSPACE");  // the right box: its text selected, now gone
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_EQ(office::msoGroup, group.Type());
  EXPECT_NO_FATAL_FAILURE(Label("Maybe"));
  EXPECT_NO_FATAL_FAILURE(Label("Ja"));
  EXPECT_EQ(3u, group.GroupItems().size()) << "no label on the emptied side";

  rules::CConfig stored;
  stored.LoadConfigData();
  EXPECT_EQ("", stored.TopBranchText);
  EXPECT_EQ("No", stored.RightBranchText);
  EXPECT_EQ("Yes", stored.BottomBranchText);
  EXPECT_EQ("", stored.LeftBranchText);
}

TEST_F(BranchLabelsTest, WizardTakesItsTextsAndNeverGroups) {
  // Grouping asked for, no labels by the option, other stored texts: the
  // wizard heeds none of them.
  rules::CConfig config = Defaults();
  config.BranchLabelOption = 2;
  config.TopBranchText = "stored";
  config.BranchPosition = 0;
  Shape decision = Decision("E5");
  shapes::CShapeWizard wizard;
  wizard.AddBranchLabels(*sheet_, decision, config, "", "Right", "Bottom", "");

  office::Shapes shapes = sheet_->GetShapes();
  ASSERT_EQ(3, shapes.Count());
  for (int i = 1; i <= 3; ++i) EXPECT_NE(office::msoGroup, shapes.Item(i).Type());
  Shape right = Label("Right"), bottom = Label("Bottom");
  EXPECT_FALSE(right.Line().Visible());
  EXPECT_EQ(kWhite, bottom.Fill().ForeColor().RGB());
  EXPECT_NEAR(CentreY(decision) - unit_, Bottom(right), kTolerance);
  EXPECT_NEAR(Right(decision) + unit_, right.Left(), kTolerance);
  EXPECT_NEAR(Bottom(decision) + unit_, bottom.Top(), kTolerance);
  EXPECT_NEAR(CentreX(decision) + unit_, bottom.Left(), kTolerance);
}

TEST_F(BranchLabelsTest, BelowVersion12TheOldTextFrameFitsTheLabel) {
  // The newer text frame isn't there: using it would log an error and leave
  // the label unplaced at the sheet's corner.
  TakeTheRoadBelowVersion12();
  Shape decision = Decision("E5");
  Add(decision, Defaults());
  Shape yes = Label("Yes");
  EXPECT_LT(yes.Width(), 3 * unit_);
  EXPECT_NEAR(CentreX(decision), CentreX(yes), kTolerance);
  EXPECT_NEAR(Bottom(decision) + unit_, yes.Top(), kTolerance);
}

}  // namespace
}  // namespace nivarel
