// SPDX-License-Identifier: MIT
#include "db/zvdbobjectid.h"

#include "zvdbdatabase_p.h"

bool ZvDbObjectId::isValid() const
{
    return ZvDbDatabasePrivate::of(*this) != nullptr;
}

bool ZvDbObjectId::isErased() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(*this);
    return !database || database->stubs[index()].isErased();
}

ZvDbDatabase *ZvDbObjectId::database() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(*this);
    return database ? &database->q : nullptr;
}

const ZvRxClass *ZvDbObjectId::objectClass() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(*this);
    return database ? database->classAt(index()).descriptor : nullptr;
}

std::uint64_t ZvDbObjectId::handle() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(*this);
    return database ? database->stubs[index()].handle : 0;
}

Zv::ErrorStatus zvdbGetObjectId(ZvDbObjectId &id, const long entityName[2])
{
    id = entityName ? ZvDbObjectId::fromInt64(std::uint64_t(entityName[0])) : ZvDbObjectId();
    if (id.isNull())
        return Zv::eNullObjectId;
    if (id.isValid())
        return Zv::eOk;
    id = ZvDbObjectId();
    return Zv::eNoDatabase;
}

void zvdbGetEntityName(long entityName[2], ZvDbObjectId id)
{
    // The second word tells a name from a selection name, which counts up in its first word alone.
    entityName[0] = long(id.asInt64());
    entityName[1] = id.isNull() ? 0 : 1;
}
