// SPDX-License-Identifier: MIT
#include "drawingtest.h"

#include "core/zvsystem.h"
#include "db/zvdbsummary.h"

#include <QRandomGenerator>

#include <array>
#include <functional>

using namespace ZvGlobalUIReactorHelp;

typedef ZvArray<SPickFirstInfo *> Infos;

namespace {

/// The ten summaries of the library, or of classes derived from them: those have a merge() of their own as far as the
/// scan can know, and take in the entities one by one.
template<class Color, class LineType, class LineWeight, class Layer, class Material, class PlotStyle, class TableStyle,
         class DimStyle, class TextStyle, class MLeaderStyle>
struct TenOf
{
    Color color;
    LineType lineType;
    LineWeight lineWeight;
    Layer layer;
    Material material;
    PlotStyle plotStyle;
    TableStyle tableStyle;
    DimStyle dimStyle;
    TextStyle textStyle;
    MLeaderStyle mleaderStyle;

    Infos infos()
    {
        Infos result;
        for (SPickFirstInfo *info : {static_cast<SPickFirstInfo *>(&color), static_cast<SPickFirstInfo *>(&lineType),
                                     static_cast<SPickFirstInfo *>(&lineWeight), static_cast<SPickFirstInfo *>(&layer),
                                     static_cast<SPickFirstInfo *>(&material), static_cast<SPickFirstInfo *>(&plotStyle),
                                     static_cast<SPickFirstInfo *>(&tableStyle), static_cast<SPickFirstInfo *>(&dimStyle),
                                     static_cast<SPickFirstInfo *>(&textStyle),
                                     static_cast<SPickFirstInfo *>(&mleaderStyle)})
            result.append(info);
        return result;
    }
    /// With others beside the ten.
    void scan(const Infos &others = Infos())
    {
        Infos all = infos();
        all.append(others);
        for (SPickFirstInfo *info : all)
            info->reset();
        ZevaUISetting::getPickFirstInfos(all);
    }
    /// Without the library's scan: nothing but the rule, entity by entity.
    void mergeByHand(const std::vector<ZvDbObjectId> &ids)
    {
        const Infos all = infos();
        for (SPickFirstInfo *info : all)
            info->reset();
        for (std::size_t i = 0; 2 * i < ids.size(); ++i) {
            const std::size_t j = ids.size() - 1 - i;
            const ZvDbObjectPointer<ZvDbEntity> first(ids[i], ZvDb::kForRead);
            const ZvDbObjectPointer<ZvDbEntity> second(j == i ? ZvDbObjectId() : ids[j], ZvDb::kForRead);
            for (SPickFirstInfo *info : all) {
                if (info->status != kInfoMixed)
                    info->merge(first.get(), second.get());
            }
        }
    }
    std::array<int, 10> statuses()
    {
        std::array<int, 10> result {};
        const Infos all = infos();
        for (int i = 0; i < 10; ++i)
            result[std::size_t(i)] = all[i]->status;
        return result;
    }
};

template<class Info>
class Own : public Info
{
};

typedef TenOf<SColorInfo, SLineTypeInfo, SLineWeightInfo, SLayerInfo, SMaterialInfo, SPlotStyleInfo, STableStyleInfo,
              SDimStyleInfo, STextStyleInfo, SMleaderStyleInfo>
    Ten;
typedef TenOf<Own<SColorInfo>, Own<SLineTypeInfo>, Own<SLineWeightInfo>, Own<SLayerInfo>, Own<SMaterialInfo>,
              Own<SPlotStyleInfo>, Own<STableStyleInfo>, Own<SDimStyleInfo>, Own<STextStyleInfo>, Own<SMleaderStyleInfo>>
    OwnTen;

template<class A, class B>
void compareAll(A &a, B &b)
{
    QCOMPARE(a.statuses(), b.statuses());
    QCOMPARE(a.color.value, b.color.value);
    QCOMPARE(a.lineType.value, b.lineType.value);
    QCOMPARE(a.lineWeight.value, b.lineWeight.value);
    QCOMPARE(a.layer.value, b.layer.value);
    QCOMPARE(a.material.value, b.material.value);
    QCOMPARE(a.plotStyle.value, b.plotStyle.value);
    QCOMPARE(a.tableStyle.value, b.tableStyle.value);
    QCOMPARE(a.dimStyle.value, b.dimStyle.value);
    QCOMPARE(a.textStyle.value, b.textStyle.value);
    QCOMPARE(a.mleaderStyle.value, b.mleaderStyle.value);
}

/// Notes the pairs that it is given.
class Pairs : public SPickFirstInfo
{
public:
    void merge(const ZvDbEntity *first, const ZvDbEntity *second) override
    {
        pairs.push_back({first ? first->objectId() : ZvDbObjectId(), second ? second->objectId() : ZvDbObjectId()});
        if (int(pairs.size()) == mixedAfter)
            status = kInfoMixed;
    }
    void reset() override { status = kInfoUniform; }

    std::vector<std::pair<ZvDbObjectId, ZvDbObjectId>> pairs;
    int mixedAfter = 0;
};

} // namespace

namespace QTest {
template<>
inline char *toString(const std::array<int, 10> &statuses)
{
    QByteArray text;
    for (const int status : statuses)
        text += QByteArray::number(status) + ' ';
    return qstrdup(text.constData());
}
}

class TestPickFirst : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // the selection
    void selectionIsNamedWhereThereIsOne();
    void selectionIsAbsentWithoutAPartOnTheWay_data();
    void selectionIsAbsentWithoutAPartOnTheWay();
    void emptySelectionHasTheZeroName();
    void hasSelectedFollowsTheSelection();

    // the scan
    void scanVisitsFromBothEnds_data();
    void scanVisitsFromBothEnds();
    void scanOfNoSummariesOpensNothing();
    void scanWithoutDocumentTellsSoAndKeepsValues();
    void scanWithoutSelectionTellsSo();
    void scanEndsWhenAllAreMixed();
    void nullSummaryMakesTheScanRunToItsEnd();
    void mixedSummaryIsNotGivenFurtherPairs();
    void unopenableEntityCountsAsAbsent();
    void scanLeavesNothingOpen();
    void derivedSummaryGoesThroughItsOwnMerge();
    void hostsMergeMayHandOnWhatItLikes();
    void namesThatChangeInsideAScanAreSeen();
    void propertiesThatChangeInsideAScanAreSeen();
    void scanInsideAScanLeavesTheOuterOneAlone();
    void secondScanOpensNothingWhileNothingChanges();
    void changeOfAnEntityIsSeenByTheNextScan();
    void changeOfTheSelectionIsSeenByTheNextScan();
    void renamedLineTypeIsSeenByTheNextScan();
    void entityHeldOpenForWriteIsAbsentWhileItIs();
    void undoneChangeIsSeenByTheNextScan();
    void scanFollowsTheCurrentDocument();
    void summaryThatWasNotResetGoesOn();
    void laterScanOfMoreSummariesIsComplete();

    // what summaries make of pairs
    void resetKeepsTheValue();
    void newSummaryIsEmpty();
    void pairThatDiffersHasNoValue();
    void oneEntityGivesItsValue();
    void twoEntitiesThatDifferAreMixedWithoutAValue();
    void threeEntitiesKeepTheValueOfTheirEnds();
    void weightByLayerIsNotResolved();
    void namesThatDifferInCaseAreMixed();
    void propertyIsSummarised_data();
    void propertyIsSummarised();
    void otherClassMakesAStyleMixed_data();
    void otherClassMakesAStyleMixed();
    void absentFirstEntityMakesAClassStyleMixed_data();
    void absentFirstEntityMakesAClassStyleMixed();
    void absentPairChangesNothing();
    void textStyleIsThatOfFourClasses();

    // one property at a time
    void queryTellsDocumentAndSelection_data();
    void queryTellsDocumentAndSelection();
    void queryPassesOverWhatCannotBeOpened();
    void queryAgreesWithItsSummary();
    void queryOfMixedEntitiesKeepsTheFirstValue();
    void styleQueriesPassOverOtherClasses();
    void styleQueryWithoutAFittingEntityHasTheNullId();
    void textStyleQueryLooksAtTextsOnly();
    void queriesLeaveNothingOpen();
    void lockedLayerIsTold();

    // the kernel's summary is the scan's
    void everyWayToSummariseGivesTheSame_data();
    void everyWayToSummariseGivesTheSame();
    void kernelRefusesIdsOfTwoDrawings();

