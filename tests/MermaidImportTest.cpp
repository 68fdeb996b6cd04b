// Mermaid text drawn on real sheets by the import: where a decision's
// branches, lines and labels go, texts that need escaping, subgraphs and
// classes, text that is not Mermaid, and the undo list.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "AddinFixture.h"
#include "CMermaidExport.h"
#include "CMermaidImport.h"
#include "ColorFormat.h"
#include "ConnectorFormat.h"
#include "FillFormat.h"
#include "LineFormat.h"
#include "MermaidReader.h"
#include "MermaidWriter.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel {
namespace {

using namespace office;
using tools::CMermaidImport;

// A shape's text with the office's line breaks made "\n".
std::string TextOf(const Shape& shape) {
  std::string raw = shape.GetTextFrame().GetCharacters().Text(), text;
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n') continue;
    text += raw[i] == '\r' ? '\n' : raw[i];
  }
  return text;
}

struct Drawn {
  std::vector<Shape> symbols, lines, labels, boxes;
};

Drawn Read(const Worksheet& sheet) {
  Drawn drawn;
  Shapes shapes = sheet.GetShapes();
  for (int i = 1; i <= shapes.Count(); ++i) {
    Shape s = shapes.Item(i);
    if (s.Name().rfind("GROUP_BOX_", 0) == 0)
      drawn.boxes.push_back(s);
    else if (s.Connector())
      drawn.lines.push_back(s);
    else if (s.Type() == msoTextBox)
      drawn.labels.push_back(s);
    else
      drawn.symbols.push_back(s);
  }
  return drawn;
}

std::optional<Shape> WithText(const std::vector<Shape>& shapes, const std::string& text) {
  for (const Shape& s : shapes)
    if (TextOf(s) == text) return s;
  return std::nullopt;
}

double CentreX(const Shape& s) { return s.Left() + s.Width() / 2; }
double CentreY(const Shape& s) { return s.Top() + s.Height() / 2; }

class MermaidImportTest : public testing::AddinFixture {};

// A decision's first branch goes below it, its second to the next column
// and one row down. The Yes line leaves by the decision's bottom and its
// label stands below; the No line leaves by the right side and its label
// stands to the right. Both lines are glued at both ends and end in an
// arrowhead; the chart goes on the empty active sheet.
TEST_F(MermaidImportTest, YesGoesBelowAndNoToTheRightWithTheirLabelsAndGluedLines) {
  auto settings = testing::ShippedSettings("mermaid-import");
  tools::MermaidImportResult result = CMermaidImport::Import(
      "flowchart TD\n"
      "  q{Is it in stock?} -->|Yes| s[Ship the order]\n"
      "  q -->|No| o[Order from the supplier]\n",
      *book_);
  ASSERT_TRUE(result.drawn) << result.message;
  EXPECT_EQ(sheet_->Name(), result.sheet);
  Drawn drawn = Read(*sheet_);
  ASSERT_EQ(3u, drawn.symbols.size());
  ASSERT_EQ(2u, drawn.lines.size());
  std::optional<Shape> q = WithText(drawn.symbols, "Is it in stock?"), s = WithText(drawn.symbols, "Ship the order"),
                       o = WithText(drawn.symbols, "Order from the supplier");
  ASSERT_TRUE(q && s && o);
  EXPECT_EQ(msoShapeFlowchartDecision, q->AutoShapeType());
  EXPECT_EQ(msoShapeFlowchartProcess, s->AutoShapeType());

  EXPECT_NEAR(CentreX(*q), CentreX(*s), 1.0);
  EXPECT_GT(s->Top(), q->Top() + q->Height());
  EXPECT_GT(o->Left(), q->Left() + q->Width());
  EXPECT_GT(o->Top(), q->Top() + q->Height());
  EXPECT_NEAR(s->Top(), o->Top(), 1.0);

  std::optional<Shape> yes = WithText(drawn.labels, "Yes"), no = WithText(drawn.labels, "No");
  ASSERT_TRUE(yes && no);
  EXPECT_GT(CentreY(*yes), q->Top() + q->Height());
  EXPECT_LT(CentreY(*yes), s->Top());
  EXPECT_GT(CentreX(*no), q->Left() + q->Width());
  EXPECT_LT(CentreY(*no), o->Top());

  for (const Shape& line : drawn.lines) {
    ConnectorFormat glue = line.GetConnectorFormat();
    std::optional<Shape> from = glue.BeginConnectedShape(), to = glue.EndConnectedShape();
    ASSERT_TRUE(from && to);
    EXPECT_TRUE(from->SameAs(*q));
    EXPECT_NE(msoArrowheadNone, line.Line().EndArrowheadStyle());
    auto [x, y] = glue.BeginPoint();
    if (to->SameAs(*s)) {
      EXPECT_NEAR(q->Top() + q->Height(), y, 1.5);
      EXPECT_NEAR(CentreX(*q), x, 1.5);
    } else {
      EXPECT_TRUE(to->SameAs(*o));
      EXPECT_NEAR(q->Left() + q->Width(), x, 1.5);
      EXPECT_NEAR(CentreY(*q), y, 1.5);
    }
  }
}

