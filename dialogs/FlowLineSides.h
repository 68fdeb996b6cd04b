// What the two flow line dialogs share: the sides a new line leaves its
// first shape by and enters its second by (0 top, 1 right, 2 bottom,
// 3 left), shown as two groups of option buttons ("optConnectionFrom0".."3",
// "optConnectionTo0".."3") and on a diagram as two sample symbols, one with
// an arrow out of the first shape's side ("imgFrom"), one with an arrow into
// the second's ("imgTo"); a click on an option or on a side's label around
// a sample ("lblFrom0".."3", "lblTo0".."3") sets that one side. The sides are also
// worked out from where the two shapes stand. And the quick search of a
// list of symbols, and the drawing of the chosen line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "CConfig.h"
#include "PictureGrid.h"
#include "Shape.h"
#include "UserDialog.h"
#include "Worksheet.h"
#include "ucImages.h"

namespace nivarel::dialogs {

struct LineSides {
  int16_t from = 2, to = 0;
  bool operator==(const LineSides& o) const { return from == o.from && to == o.to; }
};

// The sides for a line from a first to a second shape that lie in direction
// (0 up, 1 right, 2 down, 3 left) of one another: facing sides, unless they
// stand in line with other shapes between them, when the line goes round
// on the right (upright) or over the top (sideways).
LineSides SidesBetween(bool inLineWithOthersBetween, int16_t direction);

// The first of texts that begins with typed, letter case ignored; -1 when
// typed is empty or none does.
int QuickSearchRow(const std::vector<std::string>& texts, const std::string& typed);

class FlowLineSides {
 public:
  explicit FlowLineSides(host::UserDialog& dialog);

  // The options and the diagram of the sides as they stand.
  void Show();
  // True when method was a click on one of the options or labels.
  bool Handle(const std::string& method);
  // Sets both sides from the two shapes of those names (group members
  // too), as SidesBetween gives them. Errors leave the sides as they were.
  void SetArrowPositions(const office::Worksheet& ws, const std::string& first, const std::string& second);
  LineSides Sides() const { return sides_; }

 private:
  void SetSide(bool from, int16_t side);

  host::UserDialog& dialog_;
  output::ucImages pictures_;
  LineSides sides_;
};

// Draws the line the user chose, from first to second by the given sides,
// as one entry of the undo list ("Nivarel: Insert Flow Line").
void AddChosenFlowLine(office::Worksheet& ws, office::Shape& first, office::Shape& second, LineSides sides,
                       const rules::CConfig& config);

// The list's quick search: the text of box (found in the column textKey)
// selects the first row it begins. Errors are ignored.
void QuickSearch(host::UserDialog& dialog, PictureGrid& grid, const std::string& box, const std::string& textKey);

}  // namespace nivarel::dialogs
