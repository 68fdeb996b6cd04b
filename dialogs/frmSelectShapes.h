// The shape selection tool (" Shape Selection Tool"): every drawing object of
// the active sheet in a table (its kind, column, row and text, with a check
// box to select it), members of groups too (the groups are opened for the
// listing and closed again), less a template's shapes. The kinds found make
// a list of filters; "Apply Filters" checks the rows of the checked kinds and
// unchecks all others, and all rows can be checked or unchecked at once. OK
// selects the checked shapes in the office, or leaves the selection as it
// was when none is checked; Cancel selects nothing.
#pragma once

#include <string>

namespace nivarel::dialogs {

class frmSelectShapes {
 public:
  void Display();
  // True when closed with OK.
  bool OK() const { return ok_; }

  // The column letters of a relative address: its leading characters that
  // are not digits ("AB" for "AB12").
  static std::string ColumnToAlpha(const std::string& address);

 private:
  bool ok_ = false;
};

}  // namespace nivarel::dialogs
