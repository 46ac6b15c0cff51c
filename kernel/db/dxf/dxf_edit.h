// SPDX-License-Identifier: MIT
#pragma once

#include "dxf_store.h"

#include <initializer_list>

/*! Looking into a record and changing it. Group codes repeat within a record: each `100` marker begins a part in which
   a code has a meaning of its own (and so does the `101` marker of an embedded object), `102 {NAME` ... `102 }` holds
   an application's group, and `1001 NAME` begins extended data. The oldest files have no markers; the whole record
   before the extended data is then one part. */
namespace zvdxf {

/*! Tags [first, last) of a record. */
struct TagRange
{
    std::size_t first = 0;
    std::size_t last = 0;
    bool isEmpty() const { return first == last; }
    std::size_t size() const { return last - first; }
};

/*! The record without its extended data. */
TagRange bodyRange(const RecordView &record);
/*! What stands before the first `100` marker: the `0` tag, handle, groups, owner. The body where there is no marker. */
TagRange headRange(const RecordView &record);
/*! What follows the marker up to the next one or the extended data; the marker itself is not in it. The whole body for
   a record without any marker; empty when there are markers but not this one. \a occurrence counts from 0. */
TagRange subclassRange(const RecordView &record, std::string_view marker, int occurrence = 0);
/*! What stands between `102 {NAME` and `102 }`; empty when the group is absent or empty. */
TagRange groupRange(const RecordView &record, std::string_view name);
/*! What follows `1001 NAME` up to the next `1001` or the record's end; empty when absent. */
TagRange xdataRange(const RecordView &record, std::string_view application);
/*! Whether the record has a `100` marker at all. */
bool hasSubclasses(const RecordView &record);

/*! First tag of that code in the range, groups skipped (a range taken from groupRange() is inside of one and has none).
    Null when absent. \a occurrence counts from 0. */
const Tag *findTag(const RecordView &record, TagRange range, int code, int occurrence = 0);
/*! First tag of that code in the whole body, groups skipped; for records whose code stands once. */
const Tag *findTag(const RecordView &record, int code);

/*! One value that shall stand in a record. */
struct FieldEdit
{
    enum Action : std::uint8_t { Set, Remove };

    /*! Part the code stands in: a marker ("AcDbLine" and the like), or empty for the part before the first marker. In a
        record without markers it plays no role; to one that has others it is added. */
    std::string_view marker;
    int code = 0;
    std::string value = {}; //!< as in OwnedTag
    /*! Where a missing tag goes: right after the last tag in the part that has one of these codes; none present or
       listed: at the end of the part. */
    std::vector<int> after = {};
    Action action = Set;
    int occurrence = 0; //!< which of several of the code in the part, counted from 0; one more than there are inserts
};

/*! A record being changed: starts as the file's tags and ends as what the Writer takes. Whatever is not changed keeps
   its bytes. Setting a value that is already there in another spelling (7.0 and 7.000000) changes nothing. */
class RecordEdit
{
public:
    /*! The record as it stands in the file. */
    RecordEdit(const Store &store, std::uint32_t record);
    /*! A HEADER variable's values. */
    RecordEdit(const Store &store, const HeaderVariable &variable);
    /*! A record already changed before, or new. */
    explicit RecordEdit(std::vector<OwnedTag> tags);

    void apply(const FieldEdit &edit);
    /*! Sets the value of a tag of the code in the part, or inserts it; see FieldEdit. */
    void setReal(std::string_view marker, int code, double value, std::initializer_list<int> after = {});
    void setInteger(std::string_view marker, int code, std::int64_t value, std::initializer_list<int> after = {});
    void setHandle(std::string_view marker, int code, std::uint64_t value, std::initializer_list<int> after = {});
    /*! \a bytes are encoded already. */
    void setText(std::string_view marker, int code, std::string_view bytes, std::initializer_list<int> after = {});
    /*! A point: \a code, \a code + 10 and \a code + 20, side by side. The third is written when the record has it
       already or \a z is not 0. */
    void setPoint(std::string_view marker, int code, double x, double y, double z,
                  std::initializer_list<int> after = {});
    void remove(std::string_view marker, int code);

    /*! Replaces the range by \a tags, keeping what is equal at both ends as it stands: for lists, such as vertices,
       dashes or a dictionary's pairs. */
    void replace(TagRange range, const std::vector<OwnedTag> &tags);
    /*! Replaces the extended data of one application, its `1001` tag included; an empty \a tags removes it. */
    void setXdata(std::string_view application, const std::vector<OwnedTag> &tags);

    /*! Ranges in the tags as they are now. */
    TagRange part(std::string_view marker) const;
    TagRange group(std::string_view name) const;
    TagRange xdata(std::string_view application) const;

    bool isChanged() const { return m_changed; }
    const std::vector<OwnedTag> &tags() const { return m_tags; }
    /*! Moves the tags out; the edit is over. */
    std::vector<OwnedTag> takeTags() { return std::move(m_tags); }

private:
    std::vector<OwnedTag> m_tags;
    bool m_changed = false;
};

/*! Whether two values of a code mean the same: numbers by value (doubles bit for bit), handles without leading zeros,
   text byte by byte. */
bool sameValue(int code, std::string_view a, std::string_view b);

} // namespace zvdxf
