#include "PictureChoices.h"

#include "AutoShapeTypes.h"
#include "MGlobalVariables.h"

namespace nivarel::dialogs {

std::vector<std::pair<std::string, std::string>> SymbolChoices(const output::ucShapes& pictures) {
  std::vector<std::pair<std::string, std::string>> out;
  for (auto [first, last] : {std::pair{61, 88}, {33, 60}, {89, 123}, {1, 32}})
    for (int type = first; type <= last; ++type) {
      int index = type;
      out.emplace_back(std::to_string(type - 1), pictures.ShapeImage(index));
    }
  return out;
}

std::vector<std::pair<std::string, std::string>> StyleChoices(const output::ucImages& pictures) {
  std::vector<std::pair<std::string, std::string>> out;
  for (int style = 1; style <= output::ucImages::kLastStyle; ++style) {
    // Below version 12 the themed styles 36 to 42 do not exist.
    if (host::ExcelVersion < 12 && style >= 36 && style <= 42) continue;
    int index = style;
    out.emplace_back(std::to_string(style + kStyleValueOffset), pictures.StyleImage(index));
  }
  return out;
}

std::string SymbolName(const rules::CSymbolData& symbols, int type) {
  std::string name = symbols.GetDisplayName(static_cast<int16_t>(type));
  if (!name.empty()) return name;
  const office::AutoShapeTypeInfo* info = office::FindAutoShapeType(type);
  return info ? info->name : "";
}

}  // namespace nivarel::dialogs
