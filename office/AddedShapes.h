// The shapes that a user action adds to a sheet, as one step of the undo
// list. The office records no insertion of a shape made by a program, so the
// add-in records it itself: made while an undo entry is open, this notes the
// sheet's shapes; when it ends it puts an action into the entry that takes
// the shapes added meanwhile off the sheet on Ctrl+Z (keeping a full
// description of each: kind, properties, text, glue points, the ends of
// lines, groups, stacking order) and puts them back as they were on Ctrl+Y.
// The drawing work itself must run unrecorded (UndoList::Pause). Made while
// another lives for the same sheet, it does nothing: the outer one records
// the shapes of both.
#pragma once

#include <memory>

#include "UndoList.h"
#include "Worksheet.h"

namespace nivarel::office {

class AddedShapes {
 public:
  explicit AddedShapes(const Worksheet& sheet);
  ~AddedShapes();
  AddedShapes(const AddedShapes&) = delete;
  AddedShapes& operator=(const AddedShapes&) = delete;

 struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace nivarel::office
