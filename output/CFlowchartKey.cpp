#include "CFlowchartKey.h"

#include <algorithm>
#include <sstream>

#include "AddedShapes.h"
#include "CConfig.h"
#include "CFlowLineFormatter.h"
#include "CIniFileHandler.h"
#include "CIniSymbolDataAccess.h"
#include "CRangePrompt.h"
#include "CShapeFormatter.h"
#include "CSymbolData.h"
#include "Characters.h"
#include "Font.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MsgBox.h"
#include "MsoConstants.h"
#include "ShapeRange.h"
#include "Text.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel::output {

using namespace office;

namespace {

constexpr char kKeyName[] = "Flowchart Key";
constexpr double kIndent = 12;       // a symbol or line from the cell's left edge
constexpr double kLabelGap = 24;     // the cell's right edge to the label
constexpr double kBoxMargin = 12;    // added right and below the rows
constexpr double kThinnest = 1;      // the heaviest outline a key symbol keeps
constexpr int kFirstRowOffset = 2;   // the first row below the chosen cell
constexpr int kRowStep = 2;
constexpr long kWhite = 0xFFFFFF, kBlack = 0;

// The names of the shape types 1 to 137 by type number, spelt as they have
// always been shown ("Arow" included).
const char* const kShapeNames[138] = {
    "", "Rectangle", "Parallelogram", "Trapezoid", "Diamond", "Rounded Rectangle", "Octagon",
    "Isosceles Triangle", "Right Triangle", "Oval", "Hexagon", "Cross", "Regular Pentagon", "Can", "Cube",
    "Bevel", "Folded Corner", "Smiley Face", "Donut", "No Symbol", "Block Arc", "Heart", "Lightning Bolt", "Sun",
    "Moon", "Arc", "Double Bracket", "Double Brace", "Plaque", "Left Bracket", "Right Bracket", "Left Brace",
    "Right Brace", "Right Arrow", "Left Arrow", "Up Arrow", "Down Arrow", "Left-Right Arrow", "Up-Down Arrow",
    "Quad Arrow", "Left-Right-Up Arrow", "Bent Arrow", "U-Turn Arrow", "Left-Up Arrow", "BentUpArrow",
    "Curved Right Arow", "Curved Left Arow", "Curved Up Arow", "Curved Down Arow", "Striped Right Arow",
    "Notched Right Arow", "Pentagon", "Chevron", "Right Arrow Callout", "Left Arrow Callout",
    "Up Arrow Callout", "Down Arrow Callout", "Left-Right Arrow Callout", "Up-Down Arrow Callout",
    "Quad Arrow Callout", "Circular Arrow", "Process", "Alternate Process", "Decision", "Data",
    "Predefined Process", "Internal Storage", "Document", "Multi-Document", "Terminator", "Preparation",
    "Manual Input", "Manual Operation", "Connector", "Off-Page Connector", "Card", "Punched Tape",
    "Summing Junction", "Or", "Collate", "Sort", "Extract", "Merge", "Stored Data", "Delay",
    "Sequential Access Storage", "Magnetic Disk", "Direct Access Storage", "Display", "Explosion1",
    "Explosion2", "4-point Star", "5-point Star", "8-point Star", "16-point Star", "24-point Star",
    "32-point Star", "Up Ribbon", "Down Ribbon", "Curved Up Ribbon", "Curved Down Ribbon", "Vertical Scroll",
    "Horizontal Scroll", "Wave", "Double Wave", "Rectangular Callout", "Rounded Rectangular Callout",
    "Oval Callout", "Cloud Callout", "Line Callout1", "Line Callout2", "Line Callout3", "Line Callout4",
    "Line Callout1 Accent Bar", "Line Callout2 Accent Bar", "Line Callout3 Accent Bar",
    "Line Callout4 Accent Bar", "Line Callout1 No Border", "Line Callout2 No Border",
    "Line Callout3 No Border", "Line Callout4 No Border", "Line Callout1 Border and Accent Bar",
    "Line Callout2 Border and Accent Bar", "Line Callout3 Border and Accent Bar",
    "Line Callout4 Border and Accent Bar", "Action Button Custom", "Action Button Home", "Action Button Help",
    "Action Button Information", "Action Button Back or Previous", "Action Button Forward or Next",
    "Action Button Beginning", "Action Button End", "Action Button Return", "Action Button Document",
    "Action Button Sound", "Action Button Movie", "Balloon"};

// One office call or a few that belong together; a failure passes over them
// and the key goes on.
template <class F>
void Passing(F&& step) {
  try {
    step();
  } catch (...) {
  }
}

// "61,63" into its items; nothing for the empty text.
std::vector<std::string> Items(const std::string& list) {
  std::vector<std::string> items;
  std::stringstream in(list);
  for (std::string item; std::getline(in, item, ',');) items.push_back(item);
  return items;
}

std::string WithoutTrailingComma(const std::string& list) {
  return !list.empty() && list.back() == ',' ? list.substr(0, list.size() - 1) : list;
}

}  // namespace

