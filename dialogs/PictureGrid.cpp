#include "PictureGrid.h"

#include <algorithm>

#include "Text.h"
#include "TextEncoding.h"

namespace nivarel::dialogs {

PictureGrid::PictureGrid(host::UserDialog& dialog, std::string list, std::vector<Column> columns)
    : dialog_(dialog), list_(std::move(list)), columns_(std::move(columns)) {
  dialog_.SetItems(list_, {});
  for (const Column& c : columns_) {
    if (c.editor.empty() || c.choices.empty()) continue;
    std::vector<host::UserDialog::Item> items;
    for (const auto& [value, picture] : c.choices) items.push_back({picture.empty() ? value : "", picture});
    dialog_.SetItems(c.editor, items);
  }
}

int PictureGrid::ColumnIndex(const std::string& key) const {
  for (size_t i = 0; i < columns_.size(); ++i)
    if (columns_[i].key == key) return static_cast<int>(i);
  return -1;
}

bool PictureGrid::Pictured(const Column& column) {
  for (const auto& choice : column.choices)
    if (!choice.second.empty()) return true;
  return false;
}

std::string PictureGrid::PictureOf(const Column& column, const std::string& value) const {
  for (const auto& [v, picture] : column.choices)
    if (v == value) return picture;
  return "";
}

namespace {

size_t Characters(const std::string& text) { return rules::CharacterCount(text); }

// The text cut to limit characters, the last of them "…"; 0 keeps it whole.
std::string Limited(const std::string& text, int limit) {
  if (limit <= 0 || Characters(text) <= static_cast<size_t>(limit)) return text;
  size_t at = 0;
  for (size_t n = 0; at < text.size(); ++at)
    if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80 && n++ == static_cast<size_t>(limit - 1)) break;
  return text.substr(0, at) + "\u2026";
}

std::string Padded(const std::string& text, int width) { return rules::PadRight(text, width); }

}  // namespace

host::UserDialog::Item PictureGrid::Entry(int row) const {
  host::UserDialog::Item item;
  bool pictured = false;
  for (size_t i = 0; i < columns_.size(); ++i) {
    const Column& c = columns_[i];
    if (!c.shown) continue;
    if (!Pictured(c)) {
      item.text += (item.text.empty() ? "" : "   ") + Padded(Limited(rows_[row][i], c.limit), c.width);
    } else if (!pictured) {
      item.picture = PictureOf(c, rows_[row][i]);
      pictured = true;
    }
  }
  // Empty cells at the end leave no gap behind the text.
  item.text.erase(item.text.find_last_not_of(' ') + 1);
  return item;
}

int PictureGrid::AddRow(const std::map<std::string, std::string>& values) {
  std::vector<std::string> row(columns_.size());
  for (const auto& [key, value] : values) {
    int i = ColumnIndex(key);
    if (i >= 0) row[i] = value;
  }
  rows_.push_back(std::move(row));
  hidden_.push_back(false);
  dialog_.AddItem(list_, Entry(Rows() - 1));
  return Rows() - 1;
}

void PictureGrid::ShowRows() {
  std::vector<host::UserDialog::Item> items;
  for (int r = 0; r < Rows(); ++r)
    if (!hidden_[r]) items.push_back(Entry(r));
  dialog_.SetItems(list_, items);
}

void PictureGrid::Clear() {
  rows_.clear();
  hidden_.clear();
  current_ = -1;
  dialog_.SetItems(list_, {});
  LoadEditors();
}

void PictureGrid::FitColumns() {
  for (size_t i = 0; i < columns_.size(); ++i) {
    Column& c = columns_[i];
    if (!c.shown || Pictured(c)) continue;
    size_t width = Characters(c.caption);
    for (const auto& row : rows_) width = std::max(width, Characters(Limited(row[i], c.limit)));
    c.width = static_cast<int>(width);
  }
  ShowRows();
  if (RowVisible(current_)) dialog_.SetListIndex(list_, ListIndexOf(current_));
}

