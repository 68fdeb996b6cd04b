// The ini engine on real files in a private folder: where lines go, what is
// found, what survives a round trip, and how failures are reported.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "CIniFileHandler.h"
#include "IniFile.h"
#include "TextEncoding.h"

namespace nivarel {
namespace {

using rules::CIniFileHandler;
using rules::IniFile;
using Lines = std::vector<std::string>;

// Keeps the reports that would go to a message box.
class RecordingHandler : public CIniFileHandler {
 public:
  struct Report {
    std::string message;
    std::string procedure;
  };
  std::vector<Report> reports;

  void ShowIniError(const std::string& message, const std::string& procedure) override {
    reports.push_back({message, procedure});
  }
};

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

Lines LinesOf(const IniFile& ini) {
  Lines lines;
  for (int32_t i = 1; i <= ini.LineCount; ++i) lines.push_back(ini.Lines[i]);
  return lines;
}

Lines SectionNamesOf(const IniFile& ini) {
  Lines names;
  for (int32_t s = 1; s <= ini.SectionCount; ++s) names.push_back(ini.SectionNames[s]);
  return names;
}

// The record's index agrees with its lines.
void ExpectConsistent(const IniFile& ini) {
  EXPECT_EQ(ini.Lines.Size(), std::max<int32_t>(ini.LineCount, 1));
  const int32_t sections = std::max<int32_t>(ini.SectionCount, 1);
  EXPECT_EQ(ini.SectionNames.Size(), sections);
  EXPECT_EQ(ini.SectionStarts.Size(), sections);
  EXPECT_EQ(ini.SectionKeyCounts.Size(), sections);
  for (int32_t s = 1; s <= ini.SectionCount; ++s) {
    const int32_t start = ini.SectionStarts[s];
    ASSERT_GE(start, 1);
    ASSERT_LE(start, ini.LineCount);
    EXPECT_EQ(ini.Lines[start], ini.SectionNames[s]) << "section " << s;
    const int32_t end = start + ini.SectionKeyCounts[s];
    EXPECT_LE(end, s < ini.SectionCount ? ini.SectionStarts[s + 1] - 1 : ini.LineCount) << "section " << s;
  }
}

class IniFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = std::string(std::getenv("HOME")) + "/ini/" + ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
  }

  std::string PathOf(const std::string& name) const { return dir_ + "/" + name; }

  // Writes the bytes to a file of that name and loads it.
  IniFile Load(const std::string& name, const std::string& bytes) {
    IniFile ini;
    ini.FileName = PathOf(name);
    WriteBytes(ini.FileName, bytes);
    handler_.LoadIniFile(ini);
    return ini;
  }

  std::string dir_;
  RecordingHandler handler_;
};

TEST(IniFileRulesTest, SectionHeadersAndBrackets) {
  for (const char* header : {"[S]", "  [S]\t", "[a]=[b]", "[]", "[Café]"}) {
    EXPECT_TRUE(CIniFileHandler::IsSectionHeader(header)) << header;
  }
  for (const char* line : {"", "[", "S]", "[S", "x[S]", "[S]x", "; [S]", "k=[S]x"}) {
    EXPECT_FALSE(CIniFileHandler::IsSectionHeader(line)) << line;
  }

  const std::pair<std::string, std::string> cases[] = {
      {"Settings", "[Settings]"}, {"[Settings]", "[Settings]"}, {" Settings\t", "[Settings]"},
      {"[Settings", "[Settings]"}, {"Settings]", "[Settings]"}, {"", "[]"}};
  for (const auto& c : cases) {
    std::string section = c.first;
    CIniFileHandler::EnsureBrackets(section);
    EXPECT_EQ(section, c.second) << "'" << c.first << "'";
  }
}

