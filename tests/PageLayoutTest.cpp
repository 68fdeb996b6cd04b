// Preparing a sheet for drawing: the square grid, the white fill that hides
// the gridlines, the stored page setup, and snapping to the grid.
#include <gtest/gtest.h>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CPageLayout.h"
#include "Interior.h"
#include "PageSetup.h"
#include "Range.h"

namespace nivarel {
namespace {

constexpr double kInch = 72.0;

class PageLayoutTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    config_.IsGrid = true;
    config_.HideGridlines = true;
    config_.CustomLayout = true;
    config_.PaperSize = 1;
    config_.Orientation = 1;
    config_.Margins = 0;
  }
  office::PageSetup Page() { return sheet_->GetPageSetup(); }

  rules::CConfig config_;
  shapes::CPageLayout layout_;
};

TEST_F(PageLayoutTest, TheGridIsSquareAndTheSheetWhiteOnlyWhenAsked) {
  office::Range far = sheet_->GetRange("Z200");
  double width = far.Width(), height = far.Height();
  config_.IsGrid = false;
  config_.CustomLayout = false;
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_DOUBLE_EQ(width, far.Width()) << "no grid asked for: columns stay";
  EXPECT_DOUBLE_EQ(height, far.Height());
  EXPECT_EQ(0xFFFFFF, far.GetInterior().Color()) << "the white fill still applies";

  config_.IsGrid = true;
  config_.HideGridlines = false;
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_NEAR(host::GlobalRowHeight, far.Height(), 0.05);
  EXPECT_NEAR(far.Height(), far.Width(), 0.1) << "square cells, far from A1 too";
}

TEST_F(PageLayoutTest, ThePageTakesTheStoredPaperOrientationAndMargins) {
  // Without a custom layout nothing of the page changes.
  double top = Page().TopMargin();
  config_.CustomLayout = false;
  config_.Margins = 2;
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_DOUBLE_EQ(top, Page().TopMargin());

  config_.CustomLayout = true;
  config_.Margins = 0;
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_EQ(1, Page().PaperSize());
  EXPECT_EQ(1, Page().Orientation());
  EXPECT_NEAR(1.0 * kInch, Page().TopMargin(), 0.5);
  EXPECT_NEAR(0.75 * kInch, Page().LeftMargin(), 0.5);

  config_.Margins = 1;  // its two values follow the orientation
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_NEAR(1.25 * kInch, Page().LeftMargin(), 0.5);
  config_.Orientation = 2;
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_NEAR(1.0 * kInch, Page().LeftMargin(), 0.5);
  EXPECT_NEAR(1.25 * kInch, Page().TopMargin(), 0.5);

  config_.Orientation = 1;
  config_.Margins = 2;  // the wide preset turns the page
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_EQ(2, Page().Orientation());
  EXPECT_NEAR(1.8 * kInch, Page().BottomMargin(), 0.5);

  // Tabloid, which the office doesn't offer, becomes 11x17 without a word.
  config_.PaperSize = 3;
  layout_.SetPageLayout(*sheet_, config_);
  EXPECT_EQ(17, Page().PaperSize());
}

TEST_F(PageLayoutTest, AnUnknownPaperIsToldAndLeavesThePageAlone) {
  config_.Orientation = 2;
  config_.PaperSize = 5;
  auto laid = std::async(std::launch::async, [&] { layout_.SetPageLayout(*sheet_, config_); });
  ASSERT_TRUE(WaitForTitle("Calc")) << "the office's message, under the office's name";
  EXPECT_EQ("The paper size you selected is not supported by your current printer.\n"
            "No page breaks, margins, or orientation can be preset.",
            Ui().MessageText());
  Ui().ClickButton("ok");
  laid.get();
  EXPECT_EQ(1, Page().Orientation()) << "no orientation after the message";
}

TEST_F(PageLayoutTest, TheGridCommandSquaresTheActiveSheetAndSnapsToIt) {
  App().SetSnapToGrid(false);
  layout_.CreateGrid();
  office::Range far = sheet_->GetRange("K40");
  EXPECT_NEAR(far.Height(), far.Width(), 0.1);
  EXPECT_TRUE(App().SnapToGrid());
  layout_.SnapToGrid(true);
  EXPECT_TRUE(App().SnapToGrid()) << "a switch already on stays on";
  layout_.SnapToGrid(false);
  EXPECT_FALSE(App().SnapToGrid());
}

}  // namespace
}  // namespace nivarel
