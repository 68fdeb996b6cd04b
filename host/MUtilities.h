// Small helpers that every part of the add-in calls: text and file tests, the
// user's boolean settings, the checks that run before every command, help,
// and cell addresses.
#pragma once

#include <string>

#include "Worksheet.h"

namespace nivarel::host {

// The text up to its first NUL character.
std::string TrimNull(const std::string& text);
// A regular file that isn't hidden (its name doesn't begin with a dot).
bool FileExists(const std::string& path);
// The user setting key of section "Settings" as a boolean ("True"/"False").
bool GetBoolSetting(const std::string& key, const std::string& fallback);
// The active document is in shared mode; message then says what to do.
bool IsSharedWorkbook(std::string& message);
// A cell of the active spreadsheet is being edited.
bool ExcelInEditMode();
// Opens the help page of the topic in the user's browser.
void ShowHelpTopic(long topicId, long ownerWindow = 0);
// The column's letters: 1 gives "A", 27 "AA", 16384 "XFD".
std::string ColumnToAlpha(long column);
// The name a file of a sheet's chart is offered under: the sheet's name
// without the characters a file name cannot hold, trimmed, and " flowchart".
std::string ChartFileName(const std::string& sheetName);
// The address of the rectangle of non-empty cells, relative ("B2:F30");
// empty text for a sheet without content.
std::string GetOccupiedRangeAddress(const office::Worksheet& ws);

}  // namespace nivarel::host
