// A large Mermaid chart imported into a real sheet, read back from the
// office's own shapes: 200 nodes with 20 decisions, merges and loops, drawn
// as 200 symbols of their nodes' shapes, no two of them overlapping, every
// edge a line glued at both ends to the symbols of its nodes, and each
// decision's Yes and No labels beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

#include "AddinFixture.h"
#include "CMermaidImport.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "MGlobalVariables.h"
#include "MermaidReader.h"
#include "MermaidSample.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using namespace office;
using tools::MermaidChart;

struct Box {
  std::string name, text;
  int autoShapeType = 0;
  double left = 0, top = 0, right = 0, bottom = 0;
};

Box BoxOf(const Shape& shape) {
  Box box;
  box.name = shape.Name();
  box.text = shape.GetTextFrame().GetCharacters().Text();
  box.autoShapeType = shape.AutoShapeType();
  box.left = shape.Left();
  box.top = shape.Top();
  box.right = box.left + shape.Width();
  box.bottom = box.top + shape.Height();
  return box;
}

bool Overlap(const Box& a, const Box& b) {
  const double slack = 0.01;  // edges that touch do not overlap
  return a.left < b.right - slack && b.left < a.right - slack && a.top < b.bottom - slack && b.top < a.bottom - slack;
}

// The gap between two rectangles, 0 when they touch or overlap.
double Gap(const Box& a, const Box& b) {
  double dx = std::max({0.0, b.left - a.right, a.left - b.right});
  double dy = std::max({0.0, b.top - a.bottom, a.top - b.bottom});
  return std::hypot(dx, dy);
}

// What the office holds on the sheet, sorted by kind.
struct Drawing {
  std::vector<Box> symbols, labels;
  std::vector<Shape> lines;
  int others = 0;
};

Drawing Read(const Worksheet& sheet) {
  Drawing drawing;
  Shapes shapes = sheet.GetShapes();
  for (int i = 1, n = shapes.Count(); i <= n; ++i) {
    Shape s = shapes.Item(i);
    if (s.Connector())
      drawing.lines.push_back(s);
    else if (s.Type() == msoTextBox)
      drawing.labels.push_back(BoxOf(s));
    else if (s.Type() == msoAutoShape && s.Name().rfind("GROUP_BOX_", 0) != 0)
      drawing.symbols.push_back(BoxOf(s));
    else
      ++drawing.others;
  }
  return drawing;
}

class MermaidLargeImportTest : public testing::AddinFixture {};

