// The group box tool worked as a person works it: opened from the menu
// through the office's dispatch, its boxes typed into and its buttons
// clicked, and the box it draws read back from the sheet (place, size, name,
// text, outline, stacking order, look) and from a picture of it.
#include <gtest/gtest.h>

#include <filesystem>

#include "MSpecialFolders.h"

#include "AddinFixture.h"
#include "Characters.h"
#include "FillFormat.h"
#include "Font.h"
#include "LineFormat.h"
#include "ColorFormat.h"
#include "MsoConstants.h"
#include "PngFile.h"
#include "Range.h"
#include "ShapeRange.h"
#include "frmInsertGroupBox.h"
#include "TextFrame.h"
#include "UndoList.h"

namespace nivarel {
namespace {

using office::Shape;

const char kTitle[] = " Insert Group Box";
const char kCommand[] = "vnd.nivarel:rxNivarelInsertGroupBox";
constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }

class GroupBoxTest : public testing::AddinFixture {
 protected:
  void Open(const std::function<void()>& steps) { Drive([&] { Ui().RunCommand(kCommand, true); }, kTitle, steps); }


  std::vector<Shape> AllShapes() {
    std::vector<Shape> out;
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) out.push_back(shapes.Item(i));
    return out;
  }
  std::vector<Shape> Boxes() {
    std::vector<Shape> out;
    for (Shape& s : AllShapes())
      if (s.Name().rfind("GROUP_BOX_", 0) == 0) out.push_back(s);
    return out;
  }

  // Tabs to the style's drop-down of pictures, beside its caption.
  void FocusStyleList() {
    for (int i = 0; i < 40; ++i) {
      auto controls = Ui().DialogControls();
      for (size_t k = 0; k + 1 < controls.size(); ++k)
        if (controls[k].text == "Symbol Style" && controls[k + 1].focused) return;
      Ui().PressDialogKey("TAB");
    }
    ADD_FAILURE() << "the style list never took the focus";
  }

  // Expects the box to cover the range's cells exactly.
  void ExpectOver(const Shape& box, const std::string& address) {
    office::Range r = sheet_->GetRange(address);
    EXPECT_NEAR(r.Left(), box.Left(), 0.1) << address;
    EXPECT_NEAR(r.Top(), box.Top(), 0.1) << address;
    EXPECT_NEAR(r.Width(), box.Width(), 0.1) << address;
    EXPECT_NEAR(r.Height(), box.Height(), 0.1) << address;
  }
};

TEST_F(GroupBoxTest, AOneCellRangeMakesABoxOfThatCellBehindTheSymbols) {
  sheet_->GetRange("C3").SetColumnWidth(14);
  sheet_->GetRange("C3").SetRowHeight(30);
  Shape symbol = sheet_->GetShapes().AddShape(office::msoShapeFlowchartProcess, 10, 10, 80, 30);
  sheet_->GetRange("C3").Select();
  Open([&] {
    EXPECT_EQ("C3", Beside("Worksheet range").text) << "the selection is proposed";
    EXPECT_EQ("Left", Beside("Horizontal Alignment").text);
    EXPECT_EQ("Top", Beside("Vertical Alignment").text);
    EXPECT_EQ("8", Beside("Size").text) << "the settings' font size";
    TypeBeside("Group Box Label", "Receiving");
    Ui().PressDialogKey("RETURN");
  });
  auto boxes = Boxes();
  ASSERT_EQ(1u, boxes.size()) << host::ReadLogFile();
  Shape box = boxes[0];
  ExpectOver(box, "C3");
  EXPECT_EQ(office::msoShapeFlowchartProcess, box.AutoShapeType()) << "square corners";
  EXPECT_EQ(1, box.ZOrderPosition()) << "sent behind the symbol drawn before it";
  EXPECT_EQ(2, symbol.ZOrderPosition());
  EXPECT_EQ(office::xlMove, box.Placement());
  office::TextFrame frame = box.GetTextFrame();
  EXPECT_EQ("Receiving", frame.GetCharacters().Text());
  EXPECT_EQ(office::xlLeft, frame.HorizontalAlignment());
  EXPECT_EQ(office::xlTop, frame.VerticalAlignment());
  EXPECT_DOUBLE_EQ(8, frame.GetCharacters().GetFont().Size());
  EXPECT_EQ(office::msoLineSolid, box.Line().DashStyle());
  EXPECT_EQ(Rgb(255, 255, 255), box.Fill().ForeColor().RGB()) << "the first solid style";
  EXPECT_EQ("", host::ReadLogFile());

  office::UndoList undo(*book_);
  ASSERT_FALSE(undo.Titles().empty());
  EXPECT_EQ("Nivarel: Insert Group Box", undo.Titles().front());
  undo.Undo();
  EXPECT_TRUE(Boxes().empty()) << "one Ctrl+Z takes the box away";
  EXPECT_EQ(1, sheet_->GetShapes().Count()) << "and nothing else";
}

