// Copy as Mermaid: the active sheet's chart written as Mermaid flowchart text
// (CMermaidExport, MermaidWriter), put on the office's clipboard, then
// offered to be saved as a file through the office's save dialog ("Save
// Mermaid Text", in the flowcharts folder under the sheet's name). Nothing
// on the sheet changes, so there is nothing to undo; a sheet without
// symbols copies nothing and says so.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace nivarel::output {

class CMermaidCopy {
 public:
  static constexpr char kTitle[] = "Copy as Mermaid";

  // The save dialog's types: Mermaid (*.mmd), chosen at first, and Text (*.txt).
  static const std::vector<std::pair<std::string, std::string>>& SaveFilters();
  // The file the save dialog's answer names: the chosen type's extension
  // added unless the name already ends in it.
  static std::string FileNameOf(const std::string& chosen, int filterIndex);

  // Runs the tool on the active sheet. Never throws: a failure of the office
  // is logged under "CMermaidCopy".
  void CopyAsMermaid();
  // The text went to the clipboard.
  bool Copied() const { return copied_; }
  // Where the text was saved; empty when it was not.
  const std::string& SavedTo() const { return savedTo_; }

 private:
  bool copied_ = false;
  std::string savedTo_;
};

}  // namespace nivarel::output
