#include "MermaidReader.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>
#include <set>
#include <unordered_map>

#include "MermaidShapes.h"
#include "TextEncoding.h"

namespace nivarel::tools {

std::string MermaidError::Text() const { return "line " + std::to_string(line) + ": " + message; }

namespace {

struct Failure {
  int line;
  std::string message;
};

bool IsSpace(char c) { return c == ' ' || c == '\t'; }

// Letters, digits, "_" and the bytes of non-ASCII letters.
bool IsIdChar(char c) {
  unsigned char u = static_cast<unsigned char>(c);
  return std::isalnum(u) || c == '_' || u >= 0x80;
}

std::string Trim(const std::string& s) {
  size_t b = 0, e = s.size();
  while (b < e && IsSpace(s[b])) ++b;
  while (e > b && IsSpace(s[e - 1])) --e;
  return s.substr(b, e - b);
}

const std::map<std::string, std::string>& NamedEntities() {
  static const std::map<std::string, std::string> entities = {
      {"quot", "\""},   {"amp", "&"},       {"lt", "<"},        {"gt", ">"},      {"apos", "'"},
      {"nbsp", "\xC2\xA0"}, {"num", "#"},   {"vert", "|"},      {"verbar", "|"}, {"semi", ";"},
      {"colon", ":"},   {"lsqb", "["},      {"rsqb", "]"},      {"lbrack", "["}, {"rbrack", "]"},
      {"lpar", "("},    {"rpar", ")"},      {"lcub", "{"},      {"rcub", "}"},   {"lbrace", "{"},
      {"rbrace", "}"},  {"sol", "/"},       {"bsol", "\\"},     {"copy", "\xC2\xA9"}, {"reg", "\xC2\xAE"},
      {"deg", "\xC2\xB0"}, {"middot", "\xC2\xB7"}, {"times", "\xC3\x97"}, {"divide", "\xC3\xB7"},
      {"euro", "\xE2\x82\xAC"}, {"pound", "\xC2\xA3"}, {"hellip", "\xE2\x80\xA6"}, {"ndash", "\xE2\x80\x93"},
      {"mdash", "\xE2\x80\x94"}, {"lsquo", "\xE2\x80\x98"}, {"rsquo", "\xE2\x80\x99"},
      {"ldquo", "\xE2\x80\x9C"}, {"rdquo", "\xE2\x80\x9D"}, {"bull", "\xE2\x80\xA2"},
      {"larr", "\xE2\x86\x90"}, {"rarr", "\xE2\x86\x92"}, {"uarr", "\xE2\x86\x91"}, {"darr", "\xE2\x86\x93"},
      {"le", "\xE2\x89\xA4"}, {"ge", "\xE2\x89\xA5"}, {"ne", "\xE2\x89\xA0"}};
  return entities;
}

// A colour of a class definition as "#rrggbb"; false when it is none the
// reader knows. "none" and "transparent" are no colour ("").
bool ParseColour(const std::string& value, std::string& colour) {
  std::string v;
  for (char c : value) v += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (!v.empty() && v[0] == '#') {
    std::string hex = v.substr(1);
    for (char c : hex)
      if (!std::isxdigit(static_cast<unsigned char>(c))) return false;
    if (hex.size() == 3 || hex.size() == 4) {
      colour = std::string("#") + hex[0] + hex[0] + hex[1] + hex[1] + hex[2] + hex[2];
      return true;
    }
    if (hex.size() == 6 || hex.size() == 8) {
      colour = "#" + hex.substr(0, 6);
      return true;
    }
    return false;
  }
  static const std::map<std::string, std::string> names = {
      {"black", "#000000"}, {"white", "#ffffff"},     {"red", "#ff0000"},       {"green", "#008000"},
      {"blue", "#0000ff"},  {"yellow", "#ffff00"},    {"orange", "#ffa500"},    {"purple", "#800080"},
      {"gray", "#808080"},  {"grey", "#808080"},      {"lightgray", "#d3d3d3"}, {"lightgrey", "#d3d3d3"},
      {"pink", "#ffc0cb"},  {"cyan", "#00ffff"},      {"magenta", "#ff00ff"},   {"brown", "#a52a2a"},
      {"none", ""},         {"transparent", ""}};
  auto it = names.find(v);
  if (it == names.end()) return false;
  colour = it->second;
  return true;
}

struct OpenSubgraph {
  int index;  // into chart.subgraphs
  int line;   // where it was opened
  std::vector<std::string> mentioned;
};

struct ClassAssignment {
  int line;
  std::vector<std::string> ids;
  std::string name;
};

class Parser {
 public:
  MermaidChart Parse(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start <= text.size()) {
      size_t end = text.find('\n', start);
      if (end == std::string::npos) end = text.size();
      std::string line = text.substr(start, end - start);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      lines.push_back(line);
      start = end + 1;
    }
    if (!lines.empty() && lines[0].compare(0, 3, "\xEF\xBB\xBF") == 0) lines[0].erase(0, 3);

