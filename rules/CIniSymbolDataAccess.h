// Reads the symbol rules, symbols.ini: one section "[Shape n]" per symbol id
// n, numbered without gaps. Builds the prefix table and the keyword table
// that the text parser searches, each sorted by the rules' order, and the
// collection of symbols in force.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "CSymbolData.h"
#include "IniFile.h"

namespace nivarel::rules {

// Rows of three texts: order, symbol id, upper-cased prefix or keyword.
using RuleTable = std::vector<std::array<std::string, 3>>;

class CIniSymbolDataAccess {
 public:
  // The collection and both tables for a flowcharting run, with the symbols
  // that the settings' SymbolList puts in force.
  void InitializeRules(CSymbolData& symbols, RuleTable& prefixes, RuleTable& keywords);
  // Only the collection: every symbol of the file, or the four basic ones.
  void SetSymbolData(CSymbolData& symbols, bool all);

  // Building blocks, public for the tools that show the rules.
  // Counts the symbols in force, their prefixes and keywords.
  void GetRuleCounts(IniFile& ini, int16_t symbolList, int32_t& symbolCount, int32_t& prefixCount,
                     int32_t& keywordCount);
  void CreatePrefixTable(IniFile& ini, int16_t symbolList, int32_t count, RuleTable& table);
  void CreateKeywordTable(IniFile& ini, int16_t symbolList, int32_t count, RuleTable& table);
  // symbolList 0 with all true takes every section of the file.
  void CreateSymbolCollection(IniFile& ini, int16_t symbolList, int32_t count, CSymbolData& symbols,
                              bool all = false);
  // The parts of a comma-separated text that aren't empty after trimming.
  static int32_t CountCommaSeparatedItems(const std::string& text);
  // Sorts the rows by their first column read as a whole number. The order
  // among equal numbers is part of the rules' meaning: keep these steps.
  static void QuickSort2D_3Col(RuleTable& table);
  static void InnerQuickSort2D_3Col(RuleTable& table, int32_t low, int32_t high);

 private:
  bool InForce(IniFile& ini, int32_t number, int16_t symbolList);
  std::string Read(IniFile& ini, int32_t number, const std::string& key, const std::string& fallback);
};

}  // namespace nivarel::rules
