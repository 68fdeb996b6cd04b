#include "frmLineStyles.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {
constexpr int kRows = 3;
}  // namespace

int16_t frmLineStyles::StyleAt(double x, double y) {
  return static_cast<int16_t>(output::ucImages::PanelIndex(x, y, kRows));
}

std::string frmLineStyles::Preview(const output::ucImages& images, int style) const {
  return images.LineStyleImage(style);
}

void frmLineStyles::InitializeSettings(int16_t styleId) {
  styleId_ = styleId;
  ok_ = false;
}

void frmLineStyles::Show() {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    output::ucImages images;
    host::UserDialog* form = nullptr;
    int16_t chosen = styleId_ > 0 ? styleId_ : 0;
    auto preview = [&] { form->SetPicture("picPreview", chosen > 0 ? Preview(images, chosen) : ""); };
    host::UserDialog dialog(*host::ExcelApp, "frmLineStyles", [&](const std::string& method) {
      try {
        if (method == "cmdOK_Click") {
          ok_ = true;
          form->EndDialog(1);
        } else if (method == "picStyles_MouseDown") {
          double x = 0, y = 0;
          if (!form->LastPress(x, y)) return;
          chosen = StyleAt(x, y);
          preview();
        }
      } catch (...) {
        host::ErrorHandler(name_, method, false);
      }
    });
    form = &dialog;
    dialog.SetTitle(caption_);
    dialog.SetPicture("picStyles", images.PanelImage(panel_));
    preview();
    dialog.Execute();
    if (ok_) styleId_ = chosen;
  } catch (...) {
    host::ErrorHandler(name_, "Show", false);
  }
}

}  // namespace nivarel::dialogs
