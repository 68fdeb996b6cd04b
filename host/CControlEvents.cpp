#include "CControlEvents.h"

#include "CommandBars.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "Text.h"

namespace nivarel::host {

using office::vbExclamation;

namespace {

constexpr char kSource[] = "CControlEvents";

// The office's toolbars that stand for the host's drawing bars "Flowchart",
// "Callouts", "Autoshapes" and "Drawing"; Calc has no bar of connectors.
constexpr const char* kFlowchart = "flowchartshapes";
constexpr const char* kCallouts = "calloutshapes";
constexpr const char* kAutoshapes = "basicshapes";
constexpr const char* kDrawing = "drawbar";

}  // namespace

void CControlEvents::InitializeMenu(CCommandBarBuilder* bar, const std::string&, const std::string& tag,
                                    Dispatcher dispatch, Requery requery) {
  m_CommandBar = bar;
  m_Tag = tag;
  m_Dispatch = std::move(dispatch);
  m_Requery = std::move(requery);
}

void CControlEvents::m_CBButton_Click(const std::string& parameter) {
  try {
    std::string message;
    if (IsSharedWorkbook(message)) {
      MsgBox(message, vbExclamation, "Shared Workbook");
      return;
    }
    if (ExcelInEditMode()) {
      MsgBox("Cannot run a Nivarel function when Calc is in Edit mode. Press {ENTER} or {ESC} to exit edit mode.",
             vbExclamation, "Nivarel - Calc in Edit Mode");
      return;
    }
    std::string key = rules::LowerCase(parameter);
    FailWhenAsked(key, "command");
    if (auto command = CommandForKey(key, Road::Bar)) {
      if (*command == Command::ToggleSymbolBars)
        ToggleSymbolBars();
      else if (m_Dispatch)
        m_Dispatch(*command);
    }
  } catch (...) {
    ErrorHandler(kSource, "m_CBButton_Click", true);
    ResetButtonsAfterSession();
  }
}

void CControlEvents::SetButtons(const std::vector<std::string>& disabled) {
  if (!m_CommandBar) return;
  std::vector<std::string> ids;
  for (const auto& key : m_CommandBar->BarButtonKeys()) {
    bool off = false;
    for (const auto& d : disabled) off = off || d == key;
    m_CommandBar->SetEnabled(key, !off);
    ids.push_back("rxNivarel" + key);
  }
  if (m_Requery) m_Requery(ids);
}

void CControlEvents::ResetButtonsForSession() {
  SetButtons({"NivarelSettings", "StartFlowcharting", "FlowchartWizard"});
}

void CControlEvents::ResetButtonsAfterSession() { SetButtons({"StopFlowcharting"}); }

void CControlEvents::ToggleSymbolBars() {
  office::CommandBars bars(ExcelApp->Session());
  bool shown = bars.Visible(kFlowchart) || bars.Visible(kCallouts) || bars.Visible(kAutoshapes);
  if (shown) {
    for (const char* bar : {kFlowchart, kCallouts, kDrawing, kAutoshapes}) bars.SetVisible(bar, false);
    return;
  }
  for (const char* bar : {kCallouts, kFlowchart, kDrawing, kAutoshapes}) bars.SetVisible(bar, true);
}

}  // namespace nivarel::host
