// Mermaid flowchart text read into a chart: every form the reader accepts,
// and a message naming the line and what was expected for what it does not.
#include <gtest/gtest.h>

#include "MermaidReader.h"

namespace nivarel::tools {
namespace {

MermaidChart Read(const std::string& text) {
  MermaidChart chart;
  MermaidError error;
  EXPECT_TRUE(MermaidReader::Read(text, chart, error)) << error.Text() << "\n" << text;
  return chart;
}

std::string ErrorOf(const std::string& text) {
  MermaidChart chart;
  MermaidError error;
  if (MermaidReader::Read(text, chart, error)) return "read without error";
  return error.Text();
}

std::vector<std::string> Edges(const MermaidChart& chart) {
  std::vector<std::string> out;
  for (const MermaidEdge& e : chart.edges)
    out.push_back(e.from + (e.dotted ? " -.-> " : " --> ") + e.to + (e.label.empty() ? "" : " |" + e.label + "|"));
  return out;
}

TEST(MermaidReaderTest, HeaderGivesTheDirection) {
  EXPECT_EQ(MermaidChart::Direction::TopDown, Read("flowchart TD\n").direction);
  EXPECT_EQ(MermaidChart::Direction::TopDown, Read("graph TB").direction);
  EXPECT_EQ(MermaidChart::Direction::TopDown, Read("graph BT").direction) << "bottom-up is drawn top-down";
  EXPECT_EQ(MermaidChart::Direction::LeftRight, Read("graph LR").direction);
  EXPECT_EQ(MermaidChart::Direction::LeftRight, Read("flowchart RL").direction);
  EXPECT_EQ(MermaidChart::Direction::TopDown, Read("graph").direction) << "no direction: top-down";
  MermaidChart oneLine = Read("graph LR; A-->B; B-->C;");
  EXPECT_EQ(MermaidChart::Direction::LeftRight, oneLine.direction);
  EXPECT_EQ((std::vector<std::string>{"A --> B", "B --> C"}), Edges(oneLine));
  MermaidChart withFrontMatter = Read("---\ntitle: Orders\n---\n%%{init: {\"theme\": \"forest\"}}%%\n\ngraph LR\nA");
  EXPECT_EQ(MermaidChart::Direction::LeftRight, withFrontMatter.direction);
  EXPECT_EQ(1u, withFrontMatter.nodes.size());
}

TEST(MermaidReaderTest, EachShapeGivesItsSymbol) {
  MermaidChart chart = Read(
      "flowchart TD\n"
      "A[a]\nB(b)\nC{c}\nD([d])\nE((e))\nF[/f/]\nG[[g]]\nH[(h)]\nI{{i}}\n"
      "J[/j\\]\nK[\\k/]\nL>l]\nM(((m)))\nO[\\o\\]\nP\n");
  const std::vector<std::pair<std::string, int>> expected = {
      {"A", 61}, {"B", 62}, {"C", 63}, {"D", 69}, {"E", 73}, {"F", 64}, {"G", 65}, {"H", 83},
      {"I", 70}, {"J", 71}, {"K", 72}, {"L", 74}, {"M", 77}, {"O", 64}, {"P", 61}};
  ASSERT_EQ(expected.size(), chart.nodes.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(expected[i].first, chart.nodes[i].id);
    EXPECT_EQ(expected[i].second, chart.nodes[i].symbol) << chart.nodes[i].id;
  }
  EXPECT_EQ("a", chart.nodes[0].text);
  EXPECT_EQ("m", chart.nodes[12].text);
  EXPECT_EQ("P", chart.nodes[14].text) << "a bare id is its own text";
}

TEST(MermaidReaderTest, TextsAreDecoded) {
  MermaidChart chart = Read(
      "flowchart TD\n"
      "A[\"Say #quot;hi#quot; #35;1 #124; a<br>b<br/>c<br />d<BR>e\"]\n"
      "B[\"#unknown; stays, #lt;br#gt; too\"]\n"
      "C[\"caf#233; #8364;5\"]\n"
      "D[  Plain text with spaces  ]\n"
      "E[\"  kept  \"]\n"
      "F[\"a;b\"]; G\n"
      "H[\"x[y]{z}(w)\"] --> I{\"x}\"}\n"
      "\xC3\x9C" "1[Gr\xC3\xBC\xC3\x9F" "e]\n"
      "J[]\n");
  ASSERT_EQ(11u, chart.nodes.size());
  EXPECT_EQ("Say \"hi\" #1 | a\nb\nc\nd\ne", chart.nodes[0].text);
  EXPECT_EQ("#unknown; stays, <br> too", chart.nodes[1].text) << "an entity's <br> is no line break";
  EXPECT_EQ("caf\xC3\xA9 \xE2\x82\xAC" "5", chart.nodes[2].text);
  EXPECT_EQ("Plain text with spaces", chart.nodes[3].text);
  EXPECT_EQ("  kept  ", chart.nodes[4].text);
  EXPECT_EQ("a;b", chart.nodes[5].text);
  EXPECT_EQ("G", chart.nodes[6].id);
  EXPECT_EQ("x[y]{z}(w)", chart.nodes[7].text);
  EXPECT_EQ("x}", chart.nodes[8].text);
  EXPECT_EQ(63, chart.nodes[8].symbol);
  EXPECT_EQ("\xC3\x9C" "1", chart.nodes[9].id);
  EXPECT_EQ("Gr\xC3\xBC\xC3\x9F" "e", chart.nodes[9].text);
  EXPECT_EQ("", chart.nodes[10].text);
}

TEST(MermaidReaderTest, ArrowsAndTheirLabels) {
  MermaidChart kinds = Read(
      "flowchart TD\n"
      "A --> B\nB --- C\nC -.-> D\nD -.- E\nE ==> F\nF === G\nG ----> H\nH -..-> I\nI-->J\nnode-1-->node-2\n");
  EXPECT_EQ((std::vector<std::string>{"A --> B", "B --> C", "C -.-> D", "D -.-> E", "E --> F", "F --> G", "G --> H",
                                      "H -.-> I", "I --> J", "node-1 --> node-2"}),
            Edges(kinds));
  MermaidChart labels = Read(
      "flowchart TD\n"
      "A -->|Yes| B\n"
      "A -- No --> C\n"
      "A -. maybe .-> D\n"
      "A == sure ==> E\n"
      "A--tight-->F\n"
      "A -- \"q #quot;x#quot;\" --> G\n"
      "A -->| spaced | H\n"
      "A -.->|\"a#124;b\"| I\n"
      "A -- open --- J\n"
      "A -->|\"x|y\"| K\n"
      "A -- \"p --> q\" --> L\n");
  EXPECT_EQ((std::vector<std::string>{"A --> B |Yes|", "A --> C |No|", "A -.-> D |maybe|", "A --> E |sure|",
                                      "A --> F |tight|", "A --> G |q \"x\"|", "A --> H |spaced|",
                                      "A -.-> I |a|b|", "A --> J |open|", "A --> K |x|y|", "A --> L |p --> q|"}),
            Edges(labels));
}

TEST(MermaidReaderTest, ChainsAndListsMakeAnEdgePerPair) {
  EXPECT_EQ((std::vector<std::string>{"A --> B", "B --> C"}), Edges(Read("graph TD\nA --> B --> C")));
  EXPECT_EQ((std::vector<std::string>{"A --> C", "A --> D", "B --> C", "B --> D"}),
            Edges(Read("graph TD\nA & B --> C & D")));
  MermaidChart chart = Read("graph TD\nA{Ok?} -->|Yes| B[b] & C((c)) -.-> D");
  EXPECT_EQ((std::vector<std::string>{"A --> B |Yes|", "A --> C |Yes|", "B -.-> D", "C -.-> D"}), Edges(chart));
  EXPECT_EQ(73, chart.nodes[2].symbol) << "a node in a list keeps its shape";
}

TEST(MermaidReaderTest, NodesKeepTheirFirstAppearance) {
  MermaidChart chart = Read("graph TD\nB --> A\nA{Is it?} --> C\nC --> A\nB[Now b]");
  ASSERT_EQ(3u, chart.nodes.size());
  EXPECT_EQ("B", chart.nodes[0].id) << "order of first mention, not of declaration";
  EXPECT_EQ("A", chart.nodes[1].id);
  EXPECT_EQ("C", chart.nodes[2].id);
  EXPECT_EQ(63, chart.nodes[1].symbol) << "a later bare mention keeps the shape";
  EXPECT_EQ("Is it?", chart.nodes[1].text);
  EXPECT_EQ("Now b", chart.nodes[0].text) << "a later shape gives the text, as Mermaid does";
}

TEST(MermaidReaderTest, SubgraphsNestAndOwnTheirNodes) {
  MermaidChart chart = Read(
      "flowchart TD\n"
      "  subgraph one [First box]\n"
      "    A --> B\n"
      "    subgraph inner [\"Inner #quot;box#quot;\"]\n"
      "      direction LR\n"
      "      C\n"
      "    end\n"
      "  end\n"
      "  subgraph Two\n"
      "    D\n"
      "  end\n"
      "  subgraph Three words here\n"
      "    B --> E\n"
      "  end\n"
      "  F\n");
  EXPECT_EQ(MermaidChart::Direction::TopDown, chart.direction) << "a subgraph's direction is ignored";
  ASSERT_EQ(4u, chart.subgraphs.size());
  EXPECT_EQ((MermaidSubgraph{"one", "First box", "", {"A", "B"}}), chart.subgraphs[0]);
  EXPECT_EQ((MermaidSubgraph{"inner", "Inner \"box\"", "one", {"C"}}), chart.subgraphs[1]);
  EXPECT_EQ((MermaidSubgraph{"Two", "Two", "", {"D"}}), chart.subgraphs[2]);
  EXPECT_EQ((MermaidSubgraph{"subGraph3", "Three words here", "", {"E"}}), chart.subgraphs[3])
      << "B stays in the first subgraph that holds it";
  EXPECT_EQ(-1, chart.SubgraphOf("F"));
}

TEST(MermaidReaderTest, ClassesAndIgnoredStatements) {
  MermaidChart chart = Read(
      "flowchart TD\n"
      "  classDef hot fill:#f96,stroke:#333,stroke-width:4px\n"
      "  classDef cold,calm fill:#E0F0FF\n"
      "  classDef plain stroke:black,color:#fff\n"
      "  A:::hot --> B\n"
      "  class B,C cold\n"
      "  C[c]:::calm\n"
      "  style A fill:#f00\n"
      "  linkStyle 0 stroke:#f00,stroke-width:2px\n"
      "  click A callback \"Tooltip\"\n"
      "  %% class A calm\n");
  EXPECT_EQ((std::vector<MermaidClass>{{"hot", "#ff9966", "#333333"},
                                       {"cold", "#e0f0ff", ""},
                                       {"calm", "#e0f0ff", ""},
                                       {"plain", "", "#000000"}}),
            chart.classes);
  ASSERT_EQ(3u, chart.nodes.size()) << "ignored statements add no node";
  EXPECT_EQ("hot", chart.nodes[0].className);
  EXPECT_EQ("cold", chart.nodes[1].className);
  EXPECT_EQ("cold", chart.nodes[2].className) << "class statements apply after the nodes' own ':::'";
  EXPECT_EQ(1u, chart.edges.size());
}

TEST(MermaidReaderTest, BadTextNamesTheLineAndWhatWasExpected) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"flowchart TD\n\n%% c\n    A1[Hello\n",
       "line 4: expected ']' to close the node text begun at column 7"},
      {"graph TD\nA ~> B", "line 2: unknown arrow '~>'"},
      {"graph TD\nA <--> B", "line 2: unknown arrow '<-->'"},
      {"graph TD\nA ~~~ B", "line 2: unknown arrow '~~~'"},
      {"graph TD\nA[x] B", "line 2: expected an arrow or the end of the statement, found 'B'"},
      {"A --> B", "line 1: expected a 'flowchart' or 'graph' header, found 'A'"},
      {"", "line 1: expected a 'flowchart' or 'graph' header, found no statement"},
      {"graph XY", "line 1: expected a direction (TD, TB, BT, LR or RL) after 'graph', found 'XY'"},
      {"flowchart TD\nsubgraph s\nA\n\n", "line 3: expected 'end' to close the subgraph begun at line 2"},
      {"graph TD\nend", "line 2: found 'end' with no subgraph open"},
      {"graph TD\nA -->", "line 2: expected a node after the arrow, found the end of the line"},
      {"graph TD\nA -- Yes B", "line 2: expected '-->' to close the edge text begun at column 3"},
      {"graph TD\nA -. Yes B", "line 2: expected '.->' to close the edge text begun at column 3"},
      {"graph TD\nA -->|Yes B", "line 2: expected '|' to close the edge text begun at column 6"},
      {"graph TD\nA[\"open] --> B", "line 2: expected '\"' to close the text begun at column 3"},
      {"graph TD\nA[\"x\" y]", "line 2: expected ']' to close the node text begun at column 2, found 'y'"},
      {"graph TD\nA[/x]", "line 2: expected '/]' or '\\]' to close the node text begun at column 2"},
      {"graph TD\nclassDef x fill:redish", "line 2: expected a colour as '#rrggbb' for fill, found 'redish'"},
      {"graph TD\nclassDef x:fill:#fff", "line 2: expected class names after 'classDef', found 'x:fill:#fff'"},
      {"graph TD\nA\nclass Q x\nB", "line 3: expected a node id in 'class', found 'Q', which names no node"},
      {"graph TD\nsubgraph S\nend\nS --> A", "line 4: expected a node id, found 'S', which names a subgraph"},
      {"graph TD\nA --> end", "line 2: expected a node id, found the keyword 'end'"},
      {"graph TD\nA --> graph", "line 2: expected a node id, found the keyword 'graph'"},
      {"graph TD\nclass& k", "line 2: expected a node id, found the keyword 'class'"},
      {"graph TD\n---\nA", "line 2: expected a node id, found '---'"},
      {"graph TD\nA@{ shape: doc }", "line 2: expected an arrow or the end of the statement, found '@{'"},
  };
  for (const auto& [text, message] : cases) EXPECT_EQ(message, ErrorOf(text)) << text;
}

TEST(MermaidReaderTest, NothingHalfReadIsReturned) {
  MermaidChart chart;
  chart.nodes.push_back({"keep", "Kept", 61, ""});
  MermaidChart before = chart;
  MermaidError error;
  EXPECT_FALSE(MermaidReader::Read("graph LR\nA --> B\nB --> C\nC ~> D\n", chart, error));
  EXPECT_EQ(4, error.line);
  EXPECT_TRUE(chart == before) << "the chart passed in is as it was";
}

}  // namespace
}  // namespace nivarel::tools
