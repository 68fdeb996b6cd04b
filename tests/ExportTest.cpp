// Export as Picture: what the controller takes from the sheet (the padded
// block of content, the shapes or a range with the gridlines hidden), the
// pictures it writes in each format, and the preview.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "AddinFixture.h"
#include "CImageExportController.h"
#include "ColorFormat.h"
#include "FillFormat.h"
#include "Image.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "PngFile.h"
#include "Window.h"

namespace nivarel {
namespace {

using namespace office;
using output::CImageExportController;
namespace fs = std::filesystem;

class ExportTest : public testing::AddinFixture {
 protected:
  // A borderless red rectangle over the cells from (row, column), rows x
  // columns cells big.
  Shape RedBlock(int row, int column, int rows, int columns) {
    Range from = sheet_->Cells(row, column);
    Range to = sheet_->Cells(row + rows - 1, column + columns - 1);
    Shape s = sheet_->GetShapes().AddShape(msoShapeRectangle, from.Left() + 1, from.Top() + 1,
                                           to.Left() + to.Width() - from.Left() - 2,
                                           to.Top() + to.Height() - from.Top() - 2);
    s.Fill().Solid();
    s.Fill().ForeColor().SetRGB(0x0000FF);
    s.Line().SetVisible(false);
    return s;
  }
  std::string Out(const std::string& name) {
    fs::create_directories(testing::ConfigHome() + "/export");
    return testing::ConfigHome() + "/export/" + name;
  }
  static bool Red(const testing::PngFile::Rgb& c) { return c.r > 220 && c.g < 40 && c.b < 40; }
  static bool White(const testing::PngFile::Rgb& c) { return c.r > 245 && c.g > 245 && c.b > 245; }
  static std::string Text(const testing::PngFile::Rgb& c) {
    return std::to_string(c.r) + "," + std::to_string(c.g) + "," + std::to_string(c.b);
  }
};

TEST_F(ExportTest, TheContentBlockGainsARowAndColumnOnEachSideThatHasOne) {
  {
    CImageExportController empty;
    ASSERT_TRUE(empty.IsSheetValid());
    EXPECT_EQ("", empty.GetWorksheetRange());
  }
  // A chart from A1: nothing to add above or to the left.
  RedBlock(1, 1, 2, 2);
  EXPECT_EQ("A1:C3", CImageExportController().GetWorksheetRange());
  // Cells and shapes together span both; padding on all four sides.
  sheet_->GetRange("F8").SetValue("last step");
  sheet_->GetShapes().Item(1).Delete();
  RedBlock(3, 3, 2, 2);  // C3:D4
  EXPECT_EQ("B2:G9", CImageExportController().GetWorksheetRange());
  // Cells alone.
  sheet_->GetShapes().Item(1).Delete();
  EXPECT_EQ("E7:G9", CImageExportController().GetWorksheetRange());
}

TEST_F(ExportTest, ShapesAreCapturedAsOnePictureWithoutGroupingThem) {
  Shape one = RedBlock(2, 2, 2, 4);
  std::string name = one.Name();
  CImageExportController single;
  ASSERT_TRUE(single.CaptureShapesImage()) << single.ErrorMessage();
  EXPECT_EQ(1, sheet_->GetShapes().Count());
  EXPECT_EQ(name, sheet_->GetShapes().Item(1).Name());
  EXPECT_NE(msoGroup, sheet_->GetShapes().Item(1).Type());
  // At the screen's 96 dpi: 4 pixels for 3 points.
  EXPECT_NEAR(one.Width() * 4 / 3, single.ImageWidth(), 2);
  EXPECT_NEAR(one.Height() * 4 / 3, single.ImageHeight(), 2);

  // Two shapes far apart: one picture spanning both, still two shapes.
  RedBlock(20, 10, 1, 1);
  CImageExportController both;
  ASSERT_TRUE(both.CaptureShapesImage()) << both.ErrorMessage();
  EXPECT_EQ(2, sheet_->GetShapes().Count());
  for (int i = 1; i <= 2; ++i) EXPECT_NE(msoGroup, sheet_->GetShapes().Item(i).Type());
  Range far = sheet_->Cells(20, 10);
  EXPECT_NEAR((far.Left() + far.Width() - 1 - (one.Left())) * 4 / 3, both.ImageWidth(), 3);

  const std::string path = Out("two.png");
  ASSERT_TRUE(both.SaveFlowchartAsPicture(path, Image::kPng, 0)) << both.ErrorMessage();
  testing::PngFile png(path);
  ASSERT_EQ(both.ImageWidth(), png.Width());
  EXPECT_TRUE(Red(png.At(5, 5))) << Text(png.At(5, 5));
  EXPECT_TRUE(Red(png.At(png.Width() - 5, png.Height() - 5))) << Text(png.At(png.Width() - 5, png.Height() - 5));
  // Between them the sheet is white, not transparent.
  EXPECT_TRUE(White(png.At(png.Width() / 2, png.Height() / 3))) << Text(png.At(png.Width() / 2, png.Height() / 3));
  EXPECT_EQ(255, png.Alpha(png.Width() / 2, png.Height() / 3));

  // An empty sheet has nothing to capture, and says nothing.
  sheet_->GetShapes().Item(2).Delete();
  sheet_->GetShapes().Item(1).Delete();
  CImageExportController none;
  EXPECT_FALSE(none.CaptureShapesImage());
  EXPECT_EQ("", none.ErrorMessage());
  EXPECT_EQ(0, none.ImageWidth());
}

TEST_F(ExportTest, ARangeIsCapturedWithItsCellsAndShapesButNoGridlines) {
  for (bool gridlines : {true, false}) {
    Window window(book_->Impl());
    window.SetDisplayGridlines(gridlines);
    sheet_->GetRange("B2").GetInterior().SetColor(0xFF0000);  // blue cell
    RedBlock(4, 2, 1, 1);                                      // red shape over B4
    CImageExportController controller;
    ASSERT_TRUE(controller.CaptureRangeImage("A1:C5")) << controller.ErrorMessage();
    EXPECT_EQ(gridlines, window.DisplayGridlines());

    Range block = sheet_->GetRange("A1:C5");
    EXPECT_NEAR(block.Width() * 4 / 3, controller.ImageWidth(), 2);
    EXPECT_NEAR(block.Height() * 4 / 3, controller.ImageHeight(), 2);
    const std::string path = Out("range.png");
    ASSERT_TRUE(controller.SaveFlowchartAsPicture(path, Image::kPng, 0)) << controller.ErrorMessage();
    testing::PngFile png(path);
    auto at = [&](const std::string& cell, double fx, double fy) {
      Range c = sheet_->GetRange(cell);
      return png.At(static_cast<int>((c.Left() + fx * c.Width()) * 4 / 3),
                    static_cast<int>((c.Top() + fy * c.Height()) * 4 / 3));
    };
    testing::PngFile::Rgb blue = at("B2", 0.5, 0.5), red = at("B4", 0.5, 0.5);
    EXPECT_TRUE(blue.b > 220 && blue.r < 40 && blue.g < 40) << Text(blue);
    EXPECT_TRUE(Red(red)) << Text(red);
    // Where two empty cells meet, no gridline.
    testing::PngFile::Rgb edge = at("C3", 0, 0.5);
    EXPECT_TRUE(White(edge)) << "gridlines " << gridlines << ": " << Text(edge);
    sheet_->GetShapes().Item(1).Delete();
  }
}

}  // namespace
}  // namespace nivarel
