#include "CExtractText.h"

#include <vector>

#include "CRangePrompt.h"
#include "Characters.h"
#include "Font.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsgBox.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "Text.h"
#include "UndoList.h"
#include "Workbook.h"

namespace nivarel::output {

using namespace office;

namespace {

constexpr char kSource[] = "CExtractText";
constexpr char kHeading[] = "Process Steps";
constexpr char kWrongSheet[] =
    "You must select the worksheet containing the\r\n"
    "flowchart sbefore running this feature.";

// The symbol key and a template's frame are no part of the chart.
bool PartOfTheChart(const std::string& name) {
  std::string upper = rules::UpperCase(name);
  return upper != "FLOWCHART KEY" && upper.substr(0, 8) != "TEMPLATE";
}

// The words of a chart's terminators, which are no steps.
bool TerminatorWord(const std::string& text) {
  std::string upper = rules::UpperCase(text);
  return upper == "START" || upper == "BEGIN" || upper == "STOP" || upper == "END";
}

}  // namespace

CExtractText::CExtractText() {
  try {
    if (!host::ExcelApp) throw HostError(HostError::kOfficeFailure, "Nivarel is not connected to the office");
    flowchartSheet_ = host::ExcelApp->ActiveSheet();
    if (!flowchartSheet_) {
      valid_ = false;
      message_ = "An error occurred when trying to access the worksheet";
      return;
    }
    if (flowchartSheet_->TypeName() != "Worksheet") {
      valid_ = false;
      message_ = kWrongSheet;
    } else if (flowchartSheet_->GetShapes().Count() == 0) {
      valid_ = false;
      message_ = std::string("No shapes found on current worksheet\r\n\r\n") + kWrongSheet;
    }
    if (host::ExcelApp->GetSelection().cells) {
      std::optional<Range> active = host::ExcelApp->ActiveCell();
      if (active) cellAddress_ = active->AddressLocal(true);
    } else {
      cellAddress_ = "A1";
    }
  } catch (...) {
    valid_ = false;
    message_ = "An error occurred when trying to access the worksheet.\r\n" + host::CurrentError().Description;
  }
}

void CExtractText::AnswerPrompts(const Range& place) { answer_ = place; }

bool CExtractText::PromptForOutputCell() {
  std::optional<Range> chosen = answer_;
  if (!chosen) {
    CRangePrompt prompt;
    prompt.GetRangeFromPrompt("Please select the cell to output the flowchart text:", "Select Location", cellAddress_);
    if (!prompt.IsValid()) {
      if (!prompt.UserCanceled()) host::MsgBox(prompt.ErrorMessage(), vbExclamation, "Range Selection Error");
      return false;
    }
    chosen = prompt.RangeObject();
  }
  // Of a range of several cells, its first.
  outputSheet_ = chosen->Sheet();
  outputCell_ = outputSheet_->Cells(chosen->Row(), chosen->Column());
  cellAddress_ = chosen->AddressLocal(false);
  return true;
}

void CExtractText::WriteHeading() {
  outputCell_->SetValue(kHeading);
  outputCell_->GetFont().SetBold(true);
}

void CExtractText::ReadSymbols(const std::vector<Shape>& shapes, std::vector<std::string>& steps) {
  for (const Shape& shape : shapes) {
    try {
      if (!PartOfTheChart(shape.Name())) continue;
      if (shape.Type() == msoGroup) {
        ReadSymbols(shape.GroupItems(), steps);
        continue;
      }
      if (shape.Type() != msoAutoShape || shape.Connector()) continue;
      std::string text = rules::Trim(shape.GetTextFrame().GetCharacters().Text());
      if (!text.empty() && !TerminatorWord(text)) steps.push_back(text);
    } catch (...) {
      // A shape without text is passed over.
    }
  }
}

void CExtractText::ExtractTextFromFlowchartSymbols() {
  written_ = 0;
  try {
    if (!valid_ || !flowchartSheet_) return;
    if (!PromptForOutputCell()) return;
    // Only cells change: one entry of the undo list, recorded by the office.
    UndoList::Entry entry(flowchartSheet_->Parent(), "Nivarel: Extract Flowchart Text");
    outputSheet_->Activate();
    outputCell_->Select();
    std::vector<Shape> topLevel;
    Shapes shapes = flowchartSheet_->GetShapes();
    for (int i = 1, n = shapes.Count(); i <= n; ++i) topLevel.push_back(shapes.Item(i));
    std::vector<std::string> steps;
    ReadSymbols(topLevel, steps);
    WriteHeading();
    for (const std::string& step : steps) {
      try {
        outputCell_->Offset(written_ + 1, 0).SetValue(step);
        ++written_;
      } catch (...) {
        // The next step goes on in the next row all the same.
      }
    }
  } catch (...) {
    host::ErrorHandler(kSource, "ExtractTextFromFlowchartSymbols", false);
  }
  ClearReferences();
}

void CExtractText::ClearReferences() {
  outputCell_.reset();
  outputSheet_.reset();
}

}  // namespace nivarel::output
