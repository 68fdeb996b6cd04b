// The looks of a sheet's shapes kept across a user action in the undo list.
// The office does not take back a look a program gives a shape; made right
// after an undo entry opens, this puts an action into the entry when it
// ends that gives each named shape (in groups too) the look it had before
// on Ctrl+Z, and the look it had at the end on Ctrl+Y: kind, fill, line,
// shadow, font and the other formats, and glue points. Shapes are found by
// name, so they may be grouped and ungrouped meanwhile.
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