// The sample's chart imported: each node one symbol of its shape holding
// its text, none on top of another; each edge one glued line between the
// symbols of its ends (the reader's chart says which: it is tested on its
// own); a Yes and a No label next to every decision and nowhere else.
TEST_F(MermaidLargeImportTest, TwoHundredNodesWithTwentyDecisions) {
  auto settings = testing::ShippedSettings("mermaid-large-import");
  const std::string text = testing::MermaidSample(200, 20);
  MermaidChart chart;
  tools::MermaidError error;
  ASSERT_TRUE(tools::MermaidReader::Read(text, chart, error)) << error.Text();
  ASSERT_EQ(200u, chart.nodes.size());
  std::map<std::string, int> symbolOf;  // node text to its shape
  for (const auto& node : chart.nodes) symbolOf[node.text] = node.symbol;
  ASSERT_EQ(200u, symbolOf.size()) << "the sample's texts name their nodes";
  int decisions = 0;
  for (const auto& node : chart.nodes)
    if (node.symbol == msoShapeFlowchartDecision) ++decisions;
  ASSERT_EQ(20, decisions);

  tools::MermaidImportResult result = tools::CMermaidImport::Import(text, *book_);
  ASSERT_TRUE(result.drawn) << result.message << "\n" << host::ReadLogFile();
  std::optional<Worksheet> sheet = book_->SheetNamed(result.sheet);
  ASSERT_TRUE(sheet) << result.sheet;
  Drawing drawing = Read(*sheet);
  EXPECT_EQ(0, drawing.others) << "no group boxes, pictures or groups";

  // The symbols: one per node, of the node's shape.
  ASSERT_EQ(200u, drawing.symbols.size());
  std::map<std::string, const Box*> byName, byText;
  for (const Box& box : drawing.symbols) {
    byName[box.name] = &box;
    byText[box.text] = &box;
    auto node = symbolOf.find(box.text);
    if (node == symbolOf.end())
      ADD_FAILURE() << "a symbol holds '" << box.text << "', which is no node's text";
    else
      EXPECT_EQ(node->second, box.autoShapeType) << box.text;
  }
  EXPECT_EQ(200u, byText.size()) << "each node's text in one symbol";

  // No two symbols overlap.
  int overlaps = 0;
  for (size_t a = 0; a < drawing.symbols.size(); ++a)
    for (size_t b = a + 1; b < drawing.symbols.size(); ++b)
      if (Overlap(drawing.symbols[a], drawing.symbols[b]) && ++overlaps <= 5)
        ADD_FAILURE() << "'" << drawing.symbols[a].text << "' overlaps '" << drawing.symbols[b].text << "'";
  EXPECT_EQ(0, overlaps);

  // Every edge a line glued at both ends, and no line besides.
  std::multiset<std::pair<std::string, std::string>> wanted, glued;
  for (const auto& edge : chart.edges)
    wanted.insert({chart.nodes[chart.IndexOf(edge.from)].text, chart.nodes[chart.IndexOf(edge.to)].text});
  ASSERT_EQ(219u, wanted.size()) << "149 down the main flow, 70 in and out of the branches";
  for (const Shape& line : drawing.lines) {
    ConnectorFormat glue = line.GetConnectorFormat();
    std::optional<Shape> from = glue.BeginConnected() ? glue.BeginConnectedShape() : std::nullopt;
    std::optional<Shape> to = glue.EndConnected() ? glue.EndConnectedShape() : std::nullopt;
    if (!from || !to || !byName.count(from->Name()) || !byName.count(to->Name())) {
      ADD_FAILURE() << "the line " << line.Name() << " is not glued to two symbols at its ends";
      continue;
    }
    glued.insert({byName[from->Name()]->text, byName[to->Name()]->text});
  }
  EXPECT_EQ(wanted.size(), drawing.lines.size());
  std::vector<std::pair<std::string, std::string>> missing, extra;
  std::set_difference(wanted.begin(), wanted.end(), glued.begin(), glued.end(), std::back_inserter(missing));
  std::set_difference(glued.begin(), glued.end(), wanted.begin(), wanted.end(), std::back_inserter(extra));
  for (size_t i = 0; i < missing.size() && i < 5; ++i)
    ADD_FAILURE() << "no line from '" << missing[i].first << "' to '" << missing[i].second << "'";
  for (size_t i = 0; i < extra.size() && i < 5; ++i)
    ADD_FAILURE() << "a line no edge asks for, from '" << extra[i].first << "' to '" << extra[i].second << "'";

  // The labels: each within a grid square of the decision nearest it and
  // clear of every symbol; each decision with one Yes and one No, each
  // turned more towards the symbol its own edge leads to than towards the
  // other branch's.
  std::map<std::string, std::map<std::string, std::string>> targetOf;  // decision, label: target
  for (const auto& edge : chart.edges)
    if (!edge.label.empty())
      targetOf[chart.nodes[chart.IndexOf(edge.from)].text][edge.label] = chart.nodes[chart.IndexOf(edge.to)].text;
  const double unit = host::GlobalRowHeight;
  auto angle = [](const Box& from, const Box& to) {
    return std::atan2((to.top + to.bottom - from.top - from.bottom) / 2, (to.left + to.right - from.left - from.right) / 2);
  };
  auto apart = [](double a, double b) { return std::abs(std::remainder(a - b, 2 * M_PI)); };
  std::map<std::string, std::multiset<std::string>> labelsOf;
  for (const Box& label : drawing.labels) {
    const Box* nearest = nullptr;
    for (const Box& symbol : drawing.symbols) {
      if (Overlap(label, symbol)) ADD_FAILURE() << "the label '" << label.text << "' covers '" << symbol.text << "'";
      if (symbol.autoShapeType == msoShapeFlowchartDecision && (!nearest || Gap(label, symbol) < Gap(label, *nearest)))
        nearest = &symbol;
    }
    ASSERT_TRUE(nearest);
    EXPECT_LE(Gap(label, *nearest), unit + 0.5) << "'" << label.text << "' beside '" << nearest->text << "'";
    labelsOf[nearest->text].insert(label.text);
    const auto& targets = targetOf[nearest->text];
    if (targets.size() != 2 || !targets.count(label.text)) continue;  // told below
    const Box* own = byText[targets.at(label.text)];
    const Box* other = byText[targets.at(label.text == "Yes" ? "No" : "Yes")];
    if (!own || !other) continue;  // told above
    EXPECT_LT(apart(angle(*nearest, label), angle(*nearest, *own)), apart(angle(*nearest, label), angle(*nearest, *other)))
        << "'" << label.text << "' of '" << nearest->text << "' is turned towards '" << other->text << "'";
  }
  for (const auto& node : chart.nodes) {
    if (node.symbol != msoShapeFlowchartDecision) continue;
    EXPECT_EQ((std::multiset<std::string>{"No", "Yes"}), labelsOf[node.text]) << node.text;
  }
  EXPECT_EQ(40u, drawing.labels.size());
}

}  // namespace
}  // namespace nivarel
