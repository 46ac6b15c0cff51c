// SPDX-License-Identifier: MIT
#include "db_testing.h"

using namespace db_testing;

namespace {

class Objects : public DatabaseTest
{
protected:
    ZvDbObjectId layer = addLayer(db, L"Walls");
};

} // namespace

TEST_F(Objects, severalReadersHoldOneObject)
{
    ZvDbObjectPointer<ZvDbLayerTableRecord> a(layer, ZvDb::kForRead);
    ZvDbObjectPointer<ZvDbLayerTableRecord> b(layer, ZvDb::kForRead);
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a.get(), b.get());
    EXPECT_EQ(db.openObjectCount(), 2);
    a.close();
    EXPECT_TRUE(b->isReadEnabled());
    EXPECT_FALSE(b->isWriteEnabled());
    EXPECT_EQ(db.openObjectCount(), 1);
}

TEST_F(Objects, aWriterHoldsItAlone)
{
    ZvDbObjectPointer<ZvDbLayerTableRecord> writer(layer, ZvDb::kForWrite);
    ASSERT_TRUE(bool(writer));
    ZvDbLayerTableRecord *other = reinterpret_cast<ZvDbLayerTableRecord *>(1);
    EXPECT_EQ(zvdbOpenObject(other, layer, ZvDb::kForRead), Zv::eWasOpenForWrite);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(zvdbOpenObject(other, layer, ZvDb::kForWrite), Zv::eWasOpenForWrite);
}

TEST_F(Objects, aReaderKeepsWritersOut)
{
    ZvDbObjectPointer<ZvDbLayerTableRecord> reader(layer, ZvDb::kForRead);
    ZvDbLayerTableRecord *writer = nullptr;
    EXPECT_EQ(zvdbOpenObject(writer, layer, ZvDb::kForWrite), Zv::eWasOpenForRead);
    EXPECT_EQ(writer, nullptr);
}

TEST_F(Objects, anErasedOneOpensOnRequestOnly)
{
    erase(layer);
    ZvDbLayerTableRecord *record = nullptr;
    EXPECT_EQ(zvdbOpenObject(record, layer, ZvDb::kForRead), Zv::eWasErased);
    EXPECT_EQ(record, nullptr);
    EXPECT_TRUE(layer.isValid());
    EXPECT_TRUE(layer.isErased());
    ASSERT_EQ(zvdbOpenObject(record, layer, ZvDb::kForRead, true), Zv::eOk);
    EXPECT_TRUE(record->isErased());
    record->close();
}

TEST_F(Objects, theClassFilterTakesDescendants)
{
    ZvDbSymbolTableRecord *record = nullptr;
    ASSERT_EQ(zvdbOpenObject(record, layer, ZvDb::kForRead), Zv::eOk);
    record->close();
    ZvDbLinetypeTableRecord *linetype = reinterpret_cast<ZvDbLinetypeTableRecord *>(1);
    EXPECT_EQ(zvdbOpenObject(linetype, layer, ZvDb::kForRead), Zv::eNotThatKindOfClass);
    EXPECT_EQ(linetype, nullptr);
    EXPECT_EQ(layer.objectClass(), ZvDbLayerTableRecord::desc());
}

TEST_F(Objects, theNullIdAndUnknownPositionsDoNotOpen)
{
    ZvDbObject *object = nullptr;
    EXPECT_EQ(zvdbOpenObject(object, ZvDbObjectId(), ZvDb::kForRead), Zv::eNullObjectId);
    const ZvDbObjectId beyond = ZvDbObjectId::fromInt64((std::uint64_t(db.number()) << 32) | 1000000);
    EXPECT_EQ(zvdbOpenObject(object, beyond, ZvDb::kForRead), Zv::eNoDatabase);
    EXPECT_FALSE(beyond.isValid());
    EXPECT_EQ(object, nullptr);
}

TEST_F(Objects, upgradeAndDowngrade)
{
    Listener listener;
    db.addReactor(&listener);
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    ASSERT_EQ(record->upgradeOpen(), Zv::eOk);
    EXPECT_TRUE(record->isWriteEnabled());
    record->setIsOff(true);
    ASSERT_EQ(record->downgradeOpen(), Zv::eOk);
    EXPECT_EQ(listener.take(), Events{"modified LAYER Walls"});
    EXPECT_TRUE(record->isReadEnabled());
    EXPECT_FALSE(record->isWriteEnabled());
    EXPECT_FALSE(record->isModified());
    ZvDbObjectPointer<ZvDbLayerTableRecord> second(layer, ZvDb::kForRead);
    EXPECT_EQ(record->upgradeOpen(), Zv::eWasOpenForRead);
    EXPECT_EQ(record->downgradeOpen(), Zv::eNotOpenForWrite);
    db.removeReactor(&listener);
}

