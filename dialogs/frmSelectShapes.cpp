#include "frmSelectShapes.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "Application.h"
#include "CIniSymbolDataAccess.h"
#include "CSymbolData.h"
#include "Characters.h"
#include "CheckList.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "MsoConstants.h"
#include "PictureChoices.h"
#include "Range.h"
#include "Shape.h"
#include "ShapeRange.h"
#include "Shapes.h"
#include "Text.h"
#include "TextEncoding.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmSelectShapes";
constexpr long kHelpTopic = 2600;
constexpr int kShapeBoxes = 12;  // the table's check boxes
constexpr int kFilterBoxes = 6;  // the filter list's check boxes
constexpr int kTextLimit = 40;   // characters of a shape's text the table shows
constexpr int msoLinkedPicture = 11;
const char kNoText[] = "<no text>";
const char kGridFont[] = "DejaVu Sans Mono";
constexpr double kGridFontSize = 8;

// One row of the table.
struct ShapeRow {
  std::string shapetype, leftcolumn, toprow, shapetext, shapename;
};

std::string TextOf(const office::Shape& shape) {
  try {
    std::string text = shape.GetTextFrame().GetCharacters().Text();
    return text.empty() ? kNoText : text;
  } catch (...) {
    return kNoText;
  }
}

// The text on one line of the table, cut to its limit.
std::string OneLine(std::string text) {
  std::replace_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  if (rules::CharacterCount(text) <= static_cast<size_t>(kTextLimit)) return text;
  return text.substr(0, rules::CharacterOffset(text, kTextLimit - 1)) + "\u2026";
}

class SelectShapes {
 public:
  explicit SelectShapes(office::Worksheet& ws) : ws_(ws) {}

  bool Run() {
    PopulateGrid();
    bool ok = false;
    {
      host::UserDialog dialog(*host::ExcelApp, kSource, [this](const std::string& method) { Event(method); });
      form_ = &dialog;
      InitializeGrid();
      PopulateList();
      form_->SetPage(1);
      loaded_ = true;
      ok = dialog.Execute() == 1 && ok_;
      if (ok) ReadChecked();
      shapeList_.reset();
      filterList_.reset();
      form_ = nullptr;
    }
    if (ok) Select();
    return ok;
  }

 private:
  // The rows of the sheet's shapes, groups opened for the walk.
  void PopulateGrid() {
    try {
      rules::CSymbolData symbols;
      rules::CIniSymbolDataAccess().SetSymbolData(symbols, true);
      // Opening the groups for the walk and closing them again changes
      // nothing the user would take back.
      office::UndoList::Pause unrecorded(ws_.Parent());
      office::Shapes shapes = ws_.GetShapes();
      std::vector<office::Shape> firstMembers = host::UngroupShapes(shapes, kSource, "PopulateGrid");
      try {
        int count = shapes.Count();
        for (int i = 1; i <= count; ++i) {
          office::Shape shape = shapes.Item(i);
          ShapeRow row;
          row.shapename = shape.Name();
          if (rules::UpperCase(row.shapename).rfind("TEMPLATE", 0) == 0) continue;
          int type = shape.Type();
          if (shape.Connector()) {
            row.shapetype = "Flow Line";
          } else if (type == office::msoLine) {
            row.shapetype = "Line";
          } else if (type == office::msoTextBox) {
            row.shapetype = "TextBox";
            row.shapetext = TextOf(shape);
          } else if (type == office::msoFreeform) {
            row.shapetype = "FreeForm";
          } else if (type == office::msoPicture || type == msoLinkedPicture) {
            row.shapetype = "Picture";
          } else if ((type == office::msoAutoShape || type == office::msoCallout) && shape.AutoShapeType() >= 1) {
            row.shapetype = SymbolName(symbols, shape.AutoShapeType());
            row.shapetext = TextOf(shape);
          } else {
            continue;
          }
          office::Range cell = shape.TopLeftCell();
          row.leftcolumn = frmSelectShapes::ColumnToAlpha(cell.Address(false));
          row.toprow = std::to_string(cell.Row());
          rows_.push_back(row);
        }
      } catch (...) {
        host::ErrorHandler(kSource, "PopulateGrid", false);
      }
      host::RegroupShapes(firstMembers, kSource, "PopulateGrid");
    } catch (...) {
      host::ErrorHandler(kSource, "PopulateGrid", false);
    }
  }

