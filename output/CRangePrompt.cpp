#include "CRangePrompt.h"

#include "MGlobalVariables.h"

namespace nivarel::output {

void CRangePrompt::GetRangeFromPrompt(const std::string& prompt, const std::string& title,
                                      const std::string& defaultAddress) {
  range_.reset();
  sheet_.reset();
  address_.clear();
  error_.clear();
  valid_ = true;
  canceled_ = false;
  std::optional<office::Range> chosen;
  try {
    if (host::ExcelApp) chosen = host::ExcelApp->InputBoxRange(prompt, title, defaultAddress);
    if (host::ExcelApp && !chosen) {
      valid_ = false;
      canceled_ = true;
      return;
    }
  } catch (...) {
    chosen.reset();
  }
  if (!chosen) {
    valid_ = false;
    error_ = "Invalid range selected.";
    return;
  }
  try {
    range_ = chosen;
    address_ = chosen->AddressLocal(false);
    sheet_ = chosen->Sheet();
  } catch (...) {
    // Errors are ignored here as the picker's own are: what was read stays.
  }
}

}  // namespace nivarel::output
