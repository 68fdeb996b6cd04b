// nivarel: the command-line face of the add-in. `nivarel draw STEPS -o OUT`
// draws a flowchart with the live run from a list of steps. `nivarel wizard
// INPUT -o OUT` turns a sheet's text into a flowchart with the wizard.
// `nivarel key FILE --cell CELL -o OUT` draws a sheet's symbol key, `nivarel
// extract FILE` lists a chart's steps, `nivarel mermaid FILE` writes a
// chart as Mermaid text. `nivarel demo OUTDIR` starts
// a headless office with the extension, draws two connected symbols over
// cells and saves the sheet as .ods and .xlsx. `nivarel shapes FILE` lists
// the shapes of a saved sheet as JSON lines. `nivarel template -o FILE`
// makes a page-frame template with the template generator.
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "Draw.h"
#include "Export.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MsoConstants.h"
#include "MGlobalVariables.h"
#include "OfficeProcess.h"
#include "OutputTools.h"
#include "StorePictures.h"
#include "ShapeListing.h"
#include "Shapes.h"
#include "Template.h"
#include "Walkthrough.h"
#include "Wizard.h"

using namespace nivarel::office;
using namespace nivarel::driver;

namespace {

const char kDrawUsage[] =
    "usage: nivarel draw STEPS -o OUT [-o OUT...] [--png PICTURE] [--start CELL] [--config FILE]\n"
    "                    [--symbols FILE]\n"
    "  Types each line of STEPS (- for standard input) into the cell the run selects,\n"
    "  stops the run and saves OUT (.ods or .xlsx); --png also writes a picture of the chart\n"
    "  at 2 pixels per point (144 dpi).\n"
    "  The run uses the user's own nivarel.cfg and symbols.ini ($XDG_CONFIG_HOME/Tamrisk/Nivarel)\n"
    "  unless --config or --symbols names others; the user's files are not changed.\n";
const char kWizardUsage[] =
    "usage: nivarel wizard INPUT -o OUT [-o OUT...] [--png PICTURE] [--sheet NAME] [--layout add|keep]\n"
    "                      [--rows N] [--columns N] [--current-sheet]\n"
    "  Turns the text on a sheet of INPUT (.ods, .xlsx, or .csv read as one sheet) into a\n"
    "  flowchart with the Flowchart Wizard, as its Finish button does with the choices below,\n"
    "  and saves OUT (.ods or .xlsx); --png also writes a picture of the chart at 2 pixels\n"
    "  per point (144 dpi).\n"
    "  --sheet NAME      the sheet to read (default: the sheet the file opens at)\n"
    "  --layout add      add spacing between symbols (default); keep: keep the existing layout\n"
    "  --rows N          grid rows between symbols, 0 to 10 (default 2)\n"
    "  --columns N       grid columns between symbols, 0 to 10 (default 4)\n"
    "  --current-sheet   draw over the sheet read instead of on a new sheet behind the last\n"
    "  INPUT may also be Mermaid flowchart text (.mmd): its chart is drawn into a new workbook,\n"
    "  laid out by rank, with --rows and --columns as the spacing.\n"
    "  The wizard uses copies of the user's own nivarel.cfg and symbols.ini\n"
    "  ($XDG_CONFIG_HOME/Tamrisk/Nivarel); the user's files are not changed.\n";
const char kDemoUsage[] =
    "usage: nivarel demo [OUTDIR]\n"
    "  Draws a small flowchart and saves OUTDIR/demo.ods and demo.xlsx (OUTDIR: out).\n";
const char kPicturesUsage[] =
    "usage: nivarel pictures OUTDIR [--sheet PICTURE]\n"
    "  Draws the pictures the dialogs show (shape types 1-124, symbol styles 1-84, flow line\n"
    "  styles 1-21, the flow line tools' sides, the branch layouts, the flow line types 1-3,\n"
    "  the template layouts) with the shape engine and writes each as a PNG, and twice its\n"
    "  size as @2x, under OUTDIR; --sheet also writes a contact sheet of them all with their\n"
    "  numbers.\n";
const char kShapesUsage[] =
    "usage: nivarel shapes FILE [--sheet NAME]\n"
    "  Lists the shapes of FILE's first sheet (or of the sheet NAME), one JSON object a line.\n";

// The whole usage: on standard output when asked for (exit 0), on standard
// error after a mistake (exit 2).
int Usage(bool asked) {
  FILE* out = asked ? stdout : stderr;
  std::fprintf(out,
               "usage: nivarel COMMAND [ARGS]   (nivarel COMMAND --help for more)\n"
               "  draw STEPS -o OUT ...   draw a flowchart live from a list of steps\n"
               "  wizard INPUT -o OUT ... turn the text on a sheet into a flowchart\n"
               "  demo [OUTDIR]           draw a small flowchart and save it\n"
               "  shapes FILE             list the shapes of a saved sheet as JSON lines\n"
               "  pictures OUTDIR         draw the dialogs' pictures of shapes and styles\n"
               "  template -o FILE ...    make a page-frame template (.xltx)\n"
               "  walkthrough -o FILE     make the walkthrough workbook\n"
               "  export FILE -o PICTURE  write a picture of a saved sheet's flowchart\n"
               "  key FILE --cell CELL -o OUT ...  draw the symbol key of a sheet\n"
               "  extract FILE [-o OUT]   list a chart's steps under Process Steps, or print them\n"
               "  mermaid FILE [-o OUT]   write a sheet's flowchart as Mermaid text\n"
               "  --help, --version\n");
  return asked ? 0 : 2;
}

// A command's own usage, likewise.
int CommandUsage(const char* text, bool asked) {
  std::fputs(text, asked ? stdout : stderr);
  return asked ? 0 : 2;
}

bool AsksForHelp(int argc, char** argv) {
  for (int i = 2; i < argc; ++i)
    if (!std::strcmp(argv[i], "--help") || !std::strcmp(argv[i], "-h")) return true;
  return false;
}

int Demo(const std::string& outDir, const std::string& extension) {
  std::filesystem::create_directories(outDir);
  OfficeProcess::Options options;
  options.extension = extension;
  auto office = OfficeProcess::Start(options);
  Application app = office->App();
  Workbook book = app.GetWorkbooks().Add();
  Worksheet sheet = book.Sheet(1);
  Shapes shapes = sheet.GetShapes();

  Range c3 = sheet.GetRange("C3"), c6 = sheet.GetRange("C6");
  Shape start = shapes.AddShape(msoShapeFlowchartTerminator, c3.Left(), c3.Top(), 2 * c3.Width(), c3.Height());
  start.GetTextFrame().GetCharacters().SetText("Start");
  Shape step = shapes.AddShape(msoShapeFlowchartProcess, c6.Left(), c6.Top(), 2 * c6.Width(), 2 * c6.Height());
  step.GetTextFrame().GetCharacters().SetText("Take the order");
  Shape line = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
  line.GetConnectorFormat().BeginConnect(start, 3);
  line.GetConnectorFormat().EndConnect(step, 1);
  line.RerouteConnections();
  line.Line().SetEndArrowheadStyle(msoArrowheadTriangle);
  line.ZOrder(msoSendToBack);

  std::string ods = (std::filesystem::path(outDir) / "demo.ods").string();
  std::string xlsx = (std::filesystem::path(outDir) / "demo.xlsx").string();
  book.SaveAs(ods);
  book.SaveAs(xlsx);
  book.Close();
  office->Terminate();
  std::printf("wrote %s and %s\n", ods.c_str(), xlsx.c_str());
  return 0;
}

// The dialogs' pictures, drawn in an office of its own without the extension:
// the drawing runs here, through the same layer and formatters the tools use.
int Pictures(const std::string& outDir, const std::string& sheet) {
  OfficeProcess::Options options;
  auto office = OfficeProcess::Start(options);
  Application app = office->App();
  nivarel::host::ExcelApp = app;
  nivarel::host::ExcelVersion = 12;
  int written = nivarel::output::DrawStorePictures(app, outDir, sheet);
  nivarel::host::ExcelApp.reset();
  std::printf("wrote %d pictures under %s%s%s\n", written, outDir.c_str(), sheet.empty() ? "" : " and ",
              sheet.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return Usage(false);
  std::string command = argv[1];
  if (command == "--help" || command == "-h" || command == "help") return Usage(true);
  if (command == "--version") {
    std::printf("nivarel %d.%d.%d\n", nivarel::host::kVersionMajor, nivarel::host::kVersionMinor,
                nivarel::host::kVersionRevision);
    return 0;
  }
  if (AsksForHelp(argc, argv)) {
    if (command == "draw") return CommandUsage(kDrawUsage, true);
    if (command == "wizard") return CommandUsage(kWizardUsage, true);
    if (command == "demo") return CommandUsage(kDemoUsage, true);
    if (command == "shapes") return CommandUsage(kShapesUsage, true);
    if (command == "pictures") return CommandUsage(kPicturesUsage, true);
    if (command == "template") return CommandUsage(nivarel::cli::kTemplateUsage, true);
    if (command == "walkthrough") return CommandUsage(nivarel::cli::kWalkthroughUsage, true);
    if (command == "export") return CommandUsage(nivarel::cli::kExportUsage, true);
    if (command == "key") return CommandUsage(nivarel::cli::kKeyUsage, true);
    if (command == "extract") return CommandUsage(nivarel::cli::kExtractUsage, true);
    if (command == "mermaid") return CommandUsage(nivarel::cli::kMermaidUsage, true);
  }
  const char* ext = std::getenv("NIVAREL_OXT");
  std::string extension = ext && *ext ? ext : NIVAREL_OXT;
  try {
    if (command == "demo") return Demo(argc > 2 ? argv[2] : "out", extension);
    if (command == "draw") {
      nivarel::cli::DrawOptions options;
      options.extension = extension;
      options.shipped = NIVAREL_SHIPPED;
      for (int i = 2; i < argc; ++i) {
        std::string arg = argv[i];
        auto value = [&]() -> std::string {
          if (i + 1 >= argc) throw std::runtime_error(arg + " needs a value");
          return argv[++i];
        };
        if (arg == "-o") options.outputs.push_back(value());
        else if (arg == "--png") options.picture = value();
        else if (arg == "--start") options.start = value();
        else if (arg == "--config") options.config = value();
        else if (arg == "--symbols") options.symbols = value();
        else if (options.steps.empty() && (arg == "-" || arg[0] != '-')) options.steps = arg;
        else {
          std::fprintf(stderr, "nivarel draw: unexpected argument '%s'\n", arg.c_str());
          return CommandUsage(kDrawUsage, false);
        }
      }
      if (options.steps.empty() || options.outputs.empty()) return CommandUsage(kDrawUsage, false);
      return nivarel::cli::Draw(options, std::cin, std::cout, std::cerr);
    }
    if (command == "wizard") {
      nivarel::cli::WizardOptions options;
      options.extension = extension;
      options.shipped = NIVAREL_SHIPPED;
      for (int i = 2; i < argc; ++i) {
        std::string arg = argv[i];
        bool hasValue = i + 1 < argc;
        // A whole number from 0 to 10, or nothing.
        auto spacing = [&]() -> std::optional<int> {
          std::string text = argv[++i];
          if (text.empty() || text.size() > 2 || text.find_first_not_of("0123456789") != std::string::npos)
            return std::nullopt;
          int n = std::stoi(text);
          return n <= 10 ? std::optional<int>(n) : std::nullopt;
        };
        if (arg == "-o" && hasValue) options.outputs.push_back(argv[++i]);
        else if (arg == "--png" && hasValue) options.picture = argv[++i];
        else if (arg == "--sheet" && hasValue) options.sheet = argv[++i];
        else if (arg == "--current-sheet") options.newSheet = false;
        else if (arg == "--layout" && hasValue) {
          std::string layout = argv[++i];
          if (layout != "add" && layout != "keep") {
            std::fprintf(stderr, "nivarel wizard: --layout is add or keep, not '%s'\n", layout.c_str());
            return CommandUsage(kWizardUsage, false);
          }
          options.addSpacing = layout == "add";
        } else if ((arg == "--rows" || arg == "--columns") && hasValue) {
          std::optional<int> n = spacing();
          if (!n) {
            std::fprintf(stderr, "nivarel wizard: %s takes a whole number from 0 to 10, not '%s'\n", arg.c_str(),
                         argv[i]);
            return CommandUsage(kWizardUsage, false);
          }
          (arg == "--rows" ? options.rowsBetween : options.columnsBetween) = *n;
        } else if (options.input.empty() && !arg.empty() && arg[0] != '-') options.input = arg;
        else {
          std::fprintf(stderr, "nivarel wizard: unexpected argument '%s'\n", arg.c_str());
          return CommandUsage(kWizardUsage, false);
        }
      }
      if (options.input.empty() || options.outputs.empty()) return CommandUsage(kWizardUsage, false);
      return nivarel::cli::Wizard(options, std::cout, std::cerr);
    }
    if (command == "export")
      return nivarel::cli::Export(std::vector<std::string>(argv + 2, argv + argc), extension, std::cout, std::cerr);
    if (command == "key" || command == "extract") {
      bool key = command == "key";
      nivarel::cli::OutputToolOptions options;
      options.extension = extension;
      options.shipped = NIVAREL_SHIPPED;
      if (!nivarel::cli::ReadOutputToolArguments(std::vector<std::string>(argv + 2, argv + argc), key, options,
                                                 std::cerr))
        return CommandUsage(key ? nivarel::cli::kKeyUsage : nivarel::cli::kExtractUsage, false);
      return key ? nivarel::cli::Key(options, std::cout, std::cerr) : nivarel::cli::Extract(options, std::cout, std::cerr);
    }
    if (command == "mermaid") {
      nivarel::cli::OutputToolOptions options;
      options.extension = extension;
      options.shipped = NIVAREL_SHIPPED;
      if (!nivarel::cli::ReadMermaidArguments(std::vector<std::string>(argv + 2, argv + argc), options, std::cerr))
        return CommandUsage(nivarel::cli::kMermaidUsage, false);
      return nivarel::cli::Mermaid(options, std::cout, std::cerr);
    }
    if (command == "template")
      return nivarel::cli::Template(std::vector<std::string>(argv + 2, argv + argc), std::cout, std::cerr);
    if (command == "walkthrough")
      return nivarel::cli::Walkthrough(std::vector<std::string>(argv + 2, argv + argc), NIVAREL_SHIPPED, std::cout,
                                       std::cerr);
    if (command == "pictures") {
      std::string outDir, sheet;
      for (int i = 2; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--sheet" && i + 1 < argc) sheet = argv[++i];
        else if (outDir.empty() && arg[0] != '-') outDir = arg;
        else return CommandUsage(kPicturesUsage, false);
      }
      if (outDir.empty()) return CommandUsage(kPicturesUsage, false);
      return Pictures(outDir, sheet);
    }
    if (command == "shapes") {
      std::string file, sheet;
      for (int i = 2; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--sheet" && i + 1 < argc) sheet = argv[++i];
        else if (file.empty() && !arg.empty() && arg[0] != '-') file = arg;
        else return CommandUsage(kShapesUsage, false);
      }
      if (file.empty()) return CommandUsage(kShapesUsage, false);
      return nivarel::cli::ListShapesInFile(file, sheet, std::cout, std::cerr);
    }
  } catch (const HostError& e) {
    std::fprintf(stderr, "nivarel: %s\n", e.Description().c_str());
    return 1;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "nivarel: %s\n", e.what());
    return 1;
  }
  std::fprintf(stderr, "nivarel: unknown command '%s'\n", command.c_str());
  return Usage(false);
}