    for (size_t i = 0; i < lines.size(); ++i) {
      line_ = static_cast<int>(i) + 1;
      s_ = lines[i];
      pos_ = 0;
      if (!headerSeen_ && Trim(s_) == "---") {  // front matter before the header
        size_t close = i + 1;
        while (close < lines.size() && Trim(lines[close]) != "---") ++close;
        if (close == lines.size()) Fail("expected '---' to close the front matter");
        i = close;
        continue;
      }
      ParseLine();
    }
    // What is missing at the end is missing after the last line that holds anything.
    line_ = 1;
    for (size_t i = 0; i < lines.size(); ++i)
      if (!Trim(lines[i]).empty()) line_ = static_cast<int>(i) + 1;
    if (!headerSeen_) Fail("expected a 'flowchart' or 'graph' header, found no statement");
    if (!open_.empty())
      Fail("expected 'end' to close the subgraph begun at line " + std::to_string(open_.back().line));
    for (const ClassAssignment& a : classAssignments_) {
      for (const std::string& id : a.ids) {
        auto known = index_.find(id);
        int i = known == index_.end() ? -1 : known->second;
        if (i >= 0)
          chart_.nodes[i].className = a.name;
        else if (!IsSubgraph(id))
          throw Failure{a.line, "expected a node id in 'class', found '" + id + "', which names no node"};
      }
    }
    return chart_;
  }

 private:
  [[noreturn]] void Fail(const std::string& message) { throw Failure{line_, message}; }

  bool AtEnd() const { return pos_ >= s_.size(); }
  bool AtStatementEnd() const { return AtEnd() || s_[pos_] == ';'; }
  void SkipSpaces() {
    while (!AtEnd() && IsSpace(s_[pos_])) ++pos_;
  }
  bool LooksAt(const char* token) const { return s_.compare(pos_, std::strlen(token), token) == 0; }
  int Column() const { return static_cast<int>(pos_) + 1; }

  // What stands at the cursor, for a message: the rest of the word or of the
  // run of signs.
  std::string Found() const {
    if (AtEnd()) return "the end of the line";
    size_t e = pos_;
    if (IsIdChar(s_[e])) {
      while (e < s_.size() && IsIdChar(s_[e])) ++e;
    } else {
      while (e < s_.size() && !IsSpace(s_[e]) && !IsIdChar(s_[e]) && s_[e] != '"') ++e;
    }
    return "'" + s_.substr(pos_, e - pos_) + "'";
  }

  // The keyword at the cursor, when the word there is one and stands alone.
  bool AtKeyword(const char* word) const {
    size_t n = std::strlen(word);
    if (s_.compare(pos_, n, word) != 0) return false;
    return pos_ + n == s_.size() || IsSpace(s_[pos_ + n]) || s_[pos_ + n] == ';';
  }

  void ParseLine() {
    for (;;) {
      SkipSpaces();
      if (AtEnd() || LooksAt("%%")) return;
      if (s_[pos_] == ';') {
        ++pos_;
        continue;
      }
      if (!headerSeen_)
        ParseHeader();
      else
        ParseStatement();
      SkipSpaces();
      if (AtEnd() || LooksAt("%%")) return;
      if (s_[pos_] != ';') Fail("expected the end of the statement, found " + Found());
    }
  }

  void ParseHeader() {
    if (!AtKeyword("flowchart") && !AtKeyword("graph"))
      Fail("expected a 'flowchart' or 'graph' header, found " + Found());
    std::string keyword = AtKeyword("graph") ? "graph" : "flowchart";
    pos_ += keyword.size();
    headerSeen_ = true;
    SkipSpaces();
    if (AtStatementEnd()) return;
    size_t b = pos_;
    while (!AtEnd() && std::isalpha(static_cast<unsigned char>(s_[pos_]))) ++pos_;
    std::string dir = s_.substr(b, pos_ - b);
    if (dir == "TD" || dir == "TB" || dir == "BT") {
      chart_.direction = MermaidChart::Direction::TopDown;
    } else if (dir == "LR" || dir == "RL") {
      chart_.direction = MermaidChart::Direction::LeftRight;
    } else {
      pos_ = b;
      Fail("expected a direction (TD, TB, BT, LR or RL) after '" + keyword + "', found " + Found());
    }
  }

