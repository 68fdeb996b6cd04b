// The printed page of a sheet: paper, orientation and margins in points.
#pragma once

#include <memory>

namespace nivarel::office {

struct SheetRef;

class PageSetup {
 public:
  static constexpr int kPortrait = 1, kLandscape = 2;
  static constexpr int kPaperLetter = 1, kPaper11x17 = 17, kPaperA3 = 8, kPaperA4 = 9;
  explicit PageSetup(std::shared_ptr<SheetRef> sheet) : sheet_(std::move(sheet)) {}

  // One of the kPaper values; 0 for a size without a code. Setting an
  // unknown code raises HostError.
  int PaperSize() const;
  void SetPaperSize(int code);
  int Orientation() const;
  void SetOrientation(int orientation);
  double LeftMargin() const;
  void SetLeftMargin(double points);
  double RightMargin() const;
  void SetRightMargin(double points);
  double TopMargin() const;
  void SetTopMargin(double points);
  double BottomMargin() const;
  void SetBottomMargin(double points);

 private:
  std::shared_ptr<SheetRef> sheet_;
};

}  // namespace nivarel::office
