// Flow lines in a real office: where the default and the user-defined line
// are glued, when they are dashed, their order behind the shapes, and line
// styles drawn and read back on both version roads.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CConfig.h"
#include "CFlowLineAdder.h"
#include "FillFormat.h"
#include "CFlowLineFormatter.h"
#include "DirectDrawing.h"
#include "HostError.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "MsoConstants.h"
#include "AddinFixture.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using namespace host;
using namespace office;
using shapes::CFlowLineAdder;
using shapes::CFlowLineFormatter;

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }
constexpr long kBlack = Rgb(0, 0, 0), kRed = Rgb(255, 0, 0);

constexpr int kTop = 0, kRight = 1, kBottom = 2, kLeft = 3;

class FlowLinesTest : public testing::AddinFixture {
 protected:

  Shape Add(int type, double left, double top, double width = 80, double height = 40) {
    return sheet_->GetShapes().AddShape(type, left, top, width, height);
  }

  // An unglued straight connector somewhere out of the way.
  Shape Connector() {
    double y = 400 + 10 * count_++;
    return sheet_->GetShapes().AddConnector(msoConnectorStraight, 20, y, 120, y);
  }

  // A connector glued by hand from one shape's bottom to another's top.
  Shape Glued(Shape& from, Shape& to) {
    Shape line = Connector();
    line.GetConnectorFormat().BeginConnect(from, 3);
    line.GetConnectorFormat().EndConnect(to, 1);
    return line;
  }

  static rules::CConfig Config() {
    rules::CConfig c;
    c.FlowLineType = msoConnectorElbow;
    c.FlowLineStyle = 9;
    return c;
  }

  static void ExpectPoint(double x, double y, std::pair<double, double> point) {
    EXPECT_NEAR(x, point.first, 0.05);
    EXPECT_NEAR(y, point.second, 0.05);
  }

  CFlowLineAdder adder_;
  CFlowLineFormatter formatter_;

 private:
  int count_ = 0;
};

// The middle of a side of a shape, in points.
std::pair<double, double> SideMiddle(const Shape& s, int side) {
  switch (side) {
    case kTop: return {s.Left() + s.Width() / 2, s.Top()};
    case kRight: return {s.Left() + s.Width(), s.Top() + s.Height() / 2};
    case kBottom: return {s.Left() + s.Width() / 2, s.Top() + s.Height()};
    default: return {s.Left(), s.Top() + s.Height() / 2};
  }
}

TEST_F(FlowLinesTest, SitesOfTheTableAreTheHostsSitesOnThatSide) {
  // Every site the table names exists on the host's shape of that type.
  for (int type = 1; type <= 137; ++type) {
    Shape s = Add(type, 10, 10);
    int count = s.ConnectionSiteCount();
    for (int side = kTop; side <= kLeft; ++side) {
      int site = CFlowLineAdder::GetConnectionPoint(type, side);
      EXPECT_TRUE(site >= 1 && site <= count) << "type " << type << " side " << side << " site " << site;
    }
    s.Delete();
  }
  // On the flowchart symbols the site of a side is the one nearest that side's middle.
  for (int type = 61; type <= 88; ++type) {
    Shape s = Add(type, 10, 10, 120, 60);
    for (int side = kTop; side <= kLeft; ++side) {
      auto middle = SideMiddle(s, side);
      int nearest = 0;
      double best = 1e300;
      for (int site = 1; site <= s.ConnectionSiteCount(); ++site) {
        auto p = s.ConnectionSitePosition(site);
        double d = std::hypot(p.first - middle.first, p.second - middle.second);
        if (d < best - 1e-6) {
          best = d;
          nearest = site;
        }
      }
      EXPECT_EQ(nearest, CFlowLineAdder::GetConnectionPoint(type, side)) << "type " << type << " side " << side;
    }
    s.Delete();
  }
}

