#include "SpacingBox.h"

#include <algorithm>
#include <cmath>

#include "Text.h"
#include "TextConvert.h"

namespace nivarel::dialogs {

void SpacingBox::Show(host::UserDialog& form) {
  form.SetText(box_, std::to_string(value_));
  form.SetSpinValue(spin_, value_, 0, maximum_);
}

void SpacingBox::Validate(host::UserDialog& form) {
  std::string text = rules::Trim(form.Text(box_));
  if (text.empty()) {
    value_ = 0;
  } else if (!rules::IsNumeric(text)) {
    // the last good value stays
  } else {
    double number = rules::ToDouble(text);
    if (number < 0) {
      value_ = 0;
    } else if (number > maximum_) {
      value_ = maximum_;
    } else {
      value_ = static_cast<int>(std::nearbyint(number));
      form.SetSpinValue(spin_, value_, 0, maximum_);
      return;  // a number in range stays as typed
    }
  }
  Show(form);
}

void SpacingBox::SpinChanged(host::UserDialog& form) {
  int before = value_, now = form.SpinValue(spin_);
  if (now == before) return;
  Validate(form);  // a number typed in the box counts first
  value_ = now > before ? std::min(value_ + 1, maximum_) : std::max(value_ - 1, 0);
  Show(form);
}

bool SpacingBox::Handle(host::UserDialog& form, const std::string& method) {
  if (method == box_ + "_Exit") {
    Validate(form);
    return true;
  }
  if (method == spin_ + "_Change") {
    SpinChanged(form);
    return true;
  }
  return false;
}

}  // namespace nivarel::dialogs
