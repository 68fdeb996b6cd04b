// The picture stores over the pictures the build drew: indexes out of range
// fall back (also in the caller's variable), every picture has its store's
// size, and the pixels show what each number stands for.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "MErrorHandler.h"
#include "PngFile.h"
#include "UnitEnvironment.h"
#include "ucImages.h"
#include "ucShapes.h"

namespace nivarel::testing {
namespace {

using output::ucImages;
using output::ucShapes;

const std::string kFolder = NIVAREL_PICTURES;

bool Near(const PngFile::Rgb& c, int r, int g, int b, int tolerance = 6) {
  return std::abs(c.r - r) <= tolerance && std::abs(c.g - g) <= tolerance && std::abs(c.b - b) <= tolerance;
}

TEST(PictureStoresTest, IndexesOutOfRangeFallBackInTheCallersVariable) {
  ucShapes shapes(kFolder);
  ucImages images(kFolder);
  int process = 61;
  const std::string expected = shapes.ShapeImage(process);
  ASSERT_FALSE(expected.empty());
  for (int index : {125, 0, -3}) {
    int i = index;
    EXPECT_EQ(expected, shapes.ShapeImage(i)) << index;
    EXPECT_EQ(61, i) << index;
  }
  int style = 85, plain = 43;
  EXPECT_EQ(images.StyleImage(plain), images.StyleImage(style));
  EXPECT_EQ(43, style);
  int line = 22, first = 1;
  EXPECT_EQ(images.FlowlineStyleImage(first), images.FlowlineStyleImage(line));
  EXPECT_EQ(1, line);
  int valid = 63;
  shapes.ShapeImage(valid);
  EXPECT_EQ(63, valid) << "a valid index stays";

  // The grid's list: shape types, then styles.
  EXPECT_EQ(124u + 84u, images.GridImageList().size());
  int decision = 63, seven = 7;
  EXPECT_EQ(shapes.ShapeImage(decision), images.GridImage(63));
  EXPECT_EQ(images.StyleImage(seven), images.GridImage(124 + 7));
  EXPECT_THROW(images.GridImage(124 + 85), std::out_of_range);
}

TEST(PictureStoresTest, EveryPictureHasItsStoresSizeAndATwiceAsLargeTwin) {
  auto check = [](const std::vector<std::string>& list, int width, int height) {
    for (const std::string& path : list) {
      PngFile one(path);
      EXPECT_EQ(width, one.Width()) << path;
      EXPECT_EQ(height, one.Height()) << path;
      std::string twin = path.substr(0, path.size() - 4) + "@2x.png";
      PngFile two(twin);
      EXPECT_EQ(2 * width, two.Width()) << twin;
      EXPECT_EQ(2 * height, two.Height()) << twin;
    }
  };
  ucImages images(kFolder);
  ASSERT_EQ(124u, ucShapes(kFolder).ShapeImageList().size());
  check(ucShapes(kFolder).ShapeImageList(), ucShapes::kWidth, ucShapes::kHeight);
  check(images.StyleImageList(), ucImages::kStyleWidth, ucImages::kStyleHeight);
  check(images.FlowlineStyleImageList(), ucImages::kLineWidth, ucImages::kLineHeight);
  std::vector<std::string> plain;
  for (int style = 1; style <= ucImages::kLastLineStyle; ++style) {
    int index = style;
    plain.push_back(images.LineStyleImage(index));
  }
  check(plain, ucImages::kLineWidth, ucImages::kLineHeight);
  std::vector<std::string> sides;
  for (bool into : {false, true})
    for (int side = 0; side < 4; ++side) sides.push_back(images.SideImage(into, side));
  check(sides, ucImages::kSideSize, ucImages::kSideSize);
  std::vector<std::string> branches;
  for (int layout = 0; layout < ucImages::kBranchLayouts; ++layout) branches.push_back(images.BranchImage(layout));
  check(branches, ucImages::kBranchWidth, ucImages::kBranchHeight);
  std::vector<std::string> connectors;
  for (int type = 1; type <= 3; ++type) connectors.push_back(images.ConnectorTypeImage(type));
  check(connectors, ucImages::kConnectorWidth, ucImages::kConnectorHeight);
  EXPECT_THROW(images.ConnectorTypeImage(4), std::out_of_range);
  std::vector<std::string> pages;
  for (const char* key : {"grid", "xf_vertical", "xf_horizontal", "annotated"})
    pages.push_back(images.PageLayoutImage(key));
  check(pages, ucImages::kPageWidth, ucImages::kPageHeight);
  EXPECT_THROW(images.PageLayoutImage("lanes"), std::out_of_range);
  // The pickers' panels: 7 pictures to a row, at twice the pictures' size.
  struct Panel {
    ucImages::Panel panel;
    int rows, width, height;
  } panels[] = {{ucImages::kThemedPanel, 6, ucImages::kStyleWidth, ucImages::kStyleHeight},
                {ucImages::kSolidPanel, 6, ucImages::kStyleWidth, ucImages::kStyleHeight},
                {ucImages::kFlowLinePanel, 3, ucImages::kLineWidth, ucImages::kLineHeight},
                {ucImages::kLinePanel, 3, ucImages::kLineWidth, ucImages::kLineHeight}};
  for (const Panel& p : panels) {
    PngFile panel(images.PanelImage(p.panel));
    EXPECT_EQ(2 * 7 * p.width, panel.Width()) << p.panel;
    EXPECT_EQ(2 * p.rows * p.height, panel.Height()) << p.panel;
  }
  size_t files = 0;
  for (const auto& e : std::filesystem::recursive_directory_iterator(kFolder))
    files += e.path().extension() == ".png" ? 1 : 0;
  EXPECT_EQ(2u * (124 + 84 + 21 + 21 + 8 + 6 + 3 + 4) + 4, files);
}

TEST(PictureStoresTest, ThePixelsShowWhatEachNumberStandsFor) {
  ucShapes shapes(kFolder);
  ucImages images(kFolder);
  // Inside a style's symbol, left of its sample text: the style's fill.
  struct Fill {
    int style, r, g, b;
  } fills[] = {{2, 255, 255, 255}, {10, 192, 80, 77}, {44, 220, 230, 242}, {66, 192, 80, 77}, {79, 37, 64, 97}};
  for (const Fill& f : fills) {
    int style = f.style;
    PngFile p(images.StyleImage(style));
    ASSERT_GT(p.Width(), 0);
    EXPECT_TRUE(Near(p.At(p.Width() / 4, p.Height() / 2), f.r, f.g, f.b)) << "style " << f.style;
  }
  // The branch layouts: the base symbol stands where the layout puts it,
  // alone in its quarter of the picture, and the fan fills the far side.
  auto inkIn = [](const PngFile& p, double x0, double y0, double x1, double y1) {
    int n = 0;
    for (int y = static_cast<int>(y0 * p.Height()); y < static_cast<int>(y1 * p.Height()); ++y)
      for (int x = static_cast<int>(x0 * p.Width()); x < static_cast<int>(x1 * p.Width()); ++x)
        n += p.Inked(x, y) ? 1 : 0;
    return n;
  };
  struct Fan {
    int layout;
    double baseX0, baseY0, baseX1, baseY1;   // where the base stands
    double emptyX0, emptyY0, emptyX1, emptyY1;  // beside it, where nothing is
  } fans[] = {{0, 0.4, 0, 0.6, 0.25, 0, 0, 0.2, 0.25},   {1, 0.4, 0.75, 0.6, 1, 0, 0.75, 0.2, 1},
              {2, 0.75, 0.4, 1, 0.6, 0.75, 0, 1, 0.2},   {3, 0, 0.4, 0.25, 0.6, 0, 0, 0.25, 0.2},
              {4, 0.5, 0, 0.8, 0.25, 0, 0, 0.3, 0.15},   {5, 0.2, 0, 0.5, 0.25, 0.7, 0, 1, 0.15}};
  for (const Fan& f : fans) {
    PngFile p(images.BranchImage(f.layout));
    ASSERT_GT(p.Width(), 0);
    EXPECT_GT(inkIn(p, f.baseX0, f.baseY0, f.baseX1, f.baseY1), 10) << "layout " << f.layout << ": its base";
    EXPECT_EQ(0, inkIn(p, f.emptyX0, f.emptyY0, f.emptyX1, f.emptyY1)) << "layout " << f.layout;
  }
  // The template pages, at twice the size: only the grid has lines across
  // its body at each eighth of its width, vertical lanes have their titles
  // along the top, horizontal and annotated lanes theirs down the left, and
  // only the annotated page has a column of notes at the right.
  auto lineDown = [](const PngFile& p, double fx) {
    int best = 0;
    for (int x = static_cast<int>(fx * p.Width()) - 2; x <= static_cast<int>(fx * p.Width()) + 2; ++x) {
      int n = 0;
      for (int y = p.Height() * 3 / 10; y < p.Height() * 7 / 10; ++y) n += p.Inked(x, y) ? 1 : 0;
      best = std::max(best, n);
    }
    return best == p.Height() * 7 / 10 - p.Height() * 3 / 10;
  };
  auto laneTitle = [](const PngFile& p, double fx, double fy) {
    return Near(p.At(static_cast<int>(fx * p.Width()), static_cast<int>(fy * p.Height())), 220, 230, 242, 10);
  };
  struct Page {
    const char* key;
    bool grid, titlesAlongTheTop, titlesDownTheLeft, notes;
  } pages[] = {{"grid", true, false, false, false},
               {"xf_vertical", false, true, false, false},
               {"xf_horizontal", false, false, true, false},
               {"annotated", false, false, true, true}};
  for (const Page& page : pages) {
    std::string path = images.PageLayoutImage(page.key);
    PngFile p(path.substr(0, path.size() - 4) + "@2x.png");
    ASSERT_GT(p.Width(), 0) << page.key;
    EXPECT_EQ(page.grid, lineDown(p, 0.303)) << page.key;
    EXPECT_EQ(page.titlesAlongTheTop, laneTitle(p, 0.24, 0.2)) << page.key;
    EXPECT_EQ(page.titlesDownTheLeft, laneTitle(p, 0.153, 0.28)) << page.key;
    EXPECT_EQ(page.notes, lineDown(p, 0.66)) << page.key;
  }
  // A flow line, at twice the size where a thin line covers whole pixels:
  // its colour where the middle column is most opaque, and an arrowhead
  // before the symbol on the right, several line widths tall.
  struct Line {
    int style, r, g, b;
  } lines[] = {{1, 0, 0, 0}, {5, 125, 96, 160}, {9, 74, 126, 187}, {21, 246, 146, 64}};
  for (const Line& l : lines) {
    int style = l.style;
    std::string path = images.FlowlineStyleImage(style);
    PngFile p(path.substr(0, path.size() - 4) + "@2x.png");
    ASSERT_GT(p.Width(), 0);
    int x = p.Width() / 2, most = 0, first = -1, last = -1;
    for (int y = 0; y < p.Height(); ++y) most = std::max(most, p.Alpha(x, y));
    for (int y = 0; y < p.Height(); ++y) {
      if (p.Alpha(x, y) != most) continue;
      if (first < 0) first = y;
      last = y;
    }
    int core = (first + last) / 2;
    EXPECT_NEAR(p.Height() / 2, core, 2) << "line " << l.style << " runs along the middle";
    EXPECT_TRUE(Near(p.At(x, core), l.r, l.g, l.b, 40)) << "line " << l.style;
    int thin = 0, widest = 0;
    for (int y = 0; y < p.Height(); ++y) thin += p.Inked(x, y) ? 1 : 0;
    for (int ax = x; ax < p.Width() * 3 / 4 - 1; ++ax) {
      int tall = 0;
      for (int y = 0; y < p.Height(); ++y) tall += p.Inked(ax, y) ? 1 : 0;
      widest = std::max(widest, tall);
    }
    EXPECT_GE(widest, 2 * thin) << "line " << l.style << ": an arrowhead";
  }
  // The panels: a style's fill in its cell (row n / 7, column n mod 7 less
  // 1), and a plain line's colour across the middle of its cell, no arrowhead.
  PngFile themed(images.PanelImage(ucImages::kThemedPanel)), solid(images.PanelImage(ucImages::kSolidPanel));
  auto cellPixel = [](const PngFile& p, int column, int row, int w, int h) {
    return p.At(2 * (column * w + w / 4), 2 * (row * h + h / 2));
  };
  EXPECT_TRUE(Near(cellPixel(themed, 2, 1, ucImages::kStyleWidth, ucImages::kStyleHeight), 192, 80, 77))
      << "style 10";
  EXPECT_TRUE(Near(cellPixel(solid, 1, 0, ucImages::kStyleWidth, ucImages::kStyleHeight), 220, 230, 242))
      << "style 44";
  int nine = 9;
  PngFile plainNine(images.LineStyleImage(nine));
  ASSERT_GT(plainNine.Width(), 0);
  auto inked = [&](int x) {
    int n = 0;
    for (int y = 0; y < plainNine.Height(); ++y) n += plainNine.Inked(x, y) ? 1 : 0;
    return n;
  };
  int middle = inked(plainNine.Width() / 2), end = inked(plainNine.Width() - 8);
  EXPECT_GT(middle, 0) << "a plain line across the middle";
  EXPECT_NEAR(middle, end, 1) << "and as thick at its end: no arrowhead";
  int x = plainNine.Width() / 2, core = 0;
  for (int y = 0; y < plainNine.Height(); ++y)
    if (plainNine.Alpha(x, y) > plainNine.Alpha(x, core)) core = y;
  EXPECT_TRUE(Near(plainNine.At(x, core), 74, 126, 187, 40)) << "style 9";

  // The flow line tools' sides, at twice the size: a symbol 16 by 15
  // points in the middle of the 40 points inside the frame, and an arrow
  // from the middle of one side to the frame's edge. The half of the arrow
  // it points to holds more ink (its head); the opposite side has none.
  for (bool into : {false, true})
    for (int side = 0; side < 4; ++side) {
      std::string path = images.SideImage(into, side);
      PngFile a(path.substr(0, path.size() - 4) + "@2x.png");
      ASSERT_EQ(2 * ucImages::kSideSize, a.Width()) << path;
      int n = a.Width();
      // Ink across the flow at distance d in from the edge of side s.
      auto across = [&](int s, int d) {
        int count = 0;
        for (int k = 0; k < n; ++k) {
          int x = s == 0 || s == 2 ? k : s == 1 ? n - 1 - d : d;
          int y = s == 1 || s == 3 ? k : s == 0 ? d : n - 1 - d;
          count += a.Inked(x, y) ? 1 : 0;
        }
        return count;
      };
      // Walking in from the edge: the arrow's ink, up to the symbol's
      // outline, far wider than any arrow.
      std::vector<int> widths;
      for (int d = 0; d < n / 2; ++d) {
        int w = across(side, d);
        if (w > n / 4) break;
        if (w > 0 || !widths.empty()) widths.push_back(w);
      }
      ASSERT_GE(widths.size(), 8u) << path << ": an arrow to the symbol";
      size_t half = widths.size() / 2;
      int outer = 0, inner = 0;
      for (size_t i = 0; i < widths.size(); ++i) (i < half ? outer : inner) += widths[i];
      if (into)
        EXPECT_GT(inner, outer) << path << " points in";
      else
        EXPECT_GT(outer, inner) << path << " points out";
      EXPECT_EQ(0, across((side + 2) % 4, 12)) << path << ": nothing on the other side";
    }

  // A decision: a diamond, its corners empty and its middle filled.
  int decision = 63;
  PngFile d(shapes.ShapeImage(decision));
  ASSERT_GT(d.Width(), 0);
  for (auto [x, y] : {std::pair{1, 1}, {d.Width() - 2, 1}, {1, d.Height() - 2}, {d.Width() - 2, d.Height() - 2}})
    EXPECT_FALSE(d.Alpha(x, y) > 0 && d.Inked(x, y)) << "corner " << x << "," << y;
  EXPECT_EQ(255, d.Alpha(d.Width() / 2, d.Height() / 2));
  EXPECT_TRUE(Near(d.At(d.Width() / 2, d.Height() / 2), 255, 255, 255)) << "filled white";
  EXPECT_TRUE(d.Inked(d.Width() / 2, 5)) << "the top corner's outline";
}

TEST(PictureStoresTest, AMissingFolderGivesNoPicturesAndIsLoggedOnce) {
  host::ClearLogFile();
  ucShapes shapes(UnitConfigHome() + "/no-pictures");
  ucImages images(UnitConfigHome() + "/no-pictures");
  int i = 61, s = 2;
  EXPECT_EQ("", shapes.ShapeImage(i));
  EXPECT_EQ("", shapes.ShapeImage(i));
  EXPECT_EQ(124u, shapes.ShapeImageList().size());
  EXPECT_EQ("", images.StyleImage(s));
  std::string log = host::ReadLogFile();
  size_t lines = 0;
  for (size_t at = log.find("Picture not found"); at != std::string::npos; at = log.find("Picture not found", at + 1))
    ++lines;
  EXPECT_EQ(2u, lines) << "once for each store:\n" << log;
  host::ClearLogFile();
}

}  // namespace
}  // namespace nivarel::testing