TEST_F(IniFileTest, MissingOrEmptyFileGivesAnEmptyRecord) {
  IniFile ini;
  ini.FileName = PathOf("new.ini");
  handler_.LoadIniFile(ini);
  EXPECT_TRUE(handler_.reports.empty());
  ASSERT_TRUE(std::filesystem::is_regular_file(ini.FileName));
  EXPECT_EQ(std::filesystem::file_size(ini.FileName), 0u);
  EXPECT_EQ(ini.LineCount, 0);
  EXPECT_EQ(ini.SectionCount, 0);
  ExpectConsistent(ini);
  EXPECT_EQ(handler_.ReadFrom(ini, "Settings", "Key", "fallback"), "fallback");
  EXPECT_EQ(handler_.ReadFrom(ini, "", "", "x"), "x");

  // Loading again resets what the record held; so does a reset, which keeps the path.
  IniFile full = Load("full.ini", "top\n[A]\na=1\n[B]\nb=2\n");
  ASSERT_EQ(full.SectionCount, 2);
  WriteBytes(full.FileName, "");
  handler_.LoadIniFile(full);
  EXPECT_EQ(full.LineCount, 0);
  EXPECT_EQ(full.SectionCount, 0);
  ExpectConsistent(full);

  full = Load("full.ini", "top\n[A]\na=1\n[B]\nb=2\n");
  handler_.ResetIniData(full);
  EXPECT_EQ(full.FileName, PathOf("full.ini"));
  EXPECT_EQ(full.LineCount, 0);
  EXPECT_EQ(full.SectionCount, 0);
  ExpectConsistent(full);
  EXPECT_EQ(full.Lines[1], "");
  EXPECT_EQ(handler_.ReadFrom(full, "A", "a", "gone"), "gone");
  EXPECT_TRUE(handler_.reports.empty());
}

TEST_F(IniFileTest, ReadFindsKeysByTheLineRules) {
  IniFile ini = Load("rules.ini",
                     "pre=ahead\n"
                     "; heading comment\n"
                     "[General]\n"
                     "\n"
                     "Name=First\n"
                     "NAME=Second\n"
                     "eq=a=b\n"
                     "empty=\n"
                     "\t spaced =value \t\n"
                     "lead= x\n"
                     ";note=kept\n"
                     "[a]=[b]\n"
                     "x=1\n"
                     "[general]\n"
                     "Name=Shadowed\n"
                     "Only=here\n"
                     "[Café]\n"
                     "Ключ=v\n");
  EXPECT_TRUE(handler_.reports.empty());
  ExpectConsistent(ini);
  EXPECT_EQ(ini.LineCount, 18);
  EXPECT_EQ(SectionNamesOf(ini), (Lines{"[General]", "[a]=[b]", "[general]", "[Café]"}));
  EXPECT_EQ(ini.SectionStarts[1], 3);
  EXPECT_EQ(ini.SectionKeyCounts[1], 8);  // The blank first line and the comment count too.
  EXPECT_EQ(ini.Lines[9], "spaced =value");

  // Case, brackets and repeats.
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "Name", "-"), "First");
  EXPECT_EQ(handler_.ReadFrom(ini, "[GENERAL]", "name", "-"), "First");
  EXPECT_EQ(handler_.ReadFrom(ini, "  general", "NAME", "-"), "First");
  EXPECT_EQ(handler_.ReadFrom(ini, "general", "Only", "unreachable"), "unreachable");
  EXPECT_EQ(handler_.ReadFrom(ini, "CAFÉ", "КЛЮЧ", "-"), "v");

  // Values.
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "eq", "-"), "a=b");
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "empty", "-"), "");
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "lead", "-"), " x");
  EXPECT_EQ(handler_.ReadFrom(ini, "General", ";note", "-"), "kept");
  EXPECT_EQ(handler_.ReadFrom(ini, "a]=[b", "x", "-"), "1");

  // Key text isn't trimmed.
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "spaced", "default"), "default");
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "spaced ", "-"), "value");

  // Lines ahead of the first section belong to none.
  EXPECT_EQ(handler_.ReadFrom(ini, "General", "pre", "none"), "none");
  for (int16_t s = 1; s <= ini.SectionCount; ++s) EXPECT_EQ(handler_.FindKey(ini, s, "pre"), -1);
  EXPECT_EQ(handler_.FindSection(ini, "General"), 1);
  EXPECT_EQ(handler_.FindSection(ini, "Missing"), -1);
  EXPECT_EQ(handler_.FindKey(ini, 1, "name"), 5);
  EXPECT_EQ(handler_.ReadFrom(ini, "Missing", "Name", "none"), "none");
  EXPECT_TRUE(handler_.reports.empty());
}

