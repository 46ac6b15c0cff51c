// SPDX-License-Identifier: MIT
#ifndef ZVDBREACTOR_H
#define ZVDBREACTOR_H

#include "base/zvrxobject.h"
#include "base/zvstring.h"

class ZvDbDatabase;
class ZvDbObject;

/// Listens to a database. The objects passed are good for the time of the call, closed, and may be opened for read in
/// it. The order of the first three operations is binding.
class ZV_EXPORT ZvDbDatabaseReactor : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbDatabaseReactor)
public:
    /// A new object was closed for the first time, or its creation was redone.
    virtual void objectAppended(const ZvDbDatabase *database, const ZvDbObject *object);
    /// The write of an object ended with a change; its isModified() is true. Also under undo and redo.
    virtual void objectModified(const ZvDbDatabase *database, const ZvDbObject *object);
    /// Erased, or un-erased with false.
    virtual void objectErased(const ZvDbDatabase *database, const ZvDbObject *object, bool erased);
    /// One of the drawing's variables was set, by whatever route.
    virtual void headerVariableChanged(const ZvDbDatabase *database, const ZvString &name);
    /// The database is about to die; it drops its reactors by itself.
    virtual void databaseToBeDestroyed(const ZvDbDatabase *database);
};

/// Listens to the layout manager.
class ZV_EXPORT ZvDbLayoutManagerReactor : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbLayoutManagerReactor)
public:
    /// Another layout of \a database became current.
    virtual void layoutBecameCurrent(const ZvDbDatabase *database, const ZvString &layoutName);
};

#endif
