#include "Template.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>

#include "CTemplateGenerator.h"
#include "CTemplateProperties.h"
#include "HostError.h"
#include "MGlobalVariables.h"
#include "OfficeProcess.h"

namespace nivarel::cli {

namespace fs = std::filesystem;
using templates::CTemplateProperties;

const char kTemplateUsage[] =
    "usage: nivarel template -o FILE [--paper letter|11x17|a3|a4] [--orientation portrait|landscape]\n"
    "         [--pages N] [--body grid|vertical|horizontal|annotated] [--lanes \"Title 1,Title 2,...\"]\n"
    "         [--header \"a,b,c;d,e\"] [--footer \"a,b;c\"] [--cells] [--line-style N] [--font NAME,SIZE]\n"
    "  Makes a page frame for flowcharts and saves it as a template (FILE gets .xltx unless it\n"
    "  ends so). Defaults: letter, portrait, 1 page, a plain grid, no title block, shapes and\n"
    "  lines, line style 1, Arial 10.\n"
    "  --pages N        1 to 10 pages, one below the other\n"
    "  --lanes          2 to 10 lane titles (vertical and horizontal bodies; default Lane 1..4)\n"
    "  --header/footer  up to 3 rows split at ';', of up to 3 sections split at ','\n"
    "  --cells          title block and lanes as formatted cells instead of shapes and lines\n"
    "  --line-style N   1 to 21: 1-7 thin, 8-14 medium, 15-21 thick, each in seven colours\n";

namespace {

constexpr int kMaxRows = 3, kMaxSections = 3, kMaxLanes = 10, kMaxPages = 10;

std::vector<std::string> Split(const std::string& text, char at) {
  std::vector<std::string> parts;
  std::stringstream in(text);
  for (std::string part; std::getline(in, part, at);) parts.push_back(part);
  if (!text.empty() && text.back() == at) parts.emplace_back();
  return parts;
}

std::optional<int> Whole(const std::string& text, int low, int high) {
  if (text.empty() || text.size() > 3 || text.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  int n = std::stoi(text);
  return n >= low && n <= high ? std::optional<int>(n) : std::nullopt;
}

// Rows of sections "a,b,c;d,e" into the header or the footer; false when
// there are too many.
bool SetTitleBlock(CTemplateProperties& p, bool header, const std::string& text) {
  std::vector<std::string> rows = Split(text, ';');
  if (rows.empty() || rows.size() > kMaxRows) return false;
  for (size_t r = 0; r < rows.size(); ++r) {
    std::vector<std::string> sections = Split(rows[r], ',');
    if (sections.empty()) sections.emplace_back();
    if (sections.size() > kMaxSections) return false;
    int row = static_cast<int>(r) + 1;
    for (size_t s = 0; s < sections.size(); ++s)
      header ? p.SetHeaderRowLabel(row, static_cast<int>(s) + 1, sections[s])
             : p.SetFooterRowLabel(row, static_cast<int>(s) + 1, sections[s]);
    header ? p.SetHeaderSectionCount(row, static_cast<short>(sections.size()))
           : p.SetFooterSectionCount(row, static_cast<short>(sections.size()));
  }
  if (header) {
    p.AddHeader(true);
    p.HeaderRowCount(static_cast<short>(rows.size()));
  } else {
    p.AddFooter(true);
    p.FooterRowCount(static_cast<short>(rows.size()));
  }
  return true;
}

// The options into p; a message on err when one cannot be taken.
bool ReadArguments(const std::vector<std::string>& args, CTemplateProperties& p, std::string& output,
                   std::ostream& err) {
  p.MaxTitleBlockRows(kMaxRows);
  p.MaxTitleBlockSections(kMaxSections);
  p.MaxSwimLaneCount(kMaxLanes);
  p.PaperSize(1);
  p.Orientation(1);
  p.NumberOfPages(1);
  p.UseShapesForSwimLanes(true);
  p.TemplateType(CTemplateProperties::PlainGrid);
  p.TemplateLineStyle(1);
  p.TemplateFontName("Arial");
  p.TemplateFontSize(10);
  p.SwimLaneCount(4);
  for (int lane = 1; lane <= 4; ++lane) p.SetSwimLaneTitle(lane, "Lane " + std::to_string(lane));

  auto bad = [&](const std::string& what) {
    err << "nivarel template: " << what << "\n";
    return false;
  };
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--cells") {
      p.UseShapesForSwimLanes(false);
      continue;
    }
    if (i + 1 >= args.size()) return bad("unexpected argument '" + arg + "'");
    const std::string& value = args[++i];
    if (arg == "-o") {
      output = value;
    } else if (arg == "--paper") {
      if (value == "letter") p.PaperSize(1);
      else if (value == "11x17") p.PaperSize(17);
      else if (value == "a3") p.PaperSize(8);
      else if (value == "a4") p.PaperSize(9);
      else return bad("--paper is letter, 11x17, a3 or a4, not '" + value + "'");
    } else if (arg == "--orientation") {
      if (value == "portrait") p.Orientation(1);
      else if (value == "landscape") p.Orientation(2);
      else return bad("--orientation is portrait or landscape, not '" + value + "'");
    } else if (arg == "--pages") {
      auto n = Whole(value, 1, kMaxPages);
      if (!n) return bad("--pages takes a whole number from 1 to 10, not '" + value + "'");
      p.NumberOfPages(static_cast<short>(*n));
    } else if (arg == "--body") {
      if (value == "grid") p.TemplateType(CTemplateProperties::PlainGrid);
      else if (value == "horizontal") p.TemplateType(CTemplateProperties::HorizontalSwimLanes);
      else if (value == "vertical") p.TemplateType(CTemplateProperties::VerticalSwimLanes);
      else if (value == "annotated") p.TemplateType(CTemplateProperties::Annotated);
      else return bad("--body is grid, vertical, horizontal or annotated, not '" + value + "'");
    } else if (arg == "--lanes") {
      std::vector<std::string> titles = Split(value, ',');
      if (titles.size() < 2 || titles.size() > kMaxLanes) return bad("--lanes takes 2 to 10 titles split at ','");
      p.SwimLaneCount(static_cast<short>(titles.size()));
      for (int lane = 1; lane <= kMaxLanes; ++lane)
        p.SetSwimLaneTitle(lane, lane <= static_cast<int>(titles.size()) ? titles[lane - 1] : "");
    } else if (arg == "--header" || arg == "--footer") {
      if (!SetTitleBlock(p, arg == "--header", value))
        return bad(arg + " takes up to 3 rows split at ';' of up to 3 sections split at ','");
    } else if (arg == "--line-style") {
      auto n = Whole(value, 1, 21);
      if (!n) return bad("--line-style takes a whole number from 1 to 21, not '" + value + "'");
      p.TemplateLineStyle(static_cast<short>(*n));
    } else if (arg == "--font") {
      size_t comma = value.rfind(',');
      auto size = comma == std::string::npos ? std::nullopt : Whole(value.substr(comma + 1), 1, 72);
      if (!size || comma == 0) return bad("--font takes NAME,SIZE with a size from 1 to 72, not '" + value + "'");
      p.TemplateFontName(value.substr(0, comma));
      p.TemplateFontSize(static_cast<float>(*size));
    } else {
      return bad("unexpected argument '" + arg + "'");
    }
  }
  if (output.empty()) return bad("-o FILE is missing");
  fs::path file = fs::absolute(output);
  std::error_code ec;
  if (file.filename().empty()) return bad("-o names a folder, not a file: '" + output + "'");
  if (!fs::is_directory(file.parent_path(), ec)) return bad("there is no folder '" + file.parent_path().string() + "'");
  p.TemplateFolder(file.parent_path().string());
  p.TemplateName(file.filename().string());
  return true;
}

}  // namespace

int Template(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  CTemplateProperties properties;
  std::string output;
  if (!ReadArguments(arguments, properties, output, err)) {
    err << kTemplateUsage;
    return 2;
  }

  std::unique_ptr<driver::OfficeProcess> office;
  try {
    office = driver::OfficeProcess::Start(driver::OfficeProcess::Options());
  } catch (const office::HostError& e) {
    err << "nivarel: the office cannot start: " << e.Description() << "\n";
    return 1;
  }
  // The office ends with `office` on every road out.
  host::ExcelApp = office->App();
  host::ExcelVersion = std::stoi(office->App().Version());
  host::InitializeGlobals();
  std::string path = templates::CTemplateGenerator::TemplateFilePath(properties);
  std::error_code ec;
  fs::remove(path, ec);
  std::optional<office::Workbook> book = templates::CTemplateGenerator().CreateTemplate(properties);
  try {
    if (book) book->Close();
  } catch (const office::HostError&) {
  }
  host::ExcelApp.reset();
  office->Terminate();
  if (!book || !fs::exists(path, ec)) {
    err << "nivarel: the template could not be made; see the add-in's error log\n";
    return 1;
  }
  out << "wrote " << path << "\n";
  return 0;
}

}  // namespace nivarel::cli
