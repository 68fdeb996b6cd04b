// The error log's lines, byte for byte, with a fixed clock and no office.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "HostError.h"
#include "MErrorHandler.h"
#include "MSpecialFolders.h"
#include "UnitEnvironment.h"

namespace nivarel {
namespace {

using namespace host;
using namespace office;

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

class ErrorLogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SetLogClock([] {
      std::tm t{};
      t.tm_year = 2026 - 1900;
      t.tm_mon = 10;
      t.tm_mday = 3;
      t.tm_hour = 9;
      t.tm_min = 5;
      t.tm_sec = 7;
      return t;
    });
    std::filesystem::remove(GetLogFilePath());
  }
  void TearDown() override { SetLogClock(nullptr); }

  static void Fail(int number, const std::string& description, bool entry) {
    try {
      throw HostError(number, description);
    } catch (...) {
      ErrorHandler("CTextParser", "ParseText", entry);
    }
  }
};

TEST_F(ErrorLogTest, EveryKindOfLineIsWrittenExactly) {
  const std::string info = GetSystemInfo();
  Fail(1004, "Application-defined or object-defined error", false);
  Fail(13, "Type mismatch", true);
  Fail(kNivarelError, "Command bar could not be created", false);
  LogEvent("dsrConnect", "AddinInstance_OnConnection", "Add-in failed to establish connection");
  try {
    throw std::runtime_error("plain failure");
  } catch (...) {
    EXPECT_FALSE(ErrorHandler("MUtilities", "ColumnToAlpha", false));
  }

  EXPECT_EQ(
      "11/03/26 09:05:07 [Error]; CTextParser.ParseText; Error 1004: Application-defined or object-defined error "
      "(ParseText); " + info + "\r\n"
      "11/03/26 09:05:07 Entry point - [Error]; CTextParser.ParseText; Error 13: Type mismatch (ParseText); " +
          info + "\r\n"
      "11/03/26 09:05:07 [Error]; CTextParser.ParseText; Error 9999: Command bar could not be created; " + info +
          "\r\n"
      "11/03/26 09:05:07 [Event]; dsrConnect.AddinInstance_OnConnection; Add-in failed to establish connection; " +
          info + "\r\n"
      "11/03/26 09:05:07 [Error]; MUtilities.ColumnToAlpha; Error 5: plain failure (ColumnToAlpha); " + info +
          "\r\n",
      ReadBytes(GetLogFilePath()));
}

TEST_F(ErrorLogTest, SystemInfoNamesAddinHostAndSystem) {
  // Without an office the host's version is unknown; the system is named.
  std::string info = GetSystemInfo();
  EXPECT_EQ(0u, info.rfind("Nivarel: 2.4.15; Calc: ; ", 0)) << info;
  EXPECT_GT(info.size(), std::string("Nivarel: 2.4.15; Calc: ; ").size());
  EXPECT_EQ("Windows XP", WindowsOSName(5, 1, 2));
  EXPECT_EQ("Windows NT 4.0", WindowsOSName(4, 0, 2));
  EXPECT_EQ("Windows 98", WindowsOSName(4, 10, 1));
  EXPECT_EQ("", WindowsOSName(5, 3, 2));
  EXPECT_EQ("Windows Unknown", WindowsOSName(10, 0, 2));
}

TEST_F(ErrorLogTest, ReadingTrimsLinesAndDropsEmptyOnes) {
  EXPECT_EQ("", ReadLogFile()) << "no log yet";
  {
    std::ofstream out(GetLogFilePath(), std::ios::binary);
    out << "   indented line  \r\n\r\n   \r\nsecond\r\n";
  }
  EXPECT_EQ("indented line\r\nsecond\r\n", ReadLogFile());

  ClearLogFile();
  EXPECT_EQ("\r\n", ReadBytes(GetLogFilePath()));
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(ErrorLogTest, LogLivesInTheNivarelFolderOfTheSettingsFolder) {
  EXPECT_EQ(testing::UnitConfigHome() + "/Tamrisk/Nivarel/error.log", GetLogFilePath());
  // A log that cannot be written loses the line quietly.
  WriteLogLine(testing::UnitConfigHome() + "/no/such/folder/error.log", "text", false);
}

}  // namespace
}  // namespace nivarel
