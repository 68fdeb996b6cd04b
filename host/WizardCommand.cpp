#include "WizardCommand.h"

#include <chrono>
#include <cstdint>

#include "CMermaidImport.h"
#include "FlowchartWizard.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "Shapes.h"
#include "Window.h"

namespace nivarel::host {

namespace {

constexpr char kSource[] = "WizardCommand";

WizardOutcome Refused(const std::string& message) {
  WizardOutcome outcome;
  outcome.message = message;
  return outcome;
}

}  // namespace

WizardOutcome WizardCommand::Run(const WizardChoices& choices) {
  try {
    if (choices.rowsBetween < 0 || choices.rowsBetween > 10)
      return Refused("The grid rows between symbols must be from 0 to 10.");
    if (choices.columnsBetween < 0 || choices.columnsBetween > 10)
      return Refused("The grid columns between symbols must be from 0 to 10.");
    if (!ExcelApp) return Refused("Nivarel is not connected to the office.");
    std::optional<office::Workbook> book = choices.workbook ? choices.workbook : ExcelApp->ActiveWorkbook();
    if (!book) return Refused("There are no workbooks open. You must open a workbook before using Nivarel.");
    // The engine works on the active sheet as the dialog finds it: the
    // workbook and the sheet are brought to the front first.
    book->Activate();
    if (!choices.mermaid.empty()) {
      tools::MermaidImportResult imported =
          tools::CMermaidImport::Import(choices.mermaid, *book, choices.rowsBetween, choices.columnsBetween);
      if (!imported.drawn) return Refused(imported.message);
      WizardOutcome outcome;
      outcome.drawn = true;
      outcome.sheet = imported.sheet;
      std::optional<office::Worksheet> drawnOn = book->SheetNamed(imported.sheet);
      outcome.shapes = drawnOn ? drawnOn->GetShapes().Count() : 0;
      outcome.seconds = imported.seconds;
      return outcome;
    }
    std::optional<office::Worksheet> source;
    if (choices.sheet.empty()) {
      source = ExcelApp->ActiveSheet();
      if (!source) return Refused("The current sheet is not a Worksheet. This function cannot be run.");
    } else {
      source = book->SheetNamed(choices.sheet);
      if (!source) return Refused("There is no sheet named '" + choices.sheet + "' in the workbook.");
      source->Activate();
    }

    auto start = std::chrono::steady_clock::now();
    tools::FlowchartWizard wizard(*source);
    std::string address;
    int16_t count = 0;
    wizard.GetEntryCount(address, count);
    if (count <= 0) return Refused("No text was found on the current worksheet.");
    wizard.addSpacing = choices.addSpacing;
    wizard.rowsBetween = choices.rowsBetween;
    wizard.columnsBetween = choices.columnsBetween;
    wizard.newSheet = choices.newSheet;
    wizard.InitializeGrid();
    wizard.UpdateGridColumns();
    wizard.RunFlowchartWizard();
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    if (wizard.Config().HideGridlines) office::Window(book->Impl()).SetDisplayGridlines(false);
    office::Worksheet output = wizard.OutputSheet().value_or(*source);
    WizardOutcome outcome;
    outcome.drawn = true;
    outcome.sheet = output.Name();
    outcome.shapes = output.GetShapes().Count();
    outcome.seconds = seconds;
    return outcome;
  } catch (...) {
    ErrObject error = CurrentError();
    ErrorHandler(kSource, "Run", false, error);
    return Refused("The wizard failed: " + error.Description);
  }
}

}  // namespace nivarel::host
