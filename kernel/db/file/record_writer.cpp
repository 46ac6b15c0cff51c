// SPDX-License-Identifier: MIT
#include "record_writer.h"

#include "dxf_number.h"
#include "file_fields.h"
#include "record_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

using zvdxf::OwnedTag;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr std::size_t kPieceBytes = 250; // what all versions accept in one tag

bool isOneOf(int code, std::initializer_list<int> codes)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

double realOf(const OwnedTag &tag)
{
    double value = 0.0;
    zvdxf::parseReal(tag.value, value);
    return value;
}

std::int64_t integerOf(const OwnedTag &tag)
{
    std::int64_t value = 0;
    zvdxf::parseInteger(tag.value, value);
    return value;
}

std::uint64_t handleIn(const OwnedTag &tag)
{
    std::uint64_t value = 0;
    zvdxf::parseHandle(tag.value, value);
    return value;
}

/// Owned objects stand in a dictionary under either code, by who wrote the file.
bool isSameCode(int a, int b)
{
    return a == b || ((a == 350 || a == 360) && (b == 350 || b == 360));
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
        text.remove_suffix(1);
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    return text;
}

} // namespace

double zvdbDegrees(double radians)
{
    const double degrees = radians * 180.0 / kPi;
    for (int digits = 6; digits <= 17; ++digits) {
        char text[40];
        std::snprintf(text, sizeof text, "%.*e", digits - 1, degrees);
        const double candidate = std::strtod(text, nullptr);
        if (zvdbRadians(candidate) == radians)
            return candidate;
    }
    return degrees;
}

int zvdbNearestColorIndex(const ZvCmColor &color)
{
    const std::uint32_t *palette = zvcmAcadPalette(0);
    if (!palette)
        return 7;
    int best = 7;
    int bestDistance = -1;
    for (int i = 1; i < 256; ++i) {
        const int red = int(palette[i] & 0xFF) - color.red();
        const int green = int(palette[i] >> 8 & 0xFF) - color.green();
        const int blue = int(palette[i] >> 16 & 0xFF) - color.blue();
        const int distance = red * red + green * green + blue * blue;
        if (bestDistance < 0 || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

ZvDbRecordWriter::ZvDbRecordWriter(const zvdxf::TextCodec &codec, ZvDbFileReferences &references,
                                   ZvDb::FileVersion version)
    : ZvDbFiler(false, version), m_codec(codec), m_references(references), m_view{m_tags}, m_cursor(m_view)
{
}

void ZvDbRecordWriter::beginNew(const char *type)
{
    m_tags.clear();
    m_tags.push_back({0, type});
    m_isNew = true;
    m_changed = true;
    since(ZvDb::kR12);
}

void ZvDbRecordWriter::beginExisting(std::vector<OwnedTag> tags)
{
    m_tags = std::move(tags);
    m_cursor.reset();
    m_isNew = false;
    m_changed = false;
    since(ZvDb::kR12);
}

std::string ZvDbRecordWriter::encoded(const ZvString &text) const
{
    return m_codec.encode(text.toStdString());
}

ZvString ZvDbRecordWriter::decoded(const std::string &value) const
{
    return ZvString(std::string_view(m_codec.decode(value)));
}

void ZvDbRecordWriter::subclass(const char *marker)
{
    since(ZvDb::kR12);
    if (!m_isNew)
        m_cursor.enter(marker);
    else if (version() >= ZvDb::kR13)
        m_tags.push_back({100, marker});
}

void ZvDbRecordWriter::insert(int code, const std::string &value)
{
    if (!mayInsert())
        return;
    m_changed = true;
    if (m_isNew) {
        m_tags.push_back({code, value});
        return;
    }
    if (const char *marker = m_cursor.missingMarker()) {
        const std::size_t at = m_cursor.bodyEnd();
        m_tags.insert(m_tags.begin() + std::ptrdiff_t(at), {100, marker});
        m_cursor.inserted(at, 1, true);
    }
    const std::size_t at = m_cursor.position();
    m_tags.insert(m_tags.begin() + std::ptrdiff_t(at), {code, value});
    m_cursor.inserted(at, 1);
}

void ZvDbRecordWriter::replace(std::size_t i, const std::string &value)
{
    m_changed = true;
    m_tags[i].value = value;
    m_tags[i].source = OwnedTag::noSource;
}

void ZvDbRecordWriter::put(int code, const std::string &value)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos)
        insert(code, value);
    else if (trimmed(m_tags[i].value) != trimmed(value))
        replace(i, value);
}

void ZvDbRecordWriter::remove(int code)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos)
        return;
    m_changed = true;
    m_tags.erase(m_tags.begin() + std::ptrdiff_t(i));
    m_cursor.removed(i, 1);
}

