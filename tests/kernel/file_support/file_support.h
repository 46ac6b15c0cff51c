// SPDX-License-Identifier: MIT
#pragma once

#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "dxf_store.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// A tag as its meaning: numbers by value, text by its bytes.
struct FileTag
{
    int code = 0;
    std::string value;
    bool operator==(const FileTag &o) const { return code == o.code && value == o.value; }
};
std::ostream &operator<<(std::ostream &out, const FileTag &tag);

/// Names of the samples and, where their folder is present, of the real drawings; sorted.
std::vector<std::string> drawingNames();
std::string drawingPath(const std::string &name);
std::string readAll(const std::string &path);
void writeAll(const std::string &path, const std::string &bytes);

/// A folder of the test's own, removed with it.
class Folder
{
public:
    Folder();
    ~Folder();
    std::string file(const std::string &name) const { return m_path + "/" + name; }
    const std::string &path() const { return m_path; }

private:
    std::string m_path;
};

/// Reads bytes into a new drawing; null on failure.
ZvDbDatabasePtr readDrawing(const std::string &bytes, ZvDbFileReport *report = nullptr);
/// The bytes that saving gives.
std::string saveDrawing(ZvDbDatabase &database, ZvDbFileReport *report = nullptr);

/// All tags of a file, HEADER variables among them.
std::vector<FileTag> tagsOf(const std::string &bytes);

/// The tags that stand in one list and not in the other, by the shortest way from one to the other.
struct TagDifference
{
    std::vector<FileTag> removed;
    std::vector<FileTag> added;
};
TagDifference difference(const std::vector<FileTag> &before, const std::vector<FileTag> &after);
TagDifference difference(const std::string &before, const std::string &after);
std::string describe(const TagDifference &difference);

/// Opens an object for write and lets \a change change it.
template <class T> bool change(ZvDbObjectId id, const std::function<void(T &)> &change)
{
    ZvDbObjectPointer<T> object(id, ZvDb::kForWrite);
    if (!object)
        return false;
    change(*object);
    return true;
}

/// All entities of a block that are not erased.
std::vector<ZvDbObjectId> entitiesOf(ZvDbObjectId block);
/// All records of a table that are not erased.
std::vector<ZvDbObjectId> recordsOf(ZvDbObjectId table);

/// Adds a record to a table.
template <class Table, class Record>
ZvDbObjectId addRecord(ZvDbDatabase &database, const ZvString &name, const std::function<void(Record &)> &set = {})
{
    Table *table = nullptr;
    EXPECT_EQ(database.getSymbolTable(table, ZvDb::kForWrite), Zv::eOk);
    Record *record = new Record;
    record->setName(name);
    ZvDbObjectId id;
    EXPECT_EQ(table->add(record, id), Zv::eOk);
    if (set)
        set(*record);
    record->close();
    table->close();
    return id;
}

/// Adds an object to a dictionary.
template <class Object> ZvDbObjectId addEntry(ZvDbObjectId dictionary, const ZvString &name)
{
    ZvDbObjectId id;
    ZvDbObjectPointer<ZvDbDictionary> entries(dictionary, ZvDb::kForWrite);
    EXPECT_TRUE(entries);
    Object *object = new Object;
    if (entries && entries->setAt(name, object, id) == Zv::eOk)
        object->close();
    return id;
}

/// Everything that the property controls can set without a selection, as one step of undo: each gets an object of its
/// own, called "Picked ...".
void changeSettings(ZvDbDatabase &database);

/// The tags as a text file has them, for tests that write their own drawings.
std::string text(std::initializer_list<std::pair<int, const char *>> tags);