  // The table's lines, its columns as wide as their longest value, under
  // their captions.
  void InitializeGrid() {
    try {
      shapeList_ = std::make_unique<CheckList>(*form_, "chkShape", kShapeBoxes, "scrShapes", 1);
      filterList_ = std::make_unique<CheckList>(*form_, "chkFilter", kFilterBoxes, "scrFilter", 1);
      const char* captions[] = {"Symbol", "Column", "Row", "Text"};
      int widths[4];
      for (int c = 0; c < 4; ++c) widths[c] = static_cast<int>(rules::CharacterCount(captions[c]));
      std::vector<std::array<std::string, 4>> cells;
      for (const ShapeRow& r : rows_) {
        cells.push_back({r.shapetype, r.leftcolumn, r.toprow, OneLine(r.shapetext)});
        for (int c = 0; c < 4; ++c)
          widths[c] = std::max(widths[c], static_cast<int>(rules::CharacterCount(cells.back()[c])));
      }
      auto line = [&](const std::array<std::string, 4>& values) {
        std::string text;
        for (int c = 0; c < 4; ++c) text += (c ? "   " : "") + rules::PadRight(values[c], c < 3 ? widths[c] : 0);
        return text;
      };
      std::vector<std::string> lines;
      for (const auto& values : cells) lines.push_back(line(values));
      shapeList_->SetLines(lines, false);
      form_->SetLabel("lblColumns", line({captions[0], captions[1], captions[2], captions[3]}));
      form_->SetFont("lblColumns", kGridFont, kGridFontSize, false, false);
      for (int k = 0; k < kShapeBoxes; ++k)
        form_->SetFont("chkShape" + std::to_string(k), kGridFont, kGridFontSize, false, false);
    } catch (...) {
      host::ErrorHandler(kSource, "InitializeGrid", false);
    }
  }

  // The kinds of the table, in the order first met.
  void PopulateList() {
    try {
      for (const ShapeRow& r : rows_)
        if (std::find(filters_.begin(), filters_.end(), r.shapetype) == filters_.end()) filters_.push_back(r.shapetype);
      filterList_->SetLines(filters_, false);
    } catch (...) {
      host::ErrorHandler(kSource, "PopulateList", false);
    }
  }

  // Every row of a checked kind checked, every other row unchecked.
  void ApplyFilters() {
    for (int f = 0; f < filterList_->Lines(); ++f)
      for (int r = 0; r < static_cast<int>(rows_.size()); ++r)
        if (rows_[r].shapetype == filters_[f]) shapeList_->SetChecked(r, filterList_->Checked(f));
  }

  void CheckAll(CheckList& list, bool checked) {
    for (int i = 0; i < list.Lines(); ++i) list.SetChecked(i, checked);
  }

  void ReadChecked() {
    for (int r = 0; r < static_cast<int>(rows_.size()); ++r)
      if (shapeList_->Checked(r)) names_.push_back(rules::Trim(rows_[r].shapename));
  }

  // The checked shapes become the office's selection; with none checked the
  // selection stays as it was.
  void Select() {
    try {
      if (names_.empty()) return;
      ws_.GetShapes().GetRange(names_).Select();
    } catch (...) {
      host::ErrorHandler(kSource, "SelectShapes", false);
    }
  }

  void Event(const std::string& method) {
    try {
      if (!form_ || !loaded_) return;
      if (shapeList_->Handle(method) || filterList_->Handle(method)) return;
      if (method == "cmdOK_Click") {
        ok_ = true;
        form_->EndDialog(1);
      } else if (method == "cmdSelectAllFilters_Click") {
        CheckAll(*filterList_, true);
      } else if (method == "cmdClearFilters_Click") {
        CheckAll(*filterList_, false);
      } else if (method == "cmdApplyFilters_Click") {
        ApplyFilters();
      } else if (method == "cmdSelectAll_Click") {
        CheckAll(*shapeList_, true);
      } else if (method == "cmdUnselectAll_Click") {
        CheckAll(*shapeList_, false);
      } else if (method == "cmdHelp_Click" || method == "Form_Help") {
        host::ShowHelpTopic(kHelpTopic);
      }
    } catch (...) {
      host::ErrorHandler(kSource, method, false);
    }
  }

  office::Worksheet ws_;
  host::UserDialog* form_ = nullptr;
  bool loaded_ = false, ok_ = false;
  std::vector<ShapeRow> rows_;
  std::vector<std::string> filters_;
  std::unique_ptr<CheckList> shapeList_, filterList_;
  std::vector<std::string> names_;  // the shapes checked when OK closed the dialog
};

}  // namespace

std::string frmSelectShapes::ColumnToAlpha(const std::string& address) {
  try {
    size_t digit = address.find_first_of("0123456789");
    return address.substr(0, digit);
  } catch (...) {
    host::ErrorHandler(kSource, "ColumnToAlpha", false);
    return "";
  }
}

void frmSelectShapes::Display() {
  ok_ = false;
  try {
    std::optional<office::Worksheet> sheet;
    try {
      if (host::ExcelApp) sheet = host::ExcelApp->ActiveSheet();
    } catch (...) {
    }
    if (!sheet) {
      host::MsgBox("There is no sheet actively selected. Make sure\r\n"
                   "you have a worksheet open and a cell selected.",
                   office::vbExclamation, "No Active Worksheet Found");
      return;
    }
    if (sheet->GetShapes().Count() == 0) {
      host::MsgBox("There are no shapes on the active sheet. Make sure\r\n"
                   "you have the correct worksheet open selected.",
                   office::vbExclamation, "No Shapes Found");
      return;
    }
    ok_ = SelectShapes(*sheet).Run();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
