#include "AddedShapes.h"

#include <algorithm>
#include <vector>

#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/XPropertySetInfo.hpp>
#include <com/sun/star/container/XIdentifierContainer.hpp>
#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/drawing/GluePoint2.hpp>
#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/drawing/XGluePointsSupplier.hpp>
#include <com/sun/star/drawing/XShapeGrouper.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <cppuhelper/implbase1.hxx>

#include "Border.h"
#include "ShapeIndex.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

constexpr char kGroup[] = "com.sun.star.drawing.GroupShape";

// Properties that are put back on their own, or not at all.
bool SetApart(const OUString& name) {
  static const char* const names[] = {"ZOrder", "StartShape", "EndShape", "StartGluePointIndex",
                                      "EndGluePointIndex", "Name", "CustomShapeGeometry", "Transformation",
                                      "HoriOrientPosition", "VertOrientPosition", "Position", "Size"};
  for (const char* n : names)
    if (name.equalsAscii(n)) return true;
  return false;
}

// Everything needed to make a shape again as it was.
struct Recipe {
  OUString type;
  OUString name;
  uno::Any geometry;  // a custom shape's kind, set before anything else
  std::vector<css::beans::PropertyValue> properties;
  bool hasText = false;
  OUString text;
  std::vector<css::drawing::GluePoint2> gluePoints;  // the user's own, in order
  css::awt::Point position;
  css::awt::Size size;
  sal_Int32 z = 0;
  OUString startShape, endShape;
  sal_Int32 startGlue = -1, endGlue = -1;
  std::vector<Recipe> members;
};

Reference<css::document::XUndoManager> ManagerOf(const Reference<css::sheet::XSpreadsheetDocument>& document) {
  Reference<css::document::XUndoManagerSupplier> supplier(document, uno::UNO_QUERY_THROW);
  return supplier->getUndoManager();
}

OUString NameOf(const Reference<css::drawing::XShape>& shape) {
  Reference<css::beans::XPropertySet> ps(shape, uno::UNO_QUERY);
  OUString name;
  if (ps.is()) ps->getPropertyValue("Name") >>= name;
  return name;
}

Recipe Describe(const Reference<css::drawing::XShape>& shape) {
  Recipe r;
  r.type = shape->getShapeType();
  Reference<css::beans::XPropertySet> ps(shape, uno::UNO_QUERY_THROW);
  r.name = NameOf(shape);
  ps->getPropertyValue("ZOrder") >>= r.z;
  r.position = shape->getPosition();
  r.size = shape->getSize();
  if (r.type.equalsAscii(kGroup)) {
    Reference<css::drawing::XShapes> members(shape, uno::UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < members->getCount(); ++i)
      r.members.push_back(Describe(Reference<css::drawing::XShape>(members->getByIndex(i), uno::UNO_QUERY_THROW)));
    return r;
  }
  auto info = ps->getPropertySetInfo();
  for (const auto& p : info->getProperties()) {
    if (p.Attributes & css::beans::PropertyAttribute::READONLY) continue;
    try {
      if (p.Name == "CustomShapeGeometry") {
        r.geometry = ps->getPropertyValue(p.Name);
        continue;
      }
      if (SetApart(p.Name)) continue;
      uno::Any value = ps->getPropertyValue(p.Name);
      if (value.hasValue()) r.properties.push_back(css::beans::PropertyValue(p.Name, 0, value, {}));
    } catch (const uno::Exception&) {
      // A property this kind of shape only pretends to have.
    }
  }
  Reference<css::text::XTextRange> text(shape, uno::UNO_QUERY);
  if (text.is()) {
    r.hasText = true;
    r.text = text->getString();
  }
  Reference<css::drawing::XGluePointsSupplier> glue(shape, uno::UNO_QUERY);
  if (glue.is()) {
    Reference<css::container::XIdentifierContainer> points(glue->getGluePoints(), uno::UNO_QUERY);
    if (points.is()) {
      auto ids = points->getIdentifiers();
      std::vector<sal_Int32> sorted(ids.begin(), ids.end());
      std::sort(sorted.begin(), sorted.end());
      for (sal_Int32 id : sorted) {
        css::drawing::GluePoint2 g;
        if ((points->getByIdentifier(id) >>= g) && g.IsUserDefined) r.gluePoints.push_back(g);
      }
    }
  }
  Reference<css::drawing::XShape> start, end;
  if (!info->hasPropertyByName("StartShape")) return r;
  if ((ps->getPropertyValue("StartShape") >>= start) && start.is()) {
    r.startShape = NameOf(start);
    ps->getPropertyValue("StartGluePointIndex") >>= r.startGlue;
  }
  if ((ps->getPropertyValue("EndShape") >>= end) && end.is()) {
    r.endShape = NameOf(end);
    ps->getPropertyValue("EndGluePointIndex") >>= r.endGlue;
  }
  return r;
}

