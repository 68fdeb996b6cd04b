// The symbol key, the text extraction and the Mermaid export run without a user, as the command
// line asks for them: the same tools as the menu's, on one sheet of a
// workbook, with the cell the prompt would ask for given in advance (an
// existing key is replaced without the question). Answers what was done and
// where, or why nothing was, in the add-in's own words; nothing is shown.
#pragma once

#include <optional>
#include <string>

#include "Workbook.h"

namespace nivarel::host {

struct OutputChoices {
  std::optional<office::Workbook> workbook;  // none: the active workbook
  std::string sheet;                         // the sheet read; empty: the workbook's active sheet
  // Where the key or the list goes: "C3", or on another sheet "Sheet2.C3"
  // (also "Sheet2!C3", "$'My sheet'.$C$3"). Empty: for the list, the cell
  // the prompt proposes; a key needs one.
  std::string cell;
};

struct OutputOutcome {
  bool done = false;
  std::string message;  // why nothing was done
  std::string sheet;    // the sheet the key or the list went to
  std::string cell;     // its top-left cell ("C3")
  int count = 0;        // the key's rows, the steps listed, or the chart's nodes
  std::string text;     // the chart as Mermaid text
};

class OutputCommand {
 public:
  // Never throw: an unexpected error is logged and answered.
  static OutputOutcome CreateKey(const OutputChoices& choices);
  static OutputOutcome ExtractText(const OutputChoices& choices);
  // The chart of the sheet as Mermaid flowchart text; the cell is not used
  // and nothing on the sheet changes. A sheet without symbols is refused.
  static OutputOutcome Mermaid(const OutputChoices& choices);
};

}  // namespace nivarel::host
