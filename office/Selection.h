// What the user has selected: cells, shapes, or nothing.
#pragma once

#include <optional>

#include "Range.h"
#include "ShapeRange.h"

namespace nivarel::office {

struct Selection {
  std::optional<Range> cells;
  std::optional<ShapeRange> shapes;
  bool IsNothing() const { return !cells && !shapes; }
};

}  // namespace nivarel::office
