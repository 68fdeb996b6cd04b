#include "CPageLayout.h"

#include "Interior.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"
#include "PageSetup.h"

namespace nivarel::shapes {

namespace {

constexpr int kPaperTabloid = 3, kPaper11x17 = 17;
constexpr int kPortrait = 1, kLandscape = 2;
constexpr long kWhite = 0xFFFFFF;

void MakeGrid(office::Worksheet& worksheet) {
  worksheet.Columns().SetColumnWidth(host::GlobalColumnWidth);
  worksheet.Rows().SetRowHeight(host::GlobalRowHeight);
}

}  // namespace

void CPageLayout::SetPageLayout(office::Worksheet& worksheet, const rules::CConfig& config) {
  try {
    if (config.IsGrid) MakeGrid(worksheet);
  } catch (...) {
  }
  try {
    if (config.HideGridlines) worksheet.Columns().GetInterior().SetColor(kWhite);
  } catch (...) {
  }
  if (!config.CustomLayout) return;

  office::PageSetup page = worksheet.GetPageSetup();
  bool paperSet = true;
  try {
    if (config.PaperSize == kPaperTabloid) {
      try {
        page.SetPaperSize(kPaperTabloid);
      } catch (...) {
        page.SetPaperSize(kPaper11x17);
      }
    } else {
      page.SetPaperSize(config.PaperSize);
    }
  } catch (...) {
    paperSet = false;
  }
  if (!paperSet) {
    host::MsgBox(
        "The paper size you selected is not supported by your current printer.\r\n"
        "No page breaks, margins, or orientation can be preset.",
        office::vbOKOnly, host::kHostTitle);
    return;
  }
  try {
    page.SetOrientation(config.Orientation);
  } catch (...) {
  }
  try {
    double topBottom = 0, leftRight = 0;
    switch (config.Margins) {
      case 0:
        topBottom = 1.0;
        leftRight = 0.75;
        break;
      case 1:
        topBottom = config.Orientation == kPortrait ? 1.0 : 1.25;
        leftRight = config.Orientation == kPortrait ? 1.25 : 1.0;
        break;
      case 2:
        page.SetOrientation(kLandscape);
        topBottom = 1.8;
        leftRight = 1.0;
        break;
      default:
        return;
    }
    page.SetBottomMargin(host::ExcelApp->InchesToPoints(topBottom));
    page.SetTopMargin(host::ExcelApp->InchesToPoints(topBottom));
    page.SetLeftMargin(host::ExcelApp->InchesToPoints(leftRight));
    page.SetRightMargin(host::ExcelApp->InchesToPoints(leftRight));
  } catch (...) {
  }
}

void CPageLayout::CreateGrid() {
  try {
    if (!host::ExcelApp || host::ExcelApp->GetWorkbooks().Count() == 0) return;
    auto sheet = host::ExcelApp->ActiveSheet();
    if (!sheet) {
      host::MsgBox(
          "The current sheet is not a worksheet, so a grid cannot be created.\r\n"
          "Please select a worksheet when using this function.",
          office::vbOKOnly, host::kHostTitle);
      return;
    }
    if (!host::IsGlobalRowHeightSet()) host::SetGlobalRowHeight();
    MakeGrid(*sheet);
    SnapToGrid(true);
    SnapToShape(true);
  } catch (...) {
    host::ErrorHandler("CPageLayout", "CreateGrid", false);
  }
}

void CPageLayout::SnapToGrid(bool on) {
  try {
    if (host::ExcelApp->SnapToGrid() != on) host::ExcelApp->SetSnapToGrid(on);
  } catch (...) {
  }
}

void CPageLayout::SnapToShape(bool) {}

}  // namespace nivarel::shapes
