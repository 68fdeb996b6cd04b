#include "Borders.h"

#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/TableBorder2.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {
// Line widths in 1/100 mm for the weights hairline, thin, medium and thick.
sal_Int32 WidthOf(int weight) {
  switch (weight) {
    case Borders::kThin: return 26;    // 0.75 pt
    case Borders::kMedium: return 53;  // 1.5 pt
    case Borders::kThick: return 79;   // 2.25 pt
    default: return 9;                 // hairline, 0.25 pt
  }
}
}  // namespace

void Borders::SetOutline(int lineStyle, int weight, long rgb) {
  Call("Borders", [&] {
    css::table::BorderLine2 line;
    if (lineStyle != kLineNone) {
      line.LineStyle = css::table::BorderLineStyle::SOLID;
      line.LineWidth = WidthOf(weight);
      line.OuterLineWidth = static_cast<sal_Int16>(line.LineWidth);
      line.Color = RgbToOffice(rgb);
    } else {
      line.LineStyle = css::table::BorderLineStyle::NONE;
    }
    auto b = GetProp<css::table::TableBorder2>(props_->props, "TableBorder2");
    b.TopLine = b.BottomLine = b.LeftLine = b.RightLine = line;
    b.IsTopLineValid = b.IsBottomLineValid = b.IsLeftLineValid = b.IsRightLineValid = true;
    SetProp(props_->props, "TableBorder2", b);
  });
}

int Borders::LineStyle() const {
  return Call("Borders.LineStyle", [&] {
    auto b = GetProp<css::table::TableBorder2>(props_->props, "TableBorder2");
    return b.TopLine.LineWidth > 0 || b.TopLine.OuterLineWidth > 0 ? kContinuous : kLineNone;
  });
}

int Borders::Weight() const {
  return Call("Borders.Weight", [&] {
    auto b = GetProp<css::table::TableBorder2>(props_->props, "TableBorder2");
    sal_Int32 w = b.TopLine.LineWidth;
    if (w >= 70) return kThick;
    if (w >= 45) return kMedium;
    if (w >= 18) return kThin;
    return kHairline;
  });
}

}  // namespace nivarel::office
