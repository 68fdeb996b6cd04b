// Styles and text formats of the symbols in a real office: every style id
// reads back as itself on both roads, the looks are really drawn, and each
// format operation runs exactly its own steps.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <functional>
#include <set>

#include "CConfig.h"
#include "CShapeFormatter.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "AddinFixture.h"
#include "ShapeStylePresets.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using namespace host;
using namespace office;
using shapes::CShapeFormatter;

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }
constexpr long kBlack = Rgb(0, 0, 0), kWhite = Rgb(255, 255, 255), kRed = Rgb(255, 0, 0);

class ShapeStylesTest : public testing::AddinFixture {
 protected:

  // A symbol with a word of text, each in a place of its own.
  Shape AddSymbol(int type = msoShapeFlowchartProcess, const std::string& text = "Pack") {
    Shape s = sheet_->GetShapes().AddShape(type, 10 + 90 * (count_ % 8), 10 + 40 * (count_ / 8), 80, 30);
    ++count_;
    if (!text.empty()) s.GetTextFrame().GetCharacters().SetText(text);
    return s;
  }

  static long TextColour(const Shape& s) { return s.GetTextFrame().GetCharacters().GetFont().Color(); }

  static rules::CConfig Config() {
    rules::CConfig c;
    c.FontName = "Liberation Serif";
    c.FontSize = 8.5f;
    c.FontBold = true;
    c.FontItalic = true;
    c.HorizontalAlignment = xlLeft;
    c.VerticalAlignment = xlTop;
    c.BranchFontName = "Liberation Mono";
    c.BranchFontSize = 7;
    c.BranchFontColor = kRed;
    return c;
  }

  CShapeFormatter formatter_;

 private:
  int count_ = 0;
};

