#include "CCommandBarBuilder.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "Text.h"
#include "UserSettings.h"

namespace nivarel::host {

namespace {

constexpr char kSource[] = "CCommandBarBuilder";
constexpr char kApplication[] = "Nivarel";
constexpr char kSection[] = "CommandBarSettings";
// The toolbar of the extension's own configuration, the newer road's face:
// hidden while the command bar stands in for it.
constexpr char kExtensionToolbar[] = "addon_org.nivarel.addin.Toolbar";

std::string UrlOf(const std::string& key) { return "vnd.nivarel:rxNivarel" + key; }

// A button of the add-in's own: its command, words, and a picture beside
// the caption when it has one.
office::CommandBarControl Button(const std::string& command, const std::string& caption, const std::string& tooltip,
                                 int pictureId, bool beginGroup) {
  office::CommandBarControl c;
  c.command = command;
  c.caption = caption;
  c.tooltip = tooltip;
  c.style = pictureId != 0 ? 3 : 2;
  c.beginGroup = beginGroup;
  return c;
}

// A stored whole number; false when the store holds none that reads as one.
bool StoredNumber(const char* key, int& value) {
  std::string text = GetSetting(kApplication, kSection, key, "");
  try {
    size_t used = 0;
    value = std::stoi(text, &used);
    return used == text.size();
  } catch (...) {
    return false;
  }
}

office::CommandBars Bars() { return office::CommandBars(ExcelApp->Session()); }

}  // namespace

bool CCommandBarBuilder::CreateCommandBar(const std::string& barName, const std::string& tag) {
  m_Name = barName;
  m_Tag = tag;
  try {
    ResetCommandBar();
    m_Controls.clear();
    m_Disabled.clear();
    AddBarButton("NivarelSettings", "Settings", "Edit the Nivarel Settings", 101, true);
    AddBarButton("StartFlowcharting", "Start", "Start / Restart Flowcharting", 102, true);
    AddBarButton("StopFlowcharting", "Stop", "Stop Flowcharting", 103, true);
    AddBarButton("FlowchartWizard", "Flowchart Wizard", "Text-To-Flowchart Wizard", 109, true);
    AddBarButton("SymbolToolbars", "Symbols", "Toggle the Symbol Toolbars", 106, true);
    // The host's arrow tool, as a picture only.
    std::string arrow = Bars().BuiltInCommand(182);
    if (!arrow.empty()) {
      Control c;
      c.caption = "Select Objects";
      c.command = arrow;
      c.style = 1;
      c.beginGroup = true;
      m_Controls.push_back(c);
    }
    AddDiagramToolsPopup();
    AddInsertPopup();
    AddLayoutPopup();
    AddHelpPopup();
    Bars().Add(m_Name, m_Controls);
    Bars().SetVisible(kExtensionToolbar, false);
    RestoreCommandBarPosition();
    return true;
  } catch (...) {
    ErrorHandler(kSource, "CreateCommandBar", false);
    return false;
  }
}

void CCommandBarBuilder::AddHelpPopup() {
  Control& help = AddPopup("NivarelHelpPopup", "Help", true);
  AddPopupButton(help, "NivarelHelp", "Help Contents...", "See help resources.", 107, false);
  AddPopupButton(help, "OpenWalkthrough", "Open Walkthrough...", "Open the Nivarel walkthrough file.", 0, false);
  AddPopupButton(help, "CheckForUpdates", "Check for Updates...", "Open browser to check for latest release.", 110,
                 false);
  AddPopupButton(help, "AboutNivarel", "About Nivarel...", "Check version number", 112, false);
}

void CCommandBarBuilder::AddDiagramToolsPopup() {
  Control& tools = AddPopup("DiagramToolsPopup", "Diagram Tools", true);
  AddPopupButton(tools, "CreateTemplate", "Create a Template...",
                 "Use the Template generator to design a swim lane template.", 124, true);
  AddPopupButton(tools, "LoadTemplate", "Load Template...",
                 "Load an existing flowchart template into a new worksheet.", 125, false);
  AddPopupButton(tools, "SavePicture", "Export as Picture...", "Export flowchart to an image file.", 118, true);
  AddPopupButton(tools, "CreateKey", "Create a Symbol Key", "Create symbol key showing the flowchart shape names.",
                 105, true);
  AddPopupButton(tools, "ExtractText", "Extract Flowchart Text",
                 "Extract the text from the flowchart shapes to the worksheet.", 115, false);
  AddPopupButton(tools, "ApplyStyles", "Apply Styles", "Format the shapes per the styles in Settings.", 117, true);
  AddPopupButton(tools, "StyleWizard", "Style Wizard",
                 "Open the Style Wizard to change the style of individual shapes.", 122, false);
  AddPopupButton(tools, "CopyMermaid", "Copy as Mermaid",
                 "Copy the flowchart as Mermaid text to the clipboard and save it to a file.", 0, true);
  AddPopupButton(tools, "ImportMermaid", "Import Mermaid...", "Draw a flowchart from Mermaid text.", 0, false);
}

void CCommandBarBuilder::AddInsertPopup() {
  Control& insert = AddPopup("InsertPopup", "Insert", true);
  AddPopupButton(insert, "InsertFlowLine", "Flow Line Insertion Tool...",
                 "Add a connector (flow line) between two shapes", 119, true);
  AddPopupButton(insert, "InsertBranch", "Insert Branch...", "Insert a branch structure", 120, false);
  AddPopupButton(insert, "InsertGroupBox", "Insert Group Box...", "Create a labeled enclosing around other shapes.",
                 123, false);
  AddPopupButton(insert, "InsertLabel", "Insert Borderless Label...", "Create a borderless label", 127, false);
  Control symbols;
  symbols.parameter = "FlowChartSymbols";
  symbols.caption = "Flowchart Symbol";
  symbols.beginGroup = true;
  AddFlowChartButtons(symbols);
  Control connectors;
  connectors.parameter = "FlowChartConnectors";
  connectors.caption = "Connector (flow line)";
  AddConnectorButtons(connectors);
  Control callouts;
  callouts.parameter = "FlowChartCallouts";
  callouts.caption = "Callout";
  AddCalloutButtons(callouts);
  Control arrows;
  arrows.parameter = "FlowChartBlockArrows";
  arrows.caption = "Block Arrow";
  AddMoreShapeButtons(arrows);
  // A sub-popup whose every command the office lacks is left out.
  for (Control* sub : {&symbols, &connectors, &callouts, &arrows})
    if (!sub->controls.empty()) insert.controls.push_back(*sub);
  AddBuiltInButton(insert, 1576, "Hyperlink", true);
}

void CCommandBarBuilder::AddLayoutPopup() {
  Control& layout = AddPopup("LayoutPopup", "Layout", true);
  AddPopupButton(layout, "CreateGrid", "Create a Grid",
                 "Change column widths and row heights to create a square grid.", 113, true);
  AddPopupButton(layout, "ToggleGridLines", "View Gridlines", "Toggle the visibility of the worksheet cell borders",
                 114, false);
  AddPopupButton(layout, "ClearShading", "Clear Shading", "Clear any residual shading from the Nivarel guidelines.",
                 121, false);
  AddBuiltInButton(layout, 549, "Snap to Grid", true);
  AddBuiltInButton(layout, 1402, "Snap to Shape", false);
  AddBuiltInButton(layout, 164, "Group Selected Shapes", true);
  AddBuiltInButton(layout, 165, "Ungroup Selected Shapes", false);
  AddBuiltInButton(layout, 338, "Regroup Selected Shapes", false);
  AddPopupButton(layout, "GroupAllShapes", "Group All Shapes", "Group all the shapes into a single shape.", 0, false);
  AddPopupButton(layout, "UngroupAllShapes", "Ungroup All Shapes", "Ungroup any grouped shapes.", 0, false);
  AddPopupButton(layout, "ShapeSelectionTool", "Shape Selection Tool...",
                 "Open the Selection Tool to filter which shapes are selected. ", 116, true);
  AddPopupButton(layout, "SelectAllShapes", "Select All Shapes", "Select all the shapes on the sheet.", 0, false);
  AddPopupButton(layout, "SelectLines", "Select Lines and Connectors", "Select only the lines and connectors", 0,
                 false);
  AddPopupButton(layout, "SelectFlowchartSymbols", "Select Flowchart Symbols",
                 "Select only the flowchart shapes - no lines or labels.", 0, false);
  AddPopupButton(layout, "SelectLabels", "Select Labels and Textboxes", "Select only the labels.", 0, false);
  for (int id : {30078, 30174, 30036}) {
    Control popup = Bars().BuiltInPopup(id);
    if (!popup.controls.empty()) layout.controls.push_back(popup);
  }
  AddBuiltInButton(layout, 1033, "Reroute Connectors", true);
  Control last = Bars().BuiltInPopup(30080);
  if (!last.controls.empty()) layout.controls.push_back(last);
}

void CCommandBarBuilder::AddFlowChartButtons(Control& popup) {
  const std::pair<const char*, int> entries[] = {
      {"Alternate Process", 1191}, {"Card", 1204}, {"Collate", 1208}, {"Connector", 1202},
      {"Data", 1193}, {"Decision", 1192}, {"Delay", 1218}, {"Direct Access Storage", 1216},
      {"Display", 1217}, {"Document", 1196}, {"Extract", 1210}, {"Internal Storage", 1195},
      {"Magnetic Disk", 1215}, {"Manual Input", 1200}, {"Manual Operation", 1201}, {"Merge", 1211},
      {"Multidocument", 1197}, {"Off-page Connector", 1203}, {"Or", 1207}, {"Predefined Process", 1194},
      {"Preparation", 1199}, {"Process", 1190}, {"Punched Tape", 1205}, {"Sequential Access Storage", 1214},
      {"Sort", 1209}, {"Stored Data", 1213}, {"Summing Junction", 1206}, {"Terminator", 1198}};
  for (const auto& [caption, id] : entries) AddBuiltInButton(popup, id, caption, false);
}

void CCommandBarBuilder::AddConnectorButtons(Control& popup) {
  AddBuiltInButton(popup, 2642, "Elbow Arrow", false);
  AddBuiltInButton(popup, 2640, "Straight Arrow", false);
  AddBuiltInButton(popup, 2644, "Curved Arrow", false);
  AddBuiltInButton(popup, 2645, "Curved Double-Arrow", true);
  AddBuiltInButton(popup, 2643, "Elbow Double-Arrow ", false);
  AddBuiltInButton(popup, 2641, "Straight Double-Arrow", false);
  AddBuiltInButton(popup, 1042, "Straight", true);
  AddBuiltInButton(popup, 1043, "Elbow", false);
  AddBuiltInButton(popup, 1044, "Curved", false);
}

void CCommandBarBuilder::AddCalloutButtons(Control& popup) {
  const std::tuple<const char*, int, bool> entries[] = {
      {"Rectangular", 1172, false},     {"Rounded Rectangular", 1173, false}, {"Oval", 1174, false},
      {"Cloud", 1175, false},           {"Line 1 - Border", 1219, true},      {"Line 2 - Border", 1176, false},
      {"Line 3 - Border", 1177, false}, {"Line 4 - Border", 1178, false},     {"Line 1 - Accent", 1220, false},
      {"Line 2 - Accent", 1221, false}, {"Line 3 - Accent", 1222, false},     {"Line 4 - Accent", 1223, false}};
  for (const auto& [caption, id, group] : entries) AddBuiltInButton(popup, id, caption, group);
}

void CCommandBarBuilder::AddMoreShapeButtons(Control& popup) {
  AddBuiltInButton(popup, 1142, "Right Arrow", false);
  AddBuiltInButton(popup, 1143, "Left Arrow", false);
  AddBuiltInButton(popup, 1144, "Up Arrow", false);
  AddBuiltInButton(popup, 1145, "Down Arrow", false);
}

CCommandBarBuilder::Control& CCommandBarBuilder::AddPopup(const std::string& parameter, const std::string& caption,
                                                          bool beginGroup) {
  Control popup;
  popup.parameter = parameter;
  popup.caption = caption;
  popup.beginGroup = beginGroup;
  m_Controls.push_back(popup);
  return m_Controls.back();
}

void CCommandBarBuilder::AddBarButton(const std::string& key, const std::string& caption, const std::string& tooltip,
                                      int pictureId, bool beginGroup) {
  m_Controls.push_back(Button(UrlOf(key), caption, tooltip, pictureId, beginGroup));
}

void CCommandBarBuilder::AddPopupButton(Control& popup, const std::string& key, const std::string& caption,
                                        const std::string& tooltip, int pictureId, bool beginGroup) {
  popup.controls.push_back(Button(UrlOf(key), caption, tooltip, pictureId, beginGroup));
}

void CCommandBarBuilder::AddBuiltInButton(Control& popup, int controlId, const std::string& caption, bool beginGroup) {
  try {
    std::string command = Bars().BuiltInCommand(controlId);
    if (command.empty()) return;  // the office has no such command: left out
    Control c;
    c.command = command;
    c.caption = caption;
    c.beginGroup = beginGroup;
    popup.controls.push_back(c);
  } catch (...) {
    // Swallowed.
  }
}

void CCommandBarBuilder::ResetCommandBar() {
  try {
    if (!ExcelApp || m_Name.empty()) return;
    Bars().Delete(m_Name);
    Bars().SetVisible(kExtensionToolbar, true);
  } catch (...) {
    // Swallowed.
  }
}

void CCommandBarBuilder::KeepExtensionToolbar(bool shown) {
  try {
    if (ExcelApp) Bars().KeepVisible(kExtensionToolbar, shown);
  } catch (...) {
    // Swallowed.
  }
}

void CCommandBarBuilder::DisableStopButton() { SetEnabled("StopFlowcharting", false); }

bool CCommandBarBuilder::Enabled(const std::string& key) const { return !m_Disabled.count(rules::LowerCase(key)); }

void CCommandBarBuilder::SetEnabled(const std::string& key, bool enabled) {
  if (enabled)
    m_Disabled.erase(rules::LowerCase(key));
  else
    m_Disabled.insert(rules::LowerCase(key));
}

std::vector<std::string> CCommandBarBuilder::BarButtonKeys() const {
  std::vector<std::string> keys;
  const std::string prefix = UrlOf("");
  for (const auto& c : m_Controls)
    if (c.command.rfind(prefix, 0) == 0) keys.push_back(c.command.substr(prefix.size()));
  return keys;
}

std::vector<std::string> CCommandBarBuilder::CommandUrls() const {
  std::vector<std::string> urls;
  std::vector<const Control*> todo;
  for (const auto& c : m_Controls) todo.push_back(&c);
  while (!todo.empty()) {
    const Control* c = todo.back();
    todo.pop_back();
    if (!c->IsPopup()) urls.push_back(c->command);
    for (const auto& sub : c->controls) todo.push_back(&sub);
  }
  return urls;
}

void CCommandBarBuilder::StoreCommandBarPosition() {
  try {
    if (!ExcelApp || m_Name.empty() || !Bars().Exists(m_Name)) return;
    office::CommandBarPlace place = Bars().Place(m_Name);
    SaveSetting(kApplication, kSection, "Visible", place.visible ? "Y" : "N");
    SaveSetting(kApplication, kSection, "Position", std::to_string(place.position));
    SaveSetting(kApplication, kSection, "Left", std::to_string(place.left));
    SaveSetting(kApplication, kSection, "Top", std::to_string(place.top));
    SaveSetting(kApplication, kSection, "Width", std::to_string(place.width));
    SaveSetting(kApplication, kSection, "Height", std::to_string(place.height));
    SaveSetting(kApplication, kSection, "RowIndex", std::to_string(place.rowIndex));
  } catch (...) {
    // Swallowed.
  }
}

void CCommandBarBuilder::RestoreCommandBarPosition() {
  // Each stored value the office refuses costs only its own step.
  auto step = [](const std::function<void()>& f) {
    try {
      f();
    } catch (...) {
      // Swallowed.
    }
  };
  std::string visible = GetSetting(kApplication, kSection, "Visible", "NotSet");
  if (visible == "NotSet") {
    step([&] {
      office::CommandBarPlace place = Bars().Place(m_Name);
      place.visible = true;
      Bars().SetPlace(m_Name, place);
    });
    return;
  }
  office::CommandBarPlace place;
  step([&] { place = Bars().Place(m_Name); });
  place.visible = visible == "Y";
  StoredNumber("Position", place.position);
  if (place.position != office::msoBarFloating) {
    StoredNumber("RowIndex", place.rowIndex);
    if (place.position == office::msoBarTop || place.position == office::msoBarBottom)
      StoredNumber("Left", place.left);
    else
      StoredNumber("Top", place.top);
  } else {
    StoredNumber("Left", place.left);
    StoredNumber("Top", place.top);
    StoredNumber("Width", place.width);
    StoredNumber("Height", place.height);
  }
  step([&] { Bars().SetPlace(m_Name, place); });
}

}  // namespace nivarel::host
