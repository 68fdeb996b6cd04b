// The names of one sheet's shapes, group members included, kept as the layer
// adds, deletes, renames and groups shapes, so that choosing a fresh name,
// finding a shape by name and refusing a taken name need no walk over the
// sheet. Calc tells nobody outside it when shapes come and go, so at each use
// the index checks the sheet's count of shapes and which shape is on top (a
// new shape goes on top) and reads the sheet again when either is not what it
// last knew (shapes drawn or deleted by the user, undo and redo); a shape
// found by name is checked to still carry that name on the sheet. Used on
// the office's thread only, inside the layer.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "Uno.h"

namespace nivarel::office {

class ShapeIndex {
 public:
  // The index of sheet's drawing, up to date with the sheet's count.
  static ShapeIndex& Of(const SheetRef& sheet);

  // The shape now named name on the sheet, or null.
  Reference<css::drawing::XShape> Find(const std::string& name);
  bool Taken(const std::string& name) const { return byName_.count(name) > 0; }
  // "word n" with the first n from the count of shapes up that is free.
  std::string FreshName(const std::string& word) const;

  // What the layer did: a shape added to the sheet's top level with its
  // name; a top-level shape that is not a group removed; a shape renamed.
  void Added(const Reference<css::drawing::XShape>& shape, const std::string& name);
  void Removed(const std::string& name);
  void Renamed(const Reference<css::drawing::XShape>& shape, const std::string& from, const std::string& to);
  // The layer changed the drawing order.
  void Reordered() { top_ = Top(); }
  // Anything else (grouping, ungrouping, deleting a group): read the sheet
  // again at the next use.
  void Forget() { topCount_ = -1; }
  static void Forget(const SheetRef& sheet);

 private:
  explicit ShapeIndex(Reference<css::drawing::XDrawPage> page) : page_(std::move(page)) {}
  void Read();
  Reference<css::drawing::XShape> Top() const;

  Reference<css::drawing::XDrawPage> page_;
  int topCount_ = -1;  // the sheet's count of top-level shapes when last known
  int allCount_ = 0;   // with group members
  Reference<css::drawing::XShape> top_;  // the shape on top when last known
  std::map<std::string, Reference<css::drawing::XShape>> byName_;  // unnamed shapes left out
};

}  // namespace nivarel::office
