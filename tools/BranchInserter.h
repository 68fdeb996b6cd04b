// The branch tool's drawing: a fan of new symbols joined to one symbol of a
// sheet, in one of six layouts, each item with its glued flow line (side to
// side as the layout wants) and its optional label. On a sheet without
// symbols it first draws the symbol to join from. A run is one entry of the
// workbook's undo list ("Nivarel: Insert Branch"); afterwards the cell the
// user would type next is selected and LastShapeName names the item the live
// run goes on from. Failures are logged under "frmInsertTree" with the
// procedure's name; items drawn before a failure stay.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CConfig.h"
#include "CShapeFormatter.h"
#include "CSymbolData.h"
#include "Range.h"
#include "Shape.h"
#include "Worksheet.h"

namespace nivarel::tools {

// One item of the fan.
struct BranchItem {
  int symbol_id = 60;  // the shape type less 1
  bool dashed_line = false;
  std::string symbol_text;   // "|" becomes a line break
  std::string branch_label;  // on the item's flow line; "" for none
};

enum class BranchLayout { kStandard, kInverted, kLeft, kRight, kLeftHanging, kRightHanging };

// Where a new base symbol goes and what it is.
struct BaseShape {
  std::string text;  // "|" becomes a line break
  int symbol_id = 60;
  std::string cell;  // "C3"
};

class BranchInserter {
 public:
  // Loads the settings and the symbol rules.
  explicit BranchInserter(const office::Worksheet& ws);

  // Draws the fan of items joined to from, or to a new base symbol when
  // base is given, with spacing grid units between items. False when there
  // was nothing to join from.
  bool AddBranches(std::optional<office::Shape> from, const std::optional<BaseShape>& base, BranchLayout layout,
                   int spacing, const std::vector<BranchItem>& items);

  // The symbol to go on from: the base symbol or the fan's first item
  // (standard and inverted) or last item (the side and hanging layouts).
  const std::string& LastShapeName() const { return lastShapeName_; }

 private:
  std::optional<office::Shape> AddBaseShape(const BaseShape& base);
  void AddStandardBranch(office::Shape& last, const std::vector<BranchItem>& items, bool upward);
  void AddSideBranch(office::Shape& last, const std::vector<BranchItem>& items, bool left);
  void AddHangingBranch(office::Shape& last, const std::vector<BranchItem>& items, bool left);
  void AddLabel(const std::string& label, office::Shape& shape, int side);
  // Draws one item at a cell, sized within widthLimit, joined from last.
  std::optional<office::Shape> AddItem(office::Shape& last, const BranchItem& item, int column, int row,
                                       int widthLimit, int fromSide, int toSide);
  int Width(const BranchItem& item) const;
  static bool AnyLabel(const std::vector<BranchItem>& items);
  std::string Address(int column, int row) const;

  office::Worksheet ws_;
  rules::CConfig config_;
  rules::CSymbolData symbols_;
  shapes::CShapeFormatter formatter_;
  int spacing_ = 2;
  std::string lastShapeName_;
  std::optional<office::Range> next_;  // the cell to select afterwards
};

}  // namespace nivarel::tools
