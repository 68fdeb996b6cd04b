// Counting the shapes of a flowchart on a sheet.
#pragma once

#include <climits>

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

}  // namespace nivarel::host
