#include "CFlowLineFormatter.h"

#include <optional>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "ShapeStylePresets.h"
#include "Shapes.h"

namespace nivarel::shapes {

namespace {

const char kSource[] = "CFlowLineFormatter";
// A flow line style s is the host's line style preset s + kPresetBase.
constexpr int kPresetBase = 10000;
constexpr int kStylesPerWeight = 7, kLastStyle = 21;

bool IsAlternateProcess(const std::optional<office::Shape>& shape) {
  return shape && shape->AutoShapeType() == office::msoShapeFlowchartAlternateProcess;
}

bool IsLine(const office::Shape& shape) {
  int type = shape.Type();
  return type == office::msoLine || (type == office::msoAutoShape && shape.Connector());
}

}  // namespace

void CFlowLineFormatter::SetLineFormat(office::Shape& line, const rules::CConfig& config) {
  try {
    SetLineStyle(line, config.FlowLineStyle, false);
  } catch (...) {
    host::ErrorHandler(kSource, "SetLineFormat", false);
  }
}

void CFlowLineFormatter::SetNewSolidFlowLineFormat(office::Shape& line, int16_t style) {
  SetArrowhead(line);
  SetLineStyle(line, style, false);
}

void CFlowLineFormatter::SetNewDashedFlowLineFormat(office::Shape& line, int16_t style) {
  SetArrowhead(line);
  SetLineStyle(line, style, true);
  line.Line().SetDashStyle(office::msoLineDash);
}

void CFlowLineFormatter::SetFlowLineFormat(office::Shape& line, const rules::CConfig& config, bool isNew) {
  try {
    if (isNew) SetArrowhead(line);
    SetLineStyle(line, config.FlowLineStyle, isNew);
    if (config.AlternateProcessDashed) {
      office::ConnectorFormat connector = line.GetConnectorFormat();
      if (connector.BeginConnected() && IsAlternateProcess(connector.BeginConnectedShape()))
        line.Line().SetDashStyle(office::msoLineDash);
      if (connector.EndConnected() && IsAlternateProcess(connector.EndConnectedShape()))
        line.Line().SetDashStyle(office::msoLineDash);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "SetFlowLineFormat", false);
  }
}

int16_t CFlowLineFormatter::GetLineStyle(office::Shape& line) {
  try {
    if (host::ExcelVersion >= 12) {
      int preset = line.ShapeStyle();
      if (preset >= kPresetBase && preset <= kPresetBase + kLastStyle)
        return static_cast<int16_t>(preset - kPresetBase);
    }
    double weight = line.Line().Weight();
    int group = weight > 2.5 ? 3 : weight > 1.0 ? 2 : 1;
    long colour = line.Line().ForeColor().RGB();
    int index = 1;
    for (int i = 2; i <= kStylesPerWeight; ++i)
      if (office::FindLineStylePreset(kPresetBase + i)->line == colour) index = i;
    return static_cast<int16_t>((group - 1) * kStylesPerWeight + index);
  } catch (...) {
    host::ErrorHandler(kSource, "GetLineStyle", false);
    return 0;
  }
}

void CFlowLineFormatter::SetFlowLineOrder(office::Worksheet& worksheet) {
  try {
    office::Shapes shapes = worksheet.GetShapes();
    int count = shapes.Count();
    for (int command : {office::msoSendBackward, office::msoSendToBack}) {
      for (int i = 1; i <= count; ++i) {
        try {
          office::Shape shape = shapes.Item(i);
          if (IsLine(shape)) shape.ZOrder(command);
        } catch (...) {
        }
      }
    }
  } catch (...) {
  }
}

void CFlowLineFormatter::SetArrowhead(office::Shape& line) {
  office::LineFormat format = line.Line();
  format.SetEndArrowheadLength(office::msoArrowheadLengthMedium);
  format.SetEndArrowheadWidth(office::msoArrowheadWidthMedium);
  format.SetEndArrowheadStyle(office::msoArrowheadTriangle);
}

void CFlowLineFormatter::SetLineStyle(office::Shape& line, int16_t style, bool reset) {
  try {
    if (reset) {
      office::LineFormat format = line.Line();
      format.SetVisible(true);
      format.SetDashStyle(office::msoLineSolid);
      format.SetStyle(office::msoLineSingle);
    }
    if (host::ExcelVersion >= 12)
      line.SetShapeStyle(kPresetBase + style);
    else
      office::ApplyLineStylePreset(line, kPresetBase + style);
  } catch (...) {
    host::ErrorHandler(kSource, "SetLineStyle", false);
  }
}

}  // namespace nivarel::shapes
