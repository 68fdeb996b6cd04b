#include "PngFile.h"

#include <png.h>

namespace nivarel::testing {

PngFile::PngFile(const std::string& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path.c_str())) return;
  image.format = PNG_FORMAT_RGBA;
  std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
  if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) {
    png_image_free(&image);
    return;
  }
  width_ = static_cast<int>(image.width);
  height_ = static_cast<int>(image.height);
  rgba_ = std::move(pixels);
}

PngFile::Rgb PngFile::At(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return {};
  const uint8_t* p = &rgba_[(static_cast<size_t>(y) * width_ + x) * 4];
  auto over = [&](int c) { return (c * p[3] + 255 * (255 - p[3])) / 255; };
  return {over(p[0]), over(p[1]), over(p[2])};
}

int PngFile::Alpha(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
  return rgba_[(static_cast<size_t>(y) * width_ + x) * 4 + 3];
}

bool PngFile::Inked(int x, int y) const {
  Rgb c = At(x, y);
  return c.r < 240 || c.g < 240 || c.b < 240;
}

}  // namespace nivarel::testing
