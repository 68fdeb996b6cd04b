// `nivarel template`: a template file made by the template generator in an
// office of its own, from options given on the command line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

extern const char kTemplateUsage[];

// Reads the arguments after "template" and makes the template. 0 when the
// file was written; 2 and the usage on err for arguments it cannot take; 1
// and a message on err when the office fails or the file is not written.
// Never leaves an office running.
int Template(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace nivarel::cli
