// The office's range picker behind every "Select Cell..." button, worked as a
// person works it: a cell clicked with the mouse and the picker closed with
// its button, an address typed and Enter, Escape.
#include <gtest/gtest.h>

#include <algorithm>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CRangePrompt.h"
#include "Characters.h"
#include "Range.h"
#include "TextFrame.h"
#include "Workbook.h"
#include "Shape.h"
#include "Shapes.h"
#include "frmInsertTree.h"
#include "frmStart.h"
#include "frmTerminator.h"

namespace nivarel {
namespace {

using Control = driver::UiDriver::DialogControl;

class RangePromptTest : public testing::AddinFixture {
 protected:
  // Waits for a prompt to end; one still open after a while fails the test
  // and is cancelled, so that nothing hangs.
  void Finish(std::future<void>& asked) {
    for (int i = 0; asked.wait_for(std::chrono::seconds(10)) != std::future_status::ready; ++i) {
      if (i == 0) ADD_FAILURE() << "the picker was left open";
      Ui().PressDialogKey("ESC");
    }
    asked.get();
  }
  // Whether the dialog in front comes to show an edit box reading text.
  bool ShowsBox(const std::string& text) {
    return Eventually([&] {
      auto controls = Ui().DialogControls();
      return std::any_of(controls.begin(), controls.end(),
                         [&](const Control& c) { return c.kind == "edit" && c.text == text; });
    });
  }
};

// The start dialog's button: E7 clicked on the grid comes back as E7, and a
// second pick left with Escape changes nothing and tells nothing: the next
// window in front is the start dialog again, no message box.
TEST_F(RangePromptTest, ACellClickedInThePickerGoesIntoTheStartDialogAndEscapeKeepsIt) {
  rules::CConfig config;
  config.StartTerminator = true;
  config.StartLocation = "C3";
  dialogs::frmStart form;
  const char* prompt = "Select the worksheet cell to place the first symbol.";
  Drive([&] { form.Display(config); }, "  Start Flowcharting", [&] {
    Ui().ClickInDialog("Select Cell...");
    ASSERT_TRUE(WaitForPicker(prompt)) << "in front: " << Ui().Title();
    EXPECT_TRUE(ShowsBox("C3")) << "the picker starts from the dialog's cell";
    Ui().ClickCell("E7");
    ASSERT_TRUE(ShowsBox("$Sheet1.$E$7"));
    Ui().ClickInDialog("Expand");
    ASSERT_TRUE(WaitForDialog("  Start Flowcharting"));
    EXPECT_TRUE(ShowsBox("E7"));

    Ui().ClickInDialog("Select Cell...");
    ASSERT_TRUE(WaitForPicker(prompt));
    Ui().PressDialogKey("ESC");
    ASSERT_TRUE(WaitForTitle("  Start Flowcharting")) << "in front: " << Ui().Title();
    ASSERT_TRUE(WaitForDialog("  Start Flowcharting"));
    EXPECT_TRUE(ShowsBox("E7"));
    Ui().ClickInDialog("Start");  // the focus is still on the button that opened the picker
  });
  EXPECT_TRUE(form.OK());
  EXPECT_EQ("E7", form.StartLocation());
  EXPECT_EQ("", host::ReadLogFile());
}

// The terminator prompt's button: an address typed over the picker's and
// Enter.
TEST_F(RangePromptTest, AnAddressTypedIntoThePickerGoesIntoTheTerminatorPrompt) {
  testing::SettingsFolder folder(testing::ConfigHome() + "/range-prompt");
  dialogs::frmTerminator terminator;
  Drive([&] { terminator.Display("F20", "stop"); }, " Add End Terminator?", [&] {
    Ui().ClickInDialog("Select Cell...");
    ASSERT_TRUE(WaitForPicker("Select the worksheet cell to place the Terminator.")) << "in front: " << Ui().Title();
    ASSERT_TRUE(ShowsBox("F20"));
    Ui().PressDialogKey("CTRL+A");
    Ui().TypeInDialog("B12");
    Ui().ClickInDialog("Expand");
    ASSERT_TRUE(WaitForDialog(" Add End Terminator?"));
    EXPECT_TRUE(ShowsBox("B12"));
    Ui().ClickInDialog("Yes");
  });
  EXPECT_TRUE(terminator.OK());
  EXPECT_EQ("B12", terminator.StartLocation());
}

// The branch tool's button, on a sheet without symbols: the base symbol is
// drawn at the picked cell, not at the cell that was active.
TEST_F(RangePromptTest, TheBranchToolPlacesItsBaseSymbolAtThePickedCell) {
  auto folder = testing::ShippedSettings("range-prompt-branch");
  Ui().SelectCell("B2");
  if (!host::IsGlobalRowHeightSet()) host::SetGlobalRowHeight();  // as the menu does
  dialogs::frmInsertTree tree;
  Drive([&] { tree.Display(*sheet_, "", 0); }, " Insert Branch", [&] {
    ASSERT_TRUE(ShowsBox("B2")) << "the active cell is proposed";
    Ui().ClickInDialog("Select Cell...");
    ASSERT_TRUE(WaitForPicker("Select the cell to place the symbol.")) << "in front: " << Ui().Title();
    Ui().ClickCell("E7");
    Ui().ClickInDialog("Expand");
    ASSERT_TRUE(WaitForDialog(" Insert Branch"));
    ASSERT_TRUE(ShowsBox("E7"));
    TypeBeside("Text in Shape:", "Next");
    Ui().PressDialogKey("RETURN");  // to the label box
    Ui().PressDialogKey("RETURN");  // adds the item
    ASSERT_TRUE(Eventually([&] { return Listed().size() == 1; }));
    Ui().PressDialogKey("RETURN");  // both boxes empty: draws
  });
  ASSERT_TRUE(tree.OK());
  std::vector<std::string> symbols;
  office::Shapes shapes = sheet_->GetShapes();
  for (int i = 1; i <= shapes.Count(); ++i)
    if (shapes.Item(i).AutoShapeType() == 61)
      symbols.push_back(shapes.Item(i).GetTextFrame().GetCharacters().Text() + "@" +
                        shapes.Item(i).TopLeftCell().Address(false));
  ASSERT_EQ(2u, symbols.size());
  EXPECT_EQ(" @E7", symbols[0]) << "the base symbol, its text one blank, at the picked cell";
  EXPECT_EQ(3, sheet_->GetShapes().Count()) << "the base, the item and the line between them";
}

// The picker itself: a range typed on another sheet answers that sheet, and
// an address without the sheet's name; a cancel is no error.
TEST_F(RangePromptTest, ThePickerAnswersTheSheetOfTheRangeAndTellsACancel) {
  office::Worksheet other = sheet_->Parent().AddSheet();
  std::string otherName = other.Name();
  sheet_->Activate();
  output::CRangePrompt picker;
  Ui();
  auto asked = std::async(std::launch::async, [&] { picker.GetRangeFromPrompt("Pick a range.", "Test", ""); });
  ASSERT_TRUE(WaitForPicker("Pick a range."));
  Ui().PressDialogKey("CTRL+A");
  Ui().TypeInDialog("$" + otherName + ".B4:C5");
  Ui().ClickInDialog("Expand");
  Finish(asked);
  ASSERT_TRUE(picker.IsValid()) << picker.ErrorMessage();
  EXPECT_EQ("B4:C5", picker.RangeAddress());
  ASSERT_TRUE(picker.WorksheetObject());
  EXPECT_EQ(otherName, picker.WorksheetObject()->Name());

  asked = std::async(std::launch::async, [&] { picker.GetRangeFromPrompt("Pick a range.", "Test", "A1"); });
  ASSERT_TRUE(WaitForPicker("Pick a range."));
  Ui().PressDialogKey("ESC");
  Finish(asked);
  EXPECT_FALSE(picker.IsValid());
  EXPECT_TRUE(picker.UserCanceled());
  EXPECT_EQ("", picker.ErrorMessage());
  EXPECT_FALSE(picker.WorksheetObject());
  other.Delete();
}

}  // namespace
}  // namespace nivarel
