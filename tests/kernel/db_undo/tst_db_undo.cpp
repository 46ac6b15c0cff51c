// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include <memory>
#include <random>
#include <sstream>

using namespace db_testing;

namespace {

class Undo : public DatabaseTest
{
protected:
    void SetUp() override { db.clearUndo(); }

    ZvDbObjectId layer = addLayer(db, L"Walls");
    int color() const { return colorOf(layer).colorIndex(); }
};

bool hasLayer(ZvDbDatabase &db, const wchar_t *name)
{
    ZvDbObjectPointer<ZvDbLayerTable> table(db.layerTableId(), ZvDb::kForRead);
    return table->has(name);
}

} // namespace

TEST_F(Undo, aWriteOutsideOfAnyStepIsOneOfItsOwn)
{
    EXPECT_FALSE(db.canUndo());
    paint(layer, 1);
    paint(layer, 2);
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(color(), 1);
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(color(), 7);
    EXPECT_FALSE(db.undo());
    EXPECT_TRUE(db.redo());
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(color(), 2);
    EXPECT_FALSE(db.redo());
}

TEST_F(Undo, anUnchangedWriteLeavesNoStep)
{
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) {
        EXPECT_EQ(record.setIsFrozen(record.isFrozen()), Zv::eOk);
        record.setColor(record.color());
        EXPECT_EQ(record.setName(record.name()), Zv::eOk);
        EXPECT_FALSE(record.isModified());
    });
    EXPECT_FALSE(db.canUndo());
    db.beginUndoStep(L"NOTHING");
    db.beginFrame();
    db.endFrame();
    db.endUndoStep();
    EXPECT_FALSE(db.canUndo());
}

TEST_F(Undo, aStepTakesEverythingBetweenItsEnds)
{
    db.beginUndoStep(L"PAINT");
    paint(layer, 1);
    const ZvDbObjectId other = addLayer(db, L"Doors");
    paint(other, 3);
    EXPECT_FALSE(db.canUndo()) << "a step is open";
    EXPECT_FALSE(db.undo());
    db.endUndoStep();
    EXPECT_EQ(db.undoName(), L"PAINT");
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(color(), 7);
    EXPECT_TRUE(other.isErased());
    EXPECT_FALSE(hasLayer(db, L"Doors"));
    EXPECT_EQ(db.redoName(), L"PAINT");
    EXPECT_EQ(db.undoName(), ZvString());
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(color(), 1);
    EXPECT_TRUE(hasLayer(db, L"Doors"));
    EXPECT_EQ(colorOf(other), index(3));
}

TEST_F(Undo, stepsNestAndTheOutermostMakesTheEntry)
{
    db.beginUndoStep(L"OUTER");
    db.beginUndoStep(L"INNER");
    paint(layer, 1);
    db.endUndoStep();
    paint(layer, 2);
    EXPECT_FALSE(db.canUndo());
    db.endUndoStep();
    EXPECT_EQ(db.undoName(), L"OUTER");
    db.undo();
    EXPECT_EQ(color(), 7);
    EXPECT_FALSE(db.canUndo());
}

TEST_F(Undo, anAbortedFramePutsBackWhatWasWrittenInIt)
{
    db.beginUndoStep(L"STEP");
    paint(layer, 1);
    db.beginFrame();
    EXPECT_EQ(db.frameDepth(), 1);
    paint(layer, 2);
    const ZvDbObjectId other = addLayer(db, L"Doors");
    db.setCecolor(index(5));
    db.abortFrame();
    EXPECT_EQ(db.frameDepth(), 0);
    EXPECT_EQ(color(), 1);
    EXPECT_TRUE(other.isErased());
    EXPECT_TRUE(db.cecolor().isByLayer());
    db.endUndoStep();
    db.undo();
    EXPECT_EQ(color(), 7);
    db.redo();
    EXPECT_EQ(color(), 1);
    EXPECT_FALSE(hasLayer(db, L"Doors"));
}

TEST_F(Undo, whatIsWrittenAfterAnAbortedFrameIsUndoneToo)
{
    db.beginUndoStep(L"STEP");
    db.beginFrame();
    paint(layer, 2);
    db.abortFrame();
    paint(layer, 3);
    db.endUndoStep();
    db.undo();
    EXPECT_EQ(color(), 7);
}

