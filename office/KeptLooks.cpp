#include "KeptLooks.h"

#include <algorithm>
#include <map>
#include <vector>

#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/beans/XPropertySetInfo.hpp>
#include <com/sun/star/container/XChild.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "Border.h"
#include "ShapeIndex.h"
#include "ShapeRecipe.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

// The layer's own values kept with a shape (its style id among them).
constexpr char kAttributes[] = "UserDefinedAttributes";

// Properties that are no part of a look: the shape's name, place, size and
// glue, and the stacking order, which is kept apart.
bool NotALook(const OUString& name) {
  static const char* const names[] = {
      "Name", "ZOrder", "Position", "Size", "Transformation", "HoriOrientPosition", "VertOrientPosition",
      "StartShape", "EndShape", "StartGluePointIndex", "EndGluePointIndex", "StartPosition", "EndPosition",
      "PolyPolygon", "PolyPolygonBezier", "Geometry", "EdgeLine1Delta",
      "EdgeLine2Delta", "EdgeLine3Delta", "EdgeNode1HorzDist", "EdgeNode1VertDist", "EdgeNode2HorzDist",
      "EdgeNode2VertDist", "LayerID", "LayerName", "RotateAngle", "ShearAngle"};
  for (const char* n : names)
    if (name.equalsAscii(n)) return true;
  return false;
}

// One shape as read: its properties, its place in the walk through the
// sheet and its groups, and where it stands when it is a top-level shape.
struct Reading {
  Reference<css::drawing::XShape> shape;
  const void* key = nullptr;  // the office object's identity
  // The layer's handle, which follows the shape when the layer groups or
  // ungroups it and the office makes its object anew.
  std::shared_ptr<ShapeImpl> handle;
  size_t place = 0;
  OUString type;
  OUString name;
  bool topLevel = false;
  sal_Int32 z = 0;
  std::vector<OUString> properties;
  std::vector<uno::Any> values;
};

const void* KeyOf(const Reference<css::drawing::XShape>& shape) {
  return Reference<uno::XInterface>(shape, uno::UNO_QUERY).get();
}


Reading Read(const Reference<css::drawing::XShape>& shape, const Reference<uno::XInterface>& page) {
  Reading r;
  r.shape = shape;
  r.key = KeyOf(shape);
  r.type = shape->getShapeType();
  r.name = NameOf(shape);
  Reference<css::beans::XPropertySet> ps(shape, uno::UNO_QUERY_THROW);
  Reference<css::container::XChild> child(shape, uno::UNO_QUERY);
  r.topLevel = child.is() && Reference<uno::XInterface>(child->getParent(), uno::UNO_QUERY) == page;
  ps->getPropertyValue("ZOrder") >>= r.z;
  for (const auto& p : ps->getPropertySetInfo()->getProperties()) {
    if (p.Attributes & css::beans::PropertyAttribute::READONLY) continue;
    if (NotALook(p.Name)) continue;
    // Objects (bitmaps, the cell anchor) are read anew as other objects each
    // time and can't be told apart; the layer's attributes are compared by content.
    if (p.Type.getTypeClass() == uno::TypeClass_INTERFACE && !p.Name.equalsAscii(kAttributes)) continue;
    r.properties.push_back(p.Name);
  }
  uno::Sequence<OUString> names(r.properties.data(), static_cast<sal_Int32>(r.properties.size()));
  Reference<css::beans::XMultiPropertySet> multi(shape, uno::UNO_QUERY);
  bool read = false;
  if (multi.is()) {
    try {
      auto values = multi->getPropertyValues(names);
      if (values.getLength() == names.getLength()) {
        r.values.assign(values.begin(), values.end());
        read = true;
      }
    } catch (const uno::Exception&) {
    }
  }
  if (!read) {
    r.values.clear();
    for (const auto& name : r.properties) {
      try {
        r.values.push_back(ps->getPropertyValue(name));
      } catch (const uno::Exception&) {
        r.values.emplace_back();  // a property this kind of shape only pretends to have
      }
    }
  }
  return r;
}

// With handles, for a reading that the layer's work is to be followed from.
std::vector<Reading> ReadSheet(const std::shared_ptr<SheetRef>& sheet, bool handles) {
  auto page = sheet->Page();
  std::vector<Reference<css::drawing::XShape>> all;
  CollectShapes(Reference<css::drawing::XShapes>(page, uno::UNO_QUERY_THROW), all);
  std::vector<Reading> out;
  Reference<uno::XInterface> pageId(page, uno::UNO_QUERY);
  for (size_t i = 0; i < all.size(); ++i) {
    if (all[i]->getShapeType().equalsAscii(kGroupShape)) continue;
    out.push_back(Read(all[i], pageId));
    out.back().place = i;
    if (handles) out.back().handle = ShapeFor(sheet, all[i]);
  }
  return out;
}

