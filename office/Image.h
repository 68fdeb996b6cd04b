// A picture held by the office's graphic engine for export: a capture of a
// sheet's shapes or of a block of cells with the shapes over it, drawn at a
// chosen resolution on white, and what is made of it: a working copy, a
// thumbnail, a file in one of the picture formats. A capture also keeps its
// drawing as vectors, for the .svg and .pdf files that only the command line
// writes. Nothing here touches the system clipboard or changes the document.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Range.h"
#include "ShapeRange.h"

namespace nivarel::office {

struct HostSession;
struct ImageImpl;

class Image {
 public:
  explicit Image(std::shared_ptr<ImageImpl> impl) : impl_(std::move(impl)) {}

  // The screen's resolution: 96 pixels per inch.
  static constexpr double kScreenPixelsPerPoint = 96.0 / 72.0;

  // The shapes as they stand (outlines, arrowheads and shadows included), as
  // one picture, at pixelsPerPoint. The view's selection is put back after.
  static Image OfShapes(const ShapeRange& shapes, double pixelsPerPoint = kScreenPixelsPerPoint);
  // The cells of range as the sheet shows them, with the shapes over them.
  static Image OfRange(const Range& range, double pixelsPerPoint = kScreenPixelsPerPoint);
  // The picture in a file; nothing when it holds no picture the office reads.
  static std::optional<Image> Load(const std::shared_ptr<HostSession>& session, const std::string& path);

  int Width() const;   // pixels
  int Height() const;  // pixels
  int BitsPerPixel() const;
  // A copy without transparency, drawn on white, that every format writes.
  Image Converted() const;
  // A copy scaled so that its longer side is longestSide pixels.
  Image Thumbnail(int longestSide) const;
  // A white picture of width x height pixels with this one drawn on it into
  // the box at (left, top) of boxWidth x boxHeight pixels.
  Image Placed(int width, int height, int left, int top, int boxWidth, int boxHeight) const;

  // Picture format codes and their flags.
  enum Format { kBmp = 0, kJpeg = 2, kPng = 13, kTiff = 18, kGif = 25, kEmf = 99 };
  static constexpr int kJpegQuality95 = 95;  // a JPEG's flags are its quality
  static constexpr int kTiffLzw = 16384;     // LZW compression (the office's TIFF writer's own)
  // Writes the file in that format, replacing one of the same name. Throws
  // HostError naming the cause for an unknown format or a file that cannot be
  // written.
  void Save(const std::string& path, int format, int flags = 0) const;
  // Writes the capture's drawing as vectors: an SVG picture (".svg") or a PDF
  // page of the picture's size (".pdf"). Throws HostError for a picture read
  // from a file, which has no drawing, or another file type.
  void SaveDrawing(const std::string& path) const;

  const std::shared_ptr<ImageImpl>& Impl() const { return impl_; }

 private:
  std::shared_ptr<ImageImpl> impl_;
};

}  // namespace nivarel::office