TEST_F(IniFileTest, WriteToPlacesKeysAndSections) {
  IniFile ini;
  ini.FileName = PathOf("write.ini");
  handler_.LoadIniFile(ini);

  handler_.WriteTo(ini, "Settings", "Key", "1");
  EXPECT_EQ(LinesOf(ini), (Lines{"[Settings]", "Key=1"}));
  EXPECT_EQ(ini.SectionStarts[1], 1);
  EXPECT_EQ(ini.SectionKeyCounts[1], 1);

  // A new section after text: one blank line between.
  handler_.WriteTo(ini, "[Other]", "k", "v=w");
  EXPECT_EQ(LinesOf(ini), (Lines{"[Settings]", "Key=1", "", "[Other]", "k=v=w"}));
  EXPECT_EQ(ini.SectionKeyCounts[1], 1);

  // A new key goes after the section's last key, ahead of the separator.
  handler_.WriteTo(ini, "settings", " New ", "2");
  EXPECT_EQ(LinesOf(ini), (Lines{"[Settings]", "Key=1", "New=2", "", "[Other]", "k=v=w"}));
  EXPECT_EQ(ini.SectionStarts[2], 5);

  // An existing key in another case is replaced and takes the caller's case.
  handler_.WriteTo(ini, "SETTINGS", "KEY", "3");
  EXPECT_EQ(LinesOf(ini), (Lines{"[Settings]", "KEY=3", "New=2", "", "[Other]", "k=v=w"}));
  EXPECT_EQ(handler_.ReadFrom(ini, "Other", "K", "-"), "v=w");
  ExpectConsistent(ini);

  // Nothing reaches the disk before WriteIniFile.
  EXPECT_EQ(ReadBytes(ini.FileName), "");
  handler_.WriteIniFile(ini);
  EXPECT_EQ(ReadBytes(ini.FileName), "[Settings]\r\nKEY=3\r\nNew=2\r\n\r\n[Other]\r\nk=v=w\r\n");

  // Text that already ends in a blank line gets no second one.
  IniFile blank = Load("blank.ini", "[A]\nx=1\n\n");
  handler_.WriteTo(blank, "B", "y", "2");
  EXPECT_EQ(LinesOf(blank), (Lines{"[A]", "x=1", "", "[B]", "y=2"}));

  // A section that ends in a blank line keeps it behind the new key.
  IniFile two = Load("two.ini", "[A]\nx=1\n\n[B]\ny=1\n");
  handler_.WriteTo(two, "A", "z", "9");
  EXPECT_EQ(LinesOf(two), (Lines{"[A]", "x=1", "z=9", "", "[B]", "y=1"}));
  EXPECT_EQ(two.SectionKeyCounts[1], 3);
  EXPECT_EQ(two.SectionStarts[2], 5);
  handler_.WriteTo(two, "B", "w", "8");
  EXPECT_EQ(LinesOf(two), (Lines{"[A]", "x=1", "z=9", "", "[B]", "y=1", "w=8"}));
  ExpectConsistent(two);

  // Text without sections stays ahead of the first one.
  IniFile bare = Load("bare.ini", "loose=1\n");
  handler_.WriteTo(bare, "S", "loose", "2");
  EXPECT_EQ(LinesOf(bare), (Lines{"loose=1", "", "[S]", "loose=2"}));
  EXPECT_EQ(handler_.ReadFrom(bare, "S", "loose", "-"), "2");
  ExpectConsistent(bare);
  EXPECT_TRUE(handler_.reports.empty());
}

