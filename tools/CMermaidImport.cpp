#include "CMermaidImport.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <vector>

#include "AddedShapes.h"
#include "Application.h"
#include "ColorFormat.h"
#include "FillFormat.h"
#include "FlowchartWizard.h"
#include "GroupBox.h"
#include "HostError.h"
#include "LineFormat.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MermaidLayout.h"
#include "MermaidReader.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "UndoList.h"
#include "Window.h"
#include "Worksheet.h"

namespace nivarel::tools {

using office::Shape;
using office::Worksheet;

namespace {

const char kSource[] = "CMermaidImport";
constexpr int kFirstCell = 3;  // the chart's top-left cell is C3, as the wizard's

// A colour "#rrggbb" as the office holds it, red in the low byte; -1 for
// none.
long ColourOf(const std::string& hex) {
  if (hex.size() != 7 || hex[0] != '#') return -1;
  try {
    long value = std::stol(hex.substr(1), nullptr, 16);
    return ((value >> 16) & 0xFF) | (value & 0xFF00) | ((value & 0xFF) << 16);
  } catch (...) {
    return -1;
  }
}

// The sheet the chart goes on: the active one while it holds nothing, else
// a new one behind the last.
Worksheet TargetSheet(office::Workbook& book) {
  std::optional<Worksheet> active = host::ExcelApp->ActiveSheet();
  if (active && active->GetShapes().Count() == 0 && host::GetOccupiedRangeAddress(*active).empty()) return *active;
  return book.AddSheet();
}

// Places the drawn symbols on the layout's grid: every grid row as high as
// its tallest symbol and every grid column as wide as its widest, whole
// grid squares, the wizard's spacing between them, each symbol centred in
// its cell. Also gives the symbols their classes' colours.
class Arranger {
 public:
  Arranger(const MermaidChart& chart, const MermaidLayout& layout, int rowsBetween, int columnsBetween)
      : chart_(chart), layout_(layout), rowsBetween_(rowsBetween), columnsBetween_(columnsBetween) {}

  void operator()(Worksheet& sheet, std::vector<WizardRow>& rows) {
    office::Shapes shapes = sheet.GetShapes();
    double unit = host::GlobalRowHeight;
    std::vector<std::optional<Shape>> drawn(rows.size());
    int gridRows = 0, gridColumns = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
      gridRows = std::max(gridRows, layout_.Place(static_cast<int>(i)).row + 1);
      gridColumns = std::max(gridColumns, layout_.Place(static_cast<int>(i)).column + 1);
    }
    std::vector<double> heights(static_cast<size_t>(gridRows), unit), widths(static_cast<size_t>(gridColumns), unit);
    std::vector<std::pair<double, double>> sizes(rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].shapename.empty()) continue;
      try {
        drawn[i] = shapes.Item(rows[i].shapename);
      } catch (...) {
        continue;
      }
      sizes[i] = {drawn[i]->Width(), drawn[i]->Height()};
      const MermaidPlace& place = layout_.Place(static_cast<int>(i));
      double& height = heights[static_cast<size_t>(place.row)];
      double& width = widths[static_cast<size_t>(place.column)];
      height = std::max(height, std::ceil(sizes[i].second / unit - 0.01) * unit);
      width = std::max(width, std::ceil(sizes[i].first / unit - 0.01) * unit);
    }
    office::Range origin = sheet.Cells(kFirstCell, kFirstCell);
    std::vector<double> tops(heights.size()), lefts(widths.size());
    double at = origin.Top();
    for (size_t r = 0; r < heights.size(); ++r) {
      tops[r] = at;
      at += heights[r] + (rowsBetween_ + 1) * unit;
    }
    at = origin.Left();
    for (size_t c = 0; c < widths.size(); ++c) {
      lefts[c] = at;
      at += widths[c] + columnsBetween_ * unit;
    }
    for (size_t i = 0; i < rows.size(); ++i) {
      if (!drawn[i]) continue;
      const MermaidPlace& place = layout_.Place(static_cast<int>(i));
      auto r = static_cast<size_t>(place.row), c = static_cast<size_t>(place.column);
      drawn[i]->SetLeft(lefts[c] + (widths[c] - sizes[i].first) / 2);
      drawn[i]->SetTop(tops[r] + (heights[r] - sizes[i].second) / 2);
      Colour(*drawn[i], chart_.nodes[i].className);
    }
  }

 private:
  void Colour(Shape& shape, const std::string& className) const {
    const MermaidClass* style = className.empty() ? nullptr : chart_.FindClass(className);
    if (!style) return;
    long fill = ColourOf(style->fill), stroke = ColourOf(style->stroke);
    if (fill >= 0) shape.Fill().ForeColor().SetRGB(fill);
    if (stroke >= 0) shape.Line().ForeColor().SetRGB(stroke);
  }

  const MermaidChart& chart_;
  const MermaidLayout& layout_;
  int rowsBetween_, columnsBetween_;
};

struct Bounds {
  double left = 0, top = 0, right = 0, bottom = 0;
  bool empty = true;
  void Add(double l, double t, double r, double b) {
    if (empty) {
      left = l, top = t, right = r, bottom = b;
      empty = false;
      return;
    }
    left = std::min(left, l), top = std::min(top, t), right = std::max(right, r), bottom = std::max(bottom, b);
  }
};

