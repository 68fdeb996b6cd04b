#include "OutputTools.h"

#include <fstream>
#include <functional>
#include <memory>
#include <optional>

#include "AddinCommand.h"
#include "HostError.h"
#include "OfficeCopy.h"
#include "OfficeProcess.h"
#include "OutputFiles.h"
#include "Range.h"
#include "SettingsCopy.h"
#include "Workbooks.h"

namespace nivarel::cli {

using namespace nivarel::office;
using namespace nivarel::driver;

const char kKeyUsage[] =
    "usage: nivarel key FILE --cell CELL -o OUT [-o OUT...] [--png PICTURE] [--sheet NAME]\n"
    "  Draws the Flowchart Symbol Key of a sheet of FILE (.ods or .xlsx): a row for each kind of\n"
    "  symbol and of flow line the sheet uses, in a box grouped as \"Flowchart Key\", at CELL\n"
    "  (\"C3\", or \"Sheet2.C3\" for another sheet of the file), and saves OUT (.ods or .xlsx);\n"
    "  --png also writes a picture of the sheet the key is on at 2 pixels per point (144 dpi).\n"
    "  --sheet NAME   the sheet whose shapes are read (default: the sheet the file opens at)\n"
    "  A key already on the sheet is replaced. The key uses copies of the user's own\n"
    "  nivarel.cfg and symbols.ini ($XDG_CONFIG_HOME/Tamrisk/Nivarel); the user's files are\n"
    "  not changed.\n";
const char kExtractUsage[] =
    "usage: nivarel extract FILE [--cell CELL] [-o OUT...] [--sheet NAME]\n"
    "  Writes the text of each flowchart symbol on a sheet of FILE (.ods or .xlsx), in drawing\n"
    "  order, down a column under \"Process Steps\" at CELL (\"C3\", or \"Sheet2.C3\" for another\n"
    "  sheet; default: the file's active cell), leaving out the terminators' Start, Begin,\n"
    "  Stop and End, and saves OUT (.ods or .xlsx). Without -o the steps are printed one a\n"
    "  line on standard output (a line break within a step printed as a blank).\n"
    "  --sheet NAME   the sheet whose shapes are read (default: the sheet the file opens at)\n";

const char kMermaidUsage[] =
    "usage: nivarel mermaid FILE [-o OUT.mmd] [--sheet NAME]\n"
    "  Writes the flowchart of a sheet of FILE (.ods or .xlsx) as Mermaid flowchart text: a\n"
    "  node for each symbol with its shape and text, an edge for each glued flow line in the\n"
    "  direction of its arrow (dotted when dashed, with a decision's branch label), group\n"
    "  boxes as subgraphs and a class for each fill and line colour in use. Without -o the\n"
    "  text goes to standard output. FILE is not changed.\n"
    "  --sheet NAME   the sheet whose shapes are read (default: the sheet the file opens at)\n";

namespace {

constexpr char kMermaidCommand[] = "vnd.nivarel:rxNivarelRunMermaid";
constexpr char kKeyCommand[] = "vnd.nivarel:rxNivarelRunFlowchartKey";
constexpr char kExtractCommand[] = "vnd.nivarel:rxNivarelRunExtractText";

// A line break within a step, which would split it over two lines.
std::string OneLine(std::string text) {
  for (char& c : text)
    if (c == '\n' || c == '\r') c = ' ';
  return text;
}

// Starts an office with the add-in on a copy of the user's settings, opens
// the input as an untitled copy and sends it the command; the answer, or a
// message on err and nothing. After a good answer, done works on the
// workbook; it returns the exit code. The office ends on every road out.
int RunInOffice(const OutputToolOptions& options, const char* settingsPrefix, const std::string& command,
                const std::function<int(Workbook&, AddinCommand::Answer&)>& done, std::ostream& err) {
  if (!CheckOutputTypes(options.outputs, options.picture, err)) return 1;
  std::string problem = InputProblem(options.input, {".ods", ".xlsx"});
  if (!problem.empty()) {
    err << "nivarel: cannot read '" << options.input << "': " << problem << "\n";
    return 1;
  }
  SettingsCopy settings(settingsPrefix, options.shipped);
  // The office ends with `copy` on every road out, the document with it.
  std::optional<OfficeCopy> copy = OpenOfficeCopy(options.extension, options.input, err);
  if (!copy) return 1;
  std::unique_ptr<OfficeProcess>& office = copy->office;
  std::optional<Workbook>& book = copy->book;
  int code = 1;
  try {
    std::vector<std::pair<std::string, AddinCommand::Value>> arguments;
    if (!options.sheet.empty()) arguments.emplace_back("Sheet", options.sheet);
    if (!options.cell.empty()) arguments.emplace_back("Cell", options.cell);
    AddinCommand::Answer answer = AddinCommand::Send(*book, command, arguments);
    if (!answer.succeeded) {
      std::string message = answer.values["Message"];
      err << "nivarel: " << (message.empty() ? "nothing was done" : message) << "\n";
      return 1;
    }
    code = done(*book, answer);
    book->Close();
  } catch (const HostError& e) {
    err << "nivarel: " << e.Description() << "\n";
    return 1;
  }
  office->Terminate();
  return code;
}

// Saves the workbook as each output; the names written, comma-separated.
std::string SaveEach(Workbook& book, const std::vector<std::string>& outputs) {
  std::string written;
  for (const std::string& output : outputs) {
    book.SaveAs(output);
    written += (written.empty() ? "" : ", ") + output;
  }
  return written;
}

Worksheet SheetAnswered(Workbook& book, AddinCommand::Answer& answer) {
  std::optional<Worksheet> sheet = book.SheetNamed(answer.values["Sheet"]);
  if (!sheet) throw HostError(HostError::kOfficeFailure, "the sheet '" + answer.values["Sheet"] + "' is gone");
  return *sheet;
}

}  // namespace

bool ReadOutputToolArguments(const std::vector<std::string>& args, bool key, OutputToolOptions& options,
                             std::ostream& err) {
  const char* name = key ? "key" : "extract";
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    bool hasValue = i + 1 < args.size();
    if (arg == "-o" && hasValue) options.outputs.push_back(args[++i]);
    else if (arg == "--cell" && hasValue) options.cell = args[++i];
    else if (arg == "--sheet" && hasValue) options.sheet = args[++i];
    else if (key && arg == "--png" && hasValue) options.picture = args[++i];
    else if (options.input.empty() && !arg.empty() && arg[0] != '-') options.input = arg;
    else {
      err << "nivarel " << name << ": unexpected argument '" << arg << "'\n";
      return false;
    }
  }
  if (options.input.empty()) {
    err << "nivarel " << name << ": name the FILE to read\n";
    return false;
  }
  if (key && (options.cell.empty() || options.outputs.empty())) {
    err << "nivarel key: --cell and -o are needed\n";
    return false;
  }
  return true;
}

