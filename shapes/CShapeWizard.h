// Shape work for the batch tools, whose layout is worked out before the
// shapes are drawn: adding text to an existing shape and sizing a shape with
// the classes the layout gives.
#pragma once

#include <cstdint>
#include <string>

#include "CConfig.h"
#include "CShapeDimensions.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CShapeWizard {
 public:
  // Adds a long text in pieces of 250 characters (see CShapeAdder).
  void AddTextToShape(office::Shape& shape, const std::string& text);
  // Sets the whole text in one step (object model 12 and later).
  void AddTextToXL2007Shape(office::Shape& shape, const std::string& text);
  // Sizes the shape as a symbol of symbolId with at least minRows rows and
  // widthClass grid units wide. A connector sized by its text is centred on
  // the width class.
  void SetShapeDimensions(office::Shape& shape, int16_t symbolId, const std::string& text, int16_t minRows,
                          int32_t widthClass, const rules::CConfig& config);
  // Puts the four texts as labels beside shape, one on each side whose text
  // isn't empty, placed by config's BranchPosition. BranchLabelOption plays
  // no part, and the labels are never grouped with the shape. A label that
  // fails is logged and leaves the earlier ones.
  void AddBranchLabels(office::Worksheet& worksheet, office::Shape& shape, const rules::CConfig& config,
                       const std::string& topText, const std::string& rightText, const std::string& bottomText,
                       const std::string& leftText);

 private:
  // Moves label to side (1 top, 2 right, 3 bottom, 4 left) of shape.
  void SetBranchLabelPosition(const office::Shape& shape, office::Shape& label, const rules::CConfig& config,
                              int16_t side);

  CShapeDimensions dimensions_;
};

}  // namespace nivarel::shapes
