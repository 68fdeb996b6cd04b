// The store of symbol pictures: one picture per shape type 1 to 124, drawn by
// the shape engine at build time and shipped in the extension's "pictures"
// folder. A picture is the file path of a PNG that image controls take; an
// empty path when the file is missing (logged once per store).
#pragma once

#include <string>
#include <vector>

#include "PictureFolder.h"

namespace nivarel::output {

class ucShapes {
 public:
  static constexpr int kWidth = 48, kHeight = 48;  // pixels; "@2x" files are twice that
  static constexpr int kFirst = 1, kLast = 124, kFallback = 61;

  // Pictures under folder; by default the installed extension's.
  explicit ucShapes(std::string folder = "");

  // The picture of shape type index; an index outside 1..124 becomes 61 (a
  // Process), also in the caller's variable.
  std::string ShapeImage(int& index) const;
  // Every picture, index 1 first: what a picture list box takes.
  std::vector<std::string> ShapeImageList() const;

  // The file name of a picture inside the pictures folder, for the drawing step.
  static std::string FileName(int index, bool doubleSize = false);

 private:
  PictureFolder pictures_;
};

}  // namespace nivarel::output
