// SPDX-License-Identifier: MIT
#include "record_reader.h"

#include "file_fields.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

bool isOneOf(int code, std::initializer_list<int> codes)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}
} // namespace

int zvdbClampedInt(std::int64_t value)
{
    return int(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

ZvCmColor zvdbFileColor(std::int64_t index, bool hasTrueColor, std::int64_t trueColor, const ZvString &bookName)
{
    ZvCmColor color;
    if (hasTrueColor) {
        color.setRGB(std::uint8_t(trueColor >> 16), std::uint8_t(trueColor >> 8), std::uint8_t(trueColor));
        color.setBookName(bookName);
        return color;
    }
    const std::int64_t plain = std::abs(index);
    color.setColorIndex(plain <= ZvCm::kACInone ? std::uint16_t(plain) : std::uint16_t(ZvCm::kACIbyLayer));
    return color;
}

ZvDbRecordReader::ZvDbRecordReader(const zvdxf::Store &store, ZvDbFileReferences &references, ZvDb::FileVersion version)
    : ZvDbFiler(true, version), m_store(store),
      m_references(references), m_tags{zvdxf::RecordView(store, nullptr, 0, 0)}, m_cursor(m_tags)
{
}

void ZvDbRecordReader::setRecord(std::uint32_t record)
{
    m_tags.view = m_store.view(record, m_buffer);
    m_cursor.reset();
}

const zvdxf::Tag *ZvDbRecordReader::take(int code)
{
    const std::size_t found = m_cursor.take(code);
    return found == Cursor::npos ? nullptr : &m_tags.view[found];
}

int ZvDbRecordReader::small(const zvdxf::Tag &tag) const
{
    return zvdbClampedInt(m_tags.view.integer(tag));
}

void ZvDbRecordReader::integer(int code, int &value, int standard)
{
    const zvdxf::Tag *tag = take(code);
    value = tag ? small(*tag) : standard;
}

void ZvDbRecordReader::real(int code, double &value, double standard)
{
    const zvdxf::Tag *tag = take(code);
    value = tag ? m_tags.view.real(*tag) : standard;
}

void ZvDbRecordReader::angle(int code, double &value, double standard)
{
    const zvdxf::Tag *tag = take(code);
    value = tag ? zvdbRadians(m_tags.view.real(*tag)) : standard;
}

void ZvDbRecordReader::text(int code, ZvString &value, const ZvString &standard)
{
    const zvdxf::Tag *tag = take(code);
    value = tag ? ZvString(std::string_view(m_tags.view.text(*tag))) : standard;
}

void ZvDbRecordReader::longText(int pieceCode, int lastCode, ZvString &value)
{
    // Joined before it is decoded: a character may be cut in two between pieces.
    std::string bytes;
    while (const zvdxf::Tag *tag = take(pieceCode))
        bytes += m_tags.view.raw(*tag);
    if (const zvdxf::Tag *tag = take(lastCode))
        bytes += m_tags.view.raw(*tag);
    value = ZvString(std::string_view(m_store.codec().decode(bytes)));
}

void ZvDbRecordReader::point(int code, ZvGePoint3d &value, const ZvGePoint3d &standard)
{
    const zvdxf::Tag *x = take(code);
    if (!x) {
        value = standard;
        return;
    }
    const zvdxf::Tag *y = take(code + 10);
    const zvdxf::Tag *z = take(code + 20);
    value.x = m_tags.view.real(*x);
    value.y = y ? m_tags.view.real(*y) : 0.0;
    value.z = z ? m_tags.view.real(*z) : 0.0;
}

void ZvDbRecordReader::point2d(int code, ZvGePoint2d &value)
{
    const zvdxf::Tag *x = take(code);
    const zvdxf::Tag *y = take(code + 10);
    value.x = x ? m_tags.view.real(*x) : 0.0;
    value.y = y ? m_tags.view.real(*y) : 0.0;
}

void ZvDbRecordReader::handle(int code, ZvDbObjectId &value, bool)
{
    const zvdxf::Tag *tag = take(code);
    value = tag ? m_references.ofHandle(m_tags.view.handle(*tag)) : ZvDbObjectId();
}

void ZvDbRecordReader::nameIn(Table table, int code, ZvDbObjectId &value, bool)
{
    const zvdxf::Tag *tag = take(code);
    // Texts and dimensions that name no style have the standard one.
    const bool isStyle = table == kTextStyles || table == kDimStyles;
    if (tag)
        value = m_references.ofName(table, m_tags.view.name(*tag));
    else
        value = isStyle ? m_references.ofName(table, "Standard") : ZvDbObjectId();
}

void ZvDbRecordReader::color(int indexCode, int trueColorCode, int bookCode, ZvCmColor &value,
                             const ZvCmColor &standard, bool, bool *off)
{
    const zvdxf::Tag *index = take(indexCode);
    const zvdxf::Tag *trueColor = trueColorCode ? take(trueColorCode) : nullptr;
    const zvdxf::Tag *book = bookCode ? take(bookCode) : nullptr;
    const std::int64_t number = index ? m_tags.view.integer(*index) : 0;
    if (off)
        *off = number < 0;
    if (!index && !trueColor) {
        value = standard;
        return;
    }
    value = zvdbFileColor(number, trueColor, trueColor ? m_tags.view.integer(*trueColor) : 0,
                          book ? ZvString(std::string_view(m_tags.view.text(*book))) : ZvString());
}

ZvDbFiler::Group ZvDbRecordReader::group(const zvdxf::Tag &tag) const
{
    Group group;
    group.code = tag.code;
    switch (zvdxf::valueKind(tag.code)) {
    case zvdxf::ValueKind::Text:
    case zvdxf::ValueKind::Chunk:
        group.text = ZvString(std::string_view(m_tags.view.text(tag)));
        break;
    case zvdxf::ValueKind::Handle:
        group.integer = std::int64_t(m_tags.view.handle(tag));
        group.id = m_references.ofHandle(std::uint64_t(group.integer));
        break;
    case zvdxf::ValueKind::Real:
        group.real = m_tags.view.real(tag);
        break;
    default:
        group.integer = m_tags.view.integer(tag);
        group.real = double(group.integer);
    }
    return group;
}

void ZvDbRecordReader::run(std::initializer_list<int> codes, Groups &groups)
{
    groups.clear();
    std::size_t i = m_cursor.find(*codes.begin());
    if (i == Cursor::npos)
        return;
    const std::size_t first = i;
    for (; i < m_cursor.last() && isOneOf(m_tags.code(i), codes) && !m_cursor.isTaken(i); ++i)
        groups.push_back(group(m_tags.view[i]));
    m_cursor.setTaken(first, i);
    m_cursor.setPosition(i);
}

void ZvDbRecordReader::sequence(int firstCode, std::initializer_list<int> endCodes, Groups &groups)
{
    groups = existing(firstCode, endCodes);
    const std::size_t first = m_cursor.find(firstCode);
    if (first == Cursor::npos)
        return;
    m_cursor.setTaken(first, first + groups.size());
    m_cursor.setPosition(first + groups.size());
}

ZvDbFiler::Groups ZvDbRecordReader::existing(int firstCode, std::initializer_list<int> endCodes) const
{
    Groups groups;
    std::size_t i = m_cursor.find(firstCode);
    if (i == Cursor::npos)
        return groups;
    do {
        groups.push_back(group(m_tags.view[i]));
        ++i;
    } while (i < m_cursor.last() && !isOneOf(m_tags.code(i), endCodes));
    return groups;
}

ZvDbFiler::Groups ZvDbRecordReader::rest() const
{
    Groups groups;
    for (std::size_t i = m_cursor.first(); i < m_cursor.last(); ++i) {
        if (!m_cursor.isTaken(i))
            groups.push_back(group(m_tags.view[i]));
    }
    return groups;
}

ZvDbFiler::Groups ZvDbRecordReader::groupsOf(ZvDbObjectId object, const char *marker) const
{
    const std::int64_t record = m_references.recordOf(object);
    if (record < 0)
        return {};
    ZvDbRecordReader reader(m_store, m_references, version());
    reader.setRecord(std::uint32_t(record));
    if (marker) {
        reader.subclass(marker);
        return reader.rest();
    }
    Groups groups;
    for (std::size_t i = 1; i < reader.m_cursor.bodyEnd(); ++i) {
        if (!reader.m_cursor.isTaken(i))
            groups.push_back(reader.group(reader.m_tags.view[i]));
    }
    return groups;
}
