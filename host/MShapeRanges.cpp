#include "MShapeRanges.h"

#include <cctype>

#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "Shape.h"
#include "Shapes.h"
#include "Text.h"

namespace nivarel::host {

using namespace office;

long GetNonTemplateShapeCount() {
  try {
    if (!ExcelApp) return 0;
    auto ws = ExcelApp->ActiveSheet();
    if (!ws || ws->TypeName() != "Worksheet") return 0;
    return GetNonTemplateShapeCount(*ws);
  } catch (...) {
    ErrorHandler("MShapeRanges", "GetNonTemplateShapeCount", false);
  }
  return 0;
}

long GetNonTemplateShapeCount(const Worksheet& ws, long limit) {
  long count = 0;
  try {
    Shapes shapes = ws.GetShapes();
    for (int i = shapes.Count(); i >= 1 && count < limit; --i) {
      Shape shape = shapes.Item(i);
      int type = shape.Type();
      if (type != msoAutoShape && type != msoGroup && type != msoTextBox) continue;
      // Connectors are auto shapes to the office; they are lines to a chart.
      if (type == msoAutoShape && shape.Connector()) continue;
      std::string name = shape.Name();
      std::string upper = rules::UpperCase(rules::Trim(name));
      if (upper.rfind("TEMPLATE", 0) == 0 || name == "Flowchart Key") continue;
      ++count;
    }
  } catch (...) {
    ErrorHandler("MShapeRanges", "GetNonTemplateShapeCount", false);
  }
  return count;
}

std::vector<Shape> UngroupShapes(Shapes& shapes, const std::string& source, const std::string& procedure,
                                 const std::function<bool(const Shape&)>& opens) {
  std::vector<Shape> firstMembers;
  try {
    // Opening a group changes the collection being walked: each group opened
    // ends the walk and a new one begins, so nested groups open too.
    for (bool found = true; found;) {
      found = false;
      int count = shapes.Count();
      for (int i = 1; i <= count && !found; ++i) {
        Shape shape = shapes.Item(i);
        if (shape.Type() != msoGroup || (opens && !opens(shape))) continue;
        std::vector<Shape> members = shape.Ungroup();
        if (!members.empty()) firstMembers.push_back(members.front());
        found = true;
      }
    }
  } catch (...) {
    ErrorHandler(source, procedure, false);
  }
  return firstMembers;
}

void RegroupShapes(std::vector<Shape>& firstMembers, const std::string& source, const std::string& procedure) {
  for (auto member = firstMembers.rbegin(); member != firstMembers.rend(); ++member) {
    try {
      member->Regroup();
    } catch (...) {
      ErrorHandler(source, procedure, false);
    }
  }
}

}  // namespace nivarel::host
