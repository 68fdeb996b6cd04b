// Symbols sized to their text on the grid, measured by the office itself:
// heights in whole rows, widths by class, texts kept as typed.
#include <gtest/gtest.h>

#include <cmath>

#include "CConfig.h"
#include "CShapeAdder.h"
#include "CShapeDimensions.h"
#include "CShapeFormatter.h"
#include "CShapeWizard.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "AddinFixture.h"
#include "Range.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using shapes::CShapeAdder;
using shapes::CShapeDimensions;

rules::CConfig Defaults() {
  rules::CConfig c;
  c.AutosizeHeight = true;
  c.SmartSizing = true;
  c.FontName = "Liberation Sans";
  c.FontSize = 8;
  c.HorizontalAlignment = -4108;
  c.VerticalAlignment = -4108;
  c.StyleId = 2;
  return c;
}

void Add(rules::CSymbolData& symbols, int16_t id, int16_t width, int16_t height) {
  auto s = std::make_shared<rules::CSymbol>();
  s->SymbolId = id;
  s->StyleId = 43;
  s->Width = width;
  s->MinHeight = height;
  symbols.AddSymbol(s);
}

class ShapeSizingTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    ASSERT_TRUE(host::GlobalRowHeightSet);
    Add(symbols_, 61, 8, 2);
    Add(symbols_, 63, 8, 4);
    Add(symbols_, 69, 6, 2);
    Add(symbols_, 73, 2, 2);
    ws_ = *sheet_;
  }
  // A symbol drawn at the cell and sized to its text; its rows.
  int Rows(int16_t type, const std::string& text, const rules::CConfig& config, bool newColumn = false,
           std::optional<office::Shape>* out = nullptr) {
    std::optional<office::Shape> shape =
        adder_.AddShape(ws_, symbols_, config, formatter_, text, "E5", type, "");
    EXPECT_TRUE(shape.has_value());
    if (!shape) return -1;
    CShapeDimensions dims;
    dims.SetShapeDimensions(*shape, config, symbols_, 8, newColumn, text);
    double rows = shape->Height() / host::GlobalRowHeight;
    EXPECT_NEAR(std::round(rows), rows, 0.01) << text << ": height in whole rows";
    if (out) *out = shape;
    return static_cast<int>(std::lround(rows));
  }

  rules::CSymbolData symbols_;
  shapes::CShapeFormatter formatter_;
  CShapeAdder adder_;
  std::optional<office::Worksheet> ws_;
};

