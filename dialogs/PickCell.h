// The step a dialog takes when the user asks to pick a cell on the sheet:
// the office's range picker under title, started from startAt, or when that
// is empty from the cell in the box (C3 when the box is empty too); the
// picked address goes into the box, a failed pick is told under "Range
// Selection Error", a cancel changes nothing.
#pragma once

#include <string>

#include "UserDialog.h"

namespace nivarel::dialogs {

void PickCellInto(host::UserDialog& form, const std::string& box, const std::string& prompt,
                  const std::string& title = "Select Location", const std::string& startAt = "");

}  // namespace nivarel::dialogs
