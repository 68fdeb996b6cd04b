// The start dialog, worked through the user interface: what it offers from
// the stored settings, how its parts react, what it hands back, and the
// start of a run through it from the menu.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "AddinFixture.h"
#include "CConfig.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Characters.h"
#include "UndoList.h"
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

// A template the extension ships, chosen in the start dialog: its sheet comes
// in and the first typed step lands at the template's start cell. The same
// template loaded from the menu is one entry of the undo list.
TEST_F(StartDialogTest, AShippedTemplateChosenInTheStartDialogTakesTheFirstStepAtItsStartCell) {
  namespace fs = std::filesystem;
  const std::string folder = testing::ConfigHome() + "/shipped templates";
  fs::remove_all(folder);
  fs::create_directories(folder);
  const std::string name = "A4 Landscape 3 Horizontal Lanes.xltx";
  fs::copy_file(NIVAREL_TEMPLATES "/" + name, folder + "/" + name);
  // The settings the office reads, where the add-in inside it keeps them;
  // put back as they were at the end for the tests that follow.
  const std::string stored = testing::ConfigHome() + "/Tamrisk/Nivarel/nivarel.cfg";
  const std::string kept = stored + ".kept";
  fs::remove(kept);
  if (fs::exists(stored)) fs::copy_file(stored, kept);
  struct PutBack {
    std::string stored, kept;
    ~PutBack() {
      fs::remove(stored);
      if (fs::exists(kept)) fs::rename(kept, stored);
    }
  } putBack{stored, kept};
  const std::string install = host::GetInstallFolder();
  host::SetInstallFolder(NIVAREL_SOURCE_DIR "/extension");
  rules::CConfig config;
  config.LoadConfigData();
  config.TemplateFolderPath = folder;
  config.StartTerminator = false;
  config.EndTerminator = false;
  config.StartLocation = "H20";
  config.StoreConfigData();
  host::SetInstallFolder(install);
  book_->Activate();
  sheet_->Activate();

  auto edit = [](const std::string& text) {
    return [text](const driver::UiDriver::DialogControl& c) { return c.kind == "edit" && c.text == text; };
  };
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); }, "  Start Flowcharting", [&] {
    Ui().ClickInDialog("Load a template");
    Ui().ClickInDialog("Select Template...");
    ASSERT_TRUE(WaitForDialog("Select Template"));
    Ui().ClickInDialog("OK");  // the only template, chosen as the table shows it
    ASSERT_TRUE(WaitForDialog("  Start Flowcharting"));
    auto controls = Ui().DialogControls();
    EXPECT_TRUE(std::any_of(controls.begin(), controls.end(), edit(folder + "/" + name))) << "the chosen file";
    EXPECT_TRUE(std::any_of(controls.begin(), controls.end(), edit("C4"))) << "the template's start cell";
    Ui().ClickInDialog("Start");
  });
  ASSERT_EQ(2, book_->SheetCount()) << "the template's sheet came in";
  office::Worksheet added = book_->Sheet(2);
  ASSERT_TRUE(Eventually([&] { return App().ActiveSheet()->SameAs(added); }));
  EXPECT_EQ("C4", App().ActiveCell()->Address(false));
  Ui().TypeIntoCell("C4", "take the order");
  office::Shapes shapes = added.GetShapes();
  // The template's frame is lines and a group; the step is the one shape
  // with its text.
  auto text = [](const office::Shape& s) {
    try {
      return s.GetTextFrame().GetCharacters().Text();
    } catch (...) {
      return std::string("<no text>");
    }
  };
  auto step = [&]() -> std::optional<office::Shape> {
    for (int i = 1; i <= shapes.Count(); ++i) {
      office::Shape s = shapes.Item(i);
      if (s.Type() != office::msoGroup && text(s) == "Take the order") return s;
    }
    return std::nullopt;
  };
  ASSERT_TRUE(Eventually([&] { return step().has_value(); })) << "the step is drawn";
  EXPECT_NEAR(added.GetRange("C4").Top(), step()->Top(), 0.1) << "at the start cell";
  EXPECT_EQ(4, step()->TopLeftCell().Row());
  EXPECT_EQ(0, sheet_->GetShapes().Count()) << "the sheet the user was on stays as it was";
  Ui().RunCommand("vnd.nivarel:rxNivarelStopFlowcharting");

  // From the menu the stored folder opens; the template arrives behind the
  // active sheet, and Ctrl+Z takes it back whole.
  sheet_->Activate();
  ASSERT_TRUE(Eventually([&] { return App().ActiveSheet()->SameAs(*sheet_); }));
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelLoadTemplate"); }, "Select Template", [&] {
    Ui().ClickInDialog("Load Template");
  });
  ASSERT_TRUE(Eventually([&] { return book_->SheetCount() == 3; }));
  office::Worksheet loaded = book_->Sheet(2);
  EXPECT_TRUE(Eventually([&] { return App().ActiveSheet()->SameAs(loaded); }));
  EXPECT_TRUE(loaded.DisplayPageBreaks());
  EXPECT_EQ("Nivarel: Load Template", office::UndoList(*book_).Titles().at(0));
  Ui().PressKey("CTRL+z");
  EXPECT_TRUE(Eventually([&] { return book_->SheetCount() == 2; })) << "Ctrl+Z takes the sheet back";
  EXPECT_EQ(0, book_->Sheet(1).GetShapes().Count());
  EXPECT_EQ("Nivarel: Load Template", office::UndoList(*book_).RedoTitles().at(0));
  Ui().PressKey("CTRL+y");
  ASSERT_TRUE(Eventually([&] { return book_->SheetCount() == 3; })) << "Ctrl+Y brings it again";
  EXPECT_EQ(1, book_->Sheet(2).GetShapes().Count()) << "with its frame";
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
