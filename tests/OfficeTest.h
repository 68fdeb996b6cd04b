// The harness of every test that needs the office: one headless office per
// test binary, on a throwaway profile with the freshly built extension
// installed; a new spreadsheet document per test; a time bound per test after
// which the office is ended by its process id and the binary exits.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "Application.h"
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

}  // namespace nivarel::testing
