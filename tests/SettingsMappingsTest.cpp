// The advanced settings' lists against the stored values: the text
// alignment's nine entries and the host's alignment constants both ways, and
// the prefix delimiters; and the symbol lists' shape groups.
#include <gtest/gtest.h>

#include "MsoConstants.h"
#include "frmAdvancedSettings.h"
#include "frmSymbolLists.h"

namespace nivarel {
namespace {

using dialogs::frmAdvancedSettings;
using office::xlBottom;
using office::xlCenter;
using office::xlLeft;
using office::xlRight;
using office::xlTop;

TEST(SettingsMappingsTest, EachAlignmentEntryIsARowAndAColumnAndReadsBackAsItself) {
  // Top-Left, Top-Center, Top-Right, Center-Left ... Bottom-Right.
  const int32_t horizontal[] = {xlLeft, xlCenter, xlRight, xlLeft, xlCenter, xlRight, xlLeft, xlCenter, xlRight};
  const int32_t vertical[] = {xlTop, xlTop, xlTop, xlCenter, xlCenter, xlCenter, xlBottom, xlBottom, xlBottom};
  for (int i = 0; i < frmAdvancedSettings::kAlignments; ++i) {
    EXPECT_EQ(horizontal[i], frmAdvancedSettings::HorizontalOf(i)) << "entry " << i;
    EXPECT_EQ(vertical[i], frmAdvancedSettings::VerticalOf(i)) << "entry " << i;
    EXPECT_EQ(i, frmAdvancedSettings::AlignmentIndex(horizontal[i], vertical[i])) << "entry " << i;
  }
  EXPECT_EQ(-4108, frmAdvancedSettings::HorizontalOf(frmAdvancedSettings::kCenterCenter));
  EXPECT_EQ(-4108, frmAdvancedSettings::VerticalOf(frmAdvancedSettings::kCenterCenter));
}

TEST(SettingsMappingsTest, AStoredAlignmentThatFitsNoEntryCountsAsCenter) {
  EXPECT_EQ(frmAdvancedSettings::kCenterCenter, frmAdvancedSettings::AlignmentIndex(0, 0));
  EXPECT_EQ(3, frmAdvancedSettings::AlignmentIndex(xlLeft, 7)) << "Center-Left";
  EXPECT_EQ(7, frmAdvancedSettings::AlignmentIndex(-1, xlBottom)) << "Bottom-Center";
  // The vertical constants are not horizontal ones, nor the other way round.
  EXPECT_EQ(frmAdvancedSettings::kCenterCenter, frmAdvancedSettings::AlignmentIndex(xlTop, xlLeft));
}

TEST(SettingsMappingsTest, DelimitersOtherThanDashAndPeriodAreTheColon) {
  EXPECT_EQ(0, frmAdvancedSettings::DelimiterIndex(":"));
  EXPECT_EQ(1, frmAdvancedSettings::DelimiterIndex("-"));
  EXPECT_EQ(2, frmAdvancedSettings::DelimiterIndex("."));
  for (const char* other : {"#", "", "::", " -"}) EXPECT_EQ(0, frmAdvancedSettings::DelimiterIndex(other)) << other;
  EXPECT_EQ(":", frmAdvancedSettings::DelimiterOf(0));
  EXPECT_EQ("-", frmAdvancedSettings::DelimiterOf(1));
  EXPECT_EQ(".", frmAdvancedSettings::DelimiterOf(2));
  EXPECT_EQ(":", frmAdvancedSettings::DelimiterOf(-1)) << "no entry chosen";
}

TEST(SettingsMappingsTest, ShapeGroupsFollowTheHostsRangesOfShapeTypes) {
  using dialogs::frmSymbolLists;
  EXPECT_EQ("Basic Shapes", frmSymbolLists::ShapeGroup(1));
  EXPECT_EQ("Basic Shapes", frmSymbolLists::ShapeGroup(32));
  EXPECT_EQ("Block Arrows", frmSymbolLists::ShapeGroup(33));
  EXPECT_EQ("Block Arrows", frmSymbolLists::ShapeGroup(60));
  EXPECT_EQ("Flowchart Symbols", frmSymbolLists::ShapeGroup(61));
  EXPECT_EQ("Flowchart Symbols", frmSymbolLists::ShapeGroup(88));
  EXPECT_EQ("Stars and Banners", frmSymbolLists::ShapeGroup(89));
  EXPECT_EQ("Stars and Banners", frmSymbolLists::ShapeGroup(104));
  EXPECT_EQ("Callouts", frmSymbolLists::ShapeGroup(105));
  EXPECT_EQ("Callouts", frmSymbolLists::ShapeGroup(124));
  EXPECT_EQ("", frmSymbolLists::ShapeGroup(125)) << "the action buttons are in no group";
  EXPECT_EQ("", frmSymbolLists::ShapeGroup(0));
}

}  // namespace
}  // namespace nivarel
