// `nivarel export`: a picture of a saved workbook's flowchart (its shapes, or
// a range of cells with the shapes over it) written by the add-in's export
// controller inside an office, in one of the six formats of the Export as
// Picture dialog or as vectors (.svg, .pdf).
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

extern const char kExportUsage[];

// Runs `nivarel export` with its arguments (those after the command's name)
// and the extension to run with. 0 when the picture was written; 2 with the
// usage on err for a mistake in the arguments; 1 with a message on err when
// the file cannot be read or nothing can be written. Never leaves an office
// running.
int Export(const std::vector<std::string>& args, const std::string& extension, std::ostream& out,
           std::ostream& err);

}  // namespace nivarel::cli