private:
    ZvDbObjectId addText(ZvDbObjectId style)
    {
        return add(new ZvDbText({0, 0, 0}, L"text", style, 2.5, 0.0));
    }
    template<class T, class Set>
    ZvDbObjectId addStyled(Set set)
    {
        auto *entity = new T;
        set(*entity);
        return add(entity);
    }
    ZvDbObjectId addTable(ZvDbObjectId style)
    {
        return addStyled<ZvDbTable>([=](ZvDbTable &table) { table.setTableStyle(style); });
    }
    ZvDbObjectId addDimension(ZvDbObjectId style)
    {
        return addStyled<ZvDbDimension>([=](ZvDbDimension &dimension) { dimension.setDimensionStyle(style); });
    }
    ZvDbObjectId addMLeader(ZvDbObjectId style)
    {
        return addStyled<ZvDbMLeader>([=](ZvDbMLeader &leader) { leader.setMLeaderStyle(style); });
    }
    ZvDbObjectId addMText(ZvDbObjectId style)
    {
        return addStyled<ZvDbMText>([=](ZvDbMText &text) { text.setTextStyle(style); });
    }
};

// ---- the selection

void TestPickFirst::selectionIsNamedWhereThereIsOne()
{
    select({addLine(), addLine()});
    long name[2] = {};
    QVERIFY(ZevaUISetting::pickFirstSS(name));
    long length = 0;
    QCOMPARE(zvedSSLength(name, length), int(ZvRes::kNormal));
    QCOMPARE(length, 2L);
}

void TestPickFirst::selectionIsAbsentWithoutAPartOnTheWay_data()
{
    QTest::addColumn<QString>("part");
    for (const char *part : {"system", "documents", "document", "context", "holder"})
        QTest::newRow(part) << QString::fromLatin1(part);
}

void TestPickFirst::selectionIsAbsentWithoutAPartOnTheWay()
{
    QFETCH(QString, part);
    select({addLine()});
    ZvEdSelectionHolder *holder = document()->editingContext()->selectionHolder();
    CHcSystem *system = CHcSystem::instance();
    if (part == QLatin1String("system"))
        CHcSystem::setInstanceAvailable(false);
    else if (part == QLatin1String("documents"))
        system->setDocManagerAvailable(false);
    else if (part == QLatin1String("document"))
        zvDocManagerPtr()->closeDocument(document());
    else if (part == QLatin1String("context"))
        document()->setEditingContextAvailable(false);
    else
        document()->editingContext()->setSelectionHolder(nullptr);

    long name[2] = {7, 7};
    const bool isThere = ZevaUISetting::pickFirstSS(name);
    const bool hasSelected = ZevaUISetting::hasSelected();
    CHcSystem::setInstanceAvailable(true);
    system->setDocManagerAvailable(true);
    if (part == QLatin1String("context"))
        document()->setEditingContextAvailable(true);
    if (part == QLatin1String("holder"))
        document()->editingContext()->setSelectionHolder(holder);
    QVERIFY(!isThere);
    QVERIFY(!hasSelected);
    QCOMPARE(name[0], 0L);
    QCOMPARE(name[1], 0L);
}

void TestPickFirst::emptySelectionHasTheZeroName()
{
    long name[2] = {7, 7};
    QVERIFY(ZevaUISetting::pickFirstSS(name));
    QCOMPARE(name[0], 0L);
    QCOMPARE(name[1], 0L);
    QVERIFY(!ZevaUISetting::hasSelected());
}

void TestPickFirst::hasSelectedFollowsTheSelection()
{
    select({addLine()});
    QVERIFY(ZevaUISetting::hasSelected());
    select({});
    QVERIFY(!ZevaUISetting::hasSelected());
}

// ---- the scan

void TestPickFirst::scanVisitsFromBothEnds_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QVector<QPoint>>("pairs"); // positions, -1 for none
    QTest::newRow("one entity") << 1 << QVector<QPoint> {{0, -1}};
    QTest::newRow("two entities") << 2 << QVector<QPoint> {{0, 1}};
    QTest::newRow("three entities") << 3 << QVector<QPoint> {{0, 2}, {1, -1}};
    QTest::newRow("four entities") << 4 << QVector<QPoint> {{0, 3}, {1, 2}};
    QTest::newRow("five entities") << 5 << QVector<QPoint> {{0, 4}, {1, 3}, {2, -1}};
}

void TestPickFirst::scanVisitsFromBothEnds()
{
    QFETCH(int, count);
    QFETCH(QVector<QPoint>, pairs);
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < count; ++i)
        ids.push_back(addLine());
    select(ids);
    Pairs info;
    info.reset();
    Infos infos;
    infos.append(&info);
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(int(info.pairs.size()), pairs.size());
    for (int i = 0; i < pairs.size(); ++i) {
        const QPoint pair = pairs.at(i);
        QCOMPARE(info.pairs[std::size_t(i)].first, ids[std::size_t(pair.x())]);
        QCOMPARE(info.pairs[std::size_t(i)].second, pair.y() < 0 ? ZvDbObjectId() : ids[std::size_t(pair.y())]);
    }
    QCOMPARE(info.status, int(kInfoUniform));
}

void TestPickFirst::scanOfNoSummariesOpensNothing()
{
    select({addLine(), addLine()});
    const std::uint64_t before = drawing().openingsCount();
    ZevaUISetting::getPickFirstInfos(Infos());
    QCOMPARE(drawing().openingsCount(), before);
}