void ZvDbRecordWriter::setHead(int handleCode, std::uint64_t handle, std::uint64_t owner)
{
    if (m_isNew) {
        if (handle != 0)
            m_tags.push_back({handleCode, zvdxf::formatHandle(handle)});
        if (owner != 0 && version() >= ZvDb::kR13)
            m_tags.push_back({330, zvdxf::formatHandle(owner)});
        return;
    }
    const std::size_t i = handle != 0 ? take(handleCode) : Cursor::npos;
    if (i != Cursor::npos && handleIn(m_tags[i]) != handle)
        replace(i, zvdxf::formatHandle(handle));
    else if (i == Cursor::npos && handle != 0)
        insert(handleCode, zvdxf::formatHandle(handle));
    if (owner == 0)
        return;
    const std::size_t k = take(330);
    if (k != Cursor::npos && handleIn(m_tags[k]) != owner)
        replace(k, zvdxf::formatHandle(owner));
}

void ZvDbRecordWriter::setExtensionDictionary(std::uint64_t handle)
{
    std::size_t i = 1;
    std::size_t place = 1; // behind the record's own handle
    while (i < m_tags.size() && m_tags[i].code != 100 && m_tags[i].code < 1000
           && !(m_tags[i].code == 102 && trimmed(m_tags[i].value) == "{ACAD_XDICTIONARY")) {
        if (m_tags[i].code == 5 || m_tags[i].code == 105)
            place = i + 1;
        ++i;
    }
    const bool isThere = i < m_tags.size() && m_tags[i].code == 102;
    if (!isThere) {
        if (handle == 0)
            return;
        const OwnedTag group[] = {{102, "{ACAD_XDICTIONARY"}, {360, zvdxf::formatHandle(handle)}, {102, "}"}};
        m_tags.insert(m_tags.begin() + std::ptrdiff_t(place), std::begin(group), std::end(group));
        m_changed = true;
        return;
    }
    std::size_t end = i + 1;
    while (end < m_tags.size() && m_tags[end].code != 102 && m_tags[end].code != 100)
        ++end;
    if (handle == 0) {
        end += end < m_tags.size() && m_tags[end].code == 102;
        m_tags.erase(m_tags.begin() + std::ptrdiff_t(i), m_tags.begin() + std::ptrdiff_t(end));
        m_changed = true;
        return;
    }
    for (++i; i < end; ++i) {
        if ((m_tags[i].code == 360 || m_tags[i].code == 350) && handleIn(m_tags[i]) != handle)
            replace(i, zvdxf::formatHandle(handle));
    }
}

bool ZvDbRecordWriter::isSameData(const OwnedTag &a, const OwnedTag &b) const
{
    if (a.code != b.code)
        return false;
    switch (zvdxf::valueKind(a.code)) {
    case zvdxf::ValueKind::Real:
        return realOf(a) == realOf(b);
    case zvdxf::ValueKind::Text:
        return a.value == b.value || decoded(a.value) == decoded(b.value);
    case zvdxf::ValueKind::Handle:
        return handleIn(a) == handleIn(b);
    case zvdxf::ValueKind::Chunk:
        return a.value == b.value;
    default:
        return integerOf(a) == integerOf(b);
    }
}

