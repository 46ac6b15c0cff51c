// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include <algorithm>

using namespace db_testing;

namespace {

class Notices : public DatabaseTest
{
protected:
    Notices() { db.addReactor(&listener); }
    ~Notices() override
    {
        if (database)
            db.removeReactor(&listener);
    }
    void SetUp() override { listener.take(); }

    Listener listener;
    ZvDbObjectId layer = addLayer(db, L"Walls");
};

} // namespace

TEST_F(Notices, appendedAtTheFirstClose)
{
    ZvDbObjectPointer<ZvDbLayerTable> table(db.layerTableId(), ZvDb::kForWrite);
    ZvDbLayerTableRecord *record = new ZvDbLayerTableRecord;
    record->setName(L"Doors");
    ZvDbObjectId id;
    ASSERT_EQ(table->add(record, id), Zv::eOk);
    record->setColor(index(1));
    EXPECT_TRUE(listener.events.empty());
    record->close();
    EXPECT_EQ(listener.take(), Events{"appended LAYER Doors"})
        << "what is set before the first close is no modification";
    table.close();
    EXPECT_EQ(listener.take(), Events{"modified TABLE LAYER"});
}

TEST_F(Notices, modifiedOnceAClose)
{
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) {
        record.setColor(index(1));
        record.setIsOff(true);
        record.setIsLocked(true);
    });
    EXPECT_EQ(listener.take(), Events{"modified LAYER Walls"});
}

TEST_F(Notices, nothingForAWriteThatChangedNothing)
{
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsFrozen(record.isFrozen()); });
    EXPECT_TRUE(listener.events.empty());
}

TEST_F(Notices, theObjectIsReadableInItsNotice)
{
    int read = 0;
    listener.hook = [&](const std::string &, const ZvDbObject *object) {
        ZvDbObjectPointer<ZvDbLayerTableRecord> record(object->objectId(), ZvDb::kForRead);
        EXPECT_TRUE(bool(record));
        EXPECT_TRUE(record && record->isModified());
        read += bool(record);
    };
    paint(layer, 3);
    EXPECT_EQ(read, 1);
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    EXPECT_FALSE(record->isModified()) << "only during the notice";
}

TEST_F(Notices, erasedAndUnerased)
{
    erase(layer);
    EXPECT_EQ(listener.take(), Events{"erased LAYER Walls"});
    erase(layer, false);
    EXPECT_EQ(listener.take(), Events{"unerased LAYER Walls"});
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) {
        record.erase();
        record.erase(false);
    });
    EXPECT_TRUE(listener.events.empty());
}

TEST_F(Notices, undoAndRedoTellWhatTheyChange)
{
    db.beginUndoStep(L"STEP");
    paint(layer, 1);
    paint(layer, 2);
    const ZvDbObjectId line = addLine(db);
    db.setCecolor(index(4));
    db.endUndoStep();
    listener.take();

    db.undo();
    EXPECT_EQ(listener.take(), (Events{"erased LINE", "modified LAYER Walls", "variable CECOLOR"}));
    EXPECT_TRUE(line.isErased());
    db.redo();
    EXPECT_EQ(listener.take(), (Events{"modified LAYER Walls", "appended LINE", "variable CECOLOR"}));

    erase(line);
    listener.take();
    db.undo();
    EXPECT_EQ(listener.take(), Events{"unerased LINE"});
    db.redo();
    EXPECT_EQ(listener.take(), Events{"erased LINE"});
}

TEST_F(Notices, anAbortedFrameTellsWhatGoesBack)
{
    db.beginFrame();
    paint(layer, 2);
    listener.take();
    db.abortFrame();
    EXPECT_EQ(listener.take(), Events{"modified LAYER Walls"});
}

TEST_F(Notices, addingTwiceKeepsOneAndRemovingAnAbsentOneIsNothing)
{
    Listener absent;
    db.removeReactor(&absent);
    db.removeReactor(nullptr);
    db.addReactor(nullptr);
    db.addReactor(&listener);
    paint(layer, 1);
    EXPECT_EQ(listener.take().size(), 1u);
    db.removeReactor(&listener);
    paint(layer, 2);
    EXPECT_TRUE(listener.events.empty());
}

