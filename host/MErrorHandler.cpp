#include "MErrorHandler.h"

#include <sys/utsname.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <new>
#include <sstream>

#include "Border.h"
#include "HostError.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsgBox.h"
#include "Text.h"

namespace nivarel::host {

using namespace office;

const char kSupportAddress[] = "support@nivarel.org";
const char kUpdatePage[] = "https://www.nivarel.org/updates.php";
const char kSupportPage[] = "https://www.nivarel.org/support";

namespace {

std::mutex clockMutex;
std::function<std::tm()> logClock;

// Drops the line's end, then the blanks at both ends.
}  // namespace

void SetLogClock(std::function<std::tm()> clock) {
  std::lock_guard<std::mutex> lock(clockMutex);
  logClock = std::move(clock);
}

std::string LogStamp() {
  std::tm t{};
  {
    std::lock_guard<std::mutex> lock(clockMutex);
    if (logClock) {
      t = logClock();
    } else {
      std::time_t now = std::time(nullptr);
      localtime_r(&now, &t);
    }
  }
  char buf[32];
  std::snprintf(buf, sizeof buf, "%02d/%02d/%02d %02d:%02d:%02d", t.tm_mon + 1, t.tm_mday, t.tm_year % 100,
                t.tm_hour, t.tm_min, t.tm_sec);
  return buf;
}

ErrObject CurrentError() {
  ErrObject e;
  auto current = std::current_exception();
  if (!current) return e;
  try {
    std::rethrow_exception(current);
  } catch (const HostError& h) {
    e.Number = h.Number();
    e.Description = h.Description();
  } catch (const std::bad_alloc&) {
    e.Number = 7;
    e.Description = "Out of memory";
  } catch (const std::exception& x) {
    e.Number = 5;
    e.Description = x.what();
  } catch (...) {
    e.Number = 5;
    e.Description = "Invalid procedure call or argument";
  }
  return e;
}

namespace {
// Failures stopped where the office calls in go to this log, as any
// procedure's do.
const bool borderLogSet = (SetBorderLog([](const std::string& source, const std::string& procedure) {
                              ErrorHandler(source, procedure, false);
                            }),
                            true);
}  // namespace

void FailWhenAsked(const std::string& name, const std::string& what) {
  const char* faults = std::getenv("NIVAREL_TEST_FAULT_KEY");
  if (!faults) return;
  std::stringstream list(faults);
  for (std::string fault; std::getline(list, fault, ',');)
    if (name == fault) throw HostError(HostError::kOfficeFailure, "Test fault on " + what + " '" + name + "'");
}

bool ErrorHandler(const std::string& source, const std::string& procedure, bool entryPoint) {
  return ErrorHandler(source, procedure, entryPoint, CurrentError());
}

bool ErrorHandler(const std::string& source, const std::string& procedure, bool entryPoint, ErrObject error) {
  try {
    if (ExcelApp) ExcelApp->SetScreenUpdating(true);
  } catch (...) {
  }
  try {
    if (error.Number != kNivarelError) error.Description += " (" + procedure + ")";
    std::string line = "[Error]; " + source + "." + procedure + "; Error " + std::to_string(error.Number) + ": " +
                       error.Description + "; " + GetSystemInfo();
    WriteLogLine(GetLogFilePath(), line, entryPoint);
    if (entryPoint) {
      if (ExcelApp) ExcelApp->SetScreenUpdating(true);
      MsgBox("We're sorry, but Nivarel has experienced the following problem:\r\n\r\n" + error.Description +
                 "\r\n\r\nPlease contact " + kSupportAddress + " for assistance.",
             vbCritical, "Nivarel");
    }
  } catch (...) {
  }
  return false;
}

void LogEvent(const std::string& source, const std::string& procedure, const std::string& message) {
  try {
    WriteLogLine(GetLogFilePath(),
                 "[Event]; " + source + "." + procedure + "; " + message + "; " + GetSystemInfo(), false);
  } catch (...) {
  }
}

void WriteLogLine(const std::string& logPath, const std::string& text, bool entryPoint) {
  try {
    std::ofstream out(logPath, std::ios::app | std::ios::binary);
    if (!out) return;
    out << LogStamp() << (entryPoint ? " Entry point - " : " ") << text << "\r\n";
  } catch (...) {
  }
}

std::string ReadLogFile() {
  try {
    std::ifstream in(GetLogFilePath(), std::ios::binary);
    if (!in) return std::string();
    std::string result, line;
    while (std::getline(in, line)) {
      line = rules::Trim(line, " \r");
      if (!line.empty()) result += line + "\r\n";
    }
    return result.substr(0, result.find('\0'));
  } catch (...) {
    return std::string();
  }
}

void ClearLogFile() {
  try {
    std::ofstream out(GetLogFilePath(), std::ios::trunc | std::ios::binary);
    out << "\r\n";
  } catch (...) {
  }
}

std::string GetSystemInfo() {
  std::string office;
  try {
    if (ExcelApp) office = ExcelApp->OfficeVersion();
  } catch (...) {
  }
  return "Nivarel: " + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
         std::to_string(kVersionRevision) + "; Calc: " + office + "; " + GetOSName();
}

std::string WindowsOSName(int major, int minor, int platformId) {
  switch (major) {
    case 3: return platformId == 2 ? "Windows NT 3.x" : "Windows 3.x";
    case 4:
      if (platformId == 2) return "Windows NT 4.0";
      return minor == 0 ? "Windows 95" : "Windows 98";
    case 5:
      if (minor == 0) return "Windows 2000";
      if (minor == 1) return "Windows XP";
      if (minor == 2) return "Windows XP x64";
      return std::string();
    case 6: return "Windows Vista";
    default: return "Windows Unknown";
  }
}

std::string GetOSName() {
  // The distribution names itself in os-release; a system without one is
  // named by its kernel.
  for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
      if (line.rfind("PRETTY_NAME=", 0) != 0) continue;
      std::string v = line.substr(12);
      if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'')) v = v.substr(1, v.size() - 2);
      if (!v.empty()) return v;
    }
  }
  struct utsname u {};
  if (uname(&u) == 0) return std::string(u.sysname) + " " + u.release;
  return "Linux";
}

int GetOSMajorVersion() {
  struct utsname u {};
  if (uname(&u) != 0) return 0;
  return std::atoi(u.release);
}

std::string GetLogFilePath() { return NivarelFolder(GetAppDataPath()) + "/error.log"; }

}  // namespace nivarel::host
