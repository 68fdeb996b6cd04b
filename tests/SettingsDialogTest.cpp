// The settings dialog worked as a person works it, from the menu command:
// rows of the symbol table clicked, its cells edited in the boxes below it
// and left with Tab, the messages read and answered, buttons and options
// clicked; what it wrote read back from nivarel.cfg and symbols.ini, and a
// new run typed into cells to see that it follows the new rules.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CEventHandler.h"
#include "CIniFileHandler.h"
#include "CInteractiveFlowcharter.h"
#include "Characters.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "Workbook.h"
#include "Worksheet.h"

namespace nivarel {
namespace {

using Control = driver::UiDriver::DialogControl;
using testing::Columns;
using testing::FileBytes;

const char kTitle[] = "Nivarel Settings";
// The shape types of two symbols the tests draw.
constexpr int kDocument = 67, kStoredData = 83;

class SettingsDialogTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("settings-dialog");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    host::ClearLogFile();
    testing::SavedSettings();  // the settings file made from the shipped one
  }
  void TearDown() override {
    run_.reset();
    EXPECT_EQ("", host::ReadLogFile());
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Open(const std::function<void()>& steps) { Drive([&] { handler_.ShowSettings(); }, kTitle, steps); }

  // The symbol table's entries, as columns.
  std::vector<std::string> Entries() {
    std::vector<std::string> out;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "item") out.push_back(Columns(c.text));
    return out;
  }
  // Selects the entry whose columns begin with start as a person would in a
  // list longer than it shows: a click on the first entry, then the Down key.
  void Click(const std::string& start) {
    std::vector<Control> items;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "item") items.push_back(c);
    for (size_t i = 0; i < items.size(); ++i)
      if (Columns(items[i].text).rfind(start, 0) == 0) {
        Ui().ClickItem(items[0].text);
        for (size_t k = 0; k < i; ++k) Ui().PressDialogKey("DOWN");
        return;
      }
    ADD_FAILURE() << "no entry begins '" << start << "'";
  }
  // The control with this caption or text; fails the test when none shows.
  Control Find(const std::string& text) {
    for (const Control& c : Ui().DialogControls())
      if (c.text == text) return c;
    ADD_FAILURE() << "no control reads '" << text << "'";
    return {};
  }
  // Types text into the box beside caption and leaves it with Tab.
  void Edit(const std::string& caption, const std::string& text) {
    TypeBeside(caption, text);
    Ui().PressDialogKey("TAB");
  }
  // The message that came up: its title and text; answered with OK, and
  // back in the settings dialog.
  std::pair<std::string, std::string> Message() {
    std::pair<std::string, std::string> message{"(no message)", ""};
    if (Eventually([&] { return Ui().Title() != kTitle; })) {
      message = {Ui().Title(), Ui().MessageText()};
      Ui().ClickButton("ok");
    }
    EXPECT_TRUE(WaitForDialog(kTitle));
    return message;
  }
  std::string Stored(int id, const std::string& key) {
    rules::CIniFileHandler handler;
    rules::IniFile ini;
    ini.FileName = host::GetIniFilePath();
    handler.LoadIniFile(ini);
    return handler.ReadFrom(ini, "Shape " + std::to_string(id), key, "(none)");
  }

  // A new run from C3, as the saved settings give it (no terminators), with
  // one step typed; the step's symbol.
  office::Shape RunStep(const std::string& text) {
    rules::CConfig config = testing::SavedSettings();
    config.StartTerminator = false;
    config.EndTerminator = false;
    config.BranchLabelOption = 0;
    config.StartLocation = "C3";
    config.UseRestartLocation = false;
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    run_ = std::make_unique<flowcharting::CInteractiveFlowcharter>();
    EXPECT_TRUE(run_->StartFlowcharting(config));
    Ui().TypeIntoCell(App().ActiveCell()->Address(false), text);
    office::Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i)
      if (shapes.Item(i).Type() == office::msoAutoShape && !shapes.Item(i).Connector()) return shapes.Item(i);
    ADD_FAILURE() << "no symbol drawn for '" << text << "'";
    return shapes.Item(1);
  }

  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
  std::unique_ptr<flowcharting::CInteractiveFlowcharter> run_;
};

