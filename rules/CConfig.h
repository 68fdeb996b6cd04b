// The settings of one operation. Every piece of work makes its own CConfig,
// loads it from nivarel.cfg, reads it and drops it; a dialog that changes
// settings stores them, and the next load sees the change. Nothing is cached
// between operations.
#pragma once

#include <cstdint>
#include <string>

namespace nivarel::rules {

class CConfig {
 public:
  // Fills every stored field from the settings file; keys the file lacks take
  // their defaults. Resets IsGrid (true), LoadTemplate and BlockDiagram
  // (false) first. A failure is shown to the user.
  void LoadConfigData();
  // Writes every stored field to the settings file, keeping the lines that
  // the add-in doesn't know.
  void StoreConfigData();

  // Stored in nivarel.cfg, section "Settings".
  bool AddFlowLine = false;
  bool AlternateProcessDashed = false;
  bool AutosizeHeight = false;
  std::string BottomBranchText;
  bool BranchesUseDefaultFont = false;
  bool BranchFontBold = false;
  int32_t BranchFontColor = 0;
  bool BranchFontItalic = false;
  std::string BranchFontName;
  float BranchFontSize = 0;
  int16_t BranchLabelOption = 0;
  int16_t BranchPosition = 0;
  bool Capitalize = false;
  bool CustomLayout = false;
  bool EndTerminator = false;
  std::string EndTerminatorText;
  int16_t FlowDirection = 0;
  int16_t FlowLineStyle = 0;
  int16_t FlowLineType = 0;
  bool FontBold = false;
  bool FontItalic = false;
  std::string FontName;
  float FontSize = 0;
  bool GroupBranchLabels = false;
  bool HideGridlines = false;
  int32_t HorizontalAlignment = 0;
  std::string LeftBranchText;
  int16_t Margins = 0;
  bool OffPageReference = false;
  bool OnPageReference = false;
  int16_t Orientation = 0;
  int16_t PaperSize = 0;
  std::string PrefixDelimiter;
  bool QuestionMarkIsDecision = false;
  std::string RightBranchText;
  bool ShowGuides = false;
  bool SmartSizing = false;
  std::string StartLocation;
  bool StartTerminator = false;
  std::string StartTerminatorText;
  int16_t StyleId = 0;
  int16_t SymbolList = 0;
  std::string TemplateFolderPath;
  std::string TopBranchText;
  int32_t VerticalAlignment = 0;

  // Held for one operation only, never stored: what the start dialog decided.
  bool UseRestartLocation = false;
  std::string RestartLocation;
  std::string TemplateFilePath;
  bool IsGrid = false;
  bool LoadTemplate = false;
  bool BlockDiagram = false;
};

}  // namespace nivarel::rules
