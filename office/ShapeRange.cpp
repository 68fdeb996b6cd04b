#include "ShapeRange.h"

#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/drawing/GraphicExportFilter.hpp>
#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/drawing/XShapeGrouper.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "ShapeIndex.h"
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
    // The group holds its members in their drawing order.
    std::vector<std::pair<sal_Int32, std::shared_ptr<ShapeImpl>>> members;
    for (const auto& s : shapes_) {
      collection->add(s.Impl()->shape);
      members.emplace_back(GetProp<sal_Int32>(s.Impl()->Props(), "ZOrder"), s.Impl());
    }
    std::stable_sort(members.begin(), members.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::shared_ptr<ShapeImpl>> impls;
    std::vector<std::string> names;
    for (const auto& [z, impl] : members) {
      impls.push_back(impl);
      names.push_back(ToUtf8(GetProp<OUString>(impl->Props(), "Name")));
    }
    HandlesWithin within = HandlesInside(impls);
    Reference<css::drawing::XShapeGrouper> grouper(sheet_->Page(), uno::UNO_QUERY_THROW);
    std::string name = FreshShapeName(*sheet_, "Group");
    Reference<css::drawing::XShape> group(grouper->group(Reference<css::drawing::XShapes>(collection, uno::UNO_QUERY_THROW)),
                                          uno::UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet> ps(group, uno::UNO_QUERY_THROW);
    SetProp(ps, "Name", ToOu(name));
    ShapeIndex::Grouped(*sheet_, group);
    RebindMembers(Reference<css::drawing::XShapes>(group, uno::UNO_QUERY_THROW), 0, impls, names, within);
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

ShapeRange::PictureArea ShapeRange::Area() const {
  return Call("ShapeRange.Area", [&] {
    // Each shape's BoundRect: its drawn extent, outlines and arrowheads included.
    sal_Int32 left = SAL_MAX_INT32, top = SAL_MAX_INT32, right = SAL_MIN_INT32, bottom = SAL_MIN_INT32;
    for (const auto& s : shapes_) {
      Reference<css::beans::XPropertySet> ps(s.Impl()->shape, uno::UNO_QUERY);
      if (!ps.is()) continue;
      auto r = GetProp<css::awt::Rectangle>(ps, "BoundRect");
      left = std::min(left, r.X);
      top = std::min(top, r.Y);
      right = std::max(right, r.X + r.Width);
      bottom = std::max(bottom, r.Y + r.Height);
    }
    if (left > right) return PictureArea{};
    return PictureArea{HmmToPt(left), HmmToPt(top), HmmToPt(right - left), HmmToPt(bottom - top)};
  });
}

ShapeRange::PictureArea ShapeRange::ExportPicture(const std::string& path, double pixelsPerPoint) const {
  return Call("ShapeRange.ExportPicture", [&] {
    if (shapes_.empty()) throw HostError(HostError::kOfficeFailure, "The sheet has no drawing to export");
    if (!(pixelsPerPoint > 0 && pixelsPerPoint <= 20))
      throw HostError(HostError::kInvalidArgument, "The picture's scale must lie between 0 and 20 pixels per point");
    auto collection = css::drawing::ShapeCollection::create(sheet_->session->context);
    for (const auto& s : shapes_) collection->add(s.Impl()->shape);
    PictureArea area = Area();
    auto filter = css::drawing::GraphicExportFilter::create(sheet_->session->context);
    filter->setSourceDocument(Reference<css::lang::XComponent>(collection, uno::UNO_QUERY_THROW));
    uno::Sequence<css::beans::PropertyValue> size(2);
    size.getArray()[0].Name = "PixelWidth";
    size.getArray()[0].Value <<= static_cast<sal_Int32>(std::lround(area.width * pixelsPerPoint));
    size.getArray()[1].Name = "PixelHeight";
    size.getArray()[1].Value <<= static_cast<sal_Int32>(std::lround(area.height * pixelsPerPoint));
    uno::Sequence<css::beans::PropertyValue> args(3);
    args.getArray()[0].Name = "URL";
    args.getArray()[0].Value <<= ToOu("file://" + std::filesystem::absolute(path).string());
    args.getArray()[1].Name = "MediaType";
    args.getArray()[1].Value <<= OUString("image/png");
    args.getArray()[2].Name = "FilterData";
    args.getArray()[2].Value <<= size;
    filter->filter(args);
    return area;
  });
}

}  // namespace nivarel::office
