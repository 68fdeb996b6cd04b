// Import Mermaid (" Import Mermaid"): a box to paste or type Mermaid
// flowchart text into, or to fill from a file ("Browse...", the office's file
// picker), and OK to draw it with CMermaidImport. The dialog steps aside
// while the picker runs and while the chart is drawn, and comes back with
// its text as it was: after a file that cannot be read, and after text that
// draws nothing, each said in a message ("Import Mermaid"). OK on an empty
// box says so and the dialog stays. Cancel draws nothing.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CMermaidImport.h"
#include "Workbook.h"

namespace nivarel::dialogs {

class frmImportMermaid {
 public:
  static constexpr char kTitle[] = "Import Mermaid";

  // The file picker's types: Mermaid (*.mmd), chosen at first, Markdown
  // (*.md), Text (*.txt) and All files (*.*).
  static const std::vector<std::pair<std::string, std::string>>& OpenFilters();

  // Shows the dialog modally and draws into book what OK takes.
  void Display(office::Workbook& book);
  // What the import that drew answered; drawn is false when none did.
  const tools::MermaidImportResult& Result() const { return result_; }

 private:
  tools::MermaidImportResult result_;
};

}  // namespace nivarel::dialogs
