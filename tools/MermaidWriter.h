// A MermaidChart written as Mermaid flowchart text that MermaidReader reads
// back as the same chart: the header ("flowchart TD" or "flowchart LR"),
// every node declared once in order with its shape and quoted text, the
// subgraphs with their titles and members, the edges one per line in order
// ("-->", "-.->" for dotted, "-->|label|"), the classDef lines and the class
// assignments. A node or subgraph keeps its id when it is one the reader
// takes as it stands (letters, digits, "_", non-ASCII letters and "-" between
// them; no keyword; not taken by an earlier one); otherwise it is N1, N2 ... (G1, G2 ... for subgraphs) by its
// place. Edges and members naming no node of the chart are left out; a
// subgraph whose parent names no subgraph is written at the top.
#pragma once

#include <string>

#include "MermaidChart.h"

namespace nivarel::tools {

class MermaidWriter {
 public:
  static std::string Write(const MermaidChart& chart);

  // A text as it stands between the quotes of a node or label: quotes, "#",
  // "<", ">", "|", "`", "*" and control characters as entities, line breaks as
  // "<br>". Anything else, non-ASCII letters included, as it is.
  static std::string EscapeText(const std::string& text);
};

}  // namespace nivarel::tools