TEST_F(Undo, aFrameInsideAFramePutsNothingAheadOfItsBeginning)
{
    // The inner frame keeps the state for the outer one as well.
    db.beginFrame();
    db.beginFrame();
    paint(layer, 2);
    db.endFrame();
    paint(layer, 3);
    db.abortFrame();
    EXPECT_EQ(color(), 7);
}

TEST_F(Undo, framesNest)
{
    db.beginFrame();
    paint(layer, 1);
    db.beginFrame();
    paint(layer, 2);
    db.beginFrame();
    paint(layer, 3);
    db.endFrame();
    db.abortFrame();
    EXPECT_EQ(color(), 1);
    db.beginFrame();
    paint(layer, 4);
    db.endFrame();
    db.endFrame();
    EXPECT_EQ(color(), 4);
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(color(), 7);
    EXPECT_FALSE(db.canUndo());
}

TEST_F(Undo, aFrameThatBeginsWhileAnObjectIsOpenPutsItBackToThatMoment)
{
    {
        ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForWrite);
        record->setColor(index(1));
        db.beginFrame();
        record->setColor(index(2));
        db.abortFrame();
        EXPECT_EQ(record->color(), index(1));
        record->setIsLocked(true);
    }
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(color(), 7);
    EXPECT_FALSE(db.canUndo());
}

TEST_F(Undo, anObjectMadeInAnAbortedFrameIsGone)
{
    db.beginFrame();
    ZvDbObjectPointer<ZvDbBlockTableRecord> block(db.modelSpaceId(), ZvDb::kForWrite);
    ZvDbLine *line = new ZvDbLine;
    ZvDbObjectId id;
    ASSERT_EQ(block->appendEntity(line, id), Zv::eOk);
    db.abortFrame();
    EXPECT_TRUE(id.isErased());
    line->close();
    block.close();
    EXPECT_EQ(db.entityCount(), 0);
    EXPECT_FALSE(db.canUndo());
}

TEST_F(Undo, endsWithoutABeginningAreNothing)
{
    db.endFrame();
    db.abortFrame();
    db.endUndoStep();
    db.beginUndoStep(L"STEP");
    db.endFrame();
    paint(layer, 1);
    db.abortFrame();
    EXPECT_EQ(color(), 1);
    db.beginFrame();
    db.endUndoStep();
    EXPECT_EQ(db.frameDepth(), 0);
    EXPECT_EQ(db.undoName(), L"STEP");
}

TEST_F(Undo, aNewStepDropsWhatCouldBeRedone)
{
    paint(layer, 1);
    db.undo();
    EXPECT_TRUE(db.canRedo());
    paint(layer, 2);
    EXPECT_FALSE(db.canRedo());
    db.undo();
    EXPECT_EQ(color(), 7);
}

TEST_F(Undo, stepsOfOneKeyMerge)
{
    db.setUndoMergeKey(L"slider");
    paint(layer, 1);
    paint(layer, 2);
    paint(layer, 3);
    db.setUndoMergeKey(L"");
    paint(layer, 4);
    db.setUndoMergeKey(L"slider");
    paint(layer, 5);
    db.setUndoMergeKey(L"");
    db.undo();
    EXPECT_EQ(color(), 4);
    db.undo();
    EXPECT_EQ(color(), 3);
    db.undo();
    EXPECT_EQ(color(), 7);
    EXPECT_FALSE(db.canUndo());
    db.redo();
    EXPECT_EQ(color(), 3);
}

TEST_F(Undo, stepsOfOneKeyMergeOverAGapWithoutOthers)
{
    const auto paintMerged = [this](int color, const wchar_t *key) {
        const ZvDbDatabase::UndoMerge merge(db, key);
        paint(layer, color);
    };
    paintMerged(1, L"list");
    paintMerged(2, L"list");
    paint(layer, 3); // someone else's, with no key
    paintMerged(4, L"list");
    paintMerged(5, L"another list");
    paintMerged(6, L"");
    paintMerged(1, L"");
    for (const int before : {6, 5, 4, 3, 2, 7}) {
        EXPECT_TRUE(db.undo());
        EXPECT_EQ(color(), before);
    }
    EXPECT_FALSE(db.canUndo());
}

TEST_F(Undo, aMergedStepCanBeRedone)
{
    for (const int color : {1, 2, 3}) {
        const ZvDbDatabase::UndoMerge merge(db, L"list");
        paint(layer, color);
    }
    db.undo();
    EXPECT_EQ(color(), 7);
    db.redo();
    EXPECT_EQ(color(), 3);
    {
        const ZvDbDatabase::UndoMerge merge(db, L"list");
        paint(layer, 4); // what was undone and redone is whole
    }
    db.undo();
    EXPECT_EQ(color(), 3);
}

