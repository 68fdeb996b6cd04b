#include "frmInsertGroupBox.h"

#include <algorithm>
#include <string>
#include <vector>

#include "AddedShapes.h"
#include "Application.h"
#include "CConfig.h"
#include "CShapeFormatter.h"
#include "Characters.h"
#include "Font.h"
#include "GroupBox.h"
#include "LineFormat.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"
#include "MsoConstants.h"
#include "PickCell.h"
#include "PictureChoices.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "Text.h"
#include "TextConvert.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "UserDialog.h"
#include "Worksheet.h"
#include "ucImages.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmInsertGroupBox";
constexpr int kPickRange = 2;  // what the dialog ends with to pick a range
constexpr int kDefaultStyle = shapes::GroupBoxChoices::kDefaultStyle;
const char* const kSizes[] = {"8", "9", "10", "11", "12", "14", "16", "18", "20", "22", "24", "26", "28", "36", "48", "72"};
constexpr int kDefaultSizeIndex = 2;  // "10"

// What the dialog's OK hands to the drawing: the range and the box's look.
struct BoxChoices : shapes::GroupBoxChoices {
  std::string range;
};

void Warn(const std::string& text, const std::string& title) { host::MsgBox(text, office::vbExclamation, title); }

// Draws the box over the range of the active sheet as one entry of the undo
// list. Every measure is taken before anything is drawn, so that a range the
// sheet cannot extend past (its last row or column) draws nothing. True when
// the box was drawn.
bool AddGroupBox(office::Worksheet& ws, const BoxChoices& c) {
  try {
    office::Range range = ws.GetRange(c.range);
    double left = range.Left(), top = range.Top();
    double width = range.Offset(0, range.ColumnCount()).Left() - left;
    double height = range.Offset(range.RowCount(), 0).Top() - top;
    office::Workbook book = ws.Parent();
    office::UndoList::Entry entry(book, "Nivarel: Insert Group Box");
    office::AddedShapes added(ws);
    office::UndoList::Pause drawing(book);
    shapes::DrawGroupBox(ws, left, top, width, height, c);
    return true;
  } catch (...) {
    host::ErrorHandler(kSource, "AddGroupBox", false);
    return false;
  }
}

class InsertGroupBox {
 public:
  explicit InsertGroupBox(office::Worksheet& ws) : ws_(ws) {}

  bool Run() {
    bool draw = false;
    {
      host::UserDialog dialog(*host::ExcelApp, kSource, [this](const std::string& method) { Event(method); });
      form_ = &dialog;
      InitializeControls();
      InitializeGrid();
      loaded_ = true;
      int result = 0;
      while ((result = dialog.Execute()) == kPickRange) SelectRange();
      draw = result == 1 && ready_;
      if (draw) ReadChoices();
      form_ = nullptr;
    }
    return draw && AddGroupBox(ws_, choices_);
  }

 private:
  void InitializeControls() {
    try {
      rules::CConfig config;
      config.LoadConfigData();
      configFont_ = config.FontName;
      fonts_ = host::ExcelApp->FontNames();
      std::vector<host::UserDialog::Item> items;
      for (const std::string& name : fonts_) items.push_back({name, ""});
      form_->SetItems("cboFonts", items);
      auto font = std::find(fonts_.begin(), fonts_.end(), config.FontName);
      if (font != fonts_.end()) form_->SetListIndex("cboFonts", static_cast<int>(font - fonts_.begin()));
      items.clear();
      int size = kDefaultSizeIndex;
      for (int i = 0; i < static_cast<int>(std::size(kSizes)); ++i) {
        items.push_back({kSizes[i], ""});
        if (rules::ToInt32Or(kSizes[i], 0) == config.FontSize) size = i;
      }
      form_->SetItems("cboFontSizes", items);
      form_->SetListIndex("cboFontSizes", size);
      form_->SetChecked("chkBold", config.FontBold);
      form_->SetChecked("chkItalic", config.FontItalic);
      form_->SetListIndex("cboHAlign", 0);
      form_->SetListIndex("cboVAlign", 0);
      office::Selection selection = host::ExcelApp->GetSelection();
      if (selection.cells) form_->SetText("txtRange", selection.cells->AddressLocal(false));
      form_->SetFocus("txtRange", true);
    } catch (...) {
      host::ErrorHandler(kSource, "InitializeControls", false);
    }
  }

