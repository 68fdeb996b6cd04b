#include "MermaidWriter.h"

#include <functional>
#include <map>
#include <set>

#include "MermaidReader.h"
#include "MermaidShapes.h"

namespace nivarel::tools {

namespace {

bool IsPlainId(const std::string& id) {
  if (id.empty() || MermaidReader::IsKeyword(id)) return false;
  auto idChar = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
  };
  for (size_t i = 0; i < id.size(); ++i) {
    // "-" only between two letters or digits, as in "node-1"
    bool inner = id[i] == '-' && i > 0 && i + 1 < id.size() && idChar(id[i - 1]) && idChar(id[i + 1]);
    if (!idChar(id[i]) && !inner) return false;
  }
  return true;
}

// Whether a label can stand unquoted between the bars and read back the
// same: words of letters and digits, single spaces between, a few stops.
bool IsPlainLabel(const std::string& label) {
  if (label.empty() || label.front() == ' ' || label.back() == ' ' || label.find("  ") != std::string::npos)
    return false;
  for (char c : label) {
    bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' || c == '.' ||
              c == ',' || c == '?' || c == '!' || c == '\'' || c == '_' || static_cast<unsigned char>(c) >= 0x80;
    if (!ok) return false;
  }
  return true;
}

// A class name the reader takes: letters, digits, "_" and "-"; anything
// else becomes "_".
std::string ClassName(const std::string& name) {
  std::string out;
  for (char c : name) {
    bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
    out += ok ? c : '_';
  }
  return out.empty() ? "_" : out;
}

// The ids written: the given ones that can stand, the rest numbered by
// their place, never one taken already.
class Ids {
 public:
  Ids(const MermaidChart& chart) {
    for (const MermaidNode& n : chart.nodes) Claim(n.id);
    for (const MermaidSubgraph& g : chart.subgraphs) Claim(g.id);
    for (size_t i = 0; i < chart.nodes.size(); ++i) Assign(nodes_, chart.nodes[i].id, "N", i + 1);
    for (size_t i = 0; i < chart.subgraphs.size(); ++i) Assign(subgraphs_, chart.subgraphs[i].id, "G", i + 1);
  }
  // "" for an id naming no node.
  std::string Node(const std::string& id) const {
    auto it = nodes_.find(id);
    return it == nodes_.end() ? "" : it->second;
  }
  std::string Subgraph(const std::string& id) const {
    auto it = subgraphs_.find(id);
    return it == subgraphs_.end() ? "" : it->second;
  }

 private:
  void Claim(const std::string& id) {
    if (IsPlainId(id) && !claimed_.count(id)) claimed_.insert(id), kept_.insert(id);
  }
  void Assign(std::map<std::string, std::string>& map, const std::string& id, const char* prefix, size_t place) {
    if (map.count(id)) return;  // a second node of the same id: the first one stands
    if (kept_.count(id)) {
      kept_.erase(id);
      map[id] = id;
      return;
    }
    std::string name = prefix + std::to_string(place);
    for (int k = 2; claimed_.count(name); ++k) name = prefix + std::to_string(place) + "_" + std::to_string(k);
    claimed_.insert(name);
    map[id] = name;
  }

  std::set<std::string> claimed_, kept_;
  std::map<std::string, std::string> nodes_, subgraphs_;
};

}  // namespace

std::string MermaidWriter::EscapeText(const std::string& text) {
  std::string out;
  for (char c : text) {
    unsigned char u = static_cast<unsigned char>(c);
    switch (c) {
      case '"': out += "#quot;"; break;
      case '#': out += "#35;"; break;
      case '<': out += "#lt;"; break;
      case '>': out += "#gt;"; break;
      case '|': out += "#124;"; break;
      case '`': out += "#96;"; break;  // "`" and "*" would be Markdown to some renderers
      case '*': out += "#42;"; break;
      case '\n': out += "<br>"; break;
      default:
        if (u < 0x20 && c != '\t')
          out += "#" + std::to_string(u) + ";";
        else
          out += c;
    }
  }
  return out;
}

std::string MermaidWriter::Write(const MermaidChart& chart) {
  Ids ids(chart);
  std::string out = chart.direction == MermaidChart::Direction::LeftRight ? "flowchart LR\n" : "flowchart TD\n";
  std::set<std::string> declared;
  for (const MermaidNode& n : chart.nodes) {
    std::string id = ids.Node(n.id);
    if (!declared.insert(id).second) continue;
    const MermaidShape& shape = MermaidShapes::ForSymbol(n.symbol);
    out += "    " + id + shape.open + "\"" + EscapeText(n.text) + "\"" + shape.close + "\n";
  }

  // A subgraph whose parent names no subgraph stands at the top.
  std::set<std::string> subgraphIds;
  for (const MermaidSubgraph& g : chart.subgraphs) subgraphIds.insert(g.id);
  std::set<const MermaidSubgraph*> written;
  std::function<void(const std::string&, const std::string&)> writeSubgraphs =
      [&](const std::string& parent, const std::string& indent) {
        for (const MermaidSubgraph& g : chart.subgraphs) {
          std::string own = subgraphIds.count(g.parent) && g.parent != g.id ? g.parent : "";
          if (own != parent || !written.insert(&g).second) continue;
          out += indent + "subgraph " + ids.Subgraph(g.id) + " [\"" + EscapeText(g.title) + "\"]\n";
          for (const std::string& member : g.nodes) {
            std::string id = ids.Node(member);
            if (!id.empty()) out += indent + "    " + id + "\n";
          }
          writeSubgraphs(g.id, indent + "    ");
          out += indent + "end\n";
        }
      };
  writeSubgraphs("", "    ");

  for (const MermaidEdge& e : chart.edges) {
    std::string from = ids.Node(e.from), to = ids.Node(e.to);
    if (from.empty() || to.empty()) continue;
    out += "    " + from + (e.dotted ? " -.->" : " -->");
    if (!e.label.empty())
      out += IsPlainLabel(e.label) ? "|" + e.label + "|" : "|\"" + EscapeText(e.label) + "\"|";
    out += " " + to + "\n";
  }

  for (const MermaidClass& c : chart.classes) {
    std::string styles;
    if (!c.fill.empty()) styles = "fill:" + c.fill;
    if (!c.stroke.empty()) styles += (styles.empty() ? "" : ",") + std::string("stroke:") + c.stroke;
    if (styles.empty()) styles = "fill:none";
    out += "    classDef " + ClassName(c.name) + " " + styles + "\n";
  }
  // One class line per class, its nodes in order.
  std::vector<std::string> order;
  std::map<std::string, std::string> members;
  for (const MermaidNode& n : chart.nodes) {
    if (n.className.empty()) continue;
    std::string name = ClassName(n.className);
    if (!members.count(name)) order.push_back(name);
    std::string& list = members[name];
    list += (list.empty() ? "" : ",") + ids.Node(n.id);
  }
  for (const std::string& name : order) out += "    class " + members[name] + " " + name + "\n";
  return out;
}

}  // namespace nivarel::tools
