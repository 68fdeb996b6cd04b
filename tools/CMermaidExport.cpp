#include "CMermaidExport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "Characters.h"
#include "ColorFormat.h"
#include "ConnectorFormat.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"

namespace nivarel::tools {

using namespace office;

namespace {

constexpr int kDecision = 63;

struct Box {
  double left = 0, top = 0, width = 0, height = 0;
  double CentreX() const { return left + width / 2; }
  double CentreY() const { return top + height / 2; }
  bool Holds(double x, double y) const { return x >= left && x <= left + width && y >= top && y <= top + height; }
};

Box BoxOf(const Shape& shape) { return {shape.Left(), shape.Top(), shape.Width(), shape.Height()}; }

bool StartsWith(const std::string& text, const char* head) { return text.rfind(head, 0) == 0; }

// The office breaks a shape's lines with "\r", "\n" or both.
std::string PlainText(const Shape& shape) {
  std::string raw;
  try {
    raw = shape.GetTextFrame().GetCharacters().Text();
  } catch (...) {
    return "";
  }
  std::string text;
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\r') {
      text += '\n';
      if (i + 1 < raw.size() && raw[i + 1] == '\n') ++i;
    } else {
      text += raw[i];
    }
  }
  size_t first = text.find_first_not_of(" \t\n"), last = text.find_last_not_of(" \t\n");
  return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

// "#rrggbb" of a colour held red in the low byte.
std::string Hex(long rgb) {
  char out[8];
  std::snprintf(out, sizeof out, "#%02x%02x%02x", static_cast<unsigned>(rgb & 0xFF),
                static_cast<unsigned>((rgb >> 8) & 0xFF), static_cast<unsigned>((rgb >> 16) & 0xFF));
  return out;
}

// The side of box a point lies towards: 0 top, 1 right, 2 bottom, 3 left,
// measured against the box's half sizes so a tall or wide box is fair.
int SideOf(const Box& box, double x, double y) {
  double dx = (x - box.CentreX()) / std::max(1.0, box.width / 2);
  double dy = (y - box.CentreY()) / std::max(1.0, box.height / 2);
  if (std::abs(dx) > std::abs(dy)) return dx > 0 ? 1 : 3;
  return dy > 0 ? 2 : 0;
}

struct Symbol {
  Shape shape;
  Box box;
  std::string id;
};

struct Label {
  Box box;
  std::string text;
};

struct GroupBox {
  Box box;
  std::string title;
};

// A template's swim lane, known by its title section (centred, where the
// title block's sections stand at the left): an upright lane runs down from
// its title across the title's width, a sideways lane (its title turned
// upward) runs right from it across the title's height.
struct Lane {
  Box title;
  std::string text;
  bool sideways = false;
  // Whether a point lies in the lane on the title's page: in line with the
  // title, past it, and no nearer another title of the same line (a lane of
  // the next page takes the points past its own title).
  bool Holds(double x, double y) const {
    if (sideways) return y >= title.top && y <= title.top + title.height && x >= title.left;
    return x >= title.left && x <= title.left + title.width && y >= title.top;
  }
  double Reach(double x, double y) const { return sideways ? x - title.left : y - title.top; }
};

// What a sheet's shapes hold, sorted into their kinds in drawing order.
struct Sorted {
  std::vector<Symbol> symbols;
  std::vector<Shape> connectors;
  std::vector<Label> labels;
  std::vector<GroupBox> groupBoxes;
  std::vector<Lane> lanes;
};

void SortTemplateShape(const Shape& shape, Sorted& into) {
  if (shape.Type() == msoGroup) {
    for (const Shape& member : shape.GroupItems()) SortTemplateShape(member, into);
    return;
  }
  if (shape.Type() != msoAutoShape) return;
  std::string title = PlainText(shape);
  TextFrame frame = shape.GetTextFrame();
  if (title.empty() || frame.HorizontalAlignment() != xlCenter) return;
  into.lanes.push_back({BoxOf(shape), title, frame.Orientation() == msoTextOrientationUpward});
}

void Sort(const std::vector<Shape>& shapes, Sorted& into) {
  for (const Shape& shape : shapes) {
    try {
      std::string name = shape.Name();
      if (name == "Flowchart Key") continue;
      if (StartsWith(name, "TEMPLATE")) {
        SortTemplateShape(shape, into);
        continue;
      }
      int type = shape.Type();
      if (type == msoGroup) {
        Sort(shape.GroupItems(), into);
      } else if (StartsWith(name, "GROUP_BOX_")) {
        into.groupBoxes.push_back({BoxOf(shape), PlainText(shape)});
      } else if (shape.Connector()) {
        into.connectors.push_back(shape);
      } else if (type == msoTextBox) {
        std::string text = PlainText(shape);
        if (!text.empty()) into.labels.push_back({BoxOf(shape), text});
      } else if (type == msoAutoShape) {
        into.symbols.push_back({shape, BoxOf(shape), name});
      }
    } catch (...) {
      // A shape the office cannot describe is no part of the chart.
    }
  }
}

// The index of the symbol that is shape, -1 when none is.
int IndexOf(const std::vector<Symbol>& symbols, const Shape& shape) {
  for (size_t i = 0; i < symbols.size(); ++i)
    if (symbols[i].shape.SameAs(shape)) return static_cast<int>(i);
  return -1;
}

// The label beside a decision on a side: of the labels standing off that
// side and no farther from it than the decision is big, the nearest.
std::string LabelBeside(const Box& decision, int side, const std::vector<Label>& labels) {
  double reach = std::max(decision.width, decision.height);
  const Label* best = nullptr;
  double bestDistance = 0;
  for (const Label& label : labels) {
    double x = label.box.CentreX(), y = label.box.CentreY();
    if (decision.Holds(x, y)) continue;
    // How far the label's centre stands out of the decision across and down.
    double outX = std::max(0.0, std::abs(x - decision.CentreX()) - decision.width / 2);
    double outY = std::max(0.0, std::abs(y - decision.CentreY()) - decision.height / 2);
    int labelSide = outY >= outX ? (y > decision.CentreY() ? 2 : 0) : (x > decision.CentreX() ? 1 : 3);
    double distance = std::hypot(outX, outY);
    if (labelSide != side || distance > reach) continue;
    if (!best || distance < bestDistance) best = &label, bestDistance = distance;
  }
  return best ? best->text : "";
}

}  // namespace

