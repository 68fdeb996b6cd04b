// Cells in the logic's terms: 1-based rows and columns, A1 addresses,
// positions in points from A1, column widths in characters, and the
// application's switches and current objects.
#include "HostError.h"
#include "MsoConstants.h"
#include "OfficeTest.h"
#include "Shapes.h"

using namespace nivarel::office;

namespace nivarel::testing {
namespace {

class HostCellsTest : public OfficeTest {};

TEST_F(HostCellsTest, PositionsAndAddresses) {
  Range a1 = sheet_->GetRange("A1");
  EXPECT_DOUBLE_EQ(0, a1.Left());
  EXPECT_DOUBLE_EQ(0, a1.Top());
  Range c3 = sheet_->Cells(3, 3);
  EXPECT_EQ("$C$3", c3.Address());
  EXPECT_EQ("C3", c3.AddressLocal(false));
  // The office keeps cell sizes in twips and reports them in 1/100 mm: allow both roundings.
  EXPECT_NEAR(2 * a1.Width(), c3.Left(), 0.1);
  EXPECT_NEAR(2 * a1.Height(), c3.Top(), 0.1);
  EXPECT_EQ("$D$5", c3.Offset(2, 1).Address());
  EXPECT_EQ("$AB$10:$AC$12", sheet_->GetRange("AB10:AC12").Address());
  EXPECT_EQ(28, sheet_->GetRange("AB10:AC12").Column());
  EXPECT_THROW(c3.Offset(-3, 0), HostError);

  // Widths and heights round trip; cells move with them.
  sheet_->Columns().SetColumnWidth(2.71);
  sheet_->Rows().SetRowHeight(12.75);
  EXPECT_NEAR(2.71, sheet_->Cells(1, 7).ColumnWidth(), 0.01);
  EXPECT_NEAR(12.75, sheet_->Cells(9, 1).RowHeight(), 0.05);
  EXPECT_NEAR(2 * 12.75, c3.Top(), 0.1);
}

TEST_F(HostCellsTest, ValuesFindAndClear) {
  Range b2 = sheet_->GetRange("B2");
  b2.SetValue("Ship the order");
  sheet_->GetRange("D7").SetValue("42");
  EXPECT_EQ("Ship the order", b2.Text());
  EXPECT_EQ("42", sheet_->GetRange("D7").Value());
  auto found = sheet_->GetRange("A1:Z100").Find("ship the ORDER");
  ASSERT_TRUE(found);
  EXPECT_EQ("$B$2", found->Address());
  EXPECT_FALSE(sheet_->GetRange("A1:Z100").Find("Ship"));
  ASSERT_TRUE(sheet_->UsedRange());
  EXPECT_EQ("$B$2:$D$7", sheet_->UsedRange()->Address());

  b2.GetInterior().SetColorIndex(15);
  b2.ClearContents();
  EXPECT_EQ("", b2.Value());
  EXPECT_EQ(15, b2.GetInterior().ColorIndex());  // formats stay
  b2.Clear();
  EXPECT_EQ(Interior::kNone, b2.GetInterior().ColorIndex());
}

TEST_F(HostCellsTest, ApplicationAnswersForTheCurrentObjects) {
  Application app = App();
  EXPECT_EQ("12.0", app.Version());
  EXPECT_EQ(0, app.OfficeVersion().find("7."));
  EXPECT_DOUBLE_EQ(72, app.InchesToPoints(1));
  ASSERT_TRUE(app.ActiveWorkbook());
  EXPECT_TRUE(app.ActiveWorkbook()->SameAs(*book_));
  ASSERT_TRUE(app.ActiveSheet());
  EXPECT_EQ("Worksheet", app.ActiveSheet()->TypeName());

  sheet_->GetRange("E4").Select();
  EXPECT_EQ("$E$4", app.ActiveCell()->Address());
  Shape s = sheet_->GetShapes().AddShape(msoShapeFlowchartProcess, 10, 10, 50, 20);
  s.Select();
  Selection sel = app.GetSelection();
  ASSERT_TRUE(sel.shapes);
  EXPECT_TRUE(sel.shapes->Item(1).SameAs(s));

  ASSERT_TRUE(app.ActiveWindow());
  app.ActiveWindow()->SetDisplayGridlines(false);
  EXPECT_FALSE(app.ActiveWindow()->DisplayGridlines());

  // Screen updating nests: the second "off" does not lock twice.
  app.SetScreenUpdating(false);
  app.SetScreenUpdating(false);
  app.SetScreenUpdating(true);
  EXPECT_TRUE(app.ScreenUpdating());
}

TEST_F(HostCellsTest, TheRoadBelowVersion12IsReachedThroughOneSwitch) {
  Shape s = sheet_->GetShapes().AddShape(msoShapeFlowchartProcess, 10, 10, 50, 20);
  setenv("NIVAREL_OBJECT_MODEL", "11", 1);
  Application old(App().Session());
  unsetenv("NIVAREL_OBJECT_MODEL");
  EXPECT_EQ("11.0", old.Version());
  EXPECT_THROW(s.GetTextFrame2(), HostError);
  EXPECT_THROW(s.SetShapeStyle(5), HostError);
  s.GetTextFrame().SetAutoSize(true);  // the older text frame stays

  Application current(App().Session());
  EXPECT_EQ("12.0", current.Version());
  s.GetTextFrame2().SetWordWrap(msoFalse);
  EXPECT_EQ(msoFalse, s.GetTextFrame2().WordWrap());
}

TEST_F(HostCellsTest, PageSetupInTheLogicsCodes) {
  PageSetup page = sheet_->GetPageSetup();
  page.SetPaperSize(PageSetup::kPaperA3);
  page.SetOrientation(PageSetup::kLandscape);
  page.SetLeftMargin(36);
  EXPECT_EQ(PageSetup::kPaperA3, page.PaperSize());
  EXPECT_EQ(PageSetup::kLandscape, page.Orientation());
  EXPECT_NEAR(36, page.LeftMargin(), 0.05);
  page.SetPaperSize(PageSetup::kPaperLetter);
  EXPECT_EQ(PageSetup::kLandscape, page.Orientation());
  EXPECT_THROW(page.SetPaperSize(12345), HostError);
}

}  // namespace
}  // namespace nivarel::testing
