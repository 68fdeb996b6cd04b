// Runs the in-office measurements: starts an office with the measuring
// extension, opens a spreadsheet, asks for each measure and prints its JSON
// line; then times `nivarel draw` of 100 steps, `nivarel wizard` of the
// wizard's two sheets and of the tests' 200-node Mermaid chart end to end,
// office start included.
// Usage: nivarel_bench [MEASURE...] [bench.oxt], MEASURE one of sizing, live,
// memory, draw, wizard, export, mermaid (in the office, then end to end); all
// when none is named.
#include <chrono>
#include <cstdlib>
#include <unistd.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <set>
#include <thread>
#include <vector>

#include "HostError.h"
#include "MermaidSample.h"
#include "OfficeProcess.h"
#include "UiDriver.h"
#include "Workbooks.h"

// Runs `nivarel draw` on 100 steps, with settings of its own, and prints how
// long it took from start to saved file.
bool TimeDraw() {
  namespace fs = std::filesystem;
  fs::path dir = fs::temp_directory_path() / ("nivarel-bench-draw-" + std::to_string(getpid()));
  fs::create_directories(dir / "config");
  const char* steps[] = {"Receive the order", "Check the order for completeness", "Enter it in the system",
                         "Check stock levels", "Pick the items", "Pack the parcel", "Print the invoice",
                         "Hand the parcel to the carrier"};
  {
    std::ofstream out(dir / "steps.txt");
    for (int i = 0; i < 100; ++i) out << steps[i % 8] << "\n";
  }
  std::string command = "XDG_CONFIG_HOME='" + (dir / "config").string() + "' '" NIVAREL_CLI "' draw '" +
                        (dir / "steps.txt").string() + "' -o '" + (dir / "out.ods").string() + "' >'" +
                        (dir / "draw.log").string() + "' 2>&1";
  auto start = std::chrono::steady_clock::now();
  int status = std::system(command.c_str());
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  bool ok = status == 0 && fs::exists(dir / "out.ods");
  if (ok)
    std::cout << "{\"measure\": \"nivarel draw\", \"steps\": 100, \"seconds\": " << seconds << "}\n";
  else
    std::cerr << "nivarel_bench: nivarel draw failed; see " << (dir / "draw.log").string() << "\n";
  if (ok) fs::remove_all(dir);
  return ok;
}

// The wizard's two sheets as CSV files in folder: 1,000 steps down one
// column; and 1,000 entries across five columns (B, D, F, H, J), every
// fourth a question, which becomes a decision with its labels.
void WriteWizardSheets(const std::filesystem::path& folder) {
  const char* steps[] = {"Receive the order", "Check the order for completeness", "Enter it in the system",
                         "Check stock levels", "Pick the items", "Pack the parcel", "Print the invoice",
                         "Hand the parcel to the carrier"};
  std::ofstream one(folder / "wizard-one-column.csv");
  for (int i = 0; i < 1000; ++i) one << "," << steps[i % 8] << " " << i + 1 << "\n";
  std::ofstream five(folder / "wizard-five-columns.csv");
  for (int row = 0; row < 200; ++row) {
    for (int column = 0; column < 5; ++column) {
      int n = column * 200 + row + 1;
      five << ",";
      if (row % 4 == 3)
        five << "Is step " << n << " done?";
      else
        five << steps[n % 8] << " " << n;
      five << (column < 4 ? "," : "\n");
    }
  }
}

// 200 steps down column B, for the export's chart.
void WriteExportSteps(const std::filesystem::path& folder) {
  const char* steps[] = {"Receive the order", "Check the order for completeness", "Enter it in the system",
                         "Check stock levels", "Pick the items", "Pack the parcel", "Print the invoice",
                         "Hand the parcel to the carrier"};
  std::ofstream out(folder / "export-200-steps.csv");
  for (int i = 0; i < 200; ++i) out << "," << steps[i % 8] << " " << i + 1 << "\n";
}

// The tests' Mermaid chart of 200 nodes with 20 decisions, as a file in
// folder.
void WriteMermaidSample(const std::filesystem::path& folder) {
  std::ofstream(folder / "mermaid-200-nodes.mmd") << nivarel::testing::MermaidSample(200, 20);
}