  // The style drop-down: every style's picture, the first solid one chosen.
  void InitializeGrid() {
    try {
      styles_ = StyleChoices(stylePictures_);
      std::vector<host::UserDialog::Item> items;
      int chosen = 0;
      for (const auto& [value, picture] : styles_) {
        if (value == std::to_string(kDefaultStyle + kStyleValueOffset)) chosen = static_cast<int>(items.size());
        items.push_back({"", picture});
      }
      form_->SetItems("iGridStyle", items);
      form_->SetListIndex("iGridStyle", chosen);
    } catch (...) {
      host::ErrorHandler(kSource, "InitializeGrid", false);
    }
  }

  void SelectRange() {
    try {
      PickCellInto(*form_, "txtRange", "Select the worksheet range to place the group box.", "Select Range");
    } catch (...) {
      host::ErrorHandler(kSource, "cmdSelectRange_Click", false);
    }
  }

  void Ok() {
    std::string address = rules::Trim(form_->Text("txtRange"));
    if (address.empty()) {
      Warn("The worksheet range you entered was blank.\r\n"
           "Please select a cell using the selector button [...]\r\n"
           "or click Cancel to cancel adding a group box.",
           "Empty Range Address");
      form_->SetFocus("txtRange");
      return;
    }
    try {
      ws_.GetRange(address);
    } catch (...) {
      Warn("The worksheet range entered was invalid.\r\n"
           "Please select a cell using the Select Range button\r\n"
           "or click Cancel to cancel adding a group box.",
           "Invalid Cell Address");
      form_->SetFocus("txtRange", true);
      return;
    }
    ready_ = true;
    form_->EndDialog(1);
  }

  void ReadChoices() {
    choices_.range = rules::Trim(form_->Text("txtRange"));
    choices_.label = form_->Text("txtBoxLabel");
    int font = form_->ListIndex("cboFonts");
    choices_.fontName = font >= 0 && font < static_cast<int>(fonts_.size()) ? fonts_[font] : configFont_;
    int size = form_->ListIndex("cboFontSizes");
    choices_.fontSize = rules::ToInt32Or(kSizes[size >= 0 && size < static_cast<int>(std::size(kSizes)) ? size : kDefaultSizeIndex], 10);
    choices_.bold = form_->Checked("chkBold");
    choices_.italic = form_->Checked("chkItalic");
    choices_.hAlign = std::max(form_->ListIndex("cboHAlign"), 0);
    choices_.vAlign = std::max(form_->ListIndex("cboVAlign"), 0);
    choices_.rounded = !form_->Checked("optSquare");
    choices_.dashed = form_->Checked("chkDashed");
    int style = form_->ListIndex("iGridStyle");
    if (style >= 0 && style < static_cast<int>(styles_.size()))
      choices_.style = rules::ToInt32Or(styles_[style].first, kDefaultStyle + kStyleValueOffset) - kStyleValueOffset;
  }

  void Event(const std::string& method) {
    try {
      if (!form_ || !loaded_) return;
      if (method == "cmdOK_Click")
        Ok();
      else if (method == "cmdSelectRange_Click")
        form_->EndDialog(kPickRange);
    } catch (...) {
      host::ErrorHandler(kSource, method, false);
    }
  }

  office::Worksheet ws_;
  host::UserDialog* form_ = nullptr;
  bool loaded_ = false, ready_ = false;
  std::vector<std::string> fonts_;
  std::string configFont_;  // the settings' font, drawn in when the list has no entry chosen
  std::vector<std::pair<std::string, std::string>> styles_;
  output::ucImages stylePictures_;
  BoxChoices choices_;
};

}  // namespace

void frmInsertGroupBox::Display() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    auto sheet = host::ExcelApp->ActiveSheet();
    if (!sheet) return;
    ok_ = InsertGroupBox(*sheet).Run();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
