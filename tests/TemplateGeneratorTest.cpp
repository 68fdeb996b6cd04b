// The template generator in the office, read back from the file it saved:
// the page frame follows the office's own page breaks; title blocks and
// lanes are cells or shapes and lines; the line style takes a row off a
// page only where a cell border would reach over it; the file is a template
// package whose properties mark it; the paths it is saved under.
#include <cmath>
#include <filesystem>
#include <map>
#include <regex>
#include <optional>
#include <string>
#include <vector>

#include "AddinFixture.h"
#include "Borders.h"
#include "CTemplateGenerator.h"
#include "CTemplateProperties.h"
#include "ColorFormat.h"
#include "DocumentProperties.h"
#include "Font.h"
#include "LineFormat.h"
#include "MsoConstants.h"
#include "PageSetup.h"
#include "Range.h"
#include "SavedXlsx.h"
#include "TemplateFile.h"
#include "Workbooks.h"

namespace nivarel::testing {
namespace {

using office::Borders;
using templates::CTemplateGenerator;
using templates::CTemplateProperties;
namespace fs = std::filesystem;

constexpr long kBlue = 74 + 126 * 256 + 187 * 65536;  // the second colour of every weight

// The rows and columns of one printed page of an empty sheet on the grid.
struct Page {
  int rows = 0, columns = 0;
};

class TemplateGeneratorTest : public AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    host::InitializeGlobals();
    host::SetGlobalRowHeight();
    folder_ = ConfigHome() + "/templates";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override {
    for (auto* book : {&reopened_, &made_})
      if (*book) {
        try {
          (*book)->Close();
        } catch (const std::exception&) {
        }
      }
    AddinFixture::TearDown();
  }

  // A letter portrait page in cells, one page, no title block, an
  // annotated body, four lanes, line style 1, DejaVu Sans 10.
  CTemplateProperties Options(const std::string& name) {
    CTemplateProperties p;
    p.TemplateFolder(folder_);
    p.TemplateName(name);
    p.PaperSize(1);
    p.Orientation(1);
    p.NumberOfPages(1);
    p.TemplateLineStyle(1);
    p.TemplateFontName("DejaVu Sans");
    p.TemplateFontSize(10);
    p.TemplateType(CTemplateProperties::Annotated);
    p.MaxSwimLaneCount(10);
    p.MaxTitleBlockRows(3);
    p.MaxTitleBlockSections(3);
    p.SwimLaneCount(4);
    for (int lane = 1; lane <= 4; ++lane) p.SetSwimLaneTitle(lane, "Lane " + std::to_string(lane));
    return p;
  }
  static void Header(CTemplateProperties& p, const std::vector<std::vector<std::string>>& rows) {
    p.AddHeader(true);
    p.HeaderRowCount(static_cast<short>(rows.size()));
    for (size_t r = 0; r < rows.size(); ++r) {
      p.SetHeaderSectionCount(static_cast<int>(r) + 1, static_cast<short>(rows[r].size()));
      for (size_t s = 0; s < rows[r].size(); ++s)
        p.SetHeaderRowLabel(static_cast<int>(r) + 1, static_cast<int>(s) + 1, rows[r][s]);
    }
  }
  static void Footer(CTemplateProperties& p, const std::vector<std::vector<std::string>>& rows) {
    p.AddFooter(true);
    p.FooterRowCount(static_cast<short>(rows.size()));
    for (size_t r = 0; r < rows.size(); ++r) {
      p.SetFooterSectionCount(static_cast<int>(r) + 1, static_cast<short>(rows[r].size()));
      for (size_t s = 0; s < rows[r].size(); ++s)
        p.SetFooterRowLabel(static_cast<int>(r) + 1, static_cast<int>(s) + 1, rows[r][s]);
    }
  }

  // The page of an empty sheet of the grid with this paper, as the office breaks it.
  Page PageOf(int paper, int orientation) {
    office::Worksheet& ws = *sheet_;
    ws.Columns().SetColumnWidth(host::GlobalColumnWidth);
    ws.GetPageSetup().SetPaperSize(paper);
    ws.GetPageSetup().SetOrientation(orientation);
    ws.GetRange("A1").SetValue("x");
    ws.GetRange("HA2000").SetValue("x");
    Page page{ws.HPageBreaks().Location(1).Row() - 1, ws.VPageBreaks().Location(1).Column() - 1};
    ws.GetRange("A1").Clear();
    ws.GetRange("HA2000").Clear();
    return page;
  }

