// How wide a line of text is when the office draws it in a shape's font, in
// points, measured by the office's own font engine (a device of its toolkit,
// at a hundred pixels to the point) without touching the shape. The width of
// each word is kept per font for the life of the process, so a line costs
// one measure per word not seen before; a line is its words and the blanks
// between them.
#pragma once

#include <memory>
#include <string>

#include "TextFrame.h"

namespace nivarel::office {

// The look of a shape's text that its size follows: the font and the
// margins between the text and the shape's edges, in points.
struct TextLook {
  std::string font;
  double size = 0;
  bool bold = false;
  bool italic = false;
  double left = 0, right = 0, top = 0, bottom = 0;

  bool operator<(const TextLook& o) const;
};

class TextMeasure {
 public:
  // Reads the look of frame's text (one operation).
  explicit TextMeasure(const TextFrame& frame);

  const TextLook& Look() const { return look_; }
  // The width of text set on one line, in points.
  double Width(const std::string& text) const;

  struct Face;  // a font on the office's device, with its words' widths

 private:
  TextLook look_;
  std::shared_ptr<Face> face_;
};

}  // namespace nivarel::office
