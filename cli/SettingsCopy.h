// The settings a command's office runs with: copies of the user's own
// nivarel.cfg and symbols.ini (or of the files named instead) in a folder of
// the command's own, which XDG_CONFIG_HOME names from here on, so that the
// office started afterwards reads and writes the copies and the user's files
// stay as they are. A file the user lacks comes from the shipped ones when
// the add-in first reads it. The folder goes with this object.
#pragma once

#include <string>

namespace nivarel::cli {

class SettingsCopy {
 public:
  // prefix names the folder under the temporary folder ("nivarel-draw");
  // shipped is the folder of the shipped files; config and symbols, when not
  // empty, are the files to copy instead of the user's.
  SettingsCopy(const std::string& prefix, const std::string& shipped, const std::string& config = "",
               const std::string& symbols = "");
  ~SettingsCopy();
  SettingsCopy(const SettingsCopy&) = delete;
  SettingsCopy& operator=(const SettingsCopy&) = delete;

 private:
  std::string home_;
};

}  // namespace nivarel::cli
