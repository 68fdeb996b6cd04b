// The symbol lists worked as a person works them: entries clicked (Shift and
// the arrow keys for more than one), the filter stepped with the keys, Add and
// Remove pressed, the two lists read back through the accessibility tree,
// and the rules record that OK hands back read through the ini handler.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "AddinFixture.h"
#include "CIniFileHandler.h"
#include "MSpecialFolders.h"
#include "frmSymbolLists.h"

namespace nivarel {
namespace {

using Control = driver::UiDriver::DialogControl;
using testing::Columns;
using testing::FileBytes;

const char kTitle[] = "  Edit Symbol List";

class SymbolListsDialogTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("symbol-lists");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    host::ClearLogFile();
    ini_.FileName = host::GetIniFilePath();
    handler_.LoadIniFile(ini_);
    ASSERT_EQ(137, ini_.SectionCount);
  }
  void TearDown() override {
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Open(const std::function<void()>& steps) {
    form_.InitializeSettings(handler_, ini_);
    Drive([&] { form_.Show(); }, kTitle, steps);
  }

  // The entries of the unused list (the left one) or of the active list, as columns.
  std::vector<std::string> Entries(bool active) {
    std::vector<Control> items;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "item") items.push_back(c);
    int middle = 0;
    for (const Control& c : items) middle = std::max(middle, c.left);
    std::vector<std::string> out;
    for (const Control& c : items)
      if ((c.left == middle) == active) out.push_back(Columns(c.text));
    return out;
  }
  // Clicks the entry whose columns read columns.
  void Click(const std::string& columns) {
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "item" && Columns(c.text) == columns) return Ui().ClickItem(c.text);
    ADD_FAILURE() << "no entry reads " << columns;
  }
  bool Enabled(const std::string& button) {
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "button" && c.text == button) return c.enabled;
    ADD_FAILURE() << "no button " << button;
    return false;
  }
  // Steps the filter with the arrow keys to the entry that reads to.
  void Filter(const std::string& to) {
    ASSERT_TRUE(FocusControl([](const Control& c) { return c.kind == "list"; }));
    const char* key = "DOWN";
    for (int i = 0; i < 12 && Beside("Filter:").text != to; ++i) {
      if (Beside("Filter:").text == "Callouts") key = "UP";
      Ui().PressDialogKey(key);
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    ASSERT_EQ(to, Beside("Filter:").text);
  }
  std::string Read(const rules::IniFile& ini, int id, const std::string& key) {
    return handler_.ReadFrom(ini, "Shape " + std::to_string(id), key, "(none)");
  }

  rules::CIniFileHandler handler_;
  rules::IniFile ini_;
  dialogs::frmSymbolLists form_;
  std::unique_ptr<testing::SettingsFolder> folder_;
};

