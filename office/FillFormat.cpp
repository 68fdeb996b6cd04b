#include "FillFormat.h"

#include <com/sun/star/awt/Gradient.hpp>
#include <com/sun/star/awt/GradientStyle.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>

#include "Uno.h"

namespace nivarel::office {

// The fill's back colour has no place of its own in the office: it is kept
// as the end colour of the shape's gradient, which a solid fill ignores.
bool FillFormat::Visible() const {
  return Call("FillFormat.Visible", [&] {
    return GetProp<css::drawing::FillStyle>(shape_->Props(), "FillStyle") != css::drawing::FillStyle_NONE;
  });
}

void FillFormat::SetVisible(bool on) {
  Call("FillFormat.Visible", [&] {
    SetProp(shape_->Props(), "FillStyle", on ? css::drawing::FillStyle_SOLID : css::drawing::FillStyle_NONE);
  });
}

void FillFormat::Solid() { SetVisible(true); }

ColorFormat FillFormat::ForeColor() const { return ColorFormat(shape_, "FillColor"); }
ColorFormat FillFormat::BackColor() const { return ColorFormat(shape_, "FillColor2"); }

void FillFormat::TwoColorGradient(int style, int variant) {
  Call("FillFormat.TwoColorGradient", [&] {
    auto ps = shape_->Props();
    css::awt::Gradient g;
    g.Style = css::awt::GradientStyle_LINEAR;
    g.StartColor = GetProp<sal_Int32>(ps, "FillColor");
    g.EndColor = GetProp<sal_Int32>(ps, "FillColor2");
    // Style 1 runs top to bottom, 2 left to right; variant 2 reverses.
    g.Angle = static_cast<sal_Int16>(style == 2 ? 900 : 0);
    if (variant == 2) std::swap(g.StartColor, g.EndColor);
    g.StartIntensity = g.EndIntensity = 100;
    g.StepCount = 0;
    SetProp(ps, "FillGradient", g);
    SetProp(ps, "FillStyle", css::drawing::FillStyle_GRADIENT);
  });
}

bool FillFormat::IsGradient() const {
  return Call("FillFormat.Type", [&] {
    return GetProp<css::drawing::FillStyle>(shape_->Props(), "FillStyle") == css::drawing::FillStyle_GRADIENT;
  });
}

double FillFormat::Transparency() const {
  return Call("FillFormat.Transparency", [&] { return GetProp<sal_Int16>(shape_->Props(), "FillTransparence") / 100.0; });
}

void FillFormat::SetTransparency(double value) {
  Call("FillFormat.Transparency", [&] {
    SetProp(shape_->Props(), "FillTransparence", static_cast<sal_Int16>(value * 100 + 0.5));
  });
}

}  // namespace nivarel::office