TEST_F(Objects, aSetterOnAnObjectThatIsNotOpenForWriteChangesNothing)
{
    AssertionCount assertions;
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    record->setIsOff(true);
    EXPECT_FALSE(record->isOff());
    EXPECT_EQ(record->setIsFrozen(true), Zv::eNotOpenForWrite);
    EXPECT_EQ(record->erase(), Zv::eNotOpenForWrite);
    EXPECT_EQ(assertions.count(), 3);
}

TEST_F(Objects, closingMoreOftenThanOpeningIsReported)
{
    ZvDbLayerTableRecord *record = nullptr;
    ASSERT_EQ(zvdbOpenObject(record, layer, ZvDb::kForRead), Zv::eOk);
    EXPECT_EQ(record->close(), Zv::eOk);
    AssertionCount assertions;
    EXPECT_EQ(record->close(), Zv::eFailed);
    EXPECT_EQ(assertions.count(), 1);
}

TEST_F(Objects, openingsAreCounted)
{
    const std::uint64_t before = db.openingsCount();
    for (int i = 0; i < 3; ++i)
        ZvDbObjectPointer<ZvDbLayerTableRecord>(layer, ZvDb::kForRead);
    ZvDbObject *none = nullptr;
    zvdbOpenObject(none, ZvDbObjectId(), ZvDb::kForRead);
    EXPECT_EQ(db.openingsCount() - before, 3u);
}

TEST_F(Objects, erasedIdsStayEqualAndCanComeBack)
{
    const ZvDbObjectId same = ZvDbObjectId::fromInt64(layer.asInt64());
    erase(layer);
    erase(layer, false);
    EXPECT_EQ(layer, same);
    EXPECT_FALSE(layer.isErased());
}

TEST_F(Objects, indispensableRecordsAreNotErased)
{
    const ZvDbObjectId fixed[]
        = {db.layerZero(),    db.byLayerLinetype(), db.byBlockLinetype(), db.continuousLinetype(),
           db.modelSpaceId(), db.layerTableId(),    db.rootDictionaryId()};
    for (ZvDbObjectId id : fixed) {
        ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForWrite);
        ASSERT_TRUE(bool(object));
        EXPECT_EQ(object->erase(), Zv::eObjectReferenced);
        EXPECT_FALSE(object->isErased());
    }
}

TEST_F(Objects, entityNamesCarryIds)
{
    long name[2] = {0, 0};
    zvdbGetEntityName(name, layer);
    ZvDbObjectId id;
    EXPECT_EQ(zvdbGetObjectId(id, name), Zv::eOk);
    EXPECT_EQ(id, layer);
    zvdbGetEntityName(name, ZvDbObjectId());
    EXPECT_EQ(name[0], 0);
    EXPECT_EQ(name[1], 0);
    EXPECT_EQ(zvdbGetObjectId(id, name), Zv::eNullObjectId);
    EXPECT_TRUE(id.isNull());
}

TEST_F(Objects, handlesFindTheirObjects)
{
    const std::uint64_t handle = layer.handle();
    EXPECT_NE(handle, 0u);
    EXPECT_EQ(db.idOfHandle(handle), layer);
    EXPECT_TRUE(db.idOfHandle(0xFFFFFFF0).isNull());
    EXPECT_TRUE(db.idOfHandle(0).isNull());
}

TEST_F(Objects, idsOfADeadDatabaseAreHarmless)
{
    const ZvDbObjectId line = addLine(db);
    long name[2];
    zvdbGetEntityName(name, line);
    const std::uint32_t number = db.number();
    database = ZvDbDatabasePtr();

    EXPECT_FALSE(line.isValid());
    EXPECT_TRUE(line.isErased());
    EXPECT_EQ(line.database(), nullptr);
    EXPECT_EQ(line.objectClass(), nullptr);
    EXPECT_EQ(line.handle(), 0u);
    ZvDbEntity *entity = nullptr;
    EXPECT_EQ(zvdbOpenObject(entity, line, ZvDb::kForRead), Zv::eNoDatabase);
    ZvDbObjectId id;
    EXPECT_EQ(zvdbGetObjectId(id, name), Zv::eNoDatabase);

    const ZvDbDatabasePtr next = ZvDbDatabase::create();
    EXPECT_NE(next->number(), number);
    EXPECT_FALSE(line.isValid());
    EXPECT_EQ(next->setClayer(layer), Zv::eInvalidInput);
}

