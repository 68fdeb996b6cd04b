#include "ConnectorFormat.h"

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/drawing/ConnectorType.hpp>
#include <com/sun/star/drawing/XConnectableShape.hpp>
#include <com/sun/star/drawing/XConnectorShape.hpp>

#include "MsoConstants.h"
#include "Shape.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

void Connect(ShapeImpl& connector, const Shape& shape, int site, bool begin) {
  int count = shape.ConnectionSiteCount();
  if (site < 1 || site > count)
    throw HostError(HostError::kInvalidArgument, "The specified value is out of range.");
  Call(begin ? "ConnectorFormat.BeginConnect" : "ConnectorFormat.EndConnect", [&] {
    auto ps = connector.Props();
    SetProp(ps, begin ? "StartShape" : "EndShape", shape.Impl()->shape);
    SetProp(ps, begin ? "StartGluePointIndex" : "EndGluePointIndex", SiteGluePoint(*shape.Impl(), site));
  });
}

std::optional<Shape> Connected(const ShapeImpl& connector, bool begin) {
  return Call("ConnectorFormat", [&]() -> std::optional<Shape> {
    Reference<css::drawing::XShape> s(connector.Props()->getPropertyValue(OUString::createFromAscii(begin ? "StartShape" : "EndShape")), uno::UNO_QUERY);
    if (!s.is()) return std::nullopt;
    return Shape(ShapeFor(connector.sheet, s));
  });
}

int Site(const ShapeImpl& connector, bool begin) {
  return Call("ConnectorFormat", [&] {
    auto ps = connector.Props();
    Reference<css::drawing::XShape> s(ps->getPropertyValue(OUString::createFromAscii(begin ? "StartShape" : "EndShape")), uno::UNO_QUERY);
    if (!s.is()) return 0;
    sal_Int32 g = GetProp<sal_Int32>(ps, begin ? "StartGluePointIndex" : "EndGluePointIndex");
    Shape glued(ShapeFor(connector.sheet, s));
    for (int site = 1, n = glued.ConnectionSiteCount(); site <= n; ++site)
      if (SiteGluePoint(*glued.Impl(), site) == g) return site;
    return 0;
  });
}

std::pair<double, double> EndPointOf(const ShapeImpl& connector, bool begin) {
  return Call("ConnectorFormat", [&] {
    auto p = GetProp<css::awt::Point>(connector.Props(), begin ? "StartPosition" : "EndPosition");
    return std::make_pair(HmmToPt(p.X), HmmToPt(p.Y));
  });
}

}  // namespace

void ConnectorFormat::BeginConnect(const Shape& shape, int site) { Connect(*connector_, shape, site, true); }
void ConnectorFormat::EndConnect(const Shape& shape, int site) { Connect(*connector_, shape, site, false); }
bool ConnectorFormat::BeginConnected() const { return Connected(*connector_, true).has_value(); }
bool ConnectorFormat::EndConnected() const { return Connected(*connector_, false).has_value(); }
std::optional<Shape> ConnectorFormat::BeginConnectedShape() const { return Connected(*connector_, true); }
std::optional<Shape> ConnectorFormat::EndConnectedShape() const { return Connected(*connector_, false); }
int ConnectorFormat::BeginConnectionSite() const { return Site(*connector_, true); }
int ConnectorFormat::EndConnectionSite() const { return Site(*connector_, false); }
std::pair<double, double> ConnectorFormat::BeginPoint() const { return EndPointOf(*connector_, true); }
std::pair<double, double> ConnectorFormat::EndPoint() const { return EndPointOf(*connector_, false); }

int ConnectorFormat::Type() const {
  return Call("ConnectorFormat.Type", [&] {
    switch (GetProp<css::drawing::ConnectorType>(connector_->Props(), "EdgeKind")) {
      case css::drawing::ConnectorType_STANDARD: return msoConnectorElbow;
      case css::drawing::ConnectorType_CURVE: return msoConnectorCurve;
      default: return msoConnectorStraight;
    }
  });
}

void ConnectorFormat::SetType(int connectorType) {
  Call("ConnectorFormat.Type", [&] {
    auto kind = css::drawing::ConnectorType_LINE;
    if (connectorType == msoConnectorElbow) kind = css::drawing::ConnectorType_STANDARD;
    else if (connectorType == msoConnectorCurve) kind = css::drawing::ConnectorType_CURVE;
    SetProp(connector_->Props(), "EdgeKind", kind);
  });
}

}  // namespace nivarel::office
