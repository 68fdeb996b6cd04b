#include "frmSettings.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "AddedShapes.h"
#include "Application.h"
#include "CConfig.h"
#include "CIniDataAccess.h"
#include "CIniFileHandler.h"
#include "CLoadPictureGDI.h"
#include "Font.h"
#include "IniFile.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "MessageBox.h"
#include "MsgBox.h"
#include "PictureChoices.h"
#include "PictureGrid.h"
#include "Range.h"
#include "Shapes.h"
#include "Text.h"
#include "TextConvert.h"
#include "UndoList.h"
#include "UserDialog.h"
#include "Workbook.h"
#include "Worksheet.h"
#include "frmAdvancedSettings.h"
#include "frmFlowLineStyles.h"
#include "frmFont.h"
#include "frmStyles.h"
#include "frmSymbolLists.h"
#include "ucImages.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmSettings";
const char* const kGridFont = "DejaVu Sans Mono";
constexpr double kGridFontSize = 8;
constexpr int kKeywordsShown = 26;  // characters of a row's keywords the table shows
constexpr int kCommonList = 0, kMyList = 99;
const int kCommonSymbols[] = {61, 63, 69, 73};
const char* const kReservedPrefixes[] = {"SHP", "TB", "LBL", "FL", "GFX", "PIC", "VSM"};
const char* const kKeys[] = {"order", "symbol_id", "style_id", "display_name", "prefix", "keywords", "width", "height"};
const char* const kLabelBoxes[4] = {"txtTopBranchLabel", "txtLeftBranchLabel", "txtRightBranchLabel",
                                    "txtBottomBranchLabel"};
// The symbol table's help, and the general settings' for the rule options.
constexpr long kSymbolsHelp = 33000, kSpecialHelp = 31000;

std::string Section(int id) { return "Shape " + std::to_string(id); }
int ToInt(const std::string& text, int fallback = 0) { return rules::ToInt32Or(rules::Trim(text), fallback); }

// The non-empty words of a comma-separated text, trimmed and upper-cased.
std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  for (const std::string& part : rules::SplitCommas(text)) {
    std::string word = rules::UpperCase(rules::Trim(part));
    if (!word.empty()) words.push_back(word);
  }
  return words;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& w : words) text += (text.empty() ? "" : ",") + w;
  return text;
}

std::vector<std::pair<std::string, std::string>> Sizes() {
  std::vector<std::pair<std::string, std::string>> out;
  for (int n = 2; n <= 20; ++n) out.emplace_back(std::to_string(n), "");
  return out;
}

class Form {
 public:
  explicit Form(host::UserDialog& dialog) : dialog_(dialog) {}

  // Form_Load.
  void Load() {
    config_.LoadConfigData();
    ini_.FileName = host::GetIniFilePath();
    handler_.LoadIniFile(ini_);
    InitializeControls();
    InitializeGrid();
    Populate();
    ShowTab(0);
    initialized_ = true;
  }

  void Event(const std::string& method) {
    if (!initialized_) return;
    if (grid_->Handle(method)) {
      EnableMoveButtons();
      return;
    }
    if (method == "optTab_Changed") {
      ShowTab(dialog_.Checked("optTab1") ? 1 : 0);
    } else if (method == "cboActiveSymbolList_Changed") {
      ActiveListChanged();
    } else if (method == "cmdMoveDown_Click") {
      Move(+1);
    } else if (method == "cmdMoveUp_Click") {
      Move(-1);
    } else if (method == "cmdChangeStyle_Click") {
      ChangeSymbolStyle();
    } else if (method == "cmdChangeLineStyle_Click") {
      ChangeFlowlineStyle();
    } else if (method == "cmdEditSymbolList_Click") {
      EditSymbolList();
    } else if (method == "cmdExportSymbolList_Click") {
      ExportSymbolList();
    } else if (method == "cmdChangeFont_Click") {
      ChangeSymbolFont();
    } else if (method == "cmdHelp_Click" || method == "Form_Help") {
      host::ShowHelpTopic(tab_ == 0 ? kSymbolsHelp : kSpecialHelp);
    } else if (method == "cmdAdvanced_Click") {
      cmdAdvancedFormatting_Click();
    } else if (method == "cmdOK_Click") {
      cmdOK_Click();
    } else {
      OptionChanged(method);
    }
  }

