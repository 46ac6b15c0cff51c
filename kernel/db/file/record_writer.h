// SPDX-License-Identifier: MIT
#ifndef RECORD_WRITER_H
#define RECORD_WRITER_H

#include "dxf_tag.h"
#include "dxf_text.h"
#include "file_references.h"
#include "record_cursor.h"
#include "zvdbfiler.h"

/// Makes and changes records. One writer serves many records, one after the other.
class ZvDbRecordWriter : public ZvDbFiler
{
public:
    ZvDbRecordWriter(const zvdxf::TextCodec &codec, ZvDbFileReferences &references, ZvDb::FileVersion version);

    /// Starts a new record that has this one tag.
    void beginNew(const char *type);
    /// Starts from a record that is there.
    void beginExisting(std::vector<zvdxf::OwnedTag> tags);
    const std::vector<zvdxf::OwnedTag> &tags() const { return m_tags; }
    std::vector<zvdxf::OwnedTag> takeTags() { return std::move(m_tags); }
    bool isChanged() const { return m_changed; }

    // ---- beside what fields need
    /// The tag of the code in the block at hand gets the value, or is put in.
    void put(int code, const std::string &value);
    /// Takes the next tag of the code out of the block at hand, if there is one.
    void remove(int code);
    /// Handle and owner, in front of the first marker. An owner of 0 is left as it is.
    void setHead(int handleCode, std::uint64_t handle, std::uint64_t owner);
    /// The group that names the extension dictionary; 0 takes it out. To be called when all fields are told.
    void setExtensionDictionary(std::uint64_t handle);
    /// Replaces all extended data. What says the same as before keeps its bytes. To be called when all fields are told.
    void setExtendedData(const std::vector<zvdxf::OwnedTag> &tags);
    std::string encoded(const ZvString &text) const;

    bool isNewRecord() const override { return m_isNew; }
    void subclass(const char *marker) override;
    bool has(int code) const override { return !m_isNew && m_cursor.find(code) != Cursor::npos; }
    bool hasSubclass(const char *marker) const override { return !m_isNew && m_cursor.hasMarker(marker); }
    void integer(int code, int &value) override { putInteger(code, value, true); }
    void integer(int code, int &value, int standard) override { putInteger(code, value, value != standard); }
    void real(int code, double &value) override { putReal(code, value, true); }
    void real(int code, double &value, double standard) override { putReal(code, value, value != standard); }
    void angle(int code, double &value) override { putAngle(code, value, true); }
    void angle(int code, double &value, double standard) override { putAngle(code, value, value != standard); }
    void text(int code, ZvString &value) override { putText(code, value, true); }
    void text(int code, ZvString &value, const ZvString &standard) override { putText(code, value, value != standard); }
    void longText(int pieceCode, int lastCode, ZvString &value) override;
    void point(int code, ZvGePoint3d &value) override { putPoint(code, value, true); }
    void point(int code, ZvGePoint3d &value, const ZvGePoint3d &standard) override;
    void point2d(int code, ZvGePoint2d &value) override;
    void handle(int code, ZvDbObjectId &value, bool always) override;
    void nameIn(Table table, int code, ZvDbObjectId &value, bool always) override;
    void color(int indexCode, int trueColorCode, int bookCode, ZvCmColor &value, const ZvCmColor &standard, bool always,
               bool *off) override;
    void run(std::initializer_list<int> codes, Groups &groups) override;
    void sequence(int firstCode, std::initializer_list<int> endCodes, Groups &groups) override;
    Groups existing(int firstCode, std::initializer_list<int> endCodes) const override;
    Groups rest() const override;
    Groups groupsOf(ZvDbObjectId, const char *) const override { return {}; }

private:
    struct Tags
    {
        const std::vector<zvdxf::OwnedTag> &tags;
        std::size_t size() const { return tags.size(); }
        int code(std::size_t i) const { return tags[i].code; }
        std::string_view value(std::size_t i) const { return tags[i].value; }
    };
    typedef RecordCursor<Tags> Cursor;

    /// Number of the tag that a field takes, or npos; none in a new record.
    std::size_t take(int code) { return m_isNew ? Cursor::npos : m_cursor.take(code); }
    void insert(int code, const std::string &value);
    void replace(std::size_t i, const std::string &value);
    void putInteger(int code, std::int64_t value, bool insertMissing);
    void putReal(int code, double value, bool insertMissing);
    void putAngle(int code, double value, bool insertMissing);
    void putText(int code, const ZvString &value, bool insertMissing);
    void putPoint(int code, const ZvGePoint3d &value, bool insertMissing);
    /// Replaces tags [first, last) by the groups, keeping what is equal.
    void align(std::size_t first, std::size_t last, const Groups &groups, int leadCode, bool keepOthers);
    /// Whether the tags [first, last) are what an element of a list tells.
    bool isSameElement(std::size_t first, std::size_t last, const Group *group, const Group *end) const;
    void insertAll(const Groups &groups);
    zvdxf::OwnedTag made(const Group &group);
    bool isSame(const Group &group, const zvdxf::OwnedTag &tag) const;
    Group group(const zvdxf::OwnedTag &tag) const;
    /// Whether two tags of extended data say the same.
    bool isSameData(const zvdxf::OwnedTag &a, const zvdxf::OwnedTag &b) const;
    ZvString decoded(const std::string &value) const;

    const zvdxf::TextCodec &m_codec;
    ZvDbFileReferences &m_references;
    std::vector<zvdxf::OwnedTag> m_tags;
    Tags m_view;
    Cursor m_cursor;
    bool m_isNew = true;
    bool m_changed = false;
};

/// The number of degrees that reads back as these radians, with as few digits as possible.
double zvdbDegrees(double radians);
/// Index of the palette's colour next to a true colour, for programs that know no other colours.
int zvdbNearestColorIndex(const ZvCmColor &color);

#endif
