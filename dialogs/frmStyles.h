// The symbol style picker ("  Select Symbol Style"): the 84 styles on two
// pages of 6 rows by 7 columns ("Themed Styles" 1 to 42, "Solid Fill Styles"
// 43 to 84), a click choosing the style under it, a preview of the choice,
// and what the choice applies to. Results are read after Show returns.
#pragma once

#include <cstdint>
#include <string>

namespace nivarel::dialogs {

class frmStyles {
 public:
  // The style to start on (0 or less: none chosen) and the name of the
  // symbol the fourth option speaks of.
  void InitializeSettings(int16_t styleId, const std::string& symbolName);
  void Show();

  // True only when closed with "&OK".
  bool OK() const { return ok_; }
  int16_t StyleId() const { return styleId_; }
  // 0 the current symbol, 1 all symbols, 2 those with the previous style,
  // 3 all symbols of this type.
  int16_t AppliesTo() const { return appliesTo_; }

  // The style under a point of a page (1 themed, 2 solid) given as
  // fractions of its size: style n stands at column n mod 7 less 1 (-1
  // meaning 6) and row n / 7 (one less when 7 divides n), on the solid page
  // n less 42.
  static int16_t StyleAt(int page, double x, double y);

 private:
  bool ok_ = false;
  int16_t styleId_ = 0;
  int16_t appliesTo_ = 0;
  std::string symbolName_;
};

}  // namespace nivarel::dialogs