// Texts with quotes, the number sign, the bar, brackets, braces, a line
// break and letters beyond ASCII stand on the symbols as meant, and the
// sheet written out and read again gives the same texts, shapes and edges.
TEST_F(MermaidImportTest, AwkwardTextsSurviveTheRoundTrip) {
  auto settings = testing::ShippedSettings("mermaid-import");
  const std::vector<std::string> meant = {"He said \"stop\"", "Item #1 | [draft] {v2}", "Ärger über Öl – naïve café",
                                          "Two\nlines", "(a) & <b>"};
  tools::MermaidImportResult result = CMermaidImport::Import(
      "flowchart TD\n"
      "  a[\"He said #quot;stop#quot;\"] --> b[\"Item #35;1 #124; [draft] {v2}\"]\n"
      "  b --> c{\"Ärger über Öl – naïve café\"}\n"
      "  c -->|\"Ja | [ok]\"| d[/\"Two<br>lines\"/]\n"
      "  c -. \"Nein #quot;x#quot;\" .-> e([\"(a) & #lt;b#gt;\"])\n",
      *book_);
  ASSERT_TRUE(result.drawn) << result.message;
  Drawn drawn = Read(*sheet_);
  ASSERT_EQ(5u, drawn.symbols.size());
  for (const std::string& text : meant) EXPECT_TRUE(WithText(drawn.symbols, text)) << text;
  EXPECT_TRUE(WithText(drawn.labels, "Ja | [ok]"));
  EXPECT_TRUE(WithText(drawn.labels, "Nein \"x\""));

  tools::MermaidChart back, chart = tools::CMermaidExport::Read(*sheet_);
  tools::MermaidError error;
  ASSERT_TRUE(tools::MermaidReader::Read(tools::MermaidWriter::Write(chart), back, error)) << error.Text();
  ASSERT_EQ(5u, back.nodes.size());
  std::vector<std::string> texts;
  for (const auto& node : back.nodes) texts.push_back(node.text);
  EXPECT_EQ(std::vector<std::string>(meant.begin(), meant.end()), texts);
  EXPECT_EQ(msoShapeFlowchartData, back.nodes[3].symbol);
  EXPECT_EQ(msoShapeFlowchartTerminator, back.nodes[4].symbol);
  ASSERT_EQ(4u, back.edges.size());
  EXPECT_EQ("Ja | [ok]", back.edges[2].label);
  EXPECT_FALSE(back.edges[2].dotted);
  EXPECT_EQ("Nein \"x\"", back.edges[3].label);
  EXPECT_TRUE(back.edges[3].dotted);
}

// A subgraph becomes a group box with its title, round its own symbols and
// clear of the others; a class's colours fill and outline its symbols.
TEST_F(MermaidImportTest, SubgraphsBecomeGroupBoxesAndClassesColourTheirSymbols) {
  auto settings = testing::ShippedSettings("mermaid-import");
  tools::MermaidImportResult result = CMermaidImport::Import(
      "flowchart TD\n"
      "  start([Start]) --> pick[Pick the items]\n"
      "  subgraph store [Warehouse]\n"
      "    pick --> pack[Pack the parcel]\n"
      "  end\n"
      "  pack --> stop([End])\n"
      "  classDef hot fill:#FFCC00,stroke:#cc0000\n"
      "  class pick hot\n",
      *book_);
  ASSERT_TRUE(result.drawn) << result.message;
  Drawn drawn = Read(*sheet_);
  ASSERT_EQ(1u, drawn.boxes.size());
  const Shape& box = drawn.boxes[0];
  EXPECT_EQ("Warehouse", TextOf(box));
  for (const Shape& symbol : drawn.symbols) {
    bool inside = symbol.Left() > box.Left() && symbol.Top() > box.Top() &&
                  symbol.Left() + symbol.Width() < box.Left() + box.Width() &&
                  symbol.Top() + symbol.Height() < box.Top() + box.Height();
    bool member = TextOf(symbol) == "Pick the items" || TextOf(symbol) == "Pack the parcel";
    EXPECT_EQ(member, inside) << TextOf(symbol);
  }
  std::optional<Shape> pick = WithText(drawn.symbols, "Pick the items"), pack = WithText(drawn.symbols, "Pack the parcel");
  ASSERT_TRUE(pick && pack);
  // Red in the low byte: #ffcc00 is 0x00ccff, #cc0000 is 0x0000cc.
  EXPECT_EQ(0x00CCFF, pick->Fill().ForeColor().RGB());
  EXPECT_EQ(0x0000CC, pick->Line().ForeColor().RGB());
  EXPECT_NE(0x00CCFF, pack->Fill().ForeColor().RGB());
}

