#include "ucShapes.h"

#include <cstdio>

namespace nivarel::output {

ucShapes::ucShapes(std::string folder) : pictures_(std::move(folder), "ucShapes") {}

std::string ucShapes::FileName(int index, bool doubleSize) {
  char name[32];
  std::snprintf(name, sizeof name, "shapes/%03d%s.png", index, doubleSize ? "@2x" : "");
  return name;
}

std::string ucShapes::ShapeImage(int& index) const {
  if (index < kFirst || index > kLast) index = kFallback;
  return pictures_.Path(FileName(index));
}

std::vector<std::string> ucShapes::ShapeImageList() const {
  return pictures_.List(kFirst, kLast, FileName);
}

}  // namespace nivarel::output
