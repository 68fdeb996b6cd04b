#include "frmHelp.h"

#include <string>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {
constexpr char kSource[] = "frmHelp";
constexpr long kHelpTopic = 10000;
}  // namespace

void frmHelp::Display() {
  viewLog_ = false;
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmHelp", [&](const std::string& method) {
      try {
        if (method == "cmdHelp_Click") {
          host::ShowHelpTopic(kHelpTopic);
        } else if (method == "cmdOnlineSupport_Click") {
          try {
            host::ExcelApp->OpenInBrowser(std::string(host::kSupportPage) + "?src=nv");
          } catch (...) {
            // No browser to be had: the window closes all the same.
          }
        } else if (method == "cmdViewLog_Click") {
          viewLog_ = true;
        } else {
          return;
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
      form->EndDialog(1);
    });
    form = &dialog;
    dialog.SetLabel("lblSupportMail",
                    std::string("If you need to email support (") + host::kSupportAddress +
                        "), it may be helpful to include the contents of the Event Log. Click the button below and "
                        "copy and paste the contents into your support request.");
    dialog.Execute();
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
