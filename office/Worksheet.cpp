#include "Worksheet.h"

#include <filesystem>

#include <com/sun/star/drawing/GraphicExportFilter.hpp>
#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/awt/Rectangle.hpp>

#include <algorithm>
#include <cmath>
#include <atomic>

#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>

#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/XChangesListener.hpp>
#include <com/sun/star/util/XChangesNotifier.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <cppuhelper/implbase1.hxx>

#include "Range.h"
#include "Shapes.h"
#include "Border.h"
#include "Uno.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel::office {

namespace {
constexpr int kMaxRow = 1048576;
constexpr int kMaxColumn = 16384;
}  // namespace

Reference<css::drawing::XDrawPage> SheetRef::Page() const {
  Reference<css::drawing::XDrawPageSupplier> sup(sheet, uno::UNO_QUERY_THROW);
  Reference<css::drawing::XDrawPage> page = sup->getDrawPage();
  // The sheet of a closed document answers no page rather than an error.
  if (!page.is()) throw HostError(HostError::kOfficeFailure, "The sheet's document has been closed");
  return page;
}

int SheetRef::Index() const {
  Reference<css::sheet::XCellRangeAddressable> a(sheet, uno::UNO_QUERY_THROW);
  return a->getRangeAddress().Sheet;
}

std::shared_ptr<SheetRef> MakeSheetRef(const std::shared_ptr<HostSession>& session,
                                       const Reference<css::sheet::XSpreadsheetDocument>& document,
                                       const Reference<css::sheet::XSpreadsheet>& sheet) {
  return std::make_shared<SheetRef>(SheetRef{session, document, sheet});
}

std::string Worksheet::Name() const {
  return Call("Worksheet.Name", [&] {
    Reference<css::container::XNamed> n(ref_->sheet, uno::UNO_QUERY_THROW);
    return ToUtf8(n->getName());
  });
}

void Worksheet::SetName(const std::string& name) {
  Call("Worksheet.Name", [&] {
    Reference<css::container::XNamed> n(ref_->sheet, uno::UNO_QUERY_THROW);
    n->setName(ToOu(name));
  });
}

int Worksheet::Index() const {
  return Call("Worksheet.Index", [&] { return ref_->Index() + 1; });
}

void Worksheet::Activate() {
  Call("Worksheet.Activate", [&] {
    Reference<css::frame::XModel> model(ref_->document, uno::UNO_QUERY_THROW);
    Reference<css::sheet::XSpreadsheetView> view(model->getCurrentController(), uno::UNO_QUERY_THROW);
    view->setActiveSheet(ref_->sheet);
  });
}

Range Worksheet::Cells(int row, int column) const { return Range(ref_, row, column, row, column); }

Range Worksheet::GetRange(const std::string& address) const {
  return Call("Worksheet.Range", [&] {
    auto r = ref_->sheet->getCellRangeByName(ToOu(address));
    Reference<css::sheet::XCellRangeAddressable> a(r, uno::UNO_QUERY_THROW);
    auto ad = a->getRangeAddress();
    return Range(ref_, ad.StartRow + 1, ad.StartColumn + 1, ad.EndRow + 1, ad.EndColumn + 1);
  });
}

Range Worksheet::Columns() const { return Range(ref_, 1, 1, kMaxRow, kMaxColumn); }
Range Worksheet::Rows() const { return Range(ref_, 1, 1, kMaxRow, kMaxColumn); }
Range Worksheet::Column(int column) const { return Range(ref_, 1, column, kMaxRow, column); }
Range Worksheet::Row(int row) const { return Range(ref_, row, 1, row, kMaxColumn); }