TEST_F(Undo, aMergeInsideAnotherPutsItsKeyBack)
{
    db.setUndoMergeKey(L"slider");
    paint(layer, 1);
    {
        const ZvDbDatabase::UndoMerge merge(db, L"list");
        paint(layer, 2);
    }
    paint(layer, 3);
    paint(layer, 4);
    db.setUndoMergeKey(L"");
    db.undo();
    EXPECT_EQ(color(), 2);
}

TEST_F(Undo, erasingAndBringingBack)
{
    const ZvDbObjectId line = addLine(db);
    db.clearUndo();
    erase(line);
    EXPECT_EQ(db.entityCount(), 0);
    db.undo();
    EXPECT_EQ(db.entityCount(), 1);
    EXPECT_FALSE(line.isErased());
    db.redo();
    EXPECT_TRUE(line.isErased());
}

TEST_F(Undo, entitiesAndTheirSharedProperties)
{
    const ZvDbObjectId id = addLine(db);
    db.clearUndo();
    edit<ZvDbLine>(id, [&](ZvDbLine &line) {
        line.setColor(index(2));
        line.setStartPoint(ZvGePoint3d(9, 9));
        line.setLayer(layer);
    });
    db.undo();
    {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
        EXPECT_TRUE(line->color().isByLayer());
        EXPECT_EQ(line->startPoint().x, 0.0);
        EXPECT_EQ(line->layerId(), db.layerZero());
    }
    db.redo();
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
    EXPECT_EQ(line->color(), index(2));
    EXPECT_EQ(line->startPoint().x, 9.0);
    EXPECT_EQ(line->layerId(), layer);
}

TEST_F(Undo, variables)
{
    db.setCecolor(index(3));
    db.setClayer(layer);
    db.setCelweight(ZvDb::kLnWt050);
    db.undo();
    EXPECT_EQ(db.celweight(), ZvDb::kLnWtByLayer);
    db.undo();
    EXPECT_EQ(db.clayer(), db.layerZero());
    db.undo();
    EXPECT_TRUE(db.cecolor().isByLayer());
    db.redo();
    EXPECT_EQ(db.cecolor(), index(3));
}

TEST_F(Undo, aRenamedRecordIsFoundUnderTheNameItHas)
{
    edit<ZvDbLayerTableRecord>(layer,
                               [](ZvDbLayerTableRecord &record) { EXPECT_EQ(record.setName(L"Mauern"), Zv::eOk); });
    EXPECT_TRUE(hasLayer(db, L"Mauern"));
    EXPECT_FALSE(hasLayer(db, L"Walls"));
    db.undo();
    EXPECT_TRUE(hasLayer(db, L"Walls"));
    EXPECT_FALSE(hasLayer(db, L"Mauern"));
    db.redo();
    EXPECT_TRUE(hasLayer(db, L"Mauern"));
}

TEST_F(Undo, clearForgetsAll)
{
    paint(layer, 1);
    paint(layer, 2);
    db.undo();
    db.clearUndo();
    EXPECT_FALSE(db.canUndo());
    EXPECT_FALSE(db.canRedo());
    EXPECT_EQ(color(), 1);
}

// ---- random work: everything undone is the beginning, everything redone the end

namespace {

/// The drawing in words, as far as anybody can see it.
class Snapshot
{
public:
    explicit Snapshot(ZvDbDatabase &database) : m_database(database) { }

    std::string take()
    {
        m_text.str("");
        layers();
        entities();
        dictionary(m_database.rootDictionaryId(), 0);
        settings();
        return m_text.str();
    }

private:
    void layers()
    {
        ZvDbObjectPointer<ZvDbLayerTable> table(m_database.layerTableId(), ZvDb::kForRead);
        ZvDbSymbolTableIterator *walk = nullptr;
        table->newIterator(walk);
        const std::unique_ptr<ZvDbSymbolTableIterator> iterator(walk);
        for (; !iterator->done(); iterator->step()) {
            ZvDbObjectPointer<ZvDbLayerTableRecord> record(iterator->getRecordId(), ZvDb::kForRead);
            m_text << "layer " << record->name().toStdString() << ' ' << record->color().color() << ' '
                   << record->flags() << ' ' << record->isOff() << ' ' << record->linetypeObjectId().index() << ' '
                   << int(record->transparency().alpha()) << ' ' << record->description().toStdString() << ' '
                   << (table->getIdAt(record->name()) == record->objectId()) << '\n';
        }
    }

