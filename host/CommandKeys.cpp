#include "CommandKeys.h"

#include "Text.h"

namespace nivarel::host {

namespace {

struct Row {
  const char* key;
  bool bar;
  bool ribbon;
  Command command;
};

const Row kRows[] = {
    {"checkstatus", true, false, Command::CheckStatus},
    {"openwalkthrough", true, true, Command::OpenWalkthrough},
    {"checkforupdates", true, true, Command::CheckForUpdates},
    {"nivarelhelp", true, false, Command::ShowHelpContents},
    {"helpcontents", false, true, Command::ShowHelpContents},
    {"aboutnivarel", true, true, Command::ShowAbout},
    {"startflowcharting", true, true, Command::StartInteractiveFlowcharting},
    {"flowchartwizard", true, true, Command::ShowFlowchartWizard},
    {"stopflowcharting", true, true, Command::StopInteractiveFlowcharting},
    {"nivarelsettings", true, true, Command::ShowSettings},
    {"createtemplate", true, true, Command::ShowTemplateGeneratorForm},
    {"loadtemplate", true, true, Command::ShowTemplateSelectionForm},
    {"creategrid", true, true, Command::CreateWorksheetGrid},
    {"createkey", true, true, Command::CreateFlowchartKey},
    {"savepicture", true, true, Command::ExportImage},
    {"insertflowline", true, true, Command::InsertFlowLine},
    {"extracttext", true, true, Command::ExtractText},
    {"togglegridlines", true, true, Command::ToggleGridLines},
    {"clearshading", true, true, Command::ClearShading},
    {"applystyles", true, true, Command::ApplyStyles},
    {"stylewizard", true, true, Command::ShowStyleWizard},
    {"insertbranch", true, true, Command::InsertBranch},
    {"insertgroupbox", true, true, Command::InsertGroupBox},
    {"shapeselectiontool", true, true, Command::ShowShapeSelectionForm},
    {"symboltoolbars", true, false, Command::ToggleSymbolBars},
    {"groupallshapes", true, true, Command::GroupAllShapes},
    {"ungroupallshapes", true, true, Command::UngroupAllShapes},
    {"selectallshapes", true, false, Command::SelectAllShapes},
    {"selectlines", true, true, Command::SelectAllLines},
    {"selectlabels", true, true, Command::SelectAllLabels},
    {"selectflowchartsymbols", true, true, Command::SelectFlowchartSymbolsOnly},
    {"insertlabel", true, false, Command::InsertLabel},
    {"copymermaid", true, true, Command::CopyAsMermaid},
    {"importmermaid", true, true, Command::ImportMermaid},
};

}  // namespace

std::optional<Command> CommandForKey(const std::string& key, Road road) {
  for (const Row& row : kRows)
    if (key == row.key && (road == Road::Bar ? row.bar : row.ribbon)) return row.command;
  return std::nullopt;
}

std::string KeyOfControlId(const std::string& controlId) {
  static const std::string prefix = "rxNivarel";
  return rules::LowerCase(controlId.compare(0, prefix.size(), prefix) == 0 ? controlId.substr(prefix.size()) : controlId);
}

}  // namespace nivarel::host
