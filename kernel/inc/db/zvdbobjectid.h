// SPDX-License-Identifier: MIT
#ifndef ZVDBOBJECTID_H
#define ZVDBOBJECTID_H

#include "base/zvexport.h"
#include "base/zvrxclass.h"

#include <cstdint>
#include <functional>

class ZvDbDatabase;

/// Identity of an object: a 64-bit value made of the database's number and the object's position in it. It finds the
/// object's record without a search. Ids of one object are equal for its whole life, erased or not; an id of a
/// database that is gone is not valid and harmless.
class ZV_EXPORT ZvDbObjectId
{
public:
    ZvDbObjectId() = default;
    /// The id of a value that asInt64() gave.
    static ZvDbObjectId fromInt64(std::uint64_t value)
    {
        ZvDbObjectId id;
        id.m_value = value;
        return id;
    }
    /// The id as a number, for property bags and streams.
    std::uint64_t asInt64() const { return m_value; }
    /// The id of nothing.
    bool isNull() const { return m_value == 0; }
    /// Not null, and known to a database that lives. An erased id may still be valid.
    bool isValid() const;
    /// True for an erased object; also for an id that is not valid.
    bool isErased() const;
    /// Null for an id that is not valid.
    ZvDbDatabase *database() const;
    /// The object's class without opening it; null for an id that is not valid.
    const ZvRxClass *objectClass() const;
    /// The handle in the drawing file; 0 for an id that is not valid.
    std::uint64_t handle() const;
    /// Dense position in the database, 1 for the first object; 0 for the null id.
    std::uint32_t index() const { return std::uint32_t(m_value); }
    /// By the number; the order has no further meaning.
    bool operator==(const ZvDbObjectId &o) const { return m_value == o.m_value; }
    bool operator!=(const ZvDbObjectId &o) const { return m_value != o.m_value; }
    bool operator<(const ZvDbObjectId &o) const { return m_value < o.m_value; }

private:
    std::uint64_t m_value = 0; // database number in the upper, index in the lower 32 bits
};

namespace std {
/// Lets ids be keys of the standard's hash tables.
template<>
struct hash<ZvDbObjectId>
{
    /// Spreads the dense positions over the whole range.
    size_t operator()(const ZvDbObjectId &id) const { return size_t(id.asInt64() * 0x9E3779B97F4A7C15ull); }
};
}

#endif