  void SkipStatement() {
    while (!AtStatementEnd()) ++pos_;
  }

  void ParseStatement() {
    if (AtKeyword("subgraph")) {
      pos_ += 8;
      ParseSubgraph();
    } else if (AtKeyword("end")) {
      if (open_.empty()) Fail("found 'end' with no subgraph open");
      pos_ += 3;
      CloseSubgraph();
    } else if (AtKeyword("classDef")) {
      pos_ += 8;
      ParseClassDef();
    } else if (AtKeyword("class")) {
      pos_ += 5;
      ParseClass();
    } else if (AtKeyword("direction") || AtKeyword("style") || AtKeyword("linkStyle") || AtKeyword("click")) {
      SkipStatement();
    } else {
      ParseChain();
    }
  }

  bool IsSubgraph(const std::string& id) const {
    for (const MermaidSubgraph& g : chart_.subgraphs)
      if (g.id == id) return true;
    return false;
  }

  std::string ReadId() {
    size_t b = pos_;
    while (!AtEnd()) {
      char c = s_[pos_];
      if (IsIdChar(c) || (c == '-' && pos_ > b && pos_ + 1 < s_.size() && IsIdChar(s_[pos_ + 1])))
        ++pos_;
      else
        break;
    }
    return s_.substr(b, pos_ - b);
  }

  // A quoted text at the cursor, its quotes taken off; the cursor after it.
  std::string ReadQuoted() {
    int column = Column();
    size_t close = s_.find('"', pos_ + 1);
    if (close == std::string::npos) Fail("expected '\"' to close the text begun at column " + std::to_string(column));
    std::string raw = s_.substr(pos_ + 1, close - pos_ - 1);
    pos_ = close + 1;
    return MermaidReader::DecodeText(raw);
  }

  // A label or title, quoted or plain (trimmed), made plain.
  static std::string PlainText(const std::string& raw) {
    std::string t = Trim(raw);
    if (t.size() >= 2 && t.front() == '"' && t.back() == '"' && t.find('"', 1) == t.size() - 1)
      return MermaidReader::DecodeText(t.substr(1, t.size() - 2));
    return MermaidReader::DecodeText(t);
  }

  void ParseSubgraph() {
    SkipSpaces();
    if (AtStatementEnd()) Fail("expected a subgraph id or title after 'subgraph', found " + Found());
    MermaidSubgraph g;
    std::string generated = "subGraph" + std::to_string(chart_.subgraphs.size());
    if (s_[pos_] == '"') {
      g.title = ReadQuoted();
      g.id = generated;
    } else {
      size_t b = pos_;
      std::string word = ReadId();
      if (word.empty()) Fail("expected a subgraph id or title after 'subgraph', found " + Found());
      SkipSpaces();
      if (!AtEnd() && s_[pos_] == '[') {
        int column = Column();
        size_t close;
        ++pos_;
        SkipSpaces();
        if (!AtEnd() && s_[pos_] == '"') {
          g.title = ReadQuoted();
          SkipSpaces();
          close = pos_;
          if (AtEnd() || s_[pos_] != ']')
            Fail("expected ']' to close the subgraph title begun at column " + std::to_string(column));
        } else {
          close = s_.find(']', pos_);
          if (close == std::string::npos)
            Fail("expected ']' to close the subgraph title begun at column " + std::to_string(column));
          g.title = PlainText(s_.substr(pos_, close - pos_));
        }
        pos_ = close + 1;
        g.id = word;
      } else if (AtStatementEnd()) {
        g.id = g.title = word;
      } else {  // a title of several words
        SkipStatement();
        g.title = PlainText(s_.substr(b, pos_ - b));
        g.id = generated;
      }
    }
    if (index_.count(g.id)) Fail("expected a subgraph id, found '" + g.id + "', which names a node");
    if (IsSubgraph(g.id)) Fail("expected a new subgraph id, found '" + g.id + "' again");
    if (!open_.empty()) g.parent = chart_.subgraphs[open_.back().index].id;
    chart_.subgraphs.push_back(g);
    open_.push_back({static_cast<int>(chart_.subgraphs.size()) - 1, line_, {}});
  }