CFlowchartKey::CFlowchartKey() { InitializeSymbolNames(); }

void CFlowchartKey::InitializeSymbolNames() {
  for (size_t i = 0; i < symbolNames_.size(); ++i) symbolNames_[i] = kShapeNames[i];
  try {
    rules::CIniFileHandler handler;
    rules::IniFile ini;
    ini.FileName = host::GetIniFilePath();
    if (ini.FileName.empty()) return;
    handler.LoadIniFile(ini);
    int last = std::min<int>(ini.SectionCount, static_cast<int>(symbolNames_.size()) - 1);
    for (int i = 0; i <= last; ++i) {
      std::string name = handler.ReadFrom(ini, "Shape " + std::to_string(i), "display_name", "");
      if (!rules::Trim(name).empty()) symbolNames_[static_cast<size_t>(i)] = name;
    }
  } catch (...) {
    // The built-in names stand.
  }
}

std::string CFlowchartKey::SymbolName(int id) const {
  if (id < 1 || id >= static_cast<int>(symbolNames_.size())) return std::string();
  return symbolNames_[static_cast<size_t>(id)];
}

void CFlowchartKey::AnswerPrompts(const Range& place) { answer_ = place; }

int CFlowchartKey::Tell(const std::string& text, int style, const std::string& title) {
  if (answer_) {
    message_ = text;
    return vbOK;
  }
  return host::MsgBox(text, style, title);
}

void CFlowchartKey::CreateFlowchartKey() {
  drawn_ = false;
  rows_ = 0;
  message_.clear();
  symbolIds_.clear();
  lineKinds_.clear();
  try {
    if (!host::ExcelApp) return;
    sheet_ = host::ExcelApp->ActiveSheet();
    if (!sheet_) return;
    if (sheet_->GetShapes().Count() == 0) {
      Tell("There are no shapes on the current sheet.", vbOKOnly, "No shapes found");
      return;
    }
    // The old key's deletion and the new key are one entry of the undo
    // list; a cancel leaves the entry empty, and it goes.
    UndoList::Entry entry(sheet_->Parent(), "Nivarel: Create a Symbol Key");
    if (HandleExistingKey()) return;
    GatherKeyItems();
    std::optional<Range> place = AskForPlace();
    if (!place) return;
    Passing([&] {
      Worksheet chosen = place->Sheet();
      if (chosen.Name() != sheet_->Name()) {
        sheet_ = chosen;
        sheet_->Activate();
      }
    });
    DrawKey(*place);
  } catch (...) {
    // Failing office calls end nothing but the step they were in.
  }
}

std::string CFlowchartKey::FindExistingKey() {
  Shapes shapes = sheet_->GetShapes();
  for (int i = 1, n = shapes.Count(); i <= n; ++i) {
    std::string name;
    Passing([&] { name = shapes.Item(i).Name(); });
    if (name == kKeyName) return name;
  }
  return std::string();
}

bool CFlowchartKey::HandleExistingKey() {
  std::string name = FindExistingKey();
  if (name.empty()) return false;
  int answer = Tell("A Flowchart Key already exists on this worksheet.\r\n\r\n"
                    "Click OK to Delete the existing Flowchart Key\r\n"
                    "Click Cancel to cancel this operation",
                    vbOKCancel, "Flowchart Key Already Exists");
  if (answer != vbOK) {
    sheet_.reset();
    return true;
  }
  Passing([&] { sheet_->GetShapes().Item(name).Delete(); });
  return false;
}

