// The add-in's one way of reporting the unexpected: a plain text log,
// error.log, in the user's settings folder, and the common error routine that
// every procedure calls from its handler. Only entry points show the user a
// message; everything else is logged and the add-in goes on.
#pragma once

#include <ctime>
#include <functional>
#include <string>

namespace nivarel::host {

// The add-in's own raised error; its description carries no procedure name.
constexpr int kNivarelError = 9999;
// Where the entry-point message tells the user to turn.
extern const char kSupportAddress[];
// The add-in's version, and the maker's page that tells whether a newer one is out.
constexpr int kVersionMajor = 2, kVersionMinor = 4, kVersionRevision = 15;
extern const char kUpdatePage[];
// The maker's support page.
extern const char kSupportPage[];

// The error being handled, as its number and description.
struct ErrObject {
  int Number = 0;
  std::string Description;
};

// The error in flight inside a catch block; number 0 outside of one. Host
// errors keep their number; other exceptions get 5 and their text.
ErrObject CurrentError();

// Called from a procedure's catch block: appends " (procedure)" to the
// description (not for kNivarelError), logs it under source and procedure,
// and at an entry point shows the user the critical message. Turns screen
// updates back on. Never throws; always returns false.
bool ErrorHandler(const std::string& source, const std::string& procedure, bool entryPoint);
// The same for an error already taken apart.
bool ErrorHandler(const std::string& source, const std::string& procedure, bool entryPoint, ErrObject error);

// The test switch: a command key or dialog event ("<dialog>.<method>")
// named in the environment's NIVAREL_TEST_FAULT_KEY (a comma-separated list) fails as an unexpected
// error would ("Test fault on <what> '<name>'"), so that tests can watch the
// report. Does nothing otherwise.
void FailWhenAsked(const std::string& name, const std::string& what);

// Appends an event line. Never throws.
void LogEvent(const std::string& source, const std::string& procedure, const std::string& message);
// Appends stamp and text as one line (CR LF); a failure loses the line quietly.
void WriteLogLine(const std::string& logPath, const std::string& text, bool entryPoint);
// The log's lines, trimmed, empty ones dropped, each ended by CR LF; empty
// text when there is no log.
std::string ReadLogFile();
// Empties the log, leaving one empty line.
void ClearLogFile();

// "Nivarel: 2.4.15; Calc: <office version>; <operating system>".
std::string GetSystemInfo();
// The operating system's name: the distribution's pretty name on Linux.
std::string GetOSName();
// Windows naming by the system's version record; used on Windows hosts.
std::string WindowsOSName(int major, int minor, int platformId);
// The major version of the operating system's kernel.
int GetOSMajorVersion();
// <settings folder>/Tamrisk/Nivarel/error.log, folders made as needed.
std::string GetLogFilePath();

// The stamp "mm/dd/yy hh:mm:ss" of local time now.
std::string LogStamp();
// Replaces the clock of the stamps; tests fix the time with it. An empty
// function restores the system clock.
void SetLogClock(std::function<std::tm()> clock);

}  // namespace nivarel::host
