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
  using namespace nivarel::office;
  using namespace nivarel::driver;
  std::string oxt = argc > 1 ? argv[1] : NIVAREL_BENCH_OXT;
  try {
    OfficeProcess::Options options;
    options.extension = oxt;
    auto office = OfficeProcess::Start(options);
    office->App().GetWorkbooks().Add();
    UiDriver ui(office->App());
    int failed = 0;
    for (const std::string measure : {"sizing", "live"}) {
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
      std::cout << line << "\n";
    }
    return failed ? 1 : 0;
  } catch (const HostError& e) {
    std::cerr << "nivarel_bench: " << e.Description() << "\n";
    return 1;
  }
}