TEST_F(FlowLinesTest, ADefaultLineJoinsTheNearestSidesAndGoesBehind) {
  rules::CConfig config = Config();
  // One above the other: bottom to top.
  Shape upper = Add(msoShapeFlowchartProcess, 100, 50);
  Shape lower = Add(msoShapeFlowchartProcess, 100, 150);
  std::optional<Shape> line = adder_.AddDefaultFlowLine(*sheet_, upper, lower, config);
  ASSERT_TRUE(line);
  ConnectorFormat glue = line->GetConnectorFormat();
  ASSERT_TRUE(glue.BeginConnectedShape() && glue.EndConnectedShape());
  EXPECT_TRUE(glue.BeginConnectedShape()->SameAs(upper));
  EXPECT_TRUE(glue.EndConnectedShape()->SameAs(lower));
  EXPECT_EQ(3, glue.BeginConnectionSite());
  EXPECT_EQ(1, glue.EndConnectionSite());
  EXPECT_EQ(msoConnectorElbow, glue.Type());
  EXPECT_EQ(1, line->ZOrderPosition());
  EXPECT_EQ(msoLineSolid, line->Line().DashStyle());
  EXPECT_EQ(msoArrowheadTriangle, line->Line().EndArrowheadStyle());
  EXPECT_EQ(msoArrowheadLengthMedium, line->Line().EndArrowheadLength());
  EXPECT_EQ(msoArrowheadWidthMedium, line->Line().EndArrowheadWidth());
  EXPECT_EQ(10009, line->ShapeStyle());

  // Side by side, whichever the first glue: rerouted to right and left.
  Shape left = Add(msoShapeFlowchartProcess, 300, 50);
  Shape right = Add(msoShapeFlowchartProcess, 450, 50);
  for (int direction : {0, 1}) {
    SCOPED_TRACE("direction " + std::to_string(direction));
    config.FlowDirection = static_cast<int16_t>(direction);
    line = adder_.AddDefaultFlowLine(*sheet_, left, right, config);
    ASSERT_TRUE(line);
    EXPECT_EQ(4, line->GetConnectorFormat().BeginConnectionSite());
    EXPECT_EQ(2, line->GetConnectorFormat().EndConnectionSite());
  }
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, TheDirectionChoosesTheFirstGlueBeforeRerouting) {
  // A right brace has three sites: gluing an end to site 4 fails before the
  // reroute, and leaves that end where the line was drawn.
  rules::CConfig config = Config();
  Shape from = Add(msoShapeFlowchartProcess, 100, 50);
  Shape brace = Add(32, 100, 150);
  ASSERT_EQ(3, brace.ConnectionSiteCount());

  config.FlowDirection = 1;
  std::optional<Shape> line = adder_.AddDefaultFlowLine(*sheet_, from, brace, config);
  ASSERT_TRUE(line);
  ConnectorFormat glue = line->GetConnectorFormat();
  EXPECT_EQ(2, glue.BeginConnectionSite()) << "the first glue of direction 1 starts at site 2";
  EXPECT_FALSE(glue.EndConnected());
  ExpectPoint(brace.Left() + brace.Width() / 2, brace.Top(), glue.EndPoint());
  std::string log = ReadLogFile();
  EXPECT_NE(std::string::npos, log.find("[Error]; CFlowLineAdder.AddDefaultFlowLine; Error 5: ")) << log;
  EXPECT_NE(std::string::npos, log.find("(AddDefaultFlowLine)")) << log;

  // The other direction starts at sites 3 and 1, which the brace has.
  ClearLogFile();
  config.FlowDirection = 0;
  line = adder_.AddDefaultFlowLine(*sheet_, from, brace, config);
  ASSERT_TRUE(line);
  EXPECT_TRUE(line->GetConnectorFormat().EndConnected());
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, AUserDefinedLineKeepsTheNamedSides) {
  rules::CConfig config = Config();
  Shape process = Add(msoShapeFlowchartProcess, 100, 50);
  Shape connector = Add(msoShapeFlowchartConnector, 300, 150, 40, 40);
  Shape data = Add(msoShapeFlowchartData, 300, 250);
  struct Case {
    Shape* to;
    int16_t fromSide, toSide;
    int beginSite, endSite;
  } cases[] = {
      {&connector, kBottom, kRight, 3, 7},
      {&data, kBottom, kRight, 3, 6},
      {&connector, kTop, kLeft, 1, 3},   // far sides: no reroute
      {&data, kRight, kBottom, 4, 5},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("sides " + std::to_string(c.fromSide) + " " + std::to_string(c.toSide));
    std::optional<Shape> line =
        adder_.AddUserDefinedFlowLine(*sheet_, process, *c.to, c.fromSide, c.toSide, config, false);
    ASSERT_TRUE(line);
    ConnectorFormat glue = line->GetConnectorFormat();
    ASSERT_TRUE(glue.EndConnectedShape());
    EXPECT_TRUE(glue.EndConnectedShape()->SameAs(*c.to));
    EXPECT_EQ(c.beginSite, glue.BeginConnectionSite());
    EXPECT_EQ(c.endSite, glue.EndConnectionSite());
    EXPECT_EQ(1, line->ZOrderPosition());
    EXPECT_EQ(msoArrowheadTriangle, line->Line().EndArrowheadStyle());
  }
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, AnUnglueableLineStaysDrawnFromSideMiddleToSideMiddle) {
  // Plain lines have no sites, so the glue fails and the ends keep the points
  // where the line was drawn; a side outside 0 to 3 draws from the origin.
  rules::CConfig config = Config();
  Shape from = sheet_->GetShapes().AddLine(100, 50, 160, 90);
  Shape to = sheet_->GetShapes().AddLine(300, 200, 380, 260);
  for (int16_t side = kTop; side <= kLeft; ++side) {
    int16_t toSide = static_cast<int16_t>((side + 1) % 4);
    SCOPED_TRACE("sides " + std::to_string(side) + " " + std::to_string(toSide));
    std::optional<Shape> line = adder_.AddUserDefinedFlowLine(*sheet_, from, to, side, toSide, config, false);
    ASSERT_TRUE(line);
    auto begin = SideMiddle(from, side), end = SideMiddle(to, toSide);
    ExpectPoint(begin.first, begin.second, line->GetConnectorFormat().BeginPoint());
    ExpectPoint(end.first, end.second, line->GetConnectorFormat().EndPoint());
    EXPECT_FALSE(line->GetConnectorFormat().BeginConnected());
  }
  std::optional<Shape> odd = adder_.AddUserDefinedFlowLine(*sheet_, from, to, 4, -1, config, false);
  ASSERT_TRUE(odd);
  ExpectPoint(0, 0, odd->GetConnectorFormat().BeginPoint());
  ExpectPoint(0, 0, odd->GetConnectorFormat().EndPoint());

  std::string log = ReadLogFile();
  EXPECT_EQ(5, std::count(log.begin(), log.end(), '\n')) << log;
  EXPECT_NE(std::string::npos, log.find("[Error]; CFlowLineAdder.AddNewFlowline; Error 5: ")) << log;
  EXPECT_NE(std::string::npos, log.find("(AddNewFlowline)")) << log;
}

