#include "LineFormat.h"

#include <cmath>

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
const char kArrowKey[] = "nivarel-arrow";
const char kArrowLengthKey[] = "nivarel-arrow-length";
const char kArrowWidthKey[] = "nivarel-arrow-width";
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
    SetProp(ps, "LineWidth", PtToHmm(points));
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
  return Call("LineFormat.EndArrowheadStyle", [&] {
    return GetShapeAttribute(*shape_, kArrowKey, msoArrowheadNone);
  });
}
int LineFormat::EndArrowheadLength() const {
  return Call("LineFormat.EndArrowheadLength", [&] {
    return GetShapeAttribute(*shape_, kArrowLengthKey, msoArrowheadLengthMedium);
  });
}
int LineFormat::EndArrowheadWidth() const {
  return Call("LineFormat.EndArrowheadWidth", [&] {
    return GetShapeAttribute(*shape_, kArrowWidthKey, msoArrowheadWidthMedium);
  });
}

void LineFormat::SetEndArrowheadStyle(int style) { ApplyArrowhead(style, EndArrowheadLength(), EndArrowheadWidth()); }
void LineFormat::SetEndArrowheadLength(int length) { ApplyArrowhead(EndArrowheadStyle(), length, EndArrowheadWidth()); }
void LineFormat::SetEndArrowheadWidth(int width) { ApplyArrowhead(EndArrowheadStyle(), EndArrowheadLength(), width); }

void LineFormat::ApplyArrowhead(int style, int length, int width) {
  Call("LineFormat.EndArrowhead", [&] {
    auto ps = shape_->Props();
    if (style == msoArrowheadNone) {
      SetProp(ps, "LineEnd", css::drawing::PolyPolygonBezierCoords());
      SetProp(ps, "LineEndWidth", static_cast<sal_Int32>(0));
    } else {
      // Width follows the width code and the line weight, as the host sizes them.
      double weight = std::max(0.75, Weight());
      double factor = width == msoArrowheadNarrow ? 2.0 : width == msoArrowheadWide ? 5.0 : 3.0;
      auto arrow = ArrowFor(style);
      double aspect = length == msoArrowheadShort ? 0.66 : length == msoArrowheadLong ? 1.5 : 1.0;
      for (auto& p : arrow.Coordinates.getArray()[0]) p.Y = static_cast<sal_Int32>(p.Y * aspect);
      SetProp(ps, "LineEnd", arrow);
      SetProp(ps, "LineEndWidth", PtToHmm(weight * factor));
      SetProp(ps, "LineEndCenter", false);
    }
    SetShapeAttribute(*shape_, kArrowKey, style);
    SetShapeAttribute(*shape_, kArrowLengthKey, length);
    SetShapeAttribute(*shape_, kArrowWidthKey, width);
  });
}

}  // namespace nivarel::office
