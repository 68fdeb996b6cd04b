// The click sink of the command bar on the road below version 12. A click
// on a button of the bar is refused for a shared workbook or a cell being
// edited (in the bar's own words), else runs the button's command by its key
// on the bar road. The bar's buttons follow a flowcharting session: with
// none, all but Stop are enabled; during one, all but Settings, Start and the
// Flowchart Wizard.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "CCommandBarBuilder.h"
#include "CommandKeys.h"

namespace nivarel::host {

class CControlEvents {
 public:
  // Runs an operation of the key table (the connection's dispatch).
  using Dispatcher = std::function<void(Command)>;
  // Tells the office's buttons of these control ids their state anew.
  using Requery = std::function<void(const std::vector<std::string>&)>;

  // Joins the sink to the bar that bar built, whose buttons share tag.
  void InitializeMenu(CCommandBarBuilder* bar, const std::string& barName, const std::string& tag,
                      Dispatcher dispatch, Requery requery);
  // A click on the bar's button with this Parameter (its key, any case).
  // Errors reach the user, and the bar then shows the state of no session.
  void m_CBButton_Click(const std::string& parameter);
  void ResetButtonsForSession();
  void ResetButtonsAfterSession();
  // Shows the office's drawing toolbars as a set, or hides them when any
  // of them shows.
  void ToggleSymbolBars();

 private:
  void SetButtons(const std::vector<std::string>& disabled);

  CCommandBarBuilder* m_CommandBar = nullptr;
  std::string m_Tag;
  Dispatcher m_Dispatch;
  Requery m_Requery;
};

}  // namespace nivarel::host
