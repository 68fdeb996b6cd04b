// Shapes in the logic's terms: every auto shape type reads back as itself,
// positions and sizes survive in points, names are unique, and the flowchart
// symbols keep their presets when saved as xlsx.
#include <cmath>
#include <filesystem>
#include <set>
#include <vector>

#include "AutoShapeTypes.h"
#include "DirectDrawing.h"
#include "HostError.h"
#include "MsoConstants.h"
#include "OfficeTest.h"
#include "Shapes.h"

using namespace nivarel::office;
using namespace nivarel::driver;

namespace nivarel::testing {
namespace {

class HostShapesTest : public OfficeTest {};

TEST_F(HostShapesTest, EveryAutoShapeTypeReadsBackWithItsPlaceAndAUniqueName) {
  Shapes shapes = sheet_->GetShapes();
  std::set<std::string> names;
  for (int id = 1; id <= 137; ++id) {
    // Odd sizes and places, so that rounding to the office's units shows.
    Range cell = sheet_->Cells(2 + (id - 1) % 40, 2 + 3 * ((id - 1) / 40));
    double width = 47.3 + id % 7, height = 19.15 + id % 5;
    Shape s = shapes.AddShape(id, cell.Left(), cell.Top(), width, height);
    SCOPED_TRACE("type " + std::to_string(id));
    EXPECT_EQ(id, s.AutoShapeType());
    EXPECT_NEAR(cell.Left(), s.Left(), 0.05);
    EXPECT_NEAR(cell.Top(), s.Top(), 0.05);
    EXPECT_NEAR(width, s.Width(), 0.05);
    EXPECT_NEAR(height, s.Height(), 0.05);
    EXPECT_EQ(FindAutoShapeType(id)->siteCount, s.ConnectionSiteCount());
    EXPECT_TRUE(names.insert(s.Name()).second) << s.Name();
    EXPECT_NE(std::string::npos, s.Name().find(' ')) << "a word and a number: " << s.Name();
  }
  EXPECT_EQ(137, shapes.Count());
  EXPECT_EQ(msoAutoShape, shapes.Item(61).Type());
  EXPECT_FALSE(shapes.Item(61).Connector());

  // A shape stays on the sheet: moved past column A or row 1, it stops there.
  Shape moved = shapes.Item(1);
  moved.SetLeft(-12.5);
  moved.SetTop(-3);
  EXPECT_EQ(0, moved.Left());
  EXPECT_EQ(0, moved.Top());
}

TEST_F(HostShapesTest, FlowchartSymbolsKeepTheirPresetsInXlsx) {
  Shapes shapes = sheet_->GetShapes();
  for (int id = 61; id <= 88; ++id) shapes.AddShape(id, 10, 30.0 * (id - 60), 60, 24);
  std::string dir = Office().ProfileDir();
  std::string path = dir + "/presets.xlsx";
  book_->SaveAs(path);
  std::string xml;
  ASSERT_EQ(0, OfficeProcess::RunProgram("unzip", "-p '" + path + "' xl/drawings/drawing1.xml", 30, &xml));
  // The presets in drawing order must be those of 61 to 88.
  std::vector<std::string> presets;
  for (size_t at = xml.find("prstGeom prst=\""); at != std::string::npos; at = xml.find("prstGeom prst=\"", at + 1)) {
    size_t from = at + 15;
    presets.push_back(xml.substr(from, xml.find('"', from) - from));
  }
  ASSERT_EQ(28u, presets.size());
  for (int id = 61; id <= 88; ++id) EXPECT_EQ(FindAutoShapeType(id)->drawingMlPreset, presets[id - 61]) << id;
  EXPECT_EQ("flowChartProcess", presets[0]);
  EXPECT_EQ("flowChartTerminator", presets[69 - 61]);
}

TEST_F(HostShapesTest, NamesAreFreshUniqueAndLookedUpByName) {
  Shapes shapes = sheet_->GetShapes();
  Shape a = shapes.AddShape(msoShapeFlowchartProcess, 10, 10, 50, 20);
  Shape b = shapes.AddShape(msoShapeFlowchartDecision, 10, 50, 50, 20);
  EXPECT_NE(a.Name(), b.Name());
  EXPECT_TRUE(shapes.Item(b.Name()).SameAs(b));

  EXPECT_THROW(shapes.Item("nonexistent"), HostError);
  EXPECT_THROW(b.SetName(a.Name()), HostError);
  b.SetName("Step two");
  EXPECT_TRUE(shapes.Item("Step two").SameAs(b));

  // A new shape never takes a name that is already used.
  a.SetName("AutoShape 3");
  Shape c = shapes.AddShape(msoShapeFlowchartTerminator, 10, 90, 50, 20);
  EXPECT_NE("AutoShape 3", c.Name());
  EXPECT_THROW(shapes.AddShape(138, 0, 0, 10, 10), HostError);
  EXPECT_THROW(shapes.AddShape(0, 0, 0, 10, 10), HostError);
}

// The user's own drawing, a macro or another extension change the sheet
// without the layer: a shape removed and another added in its place (as many
// shapes as before), a shape renamed, an unnamed shape drawn. Lookups by name
// and fresh names still see the sheet as it is.
TEST_F(HostShapesTest, ShapesChangedBehindTheLayersBackAreSeen) {
  Shapes shapes = sheet_->GetShapes();
  Shape a = shapes.AddShape(msoShapeFlowchartProcess, 10, 10, 50, 20);
  Shape b = shapes.AddShape(msoShapeFlowchartProcess, 10, 50, 50, 20);
  const std::string aName = a.Name(), bName = b.Name();
  ASSERT_TRUE(shapes.Item(bName).SameAs(b));

  RemoveShapeDirectly(*sheet_, 2);
  DrawRectangleDirectly(*sheet_, "AutoShape 3", 100, 10);
  Shape c = shapes.AddShape(msoShapeFlowchartProcess, 10, 90, 50, 20);
  EXPECT_NE("AutoShape 3", c.Name()) << "a name taken behind the layer's back";
  EXPECT_THROW(shapes.Item(bName), HostError) << "removed";
  EXPECT_EQ(msoAutoShape, shapes.Item("AutoShape 3").Type()) << "drawn behind the layer";

  RenameShapeDirectly(*sheet_, 1, "Renamed");
  EXPECT_TRUE(shapes.Item("Renamed").SameAs(a));
  EXPECT_THROW(shapes.Item(aName), HostError) << "the old name is free";
  EXPECT_THROW(c.SetName("Renamed"), HostError);
  c.SetName(aName);
  EXPECT_TRUE(shapes.Item(aName).SameAs(c));

  DrawRectangleDirectly(*sheet_, "", 100, 50);
  RemoveShapeDirectly(*sheet_, 2);  // "AutoShape 3"
  DrawRectangleDirectly(*sheet_, "", 100, 90);
  std::set<std::string> names;
  for (int i = 0; i < 3; ++i) names.insert(shapes.AddShape(msoShapeFlowchartDecision, 200, 10 + 40 * i, 40, 30).Name());
  for (int i = 1; i <= shapes.Count(); ++i) {
    std::string name = shapes.Item(i).Name();
    if (name.empty()) continue;
    EXPECT_TRUE(shapes.Item(name).SameAs(shapes.Item(i))) << name;
    names.insert(name);
  }
  EXPECT_EQ(5u, names.size()) << "each named shape once: Renamed, c and three decisions";
  EXPECT_EQ(7, shapes.Count());
}

TEST_F(HostShapesTest, WhatTheLayerAddedSinceAMarkWithoutALookAtTheSheet) {
  Shapes shapes = sheet_->GetShapes();
  Shape old = shapes.AddShape(msoShapeFlowchartProcess, 10, 10, 50, 20);
  ShapeMark mark = shapes.Mark();
  Shape a = shapes.AddShape(msoShapeFlowchartProcess, 10, 50, 50, 20);
  Shape line = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
  shapes.AddShape(msoShapeFlowchartDecision, 10, 90, 50, 20).Delete();
  Shape b = shapes.AddShape(msoShapeFlowchartProcess, 10, 130, 50, 20);
  b.ZOrder(msoSendToBack);  // a new shape moved: the old ones keep their order

  auto keys = [](const std::vector<Shape>& shapes) {
    std::vector<const void*> out;
    for (const Shape& s : shapes) out.push_back(s.Key());
    return out;
  };
  std::vector<Shape> added;
  bool reordered = true;
  ASSERT_TRUE(shapes.AddedSince(mark, added, reordered));
  EXPECT_FALSE(reordered);
  EXPECT_EQ((std::vector<const void*>{b.Key(), a.Key(), line.Key()}), keys(added))
      << "in drawing order, the deleted one left out";

  Shape group = shapes.GetRange({a.Name(), line.Name()}).Group();
  added.clear();
  ASSERT_TRUE(shapes.AddedSince(mark, added, reordered));
  EXPECT_EQ((std::vector<const void*>{b.Key(), group.Key()}), keys(added)) << "the group, not its members";

  old.ZOrder(msoBringToFront);
  added.clear();
  ASSERT_TRUE(shapes.AddedSince(mark, added, reordered));
  EXPECT_TRUE(reordered) << "a shape older than the mark moved";

  ShapeMark later = shapes.Mark();
  DrawRectangleDirectly(*sheet_, "", 100, 10);
  EXPECT_FALSE(shapes.AddedSince(later, added, reordered)) << "drawn behind the layer's back";
  EXPECT_FALSE(shapes.AddedSince(mark, added, reordered));
  ShapeMark fresh = shapes.Mark();
  Shape c = shapes.AddShape(msoShapeFlowchartProcess, 200, 10, 50, 20);
  added.clear();
  ASSERT_TRUE(shapes.AddedSince(fresh, added, reordered));
  EXPECT_EQ((std::vector<const void*>{c.Key()}), keys(added));
}

TEST_F(HostShapesTest, GroupsTextAndKindsOfShape) {
  Shapes shapes = sheet_->GetShapes();
  Shape a = shapes.AddShape(msoShapeFlowchartDecision, 10, 10, 60, 40);
  a.GetTextFrame().GetCharacters().SetText("Is it in stock?");
  Shape label = shapes.AddTextbox(msoTextOrientationHorizontal, 80, 10, 30, 15);
  label.GetTextFrame().GetCharacters().SetText("Yes");
  Shape line = shapes.AddLine(0, 0, 50, 50);
  EXPECT_EQ(msoTextBox, label.Type());
  EXPECT_EQ(msoLine, line.Type());

  Shape group = shapes.GetRange({a.Name(), label.Name()}).Group();
  EXPECT_EQ(msoGroup, group.Type());
  auto items = group.GroupItems();
  ASSERT_EQ(2u, items.size());
  EXPECT_EQ(a.Name(), items[0].Name());
  EXPECT_EQ("Is it in stock?", a.GetTextFrame().GetCharacters().Text());
  EXPECT_EQ("it", a.GetTextFrame().GetCharacters(4, 2).Text());
  EXPECT_EQ(2, shapes.Count());  // the group and the line

  group.Ungroup();
  EXPECT_EQ(3, shapes.Count());
}

TEST_F(HostShapesTest, FormatsReadBackInTheLogicsUnits) {
  Shape s = sheet_->GetShapes().AddShape(msoShapeFlowchartProcess, 10, 10, 80, 40);
  s.SetShapeStyle(33);  // the preset's look first: the formats below override it
  s.Fill().ForeColor().SetRGB(0x00CCFF);  // red in the low byte: orange
  s.Line().SetWeight(2.25);
  s.Line().SetDashStyle(msoLineDash);
  s.Shadow().SetVisible(true);
  s.Shadow().SetOffsetX(3);
  s.GetTextFrame().SetMarginLeft(2.16);
  s.GetTextFrame().SetHorizontalAlignment(xlCenter);
  s.GetTextFrame().SetVerticalAlignment(xlTop);
  s.GetTextFrame().GetCharacters().SetText("Pack");
  s.GetTextFrame().GetCharacters().GetFont().SetSize(8.5);
  s.GetTextFrame().GetCharacters().GetFont().SetColor(0x0000FF);

  EXPECT_EQ(0x00CCFF, s.Fill().ForeColor().RGB());
  EXPECT_NEAR(2.25, s.Line().Weight(), 0.03);
  EXPECT_EQ(msoLineDash, s.Line().DashStyle());
  EXPECT_TRUE(s.Shadow().Visible());
  EXPECT_NEAR(3, s.Shadow().OffsetX(), 0.03);
  EXPECT_NEAR(2.16, s.GetTextFrame().MarginLeft(), 0.03);
  EXPECT_EQ(xlCenter, s.GetTextFrame().HorizontalAlignment());
  EXPECT_EQ(xlTop, s.GetTextFrame().VerticalAlignment());
  EXPECT_DOUBLE_EQ(8.5, s.GetTextFrame().GetCharacters().GetFont().Size());
  EXPECT_EQ(0x0000FF, s.GetTextFrame().GetCharacters().GetFont().Color());
  EXPECT_EQ(33, s.ShapeStyle());
  EXPECT_THROW(s.SetShapeStyle(43), HostError);
}

}  // namespace
}  // namespace nivarel::testing