TEST_F(IniFileTest, DeleteSectionAndKey) {
  const std::string text = "top=1\n[A]\na1=1\na2=2\n\n[B]\nb1=1\n\n[C]\nc1=1\nc2=2\n";

  // A middle section: later lines move up over it.
  IniFile ini = Load("delete.ini", text);
  handler_.DeleteSection(ini, "b");
  EXPECT_EQ(LinesOf(ini), (Lines{"top=1", "[A]", "a1=1", "a2=2", "", "[C]", "c1=1", "c2=2"}));
  EXPECT_EQ(SectionNamesOf(ini), (Lines{"[A]", "[C]"}));
  EXPECT_EQ(ini.SectionStarts[2], 6);
  EXPECT_EQ(ini.SectionKeyCounts[2], 2);
  EXPECT_EQ(handler_.ReadFrom(ini, "C", "c2", "-"), "2");
  ExpectConsistent(ini);

  // The last of several: the lines end ahead of its header.
  ini = Load("delete.ini", text);
  handler_.DeleteSection(ini, "[C]");
  EXPECT_EQ(LinesOf(ini), (Lines{"top=1", "[A]", "a1=1", "a2=2", "", "[B]", "b1=1", ""}));
  EXPECT_EQ(SectionNamesOf(ini), (Lines{"[A]", "[B]"}));
  EXPECT_EQ(handler_.ReadFrom(ini, "C", "c1", "gone"), "gone");
  ExpectConsistent(ini);

  // The only section: everything goes, lines ahead of it too.
  ini = Load("delete.ini", "top=1\n[A]\na=1\n");
  handler_.DeleteSection(ini, "A");
  EXPECT_EQ(ini.LineCount, 0);
  EXPECT_EQ(ini.SectionCount, 0);
  EXPECT_EQ(ini.FileName, PathOf("delete.ini"));
  ExpectConsistent(ini);

  // Missing section or key: nothing changes.
  ini = Load("delete.ini", text);
  handler_.DeleteSection(ini, "D");
  handler_.DeleteKey(ini, "D", "a1");
  handler_.DeleteKey(ini, "A", "b1");
  handler_.DeleteKey(ini, "A", "top");
  EXPECT_EQ(ini.LineCount, 11);
  EXPECT_EQ(ini.SectionCount, 3);

  // A key in the middle: later sections move up by one.
  handler_.DeleteKey(ini, "a", "A1");
  EXPECT_EQ(LinesOf(ini), (Lines{"top=1", "[A]", "a2=2", "", "[B]", "b1=1", "", "[C]", "c1=1", "c2=2"}));
  EXPECT_EQ(ini.SectionKeyCounts[1], 2);
  EXPECT_EQ(ini.SectionStarts[2], 5);
  EXPECT_EQ(ini.SectionStarts[3], 8);
  EXPECT_EQ(handler_.ReadFrom(ini, "B", "b1", "-"), "1");

  // The key on the very last line.
  handler_.DeleteKey(ini, "C", "c2");
  EXPECT_EQ(LinesOf(ini), (Lines{"top=1", "[A]", "a2=2", "", "[B]", "b1=1", "", "[C]", "c1=1"}));
  EXPECT_EQ(ini.SectionKeyCounts[3], 1);
  ExpectConsistent(ini);

  handler_.WriteIniFile(ini);
  EXPECT_EQ(ReadBytes(ini.FileName), "top=1\r\n[A]\r\na2=2\r\n\r\n[B]\r\nb1=1\r\n\r\n[C]\r\nc1=1\r\n");
  EXPECT_TRUE(handler_.reports.empty());
}

TEST_F(IniFileTest, FilesRoundTripAndConvert) {
  // Trimmed lines with CR LF ends come back byte for byte.
  const std::string exact = "top=kept\r\n; comment\r\n[S]\r\n\r\nk=v\r\nx=a=b\r\n\r\n[T]\r\ny=\r\n";
  IniFile ini = Load("exact.ini", exact);
  EXPECT_EQ(handler_.ReadFrom(ini, "S", "top", "none"), "none");
  handler_.WriteIniFile(ini);
  EXPECT_EQ(ReadBytes(ini.FileName), exact);

  // Any line end, blanks and tabs around lines, a byte order mark.
  ini = Load("mixed.ini", "\xEF\xBB\xBF  [S]\t\nk=v  \r\n\t\rlast=1");
  EXPECT_EQ(LinesOf(ini), (Lines{"[S]", "k=v", "", "last=1"}));
  EXPECT_EQ(ini.SectionKeyCounts[1], 3);
  handler_.WriteIniFile(ini);
  EXPECT_EQ(ReadBytes(ini.FileName), "[S]\r\nk=v\r\n\r\nlast=1\r\n");

  ini = Load("ends.ini", "\n\r\n\r");
  EXPECT_EQ(LinesOf(ini), (Lines{"", "", ""}));

  // A file from Windows is read as Windows-1252 and written as UTF-8.
  ini = Load("ansi.ini", "[Caf\xE9]\r\nk=\x80 \x93x\x94\r\n");
  EXPECT_EQ(SectionNamesOf(ini), (Lines{"[Café]"}));
  EXPECT_EQ(handler_.ReadFrom(ini, "CAFÉ", "k", "-"), "€ “x”");
  handler_.WriteIniFile(ini);
  EXPECT_EQ(ReadBytes(ini.FileName), "[Café]\r\nk=€ “x”\r\n");
  EXPECT_TRUE(handler_.reports.empty());
}