TEST_F(FlowLinesTest, ConnectionPointsOutsideTheTableAreSiteOne) {
  EXPECT_EQ(1, CFlowLineAdder::GetConnectionPoint(0, kRight));
  EXPECT_EQ(1, CFlowLineAdder::GetConnectionPoint(138, kRight));
  EXPECT_EQ(1, CFlowLineAdder::GetConnectionPoint(msoShapeMixed, kBottom));
  EXPECT_EQ(1, CFlowLineAdder::GetConnectionPoint(msoShapeFlowchartConnector, 4));
  EXPECT_EQ(1, CFlowLineAdder::GetConnectionPoint(msoShapeFlowchartConnector, -1));
  EXPECT_EQ(7, CFlowLineAdder::GetConnectionPoint(msoShapeFlowchartConnector, kRight));
}

TEST_F(FlowLinesTest, AnAlternateProcessAtEitherEndDashesTheLine) {
  rules::CConfig config = Config();
  struct Case {
    int from, to;
    bool dashed;
    int dash;
  } cases[] = {
      {61, 61, false, msoLineSolid}, {61, 61, true, msoLineDash}, {62, 61, false, msoLineDash},
      {61, 62, false, msoLineDash},  {62, 62, false, msoLineDash},
  };
  double x = 10;
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.from) + " to " + std::to_string(c.to) + (c.dashed ? " dashed" : ""));
    Shape from = Add(c.from, x, 50);
    Shape to = Add(c.to, x, 150);
    x += 100;
    std::optional<Shape> user = adder_.AddUserDefinedFlowLine(*sheet_, from, to, kBottom, kTop, config, c.dashed);
    ASSERT_TRUE(user);
    EXPECT_EQ(c.dash, user->Line().DashStyle());
    EXPECT_TRUE(user->Line().Visible());
    if (c.dashed) continue;
    std::optional<Shape> standard = adder_.AddDefaultFlowLine(*sheet_, from, to, config);
    ASSERT_TRUE(standard);
    EXPECT_EQ(c.dash, standard->Line().DashStyle());
    EXPECT_EQ(msoLineSingle, standard->Line().Style());
    EXPECT_EQ(9, formatter_.GetLineStyle(*standard)) << "the dash keeps the style";
  }
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, LinesEndUpBehindAllShapes) {
  Shapes shapes = sheet_->GetShapes();
  Shape a = Add(msoShapeFlowchartProcess, 10, 10);
  Shape l1 = Connector();
  Shape b = Add(msoShapeFlowchartDecision, 10, 100);
  Shape l2 = shapes.AddLine(0, 0, 50, 50);
  Shape l3 = Connector();
  Shape box = shapes.AddTextbox(msoTextOrientationHorizontal, 200, 10, 40, 20);
  Shape c = Add(msoShapeFlowchartTerminator, 10, 200);
  Shape l4 = Connector();
  formatter_.SetFlowLineOrder(*sheet_);
  int lastLine = 0;
  for (const Shape* l : {&l1, &l2, &l3, &l4}) lastLine = std::max(lastLine, l->ZOrderPosition());
  EXPECT_EQ(4, lastLine);
  // The others keep their order among themselves.
  EXPECT_LT(a.ZOrderPosition(), b.ZOrderPosition());
  EXPECT_LT(b.ZOrderPosition(), box.ZOrderPosition());
  EXPECT_LT(box.ZOrderPosition(), c.ZOrderPosition());
  EXPECT_EQ(8, shapes.Count());

  // Lines in front again: a new one the layer adds, an old one the layer
  // brings forward, an old one somebody else brings to the front; each time
  // every line ends up behind every other shape.
  std::vector<Shape> lines = {l1, l2, l3, l4};
  auto linesAtTheBack = [&](const char* what) {
    int last = 0;
    for (const Shape& l : lines) last = std::max(last, l.ZOrderPosition());
    EXPECT_EQ(static_cast<int>(lines.size()), last) << what;
  };
  Shape d = Add(msoShapeFlowchartProcess, 10, 300);
  lines.push_back(Connector());
  formatter_.SetFlowLineOrder(*sheet_);
  linesAtTheBack("a new line");
  EXPECT_LT(c.ZOrderPosition(), d.ZOrderPosition());
  l2.ZOrder(msoBringToFront);
  formatter_.SetFlowLineOrder(*sheet_);
  linesAtTheBack("an old line brought forward by the layer");
  driver::BringToFrontDirectly(*sheet_, l3.ZOrderPosition());
  formatter_.SetFlowLineOrder(*sheet_);
  linesAtTheBack("an old line brought forward behind the layer's back");
  EXPECT_EQ("", ReadLogFile());
}

