// The symbol rules: which symbols are in force, the tables the parser
// searches and their exact order, and the collection's defaults.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "CIniFileHandler.h"
#include "CIniSymbolDataAccess.h"
#include "MSpecialFolders.h"
#include "UnitEnvironment.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using rules::CIniSymbolDataAccess;
using rules::RuleTable;

// A rules file of n sections; entries of `sections` fill some of them.
std::string RulesFile(int n, const std::map<int, std::string>& sections) {
  std::string text;
  for (int i = 1; i <= n; ++i) {
    text += "[Shape " + std::to_string(i) + "]\r\n";
    auto it = sections.find(i);
    if (it != sections.end()) text += it->second;
    text += "\r\n";
  }
  return text;
}

class SymbolRulesTest : public ::testing::Test {
 protected:
  rules::IniFile Load(const std::string& text) {
    std::string path = std::string(getenv("HOME")) + "/rules.ini";
    std::ofstream(path, std::ios::binary) << text;
    rules::IniFile ini;
    ini.FileName = path;
    rules::CIniFileHandler().LoadIniFile(ini);
    return ini;
  }
  CIniSymbolDataAccess access_;
};

TEST_F(SymbolRulesTest, TheListDecidesWhichSymbolsAreInForce) {
  auto ini = Load(RulesFile(74, {
      {5, "is_active=True\r\nprefix=r\r\nkeywords=box\r\norder=3\r\nsymbol_id=5\r\nstyle_id=4\r\nwidth=6\r\nheight=2\r\n"},
      {61, "is_active=False\r\nprefix=P\r\nkeywords=do\r\norder=1\r\nsymbol_id=61\r\nstyle_id=2\r\n"
           "display_name= Process \r\nwidth=8\r\nheight=2\r\n"},
      {63, "is_active=False\r\nsymbol_id=63\r\nstyle_id=2\r\nwidth=8\r\nheight=4\r\n"},
      {69, "symbol_id=69\r\nstyle_id=3\r\nwidth=6\r\nheight=2\r\n"},
      {73, "is_active=False\r\nsymbol_id=73\r\nstyle_id=2\r\nwidth=2\r\nheight=2\r\n"},
  }));
  rules::CSymbolData basic;
  access_.CreateSymbolCollection(ini, 0, 4, basic);
  ASSERT_EQ(4, basic.Count()) << "list 0: the four basic symbols whatever is_active says";
  EXPECT_EQ(0, basic.Exists(61));
  EXPECT_EQ(3, basic.Exists(73));
  EXPECT_EQ(-1, basic.Exists(5));
  EXPECT_EQ("Process", basic.GetDisplayName(61));
  EXPECT_EQ(4, basic.GetMinHeight(63));

  rules::CSymbolData active;
  int32_t symbols = 0, prefixes = 0, keywords = 0;
  access_.GetRuleCounts(ini, 99, symbols, prefixes, keywords);
  EXPECT_EQ(1, symbols) << "69 lacks is_active and stays out";
  access_.CreateSymbolCollection(ini, 99, symbols, active);
  ASSERT_EQ(1, active.Count());
  EXPECT_EQ(5, active.GetSymbol(5)->SymbolId);

  // Unknown ids answer the process defaults, and aren't added.
  auto unknown = active.GetSymbol(99);
  EXPECT_EQ(61, unknown->SymbolId);
  EXPECT_EQ(43, unknown->StyleId);
  EXPECT_EQ(8, unknown->Width);
  EXPECT_EQ(2, unknown->MinHeight);
  EXPECT_EQ("Process", unknown->DisplayName);
  EXPECT_EQ(1, active.Count());
  EXPECT_EQ(43, active.GetStyle(99));
  EXPECT_EQ("", active.GetDisplayName(99));
  EXPECT_EQ(6, active.GetMaxWidth());
  EXPECT_EQ(0, rules::CSymbolData().GetMaxWidth());
}

