// The office writes an .xlsx package whose connectors name made-up shape ids
// at their ends, so other programs open every flow line unglued. Given how the
// connectors of each sheet are glued (by shape names, which the package
// keeps), XlsxConnectors rewrites the saved package so every connector's
// stCxn/endCxn names the cNvPr id of its shape and the site index of the
// shape's preset. It also gives every drawing object an id of its own, and
// writes back what the office leaves out of a shape's text: its direction
// (upward or downward) and, for a shape without text, its font and anchor.
#pragma once

#include <string>
#include <vector>

namespace nivarel::office {

class XlsxConnectors {
 public:
  struct End {
    std::string shape;  // the glued shape's name; empty when the end is free
    int site = 0;       // 1-based connection site
  };
  struct Connector {
    std::string name;
    End begin, end;
  };

  // A shape's text as the package should carry it.
  struct ShapeText {
    std::string name;
    std::string vert;         // "vert270" upward, "vert" downward, empty across
    bool empty = false;       // no text: the font and anchor below are written
    std::string anchor;       // "t", "ctr" or "b"
    std::string font;
    double size = 0;          // points
    bool bold = false, italic = false;
  };

  // sheets[i] holds the glued connectors of the workbook's (i+1)th sheet,
  // texts[i] its shapes whose text needs writing back.
  explicit XlsxConnectors(std::vector<std::vector<Connector>> sheets,
                          std::vector<std::vector<ShapeText>> texts = {})
      : sheets_(std::move(sheets)), texts_(std::move(texts)) {}

  // Rewrites the package at path in place. Connectors not listed lose their
  // (wrong) ends. Throws HostError when the file is no readable package.
  void Rewrite(const std::string& path) const;

 private:
  std::vector<std::vector<Connector>> sheets_;
  std::vector<std::vector<ShapeText>> texts_;
};

}  // namespace nivarel::office
