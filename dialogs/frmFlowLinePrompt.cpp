#include "frmFlowLinePrompt.h"

#include <algorithm>
#include <vector>

#include "Application.h"
#include "CFlowLineAdder.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "PictureChoices.h"
#include "SymbolList.h"
#include "UndoList.h"
#include "UserDialog.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {
const char kSource[] = "frmFlowLinePrompt";
constexpr long kHelpTopic = 24000;
}  // namespace

frmFlowLinePrompt::frmFlowLinePrompt() = default;
frmFlowLinePrompt::~frmFlowLinePrompt() = default;

void frmFlowLinePrompt::InitializeSettings(office::Worksheet& ws, const office::Shape& shape,
                                           const rules::CConfig& config) {
  try {
    ws_ = ws;
    shape_ = shape;
    config_ = config;
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

void frmFlowLinePrompt::Show() {
  try {
    if (!ws_ || !shape_ || !host::ExcelApp) return;
    bool ok = false;
    {
      host::UserDialog dialog(*host::ExcelApp, kSource, [this](const std::string& method) { Event(method); });
      form_ = &dialog;
      loaded_ = false;
      sides_ = std::make_unique<FlowLineSides>(dialog);
      PopulateGrid();
      loaded_ = true;
      SetArrowPositions();
      sides_->Show();
      ok = dialog.Execute() == 1 && first_;
      grid_.reset();
      sides_.reset();
      form_ = nullptr;
    }
    if (!ok) return;
    // Drawn unrecorded: the run's step that asked records its shapes, this
    // line among them, as one entry.
    office::UndoList::Pause drawing(ws_->Parent());
    shapes::CFlowLineAdder().AddUserDefinedFlowLine(*ws_, *first_, *shape_, chosen_.from, chosen_.to, config_, false);
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

// The other symbols of the sheet, nearest to the given shape first; the
// nearest is proposed.
void frmFlowLinePrompt::PopulateGrid() {
  try {
    output::ucShapes pictures;
    grid_ = std::make_unique<PictureGrid>(*form_, "iGridLastShape",
                                          std::vector<PictureGrid::Column>{{"shapetype", "Symbol", true, SymbolChoices(pictures), ""},
                                                                           {"topleftcell", "Cell", true, {}, ""},
                                                                           {"shapetext", "Text", true, {}, ""},
                                                                           {"radius", "Radius", true, {}, ""},
                                                                           {"shapename", "ShapeName", false, {}, ""}});
    std::string given = shape_->Name();
    double x = shape_->Left() + shape_->Width() / 2, y = shape_->Top() + shape_->Height() / 2;
    struct Row {
      ListedSymbol symbol;
      int radius;
    };
    std::vector<Row> rows;
    for (const ListedSymbol& s : ListSymbols(*ws_, kSource, "PopulateGrids"))
      if (s.name != given) rows.push_back({s, RoundedDistance(x, y, s.centreX, s.centreY)});
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.radius < b.radius; });
    for (const Row& r : rows)
      grid_->AddRow({{"shapetype", std::to_string(r.symbol.autoShapeType - 1)},
                     {"topleftcell", r.symbol.cell},
                     {"shapetext", r.symbol.text},
                     {"radius", std::to_string(r.radius)},
                     {"shapename", r.symbol.name}});
    grid_->SelectRow(0);
    grid_->RowSelected = [this](int) {
      if (loaded_) SetArrowPositions();
    };
  } catch (...) {
    host::ErrorHandler(kSource, "PopulateGrids", false);
  }
}

void frmFlowLinePrompt::SetArrowPositions() {
  sides_->SetArrowPositions(*ws_, grid_->Value(grid_->CurrentRow(), "shapename"), shape_->Name());
}

void frmFlowLinePrompt::cmdOK_Click() {
  first_ = FindSymbol(*ws_, grid_->Value(grid_->CurrentRow(), "shapename"));
  if (!first_) {
    host::MsgBox(
        "Nivarel could not locate the selected shape.\r\n"
        "Please select another shape or click Cancel to exit.",
        office::vbCritical, "Shape not found");
    return;
  }
  chosen_ = sides_->Sides();
  form_->EndDialog(1);
}

void frmFlowLinePrompt::Event(const std::string& method) {
  try {
    if (!form_ || !loaded_) return;
    if (grid_->Handle(method) || sides_->Handle(method)) return;
    if (method == "txtSearch_Change") {
      QuickSearch(*form_, *grid_, "txtSearch", "shapetext");
    } else if (method == "cmdOK_Click") {
      cmdOK_Click();
    } else if (method == "cmdHelp_Click" || method == "Form_Help") {
      host::ShowHelpTopic(kHelpTopic);
    }
  } catch (...) {
    host::ErrorHandler(kSource, method, false);
  }
}

}  // namespace nivarel::dialogs
