// Charts written as Mermaid text and read back: the text written, the shape
// table both ways, and round trips over awkward texts and the order process.
#include <gtest/gtest.h>

#include "MermaidReader.h"
#include "MermaidShapes.h"
#include "MermaidWriter.h"

namespace nivarel::tools {
namespace {

MermaidChart Read(const std::string& text) {
  MermaidChart chart;
  MermaidError error;
  EXPECT_TRUE(MermaidReader::Read(text, chart, error)) << error.Text() << "\n" << text;
  return chart;
}

TEST(MermaidWriterTest, EscapesWhatWouldEndOrChangeTheText) {
  EXPECT_EQ("a#quot;b#35;c#lt;d#gt;e#124;f<br>g#96;h#13;i\tj&k;[]{}()#42;",
            MermaidWriter::EscapeText("a\"b#c<d>e|f\ng`h\ri\tj&k;[]{}()*"));
  EXPECT_EQ("Gr\xC3\xBC\xC3\x9F" "e", MermaidWriter::EscapeText("Gr\xC3\xBC\xC3\x9F" "e")) << "non-ASCII as it is";
}

TEST(MermaidWriterTest, WritesHeaderNodesSubgraphsEdgesAndClasses) {
  MermaidChart chart;
  chart.direction = MermaidChart::Direction::LeftRight;
  chart.nodes = {{"start", "Start", 69, ""},
                 {"Flowchart: Decision 2", "Is it \"ok\"?", 63, "question"},
                 {"end", "Done\nfor today", 61, "my style"},
                 {"N2", "Named like a number", 83, ""}};
  chart.edges = {{"start", "Flowchart: Decision 2", "", false},
                 {"Flowchart: Decision 2", "end", "Yes", false},
                 {"Flowchart: Decision 2", "N2", "No", true},
                 {"N2", "gone", "", false}};
  chart.subgraphs = {{"Group Box 1", "Box", "", {"start"}},
                     {"lane", "Inner", "Group Box 1", {"end", "nobody"}},
                     {"orphan", "Lost", "gone", {}}};
  chart.classes = {{"question", "#ffcc00", "#000000"}, {"my style", "", "#333333"}, {"bare", "", ""}};
  EXPECT_EQ(
      "flowchart LR\n"
      "    start([\"Start\"])\n"
      "    N2_2{\"Is it #quot;ok#quot;?\"}\n"
      "    N3[\"Done<br>for today\"]\n"
      "    N2[(\"Named like a number\")]\n"
      "    subgraph G1 [\"Box\"]\n"
      "        start\n"
      "        subgraph lane [\"Inner\"]\n"
      "            N3\n"
      "        end\n"
      "    end\n"
      "    subgraph orphan [\"Lost\"]\n"
      "    end\n"
      "    start --> N2_2\n"
      "    N2_2 -->|Yes| N3\n"
      "    N2_2 -.->|No| N2\n"
      "    classDef question fill:#ffcc00,stroke:#000000\n"
      "    classDef my_style stroke:#333333\n"
      "    classDef bare fill:none\n"
      "    class N2_2 question\n"
      "    class N3 my_style\n",
      MermaidWriter::Write(chart))
      << "ids that cannot stand are numbered by place, never taking one in use; the edge to no node is left out; "
         "a subgraph whose parent is gone stands at the top";
}

TEST(MermaidWriterTest, ShapeTableRoundTrips) {
  // The required shapes, both ways.
  const std::vector<std::pair<int, std::string>> required = {{61, "[]"},     {63, "{}"},     {69, "([])"},
                                                             {73, "(())"},   {64, "[//]"},   {65, "[[]]"},
                                                             {83, "[()]"},   {70, "{{}}"}};
  for (const auto& [symbol, delimiters] : required) {
    const MermaidShape& shape = MermaidShapes::ForSymbol(symbol);
    EXPECT_EQ(delimiters, std::string(shape.open) + shape.close) << symbol;
    EXPECT_EQ(symbol, shape.symbol) << symbol << " reads back as itself";
  }
  EXPECT_EQ(61, MermaidShapes::ForSymbol(1).symbol) << "a rectangle is written as a process";
  EXPECT_EQ(61, MermaidShapes::ForSymbol(89).symbol);
  // Every symbol, written, read, written again: the second text is the
  // first, so an exported chart imported and exported again reads the same.
  for (int symbol = 61; symbol <= 88; ++symbol) {
    MermaidChart chart;
    chart.nodes = {{"A", "text", symbol, ""}};
    std::string once = MermaidWriter::Write(chart);
    MermaidChart read = Read(once);
    ASSERT_EQ(1u, read.nodes.size());
    EXPECT_EQ(MermaidShapes::ForSymbol(symbol).symbol, read.nodes[0].symbol) << symbol;
    EXPECT_EQ(once, MermaidWriter::Write(read)) << symbol;
  }
}

TEST(MermaidWriterTest, AwkwardTextsSurviveTheRoundTrip) {
  const std::vector<std::string> texts = {
      "He said \"hi\"", "#1 priority", "a|b", "[x]", "{y}", "(z)", "a < b > c", "<br> is not a break",
      "#quot; stays", "#35;", "Gr\xC3\xBC\xC3\x9F" "e, na\xC3\xAFve, \xC3\x86r\xC3\xB8, \xE6\x97\xA5\xE6\x9C\xAC",
      "two\nlines", "\nleading break", "  padded  ", "semi;colon", "a & b", "-- x -->", "%% not a comment",
      "back`tick", "*stars*", "tab\there", "end", "A-->B", "]) }} ))", "\"", "|", "x:::y", "", "carriage\rreturn"};
  MermaidChart chart;
  for (size_t i = 0; i < texts.size(); ++i) {
    std::string id = "N" + std::to_string(i + 1);
    chart.nodes.push_back({id, texts[i], 61 + static_cast<int>(i % 28), i % 3 ? "" : "c1"});
    if (i > 0 && !texts[i].empty()) chart.edges.push_back({"N" + std::to_string(i), id, texts[i], i % 2 == 0});
    chart.subgraphs.push_back({"G" + std::to_string(i + 1), texts[i], "", {id}});
  }
  chart.classes = {{"c1", "#aabbcc", "#010203"}};
  std::string text = MermaidWriter::Write(chart);
  MermaidChart read = Read(text);
  // Shapes that several symbols share read as the shape's own symbol.
  MermaidChart expected = chart;
  for (MermaidNode& n : expected.nodes) n.symbol = MermaidShapes::ForSymbol(n.symbol).symbol;
  ASSERT_EQ(expected.nodes.size(), read.nodes.size());
  for (size_t i = 0; i < expected.nodes.size(); ++i) EXPECT_EQ(expected.nodes[i].text, read.nodes[i].text) << i;
  for (size_t i = 0; i < expected.edges.size() && i < read.edges.size(); ++i)
    EXPECT_EQ(expected.edges[i].label, read.edges[i].label) << i;
  for (size_t i = 0; i < expected.subgraphs.size() && i < read.subgraphs.size(); ++i)
    EXPECT_EQ(expected.subgraphs[i].title, read.subgraphs[i].title) << i;
  EXPECT_TRUE(expected == read) << text;
  EXPECT_EQ(text, MermaidWriter::Write(read));
}

// The order process of examples/order.txt, written by hand as people write
// Mermaid: plain texts, labels in both forms, a chain, a loop back, a
// dotted note line, a subgraph and a class.
const char kOrderProcess[] = R"(---
title: Order process
---
graph TD
    %% from examples/order.txt
    receive([Receive the customer's order]) --> check[Check the order for completeness]
    check --> complete{Is the order complete?}
    complete -- No --> ask[/Ask the customer for the missing details/] --> check
    complete -->|Yes| enter[Enter the order in the system] --> stock[Check stock levels]
    stock --> instock{Is every item in stock?}
    instock -->|No| reorder[[Reorder from the supplier]]
    reorder -.-> stock
    subgraph warehouse [Warehouse]
        instock -->|Yes| pick[Pick the items from the shelves] --> pack[Pack the parcel]
        pack --> print[Print the invoice and the delivery note]
    end
    print --> carrier[Hand the parcel to the carrier] --> confirm[Send the confirmation e-mail]
    confirm --> done([End])
    pack -.- note>packed within one day]
    classDef io fill:#FFF2CC,stroke:#D6B656
    class receive,done io;
    done -.-> Übergabe-2[Handed over]
)";

TEST(MermaidWriterTest, TheOrderProcessRoundTrips) {
  MermaidChart first = Read(kOrderProcess);
  ASSERT_EQ(16u, first.nodes.size());
  EXPECT_EQ(17u, first.edges.size());
  EXPECT_EQ((MermaidEdge{"complete", "ask", "No", false}), first.edges[2]);
  EXPECT_EQ((MermaidEdge{"reorder", "stock", "", true}), first.edges[8]);
  EXPECT_EQ((std::vector<std::string>{"instock", "pick", "pack", "print"}), first.subgraphs.at(0).nodes);
  EXPECT_EQ(74, first.nodes[14].symbol);
  std::string text = MermaidWriter::Write(first);
  MermaidChart second = Read(text);
  EXPECT_NE(std::string::npos, text.find("    \xC3\x9C" "bergabe-2[\"Handed over\"]\n")) << "the ids read are kept";
  EXPECT_TRUE(first == second) << text;
  EXPECT_EQ(text, MermaidWriter::Write(second));
}

}  // namespace
}  // namespace nivarel::tools
