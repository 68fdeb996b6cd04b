#include "CDecisionLabelAdder.h"

#include <string>
#include <vector>

#include "MBranchLabels.h"
#include "MErrorHandler.h"
#include "MsoConstants.h"
#include "Shapes.h"
#include "frmBranchLabelPrompt.h"

namespace nivarel::shapes {

office::Shape CDecisionLabelAdder::AddBranchLabels(office::Worksheet& worksheet, office::Shape& decision,
                                                 const rules::CConfig& config, CShapeFormatter& formatter) {
  office::Shape result = decision;
  try {
    if (config.BranchLabelOption == kNoLabels) return result;
    BranchTexts texts;
    if (config.BranchLabelOption == kAskForTexts) {
      dialogs::frmBranchLabelPrompt prompt;
      prompt.Display(config);
      if (!prompt.OK()) return result;
      texts = {prompt.TopText(), prompt.RightText(), prompt.BottomText(), prompt.LeftText()};
    } else {
      texts = {config.TopBranchText, config.RightBranchText, config.BottomBranchText, config.LeftBranchText};
    }
    office::Shapes shapes = worksheet.GetShapes();
    std::vector<std::string> names =
        AddBranchLabelBoxes(shapes, decision, texts, config, formatter, [&](office::Shape& label, int16_t side) {
          SetBranchLabelPosition(decision, label, config, side);
        });
    if (config.GroupBranchLabels && names.size() >= 2) {
      result = shapes.GetRange(names).Group();
      result.SetPlacement(office::xlMove);
    }
  } catch (...) {
    host::ErrorHandler("CDecisionLabelAdder", "AddBranchLabels", false);
  }
  return result;
}

void CDecisionLabelAdder::SetBranchLabelPosition(const office::Shape& shape, office::Shape& label,
                                                 const rules::CConfig& config, int16_t side) {
  PlaceBranchLabel(shape, label, config.BranchPosition, side, "CDecisionLabelAdder");
}

}  // namespace nivarel::shapes
