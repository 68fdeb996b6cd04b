// The symbols in force, in the order the rules file lists them. Lookups by id
// never fail: an unknown id answers the process symbol's defaults.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CSymbol.h"

namespace nivarel::rules {

class CSymbolData {
 public:
  // For n above 0, makes room for n symbols; symbols already held stay.
  void SetSize(int32_t n);
  int32_t Count() const { return Last + 1; }
  // Appends the symbol, growing the room when it is full.
  void AddSymbol(std::shared_ptr<CSymbol> symbol);
  // The index of the first symbol with the id, or -1.
  int16_t Exists(int16_t id) const;
  // The symbol, or a new default process symbol that isn't added.
  std::shared_ptr<CSymbol> GetSymbol(int16_t id) const;
  int16_t GetStyle(int16_t id) const;             // 43 when unknown
  std::string GetDisplayName(int16_t id) const;   // empty when unknown
  int16_t GetMinHeight(int16_t id) const;         // 2 when unknown
  int16_t GetWidth(int16_t id) const;             // 8 when unknown
  // The largest width class of all symbols; 0 when there are none.
  int32_t GetMaxWidth() const;

  int32_t Size = 0;
  int32_t Last = -1;

 private:
  void Grow();
  std::vector<std::shared_ptr<CSymbol>> symbols_;
};

}  // namespace nivarel::rules
