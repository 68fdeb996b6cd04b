// A sheet's flowchart read as Mermaid text, on real sheets: a chart the
// wizard draws (shapes, lines, a decision's branch labels, a line made
// dashed), the shapes that are no nodes, groups read in place, group boxes
// as subgraphs, colours as classes, and texts that need escaping read back
// equal from the text written.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <tuple>

#include "AddinFixture.h"
#include "MGlobalVariables.h"
#include "CMermaidExport.h"
#include "CTemplateGenerator.h"
#include "CTemplateProperties.h"
#include "ColorFormat.h"
#include "ConnectorFormat.h"
#include "FillFormat.h"
#include "FlowchartWizard.h"
#include "LineFormat.h"
#include "MermaidReader.h"
#include "MermaidWriter.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeRange.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Workbook.h"
#include "Workbooks.h"

namespace nivarel {
namespace {

using namespace office;
using tools::CMermaidExport;
using tools::MermaidChart;

// An edge by its ends' texts: from, to, label, dotted.
using Edge = std::tuple<std::string, std::string, std::string, bool>;

std::set<Edge> EdgesByText(const MermaidChart& chart) {
  std::set<Edge> edges;
  for (const auto& e : chart.edges)
    edges.insert({chart.nodes[chart.IndexOf(e.from)].text, chart.nodes[chart.IndexOf(e.to)].text, e.label, e.dotted});
  return edges;
}

// The chart as the text written says it, read back by the reader.
MermaidChart ReadBack(const MermaidChart& chart) {
  MermaidChart back;
  tools::MermaidError error;
  std::string text = tools::MermaidWriter::Write(chart);
  EXPECT_TRUE(tools::MermaidReader::Read(text, back, error)) << error.Text() << "\n" << text;
  return back;
}

class MermaidExportTest : public testing::AddinFixture {
 protected:
  Shape Add(int type, const std::string& name, const std::string& text, double left, double top) {
    Shape s = sheet_->GetShapes().AddShape(type, left, top, 90, 40);
    s.SetName(name);
    if (!text.empty()) s.GetTextFrame().GetCharacters().SetText(text);
    return s;
  }
  Shape Join(const Shape& from, int fromSite, const Shape& to, int toSite) {
    Shape line = sheet_->GetShapes().AddConnector(msoConnectorStraight, 0, 0, 10, 10);
    line.GetConnectorFormat().BeginConnect(from, fromSite);
    line.GetConnectorFormat().EndConnect(to, toSite);
    line.Line().SetEndArrowheadStyle(msoArrowheadTriangle);
    return line;
  }
  static void Colour(Shape& s, long fill, long line) {
    s.Fill().SetVisible(true);
    s.Fill().ForeColor().SetRGB(fill);
    s.Line().SetVisible(true);
    s.Line().ForeColor().SetRGB(line);
  }
};

// The wizard draws a decision with Yes on its bottom branch and No on its
// right: the line down to the symbol below carries Yes, the line right to
// the symbol beside it No. Every symbol is a node with its shape and text,
// every line an edge; the line a user made dashed is dotted. Most lines run
// down, so the chart is top down; the text written reads back the same.
TEST_F(MermaidExportTest, TheWizardsChartWithItsBranchLabelsAndADashedLine) {
  auto settings = testing::ShippedSettings("mermaid-export");
  sheet_->GetRange("B2").SetValue("Receive order");
  sheet_->GetRange("B6").SetValue("In stock?");
  sheet_->GetRange("B10").SetValue("Ship order");
  sheet_->GetRange("F6").SetValue("Order from supplier");
  sheet_->GetRange("B14").SetValue("Close");
  tools::FlowchartWizard wizard(*sheet_);
  wizard.newSheet = false;
  wizard.addSpacing = false;
  wizard.InitializeGrid();
  auto& rows = wizard.Rows();
  ASSERT_EQ(5u, rows.size());
  std::map<std::string, tools::WizardRow*> row;
  for (auto& r : rows) row[r.entry] = &r;
  ASSERT_EQ(5u, row.size());
  row["Receive order"]->connect_to = "\"In stock\"";
  row["In stock?"]->symbol_id = msoShapeFlowchartDecision - 1;
  row["In stock?"]->connect_to = "\"Ship order\", \"supplier\"";
  row["In stock?"]->branchbottom = "Yes";
  row["In stock?"]->branchright = "No";
  row["In stock?"]->branchtop = row["In stock?"]->branchleft = "";
  row["Ship order"]->connect_to = "\"Close\"";
  row["Order from supplier"]->connect_to = "";
  row["Close"]->symbol_id = msoShapeFlowchartTerminator - 1;
  row["Close"]->connect_to = "";
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();

  // The user dashes the last line.
  MermaidChart before = CMermaidExport::Read(*sheet_);
  Shapes shapes = sheet_->GetShapes();
  int dashed = 0;
  for (int i = 1; i <= shapes.Count(); ++i) {
    Shape s = shapes.Item(i);
    if (!s.Connector()) continue;
    std::optional<Shape> end = s.GetConnectorFormat().EndConnectedShape();
    if (end && end->GetTextFrame().GetCharacters().Text() == "Close") {
      s.Line().SetDashStyle(msoLineDash);
      ++dashed;
    }
  }
  ASSERT_EQ(1, dashed);

  MermaidChart chart = CMermaidExport::Read(*sheet_);
  std::map<std::string, int> symbols;
  for (const auto& n : chart.nodes) symbols[n.text] = n.symbol;
  EXPECT_EQ((std::map<std::string, int>{{"Receive order", msoShapeFlowchartProcess},
                                        {"In stock?", msoShapeFlowchartDecision},
                                        {"Ship order", msoShapeFlowchartProcess},
                                        {"Order from supplier", msoShapeFlowchartProcess},
                                        {"Close", msoShapeFlowchartTerminator}}),
            symbols)
      << "the labels Yes and No are no nodes";
  EXPECT_EQ((std::set<Edge>{{"Receive order", "In stock?", "", false},
                            {"In stock?", "Ship order", "Yes", false},
                            {"In stock?", "Order from supplier", "No", false},
                            {"Ship order", "Close", "", true}}),
            EdgesByText(chart));
  EXPECT_FALSE(EdgesByText(before).count({"Ship order", "Close", "", true})) << "solid before it was dashed";
  EXPECT_EQ(MermaidChart::Direction::TopDown, chart.direction);
  const std::string text = tools::MermaidWriter::Write(chart);
  EXPECT_NE(std::string::npos, text.find("-->|Yes|")) << text;
  EXPECT_NE(std::string::npos, text.find("-->|No|")) << text;

  MermaidChart back = ReadBack(chart);
  EXPECT_EQ(EdgesByText(chart), EdgesByText(back));
  ASSERT_EQ(chart.nodes.size(), back.nodes.size());
  for (size_t i = 0; i < chart.nodes.size(); ++i) {
    EXPECT_EQ(chart.nodes[i].text, back.nodes[i].text);
    EXPECT_EQ(chart.nodes[i].symbol, back.nodes[i].symbol);
  }
}

// Group members are nodes where their group stands, and the group stays
// whole; the symbol key, a template's shapes, a text box and a group box are
// no nodes. The group box is a subgraph of its title holding the node whose
// centre is inside it. Each pair of fill and line colour is a class, named
// in the order met. Lines running right make the chart left to right; a
// line with a free end is no edge.
TEST_F(MermaidExportTest, WhatIsANodeSubgraphsClassesAndDirection) {
  const long red = 0x0000FF, green = 0x00FF00, black = 0;
  Shape box = Add(msoShapeFlowchartProcess, "GROUP_BOX_Packing", "Packing", 280, 20);
  box.SetWidth(160);
  box.SetHeight(120);
  Shape a = Add(msoShapeFlowchartProcess, "A", "Take", 40, 60);
  Shape b = Add(msoShapeFlowchartProcess, "B", "Check", 160, 60);
  Shape c = Add(msoShapeFlowchartData, "C", "Pack", 310, 60);
  Shape d = Add(msoShapeFlowchartDecision, "D", "Paid?", 480, 60);
  Shape e = Add(msoShapeFlowchartTerminator, "E", "End", 600, 60);
  for (Shape* s : {&a, &b, &d, &e}) Colour(*s, red, black);
  Colour(c, green, black);
  Join(a, 4, b, 2);
  Join(b, 4, c, 2);
  Join(c, 4, d, 2);
  Join(d, 4, e, 2);
  Shape loose = sheet_->GetShapes().AddConnector(msoConnectorStraight, 40, 200, 120, 200);
  loose.GetConnectorFormat().BeginConnect(a, 3);
  sheet_->GetShapes().GetRange({"D", "E"}).Group().SetName("Tail");
  Add(msoShapeFlowchartProcess, "TEMPLATE_Lane", "Lane 1", 40, 300);
  Add(msoShapeRectangle, "Key box", "Flowchart Key", 300, 300);
  Add(msoShapeFlowchartProcess, "Key symbol", "Process", 320, 340);
  sheet_->GetShapes().GetRange({"Key box", "Key symbol"}).Group().SetName("Flowchart Key");
  sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 40, 120, 80, 20).GetTextFrame().GetCharacters().SetText(
      "A note");

