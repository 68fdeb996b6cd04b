#include "Walkthrough.h"

#include <filesystem>
#include <memory>
#include <optional>

#include "FlowchartWizard.h"
#include "HostError.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "OfficeProcess.h"
#include "OutputFiles.h"
#include "Range.h"
#include "SettingsCopy.h"
#include "Workbook.h"
#include "Workbooks.h"

namespace nivarel::cli {

namespace fs = std::filesystem;
using namespace nivarel::office;

const char kWalkthroughUsage[] =
    "usage: nivarel walkthrough -o FILE [-o FILE...] [--png PICTURE]\n"
    "  Makes the walkthrough workbook (.xlsx, .xls or .ods): a lesson sheet, the example chart drawn\n"
    "  with the shipped settings, and an empty sheet to try it on. --png writes a picture of\n"
    "  the example chart.\n";

namespace {

// One row of the lesson: what to do, what to type, what appears.
struct Step {
  const char* doThis;
  const char* type;
  const char* appears;
};

const Step kSteps[] = {
    {"Click the sheet tab \"Try It\" below. Choose Nivarel > Start Flowcharting, leave the start dialog as it is "
     "and press Start.",
     "", "The sheet becomes a square grid. A Start terminator appears at C3 and the cursor waits below it."},
    {"Type the first step into the selected cell and press Enter.", "Receive the order",
     "A process symbol (a rectangle) takes the text's place, joined to Start by an arrowed flow line. The cursor "
     "moves on to where the next step belongs."},
    {"Type a question and press Enter.", "Is it in stock?",
     "The question mark makes it a decision (a diamond), with \"Yes\" below it and \"No\" beside it."},
    {"Type the step that follows \"Yes\" and press Enter.", "Ship the order",
     "A process symbol below the decision, joined to it."},
    {"Click a cell to the right of the decision and type a note there; then click the cell where the cursor "
     "waited.",
     "LBL: Back-order the items if not",
     "A free label: the note in a box of its own, with no symbol and no line."},
    {"Type the last step and press Enter.", "Send the invoice", "A process symbol, joined to the one before."},
    {"Choose Nivarel > Stop Flowcharting and press Yes when the end terminator is offered.", "",
     "An End terminator closes the chart, and Nivarel stops following what you type."},
    {"Made a mistake? Press Ctrl+Z.", "",
     "The last step goes back whole: symbol, flow line and labels, and its text returns to its cell. Ctrl+Y draws "
     "it again."},
};

constexpr long kHeadingFill = 0xF2E6D9;  // light blue, red in the low byte
constexpr long kTypeColour = 0x8B3A00;   // dark blue

void WriteLesson(Worksheet& sheet) {
  sheet.SetName("Walkthrough");
  sheet.Column(1).SetColumnWidth(4);
  sheet.Column(2).SetColumnWidth(48);
  sheet.Column(3).SetColumnWidth(26);
  sheet.Column(4).SetColumnWidth(58);
  Range title = sheet.Cells(1, 1);
  title.SetValue("Nivarel Walkthrough: your first flowchart");
  title.GetFont().SetBold(true);
  title.GetFont().SetSize(16);
  sheet.Cells(3, 1).SetValue(
      "Do the steps below on the sheet \"Try It\". The sheet \"Example\" shows the chart they make.");
  const char* headings[] = {"", "What you do", "What you type", "What appears"};
  for (int column = 1; column <= 4; ++column) {
    Range cell = sheet.Cells(5, column);
    cell.SetValue(headings[column - 1]);
    cell.GetFont().SetBold(true);
    cell.GetInterior().SetColor(kHeadingFill);
  }
  int row = 6;
  for (const Step& step : kSteps) {
    sheet.Cells(row, 1).SetValue(std::to_string(row - 5));
    sheet.Cells(row, 2).SetValue(step.doThis);
    sheet.Cells(row, 3).SetValue(step.type);
    sheet.Cells(row, 3).GetFont().SetBold(true);
    sheet.Cells(row, 3).GetFont().SetColor(kTypeColour);
    sheet.Cells(row, 4).SetValue(step.appears);
    Range line = sheet.GetRange("A" + std::to_string(row) + ":D" + std::to_string(row));
    line.SetWrapText(true);
    line.SetVerticalAlignment(xlTop);
    ++row;
  }
  ++row;
  sheet.Cells(row++, 1).SetValue("What next");
  sheet.Cells(row - 1, 1).GetFont().SetBold(true);
  const char* next[] = {
      "Text already on a sheet? Nivarel > Flowchart Wizard turns it into a chart in one go.",
      "Insert > Insert Branch joins a fan of new symbols to one symbol; Insert > Flow Line Insertion Tool joins "
      "two symbols.",
      "Nivarel > Settings chooses the looks, fonts and words that make each symbol.",
      "Help > Help Contents opens the help pages, the support page and the event log.",
  };
  for (const char* text : next) sheet.Cells(row++, 2).SetValue(text);
}

// The example chart: the lesson's steps as texts on the sheet, where the
// symbols go, drawn over the sheet itself by the wizard's engine.
void DrawExample(Worksheet& sheet) {
  sheet.SetName("Example");
  sheet.GetRange("C3").SetValue("Start");
  sheet.GetRange("C7").SetValue("Receive the order");
  sheet.GetRange("C11").SetValue("Is it in stock?");
  sheet.GetRange("C19").SetValue("Ship the order");
  sheet.GetRange("C23").SetValue("Send the invoice");
  sheet.GetRange("C27").SetValue("End");
  sheet.GetRange("P12").SetValue("Back-order the items");
  tools::FlowchartWizard wizard(sheet);
  wizard.newSheet = false;
  wizard.addSpacing = false;
  wizard.InitializeGrid();
  for (tools::WizardRow& row : wizard.Rows()) {
    if (row.celladdress == "C11") {
      row.branchbottom = "Yes";
      row.branchright = "No";
      row.connect_to = "Ship the order,Back-order the items";
    } else if (row.celladdress == "P12") {
      row.connect_to = "Ship the order";
    }
  }
  wizard.UpdateGridColumns();
  wizard.RunFlowchartWizard();
}

}  // namespace

int Walkthrough(const std::vector<std::string>& arguments, const std::string& shipped, std::ostream& out,
                std::ostream& err) {
  std::vector<std::string> outputs;
  std::string picture;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& arg = arguments[i];
    if (arg == "-o" && i + 1 < arguments.size()) {
      outputs.push_back(arguments[++i]);
    } else if (arg == "--png" && i + 1 < arguments.size()) {
      picture = arguments[++i];
    } else {
      err << "nivarel walkthrough: unexpected argument '" << arg << "'\n" << kWalkthroughUsage;
      return 2;
    }
  }
  if (outputs.empty()) {
    err << "nivarel walkthrough: -o FILE is missing\n" << kWalkthroughUsage;
    return 2;
  }
  for (const std::string& output : outputs) {
    std::string type = FileType(output);
    if (type != ".xlsx" && type != ".xls" && type != ".ods") {
      err << "nivarel walkthrough: the workbook is an .xlsx, .xls or .ods, not '" << output << "'\n"
          << kWalkthroughUsage;
      return 2;
    }
  }
  if (!picture.empty() && FileType(picture) != ".png") {
    err << "nivarel walkthrough: the picture is a .png, not '" << picture << "'\n" << kWalkthroughUsage;
    return 2;
  }

