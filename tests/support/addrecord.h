// SPDX-License-Identifier: MIT
#ifndef ADDRECORD_H
#define ADDRECORD_H

#include "db/zvdbdatabase.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbsymboltable.h"

/// Adds a record of this name to the drawing's table of its kind; the null id where the table does not take it.
template <class Table, class Record> ZvDbObjectId addRecord(ZvDbDatabase &drawing, const ZvString &name)
{
    Table *table = nullptr;
    ZvDbObjectId id;
    if (drawing.getSymbolTable(table, ZvDb::kForWrite) != Zv::eOk)
        return id;
    auto *record = new Record;
    record->setName(name);
    if (table->add(record, id) == Zv::eOk)
        record->close();
    else
        delete record;
    table->close();
    return id;
}

/// Adds an object to a dictionary under this name.
inline ZvDbObjectId addEntry(ZvDbObjectId dictionaryId, ZvDbObject *object, const ZvString &name)
{
    ZvDbObjectId id;
    const ZvDbObjectPointer<ZvDbDictionary> dictionary(dictionaryId, ZvDb::kForWrite);
    if (dictionary && dictionary->setAt(name, object, id) == Zv::eOk)
        object->close();
    else
        delete object;
    return id;
}

/// The record of this name, null where there is none.
template <class Table> ZvDbObjectId recordNamed(const ZvDbDatabase &drawing, const ZvString &name)
{
    Table *table = nullptr;
    ZvDbObjectId id;
    if (drawing.getSymbolTable(table, ZvDb::kForRead) == Zv::eOk) {
        id = table->getIdAt(name);
        table->close();
    }
    return id;
}

#endif