void TestPickFirst::scanWithoutDocumentTellsSoAndKeepsValues()
{
    change<ZvDbEntity>(addLine(), [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(3)); });
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(3)); });
    select({line});
    Ten ten;
    Pairs pairs;
    ten.scan();
    QCOMPARE(ten.color.value, colorOfIndex(3));
    zvDocManagerPtr()->closeDocument(document());
    Infos infos = ten.infos();
    infos.append(nullptr);
    infos.append(&pairs);
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(ten.statuses(), (std::array<int, 10> {}));
    QCOMPARE(pairs.status, int(kInfoNoDocument));
    QVERIFY(pairs.pairs.empty());
    QCOMPARE(ten.color.value, colorOfIndex(3));
}

void TestPickFirst::scanWithoutSelectionTellsSo()
{
    Ten ten;
    Pairs pairs;
    Infos infos = ten.infos();
    infos.append(nullptr);
    infos.append(&pairs);
    ZevaUISetting::getPickFirstInfos(infos);
    for (const int status : ten.statuses())
        QCOMPARE(status, int(kInfoNoSelection));
    QCOMPARE(pairs.status, int(kInfoNoSelection));
    QVERIFY(pairs.pairs.empty());
}

void TestPickFirst::scanEndsWhenAllAreMixed()
{
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 20; ++i)
        ids.push_back(addLine());
    select(ids);
    Pairs first;
    Pairs second;
    first.mixedAfter = 2;
    second.mixedAfter = 3;
    first.reset();
    second.reset();
    Infos infos;
    infos.append(&first);
    infos.append(&second);
    const std::uint64_t before = drawing().openingsCount();
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(first.pairs.size(), std::size_t(2));
    QCOMPARE(second.pairs.size(), std::size_t(3));
    QCOMPARE(drawing().openingsCount() - before, std::uint64_t(6));
}

void TestPickFirst::nullSummaryMakesTheScanRunToItsEnd()
{
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 20; ++i)
        ids.push_back(addLine());
    select(ids);
    Pairs first;
    first.mixedAfter = 1;
    first.reset();
    SColorInfo color;
    color.reset();
    Infos infos;
    infos.append(&first);
    infos.append(nullptr);
    infos.append(&color);
    const std::uint64_t before = drawing().openingsCount();
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(first.pairs.size(), std::size_t(1));
    QCOMPARE(drawing().openingsCount() - before, std::uint64_t(20));
    QCOMPARE(color.status, int(kInfoUniform));

    // Also when every other one is mixed.
    Pairs second;
    second.mixedAfter = 2;
    second.reset();
    Infos two;
    two.append(nullptr);
    two.append(&second);
    const std::uint64_t then = drawing().openingsCount();
    ZevaUISetting::getPickFirstInfos(two);
    QCOMPARE(second.pairs.size(), std::size_t(2));
    QCOMPARE(drawing().openingsCount() - then, std::uint64_t(20));
}

void TestPickFirst::mixedSummaryIsNotGivenFurtherPairs()
{
    select({addLine(), addLine(), addLine(), addLine()});
    Pairs info;
    info.status = kInfoMixed; // and not reset
    Infos infos;
    infos.append(&info);
    ZevaUISetting::getPickFirstInfos(infos);
    QVERIFY(info.pairs.empty());
}

void TestPickFirst::unopenableEntityCountsAsAbsent()
{
    const ZvDbObjectId first = addLine();
    const ZvDbObjectId last = addLine();
    const ZvDbObjectId middle = addLine();
    select({first, middle, last});
    change<ZvDbEntity>(first, [](ZvDbEntity &entity) { entity.erase(); });
    Pairs info;
    info.reset();
    Infos infos;
    infos.append(&info);
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(selection().ids().size(), std::size_t(3)); // it stays until a command ends
    QCOMPARE(info.pairs.size(), std::size_t(2));
    QCOMPARE(info.pairs[0].first, ZvDbObjectId());
    QCOMPARE(info.pairs[0].second, last);
    QCOMPARE(info.pairs[1].first, middle);
    QCOMPARE(info.pairs[1].second, ZvDbObjectId());
}

void TestPickFirst::scanLeavesNothingOpen()
{
    select({addLine(), addLine(), addLine()});
    OwnTen own;
    Ten ten;
    own.scan();
    ten.scan();
    QCOMPARE(drawing().openObjectCount(), 0);
}

void TestPickFirst::derivedSummaryGoesThroughItsOwnMerge()
{
    class Contrary : public SColorInfo
    {
    public:
        void merge(const ZvDbEntity *, const ZvDbEntity *) override { status = kInfoMixed; }
    };
    select({addLine()});
    Contrary contrary;
    SColorInfo color;
    contrary.reset();
    color.reset();
    Infos infos;
    infos.append(&contrary);
    infos.append(&color);
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(contrary.status, int(kInfoMixed));
    QCOMPARE(color.status, int(kInfoUniform));
}

void TestPickFirst::hostsMergeMayHandOnWhatItLikes()
{
    /// Of the first entities only, and of every second pass only.
    class Half : public SColorInfo
    {
    public:
        void merge(const ZvDbEntity *first, const ZvDbEntity *) override
        {
            if (m_passes++ % 2 == 0)
                SColorInfo::merge(first, nullptr);
        }

    private:
        int m_passes = 0;
    };
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 12; ++i)
        ids.push_back(addLine());
    const int red[] = {0, 2, 4}; // the others are by layer
    for (const int i : red)
        change<ZvDbEntity>(ids[std::size_t(i)], [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select(ids);
    Half half;
    Own<SColorInfo> all;
    Infos infos;
    infos.append(&half);
    infos.append(&all);
    half.reset();
    all.reset();
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(half.status, int(kInfoUniform));
    QCOMPARE(half.value, colorOfIndex(1));
    QCOMPARE(all.status, int(kInfoMixed));

    /// Starts again at every pass.
    class Last : public SColorInfo
    {
    public:
        void merge(const ZvDbEntity *first, const ZvDbEntity *second) override
        {
            reset();
            SColorInfo::merge(first, second);
        }
    };
    /// Holds the later entities against another one.
    class Against : public SColorInfo
    {
    public:
        explicit Against(ZvDbObjectId other) : m_other(other, ZvDb::kForRead) { }
        void merge(const ZvDbEntity *first, const ZvDbEntity *second) override
        {
            SColorInfo::merge(first, m_isLater ? m_other.get() : second);
            m_isLater = true;
        }

    private:
        const ZvDbObjectPointer<ZvDbEntity> m_other;
        bool m_isLater = false;
    };
    const std::vector<ZvDbObjectId> alike{addLine(), addLine(), addLine(), addLine(), addLine(), addLine()};
    for (const ZvDbObjectId id : alike)
        change<ZvDbEntity>(id, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(2)); });
    select(alike);
    Last last;
    Against against(ids[0]);
    Infos more;
    more.append(&last);
    more.append(&against);
    last.reset();
    against.reset();
    ZevaUISetting::getPickFirstInfos(more);
    QCOMPARE(last.status, int(kInfoUniform));
    QCOMPARE(last.value, colorOfIndex(2));
    QCOMPARE(against.status, int(kInfoMixed));
}

