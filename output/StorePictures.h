// Draws the pictures of the image stores (ucShapes, ucImages) with the same
// host layer and formatters the tools use: every shape type 1 to 124 as a
// symbol of the Process style, every style 1 to 84 on a process symbol with
// a short text, every flow line style 1 to 21 as an arrowed line between two
// small symbols, the flow line tools' symbol with an arrow out of and
// into each side, the branch tool's layouts and the template generator's
// page layouts. Each is written as a PNG of its store's size and of twice
// that ("@2x") under folder; a contact sheet of all of them, with their
// numbers, goes to sheetPath when it is given. Returns the number of PNGs
// written (the contact sheet not counted).
#pragma once

#include <string>

#include "Application.h"

namespace nivarel::output {

int DrawStorePictures(office::Application& app, const std::string& folder, const std::string& sheetPath = "");

}  // namespace nivarel::output
