// SPDX-License-Identifier: MIT
#include "base/zvstring.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>

static_assert(sizeof(wchar_t) == 4, "wide characters are 32 bits wide");

/// One block for the count, the length and the characters; the width of these is known to the owner.
struct ZvStringData
{
    std::atomic<int> ref;
    int length;

    wchar_t *wide() { return reinterpret_cast<wchar_t *>(this + 1); }
    char *narrow() { return reinterpret_cast<char *>(this + 1); }
};

namespace {

template<class Char>
ZvStringData *allocate(int length)
{
    void *memory = std::malloc(sizeof(ZvStringData) + (std::size_t(length) + 1) * sizeof(Char));
    if (!memory)
        throw std::bad_alloc();
    auto *data = new (memory) ZvStringData {{1}, length};
    reinterpret_cast<Char *>(data + 1)[length] = 0;
    return data;
}

template<class Char>
ZvStringData *copyOf(const Char *text, int length)
{
    if (length <= 0)
        return nullptr;
    ZvStringData *data = allocate<Char>(length);
    std::memcpy(static_cast<void *>(data + 1), text, std::size_t(length) * sizeof(Char));
    return data;
}

ZvStringData *ref(ZvStringData *data)
{
    if (data)
        data->ref.fetch_add(1, std::memory_order_relaxed);
    return data;
}

void unref(ZvStringData *data)
{
    if (data && data->ref.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(data);
}

void assign(ZvStringData *&to, ZvStringData *from)
{
    ZvStringData *added = ref(from);
    unref(to);
    to = added;
}

constexpr wchar_t kReplacement = 0xFFFD;

/// Reads one character of UTF-8 and moves on; what is no UTF-8 gives the replacement, one byte at a time.
wchar_t decodeNext(const unsigned char *&p, const unsigned char *end)
{
    const unsigned char lead = *p++;
    if (lead < 0x80)
        return wchar_t(lead);
    const int extra = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 && lead < 0xF0 ? 2 : lead >= 0xC2 && lead < 0xE0 ? 1 : 0;
    if (extra == 0 || end - p < extra)
        return kReplacement;
    std::uint32_t value = lead & (0x3Fu >> extra);
    for (int i = 0; i < extra; ++i) {
        if ((p[i] & 0xC0) != 0x80)
            return kReplacement;
        value = (value << 6) | (p[i] & 0x3Fu);
    }
    static const std::uint32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    if (value < kLeast[extra] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return kReplacement;
    p += extra;
    return wchar_t(value);
}

int encodedLength(std::uint32_t c)
{
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

char *encode(std::uint32_t c, char *to)
{
    switch (encodedLength(c)) {
    case 1:
        *to++ = char(c);
        break;
    case 2:
        *to++ = char(0xC0 | (c >> 6));
        *to++ = char(0x80 | (c & 0x3F));
        break;
    case 3:
        *to++ = char(0xE0 | (c >> 12));
        *to++ = char(0x80 | ((c >> 6) & 0x3F));
        *to++ = char(0x80 | (c & 0x3F));
        break;
    default:
        *to++ = char(0xF0 | (c >> 18));
        *to++ = char(0x80 | ((c >> 12) & 0x3F));
        *to++ = char(0x80 | ((c >> 6) & 0x3F));
        *to++ = char(0x80 | (c & 0x3F));
    }
    return to;
}

/// A value that a wide character may hold but UTF-8 may not becomes the replacement.
std::uint32_t encodable(wchar_t c)
{
    const auto value = std::uint32_t(c);
    return value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF) ? std::uint32_t(kReplacement) : value;
}

ZvStringData *wideOf(const char *utf8, std::size_t size)
{
    if (size == 0)
        return nullptr;
    const auto *p = reinterpret_cast<const unsigned char *>(utf8);
    const unsigned char *end = p + size;
    int count = 0;
    for (const unsigned char *q = p; q < end; ++count)
        decodeNext(q, end);
    ZvStringData *data = allocate<wchar_t>(count);
    wchar_t *to = data->wide();
    while (p < end)
        *to++ = decodeNext(p, end);
    return data;
}

ZvStringData *narrowOf(const wchar_t *text, int length)
{
    if (length == 0)
        return nullptr;
    int size = 0;
    for (int i = 0; i < length; ++i)
        size += encodedLength(encodable(text[i]));
    ZvStringData *data = allocate<char>(size);
    char *to = data->narrow();
    for (int i = 0; i < length; ++i)
        to = encode(encodable(text[i]), to);
    return data;
}

/// Simple case folding that hangs on no locale, since names must compare alike on every machine.
wchar_t folded(wchar_t c)
{
    if (c < 0x80)
        return c >= L'A' && c <= L'Z' ? wchar_t(c + 32) : c;
    // Latin-1, Greek and Cyrillic letters differ by a fixed distance.
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F))
        return wchar_t(c + 32);
    if (c >= 0x400 && c <= 0x40F)
        return wchar_t(c + 80);
    // Latin Extended-A: pairs of capital and small letter side by side, with two exchanged stretches.
    if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177))
        return c == 0x130 ? c : wchar_t(c | 1);
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E))
        return (c & 1) ? wchar_t(c + 1) : c;
    if (c >= 0xFF21 && c <= 0xFF3A) // full-width letters
        return wchar_t(c + 32);
    return c;
}