struct Made {
  const Recipe* recipe;
  Reference<css::drawing::XShape> shape;
};

// Makes the shape of r on page (a group with its members), without its
// connections; every shape made is listed in made.
Reference<css::drawing::XShape> Make(const Recipe& r, const Reference<css::lang::XMultiServiceFactory>& factory,
                                     const Reference<css::drawing::XDrawPage>& page,
                                     const Reference<uno::XComponentContext>& context, std::vector<Made>& made) {
  Reference<css::drawing::XShape> shape;
  if (r.type.equalsAscii(kGroup)) {
    auto members = css::drawing::ShapeCollection::create(context);
    for (const auto& m : r.members) members->add(Make(m, factory, page, context, made));
    Reference<css::drawing::XShapeGrouper> grouper(page, uno::UNO_QUERY_THROW);
    shape.set(grouper->group(members), uno::UNO_QUERY_THROW);
  } else {
    shape.set(factory->createInstance(r.type), uno::UNO_QUERY_THROW);
    page->add(shape);
    Reference<css::beans::XPropertySet> ps(shape, uno::UNO_QUERY_THROW);
    if (r.geometry.hasValue()) ps->setPropertyValue("CustomShapeGeometry", r.geometry);
    if (r.hasText) Reference<css::text::XTextRange>(shape, uno::UNO_QUERY_THROW)->setString(r.text);
    for (const auto& p : r.properties) {
      try {
        ps->setPropertyValue(p.Name, p.Value);
      } catch (const uno::Exception&) {
        // What the new shape won't take it didn't need.
      }
    }
    Reference<css::drawing::XGluePointsSupplier> glue(shape, uno::UNO_QUERY);
    if (glue.is() && !r.gluePoints.empty()) {
      Reference<css::container::XIdentifierContainer> points(glue->getGluePoints(), uno::UNO_QUERY_THROW);
      for (const auto& g : r.gluePoints) points->insert(uno::Any(g));
    }
    shape->setSize(r.size);
    shape->setPosition(r.position);
  }
  Reference<css::beans::XPropertySet>(shape, uno::UNO_QUERY_THROW)->setPropertyValue("Name", uno::Any(r.name));
  made.push_back({&r, shape});
  return shape;
}

// The shape of this name on the page, groups opened.
Reference<css::drawing::XShape> Find(const Reference<css::drawing::XDrawPage>& page, const OUString& name) {
  std::vector<Reference<css::drawing::XShape>> all;
  CollectShapes(Reference<css::drawing::XShapes>(page, uno::UNO_QUERY_THROW), all);
  for (const auto& s : all)
    if (NameOf(s) == name) return s;
  return {};
}

// The office's undo list calls this back: off the sheet, and on again.
class ShapesAction : public cppu::WeakImplHelper1<css::document::XUndoAction> {
 public:
  ShapesAction(std::shared_ptr<SheetRef> sheet, std::vector<Reference<css::drawing::XShape>> shapes)
      : sheet_(std::move(sheet)), shapes_(std::move(shapes)) {}

  OUString SAL_CALL getTitle() override { return "Shapes"; }

  // Called by the office. A failure leaves the shapes as they are.
  void SAL_CALL undo() override {
    OfficeThreadScope scope;
    AtBorder("AddedShapes", "Undo", [&] { TakeOff(); });
  }
  void SAL_CALL redo() override {
    OfficeThreadScope scope;
    AtBorder("AddedShapes", "Redo", [&] { PutBack(); });
  }

