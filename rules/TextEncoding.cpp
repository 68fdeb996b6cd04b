#include "TextEncoding.h"

#include <cstdint>

namespace nivarel::rules {

namespace {

// Code points of Windows-1252 bytes 0x80 to 0x9F; the undefined ones keep
// their own value.
constexpr char32_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsContinuation(unsigned char c) { return c >= 0x80 && c <= 0xBF; }

}  // namespace

size_t Utf8SequenceAt(const std::string& s, size_t i, char32_t& codePoint) {
  const size_t n = s.size();
  unsigned char c = static_cast<unsigned char>(s[i]);
  if (c < 0x80) {
    codePoint = c;
    return 1;
  }
  size_t length;
  unsigned char low = 0x80, high = 0xBF;  // Range of the second byte.
  if (c >= 0xC2 && c <= 0xDF) {
    length = 2;
  } else if (c >= 0xE0 && c <= 0xEF) {
    length = 3;
    if (c == 0xE0) low = 0xA0;
    if (c == 0xED) high = 0x9F;
  } else if (c >= 0xF0 && c <= 0xF4) {
    length = 4;
    if (c == 0xF0) low = 0x90;
    if (c == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (i + length > n) return 0;
  unsigned char second = static_cast<unsigned char>(s[i + 1]);
  if (second < low || second > high) return 0;
  for (size_t k = 2; k < length; ++k) {
    if (!IsContinuation(static_cast<unsigned char>(s[i + k]))) return 0;
  }
  char32_t cp = c & (length == 2 ? 0x1F : length == 3 ? 0x0F : 0x07);
  for (size_t k = 1; k < length; ++k) cp = (cp << 6) | (static_cast<unsigned char>(s[i + k]) & 0x3F);
  codePoint = cp;
  return length;
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

bool IsValidUtf8(const std::string& bytes) {
  char32_t cp;
  for (size_t i = 0; i < bytes.size();) {
    size_t length = Utf8SequenceAt(bytes, i, cp);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

std::string ToUtf8FromFileBytes(const std::string& bytes) {
  if (IsValidUtf8(bytes)) return bytes;
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 4);
  for (char b : bytes) {
    unsigned char c = static_cast<unsigned char>(b);
    if (c < 0x80) {
      out += b;
    } else if (c < 0xA0) {
      AppendUtf8(out, kCp1252High[c - 0x80]);
    } else {
      AppendUtf8(out, c);
    }
  }
  return out;
}

std::string WithoutUtf8Bom(const std::string& bytes) {
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) return bytes.substr(3);
  return bytes;
}

size_t CharacterCount(const std::string& text) {
  size_t n = 0;
  for (unsigned char c : text) n += (c & 0xC0) != 0x80;
  return n;
}

size_t CharacterOffset(const std::string& text, size_t n) {
  size_t seen = 0;
  for (size_t i = 0; i < text.size(); ++i)
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 && seen++ == n) return i;
  return text.size();
}

}  // namespace nivarel::rules
