#include "CStyleWizard.h"

#include "CFlowLineFormatter.h"
#include "CIniSymbolDataAccess.h"
#include "CShapeFormatter.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MShapeRanges.h"
#include "MsoConstants.h"
#include "Text.h"

namespace nivarel::tools {

using namespace office;

namespace {

constexpr char kSource[] = "CStyleWizard";

// The key and the templates' frames are drawn as groups and keep their look.
bool IsUserGroup(const Shape& shape) {
  std::string name = rules::UpperCase(shape.Name());
  return name != "FLOWCHART KEY" && name.rfind("TEMPLATE", 0) != 0;
}

bool IsGroupBox(const Shape& shape) { return rules::UpperCase(shape.Name()).rfind("GROUP_BOX", 0) == 0; }

}  // namespace

void CStyleWizard::ApplyDefaultStyles() {
  try {
    if (!host::ExcelApp) return;
    auto sheet = host::ExcelApp->ActiveSheet();
    if (!sheet) return;
    Shapes shapes = sheet->GetShapes();
    std::vector<Shape> firstMembers = host::UngroupShapes(shapes, kSource, "UngroupShapes", IsUserGroup);
    try {
      rules::CConfig config;
      config.LoadConfigData();
      rules::CSymbolData symbols;
      // Every symbol of the rules file, so that each shape type finds its own style.
      rules::CIniSymbolDataAccess().SetSymbolData(symbols, true);
      FormatShapes(shapes, config, symbols);
    } catch (...) {
      host::ErrorHandler(kSource, "ApplyDefaultStyles", false);
    }
    host::RegroupShapes(firstMembers, kSource, "RegroupShapes");
  } catch (...) {
    host::ErrorHandler(kSource, "ApplyDefaultStyles", false);
  }
}

void CStyleWizard::FormatShapes(Shapes& shapes, const rules::CConfig& config, const rules::CSymbolData& symbols) {
  // Labels come to the front as they are formatted, which moves the others
  // down the drawing order: the shapes are taken first, then formatted.
  std::vector<Shape> all;
  int count = shapes.Count();
  for (int i = 1; i <= count; ++i) all.push_back(shapes.Item(i));

  shapes::CShapeFormatter formatter;
  shapes::CFlowLineFormatter lines;
  for (Shape& shape : all) {
    try {
      if (IsGroupBox(shape)) continue;
      int type = shape.Type();
      if (type == msoTextBox) {
        formatter.SetTextBoxFormat(shape, config);
      } else if (shape.Connector()) {
        lines.SetFlowLineFormat(shape, config, false);
      } else if (type == msoLine) {
        lines.SetLineFormat(shape, config);
      } else if (type == msoCallout) {
        formatter.SetAllFormatSettings(shape, config, symbols.GetStyle(static_cast<int16_t>(shape.AutoShapeType())));
      } else if (type == msoAutoShape) {
        int autoShapeType = shape.AutoShapeType();
        if (autoShapeType >= 1 && autoShapeType <= 124)
          formatter.SetAllFormatSettings(shape, config, symbols.GetStyle(static_cast<int16_t>(autoShapeType)));
      }
    } catch (...) {
      host::ErrorHandler(kSource, "FormatShapes", false);
    }
  }
}

}  // namespace nivarel::tools
