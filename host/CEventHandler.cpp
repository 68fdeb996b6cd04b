#include "CEventHandler.h"

namespace nivarel::host {

// The tools behind these commands arrive one by one; until then a command
// that reaches its operation does nothing.
void CEventHandler::StopInteractiveFlowcharting(bool) { m_SessionActive = false; }
bool CEventHandler::StartInteractiveFlowcharting() { return false; }
void CEventHandler::ApplyStyles() {}
void CEventHandler::CheckForUpdates() {}
void CEventHandler::CreateFlowchartKey() {}
void CEventHandler::CreateWorksheetGrid() {}
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