wchar_t raised(wchar_t c)
{
    for (const int distance : {32, 80, 1}) {
        const auto candidate = wchar_t(c - distance);
        if (candidate > 0 && folded(candidate) == c)
            return candidate;
    }
    return c;
}

std::size_t mix(std::size_t hash, wchar_t c)
{
    return (hash ^ std::size_t(c)) * 0x100000001B3ull;
}

constexpr std::size_t kHashStart = 0xCBF29CE484222325ull;

}

// ---- ZvString

ZvString::ZvString(const wchar_t *text) : m_data(text ? copyOf(text, int(std::wcslen(text))) : nullptr) { }
ZvString::ZvString(const wchar_t *text, int length) : m_data(copyOf(text, length)) { }
ZvString::ZvString(wchar_t character) : m_data(copyOf(&character, 1)) { }
ZvString::ZvString(const char *utf8) : m_data(utf8 ? wideOf(utf8, std::strlen(utf8)) : nullptr) { }
ZvString::ZvString(const ZvUtf8String &utf8) : m_data(wideOf(utf8.c_str(), std::size_t(utf8.length()))) { }
ZvString::ZvString(std::string_view utf8) : m_data(wideOf(utf8.data(), utf8.size())) { }
ZvString::ZvString(const ZvString &other) : m_data(ref(other.m_data)) { }

ZvString &ZvString::operator=(const ZvString &other)
{
    assign(m_data, other.m_data);
    return *this;
}

ZvString &ZvString::operator=(ZvString &&other) noexcept
{
    std::swap(m_data, other.m_data);
    return *this;
}

ZvString::~ZvString()
{
    unref(m_data);
}

int ZvString::length() const
{
    return m_data ? m_data->length : 0;
}

const wchar_t *ZvString::wstr() const
{
    return m_data ? m_data->wide() : L"";
}

int ZvString::find(wchar_t character, int from) const
{
    const wchar_t *text = wstr();
    for (int i = std::max(from, 0), n = length(); i < n; ++i) {
        if (text[i] == character)
            return i;
    }
    return -1;
}

int ZvString::find(const ZvString &text, int from) const
{
    const int n = text.length();
    for (int i = std::max(from, 0); i + n <= length(); ++i) {
        if (std::wmemcmp(wstr() + i, text.wstr(), std::size_t(n)) == 0)
            return i;
    }
    return -1;
}

bool ZvString::startsWithNoCase(const ZvString &prefix) const
{
    if (prefix.length() > length())
        return false;
    for (int i = 0, n = prefix.length(); i < n; ++i) {
        if (folded(at(i)) != folded(prefix.at(i)))
            return false;
    }
    return true;
}

ZvString ZvString::left(int count) const
{
    return mid(0, count);
}

ZvString ZvString::mid(int from, int count) const
{
    from = std::clamp(from, 0, length());
    const int rest = length() - from;
    count = count < 0 ? rest : std::min(count, rest);
    if (count == length())
        return *this;
    return ZvString(wstr() + from, count);
}

ZvString ZvString::toUpper() const
{
    ZvString result(wstr(), length());
    for (int i = 0; i < length(); ++i)
        result.m_data->wide()[i] = raised(at(i));
    return result;
}

ZvString ZvString::toLower() const
{
    ZvString result(wstr(), length());
    for (int i = 0; i < length(); ++i)
        result.m_data->wide()[i] = folded(at(i));
    return result;
}

ZvString ZvString::trimmed() const
{
    const auto isBlank = [](wchar_t c) { return c == L' ' || (c >= 9 && c <= 13) || c == 0xA0 || c == 0x3000; };
    int from = 0;
    int to = length();
    while (from < to && isBlank(at(from)))
        ++from;
    while (to > from && isBlank(at(to - 1)))
        --to;
    return mid(from, to - from);
}

ZvString &ZvString::operator+=(const ZvString &other)
{
    if (other.isEmpty())
        return *this;
    if (isEmpty())
        return *this = other;
    ZvStringData *joined = allocate<wchar_t>(length() + other.length());
    std::wmemcpy(joined->wide(), wstr(), std::size_t(length()));
    std::wmemcpy(joined->wide() + length(), other.wstr(), std::size_t(other.length()));
    unref(m_data);
    m_data = joined;
    return *this;
}

