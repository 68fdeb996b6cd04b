// The files a command reads and writes: a workbook read as one of the types
// the command takes, written as .ods or .xlsx; a picture as .png.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

// The kind of file a path names: its extension in lower case (".ods").
std::string FileType(const std::string& path);
// Whether every output is an .ods or .xlsx and the picture, when one is
// asked for, a .png; says why not on err.
// Why the input cannot be read, before an office is started for it (no such
// file, a folder, not readable, not of one of types, such as ".ods"); empty
// when it can.
std::string InputProblem(const std::string& path, const std::vector<std::string>& types);
bool CheckOutputTypes(const std::vector<std::string>& outputs, const std::string& picture, std::ostream& err);

}  // namespace nivarel::cli
