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

class Shapes {
 public:
  explicit Shapes(std::shared_ptr<SheetRef> sheet) : sheet_(std::move(sheet)) {}

  int Count() const;
  // By 1-based index in drawing order, or by name; a missing one raises HostError.
  Shape Item(int index) const;
  Shape Item(const std::string& name) const;

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
