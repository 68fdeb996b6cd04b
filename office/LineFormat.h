// The outline of a shape or the stroke of a line or connector.
#pragma once

#include <memory>

#include "ColorFormat.h"

namespace nivarel::office {

struct ShapeImpl;

class LineFormat {
 public:
  explicit LineFormat(std::shared_ptr<ShapeImpl> shape) : shape_(std::move(shape)) {}
  bool Visible() const;
  void SetVisible(bool on);
  double Weight() const;  // points
  void SetWeight(double points);
  int Style() const;  // msoLineSingle ... (the office draws single lines)
  void SetStyle(int style);
  int DashStyle() const;  // msoLineSolid, msoLineDash, ...
  void SetDashStyle(int dash);
  ColorFormat ForeColor() const;
  int EndArrowheadStyle() const;
  // The marker at the line's begin as the office draws it (msoArrowheadNone without one).
  int BeginArrowheadStyle() const;
  // A marker of medium length and width at the line's begin.
  void SetBeginArrowheadStyle(int style);
  void SetEndArrowheadStyle(int style);
  int EndArrowheadLength() const;
  void SetEndArrowheadLength(int length);
  int EndArrowheadWidth() const;
  // The end marker's width as the office draws it, in points (0 without one).
  double EndArrowheadDrawnWidth() const;
  void SetEndArrowheadWidth(int width);

 private:
  void ApplyArrowhead(int style, int length, int width);
  std::shared_ptr<ShapeImpl> shape_;
};

}  // namespace nivarel::office
