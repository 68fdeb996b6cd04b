// The command key table: which operation each key of the menu and toolbar
// runs, on each road.
#include <gtest/gtest.h>

#include "CommandKeys.h"

namespace nivarel {
namespace {

using host::Command;
using host::CommandForKey;
using host::Road;

TEST(CommandKeysTest, EveryKeyReachesItsOperationOnItsRoads) {
  struct Row {
    const char* key;
    bool bar;
    bool ribbon;
    Command command;
  };
  const Row rows[] = {
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
  for (const Row& row : rows) {
    auto onBar = CommandForKey(row.key, Road::Bar);
    auto onRibbon = CommandForKey(row.key, Road::Ribbon);
    EXPECT_EQ(row.bar, onBar.has_value()) << row.key;
    EXPECT_EQ(row.ribbon, onRibbon.has_value()) << row.key;
    if (onBar) EXPECT_EQ(row.command, *onBar) << row.key;
    if (onRibbon) EXPECT_EQ(row.command, *onRibbon) << row.key;
  }
}

TEST(CommandKeysTest, KeysComeFromControlIdsAndUnknownOnesRunNothing) {
  EXPECT_EQ("startflowcharting", host::KeyOfControlId("rxNivarelStartFlowcharting"));
  EXPECT_EQ("selectflowchartsymbols", host::KeyOfControlId("rxNivarelSelectFlowchartSymbols"));
  EXPECT_EQ(Command::ShowAbout, CommandForKey(host::KeyOfControlId("rxNivarelAboutNivarel"), Road::Ribbon));
  // The command line's wizard run is on neither road: no menu entry runs it.
  EXPECT_EQ(host::kRunWizardKey, host::KeyOfControlId("rxNivarelRunFlowchartWizard"));
  for (const char* key : {"", "rxnivarelstartflowcharting", "StartFlowcharting", "start", "about", host::kRunWizardKey}) {
    EXPECT_FALSE(CommandForKey(key, Road::Ribbon)) << key;
    EXPECT_FALSE(CommandForKey(key, Road::Bar)) << key;
  }
}

}  // namespace
}  // namespace nivarel