  // The shipped settings and symbol rules, not the user's: the example shows
  // what a new user's chart looks like.
  SettingsCopy settings("nivarel-walkthrough", shipped, shipped + "/nivarel.cfg", shipped + "/symbols.ini");
  std::unique_ptr<driver::OfficeProcess> office;
  try {
    office = driver::OfficeProcess::Start(driver::OfficeProcess::Options());
  } catch (const HostError& e) {
    err << "nivarel: the office cannot start: " << e.Description() << "\n";
    return 1;
  }
  // The office ends with `office` on every road out.
  host::ExcelApp = office->App();
  host::ExcelVersion = std::stoi(office->App().Version());
  host::InitializeGlobals();
  int result = 0;
  try {
    Workbook book = office->App().GetWorkbooks().Add();
    while (book.SheetCount() < 3) book.AddSheet();
    Worksheet lesson = book.Sheet(1), example = book.Sheet(2), empty = book.Sheet(3);
    WriteLesson(lesson);
    example.Activate();
    DrawExample(example);
    empty.SetName("Try It");
    if (!picture.empty()) example.ExportDrawingPicture(picture);
    lesson.Activate();
    lesson.GetRange("A1").Select();
    for (const std::string& output : outputs) {
      std::error_code ec;
      fs::remove(output, ec);
      book.SaveAs(fs::absolute(output).string());
      out << "wrote " << output << " with " << example.GetShapes().Count() << " shapes in its example\n";
    }
    book.Close();
  } catch (const HostError& e) {
    err << "nivarel: " << e.Description() << "\n";
    result = 1;
  }
  host::ExcelApp.reset();
  office->Terminate();
  return result;
}

}  // namespace nivarel::cli
