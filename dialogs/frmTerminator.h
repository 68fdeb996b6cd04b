// Asks whether to add a start or end terminator, with its text and the cell
// it goes to. OK is set when "Yes" is pressed, before the entries are
// checked, and stays set when they are refused and the user then says "No".
// Results are trimmed. With the box ticked, an accepted text becomes the
// stored default for that end of the chart.
#pragma once

#include <string>

namespace nivarel::dialogs {

class frmTerminator {
 public:
  // terminatorType "STOP" (any case) asks for an end terminator, anything
  // else for a start terminator; location fills the cell box.
  void Display(const std::string& location, const std::string& terminatorType);
  bool OK() const { return ok_; }
  const std::string& TerminatorText() const { return text_; }
  const std::string& StartLocation() const { return location_; }

 private:
  bool ok_ = false;
  std::string text_;
  std::string location_;
};

}  // namespace nivarel::dialogs
