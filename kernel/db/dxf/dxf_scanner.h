// SPDX-License-Identifier: MIT
#pragma once

#include "dxf_store.h"

#include <cstring>

/*! Cutting a file's bytes into tags. Two scanners of one shape, so that the loader is written once and pays no call per
   tag for having two. Both are deterministic: the bytes of one record give the same tags again when scanned alone. */
namespace zvdxf {

struct ScannedTag
{
    Tag tag;
    std::uint32_t start; //!< first byte of the tag: of the code line, or of the binary code
};

/*! Pairs of lines. Where a line stands that is no group code, it is passed over and the next one tried: one line lost
   or added by damage costs no more than the tags around it. */
class AsciiScanner
{
public:
    AsciiScanner(const Buffer &buffer, const FileStyle &style) : AsciiScanner(buffer, style, 0, buffer.size()) { }
    /*! Scans the bytes [first, last). */
    AsciiScanner(const Buffer &buffer, const FileStyle &style, std::uint32_t first, std::uint32_t last);

    /*! The next tag; false at the end. What is passed over is counted in \a diagnostics, when given. */
    bool next(ScannedTag &scanned, LoadResult *diagnostics)
    {
        while (m_position < m_end) {
            const char *const line = m_position;
            const char *p = line;
            // The buffer ends with a zero, which stops these loops.
            while (*p == ' ' || *p == '\t')
                ++p;
            const bool isNegative = *p == '-';
            p += isNegative;
            const char *const digits = p;
            int code = 0;
            while (*p >= '0' && *p <= '9' && code <= 10000)
                code = code * 10 + (*p++ - '0');
            const bool hasDigits = p != digits;
            while (*p == ' ' || *p == '\t' || (*p == '\r' && m_lineEnd != '\r'))
                ++p;
            if (isNegative)
                code = -code;
            if (!hasDigits || !isGroupCode(code) || *p != m_lineEnd) {
                passOver(diagnostics);
                continue;
            }

            const char *const value = p + 1;
            const char *valueEnd
                = value < m_end ? static_cast<const char *>(std::memchr(value, m_lineEnd, m_end - value)) : nullptr;
            if (!valueEnd)
                return lastTag(scanned, code, value, diagnostics);
            m_position = valueEnd + 1;
            if (m_lineEnd == '\n' && valueEnd > value && valueEnd[-1] == '\r')
                --valueEnd;
            set(scanned, code, line, value, valueEnd);
            return true;
        }
        return false;
    }

    /*! Where the next tag would begin. */
    std::uint32_t position() const { return std::uint32_t(m_position - m_data); }

private:
    void set(ScannedTag &scanned, int code, const char *line, const char *value, const char *valueEnd) const
    {
        scanned.start = std::uint32_t(line - m_data);
        scanned.tag.offset = std::uint32_t(value - m_data);
        scanned.tag.length = std::uint32_t(valueEnd - value);
        scanned.tag.code = std::int16_t(code);
    }
    void passOver(LoadResult *diagnostics);
    bool lastTag(ScannedTag &scanned, int code, const char *value, LoadResult *diagnostics);

    const char *m_data;
    const char *m_position;
    const char *m_end;
    char m_lineEnd; //!< the last byte of a line end
};

/*! Group codes as one or two bytes, values by the kind of their code. A code that cannot be is the end of all sense up
   to the next `0` tag, which is looked for. */
class BinaryScanner
{
public:
    BinaryScanner(const Buffer &buffer, const FileStyle &style);
    BinaryScanner(const Buffer &buffer, const FileStyle &style, std::uint32_t first, std::uint32_t last);

    bool next(ScannedTag &scanned, LoadResult *diagnostics);
    std::uint32_t position() const { return m_position; }

private:
    bool readCode(std::uint32_t &at, int &code) const;
    bool isRecordStart(std::uint32_t at) const;
    bool endHere(LoadResult *diagnostics);

    std::string_view m_bytes; //!< of the file up to the end of what is scanned
    std::uint32_t m_position;
    bool m_wideCodes;
};

/*! What binary files begin with. */
std::string_view binarySentinel();

/*! How the file with these bytes is written. */
FileStyle detectStyle(const Buffer &buffer);

/*! Start of a tag whose value is known. */
std::uint32_t tagStart(const Buffer &buffer, const FileStyle &style, const Tag &tag);

/*! One past the last byte, line end included, of the tag that starts at \a start. */
std::uint32_t tagEnd(const Buffer &buffer, const FileStyle &style, std::uint32_t start);

/*! Reads all tags in the bytes [first, last) into \a tags, which is overwritten. */
void readTags(const Buffer &buffer, const FileStyle &style, std::uint32_t first, std::uint32_t last,
              std::vector<Tag> &tags);

/*! The tag that starts at \a start; one of code 0 and no value when there is none. */
Tag readTag(const Buffer &buffer, const FileStyle &style, std::uint32_t start);

} // namespace zvdxf
