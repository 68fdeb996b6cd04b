// The style wizard and its pickers, worked through the office's user
// interface as a person would: the wizard opened as its menu entry opens it,
// styles chosen by clicking the pickers' pictures, and the looks read back
// from the office's drawn fill and line colours.
#include <gtest/gtest.h>

#include <filesystem>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CEventHandler.h"
#include "CShapeFormatter.h"
#include "ConnectorFormat.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Shape.h"
#include "ShapeRange.h"
#include "Shapes.h"
#include "UndoList.h"
#include "frmFlowLineStyles.h"
#include "frmStyles.h"

namespace nivarel {
namespace {

using office::Shape;

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }
// Fill colours of the styles the tests choose or start from.
constexpr long kStyle9Fill = Rgb(79, 129, 189), kStyle9Line = Rgb(56, 93, 138);
constexpr long kStyle44Fill = Rgb(220, 230, 242), kStyle50Fill = Rgb(242, 242, 242);
constexpr long kStyle51Fill = Rgb(185, 205, 229);

// The middle of cell (column, row) of a picture of columns by rows cells.
std::pair<double, double> CellCentre(int column, int row, int columns, int rows) {
  return {(column + 0.5) / columns, (row + 0.5) / rows};
}

class StyleWizardTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("style-wizard");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    host::ClearLogFile();
  }
  void TearDown() override {
    folder_.reset();
    AddinFixture::TearDown();
  }


  // A symbol of a style with a text, the next one to the right of the last.
  Shape AddSymbol(const std::string& text, int style, int type = office::msoShapeFlowchartProcess) {
    Shape s = sheet_->GetShapes().AddShape(type, 20 + 130 * count_++, 40, 100, 40);
    s.GetTextFrame().GetCharacters().SetText(text);
    shapes::CShapeFormatter().SetStyleOnly(s, static_cast<int16_t>(style));
    kept_.push_back(s);
    return s;
  }
  Shape Join(Shape& from, Shape& to) {
    Shape line = sheet_->GetShapes().AddConnector(office::msoConnectorStraight, 0, 0, 10, 10);
    line.GetConnectorFormat().BeginConnect(from, 4);
    line.GetConnectorFormat().EndConnect(to, 2);
    kept_.push_back(line);
    return line;
  }
  // Three symbols joined in a row: the first two of style 44, the last of 50.
  void ThreeSteps() {
    Shape a = AddSymbol("Receive order", 44), b = AddSymbol("Check stock", 44), c = AddSymbol("Ship", 50);
    Join(a, b);
    Join(b, c);
  }
  long Fill(int i) { return kept_[i].Fill().ForeColor().RGB(); }
  // The entries of the active dialog's list (the drop-downs' entries are not
  // shown).
  std::vector<std::string> Listed() {
    std::vector<std::string> out;
    for (const auto& c : Ui().DialogControls())
      if (c.kind == "item") out.push_back(c.text);
    return out;
  }
  // Whether the active dialog has a text box that reads text.
  bool HasEdit(const std::string& text) {
    for (const auto& c : Ui().DialogControls())
      if (c.kind == "edit" && c.text == text) return true;
    return false;
  }

  // Opens the symbol style picker from the wizard, clicks a style's cell
  // on a page, picks what it applies to and closes it with OK.
  void PickStyle(bool solidPage, int column, int row, const std::string& appliesTo) {
    Ui().ClickInDialog("Change Style...");
    ASSERT_TRUE(WaitForTitle("  Select Symbol Style"));
    ASSERT_TRUE(WaitForDialog("  Select Symbol Style"));
    Ui().ClickInDialog(solidPage ? "Solid Fill Styles" : "Themed Styles");
    auto [x, y] = CellCentre(column, row, 7, 6);
    Ui().ClickPicture(0, x, y);
    Ui().ClickInDialog(appliesTo);
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForTitle("Style Wizard"));
  }

  std::vector<Shape> kept_;
  int count_ = 0;
  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
};

