// Loading picture files through the office and showing them on a sheet.
#include <gtest/gtest.h>

#include <fstream>

#include "AddinFixture.h"
#include "CLoadPictureGDI.h"
#include "FillFormat.h"
#include "ColorFormat.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "Picture.h"
#include "PngFile.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using namespace office;

class PictureUtilitiesTest : public testing::AddinFixture {};

TEST_F(PictureUtilitiesTest, APictureFileLoadsAtItsSizeAndShowsOnTheSheet) {
  // A PNG the office writes: a red square, 40 points at 2 pixels a point.
  Shapes shapes = sheet_->GetShapes();
  Shape red = shapes.AddShape(msoShapeRectangle, 10, 10, 40, 40);
  red.Fill().Solid();
  red.Fill().ForeColor().SetRGB(0x0000FF);
  red.Line().SetVisible(false);
  const std::string square = testing::ConfigHome() + "/red-square.png";
  sheet_->ExportDrawingPicture(square, 2);
  red.Delete();

  std::optional<Picture> loaded = output::CLoadPictureGDI().LoadPictureGDI(square);
  ASSERT_TRUE(loaded.has_value());
  EXPECT_EQ(80, loaded->PixelWidth());
  EXPECT_EQ(80, loaded->PixelHeight());

  // Shown on the sheet at half the size: the office draws it red.
  shapes.AddPicture(*loaded, 100, 100, 20, 20);
  const std::string shown = testing::ConfigHome() + "/shown.png";
  Worksheet::PictureArea area = sheet_->ExportDrawingPicture(shown, 2);
  EXPECT_NEAR(20, area.width, 0.5);
  testing::PngFile picture(shown);
  testing::PngFile::Rgb c = picture.At(picture.Width() / 2, picture.Height() / 2);
  EXPECT_TRUE(c.r > 230 && c.g < 30 && c.b < 30) << c.r << "," << c.g << "," << c.b;

  // Nothing for a missing file, a folder or a file that is no picture.
  const std::string text = testing::ConfigHome() + "/not-a-picture.png";
  std::ofstream(text) << "plain words";
  for (const std::string& path : {testing::ConfigHome() + "/missing.png", testing::ConfigHome(), text, std::string()})
    EXPECT_FALSE(output::CLoadPictureGDI().LoadPictureGDI(path).has_value()) << path;
}

}  // namespace
}  // namespace nivarel
