#include "frmInsertTree.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "Application.h"
#include "BranchInserter.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "PickCell.h"
#include "PictureChoices.h"
#include "PictureGrid.h"
#include "Range.h"
#include "SpacingBox.h"
#include "SymbolList.h"
#include "Text.h"
#include "TextConvert.h"
#include "UserDialog.h"
#include "ucImages.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmInsertTree";
constexpr long kHelpTopic = 4611;
constexpr int kMaxSpacing = 50;
constexpr int kProcess = 60;  // a process's symbol_id: its shape type less 1
constexpr int kPickCell = 2;  // what the dialog ends with to pick a cell

const char* const kListControls[] = {"lblLastShapeColumns", "iGridLastShape", "lblSortHint"};
const char* const kBaseControls[] = {"lblBaseText", "txtBaseText", "lblLocation", "txtRange", "cmdSelectRange",
                                     "lblSymbolType", "lstBaseSymbol", "lblSymbolStyle", "lstBaseStyle",
                                     "lblBaseHint"};
const char* const kRowButtons[] = {"cmdEdit", "cmdDelete", "cmdMove0", "cmdMove1"};

// The layouts' option buttons and pictures, in the order of BranchLayout.
struct Layout {
  const char* option;
  const char* picture;
  tools::BranchLayout layout;
};
const std::array<Layout, 6> kLayouts = {{
    {"optStandard", "imgStandard", tools::BranchLayout::kStandard},
    {"optInverted", "imgInverted", tools::BranchLayout::kInverted},
    {"optLeftStandard", "imgLeftStandard", tools::BranchLayout::kLeft},
    {"optRightStandard", "imgRightStandard", tools::BranchLayout::kRight},
    {"optLeftHanging", "imgLeftHanging", tools::BranchLayout::kLeftHanging},
    {"optRightHanging", "imgRightHanging", tools::BranchLayout::kRightHanging},
}};

void Warn(const std::string& text, const std::string& title) { host::MsgBox(text, office::vbExclamation, title); }

class InsertTree {
 public:
  InsertTree(office::Worksheet& ws, const std::string& lastShapeName, int shapeCount)
      : ws_(ws), lastShapeName_(lastShapeName), shapeCount_(shapeCount), inserter_(ws) {}

  bool Run() {
    bool draw = false;
    {
      host::UserDialog dialog(*host::ExcelApp, kSource, [this](const std::string& method) { Event(method); });
      form_ = &dialog;
      InitializeParameters();
      loaded_ = true;
      int result = 0;
      while ((result = dialog.Execute()) == kPickCell)
        PickCellInto(dialog, "txtRange", "Select the cell to place the symbol.", "Select Range", "A1");
      draw = result == 1 && ready_;
      if (draw) ReadChoices();
      form_ = nullptr;
    }
    if (!draw) return false;
    if (!inserter_.AddBranches(from_, base_, layout_, spacing_.Value(), items_)) return false;
    lastShapeName_ = inserter_.LastShapeName();
    return true;
  }

  const std::string& LastShapeName() const { return lastShapeName_; }

 private:
  void InitializeParameters() {
    spacing_.Show(*form_);
    newShapes_ = std::make_unique<PictureGrid>(
        *form_, "iGridNewShapes",
        std::vector<PictureGrid::Column>{{"symbol_id", "Symbol", true, SymbolChoices(shapePictures_), ""},
                                         {"symbol_text", "Text", true, {}, ""},
                                         {"branch_label", "Label", true, {}, ""},
                                         {"dashed_line", "Dashed Line", true, {}, ""}});
    newShapes_->RowSelected = [this](int) { EnableRowButtons(); };
    FillChoices("lstSymbolId", SymbolChoices(shapePictures_), std::to_string(kProcess));
    for (size_t i = 0; i < kLayouts.size(); ++i)
      form_->SetPicture(kLayouts[i].picture, stylePictures_.BranchImage(static_cast<int>(i)));
    form_->SetControlVisible("txtSymbolId", false);
    if (shapeCount_ == 0) {
      form_->SetLabel("lblStep1", "Step 1 - Add Shape to Connect From");
      for (const char* c : kListControls) form_->SetControlVisible(c, false);
      for (const char* c : kBaseControls) form_->SetControlVisible(c, true);
      auto selection = host::ExcelApp->GetSelection();
      auto cell = host::ExcelApp->ActiveCell();
      if (selection.cells && cell) form_->SetText("txtRange", host::ColumnToAlpha(cell->Column()) + std::to_string(cell->Row()));
      FillChoices("lstBaseSymbol", SymbolChoices(shapePictures_), std::to_string(kProcess));
      FillChoices("lstBaseStyle", StyleChoices(stylePictures_), std::to_string(2 + kStyleValueOffset));
      form_->SetFocus("txtBaseText");
    } else {
      for (const char* c : kBaseControls) form_->SetControlVisible(c, false);
      for (const char* c : kListControls) form_->SetControlVisible(c, true);
      PopulateLastGrid();
      form_->SetFocus("txtShapeText");
    }
  }