// A line's look as drawn: weight, colour and shadow.
struct Look {
  double weight;
  long colour;
  bool shadow;
  long shadowColour;
  double offsetX, offsetY, transparency;
};

Look LookOf(const Shape& line) {
  Look k{line.Line().Weight(), line.Line().ForeColor().RGB(), line.Shadow().Visible(), 0, 0, 0, 0};
  if (k.shadow) {
    k.shadowColour = line.Shadow().ForeColor().RGB();
    k.offsetX = line.Shadow().OffsetX();
    k.offsetY = line.Shadow().OffsetY();
    k.transparency = line.Shadow().Transparency();
  }
  return k;
}

void ExpectLook(const Look& expected, const Look& actual) {
  EXPECT_DOUBLE_EQ(expected.weight, actual.weight);
  EXPECT_EQ(expected.colour, actual.colour);
  EXPECT_EQ(expected.shadow, actual.shadow);
  EXPECT_EQ(expected.shadowColour, actual.shadowColour);
  EXPECT_NEAR(expected.offsetX, actual.offsetX, 0.03);
  EXPECT_NEAR(expected.offsetY, actual.offsetY, 0.03);
  EXPECT_NEAR(expected.transparency, actual.transparency, 0.005);
}

TEST_F(FlowLinesTest, EveryStyleReadsBackAndLooksTheSameOnBothRoads) {
  std::vector<Shape> presetLines;
  std::vector<Look> looks;
  for (int16_t style = 1; style <= 21; ++style) {
    SCOPED_TRACE("style " + std::to_string(style));
    Shape line = Connector();
    formatter_.SetNewSolidFlowLineFormat(line, style);
    EXPECT_EQ(10000 + style, line.ShapeStyle());
    EXPECT_EQ(style, formatter_.GetLineStyle(line));
    // A medium triangle is three widths of its line (a line under 0.7 mm
    // counts as 0.7 mm), whatever weight the style gives the line.
    EXPECT_EQ(msoArrowheadTriangle, line.Line().EndArrowheadStyle());
    EXPECT_EQ(msoArrowheadWidthMedium, line.Line().EndArrowheadWidth());
    EXPECT_NEAR(3 * std::max(line.Line().Weight(), 0.7 * 72 / 25.4), line.Line().EndArrowheadDrawnWidth(), 0.05);
    presetLines.push_back(line);
    looks.push_back(LookOf(line));
  }
  EXPECT_EQ("", ReadLogFile());
  constexpr long kGrey = Rgb(150, 150, 150);
  ExpectLook({0.75, kBlack, false, 0, 0, 0, 0}, looks[0]);
  ExpectLook({2, Rgb(74, 126, 187), true, kGrey, 0.8, 1.575, 0.62}, looks[8]);
  ExpectLook({3, Rgb(246, 146, 64), true, kGrey, 0.9, 1.81, 0.65}, looks[20]);
  ExpectLook({0.75, Rgb(125, 96, 160), false, 0, 0, 0, 0}, looks[4]);

  TakeTheRoadBelowVersion12();
  for (int16_t style = 1; style <= 21; ++style) {
    SCOPED_TRACE("style " + std::to_string(style));
    Shape line = Connector();
    line.Shadow().SetVisible(true);
    formatter_.SetNewSolidFlowLineFormat(line, style);
    ExpectLook(looks[style - 1], LookOf(line));
    EXPECT_EQ(style, formatter_.GetLineStyle(line));
    EXPECT_EQ(style, formatter_.GetLineStyle(presetLines[style - 1])) << "read by weight and colour";
  }
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, WithoutAPresetTheStyleIsReadFromWeightAndColour) {
  struct Case {
    double weight;
    long colour;
    int16_t style;
  } cases[] = {
      {2.5, Rgb(190, 75, 72), 10},    {2.51, Rgb(190, 75, 72), 17}, {1.0, Rgb(190, 75, 72), 3},
      {1.01, Rgb(190, 75, 72), 10},   {2, Rgb(74, 126, 187), 9},    {0.75, kBlack, 1},
      {0.75, kRed, 1},                {3, kRed, 15},                {6, Rgb(246, 146, 64), 21},
      {0.25, Rgb(70, 170, 197), 6},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("weight " + std::to_string(c.weight) + " colour " + std::to_string(c.colour));
    Shape line = Connector();
    line.Line().SetWeight(c.weight);
    line.Line().ForeColor().SetRGB(c.colour);
    EXPECT_EQ(c.style, formatter_.GetLineStyle(line));
  }
  // A preset outranks the weight and colour drawn over it.
  Shape preset = Connector();
  formatter_.SetNewSolidFlowLineFormat(preset, 4);
  preset.Line().SetWeight(3);
  preset.Line().ForeColor().SetRGB(kRed);
  EXPECT_EQ(4, formatter_.GetLineStyle(preset));
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, AStyleBeyondTheGalleryIsRefusedAndLogged) {
  Shape line = Connector();
  formatter_.SetNewSolidFlowLineFormat(line, 22);
  EXPECT_EQ(0, line.ShapeStyle());
  EXPECT_EQ(msoArrowheadTriangle, line.Line().EndArrowheadStyle());
  std::string log = ReadLogFile();
  EXPECT_NE(std::string::npos, log.find("[Error]; CFlowLineFormatter.SetLineStyle; Error 5: ")) << log;
  EXPECT_NE(std::string::npos, log.find("(SetLineStyle)")) << log;
  EXPECT_EQ(1, std::count(log.begin(), log.end(), '\n')) << log;

  // The road below 12 has nothing to set for it, and nothing to report.
  TakeTheRoadBelowVersion12();
  ClearLogFile();
  for (int16_t style : {22, 0}) {
    SCOPED_TRACE("style " + std::to_string(style));
    Shape old = Connector();
    old.Line().SetWeight(1.5);
    old.Line().ForeColor().SetRGB(kRed);
    formatter_.SetNewSolidFlowLineFormat(old, style);
    EXPECT_DOUBLE_EQ(1.5, old.Line().Weight());
    EXPECT_EQ(kRed, old.Line().ForeColor().RGB());
    EXPECT_FALSE(old.Shadow().Visible());
  }
  EXPECT_EQ("", ReadLogFile());
}

