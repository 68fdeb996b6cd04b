// Gives flow lines their look: a medium triangle arrowhead at the end, and a
// line style 1 to 21 (three weights of seven colours) that can be read back.
// On version 12 and later the style is the host's line style preset; below it
// the same look is built from the host's line style gallery. Also puts all
// lines of a sheet behind its shapes.
#pragma once

#include <cstdint>

#include "CConfig.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CFlowLineFormatter {
 public:
  // Applies the configured FlowLineStyle, keeping dash and visibility.
  void SetLineFormat(office::Shape& line, const rules::CConfig& config);
  // Arrowhead and style on a new solid line. A refused arrowhead raises
  // HostError to the caller; a refused style is logged.
  void SetNewSolidFlowLineFormat(office::Shape& line, int16_t style);
  // Arrowhead, a visible solid single line in the style, then dashes. A
  // refused arrowhead or dash raises HostError to the caller.
  void SetNewDashedFlowLineFormat(office::Shape& line, int16_t style);
  // Restyles a connector with FlowLineStyle (a new one also gets the
  // arrowhead and a visible solid line first) and, when
  // AlternateProcessDashed is set, dashes it if either end is glued to an
  // alternate process.
  void SetFlowLineFormat(office::Shape& line, const rules::CConfig& config, bool isNew);
  // The line's style: the host's preset on version 12 and later, otherwise
  // weight group and colour; an unknown colour counts as black. 0 on failure.
  int16_t GetLineStyle(office::Shape& line);
  // Sends every line and connector of the sheet to the back. Ignores errors.
  void SetFlowLineOrder(office::Worksheet& worksheet);

 private:
  void SetArrowhead(office::Shape& line);
  // With reset, first a visible, solid, single line.
  void SetLineStyle(office::Shape& line, int16_t style, bool reset);
};

}  // namespace nivarel::shapes
