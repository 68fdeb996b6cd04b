#include "MUtilities.h"

#include <cmath>
#include <filesystem>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsgBox.h"
#include "Range.h"
#include "UserSettings.h"
#include "Text.h"

namespace nivarel::host {

using namespace office;

namespace {
constexpr char kSource[] = "MUtilities";
}

std::string TrimNull(const std::string& text) { return text.substr(0, text.find('\0')); }

bool FileExists(const std::string& path) {
  std::error_code ec;
  std::filesystem::path p(path);
  if (!std::filesystem::is_regular_file(p, ec)) return false;
  std::string name = p.filename().string();
  return !name.empty() && name.front() != '.';
}

bool GetBoolSetting(const std::string& key, const std::string& fallback) {
  std::string v = rules::LowerCase(GetSetting(kAppTitle, "Settings", key, fallback));
  if (v == "true") return true;
  if (v == "false") return false;
  // Numbers convert as numbers do: anything but zero is true.
  char* end = nullptr;
  double d = std::strtod(v.c_str(), &end);
  if (end != v.c_str() && *end == '\0') return d != 0;
  return false;
}

bool IsSharedWorkbook(std::string& message) {
  try {
    if (!ExcelApp) return false;
    auto book = ExcelApp->ActiveWorkbook();
    if (!book || !book->MultiUserEditing()) return false;
    message =
        "Nivarel functions cannot be used when a workbook is shared.\r\n"
        "You must un-share the workbook, use Nivarel, then re-share the workbook.";
    return true;
  } catch (...) {
    return false;
  }
}

bool ExcelInEditMode() {
  try {
    return ExcelApp && ExcelApp->CellInEditMode();
  } catch (...) {
    ErrorHandler(kSource, "ExcelInEditMode", false);
    return false;
  }
}

void ShowHelpTopic(long topicId, long) {
  try {
    std::string page = GetInstallFolder() + "/help/" + std::to_string(topicId) + ".html";
    if (!FileExists(page)) {
      MsgBox("Could not find Nivarel help file", vbOKOnly, "Missing Help File");
      return;
    }
    if (ExcelApp) ExcelApp->OpenInBrowser("file://" + page);
  } catch (...) {
    ErrorHandler(kSource, "ShowHelpTopic", false);
  }
}

std::string ChartFileName(const std::string& sheetName) {
  std::string name;
  for (char c : sheetName)
    if (c != '"' && c != '<' && c != '>' && c != '|') name += c;
  size_t first = name.find_first_not_of(' ');
  size_t last = name.find_last_not_of(' ');
  name = first == std::string::npos ? "" : name.substr(first, last - first + 1);
  return name + " flowchart";
}

std::string ColumnToAlpha(long column) {
  std::string letters;
  if (column < 1) return letters;
  double n = static_cast<double>(column);
  int digits = static_cast<int>(std::floor(std::log((n + 1) * 25) / std::log(26.0))) - 1;
  for (int d = digits; d >= 0; --d) {
    long long place = 1;
    for (int i = 0; i < d; ++i) place *= 26;
    long long offset = (place * 26 - 1) / 25 - 1;
    if (column > offset) letters += static_cast<char>(65 + ((column - offset - 1) / place) % 26);
  }
  return letters;
}

std::string GetOccupiedRangeAddress(const Worksheet& ws) {
  try {
    auto area = ws.ContentArea();
    return area ? area->AddressLocal(false) : std::string();
  } catch (...) {
    ErrorHandler(kSource, "GetOccupiedRangeAddress", false);
    return std::string();
  }
}

}  // namespace nivarel::host
