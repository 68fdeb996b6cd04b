// Prepares a sheet for drawing: the cells become an even square grid that
// symbols are measured in, the page takes the stored paper, orientation and
// margins, and shapes snap to the grid.
#pragma once

#include "CConfig.h"
#include "Worksheet.h"

namespace nivarel::shapes {

class CPageLayout {
 public:
  // The grid when IsGrid, a white fill when HideGridlines, and with
  // CustomLayout the page setup. Goes on past errors; a paper the office
  // does not know ends the page setup with a message.
  void SetPageLayout(office::Worksheet& worksheet, const rules::CConfig& config);
  // The square grid on the active sheet, with snapping on.
  void CreateGrid();
  // Snapping of shapes to the grid; errors are ignored.
  void SnapToGrid(bool on);
  // Snapping to other shapes: the office has no such switch for sheets, so
  // this does nothing (the drawing does not depend on it).
  void SnapToShape(bool on);
};

}  // namespace nivarel::shapes
