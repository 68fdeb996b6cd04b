// The language of cell text, on a real sheet: the symbol each text selects,
// the label that "LBL:" drops and the reserved words that clear their cell
// (the word "lbl" itself asks for a label: see the small prompts).
#include <gtest/gtest.h>

#include "CConfig.h"
#include "CTextParser.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "AddinFixture.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using flowcharting::CTextParser;
using rules::CConfig;
using rules::RuleTable;

// The settings' defaults, as an empty settings file gives them.
CConfig Defaults() {
  CConfig c;
  c.PrefixDelimiter = ":";
  c.Capitalize = true;
  c.QuestionMarkIsDecision = true;
  c.OffPageReference = true;
  c.OnPageReference = true;
  c.BranchFontName = "Tahoma";
  c.BranchFontSize = 8;
  return c;
}

class TextParserTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    for (int16_t id : {61, 63, 69, 73, 74}) {
      auto s = std::make_shared<rules::CSymbol>();
      s->SymbolId = id;
      symbols_.AddSymbol(s);
    }
  }

  // Parses text typed into C3.
  CTextParser Parse(const std::string& text, const CConfig& config) {
    sheet_->GetRange("C3").SetValue(text);
    CTextParser parser;
    parser.ParseText(text, config, *sheet_, prefixes_, keywords_, symbols_, "C3", "AutoShape 1");
    return parser;
  }

  RuleTable prefixes_;
  RuleTable keywords_ = {{"1", "69", "STOP"}};
  rules::CSymbolData symbols_;
};

TEST_F(TextParserTest, EveryFormOfCellText) {
  struct Case {
    const char* input;
    const char* prefix;
    const char* text;
    int type;          // 0: no symbol (label or reserved word)
    bool powerString;
    bool reserved;
  };
  const Case cases[] = {
      {"", "", " ", 73, false, false},
      {"check stock", "", "Check stock", 61, false, false},
      {"is it ok?", "", "Is it ok?", 63, false, false},
      {"12", "", "12", 74, false, false},
      {"a", "", "A", 73, false, false},
      {"ok", "", "Ok", 61, false, false},
      {"OK", "", "OK", 73, false, false},
      {"Time 10:30", "TIME 10", "30", 74, false, false},
      {"Stop here", "", "Stop here", 69, false, false},
      {"stopping", "", "Stopping", 61, false, false},
      {"nonstop", "", "Nonstop", 61, false, false},
      {"all stop", "", "All stop", 69, false, false},
      {"a-stop-b", "", "A-stop-b", 69, false, false},
      {"stops stop", "", "Stops stop", 61, false, false},
      {"LBL: Note", "LBL", "Note", 0, true, false},
      {"lbl:note", "LBL", "Note", 0, true, false},
      {"LBL:", "LBL", " ", 73, false, false},
  };
  const CConfig config = Defaults();
  office::Shapes shapes = sheet_->GetShapes();
  for (const Case& c : cases) {
    int before = shapes.Count();
    CTextParser p = Parse(c.input, config);
    EXPECT_EQ(c.prefix, p.Prefix()) << c.input;
    EXPECT_EQ(c.text, p.Text()) << c.input;
    EXPECT_EQ(c.powerString, p.IsPowerString()) << c.input;
    EXPECT_EQ(c.reserved, p.IsReserved()) << c.input;
    if (c.type) EXPECT_EQ(c.type, p.ShapeType()) << c.input;
    if (c.powerString || c.reserved)
      EXPECT_EQ("", sheet_->GetRange("C3").Text()) << c.input << ": the cell is cleared";
    else
      EXPECT_EQ(c.input, sheet_->GetRange("C3").Text()) << c.input << ": the cell is left alone";
    EXPECT_EQ(before + (c.powerString ? 1 : 0), shapes.Count()) << c.input;
    EXPECT_EQ("AutoShape 1", p.LastShapeName());
    EXPECT_FALSE(p.LastShapeChanged());
    EXPECT_FALSE(p.HasName() || p.HasFlowLine() || p.HasHyperlink() || p.HasTopBranch()) << c.input;
  }

  // The label: borderless, in the branch font, at the cell, sized to its text.
  office::Shape label = shapes.Item(shapes.Count());
  EXPECT_EQ(office::msoTextBox, label.Type());
  EXPECT_EQ("Note", label.GetTextFrame().GetCharacters().Text());
  EXPECT_NEAR(sheet_->GetRange("C3").Left(), label.Left(), 0.1);
  EXPECT_NEAR(sheet_->GetRange("C3").Top(), label.Top(), 0.1);
  EXPECT_FALSE(label.Line().Visible());
  EXPECT_EQ("Tahoma", label.GetTextFrame().GetCharacters().GetFont().Name());
  EXPECT_LT(label.Width(), 100) << "the box shrinks to its text";

  // The prefix plays no part: "x:fl" is the word FL, which opens the flow
  // line tool.
  sheet_->GetRange("C3").SetValue("x:fl");
  CTextParser fl;
  Drive([&] { fl.ParseText("x:fl", config, *sheet_, prefixes_, keywords_, symbols_, "C3", "AutoShape 1"); },
        " Insert Flow Line Connector", [&] { Ui().ClickInDialog("Don't add flow line"); });
  EXPECT_TRUE(fl.IsReserved());
  EXPECT_EQ("X", fl.Prefix());
  EXPECT_EQ("", sheet_->GetRange("C3").Text()) << "the cell is cleared";
}