    void entities()
    {
        ZvDbObjectPointer<ZvDbBlockTableRecord> block(m_database.modelSpaceId(), ZvDb::kForRead);
        m_text << "origin " << block->origin().x << '\n';
        ZvDbBlockTableRecordIterator *walk = nullptr;
        block->newIterator(walk);
        const std::unique_ptr<ZvDbBlockTableRecordIterator> iterator(walk);
        for (; !iterator->done(); iterator->step()) {
            ZvDbObjectPointer<ZvDbLine> line(iterator->entityId(), ZvDb::kForRead);
            m_text << "line " << line->objectId().index() << ' ' << line->startPoint().x << ' ' << line->color().color()
                   << ' ' << line->layer().toStdString() << ' ' << line->lineWeight() << ' ' << line->linetypeScale()
                   << '\n';
        }
    }

    void dictionary(ZvDbObjectId id, int depth)
    {
        ZvDbObjectPointer<ZvDbDictionary> dictionary(id, ZvDb::kForRead);
        const std::unique_ptr<ZvDbDictionaryIterator> iterator(dictionary->newIterator());
        for (; !iterator->done(); iterator->next()) {
            m_text << std::string(std::size_t(depth), ' ') << "entry " << iterator->name().toStdString() << ' '
                   << iterator->objectId().index() << ' ' << iterator->objectId().isErased() << '\n';
            if (!iterator->objectId().isErased() && iterator->objectId().objectClass() == ZvDbDictionary::desc())
                this->dictionary(iterator->objectId(), depth + 1);
        }
    }

    void settings()
    {
        ZvArray<ZvString> names;
        m_database.variableNames(names);
        for (const ZvString &name : names) {
            ZvResBuf value;
            // What the next handle is does not go back.
            if (name == L"HANDSEED" || m_database.getVariable(name, value) != Zv::eOk)
                continue;
            m_text << name.toStdString() << '=' << value.text().toStdString() << ' ' << value.number() << ' '
                   << value.getObjectId().index();
            if (value.restype == ZvRes::kPoint2d || value.restype == ZvRes::kPoint3d)
                m_text << value.resval.rpoint[0] << ',' << value.resval.rpoint[1];
            if (value.restype == ZvRes::kText)
                zvutDelString(value.resval.rstring);
            m_text << '\n';
        }
        m_text << "previous " << m_database.hasPreviousUcs() << '\n';
    }

    ZvDbDatabase &m_database;
    std::ostringstream m_text;
};

/// Does at random what users do.
class Worker
{
public:
    Worker(ZvDbDatabase &database, unsigned seed) : m_database(database), m_random(seed) { }

    void step()
    {
        const bool named = pick(3) != 0;
        if (named)
            m_database.beginUndoStep(L"STEP");
        for (int i = pick(4); i >= 0; --i)
            action();
        if (pick(3) == 0) {
            m_database.beginFrame();
            const std::string before = Snapshot(m_database).take();
            for (int i = pick(4); i >= 0; --i)
                action();
            if (pick(2) == 0) {
                m_database.abortFrame();
                EXPECT_EQ(Snapshot(m_database).take(), before) << "after an aborted frame";
            } else {
                m_database.endFrame();
            }
            for (int i = pick(3); i > 0; --i)
                action();
        }
        if (named)
            m_database.endUndoStep();
    }

private:
    int pick(int count) { return int(m_random() % unsigned(count)); }

    ZvDbObjectId anyLayer()
    {
        ZvDbObjectPointer<ZvDbLayerTable> table(m_database.layerTableId(), ZvDb::kForRead);
        ZvDbSymbolTableIterator *walk = nullptr;
        table->newIterator(walk);
        const std::unique_ptr<ZvDbSymbolTableIterator> iterator(walk);
        for (int i = pick(table->count()); i > 0; --i)
            iterator->step();
        return iterator->getRecordId();
    }

    ZvDbObjectId anyLine(bool erasedToo)
    {
        ZvDbObjectPointer<ZvDbBlockTableRecord> block(m_database.modelSpaceId(), ZvDb::kForRead);
        const std::vector<std::uint32_t> &all = block->entityIndices();
        if (all.empty())
            return ZvDbObjectId();
        const ZvDbObjectId id = ZvDbObjectId::fromInt64((std::uint64_t(m_database.number()) << 32)
                                                        | all[std::size_t(pick(int(all.size())))]);
        return erasedToo || !id.isErased() ? id : ZvDbObjectId();
    }

