// SPDX-License-Identifier: MIT
#include "dxf_scanner.h"

#include <algorithm>

namespace zvdxf {

namespace {

constexpr char sentinel[] = "AutoCAD Binary DXF\r\n\x1A"; // its closing zero belongs to it
constexpr std::uint32_t sentinelLength = sizeof sentinel;
static_assert(sentinelLength == 22, "the file format says so");

std::uint32_t byteOrderMarkLength(std::string_view bytes)
{
    return bytes.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
}

/*! Width in bytes of a number of that kind in a binary file; 0 for what is no number. */
std::uint32_t numberWidth(ValueKind kind)
{
    switch (kind) {
    case ValueKind::Real:
    case ValueKind::Int64:
        return 8;
    case ValueKind::Int32:
        return 4;
    case ValueKind::Int16:
        return 2;
    case ValueKind::Byte:
        return 1;
    default:
        return 0;
    }
}

template <class Scanner> void collect(Scanner scanner, std::vector<Tag> &tags)
{
    tags.clear();
    ScannedTag scanned;
    while (scanner.next(scanned, nullptr))
        tags.push_back(scanned.tag);
}

template <class Scanner> Tag firstTag(Scanner scanner)
{
    ScannedTag scanned{{0, 0, 0}, 0};
    scanner.next(scanned, nullptr);
    return scanned.tag;
}

template <class Scanner> std::uint32_t endOfFirstTag(Scanner scanner)
{
    ScannedTag scanned;
    scanner.next(scanned, nullptr);
    return scanner.position();
}

} // namespace

std::string_view binarySentinel()
{
    return {sentinel, sentinelLength};
}

// ---- AsciiScanner
// -----------------------------------------------------------------------------------------------------

AsciiScanner::AsciiScanner(const Buffer &buffer, const FileStyle &style, std::uint32_t first, std::uint32_t last)
    : m_data(buffer.data()), m_position(m_data + std::max(first, byteOrderMarkLength(buffer.view()))),
      m_end(m_data + last), m_lineEnd(style.lineEnd == LineEnd::Cr ? '\r' : '\n')
{
}

void AsciiScanner::passOver(LoadResult *diagnostics)
{
    const char *const line = m_position;
    const char *const lineEnd = static_cast<const char *>(std::memchr(line, m_lineEnd, m_end - line));
    m_position = lineEnd ? lineEnd + 1 : m_end;
    if (!diagnostics)
        return;
    // Half a code, or the blanks with which some files end.
    if (!lineEnd && trimmed({line, std::size_t(m_end - line)}).empty())
        return;
    diagnostics->count(lineEnd ? WarningKind::OutOfStep : WarningKind::TruncatedValue, std::uint64_t(line - m_data));
}

bool AsciiScanner::lastTag(ScannedTag &scanned, int code, const char *value, LoadResult *diagnostics)
{
    const char *const line = m_position;
    const char *const valueEnd = std::max(value, m_end);
    m_position = m_end;
    // Without its line end a value may be half of one, except where only one thing can stand there.
    const std::string_view text = trimmed({value, std::size_t(valueEnd - value)});
    if (code == 0 && (text == "EOF" || text == "ENDSEC")) {
        set(scanned, code, line, value, valueEnd);
        return true;
    }
    if (diagnostics)
        diagnostics->count(WarningKind::TruncatedValue, std::uint64_t(line - m_data));
    return false;
}

// ---- BinaryScanner
// ----------------------------------------------------------------------------------------------------

BinaryScanner::BinaryScanner(const Buffer &buffer, const FileStyle &style)
    : BinaryScanner(buffer, style, sentinelLength, buffer.size())
{
}

BinaryScanner::BinaryScanner(const Buffer &buffer, const FileStyle &style, std::uint32_t first, std::uint32_t last)
    : m_bytes(buffer.view(0, last)), m_position(std::max(first, sentinelLength)), m_wideCodes(style.wideCodes)
{
}

bool BinaryScanner::readCode(std::uint32_t &at, int &code) const
{
    const auto byteAt = [this](std::uint32_t i) { return int(static_cast<unsigned char>(m_bytes[i])); };
    if (at >= m_bytes.size())
        return false;
    if (!m_wideCodes && byteAt(at) != 255) {
        code = byteAt(at++);
        return true;
    }
    if (!m_wideCodes)
        ++at;
    if (m_bytes.size() - at < 2)
        return false;
    code = std::int16_t(byteAt(at) | byteAt(at + 1) << 8);
    at += 2;
    return true;
}

/*! Whether a `0` tag with something like a record's name stands there. */
bool BinaryScanner::isRecordStart(std::uint32_t at) const
{
    constexpr std::size_t shortest = 2;
    constexpr std::size_t longest = 64;
    int code = -1;
    if (!readCode(at, code) || code != 0)
        return false;
    const std::string_view rest = m_bytes.substr(at, longest + 1);
    const std::size_t length = rest.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789");
    return length != std::string_view::npos && length >= shortest && rest[length] == '\0';
}

bool BinaryScanner::endHere(LoadResult *diagnostics)
{
    if (diagnostics)
        diagnostics->count(WarningKind::TruncatedValue, m_position);
    m_position = std::uint32_t(m_bytes.size());
    return false;
}

bool BinaryScanner::next(ScannedTag &scanned, LoadResult *diagnostics)
{
    if (m_position >= m_bytes.size())
        return false;
    std::uint32_t at = m_position;
    int code = 0;
    if (!readCode(at, code))
        return endHere(diagnostics);
    if (!isGroupCode(code)) {
        if (diagnostics)
            diagnostics->count(WarningKind::OutOfStep, m_position);
        do {
            if (++m_position >= m_bytes.size())
                return false;
        } while (!isRecordStart(m_position));
        at = m_position;
        readCode(at, code);
    }

    const std::uint32_t start = m_position;
    const std::uint32_t left = std::uint32_t(m_bytes.size()) - at;
    const ValueKind kind = valueKind(code);
    std::uint32_t length = numberWidth(kind);
    std::uint32_t behind = 0;
    if (kind == ValueKind::Chunk) {
        if (left == 0)
            return endHere(diagnostics);
        length = static_cast<unsigned char>(m_bytes[at++]);
        if (length > left - 1)
            return endHere(diagnostics);
    } else if (length == 0) {
        const void *const zero = left > 0 ? std::memchr(m_bytes.data() + at, 0, left) : nullptr;
        if (!zero)
            return endHere(diagnostics);
        length = std::uint32_t(static_cast<const char *>(zero) - m_bytes.data()) - at;
        behind = 1;
    } else if (length > left) {
        return endHere(diagnostics);
    }
    scanned.start = start;
    scanned.tag = {at, length, std::int16_t(code)};
    m_position = at + length + behind;
    return true;
}

// ---- Functions
// --------------------------------------------------------------------------------------------------------

FileStyle detectStyle(const Buffer &buffer)
{
    const std::string_view bytes = buffer.view();
    FileStyle style;
    if (bytes.substr(0, sentinelLength) == binarySentinel()) {
        style.binary = true;
        // The first code is 0; with two bytes a second zero follows, with one a letter.
        style.wideCodes = bytes.size() <= sentinelLength + 1 || bytes[sentinelLength + 1] == '\0';
        return style;
    }

    const std::size_t lineEnd = bytes.find_first_of("\r\n");
    if (lineEnd != std::string_view::npos && bytes[lineEnd] == '\r') {
        const bool hasLineFeed = lineEnd + 1 < bytes.size() && bytes[lineEnd + 1] == '\n';
        style.lineEnd = hasLineFeed ? LineEnd::CrLf : LineEnd::Cr;
    }

    // A code of one digit tells the padding.
    constexpr int tagsTried = 50;
    AsciiScanner scanner(buffer, style);
    ScannedTag scanned;
    for (int i = 0; i < tagsTried && scanner.next(scanned, nullptr); ++i) {
        if (scanned.tag.code < 0 || scanned.tag.code > 9)
            continue;
        const std::string_view line = bytes.substr(scanned.start, scanned.tag.offset - scanned.start);
        style.codeWidth = int(line.find_first_of("0123456789")) + 1;
        break;
    }
    return style;
}

std::uint32_t tagStart(const Buffer &buffer, const FileStyle &style, const Tag &tag)
{
    if (style.binary) {
        const std::uint32_t codeWidth = style.wideCodes ? 2 : tag.code >= 255 || tag.code < 0 ? 3 : 1;
        return tag.offset - codeWidth - (valueKind(tag.code) == ValueKind::Chunk ? 1 : 0);
    }
    const char lineEnd = style.lineEnd == LineEnd::Cr ? '\r' : '\n';
    const std::string_view bytes = buffer.view();
    std::uint32_t start = tag.offset - 1; // the code line's own end
    const std::uint32_t first = byteOrderMarkLength(bytes);
    while (start > first && bytes[start - 1] != lineEnd)
        --start;
    return start;
}

std::uint32_t tagEnd(const Buffer &buffer, const FileStyle &style, std::uint32_t start)
{
    return style.binary ? endOfFirstTag(BinaryScanner(buffer, style, start, buffer.size()))
                        : endOfFirstTag(AsciiScanner(buffer, style, start, buffer.size()));
}

void readTags(const Buffer &buffer, const FileStyle &style, std::uint32_t first, std::uint32_t last,
              std::vector<Tag> &tags)
{
    if (style.binary)
        collect(BinaryScanner(buffer, style, first, last), tags);
    else
        collect(AsciiScanner(buffer, style, first, last), tags);
}

Tag readTag(const Buffer &buffer, const FileStyle &style, std::uint32_t start)
{
    return style.binary ? firstTag(BinaryScanner(buffer, style, start, buffer.size()))
                        : firstTag(AsciiScanner(buffer, style, start, buffer.size()));
}

} // namespace zvdxf
