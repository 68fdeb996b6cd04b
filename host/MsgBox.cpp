#include "MsgBox.h"

#include "MGlobalVariables.h"

namespace nivarel::host {

const char kAppTitle[] = "Nivarel";
const char kHostTitle[] = "Calc";

int MsgBox(const std::string& prompt, int style, const std::string& title) {
  if (!ExcelApp) return office::vbCancel;
  return office::ShowMessageBox(*ExcelApp, prompt, style, title);
}

}  // namespace nivarel::host
