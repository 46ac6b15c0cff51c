// SPDX-License-Identifier: MIT
#include "drawingtest.h"

#include "base/zverror.h"
#include "db/zvdbhostservice.h"

#include <functional>

namespace {

typedef ZevaUISetting::EntityValue EntityValue;

EntityValue colorValue(int index)
{
    EntityValue value;
    value.color = colorOfIndex(index);
    return value;
}

/// Counts what a drawing tells, and does what the test wants done.
class Listener : public ZvStaticRxObject<ZvDbDatabaseReactor>
{
public:
    explicit Listener(ZvDbDatabase &database) : m_database(database) { m_database.addReactor(this); }
    ~Listener() override { m_database.removeReactor(this); }
    void objectModified(const ZvDbDatabase *, const ZvDbObject *object) override
    {
        modified.push_back(object->objectId());
        if (react)
            react();
    }

    std::vector<ZvDbObjectId> modified;
    std::function<void()> react;

private:
    ZvDbDatabase &m_database;
};

} // namespace

class TestFacadeWriting : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // one entity
    void propertyIsWritten_data();
    void propertyIsWritten();
    void propertyOfAnotherClassIsNot_data();
    void propertyOfAnotherClassIsNot();
    void nullEntityAndUnknownPropertyChangeNothing();
    void textStyleReachesTextsOnly();
    void subEntitiesFollow();

    // the selection
    void selectionIsWrittenInOneStep();
    void emptySelectionOpensNoFrame();
    void equalEntitiesStayOutOfUndoAndNotices();
    void lockedEntitiesAreLeftOutAndReported();
    void allLockedEntitiesAreCounted();
    void unopenableEntityIsPassedOverUncounted();
    void entityWithAnUnreadableLayerIsWritten();
    void lineBesideADimensionIsPassedOverWithoutAMessage();
    void unknownNameWritesNothing();
    void selectionStaysSelected();
    void nothingIsLeftOpen();
    void exceptionAbortsTheFrame();
    void writeThroughTheCommandIsOneStepOfUndo();
    void undoBringsSummariesBack();

    // locked entities of a list
    void lockedAndUnopenableEntitiesAreRemoved();
    void nullIdsStay();
    void doubleIdsAreRemovedOneByOne();
    void emptyListRemovesNone();

private:
    ZvDbObjectId addLockedLayer()
    {
        const ZvDbObjectId layer = addLayer(L"Locked");
        change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
        return layer;
    }
    ZvDbObjectId addLineOn(ZvDbObjectId layer)
    {
        const ZvDbObjectId line = addLine();
        change<ZvDbEntity>(line, [=](ZvDbEntity &entity) { entity.setLayer(layer); });
        return line;
    }
    static ZvCmColor colorOf(ZvDbObjectId id)
    {
        return read<ZvDbEntity>(id, [](const ZvDbEntity &entity) { return entity.color(); });
    }
    /// The property under its number, as text.
    static QString property(const ZvDbEntity &entity, int number)
    {
        const auto text = [](const ZvString &value) { return QString::fromUtf8(value.toUtf8().c_str()); };
        const auto id = [](ZvDbObjectId value) { return QString::number(value.asInt64()); };
        switch (number) {
        case 0:
            return QString::number(entity.color().color());
        case 1:
            return QString::number(entity.lineWeight());
        case 2:
            return text(entity.linetype());
        case 3:
            return text(entity.layer());
        case 4:
            return text(entity.material());
        case 5:
            return id(zvrxCast<ZvDbDimension>(&entity)->dimensionStyle());
        case 6:
            return zvrxCast<ZvDbText>(&entity) ? id(zvrxCast<ZvDbText>(&entity)->textStyle())
                                               : id(zvrxCast<ZvDbMText>(&entity)->textStyle());
        case 7:
            return id(zvrxCast<ZvDbTable>(&entity)->tableStyle());
        case 8:
            return id(zvrxCast<ZvDbMLeader>(&entity)->MLeaderStyle());
        default:
            return text(entity.plotStyleName());
        }
    }
};

// ---- one entity

void TestFacadeWriting::propertyIsWritten_data()
{
    QTest::addColumn<int>("number");
    const char *names[] = {"colour",          "line weight", "line type",   "layer",             "material",
                           "dimension style", "text style",  "table style", "multileader style", "plot style"};
    for (int i = 0; i < 10; ++i)
        QTest::newRow(names[i]) << i;
    QTest::newRow("text style of a multiline text") << 16;
}

