// Counting the shapes of a flowchart on a sheet.
#pragma once

namespace nivarel::host {

// The shapes of the active sheet that make a flowchart: auto shapes, groups
// and text boxes, less template frames (names beginning "TEMPLATE", any
// case) and the symbol key ("Flowchart Key", exactly). Lines, connectors and
// pictures don't count; a group counts once.
long GetNonTemplateShapeCount();

}  // namespace nivarel::host
