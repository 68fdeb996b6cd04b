#include "ShapeRange.h"

#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/drawing/XShapeGrouper.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "Uno.h"

namespace nivarel::office {

Shape ShapeRange::Item(int index) const {
  if (index < 1 || index > Count())
    throw HostError(HostError::kInvalidArgument, "The index into the specified collection is out of bounds.");
  return shapes_[index - 1];
}

Shape ShapeRange::Group() {
  if (shapes_.size() < 2) throw HostError(HostError::kOfficeFailure, "This member can only be accessed for a group of two or more shapes");
  return Call("ShapeRange.Group", [&] {
    auto collection = css::drawing::ShapeCollection::create(sheet_->session->context);
    std::vector<std::string> names;
    for (const auto& s : shapes_) {
      collection->add(s.Impl()->shape);
      names.push_back(s.Name());
    }
    Reference<css::drawing::XShapeGrouper> grouper(sheet_->Page(), uno::UNO_QUERY_THROW);
    std::string name = FreshShapeName(*sheet_, "Group");
    Reference<css::drawing::XShape> group(grouper->group(Reference<css::drawing::XShapes>(collection, uno::UNO_QUERY_THROW)),
                                          uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(group, uno::UNO_QUERY_THROW);
    SetProp(ps, "Name", ToOu(name));
    std::vector<std::shared_ptr<ShapeImpl>> impls;
    for (const auto& m : shapes_) impls.push_back(m.Impl());
    RebindByName(Reference<css::drawing::XShapes>(group, uno::UNO_QUERY_THROW), impls, names);
    return Shape(ShapeFor(sheet_, group));
  });
}

void ShapeRange::Select() const {
  Call("ShapeRange.Select", [&] {
    auto collection = css::drawing::ShapeCollection::create(sheet_->session->context);
    for (const auto& s : shapes_) collection->add(s.Impl()->shape);
    Reference<css::frame::XModel> model(sheet_->document, uno::UNO_QUERY_THROW);
    Reference<css::view::XSelectionSupplier> sel(model->getCurrentController(), uno::UNO_QUERY_THROW);
    sel->select(uno::Any(Reference<css::drawing::XShapes>(collection, uno::UNO_QUERY_THROW)));
  });
}

}  // namespace nivarel::office
