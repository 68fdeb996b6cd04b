// Text of the settings files. The files are UTF-8 and are always written so;
// a file whose bytes aren't valid UTF-8 was brought from Windows and is read
// as Windows-1252. In memory all text is UTF-8.
#pragma once

#include <cstddef>
#include <string>

namespace nivarel::rules {

// Whether the bytes are well-formed UTF-8: shortest forms only, no surrogates,
// nothing above U+10FFFF. NUL bytes are allowed.
bool IsValidUtf8(const std::string& bytes);

// The bytes unchanged if they are valid UTF-8; otherwise each byte mapped by
// the Windows-1252 table to UTF-8. The five bytes the table leaves undefined
// (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the code points of the same value.
std::string ToUtf8FromFileBytes(const std::string& bytes);

// The bytes without a leading UTF-8 byte order mark.
std::string WithoutUtf8Bom(const std::string& bytes);

// The length of the well-formed UTF-8 sequence at byte i, or 0 when the
// bytes there don't form one. Sets codePoint when the length isn't 0.
size_t Utf8SequenceAt(const std::string& s, size_t i, char32_t& codePoint);
// Appends the code point in UTF-8.
void AppendUtf8(std::string& out, char32_t codePoint);

// The number of characters (not bytes) of UTF-8 text.
size_t CharacterCount(const std::string& text);
// The byte offset at which character n (0-based) of UTF-8 text starts; the
// text's size when it has n characters or fewer.
size_t CharacterOffset(const std::string& text, size_t n);

}  // namespace nivarel::rules
