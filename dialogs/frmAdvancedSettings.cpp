#include "frmAdvancedSettings.h"

#include <algorithm>
#include <memory>

#include "Application.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsoConstants.h"
#include "UserDialog.h"
#include "frmFont.h"

namespace nivarel::dialogs {

namespace {

const char kSource[] = "frmAdvancedSettings";
constexpr long kHelpTopic = 34000;
constexpr float kLargestSample = 16;  // points: what the sample's box holds
const char* const kFlowDirections[] = {"optFlowDirection0", "optFlowDirection1", "optFlowDirection2"};
// The controls that the default font for branch labels greys out.
const char* const kBranchFontControls[] = {"lblBranchLabelFont", "lblBranchText", "cmdBranchLabelFont",
                                           "cmdBranchLabelColor"};
const int32_t kColumns[] = {office::xlLeft, office::xlCenter, office::xlRight};
const int32_t kRows[] = {office::xlTop, office::xlCenter, office::xlBottom};

// The place of value among three, the middle one when it is none of them.
int PlaceOf(int32_t value, const int32_t (&values)[3]) {
  for (int i = 0; i < 3; ++i)
    if (values[i] == value) return i;
  return 1;
}

// The branch label font while the dialog is open; the results take it on OK.
struct BranchFont {
  std::string name;
  float size = 10;
  bool bold = false, italic = false;
  int32_t color = 0;
};

}  // namespace

int frmAdvancedSettings::AlignmentIndex(int32_t horizontal, int32_t vertical) {
  return PlaceOf(vertical, kRows) * 3 + PlaceOf(horizontal, kColumns);
}

int32_t frmAdvancedSettings::HorizontalOf(int index) {
  return index >= 0 && index < kAlignments ? kColumns[index % 3] : office::xlCenter;
}

int32_t frmAdvancedSettings::VerticalOf(int index) {
  return index >= 0 && index < kAlignments ? kRows[index / 3] : office::xlCenter;
}

int frmAdvancedSettings::DelimiterIndex(const std::string& delimiter) {
  if (delimiter == ".") return 2;
  if (delimiter == "-") return 1;
  return 0;
}

std::string frmAdvancedSettings::DelimiterOf(int index) {
  if (index == 2) return ".";
  if (index == 1) return "-";
  return ":";
}

void frmAdvancedSettings::InitializeSettings(const rules::CConfig& config) {
  ok_ = false;
  autoSizeHeight_ = config.AutosizeHeight;
  questionIsDecision_ = config.QuestionMarkIsDecision;
  branchesUseDefaultFont_ = config.BranchesUseDefaultFont;
  fontName_ = config.BranchFontName;
  fontSize_ = config.BranchFontSize;
  fontBold_ = config.BranchFontBold;
  fontItalic_ = config.BranchFontItalic;
  fontColor_ = config.BranchFontColor;
  capitalize_ = config.Capitalize;
  flowDirection_ = config.FlowDirection;
  smartSizing_ = config.SmartSizing;
  horizontal_ = config.HorizontalAlignment;
  vertical_ = config.VerticalAlignment;
  delimiter_ = config.PrefixDelimiter;
}

void frmAdvancedSettings::Show() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    BranchFont font{fontName_, fontSize_, fontBold_, fontItalic_, fontColor_};
    host::UserDialog* form = nullptr;
    auto showFont = [&] {
      form->SetLabel("lblBranchLabelFont", font.name + ", " + frmFont::SizeText(font.size) + " pt");
      form->SetFont("lblBranchText", font.name, std::min(font.size, kLargestSample), font.bold, font.italic);
      form->SetTextColor("lblBranchText", font.color);
    };
    auto enableFont = [&] {
      bool own = !form->Checked("chkBranchesUseDefaultFont");
      for (const char* control : kBranchFontControls) form->SetEnabled(control, own);
    };
    auto changeFont = [&] {
      if (frmFont::Pick(font.name, font.size, font.bold, font.italic)) showFont();
    };
    // The colour comes back from the office's event loop while the dialog
    // still shows; should the dialog have closed by then, it is dropped.
    auto open = std::make_shared<bool>(true);
    struct Closing {
      std::shared_ptr<bool> open;
      ~Closing() { *open = false; }
    } closing{open};
    auto changeColor = [&] {
      host::ExcelApp->PickColor(font.color, [&, open](long chosen) {
        if (!*open) return;
        try {
          font.color = static_cast<int32_t>(chosen);
          showFont();
        } catch (...) {
          host::ErrorHandler(kSource, "cmdBranchLabelColor_Click", false);
        }
      });
    };
    bool loaded = false;
    host::UserDialog dialog(*host::ExcelApp, "frmAdvancedSettings", [&](const std::string& method) {
      try {
        if (!loaded) return;
        if (method == "chkBranchesUseDefaultFont_Click") {
          enableFont();
        } else if (method == "cmdBranchLabelFont_Click") {
          changeFont();
        } else if (method == "cmdBranchLabelColor_Click") {
          changeColor();
        } else if (method == "cmdHelp_Click" || method == "Form_Help") {
          host::ShowHelpTopic(kHelpTopic);
        } else if (method == "cmdOK_Click") {
          ok_ = true;
          form->EndDialog(1);
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = &dialog;
    // SetConfiguration: the copy into the controls.
    dialog.SetChecked("chkAutoSizeHeight", autoSizeHeight_);
    dialog.SetChecked("chkSmartSizing", smartSizing_);
    dialog.SetChecked("chkCapitalize", capitalize_);
    dialog.SetChecked("chkQuestionMarkIsDecision", questionIsDecision_);
    dialog.SetListIndex("cboTextAlignment", AlignmentIndex(horizontal_, vertical_));
    dialog.SetListIndex("cboDelimiters", DelimiterIndex(delimiter_));
    int direction = flowDirection_ >= 0 && flowDirection_ <= 2 ? flowDirection_ : 0;
    dialog.SetChecked(kFlowDirections[direction], true);
    dialog.SetChecked("chkBranchesUseDefaultFont", branchesUseDefaultFont_);
    showFont();
    enableFont();
    loaded = true;
    dialog.Execute();
    if (!ok_) return;

    autoSizeHeight_ = dialog.Checked("chkAutoSizeHeight");
    smartSizing_ = dialog.Checked("chkSmartSizing");
    capitalize_ = dialog.Checked("chkCapitalize");
    questionIsDecision_ = dialog.Checked("chkQuestionMarkIsDecision");
    int alignment = dialog.ListIndex("cboTextAlignment");
    horizontal_ = HorizontalOf(alignment);
    vertical_ = VerticalOf(alignment);
    delimiter_ = DelimiterOf(dialog.ListIndex("cboDelimiters"));
    for (int16_t i = 0; i < 3; ++i)
      if (dialog.Checked(kFlowDirections[i])) flowDirection_ = i;
    branchesUseDefaultFont_ = dialog.Checked("chkBranchesUseDefaultFont");
    fontName_ = font.name;
    fontSize_ = font.size;
    fontBold_ = font.bold;
    fontItalic_ = font.italic;
    fontColor_ = font.color;
  } catch (...) {
    ok_ = false;
    host::ErrorHandler(kSource, "Show", false);
  }
}

}  // namespace nivarel::dialogs
