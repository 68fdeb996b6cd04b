#include "CEventHandler.h"

#include "CInteractiveFlowcharter.h"
#include "CPageLayout.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "UserSettings.h"
#include "TextConvert.h"
#include "frmRestart.h"
#include "frmStart.h"

namespace nivarel::host {

namespace {
const char* const kSource = "CEventHandler";
}

CEventHandler::CEventHandler() = default;
CEventHandler::~CEventHandler() = default;

bool CEventHandler::CheckActiveSheet() {
  try {
    if (!ExcelApp || ExcelApp->GetWorkbooks().Count() == 0) {
      MsgBox("There are no workbooks open. You must open a workbook before using Nivarel.", vbOKOnly,
             "No Workbooks Open");
      return true;
    }
    if (!ExcelApp->ActiveSheet()) {
      MsgBox("The current sheet is not a Worksheet. This function cannot be run.\r\n"
             "Please select a Worksheet when using this function.",
             vbOKOnly);
      return true;
    }
  } catch (...) {
  }
  return false;
}

bool CEventHandler::PrestartChecks() {
  if (CheckActiveSheet()) return false;
  if (!GlobalRowHeightSet) SetGlobalRowHeight();
  return true;
}

bool CEventHandler::StartNormalFlowcharting(rules::CConfig& config) {
  dialogs::frmStart form;
  form.Display(config);
  if (!form.OK()) return false;
  config.BlockDiagram = form.BlockDiagram();
  config.TemplateFolderPath = form.TemplateFolderPath();
  config.TemplateFilePath = form.TemplateFilePath();
  config.IsGrid = form.IsGrid();
  config.HideGridlines = form.HideGridlines();
  config.ShowGuides = form.ShowGuidelines();
  config.CustomLayout = form.CustomLayout();
  config.PaperSize = form.PaperSize();
  config.Margins = rules::ToInt16(form.Margins());
  config.Orientation = form.Orientation();
  config.StartTerminator = form.AddTerminator();
  config.StartTerminatorText = form.TerminatorText();
  config.LoadTemplate = form.LoadTemplate();
  if (!config.LoadTemplate) {
    config.StartLocation = form.StartLocation();
    config.RestartLocation.clear();
    config.UseRestartLocation = false;
  } else {
    config.RestartLocation = form.StartLocation();
    config.UseRestartLocation = true;
  }
  config.StoreConfigData();
  return true;
}

void CEventHandler::ShowRestartForm(const rules::CConfig& config) {
  if (GetBoolSetting("ShowRestart", "True")) {
    dialogs::frmRestart form;
    form.Display();
    SaveSetting(kAppTitle, "Settings", "ShowRestart", form.ShowRestartMessage() ? "True" : "False");
  }
  shapes::CPageLayout layout;
  layout.SnapToGrid(true);
  layout.SnapToShape(true);
  m_SessionActive = true;
  ExcelApp->SetEnableEvents(true);
  m_Flowcharter = std::make_unique<flowcharting::CInteractiveFlowcharter>();
  m_Flowcharter->RestartFlowcharting(config);
}

void CEventHandler::SetPageLayout(const rules::CConfig& config) {
  shapes::CPageLayout layout;
  auto sheet = ExcelApp->ActiveSheet();
  if (!sheet) return;
  if (!config.LoadTemplate) layout.SetPageLayout(*sheet, config);
  try {
    sheet->GetRange(config.UseRestartLocation ? config.RestartLocation : config.StartLocation).Select();
  } catch (...) {
  }
  layout.SnapToGrid(true);
  layout.SnapToShape(true);
}

bool CEventHandler::StartInteractiveFlowcharting() {
  if (!PrestartChecks()) return false;
  bool result = false;
  try {
    ExcelApp->SetScreenUpdating(true);
    rules::CConfig config;
    config.LoadConfigData();
    if (GetNonTemplateShapeCount() < 1) {
      result = StartNormalFlowcharting(config);
      if (result) SetPageLayout(config);
      if (result) {
        ExcelApp->SetEnableEvents(true);
        m_Flowcharter = std::make_unique<flowcharting::CInteractiveFlowcharter>();
        result = m_Flowcharter->StartFlowcharting(config);
      }
    } else {
      ShowRestartForm(config);
      result = true;
    }
  } catch (...) {
    ErrorHandler(kSource, "StartInteractiveFlowcharting", false);
    result = false;
  }
  try {
    if (result) {
      m_SessionActive = true;
    } else {
      m_SessionActive = false;
      ExcelApp->SetEnableEvents(true);
      ExcelApp->SetScreenUpdating(true);
      m_Flowcharter.reset();
    }
  } catch (...) {
  }
  return result;
}

void CEventHandler::StopInteractiveFlowcharting(bool fromWorkbookEvent) {
  try {
    if (!m_SessionActive) return;
    m_SessionActive = false;
    if (m_Flowcharter) m_Flowcharter->StopFlowcharting(fromWorkbookEvent);
  } catch (...) {
  }
  try {
    ExcelApp->SetEnableEvents(true);
    ExcelApp->SetScreenUpdating(true);
  } catch (...) {
  }
  m_Flowcharter.reset();
}

// The tools behind these commands arrive one by one; until then a command
// that reaches its operation does nothing.
void CEventHandler::ApplyStyles() {}
void CEventHandler::CheckForUpdates() {}
void CEventHandler::CreateFlowchartKey() {}
void CEventHandler::CreateWorksheetGrid() { shapes::CPageLayout().CreateGrid(); }
void CEventHandler::ExtractText() {}
void CEventHandler::InsertFlowLine() {}
void CEventHandler::InsertBranch() {}
void CEventHandler::InsertGroupBox() {}
void CEventHandler::InsertLabel() {}
void CEventHandler::ExportImage() {}
void CEventHandler::ShowAbout() {}
void CEventHandler::ShowFlowchartWizard() {}
void CEventHandler::ShowHelpContents() {}
void CEventHandler::ShowSettings() {}
void CEventHandler::ShowShapeSelectionForm() {}
void CEventHandler::ShowStyleWizard() {}
void CEventHandler::ToggleGridLines(std::optional<bool>) {}
void CEventHandler::ClearShading() {}
void CEventHandler::CheckStatus() {}
void CEventHandler::ShowTemplateGeneratorForm() {}
void CEventHandler::ShowTemplateSelectionForm() {}
void CEventHandler::UngroupAllShapes() {}
void CEventHandler::GroupAllShapes() {}
void CEventHandler::SelectAllShapes() {}
void CEventHandler::SelectAllLines() {}
void CEventHandler::SelectAllLabels() {}
void CEventHandler::SelectFlowchartSymbolsOnly() {}

}  // namespace nivarel::host
