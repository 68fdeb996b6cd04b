#include "frmStyles.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"
#include "ucImages.h"

namespace nivarel::dialogs {

namespace {
constexpr int kRows = 6, kPerPage = 42;
}  // namespace

int16_t frmStyles::StyleAt(int page, double x, double y) {
  return static_cast<int16_t>(output::ucImages::PanelIndex(x, y, kRows) + (page == 2 ? kPerPage : 0));
}

void frmStyles::InitializeSettings(int16_t styleId, const std::string& symbolName) {
  styleId_ = styleId;
  symbolName_ = symbolName;
  appliesTo_ = 0;
  ok_ = false;
}

void frmStyles::Show() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    output::ucImages images;
    host::UserDialog* form = nullptr;
    int page = styleId_ > kPerPage ? 2 : 1;
    int16_t chosen = styleId_ > 0 ? styleId_ : 0;
    auto preview = [&] {
      int style = chosen;
      form->SetPicture("picPreview", style > 0 ? images.StyleImage(style) : "");
    };
    host::UserDialog dialog(*host::ExcelApp, "frmStyles", [&](const std::string& method) {
      try {
        if (method == "cmdOK_Click") {
          ok_ = true;
          form->EndDialog(1);
        } else if (method == "optTab_Changed") {
          page = form->Checked("optSolid") ? 2 : 1;
          form->SetPage(page);
        } else if (method == "picStyles_MouseDown") {
          double x = 0, y = 0;
          if (!form->LastPress(x, y)) return;
          chosen = StyleAt(page, x, y);
          preview();
        }
      } catch (...) {
        host::ErrorHandler("frmStyles", method, false);
      }
    });
    form = &dialog;
    dialog.SetPicture("picThemed", images.PanelImage(output::ucImages::kThemedPanel));
    dialog.SetPicture("picSolid", images.PanelImage(output::ucImages::kSolidPanel));
    dialog.SetLabel("optApplyStyle3", "Apply to all " + symbolName_ + " symbols");
    dialog.SetChecked(page == 2 ? "optSolid" : "optThemed", true);
    dialog.SetPage(page);
    preview();
    dialog.Execute();
    if (ok_) {
      styleId_ = chosen;
      for (int16_t i = 0; i < 4; ++i)
        if (dialog.Checked("optApplyStyle" + std::to_string(i))) appliesTo_ = i;
    }
  } catch (...) {
    host::ErrorHandler("frmStyles", "Show", false);
  }
}

}  // namespace nivarel::dialogs
