// The command-line program on files that the shared office saves: what
// `nivarel shapes` lists of shapes, a glued connector and a group; the charts
// that `nivarel draw` and `nivarel wizard` save; how each fails on what it
// cannot read, and that its own office and profile are gone when it ends.
#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <nlohmann/json.hpp>

#include "MsoConstants.h"
#include "OfficeTest.h"
#include "PngFile.h"
#include "SavedXlsx.h"
#include "DocumentProperties.h"
#include "Shapes.h"
#include "Workbooks.h"

using namespace nivarel::office;
using namespace nivarel::driver;
using nlohmann::json;

namespace nivarel::testing {
namespace {

const char kStepName[] = "Step \"one\"";
const char kStepText[] = "Take the \"order\"\nthen check — ü";

struct CommandRun {
  int exitCode = 0;
  std::string output;  // standard output and error together
  std::vector<std::string> lines;
};

class CliTest : public OfficeTest {
 protected:
  void SetUp() override {
    OfficeTest::SetUp();
    folder_ = ConfigHome() + "/cli";
    tmp_ = ConfigHome() + "/cli-tmp";
    std::filesystem::remove_all(tmp_);
    std::filesystem::create_directories(folder_);
    std::filesystem::create_directories(tmp_);
  }

  // Terminator "Start", a process glued below it by a connector from site 3
  // to site 1, and a group "Notes" of two rectangles, in that drawing order.
  void DrawSheet() {
    Shapes shapes = sheet_->GetShapes();
    Shape start = shapes.AddShape(msoShapeFlowchartTerminator, 90, 36, 108, 36);
    start.SetName("Start");
    start.GetTextFrame().GetCharacters().SetText("Start");
    Shape step = shapes.AddShape(msoShapeFlowchartProcess, 90, 144, 108, 54);
    step.SetName(kStepName);
    step.GetTextFrame().GetCharacters().SetText(kStepText);
    Shape line = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
    line.SetName("Flow");
    line.GetConnectorFormat().BeginConnect(start, 3);
    line.GetConnectorFormat().EndConnect(step, 1);
    Shape a = shapes.AddShape(msoShapeRectangle, 288, 36, 72, 36);
    a.SetName("Note A");
    Shape b = shapes.AddShape(msoShapeRectangle, 288, 108, 72, 36);
    b.SetName("Note B");
    shapes.GetRange({"Note A", "Note B"}).Group().SetName("Notes");
  }

  std::string Save(const std::string& name) {
    std::string path = folder_ + "/" + name;
    book_->SaveAs(path);
    return path;
  }

  // Runs the built command with its temporary folder, and so its office's
  // profile, under tmp_.
  CommandRun ListShapes(const std::string& path) { return Run("shapes '" + path + "'"); }

  CommandRun Run(const std::string& arguments) {
    std::optional<std::string> saved;
    if (const char* t = getenv("TMPDIR")) saved = t;
    setenv("TMPDIR", tmp_.c_str(), 1);
    CommandRun run;
    run.exitCode = OfficeProcess::RunProgram(NIVAREL_CLI, arguments, 200, &run.output);
    if (saved)
      setenv("TMPDIR", saved->c_str(), 1);
    else
      unsetenv("TMPDIR");
    std::istringstream in(run.output);
    for (std::string line; std::getline(in, line);) run.lines.push_back(line);
    return run;
  }

