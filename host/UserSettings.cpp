#include "UserSettings.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <vector>

#include "HostError.h"
#include "MErrorHandler.h"
#include "MSpecialFolders.h"
#include "Text.h"

namespace nivarel::host {

using namespace office;

namespace {

// The file holds sections "[application\section]" with "key=value" lines.
struct Entry {
  std::string group;
  std::string key;
  std::string value;
};

std::vector<Entry> Load(const std::string& path) {
  std::vector<Entry> entries;
  std::ifstream in(path, std::ios::binary);
  std::string line, group;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
      group = line.substr(1, line.size() - 2);
      continue;
    }
    size_t eq = line.find('=');
    if (eq == std::string::npos || group.empty()) continue;
    entries.push_back({group, line.substr(0, eq), line.substr(eq + 1)});
  }
  return entries;
}

// Values are one line: line breaks are kept escaped.
std::string Escape(const std::string& v) {
  std::string out;
  for (char c : v) {
    if (c == '\\') out += "\\\\";
    else if (c == '\n') out += "\\n";
    else if (c == '\r') out += "\\r";
    else out += c;
  }
  return out;
}

std::string Unescape(const std::string& v) {
  std::string out;
  for (size_t i = 0; i < v.size(); ++i) {
    if (v[i] != '\\' || i + 1 == v.size()) {
      out += v[i];
      continue;
    }
    char n = v[++i];
    out += n == 'n' ? '\n' : n == 'r' ? '\r' : n;
  }
  return out;
}

}  // namespace

std::string UserSettingsPath() {
  std::string tamrisk = NivarelFolder(GetAppDataPath());
  tamrisk = tamrisk.substr(0, tamrisk.rfind('/'));
  return tamrisk + "/user-settings.ini";
}

std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback) {
  try {
    std::string group = rules::LowerCase(application + "\\" + section);
    for (const auto& e : Load(UserSettingsPath()))
      if (rules::LowerCase(e.group) == group && rules::LowerCase(e.key) == rules::LowerCase(key)) return Unescape(e.value);
  } catch (...) {
  }
  return fallback;
}

void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value) {
  try {
    std::string path = UserSettingsPath();
    auto entries = Load(path);
    std::string group = application + "\\" + section;
    bool found = false;
    for (auto& e : entries)
      if (rules::LowerCase(e.group) == rules::LowerCase(group) && rules::LowerCase(e.key) == rules::LowerCase(key)) {
        e.value = Escape(value);
        found = true;
      }
    if (!found) entries.push_back({group, key, Escape(value)});

    std::ostringstream text;
    std::vector<std::string> written;
    for (const auto& e : entries) {
      bool done = false;
      for (const auto& w : written) done = done || rules::LowerCase(w) == rules::LowerCase(e.group);
      if (done) continue;
      written.push_back(e.group);
      text << "[" << e.group << "]\n";
      for (const auto& f : entries)
        if (rules::LowerCase(f.group) == rules::LowerCase(e.group)) text << f.key << "=" << f.value << "\n";
    }

    // Written beside the store, flushed to disk, then renamed over it.
    std::string temp = path + ".new";
    int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (fd < 0) throw HostError(75, "Path/File access error: " + temp);
    std::string data = text.str();
    bool ok = ::write(fd, data.data(), data.size()) == static_cast<ssize_t>(data.size()) && ::fsync(fd) == 0;
    ::close(fd);
    if (!ok || std::rename(temp.c_str(), path.c_str()) != 0) {
      std::remove(temp.c_str());
      throw HostError(75, "Path/File access error: " + path);
    }
  } catch (...) {
    ErrorHandler("UserSettings", "SaveSetting", false);
  }
}

}  // namespace nivarel::host
