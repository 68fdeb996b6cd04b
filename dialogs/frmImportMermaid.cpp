#include "frmImportMermaid.h"

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MermaidFile.h"
#include "MsgBox.h"
#include "Text.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace {

constexpr char kSource[] = "frmImportMermaid";
// How the dialog ends for OK, and when the user asks for a file.
constexpr int kImport = 1;
constexpr int kBrowse = 2;

}  // namespace

const std::vector<std::pair<std::string, std::string>>& frmImportMermaid::OpenFilters() {
  static const std::vector<std::pair<std::string, std::string>> filters = {
      {"Mermaid (*.mmd)", "*.mmd"}, {"Markdown (*.md)", "*.md"}, {"Text (*.txt)", "*.txt"}, {"All files (*.*)", "*.*"}};
  return filters;
}

void frmImportMermaid::Display(office::Workbook& book) {
  result_ = {};
  try {
    if (!host::ExcelApp) return;
    host::UserDialog* form = nullptr;
    host::UserDialog dialog(*host::ExcelApp, "frmImportMermaid", [&](const std::string& method) {
      try {
        host::FailWhenAsked(std::string(kSource) + "." + method, "dialog event");
        if (method == "cmdBrowse_Click") {
          form->EndDialog(kBrowse);  // the dialog steps aside while the picker runs
        } else if (method == "cmdOK_Click") {
          if (rules::Trim(form->Text("txtMermaid"), " \t\r\n").empty()) {
            host::MsgBox("Paste or type the Mermaid flowchart text to import,\r\n"
                         "or load it from a file with Browse...",
                         office::vbExclamation, kTitle);
            form->SetFocus("txtMermaid");
            return;
          }
          form->EndDialog(kImport);  // the chart is drawn with the dialog out of the way
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    form = &dialog;
    for (;;) {
      int ended = dialog.Execute();
      if (ended == kBrowse) {
        std::optional<std::string> path =
            host::ExcelApp->GetOpenFilename("Open Mermaid Text", OpenFilters(), 1, host::GetFlowchartsPath());
        if (!path) continue;
        std::string text, problem;
        if (tools::MermaidFile::Load(*path, text, problem))
          dialog.SetText("txtMermaid", text);
        else
          host::MsgBox(problem, office::vbExclamation, kTitle);
        continue;
      }
      if (ended != kImport) return;
      tools::MermaidImportResult result = tools::CMermaidImport::Import(dialog.Text("txtMermaid"), book);
      if (result.drawn) {
        result_ = result;
        return;
      }
      host::MsgBox(result.message.empty() ? "The Mermaid text could not be drawn." : result.message,
                   office::vbExclamation, kTitle);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