    ZvString anyName() { return ZvString(("N" + std::to_string(pick(12))).c_str()); }

    void action()
    {
        switch (pick(14)) {
        case 0:
            addLayer(m_database, anyName());
            break;
        case 1:
            edit<ZvDbLayerTableRecord>(anyLayer(), [&](ZvDbLayerTableRecord &record) {
                record.setColor(index(1 + pick(6)));
                record.setIsLocked(pick(2) != 0);
            });
            break;
        case 2:
            edit<ZvDbLayerTableRecord>(anyLayer(), [&](ZvDbLayerTableRecord &record) { record.setName(anyName()); });
            break;
        case 3: {
            const ZvDbObjectId layer = anyLayer();
            if (layer != m_database.layerZero() && layer != m_database.clayer())
                erase(layer);
            break;
        }
        case 4:
            addLine(m_database, pick(100));
            break;
        case 5:
        case 6: {
            const ZvDbObjectId line = anyLine(false);
            if (line.isNull())
                break;
            edit<ZvDbLine>(line, [&](ZvDbLine &entity) {
                if (pick(2) != 0)
                    entity.setStartPoint(ZvGePoint3d(pick(100), 0));
                entity.setColor(index(pick(9)));
                entity.setLayer(anyLayer());
            });
            break;
        }
        case 7: {
            const ZvDbObjectId line = anyLine(true);
            if (!line.isNull())
                erase(line, !line.isErased());
            break;
        }
        case 8:
            m_database.setCecolor(index(pick(9)));
            break;
        case 9:
            m_database.setClayer(anyLayer());
            break;
        case 10:
            m_database.setUcs(ZvGePoint3d(pick(5), 0), ZvGeVector3d(1, 0, 0), ZvGeVector3d(0, 1, 0), ZvDbObjectId(),
                              pick(7));
            break;
        case 11:
            if (m_database.hasPreviousUcs())
                m_database.restorePreviousUcs();
            break;
        case 12:
            edit<ZvDbDictionary>(m_database.materialDictionaryId(), [&](ZvDbDictionary &dictionary) {
                ZvDbObjectId id;
                ZvDbMaterial *material = new ZvDbMaterial;
                ASSERT_EQ(dictionary.setAt(anyName(), material, id), Zv::eOk);
                material->close();
                if (pick(3) == 0)
                    dictionary.remove(anyName());
            });
            break;
        case 13:
            edit<ZvDbLayerTableRecord>(anyLayer(), [&](ZvDbLayerTableRecord &record) {
                record.setDescription(anyName());
                ZvCmTransparency transparency;
                transparency.setAlpha(std::uint8_t(pick(256)));
                record.setTransparency(transparency);
            });
            edit<ZvDbBlockTableRecord>(m_database.modelSpaceId(),
                                       [&](ZvDbBlockTableRecord &block) { block.setOrigin(ZvGePoint3d(pick(9), 0)); });
            break;
        }
    }

    ZvDbDatabase &m_database;
    std::mt19937 m_random;
};

class RandomWork : public testing::TestWithParam<unsigned>
{
};

} // namespace

TEST_P(RandomWork, undoneIsTheBeginningAndRedoneTheEnd)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    Snapshot snapshot(*database);
    Worker worker(*database, GetParam());
    std::vector<std::string> states{snapshot.take()};
    // After every step the state is kept by the number of steps that lead to it.
    const auto depth = [&] {
        int count = 0;
        while (database->undo())
            ++count;
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(database->redo());
        return count;
    };
    for (int i = 0; i < 40; ++i) {
        worker.step();
        states.resize(std::size_t(depth()) + 1);
        states.back() = snapshot.take();
    }
    ASSERT_EQ(database->openObjectCount(), 0);
    const std::string end = snapshot.take();
    int undone = 0;
    while (database->undo()) {
        ++undone;
        const std::string &expected = states[states.size() - 1 - std::size_t(undone)];
        if (!expected.empty()) {
            ASSERT_EQ(snapshot.take(), expected) << undone << " steps back";
        }
    }
    EXPECT_GT(undone, 20);
    EXPECT_EQ(snapshot.take(), states.front());
    while (database->redo()) { }
    EXPECT_EQ(snapshot.take(), end);
    while (database->undo()) { }
    EXPECT_EQ(snapshot.take(), states.front());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWork, testing::Range(1u, 31u));
