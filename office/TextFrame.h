// The text of a shape and how it sits in the shape: alignment, margins in
// points, orientation and automatic sizing.
#pragma once

#include <memory>

#include "Characters.h"

namespace nivarel::office {

struct ShapeImpl;

class TextFrame {
 public:
  explicit TextFrame(std::shared_ptr<ShapeImpl> shape) : shape_(std::move(shape)) {}

  // All characters, or length characters from start (1-based).
  Characters GetCharacters() const;
  Characters GetCharacters(int start, int length) const;

  bool AutoSize() const;
  void SetAutoSize(bool on);
  bool AutoMargins() const;
  void SetAutoMargins(bool on);
  int HorizontalAlignment() const;  // xlLeft, xlCenter, xlRight
  void SetHorizontalAlignment(int xlAlign);
  int VerticalAlignment() const;  // xlTop, xlCenter, xlBottom
  void SetVerticalAlignment(int xlAlign);
  int Orientation() const;  // msoTextOrientation...
  void SetOrientation(int orientation);
  int ReadingOrder() const;
  void SetReadingOrder(int order);
  double MarginLeft() const;
  void SetMarginLeft(double points);
  double MarginRight() const;
  void SetMarginRight(double points);
  double MarginTop() const;
  void SetMarginTop(double points);
  double MarginBottom() const;
  void SetMarginBottom(double points);

 private:
  friend class TextMeasure;
  std::shared_ptr<ShapeImpl> shape_;
};

}  // namespace nivarel::office
