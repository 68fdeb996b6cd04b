// The template generator's dialog worked as a person works it: pages chosen,
// boxes typed into and left, buttons and lists pressed, read back through
// the accessibility tree; and the command that makes a template file from it,
// read back from the file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include <stdlib.h>

#include "AddinFixture.h"
#include "CEventHandler.h"
#include "Characters.h"
#include "HostError.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "TemplateFile.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "Workbook.h"
#include "Workbooks.h"
#include "frmTemplateGenerator.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using Control = driver::UiDriver::DialogControl;

const char kTitle[] = " Template Generator";
const char kNotice[] = "(Lanes will appear in one row in the template.)";
const char kVertical[] = "Cross functional - vertical swim lanes";
const char kHorizontal[] = "Cross functional - horizontal swim lanes";
const char kLaneTitles[] = "Lane Titles   (Click a lane to edit the text)";

// A title block row as shown: its count and whether "-" and "+" are on.
struct Row {
  std::string count;
  bool less, more;
  bool operator==(const Row& o) const { return count == o.count && less == o.less && more == o.more; }
};
void PrintTo(const Row& r, std::ostream* os) {
  *os << "{" << r.count << (r.less ? " -on" : " -off") << (r.more ? " +on" : " +off") << "}";
}

class TemplateGeneratorDialogTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("template-generator");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    // The user's flowcharts folder, where the first template folder is made.
    home_ = getenv("HOME") ? getenv("HOME") : "";
    std::string home = testing::ConfigHome() + "/template-generator-home";
    fs::remove_all(home);
    fs::create_directories(home);
    setenv("HOME", home.c_str(), 1);
    host::ClearLogFile();
    config_.LoadConfigData();
  }
  void TearDown() override {
    setenv("HOME", home_.c_str(), 1);
    folder_.reset();
    AddinFixture::TearDown();
  }

  void Open(const std::function<void()>& steps) { Drive([&] { form_.Display(config_); }, kTitle, steps); }

  // Chooses a page by its tab and waits until a control of it shows.
  void Page(const std::string& tab, const std::string& shownThere) {
    Ui().ClickInDialog(tab);
    ASSERT_TRUE(Shows(shownThere)) << tab;
  }

  // The controls in reading order, and the one n places after a caption.
  Control After(const std::string& caption, size_t n) {
    auto controls = Ui().DialogControls();
    for (size_t i = 0; i + n < controls.size(); ++i)
      if (controls[i].text == caption) return controls[i + n];
    ADD_FAILURE() << "nothing " << n << " places after '" << caption << "'";
    return {};
  }
  std::vector<Control> Of(const std::string& kind) {
    std::vector<Control> out;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == kind) out.push_back(c);
    return out;
  }
  std::vector<std::string> EditTexts() {
    std::vector<std::string> out;
    for (const Control& c : Of("edit")) out.push_back(c.text);
    return out;
  }
  bool Showing(const std::string& text) {
    for (const Control& c : Ui().DialogControls())
      if (c.text == text) return true;
    return false;
  }
  Control Button(const std::string& caption, int nth = 0) {
    for (const Control& c : Of("button"))
      if (c.text == caption && nth-- == 0) return c;
    ADD_FAILURE() << "no button '" << caption << "'";
    return {};
  }

  // Presses the nth button of a caption (from 0, in reading order) with the
  // Space key, having tabbed to it: the title block's rows have a "+" and a
  // "-" each.
  void Press(const std::string& caption, int nth) {
    for (int i = 0; i < 80; ++i) {
      int k = nth;
      for (const Control& c : Of("button"))
        if (c.text == caption && k-- == 0 && c.focused) {
          Ui().PressDialogKey("SPACE");
          return;
        }
      Ui().PressDialogKey("TAB");
    }
    ADD_FAILURE() << "the button '" << caption << "' " << nth << " never took the focus";
  }

  // The lanes' count, and its buttons' states.
  std::string Lanes() { return After("# Lanes", 2).text; }
  bool LanesCanGo(const char* way) { return Button(way).enabled; }

  // The title block rows shown on the third page.
  std::vector<Row> Rows() {
    std::vector<Row> out;
    auto controls = Ui().DialogControls();
    for (size_t i = 0; i + 2 < controls.size(); ++i)
      if (controls[i].kind == "button" && controls[i].text == "-")
        out.push_back({controls[i + 1].text, controls[i].enabled, controls[i + 2].enabled});
    return out;
  }

  rules::CConfig config_;
  dialogs::frmTemplateGenerator form_;
  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
  std::string home_;
};

