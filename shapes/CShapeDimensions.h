// Sizes a symbol to its text on the grid: width by the symbol's width class,
// height in whole rows of the sheet (GlobalRowHeight), as many as the text
// needs when wrapped in that width. The text is wrapped word by word, each
// line measured in the shape's font by the office's font engine
// (office::TextMeasure); the shape fitted to the wrapped lines gives the
// height. What the shape itself adds to its text, in width (the margins, and
// the part of the shape that holds text) and in height for a number of
// lines, is learnt from the office by fitting the shape, once per kind of
// symbol, look of text and width for the life of the process.
#pragma once

#include <cstdint>
#include <string>

#include <optional>

#include "CConfig.h"
#include "CSymbolData.h"
#include "Shape.h"
#include "TextMeasure.h"

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
  // width grid units wide and as many rows high as text wraps to, at least
  // minRows, with its top left corner at left, top; the office no longer
  // fits the shape to its text.
  void SetTerminatorDimensions(office::Shape& shape, int32_t width, int16_t minRows, double left, double top,
                               const std::string& text);

 private:
  friend class CShapeWizard;
  void SetConnectorDimensions(office::Shape& shape, const rules::CConfig& config, int16_t type, int32_t width,
                              int16_t minRows, int32_t centreWidth, double left, double top,
                              const std::string& text);
  void SetNormalShapeDimensions(office::Shape& shape, int32_t width, int16_t minRows, double left, double top,
                                const std::string& text);
  std::string ProcessParagraph(const std::string& paragraph, office::Shape& shape, double limit);
  bool LineFits(const std::string& line, const std::string& word, office::Shape& shape, double limit);
  std::string WrapSingleWord(const std::string& word, office::Shape& shape, double limit);
  bool WordFits(const std::string& piece, office::Shape& shape, double limit);
  static std::string ConditionalAppend(const std::string& first, const std::string& second,
                                       const std::string& separator);
  // The width of the shape fitted to text: a × the text's width + b.
  double FittedWidth(office::Shape& shape, const std::string& text);
  // The width of the shape fitted to text, by the office itself.
  double FitShape(office::Shape& shape, const std::string& text);
  // Gets the measure ready for shape: its look, and what it adds to a text.
  void Prepare(office::Shape& shape);
  // The height of the shape holding the wrapped lines at width grid units;
  // leaves text in the shape.
  double WrappedHeight(office::Shape& shape, const std::string& wrapped, const std::string& text, int32_t width);
  // Lets the shape grow sideways while it is measured, and wrap again after.
  void BeginMeasure(office::Shape& shape);
  void EndMeasure(office::Shape& shape);
  void StopFitting(office::Shape& shape);
  // Sets the final place and size: width and rows in grid units.
  void Place(office::Shape& shape, double left, double top, int32_t width, int32_t rows);

  std::optional<office::Shape> m_For;  // the shape the measure is ready for
  std::optional<office::TextMeasure> m_Measure;
  int m_Type = 0;
  double m_A = 1, m_B = 0;
  bool m_Measuring = false;  // the shape grows sideways to fit its text
};

}  // namespace nivarel::shapes
