// Entry of the tests that need no office: a throwaway settings folder and
// install folder, removed at the end.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "UnitEnvironment.h"

namespace nivarel::testing {

namespace {
std::string configHome;
}

const std::string& UnitConfigHome() { return configHome; }

}  // namespace nivarel::testing

int main(int argc, char** argv) {
  char dir[] = "/tmp/nivarel-unit-XXXXXX";
  if (!mkdtemp(dir)) return 2;
  nivarel::testing::configHome = std::string(dir) + "/config";
  setenv("XDG_CONFIG_HOME", nivarel::testing::configHome.c_str(), 1);
  setenv("HOME", dir, 1);
  ::testing::InitGoogleTest(&argc, argv);
  int rc = RUN_ALL_TESTS();
  std::error_code ec;
  std::filesystem::remove_all(dir, ec);
  return rc;
}
