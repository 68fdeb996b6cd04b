#include "PageBreaks.h"

#include <com/sun/star/sheet/XSheetPageBreak.hpp>

#include "Range.h"
#include "Uno.h"

namespace nivarel::office {

int PageBreaks::Count() const {
  return Call("PageBreaks.Count", [&] {
    Reference<css::sheet::XSheetPageBreak> b(sheet_->sheet, uno::UNO_QUERY_THROW);
    return static_cast<int>(horizontal_ ? b->getRowPageBreaks().getLength() : b->getColumnPageBreaks().getLength());
  });
}

Range PageBreaks::Location(int index) const {
  int pos = Call("PageBreak.Location", [&] {
    Reference<css::sheet::XSheetPageBreak> b(sheet_->sheet, uno::UNO_QUERY_THROW);
    auto breaks = horizontal_ ? b->getRowPageBreaks() : b->getColumnPageBreaks();
    if (index < 1 || index > breaks.getLength()) throw HostError(HostError::kInvalidArgument, "Subscript out of range");
    return static_cast<int>(breaks[index - 1].Position);
  });
  return horizontal_ ? Range(sheet_, pos + 1, 1, pos + 1, 1) : Range(sheet_, 1, pos + 1, 1, pos + 1);
}

}  // namespace nivarel::office
