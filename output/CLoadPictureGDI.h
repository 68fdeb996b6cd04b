// Loads a picture file (PNG, JPEG, SVG, BMP...) through the office's graphic
// engine for picture shapes and image controls. A file that is missing or
// unreadable, or no office to read it, gives nothing; nothing is logged.
#pragma once

#include <optional>
#include <string>

#include "Picture.h"

namespace nivarel::output {

class CLoadPictureGDI {
 public:
  std::optional<office::Picture> LoadPictureGDI(const std::string& path) const;
};

}  // namespace nivarel::output
