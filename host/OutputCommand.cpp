#include "OutputCommand.h"

#include "CExtractText.h"
#include "CMermaidExport.h"
#include "MermaidWriter.h"
#include "CFlowchartKey.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "Range.h"

namespace nivarel::host {

namespace {

constexpr char kSource[] = "OutputCommand";

OutputOutcome Refused(const std::string& message) {
  OutputOutcome outcome;
  outcome.message = message;
  return outcome;
}

// The add-in's messages break their lines as message boxes do; an answer
// read on a terminal breaks them plainly.
std::string PlainLines(std::string text) {
  for (size_t at; (at = text.find("\r\n")) != std::string::npos;) text.erase(at, 1);
  return text;
}

// The workbook and the sheet to read brought to the front, as a user has
// them before choosing the menu command; an empty message when both are there.
std::string BringToFront(const OutputChoices& choices) {
  if (!ExcelApp) return "Nivarel is not connected to the office.";
  std::optional<office::Workbook> book = choices.workbook ? choices.workbook : ExcelApp->ActiveWorkbook();
  if (!book) return "There are no workbooks open. You must open a workbook before using Nivarel.";
  book->Activate();
  if (choices.sheet.empty()) return ExcelApp->ActiveSheet() ? "" : "The current sheet is not a Worksheet.";
  std::optional<office::Worksheet> sheet = book->SheetNamed(choices.sheet);
  if (!sheet) return "There is no sheet named '" + choices.sheet + "' in the workbook.";
  sheet->Activate();
  return "";
}

// The cell a text names, on the sheet it names or on the active sheet;
// none, with the reason in problem, when there is no such sheet or cell.
std::optional<office::Range> CellNamed(const std::string& text, std::string& problem) {
  std::string plain;
  for (char c : text)
    if (c != '$') plain += c;
  std::string sheetName, address = plain;
  if (!plain.empty() && plain.front() == '\'') {
    size_t close = plain.find('\'', 1);
    if (close != std::string::npos && close + 1 < plain.size() && (plain[close + 1] == '.' || plain[close + 1] == '!')) {
      sheetName = plain.substr(1, close - 1);
      address = plain.substr(close + 2);
    }
  } else if (size_t at = plain.find_last_of(".!"); at != std::string::npos) {
    sheetName = plain.substr(0, at);
    address = plain.substr(at + 1);
  }
  std::optional<office::Worksheet> sheet = ExcelApp->ActiveSheet();
  if (!sheetName.empty()) sheet = ExcelApp->ActiveWorkbook()->SheetNamed(sheetName);
  if (!sheet) {
    problem = "There is no sheet named '" + sheetName + "' in the workbook.";
    return std::nullopt;
  }
  try {
    if (!address.empty()) return sheet->GetRange(address);
  } catch (const office::HostError&) {
  }
  problem = "'" + text + "' is not a cell.";
  return std::nullopt;
}

OutputOutcome Done(const office::Range& place, int count) {
  OutputOutcome outcome;
  outcome.done = true;
  outcome.sheet = place.Sheet().Name();
  outcome.cell = place.Sheet().Cells(place.Row(), place.Column()).Address(false);
  outcome.count = count;
  return outcome;
}

}  // namespace

OutputOutcome OutputCommand::CreateKey(const OutputChoices& choices) {
  try {
    if (choices.cell.empty()) return Refused("Name the cell to place the Flowchart Symbol Key.");
    std::string problem = BringToFront(choices);
    if (!problem.empty()) return Refused(problem);
    std::optional<office::Range> place = CellNamed(choices.cell, problem);
    if (!place) return Refused(problem);
    output::CFlowchartKey key;
    key.AnswerPrompts(*place);
    key.CreateFlowchartKey();
    if (!key.Drawn())
      return Refused(key.ErrorMessage().empty() ? "No key was drawn." : PlainLines(key.ErrorMessage()));
    return Done(*place, key.Rows());
  } catch (...) {
    ErrObject error = CurrentError();
    ErrorHandler(kSource, "CreateKey", false, error);
    return Refused("The symbol key failed: " + error.Description);
  }
}

OutputOutcome OutputCommand::ExtractText(const OutputChoices& choices) {
  try {
    std::string problem = BringToFront(choices);
    if (!problem.empty()) return Refused(problem);
    output::CExtractText extract;
    if (!extract.IsValid()) return Refused(PlainLines(extract.ErrorMessage()));
    // Without a cell, the one the prompt proposes, as OK on it would take.
    std::optional<office::Range> place = CellNamed(choices.cell.empty() ? extract.CellAddress() : choices.cell, problem);
    if (!place) return Refused(problem);
    extract.AnswerPrompts(*place);
    extract.ExtractTextFromFlowchartSymbols();
    return Done(*place, extract.Written());
  } catch (...) {
    ErrObject error = CurrentError();
    ErrorHandler(kSource, "ExtractText", false, error);
    return Refused("The text extraction failed: " + error.Description);
  }
}

OutputOutcome OutputCommand::Mermaid(const OutputChoices& choices) {
  try {
    std::string problem = BringToFront(choices);
    if (!problem.empty()) return Refused(problem);
    std::optional<office::Worksheet> sheet = ExcelApp->ActiveSheet();
    if (!sheet) return Refused("The current sheet is not a Worksheet.");
    tools::MermaidChart chart = tools::CMermaidExport::Read(*sheet);
    if (chart.nodes.empty()) return Refused("No flowchart symbols were found on the sheet '" + sheet->Name() + "'.");
    OutputOutcome outcome;
    outcome.done = true;
    outcome.sheet = sheet->Name();
    outcome.count = static_cast<int>(chart.nodes.size());
    outcome.text = tools::MermaidWriter::Write(chart);
    return outcome;
  } catch (...) {
    ErrObject error = CurrentError();
    ErrorHandler(kSource, "Mermaid", false, error);
    return Refused("The Mermaid export failed: " + error.Description);
  }
}

}  // namespace nivarel::host
