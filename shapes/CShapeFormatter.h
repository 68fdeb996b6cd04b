// Gives a symbol its font, text alignment, inner margins and look (style).
// One formatter serves a whole run; its style tables are made when it is
// created. Every step ignores a property that the shape refuses.
#pragma once

#include <array>
#include <cstdint>

#include "CConfig.h"
#include "Shape.h"

namespace nivarel::shapes {

class CShapeFormatter {
 public:
  CShapeFormatter();
  // Font (whole point size), alignment, placement, margins, style with text colour.
  void SetAllFormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style);
  // As SetAllFormatSettings, with the font size as it stands.
  void SetWizardFormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style);
  void SetStyleWizardFormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style);
  // Placement and style, without the text colour.
  void SetProcessMapFormatSettings(office::Shape& shape, int16_t style);
  // Style with text colour.
  void SetStyleOnly(office::Shape& shape, int16_t style);
  void SetFontProperties(office::Shape& shape, const rules::CConfig& config);
  void SetTextAlignment(office::Shape& shape, const rules::CConfig& config);
  void SetShapeMargins(office::Shape& shape);
  // A free label's format: font (shape or branch font), branch colour, no outline.
  void SetTextBoxFormat(office::Shape& box, const rules::CConfig& config);
  // The style id that the shape's look stands for; 43 when none matches.
  int16_t GetShapeStyle(office::Shape& shape);
  // The first id from low to high whose line colour is colour (RGB); 0 if none.
  int16_t GetLineForeColorMatch(long colour, int16_t low, int16_t high);

 private:
  // Style ids run from 1 to 84; index 0 is unused.
  static constexpr int kStyleCount = 85;

  // The first id from low to high whose fill colour is colour (RGB); 0 if none.
  int16_t GetFillForeColorMatch(long colour, int16_t low, int16_t high);
  static int16_t FirstMatch(const std::array<long, kStyleCount>& colours, long colour, int16_t low, int16_t high);
  // A style below 1 stands for the plain white style.
  static int16_t StyleOrDefault(int16_t style);
  void FormatSettings(office::Shape& shape, const rules::CConfig& config, int16_t style, bool wholeFontSize);
  void ApplyFont(office::Shape& shape, const rules::CConfig& config, bool wholeSize);
  void ApplyAlignment(office::Shape& shape, const rules::CConfig& config);
  // The style step: plain ids 43 and up by hand, themed ids through the host's
  // gallery on version 12 and later, else by the band of the id.
  void ApplyStyle(office::Shape& shape, int16_t style, bool withText);
  void ApplyPlainStyle(office::Shape& shape, int16_t style, bool withText);

  // Line and fill colour of each style id.
  std::array<long, kStyleCount> lineColours_{};
  std::array<long, kStyleCount> fillColours_{};
};

}  // namespace nivarel::shapes