std::optional<Range> Worksheet::UsedRange() const {
  return Call("Worksheet.UsedRange", [&]() -> std::optional<Range> {
    auto cursor = ref_->sheet->createCursor();
    Reference<css::sheet::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
    used->gotoStartOfUsedArea(false);
    used->gotoEndOfUsedArea(true);
    Reference<css::sheet::XCellRangeAddressable> a(cursor, uno::UNO_QUERY_THROW);
    auto ad = a->getRangeAddress();
    if (ad.StartRow == ad.EndRow && ad.StartColumn == ad.EndColumn) {
      auto cell = ref_->sheet->getCellByPosition(ad.StartColumn, ad.StartRow);
      if (cell->getType() == css::table::CellContentType_EMPTY) return std::nullopt;
    }
    return Range(ref_, ad.StartRow + 1, ad.StartColumn + 1, ad.EndRow + 1, ad.EndColumn + 1);
  });
}

std::optional<Range> Worksheet::ContentArea() const {
  return Call("Worksheet.ContentArea", [&]() -> std::optional<Range> {
    Reference<css::sheet::XCellRangesQuery> query(ref_->sheet, uno::UNO_QUERY_THROW);
    namespace CellFlags = css::sheet::CellFlags;
    auto found = query->queryContentCells(CellFlags::VALUE | CellFlags::DATETIME | CellFlags::STRING |
                                          CellFlags::FORMULA);
    auto addresses = found->getRangeAddresses();
    if (addresses.getLength() == 0) return std::nullopt;
    auto box = addresses[0];
    for (const auto& a : addresses) {
      box.StartRow = std::min(box.StartRow, a.StartRow);
      box.StartColumn = std::min(box.StartColumn, a.StartColumn);
      box.EndRow = std::max(box.EndRow, a.EndRow);
      box.EndColumn = std::max(box.EndColumn, a.EndColumn);
    }
    return Range(ref_, box.StartRow + 1, box.StartColumn + 1, box.EndRow + 1, box.EndColumn + 1);
  });
}

void Worksheet::Delete() {
  Call("Worksheet.Delete", [&] {
    Reference<css::container::XNamed> named(ref_->sheet, uno::UNO_QUERY_THROW);
    ref_->document->getSheets()->removeByName(named->getName());
  });
}

Shapes Worksheet::GetShapes() const { return Shapes(ref_); }
PageSetup Worksheet::GetPageSetup() const { return PageSetup(ref_); }
PageBreaks Worksheet::HPageBreaks() const { return PageBreaks(ref_, true); }
PageBreaks Worksheet::VPageBreaks() const { return PageBreaks(ref_, false); }

