// The settings files that ship with the add-in, read by the add-in's own
// code: every symbol in place, rules that don't fight, and everyday steps
// that come out as the symbols a user expects.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "CConfig.h"
#include "CIniDataAccess.h"
#include "CIniFileHandler.h"
#include "CIniSymbolDataAccess.h"
#include "CTextParser.h"
#include "MSpecialFolders.h"
#include "UnitEnvironment.h"
#include "UserSettings.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;

class ShippedRulesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    host::SetInstallFolder(NIVAREL_SOURCE_DIR "/extension");
    fs::remove_all(testing::UnitConfigHome() + "/Tamrisk/Nivarel");
    // No old settings to bring over.
    host::SaveSetting("Nivarel", "Settings", "SaveSettings", "False");
  }
};

TEST_F(ShippedRulesTest, TheSettingsFileHoldsEveryKeyWithItsDefault) {
  rules::CIniFileHandler handler;
  rules::IniFile ini;
  ini.FileName = NIVAREL_SOURCE_DIR "/extension/nivarel.cfg";
  handler.LoadIniFile(ini);
  for (const auto& key : rules::CIniDataAccess::KeyNames())
    EXPECT_NE("missing", handler.ReadFrom(ini, "Settings", key, "missing")) << key;

  rules::CConfig shipped;
  shipped.LoadConfigData();
  EXPECT_EQ("C3", shipped.StartLocation);
  EXPECT_EQ(99, shipped.SymbolList);
  EXPECT_EQ(":", shipped.PrefixDelimiter);
  EXPECT_FLOAT_EQ(8, shipped.FontSize);
}

TEST_F(ShippedRulesTest, EverySymbolIsInPlaceAndTheRulesDontFight) {
  rules::CSymbolData all;
  rules::CIniSymbolDataAccess().SetSymbolData(all, true);
  ASSERT_EQ(137, all.Count());
  for (int16_t id = 1; id <= 137; ++id) {
    EXPECT_EQ(id - 1, all.Exists(id)) << id;
    EXPECT_FALSE(all.GetDisplayName(id).empty()) << id;
    EXPECT_GE(all.GetWidth(id), 2) << id;
    EXPECT_GE(all.GetMinHeight(id), 2) << id;
  }
  EXPECT_EQ("Process", all.GetDisplayName(61));
  EXPECT_EQ("Decision", all.GetDisplayName(63));

  rules::CSymbolData symbols;
  rules::RuleTable prefixes, keywords;
  rules::CIniSymbolDataAccess().InitializeRules(symbols, prefixes, keywords);
  EXPECT_EQ(28, symbols.Count());
  for (int16_t id = 61; id <= 88; ++id) EXPECT_GE(symbols.Exists(id), 0) << id;
  std::set<std::string> seen;
  for (const auto& row : prefixes) EXPECT_TRUE(seen.insert(row[2]).second) << "prefix twice: " << row[2];
  seen.clear();
  for (const auto& row : keywords) {
    EXPECT_TRUE(seen.insert(row[2]).second) << "keyword twice: " << row[2];
    EXPECT_NE("FALSE", row[2]) << "a symbol in force lacks its keywords key";
  }
  for (size_t i = 1; i < keywords.size(); ++i)
    EXPECT_LE(std::stoi(keywords[i - 1][0]), std::stoi(keywords[i][0])) << "sorted by order";
}

TEST_F(ShippedRulesTest, EverydayStepsBecomeTheSymbolsUsersExpect) {
  rules::CConfig config;
  config.LoadConfigData();
  rules::CSymbolData symbols;
  rules::RuleTable prefixes, keywords;
  rules::CIniSymbolDataAccess().InitializeRules(symbols, prefixes, keywords);
  // Texts that are no label and no reserved word never touch the sheet.
  office::Worksheet noSheet(nullptr);
  const std::pair<const char*, int> steps[] = {
      {"Start", 69},
      {"stop the line", 69},
      {"Receive order", 61},
      {"is it in stock?", 63},
      {"d: credit approved", 63},
      {"wait for payment", 84},
      {"print invoice", 64},
      {"manual input of the code", 71},
      {"Restart the pump", 61},
      {"send documents", 68},
      {"Update database", 86},
      {"12", 74},
      {"A", 73},
      {"p: ship it", 61},
  };
  for (const auto& [text, id] : steps) {
    flowcharting::CTextParser parser;
    parser.ParseText(text, config, noSheet, prefixes, keywords, symbols, "C3", "");
    EXPECT_EQ(id, parser.ShapeType()) << text;
  }
}

}  // namespace
}  // namespace nivarel
