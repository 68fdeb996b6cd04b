#include "LineFormat.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/drawing/DashStyle.hpp>
#include <com/sun/star/drawing/LineDash.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/drawing/PolyPolygonBezierCoords.hpp>

#include "MsoConstants.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

// The office draws dashes and arrowheads from shapes of its own; the codes
// the logic set are kept beside them so that they read back unchanged.
const char kDashKey[] = "nivarel-line-dash";
const char kStyleKey[] = "nivarel-line-style";
// Widths are 1/100 mm in the office: the weight the logic set is kept beside
// the width, in 1/12700 points, and reads back while the width is still its own.
const char kWeightKey[] = "nivarel-line-weight";
constexpr double kWeightUnitsPerPoint = 12700.0;

css::drawing::LineDash DashFor(int dash) {
  css::drawing::LineDash d;
  d.Style = css::drawing::DashStyle_RECTRELATIVE;
  switch (dash) {
    case msoLineSquareDot: d.Dots = 1; d.DotLen = 100; d.Distance = 100; break;
    case msoLineRoundDot: d.Style = css::drawing::DashStyle_ROUNDRELATIVE; d.Dots = 1; d.DotLen = 0; d.Distance = 200; break;
    case msoLineDashDot: d.Dots = 1; d.DotLen = 100; d.Dashes = 1; d.DashLen = 400; d.Distance = 300; break;
    case msoLineDashDotDot: d.Dots = 2; d.DotLen = 100; d.Dashes = 1; d.DashLen = 400; d.Distance = 300; break;
    case msoLineLongDash: d.Dashes = 1; d.DashLen = 800; d.Distance = 300; break;
    case msoLineLongDashDot: d.Dots = 1; d.DotLen = 100; d.Dashes = 1; d.DashLen = 800; d.Distance = 300; break;
    default: d.Dashes = 1; d.DashLen = 400; d.Distance = 300; break;  // msoLineDash
  }
  return d;
}

// Arrowhead outlines with the tip at the top centre, in a 100 x 100 box.
css::drawing::PolyPolygonBezierCoords ArrowFor(int style) {
  std::vector<css::awt::Point> pts;
  switch (style) {
    case msoArrowheadOpen: pts = {{50, 0}, {100, 100}, {85, 100}, {50, 30}, {15, 100}, {0, 100}}; break;
    case msoArrowheadStealth: pts = {{50, 0}, {100, 100}, {50, 70}, {0, 100}}; break;
    case msoArrowheadDiamond: pts = {{50, 0}, {100, 50}, {50, 100}, {0, 50}}; break;
    case msoArrowheadOval: pts = {{50, 0}, {85, 15}, {100, 50}, {85, 85}, {50, 100}, {15, 85}, {0, 50}, {15, 15}}; break;
    default: pts = {{50, 0}, {100, 100}, {0, 100}}; break;  // triangle
  }
  pts.push_back(pts.front());
  css::drawing::PolyPolygonBezierCoords c;
  c.Coordinates = uno::Sequence<uno::Sequence<css::awt::Point>>(1);
  c.Coordinates.getArray()[0] = uno::Sequence<css::awt::Point>(pts.data(), static_cast<sal_Int32>(pts.size()));
  c.Flags = uno::Sequence<uno::Sequence<css::drawing::PolygonFlags>>(1);
  c.Flags.getArray()[0] = uno::Sequence<css::drawing::PolygonFlags>(static_cast<sal_Int32>(pts.size()));
  return c;
}

// A marker's width over its line's width, as the office's own import of
// Office files sizes arrowheads: an open arrow half a width more.
double WidthFactor(int style, int width) {
  double open = style == msoArrowheadOpen ? 0.5 : 0.0;
  if (width == msoArrowheadNarrow) return 2.0 + open;
  if (width == msoArrowheadWide) return 5.0 + open;
  return 3.0 + open;
}
// What a marker's width is measured against: the line's width, at least
// 0.7 mm, so that a thin line's arrowhead still shows.
sal_Int32 MarkerBase(sal_Int32 lineWidth) { return std::max<sal_Int32>(lineWidth, 70); }

struct Marker {
  int style = msoArrowheadNone;
  int length = msoArrowheadLengthMedium;
  int width = msoArrowheadWidthMedium;
};

