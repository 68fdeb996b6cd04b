#include "Wizard.h"
#include "OutputFiles.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>

#include "AddinCommand.h"
#include "HostError.h"
#include "MermaidReader.h"
#include "OfficeCopy.h"
#include "OfficeProcess.h"
#include "SettingsCopy.h"
#include "Text.h"
#include "Workbooks.h"

namespace nivarel::cli {

using namespace nivarel::office;
using namespace nivarel::driver;

namespace {

constexpr char kWizardCommand[] = "vnd.nivarel:rxNivarelRunFlowchartWizard";

std::string Fixed(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

}  // namespace

int Wizard(const WizardOptions& options, std::ostream& out, std::ostream& err) {
  if (!CheckOutputTypes(options.outputs, options.picture, err)) return 1;
  std::string problem = InputProblem(options.input, {".ods", ".xlsx", ".csv", ".mmd"});
  if (!problem.empty()) {
    err << "nivarel: cannot read '" << options.input << "': " << problem << "\n";
    return 1;
  }
  // Mermaid text is checked here, before an office starts for it, and
  // drawn into a new workbook.
  std::string mermaid;
  if (FileType(options.input) == ".mmd") {
    if (!options.sheet.empty() || !options.addSpacing || !options.newSheet) {
      err << "nivarel: --sheet, --layout keep and --current-sheet do not apply to Mermaid input\n";
      return 1;
    }
    std::ifstream in(options.input, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    mermaid = text.str();
    nivarel::tools::MermaidChart chart;
    nivarel::tools::MermaidError error;
    if (!nivarel::tools::MermaidReader::Read(mermaid, chart, error)) {
      err << "nivarel: '" << options.input << "' is not Mermaid flowchart text: " << error.Text() << "\n";
      return 1;
    }
  }

  // The wizard reads the user's own settings, from copies: the run may
  // write them, the user's files stay as they are.
  SettingsCopy settings("nivarel-wizard", options.shipped);
  // The office ends with `copy` on every road out, the document with it.
  std::optional<OfficeCopy> copy = OpenOfficeCopy(options.extension, mermaid.empty() ? options.input : "", err);
  if (!copy) return 1;
  std::unique_ptr<OfficeProcess>& office = copy->office;
  std::optional<Workbook>& book = copy->book;
  try {
    if (!options.sheet.empty() && !book->SheetNamed(options.sheet)) {
      err << "nivarel: there is no sheet named '" << options.sheet << "' in '" << options.input << "'\n";
      return 1;
    }
    std::vector<std::pair<std::string, AddinCommand::Value>> arguments = {
        {"Layout", std::string(options.addSpacing ? "add" : "keep")},
        {"RowsBetween", options.rowsBetween},
        {"ColumnsBetween", options.columnsBetween},
        {"NewSheet", options.newSheet}};
    if (!options.sheet.empty()) arguments.emplace_back("Sheet", options.sheet);
    if (!mermaid.empty()) arguments.emplace_back("Mermaid", mermaid);
    AddinCommand::Answer answer = AddinCommand::Send(*book, kWizardCommand, arguments);
    if (!answer.succeeded) {
      std::string message = answer.values["Message"];
      err << "nivarel: " << (message.empty() ? "the wizard drew nothing" : message) << "\n";
      return 1;
    }
    std::string drawnOn = answer.values["Sheet"];
    std::string written;
    for (const std::string& output : options.outputs) {
      book->SaveAs(output);
      written += (written.empty() ? "" : ", ") + output;
    }
    if (!options.picture.empty()) {
      std::optional<Worksheet> sheet = book->SheetNamed(drawnOn);
      if (!sheet) throw HostError(HostError::kOfficeFailure, "the sheet drawn on, '" + drawnOn + "', is gone");
      sheet->ExportDrawingPicture(options.picture);
      written += ", " + options.picture;
    }
    out << "drew " << answer.values["Shapes"] << " shapes on the sheet '" << drawnOn << "' in "
        << Fixed(std::strtod(answer.values["Seconds"].c_str(), nullptr))
        << " s and wrote " << written << "\n";
    book->Close();
  } catch (const HostError& e) {
    err << "nivarel: " << e.Description() << "\n";
    return 1;
  }
  office->Terminate();
  return 0;
}

}  // namespace nivarel::cli
