#include "frmFlowchartWizard.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "Application.h"
#include "CConfig.h"
#include "FlowchartWizard.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "CheckList.h"
#include "PictureChoices.h"
#include "PictureGrid.h"
#include "SpacingBox.h"
#include "Text.h"
#include "TextConvert.h"
#include "UserDialog.h"
#include "Window.h"
#include "frmFlowLineStyles.h"
#include "frmStyles.h"
#include "ucImages.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmFlowchartWizard";
constexpr long kHelpTopic = 2100;
constexpr int kPanels = 2;
constexpr int kDecision = 62;  // a decision's symbol_id: its shape type less 1
constexpr int kMaxSpacing = 10;
constexpr int kIncludedBoxes = 15;  // the check boxes of step 1's list
const char* const kNext = "~Next >";
const char* const kFinish = "~Finish";

int ToInt(const std::string& text, int fallback = 0) { return rules::ToInt32Or(text, fallback); }

class Wizard {
 public:
  explicit Wizard(const office::Worksheet& source) : engine_(source) {}

  void Run() {
    engine_.InitializeGrid();
    {
      host::UserDialog dialog(*host::ExcelApp, "frmFlowchartWizard", [this](const std::string& method) { Event(method); });
      form_ = &dialog;
      included_ = std::make_unique<CheckList>(dialog, "chkIncludedText", kIncludedBoxes, "scrIncludedText", 1);
      InitializeGrid();
      PopulateIncludedTextList();
      for (SpacingBox* s : {&vSpacing_, &hSpacing_}) s->Show(dialog);
      ShowFlowLineStyle();
      LoadBranchLabels(-1);
      if (grid_->Rows() > 0) grid_->SelectRow(0);
      ShowCurrentPanel();
      loaded_ = true;
      dialog.Execute();
      grid_.reset();
      included_.reset();
      form_ = nullptr;
    }
    if (!finished_) return;
    engine_.UpdateGridColumns();
    engine_.RunFlowchartWizard();
    if (engine_.Config().HideGridlines)
      if (auto window = host::ExcelApp->ActiveWindow()) window->SetDisplayGridlines(false);
  }

 private:
  std::vector<tools::WizardRow>& Rows() { return engine_.Rows(); }

  void InitializeGrid() {
    std::vector<PictureGrid::Column> columns = {
        {"entry_id", "#", true, {}, ""},
        {"symbol_id", "Symbol", true, SymbolChoices(shapePictures_), "lstSymbol"},
        {"style_id", "Style", true, StyleChoices(stylePictures_), "lstStyle"},
        {"entry", "Text", true, {}, "txtText"},
        {"connect_to", "Connectors (Flow Lines)", true, {}, "txtConnectTo"}};
    grid_ = std::make_unique<PictureGrid>(*form_, "iGridShapes", std::move(columns));
    for (const tools::WizardRow& r : Rows())
      grid_->AddRow({{"entry_id", std::to_string(r.entry_id)},
                     {"symbol_id", std::to_string(r.symbol_id)},
                     {"style_id", std::to_string(r.style_id)},
                     {"entry", r.entry},
                     {"connect_to", r.connect_to}});
    grid_->BeforeCommit = [this](int row, const std::string& key, const std::string& value) {
      if (key == "symbol_id") {
        bool decision = ToInt(value, -1) == kDecision;
        EnableBranchLabels(decision);
        FillBranchLabels(decision ? row : -1);
      } else if (key == "style_id") {
        ShowStyle(ToInt(value) - kStyleValueOffset);
      }
      return true;
    };
    grid_->AfterCommit = [this](int row, const std::string& key) {
      tools::WizardRow& r = Rows()[row];
      std::string value = grid_->Value(row, key);
      if (key == "symbol_id") {
        r.symbol_id = ToInt(value, r.symbol_id);
      } else if (key == "style_id") {
        r.style_id = ToInt(value, r.style_id);
      } else if (key == "entry") {
        r.entry = rules::Trim(value);
        if (r.entry != value) grid_->SetValue(row, "entry", r.entry);
      } else if (key == "connect_to") {
        r.connect_to = value;
      }
    };
    grid_->RowSelected = [this](int row) { RowSelected(row); };
  }

  void PopulateIncludedTextList() {
    std::vector<std::string> lines;
    for (const tools::WizardRow& r : Rows()) lines.push_back(r.entry + " (" + r.celladdress + ")");
    included_->SetLines(std::move(lines), true);
  }

