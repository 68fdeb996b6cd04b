// The one reader and writer of the add-in's text settings files. It edits a
// file line by line rather than parsing it into a dictionary, so comments,
// blank lines and unknown keys survive a load and a write in their order.
// All state is in the caller's IniFile record; one handler serves any number
// of files. ReadFrom and WriteTo touch memory only; nothing reaches the disk
// before WriteIniFile.
//
// Rules of the text: lines are trimmed of leading and trailing spaces and tabs
// on load and on write. A line is a section header when its first character
// is "[" and its last is "]". A line holding "=" is a key line: the key is the
// text left of the first "=", the value the text right of it. Section names
// and keys compare by upper case; stored text keeps its written case, and the
// key text isn't trimmed, so "Key =1" isn't found under "Key". Of repeated
// sections or keys the first wins. A section name may be given with or without
// its brackets.
//
// Files are read as UTF-8 (a leading byte order mark is dropped), or as
// Windows-1252 when their bytes aren't valid UTF-8; lines end at LF, CR LF or
// a lone CR. Files are written as UTF-8 with CR LF line ends.
//
// ReadFrom, WriteTo, LoadIniFile and WriteIniFile catch every failure, report
// it through ShowIniError and return normally. The other operations throw
// HostError: 9 ("Subscript out of range") on a record that breaks its own
// rules, 6 ("Overflow") when a count outgrows its 16 bits.
#pragma once

#include <cstdint>
#include <string>

#include "IniFile.h"

namespace nivarel::rules {

class CIniFileHandler {
 public:
  virtual ~CIniFileHandler() = default;

  // The value of key in section: the text right of the first "=", possibly
  // empty; the default when section or key is missing. On failure shows the
  // error and returns the empty string.
  std::string ReadFrom(const IniFile& ini, std::string section, const std::string& key,
                       const std::string& defaultValue);
  // Sets key in section to value, as the line trimmed key, "=", value. A
  // missing section is added at the end; a missing key goes after the
  // section's last line, but ahead of a blank last line. On failure shows the
  // error and leaves the record as far as it got.
  void WriteTo(IniFile& ini, std::string section, const std::string& key, const std::string& value);

  // Fills the record from the file FileName names. A missing file is created
  // empty and gives an empty record. On failure shows the error and leaves the
  // record as far as it got.
  void LoadIniFile(IniFile& ini);
  // Replaces the file's contents with lines 1 to LineCount, each trimmed and
  // ended by CR LF. On failure shows the error.
  void WriteIniFile(const IniFile& ini);
  // Empties the record: both counts 0, each array one empty element. FileName stays.
  void ResetIniData(IniFile& ini);

  // Appends the section's header, after one blank line if the last line isn't
  // blank already; the blank line belongs to no section. The section has no lines.
  void AddSection(IniFile& ini, std::string section);
  // Removes the section's header and lines. Removing the only section resets
  // the whole record, lines ahead of it included. Nothing happens if it's missing.
  void DeleteSection(IniFile& ini, std::string section);
  // Removes the key's line from the section. Nothing happens if either is missing.
  void DeleteKey(IniFile& ini, std::string section, const std::string& key);

  // Whether the line, trimmed, begins with "[" and ends with "]".
  static bool IsSectionHeader(const std::string& line);
  // Puts brackets around a bare name: "Settings" and "[Settings]" both give
  // "[Settings]"; a name that gains a bracket is trimmed.
  static void EnsureBrackets(std::string& section);

  // The 1-based index of the first section of that name, or -1.
  int16_t FindSection(const IniFile& ini, std::string section);
  // The line number of the first key line of that name in section
  // sectionIndex, or -1. Lines ahead of the first section are never found.
  int32_t FindKey(const IniFile& ini, int16_t sectionIndex, const std::string& key);

  // Shows message in a critical message box titled
  // ".Ini Error in Procedure '<procedure>'". Never throws.
  virtual void ShowIniError(const std::string& message, const std::string& procedure);
};

}  // namespace nivarel::rules