  MermaidChart chart = CMermaidExport::Read(*sheet_);
  std::vector<std::string> ids;
  for (const auto& n : chart.nodes) ids.push_back(n.id);
  EXPECT_EQ((std::vector<std::string>{"A", "B", "C", "D", "E"}), ids);
  EXPECT_EQ(msoShapeFlowchartData, chart.nodes[2].symbol);
  int tails = 0;
  for (int i = 1; i <= sheet_->GetShapes().Count(); ++i) {
    Shape s = sheet_->GetShapes().Item(i);
    if (s.Name() == "Tail" && s.Type() == msoGroup && s.GroupItems().size() == 2) ++tails;
  }
  EXPECT_EQ(1, tails) << "the group Tail is read in place, not opened";
  EXPECT_EQ((std::set<Edge>{{"Take", "Check", "", false},
                            {"Check", "Pack", "", false},
                            {"Pack", "Paid?", "", false},
                            {"Paid?", "End", "", false}}),
            EdgesByText(chart));
  EXPECT_EQ(MermaidChart::Direction::LeftRight, chart.direction);
  ASSERT_EQ(1u, chart.subgraphs.size());
  EXPECT_EQ("Packing", chart.subgraphs[0].title);
  EXPECT_EQ(std::vector<std::string>{"C"}, chart.subgraphs[0].nodes);
  EXPECT_EQ((std::vector<tools::MermaidClass>{{"style1", "#ff0000", "#000000"}, {"style2", "#00ff00", "#000000"}}),
            chart.classes);
  std::vector<std::string> classes;
  for (const auto& n : chart.nodes) classes.push_back(n.className);
  EXPECT_EQ((std::vector<std::string>{"style1", "style1", "style2", "style1", "style1"}), classes);

