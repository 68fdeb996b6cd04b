// `nivarel wizard`: the text of a spreadsheet or CSV file turned into a
// flowchart by the text-to-flowchart wizard, run inside an office with the
// add-in as Finish runs it in the wizard's dialog, then saved.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace nivarel::cli {

struct WizardOptions {
  std::string input;                 // .ods, .xlsx, .csv, or .mmd (Mermaid text)
  std::vector<std::string> outputs;  // .ods or .xlsx, one file each
  std::string picture;               // a .png of the output sheet's drawing, or empty
  std::string sheet;                 // the sheet to read; empty for the first sheet shown
  bool addSpacing = true;            // false: keep the existing layout
  int rowsBetween = 2;               // 0 to 10
  int columnsBetween = 4;            // 0 to 10
  bool newSheet = true;              // false: draw over the sheet read
  std::string extension;             // the nivarel.oxt to run with
  std::string shipped;               // the folder holding the shipped nivarel.cfg and symbols.ini
};

// 0 when every file was written; otherwise a message on err and 1 (a file
// that cannot be read, a sheet without text or not there, an output type
// other than .ods and .xlsx, an office that fails). Never leaves an office
// running.
int Wizard(const WizardOptions& options, std::ostream& out, std::ostream& err);

}  // namespace nivarel::cli
