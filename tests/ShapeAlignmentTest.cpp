// Alignment of a new shape to the one before it in a real office: the flow
// direction, when the two count as in line, which shapes stand in the way,
// and how the new shape is moved onto the previous one's centre line.
//
// Every position and size here is a multiple of 18 points, which the office
// stores exactly (635 hundredths of a millimetre), so centres that lie on a
// band's edge really lie there.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "AddinFixture.h"
#include "CShapeAlignment.h"
#include "MErrorHandler.h"
#include "MsoConstants.h"
#include "Shapes.h"

namespace nivarel {
namespace {

using office::Shape;
using shapes::CShapeAlignment;

constexpr int16_t kUp = CShapeAlignment::kUp, kRight = CShapeAlignment::kRight, kDown = CShapeAlignment::kDown,
                  kLeft = CShapeAlignment::kLeft;
constexpr double kTolerance = 0.01;

double CentreX(const Shape& s) { return s.Left() + s.Width() / 2; }
double CentreY(const Shape& s) { return s.Top() + s.Height() / 2; }

class ShapeAlignmentTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    testing::AddinFixture::SetUp();
    // The previous shape of most tests: centre (216, 216), bands 180 to 252.
    previous_.emplace(Add(180, 180, 72, 72));
  }
  void TearDown() override {
    previous_.reset();
    testing::AddinFixture::TearDown();
  }

  Shape Add(double left, double top, double width, double height, int type = office::msoShapeFlowchartProcess) {
    return sheet_->GetShapes().AddShape(type, left, top, width, height);
  }
  Shape& Previous() { return *previous_; }

  // Cells that share neither column nor row, so only the geometry decides.
  bool Align(Shape& next) { return align_.AlignShapes(*sheet_, Previous(), next, 3, 5, 9, 4); }
  bool Aligned(const Shape& next) { return align_.IsAligned(Previous(), next, 3, 5, 9, 4); }
  bool Adjacent(const Shape& next, int16_t direction) {
    return align_.IsAdjacent(*sheet_, Previous(), next, direction);
  }

  static void ExpectBox(const Shape& s, double left, double top, double width, double height) {
    EXPECT_NEAR(left, s.Left(), kTolerance);
    EXPECT_NEAR(top, s.Top(), kTolerance);
    EXPECT_NEAR(width, s.Width(), kTolerance);
    EXPECT_NEAR(height, s.Height(), kTolerance);
  }

  CShapeAlignment align_;

 private:
  std::optional<Shape> previous_;
};

