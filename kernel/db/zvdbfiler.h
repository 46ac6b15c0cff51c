// SPDX-License-Identifier: MIT
#ifndef ZVDBFILER_H
#define ZVDBFILER_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"

#include <cstdint>
#include <initializer_list>
#include <vector>

class ZvDbObject;

/// Two-way description of an object's data in a drawing file: a class tells its fields once, in file order, and the
/// same telling decodes a record, makes a new one, and changes an existing one.
///
/// Reading: a field takes the value of the first tag of its code in the subclass block at hand that no earlier field
/// has taken, its default where there is none.
///
/// Writing: where the object came from a file its record is the starting point. A field whose tag decodes to the value
/// at hand keeps the tag as it stands, byte for byte; another value replaces the tag's; a missing tag is put in after
/// those of the fields before it unless the value is the default. Everything that no field speaks of stays. A new
/// object's record holds all fields without a default, and the others where they differ from it.
class ZvDbFiler
{
public:
    /// Tables that records refer to by name.
    enum Table { kLayers, kLinetypes, kTextStyles, kDimStyles, kBlocks };

    virtual ~ZvDbFiler() = default;

    bool isReading() const { return m_reading; }
    ZvDb::FileVersion version() const { return m_version; }
    /// True when a record is made from nothing.
    virtual bool isNewRecord() const = 0;
    /// What follows, up to the next call, is put in by this version and the later ones only. Tags that are there are
    /// read and changed in any version.
    void since(ZvDb::FileVersion version) { m_since = version; }

    /// What follows stands behind this subclass marker; told again, behind the next one of that name. Records without
    /// markers (R12) are one block.
    virtual void subclass(const char *marker) = 0;
    /// Whether the record has a tag of this code in the block at hand.
    virtual bool has(int code) const = 0;
    /// Whether the record has this subclass marker.
    virtual bool hasSubclass(const char *marker) const = 0;

    // ---- single values; without a default a new record always holds the field
    virtual void integer(int code, int &value) = 0;
    virtual void integer(int code, int &value, int standard) = 0;
    void boolean(int code, bool &value, bool standard);
    virtual void real(int code, double &value) = 0;
    virtual void real(int code, double &value, double standard) = 0;
    /// Degrees in the file, radians in memory.
    virtual void angle(int code, double &value) = 0;
    virtual void angle(int code, double &value, double standard) = 0;
    virtual void text(int code, ZvString &value) = 0;
    virtual void text(int code, ZvString &value, const ZvString &standard) = 0;
    /// A long text in pieces, all but the last of which have the first code.
    virtual void longText(int pieceCode, int lastCode, ZvString &value) = 0;
    /// Codes n, n + 10, n + 20.
    virtual void point(int code, ZvGePoint3d &value) = 0;
    virtual void point(int code, ZvGePoint3d &value, const ZvGePoint3d &standard) = 0;
    void vector(int code, ZvGeVector3d &value);
    void vector(int code, ZvGeVector3d &value, const ZvGeVector3d &standard);
    /// A point of which only the third coordinate means something.
    void elevation(int code, double &value);
    /// Codes n, n + 10.
    virtual void point2d(int code, ZvGePoint2d &value) = 0;
    /// A handle; the id is null for 0 and for an unknown handle (which is kept in the file). A new record holds it when
    /// it is not null, or always.
    virtual void handle(int code, ZvDbObjectId &value, bool always = false) = 0;
    /// A reference by name; the id is null for an unknown name (which is kept in the file).
    virtual void nameIn(Table table, int code, ZvDbObjectId &value, bool always = false) = 0;
    /// Index 62, true colour 420 and book name 430, or the like three codes (0 for a code that the record lacks). With
    /// \a off the sign of the index tells it: negative for a layer that is off.
    virtual void color(int indexCode, int trueColorCode, int bookCode, ZvCmColor &value, const ZvCmColor &standard,
                       bool always = false, bool *off = nullptr)
        = 0;
    /// A colour as its 32-bit word, method included.
    void colorWord(int code, ZvCmColor &value);
    /// What a new record has to hold beside what the class knows.
    void constant(int code, int value);
    void constant(int code, double value);
    void constant(int code, const char *value);
    void constants(std::initializer_list<int> codes, int value);
    void constants(std::initializer_list<int> codes, double value);
    void constantPoint(int code, double x, double y, double z);

    // ---- lists
    /// One tag of a list.
    struct Group
    {
        Group() = default;
        Group(int c, double value, bool isOptional = false) : code(c), optional(isOptional), real(value) { }
        Group(int c, int value, bool isOptional = false)
            : code(c), optional(isOptional), real(value), integer(value) { }
        Group(int c, const ZvString &value) : code(c), text(value) { }
        Group(int c, ZvDbObjectId value) : code(c), id(value) { }
        /// Radians here, degrees in the file.
        static Group ofAngle(int c, double radians, bool isOptional = false)
        {
            Group group(c, radians, isOptional);
            group.angle = true;
            return group;
        }

        int code = 0;
        bool optional = false; ///< Writing: put in only where the record has it already.
        bool angle = false; ///< Writing: the number is in radians.
        double real = 0.0; ///< Of any number code, as it stands in the file.
        std::int64_t integer = 0; ///< Of whole number codes; of handle codes the handle as it stands in the file.
        ZvString text; ///< Of text codes.
        ZvDbObjectId id; ///< Of handle codes. Writing: the null id stands for the handle in \a integer.
    };
    typedef std::vector<Group> Groups;

    /// A run of tags: from the first one of these codes on as long as such codes follow. Reading fills \a groups;
    /// writing aligns the run with them, so that equal tags keep their bytes. The first code begins an element of the
    /// list. Tags of the run of which \a groups has no code at all stay in their place.
    virtual void run(std::initializer_list<int> codes, Groups &groups) = 0;
    /// The same from the first tag of \a firstCode up to, without it, the first one of \a endCodes or the end of the
    /// block.
    virtual void sequence(int firstCode, std::initializer_list<int> endCodes, Groups &groups) = 0;
    /// The tags that sequence() would speak of as they are before it; none in a new record.
    virtual Groups existing(int firstCode, std::initializer_list<int> endCodes) const = 0;
    /// All tags of the block at hand that no field has taken; none in a new record.
    virtual Groups rest() const = 0;
    /// The tags behind a marker in the record of another object, all of its own with null; none where that is not in
    /// the file.
    virtual Groups groupsOf(ZvDbObjectId object, const char *marker) const = 0;

    // ---- lists made of the operations above
    void reals(int code, std::vector<double> &values);
    void points(int code, std::vector<ZvGePoint3d> &values);
    void points2d(int code, std::vector<ZvGePoint2d> &values);
    void handles(int code, std::vector<ZvDbObjectId> &values);
    /// The number of elements of a list. Not read: the list itself knows.
    void count(int code, std::size_t number);

protected:
    ZvDbFiler(bool reading, ZvDb::FileVersion version) : m_reading(reading), m_version(version) { }
    /// Whether a missing tag may be put in.
    bool mayInsert() const { return m_version >= m_since; }

private:
    bool m_reading;
    ZvDb::FileVersion m_version;
    ZvDb::FileVersion m_since = ZvDb::kR12;
};

#endif
