// The text-to-flowchart wizard worked as a person works it: opened from its
// command, lines and rows clicked, boxes typed into and left, read back
// through the accessibility tree, and the chart it draws read from the sheet.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "AddinFixture.h"
#include "CConfig.h"
#include "CEventHandler.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "MSpecialFolders.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Characters.h"
#include "UndoList.h"
#include "Window.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using office::Shape;
using Control = driver::UiDriver::DialogControl;

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }
// Style 1: a black outline on white; style 9: blue with a darker outline.
constexpr long kStyle1Fill = Rgb(255, 255, 255), kStyle1Line = Rgb(0, 0, 0);
constexpr long kStyle9Fill = Rgb(79, 129, 189);

const char kTitle[] = " Text to Flowchart Wizard";

class FlowchartWizardDialogTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    folder_ = testing::ShippedSettings("flowchart-wizard");
    host::SetInstallFolder(NIVAREL_OXT_STAGE);  // the extension as packed, its pictures too
    host::ClearLogFile();
  }
  void TearDown() override {
    folder_.reset();
    AddinFixture::TearDown();
  }


  void Open(const std::function<void()>& steps) { Drive([&] { handler_.ShowFlowchartWizard(); }, kTitle, steps); }

  // Step 1's lines that the dialog shows, or those of them checked.
  std::vector<std::string> Lines(bool checkedOnly = false) {
    std::vector<std::string> out;
    for (const Control& c : Ui().DialogControls())
      if (c.kind == "check" && (!checkedOnly || c.checked)) out.push_back(c.text);
    return out;
  }
  // Whether the box beside a caption comes to read text.
  bool Reads(const std::string& caption, const std::string& text) {
    return Eventually([&] { return Beside(caption).text == text; });
  }
  void Next() {
    Ui().ClickInDialog("Next >");
    ASSERT_TRUE(Shows("Step 2 of 2 - Set Symbol Types, Styles, and Connectors"));
  }

  // The texts of the label boxes on a sheet, groups opened.
  static std::multiset<std::string> LabelTexts(const office::Worksheet& sheet) {
    std::multiset<std::string> out;
    office::Shapes shapes = sheet.GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      std::vector<Shape> inside = s.Type() == office::msoGroup ? s.GroupItems() : std::vector<Shape>{s};
      for (Shape& item : inside)
        if (item.Type() == office::msoTextBox) out.insert(item.GetTextFrame().GetCharacters().Text());
    }
    return out;
  }
  // The symbols on a sheet, by their text.
  static std::optional<Shape> Symbol(const office::Worksheet& sheet, const std::string& text) {
    office::Shapes shapes = sheet.GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = shapes.Item(i);
      if (s.Type() == office::msoAutoShape && !s.Connector() && s.GetTextFrame().GetCharacters().Text() == text)
        return s;
    }
    return std::nullopt;
  }
  office::Worksheet Output() { return *host::ExcelApp->ActiveSheet(); }

  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;
};

TEST_F(FlowchartWizardDialogTest, UncheckingEveryLineConvertsNothingAndListsTheTextsInColumnA) {
  sheet_->GetRange("B2").SetValue("Receive order");
  sheet_->GetRange("B3").SetValue("Ship it");
  Open([&] {
    EXPECT_EQ((std::vector<std::string>{"Receive order (B2)", "Ship it (B3)"}), Lines(true))
        << "a line for each text, every line checked";
    Ui().ClickInDialog("Receive order (B2)");
    Ui().ClickInDialog("Ship it (B3)");
    EXPECT_TRUE(Eventually([&] { return Lines(true).empty(); }));
    EXPECT_EQ(2u, Lines().size());
    Next();
    EXPECT_TRUE(Listed().empty()) << "step 2 shows no row";
    Ui().ClickInDialog("Finish");
  });
  office::Workbook book = sheet_->Parent();
  for (int i = 1; i <= book.SheetCount(); ++i)
    EXPECT_EQ(0, book.Sheet(i).GetShapes().Count()) << "sheet " << i;
  EXPECT_EQ("Receive order", sheet_->GetRange("A1").Text());
  EXPECT_EQ("Ship it", sheet_->GetRange("A2").Text());
  EXPECT_EQ("", sheet_->GetRange("A3").Text());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowchartWizardDialogTest, MoreLinesThanTheListHoldsScrollAndALineUncheckedBelowTheFoldIsLeftOut) {
  for (int i = 1; i <= 17; ++i) sheet_->GetRange("B" + std::to_string(i + 1)).SetValue("Step " + std::to_string(i));
  auto line = [](int i) { return "Step " + std::to_string(i) + " (B" + std::to_string(i + 1) + ")"; };
  Open([&] {
    std::vector<std::string> shown = Lines(true);
    ASSERT_EQ(15u, shown.size()) << "fifteen lines show, all checked";
    EXPECT_EQ(line(1), shown.front());
    EXPECT_EQ(line(15), shown.back());
    Ui().ClickScrollBar(0, true);
    Ui().ClickScrollBar(0, true);
    EXPECT_TRUE(Eventually([&] { return Lines().front() == line(3); })) << ::testing::PrintToString(Lines());
    EXPECT_EQ(line(17), Lines().back());
    Ui().ClickInDialog(line(17));
    EXPECT_TRUE(Eventually([&] { return Lines(true).size() == 14; }));
    Next();
    std::vector<std::string> rows;
    EXPECT_TRUE(Eventually([&] { return (rows = Listed()).size() == 16; })) << ::testing::PrintToString(rows);
    EXPECT_EQ("1   Step 1   2", rows.front());
    EXPECT_EQ("16   Step 16   17", rows.back()) << "no row below to connect to instead";
    Ui().ClickInDialog("Cancel");
  });
}

