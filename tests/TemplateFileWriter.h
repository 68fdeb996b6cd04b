// Template files written for tests as a spreadsheet program writes them: an
// Office Open XML package with its core and custom property parts, and a
// binary workbook's OLE2 property sets.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace nivarel::testing {

// A custom property with its type as the package writes it ("lpwstr", "i4",
// "bool", "r8"); the property sets take "i4" as a number and the rest as text.
struct TypedProperty {
  std::string name, type, value;
};

std::string CorePart(const std::string& title);
std::string CustomPart(const std::vector<TypedProperty>& properties);
// A package of these parts beside its content types.
void WritePackage(const std::string& path, const std::vector<std::pair<std::string, std::string>>& parts);
// A package with a title and custom properties.
void WriteTemplatePackage(const std::string& path, const std::string& title,
                          const std::vector<TypedProperty>& properties);
// A compound file with the title in its summary and the properties as the
// user's own in its document summary, beside a workbook stream.
void WriteTemplateCompoundFile(const std::string& path, const std::string& title,
                               const std::vector<TypedProperty>& properties);

}  // namespace nivarel::testing
