// Puts a symbol on the sheet over a cell in one call: the shape type at the
// cell's top left corner, its default size from the symbol's classes, its
// text and its look. A shape the office refuses is no error: the caller goes
// on without one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CConfig.h"
#include "CShapeFormatter.h"
#include "CSymbolData.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CShapeAdder {
 public:
  // worksheet, when empty, becomes the active sheet. shapeName, when not
  // empty, names the shape (a taken name leaves the office's own).
  std::optional<office::Shape> AddShape(std::optional<office::Worksheet>& worksheet, const rules::CSymbolData& symbols,
                                      const rules::CConfig& config, CShapeFormatter& formatter,
                                      const std::string& text, const std::string& cellAddress, int16_t shapeType,
                                      const std::string& shapeName);

  // Adds text after the shape's text in pieces of 250 characters, while the
  // position is below the text's length: a text 250 × k + 1 characters long
  // loses its last character, as the piecewise route always has.
  static void AddTextInPieces(office::Shape& shape, const std::string& text);
};

}  // namespace nivarel::shapes
