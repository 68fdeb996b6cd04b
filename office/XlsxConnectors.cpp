#include "XlsxConnectors.h"

#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <zip.h>

#include "HostError.h"

namespace nivarel::office {
namespace {

const char kRelations[] = "http://schemas.openxmlformats.org/package/2006/relationships";
const char kDocumentRelations[] = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const char kSpreadsheet[] = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const char kSheetDrawing[] = "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing";
const char kDrawing[] = "http://schemas.openxmlformats.org/drawingml/2006/main";

[[noreturn]] void Fail(const std::string& path, const std::string& why) {
  throw HostError(HostError::kOfficeFailure, "Cannot rewrite the connectors of '" + path + "': " + why);
}

struct ZipCloser {
  void operator()(zip_t* z) const { zip_discard(z); }
};
struct DocFree {
  void operator()(xmlDoc* d) const { xmlFreeDoc(d); }
};
using Doc = std::unique_ptr<xmlDoc, DocFree>;

bool Is(const xmlNode* n, const char* ns, const char* name) {
  return n && n->type == XML_ELEMENT_NODE && n->ns && std::strcmp(reinterpret_cast<const char*>(n->ns->href), ns) == 0 &&
         std::strcmp(reinterpret_cast<const char*>(n->name), name) == 0;
}

std::string Attribute(const xmlNode* n, const char* name, const char* ns = nullptr) {
  xmlChar* v = ns ? xmlGetNsProp(n, BAD_CAST name, BAD_CAST ns) : xmlGetNoNsProp(n, BAD_CAST name);
  if (!v) return {};
  std::string s(reinterpret_cast<const char*>(v));
  xmlFree(v);
  return s;
}

const xmlNode* Child(const xmlNode* n, const char* ns, const char* name) {
  for (const xmlNode* c = n ? n->children : nullptr; c; c = c->next)
    if (Is(c, ns, name)) return c;
  return nullptr;
}

void Collect(xmlNode* n, const char* ns, const char* name, std::vector<xmlNode*>& out) {
  for (xmlNode* c = n; c; c = c->next) {
    if (Is(c, ns, name)) out.push_back(c);
    Collect(c->children, ns, name, out);
  }
}

// A part's name from a relationship target, which is relative to the folder
// of the part that holds the relationship unless it starts with '/'.
std::string Resolve(const std::string& fromPart, const std::string& target) {
  std::string base = target.rfind('/', 0) == 0 ? "" : fromPart.substr(0, fromPart.rfind('/') + 1);
  std::vector<std::string> parts;
  std::string whole = base + target, piece;
  for (size_t i = 0; i <= whole.size(); ++i) {
    if (i == whole.size() || whole[i] == '/') {
      if (piece == "..") {
        if (!parts.empty()) parts.pop_back();
      } else if (!piece.empty() && piece != ".") {
        parts.push_back(piece);
      }
      piece.clear();
    } else {
      piece += whole[i];
    }
  }
  std::string out;
  for (const auto& p : parts) out += (out.empty() ? "" : "/") + p;
  return out;
}

std::string RelationsOf(const std::string& part) {
  size_t slash = part.rfind('/');
  std::string folder = slash == std::string::npos ? "" : part.substr(0, slash + 1);
  std::string file = slash == std::string::npos ? part : part.substr(slash + 1);
  return folder + "_rels/" + file + ".rels";
}

class Package {
 public:
  explicit Package(const std::string& path) : path_(path) {
    int error = 0;
    zip_.reset(zip_open(path.c_str(), 0, &error));
    if (!zip_) Fail(path, "it is not a zip package");
  }

  bool Has(const std::string& part) const { return zip_name_locate(zip_.get(), part.c_str(), 0) >= 0; }

  Doc Read(const std::string& part) const {
    zip_stat_t st;
    if (zip_stat(zip_.get(), part.c_str(), 0, &st) != 0 || !(st.valid & ZIP_STAT_SIZE)) Fail(path_, part + " is missing");
    zip_file_t* f = zip_fopen(zip_.get(), part.c_str(), 0);
    if (!f) Fail(path_, part + " cannot be read");
    std::string data(st.size, '\0');
    zip_int64_t got = zip_fread(f, data.data(), st.size);
    zip_fclose(f);
    if (got != static_cast<zip_int64_t>(st.size)) Fail(path_, part + " cannot be read");
    Doc doc(xmlReadMemory(data.data(), static_cast<int>(data.size()), part.c_str(), nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOWARNING | XML_PARSE_NOERROR));
    if (!doc) Fail(path_, part + " is not well-formed");
    return doc;
  }

