// The about box: the product, its version, who makes it, a link to the
// support page (opened in the user's browser, closing the box) and, read
// only, whether text-only toolbars are set.
#pragma once

namespace nivarel::dialogs {

class frmAbout {
 public:
  void Display();
};

}  // namespace nivarel::dialogs