  // Makes the template, checks that nothing was logged and that the file is
  // there, and returns the sheet of the saved file opened again.
  // The generated workbook stays open as made_.
  office::Worksheet Make(CTemplateProperties& p) {
    for (auto* book : {&reopened_, &made_})
      if (*book) {
        (*book)->Close();
        book->reset();
      }
    std::string path = CTemplateGenerator::TemplateFilePath(p);
    made_ = CTemplateGenerator().CreateTemplate(p);
    EXPECT_TRUE(made_.has_value());
    EXPECT_EQ("", host::ReadLogFile());
    EXPECT_TRUE(fs::exists(path)) << path;
    reopened_ = App().GetWorkbooks().OpenCopy(path);
    EXPECT_EQ(1, reopened_->SheetCount());
    return reopened_->Sheet(1);
  }

  // The shapes of the sheet's groups, each group's members in order.
  static std::vector<std::vector<office::Shape>> Groups(const office::Worksheet& ws) {
    std::vector<std::vector<office::Shape>> out;
    office::Shapes shapes = ws.GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      office::Shape s = shapes.Item(i);
      EXPECT_EQ(office::msoGroup, s.Type()) << s.Name() << " is not in a page's group";
      EXPECT_EQ("TEMPLATE_GROUP_" + std::to_string(out.size() + 1), s.Name());
      out.push_back(s.GroupItems());
      for (const office::Shape& member : out.back()) EXPECT_EQ(0u, member.Name().rfind("TEMPLATE_", 0)) << member.Name();
    }
    return out;
  }

  static std::string Text(const office::Worksheet& ws, int row, int column) { return ws.Cells(row, column).Text(); }
  static int Weight(const office::Worksheet& ws, int row, int column, int edge) {
    office::Borders b = ws.Cells(row, column).GetBorders();
    return b.EdgeLineStyle(edge) == Borders::kLineNone ? 0 : b.EdgeWeight(edge);
  }
  static long Colour(const office::Worksheet& ws, int row, int column, int edge) {
    return ws.Cells(row, column).GetBorders().EdgeColor(edge);
  }
  // The first column of each of count sections sharing total columns from first.
  static std::vector<int> Starts(int first, int count, int total) {
    std::vector<int> starts;
    for (int i = 0, at = first; i < count; ++i) {
      starts.push_back(at);
      at += total / count + (i < total % count ? 1 : 0);
    }
    return starts;
  }

  std::string folder_;
  std::optional<office::Workbook> made_, reopened_;
};