  void Replace(const std::string& part, xmlDoc* doc) {
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(doc, &text, &size, "UTF-8");
    if (!text) Fail(path_, part + " cannot be written");
    void* copy = std::malloc(size);
    std::memcpy(copy, text, size);
    xmlFree(text);
    zip_source_t* source = zip_source_buffer(zip_.get(), copy, size, 1);
    if (!source) {
      std::free(copy);
      Fail(path_, part + " cannot be written");
    }
    zip_int64_t index = zip_name_locate(zip_.get(), part.c_str(), 0);
    if (index < 0 || zip_file_replace(zip_.get(), index, source, ZIP_FL_ENC_UTF_8) != 0) {
      zip_source_free(source);
      Fail(path_, part + " cannot be written");
    }
    changed_ = true;
  }

  void Close() {
    if (!changed_) return;
    if (zip_close(zip_.get()) != 0) Fail(path_, zip_strerror(zip_.get()));
    zip_.release();
  }

  // Targets of the relationships of part whose type ends with typeSuffix,
  // by relationship id.
  std::map<std::string, std::string> Targets(const std::string& part, const std::string& typeSuffix) const {
    std::map<std::string, std::string> out;
    std::string rels = RelationsOf(part);
    if (!Has(rels)) return out;
    Doc doc = Read(rels);
    for (const xmlNode* r = xmlDocGetRootElement(doc.get())->children; r; r = r->next) {
      if (!Is(r, kRelations, "Relationship") || Attribute(r, "TargetMode") == "External") continue;
      std::string type = Attribute(r, "Type");
      if (type.size() >= typeSuffix.size() && type.compare(type.size() - typeSuffix.size(), typeSuffix.size(), typeSuffix) == 0)
        out[Attribute(r, "Id")] = Resolve(part, Attribute(r, "Target"));
    }
    return out;
  }

