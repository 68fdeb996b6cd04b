// Nodes placed on the grid as an import draws them: ranks by the longest
// path, lanes from the first parent, a decision's later branches to the
// right, never two nodes in one cell.
#include <gtest/gtest.h>

#include <set>

#include "MermaidLayout.h"
#include "MermaidReader.h"

namespace nivarel::tools {
namespace {

MermaidChart Read(const std::string& text) {
  MermaidChart chart;
  MermaidError error;
  EXPECT_TRUE(MermaidReader::Read(text, chart, error)) << error.Text();
  return chart;
}

// "id:row,column" for every node, in order.
std::vector<std::string> Places(const MermaidChart& chart) {
  MermaidLayout layout(chart);
  std::vector<std::string> out;
  for (size_t i = 0; i < chart.nodes.size(); ++i) {
    const MermaidPlace& p = layout.Place(static_cast<int>(i));
    out.push_back(chart.nodes[i].id + ":" + std::to_string(p.row) + "," + std::to_string(p.column));
  }
  return out;
}

TEST(MermaidLayoutTest, ALineRunsDownOrAcross) {
  EXPECT_EQ((std::vector<std::string>{"A:0,0", "B:1,0", "C:2,0"}), Places(Read("graph TD\nA --> B --> C")));
  EXPECT_EQ((std::vector<std::string>{"A:0,0", "B:0,1", "C:0,2"}), Places(Read("graph LR\nA --> B --> C")));
}

TEST(MermaidLayoutTest, ADecisionsSecondBranchTakesTheNextColumn) {
  // Both branches one step long: they meet below the first.
  EXPECT_EQ((std::vector<std::string>{"S:0,0", "D:1,0", "Y:2,0", "N:2,1", "M:3,0"}),
            Places(Read("graph TD\nS --> D{Ok?}\nD -->|Yes| Y\nD -->|No| N\nY --> M\nN --> M")));
  // The No branch two steps long: the meeting point is below the longer.
  EXPECT_EQ((std::vector<std::string>{"S:0,0", "D:1,0", "Y:2,0", "N:2,1", "N2:3,1", "M:4,0"}),
            Places(Read("graph TD\nS --> D{Ok?}\nD -->|Yes| Y\nD -->|No| N --> N2\nY --> M\nN2 --> M")));
  // The No branch ranks lower than anything in the decision's column: it
  // still goes to the right, not into the free cell below.
  EXPECT_EQ((std::vector<std::string>{"D:0,0", "Y:1,0", "N:3,1", "X:2,0"}),
            Places(Read("graph TD\nD{?} -->|Yes| Y\nD -->|No| N\nY --> X --> N")));
  // Left to right: the second branch goes to the next row.
  EXPECT_EQ((std::vector<std::string>{"D:0,0", "Y:0,1", "N:1,1"}), Places(Read("graph LR\nD{Ok?} --> Y\nD --> N")));
  // A third branch on the same rank moves on past the second.
  EXPECT_EQ((std::vector<std::string>{"D:0,0", "a:1,0", "b:1,1", "c:1,2"}),
            Places(Read("graph TD\nD{?} --> a\nD --> b\nD --> c")));
  // A process with two successors keeps both in its own column, one moved
  // right only because the cell is taken.
  EXPECT_EQ((std::vector<std::string>{"P:0,0", "a:1,0", "b:1,1", "x:2,0", "y:2,1"}),
            Places(Read("graph TD\nP --> a & b\na --> x\nb --> y")));
}

TEST(MermaidLayoutTest, ALoopBackIsLeftOutOfTheRanks) {
  MermaidChart chart = Read("graph TD\nA --> B --> C{Ok?}\nC -->|No| B\nC -->|Yes| D\nD --> D");
  EXPECT_EQ((std::vector<std::string>{"A:0,0", "B:1,0", "C:2,0", "D:3,0"}), Places(chart));
  MermaidLayout layout(chart);
  EXPECT_FALSE(layout.IsBackEdge(1));
  EXPECT_TRUE(layout.IsBackEdge(2)) << "C to B leads back";
  EXPECT_FALSE(layout.IsBackEdge(3));
  EXPECT_TRUE(layout.IsBackEdge(4)) << "a node onto itself";
  // The back edge listed first does not count as the decision's first branch.
  EXPECT_EQ((std::vector<std::string>{"B:0,0", "C:1,0", "D:2,0"}),
            Places(Read("graph TD\nB --> C{Ok?}\nC -->|No| B\nC -->|Yes| D")));
}

TEST(MermaidLayoutTest, TwoSourcesStandSideBySide) {
  EXPECT_EQ((std::vector<std::string>{"A:0,0", "C:1,0", "B:0,1"}), Places(Read("graph TD\nA --> C\nB --> C")));
  // A source found later in the text still has rank 0.
  EXPECT_EQ((std::vector<std::string>{"B:1,0", "C:2,0", "A:0,0"}), Places(Read("graph TD\nB --> C\nA --> B")))
      << "a source found later in the text still stands above what it leads to";
}

// 200 nodes down a main line, every tenth from the fifth a decision: the
// even ones skip three nodes ahead on their No branch, the odd ones loop
// back three.
std::string BigChart() {
  std::string text = "flowchart TD\n";
  int decision = 0;
  for (int i = 1; i <= 200; ++i) {
    bool isDecision = i % 10 == 5;
    text += "    n" + std::to_string(i) + (isDecision ? "{\"Check " : "[\"Step ") + std::to_string(i) +
            (isDecision ? "?\"}\n" : "\"]\n");
  }
  for (int i = 1; i < 200; ++i) {
    bool isDecision = i % 10 == 5;
    text += "    n" + std::to_string(i) + (isDecision ? " -->|Yes| n" : " --> n") + std::to_string(i + 1) + "\n";
    if (isDecision) {
      int to = decision++ % 2 == 0 ? i + 3 : i - 3;
      text += "    n" + std::to_string(i) + " -->|No| n" + std::to_string(to) + "\n";
    }
  }
  return text;
}

TEST(MermaidLayoutTest, TwoHundredNodesWithTwentyDecisionsNeverShareACell) {
  for (const char* direction : {"TD", "LR"}) {
    std::string text = BigChart();
    if (std::string(direction) == "LR") text.replace(text.find("TD"), 2, "LR");
    MermaidChart chart = Read(text);
    ASSERT_EQ(200u, chart.nodes.size());
    int decisions = 0;
    for (const MermaidNode& n : chart.nodes) decisions += n.symbol == 63;
    EXPECT_EQ(20, decisions);
    MermaidLayout layout(chart);
    std::set<std::pair<int, int>> cells;
    for (const MermaidPlace& p : layout.Places()) {
      EXPECT_TRUE(cells.insert({p.row, p.column}).second) << "two nodes at " << p.row << "," << p.column;
      EXPECT_GE(p.row, 0);
      EXPECT_GE(p.column, 0);
    }
    int back = 0;
    for (size_t e = 0; e < chart.edges.size(); ++e) {
      int from = chart.IndexOf(chart.edges[e].from), to = chart.IndexOf(chart.edges[e].to);
      EXPECT_FALSE(layout.Place(from) == layout.Place(to)) << e;
      if (layout.IsBackEdge(static_cast<int>(e))) {
        ++back;
        continue;
      }
      EXPECT_GT(layout.Rank(to), layout.Rank(from)) << "forward edges go down the ranks: " << e;
      bool leftToRight = std::string(direction) == "LR";
      EXPECT_EQ(layout.Rank(to), leftToRight ? layout.Place(to).column : layout.Place(to).row);
    }
    EXPECT_EQ(10, back) << "the ten loops back, and nothing else";
    // The skips shorten nothing: the last node ends the main line's 199 steps.
    EXPECT_EQ(199, layout.Rank(199));
    EXPECT_EQ(7, layout.Rank(chart.IndexOf("n8"))) << "the node a skip leads to keeps its place in the line";
  }
}

}  // namespace
}  // namespace nivarel::tools
