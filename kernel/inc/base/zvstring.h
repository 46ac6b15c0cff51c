// SPDX-License-Identifier: MIT
#ifndef ZVSTRING_H
#define ZVSTRING_H

#include "base/zvexport.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

class ZvUtf8String;
struct ZvStringData;

/// Wide string with 32-bit characters, implicitly shared: a copy is one atomic increment, and two copies of one string
/// are found equal by comparing pointers. The empty string owns nothing.
///
/// Conversion from and to UTF-8 is lossless for valid text; a byte that is no UTF-8 becomes U+FFFD.
class ZV_EXPORT ZvString
{
public:
    ZvString() = default;
    ZvString(const wchar_t *text);
    ZvString(const wchar_t *text, int length);
    /// A string of this one character.
    explicit ZvString(wchar_t character);
    ZvString(const char *utf8);
    ZvString(const ZvUtf8String &utf8);
    explicit ZvString(std::string_view utf8);
    ZvString(const ZvString &other);
    ZvString(ZvString &&other) noexcept : m_data(other.m_data) { other.m_data = nullptr; }
    ZvString &operator=(const ZvString &other);
    ZvString &operator=(ZvString &&other) noexcept;
    ~ZvString();

    bool isEmpty() const { return m_data == nullptr; }
    int length() const;
    /// Zero-terminated, never null; good until the string changes.
    const wchar_t *wstr() const;
    wchar_t at(int index) const { return wstr()[index]; }

    /// Position of the first occurrence from \a from on, -1 when there is none.
    int find(wchar_t character, int from = 0) const;
    int find(const ZvString &text, int from = 0) const;
    bool contains(wchar_t character) const { return find(character) >= 0; }
    /// Compares the first length-of-prefix characters, ignoring case.
    bool startsWithNoCase(const ZvString &prefix) const;
    ZvString left(int count) const;
    ZvString mid(int from, int count = -1) const;
    ZvString toUpper() const;
    ZvString toLower() const;
    /// Without white space at both ends.
    ZvString trimmed() const;

    ZvString &operator+=(const ZvString &other);
    ZvString &operator+=(wchar_t character);

    /// Order by code point: below, equal to or above zero. Case counts.
    int compare(const ZvString &other) const;
    /// The same with simple case folding, character by character; 0 when equal.
    int compareNoCase(const ZvString &other) const;

    ZvUtf8String toUtf8() const;
    std::string toStdString() const;
    std::size_t hash() const;
    /// Equal for names that compareNoCase() takes as equal.
    std::size_t hashNoCase() const;
    /// True when both are copies of one string: the quick half of ==.
    bool sharesWith(const ZvString &other) const { return m_data == other.m_data; }

private:
    ZvStringData *m_data = nullptr;
};

ZV_EXPORT bool operator==(const ZvString &a, const ZvString &b);
inline bool operator!=(const ZvString &a, const ZvString &b) { return !(a == b); }
inline bool operator<(const ZvString &a, const ZvString &b) { return a.compare(b) < 0; }
ZV_EXPORT ZvString operator+(const ZvString &a, const ZvString &b);
// A literal on one side would otherwise meet the pointer conversion above.
inline bool operator==(const ZvString &a, const wchar_t *b) { return a == ZvString(b); }
inline bool operator==(const ZvString &a, const char *b) { return a == ZvString(b); }
inline bool operator!=(const ZvString &a, const wchar_t *b) { return !(a == ZvString(b)); }
inline bool operator!=(const ZvString &a, const char *b) { return !(a == ZvString(b)); }

/// UTF-8 string, implicitly shared in the same way.
class ZV_EXPORT ZvUtf8String
{
public:
    ZvUtf8String() = default;
    ZvUtf8String(const char *utf8);
    ZvUtf8String(const char *utf8, int length);
    ZvUtf8String(const ZvString &wide);
    ZvUtf8String(const std::string &utf8);
    ZvUtf8String(const ZvUtf8String &other);
    ZvUtf8String(ZvUtf8String &&other) noexcept : m_data(other.m_data) { other.m_data = nullptr; }
    ZvUtf8String &operator=(const ZvUtf8String &other);
    ZvUtf8String &operator=(ZvUtf8String &&other) noexcept;
    ~ZvUtf8String();

    bool isEmpty() const { return m_data == nullptr; }
    /// In bytes.
    int length() const;
    /// Zero-terminated, never null; good until the string changes.
    const char *c_str() const;
    std::string toStdString() const { return std::string(c_str(), std::size_t(length())); }
    ZvString toWide() const;

    ZvUtf8String &operator+=(const ZvUtf8String &other);
    int compare(const ZvUtf8String &other) const;
    int compareNoCase(const ZvUtf8String &other) const;

private:
    ZvStringData *m_data = nullptr;
};

ZV_EXPORT bool operator==(const ZvUtf8String &a, const ZvUtf8String &b);
inline bool operator!=(const ZvUtf8String &a, const ZvUtf8String &b) { return !(a == b); }
inline bool operator<(const ZvUtf8String &a, const ZvUtf8String &b) { return a.compare(b) < 0; }
ZV_EXPORT ZvUtf8String operator+(const ZvUtf8String &a, const ZvUtf8String &b);

namespace std {
template<>
struct hash<ZvString>
{
    size_t operator()(const ZvString &text) const { return text.hash(); }
};
}

#endif
