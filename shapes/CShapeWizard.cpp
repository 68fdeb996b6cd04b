#include "CShapeWizard.h"

#include "CShapeAdder.h"
#include "CShapeFormatter.h"
#include "MBranchLabels.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "Shapes.h"

namespace nivarel::shapes {

void CShapeWizard::AddTextToShape(office::Shape& shape, const std::string& text) {
  CShapeAdder::AddTextInPieces(shape, text);
}

void CShapeWizard::AddTextToXL2007Shape(office::Shape& shape, const std::string& text) {
  try {
    shape.GetTextFrame2().SetText(text);
  } catch (...) {
    host::ErrorHandler("CShapeWizard", "AddTextToXL2007Shape", false);
  }
}

void CShapeWizard::SetShapeDimensions(office::Shape& shape, int16_t symbolId, const std::string& text,
                                      int16_t minRows, int32_t widthClass, const rules::CConfig& config) {
  try {
    double unit = host::GlobalRowHeight;
    if (!config.AutosizeHeight) {
      shape.SetWidth(widthClass * unit);
      shape.SetHeight(minRows * unit);
      return;
    }
    double left = shape.Left(), top = shape.Top();
    dimensions_.BeginMeasure(shape);
    if (symbolId == office::msoShapeFlowchartConnector || symbolId == office::msoShapeFlowchartOffpageConnector)
      dimensions_.SetConnectorDimensions(shape, config, symbolId, widthClass, minRows, widthClass, left, top, text);
    else if (symbolId == office::msoShapeFlowchartTerminator)
      dimensions_.SetTerminatorDimensions(shape, widthClass, minRows, left, top, text);
    else
      dimensions_.SetNormalShapeDimensions(shape, widthClass, minRows, left, top, text);
    dimensions_.EndMeasure(shape);
  } catch (...) {
    host::ErrorHandler("CShapeWizard", "SetShapeDimensions", false);
  }
}

void CShapeWizard::AddBranchLabels(office::Worksheet& worksheet, office::Shape& shape, const rules::CConfig& config,
                                   const std::string& topText, const std::string& rightText,
                                   const std::string& bottomText, const std::string& leftText) {
  try {
    office::Shapes shapes = worksheet.GetShapes();
    CShapeFormatter formatter;
    // The names are gathered for nothing: the batch tools keep the labels apart.
    AddBranchLabelBoxes(shapes, shape, {topText, rightText, bottomText, leftText}, config, formatter,
                        [&](office::Shape& label, int16_t side) { SetBranchLabelPosition(shape, label, config, side); });
  } catch (...) {
    host::ErrorHandler("CShapeWizard", "AddBranchLabels", false);
  }
}

void CShapeWizard::SetBranchLabelPosition(const office::Shape& shape, office::Shape& label, const rules::CConfig& config,
                                          int16_t side) {
  PlaceBranchLabel(shape, label, config.BranchPosition, side, "CShapeWizard");
}

}  // namespace nivarel::shapes
