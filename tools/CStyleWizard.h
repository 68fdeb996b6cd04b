// Gives the shapes already on the active sheet the looks that the settings
// give new ones: symbols their symbol's style and the font, labels the label
// format, flow lines and plain lines the flow line style. Groups of the
// user's own are opened for the work and closed again with the same members;
// a flowchart key, a template's groups and group boxes keep their look.
#pragma once

#include <vector>

#include "CConfig.h"
#include "CSymbolData.h"
#include "Shapes.h"

namespace nivarel::tools {

class CStyleWizard {
 public:
  // Restyles the active sheet. A shape that fails is logged and the others
  // go on; the groups are closed again whatever happened in between.
  void ApplyDefaultStyles();

 private:
  void FormatShapes(office::Shapes& shapes, const rules::CConfig& config, const rules::CSymbolData& symbols);
};

}  // namespace nivarel::tools