 private:
  std::string path_;
  std::unique_ptr<zip_t, ZipCloser> zip_;
  bool changed_ = false;
};

// Gives every drawing object an id of its own (the office writes 0 and ids
// it also hands to connector ends) and returns the ids by object name.
std::map<std::string, std::string> UniqueIds(xmlNode* root) {
  std::vector<xmlNode*> all;
  Collect(root, kSheetDrawing, "cNvPr", all);
  long highest = 0;
  for (xmlNode* n : all) highest = std::max(highest, std::atol(Attribute(n, "id").c_str()));
  std::set<long> taken;
  std::map<std::string, std::string> byName;
  for (xmlNode* n : all) {
    long id = std::atol(Attribute(n, "id").c_str());
    if (id <= 0 || !taken.insert(id).second) {
      id = ++highest;
      taken.insert(id);
      xmlSetProp(n, BAD_CAST "id", BAD_CAST std::to_string(id).c_str());
    }
    byName.emplace(Attribute(n, "name"), std::to_string(id));
  }
  return byName;
}

void SetEnd(xmlNode* owner, xmlNs* ns, const char* element, const XlsxConnectors::End& end,
            const std::map<std::string, std::string>& ids) {
  if (end.shape.empty() || end.site < 1) return;
  auto id = ids.find(end.shape);
  if (id == ids.end()) return;
  xmlNode* node = xmlNewNode(ns, BAD_CAST element);
  xmlSetProp(node, BAD_CAST "id", BAD_CAST id->second.c_str());
  xmlSetProp(node, BAD_CAST "idx", BAD_CAST std::to_string(end.site - 1).c_str());
  // stCxn and endCxn come before an extension list.
  xmlNode* ext = const_cast<xmlNode*>(Child(owner, kDrawing, "extLst"));
  if (ext) xmlAddPrevSibling(ext, node);
  else xmlAddChild(owner, node);
}

void RewriteDrawing(xmlDoc* doc, const std::vector<XlsxConnectors::Connector>& glued) {
  xmlNode* root = xmlDocGetRootElement(doc);
  auto ids = UniqueIds(root);
  std::map<std::string, const XlsxConnectors::Connector*> byName;
  for (const auto& c : glued) byName.emplace(c.name, &c);
  std::vector<xmlNode*> connectors;
  Collect(root, kSheetDrawing, "cxnSp", connectors);
  for (xmlNode* cxn : connectors) {
    const xmlNode* nv = Child(cxn, kSheetDrawing, "nvCxnSpPr");
    xmlNode* props = const_cast<xmlNode*>(Child(nv, kSheetDrawing, "cNvCxnSpPr"));
    const xmlNode* named = Child(nv, kSheetDrawing, "cNvPr");
    if (!props || !named) continue;
    for (const char* end : {"stCxn", "endCxn"}) {
      if (xmlNode* old = const_cast<xmlNode*>(Child(props, kDrawing, end))) {
        xmlUnlinkNode(old);
        xmlFreeNode(old);
      }
    }
    auto c = byName.find(Attribute(named, "name"));
    if (c == byName.end()) continue;
    xmlNs* ns = xmlSearchNsByHref(doc, props, BAD_CAST kDrawing);
    if (!ns) ns = xmlNewNs(root, BAD_CAST kDrawing, BAD_CAST "a");
    SetEnd(props, ns, "stCxn", c->second->begin, ids);
    SetEnd(props, ns, "endCxn", c->second->end, ids);
  }
}

// The direction of each listed shape's text, and the font and anchor of a
// listed shape without text, which the office writes no text body for.
void RewriteTexts(xmlDoc* doc, const std::vector<XlsxConnectors::ShapeText>& texts) {
  if (texts.empty()) return;
  xmlNode* root = xmlDocGetRootElement(doc);
  std::map<std::string, const XlsxConnectors::ShapeText*> byName;
  for (const auto& t : texts) byName.emplace(t.name, &t);
  std::vector<xmlNode*> shapes;
  Collect(root, kSheetDrawing, "sp", shapes);
  xmlNs* a = xmlSearchNsByHref(doc, root, BAD_CAST kDrawing);
  if (!a) a = xmlNewNs(root, BAD_CAST kDrawing, BAD_CAST "a");
  for (xmlNode* sp : shapes) {
    const xmlNode* named = Child(Child(sp, kSheetDrawing, "nvSpPr"), kSheetDrawing, "cNvPr");
    auto t = named ? byName.find(Attribute(named, "name")) : byName.end();
    if (t == byName.end()) continue;
    const XlsxConnectors::ShapeText& text = *t->second;
    xmlNode* body = const_cast<xmlNode*>(Child(sp, kSheetDrawing, "txBody"));
    if (!body && text.empty) {
      body = xmlNewChild(sp, sp->ns, BAD_CAST "txBody", nullptr);
      xmlNode* bodyPr = xmlNewChild(body, a, BAD_CAST "bodyPr", nullptr);
      if (!text.anchor.empty()) xmlSetProp(bodyPr, BAD_CAST "anchor", BAD_CAST text.anchor.c_str());
      xmlNode* end = xmlNewChild(xmlNewChild(body, a, BAD_CAST "p", nullptr), a, BAD_CAST "endParaRPr", nullptr);
      xmlSetProp(end, BAD_CAST "lang", BAD_CAST "en-US");
      xmlSetProp(end, BAD_CAST "sz", BAD_CAST std::to_string(static_cast<long>(text.size * 100 + 0.5)).c_str());
      xmlSetProp(end, BAD_CAST "b", BAD_CAST(text.bold ? "1" : "0"));
      xmlSetProp(end, BAD_CAST "i", BAD_CAST(text.italic ? "1" : "0"));
      if (!text.font.empty()) xmlSetProp(xmlNewChild(end, a, BAD_CAST "latin", nullptr), BAD_CAST "typeface", BAD_CAST text.font.c_str());
    }
    xmlNode* bodyPr = body ? const_cast<xmlNode*>(Child(body, kDrawing, "bodyPr")) : nullptr;
    if (bodyPr && !text.vert.empty()) xmlSetProp(bodyPr, BAD_CAST "vert", BAD_CAST text.vert.c_str());
  }
}

}  // namespace

void XlsxConnectors::Rewrite(const std::string& path) const {
  Package package(path);
  auto main = package.Targets("", "/officeDocument");
  if (main.empty()) Fail(path, "it has no workbook");
  std::string workbookPart = main.begin()->second;
  auto sheetParts = package.Targets(workbookPart, "/worksheet");
  Doc workbook = package.Read(workbookPart);
  const xmlNode* sheets = Child(xmlDocGetRootElement(workbook.get()), kSpreadsheet, "sheets");
  size_t index = 0;
  for (const xmlNode* s = sheets ? sheets->children : nullptr; s; s = s->next) {
    if (!Is(s, kSpreadsheet, "sheet")) continue;
    const std::vector<Connector>* glued = index < sheets_.size() ? &sheets_[index] : nullptr;
    const std::vector<ShapeText>* texts = index < texts_.size() ? &texts_[index] : nullptr;
    ++index;
    auto part = sheetParts.find(Attribute(s, "id", kDocumentRelations));
    if (part == sheetParts.end()) continue;
    static const std::vector<Connector> none;
    for (const auto& [id, drawingPart] : package.Targets(part->second, "/drawing")) {
      (void)id;
      Doc drawing = package.Read(drawingPart);
      RewriteDrawing(drawing.get(), glued ? *glued : none);
      if (texts) RewriteTexts(drawing.get(), *texts);
      package.Replace(drawingPart, drawing.get());
    }
  }
  package.Close();
}

}  // namespace nivarel::office
