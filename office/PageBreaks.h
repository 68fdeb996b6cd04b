// The horizontal or vertical page breaks of a sheet, in order.
#pragma once

#include <memory>

namespace nivarel::office {

struct SheetRef;
class Range;

class PageBreaks {
 public:
  PageBreaks(std::shared_ptr<SheetRef> sheet, bool horizontal) : sheet_(std::move(sheet)), horizontal_(horizontal) {}
  int Count() const;
  // The first cell after break index (1-based): row of a horizontal break, column of a vertical one.
  Range Location(int index) const;

 private:
  std::shared_ptr<SheetRef> sheet_;
  bool horizontal_;
};

}  // namespace nivarel::office
