// A table of a dialog whose cells show text or pictures, one row selected at
// a time and edited by controls beside the table: a text column by a text
// box, a picture column by a list box of its pictures. The table keeps the
// cells' values (hidden columns too); an edit is offered to BeforeCommit,
// which may refuse it (the editor then shows the cell's value again), and a
// kept edit shows at once in the cell. The dialog's event handler passes
// every method to Handle first.
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
    int width = 0;  // in the dialog's units; 0 keeps the column hidden
    // A picture column: its values, each with its picture, in the order the
    // editor lists them. A text column has none.
    std::vector<std::pair<std::string, std::string>> choices;
    // The control that edits the selected row's cell; "" for none. A text
    // box commits on "<editor>_Commit" (bound to its losing the focus), a
    // list box on "<editor>_Commit" (bound to a change of its entry).
    std::string editor;
  };

  // Makes the table in dialog at x, y (dialog units).
  PictureGrid(host::UserDialog& dialog, std::string name, int x, int y, int width, int height,
              std::vector<Column> columns);

  // True when method was the table's or one of its editors'.
  bool Handle(const std::string& method);

  // Adds a row of values by column key (missing keys are empty); returns its index.
  int AddRow(const std::map<std::string, std::string>& values);
  int Rows() const { return static_cast<int>(rows_.size()); }
  // The selected row, 0-based; -1 when none is.
  int CurrentRow() const { return current_; }
  void SelectRow(int row);
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
  host::UserDialog::Cell CellOf(const Column& column, const std::string& value) const;
  std::vector<host::UserDialog::Cell> Shown(int row) const;
  void LoadEditors();    // the selected row into the editors
  void Commit(const Column& column);

  host::UserDialog& dialog_;
  std::string name_;
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
  int current_ = -1;
  bool loading_ = false;  // editors being filled, not edited
};

}  // namespace nivarel::dialogs