TEST_F(TemplateGeneratorDialogTest, TheNameLosesWhatAFileNameCannotHoldAndABlankNameKeepsTheDialogOnItsFirstPage) {
  Open([&] {
    EXPECT_TRUE(Beside("Template Name").focused) << "the name box has the focus first";
    Ui().TypeInDialog("a:b/c?");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Eventually([&] { return Beside("Template Name").text == "abc"; })) << Beside("Template Name").text;
    TypeBeside("Template Name", " <x|y> ");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Eventually([&] { return Beside("Template Name").text == "xy"; })) << "trimmed too";

    TypeBeside("Template Name", "   ");
    Page("Body", "Plain grid");
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForTitle("Nivarel")) << Ui().Title();
    EXPECT_EQ("You must enter a template name.", Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog(kTitle));
    EXPECT_TRUE(Shows("Template Name")) << "back on the first page";
    EXPECT_FALSE(Showing("Plain grid"));
    EXPECT_TRUE(Eventually([&] { return Beside("Template Name").focused; })) << "the focus in the name box";
    Ui().TypeInDialog("Flow");
    Ui().ClickInDialog("OK");
  });
  EXPECT_TRUE(form_.OK());
  EXPECT_EQ("Flow", form_.TemplateName());
}

TEST_F(TemplateGeneratorDialogTest, LanesStayFromTwoToTenTheNoticeShowsFromSixAndALayoutChangeOffersMoreOnlyBelowSix) {
  Open([&] {
    TypeBeside("Template Name", "Lanes");
    Page("Body", "Plain grid");
    EXPECT_EQ("2", Lanes());
    EXPECT_FALSE(LanesCanGo("-"));
    EXPECT_FALSE(LanesCanGo("+")) << "a plain grid has no lanes";
    EXPECT_EQ((std::vector<std::string>{"Lane 1 Title", "Lane 2 Title"}), EditTexts());
    for (const Control& box : Of("edit")) EXPECT_FALSE(box.enabled);

    Ui().ClickInDialog(kVertical);
    EXPECT_TRUE(Eventually([&] { return LanesCanGo("+"); }));
    EXPECT_FALSE(LanesCanGo("-")) << "not below 2";
    for (const Control& box : Of("edit")) EXPECT_TRUE(box.enabled);
    for (int i = 0; i < 3; ++i) Ui().ClickInDialog("+");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "5"; })) << Lanes();
    EXPECT_EQ(5u, Of("edit").size());
    EXPECT_FALSE(Showing(kNotice));
    Ui().ClickInDialog("+");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "6"; })) << Lanes();
    EXPECT_TRUE(Shows(kNotice)) << "six lanes take two rows here, one in the template";
    EXPECT_EQ(6u, Of("edit").size());
    Ui().ClickInDialog("-");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "5"; })) << Lanes();
    EXPECT_TRUE(Eventually([&] { return !Showing(kNotice); })) << "back to five hides it";

    for (int i = 0; i < 6; ++i) Ui().ClickInDialog("+");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "10"; })) << Lanes();
    EXPECT_FALSE(LanesCanGo("+")) << "not above 10";
    EXPECT_TRUE(LanesCanGo("-"));
    EXPECT_EQ(10u, Of("edit").size());
    EXPECT_EQ("Lane 10 Title", Of("edit").back().text);
    for (int i = 0; i < 4; ++i) Ui().ClickInDialog("-");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "6"; })) << Lanes();
    EXPECT_TRUE(LanesCanGo("+"));
    // Another layout at six lanes: a lane must go before more can come.
    Ui().ClickInDialog(kHorizontal);
    EXPECT_TRUE(Eventually([&] { return !LanesCanGo("+"); }));
    EXPECT_TRUE(LanesCanGo("-"));
    Ui().ClickInDialog("-");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "5"; }));
    EXPECT_TRUE(LanesCanGo("+"));
    Ui().ClickInDialog("+");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "6"; }));
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_EQ(6, form_.SwimLaneCount());
  EXPECT_EQ(templates::CTemplateProperties::HorizontalSwimLanes, form_.TemplateType());
  EXPECT_EQ("Lane 6 Title", form_.GetSwimLaneTitle(6));
  EXPECT_EQ("Lane 10 Title", form_.GetSwimLaneTitle(10)) << "lanes not in use are handed out too";
  EXPECT_EQ("", form_.GetSwimLaneTitle(11));
}

