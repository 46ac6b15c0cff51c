// SPDX-License-Identifier: MIT
#include "drawingtest.h"

#include "base/zverror.h"
#include "db/zvdbhostservice.h"

#include <algorithm>
#include <functional>
#include <new>

namespace {

typedef ZevaUISetting::EntityValue EntityValue;

EntityValue colorValue(int index)
{
    EntityValue value;
    value.color = colorOfIndex(index);
    return value;
}

const char kReferenceWithAttribute[]
    = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
      "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n8\n0\n2\nDoor\n70\n2\n10\n0.0\n20\n0.0\n30\n0."
      "0\n3\nDoor\n0\nENDBLK\n8\n0\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n"
      "0\nINSERT\n8\n0\n66\n1\n2\nDoor\n10\n0.0\n20\n0.0\n30\n0.0\n"
      "0\nATTRIB\n8\n0\n10\n0.0\n20\n0.0\n30\n0.0\n40\n2.5\n1\nD1\n2\nMARK\n70\n0\n0\nSEQEND\n8\n0\n"
      "0\nENDSEC\n0\nEOF\n";

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
    void answerOfTheKernelIsNotRead_data();
    void answerOfTheKernelIsNotRead();
    void textStyleReachesTextsOnly();
    void subEntitiesFollow_data();
    void subEntitiesFollow();
    void hiddenLayerIsRefused();
    void dimensionStyleTakesItsOverridesAway();

    // the selection
    void selectionIsWrittenInOneStep();
    void selectionIsWrittenInsideOneFrame();
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
    void exceptionAbortsTheFrame_data();
    void exceptionAbortsTheFrame();
    void exceptionsOfEveryKindGoOnToTheCaller();
    void exceptionFailsTheCommand();
    void messageComesWhenAllIsClosed();
    void undoAndRedoAreTold();
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
    static void addFineRecords()
    {
        addLayer(L"Fine");
        addLineType(L"Fine");
        addMaterial(L"Fine");
        addPlotStyle(L"Fine");
    }
    static EntityValue fineValue()
    {
        EntityValue value;
        value.color = colorOfIndex(3);
        value.lineWeight = ZvDb::kLnWt070;
        value.name = L"FINE"; // names compare without case
        return value;
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
    const char *names[] = {"colour",     "line weight", "line type",         "layer",     "material", "dimension style",
                           "text style", "table style", "multileader style", "plot style"};
    for (int i = 0; i < 10; ++i)
        QTest::newRow(names[i]) << i;
    QTest::newRow("text style of a multiline text") << 16;
}

void TestFacadeWriting::propertyIsWritten()
{
    QFETCH(int, number);
    const bool isMText = number == 16;
    number %= 10;
    addFineRecords();
    EntityValue value = fineValue();
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

void TestFacadeWriting::answerOfTheKernelIsNotRead_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("line type") << 2;
    QTest::newRow("layer") << 3;
    QTest::newRow("material") << 4;
    QTest::newRow("plot style") << 9;
}

void TestFacadeWriting::answerOfTheKernelIsNotRead()
{
    // A name that the drawing lacks differs, and so it is written as far as this goes.
    QFETCH(int, number);
    EntityValue value;
    value.name = L"no such name";
    change<ZvDbEntity>(addLine(), [&](ZvDbEntity &entity) {
        const QString before = property(entity, number);
        QVERIFY(ZevaUISetting::setProperty(&entity, ZevaUISetting::Entity_Property(number), value));
        QCOMPARE(property(entity, number), before);
    });
}

void TestFacadeWriting::textStyleReachesTextsOnly()
{
    EntityValue value;
    value.objectId = addTextStyle(L"Fine");
    for (ZvDbEntity *entity :
         {static_cast<ZvDbEntity *>(new ZvDbDimension), static_cast<ZvDbEntity *>(new ZvDbMLeader)}) {
        change<ZvDbEntity>(add(entity), [&](ZvDbEntity &e) {
            QVERIFY(!ZevaUISetting::setProperty(&e, ZevaUISetting::kTextStyle, value));
        });
    }
}

void TestFacadeWriting::subEntitiesFollow_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("colour") << 0;
    QTest::newRow("line weight") << 1;
    QTest::newRow("line type") << 2;
    QTest::newRow("layer") << 3;
    QTest::newRow("material") << 4;
    QTest::newRow("plot style") << 9;
}

