#include "frmTemplateGenerator.h"

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MSpecialFolders.h"
#include "MUtilities.h"
#include "MsgBox.h"
#include "Text.h"
#include "UserDialog.h"
#include "frmFont.h"
#include "frmLineStyles.h"
#include "ucImages.h"

namespace nivarel::dialogs {

namespace {

using templates::CTemplateProperties;

const char kSource[] = "frmTemplateGenerator";
constexpr long kHelpTopic = 4615;
constexpr int kTabs = 3;
constexpr int kFewestLanes = 2;
// A change of layout offers more lanes only below this many, so that from
// there on a lane must be taken away before more can be added.
constexpr int kLayoutLaneBound = 6;
// From this many lanes the title boxes take two rows, and the notice says
// that the template keeps them in one.
constexpr int kTwoRowsOfLanes = 6;
constexpr int kHidden = 9;  // a page the dialog never shows
constexpr float kSmallestFont = 8, kLargestFont = 72;
constexpr double kLargestSample = 20;  // points: what the sample's box holds
constexpr short kPaperCodes[] = {1, 17, 8, 9};
const char* const kLayouts[] = {"optPlainGrid", "optCrossFunctionalVertical", "optCrossFunctionalHorizontal",
                                "optAnnotated"};
const char* const kLayoutKeys[] = {"grid", "xf_vertical", "xf_horizontal", "annotated"};
const CTemplateProperties::TemplateTypes kLayoutTypes[] = {
    CTemplateProperties::PlainGrid, CTemplateProperties::VerticalSwimLanes, CTemplateProperties::HorizontalSwimLanes,
    CTemplateProperties::Annotated};
const char kNotInFileNames[] = "\\/:*?\"<>|";

// Where the form lays out the boxes, in the dialog file's units: the lane
// titles on the body page, the section labels in each title block row.
constexpr int kLanesLeft = 6, kLanesWidth = 288, kLanesTop = 134, kLaneRowStep = 18;
constexpr int kSectionsLeft = 60, kSectionsWidth = 234;
constexpr int kHalfTops[] = {28, 118}, kFirstRowBelow = 28, kSectionRowStep = 17;
constexpr int kBoxHeight = 14, kBoxGap = 2;

std::string N(int n) { return std::to_string(n); }

// The paper size's row of the list: 1 Letter, 3 and 17 11x17, 8 A3, 9 A4;
// any other the first.
int PaperRow(int16_t code) {
  if (code == 3 || code == 17) return 1;
  if (code == 8) return 2;
  if (code == 9) return 3;
  return 0;
}

// The template folder the dialog starts on: the settings' folder, or where
// the template chooser keeps the user's templates.
std::string StartFolder(const rules::CConfig& config) {
  std::string folder = rules::Trim(config.TemplateFolderPath);
  if (folder.empty()) folder = rules::Trim(host::GetTemplatesPath());
  if (folder.empty()) {
    folder = host::GetFlowchartsPath() + "Templates";
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
  }
  return folder;
}

// The dialog file's names of the controls of one half of the title block.
struct Half {
  const char* kind;  // "Header" or "Footer"
  const char* box;   // "Head" or "Foot"
  int top;
  std::string Check() const { return std::string("chk") + kind + "Rows"; }
  std::string List() const { return std::string("cbo") + kind + "Rows"; }
  std::string Captions(int i) const {
    static const char* const kCaptions[] = {"Rows", "Sections", "Labels"};
    return std::string("lbl") + kind + kCaptions[i];
  }
  std::string Count(int row) const { return std::string("lbl") + kind + "Row" + N(row) + "Fields"; }
  std::string Less(int row) const { return std::string("cmdLess") + kind + "Row" + N(row) + "Fields"; }
  std::string More(int row) const { return std::string("cmdMore") + kind + "Row" + N(row) + "Fields"; }
  std::string Label(int row, int section) const {
    return std::string("txt") + box + "Row" + N(row) + "Field" + N(section);
  }
  int RowTop(int row) const { return top + kFirstRowBelow + (row - 1) * kSectionRowStep; }
};
const Half kHalves[] = {{"Header", "Head", kHalfTops[0]}, {"Footer", "Foot", kHalfTops[1]}};

constexpr int kRows = frmTemplateGenerator::kMaxTitleBlockRows;
constexpr int kSections = frmTemplateGenerator::kMaxTitleBlockSections;
constexpr int kLanes = frmTemplateGenerator::kMaxSwimLanes;

// The dialog's reactions, and what it holds outside its controls: the page,
// the line style, the font and the counts shown in its labels.
class Form {
 public:
  explicit Form(host::UserDialog& dialog) : dialog_(dialog) {}

