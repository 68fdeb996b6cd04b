// Counting the shapes of a flowchart on a sheet.
#pragma once

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "Shape.h"
#include "Shapes.h"
#include "Worksheet.h"

namespace nivarel::host {

// The shapes of the active sheet that make a flowchart: auto shapes, groups
// and text boxes, less template frames (names beginning "TEMPLATE", any
// case) and the symbol key ("Flowchart Key", exactly). Lines, connectors and
// pictures don't count; a group counts once.
long GetNonTemplateShapeCount();
// The same count on a given sheet: a run counts on its own sheet, whichever
// document the office shows in front. With a limit the count stops there,
// looking at the newest shapes first: a run that only asks whether there are
// two does not look at every shape of a full sheet.
long GetNonTemplateShapeCount(const office::Worksheet& ws, long limit = LONG_MAX);

// Opens every group of the sheet that opens answers true for (all when it is
// empty), nested ones too, and answers each one's first member in the order
// opened; RegroupShapes closes them again, the one opened last first, with
// the same members. Members are held by handle, not by name: shapes drawn by
// hand in the office have none. A failure is logged under the caller's
// source and procedure, and the walk goes on where it can.
std::vector<office::Shape> UngroupShapes(office::Shapes& shapes, const std::string& source,
                                         const std::string& procedure,
                                         const std::function<bool(const office::Shape&)>& opens = {});
void RegroupShapes(std::vector<office::Shape>& firstMembers, const std::string& source,
                   const std::string& procedure);

}  // namespace nivarel::host
