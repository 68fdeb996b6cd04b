// The office writes an .xlsx package whose connectors name made-up shape ids
// at their ends, so other programs open every flow line unglued. Given how the
// connectors of each sheet are glued (by shape names, which the package
// keeps), XlsxConnectors rewrites the saved package so every connector's
// stCxn/endCxn names the cNvPr id of its shape and the site index of the
// shape's preset. It also gives every drawing object an id of its own.
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

  // sheets[i] holds the glued connectors of the workbook's (i+1)th sheet.
  explicit XlsxConnectors(std::vector<std::vector<Connector>> sheets) : sheets_(std::move(sheets)) {}

  // Rewrites the package at path in place. Connectors not listed lose their
  // (wrong) ends. Throws HostError when the file is no readable package.
  void Rewrite(const std::string& path) const;

 private:
  std::vector<std::vector<Connector>> sheets_;
};

}  // namespace nivarel::office