void TestFacadeWriting::subEntitiesFollow()
{
    QFETCH(int, number);
    openDrawing(kReferenceWithAttribute);
    addFineRecords();
    ZvDbObjectId reference;
    ZvDbObjectId attribute;
    {
        const ZvDbObjectPointer<ZvDbBlockTableRecord> space(drawing().modelSpaceId(), ZvDb::kForRead);
        ZvDbBlockTableRecordIterator *made = nullptr;
        space->newIterator(made);
        const std::unique_ptr<ZvDbBlockTableRecordIterator> iterator(made);
        reference = iterator->entityId();
        const ZvDbObjectPointer<ZvDbBlockReference> insert(reference, ZvDb::kForRead);
        QVERIFY(insert);
        QCOMPARE(insert->attributeIds().size(), std::size_t(1));
        attribute = *insert->attributeIds().begin();
    }
    const auto shown = [number](ZvDbObjectId id) {
        return read<ZvDbEntity>(id, [=](const ZvDbEntity &entity) { return property(entity, number); });
    };
    const QString before = shown(attribute);
    select({reference});
    drawing().clearUndo();
    ZevaUISetting::setSelectedProperty(ZevaUISetting::Entity_Property(number), fineValue());
    QCOMPARE(shown(attribute), shown(reference));
    QVERIFY(shown(attribute) != before);
    QVERIFY(drawing().undo());
    QCOMPARE(shown(attribute), before);
    QVERIFY(!drawing().canUndo()); // both in one step
}

void TestFacadeWriting::hiddenLayerIsRefused()
{
    addLayer(L"*Helper");
    const ZvDbObjectId line = addLine();
    select({line});
    drawing().clearUndo();
    EntityValue value;
    value.name = L"*Helper";
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kLayer, value);
    read<ZvDbEntity>(line, [](const ZvDbEntity &entity) { QCOMPARE(entity.layer(), ZvString(L"0")); });
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::dimensionStyleTakesItsOverridesAway()
{
    const ZvDbObjectId style = addDimStyle(L"Fine");
    const ZvDbObjectId dimension = add(new ZvDbDimension);
    // The override of one variable: a group of its code and value.
    wchar_t texts[][7] = {L"ACAD", L"DSTYLE", L"{", L"}"};
    ZvResBuf chain[6];
    const int types[] = {1001, 1000, 1002, 1070, 1040, 1002};
    for (int i = 0; i < 6; ++i) {
        chain[i].restype = types[i];
        chain[i].rbnext = i < 5 ? &chain[i + 1] : nullptr;
    }
    chain[0].resval.rstring = texts[0];
    chain[1].resval.rstring = texts[1];
    chain[2].resval.rstring = texts[2];
    chain[3].resval.rint = 40;
    chain[4].resval.rreal = 9.0;
    chain[5].resval.rstring = texts[3];
    change<ZvDbEntity>(dimension, [&](ZvDbEntity &entity) { QCOMPARE(entity.setXData(chain), Zv::eOk); });
    EntityValue value;
    value.objectId = style;
    change<ZvDbEntity>(dimension, [&](ZvDbEntity &entity) {
        QVERIFY(ZevaUISetting::setProperty(&entity, ZevaUISetting::kDimStyle, value));
    });
    read<ZvDbEntity>(dimension, [](const ZvDbEntity &entity) {
        ZvResBuf *left = entity.xData(L"ACAD");
        QVERIFY(!left);
        zvutRelRb(left);
    });
}

// ---- the selection

void TestFacadeWriting::selectionIsWrittenInOneStep()
{
    const std::vector<ZvDbObjectId> lines{addLine(), addLine(), addLine()};
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

void TestFacadeWriting::selectionIsWrittenInsideOneFrame()
{
    select({addLine(), addLine(), addLine()});
    Listener listener(drawing());
    std::vector<int> depths;
    std::vector<int> open;
    listener.react = [&] {
        depths.push_back(drawing().frameDepth());
        open.push_back(drawing().openObjectCount());
    };
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(depths, (std::vector<int>{1, 1, 1}));
    QCOMPARE(open, (std::vector<int>{0, 0, 0})); // each is closed before the next is opened
    QCOMPARE(drawing().frameDepth(), 0);
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
        QCOMPARE(listener.modified, std::vector<ZvDbObjectId>{line});
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
    QCOMPARE(listener.modified, std::vector<ZvDbObjectId>{dimension});
    read<ZvDbDimension>(dimension, [=](const ZvDbDimension &entity) { QCOMPARE(entity.dimensionStyle(), style); });
    QVERIFY(boxes.shown().empty());
}

void TestFacadeWriting::unknownNameWritesNothing()
{
    select({addLine()});
    drawing().clearUndo();
    EntityValue value;
    value.name = L"no such name";
    for (const auto property :
         {ZevaUISetting::kLineType, ZevaUISetting::kLayer, ZevaUISetting::kMaterial, ZevaUISetting::kPlotStyle})
        ZevaUISetting::setSelectedProperty(property, value);
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::selectionStaysSelected()
{
    const std::vector<ZvDbObjectId> lines{addLine(), addLine()};
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

void TestFacadeWriting::exceptionAbortsTheFrame_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<bool>("again");
    QTest::newRow("at the first entity") << 1 << false;
    QTest::newRow("at the second") << 2 << false;
    QTest::newRow("and once more when it is put back") << 2 << true;
}

void TestFacadeWriting::exceptionAbortsTheFrame()
{
    QFETCH(int, at);
    QFETCH(bool, again);
    const std::vector<ZvDbObjectId> lines{addLine(), addLine(), addLine()};
    select(lines);
    drawing().clearUndo();
    {
        Listener listener(drawing());
        listener.react = [&] { // putting back is told as well
            if (int(listener.modified.size()) == at || (again && int(listener.modified.size()) > at))
                throw ZvError("refused");
        };
        QVERIFY_EXCEPTION_THROWN(ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1)), ZvError);
    }
    for (const ZvDbObjectId line : lines)
        QCOMPARE(colorOf(line), ZvCmColor());
    QCOMPARE(drawing().frameDepth(), 0);
    QCOMPARE(drawing().openObjectCount(), 0);
    QVERIFY(!drawing().canUndo());
    // The next write is none the worse for it.
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    QCOMPARE(colorOf(lines[2]), colorOfIndex(1));
    QVERIFY(drawing().undo());
    QVERIFY(!drawing().canUndo());
}

