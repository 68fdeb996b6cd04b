#include "ucImages.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "MErrorHandler.h"
#include "MSpecialFolders.h"

namespace nivarel::output {

ucImages::ucImages(std::string folder)
    : folder_(folder.empty() ? host::GetInstallFolder() + "/pictures" : std::move(folder)), shapes_(folder_) {}

std::string ucImages::StyleFileName(int style, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "styles/%02d%s.png", style, doubleSize ? "@2x" : "");
  return name;
}

std::string ucImages::LineFileName(int style, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "lines/%02d%s.png", style, doubleSize ? "@2x" : "");
  return name;
}

std::string ucImages::Existing(const std::string& path) const {
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec)) return path;
  if (!logged_) {
    logged_ = true;
    host::LogEvent("ucImages", "StyleImage", "Picture not found: " + path);
  }
  return "";
}

std::string ucImages::GridImage(int index) const {
  if (index >= ucShapes::kFirst && index <= ucShapes::kLast) return shapes_.ShapeImage(index);
  int style = index - ucShapes::kLast;
  if (style < 1 || style > kLastStyle) throw std::out_of_range("Invalid picture index " + std::to_string(index));
  return StyleImage(style);
}

std::vector<std::string> ucImages::GridImageList() const {
  std::vector<std::string> out = shapes_.ShapeImageList();
  for (const auto& p : StyleImageList()) out.push_back(p);
  return out;
}

std::string ucImages::StyleImage(int& index) const {
  if (index < 1 || index > kLastStyle) index = kStyleFallback;
  return Existing(folder_ + "/" + StyleFileName(index));
}

std::vector<std::string> ucImages::StyleImageList() const {
  std::vector<std::string> out;
  for (int i = 1; i <= kLastStyle; ++i) out.push_back(Existing(folder_ + "/" + StyleFileName(i)));
  return out;
}

std::string ucImages::FlowlineStyleImage(int& index) const {
  if (index < 1 || index > kLastLineStyle) index = kLineFallback;
  return Existing(folder_ + "/" + LineFileName(index));
}

std::vector<std::string> ucImages::FlowlineStyleImageList() const {
  std::vector<std::string> out;
  for (int i = 1; i <= kLastLineStyle; ++i) out.push_back(Existing(folder_ + "/" + LineFileName(i)));
  return out;
}

}  // namespace nivarel::output
