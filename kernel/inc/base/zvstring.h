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
    /// A copy up to the zero; null gives an empty string.
    ZvString(const wchar_t *text);
    /// A copy of \a length characters.
    ZvString(const wchar_t *text, int length);
    /// A string of this one character.
    explicit ZvString(wchar_t character);
    /// From UTF-8, up to the zero; null gives an empty string.
    ZvString(const char *utf8);
    /// From UTF-8.
    ZvString(const ZvUtf8String &utf8);
    /// From UTF-8.
    explicit ZvString(std::string_view utf8);
    /// Shares the text.
    ZvString(const ZvString &other);
    /// Takes the text over; \a other is empty then.
    ZvString(ZvString &&other) noexcept : m_data(other.m_data) { other.m_data = nullptr; }
    /// Shares the text.
    ZvString &operator=(const ZvString &other);
    ZvString &operator=(ZvString &&other) noexcept;
    ~ZvString();

    /// True for no characters.
    bool isEmpty() const { return m_data == nullptr; }
    /// In characters.
    int length() const;
    /// Zero-terminated, never null; good until the string changes.
    const wchar_t *wstr() const;
    /// The character \a index, from 0; the zero behind the last one too. Not checked further.
    wchar_t at(int index) const { return wstr()[index]; }

    /// Position of the first occurrence from \a from on, -1 when there is none.
    int find(wchar_t character, int from = 0) const;
    int find(const ZvString &text, int from = 0) const;
    /// Whether the character occurs.
    bool contains(wchar_t character) const { return find(character) >= 0; }
    /// Compares the first length-of-prefix characters, ignoring case.
    bool startsWithNoCase(const ZvString &prefix) const;
    /// The first \a count characters, or all where there are fewer.
    ZvString left(int count) const;
    /// \a count characters from \a from on; all that follow for -1.
    ZvString mid(int from, int count = -1) const;
    /// By the simple case mapping, character by character.
    ZvString toUpper() const;
    ZvString toLower() const;
    /// Without white space at both ends.
    ZvString trimmed() const;

    /// Adds at the end.
    ZvString &operator+=(const ZvString &other);
    ZvString &operator+=(wchar_t character);

    /// Order by code point: below, equal to or above zero. Case counts.
    int compare(const ZvString &other) const;
    /// The same with simple case folding, character by character; 0 when equal.
    int compareNoCase(const ZvString &other) const;

    /// The same text in UTF-8.
    ZvUtf8String toUtf8() const;
    /// The same text in UTF-8, as the standard's string.
    std::string toStdString() const;
    /// Equal for equal strings.
    std::size_t hash() const;
    /// Equal for names that compareNoCase() takes as equal.
    std::size_t hashNoCase() const;
    /// True when both are copies of one string: the quick half of ==.
    bool sharesWith(const ZvString &other) const { return m_data == other.m_data; }

private:
    ZvStringData *m_data = nullptr;
};

/// By character; case counts.
ZV_EXPORT bool operator==(const ZvString &a, const ZvString &b);
inline bool operator!=(const ZvString &a, const ZvString &b) { return !(a == b); }
/// By ZvString::compare().
inline bool operator<(const ZvString &a, const ZvString &b) { return a.compare(b) < 0; }
/// One behind the other.
ZV_EXPORT ZvString operator+(const ZvString &a, const ZvString &b);
// A literal on one side would otherwise meet the pointer conversion above.
/// The same with a literal on one side.
inline bool operator==(const ZvString &a, const wchar_t *b) { return a == ZvString(b); }
inline bool operator==(const ZvString &a, const char *b) { return a == ZvString(b); }
inline bool operator!=(const ZvString &a, const wchar_t *b) { return !(a == ZvString(b)); }
inline bool operator!=(const ZvString &a, const char *b) { return !(a == ZvString(b)); }

/// UTF-8 string, implicitly shared in the same way.
class ZV_EXPORT ZvUtf8String
{
public:
    ZvUtf8String() = default;
    /// A copy up to the zero; null gives an empty string. Bytes that are no UTF-8 are kept.
    ZvUtf8String(const char *utf8);
    /// A copy of \a length bytes.
    ZvUtf8String(const char *utf8, int length);
    /// The same text in UTF-8.
    ZvUtf8String(const ZvString &wide);
    /// A copy.
    ZvUtf8String(const std::string &utf8);
    /// Shares the text.
    ZvUtf8String(const ZvUtf8String &other);
    /// Takes the text over; \a other is empty then.
    ZvUtf8String(ZvUtf8String &&other) noexcept : m_data(other.m_data) { other.m_data = nullptr; }
    /// Shares the text.
    ZvUtf8String &operator=(const ZvUtf8String &other);
    ZvUtf8String &operator=(ZvUtf8String &&other) noexcept;
    ~ZvUtf8String();

    /// True for no bytes.
    bool isEmpty() const { return m_data == nullptr; }
    /// In bytes.
    int length() const;
    /// Zero-terminated, never null; good until the string changes.
    const char *c_str() const;
    /// The same bytes as the standard's string.
    std::string toStdString() const { return std::string(c_str(), std::size_t(length())); }
    /// The same text wide; what is no UTF-8 becomes U+FFFD.
    ZvString toWide() const;

    /// Adds at the end.
    ZvUtf8String &operator+=(const ZvUtf8String &other);
    /// Order by bytes: below, equal to or above zero. Case counts.
    int compare(const ZvUtf8String &other) const;
    /// The same with simple case folding; 0 when equal.
    int compareNoCase(const ZvUtf8String &other) const;

private:
    ZvStringData *m_data = nullptr;
};

/// By bytes; case counts.
ZV_EXPORT bool operator==(const ZvUtf8String &a, const ZvUtf8String &b);
inline bool operator!=(const ZvUtf8String &a, const ZvUtf8String &b) { return !(a == b); }
/// By ZvUtf8String::compare().
inline bool operator<(const ZvUtf8String &a, const ZvUtf8String &b) { return a.compare(b) < 0; }
/// One behind the other.
ZV_EXPORT ZvUtf8String operator+(const ZvUtf8String &a, const ZvUtf8String &b);

namespace std {
/// Lets strings be keys of the standard's hash tables.
template<>
struct hash<ZvString>
{
    /// As ZvString::hash().
    size_t operator()(const ZvString &text) const { return text.hash(); }
};
}

#endif
