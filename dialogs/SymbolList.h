// The symbols of a sheet that the tools offer to join: every auto shape that
// is not a connector and whose name does not begin with "TEMPLATE" (any
// case), members of groups included. Groups are opened for the walk and
// closed again, with the same members, before the list is answered.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::dialogs {

struct ListedSymbol {
  std::string name;
  int autoShapeType = 0;
  std::string cell;  // the top-left cell, relative ("C3")
  std::string text;  // "<no text>" when it cannot be read
  double centreX = 0, centreY = 0;  // points
};

// In drawing order. Failures are logged under source and procedure; what
// was read stays.
std::vector<ListedSymbol> ListSymbols(const office::Worksheet& ws, const std::string& source,
                                      const std::string& procedure);

// The shape of that name, at the top level or inside a group (names compared
// exactly); none when it is gone.
std::optional<office::Shape> FindSymbol(const office::Worksheet& ws, const std::string& name);

// The distance in points between two points, rounded to a whole number.
int RoundedDistance(double x1, double y1, double x2, double y2);

}  // namespace nivarel::dialogs
