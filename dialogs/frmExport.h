// The Export as Picture dialog: the user chooses the flowchart's shapes alone
// or a range of cells with the shapes over it, sees a preview of the picture
// the controller holds, and picks the file in the office's save dialog. After
// Display, IsSaveOperation says whether to save, and ImageFileName,
// ImageFileFormat and ImageFlags say how.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CImageExportController.h"

namespace nivarel::dialogs {

class frmExport {
 public:
  // Shows the dialog over the controller's sheet with rangeAddress in the
  // cells box, and waits until it closes.
  void Display(output::CImageExportController& controller, const std::string& rangeAddress,
               const std::string& caption);
  bool IsSaveOperation() const { return isSaveOperation_; }
  const std::string& ImageFileName() const { return imageFileName_; }
  int ImageFileFormat() const { return imageFileFormat_; }
  int ImageFlags() const { return imageFlags_; }

  // The save dialog's filters in their order: caption and pattern.
  static const std::vector<std::pair<std::string, std::string>>& SaveFilters();
  // What the save dialog's answer comes to: the filter's extension is added
  // to the trimmed name unless it ends in it already (case counts), and then
  // every ".." becomes "."; an unknown filter writes a PNG under the name given.
  struct SaveTarget {
    std::string fileName;
    int format = 13;
    int flags = 0;
  };
  static SaveTarget TargetOf(const std::string& fileName, int filterIndex);

  // The preview's frame and the longest side a preview is shown at, in pixels.
  static constexpr int kFrameSize = 240, kLongestSide = 236;

 private:
  // The office's save dialog: "Save Picture", the six filters with PNG
  // chosen, in the flowcharts folder at the controller's ImageName; a
  // cancel means no save.
  void SetPropertiesFromSaveDialog(const output::CImageExportController& controller);

  bool isSaveOperation_ = false;
  std::string imageFileName_;
  int imageFileFormat_ = 13;
  int imageFlags_ = 0;
};

}  // namespace nivarel::dialogs
