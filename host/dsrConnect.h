// The add-in's connection to the office: the one object that the office side
// creates. It sets up the process-wide globals when the office connects,
// routes the menu's and toolbar's commands, watches the workbook of a running
// flowcharting session, and tears everything down exactly once when the
// office goes.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Application.h"
#include "CCommandBarBuilder.h"
#include "CControlEvents.h"
#include "CEventHandler.h"
#include "CommandKeys.h"
#include "OutputCommand.h"
#include "Subscription.h"
#include "WizardCommand.h"
#include "Workbook.h"

namespace nivarel::host {

class dsrConnect {
 public:
  // Stores the office in ExcelApp, reads ExcelVersion, clears the globals and
  // makes the command dispatcher. On failure the user is told, and the
  // connection shuts down at once.
  void AddinInstance_OnConnection(const office::Application& application);
  // The office has finished starting; commands may now run.
  void AddinInstance_OnStartupComplete();
  // Shuts down unless that has happened already. Never throws.
  void AddinInstance_OnDisconnection();
  // Releases everything the connection holds, ExcelApp last. Runs once per
  // connection (ShutdownDone); never throws.
  void ShutdownApplication();

  // A command of the menu or toolbar, by its control id ("rxNivarel..."):
  // refused for a shared document or a cell being edited, else run by its key.
  // An unknown key does nothing. Errors reach the user.
  void rxNivarel_OnAction(const std::string& controlId);
  // The wizard run that the command line sends (kRunWizardKey) with its
  // choices: refused while a flowcharting session runs or for a shared
  // workbook, else run by WizardCommand. Nothing is shown; the answer says
  // what came of it. Never throws.
  WizardOutcome rxNivarel_RunWizard(const WizardChoices& choices);
  // The symbol key (kRunKeyKey), the text extraction (kRunExtractKey) or the
  // Mermaid export (kRunMermaidKey) that
  // the command line sends with its choices: refused while a flowcharting
  // session runs or for a shared workbook, else run by OutputCommand. Never
  // throws.
  OutputOutcome rxNivarel_RunOutput(const std::string& key, const OutputChoices& choices);
  // Whether a command is offered now: nothing before start-up is complete;
  // during a session only Stop among the session's commands, else all but Stop.
  // Commands outside the session's set are always offered.
  bool rxNivarel_GetEnabled(const std::string& controlId);
  // The label of one of the five feature commands ("Default Styles" for
  // rxNivarelApplyStyles...); empty for any other control.
  std::string rxNivarel_GetLabel(const std::string& controlId);
  // Whether a feature command shows: always before start-up is complete and
  // for the five feature commands; any other control answers false, so only
  // the feature commands are asked (IsFeatureControl).
  bool rxNivarel_GetVisible(const std::string& controlId);
  // The five commands whose label and visibility the add-in answers.
  static bool IsFeatureControl(const std::string& controlId);

  // Offers the walkthrough once ("WalkthroughPrompt"), opening it when the
  // user accepts; the offer is not made again either way. Kept for a start-up
  // that offers it: nothing calls it yet.
  void ShowWalkthroughForm();
  // The office asks to end, its windows and settings still open: on the
  // command bar road the bar's place is stored, and the next session is
  // to show the extension's own toolbar again, while the office can still
  // keep that. Never throws.
  void TerminationAsked();
  // The office goes on after all (a question about saving was cancelled).
  void TerminationCancelled();

  // Ends a running flowcharting session because its workbook is being closed,
  // printed or saved; the office's action goes on.
  void InterruptFlowchartSession();
  // After the watched workbook was saved as .xlsx, makes the file's
  // connectors name the shapes they are glued to; a failure is logged.
  void RepairSavedWorkbook();
  // The workbook whose closing, printing or saving interrupts a session; it
  // stays watched after the session until the next one starts.
  void WatchWorkbook(const std::optional<office::Workbook>& workbook);
  bool WatchingWorkbook() const { return CurrentWorkbook.has_value(); }

  bool StartupComplete() const { return m_StartupComplete; }
  CEventHandler* EventHandler() { return m_EventHandler.get(); }

  // The whole part of the leading number of a version text ("12.0" gives 12);
  // 0 when the text doesn't start with a number.
  static int MajorVersion(const std::string& version);

 private:
  void Dispatch(Command command);
  // Builds the command bar and its click sink (the road below 12); a bar
  // that cannot be made is logged and left without a sink.
  void CreateToolbar();
  // The session's commands are told their state anew: the bar's buttons on
  // the road below 12, the menu's and toolbar's entries on the other.
  void SessionChanged(bool started);
  void InvalidateRibbonContols();
  void InvalidateFeatureRibbonControls();

  // Command bar name and tag; used on the command bar road only.
  std::string m_BarName;
  std::string m_BarTag;
  std::unique_ptr<CEventHandler> m_EventHandler;
  // The command bar and its click sink; on the command bar road only.
  std::unique_ptr<CCommandBarBuilder> m_CommandBarBuilder;
  std::unique_ptr<CControlEvents> m_ControlEvents;
  // The workbook of the running flowcharting session, and its events.
  std::optional<office::Workbook> CurrentWorkbook;
  office::Subscription m_WorkbookEvents;
  bool m_StartupComplete = false;
};

// The office process's one connection.
dsrConnect& TheConnection();

}  // namespace nivarel::host