namespace {

/// Does something at the second pass of a scan.
class Meddler : public SPickFirstInfo
{
public:
    explicit Meddler(std::function<void()> act) : m_act(std::move(act)) { }
    void merge(const ZvDbEntity *, const ZvDbEntity *) override
    {
        if (++m_passes == 2)
            m_act();
    }
    void reset() override { status = kInfoUniform; }

private:
    const std::function<void()> m_act;
    int m_passes = 0;
};

} // namespace

void TestPickFirst::namesThatChangeInsideAScanAreSeen()
{
    const ZvDbObjectId type = addLineType(L"HIDDEN");
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 8; ++i) {
        ids.push_back(addLine());
        change<ZvDbEntity>(ids.back(), [=](ZvDbEntity &entity) { entity.setLinetype(type); });
    }
    select(ids);
    Meddler meddler([=] {
        change<ZvDbLinetypeTableRecord>(type, [](ZvDbLinetypeTableRecord &record) { record.setName(L"DASHED"); });
    });
    Infos others;
    others.append(&meddler);
    Ten ten;
    ten.scan(others);
    QCOMPARE(ten.lineType.status, int(kInfoMixed));
    QCOMPARE(ten.lineType.value, ZvString(L"HIDDEN"));
    QCOMPARE(ten.color.status, int(kInfoUniform));
}

void TestPickFirst::propertiesThatChangeInsideAScanAreSeen()
{
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 8; ++i)
        ids.push_back(addLine());
    select(ids);
    Meddler meddler([=] { change<ZvDbEntity>(ids[3], [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); }); });
    Infos others;
    others.append(&meddler);
    Ten ten;
    ten.scan(others);
    QCOMPARE(ten.color.status, int(kInfoMixed));
    QCOMPARE(ten.lineType.status, int(kInfoUniform));
}

void TestPickFirst::scanInsideAScanLeavesTheOuterOneAlone()
{
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 9; ++i)
        ids.push_back(addLine());
    change<ZvDbEntity>(ids[4], [](ZvDbEntity &entity) { entity.setLineWeight(ZvDb::kLnWt100); });
    select(ids);
    OwnTen inner;
    ZvCmColor color;
    int answer = -1;
    Meddler meddler([&] {
        inner.scan();
        answer = ZevaUISetting::getPickFirstEntitiesColor(color);
    });
    Infos others;
    others.append(&meddler);
    Ten outer;
    outer.scan(others);
    OwnTen byHand;
    byHand.mergeByHand(ids);
    QCOMPARE(answer, int(kInfoUniform));
    compareAll(inner, byHand);
    compareAll(outer, byHand);
    QCOMPARE(outer.lineWeight.status, int(kInfoMixed));
}

void TestPickFirst::secondScanOpensNothingWhileNothingChanges()
{
    const ZvDbObjectId style = ZevaUISetting::findDimStyleTableRecordByName(L"Standard", nullptr);
    select({addDimension(style), addDimension(style), addDimension(style)});
    Ten ten;
    ten.scan();
    QCOMPARE(ten.dimStyle.status, int(kInfoUniform));
    const std::uint64_t before = drawing().openingsCount();
    Ten other;
    other.scan();
    QCOMPARE(drawing().openingsCount(), before);
    compareAll(ten, other);
}

void TestPickFirst::changeOfAnEntityIsSeenByTheNextScan()
{
    const ZvDbObjectId line = addLine();
    select({line, addLine()});
    Ten ten;
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoUniform));
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoMixed));
}

void TestPickFirst::changeOfTheSelectionIsSeenByTheNextScan()
{
    const ZvDbObjectId red = addLine();
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(red, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    Ten ten;
    select({red});
    ten.scan();
    QCOMPARE(ten.color.value, colorOfIndex(1));
    select({line});
    ten.scan();
    QCOMPARE(ten.color.value, ZvCmColor());
    select({red, line});
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoMixed));
}

void TestPickFirst::renamedLineTypeIsSeenByTheNextScan()
{
    const ZvDbObjectId type = addLineType(L"HIDDEN");
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [=](ZvDbEntity &entity) { entity.setLinetype(type); });
    select({line});
    Ten ten;
    ten.scan();
    QCOMPARE(ten.lineType.value, ZvString(L"HIDDEN"));
    change<ZvDbLinetypeTableRecord>(type, [](ZvDbLinetypeTableRecord &record) { record.setName(L"DASHED"); });
    ten.scan();
    QCOMPARE(ten.lineType.value, ZvString(L"DASHED"));
}

void TestPickFirst::entityHeldOpenForWriteIsAbsentWhileItIs()
{
    const ZvDbObjectId red = addLine();
    change<ZvDbEntity>(red, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select({addLine(), red});
    Ten ten;
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoMixed));
    {
        const ZvDbObjectPointer<ZvDbEntity> held(red, ZvDb::kForWrite);
        ten.scan();
        QCOMPARE(ten.color.status, int(kInfoUniform));
        QCOMPARE(ten.color.value, ZvCmColor());
    }
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoMixed));
}

void TestPickFirst::undoneChangeIsSeenByTheNextScan()
{
    const ZvDbObjectId line = addLine();
    select({line});
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    Ten ten;
    ten.scan();
    QCOMPARE(ten.color.value, colorOfIndex(1));
    QVERIFY(drawing().undo());
    ten.scan();
    QCOMPARE(ten.color.value, ZvCmColor());
}

void TestPickFirst::scanFollowsTheCurrentDocument()
{
    ZvApDocument *first = document();
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select({line});
    Ten ten;
    ten.scan();
    ZvApDocument *second = openAnother();
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoNoSelection));
    select({addLine()});
    ten.scan();
    QCOMPARE(ten.color.value, ZvCmColor());
    zvDocManagerPtr()->setCurrentDocument(first);
    ten.scan();
    QCOMPARE(ten.color.value, colorOfIndex(1));
    zvDocManagerPtr()->setCurrentDocument(second);
    ten.scan();
    QCOMPARE(ten.color.value, ZvCmColor());
}