TEST_F(ShapeStylesTest, EveryStyleIdReadsBackOnTheVersion12Road) {
  rules::CConfig config = Config();
  std::set<long> plainFills;
  for (int16_t id = 1; id <= 84; ++id) {
    SCOPED_TRACE("style " + std::to_string(id));
    Shape s = AddSymbol();
    if (id % 2) formatter_.SetAllFormatSettings(s, config, id);
    else formatter_.SetStyleOnly(s, id);
    EXPECT_EQ(id, formatter_.GetShapeStyle(s));
    EXPECT_EQ(id <= 42 ? id : 0, s.ShapeStyle()) << "only themed ids are kept as the host's style";
    // The look as the office draws it: the themed preset, or a plain solid
    // fill with a thin black outline and no shadow.
    if (const ShapeStylePreset* p = FindShapeStylePreset(id)) {
      EXPECT_EQ(p->fill, s.Fill().ForeColor().RGB());
      EXPECT_EQ(p->fillKind == StyleFill::kGradient, s.Fill().IsGradient());
      EXPECT_EQ(p->line, s.Line().ForeColor().RGB());
      EXPECT_DOUBLE_EQ(p->lineWeight, s.Line().Weight());
      EXPECT_EQ(p->shadow, s.Shadow().Visible());
    } else {
      EXPECT_TRUE(s.Fill().Visible());
      EXPECT_FALSE(s.Fill().IsGradient());
      EXPECT_TRUE(s.Line().Visible());
      EXPECT_EQ(kBlack, s.Line().ForeColor().RGB());
      EXPECT_DOUBLE_EQ(0.75, s.Line().Weight());
      EXPECT_FALSE(s.Shadow().Visible());
      plainFills.insert(s.Fill().ForeColor().RGB());
    }
  }
  EXPECT_EQ(42u, plainFills.size()) << "each plain style has a fill of its own, by which it reads back";
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(ShapeStylesTest, ThemedStylesDrawTheirLookOnTheVersion12Road) {
  // A themed style replaces whatever the shape had before.
  Shape outline = AddSymbol();
  outline.Fill().ForeColor().SetRGB(kRed);
  outline.Shadow().SetVisible(true);
  formatter_.SetStyleOnly(outline, 2);
  EXPECT_EQ(kWhite, outline.Fill().ForeColor().RGB());
  EXPECT_FALSE(outline.Fill().IsGradient());
  EXPECT_EQ(Rgb(79, 129, 189), outline.Line().ForeColor().RGB());
  EXPECT_DOUBLE_EQ(2, outline.Line().Weight());
  EXPECT_FALSE(outline.Shadow().Visible());
  EXPECT_EQ(kBlack, TextColour(outline));

  Shape filled = AddSymbol();
  formatter_.SetStyleOnly(filled, 10);
  EXPECT_EQ(Rgb(192, 80, 77), filled.Fill().ForeColor().RGB());
  EXPECT_EQ(Rgb(140, 56, 54), filled.Line().ForeColor().RGB());
  EXPECT_EQ(kWhite, TextColour(filled));

  Shape raised = AddSymbol();
  formatter_.SetStyleOnly(raised, 18);
  EXPECT_EQ(Rgb(155, 187, 89), raised.Fill().ForeColor().RGB());
  EXPECT_EQ(kWhite, raised.Line().ForeColor().RGB());
  EXPECT_DOUBLE_EQ(3, raised.Line().Weight());
  EXPECT_TRUE(raised.Shadow().Visible());
  EXPECT_EQ(kBlack, raised.Shadow().ForeColor().RGB());
  EXPECT_NEAR(0, raised.Shadow().OffsetX(), 0.03);
  EXPECT_NEAR(1.575, raised.Shadow().OffsetY(), 0.03);
  EXPECT_NEAR(0.62, raised.Shadow().Transparency(), 0.005);

  Shape light = AddSymbol();
  formatter_.SetStyleOnly(light, 26);
  EXPECT_TRUE(light.Fill().IsGradient());
  EXPECT_EQ(Rgb(201, 181, 232), light.Fill().ForeColor().RGB());
  EXPECT_EQ(Rgb(240, 234, 249), light.Fill().BackColor().RGB());
  EXPECT_EQ(Rgb(125, 96, 160), light.Line().ForeColor().RGB());
  EXPECT_DOUBLE_EQ(0.75, light.Line().Weight());
  EXPECT_EQ(kBlack, TextColour(light));

  Shape dark = AddSymbol();
  formatter_.SetStyleOnly(dark, 42);
  EXPECT_TRUE(dark.Fill().IsGradient());
  EXPECT_EQ(Rgb(203, 108, 29), dark.Fill().ForeColor().RGB());
  EXPECT_EQ(Rgb(255, 143, 38), dark.Fill().BackColor().RGB());
  EXPECT_NEAR(1.811, dark.Shadow().OffsetY(), 0.03);
  EXPECT_NEAR(0.65, dark.Shadow().Transparency(), 0.005);
  EXPECT_EQ(kWhite, TextColour(dark));
}

TEST_F(ShapeStylesTest, TheHostDrawsEachPresetAndKeepsItsId) {
  for (int id = kFirstShapeStylePreset; id <= kLastShapeStylePreset; ++id) {
    SCOPED_TRACE("preset " + std::to_string(id));
    const ShapeStylePreset* p = FindShapeStylePreset(id);
    ASSERT_NE(nullptr, p);
    Shape s = AddSymbol();
    s.GetTextFrame().SetMarginLeft(4);
    s.SetShapeStyle(id);
    EXPECT_EQ(id, s.ShapeStyle());
    EXPECT_NEAR(4, s.GetTextFrame().MarginLeft(), 0.03) << "the outline's weight leaves the margins alone";
    EXPECT_EQ(p->fill, s.Fill().ForeColor().RGB());
    EXPECT_EQ(p->fillKind == StyleFill::kGradient, s.Fill().IsGradient());
    if (p->fillKind == StyleFill::kGradient) {
      EXPECT_EQ(p->fill2, s.Fill().BackColor().RGB());
    }
    EXPECT_TRUE(s.Line().Visible());
    EXPECT_EQ(p->line, s.Line().ForeColor().RGB());
    EXPECT_DOUBLE_EQ(p->lineWeight, s.Line().Weight());
    EXPECT_EQ(p->shadow, s.Shadow().Visible());
    EXPECT_EQ(p->text, TextColour(s));
  }
  EXPECT_EQ(nullptr, FindShapeStylePreset(0));
  EXPECT_EQ(nullptr, FindShapeStylePreset(43));
  Shape s = AddSymbol();
  EXPECT_THROW(s.SetShapeStyle(43), HostError);
  EXPECT_EQ(0, s.ShapeStyle());
}

TEST_F(ShapeStylesTest, TheBandRoadBuildsEachLookAndReadsItBack) {
  TakeTheRoadBelowVersion12();
  for (int16_t id = 1; id <= 84; ++id) {
    SCOPED_TRACE("style " + std::to_string(id));
    Shape s = AddSymbol();
    formatter_.SetStyleOnly(s, id);
    // The last band has the colours and shadow of the one before it.
    int16_t expected = id >= 36 && id <= 42 ? id - 7 : id;
    EXPECT_EQ(expected, formatter_.GetShapeStyle(s));
  }
  EXPECT_EQ("", ReadLogFile());

  Shape five = AddSymbol();
  formatter_.SetStyleOnly(five, 5);
  EXPECT_EQ(5, formatter_.GetShapeStyle(five));
  EXPECT_EQ(kWhite, five.Fill().ForeColor().RGB());
  EXPECT_EQ(Rgb(128, 100, 162), five.Line().ForeColor().RGB());
  EXPECT_DOUBLE_EQ(2, five.Line().Weight());
  EXPECT_FALSE(five.Shadow().Visible());
  EXPECT_EQ(kBlack, TextColour(five));

  Shape forty = AddSymbol();
  formatter_.SetStyleOnly(forty, 40);
  EXPECT_EQ(33, formatter_.GetShapeStyle(forty));
  EXPECT_TRUE(forty.Fill().IsGradient());
  EXPECT_EQ(Rgb(93, 65, 126), forty.Fill().ForeColor().RGB());
  EXPECT_EQ(Rgb(123, 87, 168), forty.Fill().BackColor().RGB());
  EXPECT_NEAR(1.811, forty.Shadow().OffsetY(), 0.03);
  EXPECT_EQ(kWhite, TextColour(forty));
  EXPECT_THROW(forty.ShapeStyle(), HostError) << "no host style below version 12";
}

TEST_F(ShapeStylesTest, PlainStylesTextColoursAndStylesOutOfRange) {
  TakeTheRoadBelowVersion12();
  struct Case {
    int16_t style;
    long text;
  } cases[] = {{71, kBlack}, {72, kWhite}, {78, kBlack}, {79, kWhite}};
  for (const Case& c : cases) {
    SCOPED_TRACE("style " + std::to_string(c.style));
    Shape s = AddSymbol();
    formatter_.SetStyleOnly(s, c.style);
    EXPECT_EQ(c.text, TextColour(s));
    EXPECT_EQ(kBlack, s.Line().ForeColor().RGB());
    EXPECT_DOUBLE_EQ(0.75, s.Line().Weight());
  }

  // Beyond the table: a white fill with white text.
  Shape beyond = AddSymbol();
  formatter_.SetStyleOnly(beyond, 85);
  EXPECT_EQ(kWhite, beyond.Fill().ForeColor().RGB());
  EXPECT_EQ(kWhite, TextColour(beyond));
  EXPECT_EQ(43, formatter_.GetShapeStyle(beyond));

  // No style at all: the plain white style 43, over a dark look.
  for (int16_t none : {0, -3}) {
    SCOPED_TRACE("style " + std::to_string(none));
    Shape s = AddSymbol();
    formatter_.SetStyleOnly(s, 30);
    formatter_.SetAllFormatSettings(s, Config(), none);
    EXPECT_FALSE(s.Fill().IsGradient());
    EXPECT_EQ(kWhite, s.Fill().ForeColor().RGB());
    EXPECT_EQ(kBlack, s.Line().ForeColor().RGB());
    EXPECT_DOUBLE_EQ(0.75, s.Line().Weight());
    EXPECT_FALSE(s.Shadow().Visible());
    EXPECT_EQ(kBlack, TextColour(s));
    EXPECT_EQ(43, formatter_.GetShapeStyle(s));
  }
}

TEST_F(ShapeStylesTest, LooksAreReadByLineWeightShadowAndColours) {
  TakeTheRoadBelowVersion12();
  // White fill, the outline colour of style 3, no shadow: the weight decides.
  auto outlined = [&](double weight) {
    Shape s = AddSymbol();
    s.Fill().ForeColor().SetRGB(kWhite);
    s.Line().ForeColor().SetRGB(Rgb(192, 80, 77));
    s.Line().SetWeight(weight);
    s.Shadow().SetVisible(false);
    return formatter_.GetShapeStyle(s);
  };
  EXPECT_EQ(3, outlined(2.4));
  EXPECT_EQ(3, outlined(1.6));
  EXPECT_EQ(43, outlined(2.5));
  EXPECT_EQ(43, outlined(1.5));

  // With a shadow the weight, then the shadow's offset choose the band whose fills are searched.
  auto shadowed = [&](long fill, double weight, double offsetY) {
    Shape s = AddSymbol();
    s.Fill().ForeColor().SetRGB(fill);
    s.Line().SetWeight(weight);
    s.Shadow().SetVisible(true);
    s.Shadow().SetOffsetY(offsetY);
    return formatter_.GetShapeStyle(s);
  };
  const long fill17 = Rgb(192, 80, 77), fill24 = Rgb(255, 162, 161), fill31 = Rgb(155, 45, 42);
  EXPECT_EQ(17, shadowed(fill17, 3, 1.575));
  EXPECT_EQ(10, shadowed(fill17, 2.25, 1.575)) << "the first band test comes first";
  EXPECT_EQ(66, shadowed(fill17, 0.75, 1.575)) << "no shadowed band of a thin line has it: the plain one does";
  EXPECT_EQ(24, shadowed(fill24, 2.0, 1.575));
  EXPECT_EQ(43, shadowed(fill24, 2.25, 1.575)) << "above 2 points only the white-outlined band is searched";
  EXPECT_EQ(43, shadowed(fill24, 0.75, 1.811));
  EXPECT_EQ(31, shadowed(fill31, 0.75, 1.811));
  EXPECT_EQ(43, shadowed(fill31, 0.75, 1.575));

  // An unknown fill answers the plain white style.
  Shape odd = AddSymbol();
  formatter_.SetStyleOnly(odd, 50);
  odd.Fill().ForeColor().SetRGB(Rgb(1, 2, 3));
  EXPECT_EQ(43, formatter_.GetShapeStyle(odd));
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(ShapeStylesTest, AFailedReadIsLoggedAndAnswersThePlainStyle) {
  Shape s = AddSymbol();
  formatter_.SetStyleOnly(s, 50);
  // The office below version 12 refuses ShapeStyle, which the version-12 road asks first.
  TakeTheRoadBelowVersion12();
  ExcelVersion = 12;
  EXPECT_EQ(43, formatter_.GetShapeStyle(s));
  std::string log = ReadLogFile();
  EXPECT_NE(std::string::npos, log.find("[Error]; CShapeFormatter.GetShapeStyle; Error 438: ")) << log;
  EXPECT_NE(std::string::npos, log.find("(GetShapeStyle)")) << log;
  EXPECT_EQ(1, std::count(log.begin(), log.end(), '\n')) << log;
}

TEST_F(ShapeStylesTest, LineColourMatchIsTheFirstIdInTheRange) {
  EXPECT_EQ(2, formatter_.GetLineForeColorMatch(Rgb(79, 129, 189), 1, 84));
  EXPECT_EQ(0, formatter_.GetLineForeColorMatch(Rgb(79, 129, 189), 3, 84));
  EXPECT_EQ(1, formatter_.GetLineForeColorMatch(kBlack, 1, 7));
  EXPECT_EQ(0, formatter_.GetLineForeColorMatch(kBlack, 2, 7));
  EXPECT_EQ(8, formatter_.GetLineForeColorMatch(kBlack, 2, 14));
  EXPECT_EQ(15, formatter_.GetLineForeColorMatch(kWhite, 1, 84));
  EXPECT_EQ(43, formatter_.GetLineForeColorMatch(kBlack, 43, 84)) << "plain styles have a black outline";
  EXPECT_EQ(33, formatter_.GetLineForeColorMatch(Rgb(125, 96, 160), 27, 42));
  EXPECT_EQ(0, formatter_.GetLineForeColorMatch(kRed, 1, 84));
  EXPECT_EQ(0, formatter_.GetLineForeColorMatch(kBlack, 7, 1));
}

TEST_F(ShapeStylesTest, TheFontSizeIsWholeOutsideTheWizards) {
  rules::CConfig config = Config();
  struct Case {
    const char* operation;
    std::function<void(Shape&)> format;
    double size;
  } cases[] = {
      {"SetAllFormatSettings", [&](Shape& s) { formatter_.SetAllFormatSettings(s, config, 43); }, 8},
      {"SetFontProperties", [&](Shape& s) { formatter_.SetFontProperties(s, config); }, 8},
      {"SetWizardFormatSettings", [&](Shape& s) { formatter_.SetWizardFormatSettings(s, config, 43); }, 8.5},
      {"SetStyleWizardFormatSettings", [&](Shape& s) { formatter_.SetStyleWizardFormatSettings(s, config, 43); }, 8.5},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.operation);
    Shape s = AddSymbol();
    c.format(s);
    Font font = s.GetTextFrame().GetCharacters().GetFont();
    EXPECT_DOUBLE_EQ(c.size, font.Size());
    EXPECT_EQ("Liberation Serif", font.Name());
    EXPECT_TRUE(font.Bold());
    EXPECT_TRUE(font.Italic());
  }
}

TEST_F(ShapeStylesTest, EachOperationRunsOnlyItsOwnSteps) {
  rules::CConfig config = Config();
  // A decision with everything that the steps change set otherwise.
  auto prepared = [&](const std::string& text) {
    Shape s = AddSymbol(msoShapeFlowchartDecision, text);
    s.SetPlacement(xlFreeFloating);
    s.GetTextFrame().SetMarginTop(5);
    s.GetTextFrame().SetHorizontalAlignment(xlRight);
    s.GetTextFrame().SetVerticalAlignment(xlBottom);
    s.GetTextFrame().GetCharacters().GetFont().SetSize(20);
    s.GetTextFrame().GetCharacters().GetFont().SetColor(kRed);
    return s;
  };

  Shape all = prepared("Is it in stock?");
  formatter_.SetAllFormatSettings(all, config, 65);
  EXPECT_EQ(xlMove, all.Placement());
  EXPECT_NEAR(0, all.GetTextFrame().MarginTop(), 0.03);
  EXPECT_EQ(xlLeft, all.GetTextFrame().HorizontalAlignment());
  EXPECT_EQ(xlTop, all.GetTextFrame().VerticalAlignment());
  EXPECT_DOUBLE_EQ(8, all.GetTextFrame().GetCharacters().GetFont().Size());
  EXPECT_EQ(Rgb(79, 129, 189), all.Fill().ForeColor().RGB());
  EXPECT_EQ(kBlack, TextColour(all));

  // Without text: placement and style, and nothing of the text's steps.
  Shape empty = prepared("");
  formatter_.SetAllFormatSettings(empty, config, 79);
  EXPECT_EQ(xlMove, empty.Placement());
  EXPECT_EQ(Rgb(37, 64, 97), empty.Fill().ForeColor().RGB());
  EXPECT_EQ(kWhite, TextColour(empty));
  EXPECT_NEAR(5, empty.GetTextFrame().MarginTop(), 0.03);
  EXPECT_EQ(xlRight, empty.GetTextFrame().HorizontalAlignment());
  EXPECT_EQ(xlBottom, empty.GetTextFrame().VerticalAlignment());
  EXPECT_DOUBLE_EQ(20, empty.GetTextFrame().GetCharacters().GetFont().Size());

  Shape aligned = prepared("Pack");
  formatter_.SetTextAlignment(aligned, config);
  EXPECT_EQ(xlLeft, aligned.GetTextFrame().HorizontalAlignment());
  EXPECT_EQ(xlTop, aligned.GetTextFrame().VerticalAlignment());
  EXPECT_EQ(xlMove, aligned.Placement());
  EXPECT_NEAR(5, aligned.GetTextFrame().MarginTop(), 0.03);
  EXPECT_DOUBLE_EQ(20, aligned.GetTextFrame().GetCharacters().GetFont().Size());

  Shape styled = prepared("Pack");
  formatter_.SetStyleOnly(styled, 80);
  EXPECT_EQ(Rgb(99, 37, 35), styled.Fill().ForeColor().RGB());
  EXPECT_EQ(kWhite, TextColour(styled));
  EXPECT_EQ(xlFreeFloating, styled.Placement());
  EXPECT_EQ(xlRight, styled.GetTextFrame().HorizontalAlignment());
  EXPECT_DOUBLE_EQ(20, styled.GetTextFrame().GetCharacters().GetFont().Size());
}

TEST_F(ShapeStylesTest, ProcessMapFormatLeavesTheTextColourAlone) {
  Shape plain = AddSymbol();
  plain.SetPlacement(xlFreeFloating);
  plain.GetTextFrame().GetCharacters().GetFont().SetColor(kRed);
  formatter_.SetProcessMapFormatSettings(plain, 79);
  EXPECT_EQ(Rgb(37, 64, 97), plain.Fill().ForeColor().RGB());
  EXPECT_EQ(xlMove, plain.Placement());
  EXPECT_EQ(kRed, TextColour(plain));

  // The host's themed presets bring their text colour with them.
  Shape themed = AddSymbol();
  themed.GetTextFrame().GetCharacters().GetFont().SetColor(kRed);
  formatter_.SetProcessMapFormatSettings(themed, 9);
  EXPECT_EQ(kWhite, TextColour(themed));

  TakeTheRoadBelowVersion12();
  Shape banded = AddSymbol();
  banded.GetTextFrame().GetCharacters().GetFont().SetColor(kRed);
  formatter_.SetProcessMapFormatSettings(banded, 9);
  EXPECT_EQ(Rgb(79, 129, 189), banded.Fill().ForeColor().RGB());
  EXPECT_EQ(9, formatter_.GetShapeStyle(banded));
  EXPECT_EQ(kRed, TextColour(banded));
  formatter_.SetStyleOnly(banded, 9);
  EXPECT_EQ(kWhite, TextColour(banded));
}

TEST_F(ShapeStylesTest, MarginsFollowTheSymbolType) {
  struct Case {
    int type;
    double top, bottom, left, right;
  } cases[] = {
      {64, 1, 1, 0, 0}, {67, 1, 0, 1, 1}, {71, 0, 1, 1, 1}, {81, 0, 1, 0, 0},
      {82, 1, 0, 0, 0}, {84, 0, 0, 1, 1}, {88, 1, 1, 0, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("type " + std::to_string(c.type));
    Shape s = AddSymbol(c.type);
    s.GetTextFrame().SetMarginTop(5);
    s.GetTextFrame().SetMarginBottom(5);
    s.GetTextFrame().SetMarginLeft(5);
    s.GetTextFrame().SetMarginRight(5);
    formatter_.SetShapeMargins(s);
    EXPECT_NEAR(c.top, s.GetTextFrame().MarginTop(), 0.03);
    EXPECT_NEAR(c.bottom, s.GetTextFrame().MarginBottom(), 0.03);
    EXPECT_NEAR(c.left, s.GetTextFrame().MarginLeft(), 0.03);
    EXPECT_NEAR(c.right, s.GetTextFrame().MarginRight(), 0.03);
  }
  // The process symbol, and types outside the flowchart symbols, keep theirs.
  for (int type : {msoShapeFlowchartProcess, msoShapeRectangle, 89}) {
    SCOPED_TRACE("type " + std::to_string(type));
    Shape s = AddSymbol(type);
    s.GetTextFrame().SetMarginTop(5);
    s.GetTextFrame().SetMarginLeft(4);
    formatter_.SetShapeMargins(s);
    EXPECT_NEAR(5, s.GetTextFrame().MarginTop(), 0.03);
    EXPECT_NEAR(4, s.GetTextFrame().MarginLeft(), 0.03);
  }
}

TEST_F(ShapeStylesTest, ALabelTakesTheBranchColourWithEitherFont) {
  rules::CConfig config = Config();
  auto label = [&] {
    Shape box = sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 200, 10, 30, 15);
    box.GetTextFrame().GetCharacters().SetText("Yes");
    box.Line().SetVisible(true);
    box.SetPlacement(xlFreeFloating);
    AddSymbol();  // drawn above the label
    return box;
  };

  config.BranchesUseDefaultFont = true;
  Shape own = label();
  formatter_.SetTextBoxFormat(own, config);
  Font font = own.GetTextFrame().GetCharacters().GetFont();
  EXPECT_EQ("Liberation Serif", font.Name());
  EXPECT_DOUBLE_EQ(8.5, font.Size());
  EXPECT_TRUE(font.Bold());
  EXPECT_EQ(kRed, font.Color());
  EXPECT_FALSE(own.Line().Visible());
  EXPECT_EQ(xlMove, own.Placement());
  EXPECT_EQ(sheet_->GetShapes().Count(), own.ZOrderPosition());

  config.BranchesUseDefaultFont = false;
  Shape branch = label();
  formatter_.SetTextBoxFormat(branch, config);
  font = branch.GetTextFrame().GetCharacters().GetFont();
  EXPECT_EQ("Liberation Mono", font.Name());
  EXPECT_DOUBLE_EQ(7, font.Size());
  EXPECT_FALSE(font.Bold());
  EXPECT_EQ(kRed, font.Color());
  EXPECT_EQ(sheet_->GetShapes().Count(), branch.ZOrderPosition());
}

}  // namespace
}  // namespace nivarel
