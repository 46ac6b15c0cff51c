// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "drawingtest.h"
#include "noticecases.h"

#include "zvlinetypecombobox.h"
#include "zvqtlinetypeservice.h"

#include "base/zverror.h"
#include "base/zvregistry.h"
#include "utils/zventityimage.h"

#include <QFontMetricsF>
#include <QIdentityProxyModel>
#include <QPointer>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>

#include <functional>

using namespace ZvGlobalUIReactorHelp;

namespace {

const QString kPending = QStringLiteral("其他...");

// What programs cannot make: a line type of an external reference, and names that no user can give.
const char kReferences[] = "0\nSECTION\n2\nHEADER\n9\n$CELTYPE\n6\nHouse|Dashed\n0\nENDSEC\n"
                           "0\nSECTION\n2\nTABLES\n"
                           "0\nTABLE\n2\nLTYPE\n70\n4\n"
                           "0\nLTYPE\n2\nCONTINUOUS\n70\n0\n3\nSolid line\n72\n65\n73\n0\n40\n0.0\n"
                           "0\nLTYPE\n2\nHouse|Dashed\n70\n48\n3\n\n72\n65\n73\n2\n40\n3.0\n49\n2.0\n49\n-1.0\n"
                           "0\nLTYPE\n2\nOdd|Own\n70\n0\n3\n\n72\n65\n73\n2\n40\n3.0\n49\n2.0\n49\n-1.0\n"
                           "0\nLTYPE\n2\n*Star\n70\n0\n3\n\n72\n65\n73\n2\n40\n3.0\n49\n2.0\n49\n-1.0\n"
                           "0\nENDTAB\n0\nENDSEC\n0\nEOF\n";

QImage pictureOf(const QComboBox &combo, int row)
{
    const QList<QSize> sizes = combo.itemIcon(row).availableSizes();
    return sizes.isEmpty() ? QImage()
                           : combo.itemIcon(row).pixmap(sizes.first()).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Dark runs of the row of the line.
int dashCount(const QImage &picture)
{
    const int y = picture.height() / 2;
    int count = 0;
    bool wasDark = false;
    for (int x = 0; x < picture.width(); ++x) {
        const QRgb pixel = picture.pixel(x, y);
        const bool isDark = qAlpha(pixel) > 128 && qGray(pixel) < 128;
        count += isDark && !wasDark;
        wasDark = isDark;
    }
    return count;
}

bool isTransparent(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) != 0)
                return false;
        }
    }
    return true;
}

/// A line type manager whose user acts at once.
class Manager : public ZvQtLinetypeService
{
public:
    void manageLinetypes(ZvDbDatabase *database, ZvJsonPtr bag) override
    {
        ++runs;
        drawing = database;
        bag->GetDataSW("curSelName", asked);
        if (act)
            act(bag);
    }

    int runs = 0;
    ZvDbDatabase *drawing = nullptr;
    ZvString asked;
    std::function<void(const ZvJsonPtr &)> act;
};

/// Offers an object as the line type manager for the life of this one.
class OfferedManager
{
public:
    explicit OfferedManager(ZvRxObject *object) { zv_arbitDict_regservice(key(), ZvRxObjectPtr::adopt(object)); }
    ~OfferedManager() { zv_arbitDict_clearservice(key()); }

private:
    static ZvString key() { return ZvString(wchar_t(19)); }
};

std::function<void(const ZvJsonPtr &)> choose(const ZvDbObjectId &id)
{
    return [id](const ZvJsonPtr &bag) {
        bag->SetDataI("idx", 1);
        bag->SetDataSW("ltypeName", L"not looked at");
        bag->SetDataId("ltypeId", id.asInt64());
    };
}

} // namespace

class TestLineTypeComboBox : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // construction
    void unhookedOneHasAFixedHeight();
    void hookedOneIsOnTheBus();
    void missingBusIsNoError();
    void metaObjectFindsTheReceiver();
    void idsAreAMetaType();

    // rows
    void orderOfTheRows_data();
    void orderOfTheRows();
    void firstOfTheDrawingIsCurrent_data();
    void firstOfTheDrawingIsCurrent();
    void rowsCarryTheirIds();
    void pendingRowCarriesNothing();
    void withoutDrawing_data();
    void withoutDrawing();
    void oddRecords_data();
    void oddRecords();
    void picturesShowThePattern();
    void pictureIsMadeAnewForAnEditedPattern();
    void rendererIsAskedWithoutDrawingAgain();
    void drawnRowGoesAboveTheLast_data();
    void drawnRowGoesAboveTheLast();
    void drawnRowIsCroppedToTheIconSize();
    void nullImageGivesATransparentPicture();
    void modelOfTheCaller();
    void fillTellsNothing();
    void manyLineTypes();

    // value
    void lineTypeIsFoundByNameAgain();
    void outOfRange_data();
    void outOfRange();
    void currentLineTypeIsSetById();

    // size
    void firstSizeFitsThePictures_data();
    void firstSizeFitsThePictures();
    void laterSizesDoNothing();
    void fittedSizeServesAddedRowsUntilTheRefill();

    // following the drawing
    void statusDecidesWhatIsShown_data();
    void statusDecidesWhatIsShown();
    void currentLineTypeIsShown();
    void selectionIsFollowed();
    void newLineTypeShowsAboveThePendingRow();
    void newLineTypeIsListedInFullOnOpening();
    void lineTypeWithoutAPictureLeavesABlank_data();
    void lineTypeWithoutAPictureLeavesABlank();
    void rendererThatGivesNothingLeavesABlank();
    void unreadableCurrentLineTypeLeavesABlank();
    void nameIsMatchedWithCase();
    void noticesAreFiltered_data();
    void noticesAreFiltered();
    void withoutDocumentNothingHappens();
    void showingTellsNothing();
    void documentsAreFollowed();

    // picking
    void pickIsToldHookedOrNot_data();
    void pickIsToldHookedOrNot();
    void pickWritesTheCurrentLineType();
    void pickWritesTheSelection();
    void pickMakesAMixedSelectionUniform();
    void pickIsOneUndoStep();
    void pickDuringACommandBelongsToIt();
    void lockedEntitiesAreLeftOut();
    void emptyNameWritesNothing();
    void keyboardGoesBackToTheDrawing();

    // the wheel
    void wheelNeverLandsOnThePendingRow_data();
    void wheelNeverLandsOnThePendingRow();
    void wheelAtTheEndTellsOfTheRowItStaysOn();
    void wheelWithoutPendingRowReachesTheEnd();
    void wheelOverThePendingRowAlone();

    // opening
    void listOpens_data();
    void listOpens();
    void openingRefillsTheHookedOne_data();
    void openingRefillsTheHookedOne();
    void openingPutsTheRowsRight_data();
    void openingPutsTheRowsRight();
    void openingTouchesOnlyWhatHasChanged();
    void openingKeepsTheRowWithoutWriting();
    void blankStaysBlankOverOpening();
    void blankWithoutASelectionShowsWhatAFilledListDoes();

    // the pending row, by the command
    void commandRouteGoesBackFirst_data();
    void commandRouteGoesBackFirst();
    void commandRouteOfAnUnhookedOneShowsNothing();
    void pendingRowTellsNothing();

    // the pending row, by the service
    void withoutServiceThePendingRowStays();
    void serviceOfAnotherClassIsRefused();
    void serviceIsAskedForTheLastRow();
    void chosenOneIsPicked_data();
    void chosenOneIsPicked();
    void nothingChosenGoesBack_data();
    void nothingChosenGoesBack();
    void lineTypesMadeInTheManagerAreListed();
    void deletedWhileTheManagerRuns();
    void noticeDuringTheManager();

    // days at work
    void journeyFromPickToUndo();
    void pickedLineTypeIsInTheSavedFile();

