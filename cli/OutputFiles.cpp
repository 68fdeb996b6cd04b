#include "OutputFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "Text.h"

namespace nivarel::cli {

std::string FileType(const std::string& path) {
  return rules::LowerCase(std::filesystem::path(path).extension().string());
}

std::string InputProblem(const std::string& path, const std::vector<std::string>& types) {
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) return "no such file";
  if (std::filesystem::is_directory(path, ec)) return "it is a folder";
  if (!std::ifstream(path, std::ios::binary)) return std::strerror(errno);
  if (std::find(types.begin(), types.end(), FileType(path)) != types.end()) return {};
  // "not a .ods, .xlsx or .csv file"
  std::string names;
  for (size_t i = 0; i < types.size(); ++i)
    names += (i == 0 ? "" : i + 1 == types.size() ? " or " : ", ") + types[i];
  return "not a " + names + " file";
}

bool CheckOutputTypes(const std::vector<std::string>& outputs, const std::string& picture, std::ostream& err) {
  for (const std::string& output : outputs) {
    std::string type = FileType(output);
    if (type != ".ods" && type != ".xlsx") {
      err << "nivarel: unknown output type '" << type << "' (use .ods or .xlsx)\n";
      return false;
    }
  }
  if (!picture.empty() && FileType(picture) != ".png") {
    err << "nivarel: the picture must be a .png file\n";
    return false;
  }
  return true;
}

}  // namespace nivarel::cli
