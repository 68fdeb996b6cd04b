// A table of a dialog shown as a list box, one entry per row: the row's
// shown text columns and the picture of its first shown picture column. One
// row is selected at a time and edited by controls beside the list: a text
// column by a text box, a choice column by a list box of its pictures or
// values. Rows can be hidden: they keep their values but leave the list. The
// table keeps the cells' values (hidden columns too); an edit is offered to
// BeforeCommit, which may refuse it (the editor then shows the cell's value
// again, selected, and keeps the focus), and a kept edit shows at once in
// the row. The dialog's event handler passes every method to Handle first.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "UserDialog.h"

namespace nivarel::dialogs {

class PictureGrid {
 public:
  struct Column {
    std::string key, caption;
    bool shown = false;  // in the list's entries
    // A choice column: its values, each with its picture, in the order the
    // editor lists them. A text column has none; a column whose choices
    // have no pictures shows its values as text (the editor lists them).
    std::vector<std::pair<std::string, std::string>> choices;
    // The control that edits the selected row's cell; "" for none. It
    // commits on "<editor>_Commit": a text box bound to losing the focus, a
    // list box to a change of its entry.
    std::string editor;
    // A text column's width in the list's entries, in characters: its text
    // is padded to it. 0: as long as its text.
    int width = 0;
    // The most characters a text column shows in the list's entries; a
    // longer text is cut and ends in "…" (the cell keeps it whole). 0: no limit.
    int limit = 0;
  };

  // The table shown in the dialog's list box list, whose change of entry
  // the dialog file binds to "<list>_SelectionChanged".
  PictureGrid(host::UserDialog& dialog, std::string list, std::vector<Column> columns);

  // True when method was the table's or one of its editors'.
  bool Handle(const std::string& method);

  // Adds a row of values by column key (missing keys are empty); returns its index.
  int AddRow(const std::map<std::string, std::string>& values);
  int Rows() const { return static_cast<int>(rows_.size()); }
  // Takes a row out; the rows below move up and no row is selected.
  void RemoveRow(int row);
  // The selected row, 0-based; -1 when none is.
  int CurrentRow() const { return current_; }
  // Takes out every row.
  void Clear();
  // Gives each shown text column the width of its longest value or caption,
  // so that a list in a fixed-pitch font reads as a table under Heading.
  void FitColumns();
  // The shown text columns' captions, spaced as the entries are.
  std::string Heading() const;
  // Selects a shown row; a hidden one is not selected.
  void SelectRow(int row);
  // The rows selected in a list that allows more than one, in order; hidden
  // rows are never selected.
  std::vector<int> SelectedRows() const;
  // Selects those of the rows that are shown, and no others.
  void SelectRows(const std::vector<int>& rows);
  // Shows the rows marked true and hides the others (rows beyond the marks
  // are shown). Selected rows that stay shown stay selected; when the
  // current row goes, no row is current.
  void SetVisibleRows(const std::vector<bool>& visible);
  bool RowVisible(int row) const;
  std::string Value(int row, const std::string& key) const;
  // Sets a cell, shown at once (and in the editor when the row is selected).
  void SetValue(int row, const std::string& key, const std::string& value);

  // Asked before an edit is kept: false refuses it.
  std::function<bool(int row, const std::string& key, const std::string& value)> BeforeCommit;
  // Told after an edit was kept.
  std::function<void(int row, const std::string& key)> AfterCommit;
  // Told when another row was selected.
  std::function<void(int row)> RowSelected;

 private:
  int ColumnIndex(const std::string& key) const;
  static bool Pictured(const Column& column);  // a choice has a picture
  std::string PictureOf(const Column& column, const std::string& value) const;
  host::UserDialog::Item Entry(int row) const;
  void ShowRows();         // every shown row into the list again
  int ListIndexOf(int row) const;  // -1 for a hidden row
  int RowAt(int listIndex) const;  // -1 when the list has no such entry
  void Selected(int row);  // the list's selection moved to row
  void LoadEditors();      // the selected row into the editors
  void Commit(const Column& column);

  host::UserDialog& dialog_;
  std::string list_;
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
  std::vector<bool> hidden_;
  int current_ = -1;
  bool loading_ = false;  // editors being filled, not edited
};

}  // namespace nivarel::dialogs
