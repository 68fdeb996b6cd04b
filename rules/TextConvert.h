// Conversions between the settings files' text and typed values, with the
// rules users of the files expect: booleans are "True"/"False" (or numbers),
// numbers are plain decimals, reals round to whole numbers halves-to-even. A
// text that doesn't convert raises HostError 13 ("Type mismatch"); a number
// out of range raises HostError 6 ("Overflow").
#pragma once

#include <cstdint>
#include <string>

namespace nivarel::rules {

// Whether the text reads as a number: blanks around it, a sign before or
// after, a currency sign, thousands separators, a decimal point, an exponent,
// parentheses for a negative amount, or "&H"/"&O" for hexadecimal/octal.
bool IsNumeric(const std::string& text);
// The text's numeric value; throws Type mismatch unless IsNumeric.
double ToDouble(const std::string& text);
bool ToBool(const std::string& text);
int16_t ToInt16(const std::string& text);
int32_t ToInt32(const std::string& text);
// The trimmed text as a whole number, or fallback when it is none: for the
// numbers the dialogs keep as text.
int32_t ToInt32Or(const std::string& text, int32_t fallback);
float ToSingle(const std::string& text);

// Text of a value as the files hold it.
std::string FromBool(bool value);
std::string FromNumber(double value);

}  // namespace nivarel::rules