void ZvDbRecordWriter::setExtendedData(const std::vector<OwnedTag> &tags)
{
    std::size_t first = 0;
    while (first < m_tags.size() && m_tags[first].code < 1000)
        ++first;
    const std::vector<OwnedTag> before(m_tags.begin() + std::ptrdiff_t(first), m_tags.end());
    std::vector<OwnedTag> result = tags;
    // Each application's data follows what the record has of that application, tag by tag.
    std::size_t old = before.size();
    bool isSame = before.size() == tags.size();
    for (std::size_t i = 0; i < result.size(); ++i, ++old) {
        if (result[i].code == 1001)
            old = std::size_t(std::find_if(before.begin(), before.end(),
                                           [&](const OwnedTag &tag) { return isSameData(tag, result[i]); })
                              - before.begin());
        if (old < before.size() && isSameData(before[old], result[i]))
            result[i] = before[old];
        isSame = isSame && old == i && isSameData(before[i], result[i]);
    }
    if (isSame)
        return;
    m_changed = true;
    m_tags.resize(first);
    m_tags.insert(m_tags.end(), result.begin(), result.end());
}

void ZvDbRecordWriter::putInteger(int code, std::int64_t value, bool insertMissing)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos) {
        if (insertMissing)
            insert(code, zvdxf::formatInteger(value));
    } else if (zvdbClampedInt(integerOf(m_tags[i])) != value) {
        replace(i, zvdxf::formatInteger(value));
    }
}

void ZvDbRecordWriter::putReal(int code, double value, bool insertMissing)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos) {
        if (insertMissing)
            insert(code, zvdxf::formatReal(value));
    } else if (realOf(m_tags[i]) != value) {
        replace(i, zvdxf::formatReal(value));
    }
}

void ZvDbRecordWriter::putAngle(int code, double value, bool insertMissing)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos) {
        if (insertMissing)
            insert(code, zvdxf::formatReal(zvdbDegrees(value)));
    } else if (zvdbRadians(realOf(m_tags[i])) != value) {
        replace(i, zvdxf::formatReal(zvdbDegrees(value)));
    }
}

void ZvDbRecordWriter::putText(int code, const ZvString &value, bool insertMissing)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos) {
        if (insertMissing)
            insert(code, encoded(value));
    } else if (decoded(m_tags[i].value) != value) {
        replace(i, encoded(value));
    }
}

void ZvDbRecordWriter::longText(int pieceCode, int lastCode, ZvString &value)
{
    const std::vector<std::string> pieces = m_codec.encodePieces(value.toStdString(), kPieceBytes);
    if (m_isNew) {
        for (std::size_t i = 0; i < pieces.size(); ++i)
            insert(i + 1 < pieces.size() ? pieceCode : lastCode, pieces[i]);
        return;
    }
    std::vector<std::size_t> places;
    std::string bytes;
    for (std::size_t i = take(pieceCode); i != Cursor::npos; i = take(pieceCode))
        places.push_back(i);
    const std::size_t last = take(lastCode);
    if (last != Cursor::npos)
        places.push_back(last);
    for (const std::size_t i : places)
        bytes += m_tags[i].value;
    if (decoded(bytes) == value)
        return;
    std::sort(places.begin(), places.end()); // damaged records have the last piece before the others
    for (auto i = places.rbegin(); i != places.rend(); ++i) {
        m_tags.erase(m_tags.begin() + std::ptrdiff_t(*i));
        m_cursor.removed(*i, 1);
    }
    m_changed = true;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        insert(i + 1 < pieces.size() ? pieceCode : lastCode, pieces[i]);
}

void ZvDbRecordWriter::putPoint(int code, const ZvGePoint3d &value, bool insertMissing)
{
    const bool isThere = !m_isNew && m_cursor.find(code) != Cursor::npos;
    if (!isThere && !insertMissing)
        return;
    putReal(code, value.x, true);
    putReal(code + 10, value.y, true);
    // A file in two dimensions stays so.
    putReal(code + 20, value.z, !isThere || value.z != 0.0);
}