TEST_F(TemplateGeneratorDialogTest, SectionsStayFromOneToThreeAndAHeaderSwitchedOffHasNoRowsWhateverTheListSays) {
  Open([&] {
    TypeBeside("Template Name", "Blocks");
    Page("Header / Footer", "Add title block header");
    // Each half shows one row of one section, greyed while its box is off.
    std::vector<Row> rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Rows()).size() == 2; })) << ::testing::PrintToString(rows);
    EXPECT_EQ((std::vector<Row>{{"1", false, false}, {"1", false, false}}), rows);
    EXPECT_FALSE(Beside("Number of rows:").enabled);
    Ui().ClickInDialog("Add title block header");
    EXPECT_TRUE(Eventually([&] { return Beside("Number of rows:").enabled; }));
    EXPECT_EQ((std::vector<Row>{{"1", false, true}, {"1", false, false}}), Rows());

    ASSERT_TRUE(FocusControl([](const Control& c) { return c.kind == "list" && c.enabled; }));
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Eventually([&] { return Rows().size() == 3; })) << "a second header row, of one section";
    EXPECT_EQ((std::vector<Row>{{"1", false, true}, {"1", false, true}, {"1", false, false}}), Rows());
    Press("+", 0);
    Press("+", 0);
    EXPECT_TRUE(Eventually([&] { return Rows()[0].count == "3"; })) << ::testing::PrintToString(Rows());
    EXPECT_EQ((Row{"3", true, false}), Rows()[0]) << "not above 3";
    EXPECT_EQ((std::vector<std::string>{"Section 1", "Section 2", "Section 3", "Section 1", "Section 1"}),
              EditTexts());
    Press("-", 0);
    Press("-", 0);
    EXPECT_TRUE(Eventually([&] { return Rows()[0].count == "1"; })) << ::testing::PrintToString(Rows());
    EXPECT_EQ((Row{"1", false, true}), Rows()[0]) << "not below 1";
    Press("+", 1);
    EXPECT_TRUE(Eventually([&] { return Rows()[1].count == "2"; })) << ::testing::PrintToString(Rows());

    Ui().ClickInDialog("Add title block header");  // off again, the list still at 2
    EXPECT_TRUE(Eventually([&] { return Rows().size() == 2; })) << ::testing::PrintToString(Rows());
    EXPECT_FALSE(Beside("Number of rows:").enabled);
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_FALSE(form_.AddHeader());
  EXPECT_EQ(0, form_.HeaderRowCount());
  EXPECT_EQ(1, form_.GetHeaderSectionCount(1));
  EXPECT_EQ(2, form_.GetHeaderSectionCount(2)) << "the counts are handed out as they stand";
  EXPECT_EQ(0, form_.GetHeaderSectionCount(3));
  EXPECT_EQ(0, form_.GetHeaderSectionCount(4));
  EXPECT_EQ("Section 2", form_.GetHeaderRowLabel(2, 2));
  EXPECT_EQ("", form_.GetHeaderRowLabel(1, 4));
  EXPECT_FALSE(form_.AddFooter());
  EXPECT_EQ(0, form_.FooterRowCount());
}

