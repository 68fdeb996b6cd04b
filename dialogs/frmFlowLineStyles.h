// The flow line style picker (" Flow Line Style"): the line style picker
// with each style drawn as an arrowed line between two symbols.
#pragma once

#include "frmLineStyles.h"

namespace nivarel::dialogs {

class frmFlowLineStyles : public frmLineStyles {
 public:
  frmFlowLineStyles() : frmLineStyles("frmFlowLineStyles", " Flow Line Style", output::ucImages::kFlowLinePanel) {}

 protected:
  std::string Preview(const output::ucImages& images, int style) const override {
    return images.FlowlineStyleImage(style);
  }
};

}  // namespace nivarel::dialogs
