// Connectors glue to connection sites numbered as the host numbers them, end
// on the side the site stands for, follow their shapes, and reroute to the
// nearest pair of sites.
#include "HostError.h"
#include "MsoConstants.h"
#include "OfficeTest.h"
#include "Shapes.h"

using namespace nivarel::office;

namespace nivarel::testing {
namespace {

class HostConnectorsTest : public OfficeTest {};

struct Sides {
  int type;
  int top, left, bottom, right;  // site numbers
  double slant;                  // the left and right sides' midpoints lie this far in, as a fraction of the width
};

TEST_F(HostConnectorsTest, GluedEndsSitOnTheMidpointOfTheSiteSide) {
  const Sides table[] = {{msoShapeFlowchartProcess, 1, 2, 3, 4, 0},
                         {msoShapeFlowchartDecision, 1, 2, 3, 4, 0},
                         {msoShapeFlowchartData, 2, 3, 5, 6, 0.1},
                         {msoShapeFlowchartTerminator, 1, 2, 3, 4, 0},
                         {msoShapeFlowchartConnector, 1, 3, 5, 7, 0}};
  Shapes shapes = sheet_->GetShapes();
  double y = 20;
  for (const Sides& t : table) {
    SCOPED_TRACE("type " + std::to_string(t.type));
    double l = 100, w = 90, h = 36, top = y;
    Shape s = shapes.AddShape(t.type, l, top, w, h);
    struct {
      int site;
      double x, y;
    } expected[] = {{t.top, l + w / 2, top},
                    {t.left, l + t.slant * w, top + h / 2},
                    {t.bottom, l + w / 2, top + h},
                    {t.right, l + w - t.slant * w, top + h / 2}};
    for (const auto& e : expected) {
      Shape c = shapes.AddConnector(msoConnectorStraight, 10, 10, 20, 20);
      c.GetConnectorFormat().EndConnect(s, e.site);
      auto end = c.GetConnectorFormat().EndPoint();
      EXPECT_NEAR(e.x, end.first, 0.5) << "site " << e.site;
      EXPECT_NEAR(e.y, end.second, 0.5) << "site " << e.site;
      EXPECT_EQ(e.site, c.GetConnectorFormat().EndConnectionSite());
      EXPECT_TRUE(c.GetConnectorFormat().EndConnectedShape()->SameAs(s));
    }
    y += 80;
  }
}

TEST_F(HostConnectorsTest, ConnectorsFollowTheirShapesAndRerouteToTheNearestSites) {
  Shapes shapes = sheet_->GetShapes();
  Shape a = shapes.AddShape(msoShapeFlowchartProcess, 50, 20, 80, 30);
  Shape b = shapes.AddShape(msoShapeFlowchartProcess, 50, 120, 80, 30);
  Shape c = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
  EXPECT_TRUE(c.Connector());
  ConnectorFormat cf = c.GetConnectorFormat();
  cf.BeginConnect(a, 4);  // right side
  cf.EndConnect(b, 2);    // left side
  EXPECT_THROW(cf.EndConnect(b, 5), HostError);

  c.RerouteConnections();
  EXPECT_EQ(3, cf.BeginConnectionSite());  // bottom of the upper shape
  EXPECT_EQ(1, cf.EndConnectionSite());    // top of the lower one

  // Side by side, the right of the first meets the left of the second.
  b.SetTop(20);
  b.SetLeft(250);
  c.RerouteConnections();
  EXPECT_EQ(4, cf.BeginConnectionSite());
  EXPECT_EQ(2, cf.EndConnectionSite());
  auto end = cf.EndPoint();
  EXPECT_NEAR(250, end.first, 0.5);
  EXPECT_NEAR(35, end.second, 0.5);
}

TEST_F(HostConnectorsTest, SendToBackPutsLinesBehindShapes) {
  Shapes shapes = sheet_->GetShapes();
  Shape a = shapes.AddShape(msoShapeFlowchartProcess, 50, 20, 80, 30);
  Shape b = shapes.AddShape(msoShapeFlowchartProcess, 50, 120, 80, 30);
  Shape c = shapes.AddConnector(msoConnectorElbow, 0, 0, 10, 10);
  EXPECT_EQ(3, c.ZOrderPosition());
  c.ZOrder(msoSendToBack);
  EXPECT_EQ(1, c.ZOrderPosition());
  EXPECT_TRUE(shapes.Item(1).SameAs(c));
  EXPECT_EQ(msoConnectorElbow, c.GetConnectorFormat().Type());
  EXPECT_THROW(a.GetConnectorFormat(), HostError);
}

}  // namespace
}  // namespace nivarel::testing