void TestFacadeWriting::propertyIsWritten()
{
    QFETCH(int, number);
    const bool isMText = number == 16;
    number %= 10;
    addLayer(L"Fine");
    addLineType(L"Fine");
    addMaterial(L"Fine");
    addPlotStyle(L"Fine");
    EntityValue value;
    value.color = colorOfIndex(3);
    value.lineWeight = ZvDb::kLnWt070;
    value.name = L"FINE"; // names compare without case
    ZvDbEntity *entity = nullptr;
    switch (number) {
    case 5:
        value.objectId = addDimStyle(L"Fine");
        entity = new ZvDbDimension;
        break;
    case 6:
        value.objectId = addTextStyle(L"Fine");
        entity = isMText ? static_cast<ZvDbEntity *>(new ZvDbMText) : new ZvDbText;
        break;
    case 7:
        value.objectId = addTableStyle(L"Fine");
        entity = new ZvDbTable;
        break;
    case 8:
        value.objectId = addMLeaderStyle(L"Fine");
        entity = new ZvDbMLeader;
        break;
    default:
        entity = new ZvDbLine;
        break;
    }
    const ZvDbObjectId id = add(entity);
    const auto typed = ZevaUISetting::Entity_Property(number);
    const QString before = read<ZvDbEntity>(id, [=](const ZvDbEntity &e) { return property(e, number); });
    change<ZvDbEntity>(id, [&](ZvDbEntity &e) { QVERIFY(ZevaUISetting::setProperty(&e, typed, value)); });
    const QString after = read<ZvDbEntity>(id, [=](const ZvDbEntity &e) { return property(e, number); });
    QVERIFY(after != before);

    // What has the value already is not written.
    drawing().clearUndo();
    change<ZvDbEntity>(id, [&](ZvDbEntity &e) { QVERIFY(!ZevaUISetting::setProperty(&e, typed, value)); });
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::propertyOfAnotherClassIsNot_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("dimension style") << 5;
    QTest::newRow("text style") << 6;
    QTest::newRow("table style") << 7;
    QTest::newRow("multileader style") << 8;
}

