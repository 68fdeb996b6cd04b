#include "CShapeFormatter.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "ShapeStylePresets.h"

namespace nivarel::shapes {

namespace {

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }

constexpr long kBlack = Rgb(0, 0, 0), kWhite = Rgb(255, 255, 255);
constexpr int kReadingOrderLtr = -5003;  // xlLTR
constexpr int16_t kDefaultStyle = 43, kFirstPlainStyle = 43, kLastPlainStyle = 84;

// Fill colours of the plain styles 43 to 84.
const long kPlainFills[42] = {
    Rgb(255, 255, 255), Rgb(220, 230, 242), Rgb(242, 220, 219), Rgb(235, 241, 222), Rgb(230, 224, 236),
    Rgb(219, 238, 244), Rgb(253, 234, 218), Rgb(242, 242, 242), Rgb(185, 205, 229), Rgb(230, 185, 184),
    Rgb(215, 228, 189), Rgb(204, 193, 218), Rgb(183, 222, 232), Rgb(252, 213, 181), Rgb(217, 217, 217),
    Rgb(149, 179, 215), Rgb(217, 150, 148), Rgb(195, 214, 155), Rgb(179, 162, 199), Rgb(147, 205, 221),
    Rgb(250, 192, 144), Rgb(191, 191, 191), Rgb(79, 129, 189), Rgb(192, 80, 77), Rgb(155, 187, 89),
    Rgb(128, 100, 162), Rgb(75, 172, 198), Rgb(247, 150, 70), Rgb(166, 166, 166), Rgb(55, 96, 146),
    Rgb(149, 55, 53), Rgb(119, 147, 60), Rgb(96, 74, 123), Rgb(49, 133, 156), Rgb(228, 108, 10),
    Rgb(127, 127, 127), Rgb(37, 64, 97), Rgb(99, 37, 35), Rgb(79, 98, 40), Rgb(64, 49, 82),
    Rgb(33, 89, 104), Rgb(152, 72, 7),
};

// Inner margins in points (top, bottom, left, right) of the symbols 62 to 88.
struct Margins {
  double top, bottom, left, right;
};
constexpr int kFirstMarginType = 62, kLastMarginType = 88;
const Margins kMargins[27] = {
    {0, 0, 0, 0}, {0, 0, 0, 0}, {1, 1, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},  // 62 to 66
    {1, 0, 1, 1}, {1, 0, 1, 1}, {0, 0, 0, 0}, {1, 1, 0, 0}, {0, 1, 1, 1},  // 67 to 71
    {1, 1, 0, 0}, {0, 0, 0, 0}, {1, 0, 1, 1}, {0, 1, 1, 1}, {0, 0, 1, 1},  // 72 to 76
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 1, 0, 0},  // 77 to 81
    {1, 0, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 1}, {0, 0, 0, 0}, {0, 0, 1, 1},  // 82 to 86
    {1, 1, 0, 0}, {1, 1, 0, 0},                                            // 87, 88
};

// Runs one host call; a property that the shape refuses is left as it is.
template <class F>
void Try(F&& f) {
  try {
    f();
  } catch (const std::exception&) {
  }
}

int CharacterCount(office::Shape& shape) {
  int count = 0;
  Try([&] { count = shape.GetTextFrame().GetCharacters().Count(); });
  return count;
}

void SetPlacement(office::Shape& shape) {
  Try([&] { shape.SetPlacement(office::xlMove); });
}

}  // namespace

CShapeFormatter::CShapeFormatter() {
  for (int16_t id = office::kFirstShapeStylePreset; id <= office::kLastShapeStylePreset; ++id) {
    const office::ShapeStylePreset* preset = office::FindShapeStylePreset(id);
    lineColours_[id] = preset->line;
    fillColours_[id] = preset->fill;
  }
  for (int16_t id = kFirstPlainStyle; id <= kLastPlainStyle; ++id) {
    lineColours_[id] = kBlack;
    fillColours_[id] = kPlainFills[id - kFirstPlainStyle];
  }
}

void CShapeFormatter::SetAllFormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style) {
  FormatSettings(shape, config, style, true);
}

