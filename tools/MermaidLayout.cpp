#include "MermaidLayout.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

namespace nivarel::tools {

bool operator==(const MermaidPlace& a, const MermaidPlace& b) { return a.row == b.row && a.column == b.column; }

namespace {
constexpr int kDecision = 63;
}

MermaidLayout::MermaidLayout(const MermaidChart& chart) {
  const int n = static_cast<int>(chart.nodes.size());
  const int m = static_cast<int>(chart.edges.size());
  places_.assign(n, {});
  ranks_.assign(n, 0);
  back_.assign(m, false);

  // Edges between nodes of the chart, by their ends' indexes.
  std::vector<std::pair<int, int>> ends(m, {-1, -1});
  std::vector<std::vector<int>> out(n);
  std::unordered_map<std::string, int> index;
  for (int i = n - 1; i >= 0; --i) index[chart.nodes[i].id] = i;  // the first of equal ids wins
  for (int e = 0; e < m; ++e) {
    auto from = index.find(chart.edges[e].from), to = index.find(chart.edges[e].to);
    if (from == index.end() || to == index.end()) continue;
    ends[e] = {from->second, to->second};
    out[from->second].push_back(e);
  }

  // Depth-first walk in order of appearance: an edge to a node on the walk's
  // path leads back. The nodes as they are finished, reversed, are in an
  // order where every remaining edge points forward.
  std::vector<int> state(n, 0);  // 0 unseen, 1 on the path, 2 finished
  std::vector<int> finished;
  for (int root = 0; root < n; ++root) {
    if (state[root]) continue;
    std::vector<std::pair<int, size_t>> stack{{root, 0}};
    state[root] = 1;
    while (!stack.empty()) {
      auto& [node, next] = stack.back();
      if (next == out[node].size()) {
        state[node] = 2;
        finished.push_back(node);
        stack.pop_back();
        continue;
      }
      int e = out[node][next++];
      int to = ends[e].second;
      if (state[to] == 1)
        back_[e] = true;
      else if (state[to] == 0) {
        state[to] = 1;
        stack.push_back({to, 0});
      }
    }
  }
  std::reverse(finished.begin(), finished.end());
  for (int node : finished)
    for (int e : out[node])
      if (!back_[e]) ranks_[ends[e].second] = std::max(ranks_[ends[e].second], ranks_[node] + 1);

  // Lanes, rank by rank, in order of appearance within a rank.
  std::vector<int> firstParent(n, -1);
  for (int e = 0; e < m; ++e)
    if (ends[e].first >= 0 && !back_[e] && firstParent[ends[e].second] < 0) firstParent[ends[e].second] = ends[e].first;
  std::vector<int> order(n);
  for (int i = 0; i < n; ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return ranks_[a] < ranks_[b]; });

  std::vector<int> lane(n, 0);
  std::set<std::pair<int, int>> taken;  // (rank, lane)
  for (int node : order) {
    int parent = firstParent[node];
    int wanted = 0;
    if (parent >= 0) {
      wanted = lane[parent];
      if (chart.nodes[parent].symbol == kDecision) {
        // The decision's branches: its forward edges' ends, in order.
        std::vector<int> branches;
        for (int e : out[parent])
          if (!back_[e] && std::find(branches.begin(), branches.end(), ends[e].second) == branches.end())
            branches.push_back(ends[e].second);
        if (!branches.empty() && branches.front() != node) wanted = lane[parent] + 1;
      }
    }
    while (taken.count({ranks_[node], wanted})) ++wanted;
    taken.insert({ranks_[node], wanted});
    lane[node] = wanted;
  }

  bool leftToRight = chart.direction == MermaidChart::Direction::LeftRight;
  for (int i = 0; i < n; ++i)
    places_[i] = leftToRight ? MermaidPlace{lane[i], ranks_[i]} : MermaidPlace{ranks_[i], lane[i]};
}

}  // namespace nivarel::tools
