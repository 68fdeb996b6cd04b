// A group box: a titled frame drawn behind a part of a chart to mark a stage
// or an owner. The frame is a process symbol (square corners) or an
// alternate process (rounded) at the given place and size, named
// "GROUP_BOX_" and the office's own name for it so that the other tools
// leave it alone, sent behind every other shape, with its label's font,
// size, weight and alignment, an optional dashed outline and a symbol style.
// The caller records it in the undo list; failures raise HostError.
#pragma once

#include <string>

#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::shapes {

struct GroupBoxChoices {
  static constexpr int kDefaultStyle = 43;  // the first solid style
  std::string label, fontName;
  double fontSize = 10;
  bool bold = false, italic = false, rounded = false, dashed = false;
  int hAlign = 0, vAlign = 0;  // 0 left, 1 centre, 2 right; 0 top, 1 middle, 2 bottom
  int style = kDefaultStyle;
};

office::Shape DrawGroupBox(office::Worksheet& ws, double left, double top, double width, double height,
                           const GroupBoxChoices& choices);

}  // namespace nivarel::shapes
