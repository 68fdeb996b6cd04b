// The host's galleries of themed shape styles, ids 1 to 42 (six bands of
// seven colours), and of line styles, ids 10001 to 10021 (three weights of
// seven colours). Calc has no such galleries, so the layer keeps the looks
// here and draws them itself. Colours have red in the low byte.
#pragma once

namespace nivarel::office {

class Shape;

// How a band fills a shape.
enum class StyleFill { kSolid, kGradient };

struct ShapeStylePreset {
  long line;   // outline colour
  long fill;   // fill colour; the gradient's first colour
  long fill2;  // the gradient's second colour; -1 for a solid fill
  StyleFill fillKind;
  double lineWeight;  // points, single line
  bool shadow;        // black, no sideways offset
  double shadowOffsetY;
  double shadowTransparency;
  long text;  // text colour
};

constexpr int kFirstShapeStylePreset = 1, kLastShapeStylePreset = 42;

// The preset of id, or nullptr when id is outside 1 to 42.
const ShapeStylePreset* FindShapeStylePreset(int id);

// Gives shape the look of preset id: fill, outline and shadow, and the colour
// of all its text when withText is true. Every part is tried; the first
// refusal is raised as a HostError once the rest are done. An id outside 1
// to 42 does nothing.
void ApplyShapeStylePreset(const Shape& shape, int id, bool withText);

// A line style: weight and colour of the stroke, and its shadow.
struct LineStylePreset {
  long line;      // stroke colour
  double weight;  // points
  bool shadow;
  long shadowColour;
  double shadowOffsetX, shadowOffsetY, shadowTransparency;
};

constexpr int kFirstLineStylePreset = 10001, kLastLineStylePreset = 10021;

// The line style of id, or nullptr when id is outside 10001 to 10021.
const LineStylePreset* FindLineStylePreset(int id);

// Gives line the weight, shadow and colour of line style id, in that order.
// Every part is tried; the first refusal is raised as a HostError once the
// rest are done. An id outside 10001 to 10021 does nothing.
void ApplyLineStylePreset(const Shape& line, int id);

}  // namespace nivarel::office
