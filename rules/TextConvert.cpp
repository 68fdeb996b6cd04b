#include "TextConvert.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>

#include "HostError.h"
#include "Text.h"

namespace nivarel::rules {

namespace {

using office::HostError;

[[noreturn]] void Mismatch() { throw HostError(13, "Type mismatch"); }
[[noreturn]] void Overflow() { throw HostError(6, "Overflow"); }

// Parses the text; false when it isn't a number.
bool Parse(const std::string& raw, double& out) {
  std::string s = Trim(raw, kWhiteSpace);
  if (s.empty()) return false;
  bool negative = false;

  // Hexadecimal and octal literals.
  if (s.size() > 2 && s[0] == '&' && (s[1] == 'H' || s[1] == 'h' || s[1] == 'O' || s[1] == 'o')) {
    int base = (s[1] == 'H' || s[1] == 'h') ? 16 : 8;
    double v = 0;
    for (size_t i = 2; i < s.size(); ++i) {
      int d = std::isdigit(static_cast<unsigned char>(s[i])) ? s[i] - '0'
              : std::isxdigit(static_cast<unsigned char>(s[i])) ? std::tolower(s[i]) - 'a' + 10
                                                                : 99;
      if (d >= base) return false;
      v = v * base + d;
    }
    out = v;
    return true;
  }

  // Parentheses: a negative amount.
  if (s.front() == '(' && s.back() == ')') {
    negative = true;
    s = Trim(s.substr(1, s.size() - 2), kWhiteSpace);
    if (s.empty()) return false;
  }
  size_t i = 0, n = s.size();
  auto skipBlanks = [&] {
    while (i < n && s[i] == ' ') ++i;
  };
  bool signSeen = false, currencySeen = false;
  // Leading sign and currency in either order.
  for (int k = 0; k < 2; ++k) {
    if (i < n && (s[i] == '+' || s[i] == '-') && !signSeen && !negative) {
      negative = s[i] == '-';
      signSeen = true;
      ++i;
      skipBlanks();
    } else if (i < n && s[i] == '$' && !currencySeen) {
      currencySeen = true;
      ++i;
      skipBlanks();
    }
  }
  std::string digits;
  bool anyDigit = false, point = false;
  while (i < n) {
    char c = s[i];
    if (std::isdigit(static_cast<unsigned char>(c))) {
      digits += c;
      anyDigit = true;
    } else if (c == ',' && !point && anyDigit) {
      // thousands separator
    } else if (c == '.' && !point) {
      point = true;
      digits += c;
    } else {
      break;
    }
    ++i;
  }
  if (!anyDigit) return false;
  if (i < n && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
    size_t j = i + 1;
    std::string exponent = "e";
    if (j < n && (s[j] == '+' || s[j] == '-')) exponent += s[j++];
    size_t start = j;
    while (j < n && std::isdigit(static_cast<unsigned char>(s[j]))) exponent += s[j++];
    if (j == start) return false;
    digits += exponent;
    i = j;
  }
  skipBlanks();
  // Trailing currency and sign.
  for (int k = 0; k < 2; ++k) {
    if (i < n && s[i] == '$' && !currencySeen) {
      currencySeen = true;
      ++i;
      skipBlanks();
    } else if (i < n && (s[i] == '+' || s[i] == '-') && !signSeen && !negative) {
      negative = s[i] == '-';
      signSeen = true;
      ++i;
      skipBlanks();
    }
  }
  if (i != n) return false;
  double v = std::strtod(digits.c_str(), nullptr);
  if (!std::isfinite(v)) return false;
  out = negative ? -v : v;
  return true;
}

double RoundHalfEven(double v) { return std::nearbyint(v); }

}  // namespace

bool IsNumeric(const std::string& text) {
  double v;
  return Parse(text, v);
}

double ToDouble(const std::string& text) {
  double v;
  if (!Parse(text, v)) Mismatch();
  return v;
}

bool ToBool(const std::string& text) {
  std::string t = LowerCase(Trim(text, kWhiteSpace));
  if (t == "true") return true;
  if (t == "false") return false;
  return ToDouble(text) != 0;
}

int16_t ToInt16(const std::string& text) {
  double v = RoundHalfEven(ToDouble(text));
  if (v < std::numeric_limits<int16_t>::min() || v > std::numeric_limits<int16_t>::max()) Overflow();
  return static_cast<int16_t>(v);
}

int32_t ToInt32(const std::string& text) {
  double v = RoundHalfEven(ToDouble(text));
  if (v < std::numeric_limits<int32_t>::min() || v > std::numeric_limits<int32_t>::max()) Overflow();
  return static_cast<int32_t>(v);
}

int32_t ToInt32Or(const std::string& text, int32_t fallback) {
  try {
    return ToInt32(Trim(text));
  } catch (...) {
    return fallback;
  }
}

float ToSingle(const std::string& text) {
  double v = ToDouble(text);
  if (std::fabs(v) > std::numeric_limits<float>::max()) Overflow();
  return static_cast<float>(v);
}

std::string FromBool(bool value) { return value ? "True" : "False"; }

std::string FromNumber(double value) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.7g", value);
  return buf;
}

}  // namespace nivarel::rules
