#include "CSymbolData.h"

#include <algorithm>

namespace nivarel::rules {

void CSymbolData::SetSize(int32_t n) {
  if (n <= 0) return;
  Size = n;
  symbols_.resize(static_cast<size_t>(std::max<int32_t>(n, Last + 1)));
}

void CSymbolData::Grow() { SetSize(Size == 0 ? 8 : Size * 2); }

void CSymbolData::AddSymbol(std::shared_ptr<CSymbol> symbol) {
  if (Last + 1 >= Size) Grow();
  symbols_[static_cast<size_t>(++Last)] = std::move(symbol);
}

int16_t CSymbolData::Exists(int16_t id) const {
  for (int32_t i = 0; i <= Last; ++i)
    if (symbols_[static_cast<size_t>(i)]->SymbolId == id) return static_cast<int16_t>(i);
  return -1;
}

std::shared_ptr<CSymbol> CSymbolData::GetSymbol(int16_t id) const {
  int16_t i = Exists(id);
  return i >= 0 ? symbols_[static_cast<size_t>(i)] : std::make_shared<CSymbol>();
}

int16_t CSymbolData::GetStyle(int16_t id) const {
  int16_t i = Exists(id);
  return i >= 0 ? symbols_[static_cast<size_t>(i)]->StyleId : 43;
}

std::string CSymbolData::GetDisplayName(int16_t id) const {
  int16_t i = Exists(id);
  return i >= 0 ? symbols_[static_cast<size_t>(i)]->DisplayName : std::string();
}

int16_t CSymbolData::GetMinHeight(int16_t id) const {
  int16_t i = Exists(id);
  return i >= 0 ? symbols_[static_cast<size_t>(i)]->MinHeight : 2;
}

int16_t CSymbolData::GetWidth(int16_t id) const {
  int16_t i = Exists(id);
  return i >= 0 ? symbols_[static_cast<size_t>(i)]->Width : 8;
}

int32_t CSymbolData::GetMaxWidth() const {
  int32_t widest = 0;
  for (int32_t i = 0; i <= Last; ++i) widest = std::max<int32_t>(widest, symbols_[static_cast<size_t>(i)]->Width);
  return widest;
}

}  // namespace nivarel::rules
