#include "Shape.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/container/XChild.hpp>
#include <com/sun/star/container/XIdentifierAccess.hpp>
#include <com/sun/star/container/XIdentifierContainer.hpp>
#include <com/sun/star/drawing/XShapeGroup.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/drawing/Alignment.hpp>
#include <com/sun/star/drawing/GluePoint2.hpp>
#include <com/sun/star/drawing/ShapeCollection.hpp>
#include <com/sun/star/drawing/XGluePointsSupplier.hpp>
#include <com/sun/star/drawing/XShapeGrouper.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <com/sun/star/xml/AttributeData.hpp>

#include "AutoShapeTypes.h"
#include "Characters.h"
#include "FillFormat.h"
#include "Font.h"
#include "TextFrame.h"
#include "MsoConstants.h"
#include "Range.h"
#include "ShapeStylePresets.h"
#include "ShapeIndex.h"
#include "ShapeRange.h"
#include "Uno.h"
#include "Worksheet.h"

namespace nivarel::office {

static void* KeyOf(const Reference<css::drawing::XShape>& shape) {
  return Reference<uno::XInterface>(shape, uno::UNO_QUERY).get();
}

std::shared_ptr<ShapeImpl> ShapeFor(const std::shared_ptr<SheetRef>& sheet, const Reference<css::drawing::XShape>& shape) {
  auto& session = *sheet->session;
  std::lock_guard<std::mutex> lock(session.shapesMutex);
  void* key = KeyOf(shape);
  auto it = session.shapes.find(key);
  // A handle whose shape was replaced (grouping rebinds it) no longer stands
  // for the object now at this address.
  if (it != session.shapes.end())
    if (auto impl = it->second.lock())
      if (KeyOf(impl->shape) == key) return impl;
  if (session.shapes.size() > 256) {
    for (auto i = session.shapes.begin(); i != session.shapes.end();)
      i = i->second.expired() ? session.shapes.erase(i) : std::next(i);
  }
  auto impl = std::make_shared<ShapeImpl>(ShapeImpl{sheet, shape});
  session.shapes[key] = impl;
  return impl;
}

HandlesWithin HandlesInside(const std::vector<std::shared_ptr<ShapeImpl>>& impls) {
  HandlesWithin within;
  for (const auto& impl : impls) {
    within.emplace_back();
    Reference<css::drawing::XShapes> group(impl->shape, uno::UNO_QUERY);
    if (!group.is()) continue;
    std::vector<Reference<css::drawing::XShape>> inside;
    CollectShapes(group, inside);
    auto& session = *impl->sheet->session;
    std::lock_guard<std::mutex> lock(session.shapesMutex);
    for (const auto& s : inside) {
      std::shared_ptr<ShapeImpl> given;
      if (auto it = session.shapes.find(KeyOf(s)); it != session.shapes.end()) given = it->second.lock();
      within.back().push_back(given && given->shape == s ? given : nullptr);
    }
  }
  return within;
}

void RebindMembers(const Reference<css::drawing::XShapes>& container, sal_Int32 first,
                   const std::vector<std::shared_ptr<ShapeImpl>>& impls, const std::vector<std::string>& names,
                   const HandlesWithin& within) {
  auto rebindOne = [](const std::shared_ptr<ShapeImpl>& impl, const Reference<css::drawing::XShape>& m) {
    auto& session = *impl->sheet->session;
    std::lock_guard<std::mutex> lock(session.shapesMutex);
    session.shapes.erase(KeyOf(impl->shape));
    impl->shape = m;
    session.shapes[KeyOf(m)] = impl;
  };
  auto rebind = [&](size_t k, const Reference<css::drawing::XShape>& m) {
    rebindOne(impls[k], m);
    if (k >= within.size() || within[k].empty()) return;
    Reference<css::drawing::XShapes> group(m, uno::UNO_QUERY);
    if (!group.is()) return;
    std::vector<Reference<css::drawing::XShape>> inside;
    CollectShapes(group, inside);
    if (inside.size() != within[k].size()) return;
    for (size_t i = 0; i < inside.size(); ++i)
      if (within[k][i]) rebindOne(within[k][i], inside[i]);
  };
  auto nameOf = [](const Reference<css::drawing::XShape>& m) {
    Reference<css::beans::XPropertySet> mp(m, uno::UNO_QUERY);
    return mp.is() ? ToUtf8(GetProp<OUString>(mp, "Name")) : std::string();
  };
  std::vector<bool> done(impls.size(), false);
  for (size_t k = 0; k < impls.size() && first + static_cast<sal_Int32>(k) < container->getCount(); ++k) {
    Reference<css::drawing::XShape> m(container->getByIndex(first + static_cast<sal_Int32>(k)), uno::UNO_QUERY);
    if (m.is() && nameOf(m) == names[k]) {
      rebind(k, m);
      done[k] = true;
    }
  }
  // Not where it was looked for: found by its name, when it has one.
  for (sal_Int32 i = 0; i < container->getCount(); ++i) {
    Reference<css::drawing::XShape> m(container->getByIndex(i), uno::UNO_QUERY);
    if (!m.is()) continue;
    std::string name = nameOf(m);
    for (size_t k = 0; k < names.size(); ++k)
      if (!done[k] && !names[k].empty() && names[k] == name) rebind(k, m);
  }
}

Reference<css::beans::XPropertySet> ShapeImpl::Props() const {
  return Reference<css::beans::XPropertySet>(shape, uno::UNO_QUERY_THROW);
}

namespace {

OUString ServiceOf(const ShapeImpl& s) { return s.shape->getShapeType(); }

OUString CustomType(const ShapeImpl& s) {
  uno::Sequence<css::beans::PropertyValue> geometry;
  s.Props()->getPropertyValue("CustomShapeGeometry") >>= geometry;
  for (const auto& p : geometry)
    if (p.Name == "Type") {
      OUString t;
      p.Value >>= t;
      return t;
    }
  return OUString();
}

int AutoTypeOf(const ShapeImpl& s) {
  OUString service = ServiceOf(s);
  if (service == "com.sun.star.drawing.CustomShape") {
    int id = AutoShapeTypeFromOfficeType(ToUtf8(CustomType(s)));
    return id ? id : msoShapeMixed;
  }
  if (service == "com.sun.star.drawing.RectangleShape" || service == "com.sun.star.drawing.TextShape")
    return msoShapeRectangle;
  if (service == "com.sun.star.drawing.EllipseShape") return 9;
  return msoShapeMixed;
}

// The office keeps positions in 1/100 mm and row heights in twips, so an
// edge put on a cell boundary may land a hair before it: within this
// (0.1 pt) it counts as on the boundary.
constexpr sal_Int32 kOnTheBoundary = 4;

// The cell under a point of the sheet (1/100 mm), found by halving; a point
// on a boundary is in the cell that begins there.
Range CellAt(const std::shared_ptr<SheetRef>& sheet, sal_Int32 x, sal_Int32 y) {
  x += kOnTheBoundary;
  y += kOnTheBoundary;
  auto posOf = [&](int col, int row) {
    Reference<css::beans::XPropertySet> ps(sheet->sheet->getCellByPosition(col, row), uno::UNO_QUERY_THROW);
    return GetProp<css::awt::Point>(ps, "Position");
  };
  int lo = 0, hi = 16383;
  while (lo < hi) {
    int mid = (lo + hi + 1) / 2;
    if (posOf(mid, 0).X <= x) lo = mid; else hi = mid - 1;
  }
  int col = lo;
  lo = 0;
  hi = 1048575;
  while (lo < hi) {
    int mid = (lo + hi + 1) / 2;
    if (posOf(0, mid).Y <= y) lo = mid; else hi = mid - 1;
  }
  return Range(sheet, lo + 1, col + 1, lo + 1, col + 1);
}

// Where a glue point sits on the page, in 1/100 mm.
css::awt::Point GluePosition(const ShapeImpl& s, const css::drawing::GluePoint2& g) {
  auto pos = s.shape->getPosition();
  auto size = s.shape->getSize();
  double rx = 0.5, ry = 0.5;
  switch (g.PositionAlignment) {
    case css::drawing::Alignment_TOP_LEFT: rx = 0; ry = 0; break;
    case css::drawing::Alignment_TOP: ry = 0; break;
    case css::drawing::Alignment_TOP_RIGHT: rx = 1; ry = 0; break;
    case css::drawing::Alignment_LEFT: rx = 0; break;
    case css::drawing::Alignment_RIGHT: rx = 1; break;
    case css::drawing::Alignment_BOTTOM_LEFT: rx = 0; ry = 1; break;
    case css::drawing::Alignment_BOTTOM: ry = 1; break;
    case css::drawing::Alignment_BOTTOM_RIGHT: rx = 1; ry = 1; break;
    default: break;
  }
  double dx = g.Position.X, dy = g.Position.Y;
  if (g.IsRelative) {
    dx = dx * size.Width / 10000.0;
    dy = dy * size.Height / 10000.0;
  }
  return css::awt::Point(static_cast<sal_Int32>(std::lround(pos.X + rx * size.Width + dx)),
                         static_cast<sal_Int32>(std::lround(pos.Y + ry * size.Height + dy)));
}

const char kStyleAttribute[] = "nivarel-shape-style";

}  // namespace

sal_Int32 SiteGluePoint(const ShapeImpl& shape, int site) {
  const AutoShapeTypeInfo* info = FindAutoShapeType(AutoTypeOf(shape));
  if (!info) return site - 1;  // plain shapes: the office's four points
  Reference<css::drawing::XGluePointsSupplier> gs(shape.shape, uno::UNO_QUERY_THROW);
  Reference<css::container::XIdentifierAccess> points(gs->getGluePoints(), uno::UNO_QUERY_THROW);
  auto ids = points->getIdentifiers();
  std::vector<sal_Int32> sorted(ids.begin(), ids.end());
  std::sort(sorted.begin(), sorted.end());
  size_t n = sorted.size();
  if (n < static_cast<size_t>(info->siteCount) + 4)
    throw HostError(HostError::kOfficeFailure, "The shape has lost its connection sites");
  return sorted[n - info->siteCount + site - 1];
}

std::string Shape::Name() const {
  return Call("Shape.Name", [&] { return ToUtf8(GetProp<OUString>(impl_->Props(), "Name")); });
}

void Shape::SetName(const std::string& name) {
  Call("Shape.Name", [&] {
    ShapeIndex& index = ShapeIndex::Of(*impl_->sheet);
    // A name the index does not hold is free: no need to read the sheet again.
    if (index.Taken(name)) {
      auto holder = index.Find(name);
      if (holder.is() && holder != impl_->shape)
        throw HostError(HostError::kNameTaken, "The name '" + name + "' is already in use on this sheet");
    }
    std::string old = ToUtf8(GetProp<OUString>(impl_->Props(), "Name"));
    SetProp(impl_->Props(), "Name", ToOu(name));
    index.Renamed(impl_->shape, old, name);
  });
}

int TypeOfService(const OUString& t) {
  if (t == "com.sun.star.drawing.GroupShape") return msoGroup;
  if (t == "com.sun.star.drawing.LineShape") return msoLine;
  if (t == "com.sun.star.drawing.TextShape") return msoTextBox;
  if (t == "com.sun.star.drawing.GraphicObjectShape") return msoPicture;
  if (t == "com.sun.star.drawing.PolyPolygonShape" || t == "com.sun.star.drawing.PolyLineShape" ||
      t == "com.sun.star.drawing.OpenBezierShape" || t == "com.sun.star.drawing.ClosedBezierShape")
    return msoFreeform;
  if (t == "com.sun.star.drawing.ControlShape") return 8;  // form control
  if (t == "com.sun.star.drawing.OLE2Shape") return 7;     // embedded object
  return msoAutoShape;
}

int Shape::Type() const {
  return Call("Shape.Type", [&] {
    OUString t = ServiceOf(*impl_);
    if (t == "com.sun.star.drawing.CustomShape") {
      int id = AutoTypeOf(*impl_);
      if (id >= 105 && id <= 124) return msoCallout;
    }
    return TypeOfService(t);
  });
}

int Shape::AutoShapeType() const {
  return Call("Shape.AutoShapeType", [&] { return AutoTypeOf(*impl_); });
}

void Shape::SetAutoShapeType(int type) {
  const AutoShapeTypeInfo* info = FindAutoShapeType(type);
  if (!info) throw HostError(HostError::kInvalidArgument, "Shape.AutoShapeType: invalid shape type " + std::to_string(type));
  Call("Shape.AutoShapeType", [&] {
    if (ServiceOf(*impl_) != "com.sun.star.drawing.CustomShape")
      throw HostError(HostError::kInvalidArgument, "Shape.AutoShapeType: not an auto shape");
    int old = AutoTypeOf(*impl_);
    if (old == type) return;
    const AutoShapeTypeInfo* before = FindAutoShapeType(old);
    css::beans::PropertyValue kind;
    kind.Name = "Type";
    kind.Value <<= OUString::createFromAscii(info->officeType);
    impl_->Props()->setPropertyValue("CustomShapeGeometry",
                                     uno::Any(uno::Sequence<css::beans::PropertyValue>(&kind, 1)));
    // Sites the old type added go; the new type's come in their place.
    if (before && before->addedSites) {
      Reference<css::drawing::XGluePointsSupplier> gs(impl_->shape, uno::UNO_QUERY_THROW);
      Reference<css::container::XIdentifierContainer> points(gs->getGluePoints(), uno::UNO_QUERY_THROW);
      for (sal_Int32 id : points->getIdentifiers()) {
        css::drawing::GluePoint2 g;
        if ((points->getByIdentifier(id) >>= g) && g.IsUserDefined) points->removeByIdentifier(id);
      }
    }
    AddConnectionSites(impl_->shape, type);
  });
}

bool Shape::Connector() const {
  return Call("Shape.Connector", [&] { return ServiceOf(*impl_) == "com.sun.star.drawing.ConnectorShape"; });
}

double Shape::Left() const {
  return Call("Shape.Left", [&] { return HmmToPt(impl_->shape->getPosition().X); });
}
void Shape::SetLeft(double points) {
  Call("Shape.Left", [&] {
    auto p = impl_->shape->getPosition();
    // A shape stays on the sheet: nothing stands left of column A.
    p.X = PtToHmm(std::max(0.0, points));
    impl_->shape->setPosition(p);
  });
}
double Shape::Top() const {
  return Call("Shape.Top", [&] { return HmmToPt(impl_->shape->getPosition().Y); });
}
void Shape::SetTop(double points) {
  Call("Shape.Top", [&] {
    auto p = impl_->shape->getPosition();
    // Nor above row 1.
    p.Y = PtToHmm(std::max(0.0, points));
    impl_->shape->setPosition(p);
  });
}
double Shape::Width() const {
  return Call("Shape.Width", [&] { return HmmToPt(impl_->shape->getSize().Width); });
}
void Shape::SetWidth(double points) {
  Call("Shape.Width", [&] {
    auto p = impl_->shape->getPosition();
    auto s = impl_->shape->getSize();
    s.Width = PtToHmm(points);
    impl_->shape->setSize(s);
    impl_->shape->setPosition(p);
  });
}
double Shape::Height() const {
  return Call("Shape.Height", [&] { return HmmToPt(impl_->shape->getSize().Height); });
}
void Shape::SetHeight(double points) {
  Call("Shape.Height", [&] {
    auto p = impl_->shape->getPosition();
    auto s = impl_->shape->getSize();
    s.Height = PtToHmm(points);
    impl_->shape->setSize(s);
    impl_->shape->setPosition(p);
  });
}

Range Shape::TopLeftCell() const {
  return Call("Shape.TopLeftCell", [&] {
    auto p = impl_->shape->getPosition();
    return CellAt(impl_->sheet, p.X, p.Y);
  });
}

Range Shape::BottomRightCell() const {
  return Call("Shape.BottomRightCell", [&] {
    auto p = impl_->shape->getPosition();
    auto s = impl_->shape->getSize();
    return CellAt(impl_->sheet, p.X + s.Width, p.Y + s.Height);
  });
}

int Shape::Placement() const {
  return Call("Shape.Placement", [&] {
    auto ps = impl_->Props();
    Reference<css::table::XCell> cell(ps->getPropertyValue("Anchor"), uno::UNO_QUERY);
    if (!cell.is()) return xlFreeFloating;
    return GetProp<bool>(ps, "ResizeWithCell") ? xlMoveAndSize : xlMove;
  });
}

void Shape::SetPlacement(int placement) {
  Call("Shape.Placement", [&] {
    auto ps = impl_->Props();
    auto p = impl_->shape->getPosition();
    if (placement == xlFreeFloating) {
      SetProp(ps, "Anchor", impl_->sheet->sheet);
    } else {
      Range cell = CellAt(impl_->sheet, p.X, p.Y);
      SetProp(ps, "Anchor", impl_->sheet->sheet->getCellByPosition(cell.Column() - 1, cell.Row() - 1));
      SetProp(ps, "ResizeWithCell", placement == xlMoveAndSize);
    }
    impl_->shape->setPosition(p);
  });
}

TextFrame Shape::GetTextFrame() const { return TextFrame(impl_); }

TextFrame2 Shape::GetTextFrame2() const {
  if (impl_->sheet->session->objectModelVersion < 12)
    throw HostError(438, "Object doesn't support this property or method");
  return TextFrame2(impl_);
}

FillFormat Shape::Fill() const { return FillFormat(impl_); }
LineFormat Shape::Line() const { return LineFormat(impl_); }
ShadowFormat Shape::Shadow() const { return ShadowFormat(impl_); }

namespace {

// The add-in's attributes are saved in a namespace of its own, so that the
// files stay valid OpenDocument: "nivarel-shape-style" is written as
// "nivarel:shape-style". Files written before carry the plain name.
constexpr char kAttributeNamespace[] = "urn:org.nivarel:shape:1";
OUString QualifiedName(const char* key) {
  std::string k(key);
  if (k.rfind("nivarel-", 0) == 0) k[7] = ':';
  return ToOu(k);
}

}  // namespace

int GetShapeAttribute(const ShapeImpl& shape, const char* key, int fallback) {
  Reference<css::container::XNameContainer> attrs(shape.Props()->getPropertyValue("UserDefinedAttributes"), uno::UNO_QUERY);
  if (!attrs.is()) return fallback;
  OUString name = QualifiedName(key);
  if (!attrs->hasByName(name)) name = OUString::createFromAscii(key);
  if (!attrs->hasByName(name)) return fallback;
  css::xml::AttributeData d;
  attrs->getByName(name) >>= d;
  return d.Value.isEmpty() ? fallback : d.Value.toInt32();
}

void SetShapeAttribute(const ShapeImpl& shape, const char* key, int value) {
  auto ps = shape.Props();
  Reference<css::container::XNameContainer> attrs(ps->getPropertyValue("UserDefinedAttributes"), uno::UNO_QUERY_THROW);
  OUString name = QualifiedName(key), plain = OUString::createFromAscii(key);
  if (plain != name && attrs->hasByName(plain)) attrs->removeByName(plain);
  css::xml::AttributeData d;
  d.Type = "CDATA";
  d.Namespace = kAttributeNamespace;
  d.Value = OUString::number(value);
  if (attrs->hasByName(name)) attrs->replaceByName(name, uno::Any(d));
  else attrs->insertByName(name, uno::Any(d));
  ps->setPropertyValue("UserDefinedAttributes", uno::Any(attrs));
}

int Shape::ShapeStyle() const {
  if (impl_->sheet->session->objectModelVersion < 12)
    throw HostError(438, "Object doesn't support this property or method");
  return Call("Shape.ShapeStyle", [&] { return GetShapeAttribute(*impl_, kStyleAttribute, 0); });
}

void Shape::SetShapeStyle(int style) {
  if (impl_->sheet->session->objectModelVersion < 12)
    throw HostError(438, "Object doesn't support this property or method");
  bool lineStyle = FindLineStylePreset(style) != nullptr;
  bool line = Connector() || Type() == msoLine;
  if (!FindShapeStylePreset(style) && !(lineStyle && (line || Type() == msoAutoShape || Type() == msoTextBox)))
    throw HostError(HostError::kInvalidArgument, "The specified value is out of range.");
  // Calc has no theme gallery: the id stays with the shape and the layer draws the preset's look itself.
  Call("Shape.ShapeStyle", [&] { SetShapeAttribute(*impl_, kStyleAttribute, style); });
  if (lineStyle) {
    // A line style on a shape: its outline drawn as the line, no fill, black text.
    ApplyLineStylePreset(*this, style);
    if (!line) {
      Fill().SetVisible(false);
      GetTextFrame().GetCharacters().GetFont().SetColor(0);
    }
  } else {
    ApplyShapeStylePreset(*this, style, true);
  }
}

ConnectorFormat Shape::GetConnectorFormat() const {
  if (!Connector()) throw HostError(HostError::kOfficeFailure, "This member can only be accessed for a connector shape");
  return ConnectorFormat(impl_);
}

int Shape::ConnectionSiteCount() const {
  return Call("Shape.ConnectionSiteCount", [&] {
    int id = AutoTypeOf(*impl_);
    if (const AutoShapeTypeInfo* info = FindAutoShapeType(id)) return info->siteCount;
    OUString service = ServiceOf(*impl_);
    if (service == "com.sun.star.drawing.ConnectorShape" || service == "com.sun.star.drawing.LineShape" ||
        service == "com.sun.star.drawing.GroupShape")
      return 0;
    return 4;
  });
}

std::pair<double, double> Shape::ConnectionSitePosition(int site) const {
  int count = ConnectionSiteCount();
  if (site < 1 || site > count) throw HostError(HostError::kInvalidArgument, "The specified value is out of range.");
  return Call("Shape.ConnectionSite", [&] {
    Reference<css::drawing::XGluePointsSupplier> gs(impl_->shape, uno::UNO_QUERY_THROW);
    Reference<css::container::XIdentifierAccess> points(gs->getGluePoints(), uno::UNO_QUERY_THROW);
    css::drawing::GluePoint2 g;
    points->getByIdentifier(SiteGluePoint(*impl_, site)) >>= g;
    auto p = GluePosition(*impl_, g);
    return std::make_pair(HmmToPt(p.X), HmmToPt(p.Y));
  });
}

void Shape::RerouteConnections() {
  ConnectorFormat cf = GetConnectorFormat();
  auto begin = cf.BeginConnectedShape();
  auto end = cf.EndConnectedShape();
  if (!begin || !end) return;
  int bestBegin = 0, bestEnd = 0;
  double best = std::numeric_limits<double>::max();
  int nb = begin->ConnectionSiteCount(), ne = end->ConnectionSiteCount();
  std::vector<std::pair<double, double>> ends;
  for (int j = 1; j <= ne; ++j) ends.push_back(end->ConnectionSitePosition(j));
  for (int i = 1; i <= nb; ++i) {
    auto a = begin->ConnectionSitePosition(i);
    for (int j = 1; j <= ne; ++j) {
      double dx = a.first - ends[j - 1].first, dy = a.second - ends[j - 1].second;
      double d = dx * dx + dy * dy;
      if (d < best - 1e-9) {
        best = d;
        bestBegin = i;
        bestEnd = j;
      }
    }
  }
  if (bestBegin == 0) return;
  cf.BeginConnect(*begin, bestBegin);
  cf.EndConnect(*end, bestEnd);
}

std::vector<Shape> Shape::GroupItems() const {
  return Call("Shape.GroupItems", [&] {
    Reference<css::drawing::XShapes> group(impl_->shape, uno::UNO_QUERY);
    if (!group.is() || ServiceOf(*impl_) != "com.sun.star.drawing.GroupShape")
      throw HostError(HostError::kOfficeFailure, "This member can only be accessed for a group");
    std::vector<Shape> items;
    for (sal_Int32 i = 0; i < group->getCount(); ++i) {
      Reference<css::drawing::XShape> s(group->getByIndex(i), uno::UNO_QUERY);
      if (s.is()) items.emplace_back(ShapeFor(impl_->sheet, s));
    }
    return items;
  });
}

namespace {

// Whether the shape is a top-level shape of page.
bool OnTopLevel(const Reference<css::drawing::XShape>& shape, const Reference<css::drawing::XDrawPage>& page) {
  Reference<css::container::XChild> child(shape, uno::UNO_QUERY);
  return child.is() && Reference<uno::XInterface>(child->getParent(), uno::UNO_QUERY) ==
                           Reference<uno::XInterface>(page, uno::UNO_QUERY);
}

// Groups broken up long ago, or whose members have all gone, are let go.
constexpr size_t kUngroupedKept = 256;

void KeepUngrouped(HostSession& session, UngroupedGroup record) {
  std::lock_guard<std::mutex> lock(session.ungroupedMutex);
  auto& kept = session.ungrouped;
  kept.erase(std::remove_if(kept.begin(), kept.end(),
                            [](const UngroupedGroup& g) {
                              return std::none_of(g.members.begin(), g.members.end(), [&](const auto& m) {
                                Reference<css::container::XChild> child(m->shape, uno::UNO_QUERY);
                                return child.is() && child->getParent().is();
                              });
                            }),
             kept.end());
  if (kept.size() >= kUngroupedKept) kept.erase(kept.begin());
  kept.push_back(std::move(record));
}

}  // namespace

std::vector<Shape> Shape::Ungroup() {
  std::vector<Shape> items = GroupItems();
  std::vector<std::string> names;
  for (const auto& s : items) names.push_back(s.Name());
  Call("Shape.Ungroup", [&] {
    UngroupedGroup record{impl_, ToUtf8(GetProp<OUString>(impl_->Props(), "Name")), {}};
    // The members take the group's place in the drawing order.
    sal_Int32 place = GetProp<sal_Int32>(impl_->Props(), "ZOrder");
    std::vector<std::shared_ptr<ShapeImpl>> impls;
    for (const auto& item : items) impls.push_back(item.Impl());
    HandlesWithin within = HandlesInside(impls);
    Reference<css::drawing::XShapeGrouper> grouper(impl_->sheet->Page(), uno::UNO_QUERY_THROW);
    Reference<css::drawing::XShapeGroup> group(impl_->shape, uno::UNO_QUERY_THROW);
    grouper->ungroup(group);
    ShapeIndex::Forget(*impl_->sheet);
    RebindMembers(Reference<css::drawing::XShapes>(impl_->sheet->Page(), uno::UNO_QUERY_THROW), place, impls, names,
                  within);
    record.members = impls;
    KeepUngrouped(*impl_->sheet->session, std::move(record));
  });
  return items;
}

Shape Shape::Regroup() {
  return Call("Shape.Regroup", [&] {
    HostSession& session = *impl_->sheet->session;
    UngroupedGroup record;
    {
      std::lock_guard<std::mutex> lock(session.ungroupedMutex);
      auto& kept = session.ungrouped;
      // The latest break-up that this shape came out of.
      auto it = std::find_if(kept.rbegin(), kept.rend(), [&](const UngroupedGroup& g) {
        return std::any_of(g.members.begin(), g.members.end(), [&](const auto& m) { return m->shape == impl_->shape; });
      });
      if (it == kept.rend())
        throw HostError(HostError::kOfficeFailure, "This shape was not taken out of a group, so it cannot be regrouped");
      record = std::move(*it);
      kept.erase(std::next(it).base());
    }
    auto page = impl_->sheet->Page();
    std::vector<Shape> members;
    for (const auto& m : record.members)
      if (OnTopLevel(m->shape, page)) members.emplace_back(m);
    if (members.size() < 2)
      throw HostError(HostError::kOfficeFailure, "Fewer than two shapes of the former group are left to regroup");
    Shape made = ShapeRange(impl_->sheet, members).Group();
    // The old group's handles, among them those kept by groups broken up
    // around it, stand for the new one.
    {
      std::lock_guard<std::mutex> lock(session.shapesMutex);
      session.shapes.erase(KeyOf(record.group->shape));
      record.group->shape = made.Impl()->shape;
      session.shapes[KeyOf(record.group->shape)] = record.group;
    }
    Shape group(record.group);
    if (record.name != group.Name()) {
      try {
        group.SetName(record.name);
      } catch (const HostError&) {
        // Taken meanwhile: the group keeps its fresh name.
      }
    }
    return group;
  });
}

void Shape::Delete() {
  Call("Shape.Delete", [&] {
    Reference<css::container::XChild> child(impl_->shape, uno::UNO_QUERY);
    Reference<css::drawing::XShapes> parent(child.is() ? child->getParent() : uno::Reference<uno::XInterface>(), uno::UNO_QUERY);
    Reference<css::drawing::XShapes> page(impl_->sheet->Page(), uno::UNO_QUERY_THROW);
    if (!parent.is()) parent = page;
    Reference<css::drawing::XShapes> group(impl_->shape, uno::UNO_QUERY);
    if (parent == page && !group.is()) {
      ShapeIndex& index = ShapeIndex::Of(*impl_->sheet);
      std::string name = ToUtf8(GetProp<OUString>(impl_->Props(), "Name"));
      parent->remove(impl_->shape);
      index.Removed(name);
    } else {
      parent->remove(impl_->shape);
      ShapeIndex::Forget(*impl_->sheet);
    }
  });
}

void Shape::Select(bool replace) const {
  Call("Shape.Select", [&] {
    Reference<css::frame::XModel> model(impl_->sheet->document, uno::UNO_QUERY_THROW);
    Reference<css::view::XSelectionSupplier> sel(model->getCurrentController(), uno::UNO_QUERY_THROW);
    auto shapes = css::drawing::ShapeCollection::create(impl_->sheet->session->context);
    if (!replace) {
      Reference<css::drawing::XShapes> current(sel->getSelection(), uno::UNO_QUERY);
      Reference<css::drawing::XShape> one(sel->getSelection(), uno::UNO_QUERY);
      if (current.is())
        for (sal_Int32 i = 0; i < current->getCount(); ++i)
          shapes->add(Reference<css::drawing::XShape>(current->getByIndex(i), uno::UNO_QUERY));
      else if (one.is())
        shapes->add(one);
    }
    shapes->add(impl_->shape);
    sel->select(uno::Any(Reference<css::drawing::XShapes>(shapes, uno::UNO_QUERY_THROW)));
  });
}

void Shape::ZOrder(int command) {
  Call("Shape.ZOrder", [&] {
    ShapeIndex& index = ShapeIndex::Of(*impl_->sheet);
    auto ps = impl_->Props();
    sal_Int32 z = GetProp<sal_Int32>(ps, "ZOrder");
    sal_Int32 top = impl_->sheet->Page()->getCount() - 1;
    switch (command) {
      case msoBringToFront: z = top; break;
      case msoSendToBack: z = 0; break;
      case msoBringForward: z = std::min(top, z + 1); break;
      case msoSendBackward: z = std::max<sal_Int32>(0, z - 1); break;
      default: throw HostError(HostError::kInvalidArgument, "The specified value is out of range.");
    }
    SetProp(ps, "ZOrder", z);
    index.Reordered(impl_->shape);
  });
}

int Shape::ZOrderPosition() const {
  return Call("Shape.ZOrderPosition", [&] { return static_cast<int>(GetProp<sal_Int32>(impl_->Props(), "ZOrder")) + 1; });
}

Worksheet Shape::Parent() const { return Worksheet(impl_->sheet); }

bool Shape::SameAs(const Shape& other) const { return impl_->shape == other.impl_->shape; }

const void* Shape::Key() const {
  return Reference<uno::XInterface>(impl_->shape, uno::UNO_QUERY).get();
}

}  // namespace nivarel::office
