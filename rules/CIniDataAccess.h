// Moves the stored settings between a CConfig and the settings file,
// nivarel.cfg, section "Settings", key by key in a fixed order. A key that
// fails to convert is skipped and the rest go on; unknown lines of the file
// survive a save. When the file is new to the user and the per-user store
// says "SaveSettings", the old per-user settings are brought over first.
#pragma once

#include <string>
#include <vector>

#include "CConfig.h"

namespace nivarel::rules {

class CIniDataAccess {
 public:
  void ReadConfigData(CConfig& config);
  void SaveConfigData(CConfig& config);

  // The stored keys, in the order they are read and written.
  static std::vector<std::string> KeyNames();
};

}  // namespace nivarel::rules
