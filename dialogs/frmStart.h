// What the user sees when a new flowchart begins ("  Start Flowcharting"):
// where the first symbol goes and whether it is a terminator, how the
// drawing area and the page are set up, and whether a template is loaded.
// It changes nothing itself; the caller reads the results after Display.
#pragma once

#include <cstdint>
#include <string>

#include "CConfig.h"

namespace nivarel::host {
class UserDialog;
}

namespace nivarel::dialogs {

class frmStart {
 public:
  // Shows the dialog filled from config until it is started or cancelled.
  void Display(const rules::CConfig& config);

  bool OK() const { return ok_; }
  bool AddTerminator() const { return addTerminator_; }
  const std::string& TerminatorText() const { return terminatorText_; }
  const std::string& StartLocation() const { return startLocation_; }
  bool ShowGuidelines() const { return showGuidelines_; }
  bool HideGridlines() const { return hideGridlines_; }
  bool IsGrid() const { return isGrid_; }
  bool LoadTemplate() const { return loadTemplate_; }
  bool BlockDiagram() const { return blockDiagram_; }
  bool CustomLayout() const { return customLayout_; }
  // The paper code: 1 letter, 3 tabloid, 8 A3, 9 A4.
  int16_t PaperSize() const { return paperSize_; }
  // The margin preset as text, "0" to "2".
  const std::string& Margins() const { return margins_; }
  // 1 portrait, 2 landscape.
  int16_t Orientation() const { return orientation_; }
  const std::string& TemplateFolderPath() const { return templateFolderPath_; }
  const std::string& TemplateFilePath() const { return templateFilePath_; }

 private:
  // "Select Template...": the template chooser over the form; a chosen
  // template fills the file and start cell fields.
  void ChooseTemplate(host::UserDialog& form);

  bool ok_ = false;
  bool addTerminator_ = false;
  std::string terminatorText_, startLocation_;
  bool showGuidelines_ = false, hideGridlines_ = false, isGrid_ = true, loadTemplate_ = false;
  bool blockDiagram_ = false, customLayout_ = false;
  int16_t paperSize_ = 1;
  std::string margins_ = "0";
  int16_t orientation_ = 1;
  std::string templateFolderPath_, templateFilePath_;
};

}  // namespace nivarel::dialogs