TEST_F(Objects, positionsReachBeyondTheFirstChunks)
{
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 3000; ++i)
        ids.push_back(addLine(db, i));
    for (int i = 0; i < 3000; ++i) {
        ZvDbObjectPointer<ZvDbLine> line(ids[std::size_t(i)], ZvDb::kForRead);
        ASSERT_TRUE(bool(line));
        EXPECT_EQ(line->objectId(), ids[std::size_t(i)]);
        EXPECT_EQ(line->database(), &db);
        EXPECT_EQ(line->startPoint().x, i);
        EXPECT_EQ(db.idOfHandle(line->handle()), ids[std::size_t(i)]);
    }
    EXPECT_EQ(db.entityCount(), 3000);
}

// ---- objects of no database

TEST_F(Objects, setOutsideOfAnyDatabaseRaisesNothing)
{
    Listener listener;
    db.addReactor(&listener);
    const std::uint64_t stamp = db.changeStamp();
    ZvDbLine line(ZvGePoint3d(0, 0), ZvGePoint3d(1, 1));
    EXPECT_EQ(line.setColor(index(3)), Zv::eOk);
    EXPECT_EQ(line.setLineWeight(ZvDb::kLnWt050), Zv::eOk);
    EXPECT_EQ(line.setLinetype(db.continuousLinetype()), Zv::eOk);
    EXPECT_EQ(line.setStartPoint(ZvGePoint3d(5, 5)), Zv::eOk);
    EXPECT_EQ(line.color(), index(3));
    EXPECT_EQ(line.lineWeight(), ZvDb::kLnWt050);
    EXPECT_EQ(line.linetypeId(), db.continuousLinetype());
    EXPECT_TRUE(line.objectId().isNull());
    EXPECT_EQ(line.database(), nullptr);
    EXPECT_EQ(line.propertiesNumber(), 0u);
    EXPECT_TRUE(line.isWriteEnabled());
    EXPECT_EQ(line.close(), Zv::eNoDatabase);
    EXPECT_EQ(db.changeStamp(), stamp);
    EXPECT_TRUE(listener.events.empty());
    db.removeReactor(&listener);
}

TEST_F(Objects, aCloneBelongsToNoDatabaseAndKeepsEverything)
{
    const ZvDbObjectId id = addLine(db, 7.0);
    edit<ZvDbLine>(id, [](ZvDbLine &line) { line.setColor(index(1)); });
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
    const std::unique_ptr<ZvDbLine> copy(static_cast<ZvDbLine *>(line->clone()));
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->objectId().isNull());
    EXPECT_EQ(copy->color(), index(1));
    EXPECT_EQ(copy->startPoint().x, 7.0);
    EXPECT_EQ(copy->layerId(), db.layerZero());
}

TEST_F(Objects, copyFromTakesAnotherObjectOfTheClass)
{
    const ZvDbObjectId other = addLayer(db, L"Doors");
    edit<ZvDbLayerTableRecord>(other, [](ZvDbLayerTableRecord &record) {
        record.setColor(index(2));
        record.setIsLocked(true);
    });
    edit<ZvDbLayerTableRecord>(layer, [&](ZvDbLayerTableRecord &record) {
        ZvDbObjectPointer<ZvDbLayerTableRecord> source(other, ZvDb::kForRead);
        EXPECT_TRUE(record.copyFrom(source.get()));
        EXPECT_EQ(record.name(), L"Walls");
        EXPECT_TRUE(record.isLocked());
        ZvDbLine line;
        EXPECT_FALSE(record.copyFrom(&line));
    });
    EXPECT_EQ(colorOf(layer), index(2));
}

TEST_F(Objects, anAddedEntityOfAnotherDrawingLosesItsForeignIds)
{
    const ZvDbDatabasePtr other = ZvDbDatabase::create();
    const ZvDbObjectId foreign = addLayer(*other, L"Elsewhere");
    ZvDbLine *line = new ZvDbLine;
    line->setLayer(foreign);
    ZvDbObjectId id;
    ASSERT_EQ(db.appendEntity(line, db.modelSpaceId(), id, false), Zv::eOk);
    ZvDbObjectPointer<ZvDbLine> added(id, ZvDb::kForRead);
    EXPECT_EQ(added->layerId(), db.layerZero());
}