  // A drop-down of pictures, the entry of value chosen.
  void FillChoices(const std::string& list, const std::vector<std::pair<std::string, std::string>>& choices,
                   const std::string& value) {
    std::vector<host::UserDialog::Item> items;
    int chosen = -1;
    for (const auto& [v, picture] : choices) {
      if (v == value) chosen = static_cast<int>(items.size());
      items.push_back({"", picture});
    }
    form_->SetItems(list, items);
    choices_[list] = choices;
    if (chosen >= 0) form_->SetListIndex(list, chosen);
  }
  std::string ChoiceOf(const std::string& list) {
    int index = form_->ListIndex(list);
    const auto& choices = choices_[list];
    return index >= 0 && index < static_cast<int>(choices.size()) ? choices[index].first : "";
  }

  // The point distances are measured from: the centre of the symbol named,
  // else the active cell's top left corner (and the name is dropped).
  void InitializeGrids() {
    try {
      if (auto shape = FindSymbol(ws_, lastShapeName_)) {
        originX_ = static_cast<long>(std::nearbyint(shape->Left() + shape->Width() / 2));
        originY_ = static_cast<long>(std::nearbyint(shape->Top() + shape->Height() / 2));
        return;
      }
      lastShapeName_.clear();
      if (auto cell = host::ExcelApp->ActiveCell()) {
        originX_ = static_cast<long>(std::nearbyint(cell->Left()));
        originY_ = static_cast<long>(std::nearbyint(cell->Top()));
      }
    } catch (...) {
      host::ErrorHandler(kSource, "InitializeGrids", false);
    }
  }

  void PopulateLastGrid() {
    InitializeGrids();
    std::vector<ListedSymbol> symbols = ListSymbols(ws_, kSource, "PopulateLastGrid");
    std::vector<std::pair<int, ListedSymbol>> rows;
    for (const ListedSymbol& s : symbols)
      rows.emplace_back(RoundedDistance(originX_, originY_, s.centreX, s.centreY), s);
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    lastShapes_ = std::make_unique<PictureGrid>(
        *form_, "iGridLastShape",
        std::vector<PictureGrid::Column>{{"symbol_id", "Symbol", true, SymbolChoices(shapePictures_), ""},
                                         {"cell", "Cell", true, {}, ""},
                                         {"shape_text", "Text", true, {}, ""},
                                         {"shape_name", "Name", true, {}, ""},
                                         {"distance", "Distance", true, {}, ""}});
    for (const auto& [distance, s] : rows)
      lastShapes_->AddRow({{"symbol_id", std::to_string(s.autoShapeType - 1)},
                           {"cell", s.cell},
                           {"shape_text", s.text},
                           {"shape_name", s.name},
                           {"distance", std::to_string(distance)}});
    if (lastShapes_->Rows() == 0) return;
    if (lastShapeName_.empty()) {
      lastShapes_->SelectRow(0);
      return;
    }
    for (int r = 0; r < lastShapes_->Rows(); ++r)
      if (lastShapes_->Value(r, "shape_name") == lastShapeName_) lastShapes_->SelectRow(r);
  }