 private:
  void InitializeControls() {
    dialog_.SetListIndex("cboActiveSymbolList", config_.SymbolList == kMyList ? 1 : 0);
    dialog_.SetEnabled("cmdEditSymbolList", config_.SymbolList == kMyList);
    for (const char* control : {"iGridShapes", "lblColumns"}) dialog_.SetFont(control, kGridFont, kGridFontSize, false, false);
    ShowFont();
    ShowFlowLineStyle();
    dialog_.SetChecked("optBranchLabels" + std::to_string(std::clamp<int>(config_.BranchLabelOption, 0, 2)), true);
    dialog_.SetChecked("chkGroupBranchLabels", config_.GroupBranchLabels);
    dialog_.SetChecked(config_.BranchPosition == 0 ? "optBranchPosition0" : "optBranchPosition1", true);
    const std::string* texts[4] = {&config_.TopBranchText, &config_.LeftBranchText, &config_.RightBranchText,
                                   &config_.BottomBranchText};
    for (int i = 0; i < 4; ++i) dialog_.SetText(kLabelBoxes[i], *texts[i]);
    dialog_.SetChecked("chkAddFlowLine", config_.AddFlowLine);
    dialog_.SetChecked("chkAlternateProcessDashedLine", config_.AlternateProcessDashed);
    // The connector types 1 straight, 2 elbow, 3 curved.
    dialog_.SetChecked("optFlowLineType" + std::to_string(std::clamp<int>(config_.FlowLineType, 1, 3) - 1), true);
    for (int type = 1; type <= 3; ++type)
      dialog_.SetPicture("picFlowLineType" + std::to_string(type - 1), stylePictures_.ConnectorTypeImage(type));
    dialog_.SetChecked("chkEndTerminator", config_.EndTerminator);
    dialog_.SetChecked("chkOffPageReference", config_.OffPageReference);
    dialog_.SetChecked("chkOnPageReference", config_.OnPageReference);
  }

  void InitializeGrid() {
    std::vector<PictureGrid::Column> columns = {
        {"order", "Order", true, {}, "txtOrder"},
        {"symbol_id", "Symbol", true, SymbolChoices(shapePictures_), ""},
        {"style_id", "Style", false, StyleChoices(stylePictures_), "lstStyle"},
        {"display_name", "Name", true, {}, "txtName"},
        {"prefix", "Prefix", true, {}, "txtPrefix"},
        {"keywords", "Keywords (comma separated)", true, {}, "txtKeywords", 0, kKeywordsShown},
        {"width", "Width", true, Sizes(), "lstWidth"},
        {"height", "Height", true, Sizes(), "lstHeight"}};
    grid_ = std::make_unique<PictureGrid>(dialog_, "iGridShapes", std::move(columns));
    grid_->BeforeCommit = [this](int row, const std::string& key, const std::string& value) {
      return BeforeCommitEdit(row, key, value);
    };
    grid_->AfterCommit = [this](int row, const std::string& key) {
      if (grid_->Value(row, key) != committed_) grid_->SetValue(row, key, committed_);
    };
    grid_->RowSelected = [this](int row) {
      ShowStyle(ToInt(grid_->Value(row, "style_id")) - kStyleValueOffset);
      EnableMoveButtons();
    };
  }

  // The grid by SymbolList, its first row selected.
  void Populate(int select = 0) {
    grid_->Clear();
    if (config_.SymbolList == kMyList)
      PopulateGridRows();
    else
      PopulateGridRowsWithCommonSymbols();
    grid_->FitColumns();
    dialog_.SetLabel("lblColumns", grid_->Heading());
    if (grid_->Rows() > 0) grid_->SelectRow(std::clamp(select, 0, grid_->Rows() - 1));
    EnableMoveButtons();
  }

  void PopulateGridRows() {
    std::vector<int> ids;
    for (int16_t s = 1; s <= ini_.SectionCount; ++s) {
      std::string name = ini_.SectionNames[s];
      if (rules::UpperCase(name.substr(0, 7)) != "[SHAPE ") continue;
      int id = rules::ToInt32Or(name.substr(7, name.size() - 8), 0);
      if (id > 0 && rules::ToBool(handler_.ReadFrom(ini_, Section(id), "is_active", "False"))) ids.push_back(id);
    }
    AddRows(ids);
  }

  void PopulateGridRowsWithCommonSymbols() { AddRows(std::vector<int>(std::begin(kCommonSymbols), std::end(kCommonSymbols))); }

