// The font picker (" Font"): the font families the office can show, a size,
// bold and italic, and a sample in the chosen font. Cancel changes nothing;
// the results are read after Show returns.
#pragma once

#include <string>

namespace nivarel::dialogs {

class frmFont {
 public:
  void InitializeSettings(const std::string& name, float size, bool bold, bool italic);
  // The sizes OK accepts; 1 to 409 unless set.
  void SetSizeLimits(float smallest, float largest);
  void Show();

  // True only when closed with "&OK".
  bool OK() const { return ok_; }
  const std::string& FontName() const { return name_; }
  float FontSize() const { return size_; }
  bool FontBold() const { return bold_; }
  bool FontItalic() const { return italic_; }

  // Shows the picker on a font and, when closed with OK, changes it to the
  // one chosen; true then. The sizes OK accepts are smallest to largest.
  static bool Pick(std::string& name, float& size, bool& bold, bool& italic, float smallest = 1,
                   float largest = 409);

  // A size as the picker writes it: "10" for a whole size, "10.5" otherwise.
  static std::string SizeText(float size);

 private:
  bool ok_ = false;
  std::string name_;
  float size_ = 10;
  float smallest_ = 1, largest_ = 409;
  bool bold_ = false, italic_ = false;
};

}  // namespace nivarel::dialogs
