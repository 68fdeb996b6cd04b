#include "Export.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>

#include "AddinCommand.h"
#include "HostError.h"
#include "OfficeCopy.h"
#include "OfficeProcess.h"
#include "OutputFiles.h"
#include "Workbooks.h"

namespace nivarel::cli {

namespace fs = std::filesystem;
using namespace nivarel::office;
using namespace nivarel::driver;

const char kExportUsage[] =
    "usage: nivarel export FILE -o PICTURE [--range A1:H40] [--scale N] [--sheet NAME]\n"
    "  Writes a picture of the flowchart on a sheet of FILE (.ods or .xlsx) as Export as\n"
    "  Picture does: every shape of the sheet, or with --range the cells of that range with\n"
    "  the shapes over them (a sheet without shapes gives its content and a cell around it).\n"
    "  PICTURE is a .bmp, .emf, .gif, .jpg (quality 95), .png or .tif (LZW) picture at the\n"
    "  screen's 96 pixels per inch, or a .svg or .pdf drawing.\n"
    "  --scale N      N times the screen's resolution (1 to 10, default 1), for print\n"
    "  --sheet NAME   the sheet to picture (default: the sheet the file opens at)\n";

namespace {

constexpr char kExportCommand[] = "vnd.nivarel:rxNivarelRunExportImage";

const char* const kPictureTypes[] = {".bmp", ".emf", ".gif", ".jpg", ".png", ".tif", ".svg", ".pdf"};

int Mistake(std::ostream& err, const std::string& what) {
  err << "nivarel export: " << what << "\n" << kExportUsage;
  return 2;
}

}  // namespace

int Export(const std::vector<std::string>& args, const std::string& extension, std::ostream& out,
           std::ostream& err) {
  std::string input, picture, range, sheet;
  int scale = 1;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    bool hasValue = i + 1 < args.size();
    if (arg == "-o" && hasValue) picture = args[++i];
    else if (arg == "--range" && hasValue) range = args[++i];
    else if (arg == "--sheet" && hasValue) sheet = args[++i];
    else if (arg == "--scale" && hasValue) {
      const std::string& text = args[++i];
      if (text.empty() || text.size() > 2 || text.find_first_not_of("0123456789") != std::string::npos ||
          std::atoi(text.c_str()) < 1 || std::atoi(text.c_str()) > 10)
        return Mistake(err, "--scale takes a whole number from 1 to 10, not '" + text + "'");
      scale = std::atoi(text.c_str());
    } else if (input.empty() && !arg.empty() && arg[0] != '-') input = arg;
    else return Mistake(err, "unexpected argument '" + arg + "'");
  }
  if (input.empty() || picture.empty()) return Mistake(err, "FILE and -o PICTURE are needed");
  std::string type = FileType(picture);
  bool known = false;
  for (const char* t : kPictureTypes) known = known || type == t;
  if (!known) {
    err << "nivarel: cannot write '" << picture << "': a picture is .bmp, .emf, .gif, .jpg, .png, .tif, .svg or .pdf\n";
    return 1;
  }
  std::string problem = InputProblem(input, {".ods", ".xlsx"});
  if (!problem.empty()) {
    err << "nivarel: cannot read '" << input << "': " << problem << "\n";
    return 1;
  }
  std::error_code ec;
  fs::path folder = fs::absolute(picture).parent_path();
  if (!fs::is_directory(folder, ec)) {
    err << "nivarel: cannot write '" << picture << "': there is no folder " << folder.string() << "\n";
    return 1;
  }

  // The office ends with `copy` on every road out, the document with it.
  std::optional<OfficeCopy> copy = OpenOfficeCopy(extension, input, err);
  if (!copy) return 1;
  std::unique_ptr<OfficeProcess>& office = copy->office;
  std::optional<Workbook>& opened = copy->book;
  try {
    Workbook& book = *opened;
    std::vector<std::pair<std::string, AddinCommand::Value>> arguments = {
        {"Path", fs::absolute(picture).string()}, {"Scale", scale}};
    if (!range.empty()) arguments.emplace_back("Range", range);
    if (!sheet.empty()) arguments.emplace_back("Sheet", sheet);
    AddinCommand::Answer answer = AddinCommand::Send(book, kExportCommand, arguments);
    if (!answer.succeeded) {
      std::string message = answer.values["Message"];
      err << "nivarel: " << (message.empty() ? "no picture was written" : message) << "\n";
      return 1;
    }
    out << "wrote " << picture << " (" << answer.values["Width"] << " x " << answer.values["Height"]
        << " pixels)\n";
    book.Close();
  } catch (const HostError& e) {
    err << "nivarel: " << e.Description() << "\n";
    return 1;
  }
  office->Terminate();
  return 0;
}

}  // namespace nivarel::cli
