// The group box tool (" Insert Group Box"): a titled frame drawn behind a
// range of cells of the active sheet, to mark a stage or an owner of a
// chart. The frame is a process symbol (square corners) or an alternate
// process (rounded), exactly as large as the range's cells, named
// "GROUP_BOX_" and the office's own name for it so that the other tools leave
// it alone, sent behind every other shape, with its label's font, size,
// weight and alignment, an optional dashed outline and a symbol style. OK
// draws it as one entry of the undo list; a blank or unreadable range is told
// and the dialog stays open; Cancel draws nothing.
#pragma once

namespace nivarel::dialogs {

class frmInsertGroupBox {
 public:
  void Display();
  // True when a box was drawn.
  bool OK() const { return ok_; }

 private:
  bool ok_ = false;
};

}  // namespace nivarel::dialogs
