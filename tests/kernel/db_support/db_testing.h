// SPDX-License-Identifier: MIT
#pragma once

#include "base/zvlog.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

inline void PrintTo(const ZvString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const ZvDbObjectId &id, std::ostream *out)
{
    *out << "id " << (id.asInt64() >> 32) << ':' << id.index();
}

namespace db_testing {

/*! Writes down what it is told of a database. */
class Listener : public ZvStaticRxObject<ZvDbDatabaseReactor>
{
public:
    /*! Called with every event after it was written down. */
    std::function<void(const std::string &event, const ZvDbObject *object)> hook;
    std::vector<std::string> events;

    std::vector<std::string> take() { return std::move(events); }

    void objectAppended(const ZvDbDatabase *, const ZvDbObject *object) override { note("appended", object); }
    void objectModified(const ZvDbDatabase *, const ZvDbObject *object) override
    {
        EXPECT_TRUE(object->isModified());
        note("modified", object);
    }
    void objectErased(const ZvDbDatabase *, const ZvDbObject *object, bool erased) override
    {
        note(erased ? "erased" : "unerased", object);
    }
    void headerVariableChanged(const ZvDbDatabase *, const ZvString &name) override
    {
        note("variable " + name.toStdString(), nullptr);
    }
    void databaseToBeDestroyed(const ZvDbDatabase *) override { note("dying", nullptr); }

private:
    void note(const std::string &what, const ZvDbObject *object)
    {
        std::string event = what;
        if (object)
            event += " " + describe(object);
        events.push_back(event);
        if (hook)
            hook(event, object);
    }
    static std::string describe(const ZvDbObject *object)
    {
        std::string text = object->fileName();
        if (const ZvDbSymbolTable *table = zvrxCast<ZvDbSymbolTable>(object))
            text += std::string(" ") + table->tableName();
        if (const ZvDbSymbolTableRecord *record = zvrxCast<ZvDbSymbolTableRecord>(object))
            text += " " + record->name().toStdString();
        return text;
    }
};

/*! Counts broken assumptions instead of printing them. */
class AssertionCount
{
public:
    AssertionCount()
    {
        texts().clear();
        m_before = zvSetAssertHandler([](const char *text, const char *, int) { texts().push_back(text); });
    }
    ~AssertionCount() { zvSetAssertHandler(m_before); }
    int count() const { return int(texts().size()); }

private:
    static std::vector<std::string> &texts()
    {
        static std::vector<std::string> list;
        return list;
    }
    ZvAssertHandler m_before;
};

inline ZvDbObjectId addLayer(ZvDbDatabase &database, const ZvString &name)
{
    ZvDbObjectPointer<ZvDbLayerTable> table(database.layerTableId(), ZvDb::kForWrite);
    ZvDbLayerTableRecord *layer = new ZvDbLayerTableRecord;
    layer->setName(name);
    ZvDbObjectId id;
    if (table->add(layer, id) != Zv::eOk) {
        delete layer;
        return ZvDbObjectId();
    }
    layer->close();
    return id;
}

inline ZvDbObjectId addLine(ZvDbDatabase &database, double x = 0.0)
{
    ZvDbObjectId id;
    database.appendEntity(new ZvDbLine(ZvGePoint3d(x, 0.0), ZvGePoint3d(x, 10.0)), database.currentSpaceId(), id);
    return id;
}

/*! Opens for write, changes, closes. */
template <class T, class F> void edit(ZvDbObjectId id, F change)
{
    ZvDbObjectPointer<T> object(id, ZvDb::kForWrite);
    ASSERT_TRUE(bool(object)) << object.openStatus();
    change(*object);
}

inline void erase(ZvDbObjectId id, bool erasing = true)
{
    ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForWrite, true);
    ASSERT_TRUE(bool(object));
    EXPECT_EQ(object->erase(erasing), Zv::eOk);
}

inline ZvCmColor colorOf(ZvDbObjectId layer)
{
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    return record ? record->color() : ZvCmColor();
}

inline ZvCmColor index(int number)
{
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(number));
    return color;
}

inline void paint(ZvDbObjectId layer, int number)
{
    edit<ZvDbLayerTableRecord>(layer, [&](ZvDbLayerTableRecord &record) { record.setColor(index(number)); });
}

/*! A new drawing, in which no test leaves an object open. */
class DatabaseTest : public testing::Test
{
protected:
    ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbDatabase &db = *database;

    void TearDown() override
    {
        if (database) {
            EXPECT_EQ(db.openObjectCount(), 0);
        }
        EXPECT_EQ(zvdbOpenObjectCount(), 0);
    }
};

using Events = std::vector<std::string>;

} // namespace db_testing