void ZvDbRecordWriter::point(int code, ZvGePoint3d &value, const ZvGePoint3d &standard)
{
    putPoint(code, value, value.x != standard.x || value.y != standard.y || value.z != standard.z);
}

void ZvDbRecordWriter::point2d(int code, ZvGePoint2d &value)
{
    putReal(code, value.x, true);
    putReal(code + 10, value.y, true);
}

void ZvDbRecordWriter::handle(int code, ZvDbObjectId &value, bool always)
{
    const std::size_t i = take(code);
    if (i == Cursor::npos) {
        const bool isWanted = m_isNew ? always || !value.isNull() : !value.isNull() && !m_references.isImplied(value);
        if (isWanted && mayInsert())
            insert(code, zvdxf::formatHandle(m_references.handleOf(value)));
        return;
    }
    const ZvDbObjectId now = m_references.ofHandle(handleIn(m_tags[i]));
    if (now != value && !(now.isNull() && m_references.isImplied(value)))
        replace(i, zvdxf::formatHandle(m_references.handleOf(value)));
}

void ZvDbRecordWriter::nameIn(Table table, int code, ZvDbObjectId &value, bool always)
{
    const std::size_t i = take(code);
    const auto name = [&] { return m_codec.encode(m_references.nameOf(table, value)); };
    if (i == Cursor::npos) {
        const bool isWanted
            = m_isNew ? always || !value.isNull() : !value.isNull() && !m_references.isStandard(table, value);
        if (isWanted && mayInsert())
            insert(code, name());
        return;
    }
    const ZvDbObjectId now = m_references.ofName(table, trimmed(m_codec.decode(m_tags[i].value)));
    if (now == value ? m_references.isRenamed(value) : !(value.isNull() && m_references.isByLayer(now)))
        replace(i, name());
}

void ZvDbRecordWriter::color(int indexCode, int trueColorCode, int bookCode, ZvCmColor &value,
                             const ZvCmColor &standard, bool always, bool *off)
{
    const std::size_t index = m_isNew ? Cursor::npos : m_cursor.find(indexCode);
    const std::size_t trueColor = m_isNew || !trueColorCode ? Cursor::npos : m_cursor.find(trueColorCode);
    const std::size_t book = m_isNew || !bookCode ? Cursor::npos : m_cursor.find(bookCode);
    const bool isThere = index != Cursor::npos || trueColor != Cursor::npos;
    const std::int64_t number = index != Cursor::npos ? integerOf(m_tags[index]) : 0;
    ZvCmColor before = standard;
    if (isThere)
        before = zvdbFileColor(number, trueColor != Cursor::npos,
                               trueColor != Cursor::npos ? integerOf(m_tags[trueColor]) : 0,
                               book != Cursor::npos ? decoded(m_tags[book].value) : ZvString());
    const bool isOff = off && *off;
    const bool isSame = before == value && (!off || isOff == (number < 0));
    if (isSame && (isThere || !always || !m_isNew)) {
        take(indexCode);
        if (trueColorCode)
            take(trueColorCode);
        if (bookCode)
            take(bookCode);
        return;
    }
    const bool isTrue = value.isByColor();
    std::int64_t shown = isTrue ? zvdbNearestColorIndex(value) : value.colorIndex();
    if (isTrue && before == value && number != 0)
        shown = std::abs(number);
    putInteger(indexCode, isOff ? -shown : shown, true);
    if (trueColorCode && isTrue) {
        since(ZvDb::kR2004);
        putInteger(trueColorCode, value.red() << 16 | value.green() << 8 | value.blue(), true);
        if (bookCode && !value.bookName().isEmpty())
            putText(bookCode, value.bookName(), true);
        else if (bookCode)
            remove(bookCode);
        since(ZvDb::kR12);
    } else if (trueColorCode) {
        remove(trueColorCode);
        if (bookCode)
            remove(bookCode);
    }
}

// ---- lists

