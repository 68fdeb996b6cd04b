// The line style picker (" Line Styles"): the 21 line styles as one picture
// of 3 rows by 7 columns, a click choosing the style under it, and a preview
// of the choice. The flow line picker is the same form with arrowed lines.
#pragma once

#include <cstdint>
#include <string>

#include "ucImages.h"

namespace nivarel::dialogs {

class frmLineStyles {
 public:
  frmLineStyles() : frmLineStyles("frmLineStyles", " Line Styles", output::ucImages::kLinePanel) {}
  virtual ~frmLineStyles() = default;

  // The style to start on; 0 or less: none chosen.
  void InitializeSettings(int16_t styleId);
  void Show();

  // True only when closed with "&OK".
  bool OK() const { return ok_; }
  int16_t StyleId() const { return styleId_; }

  // Shows the picker on a style and, when closed with OK, changes it to the
  // one chosen; true then.
  bool Pick(int16_t& styleId) {
    InitializeSettings(styleId);
    Show();
    if (!ok_) return false;
    styleId = styleId_;
    return true;
  }

  // The style under a point of the picture given as fractions of its size.
  static int16_t StyleAt(double x, double y);

 protected:
  frmLineStyles(std::string name, std::string caption, output::ucImages::Panel panel)
      : name_(std::move(name)), caption_(std::move(caption)), panel_(panel) {}
  // The picture of one style.
  virtual std::string Preview(const output::ucImages& images, int style) const;

 private:
  std::string name_, caption_;
  output::ucImages::Panel panel_;
  bool ok_ = false;
  int16_t styleId_ = 0;
};

}  // namespace nivarel::dialogs
