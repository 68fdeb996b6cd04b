// Tests without the office run with a settings folder of their own.
#pragma once

#include <string>

namespace nivarel::testing {

// The folder that XDG_CONFIG_HOME names for this test binary.
const std::string& UnitConfigHome();

}  // namespace nivarel::testing
