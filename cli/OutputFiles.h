// The files a command writes: a workbook as .ods or .xlsx, a picture as .png.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

// The kind of file a path names: its extension in lower case (".ods").
std::string FileType(const std::string& path);
// Whether every output is an .ods or .xlsx and the picture, when one is
// asked for, a .png; says why not on err.
bool CheckOutputTypes(const std::vector<std::string>& outputs, const std::string& picture, std::ostream& err);

}  // namespace nivarel::cli
