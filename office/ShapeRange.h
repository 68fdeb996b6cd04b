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

  // The part of the sheet a picture of these shapes shows, in points.
  struct PictureArea {
    double left = 0, top = 0, width = 0, height = 0;
  };
  // What the shapes cover as drawn (outlines, line ends and shadows
  // included); empty for no shapes.
  PictureArea Area() const;
  // Writes a PNG picture of these shapes alone, as they stand, at
  // pixelsPerPoint (2 is 144 dpi) and returns the area it shows.
  PictureArea ExportPicture(const std::string& path, double pixelsPerPoint = 2) const;

 private:
  std::shared_ptr<SheetRef> sheet_;
  std::vector<Shape> shapes_;
};

}  // namespace nivarel::office