TEST_F(SettingsDialogTest, TheTableListsTheActiveSymbolsInOrderAndTheOrderIsChangedOnlyByTheArrows) {
  Open([&] {
    std::vector<std::string> rows = Entries();
    ASSERT_EQ(28u, rows.size()) << "the shipped rules have 28 active symbols";
    EXPECT_EQ("1|Decision|D:|IF,WHETHER|8|4", rows[0]);
    EXPECT_EQ("28|Process|P:|8|2", rows[27]);
    EXPECT_TRUE(Beside("Active Symbol List:").text == "My Symbols");
    Click("1|Decision");
    Edit("Order:", "5");
    EXPECT_EQ(std::make_pair(std::string("Nivarel"),
                             std::string("To change the order of Prefix and Keyword evaluation,\n"
                                         "please use the Up and Down arrows to the right of the grid.")),
              Message());
    EXPECT_EQ("1", Beside("Order:").text);
    EXPECT_EQ("1|Decision|D:|IF,WHETHER|8|4", Entries()[0]);

    // The common symbols, in their order; their list can't be edited.
    ASSERT_TRUE(FocusControl([&](const Control& c) { return c.kind == "list" && c.text == "My Symbols"; }));
    Ui().PressDialogKey("UP");
    EXPECT_TRUE(Eventually([&] { return Entries().size() == 4; })) << ::testing::PrintToString(Entries());
    // Keywords longer than the table shows are cut, and end in an ellipsis.
    EXPECT_EQ((std::vector<std::string>{"1|Decision|D:|IF,WHETHER|8|4", "25|Terminator|T:|START,BEGIN,END,STOP,FINI\u2026|6|2",
                                        "27|Connector|C:|2|2", "28|Process|P:|8|2"}),
              Entries());
    EXPECT_FALSE(Find("Edit Symbol List...").enabled);
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Eventually([&] { return Entries().size() == 28; }));
    EXPECT_TRUE(Find("Edit Symbol List...").enabled);

    // Stored Data (22) goes ahead of Magnetic Disk (21).
    Click("22|Stored Data");
    Ui().ClickInDialog("▲");
    EXPECT_TRUE(Eventually([&] { return Entries()[20].rfind("21|Stored Data|SD:", 0) == 0; }))
        << ::testing::PrintToString(Entries());
    EXPECT_EQ("22|Magnetic Disk|DB:|DATABASE,DISK|6|4", Entries()[21]);
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ("21", Stored(83, "order"));
  EXPECT_EQ("22", Stored(86, "order"));
  EXPECT_EQ("True", Stored(83, "is_active"));
  // "Save to disk" has a keyword of each: the one tried first now wins.
  EXPECT_EQ(kStoredData, RunStep("Save to disk").AutoShapeType());
}

TEST_F(SettingsDialogTest, PrefixesKeywordsAndNamesAreCheckedAsTheirBoxIsLeft) {
  Open([&] {
    Click("28|Process");
    Edit("Prefix:", "tb");
    EXPECT_EQ(std::make_pair(std::string("Reserved Prefix"),
                             std::string("TB: is reserved. Please choose a different prefix.")),
              Message());
    EXPECT_EQ("P:", Beside("Prefix:").text) << "the refused prefix is not kept";
    EXPECT_TRUE(Beside("Prefix:").focused) << "the edit stays open";
    Edit("Prefix:", "d");
    EXPECT_EQ(std::make_pair(std::string("Duplicate Prefix"),
                             std::string("Duplicate Prefix found.\nThe prefix you entered is the same as the prefix for "
                                         "Decision")),
              Message());
    Edit("Prefix:", " pr ");
    EXPECT_TRUE(Eventually([&] { return Beside("Prefix:").text == "PR:"; })) << Beside("Prefix:").text;

    Edit("Keywords (comma separated):", "work, if");
    EXPECT_EQ(std::make_pair(std::string("Duplicate keyword found"),
                             std::string("The keyword IF is already used by another symbol.")),
              Message());
    EXPECT_EQ("", Beside("Keywords (comma separated):").text);
    // IFFY and DISKS only hold other rows' keywords inside themselves.
    Edit("Keywords (comma separated):", "iffy, disks");
    EXPECT_TRUE(Eventually([&] { return Beside("Keywords (comma separated):").text == "IFFY,DISKS"; }));
    Edit("Keywords (comma separated):", "a, b, ,c,");
    EXPECT_TRUE(Eventually([&] { return Beside("Keywords (comma separated):").text == "A,B,C"; }))
        << Beside("Keywords (comma separated):").text;

    Edit("Name:", "");
    EXPECT_EQ(std::make_pair(std::string("Warning - Blank Symbol Name"),
                             std::string("Note: Leaving this field blank will result in no description \n"
                                         "next to the symbol when you generate a symbol key.")),
              Message());
    EXPECT_TRUE(Eventually([&] { return Entries()[27] == "28|PR:|A,B,C|8|2"; })) << Entries()[27];
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ("PR", Stored(61, "prefix")) << "stored without its delimiter";
  EXPECT_EQ("A,B,C", Stored(61, "keywords"));
  EXPECT_EQ("", Stored(61, "display_name"));
  EXPECT_EQ("28", Stored(61, "order"));
  EXPECT_EQ("D", Stored(63, "prefix"));
}

TEST_F(SettingsDialogTest, ANewDelimiterRewritesThePrefixesAndTheNextRunParsesWithIt) {
  Open([&] {
    Ui().ClickInDialog("Advanced Settings...");
    ASSERT_TRUE(WaitForDialog(" Advanced Settings"));
    ASSERT_TRUE(FocusControl([&](const Control& c) { return c.kind == "list" && c.text == ": (colon)"; }));
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Eventually([&] { return Beside("Prefix delimiter:").text == "- (dash)"; }));
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForDialog(kTitle));
    EXPECT_TRUE(Eventually([&] { return Entries()[27] == "28|Process|P-|8|2"; })) << Entries()[27];
    EXPECT_EQ("1|Decision|D-|IF,WHETHER|8|4", Entries()[0]);
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ("-", testing::SavedSettings().PrefixDelimiter);
  EXPECT_EQ("DOC", Stored(67, "prefix"));
  office::Shape step = RunStep("DOC- Ship it");
  EXPECT_EQ(kDocument, step.AutoShapeType()) << "no keyword of the text would give it";
  EXPECT_EQ("Ship it", step.GetTextFrame().GetCharacters().Text());
}

TEST_F(SettingsDialogTest, TheOptionsReachTheSettingsFileByOKAndNotByCancel) {
  bool existed = false;
  const std::string cfg = host::GetCfgFilePath(existed), ini = host::GetIniFilePath();
  const std::string cfgBefore = FileBytes(cfg), iniBefore = FileBytes(ini);
  rules::CConfig before = testing::SavedSettings();
  auto change = [&] {
    Ui().ClickInDialog("Special Symbol Settings");
    ASSERT_TRUE(Shows("Add flow lines automatically"));
    Ui().ClickInDialog("Add flow lines automatically");
    Ui().ClickInDialog("Prompt for branch labels");
    Ui().ClickInDialog("Centered");
    Ui().ClickInDialog("Curved");
    Ui().ClickInDialog("Prompt to add an end Terminator");
    Edit("Top:", "Up");
    Ui().ClickInDialog("Symbol Settings");
    ASSERT_TRUE(Shows("Active Symbol List:"));
    Click("28|Process");
    Edit("Name:", "Step");
    ASSERT_TRUE(FocusControl([&](const Control& c) { return c.kind == "list" && c.text == "8"; }));
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Eventually([&] { return Entries()[27] == "28|Step|P:|9|2"; })) << Entries()[27];
  };
  Open([&] {
    change();
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ(cfgBefore, FileBytes(cfg)) << "Cancel writes no settings";
  EXPECT_EQ(iniBefore, FileBytes(ini)) << "nor symbol rules, none having been written on the way";
  Open([&] {
    change();
    Ui().ClickInDialog("OK");
  });
  rules::CConfig after = testing::SavedSettings();
  EXPECT_EQ(!before.AddFlowLine, after.AddFlowLine);
  EXPECT_EQ(1, after.BranchLabelOption);
  EXPECT_EQ(0, after.BranchPosition);
  EXPECT_EQ(3, after.FlowLineType);
  EXPECT_EQ(!before.EndTerminator, after.EndTerminator);
  EXPECT_EQ("Up", after.TopBranchText);
  EXPECT_EQ(before.RightBranchText, after.RightBranchText);
  EXPECT_EQ("Step", Stored(61, "display_name"));
  EXPECT_EQ("9", Stored(61, "width"));
}

TEST_F(SettingsDialogTest, ExportSymbolListWritesTheTableToANewSheetAsOneUndoEntry) {
  office::UndoList undo(*book_);
  size_t entries = undo.Titles().size();
  int sheets = book_->SheetCount();
  Open([&] {
    Ui().ClickInDialog("Export Symbol List");
    EXPECT_TRUE(Eventually([&] { return book_->SheetCount() == sheets + 1; }));
    Ui().ClickInDialog("Cancel");
  });
  ASSERT_EQ(sheets + 1, book_->SheetCount());
  office::Worksheet list = book_->Sheet(sheets + 1);
  const char* headers[] = {"Order", "Symbol", "Name", "Prefix", "Keywords", "Width", "Min. Height"};
  for (int c = 0; c < 7; ++c) EXPECT_EQ(headers[c], list.GetRange("A1").Offset(0, c).Text());
  const char* first[] = {"1", "", "Decision", "D:", "IF,WHETHER", "8", "4"};
  for (int c = 0; c < 7; ++c) EXPECT_EQ(first[c], list.GetRange("A2").Offset(0, c).Text()) << c;
  EXPECT_EQ("Process", list.GetRange("C29").Text());
  EXPECT_EQ("", list.GetRange("A30").Text()) << "one row per active symbol";
  // A picture inside each row's Symbol cell.
  office::Shapes shapes = list.GetShapes();
  ASSERT_EQ(28, shapes.Count());
  for (int i = 1; i <= shapes.Count(); ++i) {
    office::Shape s = shapes.Item(i);
    office::Range cell = list.GetRange("B2").Offset(i - 1, 0);
    EXPECT_EQ(office::msoPicture, s.Type());
    EXPECT_GE(s.Left(), cell.Left());
    EXPECT_LE(s.Left() + s.Width(), cell.Left() + cell.Width() + 0.5);
    EXPECT_GE(s.Top(), cell.Top());
    EXPECT_LE(s.Top() + s.Height(), cell.Top() + cell.Height() + 0.5) << i;
  }
  ASSERT_EQ(entries + 1, undo.Titles().size());
  EXPECT_EQ("Nivarel: Export Symbol List", undo.Titles().front());
  undo.Undo();
  EXPECT_EQ(sheets, book_->SheetCount()) << "Ctrl+Z takes the sheet back";
}

TEST_F(SettingsDialogTest, EditSymbolListChangesTheTableAndOKKeepsIt) {
  auto removeDecision = [&] {
    Ui().ClickInDialog("Edit Symbol List...");
    ASSERT_TRUE(WaitForDialog("  Edit Symbol List"));
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "item" && Columns(c.text) == "1|Decision") Ui().ClickItem(c.text);
    ASSERT_TRUE(Eventually([&] { return Find("<< Remove").enabled; }));
    Ui().ClickInDialog("<< Remove");
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForDialog(kTitle));
    EXPECT_TRUE(Eventually([&] { return Entries().size() == 27; })) << Entries().size();
    EXPECT_EQ("1|Manual Input|MI:", Entries()[0].substr(0, 18)) << "numbered afresh";
  };
  Open([&] {
    removeDecision();
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ("True", Stored(63, "is_active")) << "the edited list is kept only by OK";
  Open([&] {
    removeDecision();
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ("False", Stored(63, "is_active"));
  EXPECT_EQ("1", Stored(71, "order"));
  EXPECT_EQ("True", Stored(71, "is_active"));
}

TEST_F(SettingsDialogTest, TheMenuCommandOpensTheDialogInTheOffice) {
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelNivarelSettings"); }, kTitle, [&] {
    EXPECT_TRUE(Shows("(Symbols are sorted in keyword evaluation order)"));
    EXPECT_FALSE(Entries().empty()) << "the office's own settings fill the table";
    Ui().ClickInDialog("Cancel");
  });
}

}  // namespace
}  // namespace nivarel
