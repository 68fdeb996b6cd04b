#include "PictureFolder.h"

#include <filesystem>

#include "MErrorHandler.h"
#include "MSpecialFolders.h"

namespace nivarel::output {

PictureFolder::PictureFolder(std::string folder, std::string store)
    : folder_(folder.empty() ? host::GetInstallFolder() + "/pictures" : std::move(folder)), store_(std::move(store)) {}

std::string PictureFolder::Path(const std::string& fileName) const {
  std::string path = folder_ + "/" + fileName;
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec)) return path;
  if (!logged_) {
    logged_ = true;
    host::LogEvent(store_, "Picture", "Picture not found: " + path);
  }
  return "";
}

std::vector<std::string> PictureFolder::List(int first, int last,
                                             const std::function<std::string(int, bool)>& fileName) const {
  std::vector<std::string> out;
  for (int i = first; i <= last; ++i) out.push_back(Path(fileName(i, false)));
  return out;
}

}  // namespace nivarel::output
