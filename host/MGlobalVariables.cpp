#include "MGlobalVariables.h"

#include "UndoList.h"

#include "HostError.h"
#include "MErrorHandler.h"

namespace nivarel::host {

using namespace office;

std::optional<Application> ExcelApp;
int ExcelVersion = 0;
bool ShutdownDone = false;
float GlobalRowHeight = 0;
float GlobalColumnWidth = 0;
bool GlobalRowHeightSet = false;
bool InDoEvents = false;

namespace {
constexpr char kSource[] = "MGlobalVariables";
}

void InitializeGlobals() {
  ShutdownDone = false;
  InDoEvents = false;
  GlobalRowHeightSet = false;
}

bool IsGlobalRowHeightSet() { return GlobalRowHeightSet; }

void SafeDoEvents() {
  if (InDoEvents || !ExcelApp) return;
  InDoEvents = true;
  try {
    ExcelApp->DoEvents();
  } catch (...) {
  }
  InDoEvents = false;
}

void SetGlobalRowHeight() {
  if (!ExcelApp) return;
  std::optional<Worksheet> temporary;
  std::optional<Worksheet> original;
  bool screen = true, alerts = true;
  try {
    screen = ExcelApp->ScreenUpdating();
    alerts = ExcelApp->DisplayAlerts();
    ExcelApp->SetScreenUpdating(true);
    ExcelApp->SetDisplayAlerts(false);
    auto book = ExcelApp->ActiveWorkbook();
    if (!book) throw HostError(91, "Object variable or With block variable not set");
    original = ExcelApp->ActiveSheet();
    // The sheet that is measured comes and goes unrecorded: no undo entry.
    UndoList::Pause unrecorded(*book);
    temporary = book->AddSheet();
    UndoList(*book).HoldPause();  // Calc records again after a new sheet
    float height = static_cast<float>(temporary->Row(1).RowHeight());
    if (height == 12.75f) {
      GlobalRowHeight = height;
      GlobalColumnWidth = 1.71f;
    } else if (height == 15.0f) {
      GlobalRowHeight = height;
      GlobalColumnWidth = 2.14f;
    } else if (height <= 0) {
      GlobalRowHeight = 12.75f;
      GlobalColumnWidth = 1.71f;
    } else {
      GlobalRowHeight = height;
      Range column = temporary->Column(1);
      column.SetColumnWidth(1.67);
      UndoList(*book).HoldPause();  // and after a change of cells
      GlobalColumnWidth = static_cast<float>(column.ColumnWidth());
    }
    temporary->Delete();
    temporary.reset();
    if (original) original->Activate();
    ExcelApp->SetDisplayAlerts(alerts);
    ExcelApp->SetScreenUpdating(screen);
    GlobalRowHeightSet = true;
  } catch (...) {
    ErrorHandler(kSource, "SetGlobalRowHeight", false);
    try {
      if (temporary) temporary->Delete();
      if (original) original->Activate();
      ExcelApp->SetDisplayAlerts(alerts);
      ExcelApp->SetScreenUpdating(screen);
    } catch (...) {
    }
  }
}

}  // namespace nivarel::host