// The sheet's font for these tests is Liberation Sans 8 pt: a line is 8.93 pt
// high, "W" is 7.55 pt wide, "abcd" 17.4 pt and a blank 2.2 pt. A grid unit U
// is 12.8 pt, the fit margin M 2.16 pt; a process shape keeps the automatic
// insets of 7.2 pt at the sides and 3.6 pt above and below. So a process line
// may hold 8 × 12.8 + 2.16 − 14.4 = 90.2 pt of text, and n lines are
// n × 8.93 + 7.2 pt high.
// Widths are measured word by word in the font and summed with the blanks;
// the shape lays out the whole line, so a pair kerned across a blank could
// make the drawn line differ from the measure by a fraction of a point. The
// cases keep clear of the limit by more than that, except where a comment
// gives the margin. The heights of the non-Latin case are fitted by the
// office each time (a fallback font may make its lines taller).
TEST_F(ShapeSizingTest, TextsOfEveryKindComeOutInWholeRows) {
  const std::string ten = "one two three four five six seven eight nine ten";
  std::string s250;
  for (int i = 0; i < 50; ++i) s250 += "abcd ";
  const std::string s251 = s250 + "z", s501 = s250 + s250 + "q";
  struct Case {
    const char* name;
    std::string text;
    int process, decision, terminator, connector;
  };
  const Case cases[] = {
      // No text: 2 rows without a measure; each symbol's minimum.
      {"empty", "", 2, 4, 2, 2},
      // One line: 8.93 + 7.2 = 16.1 pt is one row and 3.3 pt, above M: 2.
      {"one word", "Ship", 2, 4, 2, 2},
      // "one two three four five" is 79.1 pt, "six seven eight nine ten" 83.5:
      // two lines, 25.1 pt, 2 rows. The terminator (6 units, 62.6 pt of
      // text) needs three lines. A diamond's text area is half its box, and
      // a connector's smaller still: it grows in squares to 6 by 6.
      {"ten words", ten, 2, 6, 3, 6},
      // Measured as "one two", kept with its hyphen.
      {"hyphen", "one-two", 2, 4, 2, 2},
      // 11 W make 83 pt, 12 make 90.6: six lines of at most 11, 60.8 pt: 4
      // rows and 9.6 pt, above M, so 5.
      {"60 letters", std::string(60, 'W'), 5, 14, 7, 8},
      // Three paragraphs, three lines: 34 pt, 2 rows and 8.4 pt: 3.
      {"paragraphs", "First paragraph here\nSecond one\nThird", 3, 7, 4, 6},
      // Four "abcd" to a line (78.3 pt; five would be 97.8): 50 words make
      // 13 lines, 123.3 pt: 9 rows and 8.1 pt, so 10.
      {"250", s250, 10, 35, 17, 12},
      // "z" joins the 13th line.
      {"251", s251, 10, 35, 17, 12},
      // 100 words make 25 full lines and "q" still fits the last: 230.5 pt
      // is 18 rows and 0.1 pt, within M: 18.
      {"501", s501, 18, 70, 34, 16},
      {"non-ASCII", "Überprüfung der Größe ✓", 2, 4, 2, 4},
  };
  const std::pair<int16_t, int Case::*> types[] = {
      {61, &Case::process}, {63, &Case::decision}, {69, &Case::terminator}, {73, &Case::connector}};
  for (const Case& c : cases) {
    for (const auto& [type, expected] : types) {
      std::optional<office::Shape> shape;
      EXPECT_EQ(c.*expected, Rows(type, c.text, Defaults(), false, &shape)) << c.name << " as " << type;
      double unit = host::GlobalRowHeight;
      int widthClass = type == 73 ? c.*expected : symbols_.GetWidth(type);  // a connector is square
      EXPECT_NEAR(widthClass * unit, shape->Width(), 0.02) << c.name << " as " << type;
      double left = ws_->GetRange("E5").Left() + (type == 73 ? (2 - widthClass) / 2.0 * unit : 0);
      EXPECT_NEAR(left, shape->Left(), 0.02) << c.name << " as " << type;
      EXPECT_NEAR(ws_->GetRange("E5").Top(), shape->Top(), 0.02) << c.name << " as " << type;
      std::string kept = shape->GetTextFrame().GetCharacters().Text();
      EXPECT_EQ(c.text.empty() ? " " : c.text, kept) << c.name << " as " << type << ": the text as typed";
      // Sized, the text block spans the shape again: centred paragraphs
      // are drawn centred in it.
      EXPECT_EQ(office::msoAnchorNone, shape->GetTextFrame2().HorizontalAnchor()) << c.name << " as " << type;
    }
  }
}