  void Load(const rules::CConfig& config) {
    dialog_.SetText("txtTemplateFolder", StartFolder(config));
    dialog_.SetListIndex("cboPageSize", PaperRow(config.PaperSize));
    dialog_.SetListIndex("cboOrientation", config.Orientation == 2 ? 1 : 0);
    dialog_.SetListIndex("cboNumberPages", 0);
    for (const Half& h : kHalves) dialog_.SetListIndex(h.List(), 0);
    fontName = config.FontName;
    fontSize = config.FontSize;
    fontBold = config.FontBold;
    fontItalic = config.FontItalic;
    ShowLineStyle();
    ShowFont();
    ChangeLanes(laneCount);
    LayoutChanged();
    for (int h = 0; h < 2; ++h) RowsChanged(h);
    ShowTab(0);
    dialog_.SetFocus("txtTemplateName");
    loaded_ = true;
  }

  void Event(const std::string& method) {
    try {
      if (!loaded_) return;
      if (method == "optTab_Changed") {
        for (int i = 0; i < kTabs; ++i)
          if (i != tab_ && dialog_.Checked("optTab" + N(i))) ShowTab(i);
      } else if (method == "cmdBack_Click") {
        if (tab_ > 0) ShowTab(tab_ - 1);
      } else if (method == "cmdNext_Click") {
        if (tab_ < kTabs - 1) ShowTab(tab_ + 1);
      } else if (method == "txtTemplateName_Exit") {
        CleanName();
      } else if (method == "cmdChangeLineStyle_Click") {
        ChangeLineStyle();
      } else if (method == "cmdChangeFont_Click") {
        ChangeFont();
      } else if (method == "optLayout_Click") {
        LayoutChanged();
      } else if (method == "cmdLessLanes_Click") {
        ChangeLanes(laneCount - 1);
      } else if (method == "cmdMoreLanes_Click") {
        ChangeLanes(laneCount + 1);
      } else if (method == "cmdOK_Click") {
        Accept();
      } else if (method == "cmdHelp_Click" || method == "Form_Help") {
        host::ShowHelpTopic(kHelpTopic);
      } else {
        HalfEvent(method);  // cmdFolder_Click among the others: the folder is typed
      }
    } catch (...) {
      host::ErrorHandler(kSource, method, false);
    }
  }

  bool ok = false;
  short lineStyle = 1;
  std::string fontName;
  float fontSize = 0;
  bool fontBold = false, fontItalic = false;
  int laneCount = kFewestLanes;
  int sections[2][kRows] = {{1, 0, 0}, {1, 0, 0}};

 private:
  void ShowTab(int tab) {
    tab_ = tab;
    dialog_.SetPage(tab + 1);
    dialog_.SetChecked("optTab" + N(tab), true);
    dialog_.SetEnabled("cmdBack", tab > 0);
    dialog_.SetEnabled("cmdNext", tab < kTabs - 1);
  }

  // Takes out the characters a file name cannot hold, and the blanks around.
  void CleanName() {
    std::string text = dialog_.Text("txtTemplateName"), kept;
    for (char c : text)
      if (!std::strchr(kNotInFileNames, c)) kept += c;
    kept = rules::Trim(kept);
    if (kept != text) dialog_.SetText("txtTemplateName", kept);
  }

  void Accept() {
    CleanName();  // Enter on the name box takes OK without leaving it
    if (rules::Trim(dialog_.Text("txtTemplateName")).empty()) {
      ShowTab(0);
      dialog_.SetFocus("txtTemplateName");
      host::MsgBox("You must enter a template name.");
      return;
    }
    ok = true;
    dialog_.EndDialog(1);
  }

  void ShowLineStyle() {
    int style = lineStyle;
    dialog_.SetPicture("picLineStyle", images_.LineStyleImage(style));
  }