TEST_F(Objects, countedObjectsAndObjectsOfADatabaseAreNotTakenOver)
{
    ZvDbObjectId id;
    const ZvSmartPtr<ZvDbLine> counted = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>);
    EXPECT_EQ(db.addObject(counted, id, db.modelSpaceId()), Zv::eInvalidInput);
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    EXPECT_EQ(db.addObject(record.get(), id, db.layerTableId()), Zv::eInvalidInput);
    EXPECT_EQ(db.addObject(nullptr, id, db.layerTableId()), Zv::eInvalidInput);
    EXPECT_TRUE(id.isNull());
}

// ---- extended data

namespace {

struct Values
{
    ~Values() { zvutRelRb(first); }
    Values &text(int type, const wchar_t *value)
    {
        add(type)->resval.rstring = zvutNewString(value);
        return *this;
    }
    Values &number(short value)
    {
        add(1070)->resval.rint = value;
        return *this;
    }
    ZvResBuf *first = nullptr;

private:
    ZvResBuf *add(int type)
    {
        ZvResBuf *buffer = zvutNewRb(type);
        (last ? last->rbnext : first) = buffer;
        return last = buffer;
    }
    ZvResBuf *last = nullptr;
};

std::string read(ZvDbObjectId id, const wchar_t *application)
{
    ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForRead);
    ZvResBuf *chain = object->xData(application);
    std::string text;
    for (const ZvResBuf *value = chain; value; value = value->rbnext) {
        text += value->restype == 1070 ? std::to_string(value->resval.rint) : value->text().toStdString();
        text += ";";
    }
    zvutRelRb(chain);
    return text;
}

void write(ZvDbObjectId id, const Values &values)
{
    edit<ZvDbObject>(id, [&](ZvDbObject &object) { EXPECT_EQ(object.setXData(values.first), Zv::eOk); });
}

} // namespace

TEST_F(Objects, extendedDataIsKeptByApplication)
{
    EXPECT_EQ(read(layer, L"ONE"), "");
    write(layer, Values().text(1001, L"ONE").text(1000, L"first").number(7).text(1001, L"TWO").number(8));
    EXPECT_EQ(read(layer, L"one"), "ONE;first;7;");
    EXPECT_EQ(read(layer, L"TWO"), "TWO;8;");
    write(layer, Values().text(1001, L"ONE").number(9));
    EXPECT_EQ(read(layer, L"ONE"), "ONE;9;");
    EXPECT_EQ(read(layer, L""), "TWO;8;ONE;9;");
    write(layer, Values().text(1001, L"TWO"));
    EXPECT_EQ(read(layer, L"TWO"), "");
    EXPECT_EQ(read(layer, L""), "ONE;9;");
    db.undo();
    EXPECT_EQ(read(layer, L"TWO"), "TWO;8;");
    db.redo();
    EXPECT_EQ(read(layer, L"TWO"), "");
}

TEST_F(Objects, extendedDataNamesAnApplicationThatTheDrawingKnows)
{
    ZvDbObjectPointer<ZvDbRegAppTable> table(db.regAppTableId(), ZvDb::kForRead);
    EXPECT_FALSE(table->has(L"MINE"));
    write(layer, Values().text(1001, L"MINE").number(1));
    EXPECT_TRUE(table->has(L"mine"));
}

TEST_F(Objects, aLayerKeepsTransparencyAndDescription)
{
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) {
        ZvCmTransparency half;
        half.setAlpha(128);
        record.setTransparency(half);
        record.setDescription(L"Outer walls");
    });
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(layer, ZvDb::kForRead);
    EXPECT_EQ(record->transparency().alpha(), 128);
    EXPECT_EQ(record->description(), L"Outer walls");
}

// ---- shared properties

TEST_F(Objects, equalPropertiesHaveEqualNumbers)
{
    const ZvDbObjectId a = addLine(db);
    const ZvDbObjectId b = addLine(db);
    const auto number = [](ZvDbObjectId id) {
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        return entity->propertiesNumber();
    };
    EXPECT_EQ(number(a), number(b));
    edit<ZvDbEntity>(b, [](ZvDbEntity &entity) { entity.setColor(index(4)); });
    EXPECT_NE(number(a), number(b));
    edit<ZvDbEntity>(a, [](ZvDbEntity &entity) { entity.setColor(index(4)); });
    EXPECT_EQ(number(a), number(b));
    EXPECT_NE(number(a), 0u);
}

