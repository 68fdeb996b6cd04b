// Sizes a symbol to its text on the grid: width by the symbol's width class,
// height in whole rows of the sheet (GlobalRowHeight), as many as the text
// needs when wrapped in that width. The shape itself is the measure: the text
// is wrapped word by word, asking the shape for its width after each word,
// then the shape fits itself to the wrapped lines and its height is read.
#pragma once

#include <cstdint>
#include <string>

#include "CConfig.h"
#include "CSymbolData.h"
#include "Shape.h"

namespace nivarel::shapes {

class CShapeDimensions {
 public:
  // maxWidth is the widest width class in force; newColumn says the shape
  // stands in another column than the one before it.
  void SetShapeDimensions(office::Shape& shape, const rules::CConfig& config, const rules::CSymbolData& symbols,
                          int32_t maxWidth, bool newColumn, const std::string& text);
  // The rows that text needs at a width of width grid units. Leaves the
  // shape at the sheet's top left corner: callers put it back.
  int16_t GetWrappedTextRowCount(const std::string& text, office::Shape& shape, int32_t width);

 private:
  friend class CShapeWizard;
  void SetConnectorDimensions(office::Shape& shape, const rules::CConfig& config, int16_t type, int32_t width,
                              int16_t minRows, int32_t centreWidth, double left, double top,
                              const std::string& text);
  void SetTerminatorDimensions(office::Shape& shape, int32_t width, int16_t minRows, double left, double top,
                               const std::string& text);
  void SetNormalShapeDimensions(office::Shape& shape, int32_t width, int16_t minRows, double left, double top,
                                const std::string& text);
  std::string ProcessParagraph(const std::string& paragraph, office::Shape& shape, double limit);
  bool LineFits(const std::string& line, const std::string& word, office::Shape& shape, double limit);
  std::string WrapSingleWord(const std::string& word, office::Shape& shape, double limit);
  bool WordFits(const std::string& piece, office::Shape& shape, double limit);
  static std::string ConditionalAppend(const std::string& first, const std::string& second,
                                       const std::string& separator);
  // The width of the shape fitted to text.
  double FittedWidth(office::Shape& shape, const std::string& text);
  // Lets the shape grow sideways while it is measured, and wrap again after.
  void BeginMeasure(office::Shape& shape);
  void EndMeasure(office::Shape& shape);
  void StopFitting(office::Shape& shape);
  // Sets the final place and size: width and rows in grid units.
  void Place(office::Shape& shape, double left, double top, int32_t width, int32_t rows);
};

}  // namespace nivarel::shapes
