// SPDX-License-Identifier: MIT
#ifndef UNDOSTEP_H
#define UNDOSTEP_H

#include "db/zvdbdatabase.h"

/// What is written in its scope is one step of undo. It holds the drawing.
class UndoStep
{
public:
    UndoStep(ZvDbDatabase &database, const char *name) : m_database(&database) { database.beginUndoStep(name); }
    ~UndoStep() { m_database->endUndoStep(); }
    UndoStep(const UndoStep &) = delete;
    UndoStep &operator=(const UndoStep &) = delete;

private:
    ZvDbDatabasePtr m_database;
};

#endif