private:
    /// Two line types beside the three of every drawing: "ByBlock", "ByLayer", "Continuous", "Dashed", "Dotted".
    void addTwo()
    {
        m_dashed = addLineType(L"Dashed", {4.0, -2.0});
        m_dotted = addLineType(L"Dotted", {0.0, -1.0});
    }
    void openReferences()
    {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbFileReport report;
        QCOMPARE(database->readStream(kReferences, sizeof kReferences - 1, report), Zv::eOk);
        zvDocManagerPtr()->addDocument(database, L"");
        bus().enableUpdateUI(true);
    }
    static ZvString lineTypeOf(ZvDbObjectId entity)
    {
        return read<ZvDbEntity>(entity, [](const ZvDbEntity &opened) { return opened.linetype(); });
    }
    static ZvDbObjectId lineWith(const ZvString &lineType)
    {
        const ZvDbObjectId id = addLine();
        change<ZvDbEntity>(id, [&lineType](ZvDbEntity &entity) { entity.setLinetype(lineType, true); });
        return id;
    }
    static ZvDbObjectId named(const ZvString &name)
    {
        return ZevaUISetting::findLineStyleTableRecordByName(name, nullptr);
    }

    ZvDbObjectId m_dashed;
    ZvDbObjectId m_dotted;
};

static const QStringList kRows = {"ByLayer", "Continuous", "Dashed", "Dotted", "ByBlock", kPending};
constexpr int kPendingRow = 5;

// ---- construction ---------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::unhookedOneHasAFixedHeight()
{
    const ZvLineTypeComboBox plain(nullptr, false, true);
    QFont font = plain.font();
    font.setFixedPitch(true);
    const int height = int(QFontMetricsF(font).height()) + 8;
    QCOMPARE(plain.minimumHeight(), height);
    QCOMPARE(plain.maximumHeight(), height);
    QVERIFY(!plain.hooked);
    for (const bool hook : {true, false}) {
        const ZvLineTypeComboBox combo(hook, nullptr);
        QVERIFY(combo.minimumHeight() != combo.maximumHeight());
        QCOMPARE(combo.hooked, hook);
    }
}

void TestLineTypeComboBox::hookedOneIsOnTheBus()
{
    addTwo();
    {
        ZvLineTypeComboBox hooked(true, nullptr);
        ZvLineTypeComboBox plain(false, nullptr);
        ZvLineTypeComboBox picker(nullptr, false, true);
        drawing().setCeltype(m_dotted);
        QVERIFY(runMacro(L"_.REGEN "));
        QCOMPARE(hooked.currentText(), QString("Dotted"));
        QCOMPARE(plain.currentText(), QString("ByBlock"));
        QCOMPARE(picker.currentText(), QString("ByBlock"));
    }
    QVERIFY(runMacro(L"_.REGEN ")); // those that died have left it
}

void TestLineTypeComboBox::missingBusIsNoError()
{
    zv_arbitDict_clearservice(ZvString(wchar_t(14)));
    const ZvLineTypeComboBox combo(true, nullptr);
    QVERIFY(combo.count() > 0);
}

void TestLineTypeComboBox::metaObjectFindsTheReceiver()
{
    ZvLineTypeComboBox combo(true, nullptr);
    QCOMPARE(qobject_cast<CZvQtControlHelp *>(static_cast<QObject *>(&combo)), static_cast<CZvQtControlHelp *>(&combo));
    QVERIFY(combo.metaObject()->indexOfSignal("lineTypeItemChanged(int)") >= 0);
    QVERIFY(combo.metaObject()->indexOfSlot("currentLTypeIndexChanged(int)") >= 0);
}

void TestLineTypeComboBox::idsAreAMetaType()
{
    const ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(QMetaType::type("ZvDbObjectId"), qMetaTypeId<ZvDbObjectId>());
    QCOMPARE(QByteArray(combo.itemData(0).typeName()), QByteArray("ZvDbObjectId"));
}

// ---- rows -----------------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::orderOfTheRows_data()
{
    QTest::addColumn<int>("added");
    QTest::addColumn<bool>("noPending");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("the three of every drawing")
        << 0 << false << QStringList{"ByLayer", "Continuous", "ByBlock", kPending};
    QTest::newRow("the first goes to the end")
        << 2 << false << QStringList{"ByLayer", "Continuous", "T1", "T0", "ByBlock", kPending};
    QTest::newRow("without pending row in the drawing's order, three")
        << 0 << true << QStringList{"ByBlock", "ByLayer", "Continuous"};
    QTest::newRow("without pending row in the drawing's order, five")
        << 2 << true << QStringList{"ByBlock", "ByLayer", "Continuous", "T1", "T0"};
}

void TestLineTypeComboBox::orderOfTheRows()
{
    QFETCH(int, added);
    QFETCH(bool, noPending);
    QFETCH(QStringList, rows);
    for (int i = added - 1; i >= 0; --i) // the order of the drawing, not of the names
        addLineType(ZvString(L"T") + ZvString(wchar_t(L'0' + i)), {1.0, -1.0});
    ZvLineTypeComboBox combo(nullptr, noPending, true);
    QCOMPARE(rowsOf(combo), rows);
    combo.init();
    QCOMPARE(rowsOf(combo), rows);
    combo.readLineTypeInfo(); // the pending row is none of its business
    rows.removeAll(kPending);
    QCOMPARE(rowsOf(combo), rows);
}

void TestLineTypeComboBox::firstOfTheDrawingIsCurrent_data()
{
    QTest::addColumn<bool>("noPending");
    QTest::addColumn<int>("row");
    QTest::newRow("pushed down to the end") << false << 4;
    QTest::newRow("at the top without pending row") << true << 0;
}

void TestLineTypeComboBox::firstOfTheDrawingIsCurrent()
{
    QFETCH(bool, noPending);
    QFETCH(int, row);
    addTwo();
    const ZvLineTypeComboBox combo(nullptr, noPending, true);
    QCOMPARE(combo.currentIndex(), row);
    QCOMPARE(combo.currentText(), QString("ByBlock"));
}

void TestLineTypeComboBox::rowsCarryTheirIds()
{
    addTwo();
    const ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(combo.itemData(2).value<ZvDbObjectId>(), m_dashed);
    QCOMPARE(combo.itemData(3).value<ZvDbObjectId>(), m_dotted);
    QCOMPARE(combo.itemData(4).value<ZvDbObjectId>(), drawing().byBlockLinetype());
}

void TestLineTypeComboBox::pendingRowCarriesNothing()
{
    addTwo();
    const ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(combo.itemText(kPendingRow), kPending);
    QVERIFY(!combo.itemData(kPendingRow).isValid());
    QCOMPARE(pictureOf(combo, kPendingRow).size(), QSize(80, 25));
    QVERIFY(isTransparent(pictureOf(combo, kPendingRow)));
}

void TestLineTypeComboBox::withoutDrawing_data()
{
    QTest::addColumn<bool>("noPending");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("the pending row alone") << false << QStringList{kPending};
    QTest::newRow("nothing") << true << QStringList();
}

void TestLineTypeComboBox::withoutDrawing()
{
    QFETCH(bool, noPending);
    QFETCH(QStringList, rows);
    zvDocManagerPtr()->closeDocument(document());
    ZvLineTypeComboBox combo(nullptr, noPending, true);
    QCOMPARE(rowsOf(combo), rows);
    const StartedCommands commands;
    combo.init(); // the one row becomes current by itself, which is no pick
    QVERIFY(runCommands());
    QCOMPARE(commands.names, QStringList());
    QCOMPARE(rowsOf(combo), rows);
    QVERIFY(combo.getLineType(0).isNull());
}

