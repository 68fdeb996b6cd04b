// Runs the in-office measurements: starts an office with the measuring
// extension, opens a spreadsheet, asks for each measure and prints its JSON
// line; then times `nivarel draw` of 100 steps end to end, office start
// included. Usage: nivarel_bench [bench.oxt]
#include <chrono>
#include <cstdlib>
#include <unistd.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

#include "HostError.h"
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

int main(int argc, char** argv) {
  using namespace nivarel::office;
  using namespace nivarel::driver;
  std::string oxt = argc > 1 ? argv[1] : NIVAREL_BENCH_OXT;
  int failed = 0;
  try {
    OfficeProcess::Options options;
    options.extension = oxt;
    auto office = OfficeProcess::Start(options);
    office->App().GetWorkbooks().Add();
    UiDriver ui(office->App());
    for (const std::string measure : {"sizing", "live", "memory"}) {
      std::string out = office->ProfileDir() + "/" + measure + ".json";
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
  if (!TimeDraw()) ++failed;
  return failed ? 1 : 0;
}
