// Export as Picture: what the controller takes from the sheet (the padded
// block of content, the shapes or a range with the gridlines hidden), the
// pictures it writes in each format, and the preview.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "AddinFixture.h"
#include "CImageExportController.h"
#include "ColorFormat.h"
#include "FillFormat.h"
#include "Image.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "MBranchLabels.h"
#include "PngFile.h"
#include "UndoList.h"
#include "Window.h"
#include "frmExport.h"
#include "MSpecialFolders.h"

#include <cmath>
#include <thread>

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
  // Runs Export as Picture from the menu and works its dialog with steps; a
  // window left open fails the test and is closed.
  void ExportThroughTheMenu(const std::function<void()>& steps) {
    Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelSavePicture", true); }, " Export Picture", steps);
    for (int i = 0; i < 5 && !Ui().WaitForNoModal(3000); ++i) {
      if (i == 0) ADD_FAILURE() << "the window '" << Ui().Title() << "' was left open";
      CloseTopWindow();
    }
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

// A label is sized to its text on the sheet; its picture keeps the text on
// the one line the sheet shows, at every scale.
TEST_F(ExportTest, ALabelSizedToItsTextKeepsItsTextOnOneLine) {
  rules::CConfig config;
  config.BranchFontName = "DejaVu Sans";
  config.BranchFontSize = 10;
  office::Shapes shapes = sheet_->GetShapes();
  for (const char* text : {"Yes", "Packed within one day"}) {
    Shape label = shapes::AddFreeLabel(shapes, 50, 50, text, config);
    for (double scale : {1.0, 2.0}) {
      CImageExportController one;
      one.SetScale(scale);
      ASSERT_TRUE(one.CaptureShapesImage()) << one.ErrorMessage();
      const std::string path = Out("label.png");
      ASSERT_TRUE(one.SaveFlowchartAsPicture(path, Image::kPng, 0)) << one.ErrorMessage();
      testing::PngFile png(path);
      int top = png.Height(), bottom = -1;
      for (int y = 0; y < png.Height(); ++y)
        for (int x = 0; x < png.Width(); ++x)
          if (png.Inked(x, y)) {
            top = std::min(top, y);
            bottom = std::max(bottom, y);
          }
      ASSERT_GE(bottom, top) << text << ": the text is drawn";
      // One line of 10 pt text is at most about 10 pt high; two are twice that.
      const double line = 10 * 4.0 / 3 * scale;
      EXPECT_LT(bottom - top + 1, 1.4 * line) << text << " at " << scale << ": the text broke onto another line";
    }
    label.Delete();
  }
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

TEST_F(ExportTest, TheDefaultNameLeavesOutWhatAFileNameCannotHold) {
  sheet_->SetName(" Order <draft> | \"final\" ");
  EXPECT_EQ("Order draft  final flowchart", CImageExportController().ImageName());
}

TEST_F(ExportTest, TheSaveDialogsAnswerGetsItsFiltersExtensionAndFormat) {
  using dialogs::frmExport;
  ASSERT_EQ(6u, frmExport::SaveFilters().size());
  EXPECT_EQ("Portable Network Graphics  (*.png)", frmExport::SaveFilters()[4].first);
  // Case counts: a capital extension is not the filter's.
  EXPECT_EQ("/tmp/chart.PNG.png", frmExport::TargetOf("/tmp/chart.PNG", 5).fileName);
  EXPECT_EQ("/tmp/chart.png", frmExport::TargetOf("  /tmp/chart.png ", 5).fileName);
  // A name ending in a point keeps one point.
  EXPECT_EQ("/tmp/chart.jpg", frmExport::TargetOf("/tmp/chart.", 4).fileName);
  const std::pair<int, std::pair<int, int>> formats[] = {
      {1, {0, 0}}, {2, {99, 0}}, {3, {25, 0}}, {4, {2, 95}}, {5, {13, 0}}, {6, {18, 16384}}, {7, {13, 0}}};
  for (const auto& [filter, expected] : formats) {
    frmExport::SaveTarget t = frmExport::TargetOf("chart", filter);
    EXPECT_EQ(expected, std::make_pair(t.format, t.flags)) << filter;
  }
  EXPECT_EQ("chart", frmExport::TargetOf("chart", 7).fileName) << "an unknown filter adds nothing";
}

// The bitmaps "NVP..." in the temporary folder.
std::set<std::string> TemporaryBitmaps() {
  std::set<std::string> found;
  const char* dir = std::getenv("TMPDIR");
  for (const auto& e : fs::directory_iterator(dir && *dir ? dir : "/tmp"))
    if (e.path().filename().string().rfind("NVP", 0) == 0) found.insert(e.path().string());
  return found;
}

TEST_F(ExportTest, EachFormatIsWrittenThroughOneTemporaryBitmapButABitmapDirectly) {
  RedBlock(2, 2, 3, 3);
  CImageExportController controller;
  ASSERT_TRUE(controller.CaptureShapesImage()) << controller.ErrorMessage();
  struct Expected {
    int format, flags;
    const char* name;
    std::string signature;
    size_t at;
  };
  const Expected formats[] = {{Image::kBmp, 0, "a.bmp", "BM", 0},       {Image::kEmf, 0, "a.emf", " EMF", 40},
                              {Image::kGif, 0, "a.gif", "GIF8", 0},     {Image::kJpeg, 95, "a.jpg", "\xFF\xD8\xFF", 0},
                              {Image::kPng, 0, "a.png", "\x89PNG", 0}, {Image::kTiff, 16384, "a.tif", "MM", 0}};
  for (const Expected& f : formats) {
    std::set<std::string> before = TemporaryBitmaps();
    ASSERT_TRUE(controller.SaveFlowchartAsPicture(Out(f.name), f.format, f.flags)) << controller.ErrorMessage();
    std::ifstream in(Out(f.name), std::ios::binary);
    std::string head(64, '\0');
    in.read(head.data(), 64);
    EXPECT_EQ(f.signature, head.substr(f.at, f.signature.size())) << f.name;
    std::set<std::string> after = TemporaryBitmaps();
    EXPECT_EQ(before.size() + (f.format == Image::kBmp ? 0 : 1), after.size()) << f.name;
    for (const std::string& left : after)
      if (!before.count(left)) {
        std::ifstream bitmap(left, std::ios::binary);
        char bm[2] = {};
        bitmap.read(bm, 2);
        EXPECT_EQ("BM", std::string(bm, 2)) << left;
        fs::remove(left);
      }
  }
  // The bitmap read back is the picture: red in the middle.
  testing::PngFile png(Out("a.png"));
  EXPECT_EQ(controller.ImageWidth(), png.Width());
  EXPECT_TRUE(Red(png.At(png.Width() / 2, png.Height() / 2)));

  // A folder that isn't there: the step and the cause.
  // A folder that a file stands in the way of.
  EXPECT_FALSE(controller.SaveFlowchartAsPicture(Out("a.png") + "/b.png", Image::kPng, 0));
  EXPECT_EQ(0u, controller.ErrorMessage().find("An error occured while trying to save the image \r\nLine: 110"))
      << controller.ErrorMessage();
  for (const std::string& left : TemporaryBitmaps()) fs::remove(left);
  CImageExportController nothingHeld;
  EXPECT_FALSE(nothingHeld.SaveFlowchartAsPicture(Out("none.png"), Image::kPng, 0));
  EXPECT_EQ(0u, nothingHeld.ErrorMessage().find("An error occured while trying to save the image \r\nLine: 40"));
  EXPECT_FALSE(fs::exists(Out("none.png")));
}

TEST_F(ExportTest, AnInvalidRangeIsRefusedAndTheGridlinesStayAsTheyWere) {
  Window window(book_->Impl());
  for (bool gridlines : {true, false}) {
    window.SetDisplayGridlines(gridlines);
    CImageExportController controller;
    EXPECT_FALSE(controller.CaptureRangeImage("B2:nowhere"));
    EXPECT_EQ("The range entered is invalid.\r\nPlease enter a valid worksheet range and try again.",
              controller.ErrorMessage());
    EXPECT_EQ(gridlines, window.DisplayGridlines());
    RedBlock(2, 2, 1, 1);
    ASSERT_TRUE(controller.CaptureShapesImage());
    EXPECT_EQ(gridlines, window.DisplayGridlines());
    sheet_->GetShapes().Item(1).Delete();
  }
}

TEST_F(ExportTest, ThePreviewFitsItsFrameAndIsCentredInIt) {
  // Wider than the frame: as wide as the longest side, centred up and down.
  RedBlock(2, 2, 4, 20);
  CImageExportController wide;
  ASSERT_TRUE(wide.CaptureShapesImage());
  ASSERT_GT(wide.ImageWidth(), 240);
  CImageExportController::Preview p;
  ASSERT_TRUE(wide.SetPictureImage(p, 236, 240)) << wide.ErrorMessage();
  EXPECT_EQ(236, p.width);
  EXPECT_EQ(static_cast<int>(std::nearbyint(wide.ImageHeight() * 236.0 / wide.ImageWidth())), p.height);
  EXPECT_EQ(2, p.left);
  EXPECT_EQ(static_cast<int>(std::nearbyint(120 - p.height / 2.0)), p.top);
  testing::PngFile framed(p.picture);
  ASSERT_EQ(240, framed.Width());
  ASSERT_EQ(240, framed.Height());
  EXPECT_TRUE(Red(framed.At(120, 120))) << Text(framed.At(120, 120));
  EXPECT_TRUE(White(framed.At(120, p.top - 3))) << "above the preview";
  EXPECT_TRUE(White(framed.At(1, 120))) << "left of the preview";

  // Small enough: its own size, in the middle.
  sheet_->GetShapes().Item(1).Delete();
  RedBlock(2, 2, 2, 2);
  CImageExportController small;
  ASSERT_TRUE(small.CaptureShapesImage());
  ASSERT_TRUE(small.SetPictureImage(p, 236, 240));
  EXPECT_EQ(small.ImageWidth(), p.width);
  EXPECT_EQ(small.ImageHeight(), p.height);
  EXPECT_EQ(static_cast<int>(std::nearbyint(120 - small.ImageWidth() / 2.0)), p.left);
  testing::PngFile middle(p.picture);
  EXPECT_TRUE(Red(middle.At(120, 120)));
  EXPECT_TRUE(White(middle.At(p.left - 3, 120)));
}

TEST_F(ExportTest, TheMenuCommandOnAnEmptySheetSaysThereIsNothingToExport) {
  auto message = MessageOf([&] { Ui().RunCommand("vnd.nivarel:rxNivarelSavePicture", true); });
  EXPECT_EQ(std::make_pair(std::string("Cannot Export Image"), std::string("There is no content on the current sheet.")),
            message);
}

// The files of the flowcharts folder, where the save dialog opens, with the
// time each was last written.
std::map<std::string, fs::file_time_type> FlowchartFiles() {
  std::map<std::string, fs::file_time_type> files;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(host::GetFlowchartsPath(), ec))
    files[e.path().string()] = fs::last_write_time(e.path(), ec);
  return files;
}

TEST_F(ExportTest, ExportAsPictureShowsThePreviewAndSavesUnderTheTypedName) {
  RedBlock(2, 2, 3, 6);
  std::vector<std::string> undoBefore = UndoList(*book_).Titles();
  const std::string shown = Out("shown.png"), typed = Out("typed");
  fs::remove(typed + ".png");
  ExportThroughTheMenu([&] {
    ASSERT_TRUE(Shows("Flowchart  (shapes only)"));
    for (const auto& c : Ui().DialogControls())
      if (c.text == "Flowchart  (shapes only)") {
        EXPECT_TRUE(c.checked);
      }
    // The preview on the screen: the red block in the middle of a white frame.
    Ui().SavePictureShown(0, shown);
    testing::PngFile preview(shown);
    ASSERT_GT(preview.Width(), 100);
    EXPECT_TRUE(Red(preview.At(preview.Width() / 2, preview.Height() / 2)))
        << Text(preview.At(preview.Width() / 2, preview.Height() / 2));
    EXPECT_TRUE(White(preview.At(preview.Width() / 2, 4))) << Text(preview.At(preview.Width() / 2, 4));
    Ui().ClickInDialog("Save...");
    ASSERT_TRUE(WaitForTitle("Save Picture")) << Ui().Title();
    // The name box has the focus, filled with the default name.
    bool offered = false;
    for (const auto& c : Ui().DialogControls())
      if (c.focused && c.text == "Sheet1 flowchart") offered = true;
    EXPECT_TRUE(offered) << "the default name";
    Ui().PressDialogKey("CTRL+A");
    Ui().TypeInDialog(typed);
    Ui().PressDialogKey("RETURN");
  });
  ASSERT_TRUE(Eventually([&] { return fs::exists(typed + ".png"); })) << host::ReadLogFile();
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  testing::PngFile png(typed + ".png");
  EXPECT_GT(png.Width(), 0);
  EXPECT_TRUE(Red(png.At(png.Width() / 2, png.Height() / 2)));
  EXPECT_EQ(undoBefore, UndoList(*book_).Titles()) << "the document is as it was";
  EXPECT_EQ(1, sheet_->GetShapes().Count());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ExportTest, ASheetWithoutShapesOpensOnItsCellsAndRefusesTheShapesOption) {
  sheet_->GetRange("B2").GetInterior().SetColor(0x0000FF);  // red cell
  sheet_->GetRange("C3").SetValue("Order");
  ExportThroughTheMenu([&] {
    // The content is C3 alone (a fill is no content), with a cell around it.
    ASSERT_TRUE(Shows("B2:D4"));
    for (const auto& c : Ui().DialogControls()) {
      if (c.text == "Flowchart and sheet  (shapes and/or cell contents)") {
        EXPECT_TRUE(c.checked);
      }
      if (c.text == "B2:D4") {
        EXPECT_TRUE(c.enabled);
      }
    }
    // The cells' picture: the red cell in it.
    const std::string shown = Out("cells-shown.png");
    Ui().SavePictureShown(0, shown);
    testing::PngFile preview(shown);
    int red = 0;
    for (int y = 0; y < preview.Height(); ++y)
      for (int x = 0; x < preview.Width(); ++x) red += Red(preview.At(x, y)) ? 1 : 0;
    EXPECT_GT(red, 100) << "the red cell shows";
    // No shapes: the option says so and the range option comes back.
    Ui().ClickInDialog("Flowchart  (shapes only)");
    ASSERT_TRUE(WaitForTitle("Nivarel")) << "no message";
    EXPECT_EQ("There are no shapes on the current worksheet.", Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog(" Export Picture"));
    EXPECT_TRUE(Eventually([&] {
      for (const auto& c : Ui().DialogControls())
        if (c.text == "Flowchart and sheet  (shapes and/or cell contents)") return c.checked;
      return false;
    }));
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ExportTest, CancellingTheSaveDialogOrTheExportWritesNothing) {
  RedBlock(2, 2, 2, 2);
  auto before = FlowchartFiles();
  ExportThroughTheMenu([&] {
    Ui().ClickInDialog("Save...");
    ASSERT_TRUE(WaitForTitle("Save Picture")) << Ui().Title();
    Ui().PressDialogKey("ESC");
  });
  ExportThroughTheMenu([&] { Ui().ClickInDialog("Cancel"); });
  EXPECT_EQ(before, FlowchartFiles());
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
