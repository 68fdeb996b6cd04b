// The flow line insertion tool (" Insert Flow Line Connector"): the sheet's
// symbols in two lists, "From Symbol" and "To Symbol", each with a quick
// search, and the two connection sides, worked out from where the chosen
// shapes stand and changed by hand. Two selected shapes are proposed first
// and second; otherwise the newest symbol and the one before it. "Add flow
// line" draws the line as one entry of the undo list; a symbol gone
// meanwhile is told ("Shape not found") and the dialog stays.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "CConfig.h"
#include "FlowLineSides.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::dialogs {


class frmFlowLineInsert {
 public:
  frmFlowLineInsert();
  ~frmFlowLineInsert();

  // On the active sheet, with the settings as saved.
  void DisplayFromMenu();
  // On ws with config: the reserved word's way in.
  void Display(office::Worksheet& ws, const rules::CConfig& config);

 private:
  void Show(const std::string& procedure);
  void InitializeForm();
  void PopulateGrids();
  // The names of the first two shapes of the office's selection of shapes.
  std::pair<std::string, std::string> FindPreSelectedShapes() const;
  void SetArrowPositions();
  void Event(const std::string& method);
  void cmdOK_Click();

  std::optional<office::Worksheet> ws_;
  rules::CConfig config_;
  host::UserDialog* form_ = nullptr;
  std::unique_ptr<PictureGrid> from_, to_;
  std::unique_ptr<FlowLineSides> sides_;
  bool loaded_ = false;  // off while the form sets itself up
  std::optional<office::Shape> first_, second_;  // the shapes found by OK
  LineSides chosen_;                              // and the sides then shown
};

}  // namespace nivarel::dialogs
