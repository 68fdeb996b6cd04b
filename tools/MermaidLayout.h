// Where each node of a MermaidChart goes on a grid, as an import draws it.
// A node's rank is the longest path to it from the sources; cycles are
// broken first at the edges that lead back to a node still being walked,
// walking the nodes and their edges in order of first appearance. A node's
// lane is its first parent's, except that a decision's second and later
// branches take the next free lane to the decision's right; a source takes
// the first free lane of its rank. Two nodes never share a cell: a node
// whose cell is taken moves right to the next free one. Top-down charts put
// ranks in rows and lanes in columns; left-to-right charts the other way
// round. Rows and columns count from 0.
#pragma once

#include <vector>

#include "MermaidChart.h"

namespace nivarel::tools {

struct MermaidPlace {
  int row = 0;
  int column = 0;
};
bool operator==(const MermaidPlace& a, const MermaidPlace& b);

class MermaidLayout {
 public:
  explicit MermaidLayout(const MermaidChart& chart);

  // The node's place and rank, by its index in chart.nodes.
  const MermaidPlace& Place(int node) const { return places_[node]; }
  const std::vector<MermaidPlace>& Places() const { return places_; }
  int Rank(int node) const { return ranks_[node]; }
  // Whether the edge (index in chart.edges) was taken as leading back:
  // left out of the ranks; it runs upward or onto itself.
  bool IsBackEdge(int edge) const { return back_[edge]; }

 private:
  std::vector<MermaidPlace> places_;
  std::vector<int> ranks_;
  std::vector<bool> back_;
};

}  // namespace nivarel::tools
