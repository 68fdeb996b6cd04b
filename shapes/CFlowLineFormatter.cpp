#include "CFlowLineFormatter.h"

#include <mutex>
#include <optional>
#include <vector>

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

namespace {

// Per sheet, the moment its lines were last all at the back.
std::mutex settledMutex;
std::vector<office::ShapeMark> settled;

bool IsLine(int type, bool connector) { return type == office::msoLine || (type == office::msoAutoShape && connector); }

}  // namespace

void CFlowLineFormatter::SetFlowLineOrder(office::Worksheet& worksheet) {
  try {
    // Every line goes behind every other shape; the lines to move go to the
    // back topmost first, so that they keep their order among themselves,
    // and the lines already at the back and every other shape keep theirs.
    office::Shapes shapes = worksheet.GetShapes();
    office::ShapeMark now = shapes.Mark();
    std::optional<office::ShapeMark> before;
    {
      std::lock_guard<std::mutex> lock(settledMutex);
      for (const auto& m : settled)
        if (m.index == now.index) before = m;
    }
    std::vector<office::Shape> added, misplaced;
    bool reordered = true;
    if (before && shapes.AddedSince(*before, added, reordered) && !reordered) {
      // Nothing but the layer's own additions since the lines were last in
      // order (after a step, its symbol and line): only new lines can stand
      // in front. Sending them to the back costs no look at the others.
      for (auto it = added.rbegin(); it != added.rend(); ++it)
        if (IsLine(it->Type(), it->Connector())) misplaced.push_back(*it);
    } else {
      // Read in one go, the sheet shows which lines stand above some other
      // shape.
      std::vector<office::ShapeOutline> outlines = shapes.Outlines();
      size_t lowestOther = outlines.size();
      for (size_t i = 0; i < outlines.size() && lowestOther == outlines.size(); ++i)
        if (!IsLine(outlines[i].type, outlines[i].connector)) lowestOther = i;
      for (size_t i = outlines.size(); i-- > lowestOther;)
        if (IsLine(outlines[i].type, outlines[i].connector)) misplaced.push_back(shapes.Item(outlines[i].index));
    }
    for (office::Shape& line : misplaced) {
      try {
        line.ZOrder(office::msoSendToBack);
      } catch (...) {
      }
    }
    office::ShapeMark after = shapes.Mark();
    std::lock_guard<std::mutex> lock(settledMutex);
    for (auto& m : settled)
      if (m.index == after.index) {
        m = after;
        return;
      }
    settled.push_back(after);
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
