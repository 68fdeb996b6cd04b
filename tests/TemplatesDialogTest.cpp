// The template chooser worked as a person works it, on folders of template
// files that the test writes: what the table lists and leaves out, the
// filters, a folder typed or refreshed, a choice without a row, and the
// first-use copy of the shipped templates.
#include <gtest/gtest.h>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "AddinFixture.h"
#include "TemplateFileWriter.h"
#include "Text.h"
#include "frmTemplates.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using Control = driver::UiDriver::DialogControl;
using testing::WriteTemplateCompoundFile;
using testing::WriteTemplatePackage;

const char kTitle[] = "Select Template";
const char kNote[] = "Note: Block Diagrams do NOT run in flowcharting mode.";

class TemplatesDialogTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    root_ = testing::ConfigHome() + "/templates-dialog";
    fs::remove_all(root_);
  }

  std::string Folder(const std::string& name) {
    std::string folder = root_ + "/" + name;
    fs::create_directories(folder);
    return folder;
  }

  // A template as the generator writes one: a flowchart starting at C4.
  void Template(const std::string& path, const std::string& paper, const std::string& orientation, int lanes,
                const std::string& direction, const std::string& type = "Flowchart") {
    std::string name = fs::path(path).stem().string();
    std::vector<testing::TypedProperty> properties = {{"NumberLanes", "i4", std::to_string(lanes)},
                                                      {"PageSize", "lpwstr", paper},
                                                      {"Orientation", "lpwstr", orientation}};
    if (!direction.empty()) properties.push_back({"LaneDirection", "lpwstr", direction});
    properties.push_back({"StartLocation", "lpwstr", "C4"});
    properties.push_back({"TemplateType", "lpwstr", type});
    if (path.size() > 4 && path.substr(path.size() - 4) == ".xlt")
      WriteTemplateCompoundFile(path, name, properties);
    else
      WriteTemplatePackage(path, name, properties);
  }

  void Open(dialogs::frmTemplates& form, const std::string& folder, const std::string& okText,
            const std::function<void()>& steps) {
    Drive([&] { form.Display(folder, kTitle, okText); }, kTitle, steps);
  }

  // The table as shown: each entry cut into its cells where the heading's
  // columns begin (a heading's captions are apart by three blanks or more).
  std::vector<std::vector<std::string>> Table() {
    std::string heading;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "text" && c.text.rfind("File Name", 0) == 0) heading = c.text;
    std::vector<size_t> starts = {0};
    for (size_t i = 0, blanks = 0; i < heading.size(); ++i) {
      if (heading[i] == ' ') {
        ++blanks;
        continue;
      }
      if (blanks >= 3) starts.push_back(i);
      blanks = 0;
    }
    std::vector<std::vector<std::string>> rows;
    for (const std::string& entry : Listed()) {
      std::vector<std::string> cells;
      for (size_t k = 0; k < starts.size(); ++k) {
        size_t end = k + 1 < starts.size() ? starts[k + 1] : std::string::npos;
        cells.push_back(starts[k] < entry.size() ? rules::Trim(entry.substr(starts[k], end - starts[k])) : "");
      }
      rows.push_back(cells);
    }
    return rows;
  }

  bool Enabled(const std::string& caption) {
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "button" && c.text == caption) return c.enabled;
    ADD_FAILURE() << "no button '" << caption << "'";
    return false;
  }

  bool NoteShown() {
    for (const Control& c : Ui().DialogControls())
      if (c.text == kNote) return true;
    return false;
  }

  std::string root_;
};

using Rows = std::vector<std::vector<std::string>>;

