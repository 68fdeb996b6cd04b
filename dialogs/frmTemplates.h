// The template chooser: the template files (.xlt and .xltx) of a folder in a
// table with what their document properties say (title, paper, orientation,
// lanes, lane direction, type), read from the files without the office;
// filters by paper, orientation and type; another folder typed or browsed
// to. A new user's template folder is first filled with the templates that
// come with the add-in. It changes nothing on the sheet; the caller reads the
// results after Display.
#pragma once

#include <string>

namespace nivarel::dialogs {

class frmTemplates {
 public:
  // Shows the dialog on folder ("" for the user's template folder, filled on
  // first use) under the window title caption, with okText on the OK button
  // ("&" before its mnemonic), until a template is chosen or it is cancelled.
  void Display(const std::string& folder, const std::string& caption, const std::string& okText);

  // True when the dialog was left with OK on a template.
  bool OK() const { return ok_; }
  // Whether the chosen template is of the type "Block Diagram", which is
  // placed on a sheet without a flowcharting run.
  bool BlockDiagram() const { return blockDiagram_; }
  // The folder the table was last read from, ending in "/".
  const std::string& TemplateFolderPath() const { return templateFolderPath_; }
  // The chosen template's file; "" when the table had no row chosen.
  const std::string& TemplateFilePath() const { return templateFilePath_; }
  // The chosen template's start cell (its "StartLocation"); "" when it has none.
  const std::string& StartLocation() const { return startLocation_; }

 private:
  bool ok_ = false, blockDiagram_ = false;
  std::string templateFolderPath_, templateFilePath_, startLocation_;
};

}  // namespace nivarel::dialogs
