// The sides the flow line tools propose for a line between two shapes, and
// their quick search, worked out by hand.
#include <gtest/gtest.h>

#include "FlowLineSides.h"

namespace nivarel::dialogs {
namespace {

constexpr int16_t kUp = 0, kRight = 1, kDown = 2, kLeft = 3;
constexpr int16_t kTop = 0, kBottom = 2;
constexpr int16_t kRightSide = 1, kLeftSide = 3;

TEST(FlowLineSidesTest, NeighboursAreJoinedByTheirFacingSides) {
  // The second shape above the first: out of the first's top, into the
  // second's bottom; and so on round.
  EXPECT_EQ((LineSides{kTop, kBottom}), SidesBetween(false, kUp));
  EXPECT_EQ((LineSides{kRightSide, kLeftSide}), SidesBetween(false, kRight));
  EXPECT_EQ((LineSides{kBottom, kTop}), SidesBetween(false, kDown));
  EXPECT_EQ((LineSides{kLeftSide, kRightSide}), SidesBetween(false, kLeft));
}

TEST(FlowLineSidesTest, ShapesInLineWithOthersBetweenAreJoinedRoundTheOthers) {
  // A column: the line leaves and enters on the right, clear of the shapes
  // between; a row: over the top.
  EXPECT_EQ((LineSides{kRightSide, kRightSide}), SidesBetween(true, kUp));
  EXPECT_EQ((LineSides{kRightSide, kRightSide}), SidesBetween(true, kDown));
  EXPECT_EQ((LineSides{kTop, kTop}), SidesBetween(true, kRight));
  EXPECT_EQ((LineSides{kTop, kTop}), SidesBetween(true, kLeft));
}

TEST(FlowLineSidesTest, QuickSearchFindsTheFirstTextThatBeginsWithWhatIsTyped) {
  const std::vector<std::string> texts = {"Fetch order", "Check stock", "check again", "<no text>", "Ship"};
  EXPECT_EQ(1, QuickSearchRow(texts, "ch")) << "not the text that only holds it, and any letter case";
  EXPECT_EQ(1, QuickSearchRow(texts, "CHECK"));
  EXPECT_EQ(2, QuickSearchRow(texts, "check a"));
  EXPECT_EQ(4, QuickSearchRow(texts, "s"));
  EXPECT_EQ(-1, QuickSearchRow(texts, "x")) << "no match moves nothing";
  EXPECT_EQ(-1, QuickSearchRow(texts, "")) << "an emptied box moves nothing";
  EXPECT_EQ(-1, QuickSearchRow({}, "a"));
}

}  // namespace
}  // namespace nivarel::dialogs
