#include "Range.h"

#include <cmath>
#include <cstdio>

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/CellVertJustify2.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XSearchable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "MsoConstants.h"
#include "Uno.h"
#include "Worksheet.h"

namespace nivarel::office {

namespace {

// Column widths: a character of the standard font is 7 pixels wide, and a
// column carries 5 pixels of padding; a pixel is 0.75 point. Widths are
// whole pixels, and read back in characters to two decimals.
double CharsToPoints(double chars) {
  double px = chars >= 1 ? 7 * chars + 5 : 12 * chars;
  return 0.75 * std::nearbyint(px);
}
double PointsToChars(double pt) {
  double px = std::nearbyint(pt / 0.75);
  double chars = px >= 12 ? (px - 5) / 7 : px / 12;
  return std::nearbyint(chars * 100) / 100;
}

// Row heights are whole twips in the office; the API rounds them to 1/100 mm.
double HmmToTwipPoints(sal_Int32 hmm) { return std::nearbyint(hmm * 1440.0 / 2540.0) / 20.0; }

Reference<css::table::XCellRange> CellsOf(const SheetRef& s, int r1, int c1, int r2, int c2) {
  return s.sheet->getCellRangeByPosition(c1 - 1, r1 - 1, c2 - 1, r2 - 1);
}

}  // namespace

std::string ColumnLetters(int column) {
  std::string s;
  while (column > 0) {
    int m = (column - 1) % 26;
    s.insert(s.begin(), static_cast<char>('A' + m));
    column = (column - 1) / 26;
  }
  return s;
}

Range::Range(std::shared_ptr<SheetRef> sheet, int row, int column, int lastRow, int lastColumn)
    : sheet_(std::move(sheet)), row_(row), column_(column), lastRow_(lastRow), lastColumn_(lastColumn) {
  if (row < 1 || column < 1 || lastRow < row || lastColumn < column || lastRow > 1048576 || lastColumn > 16384)
    throw HostError(HostError::kOfficeFailure, "Application-defined or object-defined error");
}

std::string Range::Address(bool absolute) const {
  std::string d = absolute ? "$" : "";
  std::string a = d + ColumnLetters(column_) + d + std::to_string(row_);
  if (RowCount() > 1 || ColumnCount() > 1)
    a += ":" + d + ColumnLetters(lastColumn_) + d + std::to_string(lastRow_);
  return a;
}

std::vector<std::vector<std::string>> Range::Formulas() const {
  return Call("Range.Formula", [&] {
    Reference<css::sheet::XCellRangeFormula> cells(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_),
                                                   uno::UNO_QUERY_THROW);
    std::vector<std::vector<std::string>> rows;
    for (const auto& row : cells->getFormulaArray()) {
      rows.emplace_back();
      for (const auto& cell : row) rows.back().push_back(ToUtf8(cell));
    }
    return rows;
  });
}

void Range::SetFormulas(const std::vector<std::vector<std::string>>& rows) {
  Call("Range.Formula", [&] {
    Reference<css::sheet::XCellRangeFormula> cells(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_),
                                                   uno::UNO_QUERY_THROW);
    uno::Sequence<uno::Sequence<OUString>> array(static_cast<sal_Int32>(rows.size()));
    for (size_t r = 0; r < rows.size(); ++r) {
      uno::Sequence<OUString> row(static_cast<sal_Int32>(rows[r].size()));
      for (size_t c = 0; c < rows[r].size(); ++c) row.getArray()[c] = ToOu(rows[r][c]);
      array.getArray()[r] = row;
    }
    cells->setFormulaArray(array);
  });
}

std::string Range::Value() const {
  return Call("Range.Value", [&] {
    auto cell = sheet_->sheet->getCellByPosition(column_ - 1, row_ - 1);
    switch (cell->getType()) {
      case css::table::CellContentType_EMPTY:
        return std::string();
      case css::table::CellContentType_VALUE: {
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.15g", cell->getValue());
        return std::string(buf);
      }
      case css::table::CellContentType_FORMULA:
        return ToUtf8(cell->getFormula());
      default: {
        Reference<css::text::XText> t(cell, uno::UNO_QUERY_THROW);
        return ToUtf8(t->getString());
      }
    }
  });
}

std::string Range::Text() const {
  return Call("Range.Text", [&] {
    Reference<css::text::XText> t(sheet_->sheet->getCellByPosition(column_ - 1, row_ - 1), uno::UNO_QUERY_THROW);
    return ToUtf8(t->getString());
  });
}