void CFlowchartKey::GatherKeyItems() {
  Shapes shapes = sheet_->GetShapes();
  for (int i = 1, n = shapes.Count(); i <= n; ++i) {
    Passing([&] {
      Shape shape = shapes.Item(i);
      int type = shape.Type();
      if (type == msoLine) {
        AddLineKind(shape.Line().DashStyle() == msoLineSolid ? "solid" : "dashed");
      } else if (type == msoAutoShape || type == msoCallout) {
        if (shape.Connector()) {
          AddLineKind(shape.Line().DashStyle() == msoLineSolid ? "solid" : "dashed");
          return;
        }
        int id = shape.AutoShapeType();
        // Action buttons and balloons get no row, nor group boxes.
        if (id >= 1 && id <= 124 && rules::UpperCase(shape.Name()).substr(0, 9) != "GROUP_BOX") AddSymbolId(id);
      } else if (type == msoGroup && shape.Name() != kKeyName) {
        GatherGroupItems(shape);
      }
    });
  }
  symbolIds_ = WithoutTrailingComma(symbolIds_);
  lineKinds_ = WithoutTrailingComma(lineKinds_);
}

void CFlowchartKey::GatherGroupItems(const Shape& group) {
  for (Shape& item : group.GroupItems()) {
    Passing([&] {
      int type = item.Type();
      if (type == msoLine) {
        AddLineKind(item.Line().DashStyle() == msoLineSolid ? "solid" : "dashed");
      } else if (type == msoAutoShape) {
        if (item.Connector()) {
          AddLineKind(item.Line().DashStyle() == msoLineSolid ? "solid" : "dashed");
          return;
        }
        int id = item.AutoShapeType();
        if (id >= 1 && id <= 124) AddSymbolId(id);
      }
    });
  }
}

void CFlowchartKey::AddSymbolId(int id) {
  std::string item = std::to_string(id) + ",";
  if (symbolIds_.find(item) == std::string::npos) symbolIds_ += item;
}

void CFlowchartKey::AddLineKind(const std::string& kind) {
  std::string item = kind + ",";
  if (lineKinds_.find(item) == std::string::npos) lineKinds_ += item;
}

std::optional<Range> CFlowchartKey::AskForPlace() {
  if (answer_) return answer_;
  CRangePrompt prompt;
  prompt.GetRangeFromPrompt("Select the cell to place the Flowchart Symbol Key", "Symbol Key Location", "");
  if (!prompt.IsValid()) {
    if (!prompt.UserCanceled()) Tell(prompt.ErrorMessage(), vbExclamation, "Range Selection Error");
    return std::nullopt;
  }
  return prompt.RangeObject();
}

void CFlowchartKey::SetLabelAutoSize(Shape& label) {
  if (host::ExcelVersion >= 12) {
    TextFrame2 frame = label.GetTextFrame2();
    frame.SetWordWrap(msoFalse);
    frame.SetAutoSize(msoAutoSizeShapeToFitText);
  } else {
    label.GetTextFrame().SetAutoSize(true);
  }
}

Shape CFlowchartKey::AddLabel(Shapes& shapes, const Range& cell, const std::string& text, double& right,
                              double& bottom) {
  Shape label = shapes.AddTextbox(msoTextOrientationHorizontal, cell.Left() + cell.Width() + kLabelGap, cell.Top(),
                                  cell.Width(), cell.Height());
  Passing([&] { label.GetTextFrame().GetCharacters().SetText(text); });
  Passing([&] { SetLabelAutoSize(label); });
  Passing([&] { label.Fill().SetTransparency(1); });
  Passing([&] { label.Line().SetVisible(false); });
  Passing([&] {
    right = std::max(right, label.Left() + label.Width());
    bottom = std::max(bottom, label.Top() + label.Height());
  });
  return label;
}

