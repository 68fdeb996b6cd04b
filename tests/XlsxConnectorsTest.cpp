// Rewriting a saved .xlsx package so that its connectors name the shapes they
// are glued to: found through the package's relationships, ids made unique,
// stale ends dropped, and a second rewrite changing nothing.
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>
#include <zip.h>

#include "HostError.h"
#include "UnitEnvironment.h"
#include "XlsxConnectors.h"

namespace nivarel::testing {
namespace {

using office::XlsxConnectors;

const char kRels[] = "http://schemas.openxmlformats.org/package/2006/relationships";

std::string Relationship(const std::string& id, const std::string& type, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/" +
         type + "\" Target=\"" + target + "\"/>";
}

std::string Relations(const std::string& body) {
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?><Relationships xmlns=\"") + kRels + "\">" + body +
         "</Relationships>";
}

std::string Drawing(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
         "<xdr:wsDr xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
         "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">" +
         body + "</xdr:wsDr>";
}

std::string Shape(int id, const std::string& name) {
  return "<xdr:twoCellAnchor><xdr:sp><xdr:nvSpPr><xdr:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><xdr:cNvSpPr/></xdr:nvSpPr></xdr:sp></xdr:twoCellAnchor>";
}

// A connector as the office writes it: ends naming ids that belong to nobody.
std::string Connector(int id, const std::string& name) {
  return "<xdr:twoCellAnchor><xdr:cxnSp><xdr:nvCxnSpPr><xdr:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><xdr:cNvCxnSpPr><a:stCxn id=\"" + std::to_string(id + 1) + "\" idx=\"2\"/><a:endCxn id=\"" +
         std::to_string(id + 2) + "\" idx=\"0\"/></xdr:cNvCxnSpPr></xdr:nvCxnSpPr></xdr:cxnSp></xdr:twoCellAnchor>";
}

class XlsxConnectorsTest : public ::testing::Test {
 protected:
  // Two sheets whose parts are numbered against their order, as a package
  // may be: the first sheet is sheet2.xml and draws in drawing2.xml.
  void SetUp() override {
    std::filesystem::create_directories(UnitConfigHome());
    path_ = UnitConfigHome() + "/book.xlsx";
    std::filesystem::remove(path_);
    Write({
        {"_rels/.rels", Relations(Relationship("rId1", "officeDocument", "xl/workbook.xml"))},
        {"xl/workbook.xml",
         "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
         "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets>"
         "<sheet name=\"First\" sheetId=\"1\" r:id=\"rId3\"/><sheet name=\"Second\" sheetId=\"2\" r:id=\"rId2\"/>"
         "</sheets></workbook>"},
        {"xl/_rels/workbook.xml.rels", Relations(Relationship("rId2", "worksheet", "worksheets/sheet1.xml") +
                                                 Relationship("rId3", "worksheet", "/xl/worksheets/sheet2.xml"))},
        {"xl/worksheets/sheet1.xml", "<worksheet/>"},
        {"xl/worksheets/sheet2.xml", "<worksheet/>"},
        {"xl/worksheets/_rels/sheet1.xml.rels", Relations(Relationship("rId1", "drawing", "../drawings/drawing1.xml"))},
        {"xl/worksheets/_rels/sheet2.xml.rels", Relations(Relationship("rId1", "drawing", "../drawings/drawing2.xml"))},
        // The first sheet: two symbols (one inside a group), a glued line
        // and a free one; ids as the office hands them out.
        {"xl/drawings/drawing2.xml",
         Drawing(Connector(0, "Flow") + Connector(3, "Loose") + Shape(6, "Start") +
                 "<xdr:twoCellAnchor><xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id=\"7\" name=\"Group\"/></xdr:nvGrpSpPr>" +
                 "<xdr:sp><xdr:nvSpPr><xdr:cNvPr id=\"6\" name=\"Step\"/></xdr:nvSpPr></xdr:sp></xdr:grpSp>" +
                 "</xdr:twoCellAnchor>")},
        // The second sheet uses the same names for other shapes.
        {"xl/drawings/drawing1.xml", Drawing(Connector(0, "Flow") + Shape(9, "Step") + Shape(10, "Start"))},
    });
  }