void CShapeFormatter::SetWizardFormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style) {
  FormatSettings(shape, config, style, false);
}

void CShapeFormatter::SetStyleWizardFormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style) {
  FormatSettings(shape, config, style, false);
}

void CShapeFormatter::SetProcessMapFormatSettings(office::Shape& shape, int16_t style) {
  SetPlacement(shape);
  ApplyStyle(shape, StyleOrDefault(style), false);
}

void CShapeFormatter::SetStyleOnly(office::Shape& shape, int16_t style) {
  ApplyStyle(shape, StyleOrDefault(style), true);
}

void CShapeFormatter::SetFontProperties(office::Shape& shape, const rules::CConfig& config) {
  ApplyFont(shape, config, true);
}

void CShapeFormatter::SetTextAlignment(office::Shape& shape, const rules::CConfig& config) {
  ApplyAlignment(shape, config);
  SetPlacement(shape);
}

void CShapeFormatter::SetShapeMargins(office::Shape& shape) {
  int type = 0;
  Try([&] { type = shape.AutoShapeType(); });
  // A process shape, and any type outside the table, keeps the host's margins.
  if (type < kFirstMarginType || type > kLastMarginType) return;
  if (CharacterCount(shape) < 1) return;
  const Margins& m = kMargins[type - kFirstMarginType];
  office::TextFrame frame = shape.GetTextFrame();
  Try([&] { frame.SetAutoMargins(false); });
  Try([&] { frame.SetMarginTop(m.top); });
  Try([&] { frame.SetMarginBottom(m.bottom); });
  Try([&] { frame.SetMarginLeft(m.left); });
  Try([&] { frame.SetMarginRight(m.right); });
}

void CShapeFormatter::SetTextBoxFormat(office::Shape& box, const rules::CConfig& config) {
  office::TextFrame frame = box.GetTextFrame();
  Try([&] {
    office::Font font = frame.GetCharacters().GetFont();
    bool useDefault = config.BranchesUseDefaultFont;
    Try([&] { font.SetName(useDefault ? config.FontName : config.BranchFontName); });
    Try([&] { font.SetBold(useDefault ? config.FontBold : config.BranchFontBold); });
    Try([&] { font.SetItalic(useDefault ? config.FontItalic : config.BranchFontItalic); });
    Try([&] { font.SetSize(useDefault ? config.FontSize : config.BranchFontSize); });
    Try([&] { font.SetColor(config.BranchFontColor); });
  });
  Try([&] { frame.SetOrientation(office::msoTextOrientationHorizontal); });
  Try([&] { frame.SetReadingOrder(kReadingOrderLtr); });
  Try([&] { box.Line().SetVisible(false); });
  SetPlacement(box);
  Try([&] { box.ZOrder(office::msoBringToFront); });
}

int16_t CShapeFormatter::GetShapeStyle(office::Shape& shape) {
  int16_t style = kDefaultStyle;
  try {
    if (host::ExcelVersion >= 12) {
      int themed = shape.ShapeStyle();
      if (themed >= office::kFirstShapeStylePreset && themed <= office::kLastShapeStylePreset)
        return static_cast<int16_t>(themed);
    }
    double weight = shape.Line().Weight();
    int16_t found = 0;
    if (weight > 1.5 && weight < 2.5) {
      long fill = shape.Fill().ForeColor().RGB();
      if (fill == kWhite)
        found = GetLineForeColorMatch(shape.Line().ForeColor().RGB(), 1, 7);
      else
        found = GetFillForeColorMatch(fill, 8, 14);
    }
    if (found == 0 && shape.Shadow().Visible()) {
      long fill = shape.Fill().ForeColor().RGB();
      if (weight > 2.0)
        found = GetFillForeColorMatch(fill, 15, 21);
      else if (shape.Shadow().OffsetY() < 1.7)
        found = GetFillForeColorMatch(fill, 22, 28);
      else
        found = GetFillForeColorMatch(fill, 29, 35);
    }
    if (found == 0) found = GetFillForeColorMatch(shape.Fill().ForeColor().RGB(), kFirstPlainStyle, kLastPlainStyle);
    if (found != 0) style = found;
  } catch (...) {
    host::ErrorHandler("CShapeFormatter", "GetShapeStyle", false);
  }
  return style;
}

