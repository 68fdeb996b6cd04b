// Saves a picture of the active sheet's flowchart: works out the block of
// cells and shapes there is to capture, captures either every shape or a
// range (cells with the shapes over them) with the gridlines hidden, holds
// that one picture, makes the dialog's preview of it and writes it to a file
// in one of six formats. Reports through booleans and ErrorMessage; never
// throws and never shows a message itself.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Image.h"
#include "Worksheet.h"

namespace nivarel::output {

class CImageExportController {
 public:
  // Takes the active sheet; IsSheetValid is false when there is none.
  CImageExportController();
  // Removes the preview's thumbnail file.
  ~CImageExportController();
  CImageExportController(const CImageExportController&) = delete;
  CImageExportController& operator=(const CImageExportController&) = delete;

  // The block of the sheet's content and shapes, widened by a row and a
  // column on every side that has one; "" for a sheet with neither.
  std::string GetWorksheetRange();
  // Writes the held picture to path in that format (format codes and flags
  // of office::Image). Every format but a bitmap goes through a bitmap file
  // "NVP..." in the temporary folder, which stays there.
  bool SaveFlowchartAsPicture(const std::string& path, int format, int flags);
  // Captures every shape of the sheet as one picture; false without shapes.
  bool CaptureShapesImage();
  // Captures the cells at address ("B2:H40") with the shapes over them.
  bool CaptureRangeImage(const std::string& address);
  int ImageHeight() const;  // pixels; 0 with no picture held
  int ImageWidth() const;
  // The default file name: the sheet's name without '"', '<', '>' and '|',
  // trimmed, and " flowchart".
  std::string ImageName() const;

  // Where the preview stands in its square frame of frameSize pixels, and a
  // PNG file of the whole frame with the preview drawn there on white.
  struct Preview {
    int left = 0, top = 0, width = 0, height = 0;
    std::string picture;
  };
  // The held picture at its own size when it fits the frame, else scaled so
  // that its longer side is longestSide, centred in the frame; the thumbnail
  // is made with a side of longestSide less 4.
  bool SetPictureImage(Preview& preview, int longestSide, int frameSize);

  std::string SheetType() const { return sheetType_; }
  int ShapeCount() const;
  bool IsSheetValid() const { return isSheetValid_; }
  const std::string& ErrorMessage() const { return errorMessage_; }

  // Captures are taken at the screen's resolution times this (1 at first):
  // 2 gives twice the pixels each way.
  void SetScale(double scale) { scale_ = scale; }
  // The held picture, for the vector files of the command line.
  const std::optional<office::Image>& CurrentImage() const { return image_; }

 private:
  void InitializeWorksheet();
  std::string GetSheetContentRange();
  std::string GetPaddedContentRange(const std::string& address);
  std::string GetAllShapesRangeAddress();
  // Takes a picture with the window's gridlines hidden, and shows them again.
  bool Capture(const std::function<office::Image()>& take);

  std::optional<office::Worksheet> worksheet_;
  std::optional<office::Image> image_;  // exactly one capture at a time
  std::string sheetType_;
  bool isSheetValid_ = false;
  std::string errorMessage_;
  double scale_ = 1;
  std::string previewFile_;
};

}  // namespace nivarel::output