ZvString &ZvString::operator+=(wchar_t character)
{
    return *this += ZvString(character);
}

int ZvString::compare(const ZvString &other) const
{
    if (m_data == other.m_data)
        return 0;
    const int n = std::min(length(), other.length());
    const int order = std::wmemcmp(wstr(), other.wstr(), std::size_t(n));
    if (order != 0)
        return order < 0 ? -1 : 1;
    return length() == other.length() ? 0 : length() < other.length() ? -1 : 1;
}

int ZvString::compareNoCase(const ZvString &other) const
{
    if (m_data == other.m_data)
        return 0;
    const int n = std::min(length(), other.length());
    const wchar_t *const text = wstr();
    const wchar_t *const otherText = other.wstr();
    for (int i = 0; i < n; ++i) {
        if (text[i] == otherText[i])
            continue;
        const wchar_t a = folded(text[i]);
        const wchar_t b = folded(otherText[i]);
        if (a != b)
            return a < b ? -1 : 1;
    }
    return length() == other.length() ? 0 : length() < other.length() ? -1 : 1;
}

ZvUtf8String ZvString::toUtf8() const
{
    return ZvUtf8String(*this);
}

std::string ZvString::toStdString() const
{
    return toUtf8().toStdString();
}

std::size_t ZvString::hash() const
{
    std::size_t hash = kHashStart;
    const wchar_t *const text = wstr();
    for (int i = 0, n = length(); i < n; ++i)
        hash = mix(hash, text[i]);
    return hash;
}

std::size_t ZvString::hashNoCase() const
{
    std::size_t hash = kHashStart;
    const wchar_t *const text = wstr();
    for (int i = 0, n = length(); i < n; ++i)
        hash = mix(hash, folded(text[i]));
    return hash;
}

bool operator==(const ZvString &a, const ZvString &b)
{
    return a.sharesWith(b)
        || (a.length() == b.length() && std::wmemcmp(a.wstr(), b.wstr(), std::size_t(a.length())) == 0);
}

ZvString operator+(const ZvString &a, const ZvString &b)
{
    ZvString sum(a);
    sum += b;
    return sum;
}

// ---- ZvUtf8String

ZvUtf8String::ZvUtf8String(const char *utf8) : m_data(utf8 ? copyOf(utf8, int(std::strlen(utf8))) : nullptr) { }
ZvUtf8String::ZvUtf8String(const char *utf8, int length) : m_data(copyOf(utf8, length)) { }
ZvUtf8String::ZvUtf8String(const ZvString &wide) : m_data(narrowOf(wide.wstr(), wide.length())) { }
ZvUtf8String::ZvUtf8String(const std::string &utf8) : m_data(copyOf(utf8.data(), int(utf8.size()))) { }
ZvUtf8String::ZvUtf8String(const ZvUtf8String &other) : m_data(ref(other.m_data)) { }

ZvUtf8String &ZvUtf8String::operator=(const ZvUtf8String &other)
{
    assign(m_data, other.m_data);
    return *this;
}

ZvUtf8String &ZvUtf8String::operator=(ZvUtf8String &&other) noexcept
{
    std::swap(m_data, other.m_data);
    return *this;
}

ZvUtf8String::~ZvUtf8String()
{
    unref(m_data);
}

int ZvUtf8String::length() const
{
    return m_data ? m_data->length : 0;
}

const char *ZvUtf8String::c_str() const
{
    return m_data ? m_data->narrow() : "";
}

ZvString ZvUtf8String::toWide() const
{
    return ZvString(*this);
}

ZvUtf8String &ZvUtf8String::operator+=(const ZvUtf8String &other)
{
    if (other.isEmpty())
        return *this;
    ZvStringData *joined = allocate<char>(length() + other.length());
    std::memcpy(joined->narrow(), c_str(), std::size_t(length()));
    std::memcpy(joined->narrow() + length(), other.c_str(), std::size_t(other.length()));
    unref(m_data);
    m_data = joined;
    return *this;
}

int ZvUtf8String::compare(const ZvUtf8String &other) const
{
    if (m_data == other.m_data)
        return 0;
    const int n = std::min(length(), other.length());
    const int order = std::memcmp(c_str(), other.c_str(), std::size_t(n));
    return order != 0 ? order : length() - other.length();
}

int ZvUtf8String::compareNoCase(const ZvUtf8String &other) const
{
    return ZvString(*this).compareNoCase(ZvString(other));
}

bool operator==(const ZvUtf8String &a, const ZvUtf8String &b)
{
    return a.compare(b) == 0;
}

ZvUtf8String operator+(const ZvUtf8String &a, const ZvUtf8String &b)
{
    ZvUtf8String sum(a);
    sum += b;
    return sum;
}