std::string PictureGrid::Heading() const {
  std::string text;
  for (const Column& c : columns_)
    if (c.shown && !Pictured(c)) text += (text.empty() ? "" : "   ") + Padded(c.caption, c.width);
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

void PictureGrid::RemoveRow(int row) {
  if (row < 0 || row >= Rows()) return;
  rows_.erase(rows_.begin() + row);
  hidden_.erase(hidden_.begin() + row);
  current_ = -1;
  ShowRows();
  LoadEditors();
}

bool PictureGrid::RowVisible(int row) const { return row >= 0 && row < Rows() && !hidden_[row]; }

int PictureGrid::ListIndexOf(int row) const {
  if (!RowVisible(row)) return -1;
  return static_cast<int>(std::count(hidden_.begin(), hidden_.begin() + row, false));
}

int PictureGrid::RowAt(int listIndex) const {
  for (int row = 0, shown = 0; row < Rows(); ++row) {
    if (hidden_[row]) continue;
    if (shown++ == listIndex) return row;
  }
  return -1;
}

void PictureGrid::SelectRow(int row) {
  if (!RowVisible(row)) return;
  dialog_.SetListIndex(list_, ListIndexOf(row));
  Selected(row);
}

std::vector<int> PictureGrid::SelectedRows() const {
  std::vector<int> rows;
  for (int index : dialog_.ListIndices(list_)) {
    int row = RowAt(index);
    if (row >= 0) rows.push_back(row);
  }
  return rows;
}

void PictureGrid::SelectRows(const std::vector<int>& rows) {
  std::vector<int> indices;
  for (int row : rows)
    if (RowVisible(row)) indices.push_back(ListIndexOf(row));
  std::sort(indices.begin(), indices.end());
  dialog_.SetListIndices(list_, indices);
}

void PictureGrid::SetVisibleRows(const std::vector<bool>& visible) {
  std::vector<int> selected = SelectedRows();
  if (current_ >= 0 && std::find(selected.begin(), selected.end(), current_) == selected.end())
    selected.push_back(current_);
  for (int row = 0; row < Rows(); ++row) hidden_[row] = row < static_cast<int>(visible.size()) && !visible[row];
  ShowRows();
  SelectRows(selected);
  if (!RowVisible(current_) && current_ >= 0) {
    current_ = -1;
    LoadEditors();
  }
}

void PictureGrid::Selected(int row) {
  if (row < 0 || row == current_) return;
  current_ = row;
  LoadEditors();
  if (RowSelected) RowSelected(row);
}

std::string PictureGrid::Value(int row, const std::string& key) const {
  int i = ColumnIndex(key);
  if (row < 0 || row >= Rows() || i < 0) return "";
  return rows_[row][i];
}

void PictureGrid::SetValue(int row, const std::string& key, const std::string& value) {
  int i = ColumnIndex(key);
  if (row < 0 || row >= Rows() || i < 0) return;
  rows_[row][i] = value;
  if (columns_[i].shown && RowVisible(row)) dialog_.SetItem(list_, ListIndexOf(row), Entry(row));
  if (row == current_) LoadEditors();
}

void PictureGrid::LoadEditors() {
  loading_ = true;
  for (size_t i = 0; i < columns_.size(); ++i) {
    const Column& c = columns_[i];
    if (c.editor.empty()) continue;
    std::string value = current_ >= 0 ? rows_[current_][i] : "";
    if (c.choices.empty()) {
      dialog_.SetText(c.editor, value);
    } else {
      auto at = std::find_if(c.choices.begin(), c.choices.end(), [&](const auto& ch) { return ch.first == value; });
      dialog_.SetListIndex(c.editor, at == c.choices.end() ? -1 : static_cast<int>(at - c.choices.begin()));
    }
  }
  loading_ = false;
}

void PictureGrid::Commit(const Column& column) {
  if (loading_ || current_ < 0) return;
  std::string value;
  if (column.choices.empty()) {
    value = dialog_.Text(column.editor);
  } else {
    int index = dialog_.ListIndex(column.editor);
    if (index < 0 || index >= static_cast<int>(column.choices.size())) return;
    value = column.choices[index].first;
  }
  int row = current_;
  if (Value(row, column.key) == value) return;
  if (BeforeCommit && !BeforeCommit(row, column.key, value)) {
    // The edit stays open: the editor has the focus again, the cell's value
    // in it selected for another try.
    LoadEditors();
    dialog_.SetFocus(column.editor, true);
    return;
  }
  SetValue(row, column.key, value);
  if (AfterCommit) AfterCommit(row, column.key);
}

bool PictureGrid::Handle(const std::string& method) {
  if (method == list_ + "_SelectionChanged") {
    Selected(RowAt(dialog_.ListIndex(list_)));
    return true;
  }
  for (const Column& c : columns_)
    if (!c.editor.empty() && method == c.editor + "_Commit") {
      Commit(c);
      return true;
    }
  return false;
}

}  // namespace nivarel::dialogs
