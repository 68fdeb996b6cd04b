// A run of a shape's text, 1-based, counted in characters (UTF-16 code units,
// as the host counts them).
#pragma once

#include <memory>
#include <string>

#include "Font.h"

namespace nivarel::office {

struct ShapeImpl;

class Characters {
 public:
  // length < 0 means to the end of the text.
  Characters(std::shared_ptr<ShapeImpl> shape, int start, int length)
      : shape_(std::move(shape)), start_(start), length_(length) {}
  std::string Text() const;
  void SetText(const std::string& text);
  int Count() const;
  // Replaces the run with text.
  void Insert(const std::string& text);
  Font GetFont() const;

 private:
  std::shared_ptr<ShapeImpl> shape_;
  int start_;
  int length_;
};

}  // namespace nivarel::office
