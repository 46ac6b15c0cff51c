// SPDX-License-Identifier: MIT
#include "dxf_edit.h"

#include "dxf_number.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zvdxf {

namespace {

constexpr int markerCode = 100;
constexpr int embeddedCode = 101;
constexpr int groupCode = 102;
constexpr int xdataCode = 1001;

// The file's tags and an edited record's are looked into in the same way. All that is compared is text, which looks
// alike in ASCII and binary files.
struct FileTags
{
    const RecordView &record;
    std::size_t size() const { return record.size(); }
    int code(std::size_t i) const { return record[i].code; }
    std::string_view value(std::size_t i) const { return trimmed(record.raw(record[i])); }
};

struct EditedTags
{
    const std::vector<OwnedTag> &tags;
    std::size_t size() const { return tags.size(); }
    int code(std::size_t i) const { return tags[i].code; }
    std::string_view value(std::size_t i) const { return trimmed(tags[i].value); }
};

bool isMarker(int code)
{
    return code == markerCode || code == embeddedCode;
}

template <class Tags> std::size_t findCode(const Tags &tags, TagRange range, bool (*matches)(int code))
{
    std::size_t i = range.first;
    while (i < range.last && !matches(tags.code(i)))
        ++i;
    return i;
}

template <class Tags> TagRange bodyOf(const Tags &tags)
{
    return {0, findCode(tags, {0, tags.size()}, [](int code) { return code >= 1000; })};
}

template <class Tags> TagRange headOf(const Tags &tags)
{
    return {0, findCode(tags, bodyOf(tags), isMarker)};
}

template <class Tags> TagRange subclassOf(const Tags &tags, std::string_view marker, int occurrence)
{
    const TagRange body = bodyOf(tags);
    std::size_t i = findCode(tags, body, isMarker);
    if (i == body.last)
        return body;
    while (i < body.last) {
        const std::size_t next = findCode(tags, {i + 1, body.last}, isMarker);
        if (tags.value(i) == marker && occurrence-- == 0)
            return {i + 1, next};
        i = next;
    }
    return {body.last, body.last};
}

/*! Of a `102 {` at \a opening: one past its `102 }`, or past the last tag it can reach when that is missing. */
template <class Tags> std::size_t groupEnd(const Tags &tags, std::size_t opening, std::size_t last)
{
    std::size_t i = opening + 1;
    while (i < last && tags.code(i) != groupCode && !isMarker(tags.code(i)))
        ++i;
    const bool isClosed = i < last && tags.code(i) == groupCode && tags.value(i) == "}";
    return isClosed ? i + 1 : i;
}

template <class Tags> bool opensGroup(const Tags &tags, std::size_t i)
{
    return tags.code(i) == groupCode && tags.value(i).substr(0, 1) == "{";
}

template <class Tags> TagRange groupOf(const Tags &tags, std::string_view name)
{
    const TagRange body = bodyOf(tags);
    for (std::size_t i = body.first; i < body.last; ++i) {
        if (!opensGroup(tags, i) || tags.value(i).substr(1) != name)
            continue;
        const std::size_t end = groupEnd(tags, i, body.last);
        return {i + 1, tags.code(end - 1) == groupCode && end - 1 > i ? end - 1 : end};
    }
    return {body.last, body.last};
}

template <class Tags> TagRange xdataOf(const Tags &tags, std::string_view application)
{
    const auto isApplication = [](int code) { return code == xdataCode; };
    const std::size_t size = tags.size();
    for (std::size_t i = findCode(tags, {0, size}, isApplication); i < size;) {
        const std::size_t next = findCode(tags, {i + 1, size}, isApplication);
        if (tags.value(i) == application)
            return {i + 1, next};
        i = next;
    }
    return {size, size};
}

/*! Index of the tag in the range, groups skipped; the range's end when absent. */
template <class Tags> std::size_t findIn(const Tags &tags, TagRange range, int code, int occurrence)
{
    for (std::size_t i = range.first; i < range.last;) {
        if (tags.code(i) == code && occurrence-- == 0)
            return i;
        i = opensGroup(tags, i) ? groupEnd(tags, i, range.last) : i + 1;
    }
    return range.last;
}

bool hasPart(const std::vector<OwnedTag> &tags, std::string_view marker)
{
    const EditedTags view{tags};
    const TagRange body = bodyOf(view);
    std::size_t i = findCode(view, body, isMarker);
    if (i == body.last)
        return true; // without markers the record is one part
    while (i < body.last && view.value(i) != marker)
        i = findCode(view, {i + 1, body.last}, isMarker);
    return i < body.last;
}

bool isWholeNumber(ValueKind kind)
{
    return kind == ValueKind::Int16 || kind == ValueKind::Int32 || kind == ValueKind::Int64 || kind == ValueKind::Byte;
}

/*! The value in the columns of the one it replaces: whole numbers are often padded to a width. */
std::string aligned(int code, std::string value, std::string_view old)
{
    if (isWholeNumber(valueKind(code)) && !old.empty() && old.front() == ' ' && value.size() < old.size())
        value.insert(0, old.size() - value.size(), ' ');
    return value;
}

/*! 0 and -0 are equal numbers, but not the same value. */
std::uint64_t bitsOf(double number)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

bool isSameTag(const OwnedTag &a, const OwnedTag &b)
{
    return a.code == b.code && sameValue(a.code, a.value, b.value);
}

} // namespace