void TestLineTypeComboBox::oddRecords_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("listed");
    QTest::newRow("erased") << "Erased" << false;
    QTest::newRow("open for write elsewhere") << "Held" << false;
    QTest::newRow("open for read elsewhere") << "Read" << true;
    QTest::newRow("of an external reference") << "House|Dashed" << false;
    QTest::newRow("own, with a bar") << "Odd|Own" << true;
    QTest::newRow("with a star") << "*Star" << true;
}

void TestLineTypeComboBox::oddRecords()
{
    QFETCH(QString, name);
    QFETCH(bool, listed);
    openReferences();
    const ZvDbObjectId erased = addLineType(L"Erased");
    change<ZvDbLinetypeTableRecord>(erased, [](ZvDbLinetypeTableRecord &record) { record.erase(); });
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> held(addLineType(L"Held"), ZvDb::kForWrite);
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> reader(addLineType(L"Read"), ZvDb::kForRead);
    const ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(rowsOf(combo).contains(name), listed);
}

void TestLineTypeComboBox::picturesShowThePattern()
{
    addTwo();
    const ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(combo.iconSize(), QSize(80, 25));
    const QImage whole = pictureOf(combo, 1);
    QCOMPARE(whole.size(), QSize(80, 25));
    QCOMPARE(dashCount(whole), 1);
    const QImage dashed = pictureOf(combo, 2);
    QCOMPARE(dashCount(dashed), 4); // 90 * 2.5 / 70 repeats
    // The background is gone, also between the dashes.
    for (const QPoint &place : {QPoint(0, 0), QPoint(79, 24), QPoint(40, 3)})
        QCOMPARE(qAlpha(dashed.pixel(place)), 0);
    int clear = 0;
    for (int x = 5; x < 75; ++x)
        clear += qAlpha(dashed.pixel(x, 12)) == 0;
    QVERIFY(clear >= 15);
}

void TestLineTypeComboBox::pictureIsMadeAnewForAnEditedPattern()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const QImage before = pictureOf(combo, 2);
    const qint64 other = combo.itemIcon(3).cacheKey();
    setPattern(m_dashed, {1.0, -1.0, 1.0, -9.0});
    combo.init();
    QVERIFY(pictureOf(combo, 2) != before);
    QCOMPARE(combo.itemIcon(3).cacheKey(), other); // the very same picture
    setPattern(m_dashed, {4.0, -2.0});
    combo.init();
    QCOMPARE(pictureOf(combo, 2), before);
}

void TestLineTypeComboBox::rendererIsAskedWithoutDrawingAgain()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const std::uint64_t drawn = zvsiutEntityImagesDrawn();
    for (int i = 0; i < 3; ++i)
        combo.init();
    const ZvLineTypeComboBox another(nullptr, false, true);
    QCOMPARE(zvsiutEntityImagesDrawn() - drawn, std::uint64_t(0));
}

void TestLineTypeComboBox::drawnRowGoesAboveTheLast_data()
{
    QTest::addColumn<bool>("noPending");
    QTest::addColumn<bool>("empty");
    QTest::addColumn<int>("row");
    QTest::newRow("above the pending row") << false << false << kPendingRow;
    QTest::newRow("at the end without pending row") << true << false << 5;
    QTest::newRow("into an empty list") << false << true << 0;
    QTest::newRow("into an empty list without pending row") << true << true << 0;
}

void TestLineTypeComboBox::drawnRowGoesAboveTheLast()
{
    QFETCH(bool, noPending);
    QFETCH(bool, empty);
    QFETCH(int, row);
    addTwo();
    ZvLineTypeComboBox combo(nullptr, noPending, true);
    if (empty)
        combo.clear();
    QImage image(80, 25, QImage::Format_RGB888);
    image.fill(Qt::white);
    QString name = QStringLiteral("mine");
    combo.drawLineItem(m_dotted, image, name);
    QCOMPARE(combo.itemText(row), QString("mine"));
    QCOMPARE(combo.itemData(row).value<ZvDbObjectId>(), m_dotted);
    if (!noPending && !empty)
        QCOMPARE(combo.itemText(combo.count() - 1), kPending);
}

void TestLineTypeComboBox::drawnRowIsCroppedToTheIconSize()
{
    ZvLineTypeComboBox combo(nullptr, false, true);
    QImage image(200, 60, QImage::Format_RGB888);
    image.fill(Qt::white);
    for (int x = 20; x < 200; ++x)
        image.setPixel(x, 10, qRgb(255, 0, 0));
    QString name = QStringLiteral("mine");
    ZvDbObjectId id = drawing().continuousLinetype();
    combo.drawLineItem(id, image, name);
    const QImage picture = pictureOf(combo, combo.count() - 2);
    QCOMPARE(picture.size(), QSize(80, 25));
    QCOMPARE(picture.pixel(20, 10), qRgb(255, 0, 0));
    QCOMPARE(picture.pixel(79, 10), qRgb(255, 0, 0));
    QCOMPARE(qAlpha(picture.pixel(19, 10)), 0);
    QCOMPARE(qAlpha(picture.pixel(40, 11)), 0);
}

void TestLineTypeComboBox::nullImageGivesATransparentPicture()
{
    ZvLineTypeComboBox combo(nullptr, false, true);
    QImage none;
    QString name = QStringLiteral("mine");
    ZvDbObjectId id = drawing().continuousLinetype();
    combo.drawLineItem(id, none, name);
    QCOMPARE(pictureOf(combo, combo.count() - 2).size(), QSize(80, 25));
    QVERIFY(isTransparent(pictureOf(combo, combo.count() - 2)));
}

void TestLineTypeComboBox::modelOfTheCaller()
{
    addTwo();
    ZvLineTypeComboBox combo(nullptr, false, true);
    QStandardItemModel rows(0, 1);
    QIdentityProxyModel model;
    model.setSourceModel(&rows);
    combo.setModel(&model);
    combo.init();
    QCOMPARE(rowsOf(combo), kRows);
    QCOMPARE(combo.itemData(2).value<ZvDbObjectId>(), m_dashed);
    QCOMPARE(dashCount(pictureOf(combo, 2)), 4);
    QCOMPARE(combo.currentText(), QString("ByBlock"));
}

void TestLineTypeComboBox::fillTellsNothing()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    combo.init();
    combo.readLineTypeInfo();
    combo.addPendingItem();
    QCOMPARE(index.size(), 0);
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo.signalsBlocked());
    QVERIFY(combo.hooked);
}

void TestLineTypeComboBox::manyLineTypes()
{
    QStringList expected = {"ByLayer", "Continuous"};
    for (int i = 0; i < 500; ++i) {
        const QString name = QStringLiteral("Type %1").arg(i);
        addLineType(name.toUtf8().constData(), {double(i % 50 + 1), -double(i / 50 + 1)});
        expected << name;
    }
    expected << "ByBlock" << kPending;
    ZvLineTypeComboBox combo(true, nullptr);
    QCOMPARE(rowsOf(combo), expected);
    combo.show();
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), expected);
}