void TestFacadeWriting::propertyOfAnotherClassIsNot()
{
    QFETCH(int, number);
    EntityValue value;
    value.objectId = addTextStyle(L"Fine");
    drawing().clearUndo();
    const ZvDbObjectId line = addLine();
    drawing().clearUndo();
    change<ZvDbEntity>(line, [&](ZvDbEntity &entity) {
        QVERIFY(!ZevaUISetting::setProperty(&entity, ZevaUISetting::Entity_Property(number), value));
    });
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::nullEntityAndUnknownPropertyChangeNothing()
{
    QVERIFY(!ZevaUISetting::setProperty(nullptr, ZevaUISetting::kColor, colorValue(1)));
    change<ZvDbEntity>(addLine(), [](ZvDbEntity &entity) {
        QVERIFY(!ZevaUISetting::setProperty(&entity, ZevaUISetting::Entity_Property(10), colorValue(1)));
        QVERIFY(!ZevaUISetting::setProperty(&entity, ZevaUISetting::Entity_Property(-1), colorValue(1)));
        QCOMPARE(entity.color(), ZvCmColor());
    });
}

void TestFacadeWriting::textStyleReachesTextsOnly()
{
    EntityValue value;
    value.objectId = addTextStyle(L"Fine");
    for (ZvDbEntity *entity : {static_cast<ZvDbEntity *>(new ZvDbDimension), static_cast<ZvDbEntity *>(new ZvDbMLeader)}) {
        change<ZvDbEntity>(add(entity), [&](ZvDbEntity &e) {
            QVERIFY(!ZevaUISetting::setProperty(&e, ZevaUISetting::kTextStyle, value));
        });
    }
}

void TestFacadeWriting::subEntitiesFollow()
{
    // The samples' blocks carry attributes: a colour written to the reference reaches them.
    ZvDbFileReport report;
    ZvApDocument *plan = zvDocManagerPtr()->openDocument(ZEVA_SAMPLES_DIR "/plan.dxf", report);
    QVERIFY(plan);
    bus().enableUpdateUI(true);
    ZvDbObjectId reference;
    ZvDbObjectId attribute;
    {
        const ZvDbObjectPointer<ZvDbBlockTableRecord> space(drawing().modelSpaceId(), ZvDb::kForRead);
        ZvDbBlockTableRecordIterator *made = nullptr;
        space->newIterator(made);
        const std::unique_ptr<ZvDbBlockTableRecordIterator> iterator(made);
        for (; !iterator->done() && attribute.isNull(); iterator->step()) {
            const ZvDbObjectPointer<ZvDbBlockReference> insert(iterator->entityId(), ZvDb::kForRead);
            if (insert && !insert->attributeIds().empty()) {
                reference = iterator->entityId();
                attribute = *insert->attributeIds().begin();
            }
        }
    }
    if (attribute.isNull())
        QSKIP("the sample has no attributes");
    change<ZvDbEntity>(reference, [](ZvDbEntity &entity) {
        QVERIFY(ZevaUISetting::setProperty(&entity, ZevaUISetting::kColor, colorValue(211)));
    });
    QCOMPARE(colorOf(attribute), colorOfIndex(211));
}

// ---- the selection

void TestFacadeWriting::selectionIsWrittenInOneStep()
{
    const std::vector<ZvDbObjectId> lines {addLine(), addLine(), addLine()};
    select(lines);
    drawing().clearUndo();
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    for (const ZvDbObjectId line : lines)
        QCOMPARE(colorOf(line), colorOfIndex(1));
    QVERIFY(drawing().undo());
    for (const ZvDbObjectId line : lines)
        QCOMPARE(colorOf(line), ZvCmColor());
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::emptySelectionOpensNoFrame()
{
    const MessageBoxes boxes;
    drawing().clearUndo();
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(drawing().frameDepth(), 0);
    QVERIFY(!drawing().canUndo());
    QVERIFY(boxes.shown().empty());
}

void TestFacadeWriting::equalEntitiesStayOutOfUndoAndNotices()
{
    const ZvDbObjectId red = addLine();
    change<ZvDbEntity>(red, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    const ZvDbObjectId line = addLine();
    select({red, line});
    {
        const Listener listener(drawing());
        ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
        QCOMPARE(listener.modified, std::vector<ZvDbObjectId> {line});
    }
    drawing().clearUndo();
    const Listener listener(drawing());
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QVERIFY(listener.modified.empty());
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::lockedEntitiesAreLeftOutAndReported()
{
    const ZvDbObjectId layer = addLockedLayer();
    const ZvDbObjectId locked = addLineOn(layer);
    const ZvDbObjectId free = addLine();
    select({locked, free});
    const MessageBoxes boxes;
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(colorOf(locked), ZvCmColor());
    QCOMPARE(colorOf(free), colorOfIndex(1));
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown()[0].text, ZvString(L"在锁定图层上有 1 个对象未被更新。"));
    QCOMPARE(boxes.shown()[0].caption, ZvString(L"Zevara"));
    QCOMPARE(boxes.shown()[0].flags, 0u);
}

void TestFacadeWriting::allLockedEntitiesAreCounted()
{
    const ZvDbObjectId layer = addLockedLayer();
    select({addLineOn(layer), addLineOn(layer), addLineOn(layer)});
    drawing().clearUndo();
    const MessageBoxes boxes;
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown()[0].text, ZvString(L"在锁定图层上有 3 个对象未被更新。"));
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::unopenableEntityIsPassedOverUncounted()
{
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId held = addLine();
    select({held, line});
    const MessageBoxes boxes;
    {
        const ZvDbObjectPointer<ZvDbEntity> holder(held, ZvDb::kForRead);
        ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    }
    QCOMPARE(colorOf(held), ZvCmColor());
    QCOMPARE(colorOf(line), colorOfIndex(1));
    QVERIFY(boxes.shown().empty());
}

void TestFacadeWriting::entityWithAnUnreadableLayerIsWritten()
{
    const ZvDbObjectId layer = addLockedLayer();
    const ZvDbObjectId line = addLineOn(layer);
    select({line});
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> holder(layer, ZvDb::kForWrite);
        ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    }
    QCOMPARE(colorOf(line), colorOfIndex(1));
}

void TestFacadeWriting::lineBesideADimensionIsPassedOverWithoutAMessage()
{
    const ZvDbObjectId style = addDimStyle(L"Fine");
    const ZvDbObjectId dimension = add(new ZvDbDimension);
    select({addLine(), dimension});
    const MessageBoxes boxes;
    EntityValue value;
    value.objectId = style;
    const Listener listener(drawing());
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kDimStyle, value);
    QCOMPARE(listener.modified, std::vector<ZvDbObjectId> {dimension});
    read<ZvDbDimension>(dimension, [=](const ZvDbDimension &entity) { QCOMPARE(entity.dimensionStyle(), style); });
    QVERIFY(boxes.shown().empty());
}

void TestFacadeWriting::unknownNameWritesNothing()
{
    select({addLine()});
    drawing().clearUndo();
    EntityValue value;
    value.name = L"no such name";
    for (const auto property : {ZevaUISetting::kLineType, ZevaUISetting::kLayer, ZevaUISetting::kMaterial,
                                ZevaUISetting::kPlotStyle})
        ZevaUISetting::setSelectedProperty(property, value);
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::selectionStaysSelected()
{
    const std::vector<ZvDbObjectId> lines {addLine(), addLine()};
    select(lines);
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(selection().ids(), lines);
    QCOMPARE(drawing().cecolor(), ZvCmColor());
}

void TestFacadeWriting::nothingIsLeftOpen()
{
    const ZvDbObjectId layer = addLockedLayer();
    select({addLineOn(layer), addLine(), add(new ZvDbDimension)});
    const MessageBoxes boxes;
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(drawing().openObjectCount(), 0);
    QCOMPARE(drawing().frameDepth(), 0);
}

void TestFacadeWriting::exceptionAbortsTheFrame()
{
    const std::vector<ZvDbObjectId> lines {addLine(), addLine(), addLine()};
    select(lines);
    drawing().clearUndo();
    {
        Listener listener(drawing());
        listener.react = [&] {
            if (listener.modified.size() == 2) {
                listener.react = nullptr; // putting back is told as well
                throw ZvError("refused");
            }
        };
        QVERIFY_EXCEPTION_THROWN(ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1)), ZvError);
    }
    for (const ZvDbObjectId line : lines)
        QCOMPARE(colorOf(line), ZvCmColor());
    QCOMPARE(drawing().frameDepth(), 0);
    QCOMPARE(drawing().openObjectCount(), 0);
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::writeThroughTheCommandIsOneStepOfUndo()
{
    const std::vector<ZvDbObjectId> lines {addLine(), addLine()};
    select(lines);
    drawing().clearUndo();
    ZevaUISetting::setCeColor(colorOfIndex(1));
    QVERIFY(runCommands());
    QCOMPARE(colorOf(lines[1]), colorOfIndex(1));
    QVERIFY(runMacro(L"_.UNDO 1"));
    QCOMPARE(colorOf(lines[0]), ZvCmColor());
    QCOMPARE(colorOf(lines[1]), ZvCmColor());
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::undoBringsSummariesBack()
{
    const std::vector<ZvDbObjectId> lines {addLine(), addLine()};
    select(lines);
    ZevaUISetting::setCeColor(colorOfIndex(1));
    QVERIFY(runCommands());
    ZvCmColor color;
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), 2);
    QCOMPARE(color, colorOfIndex(1));
    QVERIFY(drawing().undo());
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), 2);
    QCOMPARE(color, ZvCmColor());
}

