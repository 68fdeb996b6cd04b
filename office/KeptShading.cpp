#include "KeptShading.h"

#include <vector>

#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "Border.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

// Cells that share one background.
struct Patch {
  uno::Sequence<css::table::CellRangeAddress> ranges;
  bool transparent = true;
  sal_Int32 color = -1;
};
using Shading = std::vector<Patch>;

Shading Read(const SheetRef& sheet) {
  Shading out;
  Reference<css::sheet::XUniqueCellFormatRangesSupplier> supplier(sheet.sheet, uno::UNO_QUERY_THROW);
  auto unique = supplier->getUniqueCellFormatRanges();
  for (sal_Int32 i = 0; i < unique->getCount(); ++i) {
    Reference<css::sheet::XSheetCellRanges> ranges(unique->getByIndex(i), uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(ranges, uno::UNO_QUERY_THROW);
    Patch p;
    p.ranges = ranges->getRangeAddresses();
    ps->getPropertyValue("IsCellBackgroundTransparent") >>= p.transparent;
    ps->getPropertyValue("CellBackColor") >>= p.color;
    out.push_back(p);
  }
  return out;
}

// Writes the colours unrecorded: called while the office undoes or redoes,
// a record made now would clear the entry being undone from the list.
void Write(const SheetRef& sheet, const Shading& shading) {
  Reference<css::document::XUndoManagerSupplier> supplier(sheet.document, uno::UNO_QUERY_THROW);
  auto manager = supplier->getUndoManager();
  int taken = 0;
  try {
    for (const auto& p : shading) {
      for (const auto& a : p.ranges) {
        Reference<css::beans::XPropertySet> ps(
            sheet.sheet->getCellRangeByPosition(a.StartColumn, a.StartRow, a.EndColumn, a.EndRow),
            uno::UNO_QUERY_THROW);
        KeepUndoListLocked(manager, taken);
        ps->setPropertyValue("CellBackColor", uno::Any(p.color));
        KeepUndoListLocked(manager, taken);
        ps->setPropertyValue("IsCellBackgroundTransparent", uno::Any(p.transparent));
      }
    }
  } catch (...) {
    for (; taken > 0; --taken) manager->unlock();
    throw;
  }
  for (; taken > 0; --taken) manager->unlock();
}

// Called back by the office's undo list; nothing may escape into it.
class ShadingAction : public cppu::WeakImplHelper1<css::document::XUndoAction> {
 public:
  ShadingAction(std::shared_ptr<SheetRef> sheet, Shading before) : sheet_(std::move(sheet)), before_(std::move(before)) {}
  void Close() { after_ = Read(*sheet_); }

  OUString SAL_CALL getTitle() override { return "Shading"; }
  // Called by the office. A failure leaves the colours as they are.
  void SAL_CALL undo() override {
    OfficeThreadScope scope;
    AtBorder("KeptShading", "Undo", [&] { Write(*sheet_, before_); });
  }
  void SAL_CALL redo() override {
    OfficeThreadScope scope;
    AtBorder("KeptShading", "Redo", [&] { Write(*sheet_, after_); });
  }

 private:

  std::shared_ptr<SheetRef> sheet_;
  Shading before_, after_;
};

}  // namespace

struct KeptShading::State {
  rtl::Reference<ShadingAction> action;
};

KeptShading::KeptShading(const Worksheet& sheet) : state_(std::make_unique<State>()) {
  Call("KeptShading", [&] {
    auto ref = sheet.Ref();
    rtl::Reference<ShadingAction> action(new ShadingAction(ref, Read(*ref)));
    Reference<css::document::XUndoManagerSupplier> supplier(ref->document, uno::UNO_QUERY_THROW);
    supplier->getUndoManager()->addUndoAction(action.get());
    state_->action = action;
  });
}

KeptShading::~KeptShading() {
  try {
    if (state_->action.is()) Call("KeptShading", [&] { state_->action->Close(); });
  } catch (...) {
    // Ctrl+Y then leaves the colours as Ctrl+Z found them.
  }
}

}  // namespace nivarel::office