// Text that is not Mermaid draws nothing and is told with its line: an
// unclosed bracket, an arrow Mermaid has not got. Neither the sheet, the
// workbook's sheets nor the undo list change.
TEST_F(MermaidImportTest, TextThatIsNotMermaidIsToldByLineAndDrawsNothing) {
  auto settings = testing::ShippedSettings("mermaid-import");
  sheet_->GetShapes().AddShape(msoShapeRectangle, 10, 10, 50, 20);
  int sheets = book_->SheetCount();
  std::vector<std::string> undo = UndoList(*book_).Titles();
  struct Case {
    const char* text;
    const char* line;
  };
  for (const Case& c : {Case{"flowchart TD\n  a[Start] --> b[Check the order\n  b --> c[End]\n", "line 2:"},
                        Case{"flowchart LR\n  a --> b\n\n  b ~> c\n", "line 4:"}}) {
    tools::MermaidImportResult result = CMermaidImport::Import(c.text, *book_);
    EXPECT_FALSE(result.drawn) << c.text;
    EXPECT_NE(std::string::npos, result.message.find(c.line)) << result.message;
    EXPECT_EQ(1, sheet_->GetShapes().Count());
    EXPECT_EQ(sheets, book_->SheetCount());
    EXPECT_EQ(undo, UndoList(*book_).Titles());
  }
}

// An import beside a chart goes on a new sheet, as one entry of the undo
// list: Ctrl+Z takes the sheet and its shapes away, Ctrl+Y brings them back.
TEST_F(MermaidImportTest, AnImportIsOneUndoEntryOnANewSheetBesideAChart) {
  auto settings = testing::ShippedSettings("mermaid-import");
  sheet_->GetRange("B2").SetValue("Steps of another chart");
  int sheets = book_->SheetCount();
  size_t entries = UndoList(*book_).Titles().size();
  tools::MermaidImportResult result =
      CMermaidImport::Import("graph LR\n  a[One] --> b{Two?} -->|Yes| c[Three]\n  b -->|No| a\n", *book_);
  ASSERT_TRUE(result.drawn) << result.message;
  EXPECT_EQ(3, result.nodes);
  EXPECT_EQ(3, result.lines);
  ASSERT_EQ(sheets + 1, book_->SheetCount());
  Worksheet added = book_->Sheet(sheets + 1);
  EXPECT_EQ(added.Name(), result.sheet);
  EXPECT_EQ("Steps of another chart", sheet_->GetRange("B2").Text());
  std::vector<std::string> titles = UndoList(*book_).Titles();
  ASSERT_EQ(entries + 1, titles.size());
  EXPECT_EQ(CMermaidImport::kUndoTitle, titles[0]);
  // Left to right: the chain runs along one row.
  Drawn drawn = Read(added);
  std::optional<Shape> one = WithText(drawn.symbols, "One"), three = WithText(drawn.symbols, "Three");
  ASSERT_TRUE(one && three);
  EXPECT_NEAR(CentreY(*one), CentreY(*three), 1.0);
  EXPECT_LT(one->Left(), three->Left());

  UndoList(*book_).Undo();
  EXPECT_EQ(sheets, book_->SheetCount());
  EXPECT_EQ("Steps of another chart", sheet_->GetRange("B2").Text());
  UndoList(*book_).Redo();
  ASSERT_EQ(sheets + 1, book_->SheetCount());
  EXPECT_EQ(3u + 3u + 2u, static_cast<size_t>(book_->Sheet(sheets + 1).GetShapes().Count()));
}

}  // namespace
}  // namespace nivarel