  // The symbols' rows, sorted by their order.
  void AddRows(std::vector<int> ids) {
    auto order = [&](int id) { return ToInt(handler_.ReadFrom(ini_, Section(id), "order", ""), 0); };
    std::stable_sort(ids.begin(), ids.end(), [&](int a, int b) { return order(a) < order(b); });
    for (int id : ids) {
      auto read = [&](const char* key, const char* fallback) {
        return rules::Trim(handler_.ReadFrom(ini_, Section(id), key, fallback));
      };
      std::string prefix = rules::UpperCase(read("prefix", ""));
      grid_->AddRow({{"order", std::to_string(order(id))},
                     {"symbol_id", std::to_string(id - 1)},
                     {"style_id", std::to_string(ToInt(read("style_id", "2"), 2) + kStyleValueOffset)},
                     {"display_name", read("display_name", "")},
                     {"prefix", prefix.empty() ? "" : prefix + config_.PrefixDelimiter},
                     {"keywords", Joined(Words(read("keywords", "")))},
                     {"width", std::to_string(std::clamp(ToInt(read("width", "8"), 8), 2, 20))},
                     {"height", std::to_string(std::clamp(ToInt(read("height", "2"), 2), 2, 20))}});
    }
  }

  int IdOf(int row) const { return ToInt(grid_->Value(row, "symbol_id"), -1) + 1; }

  // iGridShapes_BeforeCommitEdit: the cell's new text goes to committed_.
  bool BeforeCommitEdit(int row, const std::string& key, const std::string& value) {
    committed_ = value;
    if (key == "order") {
      host::MsgBox("To change the order of Prefix and Keyword evaluation,\r\n"
                   "please use the Up and Down arrows to the right of the grid.");
      return false;
    }
    if (key == "style_id") {
      ShowStyle(ToInt(value) - kStyleValueOffset);
    } else if (key == "display_name") {
      committed_ = rules::Trim(value);
      if (committed_.empty())
        host::MsgBox("Note: Leaving this field blank will result in no description \r\n"
                     "next to the symbol when you generate a symbol key.",
                     office::vbExclamation, "Warning - Blank Symbol Name");
    } else if (key == "prefix") {
      if (!PrefixAccepted(row, value)) return false;
    } else if (key == "keywords") {
      std::string keywords = rules::UpperCase(rules::Trim(value));
      if (DuplicateKeywordFound(row, keywords)) return false;
      committed_ = keywords;
    }
    return true;
  }

  bool PrefixAccepted(int row, const std::string& value) {
    std::string prefix = rules::UpperCase(rules::Trim(value));
    committed_ = prefix;
    if (prefix.empty()) return true;
    const std::string& delimiter = config_.PrefixDelimiter;
    if (prefix.size() < delimiter.size() || prefix.compare(prefix.size() - delimiter.size(), delimiter.size(), delimiter) != 0)
      prefix += delimiter;
    for (const char* reserved : kReservedPrefixes)
      if (prefix == reserved + delimiter) {
        host::MsgBox(prefix + " is reserved. Please choose a different prefix.", office::vbExclamation,
                     "Reserved Prefix");
        return false;
      }
    for (int r = 0; r < grid_->Rows(); ++r)
      if (r != row && rules::UpperCase(rules::Trim(grid_->Value(r, "prefix"))) == prefix) {
        host::MsgBox("Duplicate Prefix found.\r\nThe prefix you entered is the same as the prefix for " +
                         grid_->Value(r, "display_name"),
                     office::vbExclamation, "Duplicate Prefix");
        return false;
      }
    committed_ = prefix;
    return true;
  }

  // The keywords cleaned in place (empty words and a trailing comma
  // dropped); true, after its message, when a word is another row's.
  bool DuplicateKeywordFound(int row, std::string& keywords) {
    if (keywords.empty()) return false;
    std::vector<std::string> words = Words(keywords);
    keywords = Joined(words);
    for (int r = 0; r < grid_->Rows(); ++r) {
      if (r == row) continue;
      std::vector<std::string> theirs = Words(grid_->Value(r, "keywords"));
      for (const std::string& word : words)
        if (std::find(theirs.begin(), theirs.end(), word) != theirs.end()) {
          host::MsgBox("The keyword " + word + " is already used by another symbol.", office::vbExclamation,
                       "Duplicate keyword found");
          return true;
        }
    }
    return false;
  }