bool sameValue(int code, std::string_view a, std::string_view b)
{
    if (a == b)
        return true;
    const ValueKind kind = valueKind(code);
    if (kind == ValueKind::Real) {
        double x = 0;
        double y = 0;
        return parseReal(a, x) && parseReal(b, y) && bitsOf(x) == bitsOf(y);
    }
    if (isWholeNumber(kind)) {
        std::int64_t x = 0;
        std::int64_t y = 0;
        return parseInteger(a, x) && parseInteger(b, y) && x == y;
    }
    if (kind == ValueKind::Handle) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        return parseHandle(a, x) && parseHandle(b, y) && x == y;
    }
    if (kind == ValueKind::Chunk) {
        std::string x;
        std::string y;
        return parseChunk(a, x) && parseChunk(b, y) && x == y;
    }
    return false;
}

// ---- Looking into a record
// --------------------------------------------------------------------------------------------

TagRange bodyRange(const RecordView &record)
{
    return bodyOf(FileTags{record});
}

TagRange headRange(const RecordView &record)
{
    return headOf(FileTags{record});
}

TagRange subclassRange(const RecordView &record, std::string_view marker, int occurrence)
{
    return subclassOf(FileTags{record}, marker, occurrence);
}

TagRange groupRange(const RecordView &record, std::string_view name)
{
    return groupOf(FileTags{record}, name);
}

TagRange xdataRange(const RecordView &record, std::string_view application)
{
    return xdataOf(FileTags{record}, application);
}

bool hasSubclasses(const RecordView &record)
{
    return std::any_of(record.begin(), record.end(), [](const Tag &tag) { return tag.code == markerCode; });
}

const Tag *findTag(const RecordView &record, TagRange range, int code, int occurrence)
{
    const std::size_t i = findIn(FileTags{record}, range, code, occurrence);
    return i == range.last ? nullptr : &record[i];
}

const Tag *findTag(const RecordView &record, int code)
{
    return findTag(record, bodyRange(record), code);
}

// ---- RecordEdit
// -------------------------------------------------------------------------------------------------------

RecordEdit::RecordEdit(const Store &store, std::uint32_t record)
{
    std::vector<Tag> tags;
    store.tags(record, tags);
    m_tags.reserve(tags.size());
    for (const Tag &tag : tags)
        m_tags.push_back(store.owned(tag));
}

RecordEdit::RecordEdit(const Store &store, const HeaderVariable &variable)
{
    for (const Tag &tag : store.headerValues(variable))
        m_tags.push_back(store.owned(tag));
}

RecordEdit::RecordEdit(std::vector<OwnedTag> tags) : m_tags(std::move(tags)) { }