  // A node belongs to the innermost subgraph that mentions it, and to the
  // first that closes when several do.
  void CloseSubgraph() {
    OpenSubgraph g = open_.back();
    open_.pop_back();
    for (const std::string& id : g.mentioned) {
      if (owned_.insert(id).second) chart_.subgraphs[g.index].nodes.push_back(id);
    }
  }

  size_t ReadListEnd(size_t from) const {
    while (from < s_.size() && s_[from] != ';' && !IsSpace(s_[from])) ++from;
    return from;
  }

  // A comma-separated list up to the next space or the statement's end.
  std::vector<std::string> ReadList() {
    size_t b = pos_;
    pos_ = ReadListEnd(pos_);
    std::vector<std::string> items;
    std::string list = s_.substr(b, pos_ - b);
    size_t start = 0;
    while (start <= list.size()) {
      size_t comma = list.find(',', start);
      if (comma == std::string::npos) comma = list.size();
      if (comma > start) items.push_back(list.substr(start, comma - start));
      start = comma + 1;
    }
    return items;
  }

  void ParseClassDef() {
    SkipSpaces();
    size_t namesAt = pos_;
    std::vector<std::string> names = ReadList();
    bool plain = !names.empty();
    for (const std::string& name : names)
      for (char c : name) plain = plain && (IsIdChar(c) || c == '-');
    if (!plain) {
      pos_ = namesAt;
      Fail("expected class names after 'classDef', found '" + s_.substr(namesAt, ReadListEnd(namesAt) - namesAt) + "'");
    }
    SkipSpaces();
    size_t b = pos_;
    SkipStatement();
    std::string styles = s_.substr(b, pos_ - b);
    std::string fill, stroke;
    size_t start = 0;
    while (start < styles.size()) {
      size_t comma = styles.find(',', start);
      if (comma == std::string::npos) comma = styles.size();
      std::string item = Trim(styles.substr(start, comma - start));
      size_t colon = item.find(':');
      if (!item.empty()) {
        if (colon == std::string::npos)
          Fail("expected a style as 'name:value' in 'classDef', found '" + item + "'");
        std::string key = Trim(item.substr(0, colon)), value = Trim(item.substr(colon + 1));
        if (key == "fill" || key == "stroke") {
          std::string colour;
          if (!ParseColour(value, colour))
            Fail("expected a colour as '#rrggbb' for " + key + ", found '" + value + "'");
          (key == "fill" ? fill : stroke) = colour;
        }
      }
      start = comma + 1;
    }
    for (const std::string& name : names) {
      MermaidClass c{name, fill, stroke};
      bool replaced = false;
      for (MermaidClass& existing : chart_.classes)
        if (existing.name == name) existing = c, replaced = true;
      if (!replaced) chart_.classes.push_back(c);
    }
  }

  void ParseClass() {
    SkipSpaces();
    std::vector<std::string> ids = ReadList();
    if (ids.empty()) Fail("expected node ids after 'class', found " + Found());
    SkipSpaces();
    std::string name = ReadClassName();
    if (name.empty()) Fail("expected a class name after the node ids, found " + Found());
    classAssignments_.push_back({line_, ids, name});
  }

  std::string ReadClassName() {
    size_t b = pos_;
    while (!AtEnd() && (IsIdChar(s_[pos_]) || s_[pos_] == '-')) ++pos_;
    return s_.substr(b, pos_ - b);
  }

  // node ("&" node)* (arrow node ("&" node)*)*
  void ParseChain() {
    std::vector<std::string> from = ParseGroup();
    for (;;) {
      SkipSpaces();
      if (AtStatementEnd()) return;
      MermaidEdge edge = ParseArrow();
      SkipSpaces();
      if (AtStatementEnd()) Fail("expected a node after the arrow, found " + Found());
      std::vector<std::string> to = ParseGroup();
      for (const std::string& f : from) {
        for (const std::string& t : to) {
          edge.from = f;
          edge.to = t;
          chart_.edges.push_back(edge);
        }
      }
      from = to;
    }
  }

  std::vector<std::string> ParseGroup() {
    std::vector<std::string> ids{ParseNode()};
    for (;;) {
      size_t save = pos_;
      SkipSpaces();
      if (AtEnd() || s_[pos_] != '&') {
        pos_ = save;
        return ids;
      }
      ++pos_;
      SkipSpaces();
      ids.push_back(ParseNode());
    }
  }