TEST_F(FlowLinesTest, TheHostTakesLineStylesOnLinesAndOnTheOutlinesOfShapes) {
  Shape straight = sheet_->GetShapes().AddLine(10, 10, 100, 60);
  straight.SetShapeStyle(10017);
  EXPECT_EQ(10017, straight.ShapeStyle());
  EXPECT_DOUBLE_EQ(3, straight.Line().Weight());
  EXPECT_EQ(Rgb(190, 75, 72), straight.Line().ForeColor().RGB());
  EXPECT_TRUE(straight.Shadow().Visible());

  Shape connector = Connector();
  for (int refused : {10000, 10022, 9999, 43}) {
    SCOPED_TRACE("style " + std::to_string(refused));
    EXPECT_THROW(connector.SetShapeStyle(refused), HostError);
    EXPECT_EQ(0, connector.ShapeStyle());
  }
  // A shape takes the line's look on its outline, and no fill.
  Shape process = Add(msoShapeFlowchartProcess, 200, 10);
  process.Line().SetWeight(1);
  process.SetShapeStyle(10010);
  EXPECT_EQ(10010, process.ShapeStyle());
  EXPECT_DOUBLE_EQ(2, process.Line().Weight());
  EXPECT_EQ(Rgb(190, 75, 72), process.Line().ForeColor().RGB());
  EXPECT_FALSE(process.Fill().Visible());
}

