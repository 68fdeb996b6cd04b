// The one table between the flowchart symbols (AutoShapeType ids 61 to 88)
// and Mermaid's node shapes. Every symbol is written as one shape, the
// nearest Mermaid has; every shape reads back as one symbol. A symbol that
// shares its shape with another reads back as the shape's own symbol
// (docs/mermaid.md lists both directions).
#pragma once

#include <string>
#include <vector>

namespace nivarel::tools {

struct MermaidShape {
  const char* open;   // "[", "([", "[/" ...
  const char* close;  // "]", "])", "/]" ...
  int symbol;         // the symbol the shape is read as
  const char* name;   // Mermaid's name for the shape
};

class MermaidShapes {
 public:
  // The shape a symbol is written as; any id outside 61 to 88 is written as
  // a process.
  static const MermaidShape& ForSymbol(int autoShapeType);
  // Every shape the reader knows, the longer of two openers that begin
  // alike first, so that the first whose opener and closer match is the one
  // meant.
  static const std::vector<MermaidShape>& Readable();
};

}  // namespace nivarel::tools
