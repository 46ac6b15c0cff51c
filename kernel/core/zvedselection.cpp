// SPDX-License-Identifier: MIT
#include "core/zvedselection.h"

#include "core/zveditor.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"
#include "db/zvresbuf.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace {

/// A set and the means to find members in it.
struct SelectionSet
{
    std::vector<ZvDbObjectId> ids;
    std::unordered_set<ZvDbObjectId> members;
    bool isPickFirst = false;
};

/// Sets by the number in the first word of their names. Numbers are not used twice.
std::unordered_map<long, std::unique_ptr<SelectionSet>> &sets()
{
    static std::unordered_map<long, std::unique_ptr<SelectionSet>> all;
    return all;
}

long newSet(SelectionSet *&set)
{
    static long last = 0;
    set = new SelectionSet;
    sets()[++last].reset(set);
    return last;
}

/// The second word marks a name as ours.
constexpr long kNameMark = 0x53535A56;

SelectionSet *find(const long name[2])
{
    if (!name || name[1] != kNameMark)
        return nullptr;
    const auto it = sets().find(name[0]);
    return it == sets().end() ? nullptr : it->second.get();
}

bool isZeroName(const long name[2])
{
    return !name || (name[0] == 0 && name[1] == 0);
}

/// Whether a user could have picked it: there, and on a layer that is shown.
bool isSelectable(ZvDbObjectId id)
{
    if (id.isErased())
        return false;
    ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
    if (!entity)
        return false;
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(entity->layerId(), ZvDb::kForRead);
    return !layer || !(layer->isOff() || layer->isFrozen());
}

}

int zvedSSLength(const long name[2], long &length)
{
    length = 0;
    if (isZeroName(name))
        return ZvRes::kNormal;
    const SelectionSet *set = find(name);
    if (!set)
        return ZvRes::kError;
    length = long(set->ids.size());
    return ZvRes::kNormal;
}

int zvedSSName(const long name[2], long index, long entityName[2])
{
    const SelectionSet *set = find(name);
    if (!set || index < 0 || index >= long(set->ids.size()))
        return ZvRes::kError;
    zvdbGetEntityName(entityName, set->ids[std::size_t(index)]);
    return ZvRes::kNormal;
}

int zvedSSNew(const ZvArray<ZvDbObjectId> &ids, long name[2])
{
    SelectionSet *set = nullptr;
    name[0] = newSet(set);
    name[1] = kNameMark;
    for (const ZvDbObjectId &id : ids) {
        if (set->members.insert(id).second)
            set->ids.push_back(id);
    }
    return ZvRes::kNormal;
}

int zvedSSFree(long name[2])
{
    const SelectionSet *set = find(name);
    if (!set || set->isPickFirst)
        return ZvRes::kError;
    sets().erase(name[0]);
    name[0] = name[1] = 0;
    return ZvRes::kNormal;
}

const std::vector<ZvDbObjectId> &zvedSSIds(const long name[2])
{
    static const std::vector<ZvDbObjectId> none;
    const SelectionSet *set = find(name);
    return set ? set->ids : none;
}

struct ZvEdSelectionHolder::Private
{
    long number = 0;
    SelectionSet *set = nullptr;
    std::uint64_t stamp = 0;

    void changed()
    {
        ++stamp;
        if (ZvEditor *editor = zvedEditor())
            editor->firePickfirstModified();
    }
};

ZvEdSelectionHolder::ZvEdSelectionHolder() : d(new Private)
{
    d->number = newSet(d->set);
    d->set->isPickFirst = true;
}

ZvEdSelectionHolder::~ZvEdSelectionHolder()
{
    sets().erase(d->number);
    delete d;
}

void ZvEdSelectionHolder::pickFirst(long name[2]) const
{
    const bool empty = d->set->ids.empty();
    name[0] = empty ? 0 : d->number;
    name[1] = empty ? 0 : kNameMark;
}

const std::vector<ZvDbObjectId> &ZvEdSelectionHolder::ids() const
{
    return d->set->ids;
}

bool ZvEdSelectionHolder::contains(ZvDbObjectId id) const
{
    return d->set->members.count(id) != 0;
}

void ZvEdSelectionHolder::set(const std::vector<ZvDbObjectId> &ids)
{
    SelectionSet next;
    for (const ZvDbObjectId &id : ids) {
        if (isSelectable(id) && next.members.insert(id).second)
            next.ids.push_back(id);
    }
    if (next.ids == d->set->ids)
        return;
    d->set->ids = std::move(next.ids);
    d->set->members = std::move(next.members);
    d->changed();
}

void ZvEdSelectionHolder::add(const std::vector<ZvDbObjectId> &ids)
{
    const std::size_t before = d->set->ids.size();
    for (const ZvDbObjectId &id : ids) {
        if (isSelectable(id) && d->set->members.insert(id).second)
            d->set->ids.push_back(id);
    }
    if (d->set->ids.size() != before)
        d->changed();
}

void ZvEdSelectionHolder::remove(const std::vector<ZvDbObjectId> &ids)
{
    const std::size_t before = d->set->ids.size();
    for (const ZvDbObjectId &id : ids)
        d->set->members.erase(id);
    if (d->set->members.size() == before)
        return;
    auto &list = d->set->ids;
    list.erase(std::remove_if(list.begin(), list.end(), [this](ZvDbObjectId id) { return !contains(id); }), list.end());
    d->changed();
}

void ZvEdSelectionHolder::clear()
{
    set({});
}

void ZvEdSelectionHolder::purge()
{
    std::vector<ZvDbObjectId> erased;
    for (const ZvDbObjectId &id : d->set->ids) {
        if (id.isErased())
            erased.push_back(id);
    }
    remove(erased);
}

std::uint64_t ZvEdSelectionHolder::changeStamp() const
{
    return d->stamp;
}
