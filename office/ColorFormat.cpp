#include "ColorFormat.h"

#include "Uno.h"

namespace nivarel::office {

long ColorFormat::RGB() const {
  return Call("ColorFormat.RGB", [&] {
    return OfficeToRgb(GetProp<sal_Int32>(shape_->Props(), property_.c_str()));
  });
}

void ColorFormat::SetRGB(long rgb) {
  Call("ColorFormat.RGB", [&] { SetProp(shape_->Props(), property_.c_str(), RgbToOffice(rgb)); });
}

}  // namespace nivarel::office
