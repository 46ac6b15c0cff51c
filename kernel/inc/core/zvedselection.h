// SPDX-License-Identifier: MIT
#ifndef ZVEDSELECTION_H
#define ZVEDSELECTION_H

#include "base/zvarray.h"
#include "base/zvge3d.h"
#include "db/zvdbobjectid.h"

#include <vector>

// Selection sets are known by a name of two words; two zero words are no set. Results are ZvRes::kNormal on success.

/// The zero name gives 0; an unknown name fails.
ZV_EXPORT int zvedSSLength(const long name[2], long &length);
/// The entity name at \a index, from 0, in order of selection. Erased members are given like the others.
ZV_EXPORT int zvedSSName(const long name[2], long index, long entityName[2]);
/// A new set of these entities; the caller frees it. Members are those of one database; doubles are left out.
ZV_EXPORT int zvedSSNew(const ZvArray<ZvDbObjectId> &ids, long name[2]);
/// A set that was made by zvedSSNew(). Freeing the pick-first set of a document is refused.
ZV_EXPORT int zvedSSFree(long name[2]);
/// All ids of a set in one call; empty for the zero name and an unknown one.
ZV_EXPORT const std::vector<ZvDbObjectId> &zvedSSIds(const long name[2]);

/// The live pick-first set of a document, changed through it. Every change raises pickfirstModified() once, a change
/// that leaves the set as it was none.
class ZV_EXPORT ZvEdSelectionHolder
{
public:
    ZvEdSelectionHolder();
    ~ZvEdSelectionHolder();
    ZvEdSelectionHolder(const ZvEdSelectionHolder &) = delete;
    ZvEdSelectionHolder &operator=(const ZvEdSelectionHolder &) = delete;

    /// Name of the set; it stays good while the document lives. Two zero words while it is empty.
    void pickFirst(long name[2]) const;
    /// The members in order of selection; erased ones stay until purge().
    const std::vector<ZvDbObjectId> &ids() const;
    /// Whether the entity is a member.
    bool contains(ZvDbObjectId id) const;
    /// Erased entities and those on layers that are off or frozen are left out of what is set or added.
    void set(const std::vector<ZvDbObjectId> &ids);
    /// Members that are there already, or that are none, make no difference.
    void add(const std::vector<ZvDbObjectId> &ids);
    void remove(const std::vector<ZvDbObjectId> &ids);
    /// Empties the set.
    void clear();
    /// Drops erased members; raises the notice when there were any.
    void purge();
    /// Rises with every change.
    std::uint64_t changeStamp() const;

private:
    struct Private;
    Private *d;
};

#endif
