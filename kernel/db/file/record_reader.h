// SPDX-License-Identifier: MIT
#ifndef RECORD_READER_H
#define RECORD_READER_H

#include "dxf_store.h"
#include "file_references.h"
#include "record_cursor.h"
#include "zvdbfiler.h"

/// Decodes records. One reader serves many records, one after the other.
class ZvDbRecordReader : public ZvDbFiler
{
public:
    ZvDbRecordReader(const zvdxf::Store &store, ZvDbFileReferences &references, ZvDb::FileVersion version);

    /// The record whose tags are read from now on.
    void setRecord(std::uint32_t record);
    const zvdxf::RecordView &record() const { return m_tags.view; }

    bool isNewRecord() const override { return false; }
    void subclass(const char *marker) override { m_cursor.enter(marker); }
    bool has(int code) const override { return m_cursor.find(code) != Cursor::npos; }
    bool hasSubclass(const char *marker) const override { return m_cursor.hasMarker(marker); }
    void integer(int code, int &value) override { integer(code, value, 0); }
    void integer(int code, int &value, int standard) override;
    void real(int code, double &value) override { real(code, value, 0.0); }
    void real(int code, double &value, double standard) override;
    void angle(int code, double &value) override { angle(code, value, 0.0); }
    void angle(int code, double &value, double standard) override;
    void text(int code, ZvString &value) override { text(code, value, ZvString()); }
    void text(int code, ZvString &value, const ZvString &standard) override;
    void longText(int pieceCode, int lastCode, ZvString &value) override;
    void point(int code, ZvGePoint3d &value) override { point(code, value, ZvGePoint3d()); }
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
    Groups groupsOf(ZvDbObjectId object, const char *marker) const override;

private:
    struct Tags
    {
        zvdxf::RecordView view;
        std::size_t size() const { return view.size(); }
        int code(std::size_t i) const { return view[i].code; }
        std::string_view value(std::size_t i) const { return view.raw(view[i]); }
    };
    typedef RecordCursor<Tags> Cursor;

    /// The tag that a field takes, or null.
    const zvdxf::Tag *take(int code);
    Group group(const zvdxf::Tag &tag) const;
    int small(const zvdxf::Tag &tag) const;

    const zvdxf::Store &m_store;
    ZvDbFileReferences &m_references;
    std::vector<zvdxf::Tag> m_buffer;
    Tags m_tags;
    Cursor m_cursor;
};

/// A whole number from a file as an int, held within its range.
int zvdbClampedInt(std::int64_t value);
/// The colour of a table of three codes. \a index counts without its sign.
ZvCmColor zvdbFileColor(std::int64_t index, bool hasTrueColor, std::int64_t trueColor, const ZvString &bookName);

#endif
