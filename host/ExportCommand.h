// Export as Picture run without its dialog, as the command line asks for it:
// a picture of one sheet of a workbook (its shapes, or a range of cells with
// the shapes over it) written to a file by the export controller inside the
// office. Answers the picture's size or why nothing was written; nothing is
// shown to a user.
#pragma once

#include <optional>
#include <string>

#include "Workbook.h"

namespace nivarel::host {

// The key of the export that the command line sends with its choices
// (rxNivarelRunExportImage): on no road, so no menu entry or button runs it.
constexpr char kRunExportKey[] = "runexportimage";

struct ExportChoices {
  std::optional<office::Workbook> workbook;  // none: the active workbook
  std::string sheet;                         // empty: the workbook's active sheet
  std::string range;                         // empty: the shapes, or the sheet's content when it has none
  int scale = 1;                             // times the screen's resolution, 1 to 10
  std::string path;                          // .bmp .emf .gif .jpg .png .tif, or .svg .pdf
};

struct ExportOutcome {
  bool written = false;
  std::string message;  // why nothing was written
  int width = 0, height = 0;  // the picture's pixels
  double seconds = 0;   // from the capture to the file written
};

class ExportCommand {
 public:
  // The format code and flags the save dialog gives a file type (".png");
  // false for a type it doesn't offer.
  static bool FormatOf(const std::string& type, int& format, int& flags);
  // Captures and writes the picture. Never throws: an unexpected error is
  // logged and answered.
  static ExportOutcome Run(const ExportChoices& choices);
};

}  // namespace nivarel::host