bool Worksheet::DisplayPageBreaks() const {
  return Call("Worksheet.DisplayPageBreaks", [&] {
    Reference<css::frame::XModel> model(ref_->document, uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> view(model->getCurrentController(), uno::UNO_QUERY_THROW);
    return GetProp<bool>(view, "ShowPageBreaks");
  });
}

void Worksheet::SetDisplayPageBreaks(bool on) {
  Call("Worksheet.DisplayPageBreaks", [&] {
    Reference<css::frame::XModel> model(ref_->document, uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> view(model->getCurrentController(), uno::UNO_QUERY_THROW);
    SetProp(view, "ShowPageBreaks", on);
  });
}

Workbook Worksheet::Parent() const {
  return Workbook(std::make_shared<WorkbookImpl>(WorkbookImpl{ref_->session, ref_->document}));
}

bool Worksheet::SameAs(const Worksheet& other) const {
  // The office hands out a new wrapper for a sheet on each request: compare
  // the document and the sheet's place in it.
  return Call("Worksheet", [&] {
    return Reference<css::frame::XModel>(ref_->document, uno::UNO_QUERY) ==
               Reference<css::frame::XModel>(other.ref_->document, uno::UNO_QUERY) &&
           ref_->Index() == other.ref_->Index();
  });
}

namespace {

// Hears the document's cell changes and passes those of one sheet on, once
// the office has finished the edit: the handler then works on a document
// whose own record of the edit is complete, not from inside it.
class SheetChanges : public cppu::WeakImplHelper1<css::util::XChangesListener> {
 public:
  SheetChanges(std::shared_ptr<SheetRef> sheet, std::function<void(const Range&)> f,
               std::shared_ptr<std::atomic<bool>> alive)
      : sheet_(std::move(sheet)), page_(sheet_->Page(), uno::UNO_QUERY), f_(std::move(f)), alive_(std::move(alive)) {}

  void SAL_CALL changesOccurred(const css::util::ChangesEvent& event) override {
    OfficeThreadScope scope;
    AtBorder("Worksheet", "Change", [&] {
      if (!*alive_ || !sheet_->session->enableEvents) return;
      // Undo and redo replay what was recorded; that is not the user typing.
      if (UndoList(Workbook(std::make_shared<WorkbookImpl>(WorkbookImpl{sheet_->session, sheet_->document}))).Busy())
        return;
      // The object of a sheet deleted meanwhile goes on answering for
      // another sheet; its drawing page tells. Told once, then no more.
      if (Reference<uno::XInterface>(sheet_->Page(), uno::UNO_QUERY) != page_) {
        *alive_ = false;
        throw HostError(HostError::kNotFound, "The sheet watched for changes has been deleted");
      }
      int index = sheet_->Index();
      std::vector<Range> ranges;
      for (const auto& change : event.Changes) {
        OUString accessor;
        change.Accessor >>= accessor;
        if (accessor != "cell-change") continue;
        Reference<css::sheet::XSheetCellRangeContainer> many(change.ReplacedElement, uno::UNO_QUERY);
        if (!many.is()) many.set(change.Element, uno::UNO_QUERY);
        Reference<css::sheet::XCellRangeAddressable> one(change.ReplacedElement, uno::UNO_QUERY);
        if (!one.is()) one.set(change.Element, uno::UNO_QUERY);
        std::vector<css::table::CellRangeAddress> addresses;
        if (many.is()) {
          for (const auto& a : many->getRangeAddresses()) addresses.push_back(a);
        } else if (one.is()) {
          addresses.push_back(one->getRangeAddress());
        }
        for (const auto& a : addresses)
          if (a.Sheet == index) ranges.emplace_back(sheet_, a.StartRow + 1, a.StartColumn + 1, a.EndRow + 1, a.EndColumn + 1);
      }
      if (ranges.empty()) return;
      auto sheet = sheet_;
      auto f = f_;
      auto alive = alive_;
      RunLater(sheet_->session->context, [sheet, f, alive, ranges] {
        for (const auto& range : ranges) {
          if (!*alive || !sheet->session->enableEvents) return;
          AtBorder("Worksheet", "Change", [&] { f(range); });
        }
      });
    });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::shared_ptr<SheetRef> sheet_;
  Reference<uno::XInterface> page_;
  std::function<void(const Range&)> f_;
  std::shared_ptr<std::atomic<bool>> alive_;
};

}  // namespace

Subscription Worksheet::OnChange(std::function<void(const Range&)> handler) {
  return Call("Worksheet.Change", [&] {
    Reference<css::util::XChangesNotifier> n(ref_->document, uno::UNO_QUERY_THROW);
    auto alive = std::make_shared<std::atomic<bool>>(true);
    Reference<css::util::XChangesListener> l(new SheetChanges(ref_, std::move(handler), alive));
    n->addChangesListener(l);
    return Subscription([n, l, alive] {
      *alive = false;
      n->removeChangesListener(l);
    });
  });
}

// The whole drawing, every shape of the sheet's page.
static ShapeRange AllShapes(const Worksheet& sheet) {
  Shapes shapes = sheet.GetShapes();
  std::vector<Shape> all;
  for (int i = 1; i <= shapes.Count(); ++i) all.push_back(shapes.Item(i));
  return ShapeRange(sheet.Ref(), std::move(all));
}

Worksheet::PictureArea Worksheet::ExportDrawingPicture(const std::string& path, double pixelsPerPoint) const {
  return AllShapes(*this).ExportPicture(path, pixelsPerPoint);
}

}  // namespace nivarel::office
