// The choices of the dialogs' symbol and style drop-downs, each a value with
// its picture, and what the user calls a symbol type.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CSymbolData.h"
#include "ucImages.h"
#include "ucShapes.h"

namespace nivarel::dialogs {

// A style's value in the dialogs' tables: the style plus this.
constexpr int kStyleValueOffset = 123;

// Shape types 61 to 88, then 33 to 60, 89 to 123 and 1 to 32, so that the
// flowchart symbols come first; each value is the type less 1.
std::vector<std::pair<std::string, std::string>> SymbolChoices(const output::ucShapes& pictures);
// Styles 1 to 84 (below version 12, 1 to 35 and 43 to 84), each valued the
// style plus kStyleValueOffset.
std::vector<std::pair<std::string, std::string>> StyleChoices(const output::ucImages& pictures);
// The symbol type's name in the rules, else the shape type's own name.
std::string SymbolName(const rules::CSymbolData& symbols, int type);

}  // namespace nivarel::dialogs