  void ActiveListChanged() {
    UpdateLocalIniFileType("");
    bool mine = dialog_.ListIndex("cboActiveSymbolList") == 1;
    config_.SymbolList = static_cast<int16_t>(mine ? kMyList : kCommonList);
    dialog_.SetEnabled("cmdEditSymbolList", mine);
    Populate();
  }

  // cmdMove: the selected row trades places, and order numbers, with its
  // neighbour below (step +1) or above (-1).
  void Move(int step) {
    int row = grid_->CurrentRow();
    int other = row + step;
    if (row < 0 || other < 0 || other >= grid_->Rows()) return;
    for (const char* key : kKeys) {
      if (std::string(key) == "order") continue;
      std::string value = grid_->Value(row, key);
      grid_->SetValue(row, key, grid_->Value(other, key));
      grid_->SetValue(other, key, value);
    }
    grid_->SelectRow(other);
    EnableMoveButtons();
  }

  void EnableMoveButtons() {
    int row = grid_->CurrentRow();
    dialog_.SetEnabled("cmdMoveUp", row > 0);
    dialog_.SetEnabled("cmdMoveDown", row >= 0 && row < grid_->Rows() - 1);
  }

  // Each grid row into the symbols' record and the file; the prefixes lose
  // delimiter (the configuration's when empty).
  void UpdateLocalIniFileType(std::string delimiter) {
    if (delimiter.empty()) delimiter = config_.PrefixDelimiter;
    for (int row = 0; row < grid_->Rows(); ++row) WriteRow(row, delimiter);
    handler_.WriteIniFile(ini_);
  }

  void WriteRow(int row, const std::string& delimiter) {
    std::string section = Section(IdOf(row));
    for (const char* key : kKeys) {
      std::string value = grid_->Value(row, key);
      std::string k = key;
      if (k == "symbol_id") {
        value = std::to_string(IdOf(row));
      } else if (k == "style_id") {
        value = std::to_string(ToInt(value) - kStyleValueOffset);
      } else if (k == "prefix") {
        value = rules::UpperCase(rules::Trim(value));
        if (!delimiter.empty() && value.size() >= delimiter.size() &&
            value.compare(value.size() - delimiter.size(), delimiter.size(), delimiter) == 0)
          value.erase(value.size() - delimiter.size());
      }
      handler_.WriteTo(ini_, section, key, value);
    }
  }

  void SaveGrid() {
    auto rowOf = [&](int id) {
      for (int row = 0; row < grid_->Rows(); ++row)
        if (IdOf(row) == id) return row;
      return -1;
    };
    std::vector<int> ids;
    if (config_.SymbolList == kMyList)
      for (int n = 1; n <= ini_.SectionCount; ++n) ids.push_back(n);
    else
      ids.assign(std::begin(kCommonSymbols), std::end(kCommonSymbols));
    for (int id : ids) {
      int row = rowOf(id);
      if (row < 0) continue;
      handler_.WriteTo(ini_, Section(id), "is_active", "True");
      WriteRow(row, config_.PrefixDelimiter);
    }
    handler_.WriteIniFile(ini_);
  }

  void EditSymbolList() {
    UpdateLocalIniFileType("");
    frmSymbolLists lists;
    lists.InitializeSettings(handler_, ini_);
    lists.Show();
    if (!lists.OK()) return;
    ini_ = lists.IniFileData();
    int id = grid_->CurrentRow() >= 0 ? IdOf(grid_->CurrentRow()) : -1;
    Populate();
    for (int row = 0; row < grid_->Rows(); ++row)
      if (IdOf(row) == id) grid_->SelectRow(row);
  }