// The line's end marker (or, with begin, its start marker) as the office
// draws it: the outline's form, its proportions and its width against the line's.
Marker DrawnMarker(const Reference<css::beans::XPropertySet>& ps, bool begin = false) {
  Marker m;
  auto end = GetProp<css::drawing::PolyPolygonBezierCoords>(ps, begin ? "LineStart" : "LineEnd");
  if (end.Coordinates.getLength() == 0 || end.Coordinates[0].getLength() < 3) return m;
  std::vector<css::awt::Point> pts(end.Coordinates[0].begin(), end.Coordinates[0].end());
  if (pts.size() > 3 && pts.front().X == pts.back().X && pts.front().Y == pts.back().Y) pts.pop_back();
  sal_Int32 left = pts[0].X, right = pts[0].X, top = pts[0].Y, bottom = pts[0].Y;
  for (const auto& p : pts) {
    left = std::min(left, p.X), right = std::max(right, p.X);
    top = std::min(top, p.Y), bottom = std::max(bottom, p.Y);
  }
  double w = std::max<sal_Int32>(1, right - left), h = std::max<sal_Int32>(1, bottom - top);
  m.style = msoArrowheadTriangle;
  for (int style : {msoArrowheadTriangle, msoArrowheadOpen, msoArrowheadStealth, msoArrowheadDiamond,
                    msoArrowheadOval}) {
    auto form = ArrowFor(style).Coordinates[0];
    if (static_cast<size_t>(form.getLength()) != pts.size() + 1) continue;
    bool same = true;
    for (size_t i = 0; i < pts.size() && same; ++i)
      same = std::abs((pts[i].X - left) * 100.0 / w - form[i].X) <= 3 &&
             std::abs((pts[i].Y - top) * 100.0 / h - form[i].Y) <= 3;
    if (same) {
      m.style = style;
      break;
    }
  }
  double aspect = h / w;
  m.length = aspect < 0.83 ? msoArrowheadShort : aspect > 1.25 ? msoArrowheadLong : msoArrowheadLengthMedium;
  double ratio = GetProp<sal_Int32>(ps, begin ? "LineStartWidth" : "LineEndWidth") / static_cast<double>(MarkerBase(GetProp<sal_Int32>(ps, "LineWidth")));
  m.width = msoArrowheadWidthMedium;
  double best = 1e9;
  for (int code : {msoArrowheadNarrow, msoArrowheadWidthMedium, msoArrowheadWide}) {
    double off = std::abs(ratio - WidthFactor(m.style, code));
    if (off < best) best = off, m.width = code;
  }
  return m;
}

// Draws the end marker (with begin, the start marker) at the line's present width.
void PutMarker(const Reference<css::beans::XPropertySet>& ps, const Marker& m, bool begin = false) {
  const char* shape = begin ? "LineStart" : "LineEnd";
  const char* width = begin ? "LineStartWidth" : "LineEndWidth";
  const char* centre = begin ? "LineStartCenter" : "LineEndCenter";
  if (m.style == msoArrowheadNone) {
    SetProp(ps, shape, css::drawing::PolyPolygonBezierCoords());
    SetProp(ps, width, static_cast<sal_Int32>(0));
    return;
  }
  auto arrow = ArrowFor(m.style);
  double aspect = m.length == msoArrowheadShort ? 0.66 : m.length == msoArrowheadLong ? 1.5 : 1.0;
  for (auto& p : arrow.Coordinates.getArray()[0]) p.Y = static_cast<sal_Int32>(p.Y * aspect);
  SetProp(ps, shape, arrow);
  double base = MarkerBase(GetProp<sal_Int32>(ps, "LineWidth"));
  SetProp(ps, width, static_cast<sal_Int32>(std::lround(base * WidthFactor(m.style, m.width))));
  SetProp(ps, centre, false);
}

}  // namespace

bool LineFormat::Visible() const {
  return Call("LineFormat.Visible", [&] {
    return GetProp<css::drawing::LineStyle>(shape_->Props(), "LineStyle") != css::drawing::LineStyle_NONE;
  });
}

void LineFormat::SetVisible(bool on) {
  Call("LineFormat.Visible", [&] {
    auto style = css::drawing::LineStyle_NONE;
    if (on) {
      int dash = GetShapeAttribute(*shape_, kDashKey, msoLineSolid);
      style = dash == msoLineSolid ? css::drawing::LineStyle_SOLID : css::drawing::LineStyle_DASH;
    }
    SetProp(shape_->Props(), "LineStyle", style);
  });
}

double LineFormat::Weight() const {
  return Call("LineFormat.Weight", [&] {
    sal_Int32 w = GetProp<sal_Int32>(shape_->Props(), "LineWidth");
    int kept = GetShapeAttribute(*shape_, kWeightKey, -1);
    if (kept >= 0 && PtToHmm(kept / kWeightUnitsPerPoint) == w) return kept / kWeightUnitsPerPoint;
    // The office's hairline (0) is drawn a quarter point wide.
    return w == 0 ? 0.25 : HmmToPt(w);
  });
}