TEST_F(TemplateGeneratorTest, TheCellRoadFramesEveryPageWithTitleBlocksAndLanes) {
  Page page = PageOf(1, 1);
  ASSERT_GT(page.rows, 20);
  ASSERT_GT(page.columns, 20);
  CTemplateProperties p = Options("Cells");
  p.NumberOfPages(2);
  p.TemplateLineStyle(9);  // medium, the second colour
  p.TemplateType(CTemplateProperties::VerticalSwimLanes);
  for (int lane = 1; lane <= 4; ++lane) p.SetSwimLaneTitle(lane, std::string("Ask Check Pack Ship").substr(5 * (lane - 1), 4));
  Header(p, {{"Title", "Author", "Date"}});
  Footer(p, {{"Page", "Rev"}, {"Notes"}});
  office::Worksheet ws = Make(p);

  EXPECT_EQ(1, ws.GetPageSetup().PaperSize());
  EXPECT_EQ(1, ws.GetPageSetup().Orientation());
  EXPECT_NEAR(host::GlobalColumnWidth, ws.Cells(1, 30).ColumnWidth(), 0.01);
  EXPECT_EQ(0, ws.GetShapes().Count());

  // A medium border would reach over the page's last row: each page is a row short.
  const int step = page.rows - 1, columns = page.columns;
  for (int pageTop : {1, 1 + step}) {
    SCOPED_TRACE("page from row " + std::to_string(pageTop));
    std::vector<int> header = Starts(1, 3, columns);
    const char* labels[] = {"Title", "Author", "Date"};
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(labels[i], Text(ws, pageTop, header[i]));
      int last = i < 2 ? header[i + 1] - 1 : columns;
      EXPECT_TRUE(ws.GetRange(office::Range(ws.Ref(), pageTop, header[i], pageTop + 1, last).Address()).MergeCells())
          << labels[i] << " spans two rows and its share of the columns";
      EXPECT_EQ(Borders::kMedium, Weight(ws, pageTop, header[i], Borders::kEdgeLeft));
      EXPECT_EQ(kBlue, Colour(ws, pageTop, header[i], Borders::kEdgeLeft));
    }
    EXPECT_EQ(office::xlLeft, ws.Cells(pageTop, 1).HorizontalAlignment());
    EXPECT_EQ(office::xlBottom, ws.Cells(pageTop, 1).VerticalAlignment());
    EXPECT_EQ("DejaVu Sans", ws.Cells(pageTop, 1).GetFont().Name());
    EXPECT_NEAR(10, ws.Cells(pageTop, 1).GetFont().Size(), 0.01);

    // Lane titles below the header, centred; the lanes down to the footer.
    std::vector<int> lanes = Starts(1, 4, columns);
    const int laneTop = pageTop + 2, footerTop = pageTop + step - 4, bodyBottom = footerTop - 1;
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(p.GetSwimLaneTitle(i + 1), Text(ws, laneTop, lanes[i]));
      EXPECT_EQ(Borders::kMedium, Weight(ws, laneTop + 2, lanes[i], Borders::kEdgeLeft));
      EXPECT_EQ(Borders::kMedium, Weight(ws, bodyBottom, lanes[i], Borders::kEdgeBottom));
      EXPECT_EQ(0, Weight(ws, laneTop + 3, lanes[i] + 1, Borders::kEdgeLeft)) << "a lane is one open box";
    }
    EXPECT_EQ(office::xlCenter, ws.Cells(laneTop, lanes[1]).HorizontalAlignment());
    EXPECT_EQ(office::xlCenter, ws.Cells(laneTop, lanes[1]).VerticalAlignment());

    std::vector<int> footer = Starts(1, 2, columns);
    EXPECT_EQ("Page", Text(ws, footerTop, footer[0]));
    EXPECT_EQ("Rev", Text(ws, footerTop, footer[1]));
    EXPECT_EQ("Notes", Text(ws, footerTop + 2, 1));
    EXPECT_TRUE(ws.GetRange(office::Range(ws.Ref(), footerTop + 2, 1, footerTop + 3, columns).Address()).MergeCells());
    EXPECT_EQ(Borders::kMedium, Weight(ws, footerTop + 3, 1, Borders::kEdgeBottom)) << "the footer ends the page";
  }
  EXPECT_EQ("", Text(ws, 1 + 2 * step, 1)) << "two pages only";
}

TEST_F(TemplateGeneratorTest, LineStylesTakeARowOffAPageOnlyWhereACellBorderWouldReachOverIt) {
  Page page = PageOf(1, 1);
  // The first row of the second page: where its header begins.
  auto secondPage = [&](bool shapes, int lineStyle) {
    CTemplateProperties p = Options("Rows " + std::to_string(lineStyle) + (shapes ? " shapes" : ""));
    p.NumberOfPages(2);
    p.UseShapesForSwimLanes(shapes);
    p.TemplateLineStyle(static_cast<short>(lineStyle));
    Header(p, {{"A", "B"}});
    office::Worksheet ws = Make(p);
    int row = 0;
    if (shapes) {
      auto groups = Groups(ws);
      if (groups.size() == 2) {
        double top = groups[1][0].Top();
        for (int r = 1; r <= 3 * page.rows && !row; ++r)
          if (std::abs(ws.Cells(r, 1).Top() - top) < 0.5) row = r;
      }
    } else {
      for (int r = 2; r <= 3 * page.rows && !row; ++r)
        if (Text(ws, r, 1) == "A") row = r;
    }
    return row;
  };
  EXPECT_EQ(page.rows + 1, secondPage(false, 1));
  EXPECT_EQ(page.rows, secondPage(false, 8)) << "medium";
  EXPECT_EQ(page.rows, secondPage(false, 15)) << "thick";
  EXPECT_EQ(page.rows + 1, secondPage(true, 15)) << "lines are drawn inside the page";

  TakeTheRoadBelowVersion12();
  EXPECT_EQ(page.rows + 1, secondPage(false, 8)) << "below version 12 a medium border fits";
  EXPECT_EQ(page.rows, secondPage(false, 15));
}

