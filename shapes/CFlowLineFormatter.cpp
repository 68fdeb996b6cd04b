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

bool IsAlternateProcess(const std::optional<host::Shape>& shape) {
  return shape && shape->AutoShapeType() == host::msoShapeFlowchartAlternateProcess;
}

bool IsLine(const host::Shape& shape) {
  int type = shape.Type();
  return type == host::msoLine || (type == host::msoAutoShape && shape.Connector());
}

}  // namespace

void CFlowLineFormatter::SetLineFormat(host::Shape& line, const rules::CConfig& config) {
  try {
    SetLineStyle(line, config.FlowLineStyle, false);
  } catch (...) {
    host::ErrorHandler(kSource, "SetLineFormat", false);
  }
}

void CFlowLineFormatter::SetNewSolidFlowLineFormat(host::Shape& line, int16_t style) {
  SetArrowhead(line);
  SetLineStyle(line, style, false);
}

void CFlowLineFormatter::SetNewDashedFlowLineFormat(host::Shape& line, int16_t style) {
  SetArrowhead(line);
  SetLineStyle(line, style, true);
  line.Line().SetDashStyle(host::msoLineDash);
}

void CFlowLineFormatter::SetFlowLineFormat(host::Shape& line, const rules::CConfig& config, bool isNew) {
  try {
    if (isNew) SetArrowhead(line);
    SetLineStyle(line, config.FlowLineStyle, isNew);
    if (config.AlternateProcessDashed) {
      host::ConnectorFormat connector = line.GetConnectorFormat();
      if (connector.BeginConnected() && IsAlternateProcess(connector.BeginConnectedShape()))
        line.Line().SetDashStyle(host::msoLineDash);
      if (connector.EndConnected() && IsAlternateProcess(connector.EndConnectedShape()))
        line.Line().SetDashStyle(host::msoLineDash);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "SetFlowLineFormat", false);
  }
}

int16_t CFlowLineFormatter::GetLineStyle(host::Shape& line) {
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
      if (host::FindLineStylePreset(kPresetBase + i)->line == colour) index = i;
    return static_cast<int16_t>((group - 1) * kStylesPerWeight + index);
  } catch (...) {
    host::ErrorHandler(kSource, "GetLineStyle", false);
    return 0;
  }
}

void CFlowLineFormatter::SetFlowLineOrder(host::Worksheet& worksheet) {
  try {
    host::Shapes shapes = worksheet.GetShapes();
    int count = shapes.Count();
    for (int command : {host::msoSendBackward, host::msoSendToBack}) {
      for (int i = 1; i <= count; ++i) {
        try {
          host::Shape shape = shapes.Item(i);
          if (IsLine(shape)) shape.ZOrder(command);
        } catch (...) {
        }
      }
    }
  } catch (...) {
  }
}

void CFlowLineFormatter::SetArrowhead(host::Shape& line) {
  host::LineFormat format = line.Line();
  format.SetEndArrowheadLength(host::msoArrowheadLengthMedium);
  format.SetEndArrowheadWidth(host::msoArrowheadWidthMedium);
  format.SetEndArrowheadStyle(host::msoArrowheadTriangle);
}

void CFlowLineFormatter::SetLineStyle(host::Shape& line, int16_t style, bool reset) {
  try {
    if (reset) {
      host::LineFormat format = line.Line();
      format.SetVisible(true);
      format.SetDashStyle(host::msoLineSolid);
      format.SetStyle(host::msoLineSingle);
    }
    if (host::ExcelVersion >= 12)
      line.SetShapeStyle(kPresetBase + style);
    else
      host::ApplyLineStylePreset(line, kPresetBase + style);
  } catch (...) {
    host::ErrorHandler(kSource, "SetLineStyle", false);
  }
}

}  // namespace nivarel::shapes
