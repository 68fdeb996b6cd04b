// The harness of every test that needs the office: one headless office per
// test binary, on a throwaway profile with the freshly built extension
// installed; a new spreadsheet document per test; a time bound per test after
// which the office is ended by its process id and the binary exits.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "Application.h"
#include "Characters.h"
#include "ConnectorFormat.h"
#include "Shape.h"
#include "Shapes.h"
#include "TextFrame.h"
#include "Worksheet.h"
#include "OfficeProcess.h"
#include "UiDriver.h"

namespace nivarel::testing {

// The office shared by all tests of this binary.
driver::OfficeProcess& Office();

// Runs main for a test binary: handles the helper modes used by the
// harness's own tests, installs the watchdog and the office environment.
int RunTests(int argc, char** argv);

// The add-in's settings folder (XDG_CONFIG_HOME) of this binary and its
// office; removed when the binary ends.
const std::string& ConfigHome();

// Ends the binary, and its office, when a test runs longer than this.
constexpr int kTestTimeLimitSeconds = 120;

class OfficeTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  office::Application App() const { return Office().App(); }
  driver::UiDriver& Ui();

  std::optional<office::Workbook> book_;
  std::optional<office::Worksheet> sheet_;

 private:
  std::unique_ptr<driver::UiDriver> ui_;
};

// Each glued line of a sheet as the texts of the shapes it joins, from its
// beginning to its end ("-" for an end glued to nothing).
inline std::set<std::pair<std::string, std::string>> JoinedTexts(const office::Worksheet& sheet) {
  auto text = [](const office::Shape& s) { return s.GetTextFrame().GetCharacters().Text(); };
  std::set<std::pair<std::string, std::string>> out;
  office::Shapes shapes = sheet.GetShapes();
  for (int i = 1; i <= shapes.Count(); ++i) {
    office::Shape line = shapes.Item(i);
    if (!line.Connector()) continue;
    auto begin = line.GetConnectorFormat().BeginConnectedShape();
    auto end = line.GetConnectorFormat().EndConnectedShape();
    out.emplace(begin ? text(*begin) : "-", end ? text(*end) : "-");
  }
  return out;
}

}  // namespace nivarel::testing
