// The symbol key: a legend of the kinds of symbol and of flow line that the
// active sheet uses, one row each (a small copy and its display name, in the
// order first met, symbols before lines) inside a titled box, drawn at a cell
// the user picks and grouped as "Flowchart Key" so that the other tools can
// find it, skip it or replace it. A key already on the sheet is deleted first
// when the user agrees. One run is one entry of the undo list.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "Worksheet.h"

namespace nivarel::output {

class CFlowchartKey {
 public:
  // Builds the table of shape names, each overridden by the display name
  // symbols.ini gives its "Shape n" section, where that is not blank.
  CFlowchartKey();

  // Draws the key for the active sheet. A sheet without shapes, a cancel or
  // a bad place stops it (the user is told what is wrong); failing office
  // calls are passed over. Never throws.
  void CreateFlowchartKey();

  // For a run without a user: the place is taken as the prompt's answer, a
  // key already on the sheet is replaced without the question, and a message
  // is kept in ErrorMessage instead of being shown.
  void AnswerPrompts(const office::Range& place);

  // The table's name of a shape type; empty outside 1 to 137.
  std::string SymbolName(int id) const;
  // After a run: whether the key was drawn, its rows, what stopped it.
  bool Drawn() const { return drawn_; }
  int Rows() const { return rows_; }
  const std::string& ErrorMessage() const { return message_; }

 private:
  void InitializeSymbolNames();
  // Shows a message, or keeps it when the prompts are answered; the answer.
  int Tell(const std::string& text, int style, const std::string& title);
  // True when the user cancelled; the key found is deleted on OK.
  bool HandleExistingKey();
  std::string FindExistingKey();
  void GatherKeyItems();
  void GatherGroupItems(const office::Shape& group);
  // The list holds each id once, as the text "id,"; an id is left out when
  // that text is found anywhere in the list, so after a Decision ("63,")
  // a Trapezoid ("3,") finds itself listed.
  void AddSymbolId(int id);
  void AddLineKind(const std::string& kind);
  std::optional<office::Range> AskForPlace();
  void DrawKey(const office::Range& place);
  // A borderless, transparent text box right of the cell, fitted to text;
  // widens right and bottom to take it in.
  office::Shape AddLabel(office::Shapes& shapes, const office::Range& cell, const std::string& text, double& right,
                         double& bottom);
  void SetLabelAutoSize(office::Shape& label);

  std::string symbolIds_;   // "61,63,", in the order first met
  std::string lineKinds_;   // "solid,dashed,"
  std::array<std::string, 138> symbolNames_;
  std::optional<office::Worksheet> sheet_;
  std::optional<office::Range> answer_;
  std::string message_;
  bool drawn_ = false;
  int rows_ = 0;
};

}  // namespace nivarel::output
