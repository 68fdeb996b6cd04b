// The advanced settings (" Advanced Settings"): symbol sizing, the text
// rules, the text alignment in symbols, the prefix delimiter, the default
// flow direction and the branch labels' font and colour. It works on a copy:
// InitializeSettings takes the settings, Show lets the user change them, and
// the caller copies the results back when OK is true. It writes no file.
#pragma once

#include <cstdint>
#include <string>

#include "CConfig.h"

namespace nivarel::dialogs {

class frmAdvancedSettings {
 public:
  // The entries of the text alignment list, "Top-Left" to "Bottom-Right";
  // entry i aligns to column i % 3 and row i / 3.
  static constexpr int kAlignments = 9;
  static constexpr int kCenterCenter = 4;

  void InitializeSettings(const rules::CConfig& config);
  void Show();

  // True only when closed with "&OK"; the results change only then.
  bool OK() const { return ok_; }
  bool AutoSizeHeight() const { return autoSizeHeight_; }
  bool QuestionIsDecision() const { return questionIsDecision_; }
  bool BranchesUseDefaultFont() const { return branchesUseDefaultFont_; }
  const std::string& BranchFontName() const { return fontName_; }
  float BranchFontSize() const { return fontSize_; }
  bool BranchFontBold() const { return fontBold_; }
  bool BranchFontItalic() const { return fontItalic_; }
  // The host's RGB value: red in the low byte.
  int32_t BranchFontColor() const { return fontColor_; }
  bool Capitalize() const { return capitalize_; }
  // 0 top to bottom, 1 left to right, 2 detected.
  int16_t FlowDirection() const { return flowDirection_; }
  bool SmartSizing() const { return smartSizing_; }
  // xlLeft, xlCenter or xlRight.
  int32_t HorizontalAlignment() const { return horizontal_; }
  // xlTop, xlCenter or xlBottom.
  int32_t VerticalAlignment() const { return vertical_; }
  // ":", "-" or ".".
  const std::string& PrefixDelimiter() const { return delimiter_; }

  // The list entry of a stored alignment pair; a value that fits no entry
  // counts as center.
  static int AlignmentIndex(int32_t horizontal, int32_t vertical);
  // The alignment pair of a list entry.
  static int32_t HorizontalOf(int index);
  static int32_t VerticalOf(int index);
  // The delimiter list's entry of a stored delimiter: "." the third, "-"
  // the second, any other the first (the colon).
  static int DelimiterIndex(const std::string& delimiter);
  // The delimiter of a list entry: 2 ".", 1 "-", any other ":".
  static std::string DelimiterOf(int index);

 private:
  bool ok_ = false;
  bool autoSizeHeight_ = false, questionIsDecision_ = false, branchesUseDefaultFont_ = false;
  std::string fontName_;
  float fontSize_ = 10;
  bool fontBold_ = false, fontItalic_ = false;
  int32_t fontColor_ = 0;
  bool capitalize_ = false, smartSizing_ = false;
  int16_t flowDirection_ = 0;
  int32_t horizontal_ = 0, vertical_ = 0;
  std::string delimiter_ = ":";
};

}  // namespace nivarel::dialogs
