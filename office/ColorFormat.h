// One colour of a shape's fill, line or shadow, red in the low byte.
#pragma once

#include <memory>
#include <string>

namespace nivarel::office {

struct ShapeImpl;

class ColorFormat {
 public:
  ColorFormat(std::shared_ptr<ShapeImpl> shape, std::string property)
      : shape_(std::move(shape)), property_(std::move(property)) {}
  long RGB() const;
  void SetRGB(long rgb);

 private:
  std::shared_ptr<ShapeImpl> shape_;
  std::string property_;
};

}  // namespace nivarel::office