  // No office of the command is left running, nor its profile folder.
  void ExpectNothingLeftBehind() {
    bool officeGone = false;
    for (int i = 0; i < 50 && !officeGone; ++i) {
      officeGone = !OfficeUsing(tmp_);
      if (!officeGone) std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    EXPECT_TRUE(officeGone) << "an office with its profile under " << tmp_ << " still runs";
    for (const auto& entry : std::filesystem::directory_iterator(tmp_))
      ADD_FAILURE() << "left behind: " << entry.path();
  }

  std::string folder_, tmp_;

 private:
  // True when a running process names folder on its command line.
  static bool OfficeUsing(const std::string& folder) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
      std::string pid = entry.path().filename().string();
      if (pid.find_first_not_of("0123456789") != std::string::npos) continue;
      std::ifstream in(entry.path() / "cmdline", std::ios::binary);
      std::string cmdline((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
      if (cmdline.find("soffice") != std::string::npos && cmdline.find(folder) != std::string::npos) {
        std::ifstream stat(entry.path() / "stat");
        std::string ignore, state;
        stat >> ignore >> ignore >> state;
        if (state != "Z" && state != "X") return true;
      }
    }
    return false;
  }
};

// The lines as JSON objects, each with two decimals for every measure.
std::vector<json> Parse(const CommandRun& run) {
  std::vector<json> objects;
  const std::regex twoDecimals("\"(left|top|width|height)\":-?[0-9]+\\.[0-9]{2}[,}]");
  for (const std::string& line : run.lines) {
    json j = json::parse(line, nullptr, false);
    EXPECT_FALSE(j.is_discarded()) << "not JSON: " << line;
    if (j.is_discarded()) continue;
    EXPECT_EQ(4, std::distance(std::sregex_iterator(line.begin(), line.end(), twoDecimals), std::sregex_iterator()))
        << line;
    objects.push_back(j);
  }
  return objects;
}

TEST_F(CliTest, ListsShapesConnectorsAndGroupsOfTheFirstSheetInDrawingOrder) {
  DrawSheet();
  std::string ods = Save("flow.ods");
  CommandRun run = ListShapes(ods);
  ASSERT_EQ(0, run.exitCode) << run.output;
  std::vector<json> list = Parse(run);
  ASSERT_EQ(4u, list.size()) << run.output;

  const json& start = list[0];
  EXPECT_EQ("Start", start["name"]);
  EXPECT_EQ(msoAutoShape, start["type"]);
  EXPECT_EQ(msoShapeFlowchartTerminator, start["autoshape"]);
  EXPECT_DOUBLE_EQ(90, start["left"].get<double>());
  EXPECT_DOUBLE_EQ(36, start["top"].get<double>());
  EXPECT_DOUBLE_EQ(108, start["width"].get<double>());
  EXPECT_DOUBLE_EQ(36, start["height"].get<double>());
  EXPECT_EQ("Start", start["text"]);
  EXPECT_FALSE(start.contains("begin") || start.contains("members"));

  const json& step = list[1];
  EXPECT_EQ(kStepName, step["name"]);
  EXPECT_EQ(msoShapeFlowchartProcess, step["autoshape"]);
  EXPECT_EQ(kStepText, step["text"]);
  EXPECT_DOUBLE_EQ(144, step["top"].get<double>());

  const json& flow = list[2];
  EXPECT_EQ("Flow", flow["name"]);
  EXPECT_EQ(msoAutoShape, flow["type"]);
  EXPECT_FALSE(flow.contains("autoshape"));
  EXPECT_EQ("Start", flow["begin"]);
  EXPECT_EQ(kStepName, flow["end"]);
  EXPECT_EQ(3, flow["begin_site"]);
  EXPECT_EQ(1, flow["end_site"]);
  // From the middle of the terminator's bottom to the middle of the process's top.
  EXPECT_NEAR(72, flow["top"].get<double>(), 0.02);
  EXPECT_NEAR(72, flow["height"].get<double>(), 0.02);

  const json& notes = list[3];
  EXPECT_EQ("Notes", notes["name"]);
  EXPECT_EQ(msoGroup, notes["type"]);
  EXPECT_FALSE(notes.contains("autoshape"));
  EXPECT_EQ(json::array({"Note A", "Note B"}), notes["members"]);
  EXPECT_DOUBLE_EQ(108, notes["height"].get<double>());
  ExpectNothingLeftBehind();

  // The same sheet through the .xlsx filter: the office's own export keeps
  // no glue there, so only the connector's place in the list is compared.
  std::string xlsx = Save("flow.xlsx");
  run = ListShapes(xlsx);
  ASSERT_EQ(0, run.exitCode) << run.output;
  list = Parse(run);
  ASSERT_EQ(4u, list.size()) << run.output;
  EXPECT_EQ("Start", list[0]["name"]);
  EXPECT_EQ(msoShapeFlowchartTerminator, list[0]["autoshape"]);
  EXPECT_EQ(kStepText, list[1]["text"]);
  EXPECT_EQ("Flow", list[2]["name"]);
  EXPECT_TRUE(list[2].contains("begin_site") && list[2].contains("end_site"));
  EXPECT_EQ(json::array({"Note A", "Note B"}), list[3]["members"]);
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, HelpAndVersionGoToStandardOutputAndMistakesToStandardError) {
  // Standard error thrown away: what is left is standard output.
  for (const char* asked : {"--help", "draw --help", "wizard --help", "shapes -h", "demo --help", "pictures --help",
                            "export --help", "key --help", "extract -h", "mermaid --help", "walkthrough --help"}) {
    CommandRun help = Run(std::string(asked) + " 2>/dev/null");
    EXPECT_EQ(0, help.exitCode) << asked;
    EXPECT_EQ(0u, help.output.find("usage: nivarel")) << asked << ": " << help.output;
  }
  CommandRun version = Run("--version 2>/dev/null");
  EXPECT_EQ(0, version.exitCode);
  EXPECT_EQ("nivarel 2.4.15\n", version.output);
  for (const char* wrong : {"", "bogus", "draw", "draw steps.txt --bogus -o x.ods", "shapes", "pictures",
                            "pictures out --bogus", "wizard", "wizard in.csv", "wizard -o x.ods",
                            "wizard in.csv -o x.ods --rows 11", "wizard in.csv -o x.ods --columns -1",
                            "wizard in.csv -o x.ods --layout sideways", "wizard in.csv -o x.ods --bogus", "export",
                            "export c.ods", "export -o c.png", "export c.ods -o c.png --scale 0",
                            "export c.ods -o c.png --scale 11", "export c.ods -o c.png --bogus",
                            "key", "key chart.ods -o x.ods", "key chart.ods --cell B2", "key chart.ods --cell",
                            "extract", "extract chart.ods --bogus", "extract chart.ods --png x.png", "mermaid",
                            "mermaid chart.ods --bogus", "mermaid chart.ods -o a.mmd -o b.mmd", "walkthrough",
                            "walkthrough -o x.txt", "walkthrough -o x.xlsx --png x.jpg", "walkthrough -o x.xlsx --bogus"}) {
    CommandRun mistake = Run(std::string(wrong) + " >/dev/null");
    EXPECT_EQ(2, mistake.exitCode) << wrong;
    EXPECT_NE(std::string::npos, mistake.output.find("usage: nivarel")) << wrong << ": on standard error";
  }
}

TEST_F(CliTest, AFileSavedWithPlainAttributeNamesStillReadsItsStyles) {
  // Saved by an earlier build, whose shape attributes had no namespace.
  std::vector<json> shapes = Parse(ListShapes(NIVAREL_SOURCE_DIR "/tests/data/plain-attributes.ods"));
  ASSERT_EQ(9u, shapes.size());
  for (const json& s : shapes) {
    if (s.contains("begin"))
      EXPECT_EQ(10009, s.value("style", 0)) << s.dump();
    else
      EXPECT_LT(0, s.value("style", 0)) << s.dump();
  }
}

TEST_F(CliTest, AFileItCannotReadFailsWithAMessageAndLeavesNoOffice) {
  CommandRun missing = ListShapes(folder_ + "/no such file.ods");
  EXPECT_EQ(1, missing.exitCode);
  EXPECT_NE(std::string::npos, missing.output.find("cannot read '" + folder_ + "/no such file.ods': no such file"))
      << missing.output;
  ExpectNothingLeftBehind();

  // Text under a spreadsheet's name: the office opens it as something else.
  std::string text = folder_ + "/plain #1.ods";
  std::ofstream(text) << "not a spreadsheet\n";
  CommandRun unreadable = ListShapes(text);
  EXPECT_EQ(1, unreadable.exitCode);
  EXPECT_NE(std::string::npos, unreadable.output.find("cannot open '" + text + "' as a spreadsheet"))
      << unreadable.output;
  ExpectNothingLeftBehind();

  // Bytes that no filter takes.
  std::string noise = folder_ + "/noise.xlsx";
  {
    std::ofstream out(noise, std::ios::binary);
    for (int i = 0; i < 4096; ++i) out.put(static_cast<char>((i * 7919) % 251));
  }
  CommandRun broken = ListShapes(noise);
  EXPECT_EQ(1, broken.exitCode);
  EXPECT_NE(std::string::npos, broken.output.find("cannot open '" + noise + "'")) << broken.output;
  ExpectNothingLeftBehind();
}


// The attributes without a namespace prefix in a member of a saved package.
std::vector<std::string> PlainAttributes(const std::string& package, const std::string& member) {
  std::string xml = PackageMember(package, member);
  // The XML declaration's pseudo-attributes are not attributes.
  if (xml.rfind("<?xml", 0) == 0) xml.erase(0, xml.find("?>"));
  std::vector<std::string> plain;
  std::regex attribute(R"(\s([A-Za-z_][\w.\-]*)(:[\w.\-]+)?=")");
  for (std::sregex_iterator i(xml.begin(), xml.end(), attribute), end; i != end; ++i)
    if (!(*i)[2].matched) plain.push_back((*i)[1]);
  return plain;
}

// The symbols of a listing, connectors and labels left out, groups by their
// first member (a decision grouped with its labels).
std::vector<json> Symbols(const std::vector<json>& shapes) {
  std::vector<json> out;
  for (const json& s : shapes) {
    if (s.contains("begin") || s["type"] == msoTextBox) continue;
    out.push_back(s);
  }
  return out;
}

TEST_F(CliTest, DrawTypesEachStepIntoTheRunAndSavesTheChart) {
  std::string steps = folder_ + "/steps.txt";
  std::ofstream(steps) << "take the order\nis it in stock?\n\nship it\n";
  std::string out = folder_ + "/drawn.ods";
  CommandRun drawn = Run("draw '" + steps + "' -o '" + out + "' --png '" + folder_ + "/drawn.png'");
  ASSERT_EQ(0, drawn.exitCode) << drawn.output;
  EXPECT_TRUE(std::filesystem::file_size(folder_ + "/drawn.png") > 1000) << "a picture of the drawing";
  ExpectNothingLeftBehind();

  for (const char* member : {"content.xml", "styles.xml"})
    EXPECT_EQ(std::vector<std::string>(), PlainAttributes(out, member)) << member << ": valid OpenDocument";

  std::vector<json> shapes = Parse(ListShapes(out));
  std::vector<json> symbols = Symbols(shapes);
  ASSERT_EQ(5u, symbols.size()) << drawn.output;
  EXPECT_EQ("Start", symbols[0]["text"]);
  EXPECT_EQ(69, symbols[0]["autoshape"]);
  EXPECT_EQ(61, symbols[1]["autoshape"]);
  EXPECT_EQ(msoGroup, symbols[2]["type"]) << "the decision with its labels";
  EXPECT_EQ(61, symbols[3]["autoshape"]);
  EXPECT_EQ("Ship it", symbols[3]["text"]);
  EXPECT_EQ("End", symbols[4]["text"]);
  // One glued line between consecutive steps, down the page.
  std::vector<std::pair<std::string, std::string>> lines;
  for (const json& s : shapes)
    if (s.contains("begin") && !s["begin"].is_null() && !s["end"].is_null()) lines.emplace_back(s["begin"], s["end"]);
  EXPECT_EQ(4u, lines.size());
  for (const json& s : shapes)
    if (s.contains("begin")) EXPECT_EQ(10009, s.value("style", 0)) << "the line style id read back from the file";
  for (size_t i = 0; i + 1 < symbols.size(); ++i) {
    std::string from = symbols[i].contains("members") ? symbols[i]["members"][0] : symbols[i]["name"];
    std::string to = symbols[i + 1].contains("members") ? symbols[i + 1]["members"][0] : symbols[i + 1]["name"];
    EXPECT_NE(lines.end(), std::find(lines.begin(), lines.end(), std::make_pair(from, to))) << from << " to " << to;
    EXPECT_LT(symbols[i]["top"].get<double>(), symbols[i + 1]["top"].get<double>());
  }
}

TEST_F(CliTest, DrawSavesAnXlsxWhoseLinesNameTheShapesTheyAreGluedTo) {
  std::string xlsx = folder_ + "/order.xlsx", ods = folder_ + "/order.ods";
  CommandRun drawn = Run("draw '" NIVAREL_SOURCE_DIR "/examples/order.txt' -o '" + xlsx + "' -o '" + ods + "'");
  ASSERT_EQ(0, drawn.exitCode) << drawn.output;
  std::map<std::string, json> listed;  // the connectors as the office reads them from the .ods
  for (const json& s : Parse(ListShapes(ods)))
    if (s.contains("begin")) listed[s["name"]] = s;
  std::vector<XlsxConnector> saved = XlsxConnectorsOf(xlsx);
  ASSERT_EQ(listed.size(), saved.size()) << "every flow line is in the .xlsx";
  ASSERT_LE(12u, saved.size());
  for (const XlsxConnector& c : saved) {
    ASSERT_TRUE(listed.count(c.name)) << c.name << " keeps its name";
    const json& l = listed[c.name];
    EXPECT_EQ(l["begin"], c.begin) << c.name;
    EXPECT_EQ(l["end"], c.end) << c.name;
    EXPECT_EQ(l["begin_site"], c.beginSite) << c.name;
    EXPECT_EQ(l["end_site"], c.endSite) << c.name;
  }
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, DrawRunsWithTheUsersOwnSettingsAndLeavesThemAsTheyWere) {
  std::string folder = ConfigHome() + "/Tamrisk/Nivarel";
  std::filesystem::create_directories(folder);
  std::string path = folder + "/nivarel.cfg";
  std::optional<std::string> before;
  if (std::ifstream in{path}) before = std::string((std::istreambuf_iterator<char>(in)), {});
  std::ifstream shipped(NIVAREL_SOURCE_DIR "/extension/nivarel.cfg");
  std::string cfg((std::istreambuf_iterator<char>(shipped)), std::istreambuf_iterator<char>());
  cfg = std::regex_replace(cfg, std::regex("QuestionMarkIsDecision=True"), "QuestionMarkIsDecision=False");
  std::ofstream(path) << cfg;

  std::string steps = folder_ + "/question.txt";
  std::ofstream(steps) << "is it ok?\n";
  std::string out = folder_ + "/question.ods";
  CommandRun drawn = Run("draw '" + steps + "' -o '" + out + "'");
  std::ifstream after(path);
  std::string kept((std::istreambuf_iterator<char>(after)), {});
  if (before) std::ofstream(path) << *before; else std::filesystem::remove(path);

  ASSERT_EQ(0, drawn.exitCode) << drawn.output;
  EXPECT_EQ(cfg, kept) << "the user's settings are not changed";
  std::vector<json> symbols = Symbols(Parse(ListShapes(out)));
  ASSERT_LE(2u, symbols.size()) << drawn.output;
  EXPECT_EQ("Is it ok?", symbols[1]["text"]);
  EXPECT_EQ(61, symbols[1]["autoshape"]) << "a question mark makes no decision in the user's settings";
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, DrawFollowsTheGivenSettingsAndRefusesBadInput) {
  // The shipped settings with the flow running left to right.
  std::ifstream shipped(NIVAREL_SOURCE_DIR "/extension/nivarel.cfg");
  std::string cfg((std::istreambuf_iterator<char>(shipped)), std::istreambuf_iterator<char>());
  cfg = std::regex_replace(cfg, std::regex("FlowDirection=0"), "FlowDirection=1");
  cfg = std::regex_replace(cfg, std::regex("EndTerminator=True"), "EndTerminator=False");
  std::ofstream(folder_ + "/across.cfg") << cfg;
  std::string steps = folder_ + "/across.txt";
  std::ofstream(steps) << "order\npack\nship\n";
  CommandRun drawn = Run("draw '" + steps + "' -o '" + folder_ + "/across.xlsx' --start D4 --config '" + folder_ +
                         "/across.cfg'");
  ASSERT_EQ(0, drawn.exitCode) << drawn.output;
  std::vector<json> symbols = Symbols(Parse(ListShapes(folder_ + "/across.xlsx")));
  ASSERT_EQ(4u, symbols.size()) << "start and three steps, no end";
  // The first step stands under the start terminator; from there the steps
  // run across.
  EXPECT_LT(symbols[0]["top"].get<double>(), symbols[1]["top"].get<double>());
  for (size_t i = 1; i + 1 < symbols.size(); ++i) {
    EXPECT_LT(symbols[i]["left"].get<double>(), symbols[i + 1]["left"].get<double>()) << "left to right";
    EXPECT_NEAR(symbols[i]["top"].get<double>() + symbols[i]["height"].get<double>() / 2,
                symbols[i + 1]["top"].get<double>() + symbols[i + 1]["height"].get<double>() / 2, 0.5);
  }

  // Settings that ask for the branch labels: the prompt a decision brings up
  // is taken with its offer, and the steps after it are drawn.
  std::string asking = std::regex_replace(cfg, std::regex("BranchLabelOption=0"), "BranchLabelOption=1");
  std::ofstream(folder_ + "/ask.cfg") << asking;
  std::ofstream(folder_ + "/ask.txt") << "order\nIs it packed?\nship\n";
  CommandRun asked = Run("draw '" + folder_ + "/ask.txt' -o '" + folder_ + "/ask.ods' --config '" + folder_ + "/ask.cfg'");
  ASSERT_EQ(0, asked.exitCode) << asked.output;
  bool grouped = false, lastDrawn = false;
  for (const json& s : Parse(ListShapes(folder_ + "/ask.ods"))) {
    grouped = grouped || (s.value("type", 0) == 6 && s["members"].size() >= 2);
    lastDrawn = lastDrawn || s.value("text", "") == "Ship";
  }
  EXPECT_TRUE(grouped) << "the decision with the labels the prompt offered";
  EXPECT_TRUE(lastDrawn) << "the step after the prompt";

  CommandRun wrongType = Run("draw '" + steps + "' -o '" + folder_ + "/chart.pdf'");
  EXPECT_EQ(1, wrongType.exitCode);
  EXPECT_NE(std::string::npos, wrongType.output.find("unknown output type '.pdf'")) << wrongType.output;
  CommandRun noSteps = Run("draw '" + folder_ + "/missing.txt' -o '" + folder_ + "/chart.ods'");
  EXPECT_EQ(1, noSteps.exitCode);
  EXPECT_NE(std::string::npos, noSteps.output.find("cannot read the steps")) << noSteps.output;
  ExpectNothingLeftBehind();
}

// The five symbols the wizard draws from the cells B1:B3 and D1:D2 below,
// by their text, and the lines between them, as a listing gives them.
struct WizardChart {
  std::map<std::string, json> symbols;
  std::vector<json> lines;
};

WizardChart ChartOf(const std::vector<json>& shapes) {
  WizardChart chart;
  for (const json& s : shapes) {
    if (s.contains("begin"))
      chart.lines.push_back(s);
    else if (s.contains("autoshape"))
      chart.symbols[s["text"]] = s;
  }
  return chart;
}

const char kTwoColumns[] =
    ",Take the order,,Pack the parcel\n"
    ",Is it in stock?,,Ship it\n"
    ",Order more,,\n";

// The symbols stand in the columns and rows given, on the wizard's grid of
// equal columns and equal rows: a cell's left is (column - 1) column widths,
// its top (row - 1) row heights, both measured from where the first symbol
// stands; and each line joins two symbols of a column from the bottom of the
// upper one to the top of the lower one.
void ExpectWizardChart(const WizardChart& chart, int columnB, int columnD, const std::vector<int>& rowsB,
                       const std::vector<int>& rowsD) {
  ASSERT_EQ(5u, chart.symbols.size());
  const json& first = chart.symbols.at("Take the order");
  double width = first["left"].get<double>() / (columnB - 1), height = first["top"].get<double>() / (rowsB[0] - 1);
  auto expect = [&](const char* text, int column, int row) {
    const json& s = chart.symbols.at(text);
    EXPECT_NEAR((column - 1) * width, s["left"].get<double>(), 0.5) << text << " in column " << column;
    EXPECT_NEAR((row - 1) * height, s["top"].get<double>(), 0.5) << text << " in row " << row;
  };
  const char* b[] = {"Take the order", "Is it in stock?", "Order more"};
  const char* d[] = {"Pack the parcel", "Ship it"};
  for (int i = 0; i < 3; ++i) expect(b[i], columnB, rowsB[i]);
  for (int i = 0; i < 2; ++i) expect(d[i], columnD, rowsD[i]);
  EXPECT_EQ(msoShapeFlowchartDecision, chart.symbols.at("Is it in stock?")["autoshape"]);
  for (const char* text : {"Take the order", "Order more", "Pack the parcel", "Ship it"})
    EXPECT_EQ(msoShapeFlowchartProcess, chart.symbols.at(text)["autoshape"]) << text;

  std::set<std::pair<std::string, std::string>> joins, expected;
  for (auto [from, to] : {std::pair{b[0], b[1]}, {b[1], b[2]}, {d[0], d[1]}})
    expected.emplace(chart.symbols.at(from)["name"], chart.symbols.at(to)["name"]);
  for (const json& line : chart.lines) {
    auto end = [&](const char* key) { return line[key].is_null() ? std::string("-") : line[key].get<std::string>(); };
    joins.emplace(end("begin"), end("end"));
    EXPECT_EQ(3, line["begin_site"]) << line.dump() << ": from the bottom";
    EXPECT_EQ(1, line["end_site"]) << line.dump() << ": to the top";
  }
  EXPECT_EQ(expected, joins);
}

// The sheet a wizard run drew on, as its report names it.
std::string DrawnSheet(const CommandRun& run) {
  std::smatch m;
  if (std::regex_search(run.output, m, std::regex("on the sheet '([^']*)'"))) return m[1];
  ADD_FAILURE() << "no sheet named in: " << run.output;
  return "";
}

TEST_F(CliTest, WizardTurnsTheCellsOfACsvIntoAChartAsTheDialogsDefaultsDo) {
  std::string csv = folder_ + "/two columns.csv";
  std::ofstream(csv) << kTwoColumns;
  std::string ods = folder_ + "/wizard.ods", xlsx = folder_ + "/wizard.xlsx", png = folder_ + "/wizard.png";
  CommandRun run = Run("wizard '" + csv + "' -o '" + ods + "' -o '" + xlsx + "' --png '" + png + "'");
  ASSERT_EQ(0, run.exitCode) << run.output;
  ExpectNothingLeftBehind();
  EXPECT_TRUE(std::filesystem::file_size(png) > 1000) << "a picture of the chart";
  std::string drawn = DrawnSheet(run);

  // The cells stay on the sheet read; the chart stands on a new one. Columns
  // B and D are spread 8 + 4 columns apart and moved right to start in
  // column 3 (3 and 15); row 1 moves down to row 3. Down a column a symbol
  // stands 2 rows plus one below the one above (a row more below a
  // decision): 3 + 2 + 3 = 8, 8 + 4 + 3 = 15.
  CommandRun listed = Run("shapes '" + ods + "' --sheet '" + drawn + "'");
  ASSERT_EQ(0, listed.exitCode) << listed.output;
  WizardChart chart = ChartOf(Parse(listed));
  ExpectWizardChart(chart, 3, 15, {3, 8, 15}, {3, 8});

  // The .xlsx names the shapes each line is glued to, as the .ods does.
  std::vector<XlsxConnector> saved = XlsxConnectorsOf(xlsx);
  ASSERT_EQ(chart.lines.size(), saved.size());
  for (const XlsxConnector& c : saved) {
    auto line = std::find_if(chart.lines.begin(), chart.lines.end(), [&](const json& l) { return l["name"] == c.name; });
    ASSERT_NE(chart.lines.end(), line) << c.name;
    EXPECT_EQ((*line)["begin"], c.begin) << c.name;
    EXPECT_EQ((*line)["end"], c.end) << c.name;
  }
}

TEST_F(CliTest, WizardTakesTheChoicesOfItsOptions) {
  // A workbook whose second sheet holds the cells, the first left alone;
  // still open here, as a user's file may be open in the office.
  Worksheet second = book_->AddSheet();
  second.SetName("Steps");
  std::istringstream cells(kTwoColumns);
  std::string line;
  for (int row = 1; std::getline(cells, line); ++row) {
    std::istringstream fields(line);
    std::string field;
    for (int column = 1; std::getline(fields, field, ','); ++column)
      if (!field.empty()) second.Cells(row, column).SetValue(field);
  }
  sheet_->GetRange("A1").SetValue("Not a step");
  std::string input = Save("steps.ods");
  std::string out = folder_ + "/over.ods";
  CommandRun run = Run("wizard '" + input + "' -o '" + out + "' --sheet Steps --current-sheet --rows 1 --columns 2");
  ASSERT_EQ(0, run.exitCode) << run.output;
  EXPECT_EQ("Steps", DrawnSheet(run)) << "drawn over the sheet read";

  // Columns 2 and 4 spread 8 + 2 apart (2 and 12), then 3 and 13; down a
  // column 3 + 2 + 2 = 7, 7 + 4 + 2 = 13.
  CommandRun listed = Run("shapes '" + out + "' --sheet Steps");
  ASSERT_EQ(0, listed.exitCode) << listed.output;
  ExpectWizardChart(ChartOf(Parse(listed)), 3, 13, {3, 7, 13}, {3, 7});
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, WizardSaysWhyItDrewNothing) {
  std::string out = folder_ + "/nothing.ods";
  CommandRun missing = Run("wizard '" + folder_ + "/missing.csv' -o '" + out + "'");
  EXPECT_EQ(1, missing.exitCode);
  EXPECT_NE(std::string::npos, missing.output.find("cannot read '" + folder_ + "/missing.csv': no such file"))
      << missing.output;

  std::string csv = folder_ + "/steps.csv";
  std::ofstream(csv) << kTwoColumns;
  CommandRun wrongType = Run("wizard '" + csv + "' -o '" + folder_ + "/chart.pdf'");
  EXPECT_EQ(1, wrongType.exitCode);
  EXPECT_NE(std::string::npos, wrongType.output.find("unknown output type '.pdf'")) << wrongType.output;
  ExpectNothingLeftBehind();

  std::string text = folder_ + "/plain.ods";
  std::ofstream(text) << "not a spreadsheet\n";
  CommandRun unreadable = Run("wizard '" + text + "' -o '" + out + "'");
  EXPECT_EQ(1, unreadable.exitCode);
  EXPECT_NE(std::string::npos, unreadable.output.find("cannot open '" + text + "' as a spreadsheet"))
      << unreadable.output;
  ExpectNothingLeftBehind();

  std::string blank = folder_ + "/blank.csv";
  std::ofstream(blank) << ",,\n , ,\n";
  CommandRun empty = Run("wizard '" + blank + "' -o '" + out + "'");
  EXPECT_EQ(1, empty.exitCode);
  EXPECT_NE(std::string::npos, empty.output.find("nivarel: No text was found on the current worksheet."))
      << empty.output;
  EXPECT_FALSE(std::filesystem::exists(out)) << "nothing saved";
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, TemplateMakesATemplateFromItsOptionsAndRefusesWhatItCannotTake) {
  CommandRun made = Run("template -o '" + folder_ + "/Two lanes' --body vertical --lanes 'Ask,Ship' --header "
                        "'Title,Date;Owner' --cells --paper a4 --orientation landscape --pages 2 --font 'DejaVu Serif,12'");
  ASSERT_EQ(0, made.exitCode) << made.output;
  std::string path = folder_ + "/Two lanes.xltx";
  EXPECT_EQ(std::vector<std::string>{"wrote " + path}, made.lines);
  ExpectNothingLeftBehind();

  Workbook book = App().GetWorkbooks().OpenCopy(path);
  Worksheet ws = book.Sheet(1);
  EXPECT_EQ(9, ws.GetPageSetup().PaperSize());
  EXPECT_EQ(2, ws.GetPageSetup().Orientation());
  EXPECT_EQ("Title", ws.Cells(1, 1).Text());
  EXPECT_EQ("Owner", ws.Cells(3, 1).Text()) << "the second header row";
  EXPECT_EQ("Ask", ws.Cells(5, 1).Text()) << "the lanes below the header";
  EXPECT_EQ("DejaVu Serif", ws.Cells(5, 1).GetFont().Name());
  EXPECT_EQ(0, ws.GetShapes().Count()) << "--cells";
  std::map<std::string, std::string> properties;
  DocumentProperties props = book.GetDocumentProperties();
  for (int i = 1; i <= props.Count(); ++i) properties[props.Name(i)] = props.Value(i);
  EXPECT_EQ("2", properties["NumberLanes"]);
  EXPECT_EQ("Vertical", properties["LaneDirection"]);
  EXPECT_EQ("A4", properties["PageSize"]);
  book.Close();

  for (const std::string& wrong : {std::string("template --paper b5 -o '") + folder_ + "/x'",
                                   std::string("template --lanes 'One' -o '") + folder_ + "/x'",
                                   std::string("template --header 'a,b,c,d' -o '") + folder_ + "/x'",
                                   std::string("template --line-style 22 -o '") + folder_ + "/x'",
                                   std::string("template -o '") + folder_ + "/no such folder/x'",
                                   std::string("template --body grid")}) {
    CommandRun refused = Run(wrong);
    EXPECT_EQ(2, refused.exitCode) << wrong;
    EXPECT_NE(std::string::npos, refused.output.find("nivarel template: ")) << refused.output;
    EXPECT_NE(std::string::npos, refused.output.find("usage: nivarel template")) << refused.output;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/x.xltx"));
  ExpectNothingLeftBehind();
  CommandRun help = Run("template --help");
  EXPECT_EQ(0, help.exitCode);
  EXPECT_EQ("usage: nivarel template -o FILE [--paper letter|11x17|a3|a4] [--orientation portrait|landscape]",
            help.lines.at(0));
}

// The first bytes of a file.
std::string Head(const std::string& path, size_t count = 64) {
  std::ifstream in(path, std::ios::binary);
  std::string bytes(count, '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(count));
  bytes.resize(static_cast<size_t>(in.gcount()));
  return bytes;
}

std::string Whole(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// A TIFF's compression (tag 259) from its first directory; -1 without one.
int TiffCompression(const std::string& tiff) {
  if (tiff.size() < 8) return -1;
  bool big = tiff[0] == 'M';
  auto number = [&](size_t at, int bytes) {
    unsigned long v = 0;
    for (int i = 0; i < bytes; ++i) {
      unsigned char b = static_cast<unsigned char>(tiff[at + (big ? i : bytes - 1 - i)]);
      v = (v << 8) | b;
    }
    return v;
  };
  size_t dir = number(4, 4);
  if (dir + 2 > tiff.size()) return -1;
  size_t entries = number(dir, 2);
  for (size_t i = 0; i < entries && dir + 2 + 12 * (i + 1) <= tiff.size(); ++i) {
    size_t e = dir + 2 + 12 * i;
    if (number(e, 2) == 259) return static_cast<int>(number(e + 8, 2));
  }
  return -1;
}

// The first value of a JPEG's first quantization table: 2 at quality 95 on
// the standard tables (16 scaled by 10%, rounded), 8 at the usual 75.
int JpegFirstQuantizer(const std::string& jpeg) {
  size_t at = jpeg.find("\xFF\xDB");
  if (at == std::string::npos || at + 6 > jpeg.size()) return -1;
  return static_cast<unsigned char>(jpeg[at + 5]);
}

TEST_F(CliTest, ExportWritesThePictureInEachOfTheDialogsFormats) {
  DrawSheet();
  std::string chart = Save("chart.ods");
  struct Expected {
    const char* type;
    std::string signature;
    size_t at;
  };
  const Expected formats[] = {{".bmp", "BM", 0},           {".emf", " EMF", 40}, {".gif", "GIF8", 0},
                              {".jpg", "\xFF\xD8\xFF", 0}, {".png", "\x89PNG", 0}, {".tif", "MM", 0}};
  for (const Expected& f : formats) {
    std::string picture = folder_ + "/chart" + f.type;
    CommandRun run = Run("export '" + chart + "' -o '" + picture + "'");
    ASSERT_EQ(0, run.exitCode) << f.type << ": " << run.output;
    std::string head = Head(picture);
    ASSERT_GT(head.size(), f.at + f.signature.size()) << f.type;
    EXPECT_EQ(f.signature, head.substr(f.at, f.signature.size())) << f.type;
    EXPECT_NE(std::string::npos, run.output.find("wrote " + picture + " (")) << run.output;
  }
  EXPECT_EQ(5, TiffCompression(Whole(folder_ + "/chart.tif"))) << "LZW";
  EXPECT_EQ(2, JpegFirstQuantizer(Whole(folder_ + "/chart.jpg"))) << "quality 95";
  // Every shape, from the terminator's left (90 pt) to the notes' right
  // (360 pt) and from 36 to 198 pt down, at 4 pixels for 3 points.
  PngFile png(folder_ + "/chart.png");
  EXPECT_NEAR(360, png.Width(), 3);
  EXPECT_NEAR(216, png.Height(), 3);
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, ExportScalesItsPixelsAndTakesARange) {
  DrawSheet();
  std::string chart = Save("chart.ods");
  std::string once = folder_ + "/once.png", twice = folder_ + "/twice.png";
  ASSERT_EQ(0, Run("export '" + chart + "' -o '" + once + "'").exitCode);
  CommandRun scaled = Run("export '" + chart + "' -o '" + twice + "' --scale 2");
  ASSERT_EQ(0, scaled.exitCode) << scaled.output;
  PngFile one(once), two(twice);
  EXPECT_NEAR(2 * one.Width(), two.Width(), 1);
  EXPECT_NEAR(2 * one.Height(), two.Height(), 1);

  // A range: its cells with the shapes over them, A1:F10 at 96 dpi.
  std::string cells = folder_ + "/cells.png";
  CommandRun range = Run("export '" + chart + "' -o '" + cells + "' --range A1:F10");
  ASSERT_EQ(0, range.exitCode) << range.output;
  Range block = sheet_->GetRange("A1:F10");
  PngFile part(cells);
  EXPECT_NEAR(block.Width() * 4 / 3, part.Width(), 2);
  EXPECT_NEAR(block.Height() * 4 / 3, part.Height(), 2);
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, ExportWritesTheChartAsVectors) {
  DrawSheet();
  std::string chart = Save("chart.ods");
  std::string pdf = folder_ + "/chart.pdf";
  CommandRun document = Run("export '" + chart + "' -o '" + pdf + "'");
  ASSERT_EQ(0, document.exitCode) << document.output;
  EXPECT_EQ("%PDF", Head(pdf).substr(0, 4));
  // One page of the picture's size: 270 x 162 pt.
  std::smatch box;
  std::string whole = Whole(pdf);
  ASSERT_TRUE(std::regex_search(whole, box, std::regex(R"(/MediaBox\s*\[\s*0\s+0\s+([0-9.]+)\s+([0-9.]+))")));
  EXPECT_NEAR(270, std::stod(box[1]), 2);
  EXPECT_NEAR(162, std::stod(box[2]), 2);

  // An SVG comes from the office's SVG filter (the setup installs it).
  std::string svg = folder_ + "/chart.svg";
  CommandRun vectors = Run("export '" + chart + "' -o '" + svg + "'");
  EXPECT_EQ(0, vectors.exitCode) << vectors.output;
  EXPECT_NE(std::string::npos, Whole(svg).find("<svg")) << Head(svg);
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, ExportSaysWhyItWroteNothing) {
  CommandRun missing = Run("export '" + folder_ + "/missing.ods' -o '" + folder_ + "/x.png'");
  EXPECT_EQ(1, missing.exitCode);
  EXPECT_NE(std::string::npos, missing.output.find("cannot read '" + folder_ + "/missing.ods': no such file"))
      << missing.output;
  std::string empty = Save("empty.ods");
  CommandRun wrongType = Run("export '" + empty + "' -o '" + folder_ + "/x.txt'");
  EXPECT_EQ(1, wrongType.exitCode);
  EXPECT_NE(std::string::npos, wrongType.output.find("a picture is .bmp, .emf, .gif, .jpg, .png, .tif, .svg or .pdf"))
      << wrongType.output;
  ExpectNothingLeftBehind();

  std::string picture = folder_ + "/nothing.png";
  CommandRun nothing = Run("export '" + empty + "' -o '" + picture + "'");
  EXPECT_EQ(1, nothing.exitCode);
  EXPECT_NE(std::string::npos, nothing.output.find("nivarel: There is no content on the current sheet."))
      << nothing.output;
  EXPECT_FALSE(std::filesystem::exists(picture));
  ExpectNothingLeftBehind();

  CommandRun badRange = Run("export '" + empty + "' -o '" + picture + "' --range 'B2:nowhere'");
  EXPECT_EQ(1, badRange.exitCode);
  EXPECT_NE(std::string::npos, badRange.output.find("The range entered is invalid.")) << badRange.output;
  EXPECT_FALSE(std::filesystem::exists(picture));
  ExpectNothingLeftBehind();
}

// The symbol key of a saved sheet, drawn by the add-in inside an office at
// a cell of another sheet: a row for the terminator and the process (the
// rectangles of the group get none, "1," being part of "61,"), one for the
// solid connector; the copy saved, the file read left as it was.
TEST_F(CliTest, KeyDrawsTheSymbolKeyOfASavedSheetWhereTheCellSays) {
  DrawSheet();
  book_->AddSheet().SetName("Legend");
  sheet_->Activate();  // the file opens at the chart
  std::string input = Save("chart.ods");
  std::string out = folder_ + "/keyed.ods", png = folder_ + "/keyed.png";
  CommandRun run = Run("key '" + input + "' --cell Legend.B2 -o '" + out + "' --png '" + png + "'");
  ASSERT_EQ(0, run.exitCode) << run.output;
  EXPECT_EQ(std::vector<std::string>{"drew a key of 3 rows at B2 of the sheet 'Legend' and wrote " + out + ", " + png},
            run.lines);
  ExpectNothingLeftBehind();
  EXPECT_TRUE(std::filesystem::file_size(png) > 1000) << "a picture of the key's sheet";

  Workbook keyed = App().GetWorkbooks().OpenCopy(out);
  Shapes legend = keyed.Sheet(2).GetShapes();
  ASSERT_EQ(1, legend.Count());
  Shape key = legend.Item(1);
  EXPECT_EQ("Flowchart Key", key.Name());
  std::vector<Shape> items = key.GroupItems();
  ASSERT_EQ(7u, items.size());
  EXPECT_EQ("Terminator", items[2].GetTextFrame().GetCharacters().Text());
  EXPECT_EQ("Process", items[4].GetTextFrame().GetCharacters().Text());
  EXPECT_EQ("Flow Line", items[6].GetTextFrame().GetCharacters().Text());
  EXPECT_NEAR(keyed.Sheet(2).GetRange("B2").Left(), key.Left(), 0.1);
  EXPECT_EQ(4, keyed.Sheet(1).GetShapes().Count()) << "the chart's sheet as it was";
  keyed.Close();
  Workbook read = App().GetWorkbooks().OpenCopy(input);
  EXPECT_EQ(0, read.Sheet(2).GetShapes().Count()) << "the file read is not changed";
  read.Close();
}

TEST_F(CliTest, KeySaysWhyItDrewNothing) {
  std::string empty = Save("empty.ods");
  std::string out = folder_ + "/nothing.ods";
  CommandRun noShapes = Run("key '" + empty + "' --cell B2 -o '" + out + "'");
  EXPECT_EQ(1, noShapes.exitCode);
  EXPECT_EQ(std::vector<std::string>{"nivarel: There are no shapes on the current sheet."}, noShapes.lines);
  ExpectNothingLeftBehind();

  DrawSheet();
  std::string chart = Save("chart.ods");
  CommandRun noSheet = Run("key '" + chart + "' --cell 'Nowhere.B2' -o '" + out + "'");
  EXPECT_EQ(1, noSheet.exitCode);
  EXPECT_EQ(std::vector<std::string>{"nivarel: There is no sheet named 'Nowhere' in the workbook."}, noSheet.lines);
  EXPECT_FALSE(std::filesystem::exists(out)) << "nothing saved";
  ExpectNothingLeftBehind();
}

// The steps of a saved chart printed one a line in drawing order, the
// terminator's Start left out and a line break within a step printed as a
// blank; or written under "Process Steps" on another sheet and saved.
TEST_F(CliTest, ExtractPrintsTheStepsOrWritesThemUnderTheHeading) {
  DrawSheet();
  Shape ask = sheet_->GetShapes().AddShape(msoShapeFlowchartDecision, 90, 250, 108, 54);
  ask.GetTextFrame().GetCharacters().SetText("Paid?");
  book_->AddSheet().SetName("Steps");
  sheet_->Activate();
  std::string input = Save("chart.ods");

  CommandRun printed = Run("extract '" + input + "' 2>/dev/null");
  ASSERT_EQ(0, printed.exitCode) << printed.output;
  EXPECT_EQ((std::vector<std::string>{"Take the \"order\" then check — ü", "Paid?"}), printed.lines);
  ExpectNothingLeftBehind();

  std::string out = folder_ + "/steps.ods";
  CommandRun written = Run("extract '" + input + "' --cell Steps.B2 -o '" + out + "'");
  ASSERT_EQ(0, written.exitCode) << written.output;
  EXPECT_EQ(std::vector<std::string>{"wrote 2 steps under Process Steps at B2 of the sheet 'Steps' in " + out},
            written.lines);
  Workbook book = App().GetWorkbooks().OpenCopy(out);
  Worksheet steps = book.Sheet(2);
  EXPECT_EQ("Process Steps", steps.GetRange("B2").Value());
  EXPECT_EQ(kStepText, steps.GetRange("B3").Value());
  EXPECT_EQ("Paid?", steps.GetRange("B4").Value());
  EXPECT_EQ("", steps.GetRange("B5").Value());
  book.Close();
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, ExtractSaysWhyItListedNothing) {
  std::string empty = Save("empty.ods");
  CommandRun noShapes = Run("extract '" + empty + "'");
  EXPECT_EQ(1, noShapes.exitCode);
  EXPECT_EQ((std::vector<std::string>{"nivarel: No shapes found on current worksheet", "",
                                      "You must select the worksheet containing the",
                                      "flowchart sbefore running this feature."}),
            noShapes.lines);
  ExpectNothingLeftBehind();

  std::string csv = folder_ + "/steps.csv";
  std::ofstream(csv) << "Take the order\n";
  CommandRun wrongType = Run("extract '" + csv + "'");
  EXPECT_EQ(1, wrongType.exitCode);
  EXPECT_NE(std::string::npos, wrongType.output.find("cannot read '" + csv + "': not a .ods or .xlsx file"))
      << wrongType.output;
}

// The chart's text goes to standard output, or with -o to the file and a
// line saying so; the glued line is an edge from the begin shape's node, a
// name Mermaid can take is the node's id, and the step's quotes and line
// break are written as the syntax wants them. The file read stays as it was.
TEST_F(CliTest, MermaidPrintsTheChartsTextOrWritesItToAFile) {
  DrawSheet();
  std::string input = Save("chart.ods");
  auto saved = std::filesystem::last_write_time(input);

  CommandRun printed = Run("mermaid '" + input + "' 2>/dev/null");
  ASSERT_EQ(0, printed.exitCode) << printed.output;
  ASSERT_FALSE(printed.lines.empty());
  EXPECT_EQ("flowchart TD", printed.lines[0]) << printed.output;
  std::set<std::string> lines(printed.lines.begin(), printed.lines.end());
  EXPECT_TRUE(lines.count("    Start([\"Start\"])")) << printed.output;
  EXPECT_TRUE(lines.count("    N2[\"Take the #quot;order#quot;<br>then check — ü\"]")) << printed.output;
  EXPECT_TRUE(lines.count("    Start --> N2")) << printed.output;
  EXPECT_EQ(saved, std::filesystem::last_write_time(input));
  ExpectNothingLeftBehind();

  std::string out = folder_ + "/chart.mmd";
  CommandRun written = Run("mermaid '" + input + "' -o '" + out + "' 2>/dev/null");
  ASSERT_EQ(0, written.exitCode) << written.output;
  ASSERT_EQ(1u, written.lines.size()) << written.output;
  EXPECT_EQ(0u, written.lines[0].find("wrote 4 nodes of the sheet '")) << written.output;
  std::ifstream file(out, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_EQ(printed.output, text.str());
  ExpectNothingLeftBehind();
}

TEST_F(CliTest, MermaidSaysWhyItWroteNothing) {
  book_->AddSheet().SetName("Blank");
  sheet_->Activate();
  DrawSheet();
  std::string input = Save("chart.ods");
  CommandRun blank = Run("mermaid '" + input + "' --sheet Blank -o '" + folder_ + "/blank.mmd'");
  EXPECT_EQ(1, blank.exitCode);
  EXPECT_EQ(std::vector<std::string>{"nivarel: No flowchart symbols were found on the sheet 'Blank'."}, blank.lines);
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/blank.mmd"));
  CommandRun noSheet = Run("mermaid '" + input + "' --sheet Nowhere");
  EXPECT_EQ(1, noSheet.exitCode);
  EXPECT_EQ(std::vector<std::string>{"nivarel: There is no sheet named 'Nowhere' in the workbook."}, noSheet.lines);
  CommandRun unwritable = Run("mermaid '" + input + "' -o '" + folder_ + "/no/such/folder/x.mmd'");
  EXPECT_EQ(1, unwritable.exitCode);
  EXPECT_EQ(std::vector<std::string>{"nivarel: cannot write '" + folder_ + "/no/such/folder/x.mmd'"}, unwritable.lines);
  CommandRun missing = Run("mermaid '" + folder_ + "/missing.ods'");
  EXPECT_EQ(1, missing.exitCode);
  EXPECT_NE(std::string::npos, missing.output.find("cannot read '" + folder_ + "/missing.ods'")) << missing.output;
  ExpectNothingLeftBehind();
}

// The order demo drawn live and written out: a node for each of its twelve
// steps (the label line is none) and the run's two terminators, in the
// order drawn, each with its shape; one edge down the chain from each to
// the next; the two decisions' lines down carry their Yes labels (their No
// labels have no line).
TEST_F(CliTest, MermaidWritesTheDrawnDemoChart) {
  std::string chart = folder_ + "/order.ods";
  CommandRun drawn = Run("draw '" NIVAREL_SOURCE_DIR "/examples/order.txt' -o '" + chart + "'");
  ASSERT_EQ(0, drawn.exitCode) << drawn.output;
  CommandRun printed = Run("mermaid '" + chart + "' 2>/dev/null");
  ASSERT_EQ(0, printed.exitCode) << printed.output;
  ASSERT_FALSE(printed.lines.empty());
  EXPECT_EQ("flowchart TD", printed.lines[0]);

  std::regex node(R"re(    (\w+)(\(\[|\[/|\{|>|\[)"(.*)"(\]\)|/\]|\}|\])$)re");
  std::regex edge(R"re(    (\S+) (-->|-\.->)(?:\|(.*)\|)? (\S+))re");
  std::vector<std::string> ids, shapes, texts;
  std::vector<std::tuple<std::string, std::string, std::string>> edges;
  for (const std::string& line : printed.lines) {
    std::smatch m;
    if (std::regex_match(line, m, node)) {
      ids.push_back(m[1]);
      shapes.push_back(m[2]);
      texts.push_back(m[3]);
    } else if (std::regex_match(line, m, edge)) {
      EXPECT_EQ("-->", m[2]) << line;
      edges.emplace_back(m[1], m[4], m[3]);
    }
  }
  ASSERT_EQ(14u, texts.size()) << printed.output;
  EXPECT_EQ("Start", texts.front());
  EXPECT_EQ("End", texts.back());
  EXPECT_EQ("Check the order for completeness", texts[2]);
  EXPECT_EQ("2", texts[12]);
  EXPECT_EQ((std::vector<std::string>{"([", "[", "[", "{", "[", "[", "{", "[", "[", "[/", "[", "[", ">", "(["}), shapes)
      << printed.output;
  std::vector<std::tuple<std::string, std::string, std::string>> chain;
  for (size_t i = 0; i + 1 < ids.size(); ++i)
    chain.emplace_back(ids[i], ids[i + 1], texts[i].back() == '?' ? "Yes" : "");
  EXPECT_EQ(chain, edges) << printed.output;
  ExpectNothingLeftBehind();
}

// The order demo drawn live, written as Mermaid, drawn again from that
// text by the wizard and written once more: the same text, line for line
// (nodes, shapes, texts, edges, the Yes labels, the class).
TEST_F(CliTest, TheDemoChartWrittenAsMermaidAndDrawnAgainWritesTheSameText) {
  std::string chart = folder_ + "/order.ods", first = folder_ + "/order.mmd", again = folder_ + "/again.ods";
  CommandRun drawn = Run("draw '" NIVAREL_SOURCE_DIR "/examples/order.txt' -o '" + chart + "'");
  ASSERT_EQ(0, drawn.exitCode) << drawn.output;
  CommandRun written = Run("mermaid '" + chart + "' -o '" + first + "'");
  ASSERT_EQ(0, written.exitCode) << written.output;
  CommandRun imported = Run("wizard '" + first + "' -o '" + again + "'");
  ASSERT_EQ(0, imported.exitCode) << imported.output;
  // 14 symbols, 13 lines, the two decisions' Yes labels.
  EXPECT_EQ(0u, imported.output.find("drew 29 shapes on the sheet '")) << imported.output;
  CommandRun rewritten = Run("mermaid '" + again + "' 2>/dev/null");
  ASSERT_EQ(0, rewritten.exitCode) << rewritten.output;
  std::ifstream file(first, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_EQ(text.str(), rewritten.output);
  ExpectNothingLeftBehind();
}

// Mermaid text the wizard cannot read is told with its line before any
// office starts, and nothing is written; so are the choices that only a
// sheet's text can take.
TEST_F(CliTest, WizardTellsTheLineOfMermaidItCannotRead) {
  std::string bad = folder_ + "/bad.mmd", good = folder_ + "/good.mmd", out = folder_ + "/out.ods";
  std::ofstream(bad) << "flowchart TD\n  a[Start] --> b[Check\n";
  std::ofstream(good) << "flowchart TD\n  a --> b\n";
  CommandRun refused = Run("wizard '" + bad + "' -o '" + out + "'");
  EXPECT_EQ(1, refused.exitCode);
  ASSERT_EQ(1u, refused.lines.size()) << refused.output;
  EXPECT_EQ(0u, refused.lines[0].find("nivarel: '" + bad + "' is not Mermaid flowchart text: line 2: ")) << refused.output;
  CommandRun sheet = Run("wizard '" + good + "' -o '" + out + "' --sheet Sheet1");
  EXPECT_EQ(1, sheet.exitCode);
  EXPECT_EQ(std::vector<std::string>{"nivarel: --sheet, --layout keep and --current-sheet do not apply to Mermaid input"},
            sheet.lines);
  EXPECT_FALSE(std::filesystem::exists(out));
  ExpectNothingLeftBehind();
}

}  // namespace
}  // namespace nivarel::testing
