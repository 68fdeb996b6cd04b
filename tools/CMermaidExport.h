// A worksheet's flowchart read into a MermaidChart, the shapes left as they
// are (groups are read in place, not opened). Every flowchart symbol (an
// auto shape that is no connector, group members included, in drawing
// order) is a node named after its shape; labels, text boxes, the symbol key,
// a template's shapes and group boxes are not. Every connector glued at both
// ends is an edge in the direction of its arrow, dotted when dashed, with the
// branch label that stands beside the decision side it leaves by. Group
// boxes are subgraphs titled by their text, holding the nodes whose centre
// lies inside them; so are a template's swim lanes that hold nodes. Each
// distinct pair of fill and line colour is a class ("style1", "style2" ...
// in the order met). The direction is left to right
// when most edges run that way, else top down.
#pragma once

#include "MermaidChart.h"
#include "Worksheet.h"

namespace nivarel::tools {

class CMermaidExport {
 public:
  // Raises HostError when the office fails; a shape it cannot read is
  // passed over.
  static MermaidChart Read(const office::Worksheet& sheet);
};

}  // namespace nivarel::tools
