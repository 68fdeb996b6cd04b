#include "Shapes.h"

#include <set>

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/container/XIdentifierContainer.hpp>
#include <com/sun/star/drawing/Alignment.hpp>
#include <com/sun/star/drawing/ConnectorType.hpp>
#include <com/sun/star/drawing/EscapeDirection.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/drawing/PointSequenceSequence.hpp>
#include <com/sun/star/drawing/GluePoint2.hpp>
#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/drawing/XGluePointsSupplier.hpp>
#include <com/sun/star/drawing/XShapeDescriptor.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "AutoShapeTypes.h"
#include "MsoConstants.h"
#include "ShapeIndex.h"
#include "Uno.h"

namespace nivarel::office {

void CollectShapes(const Reference<css::drawing::XShapes>& shapes,
                   std::vector<Reference<css::drawing::XShape>>& out) {
  for (sal_Int32 i = 0, n = shapes->getCount(); i < n; ++i) {
    Reference<css::drawing::XShape> s(shapes->getByIndex(i), uno::UNO_QUERY);
    if (!s.is()) continue;
    out.push_back(s);
    Reference<css::drawing::XShapes> group(s, uno::UNO_QUERY);
    if (group.is()) CollectShapes(group, out);
  }
}

static std::string NameOf(const Reference<css::drawing::XShape>& s) {
  Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY);
  return ps.is() ? ToUtf8(GetProp<OUString>(ps, "Name")) : std::string();
}

std::string FreshShapeName(const SheetRef& sheet, const std::string& word) {
  return ShapeIndex::Of(sheet).FreshName(word);
}

std::string NameWordFor(const Reference<css::drawing::XShape>& shape) {
  OUString t = shape->getShapeType();
  if (t == "com.sun.star.drawing.CustomShape") return "AutoShape";
  if (t == "com.sun.star.drawing.ConnectorShape") return "Connector";
  if (t == "com.sun.star.drawing.LineShape") return "Line";
  if (t == "com.sun.star.drawing.TextShape") return "TextBox";
  if (t == "com.sun.star.drawing.GroupShape") return "Group";
  if (t == "com.sun.star.drawing.GraphicObjectShape") return "Picture";
  return "Shape";
}

namespace {

// Adds a new shape of the given service to the sheet, named and placed.
Reference<css::drawing::XShape> Insert(const SheetRef& sheet, const char* service) {
  Reference<css::lang::XMultiServiceFactory> f(sheet.document, uno::UNO_QUERY_THROW);
  Reference<css::drawing::XShape> s(f->createInstance(OUString::createFromAscii(service)), uno::UNO_QUERY_THROW);
  ShapeIndex& index = ShapeIndex::Of(sheet);
  std::string name = index.FreshName(NameWordFor(s));
  sheet.Page()->add(s);
  Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
  SetProp(ps, "Name", ToOu(name));
  index.Added(s, name);
  return s;
}

void Place(const Reference<css::drawing::XShape>& s, double left, double top, double width, double height) {
  s->setSize(css::awt::Size(PtToHmm(width), PtToHmm(height)));
  s->setPosition(css::awt::Point(PtToHmm(left), PtToHmm(top)));
}

}  // namespace

int Shapes::Count() const {
  return Call("Shapes.Count", [&] { return static_cast<int>(sheet_->Page()->getCount()); });
}

Shape Shapes::Item(int index) const {
  return Call("Shapes.Item", [&] {
    auto page = sheet_->Page();
    if (index < 1 || index > page->getCount())
      throw HostError(HostError::kInvalidArgument, "The index into the specified collection is out of bounds.");
    Reference<css::drawing::XShape> s(page->getByIndex(index - 1), uno::UNO_QUERY_THROW);
    return Shape(ShapeFor(sheet_, s));
  });
}

namespace {

ShapeOutline OutlineOf(const Reference<css::drawing::XShape>& s, int index) {
  ShapeOutline o;
  o.index = index;
  o.key = Reference<uno::XInterface>(s, uno::UNO_QUERY).get();
  OUString service = s->getShapeType();
  o.type = TypeOfService(service);
  o.connector = service == "com.sun.star.drawing.ConnectorShape";
  css::awt::Point at = s->getPosition();
  css::awt::Size size = s->getSize();
  o.left = HmmToPt(at.X);
  o.top = HmmToPt(at.Y);
  o.width = HmmToPt(size.Width);
  o.height = HmmToPt(size.Height);
  return o;
}

}  // namespace

