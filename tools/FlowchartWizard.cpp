#include "FlowchartWizard.h"

#include <array>
#include <cmath>
#include <set>

#include "AddedShapes.h"
#include "CFlowLineAdder.h"
#include "CPageLayout.h"
#include "CShapeAlignment.h"
#include "CShapeFormatter.h"
#include "CShapeWizard.h"
#include "CTextParser.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "LineFormat.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "StatusBarProgress.h"
#include "Text.h"
#include "TextConvert.h"
#include "TextFrame.h"
#include "UndoList.h"

namespace nivarel::tools {

using office::Range;
using office::Shape;
using office::Worksheet;

namespace {

constexpr char kSource[] = "FlowchartWizard";
constexpr int16_t kProcess = 61, kDecision = 63, kConnector = 73, kOffPageConnector = 74;
constexpr size_t kLongText = 250;  // longer texts go into a shape in pieces
// Reals go to the nearest integer, halves to the even neighbour (std::nearbyint
// in the default rounding mode).

int ToInt(const std::string& text, int fallback = 0) { return rules::ToInt32Or(text, fallback); }

// Screen updates and events off for a batch, and back on however it ends.
class Quiet {
 public:
  Quiet() {
    host::ExcelApp->SetScreenUpdating(false);
    host::ExcelApp->SetEnableEvents(false);
  }
  ~Quiet() {
    try {
      host::ExcelApp->SetEnableEvents(true);
      host::ExcelApp->SetScreenUpdating(true);
    } catch (...) {
    }
  }
};

}  // namespace

FlowchartWizard::FlowchartWizard(const Worksheet& source) : source_(source) {
  try {
    config_.LoadConfigData();
    rules::CIniSymbolDataAccess().InitializeRules(symbols_, prefixes_, keywords_);
  } catch (...) {
    host::ErrorHandler(kSource, "InitializeMemberVariables", false);
  }
}

WizardRow* FlowchartWizard::Row(int number) {
  if (number < 1 || number > static_cast<int>(rows_.size())) return nullptr;
  return &rows_[static_cast<size_t>(number - 1)];
}

void FlowchartWizard::GetEntryCount(std::string& address, int16_t& count) {
  count = 0;
  try {
    address = host::GetOccupiedRangeAddress(source_);
    if (address.empty()) return;
    Range area = source_.GetRange(address);
    for (int column = area.Column(); column <= area.LastColumn(); ++column)
      for (int row = area.Row(); row <= area.LastRow(); ++row)
        if (!rules::Trim(source_.Cells(row, column).Text()).empty()) ++count;
  } catch (...) {
    host::ErrorHandler(kSource, "GetEntryCount", false);
  }
}

void FlowchartWizard::InitializeGrid() {
  try {
    std::string address;
    int16_t count = 0;
    GetEntryCount(address, count);
    rows_.clear();
    rows_.reserve(static_cast<size_t>(count));
    if (!address.empty()) PopulateGridRows(address);
  } catch (...) {
    host::ErrorHandler(kSource, "InitializeGrid", false);
  }
}

void FlowchartWizard::PopulateGridRows(const std::string& address) {
  try {
    Range area = source_.GetRange(address);
    int previousColumn = 1;
    for (int column = area.Column(); column <= area.LastColumn(); ++column) {
      for (int row = area.Row(); row <= area.LastRow(); ++row) {
        Range cell = source_.Cells(row, column);
        std::string text = rules::Trim(cell.Text());
        if (text.empty()) continue;
        WizardRow r;
        r.entry_id = static_cast<int>(rows_.size()) + 1;
        int16_t type = SetShapeType(text);
        r.symbol_id = type - 1;
        r.style_id = symbols_.GetStyle(type) + kStyleOffset;
        r.entry = text;
        if (r.entry_id > 1 && column == previousColumn) {
          WizardRow& before = rows_.back();
          bool connect = true;
          if (!addSpacing) {
            // The cell's own value against the row above's row number: a
            // text always passes, a number when it is the larger.
            std::string value = cell.Value();
            if (rules::IsNumeric(value)) connect = rules::ToDouble(value) > before.target_row + 1;
          }
          if (connect) before.connect_to = std::to_string(r.entry_id);
        }
        r.branchtop = config_.TopBranchText;
        r.branchright = config_.RightBranchText;
        r.branchbottom = config_.BottomBranchText;
        r.branchleft = config_.LeftBranchText;
        r.celladdress = cell.AddressLocal(false);
        r.target_column = column;
        r.target_row = row;
        rows_.push_back(std::move(r));
        previousColumn = column;
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "PopulateGridRows", false);
  }
}

int16_t FlowchartWizard::SetShapeType(std::string& text) {
  int16_t type = 0;
  try {
    type = SetShapeTypeFromPrefix(text);
    if (type < 1) type = SetShapeTypeFromSpecialRules(text);
    if (type < 1) type = SetShapeTypeFromKeywordSearch(text);
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeType", false);
  }
  return type < 1 ? kProcess : type;
}

int16_t FlowchartWizard::SetShapeTypeFromPrefix(std::string& text) {
  try {
    if (config_.PrefixDelimiter.empty()) return 0;
    size_t at = text.find(config_.PrefixDelimiter);
    if (at == std::string::npos) return 0;
    std::string prefix = rules::UpperCase(text.substr(0, at));
    for (const auto& row : prefixes_) {
      if (rules::UpperCase(row[2]) != prefix) continue;
      std::string rest = rules::Trim(text.substr(at + config_.PrefixDelimiter.size()));
      if (config_.Capitalize && !rest.empty()) rest = rules::CapitalizeFirst(rest);
      text = rest;
      return rules::ToInt16(row[1]);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeTypeFromPrefix", false);
  }
  return 0;
}

int16_t FlowchartWizard::SetShapeTypeFromSpecialRules(const std::string& text) {
  try {
    if (text.find('?') != std::string::npos && config_.QuestionMarkIsDecision) return kDecision;
    if (rules::IsNumeric(text)) {
      if (config_.OffPageReference) return kOffPageConnector;
      if (config_.OnPageReference) return kConnector;
      return 0;
    }
    if (IsOnPageConnector(text)) return kConnector;
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeTypeFromSpecialRules", false);
  }
  return 0;
}

bool FlowchartWizard::IsOnPageConnector(const std::string& text) {
  return text.size() <= 2 && text == rules::UpperCase(text);
}

int16_t FlowchartWizard::SetShapeTypeFromKeywordSearch(const std::string& text) {
  try {
    return flowcharting::CTextParser::KeywordSymbol(text, keywords_);
  } catch (...) {
    host::ErrorHandler(kSource, "SetShapeTypeFromKeywordSearch", false);
  }
  return 0;
}

void FlowchartWizard::UpdateGridColumns() {
  try {
    if (rows_.size() <= 1) return;
    for (const WizardRow& r : rows_) AddColumnToArray(r.target_column);
    SpreadColumnArray();
    int smallestColumn = 100000, smallestRow = 100000;
    for (WizardRow& r : rows_) {
      r.target_column = GetNewTargetColumn(r.target_column);
      smallestColumn = std::min(smallestColumn, r.target_column);
      smallestRow = std::min(smallestRow, r.target_row);
    }
    int dc = smallestColumn < 3 ? 3 - smallestColumn : 0;
    int dr = smallestRow < 3 ? 3 - smallestRow : 0;
    if (dc + dr > 0)
      for (WizardRow& r : rows_) {
        r.target_column += dc;
        r.target_row += dr;
      }
  } catch (...) {
    host::ErrorHandler(kSource, "UpdateGridColumns", false);
  }
}

void FlowchartWizard::AddColumnToArray(int column) {
  if (!columnMapFilled_) {
    columnMap_.assign(1, {column, 0});
    columnMapFilled_ = true;
    return;
  }
  for (const auto& pair : columnMap_)
    if (pair.first == column) return;
  columnMap_.emplace_back(column, 0);
}

void FlowchartWizard::SpreadColumnArray() {
  // A single column keeps new column 0: the shift toward column 3 then puts
  // every symbol in column 3, wherever the text stood.
  if (!columnMapFilled_ || columnMap_.size() == 1) return;
  for (auto& pair : columnMap_) pair.second = pair.first;
  int step = symbols_.GetMaxWidth() + (addSpacing ? columnsBetween : 0);
  for (size_t k = 1; k < columnMap_.size(); ++k) {
    int d = step - (columnMap_[k].second - columnMap_[k - 1].second);
    if (d <= 0) continue;
    for (size_t j = k; j < columnMap_.size(); ++j) columnMap_[j].second += d;
  }
}

int FlowchartWizard::GetNewTargetColumn(int column) const {
  int out = column;
  for (const auto& pair : columnMap_)
    if (pair.first == column) out = pair.second;
  return out;
}

void FlowchartWizard::ReSpaceColumns() {
  try {
    if (rows_.size() < 2) return;
    std::vector<int> columns;
    for (const WizardRow& r : rows_) columns.push_back(r.target_column);
    int maxWidth = symbols_.GetMaxWidth();
    int previous = columns[0];
    bool changed = false;
    for (size_t i = 1; i < columns.size(); ++i) {
      // A shift moves every later row, so the next row, read shifted, can
      // differ from this one's column as read and shift again: kept so.
      int current = columns[i];
      if (current != previous) {
        int width = symbols_.GetWidth(static_cast<int16_t>(rows_[i - 1].symbol_id + 1));
        if (width < maxWidth) {
          int d = static_cast<int>(std::nearbyint((maxWidth - width) / 2.0));
          if (d > 0) {
            for (size_t j = i; j < columns.size(); ++j) columns[j] += d;
            changed = true;
          }
        }
      }
      previous = current;
    }
    if (changed)
      for (size_t i = 0; i < rows_.size(); ++i) rows_[i].target_column = columns[i];
  } catch (...) {
    host::ErrorHandler(kSource, "ReSpaceColumns", false);
  }
}

void FlowchartWizard::RunFlowchartWizard() {
  try {
    if (!host::ExcelApp) return;
    // The grid is measured on a sheet that comes and goes unrecorded: done
    // inside the entry, it would leave the entry unable to take back the
    // copy of the sheet.
    if (!host::IsGlobalRowHeightSet()) host::SetGlobalRowHeight();
    Quiet quiet;
    office::UndoList::Entry entry(source_.Parent(), "Nivarel: Flowchart Wizard");
    Worksheet output = source_;
    if (newSheet) {
      output = source_.Parent().CopySheet(source_);
      output.Activate();
      output.GetRange("A1").Select();
      host::ExcelApp->SetCutCopyMode(false);
    }
    output_ = output;
    topLeft_.clear();
    CreateWorksheetGrid();
    CreateFlowchart(output);
  } catch (...) {
    host::ErrorHandler(kSource, "RunFlowchartWizard", false);
  }
}

void FlowchartWizard::CreateWorksheetGrid() {
  try {
    shapes::CPageLayout layout;
    layout.CreateGrid();
    layout.SnapToGrid(true);
    layout.SnapToShape(true);
  } catch (...) {
    host::ErrorHandler(kSource, "CreateWorksheetGrid", false);
  }
}

void FlowchartWizard::CreateFlowchart(Worksheet& sheet) {
  std::vector<std::string> cleared, excluded;
  try {
    // The shapes are drawn unrecorded and recorded whole by AddedShapes; the
    // cells are cleared afterwards, where the office records them.
    office::AddedShapes added(sheet);
    {
      office::UndoList::Pause drawing(sheet.Parent());
      ReSpaceColumns();
      shapes::CShapeFormatter formatter;
      shapes::CShapeWizard wizard;
      shapes::CShapeAlignment alignment;
      office::Shapes shapes = sheet.GetShapes();
      // The sheet's outlines are read once; each shape drawn adds its own,
      // so that no alignment check reads the whole sheet again.
      outlines_ = shapes.Outlines();
      alignment.UseOutlines(&outlines_);
      office::StatusBarProgress progress(*host::ExcelApp, "Drawing the flowchart", static_cast<int>(rows_.size()));
      std::optional<Shape> previous;
      int previousColumn = -1, previousRow = 1;
      for (size_t i = 0; i < rows_.size(); ++i) {
        WizardRow& r = rows_[i];
        if (i % 10 == 0) progress.Set(static_cast<int>(i));
        if (!r.included) {
          excluded.push_back(r.entry);
          cleared.push_back(r.celladdress);
          continue;
        }
        try {
          int column = r.target_column, row = r.target_row;
          if (i > 0 && column == previousColumn && previous) row = GetNextRow(*previous, row);
          Range cell = sheet.GetRange(host::ColumnToAlpha(column) + std::to_string(row));
          int16_t type = static_cast<int16_t>(r.symbol_id + 1);
          int16_t width = symbols_.GetWidth(type), height = symbols_.GetMinHeight(type);
          Shape shape = shapes.AddShape(type, cell.Left(), cell.Top(), width * host::GlobalRowHeight,
                                        height * host::GlobalRowHeight);
          r.shapename = shape.Name();
          std::string text = r.entry;
          if (config_.Capitalize) text = rules::CapitalizeFirst(text);
          if (text.size() > kLongText) {
            wizard.AddTextToShape(shape, text);
          } else {
            try {
              shape.GetTextFrame().GetCharacters().SetText(text);
            } catch (...) {
              wizard.AddTextToXL2007Shape(shape, text);
            }
          }
          cleared.push_back(r.celladdress);
          formatter.SetWizardFormatSettings(shape, config_, static_cast<int16_t>(r.style_id - kStyleOffset));
          wizard.SetShapeDimensions(shape, type, text, height, width, config_);
          if (previous) alignment.AlignShapes(sheet, *previous, shape, column, previousColumn, row, previousRow);
          outlines_.push_back(office::Shapes::Outline(shape));
          TopLeftOf(shape);  // in place for good (or until arranged): known from now on
          previous = shape;
          previousColumn = column;
          previousRow = row;
        } catch (...) {
          host::ErrorHandler(kSource, "CreateFlowchart", false);
        }
      }
      if (arrange) {
        arrange(sheet, rows_);
        outlines_ = shapes.Outlines();
        topLeft_.clear();
      }
      CreateFlowlines(sheet);
      AddBranchLabels(sheet);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "CreateFlowchart", false);
  }
  try {
    for (const std::string& address : cleared)
      if (!address.empty()) sheet.GetRange(address).ClearContents();
    // The excluded texts go down column A of the source sheet, a cell for
    // each piece between commas: a text with a comma fills two.
    if (!excluded.empty()) {
      std::string list;
      for (const std::string& text : excluded) list += text + ",";
      list.pop_back();
      size_t k = 0, start = 0;
      for (;;) {
        size_t comma = list.find(',', start);
        std::string piece = list.substr(start, comma == std::string::npos ? std::string::npos : comma - start);
        source_.GetRange("A" + std::to_string(++k)).SetValue(piece);
        if (comma == std::string::npos) break;
        start = comma + 1;
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "CreateFlowchart", false);
  }
}

std::pair<int, int> FlowchartWizard::TopLeftOf(const Shape& shape) {
  auto it = topLeft_.find(shape.Key());
  if (it != topLeft_.end()) return it->second;
  Range cell = shape.TopLeftCell();
  return topLeft_[shape.Key()] = {cell.Column(), cell.Row()};
}

int FlowchartWizard::GetNextRow(const Shape& previous, int proposedRow) {
  try {
    int base = TopLeftOf(previous).second +
               static_cast<int>(std::nearbyint(previous.Height() / host::GlobalRowHeight));
    int r = base;
    bool decision = previous.AutoShapeType() == kDecision;
    if (addSpacing) {
      r += rowsBetween;
      if (decision || host::ExcelVersion >= 12) ++r;
    } else if (decision) {
      ++r;
    }
    return std::max(r, proposedRow);
  } catch (...) {
    host::ErrorHandler(kSource, "GetNextRow", false);
    return proposedRow;
  }
}

void FlowchartWizard::CreateFlowlines(Worksheet& sheet) {
  try {
    office::Shapes shapes = sheet.GetShapes();
    sideTexts_.assign(rows_.size(), {});
    for (size_t i = 0; i < rows_.size(); ++i) {
      const WizardRow& r = rows_[i];
      if (!r.included || r.shapename.empty()) continue;
      if (rules::Trim(r.connect_to).empty()) continue;
      std::optional<Shape> from;
      try {
        from = shapes.Item(r.shapename);
      } catch (...) {
        continue;
      }
      std::set<int> sides;  // the sides a decision's lines leave by
      size_t start = 0;
      for (size_t k = 0;; ++k) {
        size_t comma = r.connect_to.find(',', start);
        std::string item = rules::Trim(
            r.connect_to.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
        if (!item.empty()) {
          int target = rules::IsNumeric(item) ? ToInt(item) : FindRowByEntryText(item);
          const WizardRow* to = Row(target);
          std::optional<Shape> line;
          if (to && to->included) line = CreateFlowlinesForRow(sheet, *from, target, sides);
          WizardLink link = k < r.connect_links.size() ? r.connect_links[k] : WizardLink();
          std::string label = rules::Trim(link.label);
          if (line && link.dashed) line->Line().SetDashStyle(office::msoLineDash);
          if (line && r.symbol_id + 1 == kDecision) {
            int side = SideLeftBy(*from, *line);
            if (side >= 0) {
              sides.insert(side);
              if (!label.empty()) sideTexts_[i][side] = label;
            }
          }
        }
        if (comma == std::string::npos) break;
        start = comma + 1;
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "CreateFlowlines", false);
  }
}

int FlowchartWizard::SideLeftBy(const Shape& from, const Shape& line) {
  try {
    int site = line.GetConnectorFormat().BeginConnectionSite();
    int type = from.AutoShapeType();
    for (int side = 0; side < 4; ++side)
      if (shapes::CFlowLineAdder::GetConnectionPoint(type, side) == site) return side;
  } catch (...) {
    host::ErrorHandler(kSource, "SideLeftBy", false);
  }
  return -1;
}

void FlowchartWizard::AddBranchLabels(Worksheet& sheet) {
  try {
    office::Shapes shapes = sheet.GetShapes();
    shapes::CShapeWizard wizard;
    for (size_t i = 0; i < rows_.size(); ++i) {
      const WizardRow& r = rows_[i];
      if (!r.included || r.shapename.empty() || r.symbol_id + 1 != kDecision) continue;
      std::array<std::string, 4> texts = {rules::Trim(r.branchtop), rules::Trim(r.branchright),
                                          rules::Trim(r.branchbottom), rules::Trim(r.branchleft)};
      if (i < sideTexts_.size())
        for (const auto& [side, text] : sideTexts_[i]) texts[static_cast<size_t>(side)] = text;
      try {
        Shape shape = shapes.Item(r.shapename);
        wizard.AddBranchLabels(sheet, shape, config_, texts[0], texts[1], texts[2], texts[3]);
      } catch (...) {
        host::ErrorHandler(kSource, "AddBranchLabels", false);
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "AddBranchLabels", false);
  }
}

int FlowchartWizard::FindRowByEntryText(const std::string& text) const {
  std::string item;
  for (char c : text)
    if (c != '"') item += c;
  item = rules::UpperCase(rules::Trim(item));
  for (const WizardRow& r : rows_)
    if (r.included && rules::UpperCase(r.entry).find(item) != std::string::npos) return r.entry_id;
  return 0;
}

std::optional<Shape> FlowchartWizard::CreateFlowlinesForRow(Worksheet& sheet, Shape& from, int targetRow,
                                                            const std::set<int>& taken) {
  try {
    const WizardRow* row = Row(targetRow);
    if (!row || row->shapename.empty()) return std::nullopt;
    Shape to = sheet.GetShapes().Item(row->shapename);
    shapes::CShapeAlignment alignment;
    alignment.UseOutlines(&outlines_);
    shapes::CFlowLineAdder lines;
    int16_t direction = alignment.GetFlowDirection(from, to);
    auto [fromColumn, fromRow] = TopLeftOf(from);
    auto [toColumn, toRow] = TopLeftOf(to);
    bool aligned = alignment.IsAligned(from, to, toColumn, fromColumn, toRow, fromRow);
    bool adjacent = alignment.IsAdjacent(sheet, from, to, direction);
    // A side another line of a decision already leaves by is given up for
    // the next in line, so that each branch and its label have a side of
    // their own.
    auto first_free = [&](std::initializer_list<std::pair<int16_t, int16_t>> sides) {
      for (const auto& pair : sides)
        if (!taken.count(pair.first)) return pair;
      return *sides.begin();
    };
    std::optional<Shape> line;
    if (aligned && adjacent) {
      line = lines.AddDefaultFlowLine(sheet, from, to, config_);
    } else if (!aligned) {
      int angle = GetAngleBetweenShapes(from, to);
      bool below = angle > 180;
      std::pair<int16_t, int16_t> down = below ? std::pair<int16_t, int16_t>{2, 0} : std::pair<int16_t, int16_t>{0, 2};
      auto [fromSide, toSide] = angle <= 90 || angle >= 270 ? first_free({{1, 3}, down, {3, 1}})
                                                            : first_free({{3, 1}, down, {1, 3}});
      line = lines.AddUserDefinedFlowLine(sheet, from, to, fromSide, toSide, config_, false);
    } else if (direction == shapes::CShapeAlignment::kUp || direction == shapes::CShapeAlignment::kDown) {
      auto [fromSide, toSide] = first_free({{1, 1}, {3, 3}});
      line = lines.AddUserDefinedFlowLine(sheet, from, to, fromSide, toSide, config_, false);
    } else {
      auto [fromSide, toSide] = first_free({{0, 0}, {2, 2}});
      line = lines.AddUserDefinedFlowLine(sheet, from, to, fromSide, toSide, config_, false);
    }
    if (line) outlines_.push_back(office::Shapes::Outline(*line));
    return line;
  } catch (...) {
    host::ErrorHandler(kSource, "CreateFlowlinesForRow", false);
  }
  return std::nullopt;
}

int FlowchartWizard::GetAngleBetweenShapes(const Shape& a, const Shape& b) {
  // Pi in single precision, as the angles have always been worked out.
  const float pi = 3.14159f;
  double dy = (a.Top() + a.Height() / 2) - (b.Top() + b.Height() / 2);
  double dx = (b.Left() + b.Width() / 2) - (a.Left() + a.Width() / 2);
  double angle = std::fabs(dx) >= 0.0001 ? std::fabs(std::atan(dy / dx)) : pi / 2.0;
  if (dx < 0) angle = pi - angle;
  if (dy < 0) angle = -angle;
  int degrees = static_cast<int>(std::nearbyint(angle * 180.0 / pi));
  if (degrees < 0) degrees += 360;
  return degrees;
}

}  // namespace nivarel::tools
