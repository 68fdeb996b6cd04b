#include "frmEventViewer.h"

#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

#include "Clipboard.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {

constexpr char kSource[] = "frmEventViewer";
constexpr char kNoEvents[] = "<There are no events logged for Nivarel>";

// The log keeps CR LF line ends; the text box shows lines by LF alone.
std::string WithLineFeeds(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text)
    if (c != '\r') out += c;
  return out;
}

// Today's date as month, day and year, and in the system's short form.
std::string DateText() {
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::ostringstream shortForm;
  try {
    shortForm.imbue(std::locale(""));
  } catch (const std::exception&) {
    // No usable locale in the environment: the classic one's form.
  }
  shortForm << std::put_time(&local, "%x");
  return "Month: " + std::to_string(local.tm_mon + 1) + "\r\nDay: " + std::to_string(local.tm_mday) +
         "\r\nYear: " + std::to_string(local.tm_year + 1900) + "\r\nDate: " + shortForm.str() + "\r\n";
}

}  // namespace

std::string frmEventViewer::GetLogText() {
  std::string text = WithLineFeeds(host::ReadLogFile());
  return text.empty() ? kNoEvents : text;
}

void frmEventViewer::Display() {
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmEventViewer", [&](const std::string& method) {
      try {
        if (method == "cmdEraseLog_Click") {
          if (host::MsgBox("This will clear the log file. Are you sure you wish to proceed?",
                           office::vbYesNo + office::vbExclamation, "Clear Log File") != office::vbYes)
            return;
          host::ClearLogFile();
          form->SetText("txtEvents", kNoEvents);
        } else if (method == "cmdCopyToClipboard_Click") {
          office::Clipboard(*host::ExcelApp).SetText(form->Text("txtEvents"));
        } else if (method == "cmdGetNivarelSettings_Click") {
          host::MsgBox(DateText(), office::vbOKOnly, host::kHostTitle);
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = &dialog;
    dialog.SetText("txtEvents", GetLogText());
    dialog.Execute();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