std::vector<ShapeOutline> Shapes::Outlines() const {
  return Call("Shapes.Outlines", [&] {
    auto page = sheet_->Page();
    std::vector<ShapeOutline> outlines;
    sal_Int32 count = page->getCount();
    outlines.reserve(static_cast<size_t>(count));
    for (sal_Int32 i = 0; i < count; ++i) {
      Reference<css::drawing::XShape> s(page->getByIndex(i), uno::UNO_QUERY);
      if (s.is()) outlines.push_back(OutlineOf(s, i + 1));
    }
    return outlines;
  });
}

ShapeOutline Shapes::Outline(const Shape& shape) {
  return Call("Shapes.Outline", [&] { return OutlineOf(shape.Impl()->shape, 0); });
}

ShapeMark Shapes::Mark() const {
  return Call("Shapes.Mark", [&] {
    ShapeIndex::Mark m = ShapeIndex::Of(*sheet_).Now();
    return ShapeMark{m.index, m.journal, m.position, m.reorders};
  });
}

bool Shapes::AddedSince(const ShapeMark& mark, std::vector<Shape>& added, bool& reordered) const {
  return Call("Shapes.AddedSince", [&] {
    ShapeIndex& index = ShapeIndex::Of(*sheet_);
    ShapeIndex::Mark since{mark.index, mark.journal, mark.position, mark.reorders};
    std::vector<Reference<css::drawing::XShape>> shapes;
    if (!index.AddedSince(since, shapes)) return false;
    reordered = index.ReorderedSince(since);
    for (const auto& s : shapes) added.push_back(Shape(ShapeFor(sheet_, s)));
    return true;
  });
}

Shape Shapes::Item(const std::string& name) const {
  return Call("Shapes.Item", [&] {
    auto s = ShapeIndex::Of(*sheet_).Find(name);
    if (s.is()) return Shape(ShapeFor(sheet_, s));
    throw HostError(HostError::kNotFound, "The item with the specified name wasn't found.");
  });
}

void AddConnectionSites(const Reference<css::drawing::XShape>& s, int autoShapeType) {
  const AutoShapeTypeInfo* info = FindAutoShapeType(autoShapeType);
  if (!info || !info->addedSites) return;
  // The office's geometry lacks the host's connection sites: add them as
  // glue points placed relative to the shape, so they follow its size.
  Reference<css::drawing::XGluePointsSupplier> gs(s, uno::UNO_QUERY_THROW);
  Reference<css::container::XIdentifierContainer> points(gs->getGluePoints(), uno::UNO_QUERY_THROW);
  for (int i = 0; i < info->siteCount; ++i) {
    css::drawing::GluePoint2 g;
    g.Position = css::awt::Point(static_cast<sal_Int32>((info->addedSites[i].x - 0.5) * 10000),
                                 static_cast<sal_Int32>((info->addedSites[i].y - 0.5) * 10000));
    g.IsRelative = true;
    g.PositionAlignment = css::drawing::Alignment_CENTER;
    g.Escape = css::drawing::EscapeDirection_SMART;
    g.IsUserDefined = true;
    points->insert(uno::Any(g));
  }
}

Shape Shapes::AddShape(int autoShapeType, double left, double top, double width, double height) {
  const AutoShapeTypeInfo* info = FindAutoShapeType(autoShapeType);
  if (!info) throw HostError(HostError::kInvalidArgument, "Shapes.AddShape: invalid shape type " + std::to_string(autoShapeType));
  return Call("Shapes.AddShape", [&] {
    auto s = Insert(*sheet_, "com.sun.star.drawing.CustomShape");
    Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
    css::beans::PropertyValue type;
    type.Name = "Type";
    type.Value <<= OUString::createFromAscii(info->officeType);
    SetProp(ps, "CustomShapeGeometry", uno::Sequence<css::beans::PropertyValue>(&type, 1));
    // A new auto shape wraps its text and keeps its size until told to fit
    // it; its text keeps the automatic margins from the edges.
    SetProp(ps, "TextWordWrap", true);
    SetProp(ps, "TextLeftDistance", PtToHmm(7.2));
    SetProp(ps, "TextRightDistance", PtToHmm(7.2));
    SetProp(ps, "TextUpperDistance", PtToHmm(3.6));
    SetProp(ps, "TextLowerDistance", PtToHmm(3.6));
    SetProp(ps, "TextAutoGrowHeight", false);
    SetProp(ps, "TextAutoGrowWidth", false);
    Place(s, left, top, width, height);
    AddConnectionSites(s, autoShapeType);
    return Shape(ShapeFor(sheet_, s));
  });
}