// The layer's attributes: the same names with the same values.
bool SameAttributes(const uno::Any& a, const uno::Any& b) {
  Reference<css::container::XNameAccess> x(a, uno::UNO_QUERY), y(b, uno::UNO_QUERY);
  if (!x.is() || !y.is()) return x.is() == y.is();
  auto names = x->getElementNames();
  if (names.getLength() != y->getElementNames().getLength()) return false;
  for (const auto& n : names)
    if (!y->hasByName(n) || x->getByName(n) != y->getByName(n)) return false;
  return true;
}

// What a user action changed on one shape, and where the shape stood in the
// walk through the sheet and its groups before and after.
struct Change {
  const void* keyBefore = nullptr;  // the office objects
  const void* keyAfter = nullptr;
  size_t placeBefore = 0, placeAfter = 0;
  OUString type;
  OUString nameBefore, nameAfter;
  std::vector<OUString> properties;
  std::vector<uno::Any> before, after;
  bool restacked = false;
  sal_Int32 zBefore = 0, zAfter = 0;
};

// The shape a change is about, as the sheet holds it now. The office puts
// the sheet back as it was before or after the action when it undoes or
// redoes the rest of the entry, so the shape stands at its place in the walk
// then; checked by kind and name, and else found as the same object or by a
// name no other shape has. Null when there is none.
Reference<css::drawing::XShape> Locate(const Change& change, bool before,
                                       const std::vector<Reference<css::drawing::XShape>>& now,
                                       const std::vector<const void*>& keys, const std::vector<OUString>& names) {
  size_t place = before ? change.placeBefore : change.placeAfter;
  const OUString& name = before ? change.nameBefore : change.nameAfter;
  if (place < now.size() && names[place] == name && now[place]->getShapeType() == change.type) return now[place];
  const void* key = before ? change.keyBefore : change.keyAfter;
  for (size_t i = 0; i < now.size(); ++i)
    if (keys[i] == key) return now[i];
  if (name.isEmpty() || std::count(names.begin(), names.end(), name) != 1) return {};
  return now[std::find(names.begin(), names.end(), name) - names.begin()];
}

std::vector<Change> Compare(const std::vector<Reading>& before, const std::vector<Reading>& after) {
  std::vector<Change> changes;
  std::map<const void*, const Reading*> byKey;
  std::map<OUString, std::vector<const Reading*>> byName;
  for (const auto& a : after) {
    byKey[a.key] = &a;
    byName[a.name].push_back(&a);
  }
  for (const auto& b : before) {
    const Reading* a = nullptr;
    if (auto it = byKey.find(b.handle ? KeyOf(b.handle->shape) : b.key); it != byKey.end()) a = it->second;
    else if (auto named = byName.find(b.name); !b.name.isEmpty() && named != byName.end() && named->second.size() == 1)
      a = named->second.front();
    if (!a) continue;
    Change c;
    c.keyBefore = b.key;
    c.keyAfter = a->key;
    c.placeBefore = b.place;
    c.placeAfter = a->place;
    c.type = a->type;
    c.nameBefore = b.name;
    c.nameAfter = a->name;
    for (size_t i = 0; i < b.properties.size(); ++i) {
      // The same kind of shape lists its properties in the same order.
      size_t j = i < a->properties.size() && a->properties[i] == b.properties[i]
                     ? i
                     : std::find(a->properties.begin(), a->properties.end(), b.properties[i]) - a->properties.begin();
      if (j == a->properties.size()) continue;
      const uno::Any& now = a->values[j];
      bool same = b.properties[i].equalsAscii(kAttributes) ? SameAttributes(b.values[i], now) : b.values[i] == now;
      if (same || !b.values[i].hasValue()) continue;
      c.properties.push_back(b.properties[i]);
      c.before.push_back(b.values[i]);
      c.after.push_back(now);
    }
    c.restacked = b.topLevel && a->topLevel && b.z != a->z;
    c.zBefore = b.z;
    c.zAfter = a->z;
    if (!c.properties.empty() || c.restacked) changes.push_back(std::move(c));
  }
  return changes;
}