  std::string ParseNode() {
    std::string id = ReadId();
    if (id.empty()) Fail("expected a node id, found " + Found());
    if (MermaidReader::IsKeyword(id)) {
      pos_ -= id.size();
      Fail("expected a node id, found the keyword '" + id + "'");
    }
    if (IsSubgraph(id)) {
      pos_ -= id.size();
      Fail("expected a node id, found '" + id + "', which names a subgraph");
    }
    auto [known, added] = index_.emplace(id, static_cast<int>(chart_.nodes.size()));
    if (added) chart_.nodes.push_back({id, id, 61, ""});  // a process whose text is its id, until a shape says more
    MermaidNode& node = chart_.nodes[known->second];
    size_t save = pos_;
    SkipSpaces();
    if (!ParseShape(node)) pos_ = save;
    if (LooksAt(":::")) {
      pos_ += 3;
      std::string name = ReadClassName();
      if (name.empty()) Fail("expected a class name after ':::', found " + Found());
      node.className = name;
    }
    if (!open_.empty()) open_.back().mentioned.push_back(id);
    return id;
  }

  // The shape and text at the cursor, when one begins there.
  bool ParseShape(MermaidNode& node) {
    const std::vector<MermaidShape>& shapes = MermaidShapes::Readable();
    size_t openLength = 0;
    for (const MermaidShape& shape : shapes)
      if (LooksAt(shape.open) && std::strlen(shape.open) > openLength) openLength = std::strlen(shape.open);
    if (openLength == 0) return false;
    std::vector<const MermaidShape*> candidates;
    for (const MermaidShape& shape : shapes)
      if (std::strlen(shape.open) == openLength && LooksAt(shape.open)) candidates.push_back(&shape);
    int column = Column();
    std::string expected = "'" + std::string(candidates[0]->close) + "'";
    if (candidates.size() > 1) expected += " or '" + std::string(candidates[1]->close) + "'";
    std::string closeMessage = "expected " + expected + " to close the node text begun at column " +
                               std::to_string(column);
    pos_ += openLength;
    SkipSpaces();
    const MermaidShape* shape = nullptr;
    std::string text;
    if (!AtEnd() && s_[pos_] == '"') {
      text = ReadQuoted();
      SkipSpaces();
      for (const MermaidShape* c : candidates)
        if (LooksAt(c->close)) shape = c;
      if (!shape) Fail(closeMessage + ", found " + Found());
      pos_ += std::strlen(shape->close);
    } else {
      size_t best = std::string::npos;
      for (const MermaidShape* c : candidates) {
        size_t at = s_.find(c->close, pos_);
        if (at < best) best = at, shape = c;
      }
      if (best == std::string::npos) Fail(closeMessage);
      text = MermaidReader::DecodeText(Trim(s_.substr(pos_, best - pos_)));
      pos_ = best + std::strlen(shape->close);
    }
    node.symbol = shape->symbol;
    node.text = text;
    return true;
  }

  // Where to look for the end of a label that begins at from: past its
  // closing quote when it is quoted, so that a quoted label may hold "|" or
  // an arrow.
  size_t QuotedEnd(size_t from) const {
    while (from < s_.size() && IsSpace(s_[from])) ++from;
    if (from < s_.size() && s_[from] == '"') {
      size_t close = s_.find('"', from + 1);
      if (close != std::string::npos) return close + 1;
    }
    return from;
  }