TEST_F(TemplateGeneratorTest, WithoutTitleBlockTheGridRunsFromThePagesFirstRowToItsBottomRow) {
  Page page = PageOf(1, 2);
  CTemplateProperties p = Options("Grid");
  p.Orientation(2);
  p.NumberOfPages(2);
  p.TemplateType(CTemplateProperties::PlainGrid);
  p.TemplateLineStyle(16);  // the grid keeps its own thin black lines, but the page loses a row
  office::Worksheet ws = Make(p);
  const int rows = page.rows - 1, columns = page.columns;
  EXPECT_EQ(Borders::kThin, Weight(ws, 1, 1, Borders::kEdgeTop));
  EXPECT_EQ(Borders::kThin, Weight(ws, 1, 1, Borders::kEdgeLeft));
  EXPECT_EQ(0L, Colour(ws, 1, 1, Borders::kEdgeLeft));
  EXPECT_EQ(Borders::kHairline, Weight(ws, 1, 1, Borders::kEdgeRight)) << "hairlines between the cells";
  EXPECT_EQ(Borders::kHairline, Weight(ws, 1, 1, Borders::kEdgeBottom));
  EXPECT_EQ(Borders::kThin, Weight(ws, 1, columns, Borders::kEdgeRight));
  EXPECT_EQ(Borders::kThin, Weight(ws, rows, 1, Borders::kEdgeBottom)) << "the grid ends on the page's bottom row";
  EXPECT_EQ(Borders::kThin, Weight(ws, rows + 1, 1, Borders::kEdgeTop)) << "and the next page's begins below it";
  EXPECT_EQ(Borders::kThin, Weight(ws, 2 * rows, 1, Borders::kEdgeBottom));
  EXPECT_EQ(0, Weight(ws, 2 * rows + 1, 1, Borders::kEdgeBottom));
  EXPECT_EQ(0, ws.GetShapes().Count());
  EXPECT_FALSE(ws.ContentArea().has_value()) << "the marks that broke the pages are gone";
  // What the template chooser reads of it, without the office: the lane
  // count, and no lane direction for a grid.
  templates::TemplateFile file;
  ASSERT_TRUE(templates::ReadTemplateFile(CTemplateGenerator::TemplateFilePath(p), file));
  EXPECT_EQ("4", file.Custom("NumberLanes"));
  EXPECT_EQ("", file.Custom("LaneDirection"));
  EXPECT_EQ("Landscape", file.Custom("Orientation"));
  EXPECT_EQ("Letter", file.Custom("PageSize"));
}

TEST_F(TemplateGeneratorTest, WithShapesTheGridIsStillCellsAndOnlyTheTitleBlockIsGroupedPerPage) {
  Page page = PageOf(9, 1);
  CTemplateProperties p = Options("Shapes grid");
  p.PaperSize(9);
  p.NumberOfPages(2);
  p.UseShapesForSwimLanes(true);
  p.TemplateType(CTemplateProperties::PlainGrid);
  p.TemplateLineStyle(16);
  Header(p, {{"Process", "Owner"}});
  office::Worksheet ws = Make(p);

  // A column free on the left and on the right, a row free at each page's foot.
  const int bottom = page.rows - 1, last = page.columns - 1;
  EXPECT_EQ(0, Weight(ws, 3, 1, Borders::kEdgeLeft));
  EXPECT_EQ(Borders::kThin, Weight(ws, 3, 2, Borders::kEdgeLeft));
  EXPECT_EQ(Borders::kThin, Weight(ws, 3, 2, Borders::kEdgeTop)) << "the body starts below the header";
  EXPECT_EQ(Borders::kThin, Weight(ws, 3, last, Borders::kEdgeRight));
  EXPECT_EQ(Borders::kThin, Weight(ws, bottom, 2, Borders::kEdgeBottom));
  EXPECT_EQ(0, Weight(ws, bottom + 1, 2, Borders::kEdgeBottom));

  auto groups = Groups(ws);
  ASSERT_EQ(2u, groups.size());
  for (size_t g = 0; g < 2; ++g) {
    ASSERT_EQ(2u, groups[g].size());
    office::Shape first = groups[g][0];
    office::Range corner = ws.Cells(1 + static_cast<int>(g) * page.rows, 2);
    EXPECT_NEAR(corner.Left(), first.Left(), 0.5);
    EXPECT_NEAR(corner.Top(), first.Top(), 0.5);
    EXPECT_NEAR(2 * corner.Height(), first.Height(), 0.5);
    EXPECT_NEAR(corner.Width() * Starts(2, 2, last - 1)[1] - corner.Width() * 2, first.Width(), 1.0);
    EXPECT_EQ("Process", first.GetTextFrame().GetCharacters().Text());
    EXPECT_NEAR(3, first.Line().Weight(), 0.05) << "line style 16: thick";
    EXPECT_EQ(kBlue, first.Line().ForeColor().RGB());
  }
}

