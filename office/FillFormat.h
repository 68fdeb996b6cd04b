// The inside of a shape: none, a solid colour, or a two-colour gradient.
#pragma once

#include <memory>

#include "ColorFormat.h"

namespace nivarel::office {

struct ShapeImpl;

class FillFormat {
 public:
  explicit FillFormat(std::shared_ptr<ShapeImpl> shape) : shape_(std::move(shape)) {}
  bool Visible() const;
  void SetVisible(bool on);
  void Solid();
  ColorFormat ForeColor() const;
  ColorFormat BackColor() const;
  // Gradient from ForeColor to BackColor; style 1 horizontal, 2 vertical.
  void TwoColorGradient(int style, int variant);
  bool IsGradient() const;
  double Transparency() const;  // 0..1
  void SetTransparency(double value);

 private:
  std::shared_ptr<ShapeImpl> shape_;
};

}  // namespace nivarel::office
