// Trimming and case of the add-in's text, which is UTF-8 throughout: the one
// place for both. Case covers the letters of the Latin (ASCII, Latin-1, Latin
// Extended-A), Greek and Cyrillic alphabets; other characters, and bytes that
// aren't valid UTF-8, stay as they are.
#pragma once

#include <string>
#include <vector>

namespace nivarel::rules {

// The characters that Trim takes off by default: the blank, as a user's
// typed entries are taken.
constexpr char kBlank[] = " ";
// Blanks and tabs, as the settings files' lines are taken.
constexpr char kBlankOrTab[] = " \t";
// Any white space, line ends included.
constexpr char kWhiteSpace[] = " \t\r\n";

// The text without the given characters at either end.
std::string Trim(const std::string& text, const char* chars = kBlank);
// The text without the given characters at its start.
std::string TrimLeft(const std::string& text, const char* chars = kBlank);

// The text upper-cased, for comparisons that ignore case.
std::string UpperCase(const std::string& text);
// The text lower-cased.
std::string LowerCase(const std::string& text);
// The text with its first character upper-cased.
std::string CapitalizeFirst(const std::string& text);

// The pieces of text between its commas, as they stand (empty ones too):
// "a,,b" gives "a", "" and "b"; an empty text gives one empty piece.
std::vector<std::string> SplitCommas(const std::string& text);

// The text with blanks after it up to width characters (not bytes); a longer
// one as it is.
std::string PadRight(const std::string& text, int width);

}  // namespace nivarel::rules
