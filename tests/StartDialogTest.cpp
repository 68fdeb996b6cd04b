// The start dialog, worked through the user interface: what it offers from
// the stored settings, how its parts react, what it hands back, and the
// start of a run through it from the menu.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "AddinFixture.h"
#include "CConfig.h"
#include "Shapes.h"
#include "frmAbout.h"
#include "frmStart.h"

namespace nivarel {
namespace {

class StartDialogTest : public testing::AddinFixture {
 protected:
  const host::UiDriver::DialogControl& Control(const std::vector<host::UiDriver::DialogControl>& all,
                                               const std::string& text) {
    auto it = std::find_if(all.begin(), all.end(), [&](const auto& c) { return c.text == text; });
    static const host::UiDriver::DialogControl none{"missing", "", false, false, false};
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