  std::string text = tools::MermaidWriter::Write(chart);
  EXPECT_NE(std::string::npos, text.find("flowchart LR")) << text;
  EXPECT_NE(std::string::npos, text.find("classDef style2 fill:#00ff00,stroke:#000000")) << text;
  EXPECT_EQ(chart.subgraphs[0].title, ReadBack(chart).subgraphs.at(0).title);
}

// Texts with quotes, "#", "|", brackets, non-ASCII letters and a line break
// come back equal from the text written; a name Mermaid can take stays the
// node's id, one it cannot is numbered, and the edge between still holds.
// A line whose arrow is at its begin is an edge the way its arrow points.
TEST_F(MermaidExportTest, TextsThatNeedEscapingComeBackEqual) {
  const std::vector<std::string> texts = {"Say \"hello\" #1", "a | b [c] {d} (e)", "Grüße, čaj\nzweite Zeile",
                                          "x < y > z `q` *"};
  std::vector<Shape> made;
  for (size_t i = 0; i < texts.size(); ++i)
    made.push_back(Add(msoShapeFlowchartProcess, i == 0 ? "Step-1" : "Step " + std::to_string(i + 1), texts[i], 60,
                       40 + 80.0 * i));
  for (size_t i = 0; i + 2 < made.size(); ++i) Join(made[i], 3, made[i + 1], 1);
  // The last line drawn from the lower symbol up, its arrow at its begin.
  Shape up = Join(made[3], 1, made[2], 3);
  up.Line().SetEndArrowheadStyle(msoArrowheadNone);
  up.Line().SetBeginArrowheadStyle(msoArrowheadTriangle);

  MermaidChart chart = CMermaidExport::Read(*sheet_);
  std::string text = tools::MermaidWriter::Write(chart);
  MermaidChart back = ReadBack(chart);
  ASSERT_EQ(texts.size(), back.nodes.size()) << text;
  for (size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(texts[i], back.nodes[i].text) << text;
  EXPECT_EQ("Step-1", back.nodes[0].id);
  EXPECT_EQ("N2", back.nodes[1].id);
  EXPECT_EQ(EdgesByText(chart), EdgesByText(back));
  EXPECT_EQ(3u, back.edges.size());
  EXPECT_TRUE(EdgesByText(back).count({texts[2], texts[3], "", false})) << text;
}

// A template's upright lanes drawn as shapes, under a title block whose
// sections carry labels too: a symbol in the first lane and one in the
// third give a subgraph for each of those lanes, titled as the lane, and
// none for the empty lanes or the title block's sections.
TEST_F(MermaidExportTest, ATemplatesSwimLanesHoldingSymbolsAreSubgraphs) {
  host::InitializeGlobals();
  host::SetGlobalRowHeight();
  std::string folder = testing::ConfigHome() + "/mermaid-templates";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  templates::CTemplateProperties p;
  p.TemplateFolder(folder);
  p.TemplateName("Lanes");
  p.PaperSize(1);
  p.Orientation(1);
  p.NumberOfPages(1);
  p.TemplateLineStyle(1);
  p.TemplateFontName("DejaVu Sans");
  p.TemplateFontSize(10);
  p.MaxSwimLaneCount(10);
  p.MaxTitleBlockRows(3);
  p.MaxTitleBlockSections(3);
  p.UseShapesForSwimLanes(true);
  p.TemplateType(templates::CTemplateProperties::VerticalSwimLanes);
  p.SwimLaneCount(3);
  for (int lane = 1; lane <= 3; ++lane) p.SetSwimLaneTitle(lane, "Lane " + std::to_string(lane));
  p.AddHeader(true);
  p.HeaderRowCount(1);
  p.SetHeaderSectionCount(1, 2);
  p.SetHeaderRowLabel(1, 1, "Title");
  p.SetHeaderRowLabel(1, 2, "Owner");
  std::optional<Workbook> made = templates::CTemplateGenerator().CreateTemplate(p);
  ASSERT_TRUE(made.has_value());
  Worksheet ws = made->Sheet(1);
  // The lanes' titles, left to right: where the symbols go.
  std::vector<Shape> titles;
  std::function<void(const std::vector<Shape>&)> find = [&](const std::vector<Shape>& shapes) {
    for (const Shape& s : shapes) {
      if (s.Type() == msoGroup) find(s.GroupItems());
      else if (s.GetTextFrame().GetCharacters().Text().rfind("Lane ", 0) == 0) titles.push_back(s);
    }
  };
  std::vector<Shape> top;
  for (int i = 1; i <= ws.GetShapes().Count(); ++i) top.push_back(ws.GetShapes().Item(i));
  find(top);
  ASSERT_EQ(3u, titles.size());
  auto below = [&](const Shape& title, const std::string& name, double down) {
    Shape s = ws.GetShapes().AddShape(msoShapeFlowchartProcess, title.Left() + title.Width() / 2 - 30,
                                      title.Top() + title.Height() + down, 60, 30);
    s.SetName(name);
    s.GetTextFrame().GetCharacters().SetText(name);
    return s;
  };
  std::map<std::string, Shape> byText;
  for (const Shape& t : titles) byText.emplace(t.GetTextFrame().GetCharacters().Text(), t);
  below(byText.at("Lane 1"), "First", 40);
  below(byText.at("Lane 1"), "Second", 120);
  below(byText.at("Lane 3"), "Third", 80);

  MermaidChart chart = CMermaidExport::Read(ws);
  EXPECT_EQ(3u, chart.nodes.size()) << "the template's shapes are no nodes";
  std::map<std::string, std::vector<std::string>> lanes;
  for (const auto& g : chart.subgraphs) lanes[g.title] = g.nodes;
  EXPECT_EQ((std::map<std::string, std::vector<std::string>>{{"Lane 1", {"First", "Second"}}, {"Lane 3", {"Third"}}}),
            lanes);
  made->Close();
}

// A group box drawn by Insert Group Box over B2:E6 is a subgraph titled as
// the box, holding the symbol whose centre lies in the range and not the
// one beside it; the box itself is no node.
TEST_F(MermaidExportTest, AGroupBoxFromItsDialogIsASubgraphOfItsTitle) {
  Range inside = sheet_->GetRange("C3"), outside = sheet_->GetRange("H3");
  Add(msoShapeFlowchartProcess, "Pack", "Pack the order", inside.Left(), inside.Top());
  Add(msoShapeFlowchartProcess, "Ship", "Ship it", outside.Left(), outside.Top());
  sheet_->GetRange("B2:E6").Select();
  Drive([&] { Ui().RunCommand("vnd.nivarel:rxNivarelInsertGroupBox", true); }, " Insert Group Box", [&] {
    TypeBeside("Group Box Label", "Packing \"A\"");
    Ui().ClickInDialog("OK");
  });

  MermaidChart chart = CMermaidExport::Read(*sheet_);
  ASSERT_EQ(2u, chart.nodes.size()) << host::ReadLogFile();
  ASSERT_EQ(1u, chart.subgraphs.size());
  EXPECT_EQ("Packing \"A\"", chart.subgraphs[0].title);
  EXPECT_EQ(std::vector<std::string>{"Pack"}, chart.subgraphs[0].nodes);
  MermaidChart back = ReadBack(chart);
  ASSERT_EQ(1u, back.subgraphs.size());
  EXPECT_EQ("Packing \"A\"", back.subgraphs[0].title);
  EXPECT_EQ(std::vector<std::string>{"Pack"}, back.subgraphs[0].nodes);
}

}  // namespace
}  // namespace nivarel
