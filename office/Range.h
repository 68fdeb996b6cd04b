// A rectangle of cells on one sheet, addressed by 1-based rows and columns.
// Positions and sizes are in points from the top left corner of A1.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Borders.h"
#include "Font.h"
#include "Interior.h"

namespace nivarel::office {

struct SheetRef;
class Worksheet;

class Range {
 public:
  Range(std::shared_ptr<SheetRef> sheet, int row, int column, int lastRow, int lastColumn);

  int Row() const { return row_; }
  int Column() const { return column_; }
  int LastRow() const { return lastRow_; }
  int LastColumn() const { return lastColumn_; }
  int RowCount() const { return lastRow_ - row_ + 1; }
  int ColumnCount() const { return lastColumn_ - column_ + 1; }
  // "$C$3" or "$A$1:$D$10"; "C3" when not absolute.
  std::string Address(bool absolute = true) const;
  // The address in the user's language; the office's A1 form is the same in every language.
  std::string AddressLocal(bool absolute = true) const { return Address(absolute); }

  // Cell content of the first cell; Text is what the cell shows.
  std::string Value() const;
  std::string Text() const;
  // Writes to every cell, as typing would (numbers and formulas are parsed).
  void SetValue(const std::string& value);
  // Every cell's content as typed (a formula with its "="), row by row; and
  // writing them back, one row of strings per row of the range.
  std::vector<std::vector<std::string>> Formulas() const;
  void SetFormulas(const std::vector<std::vector<std::string>>& rows);

  double Left() const;
  double Top() const;
  double Width() const;
  double Height() const;

  // The range moved by rows and columns; cell (row, column) relative to this one.
  Range Offset(int rows, int columns) const;
  Range Cells(int row, int column) const;
  void Select() const;
  // The first cell holding text equal to what (whole cell, case ignored).
  std::optional<Range> Find(const std::string& what) const;
  void Clear();
  void ClearContents();

  // Column width in characters of the standard font; row height in points.
  double ColumnWidth() const;
  void SetColumnWidth(double characters);
  double RowHeight() const;
  void SetRowHeight(double points);

  Font GetFont() const;
  Interior GetInterior() const;
  Borders GetBorders() const;
  int HorizontalAlignment() const;
  void SetHorizontalAlignment(int xlAlign);
  int VerticalAlignment() const;
  void SetVerticalAlignment(int xlAlign);
  bool WrapText() const;
  void SetWrapText(bool on);
  bool MergeCells() const;
  void SetMergeCells(bool on);
  int Orientation() const;  // degrees
  void SetOrientation(int degrees);

  Worksheet Sheet() const;
  const std::shared_ptr<SheetRef>& SheetHandle() const { return sheet_; }

 private:
  std::shared_ptr<SheetRef> sheet_;
  int row_, column_, lastRow_, lastColumn_;
};

// "A" for 1, "AB" for 28.
std::string ColumnLetters(int column);

}  // namespace nivarel::office
