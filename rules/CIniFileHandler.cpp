#include "CIniFileHandler.h"

#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "HostError.h"
#include "MErrorHandler.h"
#include "MsgBox.h"
#include "TextEncoding.h"
#include "Text.h"

namespace nivarel::rules {

namespace {

using office::HostError;

constexpr char kLineEnd[] = "\r\n";

HostError FileAccessError() { return HostError(75, "Path/File access error"); }

// The text without leading and trailing spaces and tabs.
// The count plus one; raises Overflow past the 16-bit range.
int16_t Next16(int16_t count) {
  if (count == std::numeric_limits<int16_t>::max()) throw HostError(6, "Overflow");
  return static_cast<int16_t>(count + 1);
}

void AppendLine(IniFile& ini, std::string line) {
  if (ini.LineCount == std::numeric_limits<int32_t>::max()) throw HostError(6, "Overflow");
  ini.Lines.Resize(ini.LineCount + 1);
  ini.Lines[ini.LineCount + 1] = std::move(line);
  ini.LineCount += 1;
}

// Opens a header line's section with no lines yet.
void AppendSection(IniFile& ini, const std::string& name) {
  int16_t count = Next16(ini.SectionCount);
  ini.SectionNames.Resize(count);
  ini.SectionStarts.Resize(count);
  ini.SectionKeyCounts.Resize(count);
  ini.SectionNames[count] = name;
  ini.SectionStarts[count] = ini.LineCount;
  ini.SectionKeyCounts[count] = 0;
  ini.SectionCount = count;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw FileAccessError();
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) throw FileAccessError();
  return bytes.str();
}

std::string ErrorText(const host::ErrObject& e) {
  return "Error " + std::to_string(e.Number) + " (" + e.Description + ")";
}

}  // namespace

std::string CIniFileHandler::ReadFrom(const IniFile& ini, std::string section, const std::string& key,
                                      const std::string& defaultValue) {
  try {
    EnsureBrackets(section);
    int16_t s = FindSection(ini, section);
    if (s == -1) return defaultValue;
    int32_t line = FindKey(ini, s, key);
    if (line == -1) return defaultValue;
    const std::string& text = ini.Lines[line];
    return text.substr(text.find('=') + 1);
  } catch (...) {
    ShowIniError(ErrorText(host::CurrentError()) + " occurred while reading a value from " +
                     "the data structure containing " + ini.FileName + "." + kLineEnd +
                     "Ini Section Name = " + section + ", Item Key = " + key,
                 "ReadFrom");
    return std::string();
  }
}

void CIniFileHandler::WriteTo(IniFile& ini, std::string section, const std::string& key, const std::string& value) {
  try {
    EnsureBrackets(section);
    std::string line = Trim(key, kBlankOrTab) + "=" + value;
    int16_t s = FindSection(ini, section);
    if (s == -1) {
      AddSection(ini, section);
      AppendLine(ini, std::move(line));
      ini.SectionKeyCounts[ini.SectionCount] = 1;
      return;
    }
    int32_t found = FindKey(ini, s, key);
    if (found != -1) {
      ini.Lines[found] = std::move(line);
      return;
    }
    int16_t keyCount = Next16(ini.SectionKeyCounts[s]);
    int32_t last = ini.SectionStarts[s] + ini.SectionKeyCounts[s];
    int32_t at = ini.Lines[last].empty() ? last : last + 1;
    ini.Lines.Insert(at, std::move(line));
    ini.LineCount += 1;
    ini.SectionKeyCounts[s] = keyCount;
    for (int32_t t = s + 1; t <= ini.SectionCount; ++t) ini.SectionStarts[t] += 1;
  } catch (...) {
    ShowIniError(ErrorText(host::CurrentError()) + " occurred while writing a value to " +
                     "the data structure containing " + ini.FileName + "." + kLineEnd +
                     "Ini Section Name = " + section + ", Item Key = " + key,
                 "WriteTo");
  }
}

void CIniFileHandler::LoadIniFile(IniFile& ini) {
  try {
    ResetIniData(ini);
    std::error_code ec;
    if (!std::filesystem::exists(ini.FileName, ec)) {
      std::ofstream create(ini.FileName, std::ios::binary | std::ios::trunc);
      if (!create) throw FileAccessError();
      return;
    }
    if (std::filesystem::is_directory(ini.FileName, ec)) throw FileAccessError();
    const std::string text = ToUtf8FromFileBytes(WithoutUtf8Bom(ReadBytes(ini.FileName)));

    const size_t n = text.size();
    size_t pos = 0;
    while (pos < n) {
      size_t end = text.find_first_of("\r\n", pos);
      if (end == std::string::npos) end = n;
      std::string line = Trim(text.substr(pos, end - pos), kBlankOrTab);
      // A CR LF pair is one line end.
      if (end + 1 < n && text[end] == '\r' && text[end + 1] == '\n') ++end;
      pos = end + 1;

      if (IsSectionHeader(line)) {
        AppendLine(ini, line);
        AppendSection(ini, line);
      } else {
        int16_t keyCount = ini.SectionCount > 0 ? Next16(ini.SectionKeyCounts[ini.SectionCount]) : 0;
        AppendLine(ini, std::move(line));
        if (ini.SectionCount > 0) ini.SectionKeyCounts[ini.SectionCount] = keyCount;
      }
    }
  } catch (...) {
    ShowIniError(ErrorText(host::CurrentError()) + " occurred while reading " + ini.FileName + " from disk.",
                 "LoadIniFile");
  }
}