TEST_F(TemplateGeneratorTest, AnAnnotatedTemplateWithoutTitleBlockIsPageSetupAndItsProperties) {
  CTemplateProperties p = Options("Bare A4");
  p.PaperSize(9);
  p.Orientation(2);
  p.UseShapesForSwimLanes(true);
  p.SwimLaneCount(3);
  office::Worksheet ws = Make(p);
  EXPECT_EQ(9, ws.GetPageSetup().PaperSize());
  EXPECT_EQ(2, ws.GetPageSetup().Orientation());
  EXPECT_EQ(0, ws.GetShapes().Count()) << "no shapes, so no group";
  EXPECT_FALSE(ws.ContentArea().has_value());

  office::DocumentProperties props = reopened_->GetDocumentProperties();
  EXPECT_EQ("Bare A4", props.Title());
  std::map<std::string, std::pair<int, std::string>> custom;
  for (int i = 1; i <= props.Count(); ++i) custom[props.Name(i)] = {props.Type(i), props.Value(i)};
  custom.erase("AppVersion");  // the office reads the writing program's version in as one
  using Typed = std::pair<int, std::string>;
  const int number = office::DocumentProperties::kTypeNumber, text = office::DocumentProperties::kTypeString;
  EXPECT_EQ((std::map<std::string, Typed>{{"NumberLanes", {number, "3"}},
                                          {"PageSize", {text, "A4"}},
                                          {"Orientation", {text, "Landscape"}},
                                          {"StartLocation", {text, "C4"}},
                                          {"TemplateType", {text, "Flowchart"}}}),
            custom)
      << "an annotated template names no lane direction";

  // As other programs read the package.
  std::string path = folder_ + "/Bare A4.xltx";
  EXPECT_NE(std::string::npos,
            PackageMember(path, "'\\[Content_Types\\].xml'")
                .find("PartName=\"/xl/workbook.xml\" "
                      "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.template.main+xml\""));
  std::string xml = PackageMember(path, "docProps/custom.xml");
  std::regex property(R"re(<property [^>]*name="([^"]+)"[^>]*><vt:(\w+)>([^<]*)</vt:)re");
  std::map<std::string, std::string> found;
  for (std::sregex_iterator i(xml.begin(), xml.end(), property), end; i != end; ++i)
    found[(*i)[1].str()] = (*i)[2].str() + ":" + (*i)[3].str();
  EXPECT_EQ((std::map<std::string, std::string>{{"NumberLanes", "r8:3"},
                                                {"PageSize", "lpwstr:A4"},
                                                {"Orientation", "lpwstr:Landscape"},
                                                {"StartLocation", "lpwstr:C4"},
                                                {"TemplateType", "lpwstr:Flowchart"}}),
            found)
      << xml;
}

TEST_F(TemplateGeneratorTest, HorizontalLanesAsShapesAreTitledUpwardAndEdgedByNamedLines) {
  Page page = PageOf(1, 1);
  CTemplateProperties p = Options("Horizontal");
  p.UseShapesForSwimLanes(true);
  p.TemplateType(CTemplateProperties::HorizontalSwimLanes);
  p.SwimLaneCount(3);
  p.TemplateLineStyle(9);
  office::Worksheet ws = Make(p);

  auto groups = Groups(ws);
  ASSERT_EQ(1u, groups.size());
  std::vector<office::Shape> titles, lines;
  for (const office::Shape& s : groups[0]) (s.Type() == office::msoLine ? lines : titles).push_back(s);
  ASSERT_EQ(3u, titles.size());
  // No header: every lane draws its top edge; no footer: the last its bottom
  // edge too; and one line closes the right side.
  ASSERT_EQ(7u, lines.size());
  const int rows = page.rows - 1;  // a row free at the foot
  std::vector<int> tops = Starts(1, 3, rows);
  office::Range b2 = ws.Cells(1, 2);
  for (int i = 0; i < 3; ++i) {
    office::Range first = ws.Cells(tops[i], 2);
    int height = i < 2 ? tops[i + 1] - tops[i] : rows + 1 - tops[i];
    EXPECT_NEAR(first.Top(), titles[i].Top(), 0.5) << i;
    EXPECT_NEAR(b2.Left(), titles[i].Left(), 0.5);
    EXPECT_NEAR(2 * b2.Width(), titles[i].Width(), 0.5);
    EXPECT_NEAR(ws.Cells(tops[i] + height, 2).Top() - first.Top(), titles[i].Height(), 0.5);
    EXPECT_EQ("Lane " + std::to_string(i + 1), titles[i].GetTextFrame().GetCharacters().Text());
    EXPECT_EQ(office::xlCenter, titles[i].GetTextFrame().HorizontalAlignment());
    EXPECT_EQ(office::msoTextOrientationUpward, titles[i].GetTextFrame().Orientation());
  }
  int vertical = 0;
  const double right = ws.Cells(1, page.columns).Left();
  for (const office::Shape& line : lines) {
    EXPECT_NEAR(2, line.Line().Weight(), 0.05);
    EXPECT_EQ(kBlue, line.Line().ForeColor().RGB());
    if (line.Width() < 0.5) {
      ++vertical;
      EXPECT_NEAR(right, line.Left(), 0.5);
      EXPECT_NEAR(ws.Cells(rows + 1, 1).Top(), line.Top() + line.Height(), 0.5);
    } else {
      EXPECT_NEAR(ws.Cells(1, 4).Left(), line.Left(), 0.5) << "the lanes start after their titles";
      EXPECT_NEAR(right, line.Left() + line.Width(), 0.5);
    }
  }
  EXPECT_EQ(1, vertical);
}

TEST_F(TemplateGeneratorTest, AnEmptySectionLabelGivesAShapeWithoutTextInTheTemplatesFont) {
  CTemplateProperties p = Options("Fonts");
  p.UseShapesForSwimLanes(true);
  p.TemplateFontName("DejaVu Serif");
  p.TemplateFontSize(14);
  p.TemplateFontBold(true);
  p.TemplateFontItalic(true);
  Header(p, {{"", "Name"}});
  office::Worksheet ws = Make(p);
  auto expectFont = [](office::Font font) {
    EXPECT_EQ("DejaVu Serif", font.Name());
    EXPECT_NEAR(14, font.Size(), 0.01);
    EXPECT_TRUE(font.Bold());
    EXPECT_TRUE(font.Italic());
  };
  auto groups = Groups(ws);
  ASSERT_EQ(1u, groups.size());
  ASSERT_EQ(2u, groups[0].size());
  EXPECT_EQ("", groups[0][0].GetTextFrame().GetCharacters().Text());
  office::Shape named = groups[0][1];
  EXPECT_EQ("Name", named.GetTextFrame().GetCharacters().Text());
  expectFont(named.GetTextFrame().GetCharacters(1, 4).GetFont());
  EXPECT_EQ(office::xlLeft, named.GetTextFrame().HorizontalAlignment());
  EXPECT_EQ(office::xlBottom, named.GetTextFrame().VerticalAlignment());

  // The empty section carries the font for what is typed into it.
  office::Shape empty = groups[0][0];
  expectFont(empty.GetTextFrame().GetCharacters().GetFont());
  EXPECT_EQ(office::xlBottom, empty.GetTextFrame().VerticalAlignment());
}

TEST_F(TemplateGeneratorTest, TheFileKeepsAGivenExtensionAndTakesTheRoadsOwnOtherwise) {
  CTemplateProperties p = Options("Plan.XLTX");
  p.TemplateFolder(folder_ + "/");
  Make(p);
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder_))
    if (entry.path().filename().string().rfind(".~lock.", 0) != 0) files.push_back(entry.path().filename().string());
  EXPECT_EQ(std::vector<std::string>{"Plan.XLTX"}, files);
  EXPECT_EQ("Plan.XLTX", reopened_->GetDocumentProperties().Title());

  TakeTheRoadBelowVersion12();
  CTemplateProperties old = Options("Old");
  old.TemplateType(CTemplateProperties::VerticalSwimLanes);
  office::Worksheet ws = Make(old);
  EXPECT_TRUE(fs::exists(folder_ + "/Old.xlt"));
  EXPECT_EQ("Lane 1", Text(ws, 1, 1)) << "an Excel 97 template";
  office::DocumentProperties props = reopened_->GetDocumentProperties();
  EXPECT_EQ("Old", props.Title());
  bool vertical = false;
  for (int i = 1; i <= props.Count(); ++i) vertical |= props.Name(i) == "LaneDirection" && props.Value(i) == "Vertical";
  EXPECT_TRUE(vertical);
}

}  // namespace
}  // namespace nivarel::testing
