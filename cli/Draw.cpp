#include "Draw.h"
#include "OutputFiles.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <istream>
#include <ostream>
#include <thread>
#include <vector>

#include "CConfig.h"
#include "HostError.h"
#include "OfficeProcess.h"
#include "Range.h"
#include "Shape.h"
#include "SettingsCopy.h"
#include "Shapes.h"
#include "UiDriver.h"
#include "Text.h"

namespace nivarel::cli {

namespace fs = std::filesystem;
using namespace nivarel::office;
using namespace nivarel::driver;

namespace {

bool ReadSteps(const std::string& source, std::istream& in, std::vector<std::string>& steps) {
  std::ifstream file;
  std::istream* stream = &in;
  if (source != "-") {
    file.open(source, std::ios::binary);
    if (!file) return false;
    stream = &file;
  }
  std::string line;
  while (std::getline(*stream, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    steps.push_back(line);
  }
  return !stream->bad();
}

// Waits up to timeoutMs for ready; false when it never came.
template <typename F>
bool WaitFor(F ready, int timeoutMs) {
  auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
  while (!ready()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

// Answers a prompt that a step or the stop brings up (branch label texts,
// the end terminator) with its default button, as a user happy with the
// offer would.
// A line that drops a note on the sheet rather than a step.
bool IsLabel(const std::string& step) {
  return rules::UpperCase(rules::TrimLeft(step, rules::kBlankOrTab)).rfind("LBL:", 0) == 0;
}

// The cell one column right of the chart's last symbol, two rows above the
// next step's row.
std::string BesideTheChart(const Worksheet& sheet, Shapes& shapes, int nextRow) {
  int column = 1;
  for (int i = shapes.Count(); i >= 1; --i) {
    Shape s = shapes.Item(i);
    if (s.Connector()) continue;
    column = s.BottomRightCell().Column() + 1;
    break;
  }
  return sheet.Cells(std::max(1, nextRow - 2), column).Address(false);
}

// Waits for the run to be done with the step typed into the cell typed:
// the run moves the cursor on when it has drawn the step. A prompt on the
// way is answered with its default button. A step the run could not draw
// leaves the cursor where it was: after a while the next step goes on.
void FinishStep(UiDriver& ui, const Application& app, const std::string& typed) {
  auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (std::chrono::steady_clock::now() < end) {
    if (!ui.DialogTitle().empty()) {
      ui.PressDialogKey("RETURN");
      WaitFor([&] { return ui.DialogTitle().empty(); }, 3000);
      continue;
    }
    auto cell = app.ActiveCell();
    if (cell && cell->Address(false) != typed) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

void AcceptPrompts(UiDriver& ui) {
  for (int i = 0; i < 5; ++i) {
    if (!WaitFor([&] { return !ui.DialogTitle().empty(); }, i == 0 ? 500 : 200)) return;
    ui.PressDialogKey("RETURN");
    WaitFor([&] { return ui.DialogTitle().empty(); }, 3000);
  }
}

}  // namespace

int Draw(const DrawOptions& options, std::istream& in, std::ostream& out, std::ostream& err) {
  if (!CheckOutputTypes(options.outputs, options.picture, err)) return 1;
  std::vector<std::string> steps;
  if (!ReadSteps(options.steps, in, steps)) {
    err << "nivarel: cannot read the steps from '" << options.steps << "'\n";
    return 1;
  }
  if (!options.config.empty() && !fs::is_regular_file(options.config)) {
    err << "nivarel: cannot read the settings file '" << options.config << "'\n";
    return 1;
  }
  if (!options.symbols.empty() && !fs::is_regular_file(options.symbols)) {
    err << "nivarel: cannot read the symbol rules '" << options.symbols << "'\n";
    return 1;
  }

  // The run works on copies of the user's own settings (or of the files
  // given): the user's files stay as they are.
  SettingsCopy settings("nivarel-draw", options.shipped, options.config, options.symbols);
  rules::CConfig config;
  config.LoadConfigData();
  if (!options.start.empty()) {
    config.StartLocation = options.start;
    config.StoreConfigData();
  }

  int result = 0;
  {
    OfficeProcess::Options officeOptions;
    officeOptions.extension = options.extension;
    std::unique_ptr<OfficeProcess> office;
    try {
      office = OfficeProcess::Start(officeOptions);
    } catch (const HostError& e) {
      err << "nivarel: the office cannot start: " << e.Description() << "\n";
      return 1;
    }
    try {
      Application app = office->App();
      Workbook book = app.GetWorkbooks().Add();
      Worksheet sheet = book.Sheet(1);
      UiDriver ui(app);
      if (!ui.WaitForDocument()) throw HostError(HostError::kOfficeFailure, "the new sheet never showed");
      Shapes shapes = sheet.GetShapes();
      // Starting shows the start dialog, taken as it comes (the settings
      // given decide what it offers).
      auto started = std::async(std::launch::async, [&] { ui.RunCommand("vnd.nivarel:rxNivarelStartFlowcharting"); });
      while (started.wait_for(std::chrono::milliseconds(100)) != std::future_status::ready) AcceptPrompts(ui);
      started.get();
      if (!WaitFor([&] { return !config.StartTerminator || shapes.Count() > 0; }, 10000))
        throw HostError(HostError::kOfficeFailure, "the run did not start");
      for (const std::string& step : steps) {
        if (step.find_first_not_of(" \t") == std::string::npos) continue;
        auto cell = app.ActiveCell();
        if (!cell) throw HostError(HostError::kOfficeFailure, "no cell is selected");
        if (IsLabel(step)) {
          // A note goes beside the chart, as a person would put it: right
          // of the last symbol, above the cell where the next step goes;
          // then the cursor goes back there.
          std::string next = cell->Address(false);
          ui.TypeIntoCell(BesideTheChart(sheet, shapes, cell->Row()), step);
          ui.SelectCell(next);
          continue;
        }
        std::string typed = cell->Address(false);
        ui.TypeIntoCell(typed, step);
        FinishStep(ui, app, typed);
      }
      // Stopping asks for the end terminator: the command returns only when
      // the prompt is answered, so it is sent from beside this thread.
      auto stopped = std::async(std::launch::async, [&] { ui.RunCommand("vnd.nivarel:rxNivarelStopFlowcharting"); });
      while (stopped.wait_for(std::chrono::milliseconds(100)) != std::future_status::ready) AcceptPrompts(ui);
      stopped.get();
      std::string written;
      for (const std::string& output : options.outputs) {
        book.SaveAs(output);
        written += (written.empty() ? "" : ", ") + output;
      }
      if (!options.picture.empty()) {
        sheet.ExportDrawingPicture(options.picture);
        written += ", " + options.picture;
      }
      out << "drew " << shapes.Count() << " shapes into " << written << "\n";
      book.Close();
    } catch (const HostError& e) {
      err << "nivarel: " << e.Description() << "\n";
      result = 2;
    }
    office->Terminate();
  }
  return result;
}

}  // namespace nivarel::cli
