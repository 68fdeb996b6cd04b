// A flowchart as Mermaid text describes it, independent of any sheet: its
// direction, its nodes in order of first appearance, its edges in order, its
// subgraphs and its class definitions. Nodes are named by id; edges and
// subgraphs refer to nodes by those ids. MermaidReader fills one from text,
// MermaidWriter writes one out, MermaidLayout places its nodes on a grid.
#pragma once

#include <string>
#include <vector>

namespace nivarel::tools {

struct MermaidNode {
  std::string id;         // unique in the chart; any text (a shape's name will do), see MermaidWriter
  std::string text;       // real line breaks ("\n"), entities decoded
  int symbol = 61;        // the flowchart AutoShapeType id (61 process ... 88 display)
  std::string className;  // "" for none
};
bool operator==(const MermaidNode& a, const MermaidNode& b);

struct MermaidEdge {
  std::string from, to;  // node ids
  std::string label;     // "" for none
  bool dotted = false;   // a dotted (dashed) line; thick lines are read as solid
};
bool operator==(const MermaidEdge& a, const MermaidEdge& b);

// Subgraphs may nest: parent names the enclosing subgraph ("" at the top).
// They are kept in the order they are opened, so a parent always comes
// before its children. nodes are the node ids directly inside, not those of
// nested subgraphs; a node belongs to one subgraph at most.
struct MermaidSubgraph {
  std::string id;
  std::string title;
  std::string parent;
  std::vector<std::string> nodes;
};
bool operator==(const MermaidSubgraph& a, const MermaidSubgraph& b);

// Colours are "#rrggbb" in lower case, "" when the definition gives none.
struct MermaidClass {
  std::string name;
  std::string fill;
  std::string stroke;
};
bool operator==(const MermaidClass& a, const MermaidClass& b);

class MermaidChart {
 public:
  enum class Direction { TopDown, LeftRight };

  Direction direction = Direction::TopDown;
  std::vector<MermaidNode> nodes;
  std::vector<MermaidEdge> edges;
  std::vector<MermaidSubgraph> subgraphs;
  std::vector<MermaidClass> classes;

  // The index of the node with that id, -1 when there is none.
  int IndexOf(const std::string& id) const;
  // The node with that id; a new node (a process whose text is its id) at
  // the end when there is none yet.
  MermaidNode& NodeFor(const std::string& id);
  // The class definition of that name, null when there is none.
  const MermaidClass* FindClass(const std::string& name) const;
  // The index of the subgraph holding the node, -1 when none does.
  int SubgraphOf(const std::string& nodeId) const;
};
bool operator==(const MermaidChart& a, const MermaidChart& b);

}  // namespace nivarel::tools