  void ShowCurrentPanel() { form_->SetPage(step_ + 1); }

  // The choices of step 1, handed to the engine.
  void ApplyChoices() {
    for (SpacingBox* s : {&vSpacing_, &hSpacing_}) s->Validate(*form_);
    engine_.newSheet = form_->Checked("optWorksheet1");
    engine_.addSpacing = form_->Checked("optSpacing0");
    engine_.rowsBetween = vSpacing_.Value();
    engine_.columnsBetween = hSpacing_.Value();
  }

  // The lines left unselected in step 1 hide their rows, and the connectors
  // are worked out again over the rows that stay.
  void ApplyIncludedText() {
    std::vector<bool> included;
    for (int i = 0; i < static_cast<int>(Rows().size()); ++i) included.push_back(included_->Checked(i));
    bool someExcluded = std::find(included.begin(), included.end(), false) != included.end();
    for (size_t i = 0; i < Rows().size(); ++i) Rows()[i].included = !someExcluded || included[i];
    if (someExcluded) {
      bool plain = engine_.addSpacing && engine_.rowsBetween > 0;
      for (int i = 0; i + 1 < static_cast<int>(Rows().size()); ++i) {
        int k = GetNextIncludedRow(i + 1);
        if (k < 0) continue;
        tools::WizardRow &from = Rows()[i], &to = Rows()[k];
        if (to.target_column != from.target_column) continue;
        if (plain)
          from.connect_to = std::to_string(k + 1);
        else if (to.target_row == from.target_row + 1)
          from.connect_to.clear();
        grid_->SetValue(i, "connect_to", from.connect_to);
      }
    }
    std::vector<bool> visible;
    for (const tools::WizardRow& r : Rows()) visible.push_back(r.included);
    grid_->SetVisibleRows(visible);
    if (grid_->CurrentRow() < 0) {
      // The current row went: its labels are kept before the boxes move on.
      if (IsDecision(currentRow_)) CopyBranchLabelsToRow(currentRow_);
      currentRow_ = -1;
      LoadBranchLabels(-1);
      ShowStyle(0);
      int first = GetNextIncludedRow(0);
      if (first >= 0) grid_->SelectRow(first);
    }
  }

  // The first included row from row on, or -1.
  int GetNextIncludedRow(int row) {
    for (int i = std::max(row, 0); i < static_cast<int>(Rows().size()); ++i)
      if (Rows()[i].included) return i;
    return -1;
  }

  bool IsDecision(int row) {
    return row >= 0 && row < static_cast<int>(Rows().size()) && Rows()[row].symbol_id == kDecision;
  }

  void RowSelected(int row) {
    previousRow_ = currentRow_;
    currentRow_ = row;
    ShowStyle(Rows()[row].style_id - kStyleValueOffset);
    if (IsDecision(previousRow_)) CopyBranchLabelsToRow(previousRow_);
    LoadBranchLabels(row);
  }

  // The label boxes show the row's labels when it is a decision; otherwise
  // they are empty and greyed.
  void LoadBranchLabels(int row) {
    bool decision = IsDecision(row);
    EnableBranchLabels(decision);
    FillBranchLabels(decision ? row : -1);
  }

  void EnableBranchLabels(bool on) {
    for (const char* box : kLabelBoxes) form_->SetEnabled(box, on);
  }

  // The row's four labels into the boxes; -1 empties them.
  void FillBranchLabels(int row) {
    for (size_t i = 0; i < 4; ++i) form_->SetText(kLabelBoxes[i], row >= 0 ? *Labels(Rows()[row])[i] : "");
  }

  void CopyBranchLabelsToRow(int row) {
    if (row < 0 || row >= static_cast<int>(Rows().size())) return;
    auto labels = Labels(Rows()[row]);
    for (size_t i = 0; i < 4; ++i) *labels[i] = form_->Text(kLabelBoxes[i]);
  }

  static std::array<std::string*, 4> Labels(tools::WizardRow& r) {
    return {&r.branchtop, &r.branchright, &r.branchbottom, &r.branchleft};
  }

  void ShowStyle(int style) {
    int index = style;
    form_->SetPicture("picCurrentStyle", style > 0 ? stylePictures_.StyleImage(index) : "");
  }

  void ShowFlowLineStyle() {
    int index = engine_.Config().FlowLineStyle;
    form_->SetPicture("picFlowLineStyle", stylePictures_.FlowlineStyleImage(index));
  }

