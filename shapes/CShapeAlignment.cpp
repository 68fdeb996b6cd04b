#include "CShapeAlignment.h"

#include <cmath>
#include <string>

#include "MErrorHandler.h"
#include "MsoConstants.h"
#include "Shapes.h"

namespace nivarel::shapes {

namespace {

const char kSource[] = "CShapeAlignment";

struct Centre {
  double x, y;
};

Centre CentreOf(const office::Shape& shape) {
  return {shape.Left() + shape.Width() / 2, shape.Top() + shape.Height() / 2};
}

// Both ends of the band count as inside.
bool WithinBand(double value, double start, double extent) { return value >= start && value <= start + extent; }

// A group's members at every depth, as the group's items list them.
bool GroupHolds(const office::Shape& group, const std::string& name) {
  for (const office::Shape& item : group.GroupItems()) {
    if (item.Name() == name) return true;
    if (item.Type() == office::msoGroup && GroupHolds(item, name)) return true;
  }
  return false;
}

}  // namespace

bool CShapeAlignment::AlignShapes(const office::Worksheet& worksheet, const office::Shape& previousShape,
                                  office::Shape& newShape, int32_t column, int32_t lastColumn, int32_t row,
                                  int32_t lastRow) {
  bool result = false;
  try {
    bool aligned = IsAligned(previousShape, newShape, column, lastColumn, row, lastRow);
    flowDirection_ = GetFlowDirection(previousShape, newShape);
    if (!aligned || !IsAdjacent(worksheet, previousShape, newShape, flowDirection_)) return false;
    result = true;
    Centre previous = CentreOf(previousShape);
    if (flowDirection_ == kRight || flowDirection_ == kLeft)
      newShape.SetTop(previous.y - newShape.Height() / 2);
    else
      newShape.SetLeft(previous.x - newShape.Width() / 2);
  } catch (...) {
    host::ErrorHandler(kSource, "AlignShapes", false);
  }
  return result;
}

bool CShapeAlignment::IsAligned(const office::Shape& previousShape, const office::Shape& newShape, int32_t column,
                                int32_t lastColumn, int32_t row, int32_t lastRow) const {
  if (column == lastColumn || row == lastRow) return true;
  try {
    Centre previous = CentreOf(previousShape), next = CentreOf(newShape);
    return WithinBand(next.y, previousShape.Top(), previousShape.Height()) ||
           WithinBand(next.x, previousShape.Left(), previousShape.Width()) ||
           WithinBand(previous.y, newShape.Top(), newShape.Height()) ||
           WithinBand(previous.x, newShape.Left(), newShape.Width());
  } catch (...) {
    host::ErrorHandler(kSource, "IsAligned", false);
  }
  return false;
}

bool CShapeAlignment::IsAdjacent(const office::Worksheet& worksheet, const office::Shape& previousShape,
                                 const office::Shape& newShape, int16_t direction) const {
  bool result = true;
  try {
    if (direction < kUp || direction > kLeft) return result;
    Centre p = CentreOf(previousShape), n = CentreOf(newShape);
    std::string previousName;
    office::Shapes shapes = worksheet.GetShapes();
    const void* previousKey = previousShape.Key();
    const void* newKey = newShape.Key();
    // The sheet's shapes read in one go: a step costs no call per shape.
    std::vector<office::ShapeOutline> read;
    if (!outlines_) read = shapes.Outlines();
    for (const office::ShapeOutline& other : outlines_ ? *outlines_ : read) {
      if (other.key == previousKey || other.key == newKey) continue;
      int type = other.type;
      if (type == office::msoLine || type == office::msoTextBox) continue;
      if (type == office::msoGroup) {
        if (previousName.empty()) previousName = previousShape.Name();
        if (GroupHolds(shapes.Item(other.index), previousName)) continue;
      }
      Centre o{other.left + other.width / 2, other.top + other.height / 2};
      bool blocks = false;
      switch (direction) {
        case kUp:
        case kDown: {
          bool between = direction == kUp ? n.y < o.y && o.y < p.y : p.y < o.y && o.y < n.y;
          blocks = between && other.left < p.x && p.x < other.left + other.width;
          break;
        }
        default: {
          bool between = direction == kRight ? p.x < o.x && o.x < n.x : n.x < o.x && o.x < p.x;
          blocks = between && other.top < p.y && p.y < other.top + other.height;
          break;
        }
      }
      if (blocks) result = false;
    }
  } catch (...) {
    host::ErrorHandler(kSource, "IsAdjacent", false);
  }
  return result;
}

int16_t CShapeAlignment::GetFlowDirection(const office::Shape& previousShape, const office::Shape& newShape) const {
  try {
    // Hundredths of a point, halves to the even neighbour: centres closer
    // than that count as level.
    auto hundredths = [](double v) { return std::nearbyint(v * 100); };
    Centre p = CentreOf(previousShape), n = CentreOf(newShape);
    double px = hundredths(p.x), py = hundredths(p.y), nx = hundredths(n.x), ny = hundredths(n.y);
    double dx = std::fabs(nx - px), dy = std::fabs(ny - py);
    if (dy >= dx) return ny < py ? kUp : kDown;
    return nx < px ? kLeft : kRight;
  } catch (...) {
    host::ErrorHandler(kSource, "GetFlowDirection", false);
  }
  return kUp;
}

}  // namespace nivarel::shapes
