// What a template file says about itself, read from the file without the
// office: its title and its custom document properties. An Office Open XML
// package (.xltx) is read from its core and custom property parts, a binary
// workbook (.xlt) from its OLE2 summary and document summary property sets;
// which of the two a file is, is told by its first bytes, not its name.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace nivarel::templates {

struct TemplateFile {
  std::string title;
  // The custom properties as name and value, the value as text (a number in
  // decimal, a truth value "True" or "False"), in the order the file holds
  // them where the format keeps one.
  std::vector<std::pair<std::string, std::string>> custom;

  // The value of the custom property named exactly name; "" when absent.
  std::string Custom(const std::string& name) const;
};

// Reads the file at path into file. False, with file empty, when the file is
// missing or is not a package or property set that can be read.
bool ReadTemplateFile(const std::string& path, TemplateFile& file);

}  // namespace nivarel::templates
