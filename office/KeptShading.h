// The cells' background colours of one sheet, kept across a user action in
// the undo list. The office does not take back a colour given to the whole
// sheet; made right after an undo entry opens, this puts an action first
// into the entry that brings every cell's background back as it was before
// on Ctrl+Z, and as it was when the entry closed on Ctrl+Y.
#pragma once

#include <memory>

#include "Worksheet.h"

namespace nivarel::office {

class KeptShading {
 public:
  explicit KeptShading(const Worksheet& sheet);
  ~KeptShading();
  KeptShading(const KeptShading&) = delete;
  KeptShading& operator=(const KeptShading&) = delete;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace nivarel::office
