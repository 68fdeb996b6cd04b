// The symbol lists ("  Edit Symbol List"): which of the shapes of the symbol
// rules are active, that is, usable in cell text and shown in the settings'
// grid. Two lists stand side by side, "Unused Symbols" (narrowed by a filter
// on the shape group) and "Active Symbols" (in evaluation order, numbered),
// and Add and Remove move the selected symbols between them. OK writes each
// symbol's "is_active", and the active ones' "order", into the form's copy of
// the rules file's record, which the caller then takes; the form never writes
// the file, and Cancel changes nothing.
#pragma once

#include <string>

#include "CIniFileHandler.h"
#include "IniFile.h"

namespace nivarel::dialogs {

class frmSymbolLists {
 public:
  // The handler that reads and writes the record, and the record of the
  // rules file as loaded; clears OK.
  void InitializeSettings(rules::CIniFileHandler& handler, const rules::IniFile& ini);
  // Shows the dialog until OK or Cancel.
  void Show();

  // True only when closed with "&OK".
  bool OK() const { return ok_; }
  // The record, as OK changed it.
  const rules::IniFile& IniFileData() const { return ini_; }

  // The shape group of a shape type, as the filter names it ("Flowchart
  // Symbols", "Basic Shapes", "Block Arrows", "Stars and Banners",
  // "Callouts"); "" for a type in none of them.
  static std::string ShapeGroup(int id);

 private:
  rules::CIniFileHandler* handler_ = nullptr;
  rules::IniFile ini_;
  bool ok_ = false;
};

}  // namespace nivarel::dialogs
