// The step a dialog takes when the user asks to pick a cell on the sheet:
// the office's range picker, started from the cell in the box (C3 when it is
// empty); the picked address goes into the box, a failed pick is told under
// "Range Selection Error", a cancel changes nothing.
#pragma once

#include <string>

#include "UserDialog.h"

namespace nivarel::dialogs {

void PickCellInto(host::UserDialog& form, const std::string& box, const std::string& prompt);

}  // namespace nivarel::dialogs
