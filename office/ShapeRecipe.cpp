#include "ShapeRecipe.h"

#include <algorithm>

#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/XPropertySetInfo.hpp>
#include <com/sun/star/container/XIdentifierContainer.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/drawing/XGluePointsSupplier.hpp>
#include <com/sun/star/text/XTextRange.hpp>

namespace nivarel::office {

namespace {

// Properties that are put back on their own, or not at all.
bool SetApart(const OUString& name) {
  static const char* const names[] = {"ZOrder", "StartShape", "EndShape", "StartGluePointIndex",
                                      "EndGluePointIndex", "Name", "CustomShapeGeometry", "Transformation",
                                      "HoriOrientPosition", "VertOrientPosition", "Position", "Size"};
  for (const char* n : names)
    if (name.equalsAscii(n)) return true;
  return false;
}

}  // namespace

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
  if (r.type.equalsAscii(kGroupShape)) {
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


UnrecordedUndo::UnrecordedUndo(const Reference<css::sheet::XSpreadsheetDocument>& document)
    : manager_(ManagerOf(document)) {
  if (manager_->isLocked()) return;
  manager_->lock();
  locked_ = true;
}

UnrecordedUndo::~UnrecordedUndo() {
  try {
    if (locked_) manager_->unlock();
  } catch (...) {
  }
}

}  // namespace nivarel::office
