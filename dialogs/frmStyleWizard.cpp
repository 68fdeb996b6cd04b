#include "frmStyleWizard.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CConfig.h"
#include "CFlowLineFormatter.h"
#include "CIniDataAccess.h"
#include "CIniSymbolDataAccess.h"
#include "CSymbolData.h"
#include "CShapeFormatter.h"
#include "Characters.h"
#include "KeptLooks.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "MsoConstants.h"
#include "PictureChoices.h"
#include "PictureGrid.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "TextConvert.h"
#include "UserDialog.h"
#include "frmFlowLineStyles.h"
#include "frmFont.h"
#include "frmStyles.h"
#include "ucImages.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmStyleWizard";
constexpr long kHelpTopic = 4609;
constexpr int kStyleOffset = kStyleValueOffset;

// What the user calls a symbol type.
std::string SymbolName(int type) {
  rules::CSymbolData symbols;
  rules::CIniSymbolDataAccess().SetSymbolData(symbols, true);
  return dialogs::SymbolName(symbols, type);
}

int ToInt(const std::string& text, int fallback = 0) { return rules::ToInt32Or(text, fallback); }

class Wizard {
 public:
  Wizard() = default;

  void Run() {
    auto sheet = host::ExcelApp->ActiveSheet();
    if (!sheet) return;
    sheet_.emplace(*sheet);
    config_.LoadConfigData();
    host::UserDialog dialog(*host::ExcelApp, "frmStyleWizard", [this](const std::string& method) { Event(method); });
    form_ = &dialog;
    InitializeGrid();
    PopulateGridRows();
    int style = grid_->Rows() > 0 ? ToInt(grid_->Value(0, "style_id")) - kStyleOffset : 0;
    ShowStyle(style);
    ShowFlowLineStyle();
    ShowFont();
    if (grid_->Rows() > 0) grid_->SelectRow(0);
    loaded_ = true;
    if (grouped_)
      host::MsgBox(
          "Nivarel has detected grouped shapes, which it cannot format.\r\n"
          "To stylize these shapes, please ungroup the shapes, run the\r\n"
          "Style Wizard again, then Regroup the shapes afterward.",
          office::vbInformation, "Grouped Shapes Found");
    dialog.Execute();
    form_ = nullptr;
  }

 private:
  void InitializeGrid() {
    std::vector<PictureGrid::Column> columns = {
        {"shape_text", "Text", true, {}, "txtText"},
        {"symbol_id", "Symbol (click to change)", false, SymbolChoices(shapePictures_), "lstSymbol"},
        {"style_id", "Style (click to change)", true, StyleChoices(stylePictures_), "lstStyle"},
        {"shape_name", "ShapeName", false, {}, ""},
        {"updated", "Updated", false, {}, ""}};
    grid_ = std::make_unique<PictureGrid>(*form_, "lstShapes", std::move(columns));
    // The text is the shape's own: an edit of it is refused.
    grid_->BeforeCommit = [](int, const std::string& key, const std::string&) { return key != "shape_text"; };
    grid_->AfterCommit = [this](int row, const std::string& key) {
      grid_->SetValue(row, "updated", "True");
      if (key == "style_id") ShowStyle(ToInt(grid_->Value(row, "style_id")) - kStyleOffset);
    };
    grid_->RowSelected = [this](int row) { ShowStyle(ToInt(grid_->Value(row, "style_id")) - kStyleOffset); };
  }

  void PopulateGridRows() {
    office::Shapes shapes = sheet_->GetShapes();
    shapes::CShapeFormatter formatter;
    int count = shapes.Count();
    for (int i = 1; i <= count; ++i) {
      try {
        office::Shape shape = shapes.Item(i);
        int type = shape.Type();
        if (type == office::msoGroup) {
          grouped_ = true;
          continue;
        }
        if (type != office::msoAutoShape && type != office::msoCallout) continue;
        int autoType = shape.AutoShapeType();
        if (autoType <= 0) continue;
        std::string text;
        try {
          text = shape.GetTextFrame().GetCharacters().Text();
        } catch (...) {
          // A shape without text lists with an empty one.
        }
        grid_->AddRow({{"shape_name", shape.Name()},
                       {"shape_text", text},
                       {"symbol_id", std::to_string(autoType - 1)},
                       {"style_id", std::to_string(formatter.GetShapeStyle(shape) + kStyleOffset)}});
      } catch (...) {
        host::ErrorHandler(kSource, "PopulateGridRows", false);
      }
    }
  }