  void Next() {
    if (step_ == 0) ApplyChoices();
    ++step_;
    form_->SetEnabled("cmdBack", step_ > 0);
    form_->SetLabel("cmdNext", step_ < kPanels - 1 ? kNext : kFinish);
    if (step_ == kPanels) {
      // What is still in the editors counts, as if the focus had left them.
      grid_->Handle("txtText_Commit");
      grid_->Handle("txtConnectTo_Commit");
      if (IsDecision(currentRow_)) CopyBranchLabelsToRow(currentRow_);
      finished_ = true;
      form_->EndDialog(1);
      return;
    }
    if (step_ == 1) ApplyIncludedText();
    ShowCurrentPanel();
  }

  void Back() {
    if (step_ == 0) return;
    --step_;
    form_->SetLabel("cmdNext", step_ < kPanels - 1 ? kNext : kFinish);
    form_->SetEnabled("cmdBack", step_ > 0);
    ShowCurrentPanel();
  }

  void ChangeStyle() {
    int row = grid_->CurrentRow();
    if (row < 0 || row >= static_cast<int>(Rows().size())) return;
    int former = Rows()[row].style_id - kStyleValueOffset;
    int symbol = Rows()[row].symbol_id;
    frmStyles picker;
    picker.InitializeSettings(static_cast<int16_t>(former), SymbolName(engine_.Symbols(), symbol + 1));
    picker.Show();
    if (!picker.OK()) return;
    ShowStyle(picker.StyleId());
    int value = picker.StyleId() + kStyleValueOffset;
    for (int r = 0; r < static_cast<int>(Rows().size()); ++r) {
      bool applies = false;
      switch (picker.AppliesTo()) {
        case 0: applies = r == row; break;
        case 1: applies = true; break;
        case 2: applies = Rows()[r].style_id - kStyleValueOffset == former; break;
        case 3: applies = Rows()[r].symbol_id == symbol; break;
        default: break;
      }
      if (!applies) continue;
      Rows()[r].style_id = value;
      grid_->SetValue(r, "style_id", std::to_string(value));
    }
    if (picker.AppliesTo() == 1 || picker.AppliesTo() == 2) {
      // The style of later runs too: saved alone, without this run's other choices.
      engine_.Config().StyleId = picker.StyleId();
      rules::CConfig saved;
      saved.LoadConfigData();
      saved.StyleId = picker.StyleId();
      saved.StoreConfigData();
    }
  }

  void ChangeFlowLineStyle() {
    if (frmFlowLineStyles().Pick(engine_.Config().FlowLineStyle)) ShowFlowLineStyle();
  }

  void Event(const std::string& method) {
    try {
      if (!form_ || !loaded_) return;
      if (grid_->Handle(method) || included_->Handle(method)) return;
      if (vSpacing_.Handle(*form_, method) || hSpacing_.Handle(*form_, method)) return;
      if (method == "cmdNext_Click") {
        Next();
      } else if (method == "cmdBack_Click") {
        Back();
      } else if (method == "cmdChangeStyle_Click") {
        ChangeStyle();
      } else if (method == "cmdChangeFlowlineStyle_Click") {
        ChangeFlowLineStyle();
      } else if (method == "cmdHelp_Click" || method == "Form_Help") {
        host::ShowHelpTopic(kHelpTopic);
      }
    } catch (...) {
      host::ErrorHandler(kSource, method, false);
    }
  }

  static constexpr const char* kLabelBoxes[4] = {"txtTopBranchLabel", "txtRightBranchLabel", "txtBottomBranchLabel",
                                                 "txtLeftBranchLabel"};

  tools::FlowchartWizard engine_;
  host::UserDialog* form_ = nullptr;
  std::unique_ptr<CheckList> included_;  // step 1's lines, one per row of the table
  std::unique_ptr<PictureGrid> grid_;
  output::ucShapes shapePictures_;
  output::ucImages stylePictures_;
  SpacingBox vSpacing_{"txtVSpacing", "scrVSpacing", 2, kMaxSpacing};
  SpacingBox hSpacing_{"txtHSpacing", "scrHSpacing", 4, kMaxSpacing};
  int step_ = 0;
  int currentRow_ = -1, previousRow_ = -1;  // 0-based rows of the table
  bool loaded_ = false;
  bool finished_ = false;
};

}  // namespace

void frmFlowchartWizard::Display() {
  try {
    if (!host::ExcelApp) return;
    auto sheet = host::ExcelApp->ActiveSheet();
    if (!sheet) return;
    Wizard(*sheet).Run();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
