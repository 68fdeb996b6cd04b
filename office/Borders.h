// The outline of a range of cells, set on all four edges at once.
#pragma once

#include <memory>

namespace nivarel::office {

struct PropsRef;

class Borders {
 public:
  static constexpr int kContinuous = 1, kHairline = 1, kThin = 2, kMedium = -4138, kThick = 4,
                       kLineNone = -4142;
  explicit Borders(std::shared_ptr<PropsRef> props) : props_(std::move(props)) {}
  // Line style kContinuous or kLineNone, weight kHairline..kThick, colour red in the low byte.
  void SetOutline(int lineStyle, int weight, long rgb);
  int LineStyle() const;
  int Weight() const;

 private:
  std::shared_ptr<PropsRef> props_;
};

}  // namespace nivarel::office