  void cmdAdvancedFormatting_Click() {
    std::string delimiter = config_.PrefixDelimiter;
    frmAdvancedSettings advanced;
    advanced.InitializeSettings(config_);
    advanced.Show();
    if (!advanced.OK()) return;
    config_.AutosizeHeight = advanced.AutoSizeHeight();
    config_.BranchesUseDefaultFont = advanced.BranchesUseDefaultFont();
    config_.BranchFontName = advanced.BranchFontName();
    config_.BranchFontSize = advanced.BranchFontSize();
    config_.BranchFontBold = advanced.BranchFontBold();
    config_.BranchFontItalic = advanced.BranchFontItalic();
    config_.BranchFontColor = advanced.BranchFontColor();
    config_.Capitalize = advanced.Capitalize();
    config_.FlowDirection = advanced.FlowDirection();
    config_.HorizontalAlignment = advanced.HorizontalAlignment();
    config_.PrefixDelimiter = advanced.PrefixDelimiter();
    config_.QuestionMarkIsDecision = advanced.QuestionIsDecision();
    config_.SmartSizing = advanced.SmartSizing();
    config_.VerticalAlignment = advanced.VerticalAlignment();
    if (config_.PrefixDelimiter == delimiter) return;
    // The prefixes lose the old delimiter in the file and show the new one.
    UpdateLocalIniFileType(delimiter);
    Populate(grid_->CurrentRow());
  }

  void ChangeSymbolStyle() {
    int row = grid_->CurrentRow();
    if (row < 0) return;
    int former = ToInt(grid_->Value(row, "style_id")) - kStyleValueOffset;
    frmStyles picker;
    picker.InitializeSettings(static_cast<int16_t>(former), grid_->Value(row, "display_name"));
    picker.Show();
    if (!picker.OK()) return;
    std::string value = std::to_string(picker.StyleId() + kStyleValueOffset);
    for (int r = 0; r < grid_->Rows(); ++r) {
      int style = ToInt(grid_->Value(r, "style_id")) - kStyleValueOffset;
      bool applies = picker.AppliesTo() == 1 || (picker.AppliesTo() == 2 && style == former) || r == row;
      if (applies) grid_->SetValue(r, "style_id", value);
    }
    if (picker.AppliesTo() == 1) config_.StyleId = picker.StyleId();
    ShowStyle(picker.StyleId());
  }

  void ChangeFlowlineStyle() {
    if (frmFlowLineStyles().Pick(config_.FlowLineStyle)) ShowFlowLineStyle();
  }

  void ChangeSymbolFont() {
    if (frmFont::Pick(config_.FontName, config_.FontSize, config_.FontBold, config_.FontItalic)) ShowFont();
  }

  // ExportSymbolList: a new sheet with the grid's symbols, one row each,
  // the symbol's picture in its cell; one entry of the undo list.
  void ExportSymbolList() {
    auto book = host::ExcelApp->ActiveWorkbook();
    if (!book) {
      host::MsgBox("There are no workbooks open. You must open a workbook before using Nivarel.", office::vbOKOnly,
                   "No Workbooks Open");
      return;
    }
    office::UndoList::Entry entry(*book, "Nivarel: Export Symbol List");
    office::Worksheet sheet = book->AddSheet();
    const char* const headers[] = {"Order", "Symbol", "Name", "Prefix", "Keywords", "Width", "Min. Height"};
    for (int c = 0; c < 7; ++c) sheet.GetRange("A1").Offset(0, c).SetValue(headers[c]);
    sheet.GetRange("A1:G1").GetFont().SetBold(true);
    constexpr double kRowHeight = 30;
    for (int row = 0; row < grid_->Rows(); ++row) {
      office::Range first = sheet.GetRange("A1").Offset(row + 1, 0);
      first.SetRowHeight(kRowHeight);
      std::string prefix = grid_->Value(row, "prefix");
      const std::string values[] = {grid_->Value(row, "order"),    "",
                                    grid_->Value(row, "display_name"), prefix,
                                    grid_->Value(row, "keywords"), grid_->Value(row, "width"),
                                    grid_->Value(row, "height")};
      for (int c = 0; c < 7; ++c)
        if (!values[c].empty()) first.Offset(0, c).SetValue(values[c]);
    }
    sheet.GetRange("C1").SetColumnWidth(24);
    sheet.GetRange("E1").SetColumnWidth(60);
    sheet.GetRange("G1").SetColumnWidth(12);
    office::AddedShapes added(sheet);
    office::UndoList::Pause drawing(*book);
    output::CLoadPictureGDI loader;
    for (int row = 0; row < grid_->Rows(); ++row) {
      int index = IdOf(row);
      auto picture = loader.LoadPictureGDI(shapePictures_.ShapeImage(index));
      if (!picture) continue;
      office::Range cell = sheet.GetRange("B1").Offset(row + 1, 0);
      double height = cell.Height() - 4, width = std::min(cell.Width() - 4, height * 4 / 3);
      office::Shape shape = sheet.GetShapes().AddPicture(*picture, cell.Left() + (cell.Width() - width) / 2,
                                                         cell.Top() + 2, width, height);
      shape.SetName(grid_->Value(row, "display_name").empty() ? Section(IdOf(row)) : grid_->Value(row, "display_name"));
    }
  }