// BR opens the branch tool over the sheet; however the tool ends, the run is
// told to go on from the symbol the tool names, here the one it was given.
TEST_F(TextParserTest, BROpensTheBranchToolAndHandsOnItsLastSymbol) {
  auto folder = testing::ShippedSettings("text-parser-br");
  sheet_->GetRange("C3").SetValue("br");
  CTextParser p;
  Drive([&] { p.ParseText("br", Defaults(), *sheet_, prefixes_, keywords_, symbols_, "C3", "AutoShape 1"); },
        " Insert Branch", [&] { Ui().ClickInDialog("Cancel"); });
  EXPECT_TRUE(p.IsReserved());
  EXPECT_EQ("", sheet_->GetRange("C3").Text()) << "the cell is cleared";
  EXPECT_EQ(0, sheet_->GetShapes().Count());
  EXPECT_TRUE(p.LastShapeChanged());
  EXPECT_EQ("AutoShape 1", p.LastShapeName());
}

TEST_F(TextParserTest, SettingsAndTablesChangeTheOutcome) {
  CConfig noQuestions = Defaults();
  noQuestions.QuestionMarkIsDecision = false;
  EXPECT_EQ(61, Parse("why?", noQuestions).ShapeType());
  EXPECT_EQ(73, Parse("?", noQuestions).ShapeType());

  CConfig noReferences = Defaults();
  noReferences.OffPageReference = false;
  noReferences.OnPageReference = false;
  keywords_ = {{"1", "62", "12"}};
  EXPECT_EQ(62, Parse("12", noReferences).ShapeType()) << "a number goes on to the keyword search";
  EXPECT_EQ(73, Parse("A", noReferences).ShapeType()) << "short capital text doesn't ask the setting";

  rules::CSymbolData without74;
  CTextParser p;
  p.ParseText("12", Defaults(), *sheet_, prefixes_, keywords_, without74, "C3", "");
  EXPECT_EQ(73, p.ShapeType()) << "no off-page symbol in force: an on-page one";

  // Prefixes: the lowest order wins, case doesn't matter, unknown ones vanish.
  prefixes_ = {{"1", "63", "D"}, {"2", "69", "D"}, {"3", "67", "DOC"}};
  EXPECT_EQ(63, Parse("d: Is it there", Defaults()).ShapeType());
  EXPECT_EQ(67, Parse("Doc:invoice", Defaults()).ShapeType());
  CTextParser unknown = Parse("zz: plain words", Defaults());
  EXPECT_EQ("ZZ", unknown.Prefix());
  EXPECT_EQ("Plain words", unknown.Text());
  EXPECT_EQ(61, unknown.ShapeType());

  // Keywords: phrases match whole words; the lower order wins.
  keywords_ = {{"1", "69", "THE END"}, {"2", "67", "END"}};
  EXPECT_EQ(69, Parse("the end", Defaults()).ShapeType());
  EXPECT_EQ(67, Parse("end of month", Defaults()).ShapeType());
  EXPECT_EQ(61, Parse("the ending", Defaults()).ShapeType());
  EXPECT_EQ(67, Parse("caféend", Defaults()).ShapeType()) << "bytes past ASCII are not letters";

  // Other delimiters: the text starts one character behind the delimiter's start.
  CConfig twoChars = Defaults();
  twoChars.PrefixDelimiter = "::";
  CTextParser two = Parse("d::x", twoChars);
  EXPECT_EQ("D", two.Prefix());
  EXPECT_EQ(":x", two.Text());
  CConfig lower = Defaults();
  lower.Capitalize = false;
  EXPECT_EQ("check", Parse("check", lower).Text());
}

}  // namespace
}  // namespace nivarel
