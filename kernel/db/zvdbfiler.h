// SPDX-License-Identifier: MIT
#ifndef ZVDBFILER_H
#define ZVDBFILER_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"

#include <memory>
#include <vector>

class ZvDbDatabase;
class ZvDbObject;

namespace zvdxf {
struct OwnedTag;
}

/// Two-way description of an object's data in a drawing file: a class tells its fields once, in file order, and the
/// same telling decodes a record, makes a new one, and changes an existing one.
///
/// Reading: a field takes the value of the first tag of its code in the subclass block at hand that no earlier field
/// has taken, its default where there is none.
///
/// Writing: where the object came from a file its record is the starting point. A field whose tag decodes to the value
/// at hand keeps the tag as it stands, byte for byte; another value replaces the tag's; a missing tag is put in where
/// it belongs unless the value is the default. Everything that no field speaks of stays. A new object's record holds
/// all fields without a default, and the others where they differ from it.
class ZvDbFiler
{
public:
    virtual ~ZvDbFiler() = default;

    bool isReading() const { return m_reading; }
    /// The file's version: fields that a version does not know are left out on writing.
    ZvDb::FileVersion version() const { return m_version; }
    ZvDbDatabase &database() const { return m_database; }
    /// True when the record is that of a new object (writing) or when there is no tag store behind it.
    virtual bool isNewRecord() const = 0;

    /// What follows stands behind this subclass marker. Records without markers (R12) are one block.
    virtual void subclass(const char *marker) = 0;
    /// Whether the record has a tag of this code in the block at hand; false for new records.
    virtual bool has(int code) const = 0;

    // ---- single values; without a default a new record always holds the field
    virtual void integer(int code, int &value) = 0;
    virtual void integer(int code, int &value, int standard) = 0;
    virtual void boolean(int code, bool &value, bool standard) = 0;
    virtual void real(int code, double &value) = 0;
    virtual void real(int code, double &value, double standard) = 0;
    /// Degrees in the file, radians in memory.
    virtual void angle(int code, double &value) = 0;
    virtual void angle(int code, double &value, double standard) = 0;
    virtual void text(int code, ZvString &value) = 0;
    virtual void text(int code, ZvString &value, const ZvString &standard) = 0;
    /// Codes n, n + 10, n + 20.
    virtual void point(int code, ZvGePoint3d &value) = 0;
    virtual void vector(int code, ZvGeVector3d &value, const ZvGeVector3d &standard) = 0;
    /// Codes n, n + 10.
    virtual void point2d(int code, ZvGePoint2d &value) = 0;
    /// A handle; the id is null for 0 and for an unknown handle (which is kept in the file).
    virtual void handle(int code, ZvDbObjectId &value) = 0;
    /// A reference by name into the table of that name ("LAYER", "LTYPE", "STYLE", "DIMSTYLE", "BLOCK").
    virtual void nameIn(const char *table, int code, ZvDbObjectId &value) = 0;
    /// Index 62, true colour 420 and book name 430, or the like three codes.
    virtual void color(int indexCode, int trueColorCode, int bookCode, ZvCmColor &value) = 0;

    // ---- repeated groups: the whole run of tags from the first to the last of these codes in the block at hand
    /// Reading: the tags of the run, text decoded. Writing: the run is replaced when \a tags differs from what the
    /// record decodes to; \a begins and \a codes say which codes belong to it.
    struct Group
    {
        int code = 0;
        double real = 0.0; ///< Number of any number code.
        long long integer = 0;
        ZvString text;
        ZvDbObjectId id; ///< Of handle codes.
    };
    virtual std::vector<Group> run(const std::vector<int> &codes) const = 0;
    virtual void setRun(const std::vector<int> &codes, const std::vector<Group> &groups) = 0;
    /// Every tag of the block at hand, in order, for records whose meaning hangs on the order (hatch, multileader).
    virtual std::vector<Group> blockTags() const = 0;

protected:
    ZvDbFiler(ZvDbDatabase &database, bool reading, ZvDb::FileVersion version)
        : m_database(database), m_version(version), m_reading(reading)
    {
    }

private:
    ZvDbDatabase &m_database;
    ZvDb::FileVersion m_version;
    bool m_reading;
};

#endif