  void ShowTab(int tab) {
    tab_ = tab;
    dialog_.SetPage(tab + 1);
    dialog_.SetChecked("optTab" + std::to_string(tab), true);
  }

  void ShowStyle(int style) {
    int index = style;
    dialog_.SetPicture("picCurrentStyle", style > 0 ? stylePictures_.StyleImage(index) : "");
  }

  void ShowFlowLineStyle() {
    int index = config_.FlowLineStyle;
    dialog_.SetPicture("picFlowLineStyle", stylePictures_.FlowlineStyleImage(index));
  }

  void ShowFont() {
    std::string name = config_.FontName.empty() ? "Liberation Sans" : config_.FontName;
    dialog_.SetLabel("lblFontSample", name + " " + frmFont::SizeText(config_.FontSize));
    dialog_.SetFont("lblFontSample", name, config_.FontSize > 0 ? config_.FontSize : 10, config_.FontBold,
                    config_.FontItalic);
  }

  // The second tab's check boxes and options, into the configuration at once.
  void OptionChanged(const std::string& method) {
    auto checked = [&](const std::string& control) { return dialog_.Checked(control); };
    auto chosen = [&](const std::string& group, int count) {
      for (int i = 0; i < count; ++i)
        if (checked(group + std::to_string(i))) return i;
      return 0;
    };
    if (method == "optBranchLabels_Click") {
      config_.BranchLabelOption = static_cast<int16_t>(chosen("optBranchLabels", 3));
    } else if (method == "chkGroupBranchLabels_Click") {
      config_.GroupBranchLabels = checked("chkGroupBranchLabels");
    } else if (method == "optBranchPosition_Click") {
      config_.BranchPosition = static_cast<int16_t>(chosen("optBranchPosition", 2));
    } else if (method == "chkAddFlowLine_Click") {
      config_.AddFlowLine = checked("chkAddFlowLine");
    } else if (method == "chkAlternateProcessDashedLine_Click") {
      config_.AlternateProcessDashed = checked("chkAlternateProcessDashedLine");
    } else if (method == "optFlowLineType_Click") {
      config_.FlowLineType = static_cast<int16_t>(chosen("optFlowLineType", 3) + 1);
    } else if (method == "chkEndTerminator_Click") {
      config_.EndTerminator = checked("chkEndTerminator");
    } else if (method == "chkOffPageReference_Click") {
      config_.OffPageReference = checked("chkOffPageReference");
    } else if (method == "chkOnPageReference_Click") {
      config_.OnPageReference = checked("chkOnPageReference");
    }
  }

  void cmdOK_Click() {
    // What is still in an editor counts, as if the focus had left it.
    for (const char* editor : {"txtName", "txtPrefix", "txtKeywords"}) grid_->Handle(std::string(editor) + "_Commit");
    std::string* texts[4] = {&config_.TopBranchText, &config_.LeftBranchText, &config_.RightBranchText,
                             &config_.BottomBranchText};
    for (int i = 0; i < 4; ++i) *texts[i] = dialog_.Text(kLabelBoxes[i]);
    rules::CIniDataAccess().SaveConfigData(config_);
    SaveGrid();
    dialog_.EndDialog(1);
  }

  host::UserDialog& dialog_;
  rules::CConfig config_;
  rules::CIniFileHandler handler_;
  rules::IniFile ini_;
  std::unique_ptr<PictureGrid> grid_;
  output::ucShapes shapePictures_;
  output::ucImages stylePictures_;
  std::string committed_;  // the edited cell's text as it is kept
  int tab_ = 0;
  bool initialized_ = false;
};

}  // namespace

void frmSettings::Show() {
  try {
    if (!host::ExcelApp) return;
    std::unique_ptr<Form> form;
    host::UserDialog dialog(*host::ExcelApp, "frmSettings", [&](const std::string& method) {
      try {
        if (form) form->Event(method);
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = std::make_unique<Form>(dialog);
    form->Load();
    dialog.Execute();
  } catch (...) {
    host::ErrorHandler(kSource, "Show", false);
  }
}

}  // namespace nivarel::dialogs
