// nivarel: the command-line face of the add-in. `nivarel draw STEPS -o OUT`
// draws a flowchart with the live run from a list of steps. `nivarel demo OUTDIR` starts
// a headless office with the extension, draws two connected symbols over
// cells and saves the sheet as .ods and .xlsx. `nivarel shapes FILE` lists
// the shapes of a saved sheet as JSON lines.
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "Draw.h"
#include "HostError.h"
#include "MsoConstants.h"
#include "OfficeProcess.h"
#include "ShapeListing.h"
#include "Shapes.h"

using namespace nivarel::office;
using namespace nivarel::driver;

namespace {

int Usage() {
  std::fprintf(stderr,
               "usage: nivarel draw STEPS -o OUT [-o OUT...] [--png PICTURE] [--start CELL] [--config FILE]\n"
               "                               type each line of STEPS (- for standard input) into the cell the\n"
               "                               run selects, stop the run and save OUT (.ods or .xlsx)\n"
               "       nivarel demo [OUTDIR]   draw a small flowchart and save OUTDIR/demo.ods and demo.xlsx\n"
               "       nivarel shapes FILE     list the shapes of FILE's first sheet, one JSON object a line\n");
  return 2;
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

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return Usage();
  std::string command = argv[1];
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
        else if (options.steps.empty()) options.steps = arg;
        else return Usage();
      }
      if (options.steps.empty() || options.outputs.empty()) return Usage();
      return nivarel::cli::Draw(options, std::cin, std::cout, std::cerr);
    }
    if (command == "shapes" && argc == 3) return nivarel::cli::ListShapesInFile(argv[2], std::cout, std::cerr);
  } catch (const HostError& e) {
    std::fprintf(stderr, "nivarel: %s\n", e.Description().c_str());
    return 1;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "nivarel: %s\n", e.what());
    return 1;
  }
  return Usage();
}
