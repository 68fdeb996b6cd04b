// A picture read by the office's own graphic engine (PNG, JPEG, SVG, BMP...):
// what picture shapes and the dialogs' image controls take.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace nivarel::office {

struct HostSession;
struct PictureImpl;

class Picture {
 public:
  explicit Picture(std::shared_ptr<PictureImpl> impl) : impl_(std::move(impl)) {}

  // The picture in the file at path, or nothing when the file is missing or
  // holds nothing the office can read.
  static std::optional<Picture> Load(const std::shared_ptr<HostSession>& session, const std::string& path);

  // Its size in pixels.
  int PixelWidth() const;
  int PixelHeight() const;

  const std::shared_ptr<PictureImpl>& Impl() const { return impl_; }

 private:
  std::shared_ptr<PictureImpl> impl_;
};

}  // namespace nivarel::office
