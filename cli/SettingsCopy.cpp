#include "SettingsCopy.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>

#include "MSpecialFolders.h"

namespace nivarel::cli {

namespace fs = std::filesystem;

SettingsCopy::SettingsCopy(const std::string& prefix, const std::string& shipped, const std::string& config,
                           const std::string& symbols) {
  fs::path user = fs::path(host::GetAppDataPath()) / "Tamrisk" / "Nivarel";
  std::string settings = config.empty() ? (user / "nivarel.cfg").string() : config;
  std::string rules = symbols.empty() ? (user / "symbols.ini").string() : symbols;
  fs::path home = fs::temp_directory_path() / (prefix + "-" + std::to_string(::getpid()));
  fs::create_directories(home);
  home_ = home.string();
  setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
  host::SetInstallFolder(shipped);
  fs::path folder = host::NivarelFolder(home_);
  if (fs::is_regular_file(settings)) fs::copy_file(settings, folder / "nivarel.cfg", fs::copy_options::overwrite_existing);
  if (fs::is_regular_file(rules)) fs::copy_file(rules, folder / "symbols.ini", fs::copy_options::overwrite_existing);
}

SettingsCopy::~SettingsCopy() {
  std::error_code ec;
  fs::remove_all(home_, ec);
}

}  // namespace nivarel::cli
