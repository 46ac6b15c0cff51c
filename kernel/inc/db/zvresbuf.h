// SPDX-License-Identifier: MIT
#ifndef ZVRESBUF_H
#define ZVRESBUF_H

#include "base/zvstring.h"
#include "db/zvdbobjectid.h"

/// Types of a ZvResBuf beside the group codes of drawing files (1000 and up for extended data).
namespace ZvRes {
enum {
    kNone = 5000,
    kReal = 5001,
    kPoint2d = 5002,
    kShort = 5003,
    kText = 5005,
    kObjectId = 5006,
    kPoint3d = 5009,
    kLong = 5010,
    kNormal = 5100, ///< Result of a call that succeeded.
    kError = -5001, ///< Result of a call that failed.
};
}

/// One typed value, and the next. A buffer may stand on the stack; then its text points at the caller's own, and
/// neither is freed. Buffers and texts made by zvutNewRb(), zvutNewString() and the kernel's readers are freed by
/// zvutRelRb(), the whole chain with its texts.
struct ZV_EXPORT ZvResBuf
{
    ZvResBuf *rbnext = nullptr; ///< The next of the chain; null at its end.
    int restype = ZvRes::kNone; ///< One of ZvRes, or a group code: tells which member counts.
    /// The value; the member is that of the type.
    union Value {
        short rint; ///< kShort
        int rlong; ///< kLong
        double rreal; ///< kReal
        double rpoint[3]; ///< kPoint2d and kPoint3d
        wchar_t *rstring; ///< Null counts as empty.
        std::uint64_t rid; ///< kObjectId
    } resval = {}; ///< The value.

    /// The id of a buffer that holds one, the null id otherwise.
    ZvDbObjectId getObjectId() const;
    /// The same; null also when the id belongs to another database.
    ZvDbObjectId getObjectId(const ZvDbDatabase *database) const;
    /// Makes the buffer one of the type kObjectId.
    void setObjectId(ZvDbObjectId id);
    /// The text of a text type (5005, 1000 to 1009, group codes of texts), empty otherwise.
    ZvString text() const;
    /// The value of any number type, 0 otherwise.
    double number() const;
};

/// A zeroed buffer of this type. Texts start as null.
ZV_EXPORT ZvResBuf *zvutNewRb(int type);
/// Frees the chain with its texts; null: nothing. Returns ZvRes::kNormal.
ZV_EXPORT int zvutRelRb(ZvResBuf *chain);
/// A new copy of the text, to be freed by zvutDelString() or with the buffer it is put in. Null gives null.
ZV_EXPORT wchar_t *zvutNewString(const wchar_t *text);
/// Frees what zvutNewString() made; null: nothing.
ZV_EXPORT void zvutDelString(wchar_t *text);

#endif
