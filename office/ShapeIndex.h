// The names of one sheet's shapes, group members included, kept as the layer
// adds, deletes, renames and groups shapes, so that choosing a fresh name,
// finding a shape by name and refusing a taken name need no walk over the
// sheet. Calc tells nobody outside it when shapes come and go, so at each use
// the index checks the sheet's count of shapes and which shape is on top (a
// new shape goes on top) and reads the sheet again when either is not what it
// last knew (shapes drawn or deleted by the user, undo and redo); a shape
// found by name is checked to still carry that name on the sheet. The index
// also keeps a journal of the shapes the layer added, so that what a piece of
// work added can be told without a walk over the sheet; a reading of the
// sheet for a change the layer did not make starts a new journal. Used on
// the office's thread only, inside the layer.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

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
  // The layer moved shape up or down the drawing order.
  void Reordered(const Reference<css::drawing::XShape>& shape);
  // Anything else (grouping, ungrouping, deleting a group): read the sheet
  // again at the next use.
  void Forget() {
    topCount_ = -1;
    forgotten_ = true;
  }
  static void Forget(const SheetRef& sheet);
  // The layer made group out of top-level shapes.
  static void Grouped(const SheetRef& sheet, const Reference<css::drawing::XShape>& group);

  // A place in the journal.
  struct Mark {
    long index = 0;  // which index: each has a serial number of its own
    long journal = -1;
    size_t position = 0;
    size_t reorders = 0;  // moves in the drawing order by the layer, in this journal
  };
  Mark Now() const { return Mark{serial_, journal_, added_.size(), moved_.size()}; }
  // Whether the layer has moved a shape it had not added since mark up or
  // down the drawing order.
  bool ReorderedSince(const Mark& mark) const;
  // The shapes the layer added since mark that are top-level shapes of the
  // sheet now, in drawing order, or false when the journal was started anew
  // meanwhile.
  bool AddedSince(const Mark& mark, std::vector<Reference<css::drawing::XShape>>& added) const;

 private:
  ShapeIndex(Reference<css::drawing::XDrawPage> page, long serial) : page_(std::move(page)), serial_(serial) {}
  // The index of page, or null; with the indexes' lock held.
  static ShapeIndex* Find(const Reference<css::drawing::XDrawPage>& page);
  void Read();
  Reference<css::drawing::XShape> Top() const;

  Reference<css::drawing::XDrawPage> page_;
  long serial_;
  int topCount_ = -1;  // the sheet's count of top-level shapes when last known
  int allCount_ = 0;   // with group members
  Reference<css::drawing::XShape> top_;  // the shape on top when last known
  std::map<std::string, Reference<css::drawing::XShape>> byName_;  // unnamed shapes left out
  long journal_ = 0;        // which journal: one per reading of changes the layer did not make
  bool forgotten_ = false;  // the next reading is for a change the layer made
  std::vector<long> moved_;  // per move, the place in added_ of the shape moved, or -1
  std::vector<Reference<css::drawing::XShape>> added_;
};

}  // namespace nivarel::office
