#include "MSpecialFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"

namespace fs = std::filesystem;

namespace nivarel::host {

namespace {

constexpr char kSource[] = "MSpecialFolders";

std::mutex installMutex;
std::string installFolder;

std::string Env(const char* name) {
  const char* v = std::getenv(name);
  return v ? std::string(v) : std::string();
}

std::string Home() {
  std::string home = Env("HOME");
  if (!home.empty()) return home;
  if (const passwd* pw = getpwuid(getuid())) return pw->pw_dir ? pw->pw_dir : "";
  return std::string();
}

std::string StripSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

bool IsDir(const std::string& path) {
  std::error_code ec;
  return fs::is_directory(path, ec);
}

// Makes the folder (and its parents); true when it is there afterwards.
bool EnsureDir(const std::string& path) {
  std::error_code ec;
  fs::create_directories(path, ec);
  return IsDir(path);
}

bool IsFile(const std::string& path) {
  std::error_code ec;
  return fs::is_regular_file(path, ec);
}

// The XDG_DOCUMENTS_DIR entry of user-dirs.dirs, with $HOME expanded.
std::string XdgDocumentsDir(const std::string& configHome, const std::string& home) {
  std::ifstream in(configHome + "/user-dirs.dirs");
  std::string line;
  while (std::getline(in, line)) {
    if (line.rfind("XDG_DOCUMENTS_DIR=", 0) != 0) continue;
    std::string v = line.substr(18);
    if (v.size() >= 2 && v.front() == '"' && v.back() == '"') v = v.substr(1, v.size() - 2);
    if (v.rfind("$HOME", 0) == 0) v = home + v.substr(5);
    if (v.empty() || v.front() != '/') return std::string();
    // A documents folder equal to home means the user turned it off.
    if (StripSlash(v) == StripSlash(home)) return std::string();
    return StripSlash(v);
  }
  return std::string();
}

std::string ConfigHome() {
  std::string xdg = Env("XDG_CONFIG_HOME");
  if (!xdg.empty() && xdg.front() == '/') return StripSlash(xdg);
  std::string home = Home();
  return home.empty() ? std::string() : home + "/.config";
}

// The user's copy of a settings file, copied from the install folder when
// missing.
std::string SettingsFilePath(const std::string& fileName, const std::string& missingText, bool& existed) {
  existed = false;
  try {
    std::string folder = NivarelFolder(GetAppDataPath());
    std::string path = folder + "/" + fileName;
    if (IsFile(path)) {
      existed = true;
      return path;
    }
    std::string source = GetInstallFolder() + "/" + fileName;
    if (!IsFile(source)) {
      MsgBox(missingText + "\r\nPlease re-install the software or contact " + kSupportAddress + " for assistance.",
             office::vbCritical, "Cannot Locate Critical File");
      return std::string();
    }
    std::error_code ec;
    fs::copy_file(source, path, fs::copy_options::overwrite_existing, ec);
    if (!IsFile(path)) {
      if (GetOSMajorVersion() >= 6) {
        MsgBox("Nivarel cannot access the file. It does not have read/write permissions to " + path +
                   "\r\nPlease contact " + kSupportAddress + " for assistance.",
               office::vbCritical, "Cannot Create Critical File");
        return std::string();
      }
      return source;
    }
    return path;
  } catch (...) {
    ErrorHandler(kSource, fileName == "symbols.ini" ? "GetIniFilePath" : "GetCfgFilePath", false);
    return std::string();
  }
}

}  // namespace

std::string GetInstallFolder() {
  std::lock_guard<std::mutex> lock(installMutex);
  return installFolder;
}

void SetInstallFolder(const std::string& folder) {
  std::lock_guard<std::mutex> lock(installMutex);
  installFolder = StripSlash(folder);
}

std::string NivarelFolder(const std::string& base) {
  std::string tamrisk = StripSlash(base) + "/Tamrisk";
  EnsureDir(tamrisk);
  std::string nivarel = tamrisk + "/Nivarel";
  EnsureDir(nivarel);
  return nivarel;
}

std::string GetAppDataPath() {
  std::string config = ConfigHome();
  if (!config.empty() && EnsureDir(config)) return config;
  return GetMyDocumentsPath();
}

std::string GetCommonDocsPath() { return GetMyDocumentsPath(); }

std::string GetMyDocumentsPath() {
  std::string home = Home();
  if (home.empty()) return "/tmp";
  std::string config = ConfigHome();
  std::string docs = config.empty() ? std::string() : XdgDocumentsDir(config, home);
  return docs.empty() ? StripSlash(home) + "/Documents" : docs;
}

std::string GetFlowchartsPath() {
  std::string path = GetMyDocumentsPath() + "/My Flowcharts/";
  EnsureDir(path);
  return path;
}

std::string GetTemplatesPath() {
  // The stored template folder is read with the settings; none is stored
  // until the settings are there.
  return std::string();
}

std::string GetIniFilePath() {
  bool existed = false;
  return SettingsFilePath("symbols.ini", "The original Nivarel symbols file cannot be found.", existed);
}

std::string GetCfgFilePath(bool& existed) {
  return SettingsFilePath("nivarel.cfg", "The original Nivarel configuration file cannot be found.", existed);
}

void OpenWalkthrough() {
  try {
    std::string name = ExcelVersion < 12 ? "Nivarel Walkthrough.xls" : "Nivarel Walkthrough.xlsx";
    // The name is joined to the folder without a separator, so the file lies
    // beside the documents folder; kept so that earlier copies are found.
    std::string target = GetCommonDocsPath() + name;
    if (!IsFile(target)) fs::copy_file(GetInstallFolder() + "/" + name, target);
    if (ExcelApp) ExcelApp->GetWorkbooks().Open(target);
  } catch (...) {
    ErrorHandler(kSource, "OpenWalkthrough", false);
  }
}

std::string CreateTempFile(std::string& prefix) {
  try {
    std::string dir = Env("TMPDIR");
    if (dir.empty() || !IsDir(dir)) dir = "/tmp";
    std::string pattern = StripSlash(dir) + "/" + prefix.substr(0, 3) + "XXXXXX.tmp";
    std::string buffer = pattern;
    int fd = mkstemps(buffer.data(), 4);
    if (fd < 0) return std::string();
    close(fd);
    return buffer;
  } catch (...) {
    ErrorHandler(kSource, "CreateTempFile", false);
    return std::string();
  }
}

std::string BrowseForFolder() {
  try {
    if (!ExcelApp) return std::string();
    return ExcelApp->BrowseForFolder("Please choose a folder.");
  } catch (...) {
    ErrorHandler(kSource, "BrowseForFolder", false);
    return std::string();
  }
}

}  // namespace nivarel::host
