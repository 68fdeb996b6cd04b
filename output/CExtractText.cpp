#include "CExtractText.h"

#include <vector>

#include "CRangePrompt.h"
#include "Characters.h"
#include "Font.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
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

void CExtractText::ExtractTextFromFlowchartSymbols() {
  written_ = 0;
  try {
    if (!valid_ || !flowchartSheet_) return;
    if (!PromptForOutputCell()) return;
    // The groups opened and closed again and the cells written are one
    // entry of the undo list; the office records all of it.
    UndoList::Entry entry(flowchartSheet_->Parent(), "Nivarel: Extract Flowchart Text");
    outputSheet_->Activate();
    outputCell_->Select();
    Shapes shapes = flowchartSheet_->GetShapes();
    std::vector<Shape> opened =
        host::UngroupShapes(shapes, kSource, "ExtractTextFromFlowchartSymbols",
                            [](const Shape& group) { return PartOfTheChart(group.Name()); });
    try {
      WriteHeading();
      int row = 1;
      for (int i = 1, n = shapes.Count(); i <= n; ++i) {
        try {
          Shape shape = shapes.Item(i);
          if (shape.Type() != msoAutoShape || shape.Connector() || !PartOfTheChart(shape.Name())) continue;
          std::string text = rules::Trim(shape.GetTextFrame().GetCharacters().Text());
          if (text.empty() || TerminatorWord(text)) continue;
          outputCell_->Offset(row, 0).SetValue(text);
          ++row;
          ++written_;
        } catch (...) {
          // A shape without text is passed over.
        }
      }
    } catch (...) {
      // What was written stays; the groups close all the same.
    }
    host::RegroupShapes(opened, kSource, "ExtractTextFromFlowchartSymbols");
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
