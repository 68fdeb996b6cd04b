#include "TemplateFileWriter.h"

#include <cstring>
#include <stdexcept>

#include <gsf/gsf-doc-meta-data.h>
#include <gsf/gsf-meta-names.h>
#include <gsf/gsf-msole-utils.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>
#include <gsf/gsf-utils.h>
#include <zip.h>

namespace nivarel::testing {

std::string CorePart(const std::string& title) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
         "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
         "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
         "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">"
         "<dc:creator>Someone</dc:creator><dc:title>" +
         title +
         "</dc:title><dcterms:created xsi:type=\"dcterms:W3CDTF\">2026-11-24T10:00:00Z</dcterms:created>"
         "</cp:coreProperties>";
}

std::string CustomPart(const std::vector<TypedProperty>& properties) {
  std::string body;
  int pid = 2;
  for (const TypedProperty& p : properties)
    body += "<property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"" + std::to_string(pid++) +
            "\" name=\"" + p.name + "\"><vt:" + p.type + ">" + p.value + "</vt:" + p.type + "></property>";
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
         "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/custom-properties\" "
         "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">" +
         body + "</Properties>";
}

void WritePackage(const std::string& path, const std::vector<std::pair<std::string, std::string>>& parts) {
  int error = 0;
  zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  if (!zip) throw std::runtime_error("cannot write " + path);
  auto add = [&](const std::string& part, const std::string& text) {
    zip_source_t* source = zip_source_buffer(zip, strdup(text.c_str()), text.size(), 1);
    if (zip_file_add(zip, part.c_str(), source, ZIP_FL_ENC_UTF_8) < 0) throw std::runtime_error("cannot add " + part);
  };
  add("[Content_Types].xml",
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"/>");
  for (const auto& [part, text] : parts) add(part, text);
  if (zip_close(zip) != 0) throw std::runtime_error("cannot close " + path);
}

void WriteTemplatePackage(const std::string& path, const std::string& title,
                          const std::vector<TypedProperty>& properties) {
  WritePackage(path, {{"docProps/core.xml", CorePart(title)}, {"docProps/custom.xml", CustomPart(properties)}});
}

void WriteTemplateCompoundFile(const std::string& path, const std::string& title,
                               const std::vector<TypedProperty>& properties) {
  gsf_init();
  GsfOutput* out = gsf_output_stdio_new(path.c_str(), nullptr);
  if (!out) throw std::runtime_error("cannot write " + path);
  GsfOutfile* ole = gsf_outfile_msole_new(out);
  GsfDocMetaData* meta = gsf_doc_meta_data_new();
  auto insert = [&](const std::string& name, const std::string& type, const std::string& text) {
    GValue* value = g_new0(GValue, 1);
    if (type == "i4") {
      g_value_init(value, G_TYPE_INT);
      g_value_set_int(value, std::stoi(text));
    } else {
      g_value_init(value, G_TYPE_STRING);
      g_value_set_string(value, text.c_str());
    }
    gsf_doc_meta_data_insert(meta, g_strdup(name.c_str()), value);
  };
  insert(GSF_META_NAME_TITLE, "lpwstr", title);
  for (const TypedProperty& p : properties) insert(p.name, p.type, p.value);
  const std::pair<const char*, gboolean> streams[] = {{"\005SummaryInformation", FALSE},
                                                      {"\005DocumentSummaryInformation", TRUE}};
  for (const auto& [stream, document] : streams) {
    GsfOutput* child = gsf_outfile_new_child(ole, stream, FALSE);
    bool written = gsf_doc_meta_data_write_to_msole(meta, child, document);
    gsf_output_close(child);
    g_object_unref(child);
    if (!written) throw std::runtime_error("cannot write the properties of " + path);
  }
  GsfOutput* book = gsf_outfile_new_child(ole, "Workbook", FALSE);
  gsf_output_write(book, 4, reinterpret_cast<const guint8*>("\x09\x08\x00\x00"));
  gsf_output_close(book);
  g_object_unref(book);
  gsf_output_close(GSF_OUTPUT(ole));
  g_object_unref(ole);
  g_object_unref(out);
  g_object_unref(meta);
}

}  // namespace nivarel::testing
