// The drawing layer of one sheet. New shapes are placed on top and get a
// fresh name, unique on the sheet: a word and a number.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Picture.h"
#include "Shape.h"
#include "ShapeRange.h"

namespace nivarel::office {

struct SheetRef;

// Where one top-level shape stands and what it is, as read by Outlines.
struct ShapeOutline {
  int index = 0;            // 1-based, in drawing order
  const void* key = nullptr;  // Shape::Key of the shape
  int type = 0;             // Shape::Type, except that callouts answer msoAutoShape
  bool connector = false;   // Shape::Connector
  double left = 0, top = 0, width = 0, height = 0;  // points
};

// A moment in the life of a sheet's drawing, as the layer saw it.
struct ShapeMark {
  long index = 0;  // the sheet's shape index
  long journal = -1;
  size_t position = 0;
  size_t reorders = 0;
};

class Shapes {
 public:
  explicit Shapes(std::shared_ptr<SheetRef> sheet) : sheet_(std::move(sheet)) {}

  int Count() const;
  // By 1-based index in drawing order, or by name; a missing one raises HostError.
  Shape Item(int index) const;
  Shape Item(const std::string& name) const;
  // Every top-level shape's outline, bottom first, in one operation: for
  // the logic that looks at all the shapes of a sheet at once.
  std::vector<ShapeOutline> Outlines() const;
  // One shape's outline as Outlines reads it, its index left 0.
  static ShapeOutline Outline(const Shape& shape);
  // Now, and what has happened since: the top-level shapes the layer added
  // since mark, in drawing order, and whether it moved any other shape up or
  // down the drawing order. False when the sheet changed meanwhile in a way the layer
  // cannot tell apart (shapes drawn, deleted or moved by anyone else, undo
  // and redo), or when mark is of another sheet.
  ShapeMark Mark() const;
  bool AddedSince(const ShapeMark& mark, std::vector<Shape>& added, bool& reordered) const;

  // An auto shape of type 1 to 137 (MsoAutoShapeType); other types raise HostError.
  Shape AddShape(int autoShapeType, double left, double top, double width, double height);
  // A connector from (beginX, beginY) to (endX, endY), not yet glued.
  Shape AddConnector(int connectorType, double beginX, double beginY, double endX, double endY);
  Shape AddLine(double beginX, double beginY, double endX, double endY);
  Shape AddTextbox(int orientation, double left, double top, double width, double height);
  // A picture shape showing picture, scaled to width by height points.
  Shape AddPicture(const Picture& picture, double left, double top, double width, double height);

  ShapeRange GetRange(const std::vector<std::string>& names) const;
  void SelectAll() const;

 private:
  std::shared_ptr<SheetRef> sheet_;
};

}  // namespace nivarel::office