TEST_F(FlowLinesTest, RestylingSetsTheDashByTheAlternateProcessRule) {
  rules::CConfig config = Config();
  config.FlowLineStyle = 16;
  Shape process = Add(msoShapeFlowchartProcess, 10, 10);
  Shape alternate = Add(msoShapeFlowchartAlternateProcess, 10, 100);
  Shape other = Add(msoShapeFlowchartProcess, 10, 200);

  // A dashed line that is new again: reset to a solid line unless the rule dashes it.
  struct Case {
    Shape* from;
    Shape* to;
    bool rule;
    int dash;
  } cases[] = {
      {&process, &alternate, false, msoLineSolid}, {&process, &alternate, true, msoLineDash},
      {&alternate, &other, true, msoLineDash},      {&process, &other, true, msoLineSolid},
      {&alternate, &alternate, true, msoLineDash},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.from->AutoShapeType()) + " to " + std::to_string(c.to->AutoShapeType()) +
                 (c.rule ? " with the rule" : ""));
    Shape line = Glued(*c.from, *c.to);
    line.Line().SetDashStyle(msoLineDashDot);
    config.AlternateProcessDashed = c.rule;
    formatter_.SetFlowLineFormat(line, config, true);
    EXPECT_EQ(c.dash, line.Line().DashStyle());
    EXPECT_EQ(msoArrowheadTriangle, line.Line().EndArrowheadStyle());
    EXPECT_EQ(16, formatter_.GetLineStyle(line));
  }

  // Not new: no arrowhead, and the dash stays.
  config.AlternateProcessDashed = true;
  Shape kept = Glued(process, other);
  kept.Line().SetDashStyle(msoLineDashDot);
  formatter_.SetFlowLineFormat(kept, config, false);
  EXPECT_EQ(msoLineDashDot, kept.Line().DashStyle());
  EXPECT_EQ(msoArrowheadNone, kept.Line().EndArrowheadStyle());
  EXPECT_EQ(16, formatter_.GetLineStyle(kept));

  // Unglued ends are no alternate process.
  Shape loose = Connector();
  formatter_.SetFlowLineFormat(loose, config, true);
  EXPECT_EQ(msoLineSolid, loose.Line().DashStyle());
  EXPECT_EQ("", ReadLogFile());

  // A plain line has no connector format to ask.
  Shape plain = sheet_->GetShapes().AddLine(200, 10, 300, 10);
  formatter_.SetFlowLineFormat(plain, config, true);
  EXPECT_EQ(16, formatter_.GetLineStyle(plain));
  std::string log = ReadLogFile();
  EXPECT_NE(std::string::npos, log.find("[Error]; CFlowLineFormatter.SetFlowLineFormat; ")) << log;
  EXPECT_NE(std::string::npos, log.find("(SetFlowLineFormat)")) << log;
}

