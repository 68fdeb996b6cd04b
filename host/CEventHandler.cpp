#include "CEventHandler.h"

#include "CImageExportController.h"
#include "CMermaidCopy.h"
#include "CExtractText.h"
#include "CFlowchartKey.h"
#include "CInteractiveFlowcharter.h"
#include "CPageLayout.h"
#include "CStyleWizard.h"
#include "CTemplateGenerator.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "UserSettings.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "TextConvert.h"
#include "AddedShapes.h"
#include "KeptLooks.h"
#include "KeptShading.h"
#include "UndoList.h"
#include "Workbooks.h"
#include "frmAbout.h"
#include "frmEventViewer.h"
#include "frmExport.h"
#include "frmHelp.h"
#include "frmImportMermaid.h"
#include "frmRestart.h"
#include "frmSettings.h"
#include "frmStart.h"
#include "frmFlowLineInsert.h"
#include "frmFlowchartWizard.h"
#include "frmInsertTree.h"
#include "frmInsertGroupBox.h"
#include "frmSelectShapes.h"
#include "frmStyleWizard.h"
#include "frmTemplateGenerator.h"
#include "frmTemplates.h"
#include "frmTextBox.h"

namespace nivarel::host {

using namespace office;

namespace {
const char* const kSource = "CEventHandler";

// The maker's update page, told which version asks.
std::string UpdatePageAddress() {
  return std::string(kUpdatePage) + "?&m=" + std::to_string(kVersionMajor) + "&n=" + std::to_string(kVersionMinor) +
         "&r=" + std::to_string(kVersionRevision);
}

// The shapes of the active sheet; nothing without an office or a sheet.
std::optional<Shapes> ActiveShapes() {
  if (!ExcelApp) return std::nullopt;
  auto ws = ExcelApp->ActiveSheet();
  if (!ws) return std::nullopt;
  return ws->GetShapes();
}
}  // namespace

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

void CEventHandler::LoadTemplate(const std::string& path) {
  try {
    auto wb = ExcelApp->ActiveWorkbook();
    auto active = ExcelApp->ActiveSheet();
    if (!wb || !active) return;
    Workbook source = ExcelApp->GetWorkbooks().OpenHidden(path);
    std::optional<Worksheet> added;
    try {
      added = wb->CopySheetsFrom(source, *active);
    } catch (...) {
      source.Close();
      throw;
    }
    source.Close();
    added->Activate();
    added->SetDisplayPageBreaks(true);
  } catch (...) {
    ErrorHandler(kSource, "LoadTemplate", false);
    MsgBox("The template file could not be loaded:\r\n" + path, vbExclamation, "Invalid Template");
  }
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
      // The layout, the template and the start terminator are one entry of
      // the undo list.
      std::optional<UndoList::Entry> entry;
      std::optional<KeptShading> shading;
      auto book = ExcelApp->ActiveWorkbook();
      if (result && book) {
        entry.emplace(*book, "Nivarel: Start Flowcharting");
        if (auto ws = ExcelApp->ActiveSheet(); ws && ws->TypeName() == "Worksheet") shading.emplace(*ws);
      }
      if (result) {
        if (config.LoadTemplate) LoadTemplate(config.TemplateFilePath);
        SetPageLayout(config);
        // A block diagram template is only placed on the sheet.
        if (config.LoadTemplate) result = !config.BlockDiagram;
      }
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

void CEventHandler::CreateFlowchartKey() {
  try {
    if (!ExcelApp || ExcelApp->GetWorkbooks().Count() == 0) return;
    output::CFlowchartKey().CreateFlowchartKey();
  } catch (...) {
    ErrorHandler(kSource, "CreateFlowchartKey", false);
  }
}
void CEventHandler::CreateWorksheetGrid() {
  try {
    auto book = ExcelApp ? ExcelApp->ActiveWorkbook() : std::nullopt;
    if (!book) return;
    UndoList::Entry entry(*book, "Nivarel: Create Drawing Grid");
    shapes::CPageLayout().CreateGrid();
  } catch (...) {
    ErrorHandler(kSource, "CreateWorksheetGrid", false);
  }
}
void CEventHandler::ExtractText() {
  try {
    output::CExtractText extract;
    if (!extract.IsValid()) {
      MsgBox(extract.ErrorMessage(), vbExclamation, "Extract Text Error");
      return;
    }
    extract.ExtractTextFromFlowchartSymbols();
  } catch (...) {
    ErrorHandler(kSource, "ExtractText", false);
  }
}
void CEventHandler::InsertFlowLine() {
  try {
    if (GetNonTemplateShapeCount() < 2) {
      MsgBox("There must be at least 2 shapes on the current\r\n"
             "worksheet to use the Insert Flow Line feature.",
             vbExclamation, "Cannot Insert Flow Line");
      return;
    }
    dialogs::frmFlowLineInsert().DisplayFromMenu();
  } catch (...) {
    ErrorHandler(kSource, "InsertFlowLine", false);
  }
}
void CEventHandler::InsertBranch() {
  try {
    if (!ExcelApp) return;
    auto sheet = ExcelApp->ActiveSheet();
    if (!sheet) return;
    long count = GetNonTemplateShapeCount(*sheet);
    std::string lastShapeName;
    if (count >= 1 && m_SessionActive && m_Flowcharter) lastShapeName = m_Flowcharter->LastShapeName();
    if (!IsGlobalRowHeightSet()) SetGlobalRowHeight();
    dialogs::frmInsertTree().Display(*sheet, lastShapeName, static_cast<int>(count));
  } catch (...) {
    ErrorHandler(kSource, "InsertBranch", false);
  }
}
void CEventHandler::InsertGroupBox() {
  try {
    dialogs::frmInsertGroupBox().Display();
  } catch (...) {
    ErrorHandler(kSource, "InsertGroupBox", false);
  }
}
void CEventHandler::ExportImage() {
  try {
    output::CImageExportController controller;
    if (!controller.IsSheetValid()) {
      MsgBox(controller.ErrorMessage(), vbExclamation, "Invalid sheet type");
      return;
    }
    std::string range = controller.GetWorksheetRange();
    if (range.empty()) {
      MsgBox("There is no content on the current sheet.", vbOKOnly, "Cannot Export Image");
      return;
    }
    dialogs::frmExport form;
    form.Display(controller, range, " Export Picture");
    if (!form.IsSaveOperation()) return;
    if (!controller.SaveFlowchartAsPicture(form.ImageFileName(), form.ImageFileFormat(), form.ImageFlags()))
      MsgBox(controller.ErrorMessage().empty() ? "Unable to save image" : controller.ErrorMessage(), vbOKOnly,
             "Image Export Error");
  } catch (...) {
    ErrorHandler(kSource, "ExportImage", false);
  }
}
void CEventHandler::CopyAsMermaid() {
  try {
    if (CheckActiveSheet()) return;
    output::CMermaidCopy().CopyAsMermaid();
  } catch (...) {
    ErrorHandler(kSource, "CopyAsMermaid", false);
  }
}
void CEventHandler::ImportMermaid() {
  try {
    if (m_SessionActive) {
      MsgBox("Flowcharting is in progress.\r\nStop it before importing a Mermaid chart.", vbExclamation,
             dialogs::frmImportMermaid::kTitle);
      return;
    }
    if (CheckActiveSheet()) return;
    auto book = ExcelApp->ActiveWorkbook();
    if (!book) return;
    dialogs::frmImportMermaid().Display(*book);
  } catch (...) {
    ErrorHandler(kSource, "ImportMermaid", false);
  }
}
// Needs the about box.
void CEventHandler::ShowAbout() {
  dialogs::frmAbout form;
  form.Display();
}
void CEventHandler::ShowFlowchartWizard() {
  try {
    if (CheckActiveSheet()) return;
    // Not a cell of the sheet holds anything (the office's used area also
    // counts cells that are only formatted).
    auto sheet = ExcelApp->ActiveSheet();
    if (!sheet || !sheet->ContentArea()) {
      MsgBox("No text was found on the current worksheet.\r\n"
             "Run this wizard after the text has been entered on the sheet.",
             vbExclamation, "No Text Found");
      return;
    }
    dialogs::frmFlowchartWizard().Display();
  } catch (...) {
    ErrorHandler(kSource, "ShowFlowchartWizard", false);
  }
}
void CEventHandler::ShowHelpContents() {
  try {
    dialogs::frmHelp form;
    form.Display();
    if (form.ViewLog()) ShowEventLog();
  } catch (...) {
    ErrorHandler(kSource, "ShowHelpContents", false);
  }
}
void CEventHandler::ShowEventLog() {
  try {
    dialogs::frmEventViewer().Display();
  } catch (...) {
    ErrorHandler(kSource, "ShowEventLog", false);
  }
}
void CEventHandler::ShowSettings() {
  try {
    dialogs::frmSettings().Show();
  } catch (...) {
    ErrorHandler(kSource, "ShowSettings", false);
  }
}
void CEventHandler::ShowShapeSelectionForm() {
  try {
    if (CheckActiveSheet()) return;
    auto sheet = ExcelApp->ActiveSheet();
    if (!sheet || sheet->GetShapes().Count() == 0) {
      MsgBox("There must be at least 1 shape on the current\r\n"
             "worksheet to use the Shape Selection Tool.",
             vbExclamation, "No Shapes Found");
      return;
    }
    dialogs::frmSelectShapes().Display();
  } catch (...) {
    ErrorHandler(kSource, "ShowShapeSelectionForm", false);
  }
}
void CEventHandler::ShowStyleWizard() {
  try {
    if (CheckActiveSheet()) return;
    auto sheet = ExcelApp->ActiveSheet();
    if (!sheet || sheet->GetShapes().Count() == 0) {
      MsgBox("No symbols were found on the current worksheet.\r\n"
             "The Style Editor is used to change the format\r\n"
             "of symbols in an existing flowchart.",
             vbExclamation, "No Symbols Found");
      return;
    }
    dialogs::frmStyleWizard().Display();
  } catch (...) {
    ErrorHandler(kSource, "ShowStyleWizard", false);
  }
}
void CEventHandler::ShowTemplateGeneratorForm() {
  try {
    if (!ExcelApp) return;
    if (!IsGlobalRowHeightSet()) SetGlobalRowHeight();
    rules::CConfig config;
    config.LoadConfigData();
    dialogs::frmTemplateGenerator form;
    form.Display(config);
    if (!form.OK()) return;
    templates::CTemplateProperties p;
    p.TemplateFolder(form.TemplateFolder());
    p.TemplateName(form.TemplateName());
    p.PaperSize(form.PaperSize());
    p.Orientation(form.Orientation());
    p.NumberOfPages(form.NumberOfPages());
    p.UseShapesForSwimLanes(form.UseShapes());
    p.TemplateLineStyle(form.TemplateLineStyle());
    p.TemplateFontName(form.TemplateFontName());
    p.TemplateFontSize(form.TemplateFontSize());
    p.TemplateFontBold(form.TemplateFontBold());
    p.TemplateFontItalic(form.TemplateFontItalic());
    p.TemplateType(form.TemplateType());
    p.SwimLaneCount(form.SwimLaneCount());
    p.MaxSwimLaneCount(form.MaxSwimLanes());
    for (int lane = 1; lane <= p.MaxSwimLaneCount(); ++lane) p.SetSwimLaneTitle(lane, form.GetSwimLaneTitle(lane));
    p.MaxTitleBlockRows(form.MaxTitleBlockRows());
    p.MaxTitleBlockSections(form.MaxTitleBlockSections());
    p.AddFooter(form.AddFooter());
    p.FooterRowCount(form.FooterRowCount());
    for (int row = 1; row <= p.MaxTitleBlockRows(); ++row) {
      p.SetFooterSectionCount(row, form.GetFooterSectionCount(row));
      for (int section = 1; section <= p.MaxTitleBlockSections(); ++section)
        p.SetFooterRowLabel(row, section, form.GetFooterRowLabel(row, section));
    }
    p.AddHeader(form.AddHeader());
    p.HeaderRowCount(form.HeaderRowCount());
    for (int row = 1; row <= p.MaxTitleBlockRows(); ++row) {
      p.SetHeaderSectionCount(row, form.GetHeaderSectionCount(row));
      for (int section = 1; section <= p.MaxTitleBlockSections(); ++section)
        p.SetHeaderRowLabel(row, section, form.GetHeaderRowLabel(row, section));
    }
    // The template is a workbook of its own, made and saved as a whole:
    // the user's workbook gains nothing, and the new one opens with nothing
    // to undo, as a file just opened does.
    templates::CTemplateGenerator generator;
    std::optional<Workbook> book = generator.CreateTemplate(p);
    if (book) UndoList(*book).Clear();
    if (!generator.Saved())
      MsgBox("The template could not be saved:\r\n" + templates::CTemplateGenerator::TemplateFilePath(p),
             vbExclamation, "Template Not Saved");
    config.StoreConfigData();
  } catch (...) {
    ErrorHandler(kSource, "ShowTemplateGeneratorForm", false);
  }
}

void CEventHandler::ShowTemplateSelectionForm() {
  try {
    rules::CConfig config;
    config.LoadConfigData();
    dialogs::frmTemplates chooser;
    chooser.Display(config.TemplateFolderPath, "Select Template", "&Load Template");
    if (!chooser.OK()) return;
    // The folder is remembered for this run only; the next start dialog
    // stores it.
    config.TemplateFolderPath = chooser.TemplateFolderPath();
    auto book = ExcelApp->ActiveWorkbook();
    if (!book) return;
    UndoList::Entry entry(*book, "Nivarel: Load Template");
    LoadTemplate(chooser.TemplateFilePath());
  } catch (...) {
    ErrorHandler(kSource, "ShowTemplateSelectionForm", false);
  }
}

void CEventHandler::CheckForUpdates() {
  try {
    if (ExcelApp) ExcelApp->OpenInBrowser(UpdatePageAddress());
  } catch (...) {
  }
}

void CEventHandler::InsertLabel() {
  try {
    if (!ExcelApp) return;
    if (!ExcelApp->GetSelection().cells) {
      MsgBox("You must select the worksheet cell\r\nwhere you want the label inserted.", vbExclamation,
             "No Range Selected");
      return;
    }
    std::string address = ExcelApp->ActiveCell()->AddressLocal(true);
    dialogs::frmTextBox form;
    ExcelApp->SetScreenUpdating(true);
    form.Display();
    ExcelApp->SetScreenUpdating(false);
    if (form.OK() && !form.TextBoxText().empty()) {
      auto ws = ExcelApp->ActiveSheet();
      UndoList::Entry entry(ws->Parent(), "Nivarel: Insert Label");
      AddedShapes added(*ws);
      UndoList::Pause drawing(ws->Parent());
      Range cell = ws->GetRange(address);
      Shape label = ws->GetShapes().AddTextbox(msoTextOrientationHorizontal, cell.Left(), cell.Top(), 100, 25.5);
      Characters characters = label.GetTextFrame().GetCharacters();
      characters.SetText(form.TextBoxText());
      label.Line().SetVisible(false);
      rules::CConfig config;
      config.LoadConfigData();
      Font font = characters.GetFont();
      font.SetName(config.BranchFontName);
      font.SetBold(config.BranchFontBold);
      font.SetItalic(config.BranchFontItalic);
      font.SetSize(config.BranchFontSize);
      font.SetColor(config.BranchFontColor);
      if (ExcelVersion >= 12) {
        label.GetTextFrame2().SetWordWrap(msoFalse);
        label.GetTextFrame2().SetAutoSize(msoAutoSizeShapeToFitText);
      } else {
        label.GetTextFrame().SetAutoSize(true);
      }
      label.ZOrder(msoBringToFront);
      label.SetPlacement(xlMove);
      // The user goes on typing under the label.
      label.TopLeftCell().Offset(1, 0).Select();
    }
  } catch (...) {
    ErrorHandler(kSource, "InsertLabel", false);
  }
  try {
    if (ExcelApp) ExcelApp->SetScreenUpdating(true);
  } catch (...) {
  }
}

void CEventHandler::ToggleGridLines(std::optional<bool> show) {
  try {
    if (!ExcelApp) return;
    auto ws = ExcelApp->ActiveSheet();
    auto window = ExcelApp->ActiveWindow();
    if (!ws || ws->TypeName() != "Worksheet" || !window) return;
    window->SetDisplayGridlines(show ? *show : !window->DisplayGridlines());
  } catch (...) {
  }
}

void CEventHandler::ClearShading() {
  try {
    if (!ExcelApp) return;
    auto ws = ExcelApp->ActiveSheet();
    if (!ws || ws->TypeName() != "Worksheet") return;
    UndoList::Entry entry(ws->Parent(), "Nivarel: Clear Shading");
    KeptShading shading(*ws);
    ws->Columns().GetInterior().SetColorIndex(xlNone);
  } catch (...) {
  }
}

void CEventHandler::CheckStatus() {
  try {
    auto word = [](bool b) { return std::string(b ? "True" : "False"); };
    bool events = ExcelApp && ExcelApp->EnableEvents();
    bool screen = ExcelApp && ExcelApp->ScreenUpdating();
    MsgBox("The following should all read True when a flowcharting session is in progress.\r\n\r\n"
           "Events enabled: " + word(events) + "\r\n"
           "Screen updates enabled: " + word(screen) + "\r\n"
           "Flowchart controller exists: " + word(m_Flowcharter != nullptr) + "\r\n"
           "Flowchart in session: " + word(m_SessionActive),
           vbInformation, "Status Check");
  } catch (...) {
    ErrorHandler(kSource, "CheckStatus", false);
  }
}

void CEventHandler::ApplyStyles() {
  try {
    if (!ExcelApp || ExcelApp->GetWorkbooks().Count() == 0) return;
    auto ws = ExcelApp->ActiveSheet();
    if (!ws || ws->TypeName() != "Worksheet") return;
    // Opening the groups, the new looks and closing the groups again are
    // one entry of the undo list: the office records the groups, the add-in
    // the looks.
    UndoList::Entry entry(ws->Parent(), "Nivarel: Default Styles");
    KeptLooks looks(*ws);
    tools::CStyleWizard().ApplyDefaultStyles();
  } catch (...) {
    ErrorHandler(kSource, "ApplyStyles", false);
  }
}

void CEventHandler::UngroupAllShapes() {
  try {
    auto active = ActiveShapes();
    if (!active) return;
    Shapes& shapes = *active;
    if (shapes.Count() < 1) return;
    UndoList::Entry entry(ExcelApp->ActiveSheet()->Parent(), "Nivarel: Ungroup All Shapes");
    // Ungrouping changes the collection being walked, so each group found
    // ends the pass and a new one begins; nested groups open up entirely.
    bool found = true;
    while (found) {
      found = false;
      int count = shapes.Count();
      for (int i = 1; i <= count; ++i) {
        Shape shape = shapes.Item(i);
        if (shape.Type() == msoGroup) {
          shape.Ungroup();
          found = true;
          break;
        }
      }
    }
  } catch (...) {
    ErrorHandler(kSource, "UngroupAllShapes", false);
  }
}

void CEventHandler::GroupAllShapes() {
  try {
    auto active = ActiveShapes();
    if (!active) return;
    Shapes& shapes = *active;
    if (shapes.Count() < 2) return;
    UndoList::Entry entry(ExcelApp->ActiveSheet()->Parent(), "Nivarel: Group All Shapes");
    shapes.SelectAll();
    auto selected = ExcelApp->GetSelection().shapes;
    if (selected) selected->Group();
  } catch (...) {
  }
}

void CEventHandler::SelectAllShapes() {
  try {
    auto active = ActiveShapes();
    if (!active) return;
    Shapes& shapes = *active;
    if (shapes.Count() >= 1) shapes.SelectAll();
  } catch (...) {
  }
}

void CEventHandler::SelectAllLines() {
  SelectMatchingShapes("SelectAllLines", [](const Shape& s) {
    return s.Type() == msoFreeform || s.Type() == msoLine || s.Connector();
  });
}

void CEventHandler::SelectAllLabels() {
  // A label is a text box, or a plain rectangle: labels' other form.
  SelectMatchingShapes("SelectAllLabels", [](const Shape& s) {
    return s.Type() == msoTextBox || s.AutoShapeType() == msoShapeRectangle;
  });
}

void CEventHandler::SelectFlowchartSymbolsOnly() {
  SelectMatchingShapes("SelectFlowchartSymbolsOnly",
                       [](const Shape& s) { return s.AutoShapeType() > msoShapeRectangle; });
}

void CEventHandler::SelectMatchingShapes(const char* procedure, const std::function<bool(const Shape&)>& matches) {
  try {
    auto active = ActiveShapes();
    if (!active) return;
    Shapes& shapes = *active;
    int count = shapes.Count();
    if (count < 1) return;
    // The names travel as one comma-separated list, so a name that holds a
    // comma falls apart into names that don't exist, and the selection fails.
    std::string list;
    for (int i = 1; i <= count; ++i) {
      Shape shape = shapes.Item(i);
      if (matches(shape)) list += shape.Name() + ",";
    }
    if (list.empty()) return;
    list.pop_back();
    std::vector<std::string> names;
    size_t from = 0;
    for (size_t comma; (comma = list.find(',', from)) != std::string::npos; from = comma + 1)
      names.push_back(list.substr(from, comma - from));
    names.push_back(list.substr(from));
    shapes.GetRange(names).Select();
  } catch (...) {
    ErrorHandler(kSource, procedure, false);
  }
}

}  // namespace nivarel::host
