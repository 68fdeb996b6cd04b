// The lines of a range of cells: its outline at once, or one edge or the
// inside lines (XlBordersIndex) each by itself.
#pragma once

#include <memory>

namespace nivarel::office {

struct PropsRef;

class Borders {
 public:
  static constexpr int kContinuous = 1, kHairline = 1, kThin = 2, kMedium = -4138, kThick = 4,
                       kLineNone = -4142;
  // XlBordersIndex: the four edges of the range and the lines between its cells.
  static constexpr int kEdgeLeft = 7, kEdgeTop = 8, kEdgeBottom = 9, kEdgeRight = 10, kInsideVertical = 11,
                       kInsideHorizontal = 12;
  explicit Borders(std::shared_ptr<PropsRef> props) : props_(std::move(props)) {}
  // Line style kContinuous or kLineNone, weight kHairline..kThick, colour red in the low byte.
  void SetOutline(int lineStyle, int weight, long rgb);
  // One edge or the inside lines (kEdgeLeft..kInsideHorizontal) alone; the
  // others stay as they are. Another index raises HostError.
  void SetEdge(int edge, int lineStyle, int weight, long rgb);
  // The top edge's line style and weight.
  int LineStyle() const;
  int Weight() const;
  // One edge of the range as drawn (of a range of one cell, for the inside
  // lines): kContinuous or kLineNone, its weight, its colour.
  int EdgeLineStyle(int edge) const;
  int EdgeWeight(int edge) const;
  long EdgeColor(int edge) const;

 private:
  std::shared_ptr<PropsRef> props_;
};

}  // namespace nivarel::office
