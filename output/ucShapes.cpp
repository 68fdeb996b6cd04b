#include "ucShapes.h"

#include <cstdio>
#include <filesystem>

#include "MErrorHandler.h"
#include "MSpecialFolders.h"

namespace nivarel::output {

ucShapes::ucShapes(std::string folder)
    : folder_(folder.empty() ? host::GetInstallFolder() + "/pictures" : std::move(folder)) {}

std::string ucShapes::FileName(int index, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "shapes/%03d%s.png", index, doubleSize ? "@2x" : "");
  return name;
}

std::string ucShapes::Existing(const std::string& path) const {
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec)) return path;
  if (!logged_) {
    logged_ = true;
    host::LogEvent("ucShapes", "ShapeImage", "Picture not found: " + path);
  }
  return "";
}

std::string ucShapes::ShapeImage(int& index) const {
  if (index < kFirst || index > kLast) index = kFallback;
  return Existing(folder_ + "/" + FileName(index));
}

std::vector<std::string> ucShapes::ShapeImageList() const {
  std::vector<std::string> out;
  for (int i = kFirst; i <= kLast; ++i) out.push_back(Existing(folder_ + "/" + FileName(i)));
  return out;
}

}  // namespace nivarel::output
