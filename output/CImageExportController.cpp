#include "CImageExportController.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>

#include <unistd.h>

#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "Range.h"
#include "Shape.h"
#include "Shapes.h"
#include "Window.h"
#include "Workbook.h"

namespace nivarel::output {

namespace {

constexpr char kSource[] = "ImageExportController";

// The block from (row, column) to (lastRow, lastColumn) of both addresses.
struct Block {
  int row, column, lastRow, lastColumn;
};

Block BlockOf(const office::Range& r) { return {r.Row(), r.Column(), r.LastRow(), r.LastColumn()}; }

Block Spanning(const Block& a, const Block& b) {
  return {std::min(a.row, b.row), std::min(a.column, b.column), std::max(a.lastRow, b.lastRow),
          std::max(a.lastColumn, b.lastColumn)};
}

std::string AddressOf(const office::Worksheet& ws, const Block& b) {
  return office::Range(ws.Ref(), b.row, b.column, b.lastRow, b.lastColumn).AddressLocal(false);
}

// Halves go to the even neighbour.
int Rounded(double value) { return static_cast<int>(std::nearbyint(value)); }

}  // namespace

CImageExportController::CImageExportController() { InitializeWorksheet(); }

CImageExportController::~CImageExportController() {
  std::error_code ec;
  if (!previewFile_.empty()) std::filesystem::remove(previewFile_, ec);
}

void CImageExportController::InitializeWorksheet() {
  try {
    std::optional<office::Worksheet> sheet = host::ExcelApp ? host::ExcelApp->ActiveSheet() : std::nullopt;
    if (!sheet) {
      isSheetValid_ = false;
      errorMessage_ = "Nivarel can only export Charts embedded in worksheets";
      return;
    }
    sheetType_ = sheet->TypeName();
    worksheet_ = sheet;
    isSheetValid_ = true;
  } catch (...) {
    host::ErrorHandler(kSource, "InitializeWorksheet", false);
  }
}

std::string CImageExportController::GetWorksheetRange() {
  try {
    std::string content = GetSheetContentRange();
    return content.empty() ? content : GetPaddedContentRange(content);
  } catch (...) {
    host::ErrorHandler(kSource, "GetWorksheetRange", false);
    return "";
  }
}

std::string CImageExportController::GetSheetContentRange() {
  if (!worksheet_) return "";
  std::string cells = host::GetOccupiedRangeAddress(*worksheet_);
  std::string shapes = GetAllShapesRangeAddress();
  if (!cells.empty() && !shapes.empty())
    return AddressOf(*worksheet_, Spanning(BlockOf(worksheet_->GetRange(cells)), BlockOf(worksheet_->GetRange(shapes))));
  return cells.empty() ? shapes : cells;
}

std::string CImageExportController::GetPaddedContentRange(const std::string& address) {
  office::Range r = worksheet_->GetRange(address);
  // One more row below and column to the right; one above and to the left
  // where the sheet has them.
  Block b{r.Row(), r.Column(), r.Row() + r.RowCount(), r.Column() + r.ColumnCount()};
  if (r.Row() > 1) b.row -= 1;
  if (r.Column() > 1) b.column -= 1;
  return AddressOf(*worksheet_, b);
}

std::string CImageExportController::GetAllShapesRangeAddress() {
  // Every shape counts here, template frames and the key included.
  office::Shapes shapes = worksheet_->GetShapes();
  int count = shapes.Count();
  if (count == 0) return "";
  std::optional<Block> block;
  for (int i = 1; i <= count; ++i) {
    office::Shape shape = shapes.Item(i);
    Block own = Spanning(BlockOf(shape.TopLeftCell()), BlockOf(shape.BottomRightCell()));
    block = block ? Spanning(*block, own) : own;
  }
  return AddressOf(*worksheet_, *block);
}

bool CImageExportController::Capture(const std::function<office::Image()>& take) {
  office::Window window(worksheet_->Parent().Impl());
  bool gridlines = window.DisplayGridlines();
  window.SetDisplayGridlines(false);
  image_.reset();  // one picture at a time
  bool taken = false;
  try {
    image_ = take();
    taken = true;
  } catch (...) {
    errorMessage_ += host::CurrentError().Description;
  }
  try {
    window.SetDisplayGridlines(gridlines);
  } catch (...) {
    // The picture is what counts from here on.
  }
  return taken;
}

bool CImageExportController::CaptureShapesImage() {
  try {
    errorMessage_.clear();
    if (!worksheet_ || worksheet_->TypeName() != "Worksheet") {
      errorMessage_ =
          "The current sheet is not a Worksheet, so a picture of it cannot\r\n"
          "be created. Please select a Worksheet when using this function.";
      return false;
    }
    office::Shapes shapes = worksheet_->GetShapes();
    int count = shapes.Count();
    if (count == 0) return false;
    // All the shapes are taken as one picture as they stand: nothing is
    // grouped, so the document stays as it was.
    std::vector<office::Shape> targets;
    for (int i = 1; i <= count; ++i) targets.push_back(shapes.Item(i));
    office::ShapeRange target(worksheet_->Ref(), targets);
    errorMessage_ = "Error loading the image from Calc.\r\n";
    double ppp = office::Image::kScreenPixelsPerPoint * scale_;
    if (!Capture([&] { return office::Image::OfShapes(target, ppp); })) return false;
    errorMessage_.clear();
    return true;
  } catch (...) {
    errorMessage_ = host::CurrentError().Description;
    return host::ErrorHandler(kSource, "CaptureShapesImage", false);
  }
}

bool CImageExportController::CaptureRangeImage(const std::string& address) {
  if (!isSheetValid_) return false;
  try {
    errorMessage_.clear();
    std::optional<office::Range> range;
    try {
      range = worksheet_->GetRange(address);
    } catch (...) {
      range.reset();
    }
    if (!range) {
      errorMessage_ = "The range entered is invalid.\r\nPlease enter a valid worksheet range and try again.";
      return false;
    }
    double ppp = office::Image::kScreenPixelsPerPoint * scale_;
    if (!Capture([&] { return office::Image::OfRange(*range, ppp); })) {
      errorMessage_ = "There was an error loading the image from Calc.";
      return false;
    }
    return true;
  } catch (...) {
    errorMessage_ = host::CurrentError().Description;
    return host::ErrorHandler(kSource, "CaptureRangeImage", false);
  }
}

int CImageExportController::ImageHeight() const { return image_ ? image_->Height() : 0; }
int CImageExportController::ImageWidth() const { return image_ ? image_->Width() : 0; }

std::string CImageExportController::ImageName() const {
  try {
    return host::ChartFileName(worksheet_ ? worksheet_->Name() : "");
  } catch (...) {
    host::ErrorHandler(kSource, "ImageName", false);
    return " flowchart";
  }
}

bool CImageExportController::SetPictureImage(Preview& preview, int longestSide, int frameSize) {
  try {
    errorMessage_.clear();
    if (!image_) return false;
    int width = image_->Width(), height = image_->Height();
    if (width <= frameSize && height <= frameSize) {
      preview.width = width;
      preview.height = height;
    } else if (width < height) {
      preview.height = longestSide;
      preview.width = Rounded(static_cast<double>(width) * longestSide / height);
    } else {
      preview.width = longestSide;
      preview.height = Rounded(static_cast<double>(height) * longestSide / width);
    }
    preview.left = Rounded(frameSize / 2.0 - preview.width / 2.0);
    preview.top = Rounded(frameSize / 2.0 - preview.height / 2.0);
    try {
      office::Image thumbnail = image_->Thumbnail(longestSide - 4);
      if (previewFile_.empty())
        previewFile_ = (std::filesystem::temp_directory_path() /
                        ("nivarel-preview-" + std::to_string(getpid()) + ".png")).string();
      // The frame as the dialog shows it: the thumbnail in its box, on white.
      thumbnail.Placed(frameSize, frameSize, preview.left, preview.top, preview.width, preview.height)
          .Save(previewFile_, office::Image::kPng);
      preview.picture = previewFile_;
    } catch (...) {
      errorMessage_ = "An error occured while trying to resize the image:" + host::CurrentError().Description;
      return false;
    }
    return true;
  } catch (...) {
    errorMessage_ = host::CurrentError().Description;
    return host::ErrorHandler(kSource, "SetPictureImage", false);
  }
}

bool CImageExportController::SaveFlowchartAsPicture(const std::string& path, int format, int flags) {
  int line = 40;
  try {
    errorMessage_.clear();
    if (!image_) throw office::HostError(office::HostError::kOfficeFailure, "There is no picture to save.");
    line = 50;
    office::Image working = *image_;
    if (working.BitsPerPixel() == 32) {
      line = 60;
      working = working.Converted();
    }
    if (format != office::Image::kBmp) {
      line = 70;
      std::string prefix = "NVP";
      std::string temporary = host::CreateTempFile(prefix);
      if (temporary.empty())
        throw office::HostError(office::HostError::kOfficeFailure, "No temporary file could be made.");
      line = 80;
      working.Save(temporary, office::Image::kBmp, 0);
      line = 100;
      std::optional<office::Image> loaded = office::Image::Load(host::ExcelApp->Session(), temporary);
      if (!loaded)
        throw office::HostError(office::HostError::kOfficeFailure, "The bitmap '" + temporary + "' could not be read.");
      working = *loaded;
    }
    line = 110;
    working.Save(path, format, flags);
    return true;
  } catch (...) {
    errorMessage_ = "An error occured while trying to save the image \r\nLine: " + std::to_string(line) + "\r\n" +
                    host::CurrentError().Description;
    return false;
  }
}

int CImageExportController::ShapeCount() const {
  try {
    return worksheet_ ? worksheet_->GetShapes().Count() : 0;
  } catch (...) {
    host::ErrorHandler(kSource, "ShapeCount", false);
    return 0;
  }
}

}  // namespace nivarel::output
