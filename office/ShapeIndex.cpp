#include "ShapeIndex.h"

#include <algorithm>

#include <com/sun/star/container/XChild.hpp>

namespace nivarel::office {

namespace {

std::string NameOf(const Reference<css::drawing::XShape>& s) {
  Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY);
  return ps.is() ? ToUtf8(GetProp<OUString>(ps, "Name")) : std::string();
}

// The indexes by page. Pages are told apart by comparing them (which asks
// both for their identity at that moment), never by a pointer kept from
// earlier: through a remote bridge the object that answers for a page's
// identity can be released and made anew at another address while the page
// lives on.
std::mutex indexesMutex;
std::vector<std::unique_ptr<ShapeIndex>>& Indexes() {
  static std::vector<std::unique_ptr<ShapeIndex>> indexes;
  return indexes;
}
long lastSerial = 0;

}  // namespace

ShapeIndex& ShapeIndex::Of(const SheetRef& sheet) {
  auto page = sheet.Page();
  ShapeIndex* index;
  {
    std::lock_guard<std::mutex> lock(indexesMutex);
    index = Find(page);
    if (!index) {
      Indexes().emplace_back(new ShapeIndex(page, ++lastSerial));
      index = Indexes().back().get();
    }
  }
  if (page->getCount() != index->topCount_ || index->Top() != index->top_) index->Read();
  return *index;
}

ShapeIndex* ShapeIndex::Find(const Reference<css::drawing::XDrawPage>& page) {
  for (auto& index : Indexes())
    if (index->page_ == page) return index.get();
  return nullptr;
}

Reference<css::drawing::XShape> ShapeIndex::Top() const {
  sal_Int32 n = page_->getCount();
  return n > 0 ? Reference<css::drawing::XShape>(page_->getByIndex(n - 1), uno::UNO_QUERY) : nullptr;
}

void ShapeIndex::Forget(const SheetRef& sheet) {
  std::lock_guard<std::mutex> lock(indexesMutex);
  if (ShapeIndex* index = Find(sheet.Page())) index->Forget();
}

void ShapeIndex::Read() {
  if (!forgotten_) {
    ++journal_;
    added_.clear();
    moved_.clear();
  }
  forgotten_ = false;
  byName_.clear();
  allCount_ = 0;
  std::function<void(const Reference<css::drawing::XShapes>&)> walk = [&](const Reference<css::drawing::XShapes>& shapes) {
    for (sal_Int32 i = 0, n = shapes->getCount(); i < n; ++i) {
      Reference<css::drawing::XShape> s(shapes->getByIndex(i), uno::UNO_QUERY);
      if (!s.is()) continue;
      ++allCount_;
      std::string name = NameOf(s);
      if (!name.empty()) byName_.emplace(name, s);
      Reference<css::drawing::XShapes> group(s, uno::UNO_QUERY);
      if (group.is()) walk(group);
    }
  };
  Reference<css::drawing::XShapes> top(page_, uno::UNO_QUERY_THROW);
  walk(top);
  topCount_ = page_->getCount();
  top_ = Top();
}

Reference<css::drawing::XShape> ShapeIndex::Find(const std::string& name) {
  for (int pass = 0; pass < 2; ++pass) {
    if (pass == 1) Read();  // renamed or removed behind the layer's back
    auto it = byName_.find(name);
    if (it == byName_.end()) continue;
    // Still on the sheet under that name?
    Reference<css::container::XChild> child(it->second, uno::UNO_QUERY);
    if (child.is() && child->getParent().is() && NameOf(it->second) == name) return it->second;
  }
  return {};
}

std::string ShapeIndex::FreshName(const std::string& word) const {
  for (int n = allCount_ + 1;; ++n) {
    std::string candidate = word + " " + std::to_string(n);
    if (!Taken(candidate)) return candidate;
  }
}

void ShapeIndex::Grouped(const SheetRef& sheet, const Reference<css::drawing::XShape>& group) {
  std::lock_guard<std::mutex> lock(indexesMutex);
  ShapeIndex* index = Find(sheet.Page());
  if (!index) return;
  index->added_.push_back(group);
  index->Forget();
}

void ShapeIndex::Reordered(const Reference<css::drawing::XShape>& shape) {
  top_ = Top();
  long at = static_cast<long>(added_.size()) - 1;
  while (at >= 0 && added_[static_cast<size_t>(at)] != shape) --at;
  moved_.push_back(at);
}

bool ShapeIndex::ReorderedSince(const Mark& mark) const {
  if (mark.index != serial_ || mark.journal != journal_) return true;
  for (size_t i = mark.reorders; i < moved_.size(); ++i)
    if (moved_[i] < static_cast<long>(mark.position)) return true;
  return false;
}

bool ShapeIndex::AddedSince(const Mark& mark, std::vector<Reference<css::drawing::XShape>>& added) const {
  if (mark.index != serial_ || mark.journal != journal_ || mark.position > added_.size()) return false;
  Reference<uno::XInterface> page(page_, uno::UNO_QUERY);
  std::vector<std::pair<sal_Int32, Reference<css::drawing::XShape>>> ordered;
  for (size_t i = mark.position; i < added_.size(); ++i) {
    Reference<css::container::XChild> child(added_[i], uno::UNO_QUERY);
    if (!child.is() || Reference<uno::XInterface>(child->getParent(), uno::UNO_QUERY) != page) continue;
    ordered.emplace_back(GetProp<sal_Int32>(Reference<css::beans::XPropertySet>(added_[i], uno::UNO_QUERY_THROW),
                                            "ZOrder"),
                         added_[i]);
  }
  std::sort(ordered.begin(), ordered.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [z, s] : ordered) added.push_back(s);
  return true;
}

void ShapeIndex::Added(const Reference<css::drawing::XShape>& shape, const std::string& name) {
  added_.push_back(shape);
  if (topCount_ < 0) return;
  ++topCount_;
  ++allCount_;
  top_ = shape;
  if (!name.empty()) byName_[name] = shape;
}

void ShapeIndex::Removed(const std::string& name) {
  if (topCount_ < 0) return;
  --topCount_;
  --allCount_;
  top_ = Top();
  byName_.erase(name);
}

void ShapeIndex::Renamed(const Reference<css::drawing::XShape>& shape, const std::string& from,
                         const std::string& to) {
  auto it = byName_.find(from);
  if (it != byName_.end() && it->second == shape) byName_.erase(it);
  if (!to.empty()) byName_[to] = shape;
}

}  // namespace nivarel::office
