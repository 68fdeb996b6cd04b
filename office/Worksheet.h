// One sheet: its cells, page setup and page breaks, its drawing layer, and its
// Change event, raised with the changed range for each committed cell edit.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "PageBreaks.h"
#include "PageSetup.h"
#include "ShapeRange.h"
#include "Subscription.h"

namespace nivarel::office {

struct SheetRef;
class Range;
class Shapes;
class Workbook;

class Worksheet {
 public:
  explicit Worksheet(std::shared_ptr<SheetRef> ref) : ref_(std::move(ref)) {}

  // Always "Worksheet": the office has no chart sheets.
  std::string TypeName() const { return "Worksheet"; }
  std::string Name() const;
  void SetName(const std::string& name);
  int Index() const;  // 1-based
  void Activate();

  Range Cells(int row, int column) const;
  // A range by A1 address ("C3", "A1:D10", "B:B", "3:3").
  Range GetRange(const std::string& address) const;
  Range Columns() const;  // every column of the sheet
  Range Rows() const;     // every row of the sheet
  Range Column(int column) const;
  Range Row(int row) const;
  // The smallest rectangle that holds every non-empty cell, or nothing for a
  // sheet without content.
  std::optional<Range> ContentArea() const;
  // Removes the sheet from its document.
  void Delete();
  // The occupied cells, or nothing for an empty sheet.
  std::optional<Range> UsedRange() const;

  Shapes GetShapes() const;
  using PictureArea = ShapeRange::PictureArea;
  // Writes a PNG picture of the sheet's drawing (every shape, as it stands,
  // with its outlines, arrowheads and shadows) at pixelsPerPoint (2 is 144
  // dpi) and returns the area it shows.
  PictureArea ExportDrawingPicture(const std::string& path, double pixelsPerPoint = 2) const;
  PageSetup GetPageSetup() const;
  PageBreaks HPageBreaks() const;
  PageBreaks VPageBreaks() const;
  bool DisplayPageBreaks() const;
  void SetDisplayPageBreaks(bool on);
  Workbook Parent() const;

  // Raised with the changed range after the user commits cell edits on this
  // sheet, unless the application's events are off or the edit is an undo or
  // redo. The handler runs from the office's event loop once the office has
  // finished the edit (and closed its own undo entry for it).
  Subscription OnChange(std::function<void(const Range&)> handler);

  bool SameAs(const Worksheet& other) const;
  const std::shared_ptr<SheetRef>& Ref() const { return ref_; }

 private:
  std::shared_ptr<SheetRef> ref_;
};

}  // namespace nivarel::office
