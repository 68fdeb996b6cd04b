#include "MBranchLabels.h"

#include <algorithm>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"

namespace nivarel::shapes {

namespace {

constexpr long kWhite = 0xFFFFFF;

}  // namespace

std::vector<std::string> AddBranchLabelBoxes(office::Shapes& shapes, const office::Shape& decision,
                                             const BranchTexts& texts, const rules::CConfig& config,
                                             CShapeFormatter& formatter, const BranchLabelPlacer& place) {
  size_t count = std::count_if(texts.begin(), texts.end(), [](const std::string& t) { return !t.empty(); });
  std::vector<std::string> names;
  names.reserve(count + 1);
  names.push_back(decision.Name());
  for (int16_t side = kBranchTop; side <= kBranchLeft; ++side) {
    const std::string& text = texts[side - 1];
    if (text.empty()) continue;
    office::Shape label = AddBranchLabelBox(shapes, text, config, formatter);
    place(label, side);
    names.push_back(label.Name());
  }
  return names;
}

office::Shape AddBranchLabelBox(office::Shapes& shapes, const std::string& text, const rules::CConfig& config,
                              CShapeFormatter& formatter) {
  double unit = host::GlobalRowHeight;
  office::Shape label = shapes.AddTextbox(office::msoTextOrientationHorizontal, 0, 0, 3 * unit, unit);
  label.GetTextFrame().GetCharacters().SetText(text);
  formatter.SetTextBoxFormat(label, config);
  label.Line().SetVisible(false);
  // White, so that the label hides the flow line under it.
  label.Fill().ForeColor().SetRGB(kWhite);
  if (host::ExcelVersion >= 12) {
    office::TextFrame2 frame = label.GetTextFrame2();
    frame.SetWordWrap(office::msoFalse);
    frame.SetAutoSize(office::msoAutoSizeShapeToFitText);
  } else {
    label.GetTextFrame().SetAutoSize(true);
  }
  label.SetPlacement(office::xlMove);
  return label;
}

office::Shape AddFreeLabel(office::Shapes& shapes, double left, double top, const std::string& text,
                           const rules::CConfig& config) {
  office::Shape box = shapes.AddTextbox(office::msoTextOrientationHorizontal, left, top, 100, 25.5);
  office::Characters characters = box.GetTextFrame().GetCharacters();
  characters.SetText(text);
  office::Font font = characters.GetFont();
  font.SetName(config.BranchFontName);
  font.SetBold(config.BranchFontBold);
  font.SetItalic(config.BranchFontItalic);
  font.SetSize(config.BranchFontSize);
  font.SetColor(config.BranchFontColor);
  if (host::ExcelVersion >= 12) {
    box.GetTextFrame2().SetWordWrap(office::msoFalse);
    box.GetTextFrame2().SetAutoSize(office::msoAutoSizeShapeToFitText);
  } else {
    box.GetTextFrame().SetAutoSize(true);
  }
  box.ZOrder(office::msoBringToFront);
  box.SetPlacement(office::xlMove);
  box.Line().SetVisible(false);
  return box;
}

void PlaceBranchLabel(const office::Shape& decision, office::Shape& label, int16_t branchPosition, int16_t side,
                      const char* source) {
  try {
    double unit = host::GlobalRowHeight;
    double width = label.Width(), height = label.Height();
    double centreX = decision.Left() + decision.Width() / 2;
    double centreY = decision.Top() + decision.Height() / 2;
    bool offLine = branchPosition == 0;
    double top = 0, left = 0;
    switch (side) {
      case kBranchTop:
        top = decision.Top() - height - unit;
        left = offLine ? centreX + unit : centreX - width / 2;
        break;
      case kBranchRight:
        top = offLine ? centreY - (height + unit) : centreY - height / 2;
        left = decision.Left() + decision.Width() + unit;
        break;
      case kBranchBottom:
        top = decision.Top() + decision.Height() + unit;
        left = offLine ? centreX + unit : centreX - width / 2;
        break;
      case kBranchLeft:
        top = offLine ? centreY - (height + unit) : centreY - height / 2;
        left = decision.Left() - width - unit;
        break;
      default:
        return;
    }
    // A label at the sheet's edge stays on the sheet.
    label.SetTop(std::max(top, 0.0));
    label.SetLeft(std::max(left, 0.0));
  } catch (...) {
    host::ErrorHandler(source, "SetBranchLabelPosition", false);
  }
}

}  // namespace nivarel::shapes
