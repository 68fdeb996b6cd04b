#include "TextFrame.h"

#include <cmath>

#include <com/sun/star/drawing/TextHorizontalAdjust.hpp>
#include <com/sun/star/drawing/TextVerticalAdjust.hpp>
#include <com/sun/star/style/ParagraphAdjust.hpp>
#include <com/sun/star/text/WritingMode2.hpp>

#include "MsoConstants.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

// The host's automatic margins: a tenth of an inch at the sides, half that above and below.
constexpr double kAutoSide = 7.2, kAutoTopBottom = 3.6;
const char kOrientationKey[] = "nivarel-text-orientation";

double Distance(const ShapeImpl& s, const char* name) {
  return Call("TextFrame.Margin", [&] { return HmmToPt(GetProp<sal_Int32>(s.Props(), name)); });
}
void SetDistance(const ShapeImpl& s, const char* name, double pt) {
  Call("TextFrame.Margin", [&] { SetProp(s.Props(), name, PtToHmm(pt)); });
}

bool IsCustomShape(const ShapeImpl& s) { return s.shape->getShapeType() == "com.sun.star.drawing.CustomShape"; }

}  // namespace

Characters TextFrame::GetCharacters() const { return Characters(shape_, 1, -1); }
Characters TextFrame::GetCharacters(int start, int length) const { return Characters(shape_, start, length); }

bool TextFrame::AutoSize() const {
  return Call("TextFrame.AutoSize", [&] { return GetProp<bool>(shape_->Props(), "TextAutoGrowHeight"); });
}

void FitShapeToText(const ShapeImpl& shape, bool fit) {
  auto ps = shape.Props();
  // The shape keeps its top left corner while it fits itself to the text.
  css::awt::Point corner = shape.shape->getPosition();
  SetProp(ps, "TextAutoGrowHeight", fit);
  // Without word wrap the shape grows sideways to fit its longest line too,
  // from its left edge.
  bool wrap = GetProp<bool>(ps, "TextWordWrap");
  if (ps->getPropertySetInfo()->hasPropertyByName("TextAutoGrowWidth")) {
    // Once the shape no longer grows sideways, the text area spans it again,
    // or centred paragraphs would stay drawn from the left edge.
    SetProp(ps, "TextHorizontalAdjust",
            fit && !wrap ? css::drawing::TextHorizontalAdjust_LEFT : css::drawing::TextHorizontalAdjust_BLOCK);
    SetProp(ps, "TextAutoGrowWidth", fit && !wrap);
  }
  shape.shape->setPosition(corner);
}

void TextFrame::SetAutoSize(bool on) {
  Call("TextFrame.AutoSize", [&] { FitShapeToText(*shape_, on); });
}

bool TextFrame::AutoMargins() const {
  auto near = [](double a, double b) { return std::abs(a - b) < 0.05; };
  return near(MarginLeft(), kAutoSide) && near(MarginRight(), kAutoSide) && near(MarginTop(), kAutoTopBottom) &&
         near(MarginBottom(), kAutoTopBottom);
}

void TextFrame::SetAutoMargins(bool on) {
  if (!on) return;
  SetMarginLeft(kAutoSide);
  SetMarginRight(kAutoSide);
  SetMarginTop(kAutoTopBottom);
  SetMarginBottom(kAutoTopBottom);
}

int TextFrame::HorizontalAlignment() const {
  return Call("TextFrame.HorizontalAlignment", [&] {
    sal_Int16 a = GetProp<sal_Int16>(shape_->Props(), "ParaAdjust");
    switch (static_cast<css::style::ParagraphAdjust>(a)) {
      case css::style::ParagraphAdjust_CENTER: return xlCenter;
      case css::style::ParagraphAdjust_RIGHT: return xlRight;
      case css::style::ParagraphAdjust_BLOCK: return xlJustify;
      default: return xlLeft;
    }
  });
}

void TextFrame::SetHorizontalAlignment(int xlAlign) {
  Call("TextFrame.HorizontalAlignment", [&] {
    auto a = css::style::ParagraphAdjust_LEFT;
    if (xlAlign == xlCenter) a = css::style::ParagraphAdjust_CENTER;
    else if (xlAlign == xlRight) a = css::style::ParagraphAdjust_RIGHT;
    else if (xlAlign == xlJustify) a = css::style::ParagraphAdjust_BLOCK;
    auto ps = shape_->Props();
    SetProp(ps, "ParaAdjust", static_cast<sal_Int16>(a));
    // The text block spans the frame, so the paragraphs do the aligning.
    SetProp(ps, "TextHorizontalAdjust", css::drawing::TextHorizontalAdjust_BLOCK);
  });
}

