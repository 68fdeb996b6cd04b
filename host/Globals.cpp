#include "Globals.h"

namespace nivarel::host {

std::optional<Application> ExcelApp;
int ExcelVersion = 0;
bool ShutdownDone = false;
float GlobalRowHeight = 0;
float GlobalColumnWidth = 0;
bool GlobalRowHeightSet = false;
bool InDoEvents = false;

void InitializeGlobals() {
  ShutdownDone = false;
  InDoEvents = false;
  GlobalRowHeightSet = false;
}

}  // namespace nivarel::host