ZvDbFiler::Group ZvDbRecordWriter::group(const OwnedTag &tag) const
{
    Group group;
    group.code = tag.code;
    switch (zvdxf::valueKind(tag.code)) {
    case zvdxf::ValueKind::Text:
        group.text = decoded(tag.value);
        break;
    case zvdxf::ValueKind::Chunk:
        group.text = ZvString(std::string_view(tag.value));
        break;
    case zvdxf::ValueKind::Handle:
        group.integer = std::int64_t(handleIn(tag));
        group.id = m_references.ofHandle(std::uint64_t(group.integer));
        break;
    case zvdxf::ValueKind::Real:
        group.real = realOf(tag);
        break;
    default:
        group.integer = integerOf(tag);
        group.real = double(group.integer);
    }
    return group;
}

OwnedTag ZvDbRecordWriter::made(const Group &group)
{
    switch (zvdxf::valueKind(group.code)) {
    case zvdxf::ValueKind::Text:
        return {group.code, encoded(group.text)};
    case zvdxf::ValueKind::Chunk:
        return {group.code, group.text.toStdString()};
    case zvdxf::ValueKind::Handle:
        return {
            group.code,
            zvdxf::formatHandle(group.id.isNull() ? std::uint64_t(group.integer) : m_references.handleOf(group.id))};
    case zvdxf::ValueKind::Real:
        return {group.code, zvdxf::formatReal(group.angle ? zvdbDegrees(group.real) : group.real)};
    default:
        return {group.code, zvdxf::formatInteger(group.integer)};
    }
}

bool ZvDbRecordWriter::isSame(const Group &group, const OwnedTag &tag) const
{
    switch (zvdxf::valueKind(group.code)) {
    case zvdxf::ValueKind::Text:
        return decoded(tag.value) == group.text;
    case zvdxf::ValueKind::Chunk:
        return tag.value == group.text.toStdString();
    case zvdxf::ValueKind::Handle:
        // A handle of nothing that is known counts as none, and stays.
        return group.id.isNull() && group.integer != 0 ? std::int64_t(handleIn(tag)) == group.integer
                                                       : m_references.ofHandle(handleIn(tag)) == group.id;
    case zvdxf::ValueKind::Real:
        return (group.angle ? zvdbRadians(realOf(tag)) : realOf(tag)) == group.real;
    default:
        return integerOf(tag) == group.integer;
    }
}

void ZvDbRecordWriter::insertAll(const Groups &groups)
{
    for (const Group &group : groups) {
        if (!group.optional)
            insert(group.code, made(group).value);
    }
}

bool ZvDbRecordWriter::isSameElement(std::size_t first, std::size_t last, const Group *group, const Group *end) const
{
    for (std::size_t i = first; i < last; ++i) {
        while (group != end && group->optional && !isSameCode(group->code, m_tags[i].code))
            ++group;
        if (group == end || !isSameCode(group->code, m_tags[i].code) || !isSame(*group, m_tags[i]))
            return false;
        ++group;
    }
    return std::all_of(group, end, [](const Group &left) { return left.optional; });
}

