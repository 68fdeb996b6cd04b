// The settings file: defaults, the order of a store, conversions that fail
// key by key, unknown lines kept, and the one-time import of old settings.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "CConfig.h"
#include "CIniDataAccess.h"
#include "MSpecialFolders.h"
#include "UnitEnvironment.h"
#include "UserSettings.h"

namespace nivarel {
namespace {

namespace fs = std::filesystem;
using rules::CConfig;

std::string Read(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

class ConfigTest : public ::testing::Test {
 protected:
  void SetUp() override {
    install_ = std::string(getenv("HOME")) + "/install-config";
    fs::create_directories(install_);
    std::ofstream(install_ + "/nivarel.cfg", std::ios::binary) << "";
    host::SetInstallFolder(install_);
    fs::remove(Cfg());
    host::SaveSetting("Nivarel", "Settings", "SaveSettings", "False");
  }
  void TearDown() override { host::SaveSetting("Nivarel", "Settings", "SaveSettings", "False"); }
  static std::string Cfg() { return testing::UnitConfigHome() + "/Tamrisk/Nivarel/nivarel.cfg"; }
  void WriteCfg(const std::string& text) {
    fs::create_directories(fs::path(Cfg()).parent_path());
    std::ofstream(Cfg(), std::ios::binary) << text;
  }
  std::string install_;
};

TEST_F(ConfigTest, AnEmptyFileGivesEveryDefaultAndAStoreWritesAllKeysInOrder) {
  WriteCfg("");
  CConfig c;
  c.IsGrid = false;
  c.LoadTemplate = true;
  c.BlockDiagram = true;
  c.UseRestartLocation = true;
  c.LoadConfigData();
  EXPECT_TRUE(c.IsGrid);
  EXPECT_FALSE(c.LoadTemplate);
  EXPECT_FALSE(c.BlockDiagram);
  EXPECT_TRUE(c.UseRestartLocation) << "only three of the unstored fields are reset";
  EXPECT_TRUE(c.AddFlowLine);
  EXPECT_EQ("Yes", c.BottomBranchText);
  EXPECT_EQ("No", c.RightBranchText);
  EXPECT_EQ("", c.LeftBranchText);
  EXPECT_EQ(0, c.BranchFontColor);
  EXPECT_FLOAT_EQ(8, c.BranchFontSize);
  EXPECT_EQ(1, c.BranchPosition);
  EXPECT_EQ(9, c.FlowLineStyle);
  EXPECT_EQ(1, c.FlowLineType);
  EXPECT_EQ("Tahoma", c.FontName);
  EXPECT_EQ(-4108, c.HorizontalAlignment);
  EXPECT_EQ(-4108, c.VerticalAlignment);
  EXPECT_EQ(":", c.PrefixDelimiter);
  EXPECT_EQ("C3", c.StartLocation);
  EXPECT_EQ("Start", c.StartTerminatorText);
  EXPECT_EQ("End", c.EndTerminatorText);
  EXPECT_EQ(2, c.StyleId);
  EXPECT_EQ(99, c.SymbolList);
  EXPECT_TRUE(c.QuestionMarkIsDecision);

  c.FontSize = 10.5f;
  c.StartLocation = "B4";
  c.StoreConfigData();
  CConfig defaults;
  defaults.LoadConfigData();  // reads the stored file back: only two values differ
  EXPECT_FLOAT_EQ(10.5f, defaults.FontSize);
  EXPECT_EQ("B4", defaults.StartLocation);
  std::string text = Read(Cfg());
  size_t at = 0;
  for (const std::string& key : rules::CIniDataAccess::KeyNames()) {
    size_t next = text.find("\r\n" + key + "=", at);
    ASSERT_NE(std::string::npos, next) << key << " missing or out of order";
    at = next + 1;
  }
  EXPECT_EQ(0u, text.find("[Settings]\r\nAddFlowLine=True\r\nAlternateProcessDashed=True\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\nFontSize=10.5\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\nHorizontalAlignment=-4108\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\nLeftBranchText=\r\n"));
}

TEST_F(ConfigTest, BadValuesFailAloneAndUnknownLinesSurviveAStore) {
  WriteCfg(
      "; kept comment\r\n"
      "[Settings]\r\n"
      "FontSize=abc\r\n"
      "StyleId=99999\r\n"
      "Capitalize=maybe\r\n"
      "BottomBranchText=\r\n"
      "MyOwnKey=stays\r\n"
      "StartLocation=D7\r\n"
      "AddFlowLine =False\r\n"
      "\r\n"
      "[Other]\r\n"
      "x=1\r\n");
  CConfig c;
  c.LoadConfigData();
  EXPECT_FLOAT_EQ(0, c.FontSize) << "a value that doesn't convert leaves the field's zero";
  EXPECT_EQ(0, c.StyleId) << "out of range";
  EXPECT_FALSE(c.Capitalize);
  EXPECT_EQ("", c.BottomBranchText) << "an empty value is a value";
  EXPECT_EQ("D7", c.StartLocation) << "the keys behind a bad one still load";
  EXPECT_TRUE(c.AddFlowLine) << "'AddFlowLine ' is another key";
  EXPECT_FLOAT_EQ(8, c.BranchFontSize);

  c.StoreConfigData();
  std::string text = Read(Cfg());
  EXPECT_EQ(0u, text.find("; kept comment\r\n[Settings]\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\nMyOwnKey=stays\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\nAddFlowLine =False\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\nFontSize=0\r\n"));
  EXPECT_NE(std::string::npos, text.find("\r\n\r\n[Other]\r\nx=1\r\n")) << "the next section keeps its separator";
}

TEST_F(ConfigTest, AHostileFileGivesDefaultsAndKeepsWhatItHeld) {
  std::string junk = std::string("\x7f" "ELF\0\x01\x02\xff\xfe", 10) + "\r\n" + std::string(100000, 'x') + "\r\n";
  for (int i = 0; i < 20000; ++i) junk += "[Settings]\r\nFontName=Dup" + std::to_string(i) + "\r\n";
  WriteCfg(junk);
  CConfig c;
  c.LoadConfigData();
  EXPECT_EQ("Dup0", c.FontName) << "the first of the repeated sections counts";
  EXPECT_EQ("C3", c.StartLocation);
  c.StoreConfigData();
  std::string text = Read(Cfg());
  EXPECT_NE(std::string::npos, text.find(std::string(100000, 'x'))) << "unknown lines survive a store";
  EXPECT_NE(std::string::npos, text.find("FontName=Dup19999"));
}

TEST_F(ConfigTest, AFirstRunCopiesTheShippedFileAndImportsOldSettingsWhenAsked) {
  std::ofstream(install_ + "/nivarel.cfg", std::ios::binary) << "[Settings]\r\nFontName=Arial\r\n";
  CConfig c;
  c.LoadConfigData();
  EXPECT_EQ("Arial", c.FontName) << "the shipped copy, untouched without old settings";
  EXPECT_TRUE(c.QuestionMarkIsDecision);

  fs::remove(Cfg());
  host::SaveSetting("Nivarel", "Settings", "SaveSettings", "True");
  host::SaveSetting("Nivarel", "Settings", "EndTerminator", "False");
  host::SaveSetting("Nivarel", "Settings", "FontName", "Verdana");
  host::SaveSetting("Nivarel", "Settings", "YesTextboxLocation", "4");
  host::SaveSetting("Nivarel", "Settings", "YesTextboxText", "Si");
  host::SaveSetting("Nivarel", "Settings", "NoTextboxLocation", "7");
  CConfig imported;
  imported.LoadConfigData();
  EXPECT_EQ("Verdana", imported.FontName);
  EXPECT_FALSE(imported.EndTerminator);
  EXPECT_FALSE(imported.QuestionMarkIsDecision) << "follows the old end-terminator setting";
  EXPECT_EQ("Si", imported.TopBranchText);
  EXPECT_EQ("No", imported.RightBranchText) << "location 7 imports nothing";
  EXPECT_NE(std::string::npos, Read(Cfg()).find("FontName=Verdana")) << "the import is saved";

  // Only a first run imports.
  host::SaveSetting("Nivarel", "Settings", "FontName", "Courier");
  CConfig again;
  again.LoadConfigData();
  EXPECT_EQ("Verdana", again.FontName);
}

}  // namespace
}  // namespace nivarel
