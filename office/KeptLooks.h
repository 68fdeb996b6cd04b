// The looks of one sheet's shapes, kept across a user action in the undo
// list. The office takes back no change that a program makes to a shape's
// properties (fill, outline, shadow, text format, the layer's style id).
// Made while an undo entry is open, this notes the properties of every shape
// of the sheet, group members included; when it ends it puts an action into
// the entry that sets each property the user action changed back as it was
// on Ctrl+Z, and as the action left it on Ctrl+Y, together with the
// stacking order of the sheet's top-level shapes. Place and size are not
// kept. A shape is followed through the layer's own grouping and ungrouping
// by its handle (the office makes its object anew), and found again on
// Ctrl+Z and Ctrl+Y at its place among the sheet's shapes and groups, so
// that shapes without a name, as the user draws them, are kept too.
#pragma once

#include <memory>

#include "Worksheet.h"

namespace nivarel::office {

class KeptLooks {
 public:
  explicit KeptLooks(const Worksheet& sheet);
  ~KeptLooks();
  KeptLooks(const KeptLooks&) = delete;
  KeptLooks& operator=(const KeptLooks&) = delete;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace nivarel::office
