#include "PickCell.h"

#include "CRangePrompt.h"
#include "MsgBox.h"
#include "Text.h"

namespace nivarel::dialogs {

void PickCellInto(host::UserDialog& form, const std::string& box, const std::string& prompt,
                  const std::string& title, const std::string& startAt) {
  output::CRangePrompt picker;
  std::string current = startAt.empty() ? rules::Trim(form.Text(box)) : startAt;
  picker.GetRangeFromPrompt(prompt, title, current.empty() ? "C3" : current);
  if (picker.IsValid())
    form.SetText(box, picker.RangeAddress());
  else if (!picker.UserCanceled())
    host::MsgBox(picker.ErrorMessage(), office::vbExclamation, "Range Selection Error");
}

}  // namespace nivarel::dialogs