// ---- value ----------------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::lineTypeIsFoundByNameAgain()
{
    addTwo();
    const ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(combo.getLineType(2), m_dashed);
    QCOMPARE(combo.getCurrentLineType(), drawing().byBlockLinetype());
    QCOMPARE(combo.getCurrentLineTypeString(), QString("ByBlock"));
    QCOMPARE(combo.getLineTypeString(3), QString("Dotted"));
    // The name counts and not what the row carries: another line type has it by now.
    change<ZvDbLinetypeTableRecord>(m_dashed, [](ZvDbLinetypeTableRecord &record) { record.setName(L"Renamed"); });
    QVERIFY(combo.getLineType(2).isNull());
    const ZvDbObjectId second = addLineType(L"DASHED");
    QCOMPARE(combo.getLineType(2), second);
    QVERIFY(combo.getLineType(kPendingRow).isNull());
}

void TestLineTypeComboBox::outOfRange_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("behind the last") << 6;
    QTest::newRow("far away") << 1000000;
}

void TestLineTypeComboBox::outOfRange()
{
    QFETCH(int, index);
    addTwo();
    ZvLineTypeComboBox combo(nullptr, false, true);
    QCOMPARE(combo.getLineTypeString(index), QString());
    QVERIFY(combo.getLineType(index).isNull());
    combo.SetNullItem();
    QCOMPARE(combo.currentIndex(), -1);
    QCOMPARE(combo.getCurrentLineTypeString(), QString());
    QVERIFY(combo.getCurrentLineType().isNull());
}

void TestLineTypeComboBox::currentLineTypeIsSetById()
{
    addTwo();
    ZvLineTypeComboBox combo(nullptr, false, true);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    combo.setCurrentLineType(m_dotted);
    QCOMPARE(combo.currentText(), QString("Dotted"));
    QCOMPARE(told.size(), 1);
    const ZvDbObjectId unlisted = addLineType(L"Later");
    combo.setCurrentLineType(unlisted);
    combo.setCurrentLineType(ZvDbObjectId());
    QCOMPARE(combo.currentText(), QString("Dotted"));
    // The first of two rows with one id.
    QImage none;
    QString name = QStringLiteral("again");
    combo.drawLineItem(m_dashed, none, name);
    combo.setCurrentLineType(m_dashed);
    QCOMPARE(combo.currentText(), QString("Dashed"));
}

// ---- size -----------------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::firstSizeFitsThePictures_data()
{
    QTest::addColumn<QSize>("control");
    QTest::addColumn<QSize>("picture");
    QTest::newRow("narrower than 80: half of it is less than 80") << QSize(60, 30) << QSize(80, 30);
    QTest::newRow("one pixel narrower") << QSize(79, 30) << QSize(80, 30);
    QTest::newRow("80 wide") << QSize(80, 30) << QSize(80, 30);
    QTest::newRow("wide") << QSize(300, 30) << QSize(80, 30);
    QTest::newRow("low") << QSize(300, 20) << QSize(80, 25);
    QTest::newRow("25 high") << QSize(300, 25) << QSize(80, 25);
    QTest::newRow("high") << QSize(300, 100) << QSize(80, 100);
    QTest::newRow("no width") << QSize(0, 40) << QSize(80, 40);
    QTest::newRow("no height") << QSize(300, 0) << QSize(80, 25);
}

void TestLineTypeComboBox::firstSizeFitsThePictures()
{
    QFETCH(QSize, control);
    QFETCH(QSize, picture);
    QWidget window;
    ZvLineTypeComboBox combo(true, &window);
    combo.resize(control);
    window.show();
    QCOMPARE(combo.size(), control);
    QCOMPARE(combo.iconSize(), picture);
    QVERIFY(!combo.signalsBlocked());
}

void TestLineTypeComboBox::laterSizesDoNothing()
{
    QWidget window;
    ZvLineTypeComboBox combo(true, &window);
    combo.resize(300, 30);
    window.show();
    combo.resize(300, 60);
    QCOMPARE(combo.iconSize(), QSize(80, 30));
}

void TestLineTypeComboBox::fittedSizeServesAddedRowsUntilTheRefill()
{
    addTwo();
    QWidget window;
    ZvLineTypeComboBox combo(true, &window);
    combo.resize(300, 40);
    window.show();
    QCOMPARE(pictureOf(combo, 0).size(), QSize(80, 25)); // rows keep the pictures they have
    drawing().setCeltype(addLineType(L"New", {1.0, -1.0}));
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentText(), QString("New"));
    QCOMPARE(pictureOf(combo, combo.currentIndex()).size(), QSize(80, 40));
    combo.init();
    QCOMPARE(combo.iconSize(), QSize(80, 25));
    for (int row = 0; row < combo.count(); ++row)
        QCOMPARE(pictureOf(combo, row).size(), QSize(80, 25));
}

// ---- following the drawing ------------------------------------------------------------------------------------------

void TestLineTypeComboBox::statusDecidesWhatIsShown_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("no document known: blank") << int(kInfoNoDocument) << "" << false;
    QTest::newRow("no selection: the drawing's line type") << int(kInfoNoSelection) << "Dotted" << true;
    QTest::newRow("uniform: the summary's line type") << int(kInfoUniform) << "Dashed" << true;
    QTest::newRow("mixed: blank") << int(kInfoMixed) << "" << true;
}

void TestLineTypeComboBox::statusDecidesWhatIsShown()
{
    QFETCH(int, status);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    addTwo();
    drawing().setCeltype(m_dotted);
    ZvLineTypeComboBox combo(false, nullptr);
    auto *info = static_cast<SLineTypeInfo *>(combo.pickFirstInfo);
    info->status = status;
    info->value = L"Dashed";
    combo.setEnabled(!enabled);
    const QSignalSpy spy(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    combo.updateData(true);
    QCOMPARE(combo.currentText(), text);
    QCOMPARE(combo.isEnabled(), enabled);
    QCOMPARE(spy.size(), 0);
    QVERIFY(!combo.signalsBlocked());
    // A document without a drawing has neither value.
    combo.setCurrentIndex(0);
}

void TestLineTypeComboBox::currentLineTypeIsShown()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    for (const ZvDbObjectId &id : {m_dashed, m_dotted, drawing().byBlockLinetype(), drawing().byLayerLinetype()}) {
        drawing().setCeltype(id);
        QVERIFY(runMacro(L"_.REGEN "));
        QCOMPARE(combo.itemData(combo.currentIndex()).value<ZvDbObjectId>(), id);
    }
}

void TestLineTypeComboBox::selectionIsFollowed()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const ZvDbObjectId first = lineWith(L"Dashed");
    const ZvDbObjectId second = lineWith(L"Dotted");
    select({first});
    QCOMPARE(combo.currentText(), QString("Dashed"));
    select({second});
    QCOMPARE(combo.currentText(), QString("Dotted"));
    select({first, second});
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(combo.isEnabled());
    select({});
    QCOMPARE(combo.currentText(), QString("ByLayer"));
}

void TestLineTypeComboBox::newLineTypeShowsAboveThePendingRow()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const ZvDbObjectId added = addLineType(L"New", {1.0, -1.0});
    drawing().setCeltype(added);
    QVERIFY(runMacro(L"_.REGEN "));
    QStringList expected = kRows;
    expected.insert(kPendingRow, "New");
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentIndex(), kPendingRow);
    QCOMPARE(combo.itemData(kPendingRow).value<ZvDbObjectId>(), added);
    QCOMPARE(dashCount(pictureOf(combo, kPendingRow)), 4);
    QVERIFY(combo.hooked);
    QVERIFY(runMacro(L"_.REGEN ")); // found the second time
    QCOMPARE(rowsOf(combo), expected);
}

