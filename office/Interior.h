// Cell background: a colour, or one of the 56 palette entries by index.
#pragma once

#include <memory>

namespace nivarel::office {

struct PropsRef;

class Interior {
 public:
  static constexpr int kNone = -4142;
  explicit Interior(std::shared_ptr<PropsRef> props) : props_(std::move(props)) {}
  long Color() const;  // red in the low byte
  void SetColor(long rgb);
  // kNone when the cells have no fill; otherwise the nearest palette index.
  int ColorIndex() const;
  void SetColorIndex(int index);

 private:
  std::shared_ptr<PropsRef> props_;
};

// The 56 colours of the classic palette, index 1 to 56; 0 for out of range.
long PaletteColor(int index);

}  // namespace nivarel::office
