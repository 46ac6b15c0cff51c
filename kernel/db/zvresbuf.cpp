// SPDX-License-Identifier: MIT
#include "db/zvresbuf.h"

#include "db/zvdbdatabase.h"

#include <cwchar>

namespace {

enum class Kind { None, Text, Real, Point, Short, Long, Id };

/// How the value of a type is kept: the kernel's own types, and the group codes of drawing files.
Kind kindOf(int type)
{
    struct Range
    {
        int first;
        int last;
        Kind kind;
    };
    static const Range ranges[] = {
        {0, 9, Kind::Text},
        {10, 18, Kind::Point},
        {38, 59, Kind::Real},
        {60, 79, Kind::Short},
        {90, 99, Kind::Long},
        {100, 102, Kind::Text},
        {105, 105, Kind::Text},
        {110, 112, Kind::Point},
        {140, 149, Kind::Real},
        {170, 179, Kind::Short},
        {210, 210, Kind::Point},
        {270, 289, Kind::Short},
        {290, 299, Kind::Short},
        {300, 309, Kind::Text},
        {310, 319, Kind::Text},
        {320, 369, Kind::Id},
        {370, 389, Kind::Short},
        {390, 399, Kind::Id},
        {400, 409, Kind::Short},
        {410, 419, Kind::Text},
        {420, 429, Kind::Long},
        {430, 439, Kind::Text},
        {440, 459, Kind::Long},
        {1000, 1005, Kind::Text},
        {1010, 1013, Kind::Point},
        {1040, 1042, Kind::Real},
        {1070, 1070, Kind::Short},
        {1071, 1071, Kind::Long},
        {ZvRes::kReal, ZvRes::kReal, Kind::Real},
        {ZvRes::kPoint2d, ZvRes::kPoint2d, Kind::Point},
        {ZvRes::kShort, ZvRes::kShort, Kind::Short},
        {ZvRes::kText, ZvRes::kText, Kind::Text},
        {ZvRes::kObjectId, ZvRes::kObjectId, Kind::Id},
        {ZvRes::kPoint3d, ZvRes::kPoint3d, Kind::Point},
        {ZvRes::kLong, ZvRes::kLong, Kind::Long},
    };
    for (const Range &range : ranges) {
        if (type >= range.first && type <= range.last)
            return range.kind;
    }
    return Kind::None;
}

} // namespace

ZvDbObjectId ZvResBuf::getObjectId() const
{
    return kindOf(restype) == Kind::Id ? ZvDbObjectId::fromInt64(resval.rid) : ZvDbObjectId();
}

ZvDbObjectId ZvResBuf::getObjectId(const ZvDbDatabase *database) const
{
    const ZvDbObjectId id = getObjectId();
    return database && id.database() == database ? id : ZvDbObjectId();
}

void ZvResBuf::setObjectId(ZvDbObjectId id)
{
    if (kindOf(restype) != Kind::Id)
        restype = ZvRes::kObjectId;
    resval.rid = id.asInt64();
}

ZvString ZvResBuf::text() const
{
    if (kindOf(restype) != Kind::Text || !resval.rstring)
        return ZvString();
    return ZvString(resval.rstring);
}

double ZvResBuf::number() const
{
    switch (kindOf(restype)) {
    case Kind::Real:
        return resval.rreal;
    case Kind::Short:
        return resval.rint;
    case Kind::Long:
        return resval.rlong;
    default:
        return 0.0;
    }
}

ZvResBuf *zvutNewRb(int type)
{
    ZvResBuf *buffer = new ZvResBuf;
    buffer->restype = type;
    return buffer;
}

int zvutRelRb(ZvResBuf *chain)
{
    while (chain) {
        ZvResBuf *next = chain->rbnext;
        if (kindOf(chain->restype) == Kind::Text)
            zvutDelString(chain->resval.rstring);
        delete chain;
        chain = next;
    }
    return ZvRes::kNormal;
}

wchar_t *zvutNewString(const wchar_t *text)
{
    if (!text)
        return nullptr;
    const std::size_t size = std::wcslen(text) + 1;
    wchar_t *copy = new wchar_t[size];
    std::wmemcpy(copy, text, size);
    return copy;
}

void zvutDelString(wchar_t *text)
{
    delete[] text;
}