// A group box round each subgraph's symbols, and round its nested
// subgraphs' boxes, a grid square clear of them; a subgraph with nothing in
// it gets none. Children are boxed before their parents.
void DrawSubgraphs(Worksheet& sheet, const MermaidChart& chart, const std::vector<WizardRow>& rows,
                   const rules::CConfig& config) {
  if (chart.subgraphs.empty()) return;
  office::Shapes shapes = sheet.GetShapes();
  double unit = host::GlobalRowHeight;
  std::vector<Bounds> bounds(chart.subgraphs.size());
  for (size_t s = 0; s < chart.subgraphs.size(); ++s)
    for (const std::string& id : chart.subgraphs[s].nodes) {
      int n = chart.IndexOf(id);
      if (n < 0 || rows[static_cast<size_t>(n)].shapename.empty()) continue;
      Shape shape = shapes.Item(rows[static_cast<size_t>(n)].shapename);
      bounds[s].Add(shape.Left(), shape.Top(), shape.Left() + shape.Width(), shape.Top() + shape.Height());
    }
  shapes::GroupBoxChoices look;
  look.fontName = config.FontName;
  look.fontSize = config.FontSize;
  look.bold = true;
  for (size_t s = chart.subgraphs.size(); s-- > 0;) {
    const MermaidSubgraph& subgraph = chart.subgraphs[s];
    Bounds& box = bounds[s];
    if (box.empty) continue;
    box.left -= unit, box.top -= unit, box.right += unit, box.bottom += unit;
    look.label = subgraph.title.empty() ? subgraph.id : subgraph.title;
    try {
      shapes::DrawGroupBox(sheet, box.left, box.top, box.right - box.left, box.bottom - box.top, look);
    } catch (...) {
      host::ErrorHandler(kSource, "DrawSubgraphs", false);
    }
    for (size_t p = 0; p < s; ++p)
      if (chart.subgraphs[p].id == subgraph.parent) bounds[p].Add(box.left, box.top, box.right, box.bottom);
  }
}

// The wizard's table for the chart: a row per node in order, its edges as
// connections with their labels.
std::vector<WizardRow> RowsOf(const MermaidChart& chart, const MermaidLayout& layout, const FlowchartWizard& wizard) {
  std::vector<WizardRow> rows;
  rows.reserve(chart.nodes.size());
  for (size_t i = 0; i < chart.nodes.size(); ++i) {
    const MermaidNode& node = chart.nodes[i];
    WizardRow row;
    row.entry_id = static_cast<int>(i) + 1;
    row.symbol_id = node.symbol - 1;
    row.style_id = wizard.Symbols().GetStyle(static_cast<int16_t>(node.symbol)) + FlowchartWizard::kStyleOffset;
    row.entry = node.text;
    // Places to draw at first; the arranger gives the final ones.
    row.target_row = kFirstCell + layout.Place(static_cast<int>(i)).row * 8;
    row.target_column = kFirstCell + layout.Place(static_cast<int>(i)).column * 12;
    rows.push_back(std::move(row));
  }
  for (const MermaidEdge& edge : chart.edges) {
    int from = chart.IndexOf(edge.from), to = chart.IndexOf(edge.to);
    if (from < 0 || to < 0) continue;
    WizardRow& row = rows[static_cast<size_t>(from)];
    row.connect_to += (row.connect_to.empty() ? "" : ",") + std::to_string(to + 1);
    row.connect_links.push_back({edge.label, edge.dotted});
  }
  return rows;
}

}  // namespace

MermaidImportResult CMermaidImport::Import(const std::string& text, office::Workbook& book, int rowsBetween,
                                           int columnsBetween) {
  MermaidImportResult result;
  auto began = std::chrono::steady_clock::now();
  MermaidChart chart;
  MermaidError error;
  if (!MermaidReader::Read(text, chart, error)) {
    result.message = "The Mermaid text could not be read:\r\n" + error.Text();
    return result;
  }
  if (chart.nodes.empty()) {
    result.message = "The Mermaid text holds no nodes to draw.";
    return result;
  }
  try {
    if (!host::ExcelApp) throw office::HostError(office::HostError::kOfficeFailure, "no office to draw in");
    MermaidLayout layout(chart);
    office::UndoList::Entry entry(book, kUndoTitle);
    Worksheet sheet = TargetSheet(book);
    sheet.Activate();
    // Records the wizard's shapes and the group boxes as one step.
    office::AddedShapes added(sheet);
    FlowchartWizard wizard(sheet);
    wizard.newSheet = false;
    wizard.rowsBetween = std::clamp(rowsBetween, 0, 10);
    wizard.columnsBetween = std::clamp(columnsBetween, 0, 10);
    // A text is drawn as written.
    wizard.Config().Capitalize = false;
    wizard.Rows() = RowsOf(chart, layout, wizard);
    wizard.arrange = Arranger(chart, layout, wizard.rowsBetween, wizard.columnsBetween);
    wizard.RunFlowchartWizard();
    {
      office::UndoList::Pause drawing(book);
      DrawSubgraphs(sheet, chart, wizard.Rows(), wizard.Config());
    }
    if (wizard.Config().HideGridlines) office::Window(book.Impl()).SetDisplayGridlines(false);
    result.sheet = sheet.Name();
    for (const WizardRow& row : wizard.Rows())
      if (!row.shapename.empty()) ++result.nodes;
    for (const office::ShapeOutline& outline : sheet.GetShapes().Outlines())
      if (outline.connector) ++result.lines;
    result.drawn = result.nodes > 0;
    if (!result.drawn) result.message = "The chart could not be drawn: see the event log.";
  } catch (...) {
    host::ErrObject e = host::CurrentError();
    host::ErrorHandler(kSource, "Import", false, e);
    result.message = "The Mermaid import failed: " + e.Description;
  }
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
  return result;
}

}  // namespace nivarel::tools
