// The far side of the command router: one operation per user command. Each
// operation checks what it needs of the active sheet, makes the worker or
// dialog that does the job, runs it and lets it go. It also owns the
// flowcharting session. Operations whose tools aren't there yet do nothing.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "CConfig.h"

namespace nivarel::flowcharting {
class CInteractiveFlowcharter;
}

namespace nivarel::office {
class Shape;
}

namespace nivarel::host {

class CEventHandler {
 public:
  CEventHandler();
  ~CEventHandler();
  // A session is in progress.
  bool FlowchartingInProgress() const { return m_SessionActive; }
  // Ends the session; fromWorkbookEvent ends it without the end terminator.
  void StopInteractiveFlowcharting(bool fromWorkbookEvent);
  // True when a session started or restarted.
  bool StartInteractiveFlowcharting();
  void ApplyStyles();
  void CheckForUpdates();
  void CreateFlowchartKey();
  void CreateWorksheetGrid();
  void ExtractText();
  void InsertFlowLine();
  void InsertBranch();
  void InsertGroupBox();
  void InsertLabel();
  void ExportImage();
  // The active sheet's chart as Mermaid text, to the clipboard and a file;
  // allowed during a run, as it changes nothing.
  void CopyAsMermaid();
  // The Import Mermaid dialog; refused with a message during a run.
  void ImportMermaid();
  void ShowAbout();
  void ShowFlowchartWizard();
  void ShowHelpContents();
  void ShowSettings();
  void ShowShapeSelectionForm();
  void ShowStyleWizard();
  // Flips the gridlines, or sets them when show is given.
  void ToggleGridLines(std::optional<bool> show = std::nullopt);
  void ClearShading();
  void CheckStatus();
  void ShowTemplateGeneratorForm();
  void ShowTemplateSelectionForm();
  void UngroupAllShapes();
  void GroupAllShapes();
  void SelectAllShapes();
  void SelectAllLines();
  void SelectAllLabels();
  void SelectFlowchartSymbolsOnly();

 private:
  bool PrestartChecks();
  // The event log's window, opened from the help window.
  void ShowEventLog();
  bool CheckActiveSheet();
  bool StartNormalFlowcharting(rules::CConfig& config);
  void ShowRestartForm(const rules::CConfig& config);
  void SetPageLayout(const rules::CConfig& config);
  // Copies the template's sheet in behind the active sheet and shows it with
  // its page breaks; a file that won't load is told and logged.
  void LoadTemplate(const std::string& path);
  // Selects the shapes of the active sheet that match; errors are logged
  // under procedure.
  void SelectMatchingShapes(const char* procedure, const std::function<bool(const office::Shape&)>& matches);

  std::unique_ptr<flowcharting::CInteractiveFlowcharter> m_Flowcharter;
  bool m_SessionActive = false;
};

}  // namespace nivarel::host
