#include "AddedShapes.h"

#include <algorithm>
#include <vector>

#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/XPropertySetInfo.hpp>
#include <com/sun/star/container/XIdentifierContainer.hpp>
#include <com/sun/star/container/XNamed.hpp>
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
#include "ShapeRecipe.h"
#include "ShapeIndex.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

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
  if (r.type.equalsAscii(kGroupShape)) {
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
      : sheet_(std::move(sheet)), shapes_(std::move(shapes)) {
    name_ = Reference<css::container::XNamed>(sheet_->sheet, uno::UNO_QUERY_THROW)->getName();
  }

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
  // The sheet's drawing, found by the name the sheet had when the action was
  // recorded (its name then is its name again whenever the list comes back
  // to this action): a sheet that an earlier action of the list took away
  // and brought back is a new object, which the old one does not answer for.
  Reference<css::drawing::XDrawPage> Page() const {
    auto sheets = sheet_->document->getSheets();
    if (!sheets->hasByName(name_)) return sheet_->Page();
    SheetRef now{sheet_->session, sheet_->document,
                 Reference<css::sheet::XSpreadsheet>(sheets->getByName(name_), uno::UNO_QUERY_THROW)};
    return now.Page();
  }

  void TakeOff() {
    UnrecordedUndo unrecorded(sheet_->document);
    auto page = Page();
    recipes_.clear();
    for (const auto& s : shapes_) recipes_.push_back(Describe(s));
    for (const auto& s : shapes_) page->remove(s);
    shapes_.clear();
  }

  void PutBack() {
    UnrecordedUndo unrecorded(sheet_->document);
    auto page = Page();
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
  OUString name_;
  std::vector<Reference<css::drawing::XShape>> shapes_;
  std::vector<Recipe> recipes_;
};

}  // namespace

struct AddedShapes::State {
  std::shared_ptr<SheetRef> sheet;
  ShapeIndex::Mark mark;
  sal_Int32 count = 0;
  bool inner = false;  // within another's lifetime on the same sheet
};

namespace {

// The records open now, on the office's thread. A tool that runs within a
// run's step (a reserved word typed into a cell) adds its shapes to the
// step's record: recorded twice, they would be taken away twice.
std::vector<const AddedShapes::State*>& OpenRecords() {
  static std::vector<const AddedShapes::State*> open;
  return open;
}

}  // namespace

AddedShapes::AddedShapes(const Worksheet& sheet) : state_(std::make_unique<State>()) {
  state_->sheet = sheet.Ref();
  Call("AddedShapes", [&] {
    for (const State* other : OpenRecords())
      if (other->sheet->Page() == state_->sheet->Page()) state_->inner = true;
    if (state_->inner) return;
    OpenRecords().push_back(state_.get());
    state_->mark = ShapeIndex::Of(*state_->sheet).Now();
    state_->count = state_->sheet->Page()->getCount();
  });
}

AddedShapes::~AddedShapes() {
  if (state_->inner) return;
  try {
    Call("AddedShapes", [&] {
      auto& open = OpenRecords();
      open.erase(std::remove(open.begin(), open.end(), state_.get()), open.end());
    });
  } catch (...) {
  }
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
