// The small prompts, worked through the office's user interface as a person
// would: type into the box, press a key or click, read what the caller gets.
#include <gtest/gtest.h>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CTextParser.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "frmOpenWalkthrough.h"
#include "frmRestart.h"
#include "frmTerminator.h"
#include "frmTextBox.h"

namespace nivarel {
namespace {

using Controls = std::vector<driver::UiDriver::DialogControl>;

class SmallPromptsTest : public testing::AddinFixture {
 protected:
  // The captions and box contents of the active window, in its order.
  std::vector<std::string> Texts() {
    std::vector<std::string> out;
    for (const auto& c : Ui().DialogControls()) out.push_back(c.kind + ":" + c.text);
    return out;
  }
  bool Has(const std::string& entry) {
    auto texts = Texts();
    return std::find(texts.begin(), texts.end(), entry) != texts.end();
  }
  // Reads the message box that follows, checks it and closes it with a key.
  void Answer(const std::string& title, const std::string& text, const std::string& button) {
    ASSERT_TRUE(WaitForTitle(title)) << "expected the message '" << title << "', the focus is on '"
                                     << Ui().Title() << "'";
    EXPECT_EQ(text, Ui().MessageText());
    Ui().ClickButton(button);
  }
};

TEST_F(SmallPromptsTest, TheLabelPromptHandsBackTrimmedTextOnlyAfterOK) {
  dialogs::frmTextBox prompt;
  Drive([&] { prompt.Display(); }, " Add Label", [&] {
    EXPECT_TRUE(Has("text:Label text:"));
    EXPECT_TRUE(Has("button:OK"));
    EXPECT_TRUE(Has("button:Cancel"));
    Ui().TypeInDialog("  Reorder point  ");
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_TRUE(prompt.OK());
  EXPECT_EQ("Reorder point", prompt.TextBoxText());

  Drive([&] { prompt.Display(); }, " Add Label", [&] {
    EXPECT_TRUE(Has("edit:")) << "each showing starts empty";
    Ui().TypeInDialog("not wanted");
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_FALSE(prompt.OK());
}

TEST_F(SmallPromptsTest, TheWordLblAsksForALabelAndDropsItWithoutOutline) {
  rules::CConfig config;
  config.PrefixDelimiter = ":";
  config.BranchFontName = "Liberation Sans";
  config.BranchFontSize = 8;
  rules::RuleTable none;
  rules::CSymbolData symbols;
  office::Shapes shapes = sheet_->GetShapes();
  auto parse = [&](const std::function<void()>& steps) {
    sheet_->GetRange("D4").SetValue("lbl");
    flowcharting::CTextParser parser;
    Drive([&] { parser.ParseText("lbl", config, *sheet_, none, none, symbols, "D4", ""); }, " Add Label", steps);
    EXPECT_TRUE(parser.IsReserved());
    EXPECT_EQ("", sheet_->GetRange("D4").Text()) << "the word leaves its cell";
  };
  parse([&] {
    Ui().TypeInDialog("Safety stock");
    Ui().PressDialogKey("RETURN");
  });
  ASSERT_EQ(1, shapes.Count());
  office::Shape label = shapes.Item(1);
  EXPECT_EQ(office::msoTextBox, label.Type());
  EXPECT_EQ("Safety stock", label.GetTextFrame().GetCharacters().Text());
  EXPECT_FALSE(label.Line().Visible());
  EXPECT_NEAR(sheet_->GetRange("D4").Left(), label.Left(), 0.1);
  EXPECT_NEAR(sheet_->GetRange("D4").Top(), label.Top(), 0.1);

  parse([&] {
    Ui().TypeInDialog("ignored");
    Ui().PressDialogKey("ESC");
  });
  parse([&] {
    Ui().TypeInDialog("   ");
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_EQ(1, shapes.Count()) << "a cancelled or empty label draws nothing";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(SmallPromptsTest, TheTerminatorPromptChecksItsEntriesInOrder) {
  testing::SettingsFolder folder(testing::ConfigHome() + "/terminator");
  dialogs::frmTerminator prompt;

  // "stop" in any case asks for the end; the stored text and the location
  // fill the boxes. A blank text is let through by OK in the question.
  Drive([&] { prompt.Display("F20", "stop"); }, " Add End Terminator?", [&] {
    EXPECT_EQ((std::vector<std::string>{"text:Terminator text", "edit:End", "text:Worksheet cell", "edit:F20",
                                        "button:Select Cell...", "check:Set as default End Terminator text",
                                        "button:Yes", "button:No"}),
              Texts());
    Ui().PressDialogKey("BACKSPACE");  // the text box has the focus, its text selected
    Ui().PressDialogKey("RETURN");
    Answer("No Terminator Text - Edit Text",
           "The terminator text you entered was blank.\n\n- Click OK to add a blank Terminator symbol.\n"
           "- Click Cancel to to edit the text.",
           "ok");
  });
  EXPECT_TRUE(prompt.OK());
  EXPECT_EQ("", prompt.TerminatorText());
  EXPECT_EQ("F20", prompt.StartLocation());

  // Cancel in the question goes back to the text; then a blank cell and an
  // invalid one are refused in turn; "No" after a refused "Yes" keeps OK.
  Drive([&] { prompt.Display("", "Start"); }, " Add Start Terminator?", [&] {
    EXPECT_TRUE(Has("check:Set as default Start Terminator text"));
    EXPECT_TRUE(Has("edit:Start"));
    Ui().PressDialogKey("BACKSPACE");
    Ui().PressDialogKey("RETURN");
    Answer("No Terminator Text - Edit Text",
           "The terminator text you entered was blank.\n\n- Click OK to add a blank Terminator symbol.\n"
           "- Click Cancel to to edit the text.",
           "cancel");
    Ui().TypeInDialog("Receive order");
    Ui().PressDialogKey("RETURN");
    Answer("Empty Cell Address",
           "The cell address you entered was blank.\nPlease select a cell using the selector button [...]\n"
           "or click No to cancel adding a Terminator.",
           "ok");
    ASSERT_TRUE(WaitForTitle(" Add Start Terminator?"));
    Ui().TypeInDialog("not a cell");  // the cell box has the focus now
    Ui().PressDialogKey("RETURN");
    Answer("Invalid Cell Address",
           "The cell address entered was invalid.\nPlease select a cell using the selector button [...]\n"
           "or click No to cancel adding a Terminator.",
           "ok");
    ASSERT_TRUE(WaitForTitle(" Add Start Terminator?"));
    Ui().PressDialogKey("ALT+N");
  });
  EXPECT_TRUE(prompt.OK()) << "OK is set before the entries are checked";

  // With the box ticked, an accepted text becomes the stored default.
  Drive([&] { prompt.Display("B2", "START"); }, " Add Start Terminator?", [&] {
    Ui().TypeInDialog(" Begin ");
    Ui().ClickInDialog("Set as default Start Terminator text");
    Ui().ClickInDialog("Yes");
  });
  EXPECT_TRUE(prompt.OK());
  EXPECT_EQ("Begin", prompt.TerminatorText());
  EXPECT_EQ("B2", prompt.StartLocation());
  rules::CConfig stored;
  stored.LoadConfigData();
  EXPECT_EQ("Begin", stored.StartTerminatorText);
  EXPECT_EQ("End", stored.EndTerminatorText);
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(SmallPromptsTest, TheRestartNoteAndTheWalkthroughOffer) {
  dialogs::frmRestart restart;
  Drive([&] { restart.Display(); }, " Restart Flowcharting", [&] {
    EXPECT_TRUE(Has("text:Nivarel has detected existing shapes on the worksheet."));
    EXPECT_TRUE(Has(
        "text:To restart flowcharting, select a worksheet cell and type in the next process step. When you hit "
        "<Enter> Nivarel will prompt you, asking which symbol to add a flow line from."));
    Ui().ClickInDialog("Don't show this message again");
    Ui().PressDialogKey("RETURN");
  });
  EXPECT_TRUE(restart.OK());
  EXPECT_FALSE(restart.ShowRestartMessage());

  Drive([&] { restart.Display(); }, " Restart Flowcharting", [&] { Ui().PressDialogKey("ESC"); });
  EXPECT_FALSE(restart.OK());
  EXPECT_TRUE(restart.ShowRestartMessage()) << "Escape hands back the box as OK would";

  Drive([&] { restart.Display(); }, " Restart Flowcharting", [&] {
    Ui().ClickInDialog("Don't show this message again");
    Ui().PressDialogKey("ESC");
  });
  EXPECT_FALSE(restart.ShowRestartMessage());

  dialogs::frmOpenWalkthrough offer;
  Drive([&] { offer.Display(); }, " Nivarel Walkthrough", [&] {
    EXPECT_TRUE(Has("text:Would you like to open the Nivarel Walkthrough?"));
    EXPECT_TRUE(Has("text:You can view it later by clicking Help > Open Walkthrough on the Nivarel toolbar."));
    EXPECT_TRUE(Has("text:Note: This message will not be shown again."));
    Ui().ClickInDialog("Load Walkthrough");
  });
  EXPECT_TRUE(offer.OK());
  Drive([&] { offer.Display(); }, " Nivarel Walkthrough", [&] { Ui().PressDialogKey("ALT+S"); });
  EXPECT_FALSE(offer.OK());
}

}  // namespace
}  // namespace nivarel