void TestLineTypeComboBox::newLineTypeIsListedInFullOnOpening()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    combo.show();
    addLineType(L"New 1");
    drawing().setCeltype(addLineType(L"New 2"));
    QVERIFY(runMacro(L"_.REGEN "));
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo),
             (QStringList{"ByLayer", "Continuous", "Dashed", "Dotted", "New 1", "New 2", "ByBlock", kPending}));
    QCOMPARE(combo.currentText(), QString("New 2"));
}

void TestLineTypeComboBox::lineTypeWithoutAPictureLeavesABlank_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("of an external reference") << "House|Dashed";
    QTest::newRow("unknown") << "Nowhere";
    QTest::newRow("empty") << "";
}

void TestLineTypeComboBox::lineTypeWithoutAPictureLeavesABlank()
{
    QFETCH(QString, name);
    openReferences();
    ZvLineTypeComboBox combo(false, nullptr);
    const int rows = combo.count();
    auto *info = static_cast<SLineTypeInfo *>(combo.pickFirstInfo);
    info->status = kInfoUniform;
    info->value = ZvString(name.toUtf8().constData());
    combo.updateData(false);
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(combo.isEnabled());
    QCOMPARE(combo.count(), rows);
    QVERIFY(!combo.hooked);
}

void TestLineTypeComboBox::rendererThatGivesNothingLeavesABlank()
{
    addTwo();
    QWidget window;
    ZvLineTypeComboBox combo(true, &window);
    combo.resize(100, 20000); // pictures of that height are beyond the renderer's means
    window.show();
    const int rows = combo.count();
    drawing().setCeltype(addLineType(L"New"));
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.count(), rows);
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(combo.isEnabled());
    QVERIFY(combo.hooked);
}

void TestLineTypeComboBox::unreadableCurrentLineTypeLeavesABlank()
{
    addTwo();
    drawing().setCeltype(m_dashed);
    ZvLineTypeComboBox combo(true, nullptr);
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> held(m_dashed, ZvDb::kForWrite);
        combo.pickFirstInfo->status = kInfoNoSelection;
        combo.updateData(false);
        QCOMPARE(combo.currentIndex(), -1);
    }
    combo.updateData(false);
    QCOMPARE(combo.currentText(), QString("Dashed"));
}

void TestLineTypeComboBox::nameIsMatchedWithCase()
{
    addTwo();
    ZvLineTypeComboBox combo(false, nullptr);
    auto *info = static_cast<SLineTypeInfo *>(combo.pickFirstInfo);
    info->status = kInfoUniform;
    info->value = L"DASHED"; // the renderer ignores case and has a picture
    combo.updateData(false);
    QStringList expected = kRows;
    expected.insert(kPendingRow, "DASHED");
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.itemData(combo.currentIndex()).value<ZvDbObjectId>(), m_dashed);
}

void TestLineTypeComboBox::noticesAreFiltered_data()
{
    addNoticeRows({"CLAYER", "CELTYPE", "celtype", "CECOLOR"});
    addObjectNotice("a line type", "line type", false, true);
}

void TestLineTypeComboBox::noticesAreFiltered()
{
    QFETCH(QString, object);
    QFETCH(bool, passes);
    addTwo();
    drawing().setCeltype(m_dotted);
    ZvLineTypeComboBox combo(false, nullptr);
    combo.pickFirstInfo->status = kInfoNoSelection;
    tellNotice(combo, drawing(), object == "line" ? addLine() : object == "layer" ? drawing().clayer() : m_dashed);
    QCOMPARE(combo.currentText(), passes ? QString("Dotted") : QString("ByBlock"));
}

void TestLineTypeComboBox::withoutDocumentNothingHappens()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    zvDocManagerPtr()->closeDocument(document());
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticeCommandEnded;
    combo.acceptUpdateUI(notice);
    combo.updateData(false);
    QCOMPARE(rowsOf(combo), kRows);
    QVERIFY(combo.isEnabled());
    combo.show();
    const StartedCommands commands;
    combo.showPopup();
    combo.hidePopup();
    QVERIFY(runCommands());
    QCOMPARE(rowsOf(combo), QStringList{kPending});
    QCOMPARE(commands.names, QStringList());
}

void TestLineTypeComboBox::showingTellsNothing()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    drawing().setCeltype(addLineType(L"New"));
    QVERIFY(runMacro(L"_.REGEN "));
    select({lineWith(L"Dashed")});
    select({});
    QCOMPARE(index.size(), 0);
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

void TestLineTypeComboBox::documentsAreFollowed()
{
    addTwo();
    drawing().setCeltype(m_dashed);
    ZvLineTypeComboBox combo(true, nullptr);
    combo.show();
    ZvApDocument *first = document();
    openAnother();
    const ZvDbObjectId other = addLineType(L"Other");
    drawing().setCeltype(other);
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentText(), QString("Other"));
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), (QStringList{"ByLayer", "Continuous", "Other", "ByBlock", kPending}));
    zvDocManagerPtr()->setCurrentDocument(first);
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentText(), QString("Dashed"));
}

// ---- picking --------------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::pickIsToldHookedOrNot_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked") << true;
    QTest::newRow("not hooked") << false;
}

void TestLineTypeComboBox::pickIsToldHookedOrNot()
{
    QFETCH(bool, hooked);
    addTwo();
    ZvLineTypeComboBox combo(hooked, nullptr);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), 2);
    QCOMPARE(drawing().celtype(), hooked ? m_dashed : drawing().byLayerLinetype());
    combo.setCurrentIndex(-1);
    QCOMPARE(told.size(), 1);
}

void TestLineTypeComboBox::pickWritesTheCurrentLineType()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    for (const int row : {2, 4, 3, 0, 1}) {
        combo.setCurrentIndex(row);
        QVERIFY(runCommands());
        QCOMPARE(drawing().celtype(), combo.itemData(row).value<ZvDbObjectId>());
        QCOMPARE(combo.currentIndex(), row);
    }
    QCOMPARE(told.size(), 5); // what the drawing says back is not told
}

void TestLineTypeComboBox::pickWritesTheSelection()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId other = addLine();
    select({line});
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    QCOMPARE(lineTypeOf(line), ZvString(L"Dashed"));
    QCOMPARE(lineTypeOf(other), ZvString(L"ByLayer"));
    QCOMPARE(drawing().celtype(), drawing().byLayerLinetype());
    QCOMPARE(combo.currentText(), QString("Dashed"));
}

void TestLineTypeComboBox::pickMakesAMixedSelectionUniform()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const ZvDbObjectId first = lineWith(L"Dashed");
    const ZvDbObjectId second = lineWith(L"Dotted");
    select({first, second});
    QCOMPARE(combo.currentIndex(), -1);
    combo.setCurrentIndex(1);
    QVERIFY(runCommands());
    QCOMPARE(lineTypeOf(first), ZvString(L"Continuous"));
    QCOMPARE(lineTypeOf(second), ZvString(L"Continuous"));
    QCOMPARE(combo.currentText(), QString("Continuous"));
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(lineTypeOf(first), ZvString(L"Dashed"));
    QCOMPARE(lineTypeOf(second), ZvString(L"Dotted"));
}

void TestLineTypeComboBox::pickIsOneUndoStep()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    combo.setCurrentIndex(3);
    QVERIFY(runCommands());
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(drawing().celtype(), m_dashed);
    QCOMPARE(combo.currentText(), QString("Dashed"));
}

namespace {
ZvLineTypeComboBox *s_combo = nullptr;
ZvString s_during;
} // namespace

