// The command keys of the add-in's menu and toolbar, and the operation each
// one runs. A key is the control's id less "rxNivarel", lower-cased. A few
// keys exist on one road only: the command bar of object models below 12, or
// the menu and toolbar of the newer road.
#pragma once

#include <optional>
#include <string>

namespace nivarel::host {

enum class Road { Bar, Ribbon };

enum class Command {
  CheckStatus, OpenWalkthrough, CheckForUpdates, ShowHelpContents, ShowAbout,
  StartInteractiveFlowcharting, ShowFlowchartWizard, StopInteractiveFlowcharting, ShowSettings,
  ShowTemplateGeneratorForm, ShowTemplateSelectionForm, CreateWorksheetGrid, CreateFlowchartKey,
  ExportImage, InsertFlowLine, ExtractText, ToggleGridLines, ClearShading, ApplyStyles, ShowStyleWizard,
  InsertBranch, InsertGroupBox, ShowShapeSelectionForm, ToggleSymbolBars, GroupAllShapes, UngroupAllShapes,
  SelectAllShapes, SelectAllLines, SelectAllLabels, SelectFlowchartSymbolsOnly, InsertLabel, CopyAsMermaid,
  ImportMermaid
};

// The key of the wizard run that the command line sends with its choices
// (rxNivarelRunFlowchartWizard): on no road, so that no menu entry or button
// runs it; the protocol handler passes it on with its arguments.
constexpr char kRunWizardKey[] = "runflowchartwizard";
// Likewise the symbol key and the text extraction with the cell they go to
// (rxNivarelRunFlowchartKey, rxNivarelRunExtractText).
constexpr char kRunKeyKey[] = "runflowchartkey";
constexpr char kRunExtractKey[] = "runextracttext";
// And the chart as Mermaid text (rxNivarelRunMermaid).
constexpr char kRunMermaidKey[] = "runmermaid";

// The operation of a key on a road; nothing for a key that the road lacks.
std::optional<Command> CommandForKey(const std::string& key, Road road);
// The key of a control id: "rxNivarelStartFlowcharting" gives
// "startflowcharting"; an id without the prefix is lower-cased whole.
std::string KeyOfControlId(const std::string& controlId);

}  // namespace nivarel::host
