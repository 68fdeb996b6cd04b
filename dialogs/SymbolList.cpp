#include "SymbolList.h"

#include <cmath>

#include "Characters.h"
#include "MErrorHandler.h"
#include "MShapeRanges.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shapes.h"
#include "Text.h"
#include "UndoList.h"
#include "Workbook.h"
#include "TextFrame.h"

namespace nivarel::dialogs {

using namespace office;

std::vector<ListedSymbol> ListSymbols(const Worksheet& ws, const std::string& source, const std::string& procedure) {
  std::vector<ListedSymbol> list;
  try {
    // Opening the groups to read their members and closing them again is
    // nothing the user would take back: it stays out of the undo list.
    UndoList::Pause unrecorded(ws.Parent());
    Shapes shapes = ws.GetShapes();
    std::vector<Shape> firstMembers = host::UngroupShapes(shapes, source, procedure);
    try {
      int count = shapes.Count();
      for (int i = 1; i <= count; ++i) {
        Shape shape = shapes.Item(i);
        std::string name = shape.Name();
        if (rules::UpperCase(name).rfind("TEMPLATE", 0) == 0) continue;
        if (shape.Type() != msoAutoShape || shape.Connector()) continue;
        ListedSymbol symbol;
        symbol.name = name;
        symbol.autoShapeType = shape.AutoShapeType();
        symbol.cell = shape.TopLeftCell().Address(false);
        try {
          symbol.text = shape.GetTextFrame().GetCharacters().Text();
        } catch (...) {
          symbol.text = "<no text>";
        }
        symbol.centreX = shape.Left() + shape.Width() / 2;
        symbol.centreY = shape.Top() + shape.Height() / 2;
        list.push_back(symbol);
      }
    } catch (...) {
      host::ErrorHandler(source, procedure, false);
    }
    host::RegroupShapes(firstMembers, source, procedure);
  } catch (...) {
    host::ErrorHandler(source, procedure, false);
  }
  return list;
}

std::optional<Shape> FindSymbol(const Worksheet& ws, const std::string& name) {
  Shapes shapes = ws.GetShapes();
  int count = shapes.Count();
  for (int i = 1; i <= count; ++i) {
    Shape shape = shapes.Item(i);
    if (shape.Type() == msoGroup) {
      for (Shape& member : shape.GroupItems())
        if (member.Name() == name) return member;
    } else if (shape.Name() == name) {
      return shape;
    }
  }
  return std::nullopt;
}

int RoundedDistance(double x1, double y1, double x2, double y2) {
  return static_cast<int>(std::lround(std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1))));
}

}  // namespace nivarel::dialogs