Shape Shapes::AddConnector(int connectorType, double beginX, double beginY, double endX, double endY) {
  return Call("Shapes.AddConnector", [&] {
    auto s = Insert(*sheet_, "com.sun.star.drawing.ConnectorShape");
    Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
    auto kind = css::drawing::ConnectorType_LINE;
    if (connectorType == msoConnectorElbow) kind = css::drawing::ConnectorType_STANDARD;
    else if (connectorType == msoConnectorCurve) kind = css::drawing::ConnectorType_CURVE;
    SetProp(ps, "EdgeKind", kind);
    SetProp(ps, "StartPosition", css::awt::Point(PtToHmm(beginX), PtToHmm(beginY)));
    SetProp(ps, "EndPosition", css::awt::Point(PtToHmm(endX), PtToHmm(endY)));
    return Shape(ShapeFor(sheet_, s));
  });
}

Shape Shapes::AddLine(double beginX, double beginY, double endX, double endY) {
  return Call("Shapes.AddLine", [&] {
    auto s = Insert(*sheet_, "com.sun.star.drawing.LineShape");
    Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
    css::awt::Point ends[2] = {css::awt::Point(PtToHmm(beginX), PtToHmm(beginY)),
                               css::awt::Point(PtToHmm(endX), PtToHmm(endY))};
    css::drawing::PointSequenceSequence poly(1);
    poly.getArray()[0] = uno::Sequence<css::awt::Point>(ends, 2);
    SetProp(ps, "PolyPolygon", poly);
    return Shape(ShapeFor(sheet_, s));
  });
}

Shape Shapes::AddTextbox(int orientation, double left, double top, double width, double height) {
  Shape shape = Call("Shapes.AddTextbox", [&] {
    auto s = Insert(*sheet_, "com.sun.star.drawing.TextShape");
    Place(s, left, top, width, height);
    Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
    // A text box has a thin black outline and a white fill until told otherwise.
    SetProp(ps, "TextAutoGrowHeight", false);
    SetProp(ps, "FillStyle", css::drawing::FillStyle_SOLID);
    SetProp(ps, "FillColor", static_cast<sal_Int32>(0xFFFFFF));
    SetProp(ps, "LineStyle", css::drawing::LineStyle_SOLID);
    return Shape(ShapeFor(sheet_, s));
  });
  if (orientation != msoTextOrientationHorizontal) shape.GetTextFrame().SetOrientation(orientation);
  return shape;
}

Shape Shapes::AddPicture(const Picture& picture, double left, double top, double width, double height) {
  return Call("Shapes.AddPicture", [&] {
    auto s = Insert(*sheet_, "com.sun.star.drawing.GraphicObjectShape");
    Reference<css::beans::XPropertySet> ps(s, uno::UNO_QUERY_THROW);
    SetProp(ps, "Graphic", picture.Impl()->graphic);
    Place(s, left, top, width, height);
    return Shape(ShapeFor(sheet_, s));
  });
}

ShapeRange Shapes::GetRange(const std::vector<std::string>& names) const {
  std::vector<Shape> shapes;
  for (const auto& n : names) shapes.push_back(Item(n));
  return ShapeRange(sheet_, std::move(shapes));
}

void Shapes::SelectAll() const {
  Call("Shapes.SelectAll", [&] {
    auto page = sheet_->Page();
    auto all = css::drawing::ShapeCollection::create(sheet_->session->context);
    for (sal_Int32 i = 0; i < page->getCount(); ++i) {
      Reference<css::drawing::XShape> s(page->getByIndex(i), uno::UNO_QUERY);
      if (s.is()) all->add(s);
    }
    Reference<css::frame::XModel> model(sheet_->document, uno::UNO_QUERY_THROW);
    Reference<css::view::XSelectionSupplier> sel(model->getCurrentController(), uno::UNO_QUERY_THROW);
    sel->select(uno::Any(Reference<css::drawing::XShapes>(all, uno::UNO_QUERY_THROW)));
  });
}

}  // namespace nivarel::office