  void Write(const std::map<std::string, std::string>& parts) {
    int error = 0;
    zip_t* z = zip_open(path_.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    ASSERT_NE(nullptr, z);
    for (const auto& [name, text] : parts) {
      zip_source_t* s = zip_source_buffer(z, text.data(), text.size(), 0);
      ASSERT_GE(zip_file_add(z, name.c_str(), s, ZIP_FL_OVERWRITE), 0);
    }
    ASSERT_EQ(0, zip_close(z));
  }

  std::string Read(const std::string& part) const {
    int error = 0;
    zip_t* z = zip_open(path_.c_str(), ZIP_RDONLY, &error);
    if (!z) return {};
    zip_stat_t st;
    std::string data;
    if (zip_stat(z, part.c_str(), 0, &st) == 0) {
      data.resize(st.size);
      zip_file_t* f = zip_fopen(z, part.c_str(), 0);
      zip_fread(f, data.data(), st.size);
      zip_fclose(f);
    }
    zip_discard(z);
    return data;
  }

  // The string values of an XPath over a drawing part, '|'-joined.
  std::string Query(const std::string& part, const std::string& xpath) const {
    std::string text = Read(part);
    xmlDoc* doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0);
    if (!doc) return "(not XML)";
    xmlXPathContext* ctx = xmlXPathNewContext(doc);
    xmlXPathRegisterNs(ctx, BAD_CAST "xdr", BAD_CAST "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing");
    xmlXPathRegisterNs(ctx, BAD_CAST "a", BAD_CAST "http://schemas.openxmlformats.org/drawingml/2006/main");
    xmlXPathObject* r = xmlXPathEvalExpression(BAD_CAST xpath.c_str(), ctx);
    std::string out;
    for (int i = 0; r && r->nodesetval && i < r->nodesetval->nodeNr; ++i) {
      xmlChar* v = xmlNodeGetContent(r->nodesetval->nodeTab[i]);
      out += (i ? "|" : "") + std::string(reinterpret_cast<char*>(v));
      xmlFree(v);
    }
    xmlXPathFreeObject(r);
    xmlXPathFreeContext(ctx);
    xmlFreeDoc(doc);
    return out;
  }

  std::string IdOf(const std::string& part, const std::string& name) const {
    return Query(part, "//xdr:cNvPr[@name='" + name + "']/@id");
  }

  std::string path_;
};

TEST_F(XlsxConnectorsTest, EachSheetsConnectorsNameTheirGluedShapesByTheirIds) {
  XlsxConnectors({{{"Flow", {"Start", 3}, {"Step", 1}}}, {{"Flow", {"Step", 4}, {"Start", 2}}}}).Rewrite(path_);

  const std::string first = "xl/drawings/drawing2.xml", second = "xl/drawings/drawing1.xml";
  std::string ids = Query(first, "//xdr:cNvPr/@id");
  EXPECT_EQ("8|3|6|7|9", ids) << "ids kept where they were first and non-zero, the rest numbered on";
  EXPECT_EQ(IdOf(first, "Start") + "|" + IdOf(first, "Step"),
            Query(first, "//xdr:cxnSp[.//xdr:cNvPr/@name='Flow']//a:*[self::a:stCxn or self::a:endCxn]/@id"));
  EXPECT_EQ("2|0", Query(first, "//xdr:cxnSp[.//xdr:cNvPr/@name='Flow']//a:*[@idx]/@idx"))
      << "sites counted from 0 in the file";
  EXPECT_EQ("", Query(first, "//xdr:cxnSp[.//xdr:cNvPr/@name='Loose']//a:*[@idx]/@id")) << "a free line has no ends";

  EXPECT_EQ("9", Query(second, "//xdr:cxnSp//a:stCxn/@id")) << "the second sheet's own Step";
  EXPECT_EQ("10", Query(second, "//xdr:cxnSp//a:endCxn/@id"));
  EXPECT_EQ("3|1", Query(second, "//a:*[@idx]/@idx"));

  std::string before = Read(first) + Read(second);
  XlsxConnectors({{{"Flow", {"Start", 3}, {"Step", 1}}}, {{"Flow", {"Step", 4}, {"Start", 2}}}}).Rewrite(path_);
  EXPECT_EQ(before, Read(first) + Read(second)) << "a second rewrite changes nothing";
}

TEST_F(XlsxConnectorsTest, AFileThatIsNoPackageIsRefusedAndLeftAlone) {
  std::string text = UnitConfigHome() + "/not-a-package.xlsx";
  std::ofstream(text) << "plain text";
  EXPECT_THROW(XlsxConnectors({}).Rewrite(text), office::HostError);
  EXPECT_EQ(10u, std::filesystem::file_size(text));
}

}  // namespace
}  // namespace nivarel::testing