TEST_F(GroupBoxTest, TheChosenCornersOutlineFontAlignmentAndStyleAreDrawn) {
  sheet_->GetRange("A1").Select();
  std::string chosenFont;
  Open([&] {
    TypeBeside("Worksheet range", "B2:E6");
    TypeBeside("Group Box Label", "Shipping");
    TypeBeside("Font", "DejaVu Serif");
    EXPECT_TRUE(Eventually([&] { return Beside("Font").text.rfind("DejaVu Serif", 0) == 0; })) << Beside("Font").text;
    chosenFont = Beside("Font").text;
    TypeBeside("Horizontal Alignment", "Center");
    TypeBeside("Vertical Alignment", "Bottom");
    Ui().ClickInDialog("Bold");
    Ui().ClickInDialog("Italic");
    Ui().ClickInDialog("Rounded");
    Ui().ClickInDialog("Dashed");
    FocusStyleList();
    Ui().PressDialogKey("DOWN");  // from style 43 to 44
    EXPECT_TRUE(Eventually([&] { return Beside("Vertical Alignment").text == "Bottom"; }));
    Ui().ClickInDialog("OK");
  });
  auto boxes = Boxes();
  ASSERT_EQ(1u, boxes.size()) << host::ReadLogFile();
  Shape box = boxes[0];
  ExpectOver(box, "B2:E6");
  EXPECT_EQ(office::msoShapeFlowchartAlternateProcess, box.AutoShapeType()) << "rounded corners";
  office::TextFrame frame = box.GetTextFrame();
  EXPECT_EQ(office::xlCenter, frame.HorizontalAlignment());
  EXPECT_EQ(office::xlBottom, frame.VerticalAlignment());
  office::Font font = frame.GetCharacters().GetFont();
  EXPECT_EQ(chosenFont, font.Name()) << "the font the list shows";
  EXPECT_TRUE(font.Bold());
  EXPECT_TRUE(font.Italic());
  EXPECT_EQ(office::msoLineDash, box.Line().DashStyle());
  EXPECT_EQ(Rgb(220, 230, 242), box.Fill().ForeColor().RGB()) << "style 44, the light blue";

  // The picture: the fill inside, the outline broken into dashes.
  std::string path = testing::ConfigHome() + "/group-box.png";
  sheet_->GetShapes().GetRange({box.Name()}).ExportPicture(path, 2);
  testing::PngFile png(path);
  ASSERT_GT(png.Width(), 100);
  auto inside = png.At(png.Width() / 4, png.Height() / 3);
  EXPECT_EQ(220, inside.r);
  EXPECT_EQ(230, inside.g);
  EXPECT_EQ(242, inside.b);
  int inked = 0, blank = 0;
  for (int x = png.Width() / 4; x < png.Width() * 3 / 4; ++x) {
    bool ink = false;
    for (int y = 0; y < 6; ++y) ink = ink || png.At(x, y).r < 128;
    (ink ? inked : blank)++;
  }
  EXPECT_GT(inked, 10) << "the top outline is drawn";
  EXPECT_GT(blank, 10) << "with gaps between its dashes";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(GroupBoxTest, TwoBoxesGetNamesThatDiffer) {
  for (const char* range : {"B2:C3", "B2:C3"}) {
    sheet_->GetRange(range).Select();
    Open([&] { Ui().PressDialogKey("RETURN"); });
  }
  auto boxes = Boxes();
  ASSERT_EQ(2u, boxes.size()) << host::ReadLogFile();
  EXPECT_NE(boxes[0].Name(), boxes[1].Name());
  EXPECT_EQ("", boxes[0].GetTextFrame().GetCharacters().Text()) << "no label, no text";
}

TEST_F(GroupBoxTest, ABlankOrUnreadableRangeIsToldAndTheDialogStaysOpen) {
  sheet_->GetRange("C3").Select();
  Open([&] {
    TypeBeside("Worksheet range", "");
    EXPECT_EQ(std::make_pair(std::string("Empty Range Address"),
                             std::string("The worksheet range you entered was blank.\n"
                                         "Please select a cell using the selector button [...]\n"
                                         "or click Cancel to cancel adding a group box.")),
              MessageOverDialog(kTitle, [&] { Ui().ClickInDialog("OK"); }));
    TypeBeside("Worksheet range", "C3:nowhere");
    EXPECT_EQ(std::make_pair(std::string("Invalid Cell Address"),
                             std::string("The worksheet range entered was invalid.\n"
                                         "Please select a cell using the Select Range button\n"
                                         "or click Cancel to cancel adding a group box.")),
              MessageOverDialog(kTitle, [&] { Ui().ClickInDialog("OK"); }));
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ(0, sheet_->GetShapes().Count());
  EXPECT_EQ("", host::ReadLogFile());
}

// The picker is worked from beside the office, as the dialog is shown by
// this process: inside the office the picker keeps the office busy with its
// own events until the user has picked, and a robot's calls from outside
// would wait on it.
TEST_F(GroupBoxTest, TheRangePickerFillsTheRange) {
  auto settings = testing::ShippedSettings("group-box-picker");
  host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
  sheet_->GetRange("C3").Select();
  dialogs::frmInsertGroupBox form;
  Drive([&] { form.Display(); }, kTitle, [&] {
    Ui().ClickInDialog("Select Range...");
    ASSERT_TRUE(WaitForPicker("Select the worksheet range to place the group box."));
    ASSERT_TRUE(Eventually([&] {
      for (const auto& c : Ui().DialogControls())
        if (c.kind == "edit" && c.text == "C3") return true;
      return false;
    })) << "the picker starts from the range in the box";
    Ui().PressDialogKey("CTRL+A");
    Ui().TypeInDialog("D4:F8");
    Ui().ClickInDialog("Expand");
    ASSERT_TRUE(WaitForDialog(kTitle));
    EXPECT_TRUE(Eventually([&] { return Beside("Worksheet range").text == "D4:F8"; }))
        << Beside("Worksheet range").text;
    Ui().ClickInDialog("OK");  // the focus is still on the picker's button
  });
  EXPECT_TRUE(form.OK());
  auto boxes = Boxes();
  ASSERT_EQ(1u, boxes.size()) << host::ReadLogFile();
  ExpectOver(boxes[0], "D4:F8");
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(GroupBoxTest, ARangeAtTheSheetsLastColumnIsLoggedAndDrawsNothing) {
  sheet_->GetRange("XFC2:XFD3").Select();
  Open([&] { Ui().PressDialogKey("RETURN"); });
  EXPECT_EQ(0, sheet_->GetShapes().Count()) << "nothing half drawn";
  std::string log = host::ReadLogFile();
  EXPECT_NE(std::string::npos, log.find("frmInsertGroupBox.AddGroupBox")) << log;
  office::UndoList undo(*book_);
  EXPECT_TRUE(undo.Titles().empty() || undo.Titles().front() != "Nivarel: Insert Group Box");
}

TEST_F(GroupBoxTest, DefaultStylesLeaveTheBoxAsItWasDrawn) {
  Shape symbol = sheet_->GetShapes().AddShape(office::msoShapeFlowchartProcess, 200, 10, 80, 30);
  symbol.GetTextFrame().GetCharacters().SetText("Pack the order");
  sheet_->GetRange("B2:E6").Select();
  Open([&] {
    TypeBeside("Group Box Label", "Packing");
    FocusStyleList();
    Ui().PressDialogKey("DOWN");
    Ui().PressDialogKey("RETURN");
  });
  auto boxes = Boxes();
  ASSERT_EQ(1u, boxes.size()) << host::ReadLogFile();
  Shape box = boxes[0];
  long fill = box.Fill().ForeColor().RGB(), symbolFill = symbol.Fill().ForeColor().RGB();
  double size = box.GetTextFrame().GetCharacters().GetFont().Size();
  ASSERT_EQ(Rgb(220, 230, 242), fill);
  Ui().RunCommand("vnd.nivarel:rxNivarelApplyStyles");
  ASSERT_TRUE(Eventually([&] { return symbol.Fill().ForeColor().RGB() != symbolFill; }))
      << "the symbol takes its style";
  EXPECT_EQ(fill, box.Fill().ForeColor().RGB()) << "the box keeps its look";
  EXPECT_DOUBLE_EQ(size, box.GetTextFrame().GetCharacters().GetFont().Size());
}

}  // namespace
}  // namespace nivarel