void TestPickFirst::summaryThatWasNotResetGoesOn()
{
    const ZvDbObjectId red = addLine();
    change<ZvDbEntity>(red, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    const ZvDbObjectId line = addLine();
    SColorInfo color;
    Infos infos;
    infos.append(&color);
    select({red});
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(color.status, int(kInfoNoDocument)); // a scan only makes a status mixed
    QCOMPARE(color.value, colorOfIndex(1));
    select({line});
    ZevaUISetting::getPickFirstInfos(infos);
    QCOMPARE(color.status, int(kInfoMixed));
    QCOMPARE(color.value, colorOfIndex(1));
}

void TestPickFirst::laterScanOfMoreSummariesIsComplete()
{
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setLineWeight(ZvDb::kLnWt100); });
    select({line});
    SColorInfo color;
    color.reset();
    Infos infos;
    infos.append(&color);
    ZevaUISetting::getPickFirstInfos(infos);
    Ten ten;
    ten.scan();
    QCOMPARE(ten.lineWeight.value, ZvDb::kLnWt100);
    QCOMPARE(ten.tableStyle.status, int(kInfoMixed));
}

// ---- what summaries make of pairs

void TestPickFirst::resetKeepsTheValue()
{
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    SColorInfo info;
    read<ZvDbEntity>(line, [&](const ZvDbEntity &entity) { info.merge(&entity, nullptr); });
    info.status = kInfoMixed;
    info.reset();
    QCOMPARE(info.status, int(kInfoUniform));
    QCOMPARE(info.value, colorOfIndex(1));
    info.merge(nullptr, nullptr);
    QCOMPARE(info.value, ZvCmColor()); // the running value was forgotten
}

void TestPickFirst::newSummaryIsEmpty()
{
    Ten ten;
    QCOMPARE(ten.statuses(), (std::array<int, 10> {}));
    QCOMPARE(ten.color.value, ZvCmColor());
    QVERIFY(ten.lineType.value.isEmpty());
    QCOMPARE(int(ten.lineWeight.value), -1);
    QVERIFY(ten.layer.value.isNull());
    QVERIFY(ten.material.value.isEmpty());
    QVERIFY(ten.plotStyle.value.isEmpty());
    QVERIFY(ten.tableStyle.value.isNull());
    QVERIFY(ten.dimStyle.value.isNull());
    QVERIFY(ten.textStyle.value.isNull());
    QVERIFY(ten.mleaderStyle.value.isNull());
}