void CIniFileHandler::WriteIniFile(const IniFile& ini) {
  try {
    std::ofstream out(ini.FileName, std::ios::binary | std::ios::trunc);
    if (!out) throw FileAccessError();
    for (int32_t i = 1; i <= ini.LineCount; ++i) {
      out << Trim(ini.Lines[i], kBlankOrTab) << kLineEnd;
    }
    out.close();
    if (!out) throw FileAccessError();
  } catch (...) {
    ShowIniError(ErrorText(host::CurrentError()) + " occurred while writing " + ini.FileName + " to disk.",
                 "WriteIniFile");
  }
}

void CIniFileHandler::ResetIniData(IniFile& ini) {
  ini.LineCount = 0;
  ini.Lines.Clear();
  ini.SectionCount = 0;
  ini.SectionNames.Clear();
  ini.SectionStarts.Clear();
  ini.SectionKeyCounts.Clear();
}

void CIniFileHandler::AddSection(IniFile& ini, std::string section) {
  Next16(ini.SectionCount);  // Fails before the record changes.
  if (ini.LineCount > 0 && !ini.Lines[ini.LineCount].empty()) AppendLine(ini, std::string());
  EnsureBrackets(section);
  AppendLine(ini, section);
  AppendSection(ini, section);
}

void CIniFileHandler::DeleteSection(IniFile& ini, std::string section) {
  EnsureBrackets(section);
  int16_t s = FindSection(ini, section);
  if (s == -1) return;
  if (ini.SectionCount == 1) {
    ResetIniData(ini);
    return;
  }
  if (s == ini.SectionCount) {
    ini.LineCount = ini.SectionStarts[s] - 1;
    ini.Lines.Resize(ini.LineCount);
  } else {
    int32_t removed = ini.SectionKeyCounts[s] + 1;
    ini.Lines.Erase(ini.SectionStarts[s], removed);
    ini.LineCount -= removed;
    for (int32_t t = s + 1; t <= ini.SectionCount; ++t) ini.SectionStarts[t] -= removed;
  }
  ini.SectionNames.Erase(s, 1);
  ini.SectionStarts.Erase(s, 1);
  ini.SectionKeyCounts.Erase(s, 1);
  ini.SectionCount -= 1;
}

void CIniFileHandler::DeleteKey(IniFile& ini, std::string section, const std::string& key) {
  EnsureBrackets(section);
  int16_t s = FindSection(ini, section);
  if (s == -1) return;
  int32_t line = FindKey(ini, s, key);
  if (line == -1) return;
  ini.Lines.Erase(line, 1);
  ini.LineCount -= 1;
  ini.SectionKeyCounts[s] -= 1;
  for (int32_t t = s + 1; t <= ini.SectionCount; ++t) ini.SectionStarts[t] -= 1;
}

bool CIniFileHandler::IsSectionHeader(const std::string& line) {
  std::string t = Trim(line, kBlankOrTab);
  return !t.empty() && t.front() == '[' && t.back() == ']';
}

void CIniFileHandler::EnsureBrackets(std::string& section) {
  if (section.empty() || section.front() != '[') section = "[" + Trim(section, kBlankOrTab);
  if (section.back() != ']') section = Trim(section, kBlankOrTab) + "]";
}

int16_t CIniFileHandler::FindSection(const IniFile& ini, std::string section) {
  EnsureBrackets(section);
  const std::string wanted = UpperCase(section);
  for (int32_t s = 1; s <= ini.SectionCount; ++s) {
    if (UpperCase(ini.SectionNames[s]) == wanted) return static_cast<int16_t>(s);
  }
  return -1;
}

int32_t CIniFileHandler::FindKey(const IniFile& ini, int16_t sectionIndex, const std::string& key) {
  const std::string wanted = UpperCase(key);
  const int32_t first = ini.SectionStarts[sectionIndex] + 1;
  const int32_t last = ini.SectionStarts[sectionIndex] + ini.SectionKeyCounts[sectionIndex];
  for (int32_t i = first; i <= last; ++i) {
    const std::string& line = ini.Lines[i];
    size_t eq = line.find('=');
    if (eq != std::string::npos && UpperCase(line.substr(0, eq)) == wanted) return i;
  }
  return -1;
}

void CIniFileHandler::ShowIniError(const std::string& message, const std::string& procedure) {
  try {
    host::MsgBox(message, office::vbCritical, ".Ini Error in Procedure '" + procedure + "'");
  } catch (...) {
    // The report is best effort: a failing message box must not reach the caller.
  }
}

}  // namespace nivarel::rules