TEST_F(TemplatesDialogTest, BothKindsOfFileAreListedWithTheirPropertiesAndUnreadableOnesAreLeftOut) {
  std::string folder = Folder("set");
  Template(folder + "/Letter Grid.xltx", "Letter", "Portrait", 4, "");  // a plain grid: lanes, no direction
  Template(folder + "/A4 Lanes.xlt", "A4", "Landscape", 3, "Vertical");
  std::ofstream(folder + "/Broken.xltx") << "not a template";
  Template(folder + "/Notes.xlsx", "A3", "Portrait", 2, "");  // no template by its name
  dialogs::frmTemplates form;
  Open(form, folder, "&Load Template", [&] {
    Rows rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Table()).size() == 2; })) << ::testing::PrintToString(rows);
    EXPECT_EQ(rows, (Rows{{"A4 Lanes.xlt", "A4 Lanes", "A4", "Landscape", "3", "Vertical", "Flowchart"},
                          {"Letter Grid.xltx", "Letter Grid", "Letter", "Portrait", "4", "", "Flowchart"}}));
    EXPECT_FALSE(NoteShown());
    EXPECT_FALSE(Enabled("Refresh")) << "the folder has not changed";
    Ui().ClickItem(Listed()[1]);
    Ui().ClickInDialog("Load Template");
  });
  EXPECT_TRUE(form.OK());
  EXPECT_EQ(folder + "/Letter Grid.xltx", form.TemplateFilePath());
  EXPECT_EQ(folder + "/", form.TemplateFolderPath());
  EXPECT_EQ("C4", form.StartLocation());
  EXPECT_FALSE(form.BlockDiagram());
  EXPECT_EQ("", host::ReadLogFile());
}

// "8-1/2x11" stands for the stored word "Letter"; the filters work together
// and only when applied; a block diagram chosen shows its note.
TEST_F(TemplatesDialogTest, FiltersMatchTheStoredWordsAndABlockDiagramShowsItsNote) {
  std::string folder = Folder("filters");
  Template(folder + "/1 Letter.xltx", "Letter", "Portrait", 2, "Horizontal");
  Template(folder + "/2 Spelled.xltx", "8-1/2x11", "Portrait", 2, "Horizontal");
  Template(folder + "/3 A4.xltx", "A4", "Landscape", 2, "Horizontal");
  Template(folder + "/4 Blocks.xlt", " letter", "Landscape", 5, "Vertical", "Block Diagram");
  auto list = [](const std::string& text) {
    return [text](const Control& c) { return c.kind == "list" && c.text == text; };
  };
  dialogs::frmTemplates form;
  Open(form, folder, "&OK", [&] {
    ASSERT_TRUE(Eventually([&] { return Listed().size() == 4; }));
    ASSERT_TRUE(FocusControl(list("All"))) << "the paper filter";
    Ui().PressDialogKey("DOWN");
    ASSERT_TRUE(FocusControl(list("8-1/2x11")));
    EXPECT_EQ(4u, Listed().size()) << "nothing is filtered before Apply Filter";
    Ui().ClickInDialog("Apply Filter");
    Rows rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Table()).size() == 2; })) << ::testing::PrintToString(rows);
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ("1 Letter.xltx", rows[0][0]);
    EXPECT_EQ("4 Blocks.xlt", rows[1][0]) << "trimmed and in any case, the word matches";
    EXPECT_FALSE(NoteShown());
    ASSERT_TRUE(FocusControl(list("All"))) << "the orientation filter";
    Ui().PressDialogKey("DOWN");
    Ui().PressDialogKey("DOWN");
    ASSERT_TRUE(FocusControl(list("Landscape")));
    Ui().ClickInDialog("Apply Filter");
    EXPECT_TRUE(Eventually([&] { return (rows = Table()).size() == 1; })) << ::testing::PrintToString(rows);
    EXPECT_EQ("4 Blocks.xlt", rows.at(0).at(0));
    EXPECT_TRUE(Eventually([&] { return NoteShown(); })) << "the block diagram, first of the list, is chosen";
    Ui().ClickInDialog("OK");
  });
  EXPECT_TRUE(form.OK());
  EXPECT_TRUE(form.BlockDiagram());
  EXPECT_EQ(folder + "/4 Blocks.xlt", form.TemplateFilePath());
}

