#include "MermaidChart.h"

#include <algorithm>

namespace nivarel::tools {

bool operator==(const MermaidNode& a, const MermaidNode& b) {
  return a.id == b.id && a.text == b.text && a.symbol == b.symbol && a.className == b.className;
}

bool operator==(const MermaidEdge& a, const MermaidEdge& b) {
  return a.from == b.from && a.to == b.to && a.label == b.label && a.dotted == b.dotted;
}

bool operator==(const MermaidSubgraph& a, const MermaidSubgraph& b) {
  return a.id == b.id && a.title == b.title && a.parent == b.parent && a.nodes == b.nodes;
}

bool operator==(const MermaidClass& a, const MermaidClass& b) {
  return a.name == b.name && a.fill == b.fill && a.stroke == b.stroke;
}

bool operator==(const MermaidChart& a, const MermaidChart& b) {
  return a.direction == b.direction && a.nodes == b.nodes && a.edges == b.edges && a.subgraphs == b.subgraphs &&
         a.classes == b.classes;
}

int MermaidChart::IndexOf(const std::string& id) const {
  for (size_t i = 0; i < nodes.size(); ++i)
    if (nodes[i].id == id) return static_cast<int>(i);
  return -1;
}

MermaidNode& MermaidChart::NodeFor(const std::string& id) {
  int i = IndexOf(id);
  if (i >= 0) return nodes[i];
  MermaidNode node;
  node.id = id;
  node.text = id;
  nodes.push_back(node);
  return nodes.back();
}

const MermaidClass* MermaidChart::FindClass(const std::string& name) const {
  for (const MermaidClass& c : classes)
    if (c.name == name) return &c;
  return nullptr;
}

int MermaidChart::SubgraphOf(const std::string& nodeId) const {
  for (size_t i = 0; i < subgraphs.size(); ++i) {
    const std::vector<std::string>& members = subgraphs[i].nodes;
    if (std::find(members.begin(), members.end(), nodeId) != members.end()) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace nivarel::tools