  void AddItem() {
    std::string text = form_->Text("txtShapeText");
    if (rules::Trim(text).empty()) {
      Warn("You must enter text for the shape.", "No Text Entered");
      return;
    }
    std::string id = rules::Trim(form_->Text("txtSymbolId"));
    newShapes_->AddRow({{"symbol_id", id.empty() ? std::to_string(kProcess) : id},
                        {"dashed_line", form_->Checked("chkDashed") ? "Dashed" : ""},
                        {"symbol_text", text},
                        {"branch_label", form_->Text("txtBranchLabel")}});
    form_->SetText("txtShapeText", "");
    form_->SetText("txtBranchLabel", "");
    form_->SetChecked("chkDashed", false);
    form_->SetFocus("txtShapeText");
    EnableRowButtons();
  }

  void DeleteItem() {
    int row = newShapes_->CurrentRow();
    if (row < 0) return;
    newShapes_->RemoveRow(row);
    if (newShapes_->Rows() > 0) newShapes_->SelectRow(0);
    EnableRowButtons();
  }

  void EditItem() {
    int row = newShapes_->CurrentRow();
    if (row < 0) return;
    form_->SetText("txtShapeText", newShapes_->Value(row, "symbol_text"));
    form_->SetText("txtBranchLabel", newShapes_->Value(row, "branch_label"));
    form_->SetChecked("chkDashed", !newShapes_->Value(row, "dashed_line").empty());
    std::string id = newShapes_->Value(row, "symbol_id");
    form_->SetText("txtSymbolId", id);
    const auto& choices = choices_["lstSymbolId"];
    for (size_t i = 0; i < choices.size(); ++i)
      if (choices[i].first == id) form_->SetListIndex("lstSymbolId", static_cast<int>(i));
    newShapes_->RemoveRow(row);
    if (row > 0) newShapes_->SelectRow(row - 1);
    EnableRowButtons();
  }

  void MoveItem(int by) {
    int row = newShapes_->CurrentRow(), other = row + by;
    if (row < 0 || other < 0 || other >= newShapes_->Rows()) return;
    for (const char* key : {"symbol_id", "dashed_line", "symbol_text", "branch_label"}) {
      std::string a = newShapes_->Value(row, key), b = newShapes_->Value(other, key);
      newShapes_->SetValue(row, key, b);
      newShapes_->SetValue(other, key, a);
    }
    newShapes_->SelectRow(other);
    EnableRowButtons();
  }

  // Edit and Delete need a row; up is off on the first row, down on the last.
  void EnableRowButtons() {
    int rows = newShapes_->Rows(), row = newShapes_->CurrentRow();
    form_->SetEnabled("cmdEdit", rows > 0);
    form_->SetEnabled("cmdDelete", rows > 0);
    form_->SetEnabled("cmdMove0", rows > 0 && row > 0);
    form_->SetEnabled("cmdMove1", rows > 0 && row >= 0 && row < rows - 1);
  }

  // OK, or Enter in any box.
  void Ok() {
    std::string focused = form_->FocusedControl();
    if (focused == "txtBaseText") {
      form_->SetFocus("txtRange");
      return;
    }
    if (!form_->Text("txtBranchLabel").empty() || !form_->Text("txtShapeText").empty()) {
      if (focused == "txtShapeText")
        form_->SetFocus("txtBranchLabel");
      else
        AddItem();
      return;
    }
    if (shapeCount_ == 0) {
      if (form_->Text("txtBaseText").empty()) form_->SetText("txtBaseText", " ");
      std::string address = rules::Trim(form_->Text("txtRange"));
      if (address.empty()) {
        Warn("The location cell must be set.", "No Location Set");
        form_->SetFocus("txtRange");
        return;
      }
      try {
        ws_.GetRange(address);
      } catch (...) {
        Warn("The location cell is invalid.\r\nPlease use the Select Cell button to set it.", "Invalid Location");
        form_->SetFocus("txtRange");
        return;
      }
    }
    if (newShapes_->Rows() == 0) {
      Warn("Thee are no branch items entered. Use the 'Text in Shape'\r\n"
           "field and the 'Add' button to add branches.",
           "No Branches Entered");
      form_->SetFocus("txtShapeText");
      return;
    }
    if (shapeCount_ > 0 && (!lastShapes_ || lastShapes_->CurrentRow() < 0)) {
      Warn("There is no shape selected to attach the branches to.\r\n"
           "Please select a shape and try again or click Cancel to exit.",
           "No Shape selected");
      return;
    }
    ready_ = true;
    form_->EndDialog(1);
  }

