// Decides how a new shape stands to the one before it: which way the flow
// goes (0 up, 1 right, 2 down, 3 left), whether the two are in line with no
// other shape between them, and if so centres the new shape on the previous
// one's line. Errors are logged; each operation answers what it has.
#pragma once

#include <cstdint>
#include <vector>

#include "Shape.h"
#include "Shapes.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CShapeAlignment {
 public:
  static constexpr int16_t kUp = 0, kRight = 1, kDown = 2, kLeft = 3;

  // True when the two are aligned and adjacent; the new shape has then been
  // moved across the flow (its top for a sideways flow, its left for an
  // upright one) so that both centres lie on one line, its size kept. The
  // direction is found and kept whatever the answer. column and row are the
  // new shape's cell, lastColumn and lastRow the previous shape's.
  bool AlignShapes(const office::Worksheet& worksheet, const office::Shape& previousShape, office::Shape& newShape,
                   int32_t column, int32_t lastColumn, int32_t row, int32_t lastRow);
  // The direction found by the last AlignShapes.
  int16_t FlowDirection() const { return flowDirection_; }

  // Same column or same row, or one shape's centre within the other's height
  // or width, edges included.
  bool IsAligned(const office::Shape& previousShape, const office::Shape& newShape, int32_t column,
                 int32_t lastColumn, int32_t row, int32_t lastRow) const;
  // False when another shape's centre lies strictly between the two centres
  // along direction and the shape strictly spans the previous shape's centre
  // line. Lines, text boxes and a group holding the previous shape never
  // block; nor does anything for a direction outside 0 to 3.
  bool IsAdjacent(const office::Worksheet& worksheet, const office::Shape& previousShape,
                  const office::Shape& newShape, int16_t direction) const;
  // The direction from the previous centre to the new one, to 0.01 point:
  // upright when the vertical distance is not less than the horizontal one.
  int16_t GetFlowDirection(const office::Shape& previousShape, const office::Shape& newShape) const;

  // A batch that keeps the outlines of every top-level shape of its sheet
  // up to date as it draws may hand them over: IsAdjacent then reads them
  // instead of the sheet. Null goes back to reading the sheet.
  void UseOutlines(const std::vector<office::ShapeOutline>* outlines) { outlines_ = outlines; }

 private:
  int16_t flowDirection_ = 0;
  const std::vector<office::ShapeOutline>* outlines_ = nullptr;
};

}  // namespace nivarel::shapes
