// The live run: while it is on, every step the user commits in a cell of the
// sheet it listens to leaves the cell and comes back as a sized, styled
// symbol over it, aligned with and joined to the symbol before, and the
// cursor moves to where the next step belongs. One object per run; the
// sheet's change events reach it until it is destroyed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "CConfig.h"
#include "CIniSymbolDataAccess.h"
#include "CShapeFormatter.h"
#include "CSymbolData.h"
#include "Range.h"
#include "Shape.h"
#include "Subscription.h"
#include "Worksheet.h"

namespace nivarel::flowcharting {

class CInteractiveFlowcharter {
 public:
  // Listens to the active sheet and loads the symbol rules.
  CInteractiveFlowcharter();
  ~CInteractiveFlowcharter();
  CInteractiveFlowcharter(const CInteractiveFlowcharter&) = delete;
  CInteractiveFlowcharter& operator=(const CInteractiveFlowcharter&) = delete;

  // Draws the start terminator when the settings ask for one and selects the
  // cell of the first step. False when the start cell is no cell.
  bool StartFlowcharting(const rules::CConfig& config);
  // Goes on from the sheet as it stands: no terminator, no previous shape.
  void RestartFlowcharting(const rules::CConfig& config);
  // Offers the end terminator (unless skip, or an end is already there),
  // puts the flow lines behind the shapes and takes away the guides.
  void StopFlowcharting(bool skip);
  // The previous shape's name while that shape exists, else empty.
  std::string LastShapeName();

  // The sheet's change event: each non-blank cell of target becomes a step.
  void m_ws_Change(const office::Range& target);
  int32_t ChangeCount() const { return m_ChangeCount; }

 private:
  bool AddStopTerminator();
  void AddFlowLineConnector(bool prompt);
  std::string GetLastShapeName();
  void SelectNextCell(int16_t direction);
  void UpdateSheetGuides();
  // Steps 9 to 11 of the start: the terminator sized by its wrapped rows.
  void FitTerminator(office::Shape& shape, int16_t width);
  int NextRowBelow(const office::Shape& shape) const;
  // True when the cells changed because Ctrl+Z or Ctrl+Y replayed the undo
  // list (something is there to redo, or the entry done last is the add-in's
  // own): that is no step typed.
  bool ReplayedByUndo();
  // The user's own undo entry for the edit gives way to the step's: the edit
  // is taken back and its content put into the cells again unrecorded, so
  // that undoing the step leaves the typed text in its cells.
  void TakeOverTheEdit(const office::Range& target);
  // Draws the step in hand: its symbol, sized, aligned, joined, with its
  // branch labels, and moves the cursor on. False when no symbol could be made.
  bool DrawStep(bool first);
  // Remembers the step just drawn as the last one.
  void NoteStep();
  // After Ctrl+Z or Ctrl+Y the last step is the latest one still on the
  // sheet: the next step joins that one.
  void CatchUpWithUndo();

  struct Step {
    std::string name;
    int32_t row = 0;
    int32_t column = 0;
  };

  rules::CConfig m_Config;
  rules::CSymbolData m_Symbols;
  shapes::CShapeFormatter m_Formatter;
  std::optional<office::Shape> m_Shape;
  std::optional<office::Range> m_NextCell;
  rules::RuleTable m_Keywords;
  rules::RuleTable m_Prefixes;
  int16_t m_ShapeType = 0;
  int32_t m_Row = 0;
  int32_t m_Column = 0;
  std::string m_Text;
  std::string m_Address;
  std::string m_LastShapeName;
  int32_t m_LastRow = 0;
  int32_t m_LastColumn = 0;
  int16_t m_Direction = 2;
  int32_t m_MaxWidth = 0;
  int32_t m_ChangeCount = 0;
  // The steps drawn, and how many of them are on the sheet now.
  std::vector<Step> m_Steps;
  size_t m_StepsShown = 0;

  std::optional<office::Worksheet> m_ws;
  office::Subscription m_Listening;
};

}  // namespace nivarel::flowcharting