TEST_F(Objects, aCopiedReferenceHasAttributesOfItsOwn)
{
    // A reference with an attribute, as a file has it.
    const char text[]
        = "0\nSECTION\n2\nENTITIES\n"
          "0\nINSERT\n5\nA1\n330\n0\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockReference\n66\n1\n2\nDoor\n10\n5\n20\n0\n"
          "30\n0\n0\nATTRIB\n5\nA2\n330\nA1\n100\nAcDbEntity\n8\n0\n100\nAcDbText\n10\n6\n20\n1\n30\n0\n40\n2.5\n"
          "1\nD7\n100\nAcDbAttribute\n2\nNUMBER\n70\n0\n0\nSEQEND\n5\nA3\n330\nA1\n100\nAcDbEntity\n8\n0\n"
          "0\nENDSEC\n0\nEOF\n";
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    ZvDbFileReport report;
    ASSERT_EQ(read->readStream(text, sizeof(text) - 1, report), Zv::eOk) << report.message.toStdString();
    const ZvDbObjectId original = read->idOfHandle(0xA1);
    ZvDbBlockReference *copy = nullptr;
    {
        ZvDbObjectPointer<ZvDbBlockReference> reference(original, ZvDb::kForRead);
        ASSERT_TRUE(bool(reference));
        ASSERT_EQ(reference->attributeIds().size(), 1u);
        copy = static_cast<ZvDbBlockReference *>(reference->clone());
    }
    copy->transformBy(ZvGeMatrix3d::translation(ZvGeVector3d(100, 0, 0)));
    ZvDbObjectId id;
    ASSERT_EQ(read->appendEntity(copy, read->modelSpaceId(), id, false), Zv::eOk);
    ZvDbObjectId attribute;
    {
        ZvDbObjectPointer<ZvDbBlockReference> reference(id, ZvDb::kForRead);
        ASSERT_EQ(reference->attributeIds().size(), 1u);
        attribute = reference->attributeIds()[0];
        ZvDbObjectPointer<ZvDbAttribute> own(attribute, ZvDb::kForRead);
        ASSERT_TRUE(bool(own));
        EXPECT_EQ(own->ownerId(), id);
        EXPECT_EQ(own->textString(), L"D7");
        EXPECT_NEAR(own->position().x, 106.0, 1e-9);
        EXPECT_NEAR(own->position().y, 1.0, 1e-9);
    }
    EXPECT_TRUE(read->undo());
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(attribute.isErased());
    EXPECT_FALSE(read->canUndo()) << "one step";
}

TEST_F(Objects, objectsDroppedAfterAPassOverTheDrawing)
{
    const char text[]
        = "0\nSECTION\n2\nENTITIES\n0\nLINE\n5\nA1\n100\nAcDbEntity\n8\n0\n100\nAcDbLine\n10\n1\n20\n2\n11\n3\n21\n4\n"
          "0\nENDSEC\n0\nEOF\n";
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    ZvDbFileReport report;
    ASSERT_EQ(read->readStream(text, sizeof(text) - 1, report), Zv::eOk);
    const ZvDbObjectId id = read->idOfHandle(0xA1);
    const auto x = [&] {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
        return line->startPoint().x;
    };
    {
        const ZvDbDatabase::TransientReads pass(*read);
        EXPECT_EQ(x(), 1.0);
        ZvDbObjectPointer<ZvDbLine> outer(id, ZvDb::kForRead);
        EXPECT_EQ(x(), 1.0);
        EXPECT_EQ(outer->startPoint().x, 1.0) << "still held";
        outer.close();
        // What was changed is no copy of the file any more, and stays.
        edit<ZvDbLine>(id, [](ZvDbLine &line) { line.setStartPoint(ZvGePoint3d(9, 9)); });
        EXPECT_EQ(x(), 9.0);
    }
    EXPECT_EQ(x(), 9.0);
    EXPECT_TRUE(read->undo());
    EXPECT_EQ(x(), 1.0);
}

TEST_F(Objects, whatIsOpenWhenADatabaseDiesCountsNoMore)
{
    const ZvDbDatabasePtr dying = ZvDbDatabase::create();
    ZvDbObject *held = nullptr;
    ASSERT_EQ(zvdbOpenObject(held, dying->layerZero(), ZvDb::kForRead), Zv::eOk);
    EXPECT_EQ(zvdbOpenObjectCount(), 1);
}