void TestLineTypeComboBox::pickDuringACommandBelongsToIt()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    s_combo = &combo;
    zvedCommandStack()->addCommand(
        L"TEST", L"PICKDASHED", L"PICKDASHED", 0,
        [] {
            s_combo->setCurrentIndex(2);
            s_during = ZevaUISetting::getLineTypeName(); // written at once
        },
        nullptr, -1, ZvRxResourceInstance(nullptr), 0);
    QVERIFY(runMacro(L"_.PICKDASHED "));
    zvedCommandStack()->removeCmd(L"TEST", L"PICKDASHED");
    QCOMPARE(s_during, ZvString(L"Dashed"));
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(drawing().celtype(), drawing().byLayerLinetype());
}

void TestLineTypeComboBox::lockedEntitiesAreLeftOut()
{
    addTwo();
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId locked = addLine();
    change<ZvDbEntity>(locked, [&](ZvDbEntity &entity) { entity.setLayer(layer); });
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
    ZvLineTypeComboBox combo(true, nullptr);
    const MessageBoxes boxes;
    select({line, locked});
    combo.setCurrentIndex(2);
    QVERIFY(runCommands());
    QCOMPARE(lineTypeOf(line), ZvString(L"Dashed"));
    QCOMPARE(lineTypeOf(locked), ZvString(L"ByLayer"));
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(combo.currentIndex(), -1); // they differ now
}

void TestLineTypeComboBox::emptyNameWritesNothing()
{
    ZvLineTypeComboBox combo(true, nullptr);
    QImage none;
    QString empty;
    ZvDbObjectId id = drawing().continuousLinetype();
    combo.drawLineItem(id, none, empty);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    const StartedCommands commands;
    combo.setCurrentIndex(combo.count() - 2);
    QVERIFY(runCommands());
    QCOMPARE(told.size(), 1);
    QCOMPARE(commands.names, QStringList());
    QVERIFY(combo.getCurrentLineType().isNull());
}

void TestLineTypeComboBox::keyboardGoesBackToTheDrawing()
{
    addTwo();
    QWidget window;
    QWidget view(&window);
    view.setFocusPolicy(Qt::StrongFocus);
    ZvLineTypeComboBox combo(true, &window);
    const FocusView focus(&view);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(zevaWaitForActive(&window));
    combo.setCurrentIndex(0);
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(combo.currentIndex(), 1);
    QVERIFY(view.hasFocus());
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_End); // the pending row
    QVERIFY(view.hasFocus());
    QVERIFY(runCommands());
}

// ---- the wheel ------------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::wheelNeverLandsOnThePendingRow_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("to");
    QTest::newRow("down by one") << 0 << 1 << 1;
    QTest::newRow("to the last true row") << 3 << 1 << 4;
    QTest::newRow("down from the last true row") << 4 << 1 << 4;
    QTest::newRow("down three times from there") << 4 << 3 << 4;
    QTest::newRow("far down from the top") << 0 << 20 << 4;
    QTest::newRow("up from the last true row") << 4 << -1 << 3;
    QTest::newRow("up from the top") << 0 << -2 << 0;
}

void TestLineTypeComboBox::wheelNeverLandsOnThePendingRow()
{
    QFETCH(int, from);
    QFETCH(int, steps);
    QFETCH(int, to);
    addTwo();
    QWidget window;
    ZvLineTypeComboBox combo(true, &window);
    window.show();
    combo.setCurrentIndex(from);
    QVERIFY(runCommands());
    const StartedCommands commands;
    turnWheel(combo, steps);
    QVERIFY(runCommands());
    QCOMPARE(combo.currentIndex(), to);
    QCOMPARE(drawing().celtype(), combo.itemData(to).value<ZvDbObjectId>());
    QVERIFY(!commands.names.contains("LINETYPE"));
    combo.setCurrentIndex(kPendingRow); // the rule holds for the wheel alone
    QVERIFY(runCommands());
    QVERIFY(commands.names.contains("LINETYPE"));
}

void TestLineTypeComboBox::wheelAtTheEndTellsOfTheRowItStaysOn()
{
    addTwo();
    ZvLineTypeComboBox combo(nullptr, false, true);
    combo.show();
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    turnWheel(combo, 1); // from "ByBlock", the last true row
    QCOMPARE(combo.currentText(), QString("ByBlock"));
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), 4);
}

void TestLineTypeComboBox::wheelWithoutPendingRowReachesTheEnd()
{
    addTwo();
    ZvLineTypeComboBox combo(nullptr, true, true);
    combo.show();
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    turnWheel(combo, 20);
    QCOMPARE(combo.currentText(), QString("Dotted"));
    QCOMPARE(told.size(), 4);
}

void TestLineTypeComboBox::wheelOverThePendingRowAlone()
{
    zvDocManagerPtr()->closeDocument(document());
    ZvLineTypeComboBox combo(nullptr, false, true);
    combo.show();
    combo.SetNullItem();
    const StartedCommands commands;
    turnWheel(combo, 2);
    QVERIFY(runCommands());
    QCOMPARE(combo.currentIndex(), 0); // there is no row above it
    QCOMPARE(commands.names, QStringList());
}

// ---- opening --------------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::listOpens_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<int>("state");
    for (const bool hooked : {true, false}) {
        for (int i = 0; i < int(std::size(kCommandStates)); ++i)
            QTest::addRow("%s, %s", hooked ? "hooked" : "not hooked", kCommandStates[i].name) << hooked << i;
    }
}

void TestLineTypeComboBox::listOpens()
{
    QFETCH(bool, hooked);
    QFETCH(int, state);
    ZvLineTypeComboBox combo(hooked, nullptr);
    combo.show();
    ListOpener opener(combo);
    opener.run(kCommandStates[state]);
    QCOMPARE(opener.active(), kCommandStates[state].active);
    QCOMPARE(opener.wasOpen(), !hooked || kCommandStates[state].opens);
}

void TestLineTypeComboBox::openingRefillsTheHookedOne_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked: filled anew") << true;
    QTest::newRow("not hooked: opened as it is") << false;
}

void TestLineTypeComboBox::openingRefillsTheHookedOne()
{
    QFETCH(bool, hooked);
    ZvLineTypeComboBox combo(hooked, nullptr);
    combo.show();
    addTwo();
    const QStringList before = rowsOf(combo);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), hooked ? kRows : before);
}

typedef std::function<void(ZvLineTypeComboBox &combo, ZvDbObjectId dashed)> RowChange;
Q_DECLARE_METATYPE(RowChange)

void TestLineTypeComboBox::openingPutsTheRowsRight_data()
{
    const auto edit = [](ZvDbObjectId id, std::function<void(ZvDbLinetypeTableRecord &)> act) {
        change<ZvDbLinetypeTableRecord>(id, act);
    };
    QTest::addColumn<RowChange>("change");
    const auto row = [](const char *name, RowChange change) { QTest::newRow(name) << std::move(change); };
    row("nothing", [](ZvLineTypeComboBox &, ZvDbObjectId) {});
    row("text of a row", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.setItemText(1, "Other"); });
    row("picture of a row", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.setItemIcon(1, QIcon()); });
    row("id of a row", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.setItemData(1, 5); });
    row("row in front", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.insertItem(0, "Other"); });
    row("row in the middle", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.insertItem(3, "Other"); });
    row("row behind", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.addItem("Other"); });
    row("no first row", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.removeItem(0); });
    row("no last row", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.removeItem(combo.count() - 1); });
    row("no rows", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.clear(); });
    row("rows sorted", [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.model()->sort(0, Qt::DescendingOrder); });
    row("another model",
        [](ZvLineTypeComboBox &combo, ZvDbObjectId) { combo.setModel(new QStandardItemModel(0, 1, &combo)); });
    row("line type added", [](ZvLineTypeComboBox &, ZvDbObjectId) { addLineType(L"Fresh", {1.0, -1.0}); });
    row("line type erased",
        [edit](ZvLineTypeComboBox &, ZvDbObjectId id) { edit(id, [](auto &record) { record.erase(); }); });
    row("one added and one erased", [edit](ZvLineTypeComboBox &, ZvDbObjectId id) {
        addLineType(L"Fresh", {1.0, -1.0});
        edit(id, [](auto &record) { record.erase(); });
    });
    row("line type renamed",
        [edit](ZvLineTypeComboBox &, ZvDbObjectId id) { edit(id, [](auto &record) { record.setName(L"Renamed"); }); });
    row("pattern edited", [edit](ZvLineTypeComboBox &, ZvDbObjectId id) {
        edit(id, [](auto &record) {
            ZvDbLinetypeTableRecord::Dash dash;
            dash.length = 9.0;
            ZvDbLinetypeTableRecord::Dash gap;
            gap.length = -3.0;
            record.setDashes({dash, gap});
        });
    });
    row("another drawing", [this](ZvLineTypeComboBox &, ZvDbObjectId) { openAnother(); });
}

