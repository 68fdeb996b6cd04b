// The advanced settings worked as a person works them: the controls read
// back through the accessibility tree as the settings fill them, lists
// stepped with the keys, the font and colour taken from their pickers (the
// colour from the office's own dialog), and the results handed back.
#include <gtest/gtest.h>

#include "AddinFixture.h"
#include "CConfig.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "frmAdvancedSettings.h"

namespace nivarel {
namespace {

using Control = driver::UiDriver::DialogControl;

const char kTitle[] = " Advanced Settings";
const char kUseDefaultFont[] = "Use same font for Decision branch labels as flowchart symbols";

class AdvancedSettingsDialogTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("advanced-settings");
    host::ClearLogFile();
    config_.LoadConfigData();
    config_.BranchesUseDefaultFont = false;
    config_.BranchFontName = "Liberation Sans";
    config_.BranchFontSize = 10;
    config_.BranchFontBold = false;
    config_.BranchFontItalic = false;
    config_.BranchFontColor = 0;
  }
  void TearDown() override {
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Open(const std::function<void()>& steps) {
    form_.InitializeSettings(config_);
    Drive([&] { form_.Show(); }, kTitle, steps);
  }

  // The control with this caption or text; fails the test when none shows.
  Control Find(const std::string& text) {
    for (const Control& c : Ui().DialogControls())
      if (c.text == text) return c;
    ADD_FAILURE() << "no control reads '" << text << "'";
    return {};
  }
  // Steps a drop-down list that reads from with the arrow keys.
  void Step(const std::string& from, const char* key, int times) {
    ASSERT_TRUE(FocusControl([&](const Control& c) { return c.kind == "list" && c.text == from; })) << from;
    for (int i = 0; i < times; ++i) Ui().PressDialogKey(key);
  }
  std::string FontShown() { return Beside("Branch label font:").text; }

  rules::CConfig config_;
  dialogs::frmAdvancedSettings form_;
  std::unique_ptr<testing::SettingsFolder> folder_;
};

TEST_F(AdvancedSettingsDialogTest, TheSettingsFillTheControlsAndOKHandsBackWhatTheyShow) {
  config_.AutosizeHeight = true;
  config_.SmartSizing = false;
  config_.Capitalize = false;
  config_.QuestionMarkIsDecision = true;
  config_.HorizontalAlignment = office::xlLeft;
  config_.VerticalAlignment = office::xlBottom;
  config_.PrefixDelimiter = "#";
  config_.FlowDirection = 1;
  Open([&] {
    EXPECT_TRUE(Find("Autosize symbol height if text exceeds default height").checked);
    EXPECT_FALSE(Find("Use Smart Sizing for On and Off-Page Connectors").checked);
    EXPECT_FALSE(Find("Automatically capitalize the first letter of the symbol text").checked);
    EXPECT_TRUE(Find("Generate a Decision shape if the text contains a question mark (?)").checked);
    EXPECT_EQ("Bottom-Left", Beside("Text Alignment:").text);
    EXPECT_EQ(": (colon)", Beside("Prefix delimiter:").text) << "a delimiter outside the list shows as the colon";
    EXPECT_TRUE(Find("Left to right").checked);
    EXPECT_FALSE(Find("Top to bottom").checked);
    Step("Bottom-Left", "UP", 2);  // Center-Right, then Center-Center
    EXPECT_TRUE(Eventually([&] { return Beside("Text Alignment:").text == "Center-Center"; }))
        << Beside("Text Alignment:").text;
    Ui().ClickInDialog("Let Nivarel automatically detect direction");
    Ui().ClickInDialog("Use Smart Sizing for On and Off-Page Connectors");
    EXPECT_TRUE(Eventually([&] { return Find("Use Smart Sizing for On and Off-Page Connectors").checked; }));
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_EQ(-4108, form_.HorizontalAlignment());
  EXPECT_EQ(-4108, form_.VerticalAlignment());
  EXPECT_EQ(":", form_.PrefixDelimiter()) << "the colon replaces the stored delimiter";
  EXPECT_EQ(2, form_.FlowDirection());
  EXPECT_TRUE(form_.AutoSizeHeight());
  EXPECT_TRUE(form_.SmartSizing());
  EXPECT_FALSE(form_.Capitalize());
  EXPECT_TRUE(form_.QuestionIsDecision());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(AdvancedSettingsDialogTest, CancelHandsBackTheSettingsAsTheyCame) {
  config_.HorizontalAlignment = office::xlRight;
  config_.VerticalAlignment = office::xlTop;
  config_.PrefixDelimiter = ".";
  config_.Capitalize = true;
  Open([&] {
    EXPECT_EQ("Top-Right", Beside("Text Alignment:").text);
    EXPECT_EQ(". (period)", Beside("Prefix delimiter:").text);
    Step(". (period)", "UP", 1);
    EXPECT_TRUE(Eventually([&] { return Beside("Prefix delimiter:").text == "- (dash)"; }));
    Ui().ClickInDialog("Automatically capitalize the first letter of the symbol text");
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_FALSE(form_.OK());
  EXPECT_EQ(".", form_.PrefixDelimiter());
  EXPECT_TRUE(form_.Capitalize());
  EXPECT_EQ(office::xlRight, form_.HorizontalAlignment());
}

TEST_F(AdvancedSettingsDialogTest, TheDefaultFontGreysTheBranchLabelFontOutAndTheStoredFontComesBack) {
  config_.BranchesUseDefaultFont = true;
  config_.BranchFontName = "Liberation Serif";
  config_.BranchFontSize = 10.5f;
  Open([&] {
    EXPECT_EQ("Liberation Serif, 10.5 pt", FontShown());
    EXPECT_FALSE(Beside("Branch label font:").enabled);
    EXPECT_FALSE(Find("Sample Text").enabled);
    EXPECT_FALSE(Find("Change Font...").enabled);
    EXPECT_FALSE(Find("Change Color...").enabled);
    Ui().ClickInDialog(kUseDefaultFont);
    EXPECT_TRUE(Eventually([&] { return Find("Change Font...").enabled; }));
    EXPECT_TRUE(Find("Change Color...").enabled);
    EXPECT_TRUE(Find("Sample Text").enabled);
    EXPECT_TRUE(Beside("Branch label font:").enabled);
    EXPECT_EQ("Liberation Serif, 10.5 pt", FontShown());
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_FALSE(form_.BranchesUseDefaultFont());
  EXPECT_EQ("Liberation Serif", form_.BranchFontName());
  EXPECT_EQ(10.5f, form_.BranchFontSize());
}

TEST_F(AdvancedSettingsDialogTest, TheFontAndTheColourComeFromTheirPickersAndACancelledPickerChangesNothing) {
  constexpr long kRed = 0x0000FF;  // the host's RGB: red in the low byte
  auto pickColor = [&](const std::string& hex, const char* button) {
    Ui().ClickInDialog("Change Color...");
    ASSERT_TRUE(WaitForTitle("Pick a Color"));
    Ui().SetBoxText("hexEntry", hex);
    // The dialog takes a typed colour in its own time.
    ASSERT_TRUE(Eventually([&] { return Ui().BoxText("redSpinbutton") == (hex == "ff0000" ? "255" : "0"); }))
        << Ui().BoxText("redSpinbutton");
    Ui().ClickButton(button);
    ASSERT_TRUE(WaitForDialog(kTitle));
  };
  Open([&] {
    EXPECT_EQ(0x000000, Find("Sample Text").color) << "black, as stored";
    pickColor("ff0000", "ok");
    EXPECT_TRUE(Eventually([&] { return Find("Sample Text").color == 0xFF0000; }))
        << std::hex << Find("Sample Text").color;
    pickColor("000000", "cancel");
    EXPECT_EQ(0xFF0000, Find("Sample Text").color) << "the cancelled colour changed nothing";

    Ui().ClickInDialog("Change Font...");
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().TypeInDialog("Liberation Mono");  // the list of fonts has the focus
    Ui().PressDialogKey("TAB");
    Ui().TypeInDialog("14");
    Ui().ClickInDialog("Italic");
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForDialog(kTitle));
    EXPECT_TRUE(Eventually([&] { return FontShown() == "Liberation Mono, 14 pt"; })) << FontShown();

    Ui().ClickInDialog("Change Font...");
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().ClickInDialog("Bold");
    Ui().ClickInDialog("Cancel");
    ASSERT_TRUE(WaitForDialog(kTitle));
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_EQ(kRed, form_.BranchFontColor());
  EXPECT_EQ("Liberation Mono", form_.BranchFontName());
  EXPECT_EQ(14.0f, form_.BranchFontSize());
  EXPECT_TRUE(form_.BranchFontItalic());
  EXPECT_FALSE(form_.BranchFontBold()) << "the cancelled font changed nothing";
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
