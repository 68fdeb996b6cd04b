// `nivarel draw`: a flowchart drawn by the live run from a list of steps,
// each typed into the cell the run selects as a person would, then saved.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace nivarel::cli {

struct DrawOptions {
  std::string steps;    // a UTF-8 text file, one step per line; "-" for standard input
  std::vector<std::string> outputs;  // .ods or .xlsx, one file each
  std::string picture;  // a .png of the sheet, or empty
  std::string start;    // the first cell, or empty for the settings' own
  std::string config;   // a nivarel.cfg to run with, or empty for the user's own
  std::string symbols;  // a symbols.ini to run with, or empty for the user's own
  std::string extension;
  std::string shipped;  // the folder holding the shipped nivarel.cfg and symbols.ini
};

// 0 when the file was written; otherwise a message on err and 1 (bad input)
// or 2 (office failure). Never leaves an office running.
int Draw(const DrawOptions& options, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace nivarel::cli
