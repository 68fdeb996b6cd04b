// What other programs read from a saved .xlsx: the connectors of the first
// sheet's drawing and the objects their stCxn and endCxn ids point to.
#pragma once

#include <string>
#include <vector>

namespace nivarel::testing {

struct XlsxConnector {
  std::string name;
  std::string begin, end;        // the named objects' names; empty where an end names no object
  int beginSite = 0, endSite = 0;  // 1-based; 0 where the file gives none
};

// The connectors of xl/drawings/drawing1.xml in document order. Adds a test
// failure when two objects of the drawing share an id.
std::vector<XlsxConnector> XlsxConnectorsOf(const std::string& package);

// A member of a zip package as text; empty when missing, which fails the
// test when it is required.
std::string PackageMember(const std::string& package, const std::string& member, bool required = true);

}  // namespace nivarel::testing