void TestPickFirst::pairThatDiffersHasNoValue()
{
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId red = addLine();
    change<ZvDbEntity>(red, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    SColorInfo info;
    info.reset();
    read<ZvDbEntity>(line, [&](const ZvDbEntity &a) {
        read<ZvDbEntity>(red, [&](const ZvDbEntity &b) { info.merge(&b, &a); });
    });
    QCOMPARE(info.status, int(kInfoMixed));
    QCOMPARE(info.value, ZvCmColor());
}

void TestPickFirst::oneEntityGivesItsValue()
{
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select({line});
    Ten ten;
    ten.scan();
    QCOMPARE(ten.color.status, int(kInfoUniform));
    QCOMPARE(ten.color.value, colorOfIndex(1));
}

void TestPickFirst::twoEntitiesThatDifferAreMixedWithoutAValue()
{
    const ZvDbObjectId red = addLine();
    change<ZvDbEntity>(red, [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select({red, addLine()});
    Ten ten;
    OwnTen own;
    ten.scan();
    own.scan();
    QCOMPARE(ten.color.status, int(kInfoMixed));
    QCOMPARE(ten.color.value, ZvCmColor());
    compareAll(ten, own);
}

void TestPickFirst::threeEntitiesKeepTheValueOfTheirEnds()
{
    std::vector<ZvDbObjectId> ids {addLine(), addLine(), addLine()};
    for (const std::size_t end : {0, 2})
        change<ZvDbEntity>(ids[end], [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select(ids);
    Ten ten;
    OwnTen own;
    ten.scan();
    own.scan();
    QCOMPARE(ten.color.status, int(kInfoMixed));
    QCOMPARE(ten.color.value, colorOfIndex(1));
    compareAll(ten, own);
}

void TestPickFirst::weightByLayerIsNotResolved()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setLineWeight(ZvDb::kLnWt100); });
    std::vector<ZvDbObjectId> ids {addLine(), addLine()};
    for (const ZvDbObjectId id : ids) {
        change<ZvDbEntity>(id, [=](ZvDbEntity &entity) {
            entity.setLayer(layer);
            entity.setLineWeight(ZvDb::kLnWtByLayer);
        });
    }
    select(ids);
    Ten ten;
    ten.scan();
    QCOMPARE(ten.lineWeight.status, int(kInfoUniform));
    QCOMPARE(int(ten.lineWeight.value), -1);
}

void TestPickFirst::namesThatDifferInCaseAreMixed()
{
    // A table has no two such names, so one of two drawings' worth is renamed between the merges.
    const ZvDbObjectId type = addLineType(L"HIDDEN");
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [=](ZvDbEntity &entity) { entity.setLinetype(type); });
    SLineTypeInfo info;
    info.reset();
    read<ZvDbEntity>(line, [&](const ZvDbEntity &entity) { info.merge(&entity, nullptr); });
    change<ZvDbLinetypeTableRecord>(type, [](ZvDbLinetypeTableRecord &record) { record.setName(L"Hidden"); });
    read<ZvDbEntity>(line, [&](const ZvDbEntity &entity) { info.merge(&entity, nullptr); });
    QCOMPARE(info.status, int(kInfoMixed));
    QCOMPARE(info.value, ZvString(L"HIDDEN"));
}

void TestPickFirst::propertyIsSummarised_data()
{
    QTest::addColumn<int>("property");
    const char *names[] = {"colour", "line type", "line weight", "layer", "material", "plot style"};
    for (int i = 0; i < 6; ++i)
        QTest::newRow(names[i]) << i;
}

void TestPickFirst::propertyIsSummarised()
{
    QFETCH(int, property);
    const ZvDbObjectId layer = addLayer(L"Walls");
    addLineType(L"HIDDEN");
    addMaterial(L"Brick");
    addPlotStyle(L"Fine");
    const auto give = [&](ZvDbEntity &entity) {
        switch (property) {
        case 0:
            entity.setColor(colorOfIndex(1));
            break;
        case 1:
            entity.setLinetype(L"HIDDEN");
            break;
        case 2:
            entity.setLineWeight(ZvDb::kLnWt050);
            break;
        case 3:
            entity.setLayer(layer);
            break;
        case 4:
            entity.setMaterial(L"Brick");
            break;
        default:
            entity.setPlotStyleName(L"Fine");
            break;
        }
    };
    const std::vector<ZvDbObjectId> ids {addLine(), addLine(), addLine()};
    for (const ZvDbObjectId id : ids)
        change<ZvDbEntity>(id, give);
    Ten ten;
    OwnTen own;
    select(ids);
    ten.scan();
    own.scan();
    compareAll(ten, own);
    const Infos infos = ten.infos();
    QCOMPARE(infos[property]->status, int(kInfoUniform));
    switch (property) {
    case 0:
        QCOMPARE(ten.color.value, colorOfIndex(1));
        break;
    case 1:
        QCOMPARE(ten.lineType.value, ZvString(L"HIDDEN"));
        break;
    case 2:
        QCOMPARE(ten.lineWeight.value, ZvDb::kLnWt050);
        break;
    case 3:
        QCOMPARE(ten.layer.value, layer);
        break;
    case 4:
        QCOMPARE(ten.material.value, ZvString(L"Brick"));
        break;
    default:
        QCOMPARE(ten.plotStyle.value, ZvString(L"Fine"));
        break;
    }

    std::vector<ZvDbObjectId> more = ids;
    more.insert(more.begin() + 1, addLine());
    select(more);
    ten.scan();
    own.scan();
    compareAll(ten, own);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(infos[i]->status, int(i == property ? kInfoMixed : kInfoUniform));
}

void TestPickFirst::otherClassMakesAStyleMixed_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"table", "dimension", "multileader", "text"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void TestPickFirst::otherClassMakesAStyleMixed()
{
    QFETCH(QString, kind);
    const ZvDbObjectId style = addDimStyle(L"Fine");
    const ZvDbObjectId tableStyle = addTableStyle(L"Fine");
    const ZvDbObjectId leaderStyle = addMLeaderStyle(L"Fine");
    const ZvDbObjectId textStyle = addTextStyle(L"Fine");
    Ten ten;
    OwnTen own;
    const Infos infos = ten.infos();
    ZvDbObjectId entity;
    ZvDbObjectId expected;
    const auto *info = &ten.tableStyle.value;
    int number = 6;
    if (kind == QLatin1String("table")) {
        entity = addTable(tableStyle);
        expected = tableStyle;
    } else if (kind == QLatin1String("dimension")) {
        entity = addDimension(style);
        expected = style;
        info = &ten.dimStyle.value;
        number = 7;
    } else if (kind == QLatin1String("multileader")) {
        entity = addMLeader(leaderStyle);
        expected = leaderStyle;
        info = &ten.mleaderStyle.value;
        number = 9;
    } else {
        entity = addText(textStyle);
        expected = textStyle;
        info = &ten.textStyle.value;
        number = 8;
    }
    select({entity});
    ten.scan();
    QCOMPARE(infos[number]->status, int(kInfoUniform));
    QCOMPARE(*info, expected);
    select({entity, addLine()});
    ten.scan();
    own.scan();
    QCOMPARE(infos[number]->status, int(kInfoMixed));
    compareAll(ten, own);
}

void TestPickFirst::absentFirstEntityMakesAClassStyleMixed_data()
{
    QTest::addColumn<int>("property"); // as in TenOf::infos()
    QTest::addColumn<bool>("isMixed");
    const char *const names[] = {"colour",     "line type",   "line weight",     "layer",      "material",
                                 "plot style", "table style", "dimension style", "text style", "multileader style"};
    for (int i = 0; i < 10; ++i)
        QTest::newRow(names[i]) << i << (i == 6 || i == 7 || i == 9);
}

void TestPickFirst::absentFirstEntityMakesAClassStyleMixed()
{
    QFETCH(int, property);
    QFETCH(bool, isMixed);
    const ZvDbObjectId tableStyle = addTableStyle(L"Fine");
    const ZvDbObjectId dimStyle = addDimStyle(L"Fine");
    const ZvDbObjectId textStyle = addTextStyle(L"Fine");
    const ZvDbObjectId leaderStyle = addMLeaderStyle(L"Fine");
    const ZvDbObjectId entity = property == 6 ? addTable(tableStyle)
        : property == 7                       ? addDimension(dimStyle)
        : property == 9                       ? addMLeader(leaderStyle)
                                              : addText(textStyle);
    const ZvDbObjectId layer = addLayer(L"Walls");
    addLineType(L"HIDDEN");
    addMaterial(L"Brick");
    addPlotStyle(L"Fine");
    change<ZvDbEntity>(entity, [=](ZvDbEntity &changed) {
        changed.setColor(colorOfIndex(1));
        changed.setLinetype(L"HIDDEN");
        changed.setLineWeight(ZvDb::kLnWt050);
        changed.setLayer(layer);
        changed.setMaterial(L"Brick");
        changed.setPlotStyleName(L"Fine");
    });
    for (const bool firstIsAbsent : {true, false}) {
        Ten ten;
        SPickFirstInfo *info = ten.infos()[property];
        info->reset();
        read<ZvDbEntity>(entity, [&](const ZvDbEntity &there) {
            info->merge(firstIsAbsent ? nullptr : &there, firstIsAbsent ? &there : nullptr);
        });
        const bool hasValue = !(isMixed && firstIsAbsent);
        QCOMPARE(info->status, int(hasValue ? kInfoUniform : kInfoMixed));
        const bool values[] = {ten.color.value == colorOfIndex(1),       ten.lineType.value == ZvString(L"HIDDEN"),
                               ten.lineWeight.value == ZvDb::kLnWt050,   ten.layer.value == layer,
                               ten.material.value == ZvString(L"Brick"), ten.plotStyle.value == ZvString(L"Fine"),
                               ten.tableStyle.value == tableStyle,       ten.dimStyle.value == dimStyle,
                               ten.textStyle.value == textStyle,         ten.mleaderStyle.value == leaderStyle};
        QCOMPARE(values[property], hasValue);
    }
}

void TestPickFirst::absentPairChangesNothing()
{
    Ten ten;
    for (SPickFirstInfo *info : ten.infos()) {
        info->reset();
        info->merge(nullptr, nullptr);
        QCOMPARE(info->status, int(kInfoUniform));
    }
    QCOMPARE(int(ten.lineWeight.value), -1);
}

void TestPickFirst::textStyleIsThatOfFourClasses()
{
    const ZvDbObjectId textStyle = addTextStyle(L"Fine");
    const ZvDbObjectId dimStyle = addDimStyle(L"Fine");
    change<ZvDbDimStyleTableRecord>(dimStyle,
                                    [=](ZvDbDimStyleTableRecord &record) { record.setIdValue("DIMTXSTY", textStyle); });
    const ZvDbObjectId leaderStyle = addMLeaderStyle(L"Fine");
    change<ZvDbMLeaderStyle>(leaderStyle, [=](ZvDbMLeaderStyle &record) { record.setTextStyleId(textStyle); });
    select({addText(textStyle), addMText(textStyle), addDimension(dimStyle), addMLeader(leaderStyle)});
    Ten ten;
    OwnTen own;
    ten.scan();
    own.scan();
    QCOMPARE(ten.textStyle.status, int(kInfoUniform));
    QCOMPARE(ten.textStyle.value, textStyle);
    compareAll(ten, own);
}

// ---- one property at a time

namespace {

typedef ZevaUISetting S;

/// Calls a query with a value that is there before; its answer, and whether the value is the empty one afterwards.
template <class T, int (*query)(T &)> std::pair<int, bool> answerOf(const T &before, const T &empty)
{
    T value = before;
    const int status = query(value);
    return {status, value == empty};
}

template <int (*query)(ZvDbObjectId &)> std::pair<int, bool> idAnswer()
{
    return answerOf<ZvDbObjectId, query>(ZvDbObjectId::fromInt64(5), ZvDbObjectId());
}

template <int (*query)(ZvString &)> std::pair<int, bool> nameAnswer()
{
    return answerOf<ZvString, query>(L"x", ZvString());
}

constexpr struct
{
    const char *name;
    std::pair<int, bool> (*answer)();
} kQueries[] = {
    {"colour", [] { return answerOf<ZvCmColor, S::getPickFirstEntitiesColor>(colorOfIndex(7), ZvCmColor()); }},
    {"layer", idAnswer<S::getPickFirstEntitiesLayer>},
    {"line type", nameAnswer<S::getPickFirstEntitiesLType>},
    {"line weight",
     [] { return answerOf<ZvDb::LineWeight, S::getPickFirstEntitiesLWeight>(ZvDb::kLnWt100, ZvDb::kLnWtByLayer); }},
    {"material", nameAnswer<S::getPickFirstEntitiesMaterial>},
    {"plot style", nameAnswer<S::getPickFirstEntitiesCPlotStyle>},
    {"table style", idAnswer<S::getPickFirstTablesStyle>},
    {"dimension style", idAnswer<S::getPickFirstDimsStyle>},
    {"text style", idAnswer<S::getPickFirstTextsStyle>},
    {"multileader style", idAnswer<S::getPickFirstMLeadersStyle>},
};

} // namespace

void TestPickFirst::queryTellsDocumentAndSelection_data()
{
    QTest::addColumn<int>("query");
    for (const auto &query : kQueries)
        QTest::newRow(query.name) << int(&query - kQueries);
}

void TestPickFirst::queryTellsDocumentAndSelection()
{
    QFETCH(int, query);
    const auto answer = kQueries[query].answer;
    QCOMPARE(answer(), std::make_pair(int(kInfoNoSelection), true));
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(answer(), std::make_pair(int(kInfoNoDocument), true));
}

void TestPickFirst::queryPassesOverWhatCannotBeOpened()
{
    const std::vector<ZvDbObjectId> ids{addLine(), addLine(), addLine()};
    for (const std::size_t end : {1, 2})
        change<ZvDbEntity>(ids[end], [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select(ids);
    ZvCmColor color;
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), int(kInfoMixed));
    {
        const ZvDbObjectPointer<ZvDbEntity> held(ids[0], ZvDb::kForWrite);
        QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), int(kInfoUniform));
        QCOMPARE(color, colorOfIndex(1));
    }
    const ZvDbObjectPointer<ZvDbEntity> last(ids[2], ZvDb::kForWrite);
    const ZvDbObjectPointer<ZvDbEntity> middle(ids[1], ZvDb::kForWrite);
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), int(kInfoUniform));
    QCOMPARE(color, ZvCmColor());
}

