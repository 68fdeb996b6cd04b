#include "dsrConnect.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "Globals.h"

namespace nivarel::host {

namespace {

// Appends a line to the file named by NIVAREL_LIFECYCLE_LOG, if it is set,
// so that tests can watch the connection come and go.
void NoteLifecycle(const char* line) {
  const char* path = std::getenv("NIVAREL_LIFECYCLE_LOG");
  if (!path || !*path) return;
  if (FILE* f = std::fopen(path, "a")) {
    std::fprintf(f, "%s\n", line);
    std::fclose(f);
  }
}

}  // namespace

int dsrConnect::MajorVersion(const std::string& version) {
  const char* text = version.c_str();
  char* end = nullptr;
  double value = std::strtod(text, &end);
  if (end == text) return 0;
  return static_cast<int>(value);
}

void dsrConnect::AddinInstance_OnConnection(const Application& application) {
  m_StartupComplete = false;
  try {
    ExcelApp = application;
    ExcelVersion = MajorVersion(ExcelApp->Version());
    InitializeGlobals();
    if (ExcelVersion >= 12) {
      // SEAM: the command dispatcher (CEventHandler) is created here.
    } else {
      // SEAM: CreateToolbar builds the command bar and its click sink here.
    }
    // SEAM: the help file's path is set here once there is a help file.
    NoteLifecycle("connect");
  } catch (const std::exception&) {
    // SEAM: the error goes to the error log as an entry point (the user sees
    // it), followed by the event line "Add-in failed to establish connection".
    ShutdownApplication();
  }
}

void dsrConnect::AddinInstance_OnStartupComplete() {
  if (ExcelVersion >= 12) {
    // SEAM: the command controls' states are refreshed here.
  }
  m_StartupComplete = true;
}

void dsrConnect::AddinInstance_OnDisconnection() {
  NoteLifecycle("disconnect");
  try {
    if (!ShutdownDone) ShutdownApplication();
  } catch (...) {
    // Nothing may stop the office from closing.
  }
}

void dsrConnect::ShutdownApplication() {
  if (ShutdownDone) return;
  ShutdownDone = true;
  if (ExcelVersion >= 12) {
    // SEAM: the reference to the ribbon is released here.
    CurrentWorkbook.reset();
  } else {
    // SEAM: the symbol bars are removed, the command bar's place is stored,
    // the bar is reset, and the bar builder and click sink are released.
  }
  // SEAM: the command dispatcher is released here.
  ExcelApp.reset();
}

void dsrConnect::InterruptFlowchartSession() {
  // SEAM: when CurrentWorkbook is set and the command dispatcher runs a
  // flowcharting session, the session stops here without an end terminator
  // and the command controls' states are refreshed; an error is written to
  // the error log as an event line and cleared.
}

}  // namespace nivarel::host