void CFlowchartKey::DrawKey(const Range& place) {
  // Drawn unrecorded and recorded whole, group and all, by AddedShapes.
  AddedShapes added(*sheet_);
  UndoList::Pause drawing(sheet_->Parent());
  Shapes shapes = sheet_->GetShapes();
  const int column = place.Column();
  int row = place.Row() + kFirstRowOffset;
  std::vector<std::string> names;
  double right = 0, bottom = 0;
  rules::CConfig config;
  config.LoadConfigData();
  rules::CSymbolData symbols;
  rules::CIniSymbolDataAccess().SetSymbolData(symbols, true);

  {
    shapes::CShapeFormatter formatter;
    for (const std::string& item : Items(symbolIds_)) {
      Passing([&] {
        int16_t id = static_cast<int16_t>(std::stoi(item));
        Range cell = sheet_->Cells(row, column);
        double left = cell.Left(), top = cell.Top(), width = cell.Width(), height = cell.Height();
        // A terminator is half the cell's height, its top at the cell's middle.
        Shape symbol = id == msoShapeFlowchartTerminator
                           ? shapes.AddShape(id, left + kIndent, top + height / 2, width, height / 2)
                           : shapes.AddShape(id, left + kIndent, top, width, height);
        Passing([&] { formatter.SetAllFormatSettings(symbol, config, symbols.GetStyle(id)); });
        Passing([&] {
          if (symbol.Line().Weight() > kThinnest) symbol.Line().SetWeight(kThinnest);
        });
        names.push_back(symbol.Name());
        Shape label = AddLabel(shapes, cell, symbols.GetDisplayName(id), right, bottom);
        names.push_back(label.Name());
        ++rows_;
      });
      row += kRowStep;
    }
  }

  shapes::CFlowLineFormatter lineFormatter;
  for (const std::string& kind : Items(lineKinds_)) {
    Passing([&] {
      Range cell = sheet_->Cells(row, column);
      double left = cell.Left(), top = cell.Top(), width = cell.Width(), height = cell.Height();
      // Across the cell's size, corner to corner. Below version 12 the host
      // took the last two numbers as the far end itself, so the line runs
      // from the cell to the point (width, height) of the sheet.
      Shape line = host::ExcelVersion >= 12
                       ? shapes.AddConnector(msoConnectorStraight, left + kIndent, top, left + kIndent + width,
                                             top + height)
                       : shapes.AddConnector(msoConnectorStraight, left + kIndent, top, width, height);
      Passing([&] { lineFormatter.SetFlowLineFormat(line, config, true); });
      std::string text = "Flow Line";
      if (kind != "solid") {
        Passing([&] { line.Line().SetDashStyle(msoLineDash); });
        text = "Alternate Path";
      }
      names.push_back(line.Name());
      Shape label = AddLabel(shapes, cell, text, right, bottom);
      names.push_back(label.Name());
      ++rows_;
    });
    row += kRowStep;
  }

  // The box takes in every label, and a margin. Without rows it is a
  // margin's size at the cell.
  Range cell = sheet_->Cells(place.Row(), column);
  double left = cell.Left(), top = cell.Top();
  Shape box = shapes.AddShape(msoShapeFlowchartProcess, left, top, std::max(right - left, 0.0) + kBoxMargin,
                              std::max(bottom - top, 0.0) + kBoxMargin);
  Passing([&] { box.GetTextFrame().GetCharacters().SetText(kKeyName); });
  Passing([&] { box.GetTextFrame().SetHorizontalAlignment(xlCenter); });
  Passing([&] { box.GetTextFrame().SetVerticalAlignment(xlTop); });
  Passing([&] {
    Font font = box.GetTextFrame().GetCharacters().GetFont();
    font.SetColor(kBlack);
    font.SetBold(true);
  });
  Passing([&] { box.Fill().ForeColor().SetRGB(kWhite); });
  Passing([&] { box.ZOrder(msoSendToBack); });
  names.push_back(box.Name());
  drawn_ = true;
  // A lone box (no rows) makes no group.
  Passing([&] { shapes.GetRange(names).Group().SetName(kKeyName); });
}

}  // namespace nivarel::output