void TestPickFirst::queryAgreesWithItsSummary()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    addLineType(L"HIDDEN");
    addMaterial(L"Brick");
    addPlotStyle(L"Fine");
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 5; ++i) {
        ids.push_back(addLine());
        change<ZvDbEntity>(ids.back(), [=](ZvDbEntity &entity) {
            entity.setColor(colorOfIndex(1));
            entity.setLinetype(L"HIDDEN");
            entity.setLineWeight(ZvDb::kLnWt050);
            entity.setLayer(layer);
            entity.setMaterial(L"Brick");
            entity.setPlotStyleName(L"Fine");
        });
    }
    select(ids);
    ZvCmColor color;
    ZvString lineType;
    ZvDb::LineWeight weight {};
    ZvDbObjectId layerId;
    ZvString material;
    ZvString plotStyle;
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), int(kInfoUniform));
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesLType(lineType), int(kInfoUniform));
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesLWeight(weight), int(kInfoUniform));
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesLayer(layerId), int(kInfoUniform));
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesMaterial(material), int(kInfoUniform));
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesCPlotStyle(plotStyle), int(kInfoUniform));
    Ten ten;
    ten.scan();
    QCOMPARE(color, ten.color.value);
    QCOMPARE(lineType, ten.lineType.value);
    QCOMPARE(weight, ten.lineWeight.value);
    QCOMPARE(layerId, ten.layer.value);
    QCOMPARE(material, ten.material.value);
    QCOMPARE(plotStyle, ten.plotStyle.value);
    QCOMPARE(plotStyle, ZvString(L"Fine"));
}

void TestPickFirst::queryOfMixedEntitiesKeepsTheFirstValue()
{
    const std::vector<ZvDbObjectId> ids {addLine(), addLine(), addLine()};
    for (const std::size_t end : {0, 2})
        change<ZvDbEntity>(ids[end], [](ZvDbEntity &entity) { entity.setColor(colorOfIndex(1)); });
    select(ids);
    ZvCmColor color;
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), int(kInfoMixed));
    QCOMPARE(color, colorOfIndex(1));
    select({ids[0], ids[1]});
    QCOMPARE(ZevaUISetting::getPickFirstEntitiesColor(color), int(kInfoMixed));
    QCOMPARE(color, ZvCmColor());
}

void TestPickFirst::styleQueriesPassOverOtherClasses()
{
    const ZvDbObjectId dimStyle = addDimStyle(L"Fine");
    const ZvDbObjectId tableStyle = addTableStyle(L"Fine");
    const ZvDbObjectId leaderStyle = addMLeaderStyle(L"Fine");
    select({addLine(), addTable(tableStyle), addDimension(dimStyle), addMLeader(leaderStyle), addLine()});
    ZvDbObjectId id;
    QCOMPARE(ZevaUISetting::getPickFirstTablesStyle(id), int(kInfoUniform));
    QCOMPARE(id, tableStyle);
    QCOMPARE(ZevaUISetting::getPickFirstDimsStyle(id), int(kInfoUniform));
    QCOMPARE(id, dimStyle);
    QCOMPARE(ZevaUISetting::getPickFirstMLeadersStyle(id), int(kInfoUniform));
    QCOMPARE(id, leaderStyle);
    Ten ten;
    ten.scan();
    QCOMPARE(ten.tableStyle.status, int(kInfoMixed));
    QCOMPARE(ten.dimStyle.status, int(kInfoMixed));
    QCOMPARE(ten.mleaderStyle.status, int(kInfoMixed));

    select({addTable(tableStyle), addLine(), addTable(addTableStyle(L"Other"))});
    QCOMPARE(ZevaUISetting::getPickFirstTablesStyle(id), int(kInfoMixed));
}

void TestPickFirst::styleQueryWithoutAFittingEntityHasTheNullId()
{
    select({addLine(), addLine()});
    ZvDbObjectId id = ZvDbObjectId::fromInt64(5);
    QCOMPARE(ZevaUISetting::getPickFirstTablesStyle(id), int(kInfoUniform));
    QVERIFY(id.isNull());
}

