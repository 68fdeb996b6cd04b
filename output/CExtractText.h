// Text extraction: the texts of a flowchart's symbols written down a column
// under the heading "Process Steps", so that a chart turns back into a list
// of steps. The symbols are read in drawing order (not the order of the
// flow), the members of groups too, each where its group stands, as if the
// groups were opened layer by layer; the symbol key and a template's groups
// are not looked into. One run is one entry of the undo list.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Range.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::output {

class CExtractText {
 public:
  // Takes the active sheet as the flowchart's, and the active cell as the
  // place to propose ("A1" when shapes are selected). IsValid is false, with
  // the reason in ErrorMessage, when there is no sheet or it has no shapes.
  CExtractText();

  // Asks where the list goes (it may go on another sheet), then writes the
  // heading there and each symbol's text below it, one a row, over whatever
  // the cells held. Whole texts "Start", "Begin", "Stop" and "End" (any
  // case) and empty ones are left out. Never throws.
  void ExtractTextFromFlowchartSymbols();

  // For a run without a user: the place is taken as the prompt's answer, and
  // a message is kept in ErrorMessage instead of being shown.
  void AnswerPrompts(const office::Range& place);

  const std::string& ErrorMessage() const { return message_; }
  bool IsValid() const { return valid_; }
  // The output cell: proposed until the prompt is answered, then chosen.
  const std::string& CellAddress() const { return cellAddress_; }
  // The steps the last run wrote below the heading.
  int Written() const { return written_; }

 private:
  // True when a place was given.
  bool PromptForOutputCell();
  // The steps among shapes, in their order: the texts of auto shapes (not
  // connectors), groups looked into where they stand. The groups are read
  // where they are rather than opened and closed again: the office records
  // a program's grouping, and an entry that mixes such records with cell
  // changes cannot be taken back and done again safely.
  void ReadSymbols(const std::vector<office::Shape>& shapes, std::vector<std::string>& steps);
  void WriteHeading();
  void ClearReferences();

  std::optional<office::Worksheet> flowchartSheet_;
  std::optional<office::Worksheet> outputSheet_;
  std::optional<office::Range> outputCell_;
  std::optional<office::Range> answer_;
  std::string message_;
  bool valid_ = true;
  std::string cellAddress_;
  int written_ = 0;
};

}  // namespace nivarel::output
