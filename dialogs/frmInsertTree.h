// The branch tool (" Insert Branch"): a fan of new symbols joined to one
// symbol of the sheet in one go. Step 1 picks the symbol to join from, from
// the sheet's symbols listed nearest first (groups opened for the listing
// and closed again), or on a sheet without symbols makes it (text, symbol,
// cell); step 2 picks one of six layouts and the spacing; step 3 lists the
// items (symbol, text, label, dashed line), added, edited, deleted and moved
// one by one. OK draws the fan as one entry of the undo list; Cancel draws
// nothing.
#pragma once

#include <string>

#include "Worksheet.h"

namespace nivarel::dialogs {

class frmInsertTree {
 public:
  // Shows the dialog over ws. lastShapeName is the symbol a live run drew
  // last ("" for none): its row is selected, and distances are measured from
  // it. shapeCount is the sheet's count of symbols: 0 offers a new base
  // symbol instead of the list.
  void Display(office::Worksheet& ws, const std::string& lastShapeName, int shapeCount);
  // After Display: the symbol to go on from (the new item the live run
  // continues below), or the name given when nothing was drawn.
  const std::string& LastShapeName() const { return lastShapeName_; }
  // True when branches were drawn.
  bool OK() const { return ok_; }

 private:
  std::string lastShapeName_;
  bool ok_ = false;
};

}  // namespace nivarel::dialogs