  // What the dialog holds when OK closes it.
  void ReadChoices() {
    spacing_.Validate(*form_);
    for (const Layout& l : kLayouts)
      if (form_->Checked(l.option)) layout_ = l.layout;
    for (int r = 0; r < newShapes_->Rows(); ++r) {
      tools::BranchItem item;
      item.symbol_id = rules::ToInt32Or(newShapes_->Value(r, "symbol_id"), kProcess);
      item.dashed_line = !newShapes_->Value(r, "dashed_line").empty();
      item.symbol_text = newShapes_->Value(r, "symbol_text");
      item.branch_label = newShapes_->Value(r, "branch_label");
      items_.push_back(item);
    }
    if (shapeCount_ == 0) {
      tools::BaseShape base;
      base.text = form_->Text("txtBaseText");
      base.symbol_id = rules::ToInt32Or(ChoiceOf("lstBaseSymbol"), kProcess);
      base.cell = rules::Trim(form_->Text("txtRange"));
      base_ = base;
    } else {
      from_ = FindSymbol(ws_, lastShapes_->Value(lastShapes_->CurrentRow(), "shape_name"));
    }
  }

  void Event(const std::string& method) {
    try {
      if (!form_ || !loaded_) return;
      if (newShapes_->Handle(method) || (lastShapes_ && lastShapes_->Handle(method))) return;
      if (spacing_.Handle(*form_, method)) return;
      if (method == "cmdOK_Click") {
        Ok();
      } else if (method == "cmdAdd_Click") {
        AddItem();
      } else if (method == "cmdDelete_Click") {
        DeleteItem();
      } else if (method == "cmdEdit_Click") {
        EditItem();
      } else if (method == "cmdMoveUp_Click") {
        MoveItem(-1);
      } else if (method == "cmdMoveDown_Click") {
        MoveItem(1);
      } else if (method == "lstSymbolId_Change") {
        form_->SetText("txtSymbolId", ChoiceOf("lstSymbolId"));
      } else if (method == "cmdSelectRange_Click") {
        form_->EndDialog(kPickCell);
      } else if (method == "cmdHelp_Click" || method == "Form_Help") {
        host::ShowHelpTopic(kHelpTopic);
      } else {
        for (const Layout& l : kLayouts)
          if (method == std::string(l.picture) + "_Click") form_->SetChecked(l.option, true);
      }
    } catch (...) {
      host::ErrorHandler(kSource, method, false);
    }
  }

  office::Worksheet ws_;
  std::string lastShapeName_;
  int shapeCount_;
  tools::BranchInserter inserter_;
  host::UserDialog* form_ = nullptr;
  bool loaded_ = false, ready_ = false;
  long originX_ = 0, originY_ = 0;
  SpacingBox spacing_{"txtSpacing", "scrSpacing", 2, kMaxSpacing};
  std::unique_ptr<PictureGrid> lastShapes_, newShapes_;
  std::map<std::string, std::vector<std::pair<std::string, std::string>>> choices_;
  output::ucShapes shapePictures_;
  output::ucImages stylePictures_;
  // The choices OK closed the dialog with.
  tools::BranchLayout layout_ = tools::BranchLayout::kStandard;
  std::vector<tools::BranchItem> items_;
  std::optional<tools::BaseShape> base_;
  std::optional<office::Shape> from_;
};

}  // namespace

void frmInsertTree::Display(office::Worksheet& ws, const std::string& lastShapeName, int shapeCount) {
  ok_ = false;
  lastShapeName_ = lastShapeName;
  try {
    if (!host::ExcelApp) return;
    InsertTree tree(ws, lastShapeName, shapeCount);
    ok_ = tree.Run();
    if (ok_) lastShapeName_ = tree.LastShapeName();
  } catch (...) {
    host::ErrorHandler(kSource, "InitializeParameters", false);
  }
}

}  // namespace nivarel::dialogs
