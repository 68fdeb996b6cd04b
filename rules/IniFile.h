// The in-memory form of a text settings file: its lines in order plus an index
// of where each section starts. The caller owns the record and passes it to
// CIniFileHandler, which keeps no state of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "HostError.h"

namespace nivarel::rules {

// A 1-based array: indexes run from 1 to Size(), and an empty array still
// holds one element, index 1. An index outside raises HostError 9
// ("Subscript out of range").
template <typename T>
class IniArray {
 public:
  IniArray() : items_(1) {}

  int32_t Size() const { return static_cast<int32_t>(items_.size()); }

  T& operator[](int32_t index) { return items_[Offset(index, Size())]; }
  const T& operator[](int32_t index) const { return items_[Offset(index, Size())]; }

  // Keeps the first `size` elements (at least one), adding default ones as needed.
  void Resize(int32_t size) { items_.resize(size < 1 ? 1 : static_cast<size_t>(size)); }
  // Back to one default element.
  void Clear() { items_.assign(1, T()); }
  // Puts value at index (1 to Size() + 1), moving the elements from there on up by one.
  void Insert(int32_t index, T value) {
    items_.insert(items_.begin() + Offset(index, Size() + 1), std::move(value));
  }
  // Removes count elements from index on and closes the gap; one element always remains.
  void Erase(int32_t index, int32_t count) {
    if (count <= 0) return;
    size_t first = Offset(index, Size());
    Offset(index + count - 1, Size());
    items_.erase(items_.begin() + first, items_.begin() + first + count);
    if (items_.empty()) items_.resize(1);
  }

 private:
  static size_t Offset(int32_t index, int32_t upper) {
    if (index < 1 || index > upper) throw office::HostError(9, "Subscript out of range");
    return static_cast<size_t>(index - 1);
  }

  std::vector<T> items_;
};

// One settings file. Every line of the file is in Lines, trimmed, section
// headers included; the section arrays say where each section stands. The
// lines of section s are Lines[SectionStarts[s] + 1] to
// Lines[SectionStarts[s] + SectionKeyCounts[s]]; lines ahead of the first
// header belong to no section. Each array holds max(count, 1) elements.
struct IniFile {
  std::string FileName;                 // Full path, set by the caller before loading.
  int32_t LineCount = 0;                // Lines held; 0 for an empty file.
  IniArray<std::string> Lines;          // The lines, as trimmed on load.
  int16_t SectionCount = 0;             // Sections found; 0 for a file without sections.
  IniArray<std::string> SectionNames;   // Each header's text, brackets included, as written.
  IniArray<int32_t> SectionStarts;      // Each header's line number.
  IniArray<int16_t> SectionKeyCounts;   // Lines after each header that belong to it, blank ones too.
};

}  // namespace nivarel::rules
