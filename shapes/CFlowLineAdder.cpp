#include "CFlowLineAdder.h"

#include <array>
#include <initializer_list>
#include <utility>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "Shapes.h"

namespace nivarel::shapes {

namespace {

const char kSource[] = "CFlowLineAdder";
constexpr int kTop = 0, kRight = 1, kBottom = 2, kLeft = 3;
constexpr int kLastShapeType = 137;

// Connection sites of one shape type, by side.
struct Sites {
  int top, left, bottom, right;
};

using SiteTable = std::array<Sites, kLastShapeType + 1>;

SiteTable MakeSiteTable() {
  SiteTable table{};
  auto set = [&](std::initializer_list<std::pair<int, int>> types, Sites sites) {
    for (const auto& [first, last] : types)
      for (int type = first; type <= last; ++type) table[type] = sites;
  };
  set({{1, 1}, {4, 6}, {10, 11}, {16, 16}, {20, 21}, {23, 24}, {26, 28}, {33, 36}, {39, 40}, {49, 59},
       {61, 63}, {65, 72}, {74, 76}, {80, 85}, {88, 91}, {93, 106}},
      {1, 2, 3, 4});
  set({{109, 124}}, {2, 4, 3, 5});
  set({{15, 15}, {125, 136}}, {7, 1, 3, 5});
  set({{9, 9}, {17, 19}, {38, 38}, {73, 73}, {77, 78}, {107, 107}}, {1, 3, 5, 7});
  set({{13, 14}, {86, 86}}, {2, 3, 4, 5});
  set({{44, 44}, {46, 47}}, {1, 3, 4, 5});
  set({{7, 7}, {12, 12}}, {1, 2, 4, 6});
  set({{29, 29}, {31, 31}}, {1, 2, 3, 3});
  set({{48, 48}, {137, 137}}, {1, 2, 4, 5});
  set({{87, 87}, {92, 92}}, {1, 2, 3, 5});
  set({{2, 2}}, {2, 6, 5, 3});
  set({{3, 3}}, {4, 3, 2, 1});
  set({{8, 8}}, {6, 2, 4, 6});
  set({{22, 22}}, {1, 3, 5, 6});
  set({{25, 25}}, {1, 1, 2, 2});
  set({{30, 30}}, {1, 1, 2, 3});
  set({{32, 32}}, {1, 1, 3, 2});
  set({{37, 37}}, {2, 4, 6, 8});
  set({{41, 41}}, {1, 1, 3, 4});
  set({{42, 42}}, {1, 1, 4, 5});
  set({{43, 43}}, {1, 4, 6, 7});
  set({{45, 45}}, {5, 1, 2, 3});
  set({{60, 60}}, {1, 2, 5, 4});
  set({{64, 64}}, {2, 3, 5, 6});
  set({{79, 79}}, {1, 2, 3, 2});
  set({{108, 108}}, {4, 1, 2, 3});
  return table;
}

bool IsAlternateProcess(const office::Shape& shape) {
  return shape.AutoShapeType() == office::msoShapeFlowchartAlternateProcess;
}

// Ends the work on a new line: its look, then behind the shapes.
void FinishLine(CFlowLineFormatter& formatter, office::Shape& line, bool dashed, int16_t style) {
  if (dashed)
    formatter.SetNewDashedFlowLineFormat(line, style);
  else
    formatter.SetNewSolidFlowLineFormat(line, style);
  try {
    line.ZOrder(office::msoSendToBack);
  } catch (...) {
  }
}

}  // namespace

std::optional<office::Shape> CFlowLineAdder::AddDefaultFlowLine(office::Worksheet& worksheet, office::Shape& fromShape,
                                                              office::Shape& toShape, const rules::CConfig& config) {
  std::optional<office::Shape> line;
  try {
    line = worksheet.GetShapes().AddConnector(config.FlowLineType, fromShape.Left() + fromShape.Width() / 2,
                                              fromShape.Top() + fromShape.Height(),
                                              toShape.Left() + toShape.Width() / 2, toShape.Top());
    host::SafeDoEvents();
    office::ConnectorFormat connector = line->GetConnectorFormat();
    // First guesses only: rerouting picks the shortest pair of sites.
    if (config.FlowDirection == 1) {
      connector.BeginConnect(fromShape, 2);
      connector.EndConnect(toShape, 4);
    } else {
      connector.BeginConnect(fromShape, 3);
      connector.EndConnect(toShape, 1);
    }
    line->RerouteConnections();
    FinishLine(formatter_, *line, IsAlternateProcess(fromShape) || IsAlternateProcess(toShape),
               config.FlowLineStyle);
  } catch (...) {
    host::ErrorHandler(kSource, "AddDefaultFlowLine", false);
  }
  return line;
}

std::optional<office::Shape> CFlowLineAdder::AddUserDefinedFlowLine(office::Worksheet& worksheet, office::Shape& fromShape,
                                                                  office::Shape& toShape, int16_t fromSide,
                                                                  int16_t toSide, const rules::CConfig& config,
                                                                  bool dashed) {
  return AddNewFlowline(worksheet, fromShape, toShape, fromSide, toSide, config, dashed);
}

int CFlowLineAdder::GetConnectionPoint(int shapeType, int side) {
  static const SiteTable table = MakeSiteTable();
  if (shapeType < 1 || shapeType > kLastShapeType) return 1;
  const Sites& sites = table[shapeType];
  switch (side) {
    case kTop: return sites.top;
    case kRight: return sites.right;
    case kBottom: return sites.bottom;
    case kLeft: return sites.left;
    default: return 1;
  }
}

std::optional<office::Shape> CFlowLineAdder::AddNewFlowline(office::Worksheet& worksheet, office::Shape& fromShape,
                                                          office::Shape& toShape, int16_t fromSide, int16_t toSide,
                                                          const rules::CConfig& config, bool dashed) {
  std::optional<office::Shape> line;
  try {
    line = worksheet.GetShapes().AddConnector(config.FlowLineType, GetShapeSideX(fromShape, fromSide),
                                              GetShapeSideY(fromShape, fromSide), GetShapeSideX(toShape, toSide),
                                              GetShapeSideY(toShape, toSide));
    host::SafeDoEvents();
    office::ConnectorFormat connector = line->GetConnectorFormat();
    connector.BeginConnect(fromShape, GetConnectionPoint(fromShape.AutoShapeType(), fromSide));
    connector.EndConnect(toShape, GetConnectionPoint(toShape.AutoShapeType(), toSide));
    FinishLine(formatter_, *line, dashed || IsAlternateProcess(fromShape) || IsAlternateProcess(toShape),
               config.FlowLineStyle);
  } catch (...) {
    host::ErrorHandler(kSource, "AddNewFlowline", false);
  }
  return line;
}

double CFlowLineAdder::GetShapeSideX(const office::Shape& shape, int side) {
  switch (side) {
    case kTop:
    case kBottom: return shape.Left() + shape.Width() / 2;
    case kRight: return shape.Left() + shape.Width();
    case kLeft: return shape.Left();
    default: return 0;
  }
}

double CFlowLineAdder::GetShapeSideY(const office::Shape& shape, int side) {
  switch (side) {
    case kTop: return shape.Top();
    case kRight:
    case kLeft: return shape.Top() + shape.Height() / 2;
    case kBottom: return shape.Top() + shape.Height();
    default: return 0;
  }
}

}  // namespace nivarel::shapes