TEST_F(ShapeSizingTest, ConnectorsBySmartSizingAndFixedSizes) {
  // A text that fits 2 by 2 stands on the centre line of its column: of its
  // own class, or of the widest class when it starts a new column.
  std::optional<office::Shape> shape;
  Rows(73, "Ship", Defaults(), false, &shape);
  const double left = ws_->GetRange("E5").Left(), unit = host::GlobalRowHeight;
  EXPECT_NEAR(left, shape->Left(), 0.02);
  Rows(73, "Ship", Defaults(), true, &shape);
  EXPECT_NEAR(left + 3 * unit, shape->Left(), 0.02) << "centred on the widest class, 8";
  EXPECT_NEAR(2 * unit, shape->Width(), 0.02);

  // Without smart sizing a connector keeps its class and takes an even
  // number of rows: "A B C D E" wraps to three lines in 2 units (11.2 pt of
  // text), 34 pt, 3 rows, made 4.
  rules::CConfig fixed = Defaults();
  fixed.SmartSizing = false;
  EXPECT_EQ(4, Rows(73, "A B C D E", fixed, true, &shape));
  EXPECT_NEAR(2 * unit, shape->Width(), 0.02);
  EXPECT_NEAR(left, shape->Left(), 0.02) << "no centring without smart sizing";
  EXPECT_EQ(2, Rows(73, "A", fixed, false, &shape)) << "one row, made 2";

  // Height by the symbol's classes alone when heights don't follow the text.
  rules::CConfig classes = Defaults();
  classes.AutosizeHeight = false;
  EXPECT_EQ(2, Rows(61, std::string(60, 'W'), classes));
  EXPECT_EQ(4, Rows(63, std::string(60, 'W'), classes));

  // The batch tools' sizing takes the classes it is given, and centres a
  // connector on the given width class, new column or not.
  shapes::CShapeWizard wizard;
  auto made = adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "Ship", "E5", 73, "");
  wizard.SetShapeDimensions(*made, 73, "Ship", 2, 6, Defaults());
  EXPECT_NEAR(left + 2 * unit, made->Left(), 0.02);
  EXPECT_NEAR(2 * unit, made->Height(), 0.02);
  auto box = adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "Ship", "E5", 61, "");
  wizard.SetShapeDimensions(*box, 61, "Ship", 3, 10, Defaults());
  EXPECT_NEAR(10 * unit, box->Width(), 0.02);
  EXPECT_NEAR(3 * unit, box->Height(), 0.02) << "at least the rows given";
}

TEST_F(ShapeSizingTest, AddingShapesTheirTextsAndDefaults) {
  office::Shapes shapes = ws_->GetShapes();
  auto empty = adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "  ", "C3", 61, "");
  ASSERT_TRUE(empty);
  EXPECT_EQ(" ", empty->GetTextFrame().GetCharacters().Text()) << "the placeholder is gone";
  EXPECT_EQ("Liberation Sans", empty->GetTextFrame().GetCharacters().GetFont().Name());
  EXPECT_NEAR(ws_->GetRange("C3").Left(), empty->Left(), 0.02);
  EXPECT_NEAR(ws_->GetRange("C3").Top(), empty->Top(), 0.02);

  std::string s250(250, 'x'), s251 = s250 + "y", s501 = s250 + s250 + "z";
  EXPECT_EQ(s250, adder_.AddShape(ws_, symbols_, Defaults(), formatter_, s250, "C3", 61, "")
                      ->GetTextFrame().GetCharacters().Text());
  EXPECT_EQ(s250, adder_.AddShape(ws_, symbols_, Defaults(), formatter_, s251, "C3", 61, "")
                      ->GetTextFrame().GetCharacters().Text())
      << "251 characters go in by pieces and lose the last";
  EXPECT_EQ(s250 + s250, adder_.AddShape(ws_, symbols_, Defaults(), formatter_, s501, "C3", 61, "")
                             ->GetTextFrame().GetCharacters().Text());

  // A type not in force draws in the default classes and style.
  auto other = adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "Sort", "C3", 80, "");
  ASSERT_TRUE(other);
  EXPECT_EQ(80, other->AutoShapeType());
  EXPECT_NEAR(8 * host::GlobalRowHeight, other->Width(), 0.02);
  EXPECT_NEAR(2 * host::GlobalRowHeight, other->Height(), 0.02);
  EXPECT_EQ(43, formatter_.GetShapeStyle(*other));

  // Names: given, or the office's own when the name is taken.
  auto named = adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "a", "C3", 61, "Step 1");
  EXPECT_EQ("Step 1", named->Name());
  auto again = adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "b", "C3", 61, "Step 1");
  ASSERT_TRUE(again);
  EXPECT_NE("Step 1", again->Name());
  int count = shapes.Count();
  EXPECT_FALSE(adder_.AddShape(ws_, symbols_, Defaults(), formatter_, "x", "C3", 200, ""))
      << "a type the office can't draw gives no shape and no error";
  EXPECT_EQ(count, shapes.Count());
}

}  // namespace
}  // namespace nivarel
