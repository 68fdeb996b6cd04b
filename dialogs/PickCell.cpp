#include "PickCell.h"

#include "CRangePrompt.h"
#include "MsgBox.h"
#include "Text.h"

namespace nivarel::dialogs {

void PickCellInto(host::UserDialog& form, const std::string& box, const std::string& prompt) {
  output::CRangePrompt picker;
  std::string current = rules::Trim(form.Text(box));
  picker.GetRangeFromPrompt(prompt, "Select Location", current.empty() ? "C3" : current);
  if (picker.IsValid())
    form.SetText(box, picker.RangeAddress());
  else if (!picker.UserCanceled())
    host::MsgBox(picker.ErrorMessage(), office::vbExclamation, "Range Selection Error");
}

}  // namespace nivarel::dialogs