int Key(const OutputToolOptions& options, std::ostream& out, std::ostream& err) {
  return RunInOffice(
      options, "nivarel-key", kKeyCommand,
      [&](Workbook& book, AddinCommand::Answer& answer) {
        std::string written = SaveEach(book, options.outputs);
        if (!options.picture.empty()) {
          SheetAnswered(book, answer).ExportDrawingPicture(options.picture);
          written += ", " + options.picture;
        }
        out << "drew a key of " << answer.values["Count"] << " rows at " << answer.values["Cell"] << " of the sheet '"
            << answer.values["Sheet"] << "' and wrote " << written << "\n";
        return 0;
      },
      err);
}

int Extract(const OutputToolOptions& options, std::ostream& out, std::ostream& err) {
  return RunInOffice(
      options, "nivarel-extract", kExtractCommand,
      [&](Workbook& book, AddinCommand::Answer& answer) {
        if (!options.outputs.empty()) {
          std::string written = SaveEach(book, options.outputs);
          out << "wrote " << answer.values["Count"] << " steps under Process Steps at " << answer.values["Cell"]
              << " of the sheet '" << answer.values["Sheet"] << "' in " << written << "\n";
          return 0;
        }
        Range heading = SheetAnswered(book, answer).GetRange(answer.values["Cell"]);
        int count = std::stoi(answer.values["Count"]);
        for (int row = 1; row <= count; ++row) out << OneLine(heading.Offset(row, 0).Value()) << "\n";
        return 0;
      },
      err);
}

bool ReadMermaidArguments(const std::vector<std::string>& args, OutputToolOptions& options, std::ostream& err) {
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    bool hasValue = i + 1 < args.size();
    if (arg == "-o" && hasValue && options.textFile.empty()) options.textFile = args[++i];
    else if (arg == "--sheet" && hasValue) options.sheet = args[++i];
    else if (options.input.empty() && !arg.empty() && arg[0] != '-') options.input = arg;
    else {
      err << "nivarel mermaid: unexpected argument '" << arg << "'\n";
      return false;
    }
  }
  if (options.input.empty()) {
    err << "nivarel mermaid: name the FILE to read\n";
    return false;
  }
  return true;
}

int Mermaid(const OutputToolOptions& options, std::ostream& out, std::ostream& err) {
  return RunInOffice(
      options, "nivarel-mermaid", kMermaidCommand,
      [&](Workbook&, AddinCommand::Answer& answer) {
        const std::string& text = answer.values["Text"];
        if (options.textFile.empty()) {
          out << text;
          return 0;
        }
        std::ofstream file(options.textFile, std::ios::binary);
        file << text;
        file.close();
        if (!file) {
          err << "nivarel: cannot write '" << options.textFile << "'\n";
          return 1;
        }
        out << "wrote " << answer.values["Count"] << " nodes of the sheet '" << answer.values["Sheet"] << "' to "
            << options.textFile << "\n";
        return 0;
      },
      err);
}

}  // namespace nivarel::cli
