#include "ShadowFormat.h"

#include "Uno.h"

namespace nivarel::office {

bool ShadowFormat::Visible() const {
  return Call("ShadowFormat.Visible", [&] { return GetProp<bool>(shape_->Props(), "Shadow"); });
}
void ShadowFormat::SetVisible(bool on) {
  Call("ShadowFormat.Visible", [&] { SetProp(shape_->Props(), "Shadow", on); });
}
ColorFormat ShadowFormat::ForeColor() const { return ColorFormat(shape_, "ShadowColor"); }
double ShadowFormat::OffsetX() const {
  return Call("ShadowFormat.OffsetX", [&] { return HmmToPt(GetProp<sal_Int32>(shape_->Props(), "ShadowXDistance")); });
}
void ShadowFormat::SetOffsetX(double points) {
  Call("ShadowFormat.OffsetX", [&] { SetProp(shape_->Props(), "ShadowXDistance", PtToHmm(points)); });
}
double ShadowFormat::OffsetY() const {
  return Call("ShadowFormat.OffsetY", [&] { return HmmToPt(GetProp<sal_Int32>(shape_->Props(), "ShadowYDistance")); });
}
void ShadowFormat::SetOffsetY(double points) {
  Call("ShadowFormat.OffsetY", [&] { SetProp(shape_->Props(), "ShadowYDistance", PtToHmm(points)); });
}
double ShadowFormat::Transparency() const {
  return Call("ShadowFormat.Transparency", [&] { return GetProp<sal_Int16>(shape_->Props(), "ShadowTransparence") / 100.0; });
}
void ShadowFormat::SetTransparency(double value) {
  Call("ShadowFormat.Transparency", [&] {
    SetProp(shape_->Props(), "ShadowTransparence", static_cast<sal_Int16>(value * 100 + 0.5));
  });
}

}  // namespace nivarel::office
