// A PNG file read back for tests that look at what was drawn.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nivarel::testing {

class PngFile {
 public:
  // Reads the PNG at path; an unreadable file gives an empty picture.
  explicit PngFile(const std::string& path);

  int Width() const { return width_; }
  int Height() const { return height_; }
  struct Rgb {
    int r = 255, g = 255, b = 255;
  };
  // The pixel at (x, y) over white; white outside the picture.
  Rgb At(int x, int y) const;
  // The pixel's opacity, 0 (transparent) to 255; 0 outside the picture.
  int Alpha(int x, int y) const;
  // Anything visibly drawn, antialiased edges included: some channel
  // clearly below white.
  bool Inked(int x, int y) const;

 private:
  int width_ = 0, height_ = 0;
  std::vector<uint8_t> rgba_;
};

}  // namespace nivarel::testing