  void ShowStyle(int style) {
    int index = style;
    form_->SetPicture("picCurrentStyle", style > 0 ? stylePictures_.StyleImage(index) : "");
  }

  void ShowFlowLineStyle() {
    int index = config_.FlowLineStyle;
    form_->SetPicture("picFlowLineStyle", stylePictures_.FlowlineStyleImage(index));
  }

  void ShowFont() {
    form_->SetFont("lblSample", config_.FontName, config_.FontSize, config_.FontBold, config_.FontItalic);
  }

  void SaveSettings() { rules::CIniDataAccess().SaveConfigData(config_); }

  void ChangeSymbolStyle() {
    int row = grid_->CurrentRow();
    if (row < 0) return;
    int16_t former = static_cast<int16_t>(ToInt(grid_->Value(row, "style_id")) - kStyleOffset);
    int type = ToInt(grid_->Value(row, "symbol_id")) + 1;
    frmStyles picker;
    picker.InitializeSettings(former, SymbolName(type));
    picker.Show();
    if (!picker.OK()) return;
    std::string value = std::to_string(picker.StyleId() + kStyleOffset);
    ShowStyle(picker.StyleId());
    for (int r = 0; r < grid_->Rows(); ++r) {
      bool applies = false;
      switch (picker.AppliesTo()) {
        case 0: applies = r == row; break;
        case 1: applies = true; break;
        default: applies = ToInt(grid_->Value(r, "style_id")) - kStyleOffset == former; break;
      }
      if (!applies) continue;
      grid_->SetValue(r, "style_id", value);
      grid_->SetValue(r, "updated", "True");
    }
    if (picker.AppliesTo() != 0) {
      config_.StyleId = picker.StyleId();
      SaveSettings();
    }
  }

  void ChangeLineStyle() {
    if (!frmFlowLineStyles().Pick(config_.FlowLineStyle)) return;
    SaveSettings();
    ShowFlowLineStyle();
  }

  void ChangeFont() {
    if (!frmFont::Pick(config_.FontName, config_.FontSize, config_.FontBold, config_.FontItalic)) return;
    SaveSettings();
    ShowFont();
  }

  void RunStyleWizard() {
    office::UndoList::Entry entry(sheet_->Parent(), "Nivarel: Style Wizard");
    office::KeptLooks looks(*sheet_);
    office::Shapes shapes = sheet_->GetShapes();
    shapes::CShapeFormatter formatter;
    for (int r = 0; r < grid_->Rows(); ++r) {
      try {
        office::Shape shape = shapes.Item(grid_->Value(r, "shape_name"));
        int type = ToInt(grid_->Value(r, "symbol_id")) + 1;
        if (shape.AutoShapeType() != type) shape.SetAutoShapeType(type);
        formatter.SetStyleWizardFormatSettings(
            shape, config_, static_cast<int16_t>(ToInt(grid_->Value(r, "style_id")) - kStyleOffset));
      } catch (...) {
        // A shape that cannot be formatted keeps its look; nothing is shown.
      }
    }
    shapes::CFlowLineFormatter lines;
    int count = shapes.Count();
    for (int i = 1; i <= count; ++i) {
      try {
        office::Shape shape = shapes.Item(i);
        if (shape.Connector())
          lines.SetFlowLineFormat(shape, config_, false);
        else if (shape.Type() == office::msoLine)
          lines.SetLineFormat(shape, config_);
      } catch (...) {
      }
    }
  }

  void Event(const std::string& method) {
    try {
      if (!form_ || !loaded_) return;
      if (grid_->Handle(method)) return;
      if (method == "cmdOK_Click") {
        form_->EndDialog(1);
        RunStyleWizard();
      } else if (method == "cmdChangeStyle_Click") {
        ChangeSymbolStyle();
      } else if (method == "cmdChangeLineStyle_Click") {
        ChangeLineStyle();
      } else if (method == "cmdChangeFont_Click") {
        ChangeFont();
      } else if (method == "cmdHelp_Click") {
        host::ShowHelpTopic(kHelpTopic);
      }
    } catch (...) {
      host::ErrorHandler(kSource, method, false);
    }
  }

  std::optional<office::Worksheet> sheet_;
  rules::CConfig config_;
  host::UserDialog* form_ = nullptr;
  std::unique_ptr<PictureGrid> grid_;
  output::ucShapes shapePictures_;
  output::ucImages stylePictures_;
  bool grouped_ = false;
  bool loaded_ = false;
};

}  // namespace

void frmStyleWizard::Display() {
  try {
    if (!host::ExcelApp) return;
    Wizard().Run();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
