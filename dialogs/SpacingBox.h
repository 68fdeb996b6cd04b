// A dialog's spacing box: a text box of grid units with a spin button beside
// it, kept between 0 and a maximum. On leaving the box, blank is 0, a
// negative number is 0, one above the maximum is the maximum and what is not
// a number gives the last good value back. The spin button only tells the
// way: up adds one to the box, down takes one away, within the bounds.
#pragma once

#include <string>

#include "UserDialog.h"

namespace nivarel::dialogs {

class SpacingBox {
 public:
  SpacingBox(std::string box, std::string spin, int value, int maximum)
      : box_(std::move(box)), spin_(std::move(spin)), value_(value), maximum_(maximum) {}

  // Puts the value in the box and sets the spin button.
  void Show(host::UserDialog& form);
  // The box was left.
  void Validate(host::UserDialog& form);
  // The spin button moved.
  void SpinChanged(host::UserDialog& form);
  // True when method was the box's ("<box>_Exit") or the spin button's ("<spin>_Change").
  bool Handle(host::UserDialog& form, const std::string& method);
  int Value() const { return value_; }

 private:
  std::string box_, spin_;
  int value_;
  int maximum_;
};

}  // namespace nivarel::dialogs
