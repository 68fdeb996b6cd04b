#include "BranchInserter.h"

#include <algorithm>
#include <cmath>

#include "AddedShapes.h"
#include "Application.h"
#include "CFlowLineAdder.h"
#include "CIniSymbolDataAccess.h"
#include "CShapeAdder.h"
#include "CShapeDimensions.h"
#include "MBranchLabels.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MUtilities.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shapes.h"
#include "Text.h"
#include "TextFrame.h"
#include "UndoList.h"

namespace nivarel::tools {

namespace {

const char kSource[] = "frmInsertTree";
constexpr int kTop = 0, kRight = 1, kBottom = 2, kLeft = 3;  // sides of a symbol
constexpr int kFirstRow = 2, kFirstColumn = 2;  // the fan keeps off the sheet's first row and column

std::string WithLineBreaks(std::string text) {
  std::replace(text.begin(), text.end(), '|', '\n');
  return text;
}

// The middle of a shape's cells, the remainder dropped.
int MidColumn(const office::Shape& s) {
  int first = s.TopLeftCell().Column();
  return first + (s.BottomRightCell().Column() - first) / 2;
}
int MidRow(const office::Shape& s) {
  int first = s.TopLeftCell().Row();
  return first + (s.BottomRightCell().Row() - first) / 2;
}

// The screen stays still while the fan is drawn and comes back however the
// drawing ends.
class StillScreen {
 public:
  StillScreen() { host::ExcelApp->SetScreenUpdating(false); }
  ~StillScreen() {
    try {
      host::ExcelApp->SetScreenUpdating(true);
    } catch (...) {
    }
  }
};

}  // namespace

BranchInserter::BranchInserter(const office::Worksheet& ws) : ws_(ws) {
  try {
    config_.LoadConfigData();
    rules::RuleTable prefixes, keywords;
    rules::CIniSymbolDataAccess().InitializeRules(symbols_, prefixes, keywords);
  } catch (...) {
    host::ErrorHandler(kSource, "AddBranches", false);
  }
}

bool BranchInserter::AddBranches(std::optional<office::Shape> from, const std::optional<BaseShape>& base,
                                 BranchLayout layout, int spacing, const std::vector<BranchItem>& items) {
  if (items.empty()) return true;
  bool drawn = false;
  try {
    if (!host::ExcelApp) return false;
    spacing_ = spacing;
    next_.reset();
    StillScreen still;
    // The symbols are drawn unrecorded and recorded whole, so that Ctrl+Z
    // takes the fan back in one step.
    office::UndoList::Entry entry(ws_.Parent(), "Nivarel: Insert Branch");
    office::AddedShapes added(ws_);
    {
      office::UndoList::Pause drawing(ws_.Parent());
      std::optional<office::Shape> last = from;
      if (base) {
        last = AddBaseShape(*base);
      } else if (last) {
        lastShapeName_ = last->Name();
      }
      if (last) {
        switch (layout) {
          case BranchLayout::kStandard: AddStandardBranch(*last, items, false); break;
          case BranchLayout::kInverted: AddStandardBranch(*last, items, true); break;
          case BranchLayout::kLeft: AddSideBranch(*last, items, true); break;
          case BranchLayout::kRight: AddSideBranch(*last, items, false); break;
          case BranchLayout::kLeftHanging: AddHangingBranch(*last, items, true); break;
          case BranchLayout::kRightHanging: AddHangingBranch(*last, items, false); break;
        }
        drawn = true;
      }
    }
    if (next_) next_->Select();
  } catch (...) {
    host::ErrorHandler(kSource, "AddBranches", false);
  }
  return drawn;
}

std::optional<office::Shape> BranchInserter::AddBaseShape(const BaseShape& base) {
  try {
    std::string text = WithLineBreaks(base.text);
    std::optional<office::Worksheet> sheet = ws_;
    auto shape = shapes::CShapeAdder().AddShape(sheet, symbols_, config_, formatter_, text, rules::Trim(base.cell),
                                                static_cast<int16_t>(base.symbol_id + 1), "");
    if (!shape) return std::nullopt;
    shapes::CShapeDimensions().SetShapeDimensions(*shape, config_, symbols_, symbols_.GetMaxWidth(), false, text);
    lastShapeName_ = shape->Name();
    return shape;
  } catch (...) {
    host::ErrorHandler(kSource, "AddBaseShape", false);
    return std::nullopt;
  }
}

void BranchInserter::AddStandardBranch(office::Shape& last, const std::vector<BranchItem>& items, bool upward) {
  const char* procedure = "AddStandardBranch";
  try {
    int s = spacing_;
    int n = static_cast<int>(items.size());
    int gap = std::max(s, 2);
    int total = 0;
    for (const BranchItem& item : items) total += Width(item) + s;
    int column = n > 1 ? std::max(MidColumn(last) - (total - s) / 2, kFirstColumn) : last.TopLeftCell().Column();
    int row = 0;
    if (upward) {
      row = last.TopLeftCell().Row() - (s + 2) - (AnyLabel(items) ? 1 : 0);
      row = std::max(row, kFirstRow);
    } else {
      row = last.BottomRightCell().Row() + gap + (AnyLabel(items) ? 1 : 0) + (host::ExcelVersion >= 12 ? 1 : 0);
    }
    std::vector<office::Shape> drawn;
    double tallest = 0;
    for (const BranchItem& item : items) {
      auto shape = upward ? AddItem(last, item, column, row, total, kTop, kBottom)
                          : AddItem(last, item, column, row, total, kBottom, kTop);
      if (!shape) continue;
      std::string label = rules::Trim(item.branch_label);
      if (!label.empty()) AddLabel(label, *shape, upward ? kBottom : kTop);
      column = shape->BottomRightCell().Column() + s;
      if (drawn.empty()) {
        lastShapeName_ = shape->Name();
        next_ = ws_.Cells(shape->BottomRightCell().Row() + 2, shape->TopLeftCell().Column());
      }
      tallest = std::max(tallest, shape->Height());
      drawn.push_back(*shape);
    }
    // An inverted fan whose tallest item is over two grid units high moves to
    // the sheet's second row: the place it should move to was never read.
    double targetTop = 0;
    int extra = 0;
    if (upward) {
      extra = static_cast<int>(std::nearbyint(tallest / host::GlobalRowHeight)) - 2;
      double secondRow = ws_.GetRange("A2").Top();
      if (targetTop < secondRow) targetTop = secondRow;
    }
    for (office::Shape& shape : drawn) {
      shape.SetHeight(tallest);
      if (extra > 0) shape.SetTop(targetTop);
    }
  } catch (...) {
    host::ErrorHandler(kSource, procedure, false);
  }
}

void BranchInserter::AddSideBranch(office::Shape& last, const std::vector<BranchItem>& items, bool left) {
  const char* procedure = left ? "AddLeftBranch" : "AddRightBranch";
  try {
    int s = spacing_;
    int n = static_cast<int>(items.size());
    int widest = 0;
    for (const BranchItem& item : items) widest = std::max(widest, Width(item));
    int label = AnyLabel(items) ? 1 : 0;
    int column = left ? std::max(last.TopLeftCell().Column() - widest - 3 - label, kFirstColumn)
                      : last.BottomRightCell().Column() + 3 + label;
    int row = std::max(MidRow(last) - (n * 2 + (n - 1) * s) / 2, kFirstRow);
    std::vector<std::pair<office::Shape, std::string>> drawn;
    for (const BranchItem& item : items) {
      auto shape = left ? AddItem(last, item, column, row, widest, kLeft, kRight)
                        : AddItem(last, item, column, row, widest, kRight, kLeft);
      if (!shape) continue;
      row = shape->BottomRightCell().Row() + s;
      drawn.emplace_back(*shape, rules::Trim(item.branch_label));
    }
    if (drawn.empty()) return;
    office::Shape& lastItem = drawn.back().first;
    lastShapeName_ = lastItem.Name();
    next_ = ws_.Cells(row, lastItem.TopLeftCell().Column());
    // The stack is centred on the symbol it hangs from, and kept off the
    // sheet's first row.
    office::Shape& first = drawn.front().first;
    int firstRow = first.TopLeftCell().Row();
    double middle = last.TopLeftCell().Row() + (last.BottomRightCell().Row() - last.TopLeftCell().Row()) / 2.0;
    double stack = lastItem.BottomRightCell().Row() - firstRow;
    int shift = firstRow - static_cast<int>(std::nearbyint(middle - stack / 2));
    if (firstRow - shift < kFirstRow) shift = firstRow - kFirstRow;
    for (auto& [shape, text] : drawn) {
      shape.SetTop(shape.TopLeftCell().Offset(-shift, 0).Top());
      if (!text.empty()) AddLabel(text, shape, left ? kRight : kLeft);
    }
  } catch (...) {
    host::ErrorHandler(kSource, procedure, false);
  }
}

void BranchInserter::AddHangingBranch(office::Shape& last, const std::vector<BranchItem>& items, bool left) {
  const char* procedure = left ? "AddLeftHangingBranch" : "AddRightHangingBranch";
  try {
    int s = spacing_;
    int widest = 0;
    for (const BranchItem& item : items) widest = std::max(widest, Width(item));
    int middle = MidColumn(last);
    int column = left ? std::max(middle - widest - 3, kFirstColumn) : middle + 3;
    int row = last.BottomRightCell().Row() + s + (host::ExcelVersion >= 12 ? 1 : 0);
    std::optional<office::Shape> lastItem;
    for (const BranchItem& item : items) {
      auto shape = left ? AddItem(last, item, column, row, widest, kBottom, kRight)
                        : AddItem(last, item, column, row, widest, kBottom, kLeft);
      if (!shape) continue;
      std::string label = rules::Trim(item.branch_label);
      if (!label.empty()) AddLabel(label, *shape, left ? kRight : kLeft);
      row = shape->BottomRightCell().Row() + s;
      lastItem = shape;
    }
    if (!lastItem) return;
    lastShapeName_ = lastItem->Name();
    next_ = ws_.Cells(row, lastItem->TopLeftCell().Column());
  } catch (...) {
    host::ErrorHandler(kSource, procedure, false);
  }
}

std::optional<office::Shape> BranchInserter::AddItem(office::Shape& last, const BranchItem& item, int column,
                                                     int row, int widthLimit, int fromSide, int toSide) {
  std::string text = WithLineBreaks(item.symbol_text);
  std::optional<office::Worksheet> sheet = ws_;
  auto shape = shapes::CShapeAdder().AddShape(sheet, symbols_, config_, formatter_, text, Address(column, row),
                                              static_cast<int16_t>(item.symbol_id + 1), "");
  if (!shape) return std::nullopt;
  shapes::CShapeDimensions().SetShapeDimensions(*shape, config_, symbols_, widthLimit, false, text);
  shapes::CFlowLineAdder().AddUserDefinedFlowLine(ws_, last, *shape, static_cast<int16_t>(fromSide),
                                                  static_cast<int16_t>(toSide), config_, item.dashed_line);
  return shape;
}

void BranchInserter::AddLabel(const std::string& label, office::Shape& shape, int side) {
  try {
    office::Range topLeft = shape.TopLeftCell(), bottomRight = shape.BottomRightCell();
    double left = 0, top = 0;
    switch (side) {
      case kTop: left = topLeft.Left(); top = topLeft.Offset(-2, 0).Top(); break;
      case kRight: left = bottomRight.Offset(0, 3).Left(); top = topLeft.Top(); break;
      case kBottom: left = topLeft.Left(); top = bottomRight.Offset(1, 0).Top(); break;
      default: left = topLeft.Offset(0, -3).Left(); top = topLeft.Top(); break;
    }
    office::Shapes shapes = ws_.GetShapes();
    office::Shape box = shapes::AddFreeLabel(shapes, left, top, label, config_);
    double quarterShort = 0.75 * (topLeft.Offset(0, 1).Left() - topLeft.Left());
    double centreX = shape.Left() + shape.Width() / 2, centreY = shape.Top() + shape.Height() / 2;
    office::TextFrame frame = box.GetTextFrame();
    if (side == kTop || side == kBottom) {
      box.SetLeft(centreX - box.Width() / 2);
      frame.SetHorizontalAlignment(office::xlCenter);
    } else if (side == kRight) {
      box.SetLeft(left - quarterShort);
      box.SetTop(centreY - box.Height() / 2);
      frame.SetHorizontalAlignment(office::xlLeft);
    } else {
      box.SetLeft(left - box.Width() + quarterShort);
      box.SetTop(centreY - box.Height() / 2);
      frame.SetHorizontalAlignment(office::xlRight);
    }
  } catch (...) {
    host::ErrorHandler(kSource, "AddLabel", false);
  }
}

int BranchInserter::Width(const BranchItem& item) const {
  return symbols_.GetWidth(static_cast<int16_t>(item.symbol_id + 1));
}

bool BranchInserter::AnyLabel(const std::vector<BranchItem>& items) {
  return std::any_of(items.begin(), items.end(),
                     [](const BranchItem& item) { return !rules::Trim(item.branch_label).empty(); });
}

std::string BranchInserter::Address(int column, int row) const {
  return host::ColumnToAlpha(column) + std::to_string(row);
}

}  // namespace nivarel::tools