  // The arrow at the cursor with its label; the cursor after the label.
  MermaidEdge ParseArrow() {
    MermaidEdge edge;
    size_t start = pos_;
    int column = Column();
    auto count = [&](char c, size_t from) {
      size_t n = 0;
      while (from + n < s_.size() && s_[from + n] == c) ++n;
      return n;
    };
    // The text of "-- text -->" up to the first of the closers, and the
    // cursor on that closer.
    auto labelUpTo = [&](std::initializer_list<const char*> closers, const std::string& expected) {
      size_t from = QuotedEnd(pos_);
      size_t best = std::string::npos;
      for (const char* c : closers) best = std::min(best, s_.find(c, from));
      if (best == std::string::npos)
        Fail("expected '" + expected + "' to close the edge text begun at column " + std::to_string(column));
      edge.label = PlainText(s_.substr(pos_, best - pos_));
      pos_ = best;
    };
    char c = AtEnd() ? '\0' : s_[pos_];
    if (c == '-' && pos_ + 1 < s_.size() && s_[pos_ + 1] == '.') {
      edge.dotted = true;
      size_t dots = count('.', pos_ + 1);
      size_t p = pos_ + 1 + dots;
      if (p < s_.size() && s_[p] == '-') {  // -.-> or -.-
        pos_ = p + 1;
        if (!AtEnd() && s_[pos_] == '>') ++pos_;
      } else {  // -. text .->
        pos_ += 2;
        labelUpTo({".-"}, ".->");
        pos_ += count('.', pos_);
        pos_ += count('-', pos_);
        if (!AtEnd() && s_[pos_] == '>') ++pos_;
      }
    } else if ((c == '-' || c == '=') && count(c, pos_) >= 2) {
      size_t n = count(c, pos_);
      size_t p = pos_ + n;
      if (p < s_.size() && s_[p] == '>') {  // --> ==>
        pos_ = p + 1;
      } else if (n >= 3) {  // --- ===
        pos_ = p;
      } else {  // -- text --> or == text ==>
        std::string two(2, c);
        pos_ = p;
        labelUpTo({(two + ">").c_str(), (two + c).c_str()}, two + ">");
        pos_ += count(c, pos_);
        if (!AtEnd() && s_[pos_] == '>') ++pos_;
      }
    } else {
      pos_ = start;
      if (!std::strchr("-=.<>~*", c) || c == '\0')
        Fail("expected an arrow or the end of the statement, found " + Found());
      Fail("unknown arrow " + Found());
    }
    SkipSpaces();
    if (!AtEnd() && s_[pos_] == '|') {
      int labelColumn = Column();
      size_t close = s_.find('|', QuotedEnd(pos_ + 1));
      if (close == std::string::npos)
        Fail("expected '|' to close the edge text begun at column " + std::to_string(labelColumn));
      edge.label = PlainText(s_.substr(pos_ + 1, close - pos_ - 1));
      pos_ = close + 1;
    }
    return edge;
  }

  MermaidChart chart_;
  std::string s_;
  size_t pos_ = 0;
  int line_ = 0;
  bool headerSeen_ = false;
  std::vector<OpenSubgraph> open_;
  std::set<std::string> owned_;
  std::unordered_map<std::string, int> index_;  // node id to its index in chart_.nodes
  std::vector<ClassAssignment> classAssignments_;
};

}  // namespace

bool MermaidReader::Read(const std::string& text, MermaidChart& chart, MermaidError& error) {
  try {
    chart = Parser().Parse(text);
    return true;
  } catch (const Failure& f) {
    error.line = f.line;
    error.message = f.message;
    return false;
  }
}

bool MermaidReader::IsKeyword(const std::string& word) {
  static const std::set<std::string> keywords = {"end",   "subgraph", "graph",     "flowchart", "class",
                                                 "classDef", "style", "linkStyle", "click",     "direction"};
  return keywords.count(word) > 0;
}

std::string MermaidReader::DecodeText(const std::string& raw) {
  std::string out;
  size_t i = 0;
  while (i < raw.size()) {
    char c = raw[i];
    if (c == '#') {
      size_t semi = raw.find(';', i + 1);
      if (semi != std::string::npos && semi > i + 1 && semi - i <= 12) {
        std::string name = raw.substr(i + 1, semi - i - 1);
        bool digits = true, letters = true;
        for (char d : name) {
          digits = digits && std::isdigit(static_cast<unsigned char>(d));
          letters = letters && std::isalpha(static_cast<unsigned char>(d));
        }
        if (digits) {
          unsigned long cp = std::stoul(name);
          if (cp > 0 && cp <= 0x10FFFF && !(cp >= 0xD800 && cp <= 0xDFFF)) {
            rules::AppendUtf8(out, static_cast<char32_t>(cp));
            i = semi + 1;
            continue;
          }
        } else if (letters) {
          auto it = NamedEntities().find(name);
          if (it != NamedEntities().end()) {
            out += it->second;
            i = semi + 1;
            continue;
          }
        }
      }
    } else if (c == '<' && i + 3 < raw.size() && std::tolower(static_cast<unsigned char>(raw[i + 1])) == 'b' &&
               std::tolower(static_cast<unsigned char>(raw[i + 2])) == 'r') {
      size_t p = i + 3;
      while (p < raw.size() && IsSpace(raw[p])) ++p;
      if (p < raw.size() && raw[p] == '/') ++p;
      if (p < raw.size() && raw[p] == '>') {
        out += '\n';
        i = p + 1;
        continue;
      }
    }
    out += c;
    ++i;
  }
  return out;
}

}  // namespace nivarel::tools