int TextFrame::VerticalAlignment() const {
  return Call("TextFrame.VerticalAlignment", [&] {
    switch (GetProp<css::drawing::TextVerticalAdjust>(shape_->Props(), "TextVerticalAdjust")) {
      case css::drawing::TextVerticalAdjust_TOP: return xlTop;
      case css::drawing::TextVerticalAdjust_BOTTOM: return xlBottom;
      default: return xlCenter;
    }
  });
}

void TextFrame::SetVerticalAlignment(int xlAlign) {
  Call("TextFrame.VerticalAlignment", [&] {
    auto a = css::drawing::TextVerticalAdjust_CENTER;
    if (xlAlign == xlTop) a = css::drawing::TextVerticalAdjust_TOP;
    else if (xlAlign == xlBottom) a = css::drawing::TextVerticalAdjust_BOTTOM;
    SetProp(shape_->Props(), "TextVerticalAdjust", a);
  });
}

int TextFrame::Orientation() const {
  return Call("TextFrame.Orientation", [&] {
    int kept = GetShapeAttribute(*shape_, kOrientationKey, 0);
    if (kept != 0 || !IsCustomShape(*shape_)) return kept != 0 ? kept : msoTextOrientationHorizontal;
    // A shape read from a file: its text turned a quarter either way.
    uno::Sequence<css::beans::PropertyValue> geometry;
    shape_->Props()->getPropertyValue("CustomShapeGeometry") >>= geometry;
    double turn = 0;
    for (const auto& p : geometry) {
      double angle = 0;
      if ((p.Name == "TextPreRotateAngle" || p.Name == "TextRotateAngle") && (p.Value >>= angle)) turn += angle;
    }
    long quarter = std::lround(std::fmod(std::fmod(turn, 360.0) + 360.0, 360.0));
    if (quarter == 90) return msoTextOrientationUpward;
    if (quarter == 270) return msoTextOrientationDownward;
    return msoTextOrientationHorizontal;
  });
}

void TextFrame::SetOrientation(int orientation) {
  Call("TextFrame.Orientation", [&] {
    auto ps = shape_->Props();
    if (IsCustomShape(*shape_)) {
      uno::Sequence<css::beans::PropertyValue> geometry;
      ps->getPropertyValue("CustomShapeGeometry") >>= geometry;
      std::vector<css::beans::PropertyValue> g(geometry.begin(), geometry.end());
      double angle = orientation == msoTextOrientationUpward ? 90.0 : orientation == msoTextOrientationDownward ? -90.0 : 0.0;
      bool found = false;
      for (auto& p : g)
        if (p.Name == "TextPreRotateAngle") {
          p.Value <<= angle;
          found = true;
        }
      if (!found) {
        css::beans::PropertyValue p;
        p.Name = "TextPreRotateAngle";
        p.Value <<= angle;
        g.push_back(p);
      }
      SetProp(ps, "CustomShapeGeometry", uno::Sequence<css::beans::PropertyValue>(g.data(), static_cast<sal_Int32>(g.size())));
    } else {
      // A plain text frame turns its text with the writing mode.
      sal_Int16 mode = orientation == msoTextOrientationUpward ? css::text::WritingMode2::BT_LR
                       : orientation == msoTextOrientationDownward ? css::text::WritingMode2::TB_RL
                                                                   : css::text::WritingMode2::LR_TB;
      if (ps->getPropertySetInfo()->hasPropertyByName("WritingMode")) SetProp(ps, "WritingMode", mode);
    }
    SetShapeAttribute(*shape_, kOrientationKey, orientation);
  });
}

int TextFrame::ReadingOrder() const {
  return Call("TextFrame.ReadingOrder", [&] {
    sal_Int16 mode = GetProp<sal_Int16>(shape_->Props(), "WritingMode");
    return mode == css::text::WritingMode2::RL_TB ? -5004 : -5003;  // xlRTL, xlLTR
  });
}

void TextFrame::SetReadingOrder(int order) {
  Call("TextFrame.ReadingOrder", [&] {
    if (order == -5004) SetProp(shape_->Props(), "WritingMode", static_cast<sal_Int16>(css::text::WritingMode2::RL_TB));
  });
}

double TextFrame::MarginLeft() const { return Distance(*shape_, "TextLeftDistance"); }
void TextFrame::SetMarginLeft(double pt) { SetDistance(*shape_, "TextLeftDistance", pt); }
double TextFrame::MarginRight() const { return Distance(*shape_, "TextRightDistance"); }
void TextFrame::SetMarginRight(double pt) { SetDistance(*shape_, "TextRightDistance", pt); }
double TextFrame::MarginTop() const { return Distance(*shape_, "TextUpperDistance"); }
void TextFrame::SetMarginTop(double pt) { SetDistance(*shape_, "TextUpperDistance", pt); }
double TextFrame::MarginBottom() const { return Distance(*shape_, "TextLowerDistance"); }
void TextFrame::SetMarginBottom(double pt) { SetDistance(*shape_, "TextLowerDistance", pt); }

}  // namespace nivarel::office