void TestPickFirst::textStyleQueryLooksAtTextsOnly()
{
    const ZvDbObjectId style = addTextStyle(L"Fine");
    select({addText(style), addLine(), addMText(style), addDimension(addDimStyle(L"Fine"))});
    ZvDbObjectId id;
    QCOMPARE(ZevaUISetting::getPickFirstTextsStyle(id), int(kInfoUniform));
    QCOMPARE(id, style);
    Ten ten;
    ten.scan();
    QCOMPARE(ten.textStyle.status, int(kInfoMixed));
}

void TestPickFirst::queriesLeaveNothingOpen()
{
    select({addLine(), addLine(), addText(addTextStyle(L"Fine"))});
    ZvDbObjectId id;
    ZvString name;
    ZevaUISetting::getPickFirstTextsStyle(id);
    ZevaUISetting::getPickFirstEntitiesMaterial(name);
    QCOMPARE(drawing().openObjectCount(), 0);
}

void TestPickFirst::lockedLayerIsTold()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [=](ZvDbEntity &entity) { entity.setLayer(layer); });
    const auto isLocked = [&] {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForRead);
        return ZevaUISetting::isLocked(entity.get());
    };
    QVERIFY(!isLocked());
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
    QVERIFY(isLocked());
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layer, ZvDb::kForWrite);
        QVERIFY(!isLocked()); // cannot be read
    }
    QVERIFY(!ZevaUISetting::isLocked(nullptr));
}

// ---- the kernel's summary is the scan's

void TestPickFirst::everyWayToSummariseGivesTheSame_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("variety"); // of properties: the fewer, the more selections are uniform
    for (quint32 seed = 1; seed <= 8; ++seed) {
        QTest::newRow(qPrintable(QStringLiteral("alike, seed %1").arg(seed))) << seed << 1;
        QTest::newRow(qPrintable(QStringLiteral("two kinds, seed %1").arg(seed))) << seed << 2;
        QTest::newRow(qPrintable(QStringLiteral("many kinds, seed %1").arg(seed))) << seed << 4;
    }
}

void TestPickFirst::everyWayToSummariseGivesTheSame()
{
    QFETCH(quint32, seed);
    QFETCH(int, variety);
    QRandomGenerator random(seed);
    const auto pick = [&](const auto &list) { return list[std::size_t(random.bounded(int(list.size())))]; };

    std::vector<ZvDbObjectId> layers, textStyles, dimStyles, tableStyles, leaderStyles;
    std::vector<ZvString> lineTypes {L"ByLayer", L"ByBlock"}, materials {L"ByLayer"},
        plotStyles {L"ByLayer", L"ByBlock", L"Normal"};
    for (int i = 0; i < variety; ++i) {
        const ZvString name = ZvString(L"Name") + ZvString(wchar_t(L'a' + i));
        layers.push_back(addLayer(name));
        textStyles.push_back(addTextStyle(name));
        dimStyles.push_back(addDimStyle(name));
        tableStyles.push_back(addTableStyle(name));
        leaderStyles.push_back(addMLeaderStyle(name));
        addLineType(name);
        lineTypes.push_back(name);
        addMaterial(name);
        materials.push_back(name);
        addPlotStyle(name);
        plotStyles.push_back(name);
    }
    lineTypes.resize(std::size_t(variety));
    materials.resize(std::size_t(variety));
    plotStyles.resize(std::size_t(variety));

    const int classes = variety == 1 ? int(seed % 6) : 6; // alike selections are of one class
    const auto make = [&]() -> ZvDbObjectId {
        switch (variety == 1 ? classes : random.bounded(classes)) {
        case 0:
            return addText(pick(textStyles));
        case 1:
            return addMText(pick(textStyles));
        case 2:
            return addDimension(pick(dimStyles));
        case 3:
            return addMLeader(pick(leaderStyles));
        case 4:
            return addTable(pick(tableStyles));
        default:
            return addLine();
        }
    };
    std::vector<ZvDbObjectId> entities;
    for (int i = 0; i < 40; ++i) {
        entities.push_back(make());
        change<ZvDbEntity>(entities.back(), [&](ZvDbEntity &entity) {
            entity.setColor(colorOfIndex(1 + random.bounded(variety)));
            entity.setLineWeight(random.bounded(variety) ? ZvDb::kLnWt050 : ZvDb::kLnWtByLayer);
            entity.setLayer(pick(layers));
            entity.setLinetype(pick(lineTypes));
            entity.setMaterial(pick(materials));
            entity.setPlotStyleName(pick(plotStyles));
        });
    }

    Ten ten; // by the kernel's summary
    OwnTen own; // entity by entity
    Ten beside; // the same, on account of a host's summary
    OwnTen byHand; // without the scan
    Pairs host;
    Infos others;
    others.append(&host);
    const auto compareWays = [&] {
        if (selection().ids().empty())
            return; // of what was erased
        ten.scan();
        own.scan();
        beside.scan(others);
        byHand.mergeByHand(selection().ids());
        compareAll(ten, byHand);
        compareAll(own, byHand);
        compareAll(beside, byHand);
    };
    for (int round = 0; round < 60; ++round) {
        std::vector<ZvDbObjectId> ids;
        const int count = random.bounded(8) ? 1 + random.bounded(6) : 1 + random.bounded(40);
        for (int i = 0; i < count; ++i)
            ids.push_back(pick(entities));
        select(ids);
        // Some are gone or in another's hands by the time of the scan.
        std::vector<std::unique_ptr<ZvDbObjectPointer<ZvDbEntity>>> held;
        for (const ZvDbObjectId id : selection().ids()) {
            if (round % 3 == 1 && random.bounded(3) == 0)
                held.push_back(std::make_unique<ZvDbObjectPointer<ZvDbEntity>>(id, ZvDb::kForWrite));
        }
        compareWays();
        if (QTest::currentTestFailed())
            return;
        if (round % 7 == 6) {
            const ZvDbObjectId victim = pick(entities);
            if (!victim.isErased())
                change<ZvDbEntity>(victim, [](ZvDbEntity &entity) { entity.erase(); });
            held.clear();
            compareWays();
        }
    }
}

void TestPickFirst::kernelRefusesIdsOfTwoDrawings()
{
    const ZvDbObjectId first = addLine();
    openAnother();
    const ZvDbObjectId second = addLine();
    ZvDbEntitySummary summary;
    QVERIFY(!zvdbSummarizeEntities({first, second}, ZvDbEntitySummary::kAllProperties, summary));
    QCOMPARE(summary.found, 0u);
    QVERIFY(zvdbSummarizeEntities({second}, ZvDbEntitySummary::kAllProperties, summary));
    QVERIFY(zvdbSummarizeEntities({}, ZvDbEntitySummary::kAllProperties, summary));
    QCOMPARE(summary.found | summary.mixed, 0u);
}

ZEVA_TEST_MAIN(TestPickFirst)
#include "tst_pickfirst.moc"
