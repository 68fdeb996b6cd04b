// `nivarel key` and `nivarel extract`: the symbol key drawn on a saved
// sheet, and a chart's steps written under "Process Steps" (or printed),
// each run inside an office with the add-in by the same tools as the menu's,
// the cell their prompt asks for given by --cell.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

extern const char kKeyUsage[];
extern const char kExtractUsage[];

struct OutputToolOptions {
  std::string input;                 // .ods or .xlsx
  std::vector<std::string> outputs;  // .ods or .xlsx, one file each
  std::string picture;               // key: a .png of the sheet the key is on, or empty
  std::string sheet;                 // the sheet read; empty for the sheet the file opens at
  std::string cell;                  // "C3" or "Sheet2.C3"; extract: empty for the active cell
  std::string extension;             // the nivarel.oxt to run with
  std::string shipped;               // the folder holding the shipped nivarel.cfg and symbols.ini
};

// Reads the arguments after the command's name into options; false, with a
// message on err, on a mistake.
bool ReadOutputToolArguments(const std::vector<std::string>& args, bool key, OutputToolOptions& options,
                             std::ostream& err);

// 0 when the key was drawn and every file written; otherwise a message on
// err and 1. Never leaves an office running.
int Key(const OutputToolOptions& options, std::ostream& out, std::ostream& err);
// 0 when the steps were written (into each output, else printed one a line
// on out); otherwise a message on err and 1. Never leaves an office running.
int Extract(const OutputToolOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nivarel::cli