// ---- locked entities of a list

void TestFacadeWriting::lockedAndUnopenableEntitiesAreRemoved()
{
    const ZvDbObjectId layer = addLockedLayer();
    const ZvDbObjectId locked = addLineOn(layer);
    const ZvDbObjectId free = addLine();
    const ZvDbObjectId erased = addLine();
    const ZvDbObjectId last = addLine();
    change<ZvDbEntity>(erased, [](ZvDbEntity &entity) { entity.erase(); });
    ZvArray<ZvDbObjectId> ids;
    for (const ZvDbObjectId id : {locked, free, erased, last, layer})
        ids.append(id);
    QCOMPARE(ZevaUISetting::removeLockedEntity(ids), 3); // the layer is no entity
    QCOMPARE(ids.length(), 2);
    QCOMPARE(ids[0], free);
    QCOMPARE(ids[1], last);
    QCOMPARE(drawing().openObjectCount(), 0);
}

void TestFacadeWriting::nullIdsStay()
{
    ZvArray<ZvDbObjectId> ids;
    ids.append(ZvDbObjectId());
    ids.append(addLine());
    QCOMPARE(ZevaUISetting::removeLockedEntity(ids), 0);
    QCOMPARE(ids.length(), 2);
    QVERIFY(ids[0].isNull());
}

void TestFacadeWriting::doubleIdsAreRemovedOneByOne()
{
    const ZvDbObjectId locked = addLineOn(addLockedLayer());
    ZvArray<ZvDbObjectId> ids;
    ids.append(locked);
    ids.append(locked);
    QCOMPARE(ZevaUISetting::removeLockedEntity(ids), 2);
    QVERIFY(ids.isEmpty());
}

void TestFacadeWriting::emptyListRemovesNone()
{
    ZvArray<ZvDbObjectId> ids;
    QCOMPARE(ZevaUISetting::removeLockedEntity(ids), 0);
}

ZEVA_TEST_MAIN(TestFacadeWriting)
#include "tst_facade_writing.moc"