TEST_F(FlowLinesTest, TheConfiguredStyleLeavesDashAndVisibilityAlone) {
  rules::CConfig config = Config();
  config.FlowLineStyle = 12;
  Shape line = Connector();
  line.Line().SetDashStyle(msoLineLongDash);
  line.Line().SetVisible(false);
  formatter_.SetLineFormat(line, config);
  EXPECT_EQ(12, formatter_.GetLineStyle(line));
  EXPECT_EQ(10012, line.ShapeStyle());
  EXPECT_EQ(msoLineLongDash, line.Line().DashStyle());
  EXPECT_FALSE(line.Line().Visible());
  EXPECT_EQ(msoArrowheadNone, line.Line().EndArrowheadStyle());

  // A new dashed line is made visible, solid, single, and then dashed.
  Shape dashed = Connector();
  dashed.Line().SetVisible(false);
  dashed.Line().SetStyle(msoLineThinThick);
  formatter_.SetNewDashedFlowLineFormat(dashed, 12);
  EXPECT_TRUE(dashed.Line().Visible());
  EXPECT_EQ(msoLineSingle, dashed.Line().Style());
  EXPECT_EQ(msoLineDash, dashed.Line().DashStyle());
  EXPECT_EQ(12, formatter_.GetLineStyle(dashed));
  EXPECT_EQ("", ReadLogFile());
}

}  // namespace
}  // namespace nivarel
