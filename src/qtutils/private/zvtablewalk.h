// SPDX-License-Identifier: MIT
#ifndef ZVTABLEWALK_H
#define ZVTABLEWALK_H

#include "db/zvdbsymboltable.h"

#include <memory>

// Walks over symbol tables. A table is closed before its walk begins, and each record before the next is opened.

/// Null where the table cannot be opened.
inline std::unique_ptr<ZvDbSymbolTableIterator> zvNewTableIterator(ZvDbObjectId tableId)
{
    ZvDbSymbolTableIterator *iterator = nullptr;
    const ZvDbObjectPointer<ZvDbSymbolTable> table(tableId, ZvDb::kForRead);
    if (table)
        table->newIterator(iterator, true, true);
    return std::unique_ptr<ZvDbSymbolTableIterator>(iterator);
}

/// Calls \a visit with the id of each record in table order, until it returns false.
template <class Visit> void zvWalkTable(ZvDbObjectId tableId, Visit visit)
{
    const auto iterator = zvNewTableIterator(tableId);
    if (!iterator)
        return;
    for (iterator->start(); !iterator->done(); iterator->step()) {
        if (!visit(iterator->getRecordId()))
            return;
    }
}

/// Calls \a visit with each record that can be opened, until it returns false.
template <class Record, class Visit> void zvWalkRecords(ZvDbObjectId tableId, Visit visit)
{
    zvWalkTable(tableId, [&visit](ZvDbObjectId id) {
        const ZvDbObjectPointer<Record> record(id, ZvDb::kForRead);
        return !record || visit(*record);
    });
}

#endif
