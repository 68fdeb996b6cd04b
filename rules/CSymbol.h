// One flowchart symbol in force: its id (a shape type), default style, name
// and size classes on the grid.
#pragma once

#include <cstdint>
#include <string>

namespace nivarel::rules {

struct CSymbol {
  int16_t SymbolId = 61;
  int16_t StyleId = 43;
  std::string DisplayName = "Process";
  int16_t Width = 8;
  int16_t MinHeight = 2;
};

}  // namespace nivarel::rules