 private:
  // The office records whatever a program changes during an undo once a
  // cell's undo has switched its recording back on: the list is locked
  // here again, so that the shapes' comings and goings stay unrecorded.
  class Unrecorded {
   public:
    // Left as found: locked during an undo stays locked afterwards too.
    explicit Unrecorded(const SheetRef& sheet) : manager_(ManagerOf(sheet.document)) {
      if (manager_->isLocked()) return;
      manager_->lock();
      locked_ = true;
    }
    ~Unrecorded() {
      try {
        if (locked_) manager_->unlock();
      } catch (...) {
      }
    }

   private:
    Reference<css::document::XUndoManager> manager_;
    bool locked_ = false;
  };

  void TakeOff() {
    Unrecorded unrecorded(*sheet_);
    auto page = sheet_->Page();
    recipes_.clear();
    for (const auto& s : shapes_) recipes_.push_back(Describe(s));
    for (const auto& s : shapes_) page->remove(s);
    shapes_.clear();
  }

  void PutBack() {
    Unrecorded unrecorded(*sheet_);
    auto page = sheet_->Page();
    Reference<css::lang::XMultiServiceFactory> factory(sheet_->document, uno::UNO_QUERY_THROW);
    std::vector<const Recipe*> order;
    for (const auto& r : recipes_) order.push_back(&r);
    std::sort(order.begin(), order.end(), [](const Recipe* a, const Recipe* b) { return a->z < b->z; });
    std::vector<Made> made;
    for (const Recipe* r : order) shapes_.push_back(Make(*r, factory, page, sheet_->session->context, made));
    // Lines are glued once every shape they may end at is there again.
    for (const auto& m : made) {
      const Recipe& r = *m.recipe;
      Reference<css::beans::XPropertySet> ps(m.shape, uno::UNO_QUERY_THROW);
      if (!r.startShape.isEmpty()) {
        if (auto s = Find(page, r.startShape); s.is()) {
          ps->setPropertyValue("StartShape", uno::Any(s));
          ps->setPropertyValue("StartGluePointIndex", uno::Any(r.startGlue));
        }
      }
      if (!r.endShape.isEmpty()) {
        if (auto s = Find(page, r.endShape); s.is()) {
          ps->setPropertyValue("EndShape", uno::Any(s));
          ps->setPropertyValue("EndGluePointIndex", uno::Any(r.endGlue));
        }
      }
    }
    for (size_t i = 0; i < order.size(); ++i)
      Reference<css::beans::XPropertySet>(shapes_[i], uno::UNO_QUERY_THROW)
          ->setPropertyValue("ZOrder", uno::Any(order[i]->z));
  }

  std::shared_ptr<SheetRef> sheet_;
  std::vector<Reference<css::drawing::XShape>> shapes_;
  std::vector<Recipe> recipes_;
};

}  // namespace

struct AddedShapes::State {
  std::shared_ptr<SheetRef> sheet;
  ShapeIndex::Mark mark;
  sal_Int32 count = 0;
};

AddedShapes::AddedShapes(const Worksheet& sheet) : state_(std::make_unique<State>()) {
  state_->sheet = sheet.Ref();
  Call("AddedShapes", [&] {
    state_->mark = ShapeIndex::Of(*state_->sheet).Now();
    state_->count = state_->sheet->Page()->getCount();
  });
}

AddedShapes::~AddedShapes() {
  try {
    Call("AddedShapes", [&] {
      // The shape index's journal knows what the layer added; should the
      // sheet have changed otherwise meanwhile, new shapes are those above
      // the count there was.
      std::vector<Reference<css::drawing::XShape>> added;
      if (!ShapeIndex::Of(*state_->sheet).AddedSince(state_->mark, added)) {
        auto page = state_->sheet->Page();
        for (sal_Int32 i = state_->count; i < page->getCount(); ++i)
          added.push_back(Reference<css::drawing::XShape>(page->getByIndex(i), uno::UNO_QUERY));
      }
      if (added.empty()) return;
      ManagerOf(state_->sheet->document)->addUndoAction(new ShapesAction(state_->sheet, std::move(added)));
    });
  } catch (...) {
    // Without the action, Ctrl+Z leaves these shapes where they are.
  }
}

}  // namespace nivarel::office