// Refresh waits for another folder: the same one typed in another case is
// not another; a refreshed table lists the new folder's files.
TEST_F(TemplatesDialogTest, RefreshComesOnlyWithAnotherFolderAndReadsIt) {
  std::string first = Folder("First"), other = Folder("Other");
  Template(first + "/One.xltx", "Letter", "Portrait", 2, "Vertical");
  Template(other + "/Two.xltx", "A4", "Portrait", 2, "Vertical");
  Template(other + "/Three.xlt", "A3", "Landscape", 3, "Horizontal");
  dialogs::frmTemplates form;
  Open(form, first, "&OK", [&] {
    ASSERT_TRUE(Eventually([&] { return Listed().size() == 1; }));
    std::string again = rules::UpperCase(first) + "/";
    TypeBeside("Template Folder", again);
    ASSERT_TRUE(Eventually([&] { return Beside("Template Folder").text == again; }));
    EXPECT_FALSE(Enabled("Refresh")) << "the same folder in another case";
    Ui().PressDialogKey("TAB");  // out and in again: the box's text is selected on the way in
    TypeBeside("Template Folder", other);
    ASSERT_TRUE(Eventually([&] { return Beside("Template Folder").text == other; }));
    EXPECT_TRUE(Enabled("Refresh"));
    EXPECT_EQ(1u, Listed().size()) << "the table waits for Refresh";
    Ui().ClickInDialog("Refresh");
    Rows rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Table()).size() == 2; })) << ::testing::PrintToString(rows);
    EXPECT_EQ(rows, (Rows{{"Three.xlt", "Three", "A3", "Landscape", "3", "Horizontal", "Flowchart"},
                          {"Two.xltx", "Two", "A4", "Portrait", "2", "Vertical", "Flowchart"}}));
    EXPECT_TRUE(Eventually([&] { return !Enabled("Refresh"); }));
    Ui().PressDialogKey("ESC");
  });
  EXPECT_FALSE(form.OK());
  EXPECT_EQ(other + "/", form.TemplateFolderPath());
}

TEST_F(TemplatesDialogTest, OkWithoutATemplateSaysSoAndKeepsTheDialog) {
  std::string folder = Folder("unreadable");
  std::ofstream(folder + "/Broken.xltx") << "PK\x03\x04 not a whole package";
  std::ofstream(folder + "/Broken.xlt") << "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 cut short";
  dialogs::frmTemplates form;
  Open(form, folder, "&Load Template", [&] {
    EXPECT_TRUE(Listed().empty());
    Ui().ClickInDialog("Load Template");
    ASSERT_TRUE(WaitForTitle("No Template Selected"));
    EXPECT_EQ("You have choosen to load a template but no template was selected.\n"
              "Please click an item in the 'Select Template' grid or\nclick Cancel to exit.",
              Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog(kTitle)) << "the dialog stays";
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_FALSE(form.OK());
  EXPECT_EQ("", form.TemplateFilePath());
  EXPECT_EQ("", host::ReadLogFile()) << "an unreadable file is left out without a word";
}

// With no folder given, a new user's template folder receives the shipped
// templates of the host's file type once, and the table lists them.
TEST_F(TemplatesDialogTest, ANewUsersTemplateFolderIsFilledOnceFromTheShippedTemplates) {
  std::string install = Folder("install"), home = Folder("home");
  Folder("install/Templates");
  Template(install + "/Templates/Shipped Lanes.xltx", "Letter", "Landscape", 4, "Vertical");
  Template(install + "/Templates/Shipped Old.xlt", "Letter", "Landscape", 4, "Vertical");
  std::string savedHome = getenv("HOME") ? getenv("HOME") : "";
  std::string savedInstall = host::GetInstallFolder();
  setenv("HOME", home.c_str(), 1);
  host::SetInstallFolder(install);
  std::string target = host::GetFlowchartsPath() + "Templates/";
  dialogs::frmTemplates form;
  Open(form, "", "&OK", [&] {
    EXPECT_TRUE(Eventually([&] { return Listed().size() == 1; })) << ::testing::PrintToString(Listed());
    EXPECT_EQ(target, Beside("Template Folder").text);
    Ui().PressDialogKey("ESC");
  });
  EXPECT_TRUE(fs::exists(target + "Shipped Lanes.xltx"));
  EXPECT_FALSE(fs::exists(target + "Shipped Old.xlt")) << "only the host's kind is copied";
  // A folder that holds a template of either kind gets no copy.
  fs::remove(target + "Shipped Lanes.xltx");
  Template(target + "Mine.xlt", "A4", "Portrait", 2, "Vertical");
  Open(form, "", "&OK", [&] {
    EXPECT_TRUE(Eventually([&] { return Listed().size() == 1; }));
    EXPECT_EQ("Mine.xlt", Table().at(0).at(0));
    Ui().PressDialogKey("ESC");
  });
  EXPECT_FALSE(fs::exists(target + "Shipped Lanes.xltx"));
  setenv("HOME", savedHome.c_str(), 1);
  host::SetInstallFolder(savedInstall);
}

}  // namespace
}  // namespace nivarel
