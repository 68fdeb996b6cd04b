// The text frame of the object model of version 12 and later: word wrap and
// sizing the shape to fit its text.
#pragma once

#include <memory>
#include <string>

namespace nivarel::office {

struct ShapeImpl;

class TextFrame2 {
 public:
  explicit TextFrame2(std::shared_ptr<ShapeImpl> shape) : shape_(std::move(shape)) {}
  int WordWrap() const;  // msoTrue or msoFalse
  void SetWordWrap(int value);
  int AutoSize() const;  // msoAutoSizeNone or msoAutoSizeShapeToFitText
  void SetAutoSize(int value);
  // How the office places the text block across the shape: msoAnchorNone
  // when it spans the shape, msoAnchorCenter or msoAnchorLeft (or right, also told as Left).
  int HorizontalAnchor() const;
  std::string Text() const;
  void SetText(const std::string& text);

 private:
  std::shared_ptr<ShapeImpl> shape_;
};

}  // namespace nivarel::office
