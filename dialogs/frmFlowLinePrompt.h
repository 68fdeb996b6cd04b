// The prompt of a live run whose new symbol has no obvious line to the one
// before (" Add Flow Line Connector"): the sheet's other symbols, nearest to
// the new one first, with a quick search, and the two connection sides.
// "Add flow line" draws a line from the chosen symbol to the new one,
// unrecorded: the run's step records it with the step's other shapes, as
// one entry of the undo list. "Don't add flow line" draws nothing.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "CConfig.h"
#include "FlowLineSides.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::dialogs {

class frmFlowLinePrompt {
 public:
  frmFlowLinePrompt();
  ~frmFlowLinePrompt();

  // The sheet, the shape the line will end at, and the settings to draw by.
  void InitializeSettings(office::Worksheet& ws, const office::Shape& shape, const rules::CConfig& config);
  // Shows the prompt modally and draws what it is told to.
  void Show();

 private:
  void PopulateGrid();
  void SetArrowPositions();
  void Event(const std::string& method);
  void cmdOK_Click();

  std::optional<office::Worksheet> ws_;
  std::optional<office::Shape> shape_;
  rules::CConfig config_;
  host::UserDialog* form_ = nullptr;
  std::unique_ptr<PictureGrid> grid_;
  std::unique_ptr<FlowLineSides> sides_;
  bool loaded_ = false;  // off while the form sets itself up
  std::optional<office::Shape> first_;  // the shape found by OK
  LineSides chosen_;                    // and the sides then shown
};

}  // namespace nivarel::dialogs
