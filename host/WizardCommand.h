// The text-to-flowchart wizard run without its dialog, as the command line
// asks for it: the wizard's engine on one sheet of a workbook, with the
// layout and output choices given, in one batch inside the office. Answers
// whether a chart was drawn and on which sheet, or why not, in the add-in's
// own words; nothing is shown to a user.
#pragma once

#include <optional>
#include <string>

#include "Workbook.h"

namespace nivarel::host {

// What the dialog would have been told; its defaults.
struct WizardChoices {
  std::optional<office::Workbook> workbook;  // none: the active workbook
  std::string sheet;                         // empty: the workbook's active sheet
  bool addSpacing = true;                    // false: keep the existing layout
  int rowsBetween = 2;                       // 0 to 10
  int columnsBetween = 4;                    // 0 to 10
  bool newSheet = true;                      // false: draw over the sheet itself
  // Mermaid flowchart text: when given, the chart is drawn from it (as the
  // Mermaid import does) instead of from the sheet's cells; the sheet,
  // layout and new-sheet choices are then not used.
  std::string mermaid;
};

struct WizardOutcome {
  bool drawn = false;
  std::string message;  // why nothing was drawn
  std::string sheet;    // the name of the sheet drawn on
  int shapes = 0;       // the shapes on that sheet afterwards
  double seconds = 0;   // the engine's time, from reading the sheet to the last line
};

class WizardCommand {
 public:
  // Reads the sheet, lays the chart out and draws it, as Finish in the
  // dialog does (the gridlines hidden when the settings ask for it). A sheet
  // without text, a sheet that isn't there or a choice out of range draws
  // nothing. Never throws: an unexpected error is logged and answered.
  static WizardOutcome Run(const WizardChoices& choices);
};

}  // namespace nivarel::host