void TestLineTypeComboBox::openingPutsTheRowsRight()
{
    QFETCH(RowChange, change);
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    combo.show();
    for (int i = 0; i < 2; ++i) { // and once more, when all is as it was
        if (i == 0)
            change(combo, m_dashed);
        combo.showPopup();
        combo.hidePopup();
        const ZvLineTypeComboBox fresh(true, nullptr);
        QCOMPARE(rowsOf(combo), rowsOf(fresh));
        for (int row = 0; row < fresh.count(); ++row) {
            QCOMPARE(combo.itemData(row).value<ZvDbObjectId>(), fresh.itemData(row).value<ZvDbObjectId>());
            QCOMPARE(pictureOf(combo, row), pictureOf(fresh, row));
        }
    }
}

void TestLineTypeComboBox::openingTouchesOnlyWhatHasChanged()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    combo.show();
    const QSignalSpy changed(combo.model(), &QAbstractItemModel::dataChanged);
    const QSignalSpy inserted(combo.model(), &QAbstractItemModel::rowsInserted);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(changed.size(), 0);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), kPendingRow);
    change<ZvDbLinetypeTableRecord>(m_dashed, [](ZvDbLinetypeTableRecord &record) { record.setName(L"Renamed"); });
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(inserted.size(), 2);
    QVERIFY(!changed.isEmpty());
    for (const QList<QVariant> &arguments : changed)
        QCOMPARE(arguments.at(0).toModelIndex().row(), 2);
    QCOMPARE(combo.itemText(2), QString("Renamed"));
}

void TestLineTypeComboBox::openingKeepsTheRowWithoutWriting()
{
    addTwo();
    drawing().setCeltype(m_dotted);
    ZvLineTypeComboBox combo(true, nullptr);
    combo.show();
    QVERIFY(runMacro(L"_.REGEN "));
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const StartedCommands commands;
    combo.showPopup();
    QCOMPARE(combo.currentText(), QString("Dotted"));
    combo.hidePopup();
    QVERIFY(!combo.signalsBlocked());
    QCOMPARE(index.size(), 0);
    QVERIFY(runCommands());
    QCOMPARE(commands.names, QStringList());
}

void TestLineTypeComboBox::blankStaysBlankOverOpening()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    combo.show();
    select({lineWith(L"Dashed"), lineWith(L"Dotted")});
    combo.showPopup();
    QCOMPARE(combo.currentIndex(), -1);
    combo.hidePopup();
}

void TestLineTypeComboBox::blankWithoutASelectionShowsWhatAFilledListDoes()
{
    ZvLineTypeComboBox combo(true, nullptr);
    const QString filled = combo.currentText();
    QVERIFY(!filled.isEmpty());
    combo.show();
    {
        const QSignalBlocker block(&combo);
        combo.clear();
    }
    combo.showPopup();
    QCOMPARE(combo.currentText(), filled);
    combo.hidePopup();
    QVERIFY(!zvedQueueHasInput()); // and writes nothing
}

// ---- the pending row, by the command --------------------------------------------------------------------------------

void TestLineTypeComboBox::commandRouteGoesBackFirst_data()
{
    QTest::addColumn<int>("before");
    QTest::newRow("first row") << 0;
    QTest::newRow("a row in the middle") << 2;
    QTest::newRow("last true row") << 4;
}

void TestLineTypeComboBox::commandRouteGoesBackFirst()
{
    QFETCH(int, before);
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    for (const int row : {1, before}) {
        combo.setCurrentIndex(row);
        QVERIFY(runCommands());
    }
    QCOMPARE(combo.currentIndex(), before);
    const StartedCommands commands;
    combo.setCurrentIndex(kPendingRow);
    QCOMPARE(combo.currentIndex(), before); // before the command starts
    QCOMPARE(commands.names, QStringList());
    QVERIFY(!combo.signalsBlocked());
    QVERIFY(runCommands());
    QCOMPARE(commands.names, QStringList{"LINETYPE"});
    QCOMPARE(combo.currentIndex(), before);
}

void TestLineTypeComboBox::commandRouteOfAnUnhookedOneShowsNothing()
{
    // Nobody tells an unhooked control what is selected, and the drawing is asked all the same.
    addTwo();
    ZvLineTypeComboBox combo(nullptr, false, true);
    combo.setCurrentIndex(2);
    const StartedCommands commands;
    combo.setCurrentIndex(kPendingRow);
    QVERIFY(runCommands());
    QCOMPARE(commands.names, QStringList{"LINETYPE"});
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(!combo.isEnabled());
}

void TestLineTypeComboBox::pendingRowTellsNothing()
{
    addTwo();
    ZvLineTypeComboBox combo(true, nullptr);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    combo.setCurrentIndex(kPendingRow);
    QVERIFY(runCommands());
    QCOMPARE(told.size(), 0);
    // Without pending row the last row is like any other.
    ZvLineTypeComboBox plain(nullptr, true, true);
    const QSignalSpy plainTold(&plain, &ZvLineTypeComboBox::lineTypeItemChanged);
    plain.setCurrentIndex(plain.count() - 1);
    QCOMPARE(plainTold.size(), 1);
    QCOMPARE(plain.currentIndex(), plain.count() - 1);
}

// ---- the pending row, by the service --------------------------------------------------------------------------------

void TestLineTypeComboBox::withoutServiceThePendingRowStays()
{
    addTwo();
    ZvLineTypeComboBox combo(nullptr, false, false);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    const StartedCommands commands;
    combo.setCurrentIndex(kPendingRow);
    QVERIFY(runCommands());
    QCOMPARE(combo.currentIndex(), kPendingRow);
    QCOMPARE(rowsOf(combo), kRows);
    QCOMPARE(told.size(), 0);
    QCOMPARE(commands.names, QStringList());
}

void TestLineTypeComboBox::serviceOfAnotherClassIsRefused()
{
    addTwo();
    const OfferedManager offered(new ZvRxObjectImpl<ZvEditorReactor>);
    ZvLineTypeComboBox combo(nullptr, false, false);
    QVERIFY_EXCEPTION_THROWN(combo.currentLTypeIndexChanged(kPendingRow), ZvError_NotThatKindOfClass);
    QCOMPARE(rowsOf(combo), kRows);
}

