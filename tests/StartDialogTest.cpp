// The start dialog, worked through the user interface: what it offers from
// the stored settings, how its parts react, what it hands back, and the
// start of a run through it from the menu.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "AddinFixture.h"
#include "CConfig.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Characters.h"
#include "Workbooks.h"
#include "frmAbout.h"
#include "frmStart.h"

namespace nivarel {
namespace {

class StartDialogTest : public testing::AddinFixture {
 protected:
  const driver::UiDriver::DialogControl& Control(const std::vector<driver::UiDriver::DialogControl>& all,
                                               const std::string& text) {
    auto it = std::find_if(all.begin(), all.end(), [&](const auto& c) { return c.text == text; });
    static const driver::UiDriver::DialogControl none{"missing", "", false, false, false};
    if (it == all.end()) ADD_FAILURE() << "no control '" << text << "'";
    return it == all.end() ? none : *it;
  }
};

TEST_F(StartDialogTest, TheDialogOffersTheStoredSettingsAndReacts) {
  rules::CConfig config;
  config.StartTerminator = true;
  config.StartTerminatorText = "Begin";
  config.StartLocation = "D4";
  config.PaperSize = 5;  // no entry of its own: the first one shows
  config.Orientation = 1;
  config.Margins = 0;
  config.CustomLayout = true;
  dialogs::frmStart form;
  Drive([&] { form.Display(config); }, "  Start Flowcharting", [&] {
    auto controls = Ui().DialogControls();
    EXPECT_EQ("edit", Control(controls, "Begin").kind);
    EXPECT_TRUE(Control(Ui().DialogControls(), "D4").enabled);
    EXPECT_TRUE(Control(controls, "8-1/2x11").enabled) << "a custom layout enables the page fields";
    EXPECT_TRUE(Control(controls, "Customize page setup").checked);
    // Without a terminator the cell box greys out, yet keeps its text.
    Ui().ClickInDialog("Add a terminator to the beginning of the flowchart?");
    EXPECT_FALSE(Control(Ui().DialogControls(), "D4").enabled);
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_TRUE(form.OK());
  EXPECT_FALSE(form.AddTerminator());
  EXPECT_EQ("D4", form.StartLocation()) << "the run begins at the cell's text all the same";
  EXPECT_EQ(1, form.PaperSize());
  EXPECT_TRUE(form.IsGrid());
  EXPECT_TRUE(form.CustomLayout());
  EXPECT_EQ("", form.TemplateFilePath());
}

// The wide margins turn the page once; the user may turn it back, and that
// stands.
TEST_F(StartDialogTest, PowerPointMarginsTurnThePageOnce) {
  rules::CConfig config;
  config.CustomLayout = true;
  config.Orientation = 1;
  config.Margins = 0;
  dialogs::frmStart form;
  auto list = [&](const std::string& text) {
    return [text](const driver::UiDriver::DialogControl& c) { return c.kind == "list" && c.text == text; };
  };
  Drive([&] { form.Display(config); }, "  Start Flowcharting", [&] {
    ASSERT_TRUE(FocusControl(list("Excel margins")));
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(FocusControl(list("Word margins")));
    EXPECT_TRUE(FocusControl(list("Portrait"))) << "other margins leave the page alone";
    ASSERT_TRUE(FocusControl(list("Word margins")));
    Ui().PressDialogKey("DOWN");
    ASSERT_TRUE(FocusControl(list("Landscape"))) << "PowerPoint margins turn the page";
    Ui().PressDialogKey("UP");
    EXPECT_TRUE(FocusControl(list("PowerPoint margins")));
    EXPECT_TRUE(FocusControl(list("Portrait"))) << "turned back by hand";
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_TRUE(form.OK());
  EXPECT_EQ("2", form.Margins());
  EXPECT_EQ(1, form.Orientation());
}

// A template is a sheet of a file of its own: the run copies it in behind
// the active sheet and begins there; without a file the start is refused.
TEST_F(StartDialogTest, ATemplateBecomesANewSheetWhereTheRunBegins) {
  const std::string path = testing::ConfigHome() + "/swim lanes.ots";
  {
    office::Workbook source = App().GetWorkbooks().Add();
    source.Sheet(1).GetShapes().AddTextbox(1, 20, 20, 120, 30).SetName("TEMPLATE title");
    source.SaveAs(path);
    source.Close();
  }
  book_->Activate();
  for (int i = 0; i < 100 && !App().ActiveSheet()->SameAs(*sheet_); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  sheet_->SetDisplayPageBreaks(false);

  auto empty_edit = [](const driver::UiDriver::DialogControl& c) { return c.kind == "edit" && c.text.empty(); };
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting", [&] {
    Ui().ClickInDialog("Load a template");
    Ui().PressDialogKey("RETURN");
    ASSERT_TRUE(WaitForTitle("Invalid Template"));
    EXPECT_EQ("You have selected to load a template,\nbut the template file field is empty.", Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog("  Start Flowcharting"));
    ASSERT_TRUE(FocusControl(empty_edit)) << "the template file box";
    Ui().TypeInDialog(path + ".missing");
    Ui().PressDialogKey("RETURN");
    ASSERT_TRUE(WaitForTitle("Invalid Template"));
    EXPECT_EQ("The template file entered does not exist.", Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog("  Start Flowcharting"));
    Ui().TypeInDialog(path);  // the box has the focus, its text selected
    Ui().PressDialogKey("RETURN");
  });
  ASSERT_EQ(2, book_->SheetCount()) << "the template's sheet came in";
  office::Worksheet added = book_->Sheet(2);
  EXPECT_TRUE(App().ActiveSheet()->SameAs(added));
  EXPECT_TRUE(added.DisplayPageBreaks()) << "the template's page shows";
  EXPECT_EQ(0, sheet_->GetShapes().Count()) << "the sheet the user was on stays as it was";
  office::Shapes shapes = added.GetShapes();
  for (int i = 0; i < 100 && shapes.Count() < 2; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  ASSERT_EQ(2, shapes.Count()) << "the template's title and the start terminator";
  EXPECT_EQ("TEMPLATE title", shapes.Item(1).Name());
  EXPECT_EQ("Start", shapes.Item(2).GetTextFrame().GetCharacters().Text());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(StartDialogTest, CancellingTheStartChangesNeitherTheSettingsNorTheSheet) {
  // The office's settings file, as the add-in inside it keeps it.
  auto read = [](const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  };
  const std::string stored = testing::ConfigHome() + "/Tamrisk/Nivarel/nivarel.cfg";
  // Before its first use the add-in's file is the shipped one.
  std::string before = read(stored);
  if (before.empty()) before = read(NIVAREL_SOURCE_DIR "/extension/nivarel.cfg");
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting", [&] {
    Ui().TypeInDialog("Go");  // the terminator text box has the focus
    Ui().PressDialogKey("ESC");
  });
  EXPECT_EQ(before, read(stored));
  EXPECT_EQ(0, sheet_->GetShapes().Count());
}

TEST_F(StartDialogTest, TheAboutBoxTellsTheVersionAndTheToolbarSettingReadOnly) {
  dialogs::frmAbout about;
  Drive([&] { about.Display(); }, "About Nivarel", [&] {
    auto controls = Ui().DialogControls();
    EXPECT_EQ("text", Control(controls, "Nivarel").kind);
    EXPECT_EQ("text", Control(controls, "Version 2.4.15").kind);
    const auto& toolbar = Control(controls, "Use text only toolbars (no icons). Requires Calc restart.");
    EXPECT_EQ("check", toolbar.kind);
    EXPECT_FALSE(toolbar.enabled) << "shown, not changed here";
    EXPECT_FALSE(toolbar.checked) << "the stored setting is off";
    Ui().PressDialogKey("RETURN");
  });
}

}  // namespace
}  // namespace nivarel