TEST_F(FlowchartWizardDialogTest, ASpacingBoxKeepsToZeroToTenOnLeavingAndItsSpinButtonStepsIt) {
  sheet_->GetRange("B2").SetValue("Start");
  const std::string rows = "Grid rows between symbols", columns = "Grid columns between symbols";
  Open([&] {
    EXPECT_EQ("2", Beside(rows).text);
    EXPECT_EQ("4", Beside(columns).text);
    TypeBeside(rows, "15");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Reads(rows, "10")) << "above 10 is 10, not " << Beside(rows).text;
    TypeBeside(rows, "3");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Reads(rows, "3")) << Beside(rows).text;
    TypeBeside(rows, "abc");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Reads(rows, "3")) << "letters give the last good value back, not " << Beside(rows).text;
    TypeBeside(rows, "");
    Ui().PressDialogKey("TAB");
    EXPECT_TRUE(Reads(rows, "0")) << "a blank box is 0, not " << Beside(rows).text;
    // The focus is on the spin button beside the box now.
    Ui().PressDialogKey("UP");
    EXPECT_TRUE(Reads(rows, "1")) << Beside(rows).text;
    Ui().PressDialogKey("DOWN");
    Ui().PressDialogKey("DOWN");
    EXPECT_TRUE(Reads(rows, "0")) << "never below 0, not " << Beside(rows).text;
    TypeBeside(columns, "7");
    Ui().PressDialogKey("TAB");
    Ui().PressDialogKey("UP");
    EXPECT_TRUE(Reads(columns, "8")) << "a number typed counts before the spin button's step, not "
                                     << Beside(columns).text;
    Ui().ClickInDialog("Cancel");
  });
}

