#include "CMermaidCopy.h"

#include "CMermaidExport.h"
#include "Clipboard.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "MermaidFile.h"
#include "MermaidWriter.h"
#include "MsgBox.h"
#include "Text.h"

namespace nivarel::output {

namespace {
constexpr char kSource[] = "CMermaidCopy";
}  // namespace

const std::vector<std::pair<std::string, std::string>>& CMermaidCopy::SaveFilters() {
  static const std::vector<std::pair<std::string, std::string>> filters = {{"Mermaid (*.mmd)", "*.mmd"},
                                                                           {"Text (*.txt)", "*.txt"}};
  return filters;
}

std::string CMermaidCopy::FileNameOf(const std::string& chosen, int filterIndex) {
  std::string name = rules::Trim(chosen);
  if (filterIndex < 1 || filterIndex > static_cast<int>(SaveFilters().size())) return name;
  std::string extension = SaveFilters()[filterIndex - 1].second.substr(1);  // "*.mmd" gives ".mmd"
  bool endsInIt =
      name.size() >= extension.size() && name.compare(name.size() - extension.size(), extension.size(), extension) == 0;
  if (endsInIt) return name;
  // A name that ends in a point takes the extension's letters only.
  return name + (!name.empty() && name.back() == '.' ? extension.substr(1) : extension);
}

void CMermaidCopy::CopyAsMermaid() {
  copied_ = false;
  savedTo_.clear();
  try {
    if (!host::ExcelApp) return;
    auto sheet = host::ExcelApp->ActiveSheet();
    if (!sheet) return;
    tools::MermaidChart chart = tools::CMermaidExport::Read(*sheet);
    if (chart.nodes.empty()) {
      host::MsgBox("No flowchart symbols were found on the sheet '" + sheet->Name() + "'.", office::vbExclamation,
                   kTitle);
      return;
    }
    const std::string text = tools::MermaidWriter::Write(chart);
    office::Clipboard(*host::ExcelApp).SetText(text);
    copied_ = true;
    auto choice = host::ExcelApp->GetSaveAsFilename("Save Mermaid Text", SaveFilters(), 1, host::GetFlowchartsPath(),
                                                    host::ChartFileName(sheet->Name()));
    if (!choice) return;
    std::string path = FileNameOf(choice->path, choice->filterIndex), problem;
    if (!tools::MermaidFile::Save(path, text, problem)) {
      host::MsgBox(problem, office::vbExclamation, kTitle);
      return;
    }
    savedTo_ = path;
  } catch (...) {
    host::ErrorHandler(kSource, "CopyAsMermaid", false);
  }
}

}  // namespace nivarel::output
