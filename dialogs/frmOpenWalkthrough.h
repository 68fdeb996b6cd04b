// Offers to open the sample walkthrough once; OK is true when the user
// chose "Load Walkthrough". The caller opens it and remembers the offer.
#pragma once

namespace nivarel::dialogs {

class frmOpenWalkthrough {
 public:
  void Display();
  bool OK() const { return ok_; }

 private:
  bool ok_ = false;
};

}  // namespace nivarel::dialogs
