// Mermaid text in files. Saved as UTF-8 ending with a line break; read back
// as the settings files are (UTF-8, else Windows-1252), with "\n" line breaks,
// and of a Markdown text that holds a fenced "```mermaid" block, that block
// alone. A file that cannot be read or written is said in problem, as a
// message box shows it.
#pragma once

#include <string>

namespace nivarel::tools {

class MermaidFile {
 public:
  // Files larger than this are no Mermaid text a person wrote.
  static constexpr size_t kLargest = 1 << 20;

  // Writes text to path, replacing what the file held.
  static bool Save(const std::string& path, const std::string& text, std::string& problem);
  // Reads path into text; false, text unchanged, when the file cannot be
  // read, is larger than kLargest or holds NUL bytes (no text file).
  static bool Load(const std::string& path, std::string& text, std::string& problem);
  // The lines of the first fenced "```mermaid" block of text, or text as it
  // stands when it has none; line breaks "\n".
  static std::string MermaidPart(const std::string& text);
};

}  // namespace nivarel::tools
