// One prompt for a range through the office's range picker, with a plain
// outcome: a range (and its sheet), a cancel, or an error text. It shows no
// message itself; each caller shows ErrorMessage under its own title.
#pragma once

#include <optional>
#include <string>

#include "Range.h"
#include "Worksheet.h"

namespace nivarel::output {

class CRangePrompt {
 public:
  // Resets every result and asks. An empty default is not passed on, so the
  // picker starts from the office's own proposal. Never throws.
  void GetRangeFromPrompt(const std::string& prompt, const std::string& title = std::string(),
                          const std::string& defaultAddress = std::string());

  const std::optional<office::Range>& RangeObject() const { return range_; }
  // "C3" or "B2:D4", without the sheet's name.
  const std::string& RangeAddress() const { return address_; }
  const std::optional<office::Worksheet>& WorksheetObject() const { return sheet_; }
  const std::string& ErrorMessage() const { return error_; }
  bool IsValid() const { return valid_; }
  bool UserCanceled() const { return canceled_; }

 private:
  std::optional<office::Range> range_;
  std::string address_;
  std::optional<office::Worksheet> sheet_;
  std::string error_;
  bool valid_ = true;
  bool canceled_ = false;
};

}  // namespace nivarel::output
