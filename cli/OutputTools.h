// `nivarel key`, `nivarel extract` and `nivarel mermaid`: the symbol key
// drawn on a saved sheet, a chart's steps written under "Process Steps" (or
// printed), and a chart written as Mermaid flowchart text,
// each run inside an office with the add-in by the same tools as the menu's,
// the cell their prompt asks for given by --cell.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

extern const char kKeyUsage[];
extern const char kExtractUsage[];
extern const char kMermaidUsage[];

struct OutputToolOptions {
  std::string input;                 // .ods or .xlsx
  std::vector<std::string> outputs;  // .ods or .xlsx, one file each
  std::string picture;               // key: a .png of the sheet the key is on, or empty
  std::string sheet;                 // the sheet read; empty for the sheet the file opens at
  std::string cell;                  // "C3" or "Sheet2.C3"; extract: empty for the active cell
  std::string extension;             // the nivarel.oxt to run with
  std::string shipped;               // the folder holding the shipped nivarel.cfg and symbols.ini
  std::string textFile;              // mermaid: the text file written; empty for standard output
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

// `nivarel mermaid FILE [-o OUT.mmd] [--sheet NAME]`: reads the arguments
// after the command's name; false, with a message on err, on a mistake.
bool ReadMermaidArguments(const std::vector<std::string>& args, OutputToolOptions& options, std::ostream& err);
// 0 when the chart's text was written to options.textFile (else to out);
// otherwise a message on err and 1. The file read is not changed. Never
// leaves an office running.
int Mermaid(const OutputToolOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nivarel::cli