TEST_F(FlowchartWizardDialogTest, BranchLabelsAreEditedOnDecisionRowsOnlyAndTheLastTypedAreDrawn) {
  sheet_->GetRange("B2").SetValue("Is it in stock?");
  sheet_->GetRange("B3").SetValue("Ship it");
  office::UndoList undo(sheet_->Parent());
  size_t entries = undo.Titles().size();
  Open([&] {
    Next();
    const std::vector<std::string> rows = {"1   Is it in stock?   2", "2   Ship it"};
    EXPECT_TRUE(Eventually([&] { return Listed() == rows; })) << ::testing::PrintToString(Listed());
    // The decision is the current row: its labels, from the settings.
    EXPECT_TRUE(Beside("Right:").enabled);
    EXPECT_EQ("No", Beside("Right:").text);
    EXPECT_EQ("Yes", Beside("Bottom:").text);
    TypeBeside("Right:", "Nope");
    Ui().ClickItem(rows[1]);
    EXPECT_TRUE(Eventually([&] { return !Beside("Right:").enabled; }));
    for (const char* side : {"Top:", "Right:", "Bottom:", "Left:"}) {
      EXPECT_FALSE(Beside(side).enabled) << side;
      EXPECT_EQ("", Beside(side).text) << side;
    }
    Ui().ClickItem(rows[0]);
    EXPECT_TRUE(Eventually([&] { return Beside("Right:").enabled; }));
    EXPECT_EQ("Nope", Beside("Right:").text) << "the edited label came back";
    EXPECT_EQ("Yes", Beside("Bottom:").text);
    TypeBeside("Bottom:", "Sure");
    EXPECT_TRUE(Reads("Bottom:", "Sure"));
    Ui().ClickInDialog("Finish");  // still on the decision
  });
  office::Worksheet output = Output();
  EXPECT_FALSE(output.SameAs(*sheet_)) << "the chart goes on a new sheet";
  EXPECT_EQ((std::multiset<std::string>{"Nope", "Sure"}), LabelTexts(output));
  EXPECT_TRUE(Symbol(output, "Is it in stock?").has_value());
  EXPECT_TRUE(Symbol(output, "Ship it").has_value());
  EXPECT_FALSE(host::ExcelApp->ActiveWindow()->DisplayGridlines()) << "the shipped settings hide them";
  ASSERT_EQ(entries + 1, undo.Titles().size()) << "one entry of the undo list";
  EXPECT_EQ("Nivarel: Flowchart Wizard", undo.Titles().front());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(FlowchartWizardDialogTest, AStyleForAllSymbolsIsKeptForLaterRunsAndOneForTheCurrentSymbolIsNot) {
  sheet_->GetRange("B2").SetValue("Receive order");
  sheet_->GetRange("B3").SetValue("Pack it");
  int16_t shipped = testing::SavedSettings().StyleId;
  ASSERT_NE(1, shipped);
  auto pick = [&](int column, int row, const std::string& appliesTo) {
    Ui().ClickInDialog("Change Style...");
    ASSERT_TRUE(WaitForTitle("  Select Symbol Style"));
    ASSERT_TRUE(WaitForDialog("  Select Symbol Style"));
    Ui().ClickPicture(0, (column + 0.5) / 7, (row + 0.5) / 6);
    Ui().ClickInDialog(appliesTo);
    Ui().ClickInDialog("OK");
    ASSERT_TRUE(WaitForTitle(kTitle));
  };
  Open([&] {
    Next();
    pick(0, 0, "Apply to all symbols");  // style 1
    // Saved by the wizard once the picker has handed it back: the focus may
    // come back to the wizard a moment before.
    for (int i = 0; i < 100 && testing::SavedSettings().StyleId != 1; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(1, testing::SavedSettings().StyleId) << "saved as the picker closes";
    pick(1, 1, "Apply to current symbol");  // style 9, for the first row
    EXPECT_EQ(1, testing::SavedSettings().StyleId);
    Ui().ClickInDialog("Finish");
  });
  office::Worksheet output = Output();
  auto first = Symbol(output, "Receive order"), second = Symbol(output, "Pack it");
  ASSERT_TRUE(first && second);
  EXPECT_EQ(kStyle9Fill, first->Fill().ForeColor().RGB());
  EXPECT_EQ(kStyle1Fill, second->Fill().ForeColor().RGB());
  EXPECT_EQ(kStyle1Line, second->Line().ForeColor().RGB());
  EXPECT_EQ(1, testing::SavedSettings().StyleId);
}

TEST_F(FlowchartWizardDialogTest, CancelLeavesTheSheetAsItWas) {
  sheet_->GetRange("B2").SetValue("Receive order");
  sheet_->GetRange("C4").SetValue("Ship it");
  office::UndoList undo(sheet_->Parent());
  std::vector<std::string> titles = undo.Titles();
  Open([&] {
    Ui().ClickInDialog("Ship it (C4)");
    EXPECT_TRUE(Eventually([&] { return Lines(true).size() == 1; }));
    Next();
    EXPECT_TRUE(Eventually([&] { return Listed() == std::vector<std::string>{"1   Receive order"}; }))
        << ::testing::PrintToString(Listed());
    Ui().ClickInDialog("< Back");
    ASSERT_TRUE(Shows("Step 1 of 2 - Select Text to Convert to Flowchart"));
    EXPECT_EQ((std::vector<std::string>{"Receive order (B2)"}), Lines(true)) << "the choice stays";
    Ui().ClickInDialog("Cancel");
  });
  EXPECT_EQ(1, sheet_->Parent().SheetCount());
  EXPECT_EQ(0, sheet_->GetShapes().Count());
  EXPECT_EQ("Receive order", sheet_->GetRange("B2").Text());
  EXPECT_EQ("Ship it", sheet_->GetRange("C4").Text());
  EXPECT_EQ("", sheet_->GetRange("A1").Text());
  EXPECT_TRUE(host::ExcelApp->ActiveWindow()->DisplayGridlines());
  EXPECT_EQ(titles, undo.Titles());
}

}  // namespace
}  // namespace nivarel
