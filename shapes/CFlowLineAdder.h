// Joins two shapes with a connector glued to both and formatted as a flow
// line. The default line runs from the bottom of the first shape to the top
// of the second and the host then picks the shortest pair of sites; a
// user-defined line keeps the sides the caller names. Sides are 0 top,
// 1 right, 2 bottom, 3 left. Errors are logged; the caller goes on.
#pragma once

#include <cstdint>
#include <optional>

#include "CConfig.h"
#include "CFlowLineFormatter.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CFlowLineAdder {
 public:
  // Connector of FlowLineType in FlowLineStyle, dashed when either shape is
  // an alternate process, sent behind the shapes. Returns the line, or
  // nothing when it could not be made.
  std::optional<office::Shape> AddDefaultFlowLine(office::Worksheet& worksheet, office::Shape& fromShape,
                                                office::Shape& toShape, const rules::CConfig& config);
  // As AddDefaultFlowLine, glued to the named sides without rerouting, and
  // also dashed when dashed is true.
  std::optional<office::Shape> AddUserDefinedFlowLine(office::Worksheet& worksheet, office::Shape& fromShape,
                                                    office::Shape& toShape, int16_t fromSide, int16_t toSide,
                                                    const rules::CConfig& config, bool dashed);
  // The host's connection site on the given side of a shape of the given
  // MsoAutoShapeType; 1 for a type outside 1 to 137 or a side outside 0 to 3.
  static int GetConnectionPoint(int shapeType, int side);

 private:
  std::optional<office::Shape> AddNewFlowline(office::Worksheet& worksheet, office::Shape& fromShape,
                                            office::Shape& toShape, int16_t fromSide, int16_t toSide,
                                            const rules::CConfig& config, bool dashed);
  // The middle of a side, in points; 0 for a side outside 0 to 3.
  static double GetShapeSideX(const office::Shape& shape, int side);
  static double GetShapeSideY(const office::Shape& shape, int side);

  CFlowLineFormatter formatter_;
};

}  // namespace nivarel::shapes