  void ChangeLineStyle() {
    frmLineStyles picker;
    picker.InitializeSettings(lineStyle);
    picker.Show();
    if (!picker.OK() || picker.StyleId() < 1) return;
    lineStyle = picker.StyleId();
    ShowLineStyle();
  }

  void ShowFont() {
    double shown = fontSize > kLargestSample ? kLargestSample : fontSize;
    dialog_.SetFont("lblFontSample", fontName, shown, fontBold, fontItalic);
  }

  void ChangeFont() {
    if (frmFont::Pick(fontName, fontSize, fontBold, fontItalic, kSmallestFont, kLargestFont)) ShowFont();
  }

  int Layout() const {
    for (int i = 0; i < 4; ++i)
      if (dialog_.Checked(kLayouts[i])) return i;
    return 0;
  }

  void LayoutChanged() {
    int layout = Layout();
    dialog_.SetPicture("picSample", images_.PageLayoutImage(kLayoutKeys[layout]));
    bool lanes = layout != 0;
    for (const char* control : {"lblLanes", "lblNumberLanes", "lblLaneTitles"}) dialog_.SetEnabled(control, lanes);
    dialog_.SetEnabled("cmdLessLanes", lanes && laneCount > kFewestLanes);
    dialog_.SetEnabled("cmdMoreLanes", lanes && laneCount < kLayoutLaneBound);
    for (int lane = 1; lane <= kLanes; ++lane) dialog_.SetEnabled("txtLane" + N(lane), lanes);
  }

  void ChangeLanes(int n) {
    if (n >= kFewestLanes && n <= kLanes) {
      laneCount = n;
      dialog_.SetLabel("lblNumberLanes", N(n));
      dialog_.SetEnabled("cmdLessLanes", n > kFewestLanes);
      dialog_.SetEnabled("cmdMoreLanes", n < kLanes);
      LayOutLanes();
    }
    dialog_.SetControlPage("lblLaneNotice", n >= kTwoRowsOfLanes ? 2 : kHidden);
  }

  // The lanes' title boxes side by side as lanes are, in one row or, from
  // six lanes, two.
  void LayOutLanes() {
    int perRow = laneCount < kTwoRowsOfLanes ? laneCount : (laneCount + 1) / 2;
    int width = kLanesWidth / perRow;
    for (int i = 0; i < kLanes; ++i) {
      std::string box = "txtLane" + N(i + 1);
      if (i >= laneCount) {
        dialog_.SetControlPage(box, kHidden);
        continue;
      }
      dialog_.SetBounds(box, kLanesLeft + (i % perRow) * width, kLanesTop + (i / perRow) * kLaneRowStep,
                        width - kBoxGap, kBoxHeight);
      dialog_.SetControlPage(box, 2);
    }
  }

  void HalfEvent(const std::string& method) {
    for (int h = 0; h < 2; ++h) {
      const Half& half = kHalves[h];
      if (method == half.Check() + "_Click" || method == half.List() + "_Change") return RowsChanged(h);
      for (int row = 1; row <= kRows; ++row) {
        if (method == half.Less(row) + "_Click") return ChangeSections(h, row, sections[h][row - 1] - 1);
        if (method == half.More(row) + "_Click") return ChangeSections(h, row, sections[h][row - 1] + 1);
      }
    }
  }

  bool HalfOn(int h) const { return dialog_.Checked(kHalves[h].Check()); }

  // As many rows as the list says (one while the half is off), each with at
  // least one section; the half's controls greyed while it is off.
  void RowsChanged(int h) {
    const Half& half = kHalves[h];
    bool on = HalfOn(h);
    int shown = on ? dialog_.ListIndex(half.List()) + 1 : 1;
    if (shown < 1) shown = 1;
    dialog_.SetEnabled(half.List(), on);
    for (int i = 0; i < 3; ++i) dialog_.SetEnabled(half.Captions(i), on);
    for (int row = 1; row <= kRows; ++row) {
      bool visible = row <= shown;
      if (visible && sections[h][row - 1] == 0) sections[h][row - 1] = 1;
      for (const std::string& control : {half.Less(row), half.Count(row), half.More(row)})
        dialog_.SetControlPage(control, visible ? 3 : kHidden);
      ShowSections(h, row, visible);
    }
  }

