// Mermaid flowchart text read into a MermaidChart. The text is read whole:
// either every line is understood and the chart is returned, or the first
// line that is not is named with what was expected there, and no chart at
// all. What is read: a "flowchart" or "graph" header with its direction
// (TD, TB, BT read as top-down; LR, RL as left-to-right), "%%" comments, blank
// lines, ";" between statements, nodes in every shape of MermaidShapes with
// quoted or plain texts, edges (-->, ---, -.->, -.-, ==>, ===, any longer,
// with labels as -->|Yes|, -- Yes -->, -. Yes .->, == Yes ==>), chains and
// "&" lists, subgraphs (nested), classDef, class and ":::". "direction",
// "style", "linkStyle" and "click" are read over and ignored.
#pragma once

#include <string>

#include "MermaidChart.h"

namespace nivarel::tools {

struct MermaidError {
  int line = 0;         // 1-based
  std::string message;  // what was expected, and what was found
  // "line 4: expected ..."
  std::string Text() const;
};

class MermaidReader {
 public:
  // True with chart filled from text; false with error said and chart as
  // it was.
  static bool Read(const std::string& text, MermaidChart& chart, MermaidError& error);

  // Whether a word is one of the statements' keywords, which no node may be
  // named: end, subgraph, graph, flowchart, class, classDef, style,
  // linkStyle, click, direction.
  static bool IsKeyword(const std::string& word);

  // A node's or label's text as written (without its quotes) made plain:
  // "#quot;", "#35;" and other entities by name or decimal number decoded,
  // "<br>", "<br/>", "<br />" made line breaks. An unknown entity stays as
  // written.
  static std::string DecodeText(const std::string& raw);
};

}  // namespace nivarel::tools
