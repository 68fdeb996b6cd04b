#include "frmFont.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"
#include "Text.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {

// The size in the box, or 0 when it is not a size from smallest to largest.
float SizeOf(const std::string& text, float smallest, float largest) {
  std::string t = rules::Trim(text);
  if (t.empty()) return 0;
  char* end = nullptr;
  double v = std::strtod(t.c_str(), &end);
  if (end == t.c_str() || *end != '\0' || !std::isfinite(v) || v < smallest || v > largest) return 0;
  return static_cast<float>(v);
}

}  // namespace

std::string frmFont::SizeText(float size) {
  if (std::fabs(size - std::round(size)) < 0.01) return std::to_string(static_cast<int>(std::lround(size)));
  char text[16];
  std::snprintf(text, sizeof text, "%.1f", size);
  return text;
}

void frmFont::InitializeSettings(const std::string& name, float size, bool bold, bool italic) {
  name_ = name;
  size_ = size;
  bold_ = bold;
  italic_ = italic;
  ok_ = false;
}

void frmFont::SetSizeLimits(float smallest, float largest) {
  smallest_ = smallest;
  largest_ = largest;
}

bool frmFont::Pick(std::string& name, float& size, bool& bold, bool& italic, float smallest, float largest) {
  frmFont picker;
  picker.InitializeSettings(name, size, bold, italic);
  picker.SetSizeLimits(smallest, largest);
  picker.Show();
  if (!picker.OK()) return false;
  name = picker.FontName();
  size = picker.FontSize();
  bold = picker.FontBold();
  italic = picker.FontItalic();
  return true;
}

void frmFont::Show() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    std::vector<std::string> names = host::ExcelApp->FontNames();
    host::UserDialog* form = nullptr;
    // What the controls say now; the sample follows them.
    auto chosenName = [&] {
      int i = form->ListIndex("lstFonts");
      return i >= 0 && i < static_cast<int>(names.size()) ? names[i] : name_;
    };
    auto sample = [&] {
      float size = SizeOf(form->Text("txtSize"), smallest_, largest_);
      form->SetFont("lblSample", chosenName(), size > 0 ? std::min(size, 24.0f) : size_, form->Checked("chkBold"),
                    form->Checked("chkItalic"));
    };
    host::UserDialog dialog(*host::ExcelApp, "frmFont", [&](const std::string& method) {
      try {
        if (method == "cmdOK_Click") {
          if (SizeOf(form->Text("txtSize"), smallest_, largest_) <= 0) {
            host::MsgBox("Please enter a font size from " + SizeText(smallest_) + " to " + SizeText(largest_) + ".",
                         office::vbExclamation, "Font Size");
            form->SetFocus("txtSize");
            return;
          }
          ok_ = true;
          form->EndDialog(1);
        } else {
          sample();
        }
      } catch (...) {
        host::ErrorHandler("frmFont", method, false);
      }
    });
    form = &dialog;
    std::vector<host::UserDialog::Item> items;
    for (const auto& n : names) items.push_back({n, ""});
    dialog.SetItems("lstFonts", items);
    auto at = std::find(names.begin(), names.end(), name_);
    if (at != names.end()) dialog.SetListIndex("lstFonts", static_cast<int>(at - names.begin()));
    dialog.SetText("txtSize", SizeText(size_));
    dialog.SetChecked("chkBold", bold_);
    dialog.SetChecked("chkItalic", italic_);
    sample();
    dialog.SetFocus("lstFonts");
    dialog.Execute();
    if (!ok_) return;
    name_ = chosenName();
    size_ = SizeOf(dialog.Text("txtSize"), smallest_, largest_);
    bold_ = dialog.Checked("chkBold");
    italic_ = dialog.Checked("chkItalic");
  } catch (...) {
    host::ErrorHandler("frmFont", "Show", false);
  }
}

}  // namespace nivarel::dialogs