// Sets the looks of before or after, unrecorded: called while the office
// undoes or redoes, a record made now would clear the entry being undone
// from the list.
void Apply(const SheetRef& sheet, const std::vector<Change>& changes, bool before) {
  Reference<css::document::XUndoManagerSupplier> supplier(sheet.document, uno::UNO_QUERY_THROW);
  auto manager = supplier->getUndoManager();
  int taken = 0;
  KeepUndoListLocked(manager, taken);
  try {
    auto page = sheet.Page();
    std::vector<Reference<css::drawing::XShape>> now;
    CollectShapes(Reference<css::drawing::XShapes>(page, uno::UNO_QUERY_THROW), now);
    std::vector<const void*> keys;
    std::vector<OUString> names;
    for (const auto& s : now) {
      keys.push_back(KeyOf(s));
      names.push_back(NameOf(s));
    }
    Reference<uno::XInterface> pageId(page, uno::UNO_QUERY);
    std::vector<std::pair<sal_Int32, Reference<css::beans::XPropertySet>>> stack;
    for (const auto& c : changes) {
      Reference<css::beans::XPropertySet> ps(Locate(c, before, now, keys, names), uno::UNO_QUERY);
      if (!ps.is()) continue;
      const auto& values = before ? c.before : c.after;
      for (size_t i = 0; i < c.properties.size(); ++i) {
        try {
          ps->setPropertyValue(c.properties[i], values[i]);
        } catch (const uno::Exception&) {
          // A value the shape no longer takes; the others still count.
        }
      }
      Reference<css::container::XChild> child(ps, uno::UNO_QUERY);
      if (c.restacked && child.is() && Reference<uno::XInterface>(child->getParent(), uno::UNO_QUERY) == pageId)
        stack.emplace_back(before ? c.zBefore : c.zAfter, ps);
    }
    // From the bottom up, so that each shape lands where it stood.
    std::sort(stack.begin(), stack.end(), [](const auto& x, const auto& y) { return x.first < y.first; });
    for (const auto& [z, ps] : stack) ps->setPropertyValue("ZOrder", uno::Any(z));
  } catch (...) {
    for (; taken > 0; --taken) manager->unlock();
    throw;
  }
  for (; taken > 0; --taken) manager->unlock();
  ShapeIndex::Forget(sheet);
}

// What the user action changed, filled in when it ends.
struct Looks {
  std::shared_ptr<SheetRef> sheet;
  std::vector<Reading> before;
  std::vector<Change> changes;
};

// Called back by the office's undo list; nothing may escape into it. The
// entry holds two: the first puts the former looks back on Ctrl+Z once the
// rest of the entry is undone, the last the new looks on Ctrl+Y once the rest
// is done again, each on the shapes as they then stand (grouped as they were
// before or after the action).
class LooksAction : public cppu::WeakImplHelper1<css::document::XUndoAction> {
 public:
  LooksAction(std::shared_ptr<Looks> looks, bool first) : looks_(std::move(looks)), first_(first) {}

  OUString SAL_CALL getTitle() override { return "Looks"; }
  // Called by the office. A failure leaves the looks as they are.
  void SAL_CALL undo() override {
    if (!first_) return;
    OfficeThreadScope scope;
    AtBorder("KeptLooks", "Undo", [&] { Apply(*looks_->sheet, looks_->changes, true); });
  }
  void SAL_CALL redo() override {
    if (first_) return;
    OfficeThreadScope scope;
    AtBorder("KeptLooks", "Redo", [&] { Apply(*looks_->sheet, looks_->changes, false); });
  }

 private:
  std::shared_ptr<Looks> looks_;
  bool first_;
};


}  // namespace

struct KeptLooks::State {
  std::shared_ptr<Looks> looks;
};

KeptLooks::KeptLooks(const Worksheet& sheet) : state_(std::make_unique<State>()) {
  Call("KeptLooks", [&] {
    auto looks = std::make_shared<Looks>();
    looks->sheet = sheet.Ref();
    looks->before = ReadSheet(looks->sheet, true);
    ManagerOf(looks->sheet->document)->addUndoAction(new LooksAction(looks, true));
    state_->looks = looks;
  });
}

KeptLooks::~KeptLooks() {
  try {
    if (!state_->looks) return;
    Call("KeptLooks", [&] {
      Looks& looks = *state_->looks;
      looks.changes = Compare(looks.before, ReadSheet(looks.sheet, false));
      looks.before.clear();
      ManagerOf(looks.sheet->document)->addUndoAction(new LooksAction(state_->looks, false));
    });
  } catch (...) {
    // Without the changes, Ctrl+Z and Ctrl+Y leave the looks as they find them.
  }
}

}  // namespace nivarel::office