void Range::SetValue(const std::string& value) {
  Call("Range.Value", [&] {
    for (int r = row_; r <= lastRow_; ++r)
      for (int c = column_; c <= lastColumn_; ++c)
        sheet_->sheet->getCellByPosition(c - 1, r - 1)->setFormula(ToOu(value));
  });
}

double Range::Left() const {
  return Call("Range.Left", [&] {
    Reference<css::beans::XPropertySet> ps(CellsOf(*sheet_, row_, column_, row_, column_), uno::UNO_QUERY_THROW);
    return HmmToPt(GetProp<css::awt::Point>(ps, "Position").X);
  });
}

double Range::Top() const {
  return Call("Range.Top", [&] {
    Reference<css::beans::XPropertySet> ps(CellsOf(*sheet_, row_, column_, row_, column_), uno::UNO_QUERY_THROW);
    return HmmToPt(GetProp<css::awt::Point>(ps, "Position").Y);
  });
}

double Range::Width() const {
  return Call("Range.Width", [&] {
    Reference<css::beans::XPropertySet> ps(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    return HmmToPt(GetProp<css::awt::Size>(ps, "Size").Width);
  });
}

double Range::Height() const {
  return Call("Range.Height", [&] {
    Reference<css::beans::XPropertySet> ps(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    return HmmToPt(GetProp<css::awt::Size>(ps, "Size").Height);
  });
}

Range Range::Offset(int rows, int columns) const {
  return Range(sheet_, row_ + rows, column_ + columns, lastRow_ + rows, lastColumn_ + columns);
}

Range Range::Cells(int row, int column) const {
  return Range(sheet_, row_ + row - 1, column_ + column - 1, row_ + row - 1, column_ + column - 1);
}

void Range::Select() const {
  Call("Range.Select", [&] {
    Reference<css::frame::XModel> model(sheet_->document, uno::UNO_QUERY_THROW);
    Reference<css::view::XSelectionSupplier> sel(model->getCurrentController(), uno::UNO_QUERY_THROW);
    sel->select(uno::Any(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_)));
  });
}

std::optional<Range> Range::Find(const std::string& what) const {
  return Call("Range.Find", [&]() -> std::optional<Range> {
    Reference<css::util::XSearchable> s(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    auto d = s->createSearchDescriptor();
    d->setSearchString(ToOu(what));
    Reference<css::beans::XPropertySet> dp(d, uno::UNO_QUERY_THROW);
    SetProp(dp, "SearchWords", true);
    SetProp(dp, "SearchCaseSensitive", false);
    Reference<css::sheet::XCellRangeAddressable> found(s->findFirst(d), uno::UNO_QUERY);
    if (!found.is()) return std::nullopt;
    auto a = found->getRangeAddress();
    return Range(sheet_, a.StartRow + 1, a.StartColumn + 1, a.StartRow + 1, a.StartColumn + 1);
  });
}

void Range::Clear() {
  Call("Range.Clear", [&] {
    Reference<css::sheet::XSheetOperation> op(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    using namespace css::sheet::CellFlags;
    op->clearContents(VALUE | DATETIME | STRING | ANNOTATION | FORMULA | HARDATTR | STYLES | EDITATTR | FORMATTED);
  });
}

void Range::ClearContents() {
  Call("Range.ClearContents", [&] {
    Reference<css::sheet::XSheetOperation> op(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    using namespace css::sheet::CellFlags;
    op->clearContents(VALUE | DATETIME | STRING | FORMULA);
  });
}

double Range::ColumnWidth() const {
  return Call("Range.ColumnWidth", [&] {
    Reference<css::table::XColumnRowRange> cr(CellsOf(*sheet_, 1, column_, 1, column_), uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(cr->getColumns(), uno::UNO_QUERY_THROW);
    return PointsToChars(HmmToPt(GetProp<sal_Int32>(ps, "Width")));
  });
}

void Range::SetColumnWidth(double characters) {
  Call("Range.ColumnWidth", [&] {
    Reference<css::table::XColumnRowRange> cr(CellsOf(*sheet_, 1, column_, 1, lastColumn_), uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(cr->getColumns(), uno::UNO_QUERY_THROW);
    SetProp(ps, "Width", PtToHmm(CharsToPoints(characters)));
  });
}

double Range::RowHeight() const {
  return Call("Range.RowHeight", [&] {
    Reference<css::table::XColumnRowRange> cr(CellsOf(*sheet_, row_, 1, row_, 1), uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(cr->getRows(), uno::UNO_QUERY_THROW);
    return HmmToTwipPoints(GetProp<sal_Int32>(ps, "Height"));
  });
}

void Range::SetRowHeight(double points) {
  Call("Range.RowHeight", [&] {
    Reference<css::table::XColumnRowRange> cr(CellsOf(*sheet_, row_, 1, lastRow_, 1), uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(cr->getRows(), uno::UNO_QUERY_THROW);
    SetProp(ps, "Height", PtToHmm(points));
  });
}

static std::shared_ptr<PropsRef> RangeProps(const std::shared_ptr<SheetRef>& s, int r1, int c1, int r2, int c2) {
  return Call("Range", [&] {
    Reference<css::beans::XPropertySet> ps(CellsOf(*s, r1, c1, r2, c2), uno::UNO_QUERY_THROW);
    return std::make_shared<PropsRef>(PropsRef{s->session, ps});
  });
}

Font Range::GetFont() const { return Font(RangeProps(sheet_, row_, column_, lastRow_, lastColumn_)); }
Interior Range::GetInterior() const { return Interior(RangeProps(sheet_, row_, column_, lastRow_, lastColumn_)); }
Borders Range::GetBorders() const { return Borders(RangeProps(sheet_, row_, column_, lastRow_, lastColumn_)); }

int Range::HorizontalAlignment() const {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  return Call("Range.HorizontalAlignment", [&] {
    switch (GetProp<css::table::CellHoriJustify>(p->props, "HoriJustify")) {
      case css::table::CellHoriJustify_LEFT: return xlLeft;
      case css::table::CellHoriJustify_CENTER: return xlCenter;
      case css::table::CellHoriJustify_RIGHT: return xlRight;
      case css::table::CellHoriJustify_BLOCK: return xlJustify;
      default: return xlGeneral;
    }
  });
}

void Range::SetHorizontalAlignment(int xlAlign) {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  Call("Range.HorizontalAlignment", [&] {
    auto j = css::table::CellHoriJustify_STANDARD;
    if (xlAlign == xlLeft) j = css::table::CellHoriJustify_LEFT;
    else if (xlAlign == xlCenter) j = css::table::CellHoriJustify_CENTER;
    else if (xlAlign == xlRight) j = css::table::CellHoriJustify_RIGHT;
    else if (xlAlign == xlJustify) j = css::table::CellHoriJustify_BLOCK;
    SetProp(p->props, "HoriJustify", j);
  });
}

int Range::VerticalAlignment() const {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  return Call("Range.VerticalAlignment", [&] {
    switch (GetProp<sal_Int32>(p->props, "VertJustify")) {
      case css::table::CellVertJustify2::TOP: return xlTop;
      case css::table::CellVertJustify2::CENTER: return xlCenter;
      default: return xlBottom;
    }
  });
}

void Range::SetVerticalAlignment(int xlAlign) {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  Call("Range.VerticalAlignment", [&] {
    sal_Int32 j = css::table::CellVertJustify2::BOTTOM;
    if (xlAlign == xlTop) j = css::table::CellVertJustify2::TOP;
    else if (xlAlign == xlCenter) j = css::table::CellVertJustify2::CENTER;
    SetProp(p->props, "VertJustify", j);
  });
}

bool Range::WrapText() const {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  return Call("Range.WrapText", [&] { return GetProp<bool>(p->props, "IsTextWrapped"); });
}

void Range::SetWrapText(bool on) {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  Call("Range.WrapText", [&] { SetProp(p->props, "IsTextWrapped", on); });
}

bool Range::MergeCells() const {
  return Call("Range.MergeCells", [&] {
    Reference<css::util::XMergeable> m(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    return static_cast<bool>(m->getIsMerged());
  });
}

void Range::SetMergeCells(bool on) {
  Call("Range.MergeCells", [&] {
    Reference<css::util::XMergeable> m(CellsOf(*sheet_, row_, column_, lastRow_, lastColumn_), uno::UNO_QUERY_THROW);
    m->merge(on);
  });
}

int Range::Orientation() const {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  return Call("Range.Orientation", [&] { return static_cast<int>(GetProp<sal_Int32>(p->props, "RotateAngle") / 100); });
}

void Range::SetOrientation(int degrees) {
  auto p = RangeProps(sheet_, row_, column_, lastRow_, lastColumn_);
  Call("Range.Orientation", [&] { SetProp(p->props, "RotateAngle", static_cast<sal_Int32>(((degrees % 360) + 360) % 360 * 100)); });
}

Worksheet Range::Sheet() const { return Worksheet(sheet_); }

}  // namespace nivarel::office