TEST_F(Notices, receiversComeAndGoDuringADelivery)
{
    Listener second;
    Listener third;
    db.addReactor(&second);
    listener.hook = [&](const std::string &, const ZvDbObject *) {
        db.removeReactor(&second);
        db.removeReactor(&listener);
        db.addReactor(&third);
    };
    paint(layer, 1);
    EXPECT_EQ(listener.take().size(), 1u);
    EXPECT_TRUE(second.events.empty()) << "removed before its turn";
    EXPECT_TRUE(third.events.empty()) << "added during the delivery";
    paint(layer, 2);
    EXPECT_TRUE(listener.events.empty());
    EXPECT_EQ(third.take().size(), 1u);
    db.removeReactor(&third);
}

TEST_F(Notices, aReceiverMayWriteInItsNotice)
{
    Listener last;
    db.addReactor(&last);
    const ZvDbObjectId other = addLayer(db, L"Doors");
    last.take();
    bool once = false;
    listener.hook = [&](const std::string &, const ZvDbObject *object) {
        if (once)
            return;
        once = true;
        paint(other, 5);
        paint(object->objectId(), 6); // the very object that the notice is about
    };
    paint(layer, 1);
    // "last" hears of the inner changes first, and of the outer one with isModified() still true, as it expects itself.
    EXPECT_EQ(last.take(), (Events{"modified LAYER Doors", "modified LAYER Walls", "modified LAYER Walls"}));
    EXPECT_EQ(colorOf(layer), index(6));
    db.removeReactor(&last);
}

TEST_F(Notices, theLastReferenceMayGoDuringADelivery)
{
    listener.hook = [&](const std::string &event, const ZvDbObject *) {
        if (event != "dying")
            database = ZvDbDatabasePtr();
    };
    paint(layer, 1);
    EXPECT_EQ(listener.take(), (Events{"modified LAYER Walls", "dying"}));
    EXPECT_FALSE(layer.isValid());
}

TEST_F(Notices, aDyingDatabaseSaysSo)
{
    database = ZvDbDatabasePtr();
    EXPECT_EQ(listener.take(), Events{"dying"});
}

TEST_F(Notices, stampsRiseWithWhatTheyStandFor)
{
    const ZvDbObjectId linetypes = db.linetypeTableId();
    const ZvDbObjectId layers = db.layerTableId();
    const std::uint64_t all = db.changeStamp();
    const std::uint64_t ofLinetypes = db.changeStamp(linetypes);
    const std::uint64_t ofLayers = db.changeStamp(layers);
    {
        ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    }
    EXPECT_EQ(db.changeStamp(), all) << "reading changes nothing";
    paint(layer, 1);
    EXPECT_GT(db.changeStamp(), all);
    EXPECT_GT(db.changeStamp(layers), ofLayers);
    EXPECT_EQ(db.changeStamp(linetypes), ofLinetypes);
    const std::uint64_t painted = db.changeStamp(layers);
    db.undo();
    EXPECT_GT(db.changeStamp(layers), painted);
    const std::uint64_t undone = db.changeStamp(layers);
    erase(layer);
    EXPECT_GT(db.changeStamp(layers), undone);
    const std::uint64_t erased = db.changeStamp(layers);
    addLine(db);
    db.setCecolor(index(1));
    EXPECT_EQ(db.changeStamp(layers), erased);
    EXPECT_EQ(db.changeStamp(ZvDbObjectId()), 0u);
}

TEST_F(Notices, theDrawingKnowsThatItWasChanged)
{
    const ZvDbDatabasePtr fresh = ZvDbDatabase::create();
    EXPECT_FALSE(fresh->isModified());
    fresh->setCecolor(index(1));
    EXPECT_TRUE(fresh->isModified());
    fresh->setModified(false);
    EXPECT_FALSE(fresh->isModified());
}
