// SPDX-License-Identifier: MIT
#include "db/zvdbreactor.h"

ZVRX_DEFINE_MEMBERS(ZvDbDatabaseReactor, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvDbLayoutManagerReactor, ZvRxObject)

void ZvDbDatabaseReactor::objectAppended(const ZvDbDatabase *, const ZvDbObject *) { }
void ZvDbDatabaseReactor::objectModified(const ZvDbDatabase *, const ZvDbObject *) { }
void ZvDbDatabaseReactor::objectErased(const ZvDbDatabase *, const ZvDbObject *, bool) { }
void ZvDbDatabaseReactor::headerVariableChanged(const ZvDbDatabase *, const ZvString &) { }
void ZvDbDatabaseReactor::databaseToBeDestroyed(const ZvDbDatabase *) { }

void ZvDbLayoutManagerReactor::layoutBecameCurrent(const ZvDbDatabase *, const ZvString &) { }
