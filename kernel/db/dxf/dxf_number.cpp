// SPDX-License-Identifier: MIT
#include "dxf_number.h"

#include "dxf_tag.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace zvdxf {

namespace {

std::string_view trimmedNumber(std::string_view text)
{
    text = trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    return text;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Of a number out of a double's range: whether it is too small rather than too great.
bool isTooSmall(std::string_view number)
{
    const std::size_t exponent = number.find_first_of("eE");
    if (exponent != std::string_view::npos && exponent + 1 < number.size())
        return number[exponent + 1] == '-';
    return number.front() == '0' || number.front() == '.';
}

int hexDigit(char c)
{
    if (isDigit(c))
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

} // namespace

bool parseReal(std::string_view text, double &value)
{
    value = 0;
    const std::string_view number = trimmedNumber(text);
    std::string_view digits = number;
    if (!digits.empty() && digits.front() == '-')
        digits.remove_prefix(1);
    // from_chars also takes "inf" and "nan", which no drawing means.
    if (digits.empty() || (!isDigit(digits.front()) && digits.front() != '.'))
        return false;

    const char *const end = number.data() + number.size();
    double parsed = 0;
    const auto [stop, error] = std::from_chars(number.data(), end, parsed);
    if (stop != end)
        return false;
    if (error == std::errc::result_out_of_range)
        return isTooSmall(digits);
    if (error != std::errc())
        return false;
    value = parsed;
    return true;
}

bool parseInteger(std::string_view text, std::int64_t &value)
{
    value = 0;
    const std::string_view number = trimmedNumber(text);
    const char *const end = number.data() + number.size();
    std::int64_t parsed = 0;
    const auto [stop, error] = std::from_chars(number.data(), end, parsed);
    if (error == std::errc() && stop == end) {
        value = parsed;
        return true;
    }
    double real = 0;
    if (!parseReal(number, real) || std::fabs(real) >= 9223372036854775808.0)
        return false;
    value = std::int64_t(real);
    return true;
}

bool parseHandle(std::string_view text, std::uint64_t &value)
{
    value = 0;
    text = trimmed(text);
    const char *const end = text.data() + text.size();
    std::uint64_t parsed = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, parsed, 16);
    if (error != std::errc() || stop != end)
        return false;
    value = parsed;
    return true;
}

std::string formatReal(double value)
{
    if (!std::isfinite(value))
        return "0.0";
    // Plain decimals where people can read them; the library's own choice would write 100000 as 1e+05.
    const double magnitude = std::fabs(value);
    const bool plain = magnitude == 0 || (magnitude >= 1e-5 && magnitude < 1e16);
    char digits[64];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value,
                                            plain ? std::chars_format::fixed : std::chars_format::scientific);
    std::string text(digits, error == std::errc() ? end : digits);
    if (plain && text.find('.') == std::string::npos)
        text += ".0";
    return text;
}

std::string formatInteger(std::int64_t value)
{
    return std::to_string(value);
}

std::string formatHandle(std::uint64_t value)
{
    char digits[16] = {};
    char *const end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    for (char *c = digits; c != end; ++c) {
        if (*c >= 'a')
            *c = char(*c - 'a' + 'A');
    }
    return std::string(digits, end);
}

std::string formatChunk(std::string_view bytes)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

bool parseChunk(std::string_view text, std::string &bytes)
{
    bytes.clear();
    text = trimmed(text);
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = hexDigit(text[i]);
        const int low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0)
            return false;
        bytes += char(high * 16 + low);
    }
    return text.size() % 2 == 0;
}

} // namespace zvdxf
