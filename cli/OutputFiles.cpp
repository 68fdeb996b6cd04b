#include "OutputFiles.h"

#include <filesystem>

#include "Text.h"

namespace nivarel::cli {

std::string FileType(const std::string& path) {
  return rules::LowerCase(std::filesystem::path(path).extension().string());
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