// Runs `nivarel wizard` on each of files in folder (the wizard's sheets or
// a Mermaid file), with settings of its own, and prints how long each took
// from start to saved file, and the engine's own time as the command
// reports it.
bool TimeWizard(const std::filesystem::path& folder, const std::vector<std::string>& files) {
  namespace fs = std::filesystem;
  bool ok = true;
  for (const std::string& file : files) {
    std::string name = fs::path(file).stem().string();
    fs::path input = folder / file, ods = folder / (name + ".ods");
    fs::path log = folder / (name + ".log");
    std::string command = "XDG_CONFIG_HOME='" + (folder / "config").string() + "' '" NIVAREL_CLI "' wizard '" +
                          input.string() + "' -o '" + ods.string() + "' >'" + log.string() + "' 2>&1";
    auto start = std::chrono::steady_clock::now();
    int status = std::system(command.c_str());
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::ifstream in(log);
    std::string report((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (status != 0 || !fs::exists(ods)) {
      std::cerr << "nivarel_bench: nivarel wizard failed on " << input << ": " << report;
      ok = false;
      continue;
    }
    std::string engine = "null";
    size_t at = report.find(" in ");
    if (at != std::string::npos) engine = report.substr(at + 4, report.find(" s", at + 4) - at - 4);
    std::cout << "{\"measure\": \"nivarel wizard\", \"file\": \"" << file << "\", \"seconds\": " << seconds
              << ", \"in_office_s\": " << engine << "}\n";
  }
  return ok;
}

int main(int argc, char** argv) {
  using namespace nivarel::office;
  using namespace nivarel::driver;
  std::string oxt = NIVAREL_BENCH_OXT;
  std::set<std::string> asked;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg.size() > 4 && arg.substr(arg.size() - 4) == ".oxt")
      oxt = arg;
    else
      asked.insert(arg);
  }
  auto wanted = [&](const std::string& measure) { return asked.empty() || asked.count(measure) > 0; };
  int failed = 0;
  namespace fs = std::filesystem;
  fs::path wizardFolder = fs::temp_directory_path() / ("nivarel-bench-wizard-" + std::to_string(getpid()));
  try {
    OfficeProcess::Options options;
    options.extension = oxt;
    auto office = OfficeProcess::Start(options);
    office->App().GetWorkbooks().Add();
    UiDriver ui(office->App());
    for (const std::string measure : {"sizing", "live", "memory", "wizard", "export", "mermaid"}) {
      if (!wanted(measure)) continue;
      std::string out = office->ProfileDir() + "/" + measure + ".json";
      if (measure == "wizard") WriteWizardSheets(office->ProfileDir());
      if (measure == "export") WriteExportSteps(office->ProfileDir());
      ui.RunCommand("vnd.nivarel-bench:" + measure + "?" + out, true);
      for (int i = 0; i < 1500 && !std::filesystem::exists(out); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
      std::this_thread::sleep_for(std::chrono::milliseconds(200));
      std::ifstream in(out);
      std::string line;
      if (!std::getline(in, line)) {
        std::cerr << "nivarel_bench: the measure " << measure << " gave no result\n";
        ++failed;
        continue;
      }
      std::cout << line << std::endl;
    }
  } catch (const HostError& e) {
    std::cerr << "nivarel_bench: " << e.Description() << "\n";
    return 1;
  }
  if (wanted("draw") && !TimeDraw()) ++failed;
  if (wanted("wizard") || wanted("mermaid")) {
    fs::create_directories(wizardFolder / "config");
    std::vector<std::string> files;
    if (wanted("wizard")) {
      WriteWizardSheets(wizardFolder);
      files = {"wizard-one-column.csv", "wizard-five-columns.csv"};
    }
    if (wanted("mermaid")) {
      WriteMermaidSample(wizardFolder);
      files.push_back("mermaid-200-nodes.mmd");
    }
    if (TimeWizard(wizardFolder, files))
      fs::remove_all(wizardFolder);
    else
      ++failed;
  }
  return failed ? 1 : 0;
}