TEST_F(SymbolListsDialogTest, TheRulesFillBothListsInTheirOrdersAndAFilterThatHidesSelectedRowsMovesOnlyTheShownOnes) {
  Open([&] {
    std::vector<std::string> active = Entries(true);
    ASSERT_EQ(28u, active.size()) << "the shipped rules' active symbols";
    EXPECT_EQ("1|Decision", active.front()) << "in evaluation order";
    EXPECT_EQ("28|Process", active.back());
    std::vector<std::string> unused = Entries(false);
    ASSERT_EQ(137u - 28, unused.size());
    EXPECT_EQ("Rectangle|Basic Shapes", unused.front()) << "by shape type";
    EXPECT_EQ("Balloon", unused.back()) << "in no group";
    EXPECT_FALSE(Enabled("Add >>")) << "nothing selected";
    EXPECT_FALSE(Enabled("<< Remove"));

    // The Decision back among the unused symbols, behind the 60 shapes below it.
    Click("1|Decision");
    EXPECT_TRUE(Eventually([&] { return Enabled("<< Remove"); }));
    Ui().ClickInDialog("<< Remove");
    ASSERT_TRUE(Eventually([&] { return Entries(true).size() == 27; }));
    ASSERT_EQ("Decision|Flowchart Symbols", Entries(false)[60]);
    // The Up Arrow Callout (60) and the Decision selected, then only the
    // Decision shown.
    Click("Rectangle|Basic Shapes");
    for (int i = 0; i < 59; ++i) Ui().PressDialogKey("DOWN");
    Ui().PressDialogKey("SHIFT+DOWN");
    std::vector<std::string> selected;
    EXPECT_TRUE(Eventually([&] {
      selected.clear();
      for (const Control& c : Ui().DialogControls())
        if (c.kind == "item" && c.selected) selected.push_back(Columns(c.text));
      return selected.size() == 2;
    })) << ::testing::PrintToString(selected);
    Filter("Flowchart Symbols");
    ASSERT_TRUE(Eventually([&] { return Entries(false) == std::vector<std::string>{"Decision|Flowchart Symbols"}; }))
        << ::testing::PrintToString(Entries(false));
    EXPECT_TRUE(Enabled("Add >>"));
    Ui().ClickInDialog("Add >>");
    EXPECT_TRUE(Eventually([&] { return Entries(true).size() == 28; }));
    EXPECT_EQ("28|Decision", Entries(true).back()) << "at the end of the active list";
    EXPECT_TRUE(Entries(false).empty());
    EXPECT_EQ("Flowchart Symbols", Beside("Filter:").text) << "the filter stays";
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  const rules::IniFile& out = form_.IniFileData();
  EXPECT_EQ("True", Read(out, 63, "is_active"));
  EXPECT_EQ("28", Read(out, 63, "order"));
  EXPECT_EQ("False", Read(out, 60, "is_active")) << "hidden when Add was pressed";
  EXPECT_EQ("1", Read(out, 71, "order")) << "Manual Input, second before, is tried first now";
  EXPECT_EQ("27", Read(out, 61, "order"));
  EXPECT_EQ("Decision", Read(out, 63, "display_name")) << "the rest of the section stays";
  EXPECT_EQ(ini_.SectionCount, out.SectionCount);
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(SymbolListsDialogTest, RemoveSetsTheFilterBackToAllAndTheActiveSymbolsAreNumberedAfresh) {
  Open([&] {
    Filter("Callouts");
    ASSERT_TRUE(Eventually([&] { return Entries(false).size() == 20; }));
    Click("1|Decision");
    Ui().PressDialogKey("SHIFT+DOWN");  // and Manual Input
    EXPECT_TRUE(Eventually([&] { return Enabled("<< Remove"); }));
    Ui().ClickInDialog("<< Remove");
    EXPECT_TRUE(Eventually([&] { return Entries(true).size() == 26; }));
    EXPECT_EQ("All", Beside("Filter:").text);
    std::vector<std::string> active = Entries(true);
    EXPECT_EQ("1|Multi-Document", active[0]);
    EXPECT_EQ("2|Internal Storage", active[1]);
    EXPECT_EQ("26|Process", active.back());
    std::vector<std::string> unused = Entries(false);
    ASSERT_EQ(137u - 26, unused.size()) << "every group shows";
    EXPECT_EQ("Decision|Flowchart Symbols", unused[60]) << "back in its place by shape type, after the 60 below it";
    EXPECT_EQ("Manual Input|Flowchart Symbols", unused[61]);
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  const rules::IniFile& out = form_.IniFileData();
  EXPECT_EQ("False", Read(out, 63, "is_active"));
  EXPECT_EQ("False", Read(out, 71, "is_active"));
  EXPECT_EQ("True", Read(out, 68, "is_active"));
  EXPECT_EQ("1", Read(out, 68, "order"));
  EXPECT_EQ("26", Read(out, 61, "order"));
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(SymbolListsDialogTest, CancelLeavesTheRecordAndTheRulesFileAsTheyWere) {
  std::string before = FileBytes(ini_.FileName);
  ASSERT_FALSE(before.empty());
  std::vector<std::string> lines;
  for (int32_t i = 1; i <= ini_.LineCount; ++i) lines.push_back(ini_.Lines[i]);
  Open([&] {
    Click("Rectangle|Basic Shapes");
    EXPECT_TRUE(Eventually([&] { return Enabled("Add >>"); }));
    Ui().ClickInDialog("Add >>");
    EXPECT_TRUE(Eventually([&] { return Entries(true).size() == 29; }));
    Click("1|Decision");
    Ui().ClickInDialog("<< Remove");
    EXPECT_TRUE(Eventually([&] { return Entries(true).size() == 28; }));
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_FALSE(form_.OK());
  const rules::IniFile& out = form_.IniFileData();
  ASSERT_EQ(ini_.LineCount, out.LineCount);
  for (int32_t i = 1; i <= out.LineCount; ++i) EXPECT_EQ(lines[i - 1], out.Lines[i]) << "line " << i;
  EXPECT_EQ(before, FileBytes(ini_.FileName));
}

}  // namespace
}  // namespace nivarel