int16_t CShapeFormatter::GetLineForeColorMatch(long colour, int16_t low, int16_t high) {
  return FirstMatch(lineColours_, colour, low, high);
}

int16_t CShapeFormatter::GetFillForeColorMatch(long colour, int16_t low, int16_t high) {
  return FirstMatch(fillColours_, colour, low, high);
}

int16_t CShapeFormatter::FirstMatch(const std::array<long, kStyleCount>& colours, long colour, int16_t low,
                                    int16_t high) {
  for (int id = std::max<int>(low, 1); id <= std::min<int>(high, kStyleCount - 1); ++id)
    if (colours[id] == colour) return static_cast<int16_t>(id);
  return 0;
}

int16_t CShapeFormatter::StyleOrDefault(int16_t style) { return style < 1 ? kDefaultStyle : style; }

void CShapeFormatter::FormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style,
                                     bool wholeFontSize) {
  ApplyFont(shape, config, wholeFontSize);
  ApplyAlignment(shape, config);
  SetPlacement(shape);
  SetShapeMargins(shape);
  ApplyStyle(shape, StyleOrDefault(style), true);
}

void CShapeFormatter::ApplyFont(office::Shape& shape, const rules::CConfig& config, bool wholeSize) {
  if (CharacterCount(shape) < 1) return;
  Try([&] {
    office::Font font = shape.GetTextFrame().GetCharacters().GetFont();
    Try([&] { font.SetName(config.FontName); });
    Try([&] { font.SetSize(wholeSize ? std::trunc(config.FontSize) : config.FontSize); });
    Try([&] { font.SetBold(config.FontBold); });
    Try([&] { font.SetItalic(config.FontItalic); });
  });
}

void CShapeFormatter::ApplyAlignment(office::Shape& shape, const rules::CConfig& config) {
  if (CharacterCount(shape) < 1) return;
  office::TextFrame frame = shape.GetTextFrame();
  Try([&] { frame.SetReadingOrder(kReadingOrderLtr); });
  Try([&] { frame.SetOrientation(office::msoTextOrientationHorizontal); });
  Try([&] { frame.SetHorizontalAlignment(config.HorizontalAlignment); });
  Try([&] { frame.SetVerticalAlignment(config.VerticalAlignment); });
}

void CShapeFormatter::ApplyStyle(office::Shape& shape, int16_t style, bool withText) {
  if (style >= kFirstPlainStyle) {
    ApplyPlainStyle(shape, style, withText);
  } else if (host::ExcelVersion >= 12) {
    Try([&] { shape.SetShapeStyle(style); });
  } else if (style >= office::kFirstShapeStylePreset && style <= office::kLastShapeStylePreset) {
    // The look is built part by part; a refused part leaves the others standing.
    Try([&] { office::ApplyShapeStylePreset(shape, style, withText); });
  }
}

void CShapeFormatter::ApplyPlainStyle(office::Shape& shape, int16_t style, bool withText) {
  bool known = style >= kFirstPlainStyle && style <= kLastPlainStyle;
  office::FillFormat fill = shape.Fill();
  Try([&] { fill.SetVisible(true); });
  Try([&] { fill.Solid(); });
  Try([&] { fill.ForeColor().SetRGB(known ? fillColours_[style] : kWhite); });
  office::LineFormat line = shape.Line();
  Try([&] { line.SetVisible(true); });
  Try([&] { line.SetStyle(office::msoLineSingle); });
  Try([&] { line.ForeColor().SetRGB(kBlack); });
  Try([&] { line.SetWeight(0.75); });
  Try([&] { shape.Shadow().SetVisible(false); });
  if (withText) {
    long text = style < 72 || style == 78 ? kBlack : kWhite;
    Try([&] { shape.GetTextFrame().GetCharacters().GetFont().SetColor(text); });
  }
}

}  // namespace nivarel::shapes
