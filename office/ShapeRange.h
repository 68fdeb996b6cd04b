// Several shapes of one sheet taken together, to group, select or name.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Shape.h"

namespace nivarel::office {

struct SheetRef;

class ShapeRange {
 public:
  ShapeRange(std::shared_ptr<SheetRef> sheet, std::vector<Shape> shapes)
      : sheet_(std::move(sheet)), shapes_(std::move(shapes)) {}

  int Count() const { return static_cast<int>(shapes_.size()); }
  Shape Item(int index) const;  // 1-based
  const std::vector<Shape>& Items() const { return shapes_; }
  // Groups the shapes; the group gets a fresh name.
  Shape Group();
  void Select() const;

 private:
  std::shared_ptr<SheetRef> sheet_;
  std::vector<Shape> shapes_;
};

}  // namespace nivarel::office
