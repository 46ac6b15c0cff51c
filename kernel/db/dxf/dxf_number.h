// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/*! Numbers as drawing files write them. None of these looks at the locale, and a double written and read again is the
   same double, bit for bit. */
namespace zvdxf {

/*! Reads a real number; blanks around it and a leading `+` are skipped. Junk, an empty value, "inf", "nan" and a number
   that no double holds (1e999) return false and leave \a value 0. A number too small for a double is read as 0. */
bool parseReal(std::string_view text, double &value);

/*! Reads a whole number; blanks around it and a leading `+` are skipped. A real number is cut off (some programs write
   "7.0" where a whole number belongs). Anything else, and what 64 bits do not hold, returns false and leaves \a value
   0. */
bool parseInteger(std::string_view text, std::int64_t &value);

/*! Reads a handle, hexadecimal without prefix; blanks around it are skipped. False and 0 on anything else. */
bool parseHandle(std::string_view text, std::uint64_t &value);

/*! The shortest decimal that reads back as the same double, always with a point or an exponent: "7.0", "1234567.891",
    "1e-20". A value that is not finite is written as "0.0", since no drawing program reads it. */
std::string formatReal(double value);

/*! Decimal without padding. */
std::string formatInteger(std::int64_t value);

/*! Upper case hexadecimal without leading zeros; "0" for 0. */
std::string formatHandle(std::uint64_t value);

/*! Bytes to upper case hexadecimal, two digits each, and back. Decoding returns false at a character that is no digit
   or a half byte, and \a bytes then holds what was read before it. */
std::string formatChunk(std::string_view bytes);
bool parseChunk(std::string_view text, std::string &bytes);

} // namespace zvdxf
