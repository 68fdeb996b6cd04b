// The template's options as a carrier holds them, and the generator's
// arithmetic that needs no office: how sections share a row, the line style
// tables and the file name a template is saved under.
#include <gtest/gtest.h>

#include "Borders.h"
#include "CTemplateGenerator.h"
#include "CTemplateProperties.h"
#include "MGlobalVariables.h"

namespace nivarel::templates {
namespace {

TEST(TemplateProperties, ANewObjectHoldsNothing) {
  CTemplateProperties p;
  EXPECT_EQ(0, p.MaxTitleBlockRows());
  EXPECT_EQ(0, p.MaxSwimLaneCount());
  EXPECT_EQ(0, p.PaperSize());
  EXPECT_EQ(0, p.NumberOfPages());
  EXPECT_FALSE(p.UseShapesForSwimLanes());
  EXPECT_EQ("", p.TemplateName());
  EXPECT_EQ(CTemplateProperties::PlainGrid, p.TemplateType());
  EXPECT_EQ(0, p.TemplateLineStyle());
  EXPECT_EQ(0.0f, p.TemplateFontSize());
  EXPECT_FALSE(p.AddHeader());
  EXPECT_EQ(0, p.GetHeaderSectionCount(1));
  EXPECT_EQ("", p.GetSwimLaneTitle(1));
  EXPECT_EQ("", p.GetFooterRowLabel(3, 3));
}

TEST(TemplateProperties, TheRowCountsReadZeroWhileTheirTitleBlockIsOff) {
  CTemplateProperties p;
  p.HeaderRowCount(2);
  p.FooterRowCount(3);
  EXPECT_EQ(0, p.HeaderRowCount());
  EXPECT_EQ(0, p.FooterRowCount());
  p.AddHeader(true);
  EXPECT_EQ(2, p.HeaderRowCount());
  EXPECT_EQ(0, p.FooterRowCount()) << "each count follows its own switch";
  p.AddHeader(false);
  p.AddFooter(true);
  EXPECT_EQ(0, p.HeaderRowCount());
  EXPECT_EQ(3, p.FooterRowCount());
}

TEST(TemplateProperties, IndexedValuesOutsideTheirFixedSizesAreNotKept) {
  CTemplateProperties p;
  p.MaxSwimLaneCount(2);  // the limits bound the caller's loops, not the storage
  p.SetSwimLaneTitle(10, "Ten");
  p.SetSwimLaneTitle(11, "Eleven");
  p.SetSwimLaneTitle(0, "Zero");
  EXPECT_EQ("Ten", p.GetSwimLaneTitle(10));
  EXPECT_EQ("", p.GetSwimLaneTitle(11));
  EXPECT_EQ("", p.GetSwimLaneTitle(0));
  for (int lane = 1; lane <= 9; ++lane) EXPECT_EQ("", p.GetSwimLaneTitle(lane)) << lane;

  p.SetHeaderRowLabel(3, 3, "Corner");
  p.SetHeaderRowLabel(4, 1, "Below");
  p.SetHeaderRowLabel(1, 4, "Beside");
  EXPECT_EQ("Corner", p.GetHeaderRowLabel(3, 3));
  EXPECT_EQ("", p.GetHeaderRowLabel(4, 1));
  EXPECT_EQ("", p.GetHeaderRowLabel(1, 4));
  EXPECT_EQ("", p.GetFooterRowLabel(3, 3)) << "header and footer keep apart";

  p.SetFooterSectionCount(3, 2);
  p.SetFooterSectionCount(4, 1);
  EXPECT_EQ(2, p.GetFooterSectionCount(3));
  EXPECT_EQ(0, p.GetFooterSectionCount(4));
  EXPECT_EQ(0, p.GetHeaderSectionCount(3));
}

// The spans of every section, in order.
std::vector<int> Spans(int count, int total) {
  std::vector<int> out;
  for (int i = 0; i < count; ++i) out.push_back(CTemplateGenerator::GetSectionSpan(i, count, total));
  return out;
}

TEST(TemplateGenerator, SectionsShareOutTheOddCellsFromTheFirst) {
  EXPECT_EQ((std::vector<int>{17, 17, 16}), Spans(3, 50));
  EXPECT_EQ((std::vector<int>{3, 3, 2, 2}), Spans(4, 10));
  EXPECT_EQ((std::vector<int>{4, 4}), Spans(2, 8));
  EXPECT_EQ((std::vector<int>{1, 1, 0}), Spans(3, 2)) << "more sections than cells";
  EXPECT_EQ(50, CTemplateGenerator::GetSectionSpan(0, 0, 50));
  EXPECT_EQ(50, CTemplateGenerator::GetSectionSpan(2, -1, 50));
}

TEST(TemplateGenerator, LineStylesSplitIntoThreeWeightsOfSevenColours) {
  EXPECT_EQ(office::Borders::kThin, CTemplateGenerator::GetBorderWeight(1));
  EXPECT_EQ(office::Borders::kThin, CTemplateGenerator::GetBorderWeight(7));
  EXPECT_EQ(office::Borders::kMedium, CTemplateGenerator::GetBorderWeight(8));
  EXPECT_EQ(office::Borders::kMedium, CTemplateGenerator::GetBorderWeight(14));
  EXPECT_EQ(office::Borders::kThick, CTemplateGenerator::GetBorderWeight(15));
  EXPECT_EQ(office::Borders::kThick, CTemplateGenerator::GetBorderWeight(21));
  EXPECT_EQ(office::Borders::kThin, CTemplateGenerator::GetBorderWeight(22));
  EXPECT_EQ(office::Borders::kThin, CTemplateGenerator::GetBorderWeight(0));

  EXPECT_EQ(0, CTemplateGenerator::GetBorderColor(1));
  EXPECT_EQ(74 + 126 * 256 + 187 * 65536, CTemplateGenerator::GetBorderColor(2));
  EXPECT_EQ(74 + 126 * 256 + 187 * 65536, CTemplateGenerator::GetBorderColor(9)) << "the colours repeat per weight";
  EXPECT_EQ(246 + 146 * 256 + 64 * 65536, CTemplateGenerator::GetBorderColor(21));
  // Out of range counts as style 1 for the colour, black, whatever the id's remainder.
  EXPECT_EQ(0, CTemplateGenerator::GetBorderColor(23));
  EXPECT_EQ(0, CTemplateGenerator::GetBorderColor(-5));
}

class TemplatePath : public ::testing::Test {
 protected:
  void TearDown() override { host::ExcelVersion = 12; }
  std::string PathOf(const std::string& folder, const std::string& name) {
    CTemplateProperties p;
    p.TemplateFolder(folder);
    p.TemplateName(name);
    return CTemplateGenerator::TemplateFilePath(p);
  }
};

TEST_F(TemplatePath, TheExtensionOfTheRoadIsAddedUnlessTheNameHasIt) {
  host::ExcelVersion = 12;
  EXPECT_EQ("/t/Plan.xltx", PathOf("/t", "Plan"));
  EXPECT_EQ("/t/Plan.XLTX", PathOf("/t", "Plan.XLTX"));
  EXPECT_EQ("/t/Plan.xlt.xltx", PathOf("/t", "Plan.xlt")) << "only the running road's extension counts";
  host::ExcelVersion = 11;
  EXPECT_EQ("/t/Plan.xlt", PathOf("/t", "Plan"));
  EXPECT_EQ("/t/Plan.XLT", PathOf("/t", "Plan.XLT"));
  EXPECT_EQ("/t/Plan.xltx.xlt", PathOf("/t", "Plan.xltx"));
}

TEST_F(TemplatePath, DoubledSeparatorsAreMadeSingleOverTheWholePath) {
  host::ExcelVersion = 12;
  EXPECT_EQ("/t/Plan.xltx", PathOf("/t/", "Plan"));
  EXPECT_EQ("/srv/share/Plan.xltx", PathOf("//srv//share/", "Plan"));
}

}  // namespace
}  // namespace nivarel::templates