TEST_F(StyleWizardTest, TheCurrentSymbolAloneTakesAStyleAndTheSettingsStayAsTheyWere) {
  ThreeSteps();
  int16_t styleBefore = testing::SavedSettings().StyleId;
  Drive([&] { handler_.ShowStyleWizard(); }, "Style Wizard", [&] {
    EXPECT_EQ((std::vector<std::string>{"Receive order", "Check stock", "Ship"}), Listed())
        << "one entry per symbol, none for the lines";
    EXPECT_TRUE(HasEdit("Receive order")) << "the first symbol is the current one";
    PickStyle(false, 1, 1, "Apply to current symbol");  // style 9
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ(kStyle9Fill, Fill(0));
  EXPECT_EQ(kStyle9Line, kept_[0].Line().ForeColor().RGB());
  EXPECT_EQ(kStyle44Fill, Fill(1));
  EXPECT_EQ(kStyle50Fill, Fill(2));
  EXPECT_EQ(styleBefore, testing::SavedSettings().StyleId);

  // The run is one step back.
  office::UndoList undo(sheet_->Parent());
  ASSERT_FALSE(undo.Titles().empty());
  EXPECT_EQ("Nivarel: Style Wizard", undo.Titles().front());
  ASSERT_TRUE(Ui().WaitForDocument());
  Ui().PressKey("CTRL+z");
  for (int i = 0; i < 100 && !undo.Titles().empty() && undo.Titles().front() == "Nivarel: Style Wizard"; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(kStyle44Fill, Fill(0));
  EXPECT_EQ(kStyle44Fill, Fill(1));
  EXPECT_EQ("Receive order", kept_[0].GetTextFrame().GetCharacters().Text());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(StyleWizardTest, AllSymbolsOrThoseOfTheFormerStyleTakeTheStyleAndTheSettingsKeepIt) {
  ThreeSteps();
  Drive([&] { handler_.ShowStyleWizard(); }, "Style Wizard", [&] {
    PickStyle(true, 1, 1, "Apply to symbols that use the previous style");  // style 51
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ(kStyle51Fill, Fill(0));
  EXPECT_EQ(kStyle51Fill, Fill(1));
  EXPECT_EQ(kStyle50Fill, Fill(2)) << "the last symbol had another style";
  EXPECT_EQ(51, testing::SavedSettings().StyleId);

  Drive([&] { handler_.ShowStyleWizard(); }, "Style Wizard", [&] {
    PickStyle(false, 1, 1, "Apply to all symbols");  // style 9
    Ui().ClickInDialog("OK");
  });
  for (int i = 0; i < 3; ++i) EXPECT_EQ(kStyle9Fill, Fill(i)) << i;
  EXPECT_EQ(9, testing::SavedSettings().StyleId);
}

TEST_F(StyleWizardTest, LinesAloneListNothingButAreFormattedAndGroupsAreLeftOutWithAWord) {
  // Two symbols grouped, their line outside the group, and one more line.
  Shape a = AddSymbol("Plan", 44), b = AddSymbol("Do", 44);
  Shape line = Join(a, b);
  line.Line().ForeColor().SetRGB(Rgb(255, 0, 0));
  line.Line().SetWeight(0.75);
  sheet_->GetShapes().GetRange({a.Name(), b.Name()}).Group();
  // The word on groups comes before the wizard shows.
  Ui();
  auto shown = std::async(std::launch::async, [&] { handler_.ShowStyleWizard(); });
  if (WaitForTitle("Grouped Shapes Found")) {
    EXPECT_EQ(
        "Nivarel has detected grouped shapes, which it cannot format.\n"
        "To stylize these shapes, please ungroup the shapes, run the\n"
        "Style Wizard again, then Regroup the shapes afterward.",
        Ui().MessageText());
    Ui().ClickButton("ok");
  } else {
    ADD_FAILURE() << "no word on groups; the focus is on '" << Ui().Title() << "'";
  }
  if (WaitForTitle("Style Wizard") && WaitForDialog("Style Wizard")) {
    EXPECT_TRUE(Listed().empty()) << "a group's symbols are not listed";
    Ui().ClickInDialog("OK");
  } else {
    ADD_FAILURE() << "no wizard; the focus is on '" << Ui().Title() << "'";
  }
  for (int i = 0; shown.wait_for(std::chrono::milliseconds(500)) != std::future_status::ready && i < 20; ++i)
    CloseTopWindow();
  shown.get();
  // The shipped flow line style, 9: blue, 2 points.
  EXPECT_EQ(Rgb(74, 126, 187), line.Line().ForeColor().RGB());
  EXPECT_DOUBLE_EQ(2, line.Line().Weight());
  EXPECT_EQ(kStyle44Fill, a.Fill().ForeColor().RGB()) << "a grouped symbol keeps its look";
}

TEST_F(StyleWizardTest, APickersClickChoosesTheStyleUnderItAndOnlyOKHandsItBack) {
  dialogs::frmStyles styles;
  auto pick = [&](int16_t start, bool solid, int column, int row, const std::string& close) {
    styles.InitializeSettings(start, "Decision");
    Drive([&] { styles.Show(); }, "  Select Symbol Style", [&] {
      if (solid) Ui().ClickInDialog("Solid Fill Styles");
      if (column >= 0) {
        auto [x, y] = CellCentre(column, row, 7, 6);
        Ui().ClickPicture(0, x, y);
      }
      if (close == "ESC")
        Ui().PressDialogKey("ESC");
      else
        Ui().ClickInDialog(close);
    });
  };
  pick(0, false, 6, 0, "OK");
  EXPECT_TRUE(styles.OK());
  EXPECT_EQ(7, styles.StyleId());
  EXPECT_EQ(0, styles.AppliesTo());
  pick(0, false, 6, 1, "OK");
  EXPECT_EQ(14, styles.StyleId());
  pick(0, true, 0, 0, "OK");
  EXPECT_EQ(43, styles.StyleId());
  pick(0, false, 3, 4, "OK");
  EXPECT_EQ(32, styles.StyleId());
  pick(60, false, -1, 0, "OK");
  EXPECT_EQ(60, styles.StyleId()) << "a style above 42 opens on the solid page, chosen";
  pick(0, false, -1, 0, "OK");
  EXPECT_EQ(0, styles.StyleId()) << "a style of 0 opens with nothing chosen";
  pick(5, false, 6, 5, "Cancel");
  EXPECT_FALSE(styles.OK());
  EXPECT_EQ(5, styles.StyleId());
  pick(5, false, 6, 5, "ESC");
  EXPECT_FALSE(styles.OK());

  styles.InitializeSettings(3, "Decision");
  Drive([&] { styles.Show(); }, "  Select Symbol Style", [&] {
    Ui().ClickInDialog("Apply to all Decision symbols");
    Ui().ClickInDialog("OK");
  });
  EXPECT_EQ(3, styles.AppliesTo());

  dialogs::frmFlowLineStyles lines;
  lines.InitializeSettings(1);
  Drive([&] { lines.Show(); }, " Flow Line Style", [&] {
    auto [x, y] = CellCentre(6, 2, 7, 3);
    Ui().ClickPicture(0, x, y);
    Ui().ClickInDialog("OK");
  });
  EXPECT_TRUE(lines.OK());
  EXPECT_EQ(21, lines.StyleId());
}

TEST_F(StyleWizardTest, AChosenFontReachesTheSettingsAndACancelledOneDoesNot) {
  ThreeSteps();
  Drive([&] { handler_.ShowStyleWizard(); }, "Style Wizard", [&] {
    Ui().ClickInDialog("Change Font...");
    ASSERT_TRUE(WaitForTitle(" Font"));
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().TypeInDialog("Liberation Mono");  // the list of fonts has the focus
    Ui().PressDialogKey("TAB");
    Ui().TypeInDialog("14");
    Ui().PressDialogKey("ALT+B");
    Ui().PressDialogKey("ALT+I");
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForTitle("Style Wizard"));
    Ui().ClickInDialog("Cancel");  // what the pickers chose stays all the same
  });
  rules::CConfig saved = testing::SavedSettings();
  EXPECT_EQ("Liberation Mono", saved.FontName);
  EXPECT_FLOAT_EQ(14, saved.FontSize);
  EXPECT_TRUE(saved.FontBold);
  EXPECT_TRUE(saved.FontItalic);

  Drive([&] { handler_.ShowStyleWizard(); }, "Style Wizard", [&] {
    Ui().ClickInDialog("Change Font...");
    ASSERT_TRUE(WaitForTitle(" Font"));
    ASSERT_TRUE(WaitForDialog(" Font"));
    Ui().TypeInDialog("Liberation Serif");
    Ui().PressDialogKey("ALT+B");
    Ui().ClickInDialog("Cancel");
    ASSERT_TRUE(WaitForTitle("Style Wizard"));
    Ui().ClickInDialog("OK");
  });
  saved = testing::SavedSettings();
  EXPECT_EQ("Liberation Mono", saved.FontName);
  EXPECT_TRUE(saved.FontBold);
  // OK set the chosen font on the symbols.
  EXPECT_EQ("Liberation Mono", kept_[0].GetTextFrame().GetCharacters().GetFont().Name());
}

}  // namespace
}  // namespace nivarel
