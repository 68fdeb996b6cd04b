#include "MermaidFile.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "Text.h"
#include "TextEncoding.h"

namespace nivarel::tools {

bool MermaidFile::Save(const std::string& path, const std::string& text, std::string& problem) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  if (text.empty() || text.back() != '\n') out << '\n';
  out.close();
  if (out) return true;
  problem = "The file could not be written:\r\n" + path;
  return false;
}

bool MermaidFile::Load(const std::string& path, std::string& text, std::string& problem) {
  std::error_code ec;
  std::ifstream in;
  if (std::filesystem::is_regular_file(path, ec)) in.open(path, std::ios::binary);
  if (!in.is_open()) {
    problem = "The file could not be read:\r\n" + path;
    return false;
  }
  std::string bytes(kLargest + 1, '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (in.bad()) {
    problem = "The file could not be read:\r\n" + path;
    return false;
  }
  bytes.resize(static_cast<size_t>(in.gcount()));
  if (bytes.size() > kLargest) {
    problem = "The file is too large to be Mermaid text (over 1 MB):\r\n" + path;
    return false;
  }
  if (bytes.find('\0') != std::string::npos) {
    problem = "The file is not a text file:\r\n" + path;
    return false;
  }
  text = MermaidPart(rules::ToUtf8FromFileBytes(rules::WithoutUtf8Bom(bytes)));
  return true;
}

std::string MermaidFile::MermaidPart(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  // A fence is three or more backticks (or tildes); the block ends at a
  // fence of the same character at least as long, or at the end of the text.
  auto fence = [](const std::string& line, char& mark, size_t& length, std::string& info) {
    std::string trimmed = rules::TrimLeft(line);
    if (trimmed.size() < 3 || (trimmed[0] != '`' && trimmed[0] != '~')) return false;
    mark = trimmed[0];
    length = trimmed.find_first_not_of(mark);
    if (length == std::string::npos) length = trimmed.size();
    if (length < 3) return false;
    info = rules::Trim(trimmed.substr(length));
    return true;
  };
  for (size_t i = 0; i < lines.size(); ++i) {
    char mark;
    size_t length;
    std::string info;
    if (!fence(lines[i], mark, length, info) || info.rfind("mermaid", 0) != 0) continue;
    std::string block;
    for (size_t k = i + 1; k < lines.size(); ++k) {
      char closing;
      size_t closingLength;
      std::string rest;
      if (fence(lines[k], closing, closingLength, rest) && closing == mark && closingLength >= length && rest.empty())
        break;
      block += lines[k] + "\n";
    }
    return block;
  }
  std::string plain;
  for (const std::string& line : lines) plain += line + "\n";
  return plain;
}

}  // namespace nivarel::tools