void TestLineTypeComboBox::serviceIsAskedForTheLastRow()
{
    addTwo();
    auto *manager = new ZvRxObjectImpl<Manager>;
    const OfferedManager offered(manager);
    ZvLineTypeComboBox combo(nullptr, false, false);
    combo.setCurrentIndex(kPendingRow);
    QCOMPARE(manager->runs, 1);
    QCOMPARE(manager->asked, ZvString(L"ByLayer")); // nothing was picked yet: the first row
    QCOMPARE(manager->drawing, &drawing());
    combo.setCurrentIndex(3);
    combo.setCurrentIndex(kPendingRow);
    QCOMPARE(manager->runs, 2);
    QCOMPARE(manager->asked, ZvString(L"Dotted"));
}

void TestLineTypeComboBox::chosenOneIsPicked_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("first row") << 0;
    QTest::newRow("a row in the middle") << 3;
    QTest::newRow("the row that was current") << 2;
    QTest::newRow("the row that a filled list shows, and the last one as long as the pending row is missing") << 4;
}

void TestLineTypeComboBox::chosenOneIsPicked()
{
    QFETCH(int, row);
    addTwo();
    auto *manager = new ZvRxObjectImpl<Manager>;
    const OfferedManager offered(manager);
    ZvLineTypeComboBox combo(nullptr, false, false);
    combo.setCurrentIndex(2);
    manager->act = choose(combo.itemData(row).value<ZvDbObjectId>());
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    combo.setCurrentIndex(kPendingRow);
    QCOMPARE(manager->runs, 1);
    QCOMPARE(combo.currentIndex(), row);
    QCOMPARE(rowsOf(combo), kRows);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), row);
    QVERIFY(!combo.signalsBlocked());
}

void TestLineTypeComboBox::nothingChosenGoesBack_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("nothing written") << 0;
    QTest::newRow("the null id") << 1;
    QTest::newRow("an id of no drawing") << 2;
    QTest::newRow("an id of no row") << 3;
}

void TestLineTypeComboBox::nothingChosenGoesBack()
{
    QFETCH(int, answer);
    addTwo();
    auto *manager = new ZvRxObjectImpl<Manager>;
    const OfferedManager offered(manager);
    if (answer == 1)
        manager->act = choose(ZvDbObjectId());
    else if (answer == 2)
        manager->act = choose(ZvDbObjectId::fromInt64(0x7FFFFFFF00000001ull));
    else if (answer == 3)
        manager->act = choose(drawing().clayer());
    ZvLineTypeComboBox combo(nullptr, false, false);
    combo.setCurrentIndex(2);
    const QSignalSpy told(&combo, &ZvLineTypeComboBox::lineTypeItemChanged);
    combo.setCurrentIndex(kPendingRow);
    QCOMPARE(manager->runs, 1);
    QCOMPARE(combo.currentText(), QString("Dashed"));
    QCOMPARE(rowsOf(combo), kRows);
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

void TestLineTypeComboBox::lineTypesMadeInTheManagerAreListed()
{
    addTwo();
    auto *manager = new ZvRxObjectImpl<Manager>;
    const OfferedManager offered(manager);
    manager->act = [](const ZvJsonPtr &bag) { choose(addLineType(L"Made", {1.0, -1.0}))(bag); };
    ZvLineTypeComboBox combo(nullptr, false, false);
    combo.setCurrentIndex(kPendingRow);
    QStringList expected = kRows;
    expected.insert(4, "Made");
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentText(), QString("Made"));
}

void TestLineTypeComboBox::deletedWhileTheManagerRuns()
{
    addTwo();
    auto *manager = new ZvRxObjectImpl<Manager>;
    const OfferedManager offered(manager);
    QPointer<ZvLineTypeComboBox> combo = new ZvLineTypeComboBox(nullptr, false, false);
    manager->act = [&](const ZvJsonPtr &bag) {
        delete combo.data();
        choose(m_dashed)(bag);
    };
    combo->currentLTypeIndexChanged(kPendingRow);
    QVERIFY(!combo);
    QCOMPARE(manager->runs, 1);
}

void TestLineTypeComboBox::noticeDuringTheManager()
{
    addTwo();
    auto *manager = new ZvRxObjectImpl<Manager>;
    const OfferedManager offered(manager);
    ZvLineTypeComboBox combo(nullptr, false, false);
    combo.pickFirstInfo->status = kInfoNoSelection;
    combo.setCurrentIndex(2);
    manager->act = [&](const ZvJsonPtr &) {
        drawing().setCeltype(m_dotted);
        combo.updateData(false);
    };
    combo.setCurrentIndex(kPendingRow);
    QCOMPARE(combo.currentText(), QString("Dotted")); // the last true row by now
    QCOMPARE(rowsOf(combo), kRows);
}

// ---- days at work ---------------------------------------------------------------------------------------------------

void TestLineTypeComboBox::journeyFromPickToUndo()
{
    addTwo();
    QWidget window;
    ZvLineTypeComboBox combo(true, &window);
    combo.resize(200, 30);
    window.resize(260, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const ZvDbObjectId line = addLine();
    select({line});
    QCOMPARE(combo.currentText(), QString("ByLayer"));
    pickByMouse(combo, 2);
    QVERIFY(runCommands());
    QCOMPARE(lineTypeOf(line), ZvString(L"Dashed"));
    QCOMPARE(combo.currentText(), QString("Dashed"));
    pickByKeys(combo, 1);
    QVERIFY(runCommands());
    QCOMPARE(lineTypeOf(line), ZvString(L"Dotted"));
    turnWheel(combo, -2);
    QVERIFY(runCommands());
    QCOMPARE(lineTypeOf(line), ZvString(L"Continuous"));
    // The pending row by the mouse: the manager's command starts, and the control shows what it showed.
    const StartedCommands commands;
    pickByMouse(combo, kPendingRow);
    QVERIFY(runCommands());
    QCOMPARE(commands.names, QStringList{"LINETYPE"});
    QCOMPARE(combo.currentText(), QString("Continuous"));
    // Back step by step; the control shows each.
    QStringList shown;
    while (combo.currentText() != "ByLayer" && shown.size() < 10) {
        QVERIFY(runMacro(L"_.U "));
        QCOMPARE(ZvString(combo.currentText().toUtf8().constData()), lineTypeOf(line));
        if (shown.isEmpty() || shown.last() != combo.currentText())
            shown << combo.currentText();
    }
    QCOMPARE(shown.mid(shown.size() - 3), (QStringList{"Dotted", "Dashed", "ByLayer"}));
}

void TestLineTypeComboBox::pickedLineTypeIsInTheSavedFile()
{
    addTwo();
    const QTemporaryDir folder;
    const ZvString path((folder.path() + "/types.dxf").toUtf8().constData());
    {
        ZvLineTypeComboBox combo(true, nullptr);
        const ZvDbObjectId line = addLine();
        select({line});
        combo.setCurrentIndex(3);
        QVERIFY(runCommands());
        select({});
        combo.setCurrentIndex(2);
        QVERIFY(runCommands());
        ZvDbFileReport report;
        QCOMPARE(zvDocManagerPtr()->saveDocument(document(), path, report), Zv::eOk);
    }
    zvDocManagerPtr()->closeDocument(document());
    ZvDbFileReport report;
    QVERIFY(zvDocManagerPtr()->openDocument(path, report));
    bus().enableUpdateUI(true);
    QCOMPARE(ZevaUISetting::getLineTypeName(), ZvString(L"Dashed"));
    ZvLineTypeComboBox combo(true, nullptr);
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentText(), QString("Dashed"));
    QVERIFY(runMacro(L"_.SELECT _ALL "));
    QTRY_COMPARE(combo.currentText(), QString("Dotted"));
}

ZEVA_TEST_MAIN(TestLineTypeComboBox)
#include "tst_linetypecombobox.moc"