TEST_F(SymbolRulesTest, KeywordsAreTrimmedUpperCasedAndAMissingKeyMeansFalse) {
  auto ini = Load(RulesFile(4, {
      {1, "is_active=True\r\nkeywords= Stop ,, wait ,\r\norder=2\r\nsymbol_id=1\r\n"},
      {2, "is_active=True\r\norder=1\r\nsymbol_id=2\r\n"},
      {3, "is_active=True\r\nkeywords=\r\norder=3\r\nsymbol_id=3\r\n"},
  }));
  EXPECT_EQ(2, CIniSymbolDataAccess::CountCommaSeparatedItems("a,,b, "));
  EXPECT_EQ(0, CIniSymbolDataAccess::CountCommaSeparatedItems("  "));
  int32_t symbols = 0, prefixes = 0, keywords = 0;
  access_.GetRuleCounts(ini, 99, symbols, prefixes, keywords);
  EXPECT_EQ(3, symbols);
  EXPECT_EQ(2, keywords);
  RuleTable table;
  access_.CreateKeywordTable(ini, 99, keywords, table);
  ASSERT_EQ(3u, table.size()) << "the table grows past the first count";
  EXPECT_EQ((std::array<std::string, 3>{"1", "2", "FALSE"}), table[0]);
  EXPECT_EQ((std::array<std::string, 3>{"2", "1", "STOP"}), table[1]);
  EXPECT_EQ((std::array<std::string, 3>{"2", "1", "WAIT"}), table[2]);
}

TEST_F(SymbolRulesTest, EqualOrdersComeOutAsTheSortStepsLeaveThem) {
  // Four rows, three of them with order 1: the greatest (D) goes last, A is
  // the first pivot, and the partition leaves C ahead of A and B.
  RuleTable table = {{"1", "10", "A"}, {"1", "11", "B"}, {"1", "12", "C"}, {"2", "13", "D"}};
  CIniSymbolDataAccess::QuickSort2D_3Col(table);
  std::string letters;
  for (const auto& row : table) letters += row[2];
  EXPECT_EQ("CABD", letters) << "equal orders: not their file order";
  EXPECT_EQ("12", table[0][1]) << "all three columns move together";

  RuleTable larger = {{"3", "", "a"}, {"1", "", "b"}, {"3", "", "c"}, {"2", "", "d"},
                      {"1", "", "e"}, {"3", "", "f"}, {"07", "", "g"}};
  CIniSymbolDataAccess::QuickSort2D_3Col(larger);
  std::string order;
  for (const auto& row : larger) order += row[2];
  EXPECT_EQ("bedfacg", order);
  EXPECT_EQ("07", larger[6][0]) << "the greatest row is never a pivot, so its text stays";

  RuleTable one = {{"x", "", "only"}};
  CIniSymbolDataAccess::QuickSort2D_3Col(one);
  EXPECT_EQ("x", one[0][0]) << "one row isn't sorted, so its key isn't even read";
}

TEST_F(SymbolRulesTest, BrokenRulesFilesDoNotStopTheRun) {
  // Duplicated sections, a gap, a binary tail and a huge line.
  std::string text = RulesFile(3, {{1, "is_active=True\r\nprefix=A\r\norder=1\r\nsymbol_id=1\r\nstyle_id=1\r\n"
                                                "width=4\r\nheight=2\r\n"},
                                   {3, "is_active=True\r\nprefix=C\r\norder=2\r\nsymbol_id=3\r\n"}});
  text += "[Shape 1]\r\nprefix=DUP\r\n[Shape 9]\r\nis_active=True\r\n";
  text += std::string("\0\x01\xff\xfe", 4) + "\r\n" + std::string(100000, 'k') + "=v\r\n";
  auto ini = Load(text);
  int32_t symbols = 0, prefixes = 0, keywords = 0;
  access_.GetRuleCounts(ini, 99, symbols, prefixes, keywords);
  RuleTable prefixTable;
  access_.CreatePrefixTable(ini, 99, prefixes, prefixTable);
  ASSERT_GE(prefixTable.size(), 2u);
  EXPECT_EQ("A", prefixTable[0][2]) << "the first of two sections with one name wins";
  EXPECT_EQ("C", prefixTable[1][2]);
  rules::CSymbolData collection;
  access_.CreateSymbolCollection(ini, 99, symbols, collection);
  EXPECT_EQ(4, collection.GetWidth(1));
}

}  // namespace
}  // namespace nivarel