  void ChangeSections(int h, int row, int n) {
    if (n < 1 || n > kSections) return;
    sections[h][row - 1] = n;
    ShowSections(h, row, true);
  }

  // The row's count, its buttons, and that many label boxes sharing the row's width.
  void ShowSections(int h, int row, bool visible) {
    const Half& half = kHalves[h];
    bool on = HalfOn(h);
    int n = sections[h][row - 1];
    dialog_.SetLabel(half.Count(row), N(n));
    dialog_.SetEnabled(half.Count(row), on);
    dialog_.SetEnabled(half.Less(row), on && n >= 2);
    dialog_.SetEnabled(half.More(row), on && n < kSections);
    int width = n > 0 ? kSectionsWidth / n : kSectionsWidth;
    for (int s = 1; s <= kSections; ++s) {
      std::string box = half.Label(row, s);
      dialog_.SetEnabled(box, on);
      if (!visible || s > n) {
        dialog_.SetControlPage(box, kHidden);
        continue;
      }
      dialog_.SetBounds(box, kSectionsLeft + (s - 1) * width, half.RowTop(row), width - kBoxGap, kBoxHeight);
      dialog_.SetControlPage(box, 3);
    }
  }

  host::UserDialog& dialog_;
  output::ucImages images_;
  int tab_ = 0;
  bool loaded_ = false;
};

}  // namespace

std::string frmTemplateGenerator::GetSwimLaneTitle(int lane) const {
  return lane >= 1 && lane <= kMaxSwimLanes ? laneTitles_[lane - 1] : std::string();
}

std::string frmTemplateGenerator::TitleBlock::Label(int row, int section) const {
  if (row < 1 || row > kMaxTitleBlockRows || section < 1 || section > kMaxTitleBlockSections) return {};
  return labels[row - 1][section - 1];
}

void frmTemplateGenerator::Display(const rules::CConfig& config) {
  ok_ = false;
  try {
    if (!host::ExcelApp) return;
    std::unique_ptr<Form> form;
    host::UserDialog dialog(*host::ExcelApp, "frmTemplateGenerator", [&](const std::string& method) {
      if (form) form->Event(method);
    });
    form = std::make_unique<Form>(dialog);
    form->Load(config);
    dialog.Execute();

    ok_ = form->ok;
    lineStyle_ = form->lineStyle;
    fontName_ = form->fontName;
    fontSize_ = form->fontSize;
    fontBold_ = form->fontBold;
    fontItalic_ = form->fontItalic;
    int paper = dialog.ListIndex("cboPageSize");
    paperSize_ = paper >= 0 && paper < 4 ? kPaperCodes[paper] : 1;
    orientation_ = static_cast<short>(dialog.ListIndex("cboOrientation") + 1);
    pages_ = static_cast<short>(dialog.ListIndex("cboNumberPages") + 1);
    useShapes_ = dialog.Checked("optUseShapes");
    name_ = rules::Trim(dialog.Text("txtTemplateName"));
    folder_ = rules::Trim(dialog.Text("txtTemplateFolder"));
    type_ = CTemplateProperties::PlainGrid;
    for (int i = 0; i < 4; ++i)
      if (dialog.Checked(kLayouts[i])) type_ = kLayoutTypes[i];
    laneCount_ = static_cast<short>(form->laneCount);
    for (int lane = 1; lane <= kMaxSwimLanes; ++lane) laneTitles_[lane - 1] = dialog.Text("txtLane" + N(lane));
    for (int h = 0; h < 2; ++h) {
      const Half& half = kHalves[h];
      TitleBlock& block = h == 0 ? header_ : footer_;
      block.add = dialog.Checked(half.Check());
      block.rows = static_cast<short>(dialog.ListIndex(half.List()) + 1);
      for (int row = 1; row <= kRows; ++row) {
        block.sections[row - 1] = static_cast<short>(form->sections[h][row - 1]);
        for (int s = 1; s <= kSections; ++s) block.labels[row - 1][s - 1] = dialog.Text(half.Label(row, s));
      }
    }
  } catch (...) {
    ok_ = false;
    host::ErrorHandler(kSource, "Display", false);
  }
}

}  // namespace nivarel::dialogs
