// Runs the in-office measurements: starts an office with the measuring
// extension, opens a spreadsheet, asks for each measure and prints its JSON
// line. Usage: nivarel_bench [bench.oxt]
#include <chrono>
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

int main(int argc, char** argv) {
  using namespace nivarel::host;
  std::string oxt = argc > 1 ? argv[1] : NIVAREL_BENCH_OXT;
  try {
    OfficeProcess::Options options;
    options.extension = oxt;
    auto office = OfficeProcess::Start(options);
    office->App().GetWorkbooks().Add();
    std::string out = office->ProfileDir() + "/sizing.json";
    UiDriver ui(office->App());
    ui.RunCommand("vnd.nivarel-bench:sizing?" + out, true);
    for (int i = 0; i < 600 && !std::filesystem::exists(out); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(200));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    std::ifstream in(out);
    std::string line;
    if (!std::getline(in, line)) {
      std::cerr << "nivarel_bench: the measure gave no result\n";
      return 1;
    }
    std::cout << line << "\n";
    return 0;
  } catch (const HostError& e) {
    std::cerr << "nivarel_bench: " << e.Description() << "\n";
    return 1;
  }
}