TEST_F(TemplateGeneratorDialogTest, TheSettingsFillTheFirstPageAndAPaperSizeOutsideTheListStartsOnLetter) {
  config_.PaperSize = 5;
  config_.Orientation = 2;
  config_.TemplateFolderPath = " /srv/templates ";
  Open([&] {
    EXPECT_EQ("8-1/2x11", Beside("Paper size").text);
    EXPECT_EQ("Landscape", Beside("Orientation").text);
    EXPECT_EQ("1", Beside("Number of pages").text);
    EXPECT_EQ("/srv/templates", Beside("Template Folder").text);
    Ui().ClickInDialog("...");  // the folder is typed: the button does nothing
    EXPECT_TRUE(WaitForDialog(kTitle));
    TypeBeside("Template Name", "Paper");
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_EQ(1, form_.PaperSize());
  EXPECT_EQ(2, form_.Orientation());
  EXPECT_EQ(1, form_.NumberOfPages());
  EXPECT_TRUE(form_.UseShapes());
  EXPECT_EQ("/srv/templates", form_.TemplateFolder());
  EXPECT_EQ(1, form_.TemplateLineStyle());
  EXPECT_EQ(config_.FontName, form_.TemplateFontName());

  // The old code of 11x17 reads as 11x17, and the choices come back by their codes.
  config_.PaperSize = 3;
  config_.TemplateFolderPath.clear();
  Open([&] {
    EXPECT_EQ("11x17", Beside("Paper size").text);
    EXPECT_EQ(testing::ConfigHome() + "/template-generator-home/Documents/My Flowcharts/Templates",
              Beside("Template Folder").text)
        << "no folder in the settings: where the template chooser keeps the user's templates";
    TypeBeside("Template Name", "Paper");
    ASSERT_TRUE(FocusControl([](const Control& c) { return c.kind == "list" && c.text == "11x17"; }));
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Eventually([&] { return Beside("Paper size").text == "A3"; }));
    Ui().ClickInDialog("Cell formatting and borders");
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_FALSE(form_.OK());
  EXPECT_TRUE(fs::is_directory(testing::ConfigHome() + "/template-generator-home/Documents/My Flowcharts/Templates"))
      << "made for the template";
  EXPECT_EQ(8, form_.PaperSize());
  EXPECT_FALSE(form_.UseShapes());
}

TEST_F(TemplateGeneratorDialogTest, TheLineStyleAndTheFontComeFromTheirPickersAndACancelledFontChangesNothing) {
  config_.FontSize = 10;
  Open([&] {
    TypeBeside("Template Name", "Looks");
    Ui().ClickInDialog("Line Style");
    ASSERT_TRUE(WaitForTitle(" Line Styles"));
    ASSERT_TRUE(WaitForDialog(" Line Styles"));
    Ui().ClickPicture(0, 1.5 / 7, 1.5 / 3);  // style 9: column 1 of row 1
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForDialog(kTitle));

    Ui().ClickInDialog("Title Block Font");
    ASSERT_TRUE(WaitForTitle(" Font"));
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().PressDialogKey("TAB");  // from the list of fonts to the size
    Ui().TypeInDialog("100");
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForTitle("Font Size"));
    EXPECT_EQ("Please enter a font size from 8 to 72.", Ui().MessageText());
    Ui().ClickButton("ok");
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().ClickInDialog("Bold");
    Ui().ClickInDialog("Cancel");
    ASSERT_TRUE(WaitForDialog(kTitle));
    Ui().ClickInDialog("OK");
  });
  ASSERT_TRUE(form_.OK());
  EXPECT_EQ(9, form_.TemplateLineStyle());
  EXPECT_EQ(10.0f, form_.TemplateFontSize()) << "the cancelled font changed nothing";
  EXPECT_FALSE(form_.TemplateFontBold());

  Open([&] {
    TypeBeside("Template Name", "Looks");
    Ui().ClickInDialog("Title Block Font");
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().TypeInDialog("Liberation Mono");  // the list of fonts has the focus
    Ui().PressDialogKey("TAB");
    Ui().TypeInDialog("14");
    Ui().ClickInDialog("Italic");
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForDialog(kTitle));
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ("Liberation Mono", form_.TemplateFontName());
  EXPECT_EQ(14.0f, form_.TemplateFontSize());
  EXPECT_TRUE(form_.TemplateFontItalic());
  EXPECT_EQ(1, form_.TemplateLineStyle()) << "each dialog starts on style 1";
}

// The texts of a sheet's shapes, groups opened.
std::multiset<std::string> ShapeTexts(const office::Worksheet& sheet) {
  std::multiset<std::string> out;
  office::Shapes shapes = sheet.GetShapes();
  for (int i = 1; i <= shapes.Count(); ++i) {
    office::Shape s = shapes.Item(i);
    std::vector<office::Shape> inside = s.Type() == office::msoGroup ? s.GroupItems() : std::vector<office::Shape>{s};
    for (office::Shape& item : inside) {
      std::string text;
      try {
        text = item.GetTextFrame().GetCharacters().Text();
      } catch (const office::HostError&) {
        continue;  // a line
      }
      if (!text.empty()) out.insert(text);
    }
  }
  return out;
}

TEST_F(TemplateGeneratorDialogTest, OkMakesTheTemplateFileThatTheDialogDescribesAndTheUsersWorkbookGainsNothing) {
  std::string folder = testing::ConfigHome() + "/made-templates/new";  // made by the save
  fs::remove_all(testing::ConfigHome() + "/made-templates");
  sheet_->GetRange("B2").SetValue("Mine");
  office::UndoList undo(*book_);
  std::vector<std::string> entries = undo.Titles();
  Drive([&] { handler_.ShowTemplateGeneratorForm(); }, kTitle, [&] {
    TypeBeside("Template Name", "Order Lanes");
    TypeBeside("Template Folder", folder);
    Page("Body", "Plain grid");
    Ui().ClickInDialog(kVertical);
    Ui().ClickInDialog("+");
    EXPECT_TRUE(Eventually([&] { return Lanes() == "3"; }));
    TypeBeside(kLaneTitles, "Sales");
    Ui().PressDialogKey("TAB");
    Ui().TypeInDialog("Stock");
    Ui().PressDialogKey("TAB");
    Ui().TypeInDialog("Shipping");
    Page("Header / Footer", "Add title block header");
    Ui().ClickInDialog("Add title block header");
    ASSERT_TRUE(FocusControl([](const Control& c) { return c.kind == "list" && c.enabled; }));
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Eventually([&] { return Rows().size() == 3; }));
    Press("+", 0);
    EXPECT_TRUE(Eventually([&] { return Rows()[0].count == "2"; }));
    Ui().PressDialogKey("TAB");
    Ui().TypeInDialog("Title");
    Ui().ClickInDialog("OK");
  });
  std::string path = folder + "/Order Lanes.xltx";
  ASSERT_TRUE(fs::exists(path)) << host::ReadLogFile();
  templates::TemplateFile file;
  ASSERT_TRUE(templates::ReadTemplateFile(path, file));
  EXPECT_EQ("Order Lanes", file.title);
  EXPECT_EQ("3", file.Custom("NumberLanes"));
  EXPECT_EQ("Vertical", file.Custom("LaneDirection"));
  EXPECT_EQ("Letter", file.Custom("PageSize")) << "the shipped settings' paper";
  EXPECT_EQ("Portrait", file.Custom("Orientation"));

  // The template stays open in front, with nothing to undo.
  auto made = App().ActiveWorkbook();
  ASSERT_TRUE(made && !made->SameAs(*book_));
  std::multiset<std::string> texts = ShapeTexts(made->Sheet(1));
  for (const char* text : {"Sales", "Stock", "Shipping", "Section 2"})
    EXPECT_EQ(1u, texts.count(text)) << text << " in " << ::testing::PrintToString(texts);
  EXPECT_EQ(1u, texts.count("Title")) << "the first section's label, typed";
  EXPECT_EQ(1u, texts.count("Section 1")) << "the second row's one section";
  EXPECT_TRUE(office::UndoList(*made).Titles().empty());
  made->Close();

  EXPECT_EQ(1, book_->SheetCount());
  EXPECT_EQ(0, sheet_->GetShapes().Count());
  EXPECT_EQ("Mine", sheet_->GetRange("B2").Text());
  EXPECT_EQ(entries, undo.Titles()) << "no entry in the user's undo list";
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(TemplateGeneratorDialogTest, TheMenuOpensTheDialogAndCancelMakesNothing) {
  int books = App().GetWorkbooks().Count();
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelCreateTemplate", true); }, kTitle, [&] {
    TypeBeside("Template Name", "Unmade");
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_TRUE(Ui().WaitForDocument());
  EXPECT_EQ(books, App().GetWorkbooks().Count());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(TemplateGeneratorDialogTest, ATemplateThatCannotBeSavedIsToldAndTheOfficeGoesOn) {
  // A missing folder is made by the save; a folder inside a file cannot be.
  std::string file = testing::ConfigHome() + "/not-a-folder";
  fs::remove_all(file);
  std::ofstream(file) << "text";
  std::string folder = file + "/templates";
  Drive([&] { handler_.ShowTemplateGeneratorForm(); }, kTitle, [&] {
    TypeBeside("Template Name", "Lost");
    TypeBeside("Template Folder", folder);
    Ui().ClickInDialog("OK");
    // The dialog goes and a workbook comes before the message: watched
    // through the toolkit until the message is in front.
    ASSERT_TRUE(Eventually([&] { return Ui().ActiveTitle() == "Template Not Saved"; }, 20000)) << Ui().ActiveTitle();
    ASSERT_TRUE(WaitForTitle("Template Not Saved"));
    EXPECT_EQ("The template could not be saved:\n" + folder + "/Lost.xltx", Ui().MessageText());
    Ui().ClickButton("ok");
  });
  EXPECT_TRUE(fs::is_regular_file(file));
  auto made = App().ActiveWorkbook();
  ASSERT_TRUE(made && !made->SameAs(*book_)) << "the unsaved template stays open, to be saved by hand";
  made->Close();
  EXPECT_NE(std::string::npos, host::ReadLogFile().find("SaveTemplateFile"));
}

}  // namespace
}  // namespace nivarel
