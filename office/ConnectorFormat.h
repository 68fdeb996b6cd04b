// How a connector is glued: the shape and connection site at each end.
#pragma once

#include <memory>
#include <optional>

namespace nivarel::office {

struct ShapeImpl;
class Shape;

class ConnectorFormat {
 public:
  explicit ConnectorFormat(std::shared_ptr<ShapeImpl> connector) : connector_(std::move(connector)) {}

  // Glue an end to a site of a shape; a site outside 1..ConnectionSiteCount raises HostError.
  void BeginConnect(const Shape& shape, int site);
  void EndConnect(const Shape& shape, int site);

  bool BeginConnected() const;
  bool EndConnected() const;
  std::optional<Shape> BeginConnectedShape() const;
  std::optional<Shape> EndConnectedShape() const;
  int BeginConnectionSite() const;  // 0 when not glued
  int EndConnectionSite() const;
  int Type() const;  // msoConnectorStraight, msoConnectorElbow, msoConnectorCurve
  void SetType(int connectorType);

  // End points in points.
  std::pair<double, double> BeginPoint() const;
  std::pair<double, double> EndPoint() const;

 private:
  std::shared_ptr<ShapeImpl> connector_;
};

}  // namespace nivarel::office