TEST_F(ShapeAlignmentTest, ANewShapeIsCentredOnThePreviousLineAcrossTheFlow) {
  struct Case {
    const char* what;
    double left, top, width, height;
    int16_t direction;
    double movedLeft, movedTop;
  } cases[] = {
      // Below, off-centre to the left: only its left changes.
      {"down", 144, 324, 108, 36, kDown, 162, 324},
      {"up", 198, 72, 72, 36, kUp, 180, 72},
      // To the side, off-centre: only its top changes.
      {"right", 324, 144, 72, 108, kRight, 324, 162},
      {"left", 36, 216, 72, 36, kLeft, 36, 198},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Shape next = Add(c.left, c.top, c.width, c.height);
    EXPECT_TRUE(Align(next));
    EXPECT_EQ(c.direction, align_.FlowDirection());
    ExpectBox(next, c.movedLeft, c.movedTop, c.width, c.height);
    if (c.direction == kUp || c.direction == kDown)
      EXPECT_NEAR(CentreX(Previous()), CentreX(next), kTolerance);
    else
      EXPECT_NEAR(CentreY(Previous()), CentreY(next), kTolerance);
    ExpectBox(Previous(), 180, 180, 72, 72);
    next.Delete();
  }
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeAlignmentTest, TheSameColumnOrRowAlignsWhateverTheGeometry) {
  // Diagonally below and to the right, overlapping no band of the previous shape.
  Shape below = Add(324, 432, 72, 36);
  ASSERT_FALSE(Aligned(below));
  // Another column and row: nothing moves, but the direction is still found.
  Shape beside = Add(432, 360, 72, 36);
  EXPECT_FALSE(Align(beside));
  EXPECT_EQ(kRight, align_.FlowDirection());
  EXPECT_FALSE(Align(below));
  EXPECT_EQ(kDown, align_.FlowDirection());
  ExpectBox(below, 324, 432, 72, 36);

  // The same column: moved under the previous shape.
  EXPECT_TRUE(align_.AlignShapes(*sheet_, Previous(), below, 4, 4, 9, 5));
  EXPECT_EQ(kDown, align_.FlowDirection());
  ExpectBox(below, 180, 432, 72, 36);
  // The same row: moved level with it.
  EXPECT_TRUE(align_.AlignShapes(*sheet_, Previous(), beside, 6, 4, 5, 5));
  EXPECT_EQ(kRight, align_.FlowDirection());
  ExpectBox(beside, 432, 198, 72, 36);
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeAlignmentTest, TheDirectionFollowsTheLongerDistanceAndTiesGoUpright) {
  // The new shape's centre relative to the previous one's centre (216, 216).
  struct Case {
    double dx, dy;
    int16_t direction;
  } cases[] = {
      {0, 0, kDown},      // equal centres
      {72, 72, kDown},    // equal distances
      {-72, -72, kUp},    //
      {72, -72, kUp},     //
      {-72, 72, kDown},   //
      {90, 72, kRight},   // a little further sideways
      {-90, 72, kLeft},   //
      {36, 144, kDown},   //
      {-36, -144, kUp},   //
      {-144, 0, kLeft},   //
      {144, 0, kRight},   //
  };
  Shape next = Add(0, 0, 36, 36);
  for (const Case& c : cases) {
    SCOPED_TRACE("dx " + std::to_string(c.dx) + " dy " + std::to_string(c.dy));
    next.SetLeft(216 + c.dx - 18);
    next.SetTop(216 + c.dy - 18);
    EXPECT_EQ(c.direction, align_.GetFlowDirection(Previous(), next));
  }
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeAlignmentTest, EitherCentreOnTheOthersBandAlignsEdgesIncluded) {
  struct Case {
    const char* what;
    double left, top, width, height;
    bool aligned;
  } cases[] = {
      // Far to the right: the new centre's height against the band 180 to 252.
      {"new centre on the top edge", 432, 162, 72, 36, true},
      {"new centre on the bottom edge", 432, 234, 72, 36, true},
      {"new centre just below", 432, 252, 72, 36, false},
      {"new centre just above", 432, 126, 72, 36, false},
      // Far below: the new centre's width against the band 180 to 252.
      {"new centre on the left edge", 144, 432, 72, 36, true},
      {"new centre on the right edge", 216, 432, 72, 36, true},
      {"new centre just right", 234, 432, 72, 36, false},
      // A tall or wide new shape whose band ends on the previous centre.
      {"previous centre on the new bottom edge", 432, 72, 72, 144, true},
      {"previous centre on the new top edge", 432, 216, 72, 144, true},
      {"previous centre just above a tall new shape", 432, 234, 72, 144, false},
      {"previous centre on the new right edge", 72, 432, 144, 36, true},
      {"previous centre on the new left edge", 216, 432, 144, 36, true},
      {"previous centre just left of a wide new shape", 234, 432, 144, 36, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Shape next = Add(c.left, c.top, c.width, c.height);
    EXPECT_EQ(c.aligned, Aligned(next));
    next.Delete();
  }
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeAlignmentTest, OnlyAShapeBetweenTheTwoAndAcrossTheLineBlocks) {
  // The previous centre is (216, 216); each new shape is centred on its line.
  struct Case {
    const char* what;
    double newLeft, newTop;    // new shape 72 x 36
    double left, top;          // other shape 72 x 36
    int16_t direction;
    bool blocks;
  } cases[] = {
      {"between, going down", 180, 432, 180, 324, kDown, true},
      {"beyond the new one, going down", 180, 432, 180, 504, kDown, false},
      {"between but beside the line, going down", 180, 432, 306, 324, kDown, false},
      {"between, going up", 180, 0, 180, 90, kUp, true},
      {"below, going up", 180, 0, 180, 324, kUp, false},
      {"between, going right", 432, 198, 324, 198, kRight, true},
      {"to the left, going right", 432, 198, 36, 198, kRight, false},
      {"between but above the line, going right", 432, 198, 324, 90, kRight, false},
      {"between, going left", 0, 198, 90, 198, kLeft, true},
      {"to the right, going left", 0, 198, 324, 198, kLeft, false},
      // Edges exactly on the centre line do not span it.
      {"left edge on the line", 180, 432, 216, 324, kDown, false},
      {"right edge on the line", 180, 432, 144, 324, kDown, false},
      {"a little across the line", 180, 432, 162, 324, kDown, true},
      {"top edge on the line", 432, 198, 324, 216, kRight, false},
      {"bottom edge on the line", 432, 198, 324, 180, kRight, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Shape next = Add(c.newLeft, c.newTop, 72, 36);
    Shape other = Add(c.left, c.top, 72, 36);
    EXPECT_EQ(!c.blocks, Adjacent(next, c.direction));
    // Through AlignShapes, drawn a little off the line: a blocked new shape
    // stays where it was drawn, a free one is moved onto the line.
    bool upright = c.direction == kUp || c.direction == kDown;
    double drawnLeft = c.newLeft + (upright ? 18 : 0), drawnTop = c.newTop + (upright ? 0 : 18);
    next.SetLeft(drawnLeft);
    next.SetTop(drawnTop);
    EXPECT_EQ(!c.blocks, Align(next));
    EXPECT_EQ(c.direction, align_.FlowDirection());
    if (c.blocks)
      ExpectBox(next, drawnLeft, drawnTop, 72, 36);
    else
      ExpectBox(next, c.newLeft, c.newTop, 72, 36);
    next.Delete();
    other.Delete();
  }
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeAlignmentTest, TextBoxesLinesAndTheGroupOfThePreviousShapeDoNotBlock) {
  Shape next = Add(180, 432, 72, 36);
  office::Shapes shapes = sheet_->GetShapes();
  // Across the way down, centred between the two.
  Shape box = shapes.AddTextbox(office::msoTextOrientationHorizontal, 180, 324, 72, 36);
  Shape line = shapes.AddLine(144, 342, 288, 342);
  EXPECT_TRUE(Adjacent(next, kDown));

  // The previous shape grouped with a label below it: the group's centre
  // (216, 252) lies on the way, and it spans the line.
  Shape label = Add(180, 288, 72, 36, office::msoShapeRectangle);
  std::string previousName = Previous().Name();
  Shape own = shapes.GetRange({previousName, label.Name()}).Group();
  ASSERT_NEAR(252, CentreY(own), kTolerance);
  EXPECT_TRUE(Adjacent(next, kDown));

  // Also when that group sits inside another, whose centre is on the way too.
  Shape aside = Add(504, 180, 36, 36);
  Shape outer = shapes.GetRange({own.Name(), aside.Name()}).Group();
  ASSERT_NEAR(252, CentreY(outer), kTolerance);
  // The previous shape, two groups deep.
  std::optional<Shape> previous;
  for (const Shape& item : outer.GroupItems())
    if (item.Type() == office::msoGroup)
      for (const Shape& member : item.GroupItems())
        if (member.Name() == previousName) previous.emplace(member);
  ASSERT_TRUE(previous);
  EXPECT_TRUE(align_.IsAdjacent(*sheet_, *previous, next, kDown));

  // A group of other shapes on the way does block.
  Shape a = Add(144, 342, 36, 36), b = Add(252, 342, 36, 36);
  Shape others = shapes.GetRange({a.Name(), b.Name()}).Group();
  EXPECT_FALSE(align_.IsAdjacent(*sheet_, *previous, next, kDown));
  next.SetLeft(198);
  EXPECT_FALSE(align_.AlignShapes(*sheet_, *previous, next, 3, 5, 9, 4));
  EXPECT_EQ(kDown, align_.FlowDirection());
  ExpectBox(next, 198, 432, 72, 36);
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(ShapeAlignmentTest, ADirectionOutsideTheFourFindsNothingInTheWay) {
  Shape next = Add(180, 432, 72, 36);
  Shape other = Add(180, 324, 72, 36);
  ASSERT_FALSE(Adjacent(next, kDown));
  EXPECT_TRUE(Adjacent(next, 4));
  EXPECT_TRUE(Adjacent(next, -1));
}

TEST_F(ShapeAlignmentTest, AFailureIsLoggedAndGoesNoFurther) {
  // The sheet of a document that has been closed since.
  office::Workbook closed = App().GetWorkbooks().Add();
  office::Worksheet gone = closed.Sheet(1);
  closed.Close();
  Shape next = Add(180, 432, 72, 36);
  EXPECT_NO_THROW(align_.IsAdjacent(gone, Previous(), next, kDown));
  std::string log = host::ReadLogFile();
  EXPECT_NE(std::string::npos, log.find("[Error]; CShapeAlignment.IsAdjacent; ")) << log;
  EXPECT_NE(std::string::npos, log.find("(IsAdjacent)")) << log;
}

}  // namespace
}  // namespace nivarel
