#include "CShapeAdder.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "Range.h"
#include "Shapes.h"
#include "TextEncoding.h"
#include "Text.h"

namespace nivarel::shapes {

std::optional<office::Shape> CShapeAdder::AddShape(std::optional<office::Worksheet>& worksheet,
                                                 const rules::CSymbolData& symbols, const rules::CConfig& config,
                                                 CShapeFormatter& formatter, const std::string& text,
                                                 const std::string& cellAddress, int16_t shapeType,
                                                 const std::string& shapeName) {
  try {
    if (!worksheet && host::ExcelApp) worksheet = host::ExcelApp->ActiveSheet();
    if (!worksheet) return std::nullopt;
    office::Range cell = worksheet->GetRange(cellAddress);
    double left = cell.Left(), top = cell.Top();
    int16_t width = symbols.GetWidth(shapeType);
    int16_t height = symbols.GetMinHeight(shapeType);
    int16_t style = symbols.GetStyle(shapeType);
    std::optional<office::Shape> shape;
    try {
      shape = worksheet->GetShapes().AddShape(shapeType, left, top, width * host::GlobalRowHeight,
                                              height * host::GlobalRowHeight);
    } catch (...) {
      return std::nullopt;
    }
    if (!shapeName.empty()) {
      try {
        shape->SetName(shapeName);
      } catch (...) {
      }
    }
    size_t n = rules::CharacterCount(rules::Trim(text));
    office::Characters characters = shape->GetTextFrame().GetCharacters();
    // Formatting needs characters to act on: a placeholder stands in for none.
    if (n == 0)
      characters.SetText("Text");
    else if (n > 250)
      AddTextInPieces(*shape, text);
    else
      characters.SetText(text);
    formatter.SetAllFormatSettings(*shape, config, style);
    if (n == 0) characters.SetText(" ");
    return shape;
  } catch (...) {
    host::ErrorHandler("CShapeAdder", "AddShape", false);
    return std::nullopt;
  }
}

void CShapeAdder::AddTextInPieces(office::Shape& shape, const std::string& text) {
  try {
    office::TextFrame frame = shape.GetTextFrame();
    size_t length = rules::CharacterCount(text);
    for (size_t position = 1; position < length; position += 250) {
      size_t from = rules::CharacterOffset(text, position - 1);
      size_t to = rules::CharacterOffset(text, position - 1 + 250);
      frame.GetCharacters(static_cast<int>(position), -1).Insert(text.substr(from, to - from));
    }
  } catch (...) {
  }
}

}  // namespace nivarel::shapes
