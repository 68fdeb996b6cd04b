#include "frmFlowLineInsert.h"

#include <vector>

#include "Application.h"
#include "FlowLineSides.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "PictureChoices.h"
#include "PictureGrid.h"
#include "ShapeRange.h"
#include "SymbolList.h"
#include "UserDialog.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {
const char kSource[] = "frmFlowLineInsert";
constexpr long kHelpTopic = 1400;

// The columns of both lists; the name is kept, not shown.
std::vector<PictureGrid::Column> SymbolColumns(const output::ucShapes& pictures) {
  return {{"symbolid", "Symbol", true, SymbolChoices(pictures), ""},
          {"topleftcell", "Cell", true, {}, ""},
          {"shapetext", "Text", true, {}, ""},
          {"shapename", "ShapeName", false, {}, ""}};
}

// The list's row of the shape of that name; -1 when it has none.
int RowNamed(const PictureGrid& grid, const std::string& name) {
  for (int row = 0; row < grid.Rows(); ++row)
    if (grid.Value(row, "shapename") == name) return row;
  return -1;
}
}  // namespace

frmFlowLineInsert::frmFlowLineInsert() = default;
frmFlowLineInsert::~frmFlowLineInsert() = default;

void frmFlowLineInsert::DisplayFromMenu() {
  try {
    if (!host::ExcelApp) return;
    ws_ = host::ExcelApp->ActiveSheet();
    if (!ws_) return;
    config_ = rules::CConfig();
    config_.LoadConfigData();
    Show("DisplayFromMenu");
  } catch (...) {
    host::ErrorHandler(kSource, "DisplayFromMenu", false);
  }
}

void frmFlowLineInsert::Display(office::Worksheet& ws, const rules::CConfig& config) {
  try {
    ws_ = ws;
    config_ = config;
    Show("DisplayFromReservedkeyword");
  } catch (...) {
    host::ErrorHandler(kSource, "DisplayFromReservedkeyword", false);
  }
}

void frmFlowLineInsert::Show(const std::string& procedure) {
  bool ok = false;
  {
    host::UserDialog dialog(*host::ExcelApp, kSource, [this](const std::string& method) { Event(method); });
    form_ = &dialog;
    InitializeForm();
    ok = dialog.Execute() == 1 && first_ && second_;
    from_.reset();
    to_.reset();
    sides_.reset();
    form_ = nullptr;
  }
  if (!ok) return;
  try {
    AddChosenFlowLine(*ws_, *first_, *second_, chosen_, config_);
  } catch (...) {
    host::ErrorHandler(kSource, procedure, false);
  }
}

void frmFlowLineInsert::InitializeForm() {
  try {
    loaded_ = false;
    sides_ = std::make_unique<FlowLineSides>(*form_);
    PopulateGrids();
    loaded_ = true;
    try {
      auto [first, second] = FindPreSelectedShapes();
      if (!first.empty()) from_->SelectRow(RowNamed(*from_, first));
      if (!second.empty()) to_->SelectRow(RowNamed(*to_, second));
    } catch (...) {
    }
    SetArrowPositions();
    sides_->Show();
  } catch (...) {
    host::ErrorHandler(kSource, "InitializeForm", false);
  }
}

void frmFlowLineInsert::PopulateGrids() {
  try {
    output::ucShapes pictures;
    from_ = std::make_unique<PictureGrid>(*form_, "iGridLastShape", SymbolColumns(pictures));
    to_ = std::make_unique<PictureGrid>(*form_, "iGridCurShape", SymbolColumns(pictures));
    for (const ListedSymbol& s : ListSymbols(*ws_, kSource, "PopulateGrids")) {
      std::map<std::string, std::string> row = {{"symbolid", std::to_string(s.autoShapeType - 1)},
                                                {"topleftcell", s.cell},
                                                {"shapetext", s.text},
                                                {"shapename", s.name}};
      from_->AddRow(row);
      to_->AddRow(row);
    }
    // Without a selection: from the newest symbol to the one before it.
    from_->SelectRow(from_->Rows() - 1);
    to_->SelectRow(to_->Rows() - 2);
    auto changed = [this](int) {
      if (loaded_) SetArrowPositions();
    };
    from_->RowSelected = changed;
    to_->RowSelected = changed;
  } catch (...) {
    host::ErrorHandler(kSource, "PopulateGrids", false);
  }
}

std::pair<std::string, std::string> frmFlowLineInsert::FindPreSelectedShapes() const {
  std::pair<std::string, std::string> names;
  try {
    auto selection = host::ExcelApp->GetSelection();
    if (!selection.shapes || selection.shapes->Count() == 0) return names;
    names.first = selection.shapes->Item(1).Name();
    if (selection.shapes->Count() >= 2) names.second = selection.shapes->Item(2).Name();
  } catch (...) {
  }
  return names;
}

void frmFlowLineInsert::SetArrowPositions() {
  sides_->SetArrowPositions(*ws_, from_->Value(from_->CurrentRow(), "shapename"),
                            to_->Value(to_->CurrentRow(), "shapename"));
}

void frmFlowLineInsert::cmdOK_Click() {
  first_ = FindSymbol(*ws_, from_->Value(from_->CurrentRow(), "shapename"));
  if (!first_) {
    host::MsgBox(
        "An error occured when Nivarel tried to locate the 'From' symbol.\r\n"
        "Please select another symbol or click Cancel to exit.",
        office::vbCritical, "Shape not found");
    return;
  }
  second_ = FindSymbol(*ws_, to_->Value(to_->CurrentRow(), "shapename"));
  if (!second_) {
    host::MsgBox(
        "An error occured when Nivarel tried to locate the 'To' symbol.\r\n"
        "Please select another symbol or click Cancel to exit.",
        office::vbCritical, "Shape not found");
    return;
  }
  chosen_ = sides_->Sides();
  form_->EndDialog(1);
}

void frmFlowLineInsert::Event(const std::string& method) {
  try {
    if (!form_ || !loaded_) return;
    if (from_->Handle(method) || to_->Handle(method) || sides_->Handle(method)) return;
    if (method == "txtSearchFrom_Change") {
      QuickSearch(*form_, *from_, "txtSearchFrom", "shapetext");
    } else if (method == "txtSearchTo_Change") {
      QuickSearch(*form_, *to_, "txtSearchTo", "shapetext");
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