void TestFacadeWriting::exceptionsOfEveryKindGoOnToTheCaller()
{
    const ZvDbObjectId line = addLine();
    select({line});
    Listener listener(drawing());
    listener.react = [&] {
        listener.react = nullptr;
        throw std::bad_alloc();
    };
    QVERIFY_EXCEPTION_THROWN(ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1)), std::bad_alloc);
    QCOMPARE(colorOf(line), ZvCmColor());
    QCOMPARE(drawing().frameDepth(), 0);
}

void TestFacadeWriting::exceptionFailsTheCommand()
{
    const std::vector<ZvDbObjectId> lines{addLine(), addLine()};
    select(lines);
    drawing().clearUndo();
    {
        Listener listener(drawing());
        listener.react = [&] {
            if (listener.modified.size() == 2) {
                listener.react = nullptr;
                throw ZvError("refused");
            }
        };
        ZevaUISetting::setCeColor(colorOfIndex(1));
        QVERIFY(!runCommands());
    }
    QCOMPARE(colorOf(lines[0]), ZvCmColor());
    QVERIFY(!drawing().canUndo());
    QCOMPARE(variable(L"CMDACTIVE"), 0.0);
    QCOMPARE(selection().ids(), lines);
}

void TestFacadeWriting::messageComesWhenAllIsClosed()
{
    select({addLineOn(addLockedLayer()), addLine()});
    static int frames;
    static int objects;
    frames = objects = -1;
    const auto before = zvuiSetMessageBoxHook([](const ZvString &, const ZvString &, unsigned) {
        frames = drawing().frameDepth();
        objects = drawing().openObjectCount();
        return 1;
    });
    ZevaUISetting::setSelectedProperty(ZevaUISetting::kColor, colorValue(1));
    zvuiSetMessageBoxHook(before);
    QCOMPARE(frames, 0);
    QCOMPARE(objects, 0);
}

void TestFacadeWriting::undoAndRedoAreTold()
{
    const ZvDbObjectId locked = addLineOn(addLockedLayer());
    const std::vector<ZvDbObjectId> lines{addLine(), addLine()};
    select({lines[0], locked, lines[1]});
    const MessageBoxes boxes;
    drawing().clearUndo();
    ZevaUISetting::setCeColor(colorOfIndex(1));
    QVERIFY(runCommands());
    Listener listener(drawing());
    const auto told = [&listener] {
        std::vector<ZvDbObjectId> ids;
        ids.swap(listener.modified);
        std::sort(ids.begin(), ids.end(), [](ZvDbObjectId a, ZvDbObjectId b) { return a.asInt64() < b.asInt64(); });
        return ids;
    };
    ZvCmColor seen;
    listener.react = [&] { seen = colorOf(listener.modified.back()); }; // readable, and as it is now
    QVERIFY(runMacro(L"_.UNDO 1"));
    QCOMPARE(told(), lines);
    QCOMPARE(seen, ZvCmColor());
    QVERIFY(runMacro(L"_.REDO"));
    QCOMPARE(told(), lines);
    QCOMPARE(seen, colorOfIndex(1));
    QCOMPARE(boxes.shown().size(), std::size_t(1)); // neither asks nor reports anew
    ZvCmColor common;
    select(lines);
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(common), 2);
    QCOMPARE(common, colorOfIndex(1));
}

void TestFacadeWriting::writeThroughTheCommandIsOneStepOfUndo()
{
    const std::vector<ZvDbObjectId> lines{addLine(), addLine()};
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
    const std::vector<ZvDbObjectId> lines{addLine(), addLine()};
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
