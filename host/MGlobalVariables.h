// Process-wide state of the add-in and the grid measure. It lives for one
// connection to the office and every part of the add-in reads it directly;
// the connection sets it up and tears it down.
#pragma once

#include <optional>

#include "Application.h"

namespace nivarel::host {

// The office. Set on connection and released as the very last step of the
// shut-down.
extern std::optional<office::Application> ExcelApp;
// Major version of the object model that the office offers: 12 and above take
// the ribbon road, lower versions the command bar road.
extern int ExcelVersion;
// The shut-down has run; a second one does nothing.
extern bool ShutdownDone;
// Height of a default row in points: the unit of all vertical layout.
extern float GlobalRowHeight;
// Column width, in character widths, that makes the grid's cells square.
extern float GlobalColumnWidth;
// Both grid measures have been taken in this connection.
extern bool GlobalRowHeightSet;
// The message pump is running on behalf of the add-in.
extern bool InDoEvents;

// Clears ShutdownDone, InDoEvents and GlobalRowHeightSet, so that a new
// connection measures the grid anew.
void InitializeGlobals();
// Whether the grid has been measured in this connection.
bool IsGlobalRowHeightSet();
// Gives the office's event loop a turn, unless it is already having one on
// the add-in's behalf.
void SafeDoEvents();
// Measures the grid on a temporary sheet of the active document: the default
// row height, and the column width that makes a cell square with it. Errors
// are logged; the measure then stays unset.
void SetGlobalRowHeight();

}  // namespace nivarel::host
