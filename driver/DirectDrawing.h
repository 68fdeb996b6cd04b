// Changes to a sheet's drawing made through the office API alone, as the
// user's own drawing, a macro or another extension would make them: the
// object model does not see them happen.
#pragma once

#include <string>

#include "Worksheet.h"

namespace nivarel::driver {

// Draws a rectangle at (left, top) points, 40 by 20, named name ("" for a
// shape without a name, as the user draws one), on top of the others.
void DrawRectangleDirectly(const office::Worksheet& sheet, const std::string& name, double left, double top);
// Removes the shape at 1-based drawing position index.
void RemoveShapeDirectly(const office::Worksheet& sheet, int index);
// Moves the shape at 1-based drawing position index to the top.
void BringToFrontDirectly(const office::Worksheet& sheet, int index);
// Renames the shape at 1-based drawing position index.
void RenameShapeDirectly(const office::Worksheet& sheet, int index, const std::string& name);

}  // namespace nivarel::driver