void RecordEdit::apply(const FieldEdit &edit)
{
    TagRange range = part(edit.marker);
    const std::size_t at = findIn(EditedTags{m_tags}, range, edit.code, edit.occurrence);
    if (at < range.last) {
        OwnedTag &tag = m_tags[at];
        if (edit.action == FieldEdit::Remove) {
            m_tags.erase(m_tags.begin() + std::ptrdiff_t(at));
        } else if (!sameValue(edit.code, tag.value, edit.value)) {
            tag.value = aligned(edit.code, edit.value, tag.value);
            tag.source = OwnedTag::noSource;
        } else {
            return;
        }
        m_changed = true;
        return;
    }
    if (edit.action == FieldEdit::Remove)
        return;

    if (!edit.marker.empty() && !hasPart(m_tags, edit.marker)) {
        const std::size_t end = bodyOf(EditedTags{m_tags}).last;
        m_tags.insert(m_tags.begin() + std::ptrdiff_t(end), OwnedTag{markerCode, std::string(edit.marker)});
        range = {end + 1, end + 1};
    }
    std::size_t position = range.last;
    const EditedTags tags{m_tags};
    for (std::size_t i = range.first; i < range.last;) {
        const bool isAnchor = std::find(edit.after.begin(), edit.after.end(), tags.code(i)) != edit.after.end();
        i = opensGroup(tags, i) ? groupEnd(tags, i, range.last) : i + 1;
        if (isAnchor)
            position = i;
    }
    m_tags.insert(m_tags.begin() + std::ptrdiff_t(position), OwnedTag{edit.code, edit.value});
    m_changed = true;
}

void RecordEdit::setReal(std::string_view marker, int code, double value, std::initializer_list<int> after)
{
    apply({marker, code, formatReal(value), after});
}

void RecordEdit::setInteger(std::string_view marker, int code, std::int64_t value, std::initializer_list<int> after)
{
    apply({marker, code, formatInteger(value), after});
}

void RecordEdit::setHandle(std::string_view marker, int code, std::uint64_t value, std::initializer_list<int> after)
{
    apply({marker, code, formatHandle(value), after});
}

void RecordEdit::setText(std::string_view marker, int code, std::string_view bytes, std::initializer_list<int> after)
{
    apply({marker, code, std::string(bytes), after});
}

void RecordEdit::setPoint(std::string_view marker, int code, double x, double y, double z,
                          std::initializer_list<int> after)
{
    setReal(marker, code, x, after);
    setReal(marker, code + 10, y, {code});
    const TagRange range = part(marker);
    if (z != 0 || findIn(EditedTags{m_tags}, range, code + 20, 0) < range.last)
        setReal(marker, code + 20, z, {code + 10});
}

void RecordEdit::remove(std::string_view marker, int code)
{
    apply({marker, code, {}, {}, FieldEdit::Remove});
}

void RecordEdit::replace(TagRange range, const std::vector<OwnedTag> &tags)
{
    std::size_t front = 0;
    while (front < range.size() && front < tags.size() && isSameTag(m_tags[range.first + front], tags[front]))
        ++front;
    std::size_t back = 0;
    while (back < range.size() - front && back < tags.size() - front
           && isSameTag(m_tags[range.last - 1 - back], tags[tags.size() - 1 - back]))
        ++back;
    const auto first = m_tags.begin() + std::ptrdiff_t(range.first + front);
    const auto last = m_tags.begin() + std::ptrdiff_t(range.last - back);
    if (first == last && front + back == tags.size())
        return;
    const auto position = m_tags.erase(first, last);
    m_tags.insert(position, tags.begin() + std::ptrdiff_t(front), tags.end() - std::ptrdiff_t(back));
    m_changed = true;
}

void RecordEdit::setXdata(std::string_view application, const std::vector<OwnedTag> &tags)
{
    TagRange range = xdata(application);
    const bool isPresent = range.first > 0 && m_tags[range.first - 1].code == xdataCode
        && trimmed(m_tags[range.first - 1].value) == application;
    if (isPresent && !tags.empty())
        return replace(range, tags);
    if (isPresent)
        return replace({range.first - 1, range.last}, tags);
    if (tags.empty())
        return;
    std::vector<OwnedTag> all{{xdataCode, std::string(application)}};
    all.insert(all.end(), tags.begin(), tags.end());
    replace(range, all);
}

TagRange RecordEdit::part(std::string_view marker) const
{
    const EditedTags tags{m_tags};
    return marker.empty() ? headOf(tags) : subclassOf(tags, marker, 0);
}

TagRange RecordEdit::group(std::string_view name) const
{
    return groupOf(EditedTags{m_tags}, name);
}

TagRange RecordEdit::xdata(std::string_view application) const
{
    return xdataOf(EditedTags{m_tags}, application);
}

} // namespace zvdxf
