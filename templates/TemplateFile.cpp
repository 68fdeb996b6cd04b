#include "TemplateFile.h"

#include <gsf/gsf-doc-meta-data.h>
#include <gsf/gsf-docprop-vector.h>
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>
#include <gsf/gsf-meta-names.h>
#include <gsf/gsf-msole-utils.h>
#include <gsf/gsf-timestamp.h>
#include <gsf/gsf-utils.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <zip.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace nivarel::templates {

std::string TemplateFile::Custom(const std::string& name) const {
  for (const auto& [key, value] : custom)
    if (key == name) return value;
  return std::string();
}

namespace {

// ---- Office Open XML packages -------------------------------------------

const char* const kCoreNs = "http://purl.org/dc/elements/1.1/";
const char* const kCustomNs = "http://schemas.openxmlformats.org/officeDocument/2006/custom-properties";

struct ZipDiscard {
  void operator()(zip_t* z) const { zip_discard(z); }
};
struct DocFree {
  void operator()(xmlDoc* d) const { xmlFreeDoc(d); }
};
using Doc = std::unique_ptr<xmlDoc, DocFree>;

// The part parsed; null when missing. Throws when it is there but broken.
Doc ReadPart(zip_t* zip, const char* part) {
  zip_stat_t st;
  if (zip_stat(zip, part, 0, &st) != 0 || !(st.valid & ZIP_STAT_SIZE)) return nullptr;
  std::string data(st.size, '\0');
  zip_file_t* f = zip_fopen(zip, part, 0);
  if (!f) throw std::runtime_error("unreadable part");
  zip_int64_t got = zip_fread(f, data.data(), st.size);
  zip_fclose(f);
  if (got != static_cast<zip_int64_t>(st.size)) throw std::runtime_error("short part");
  Doc doc(xmlReadMemory(data.data(), static_cast<int>(data.size()), part, nullptr,
                        XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (!doc || !xmlDocGetRootElement(doc.get())) throw std::runtime_error("broken part");
  return doc;
}

bool InNs(const xmlNode* n, const char* ns) {
  return n->type == XML_ELEMENT_NODE && n->ns && std::strcmp(reinterpret_cast<const char*>(n->ns->href), ns) == 0;
}

std::string Content(const xmlNode* n) {
  xmlChar* text = xmlNodeGetContent(n);
  std::string out = text ? reinterpret_cast<const char*>(text) : "";
  xmlFree(text);
  return out;
}

// A typed value as text: a truth value as "True" or "False", the rest as written.
std::string ValueText(const xmlNode* value) {
  std::string text = Content(value);
  if (std::strcmp(reinterpret_cast<const char*>(value->name), "bool") == 0)
    return text == "true" || text == "1" ? "True" : "False";
  return text;
}

bool ReadPackage(const std::string& path, TemplateFile& file) {
  int error = 0;
  std::unique_ptr<zip_t, ZipDiscard> zip(zip_open(path.c_str(), ZIP_RDONLY, &error));
  if (!zip || zip_name_locate(zip.get(), "[Content_Types].xml", 0) < 0) return false;
  try {
    if (Doc core = ReadPart(zip.get(), "docProps/core.xml"))
      for (const xmlNode* n = xmlDocGetRootElement(core.get())->children; n; n = n->next)
        if (InNs(n, kCoreNs) && std::strcmp(reinterpret_cast<const char*>(n->name), "title") == 0) file.title = Content(n);
    if (Doc custom = ReadPart(zip.get(), "docProps/custom.xml"))
      for (const xmlNode* n = xmlDocGetRootElement(custom.get())->children; n; n = n->next) {
        if (!InNs(n, kCustomNs) || std::strcmp(reinterpret_cast<const char*>(n->name), "property") != 0) continue;
        xmlChar* name = xmlGetProp(n, BAD_CAST "name");
        if (!name) continue;
        const xmlNode* value = n->children;
        while (value && value->type != XML_ELEMENT_NODE) value = value->next;
        file.custom.emplace_back(reinterpret_cast<const char*>(name), value ? ValueText(value) : std::string());
        xmlFree(name);
      }
  } catch (const std::exception&) {
    return false;
  }
  return true;
}

// ---- OLE2 compound files --------------------------------------------------

template <class T>
struct Unref {
  void operator()(T* p) const {
    if (p) g_object_unref(p);
  }
};
template <class T>
using GsfPtr = std::unique_ptr<T, Unref<T>>;

// A property's value as text: numbers in decimal, truth values as "True" or "False".
std::string ValueText(const GValue* value) {
  if (!value) return std::string();
  switch (G_TYPE_FUNDAMENTAL(G_VALUE_TYPE(value))) {
    case G_TYPE_STRING: {
      const char* s = g_value_get_string(value);
      return s ? s : "";
    }
    case G_TYPE_BOOLEAN: return g_value_get_boolean(value) ? "True" : "False";
    case G_TYPE_CHAR: return std::to_string(g_value_get_schar(value));
    case G_TYPE_UCHAR: return std::to_string(g_value_get_uchar(value));
    case G_TYPE_INT: return std::to_string(g_value_get_int(value));
    case G_TYPE_UINT: return std::to_string(g_value_get_uint(value));
    case G_TYPE_LONG: return std::to_string(g_value_get_long(value));
    case G_TYPE_ULONG: return std::to_string(g_value_get_ulong(value));
    case G_TYPE_INT64: return std::to_string(g_value_get_int64(value));
    case G_TYPE_UINT64: return std::to_string(g_value_get_uint64(value));
    case G_TYPE_FLOAT:
    case G_TYPE_DOUBLE: {
      double d = G_VALUE_HOLDS_FLOAT(value) ? g_value_get_float(value) : g_value_get_double(value);
      char buffer[32];
      std::snprintf(buffer, sizeof buffer, "%.15g", d);
      return buffer;
    }
    default: break;
  }
  if (VAL_IS_GSF_TIMESTAMP(value)) {
    char* s = gsf_timestamp_as_string(static_cast<GsfTimestamp*>(g_value_get_boxed(value)));
    std::string out = s ? s : "";
    g_free(s);
    return out;
  }
  return std::string();
}

// The library names the properties it knows ("dc:title", "msole:codepage");
// the user's own keep the plain names the file gives them.
bool BuiltIn(const char* name) {
  for (const char* ns : {"dc:", "gsf:", "meta:", "msole:", "xlsx:", "odf:"})
    if (std::strncmp(name, ns, std::strlen(ns)) == 0) return true;
  return false;
}

// Reads one property set stream into meta; false when it is there but broken.
bool ReadPropertySet(GsfInfile* ole, const char* stream, GsfDocMetaData* meta) {
  GsfPtr<GsfInput> in(gsf_infile_child_by_name(ole, stream));
  if (!in) return true;
  GError* error = gsf_doc_meta_data_read_from_msole(meta, in.get());
  if (!error) return true;
  g_error_free(error);
  return false;
}

void AddCustom(gpointer key, gpointer prop, gpointer data) {
  const char* name = static_cast<const char*>(key);
  if (!name || BuiltIn(name)) return;
  auto* file = static_cast<TemplateFile*>(data);
  file->custom.emplace_back(name, ValueText(gsf_doc_prop_get_val(static_cast<GsfDocProp*>(prop))));
}

bool ReadCompoundFile(const std::string& path, TemplateFile& file) {
  static std::once_flag once;
  std::call_once(once, [] { gsf_init(); });
  GError* error = nullptr;
  GsfPtr<GsfInput> input(gsf_input_stdio_new(path.c_str(), &error));
  if (error) g_error_free(error), error = nullptr;
  if (!input) return false;
  GsfPtr<GsfInfile> ole(gsf_infile_msole_new(input.get(), &error));
  if (error) g_error_free(error);
  if (!ole) return false;
  GsfPtr<GsfDocMetaData> summary(gsf_doc_meta_data_new());
  GsfPtr<GsfDocMetaData> document(gsf_doc_meta_data_new());
  if (!ReadPropertySet(ole.get(), "\005SummaryInformation", summary.get()) ||
      !ReadPropertySet(ole.get(), "\005DocumentSummaryInformation", document.get()))
    return false;
  if (GsfDocProp* title = gsf_doc_meta_data_lookup(summary.get(), GSF_META_NAME_TITLE))
    file.title = ValueText(gsf_doc_prop_get_val(title));
  // The library keeps the properties by name, not in the file's order, so
  // they are listed by name.
  gsf_doc_meta_data_foreach(document.get(), AddCustom, &file);
  std::sort(file.custom.begin(), file.custom.end());
  return true;
}

// Which kind of file this is, by its first bytes.
enum class Kind { Package, CompoundFile, Other };

Kind KindOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  unsigned char head[8] = {};
  if (!in.read(reinterpret_cast<char*>(head), sizeof head)) return Kind::Other;
  static const unsigned char kOle[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
  if (std::memcmp(head, kOle, 8) == 0) return Kind::CompoundFile;
  if (head[0] == 'P' && head[1] == 'K' && head[2] == 3 && head[3] == 4) return Kind::Package;
  return Kind::Other;
}

}  // namespace

bool ReadTemplateFile(const std::string& path, TemplateFile& file) {
  file = TemplateFile();
  bool read = false;
  try {
    switch (KindOf(path)) {
      case Kind::Package: read = ReadPackage(path, file); break;
      case Kind::CompoundFile: read = ReadCompoundFile(path, file); break;
      case Kind::Other: break;
    }
  } catch (...) {
    read = false;
  }
  if (!read) file = TemplateFile();
  return read;
}

}  // namespace nivarel::templates