MermaidChart CMermaidExport::Read(const Worksheet& sheet) {
  std::vector<Shape> topLevel;
  Shapes shapes = sheet.GetShapes();
  for (int i = 1, n = shapes.Count(); i <= n; ++i) topLevel.push_back(shapes.Item(i));
  Sorted sorted;
  Sort(topLevel, sorted);

  MermaidChart chart;
  std::set<std::string> taken;
  for (size_t i = 0; i < sorted.symbols.size(); ++i) {
    Symbol& symbol = sorted.symbols[i];
    // Two shapes of one name get ids of their own; the writer numbers an id
    // it cannot write as it stands.
    if (symbol.id.empty() || !taken.insert(symbol.id).second) {
      symbol.id += "#" + std::to_string(i + 1);
      taken.insert(symbol.id);
    }
    MermaidNode node;
    node.id = symbol.id;
    node.text = PlainText(symbol.shape);
    node.symbol = symbol.shape.AutoShapeType();
    std::string fill, stroke;
    try {
      if (symbol.shape.Fill().Visible()) fill = Hex(symbol.shape.Fill().ForeColor().RGB());
      if (symbol.shape.Line().Visible()) stroke = Hex(symbol.shape.Line().ForeColor().RGB());
    } catch (...) {
    }
    if (!fill.empty() || !stroke.empty()) {
      const MermaidClass* known = nullptr;
      for (const MermaidClass& c : chart.classes)
        if (c.fill == fill && c.stroke == stroke) known = &c;
      if (!known) {
        chart.classes.push_back({"style" + std::to_string(chart.classes.size() + 1), fill, stroke});
        known = &chart.classes.back();
      }
      node.className = known->name;
    }
    chart.nodes.push_back(node);
  }

  // Each flow line is sent behind the shapes as it is drawn, so the office
  // holds the lines last drawn first: read backwards, they come in the
  // order they were drawn.
  std::reverse(sorted.connectors.begin(), sorted.connectors.end());
  double across = 0, down = 0;
  for (const Shape& connector : sorted.connectors) {
    try {
      ConnectorFormat glue = connector.GetConnectorFormat();
      std::optional<Shape> begin = glue.BeginConnectedShape(), end = glue.EndConnectedShape();
      if (!begin || !end) continue;
      int from = IndexOf(sorted.symbols, *begin), to = IndexOf(sorted.symbols, *end);
      if (from < 0 || to < 0) continue;
      std::pair<double, double> leaves = glue.BeginPoint();
      LineFormat line = connector.Line();
      // The arrow shows the way; a line drawn backwards carries it at its begin.
      if (line.EndArrowheadStyle() == msoArrowheadNone && line.BeginArrowheadStyle() != msoArrowheadNone) {
        std::swap(from, to);
        leaves = glue.EndPoint();
      }
      MermaidEdge edge;
      edge.from = sorted.symbols[from].id;
      edge.to = sorted.symbols[to].id;
      edge.dotted = line.DashStyle() != msoLineSolid;
      const Symbol& source = sorted.symbols[from];
      if (chart.nodes[from].symbol == kDecision)
        edge.label = LabelBeside(source.box, SideOf(source.box, leaves.first, leaves.second), sorted.labels);
      chart.edges.push_back(edge);
      double dx = sorted.symbols[to].box.CentreX() - source.box.CentreX();
      double dy = sorted.symbols[to].box.CentreY() - source.box.CentreY();
      (std::abs(dx) > std::abs(dy) && dx > 0 ? across : down) += 1;
    } catch (...) {
      // A line the office cannot describe is left out.
    }
  }
  // The text lists the lines by the place of the symbol they leave, those
  // of one symbol in the order they were drawn.
  std::stable_sort(chart.edges.begin(), chart.edges.end(), [&](const MermaidEdge& a, const MermaidEdge& b) {
    return chart.IndexOf(a.from) < chart.IndexOf(b.from);
  });
  if (across > down) chart.direction = MermaidChart::Direction::LeftRight;

  for (size_t i = 0; i < sorted.groupBoxes.size(); ++i) {
    const GroupBox& group = sorted.groupBoxes[i];
    MermaidSubgraph subgraph;
    subgraph.id = "group" + std::to_string(i + 1);
    subgraph.title = group.title;
    for (size_t n = 0; n < sorted.symbols.size(); ++n) {
      const Box& box = sorted.symbols[n].box;
      if (chart.SubgraphOf(chart.nodes[n].id) < 0 && group.box.Holds(box.CentreX(), box.CentreY()))
        subgraph.nodes.push_back(chart.nodes[n].id);
    }
    chart.subgraphs.push_back(subgraph);
  }

  // A lane holding no node is left out: a template repeats its lanes on
  // every page.
  std::vector<MermaidSubgraph> lanes(sorted.lanes.size());
  for (size_t n = 0; n < sorted.symbols.size(); ++n) {
    if (chart.SubgraphOf(chart.nodes[n].id) >= 0) continue;
    double x = sorted.symbols[n].box.CentreX(), y = sorted.symbols[n].box.CentreY();
    int nearest = -1;
    for (size_t l = 0; l < sorted.lanes.size(); ++l)
      if (sorted.lanes[l].Holds(x, y) &&
          (nearest < 0 || sorted.lanes[l].Reach(x, y) < sorted.lanes[nearest].Reach(x, y)))
        nearest = static_cast<int>(l);
    if (nearest >= 0) lanes[nearest].nodes.push_back(chart.nodes[n].id);
  }
  for (size_t l = 0; l < lanes.size(); ++l) {
    if (lanes[l].nodes.empty()) continue;
    lanes[l].id = "lane" + std::to_string(l + 1);
    lanes[l].title = sorted.lanes[l].text;
    chart.subgraphs.push_back(lanes[l]);
  }
  return chart;
}

}  // namespace nivarel::tools
