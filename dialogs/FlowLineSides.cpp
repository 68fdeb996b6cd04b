#include "FlowLineSides.h"

#include "AddedShapes.h"
#include "CFlowLineAdder.h"
#include "CShapeAlignment.h"
#include "Range.h"
#include "SymbolList.h"
#include "Text.h"
#include "UndoList.h"

namespace nivarel::dialogs {

namespace {
const char* const kFrom = "From";
const char* const kTo = "To";
}  // namespace

LineSides SidesBetween(bool inLineWithOthersBetween, int16_t direction) {
  if (inLineWithOthersBetween) {
    if (direction == 0 || direction == 2) return {1, 1};
    return {0, 0};
  }
  switch (direction) {
    case 0: return {0, 2};
    case 1: return {1, 3};
    case 3: return {3, 1};
    default: return {2, 0};
  }
}

int QuickSearchRow(const std::vector<std::string>& texts, const std::string& typed) {
  std::string wanted = rules::UpperCase(typed);
  if (wanted.empty()) return -1;
  for (size_t i = 0; i < texts.size(); ++i)
    if (rules::UpperCase(texts[i]).rfind(wanted, 0) == 0) return static_cast<int>(i);
  return -1;
}

void QuickSearch(host::UserDialog& dialog, PictureGrid& grid, const std::string& box, const std::string& textKey) {
  try {
    std::vector<std::string> texts;
    for (int row = 0; row < grid.Rows(); ++row) texts.push_back(grid.Value(row, textKey));
    int row = QuickSearchRow(texts, dialog.Text(box));
    if (row >= 0) grid.SelectRow(row);
  } catch (...) {
  }
}

void AddChosenFlowLine(office::Worksheet& ws, office::Shape& first, office::Shape& second, LineSides sides,
                       const rules::CConfig& config) {
  office::UndoList::Entry entry(ws.Parent(), "Nivarel: Insert Flow Line");
  office::AddedShapes added(ws);
  office::UndoList::Pause drawing(ws.Parent());
  shapes::CFlowLineAdder().AddUserDefinedFlowLine(ws, first, second, sides.from, sides.to, config, false);
}

FlowLineSides::FlowLineSides(host::UserDialog& dialog) : dialog_(dialog) {}

void FlowLineSides::Show() {
  SetSide(true, sides_.from);
  SetSide(false, sides_.to);
}

void FlowLineSides::SetSide(bool from, int16_t side) {
  (from ? sides_.from : sides_.to) = side;
  std::string which = from ? kFrom : kTo;
  dialog_.SetChecked("optConnection" + which + std::to_string(side), true);
  // Out of the first shape, into the second.
  dialog_.SetPicture("img" + which, pictures_.SideImage(!from, side));
}

bool FlowLineSides::Handle(const std::string& method) {
  for (bool from : {true, false}) {
    std::string which = from ? kFrom : kTo;
    for (int16_t k = 0; k < 4; ++k) {
      std::string option = "optConnection" + which + std::to_string(k);
      if (method == option + "_Click") {
        // Told for the option that lost its mark too.
        try {
          if (dialog_.Checked(option) && (from ? sides_.from : sides_.to) != k) SetSide(from, k);
        } catch (...) {
        }
        return true;
      }
      if (method == "lbl" + which + std::to_string(k) + "_Click") {
        try {
          SetSide(from, k);
        } catch (...) {
        }
        return true;
      }
    }
  }
  return false;
}

void FlowLineSides::SetArrowPositions(const office::Worksheet& ws, const std::string& first,
                                      const std::string& second) {
  try {
    auto from = FindSymbol(ws, first), to = FindSymbol(ws, second);
    if (!from || !to) return;
    office::Range fromCell = from->TopLeftCell(), toCell = to->TopLeftCell();
    shapes::CShapeAlignment alignment;
    int16_t direction = alignment.GetFlowDirection(*from, *to);
    bool around = alignment.IsAligned(*from, *to, toCell.Column(), fromCell.Column(), toCell.Row(), fromCell.Row()) &&
                  !alignment.IsAdjacent(ws, *from, *to, direction);
    LineSides sides = SidesBetween(around, direction);
    SetSide(true, sides.from);
    SetSide(false, sides.to);
  } catch (...) {
  }
}

}  // namespace nivarel::dialogs
