// The drop shadow of a shape; offsets in points.
#pragma once

#include <memory>

#include "ColorFormat.h"

namespace nivarel::office {

struct ShapeImpl;

class ShadowFormat {
 public:
  explicit ShadowFormat(std::shared_ptr<ShapeImpl> shape) : shape_(std::move(shape)) {}
  bool Visible() const;
  void SetVisible(bool on);
  ColorFormat ForeColor() const;
  double OffsetX() const;
  void SetOffsetX(double points);
  double OffsetY() const;
  void SetOffsetY(double points);
  double Transparency() const;  // 0..1
  void SetTransparency(double value);

 private:
  std::shared_ptr<ShapeImpl> shape_;
};

}  // namespace nivarel::office
