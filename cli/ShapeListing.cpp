#include "ShapeListing.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <vector>

#include <nlohmann/json.hpp>

#include "ConnectorFormat.h"
#include "HostError.h"
#include "MsoConstants.h"
#include "OfficeProcess.h"
#include "Shapes.h"

namespace nivarel::cli {

namespace {

using nivarel::office::HostError;

// A JSON object written field by field, so that numbers keep two decimals.
class JsonLine {
 public:
  void Text(const char* key, const std::string& value) { Raw(key, Quote(value)); }
  void Number(const char* key, int value) { Raw(key, std::to_string(value)); }
  void Points(const char* key, double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.2f", value);
    // No "-0.00" for a value a hair below zero.
    Raw(key, std::strcmp(buffer, "-0.00") == 0 ? "0.00" : buffer);
  }
  void Name(const char* key, const std::optional<std::string>& value) { Raw(key, value ? Quote(*value) : "null"); }
  void Names(const char* key, const std::vector<std::string>& values) {
    std::string list = "[";
    for (size_t i = 0; i < values.size(); ++i) list += (i ? "," : "") + Quote(values[i]);
    Raw(key, list + "]");
  }
  std::string Str() const { return "{" + body_ + "}"; }

 private:
  // Text the office holds is UTF-8; anything else is replaced, never fatal.
  static std::string Quote(const std::string& s) {
    return nlohmann::json(s).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  }
  void Raw(const char* key, const std::string& value) {
    if (!body_.empty()) body_ += ",";
    body_ += Quote(key) + ":" + value;
  }
  std::string body_;
};

// The shape's text; empty for a shape that holds none, such as a group.
std::string TextOf(const office::Shape& shape) {
  try {
    return shape.GetTextFrame().GetCharacters().Text();
  } catch (const HostError&) {
    return "";
  }
}

std::optional<std::string> NameOf(const std::optional<office::Shape>& shape) {
  if (!shape) return std::nullopt;
  return shape->Name();
}

}  // namespace

std::string DescribeShape(const office::Shape& shape) {
  JsonLine line;
  line.Text("name", shape.Name());
  int type = shape.Type();
  bool connector = shape.Connector();
  line.Number("type", type);
  if (type == office::msoAutoShape && !connector) line.Number("autoshape", shape.AutoShapeType());
  line.Points("left", shape.Left());
  line.Points("top", shape.Top());
  line.Points("width", shape.Width());
  line.Points("height", shape.Height());
  line.Text("text", TextOf(shape));
  try {
    if (int style = shape.ShapeStyle()) line.Number("style", style);
  } catch (const HostError&) {
    // A shape without a style id.
  }
  if (connector) {
    office::ConnectorFormat glue = shape.GetConnectorFormat();
    line.Name("begin", NameOf(glue.BeginConnectedShape()));
    line.Name("end", NameOf(glue.EndConnectedShape()));
    line.Number("begin_site", glue.BeginConnectionSite());
    line.Number("end_site", glue.EndConnectionSite());
  }
  if (type == office::msoGroup) {
    std::vector<std::string> members;
    for (const office::Shape& member : shape.GroupItems()) members.push_back(member.Name());
    line.Names("members", members);
  }
  return line.Str();
}

void ListShapes(const office::Worksheet& sheet, std::ostream& out) {
  // Everything is read before anything is written: a failure prints no half list.
  office::Shapes shapes = sheet.GetShapes();
  std::vector<std::string> lines;
  int count = shapes.Count();
  for (int i = 1; i <= count; ++i) lines.push_back(DescribeShape(shapes.Item(i)));
  for (const std::string& line : lines) out << line << '\n';
  out.flush();
}

int ListShapesInFile(const std::string& path, const std::string& sheet, std::ostream& out, std::ostream& err) {
  // Checked here, before an office is started for nothing.
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    err << "nivarel: cannot read '" << path << "': no such file\n";
    return 1;
  }
  if (std::filesystem::is_directory(path, ec)) {
    err << "nivarel: cannot read '" << path << "': it is a folder\n";
    return 1;
  }
  if (!std::ifstream(path, std::ios::binary)) {
    err << "nivarel: cannot read '" << path << "': " << std::strerror(errno) << "\n";
    return 1;
  }

  // The office ends when this pointer goes, on every road out.
  std::unique_ptr<driver::OfficeProcess> office = driver::OfficeProcess::Start({});
  std::optional<office::Workbook> book;
  try {
    book = office->App().GetWorkbooks().Open(path, true);
  } catch (const HostError& e) {
    err << "nivarel: cannot open '" << path << "' as a spreadsheet: " << e.Description() << "\n";
    return 1;
  }
  try {
    std::optional<office::Worksheet> listed = book->Sheet(1);
    if (!sheet.empty()) {
      listed.reset();
      for (int i = 1, n = book->SheetCount(); i <= n && !listed; ++i)
        if (book->Sheet(i).Name() == sheet) listed = book->Sheet(i);
    }
    if (!listed) {
      err << "nivarel: '" << path << "' has no sheet named '" << sheet << "'\n";
      return 1;
    }
    ListShapes(*listed, out);
  } catch (const HostError& e) {
    err << "nivarel: cannot read the shapes of '" << path << "': " << e.Description() << "\n";
    return 1;
  }
  try {
    book->Close();
  } catch (const HostError&) {
    // The listing is out; the office closes what is left as it ends.
  }
  office->Terminate();
  return 0;
}

}  // namespace nivarel::cli