void LineFormat::SetWeight(double points) {
  Call("LineFormat.Weight", [&] {
    auto ps = shape_->Props();
    // The office moves the text's distances from the edges by half of the
    // change in width; the host keeps a shape's margins where they were.
    const char* distances[] = {"TextLeftDistance", "TextRightDistance", "TextUpperDistance", "TextLowerDistance"};
    bool hasText = ps->getPropertySetInfo()->hasPropertyByName("TextLeftDistance");
    sal_Int32 kept[4] = {};
    if (hasText)
      for (int i = 0; i < 4; ++i) kept[i] = GetProp<sal_Int32>(ps, distances[i]);
    // The arrowhead is sized by the line's width: it follows it.
    bool line = ps->getPropertySetInfo()->hasPropertyByName("LineEnd");
    Marker marker = line ? DrawnMarker(ps) : Marker();
    SetProp(ps, "LineWidth", PtToHmm(points));
    if (marker.style != msoArrowheadNone) PutMarker(ps, marker);
    if (hasText)
      for (int i = 0; i < 4; ++i)
        if (GetProp<sal_Int32>(ps, distances[i]) != kept[i]) SetProp(ps, distances[i], kept[i]);
    SetShapeAttribute(*shape_, kWeightKey, static_cast<int>(std::lround(points * kWeightUnitsPerPoint)));
  });
}

int LineFormat::Style() const {
  return Call("LineFormat.Style", [&] { return GetShapeAttribute(*shape_, kStyleKey, msoLineSingle); });
}

void LineFormat::SetStyle(int style) {
  Call("LineFormat.Style", [&] { SetShapeAttribute(*shape_, kStyleKey, style); });
}

int LineFormat::DashStyle() const {
  return Call("LineFormat.DashStyle", [&] {
    auto style = GetProp<css::drawing::LineStyle>(shape_->Props(), "LineStyle");
    int kept = GetShapeAttribute(*shape_, kDashKey, 0);
    if (kept) return kept;
    return style == css::drawing::LineStyle_DASH ? msoLineDash : msoLineSolid;
  });
}

void LineFormat::SetDashStyle(int dash) {
  Call("LineFormat.DashStyle", [&] {
    auto ps = shape_->Props();
    bool visible = GetProp<css::drawing::LineStyle>(ps, "LineStyle") != css::drawing::LineStyle_NONE;
    if (dash == msoLineSolid) {
      if (visible) SetProp(ps, "LineStyle", css::drawing::LineStyle_SOLID);
    } else {
      SetProp(ps, "LineDash", DashFor(dash));
      if (visible) SetProp(ps, "LineStyle", css::drawing::LineStyle_DASH);
    }
    SetShapeAttribute(*shape_, kDashKey, dash);
  });
}

ColorFormat LineFormat::ForeColor() const { return ColorFormat(shape_, "LineColor"); }

int LineFormat::EndArrowheadStyle() const {
  return Call("LineFormat.EndArrowheadStyle", [&] { return DrawnMarker(shape_->Props()).style; });
}

int LineFormat::BeginArrowheadStyle() const {
  return Call("LineFormat.BeginArrowheadStyle", [&] { return DrawnMarker(shape_->Props(), true).style; });
}

int LineFormat::EndArrowheadLength() const {
  return Call("LineFormat.EndArrowheadLength", [&] { return DrawnMarker(shape_->Props()).length; });
}

int LineFormat::EndArrowheadWidth() const {
  return Call("LineFormat.EndArrowheadWidth", [&] { return DrawnMarker(shape_->Props()).width; });
}

double LineFormat::EndArrowheadDrawnWidth() const {
  return Call("LineFormat.EndArrowheadDrawnWidth", [&] {
    auto ps = shape_->Props();
    if (DrawnMarker(ps).style == msoArrowheadNone) return 0.0;
    return HmmToPt(GetProp<sal_Int32>(ps, "LineEndWidth"));
  });
}

void LineFormat::SetEndArrowheadStyle(int style) { ApplyArrowhead(style, EndArrowheadLength(), EndArrowheadWidth()); }
void LineFormat::SetEndArrowheadLength(int length) { ApplyArrowhead(EndArrowheadStyle(), length, EndArrowheadWidth()); }
void LineFormat::SetEndArrowheadWidth(int width) { ApplyArrowhead(EndArrowheadStyle(), EndArrowheadLength(), width); }

void LineFormat::SetBeginArrowheadStyle(int style) {
  Call("LineFormat.BeginArrowhead", [&] {
    PutMarker(shape_->Props(), Marker{style, msoArrowheadLengthMedium, msoArrowheadWidthMedium}, true);
  });
}

void LineFormat::ApplyArrowhead(int style, int length, int width) {
  Call("LineFormat.EndArrowhead", [&] { PutMarker(shape_->Props(), Marker{style, length, width}); });
}

}  // namespace nivarel::office
