#include "Interior.h"

#include "Uno.h"

namespace nivarel::office {

long PaletteColor(int index) {
  // The classic 56-colour palette, as BGR values (red in the low byte).
  static const long kPalette[56] = {
      0x000000, 0xFFFFFF, 0x0000FF, 0x00FF00, 0xFF0000, 0x00FFFF, 0xFF00FF, 0xFFFF00,
      0x000080, 0x008000, 0x800000, 0x008080, 0x800080, 0x808000, 0xC0C0C0, 0x808080,
      0xFF9999, 0x663399, 0xCCFFFF, 0xFFFFCC, 0x660066, 0x8080FF, 0xCC6600, 0xFFCCCC,
      0x800000, 0xFF00FF, 0x00FFFF, 0xFFFF00, 0x800080, 0x000080, 0x808000, 0xFF0000,
      0xFFCC00, 0xFFFFCC, 0xCCFFCC, 0x99FFFF, 0xFFCC99, 0xCC99FF, 0xFF99CC, 0x99CCFF,
      0xFF6633, 0xCCCC33, 0x00CC99, 0x00CCFF, 0x0099FF, 0x0066FF, 0x996666, 0x969696,
      0x663300, 0x669933, 0x003300, 0x003333, 0x003399, 0x663399, 0x993333, 0x333333};
  if (index < 1 || index > 56) return 0;
  return kPalette[index - 1];
}

long Interior::Color() const {
  return Call("Interior.Color", [&] {
    sal_Int32 c = GetProp<sal_Int32>(props_->props, "CellBackColor");
    return c < 0 ? 0xFFFFFFL : OfficeToRgb(c);
  });
}

void Interior::SetColor(long rgb) {
  Call("Interior.Color", [&] {
    SetProp(props_->props, "IsCellBackgroundTransparent", false);
    SetProp(props_->props, "CellBackColor", RgbToOffice(rgb));
  });
}

int Interior::ColorIndex() const {
  return Call("Interior.ColorIndex", [&] {
    if (GetProp<bool>(props_->props, "IsCellBackgroundTransparent")) return kNone;
    long c = OfficeToRgb(GetProp<sal_Int32>(props_->props, "CellBackColor"));
    int best = 1;
    long bestDistance = -1;
    for (int i = 1; i <= 56; ++i) {
      long p = PaletteColor(i);
      long dr = (p & 0xFF) - (c & 0xFF), dg = ((p >> 8) & 0xFF) - ((c >> 8) & 0xFF),
           db = ((p >> 16) & 0xFF) - ((c >> 16) & 0xFF);
      long d = dr * dr + dg * dg + db * db;
      if (bestDistance < 0 || d < bestDistance) {
        best = i;
        bestDistance = d;
      }
    }
    return best;
  });
}

void Interior::SetColorIndex(int index) {
  if (index == kNone || index == 0) {
    Call("Interior.ColorIndex", [&] {
      SetProp(props_->props, "CellBackColor", static_cast<sal_Int32>(-1));
      SetProp(props_->props, "IsCellBackgroundTransparent", true);
    });
    return;
  }
  if (index < 1 || index > 56) throw HostError(HostError::kOfficeFailure, "Unable to set the ColorIndex property of the Interior class");
  SetColor(PaletteColor(index));
}

}  // namespace nivarel::office
