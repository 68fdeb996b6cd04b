#include "SavedXlsx.h"

#include <cstdio>
#include <map>

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

namespace nivarel::testing {

std::string PackageMember(const std::string& package, const std::string& member, bool required) {
  std::string xml;
  if (FILE* p = popen(("unzip -p '" + package + "' " + member + " 2>/dev/null").c_str(), "r")) {
    char buffer[65536];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, p)) > 0;) xml.append(buffer, n);
    pclose(p);
  }
  if (required) EXPECT_FALSE(xml.empty()) << member << " of " << package;
  return xml;
}

std::vector<XlsxConnector> XlsxConnectorsOf(const std::string& package) {
  std::string xml = PackageMember(package, "xl/drawings/drawing1.xml");
  std::vector<XlsxConnector> out;
  xmlDoc* doc = xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, 0);
  if (!doc) return out;
  xmlXPathContext* ctx = xmlXPathNewContext(doc);
  xmlXPathRegisterNs(ctx, BAD_CAST "xdr", BAD_CAST "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing");
  xmlXPathRegisterNs(ctx, BAD_CAST "a", BAD_CAST "http://schemas.openxmlformats.org/drawingml/2006/main");
  auto text = [&](xmlNode* at, const std::string& path) {
    ctx->node = at;
    xmlXPathObject* r = xmlXPathEvalExpression(BAD_CAST("string(" + path + ")").c_str(), ctx);
    std::string v = r && r->stringval ? reinterpret_cast<const char*>(r->stringval) : "";
    xmlXPathFreeObject(r);
    return v;
  };
  auto nodes = [&](const char* path) {
    ctx->node = xmlDocGetRootElement(doc);
    std::vector<xmlNode*> found;
    xmlXPathObject* r = xmlXPathEvalExpression(BAD_CAST path, ctx);
    for (int i = 0; r && r->nodesetval && i < r->nodesetval->nodeNr; ++i) found.push_back(r->nodesetval->nodeTab[i]);
    xmlXPathFreeObject(r);
    return found;
  };
  std::map<std::string, std::string> names;  // every object of the drawing, by id
  for (xmlNode* n : nodes("//xdr:cNvPr"))
    EXPECT_TRUE(names.emplace(text(n, "@id"), text(n, "@name")).second) << "id " << text(n, "@id") << " twice";
  for (xmlNode* n : nodes("//xdr:cxnSp")) {
    XlsxConnector c;
    c.name = text(n, "xdr:nvCxnSpPr/xdr:cNvPr/@name");
    std::string st = text(n, ".//a:stCxn/@id"), end = text(n, ".//a:endCxn/@id");
    c.begin = names.count(st) ? names[st] : "";
    c.end = names.count(end) ? names[end] : "";
    std::string stIdx = text(n, ".//a:stCxn/@idx"), endIdx = text(n, ".//a:endCxn/@idx");
    c.beginSite = stIdx.empty() ? 0 : std::stoi(stIdx) + 1;
    c.endSite = endIdx.empty() ? 0 : std::stoi(endIdx) + 1;
    out.push_back(c);
  }
  xmlXPathFreeContext(ctx);
  xmlFreeDoc(doc);
  return out;
}

}  // namespace nivarel::testing
