#include "MermaidShapes.h"

namespace nivarel::tools {

namespace {

// Mermaid's shapes, each with the symbol it reads as.
const MermaidShape kDoubleCircle{"(((", ")))", 77, "double circle"};
const MermaidShape kStadium{"([", "])", 69, "stadium"};
const MermaidShape kCircle{"((", "))", 73, "circle"};
const MermaidShape kSubroutine{"[[", "]]", 65, "subroutine"};
const MermaidShape kCylinder{"[(", ")]", 83, "cylinder"};
const MermaidShape kParallelogram{"[/", "/]", 64, "parallelogram"};
const MermaidShape kTrapezoid{"[/", "\\]", 71, "trapezoid"};
const MermaidShape kParallelogramAlt{"[\\", "\\]", 64, "alternate parallelogram"};
const MermaidShape kTrapezoidAlt{"[\\", "/]", 72, "alternate trapezoid"};
const MermaidShape kHexagon{"{{", "}}", 70, "hexagon"};
const MermaidShape kRounded{"(", ")", 62, "rounded rectangle"};
const MermaidShape kRectangle{"[", "]", 61, "rectangle"};
const MermaidShape kRhombus{"{", "}", 63, "rhombus"};
const MermaidShape kAsymmetric{">", "]", 74, "asymmetric"};

// Symbols 61 to 88 in order.
const MermaidShape* const kBySymbol[] = {
    &kRectangle,      // 61 process
    &kRounded,        // 62 alternate process
    &kRhombus,        // 63 decision
    &kParallelogram,  // 64 data
    &kSubroutine,     // 65 predefined process
    &kSubroutine,     // 66 internal storage: a box with inner lines
    &kRectangle,      // 67 document
    &kRectangle,      // 68 multi-document
    &kStadium,        // 69 terminator
    &kHexagon,        // 70 preparation
    &kTrapezoid,      // 71 manual input
    &kTrapezoidAlt,   // 72 manual operation
    &kCircle,         // 73 connector
    &kAsymmetric,     // 74 off-page connector
    &kRectangle,      // 75 card
    &kAsymmetric,     // 76 punched tape: a flag
    &kDoubleCircle,   // 77 summing junction
    &kDoubleCircle,   // 78 or
    &kRectangle,      // 79 collate
    &kRhombus,        // 80 sort: a diamond
    &kTrapezoid,      // 81 extract: narrow at the top
    &kTrapezoidAlt,   // 82 merge: narrow at the bottom
    &kCylinder,       // 83 stored data
    &kRounded,        // 84 delay
    &kCircle,         // 85 sequential access storage
    &kCylinder,       // 86 magnetic disk
    &kCylinder,       // 87 direct access storage
    &kHexagon,        // 88 display: pointed on the left
};

}  // namespace

const MermaidShape& MermaidShapes::ForSymbol(int autoShapeType) {
  if (autoShapeType < 61 || autoShapeType > 88) return kRectangle;
  return *kBySymbol[autoShapeType - 61];
}

const std::vector<MermaidShape>& MermaidShapes::Readable() {
  static const std::vector<MermaidShape> shapes = {kDoubleCircle, kStadium,         kCircle,        kSubroutine,
                                                   kCylinder,     kParallelogram,   kTrapezoid,     kParallelogramAlt,
                                                   kTrapezoidAlt, kHexagon,         kRounded,       kRectangle,
                                                   kRhombus,      kAsymmetric};
  return shapes;
}

}  // namespace nivarel::tools
