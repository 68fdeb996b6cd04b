#include "Borders.h"

#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/TableBorder2.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {
// Line widths in 1/100 mm for the weights hairline, thin, medium and thick:
// the widths the office itself gives the weights of an .xlsx file, which it
// writes back as the same weights.
sal_Int32 WidthOf(int weight) {
  switch (weight) {
    case Borders::kThin: return 26;    // 0.75 pt
    case Borders::kMedium: return 62;  // 1.75 pt
    case Borders::kThick: return 88;   // 2.5 pt
    default: return 9;                 // hairline, 0.25 pt
  }
}

int WeightOf(sal_Int32 width) {
  if (width >= 70) return Borders::kThick;
  if (width >= 45) return Borders::kMedium;
  if (width >= 18) return Borders::kThin;
  return Borders::kHairline;
}

css::table::BorderLine2 LineOf(int lineStyle, int weight, long rgb) {
  css::table::BorderLine2 line;
  if (lineStyle != Borders::kLineNone) {
    line.LineStyle = css::table::BorderLineStyle::SOLID;
    line.LineWidth = WidthOf(weight);
    line.OuterLineWidth = static_cast<sal_Int16>(line.LineWidth);
    line.Color = RgbToOffice(rgb);
  } else {
    line.LineStyle = css::table::BorderLineStyle::NONE;
  }
  return line;
}

void CheckEdge(int edge) {
  if (edge < Borders::kEdgeLeft || edge > Borders::kInsideHorizontal)
    throw HostError(HostError::kInvalidArgument, "Unable to get the Item property of the Borders class");
}

// The line of an edge in the range's border table, and its valid flag.
css::table::BorderLine2& LineAt(css::table::TableBorder2& b, int edge, sal_Bool*& valid) {
  switch (edge) {
    case Borders::kEdgeLeft: valid = &b.IsLeftLineValid; return b.LeftLine;
    case Borders::kEdgeTop: valid = &b.IsTopLineValid; return b.TopLine;
    case Borders::kEdgeBottom: valid = &b.IsBottomLineValid; return b.BottomLine;
    case Borders::kEdgeRight: valid = &b.IsRightLineValid; return b.RightLine;
    case Borders::kInsideVertical: valid = &b.IsVerticalLineValid; return b.VerticalLine;
    default: valid = &b.IsHorizontalLineValid; return b.HorizontalLine;
  }
}

// What a cell range shows at an edge: a range of one cell has no inside
// lines, so those are read as its right and bottom edges.
css::table::BorderLine2 ReadEdge(const Reference<css::beans::XPropertySet>& props, int edge) {
  CheckEdge(edge);
  auto b = GetProp<css::table::TableBorder2>(props, "TableBorder2");
  sal_Bool* valid = nullptr;
  if (edge == Borders::kInsideVertical) edge = Borders::kEdgeRight;
  if (edge == Borders::kInsideHorizontal) edge = Borders::kEdgeBottom;
  return LineAt(b, edge, valid);
}

}  // namespace

void Borders::SetOutline(int lineStyle, int weight, long rgb) {
  Call("Borders", [&] {
    css::table::BorderLine2 line = LineOf(lineStyle, weight, rgb);
    auto b = GetProp<css::table::TableBorder2>(props_->props, "TableBorder2");
    b.TopLine = b.BottomLine = b.LeftLine = b.RightLine = line;
    b.IsTopLineValid = b.IsBottomLineValid = b.IsLeftLineValid = b.IsRightLineValid = true;
    SetProp(props_->props, "TableBorder2", b);
  });
}

void Borders::SetEdge(int edge, int lineStyle, int weight, long rgb) {
  Call("Borders.Item", [&] {
    CheckEdge(edge);
    css::table::TableBorder2 b;  // every line not valid: left as it is
    sal_Bool* valid = nullptr;
    LineAt(b, edge, valid) = LineOf(lineStyle, weight, rgb);
    *valid = true;
    SetProp(props_->props, "TableBorder2", b);
  });
}

int Borders::EdgeLineStyle(int edge) const {
  return Call("Border.LineStyle", [&] {
    auto line = ReadEdge(props_->props, edge);
    return line.LineWidth > 0 || line.OuterLineWidth > 0 ? kContinuous : kLineNone;
  });
}

int Borders::EdgeWeight(int edge) const {
  return Call("Border.Weight", [&] { return WeightOf(ReadEdge(props_->props, edge).LineWidth); });
}

long Borders::EdgeColor(int edge) const {
  return Call("Border.Color", [&] { return OfficeToRgb(ReadEdge(props_->props, edge).Color); });
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
    return WeightOf(b.TopLine.LineWidth);
  });
}

}  // namespace nivarel::office
