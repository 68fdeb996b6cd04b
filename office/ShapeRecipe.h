// A shape described fully enough to make it again (kind, every writable
// property, text, the user's own glue points, the ends a line is glued to,
// group members, stacking order), and the undo list's helpers that the
// add-in's own undo actions share. Inside the layer.
#pragma once

#include <vector>

#include <com/sun/star/drawing/GluePoint2.hpp>

#include "Uno.h"

namespace nivarel::office {

constexpr char kGroupShape[] = "com.sun.star.drawing.GroupShape";

struct Recipe {
  OUString type;
  OUString name;
  uno::Any geometry;  // a custom shape's kind, set before anything else
  std::vector<css::beans::PropertyValue> properties;
  bool hasText = false;
  OUString text;
  std::vector<css::drawing::GluePoint2> gluePoints;  // the user's own, in order
  css::awt::Point position;
  css::awt::Size size;
  sal_Int32 z = 0;
  OUString startShape, endShape;
  sal_Int32 startGlue = -1, endGlue = -1;
  std::vector<Recipe> members;
};

Recipe Describe(const Reference<css::drawing::XShape>& shape);
OUString NameOf(const Reference<css::drawing::XShape>& shape);
Reference<css::document::XUndoManager> ManagerOf(const Reference<css::sheet::XSpreadsheetDocument>& document);

// The office records whatever a program changes during an undo once a
// cell's undo has switched its recording back on: an undo action of the
// add-in locks the list for its own work, and leaves it as it found it.
class UnrecordedUndo {
 public:
  explicit UnrecordedUndo(const Reference<css::sheet::XSpreadsheetDocument>& document);
  ~UnrecordedUndo();
  UnrecordedUndo(const UnrecordedUndo&) = delete;
  UnrecordedUndo& operator=(const UnrecordedUndo&) = delete;

 private:
  Reference<css::document::XUndoManager> manager_;
  bool locked_ = false;
};

}  // namespace nivarel::office
