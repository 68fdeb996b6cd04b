#include "frmTemplates.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "PictureGrid.h"
#include "TemplateFile.h"
#include "Text.h"
#include "UserDialog.h"

namespace nivarel::dialogs {

namespace fs = std::filesystem;

namespace {

const char* const kSource = "frmTemplates";
constexpr int kHelpTopic = 4616;
// The table reads as a table in a fixed-pitch font.
const char* const kGridFont = "DejaVu Sans Mono";
constexpr double kGridFontSize = 8;

// The values each filter's rows after "All" stand for, matched against the
// trimmed, upper-cased property: the paper filter shows "8-1/2x11" and means "LETTER".
const std::vector<std::string> kPaperWanted = {"LETTER", "11X17", "A3", "A4"};
const std::vector<std::string> kOrientationWanted = {"PORTRAIT", "LANDSCAPE"};
const std::vector<std::string> kTypeWanted = {"FLOWCHART", "BLOCK DIAGRAM"};

std::string WithSlash(const std::string& folder) {
  return !folder.empty() && folder.back() == '/' ? folder : folder + "/";
}

// A caption's "&" before its mnemonic, as the office writes it.
std::string Mnemonic(std::string text) {
  std::replace(text.begin(), text.end(), '&', '~');
  return text;
}

bool EndsWith(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

bool IsTemplateName(const std::string& name) {
  std::string upper = rules::UpperCase(name);
  return EndsWith(upper, ".XLT") || EndsWith(upper, ".XLTX");
}

// The regular files of a folder by name; none when it cannot be listed.
std::vector<std::string> FilesOf(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
    if (it->is_regular_file(ec)) names.push_back(it->path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// Fills a new user's template folder with the templates that come with the
// add-in (those of the host's file type), unless it holds a template
// already; returns the folder.
std::string CopyTemplateFiles() {
  try {
    std::string target = host::GetTemplatesPath();
    if (target.empty()) {
      // No folder is stored: the user's templates live beside their flowcharts.
      target = host::GetFlowchartsPath() + "Templates";
      fs::create_directories(target);
    }
    target = WithSlash(target);
    std::vector<std::string> present = FilesOf(target);
    if (std::none_of(present.begin(), present.end(), IsTemplateName)) {
      std::string source = WithSlash(host::GetInstallFolder()) + "Templates/";
      std::string mask = host::ExcelVersion < 12 ? ".XLT" : ".XLTX";
      for (const std::string& name : FilesOf(source))
        if (EndsWith(rules::UpperCase(name), mask))
          fs::copy_file(source + name, target + name, fs::copy_options::skip_existing);
    }
    return target;
  } catch (...) {
    host::ErrorHandler(kSource, "CopyTemplateFiles", false);
    return WithSlash(host::GetTemplatesPath());
  }
}

class Form {
 public:
  explicit Form(host::UserDialog& dialog)
      : dialog_(dialog),
        grid_(dialog, "iGridTemplates",
              {{"file", "File Name", true},
               {"title", "Template Name", true},
               {"paper", "Paper Size", true},
               {"orientation", "Orientation", true},
               {"lanes", "Swim Lanes", true},
               {"direction", "Direction", true},
               {"type", "Template Type", true},
               {"start", "", false}}) {
    grid_.RowSelected = [this](int row) { RowChanged(row); };
  }

  void InitializeControls(const std::string& folder) {
    dialog_.SetFont("iGridTemplates", kGridFont, kGridFontSize, false, false);
    dialog_.SetFont("lblGridHeading", kGridFont, kGridFontSize, false, false);
    dialog_.SetLabel("lblGridHeading", grid_.Heading());
    for (const char* list : {"cboPageSizeFilter", "cboOrientationFilter", "cboTemplateTypeFilter"})
      dialog_.SetListIndex(list, 0);
    dialog_.SetControlVisible("lblBlockDiagramNote", false);
    dialog_.SetEnabled("cmdRefreshTemplateGrid", false);
    if (rules::Trim(folder).empty()) SetFolderText(CopyTemplateFiles());
    OpenDocumentProperties();
  }

  // The table read again from the folder that txtFolder names.
  void OpenDocumentProperties() {
    std::string folder = rules::Trim(dialog_.Text("txtFolder"));
    if (folder.empty()) return;
    folder = WithSlash(folder);
    std::vector<std::string> names = FilesOf(folder);
    if (names.empty()) return;  // an empty or missing folder leaves the table as it was
    folder_ = folder;
    filling_ = true;
    for (const std::string& name : names) {
      if (!IsTemplateName(name)) continue;
      templates::TemplateFile file;
      if (!templates::ReadTemplateFile(folder + name, file)) continue;  // unreadable: left out
      std::map<std::string, std::string> row{{"file", name}, {"title", file.title}};
      for (const auto& [key, value] : file.custom) {
        if (key == "PageSize") row["paper"] = value;
        else if (key == "Orientation") row["orientation"] = value;
        else if (key == "NumberLanes" || key == "SwimLanes") row["lanes"] = value;
        else if (key == "LaneDirection") row["direction"] = value;
        else if (key == "TemplateType") row["type"] = value;
        else if (key == "StartLocation") row["start"] = value;
      }
      grid_.AddRow(row);
    }
    grid_.FitColumns();
    dialog_.SetLabel("lblGridHeading", grid_.Heading());
    filling_ = false;
    grid_.SelectRow(0);
  }

  void ApplyFilter() {
    std::vector<bool> visible(grid_.Rows(), true);
    auto filter = [&](const char* list, const std::vector<std::string>& wanted, const char* key) {
      int index = dialog_.ListIndex(list);
      if (index < 1 || index > static_cast<int>(wanted.size())) return;
      for (int row = 0; row < grid_.Rows(); ++row)
        if (visible[row]) visible[row] = rules::UpperCase(rules::Trim(grid_.Value(row, key))) == wanted[index - 1];
    };
    filter("cboPageSizeFilter", kPaperWanted, "paper");
    filter("cboOrientationFilter", kOrientationWanted, "orientation");
    filter("cboTemplateTypeFilter", kTypeWanted, "type");
    grid_.SetVisibleRows(visible);
    for (int row = 0; row < grid_.Rows(); ++row)
      if (grid_.RowVisible(row)) {
        grid_.SelectRow(row);
        break;
      }
    RowChanged(grid_.CurrentRow());
  }

  void FolderChanged() {
    if (quiet_) return;
    std::string typed = WithSlash(rules::Trim(dialog_.Text("txtFolder")));
    // Typed a letter at a time, a folder passes through other folders on
    // its way: what counts is the text that stands.
    dialog_.SetEnabled("cmdRefreshTemplateGrid", rules::UpperCase(typed) != rules::UpperCase(folder_));
  }

  void Refresh() {
    grid_.Clear();
    RowChanged(-1);
    OpenDocumentProperties();
    dialog_.SetEnabled("cmdRefreshTemplateGrid", false);
  }

  void Browse() {
    std::string folder = host::BrowseForFolder();
    if (folder.empty()) return;
    folder_ = WithSlash(folder);
    SetFolderText(folder_);
    grid_.Clear();
    RowChanged(-1);
    OpenDocumentProperties();
  }

  bool IsTemplateValid() const {
    return grid_.CurrentRow() >= 0 && !rules::Trim(grid_.Value(grid_.CurrentRow(), "file")).empty();
  }

  bool Handle(const std::string& method) { return grid_.Handle(method); }

  const std::string& Folder() const { return folder_; }
  std::string Value(const std::string& key) const { return grid_.Value(grid_.CurrentRow(), key); }
  bool HasRow() const { return grid_.CurrentRow() >= 0; }

 private:
  void SetFolderText(const std::string& folder) {
    quiet_ = true;
    dialog_.SetText("txtFolder", folder);
    quiet_ = false;
  }

  void RowChanged(int row) {
    if (filling_) return;
    dialog_.SetControlVisible("lblBlockDiagramNote", row >= 0 && grid_.Value(row, "type") == "Block Diagram");
  }

  host::UserDialog& dialog_;
  PictureGrid grid_;
  std::string folder_;
  bool quiet_ = false;    // txtFolder set by the form, not typed
  bool filling_ = false;  // the table being read in
};

}  // namespace

void frmTemplates::Display(const std::string& folder, const std::string& caption, const std::string& okText) {
  ok_ = false;
  blockDiagram_ = false;
  templateFolderPath_.clear();
  templateFilePath_.clear();
  startLocation_.clear();
  try {
    if (!host::ExcelApp) return;
    bool initialising = true;
    host::UserDialog* dialog = nullptr;
    Form* form = nullptr;
    host::UserDialog window(*host::ExcelApp, "frmTemplates", [&](const std::string& method) {
      try {
        if (initialising) return;
        if (form->Handle(method)) return;
        if (method == "cmdOK_Click") {
          if (!form->IsTemplateValid()) {
            host::MsgBox(
                "You have choosen to load a template but no template was selected.\r\n"
                "Please click an item in the 'Select Template' grid or\r\nclick Cancel to exit.",
                office::vbExclamation, "No Template Selected");
            return;
          }
          ok_ = true;
          dialog->EndDialog(1);
        } else if (method == "cmdApplyFilter_Click") {
          form->ApplyFilter();
        } else if (method == "cmdRefreshTemplateGrid_Click") {
          form->Refresh();
        } else if (method == "cmdBrowse_Click") {
          form->Browse();
        } else if (method == "txtFolder_Change") {
          form->FolderChanged();
        } else if (method == "cmdHelp_Click" || method == "Form_Help") {
          host::ShowHelpTopic(kHelpTopic);
        }
      } catch (...) {
        host::ErrorHandler(kSource, method, false);
      }
    });
    dialog = &window;
    Form state(window);
    form = &state;
    window.SetTitle(caption);
    window.SetLabel("cmdOK", Mnemonic(okText));
    window.SetText("txtFolder", WithSlash(rules::Trim(folder)));
    // An empty folder becomes the user's template folder there.
    state.InitializeControls(folder);
    initialising = false;

    window.Execute();

    templateFolderPath_ = state.Folder();
    if (state.HasRow()) {
      templateFilePath_ = state.Folder() + state.Value("file");
      startLocation_ = state.Value("start");
      blockDiagram_ = rules::UpperCase(state.Value("type")) == "BLOCK DIAGRAM";
    }
  } catch (...) {
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