void ZvDbRecordWriter::align(std::size_t first, std::size_t last, const Groups &groups, int leadCode, bool keepOthers)
{
    const auto isSpokenOf = [&groups](int code) {
        return std::any_of(groups.begin(), groups.end(),
                           [code](const Group &group) { return isSameCode(group.code, code); });
    };
    // Elements that are the same at both ends stay as they are, so that one taken out or put in moves no other.
    std::vector<std::size_t> oldElements;
    std::vector<std::size_t> newElements;
    for (std::size_t i = first; i < last; ++i) {
        if (m_tags[i].code == leadCode)
            oldElements.push_back(i);
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == leadCode)
            newElements.push_back(i);
    }
    std::size_t unchanged = 0; // groups behind the ones that are aligned here
    const std::size_t whole = last;
    while (keepOthers && !oldElements.empty() && !newElements.empty()
           && isSameElement(oldElements.back(), last, &groups[newElements.back()],
                            groups.data() + groups.size() - unchanged)) {
        unchanged = groups.size() - newElements.back();
        last = oldElements.back();
        oldElements.pop_back();
        newElements.pop_back();
    }
    const std::size_t end = groups.size() - unchanged;

    std::vector<OwnedTag> result;
    bool changed = false;
    std::size_t i = first;
    for (std::size_t k = 0; k < end; ++k) {
        const Group &group = groups[k];
        while (keepOthers && i < last && !isSpokenOf(m_tags[i].code))
            result.push_back(m_tags[i++]);
        if (i < last && !isSameCode(m_tags[i].code, group.code) && m_tags[i].code != leadCode && !group.optional) {
            // A tag that is no longer told of: what follows is in step again behind it.
            std::size_t next = i;
            while (next < last && !isSameCode(m_tags[next].code, group.code))
                ++next;
            if (next < last) {
                changed = true;
                i = next;
            }
        }
        if (i < last && isSameCode(m_tags[i].code, group.code)) {
            result.push_back(m_tags[i]);
            if (!isSame(group, m_tags[i])) {
                const int code = m_tags[i].code;
                result.back() = made(group);
                result.back().code = code;
                changed = true;
            }
            ++i;
        } else if (!group.optional) {
            result.push_back(made(group));
            changed = true;
        }
    }
    for (; i < last; ++i) {
        if (keepOthers && !groups.empty() && !isSpokenOf(m_tags[i].code))
            result.push_back(m_tags[i]);
        else
            changed = true;
    }
    if (!changed) {
        m_cursor.setTaken(first, whole);
        m_cursor.setPosition(whole);
        return;
    }
    m_changed = true;
    m_tags.erase(m_tags.begin() + std::ptrdiff_t(first), m_tags.begin() + std::ptrdiff_t(last));
    m_cursor.removed(first, last - first);
    m_tags.insert(m_tags.begin() + std::ptrdiff_t(first), result.begin(), result.end());
    m_cursor.inserted(first, result.size());
    m_cursor.setTaken(first, first + result.size() + (whole - last));
    m_cursor.setPosition(first + result.size() + (whole - last));
}

void ZvDbRecordWriter::run(std::initializer_list<int> codes, Groups &groups)
{
    const std::size_t first = m_isNew ? Cursor::npos : m_cursor.find(*codes.begin());
    if (first == Cursor::npos) {
        insertAll(groups);
        return;
    }
    std::size_t last = first;
    while (last < m_cursor.last() && isOneOf(m_tags[last].code, codes) && !m_cursor.isTaken(last))
        ++last;
    align(first, last, groups, *codes.begin(), true);
}

void ZvDbRecordWriter::sequence(int firstCode, std::initializer_list<int> endCodes, Groups &groups)
{
    const std::size_t first = m_isNew ? Cursor::npos : m_cursor.find(firstCode);
    if (first == Cursor::npos) {
        insertAll(groups);
        return;
    }
    std::size_t last = first + 1;
    while (last < m_cursor.last() && !isOneOf(m_tags[last].code, endCodes))
        ++last;
    align(first, last, groups, firstCode, false);
}

ZvDbFiler::Groups ZvDbRecordWriter::existing(int firstCode, std::initializer_list<int> endCodes) const
{
    Groups groups;
    std::size_t i = m_isNew ? Cursor::npos : m_cursor.find(firstCode);
    if (i == Cursor::npos)
        return groups;
    do {
        groups.push_back(group(m_tags[i]));
        ++i;
    } while (i < m_cursor.last() && !isOneOf(m_tags[i].code, endCodes));
    return groups;
}

ZvDbFiler::Groups ZvDbRecordWriter::rest() const
{
    Groups groups;
    if (m_isNew)
        return groups;
    for (std::size_t i = m_cursor.first(); i < m_cursor.last(); ++i) {
        if (!m_cursor.isTaken(i))
            groups.push_back(group(m_tags[i]));
    }
    return groups;
}
