#include "Text.h"

#include "TextEncoding.h"

namespace nivarel::rules {

namespace {

char32_t UpperOf(char32_t c) {
  if (c >= 'a' && c <= 'z') return c - 0x20;
  if (c < 0xE0) return c;
  // Latin-1 Supplement.
  if (c <= 0xFE) return c == 0xF7 ? c : c - 0x20;
  if (c == 0xFF) return 0x178;
  // Latin Extended-A: pairs of capital and small letter.
  if ((c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) {
    return (c & 1) ? c - 1 : c;
  }
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c & 1) ? c : c - 1;
  // Greek.
  if (c == 0x3AC) return 0x386;
  if (c >= 0x3AD && c <= 0x3AF) return c - 0x25;
  if (c == 0x3C2) return 0x3A3;
  if (c >= 0x3B1 && c <= 0x3CB) return c - 0x20;
  if (c == 0x3CC) return 0x38C;
  if (c == 0x3CD || c == 0x3CE) return c - 0x3F;
  // Cyrillic.
  if (c >= 0x430 && c <= 0x44F) return c - 0x20;
  if (c >= 0x450 && c <= 0x45F) return c - 0x50;
  return c;
}

char32_t LowerOf(char32_t c) {
  if (c >= 'A' && c <= 'Z') return c + 0x20;
  if (c < 0xC0) return c;
  // Latin-1 Supplement.
  if (c <= 0xDE) return c == 0xD7 ? c : c + 0x20;
  if (c == 0x178) return 0xFF;
  // Latin Extended-A: pairs of capital and small letter.
  if ((c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) {
    return (c & 1) ? c : c + 1;
  }
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c & 1) ? c + 1 : c;
  // Greek.
  if (c == 0x386) return 0x3AC;
  if (c >= 0x388 && c <= 0x38A) return c + 0x25;
  if (c == 0x38C) return 0x3CC;
  if (c == 0x38E || c == 0x38F) return c + 0x3F;
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 0x20;
  // Cyrillic.
  if (c >= 0x410 && c <= 0x42F) return c + 0x20;
  if (c >= 0x400 && c <= 0x40F) return c + 0x50;
  return c;
}

// The text with each character mapped; from the character at index limit
// on (in bytes), the text is kept as it is.
std::string MapCase(const std::string& text, char32_t (*map)(char32_t), size_t limit = std::string::npos) {
  std::string out;
  out.reserve(text.size());
  char32_t cp;
  size_t i = 0;
  while (i < text.size() && i < limit) {
    size_t length = Utf8SequenceAt(text, i, cp);
    if (length == 0) {
      out += text[i++];
    } else {
      AppendUtf8(out, map(cp));
      i += length;
    }
  }
  out.append(text, i, std::string::npos);
  return out;
}

}  // namespace

std::string Trim(const std::string& text, const char* chars) {
  size_t b = text.find_first_not_of(chars);
  if (b == std::string::npos) return std::string();
  return text.substr(b, text.find_last_not_of(chars) - b + 1);
}

std::string TrimLeft(const std::string& text, const char* chars) {
  size_t b = text.find_first_not_of(chars);
  return b == std::string::npos ? std::string() : text.substr(b);
}

std::string UpperCase(const std::string& text) { return MapCase(text, UpperOf); }

std::string LowerCase(const std::string& text) { return MapCase(text, LowerOf); }

std::string CapitalizeFirst(const std::string& text) { return MapCase(text, UpperOf, 1); }

std::vector<std::string> SplitCommas(const std::string& text) {
  std::vector<std::string> parts;
  size_t start = 0;
  for (;;) {
    size_t comma = text.find(',', start);
    parts.push_back(text.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
    if (comma == std::string::npos) return parts;
    start = comma + 1;
  }
}

std::string PadRight(const std::string& text, int width) {
  size_t n = CharacterCount(text);
  return width > 0 && n < static_cast<size_t>(width) ? text + std::string(width - n, ' ') : text;
}

}  // namespace nivarel::rules