TEST_F(IniFileTest, HostileFilesLoadWithoutHarm) {
  // Binary bytes: NULs and every byte value, in lines of their own.
  std::string binary = "[Bin]\nk=a";
  binary += '\0';
  binary += "b\n";
  for (int round = 0; round < 64; ++round) {
    for (int b = 0; b < 256; ++b) binary += static_cast<char>((b * 37 + round) & 0xFF);
  }
  IniFile ini = Load("binary.ini", binary);
  EXPECT_TRUE(handler_.reports.empty());
  ExpectConsistent(ini);
  EXPECT_EQ(handler_.ReadFrom(ini, "bin", "k", "-"), std::string("a\0b", 3));
  const Lines first = LinesOf(ini);
  handler_.WriteIniFile(ini);
  handler_.LoadIniFile(ini);
  EXPECT_EQ(LinesOf(ini), first);

  // One line of 100,000 characters.
  ini = Load("long.ini", "[S]\nlong=" + std::string(100000, 'x') + "\nafter=1\n");
  EXPECT_EQ(handler_.ReadFrom(ini, "S", "long", "-"), std::string(100000, 'x'));
  EXPECT_EQ(handler_.ReadFrom(ini, "S", "after", "-"), "1");

  // About 5 MB in sections of 1,000 lines, with one section name repeated.
  std::string big;
  int sections = 0;
  while (big.size() < 5 * 1024 * 1024) {
    ++sections;
    big += sections == 3 ? "[Dup]\n" : "[Section" + std::to_string(sections) + "]\n";
    for (int k = 1; k <= 1000; ++k) big += "Key" + std::to_string(k) + "=value of key " + std::to_string(k) + "\n";
  }
  big += "[Dup]\nKey1=second\n";
  const auto start = std::chrono::steady_clock::now();
  ini = Load("big.ini", big);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_LT(seconds, 10.0);
  EXPECT_TRUE(handler_.reports.empty());
  EXPECT_EQ(ini.SectionCount, sections + 1);
  EXPECT_EQ(ini.LineCount, sections * 1001 + 2);
  EXPECT_EQ(handler_.ReadFrom(ini, "Dup", "Key1", "-"), "value of key 1");
  EXPECT_EQ(handler_.ReadFrom(ini, "Section" + std::to_string(sections), "key1000", "-"), "value of key 1000");
  ExpectConsistent(ini);
}

