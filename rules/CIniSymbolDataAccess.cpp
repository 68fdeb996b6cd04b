#include "CIniSymbolDataAccess.h"

#include <cctype>

#include "CConfig.h"
#include "CIniFileHandler.h"
#include "MErrorHandler.h"
#include "MSpecialFolders.h"
#include "TextConvert.h"
#include "Text.h"

namespace nivarel::rules {

namespace {

constexpr char kSource[] = "CIniSymbolDataAccess";

int32_t Key(const RuleTable& table, int32_t row) { return ToInt32(table.at(static_cast<size_t>(row))[0]); }

}  // namespace

std::string CIniSymbolDataAccess::Read(IniFile& ini, int32_t number, const std::string& key,
                                       const std::string& fallback) {
  CIniFileHandler handler;
  return handler.ReadFrom(ini, "Shape " + std::to_string(number), key, fallback);
}

bool CIniSymbolDataAccess::InForce(IniFile& ini, int32_t number, int16_t symbolList) {
  if (symbolList == 0) return number == 61 || number == 63 || number == 69 || number == 73;
  return ToBool(Read(ini, number, "is_active", "False"));
}

void CIniSymbolDataAccess::InitializeRules(CSymbolData& symbols, RuleTable& prefixes, RuleTable& keywords) {
  try {
    CConfig config;
    config.LoadConfigData();
    int16_t list = config.SymbolList;
    CIniFileHandler handler;
    IniFile ini;
    ini.FileName = host::GetIniFilePath();
    handler.LoadIniFile(ini);
    int32_t symbolCount = 0, prefixCount = 0, keywordCount = 0;
    GetRuleCounts(ini, list, symbolCount, prefixCount, keywordCount);
    CreatePrefixTable(ini, list, prefixCount, prefixes);
    CreateKeywordTable(ini, list, keywordCount, keywords);
    CreateSymbolCollection(ini, list, symbolCount, symbols);
    handler.ResetIniData(ini);
  } catch (...) {
    host::ErrorHandler(kSource, "InitializeRules", false);
  }
}

void CIniSymbolDataAccess::SetSymbolData(CSymbolData& symbols, bool all) {
  try {
    CIniFileHandler handler;
    IniFile ini;
    ini.FileName = host::GetIniFilePath();
    handler.LoadIniFile(ini);
    int32_t symbolCount = 0, prefixCount = 0, keywordCount = 0;
    GetRuleCounts(ini, 0, symbolCount, prefixCount, keywordCount);
    CreateSymbolCollection(ini, 0, all ? ini.SectionCount : symbolCount, symbols, all);
    handler.ResetIniData(ini);
  } catch (...) {
    host::ErrorHandler(kSource, "SetSymbolData", false);
  }
}

void CIniSymbolDataAccess::GetRuleCounts(IniFile& ini, int16_t symbolList, int32_t& symbolCount,
                                         int32_t& prefixCount, int32_t& keywordCount) {
  symbolCount = prefixCount = keywordCount = 0;
  try {
    for (int32_t n = 1; n <= ini.SectionCount; ++n) {
      if (!InForce(ini, n, symbolList)) continue;
      ++symbolCount;
      if (!Read(ini, n, "prefix", "").empty()) ++prefixCount;
      keywordCount += CountCommaSeparatedItems(Read(ini, n, "keywords", ""));
    }
  } catch (...) {
    host::ErrorHandler(kSource, "GetRuleCounts", false);
  }
}

void CIniSymbolDataAccess::CreatePrefixTable(IniFile& ini, int16_t symbolList, int32_t count, RuleTable& table) {
  try {
    table.assign(static_cast<size_t>(count > 0 ? count : 0), {});
    int32_t row = -1;
    for (int32_t n = 1; n <= ini.SectionCount; ++n) {
      if (!InForce(ini, n, symbolList)) continue;
      std::string prefix = Trim(Read(ini, n, "prefix", ""), kBlankOrTab);
      if (prefix.empty()) continue;
      ++row;
      if (row >= static_cast<int32_t>(table.size())) table.resize(static_cast<size_t>(row) + 1);
      table[static_cast<size_t>(row)] = {Trim(Read(ini, n, "order", ""), kBlankOrTab), Trim(Read(ini, n, "symbol_id", ""), kBlankOrTab),
                                         UpperCase(prefix)};
    }
    QuickSort2D_3Col(table);
  } catch (...) {
    host::ErrorHandler(kSource, "CreatePrefixTable", false);
  }
}

void CIniSymbolDataAccess::CreateKeywordTable(IniFile& ini, int16_t symbolList, int32_t count, RuleTable& table) {
  try {
    table.assign(static_cast<size_t>(count > 0 ? count : 0), {});
    int32_t row = -1;
    for (int32_t n = 1; n <= ini.SectionCount; ++n) {
      if (!InForce(ini, n, symbolList)) continue;
      // A symbol in force without the key answers to the word "false".
      std::string keywords = Trim(Read(ini, n, "keywords", "False"), kBlankOrTab);
      if (keywords.empty()) continue;
      std::string order = Trim(Read(ini, n, "order", ""), kBlankOrTab);
      std::string id = Trim(Read(ini, n, "symbol_id", ""), kBlankOrTab);
      for (const std::string& part : SplitCommas(keywords)) {
        std::string word = Trim(part, kBlankOrTab);
        if (word.empty()) continue;
        ++row;
        if (row >= static_cast<int32_t>(table.size())) table.resize(static_cast<size_t>(row) + 1);
        table[static_cast<size_t>(row)] = {order, id, UpperCase(word)};
      }
    }
    QuickSort2D_3Col(table);
  } catch (...) {
    host::ErrorHandler(kSource, "CreateKeywordTable", false);
  }
}

void CIniSymbolDataAccess::CreateSymbolCollection(IniFile& ini, int16_t symbolList, int32_t count,
                                                  CSymbolData& symbols, bool all) {
  try {
    symbols.SetSize(count);
    for (int32_t n = 1; n <= ini.SectionCount; ++n) {
      if (!all && !InForce(ini, n, symbolList)) continue;
      auto symbol = std::make_shared<CSymbol>();
      symbol->SymbolId = ToInt16(Trim(Read(ini, n, "symbol_id", ""), kBlankOrTab));
      symbol->StyleId = ToInt16(Trim(Read(ini, n, "style_id", ""), kBlankOrTab));
      symbol->DisplayName = Trim(Read(ini, n, "display_name", ""), kBlankOrTab);
      symbol->Width = ToInt16(Trim(Read(ini, n, "width", ""), kBlankOrTab));
      symbol->MinHeight = ToInt16(Trim(Read(ini, n, "height", ""), kBlankOrTab));
      symbols.AddSymbol(symbol);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "CreateSymbolCollection", false);
  }
}

int32_t CIniSymbolDataAccess::CountCommaSeparatedItems(const std::string& text) {
  std::string t = Trim(text, kBlankOrTab);
  if (t.empty()) return 0;
  int32_t count = 0;
  for (const std::string& part : SplitCommas(t))
    if (!Trim(part, kBlankOrTab).empty()) ++count;
  return count;
}

void CIniSymbolDataAccess::QuickSort2D_3Col(RuleTable& table) {
  try {
    if (table.empty()) return;
    int32_t low = 0, high = static_cast<int32_t>(table.size()) - 1;
    if (low == high) return;
    // The greatest key goes last, the first of equals winning: it stops the
    // upward scans of the inner sort.
    int32_t greatest = low;
    int32_t greatestKey = Key(table, low);
    for (int32_t i = low + 1; i <= high; ++i) {
      int32_t k = Key(table, i);
      if (k > greatestKey) {
        greatest = i;
        greatestKey = k;
      }
    }
    std::swap(table[static_cast<size_t>(greatest)], table[static_cast<size_t>(high)]);
    InnerQuickSort2D_3Col(table, low, high);
  } catch (...) {
    host::ErrorHandler(kSource, "QuickSort2D_3Col", false);
  }
}

void CIniSymbolDataAccess::InnerQuickSort2D_3Col(RuleTable& table, int32_t low, int32_t high) {
  try {
    if (low >= high) return;
    int32_t i = low, j = high + 1;
    int32_t pivotKey = Key(table, low);
    std::string pivotId = table[static_cast<size_t>(low)][1];
    std::string pivotText = table[static_cast<size_t>(low)][2];
    for (;;) {
      do ++i;
      while (Key(table, i) < pivotKey);
      do --j;
      while (Key(table, j) > pivotKey);
      if (i >= j) break;
      std::swap(table[static_cast<size_t>(i)], table[static_cast<size_t>(j)]);
    }
    table[static_cast<size_t>(low)] = table[static_cast<size_t>(j)];
    table[static_cast<size_t>(j)] = {std::to_string(pivotKey), pivotId, pivotText};
    InnerQuickSort2D_3Col(table, low, j - 1);
    InnerQuickSort2D_3Col(table, j + 1, high);
  } catch (...) {
    host::ErrorHandler(kSource, "InnerQuickSort2D_3Col", false);
  }
}

}  // namespace nivarel::rules
