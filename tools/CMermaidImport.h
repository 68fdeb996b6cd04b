// Mermaid flowchart text drawn as a chart by the wizard's engine: each node
// a table row (its symbol by node shape, its text), each edge a connection,
// an edge's label the decision's branch label on the side its line leaves
// by; nodes placed by MermaidLayout, every row and column of the grid as
// high and wide as its largest symbol, each symbol centred in its cell;
// class colours on the symbols; subgraphs as group boxes. The chart goes on
// the active sheet when that sheet is empty, else on a new sheet behind the
// last one. The whole import is one entry of the undo list. Text that is
// not valid Mermaid draws nothing and is answered with the reader's
// message, which names the line.
#pragma once

#include <string>

#include "Workbook.h"

namespace nivarel::tools {

struct MermaidImportResult {
  bool drawn = false;
  std::string message;  // why nothing was drawn
  std::string sheet;    // the name of the sheet drawn on
  int nodes = 0;        // the symbols drawn
  int lines = 0;        // the glued flow lines drawn
  double seconds = 0;   // from reading the text to the last group box
};

class CMermaidImport {
 public:
  static constexpr char kUndoTitle[] = "Nivarel: Import Mermaid";

  // Reads text and draws its chart in book, the grid squares between
  // symbols as the wizard's spacing (0 to 10), the gridlines hidden when the
  // settings ask for it. Never throws: a failure of the office is logged
  // under "CMermaidImport" and answered in message.
  static MermaidImportResult Import(const std::string& text, office::Workbook& book, int rowsBetween = 2,
                                    int columnsBetween = 4);
};

}  // namespace nivarel::tools
