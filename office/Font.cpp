#include "Font.h"

#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontWeight.hpp>

#include "Uno.h"

namespace nivarel::office {

std::string Font::Name() const {
  return Call("Font.Name", [&] { return ToUtf8(GetProp<OUString>(props_->props, "CharFontName")); });
}
void Font::SetName(const std::string& name) {
  Call("Font.Name", [&] { SetProp(props_->props, "CharFontName", ToOu(name)); });
}
double Font::Size() const {
  return Call("Font.Size", [&] { return static_cast<double>(GetProp<float>(props_->props, "CharHeight")); });
}
void Font::SetSize(double points) {
  Call("Font.Size", [&] { SetProp(props_->props, "CharHeight", static_cast<float>(points)); });
}
bool Font::Bold() const {
  return Call("Font.Bold", [&] { return GetProp<float>(props_->props, "CharWeight") >= css::awt::FontWeight::BOLD; });
}
void Font::SetBold(bool on) {
  Call("Font.Bold", [&] {
    SetProp(props_->props, "CharWeight", on ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL);
  });
}
bool Font::Italic() const {
  return Call("Font.Italic", [&] {
    return GetProp<css::awt::FontSlant>(props_->props, "CharPosture") != css::awt::FontSlant_NONE;
  });
}
void Font::SetItalic(bool on) {
  Call("Font.Italic", [&] {
    SetProp(props_->props, "CharPosture", on ? css::awt::FontSlant_ITALIC : css::awt::FontSlant_NONE);
  });
}
long Font::Color() const {
  return Call("Font.Color", [&] {
    sal_Int32 c = GetProp<sal_Int32>(props_->props, "CharColor");
    return c < 0 ? 0L : OfficeToRgb(c);  // automatic colour reads as black
  });
}
void Font::SetColor(long rgb) {
  Call("Font.Color", [&] { SetProp(props_->props, "CharColor", RgbToOffice(rgb)); });
}

}  // namespace nivarel::office