TEST_F(IniFileTest, FailuresAreReportedNotThrown) {
  // A file in a folder that doesn't exist can be neither created nor written.
  IniFile ini;
  ini.FileName = PathOf("missing/x.ini");
  handler_.LoadIniFile(ini);
  ASSERT_EQ(handler_.reports.size(), 1u);
  EXPECT_EQ(handler_.reports[0].message,
            "Error 75 (Path/File access error) occurred while reading " + ini.FileName + " from disk.");
  EXPECT_EQ(handler_.reports[0].procedure, "LoadIniFile");
  EXPECT_EQ(ini.LineCount, 0);

  handler_.WriteTo(ini, "S", "k", "v");
  handler_.WriteIniFile(ini);
  ASSERT_EQ(handler_.reports.size(), 2u);
  EXPECT_EQ(handler_.reports[1].message,
            "Error 75 (Path/File access error) occurred while writing " + ini.FileName + " to disk.");
  EXPECT_EQ(handler_.reports[1].procedure, "WriteIniFile");

  // A folder in place of the file.
  handler_.reports.clear();
  ini.FileName = dir_;
  handler_.LoadIniFile(ini);
  ASSERT_EQ(handler_.reports.size(), 1u);
  EXPECT_EQ(handler_.reports[0].procedure, "LoadIniFile");
  EXPECT_EQ(ini.LineCount, 0);

  // A record whose index points past its lines: the read reports and gives no default.
  handler_.reports.clear();
  ini = Load("corrupt.ini", "[S]\na=1\n");
  ini.SectionKeyCounts[1] = 5;
  EXPECT_EQ(handler_.ReadFrom(ini, "S", "missing", "default"), "");
  ASSERT_EQ(handler_.reports.size(), 1u);
  EXPECT_EQ(handler_.reports[0].message,
            "Error 9 (Subscript out of range) occurred while reading a value from the data structure containing " +
                ini.FileName + ".\r\nIni Section Name = [S], Item Key = missing");
  EXPECT_EQ(handler_.reports[0].procedure, "ReadFrom");

  // A section at the 16-bit limit of lines takes no new key, but its keys can change.
  handler_.reports.clear();
  std::string full = "[Full]\n";
  for (int k = 1; k <= 32767; ++k) full += "k" + std::to_string(k) + "=1\n";
  ini = Load("full.ini", full);
  EXPECT_TRUE(handler_.reports.empty());
  EXPECT_EQ(ini.SectionKeyCounts[1], 32767);
  handler_.WriteTo(ini, "Full", "k32767", "2");
  EXPECT_EQ(ini.Lines[32768], "k32767=2");
  handler_.WriteTo(ini, "Full", "one", "more");
  ASSERT_EQ(handler_.reports.size(), 1u);
  EXPECT_EQ(handler_.reports[0].message,
            "Error 6 (Overflow) occurred while writing a value to the data structure containing " + ini.FileName +
                ".\r\nIni Section Name = [Full], Item Key = one");
  EXPECT_EQ(handler_.reports[0].procedure, "WriteTo");
  EXPECT_EQ(ini.LineCount, 32768);
  ExpectConsistent(ini);

  // One line more in the file: the load reports and keeps what it read.
  handler_.reports.clear();
  ini = Load("full.ini", full + "extra=1\n");
  ASSERT_EQ(handler_.reports.size(), 1u);
  EXPECT_EQ(handler_.reports[0].message, "Error 6 (Overflow) occurred while reading " + ini.FileName + " from disk.");
  EXPECT_EQ(ini.LineCount, 32768);
  ExpectConsistent(ini);

  // Without an office the real handler's report shows nothing and throws nothing.
  CIniFileHandler plain;
  IniFile nowhere;
  nowhere.FileName = PathOf("missing/y.ini");
  EXPECT_NO_THROW(plain.LoadIniFile(nowhere));
  EXPECT_NO_THROW(plain.WriteIniFile(nowhere));
}

TEST(TextEncodingTest, FileBytesBecomeUtf8) {
  using rules::ToUtf8FromFileBytes;
  // Valid UTF-8 passes unchanged, NULs and four-byte characters included.
  for (const std::string& valid :
       {std::string("plain"), std::string("caf\xC3\xA9 \xE2\x82\xAC"), std::string("\xF0\x9F\x98\x80"),
        std::string("a\0b", 3), std::string("\xF4\x8F\xBF\xBF")}) {
    EXPECT_EQ(ToUtf8FromFileBytes(valid), valid);
    EXPECT_TRUE(rules::IsValidUtf8(valid));
  }
  // Malformed UTF-8 reads as Windows-1252, byte by byte, for the whole text.
  EXPECT_EQ(ToUtf8FromFileBytes("caf\xE9"), "café");
  EXPECT_EQ(ToUtf8FromFileBytes("\xC3\xA9\xE9"), "Ã©é");
  EXPECT_EQ(ToUtf8FromFileBytes("\xC0\x80"), "À€");                  // Overlong forms.
  EXPECT_EQ(ToUtf8FromFileBytes("\xE0\x9F\xBF"), "àŸ¿");
  EXPECT_EQ(ToUtf8FromFileBytes("\xED\xA0\x80"), "í\xC2\xA0€");      // Surrogate.
  EXPECT_EQ(ToUtf8FromFileBytes("\xF4\x90\x80\x80"), "ô\xC2\x90€€");  // Above U+10FFFF.
  EXPECT_EQ(ToUtf8FromFileBytes("\xE2\x82"), "â‚");                  // Cut short.
  EXPECT_EQ(ToUtf8FromFileBytes("\x80\x8A\x9F\xFF"), "€ŠŸÿ");
  EXPECT_EQ(ToUtf8FromFileBytes("\x81\x8D\x8F\x90\x9D"), "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");

  EXPECT_EQ(rules::WithoutUtf8Bom("\xEF\xBB\xBFk=v"), "k=v");
  EXPECT_EQ(rules::WithoutUtf8Bom("\xEF\xBBk"), "\xEF\xBBk");
}

}  // namespace
}  // namespace nivarel
