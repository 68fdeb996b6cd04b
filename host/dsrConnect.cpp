#include "dsrConnect.h"

#include <algorithm>
#include <map>
#include <cstdio>
#include <vector>
#include <cstdlib>
#include <exception>

#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "ProtocolHandler.h"
#include "UserSettings.h"
#include "frmOpenWalkthrough.h"

namespace nivarel::host {

using namespace office;

namespace {

constexpr char kSource[] = "dsrConnect";

// Appends a line to the file named by NIVAREL_LIFECYCLE_LOG, if it is set,
// so that tests can watch the connection come and go.
void NoteLifecycle(const char* line) {
  const char* path = std::getenv("NIVAREL_LIFECYCLE_LOG");
  if (!path || !*path) return;
  if (FILE* f = std::fopen(path, "a")) {
    std::fprintf(f, "%s\n", line);
    std::fclose(f);
  }
}

}  // namespace

dsrConnect& TheConnection() {
  static dsrConnect connection;
  return connection;
}

int dsrConnect::MajorVersion(const std::string& version) {
  const char* text = version.c_str();
  char* end = nullptr;
  double value = std::strtod(text, &end);
  if (end == text) return 0;
  return static_cast<int>(value);
}

void dsrConnect::AddinInstance_OnConnection(const Application& application) {
  m_StartupComplete = false;
  try {
    ExcelApp = application;
    ExcelVersion = MajorVersion(ExcelApp->Version());
    InitializeGlobals();
    if (ExcelVersion >= 12) {
      m_EventHandler = std::make_unique<CEventHandler>();
    } else {
      CreateToolbar();
    }
    // The help pages and the first copies of the settings files come from
    // the extension's folder.
    SetInstallFolder(ExcelApp->AddinFolder());
    NoteLifecycle("connect");
  } catch (...) {
    ErrorHandler(kSource, "AddinInstance_OnConnection", true);
    LogEvent(kSource, "AddinInstance_OnConnection", "Add-in failed to establish connection");
    ShutdownApplication();
  }
}

void dsrConnect::AddinInstance_OnStartupComplete() {
  try {
    // Complete first: the menus ask for their state at once.
    m_StartupComplete = true;
    if (ExcelVersion >= 12) {
      InvalidateRibbonContols();
      InvalidateFeatureRibbonControls();
    }
  } catch (...) {
    ErrorHandler(kSource, "AddinInstance_OnStartupComplete", true);
  }
}

void dsrConnect::AddinInstance_OnDisconnection() {
  NoteLifecycle("disconnect");
  try {
    if (!ShutdownDone) ShutdownApplication();
  } catch (...) {
    // Nothing may stop the office from closing.
  }
}

void dsrConnect::ShutdownApplication() {
  if (ShutdownDone) return;
  ShutdownDone = true;
  if (ExcelVersion >= 12) {
    // SEAM: the reference to the ribbon is released here.
    try {
      m_WorkbookEvents.Reset();
      CurrentWorkbook.reset();
    } catch (...) {
    }
  } else {
    // The office's windows are closed by now, and with them the drawing
    // toolbars that the Symbols button showed: nothing to remove there.
    if (m_CommandBarBuilder) {
      m_CommandBarBuilder->StoreCommandBarPosition();
      m_CommandBarBuilder->ResetCommandBar();
    }
    m_CommandBarBuilder.reset();
    m_ControlEvents.reset();
    m_EventHandler.reset();  // the click sink's, on this road
    try {
      m_WorkbookEvents.Reset();
      CurrentWorkbook.reset();
    } catch (...) {
    }
  }
  if (ExcelVersion >= 12) m_EventHandler.reset();
  ExcelApp.reset();
}

void dsrConnect::rxNivarel_OnAction(const std::string& controlId) {
  const bool menuOnly = CommandForKey(KeyOfControlId(controlId), Road::Ribbon) &&
                        !CommandForKey(KeyOfControlId(controlId), Road::Bar);
  if (ExcelVersion < 12 && m_ControlEvents && !menuOnly) {
    // A button of the command bar: its click sink checks and runs it. The
    // extension's menu stands on this road too; its entries that the bar
    // does not have (Help Contents) run as they do on the other road.
    if (!m_EventHandler) m_EventHandler = std::make_unique<CEventHandler>();
    m_ControlEvents->m_CBButton_Click(KeyOfControlId(controlId));
    return;
  }
  try {
    std::string message;
    if (IsSharedWorkbook(message)) {
      MsgBox(message, vbExclamation, "Shared Workbook");
      return;
    }
    if (ExcelInEditMode()) {
      MsgBox("Cannot run a Nivarel function\r\nwhen Calc is in Edit mode.\r\n\r\n"
             "Press {ENTER} or {ESC} to exit edit mode.",
             vbExclamation, "Nivarel - Calc in Edit Mode");
      return;
    }
    std::string key = KeyOfControlId(controlId);
    if (!m_EventHandler) m_EventHandler = std::make_unique<CEventHandler>();
    FailWhenAsked(key, "command");
    if (auto command = CommandForKey(key, Road::Ribbon)) Dispatch(*command);
  } catch (...) {
    ErrorHandler(kSource, "rxNivarel_OnAction", true);
  }
}

WizardOutcome dsrConnect::rxNivarel_RunWizard(const WizardChoices& choices) {
  WizardOutcome refused;
  try {
    if (!m_EventHandler) m_EventHandler = std::make_unique<CEventHandler>();
    if (m_EventHandler->FlowchartingInProgress()) {
      refused.message = "Flowcharting is in progress: stop it before running the Flowchart Wizard.";
      return refused;
    }
    if (IsSharedWorkbook(refused.message)) return refused;
    return WizardCommand::Run(choices);
  } catch (...) {
    ErrObject e = CurrentError();
    ErrorHandler(kSource, "rxNivarel_RunWizard", false, e);
    refused.message = e.Description;
    return refused;
  }
}

OutputOutcome dsrConnect::rxNivarel_RunOutput(const std::string& key, const OutputChoices& choices) {
  OutputOutcome refused;
  try {
    if (!m_EventHandler) m_EventHandler = std::make_unique<CEventHandler>();
    if (m_EventHandler->FlowchartingInProgress()) {
      refused.message = "Flowcharting is in progress: stop it first.";
      return refused;
    }
    if (IsSharedWorkbook(refused.message)) return refused;
    if (key == kRunMermaidKey) return OutputCommand::Mermaid(choices);
    return key == kRunKeyKey ? OutputCommand::CreateKey(choices) : OutputCommand::ExtractText(choices);
  } catch (...) {
    ErrObject e = CurrentError();
    ErrorHandler(kSource, "rxNivarel_RunOutput", false, e);
    refused.message = e.Description;
    return refused;
  }
}

void dsrConnect::Dispatch(Command command) {
  CEventHandler& h = *m_EventHandler;
  switch (command) {
    case Command::CheckStatus: h.CheckStatus(); break;
    case Command::OpenWalkthrough: OpenWalkthrough(); break;
    case Command::CheckForUpdates: h.CheckForUpdates(); break;
    case Command::ShowHelpContents: h.ShowHelpContents(); break;
    case Command::ShowAbout: h.ShowAbout(); break;
    case Command::StartInteractiveFlowcharting:
      if (h.StartInteractiveFlowcharting()) {
        SessionChanged(true);
        WatchWorkbook(std::nullopt);
        WatchWorkbook(ExcelApp ? ExcelApp->ActiveWorkbook() : std::nullopt);
      }
      break;
    case Command::ShowFlowchartWizard: h.ShowFlowchartWizard(); break;
    case Command::StopInteractiveFlowcharting:
      // The workbook stays watched, so that saving the chart as .xlsx later
      // still repairs its connectors.
      h.StopInteractiveFlowcharting(false);
      SessionChanged(false);
      break;
    case Command::ShowSettings: h.ShowSettings(); break;
    case Command::ShowTemplateGeneratorForm: h.ShowTemplateGeneratorForm(); break;
    case Command::ShowTemplateSelectionForm: h.ShowTemplateSelectionForm(); break;
    case Command::CreateWorksheetGrid: h.CreateWorksheetGrid(); break;
    case Command::CreateFlowchartKey: h.CreateFlowchartKey(); break;
    case Command::ExportImage: h.ExportImage(); break;
    case Command::InsertFlowLine: h.InsertFlowLine(); break;
    case Command::ExtractText: h.ExtractText(); break;
    case Command::ToggleGridLines: h.ToggleGridLines(); break;
    case Command::ClearShading: h.ClearShading(); break;
    case Command::ApplyStyles: h.ApplyStyles(); break;
    case Command::ShowStyleWizard: h.ShowStyleWizard(); break;
    case Command::InsertBranch: h.InsertBranch(); break;
    case Command::InsertGroupBox: h.InsertGroupBox(); break;
    case Command::ShowShapeSelectionForm: h.ShowShapeSelectionForm(); break;
    case Command::ToggleSymbolBars: break;  // the command bar road's own
    case Command::GroupAllShapes: h.GroupAllShapes(); break;
    case Command::UngroupAllShapes: h.UngroupAllShapes(); break;
    case Command::SelectAllShapes: h.SelectAllShapes(); break;
    case Command::SelectAllLines: h.SelectAllLines(); break;
    case Command::SelectAllLabels: h.SelectAllLabels(); break;
    case Command::SelectFlowchartSymbolsOnly: h.SelectFlowchartSymbolsOnly(); break;
    case Command::InsertLabel: h.InsertLabel(); break;
    case Command::CopyAsMermaid: h.CopyAsMermaid(); break;
    case Command::ImportMermaid: h.ImportMermaid(); break;
  }
}

void dsrConnect::TerminationAsked() {
  if (ExcelVersion >= 12 || !m_CommandBarBuilder) return;
  m_CommandBarBuilder->StoreCommandBarPosition();
  m_CommandBarBuilder->KeepExtensionToolbar(true);
}

void dsrConnect::TerminationCancelled() {
  if (ExcelVersion >= 12 || !m_CommandBarBuilder) return;
  m_CommandBarBuilder->KeepExtensionToolbar(false);
}

void dsrConnect::CreateToolbar() {
  m_BarName = "Nivarel";
  m_BarTag = "Nivarel";
  try {
    m_CommandBarBuilder = std::make_unique<CCommandBarBuilder>();
    if (!m_CommandBarBuilder->CreateCommandBar(m_BarName, m_BarTag))
      throw HostError(kNivarelError, "The command bar could not be made.");
    m_ControlEvents = std::make_unique<CControlEvents>();
    m_ControlEvents->InitializeMenu(
        m_CommandBarBuilder.get(), m_BarName, m_BarTag, [this](Command c) { Dispatch(c); },
        [](const std::vector<std::string>& ids) { ProtocolHandler::Requery(ids); });
    m_CommandBarBuilder->DisableStopButton();
  } catch (...) {
    ErrorHandler(kSource, "CreateToolbar", false);
  }
}

void dsrConnect::SessionChanged(bool started) {
  if (ExcelVersion < 12) {
    if (!m_ControlEvents) return;
    if (started)
      m_ControlEvents->ResetButtonsForSession();
    else
      m_ControlEvents->ResetButtonsAfterSession();
    return;
  }
  InvalidateRibbonContols();
  InvalidateFeatureRibbonControls();
}

void dsrConnect::WatchWorkbook(const std::optional<Workbook>& workbook) {
  m_WorkbookEvents.Reset();
  CurrentWorkbook = workbook;
  if (!CurrentWorkbook) return;
  m_WorkbookEvents = CurrentWorkbook->OnEvent([this](Workbook::Event e) {
    if (e == Workbook::Event::AfterSave)
      RepairSavedWorkbook();
    else
      InterruptFlowchartSession();
  });
}

void dsrConnect::RepairSavedWorkbook() {
  try {
    if (CurrentWorkbook) CurrentWorkbook->RepairSavedConnectors();
  } catch (...) {
    ErrObject e = CurrentError();
    LogEvent(kSource, "RepairSavedWorkbook", "Error (" + std::to_string(e.Number) + "), " + e.Description);
  }
}

void dsrConnect::InterruptFlowchartSession() {
  NoteLifecycle("interrupt");
  try {
    if (CurrentWorkbook && m_EventHandler && m_EventHandler->FlowchartingInProgress()) {
      m_EventHandler->StopInteractiveFlowcharting(true);
      SessionChanged(false);
    }
  } catch (...) {
    ErrObject e = CurrentError();
    LogEvent(kSource, "", "Error (" + std::to_string(e.Number) + "), " + e.Description);
  }
}

void dsrConnect::ShowWalkthroughForm() {
  try {
    bool open = false;
    if (GetBoolSetting("WalkthroughPrompt", "True")) {
      dialogs::frmOpenWalkthrough offer;
      offer.Display();
      open = offer.OK();
    }
    if (open) OpenWalkthrough();
  } catch (...) {
    ErrorHandler(kSource, "ShowWalkthroughForm", false);
  }
  try {
    SaveSetting(kAppTitle, "Settings", "WalkthroughPrompt", "False");
  } catch (...) {
    ErrorHandler(kSource, "ShowWalkthroughForm", false);
  }
}

namespace {
const std::vector<std::string> kSessionControls = {"rxNivarelCreateKey", "rxNivarelExtractText",
                                                   "rxNivarelNivarelSettings", "rxNivarelStartFlowcharting",
                                                   "rxNivarelStopFlowcharting"};
const std::vector<std::string> kFeatureControls = {"rxNivarelApplyStyles", "rxNivarelStyleWizard",
                                                   "rxNivarelFlowchartWizard", "rxNivarelSavePicture",
                                                   "rxNivarelCreateTemplate"};
bool Among(const std::vector<std::string>& ids, const std::string& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}
}  // namespace

bool dsrConnect::rxNivarel_GetEnabled(const std::string& controlId) {
  try {
    // The command bar's buttons keep their own states, as the bar's click
    // sink sets them.
    if (ExcelVersion < 12) return !m_CommandBarBuilder || m_CommandBarBuilder->Enabled(KeyOfControlId(controlId));
    if (!Among(kSessionControls, controlId) && !Among(kFeatureControls, controlId)) return true;
    if (!m_StartupComplete) return false;
    if (!m_EventHandler) m_EventHandler = std::make_unique<CEventHandler>();
    bool running = m_EventHandler->FlowchartingInProgress();
    return controlId == "rxNivarelStopFlowcharting" ? running : !running;
  } catch (...) {
    ErrorHandler(kSource, "rxNivarel_GetEnabled", false);
    return false;
  }
}

bool dsrConnect::IsFeatureControl(const std::string& controlId) { return Among(kFeatureControls, controlId); }

std::string dsrConnect::rxNivarel_GetLabel(const std::string& controlId) {
  try {
    static const std::map<std::string, std::string> kLabels = {
        {"rxNivarelApplyStyles", "Default Styles"},        {"rxNivarelStyleWizard", "Style Wizard"},
        {"rxNivarelSavePicture", "Export as Picture"},     {"rxNivarelFlowchartWizard", "Flowchart Wizard"},
        {"rxNivarelCreateTemplate", "Create a Template"}};
    auto label = kLabels.find(controlId);
    return label == kLabels.end() ? std::string() : label->second;
  } catch (...) {
    ErrorHandler(kSource, "rxNivarel_GetLabel", false);
    return {};
  }
}

bool dsrConnect::rxNivarel_GetVisible(const std::string& controlId) {
  try {
    if (!m_StartupComplete) return true;
    return IsFeatureControl(controlId);
  } catch (...) {
    ErrorHandler(kSource, "rxNivarel_GetVisible", false);
    return false;
  }
}

void dsrConnect::InvalidateRibbonContols() { ProtocolHandler::Requery(kSessionControls); }

void dsrConnect::InvalidateFeatureRibbonControls() { ProtocolHandler::Requery(kFeatureControls); }

}  // namespace nivarel::host
