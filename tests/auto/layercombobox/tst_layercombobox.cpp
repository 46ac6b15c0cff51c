// SPDX-License-Identifier: MIT
#include "colordialogrun.h"
#include "combodriver.h"
#include "dialogstandin.h"
#include "drawingtest.h"
#include "noticecases.h"
#include "notices.h"
#include "stranger.h"

#include "zvcolorbutton.h"
#include "zvlayerultralcombobox.h"

#include "base/zverror.h"
#include "base/zvregistry.h"
#include "db/zvdbdictionary.h"

#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QProcess>
#include <QProxyStyle>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QWindow>

#include <functional>
#include <memory>

namespace {

enum Column { kSwitch, kFreeze, kLock, kColour, kName };

const QString kIconNames[]
    = {QStringLiteral("layer_on"),   QStringLiteral("layer_off"),  QStringLiteral("layer_frozed"),
       QStringLiteral("layer_thaw"), QStringLiteral("layer_lock"), QStringLiteral("layer_unlock")};

// by the icon's place in the list above
int switchIcon(bool off)
{
    return off ? 1 : 0;
}
int freezeIcon(bool frozen)
{
    return frozen ? 2 : 3;
}
int lockIcon(bool locked)
{
    return locked ? 4 : 5;
}

QString iconPath(int icon)
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/ico_zeva/") + kIconNames[icon]
        + QStringLiteral(".ico");
}

/// As the control shows it: 16 by 16, whatever the file has.
QImage iconImage(int icon)
{
    return QImage(iconPath(icon))
        .scaled(16, 16, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        .convertToFormat(QImage::Format_ARGB32);
}

/// Two halves with a line between them, in a format that the file's name does not tell.
bool drawIconFile(const QString &path, const QSize &size, const QColor &left, const QColor &right)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(left);
    QPainter painter(&image);
    painter.fillRect(QRect(QPoint(size.width() / 3, 0), size), right);
    painter.fillRect(QRect(0, size.height() / 2, size.width(), 1), Qt::black);
    painter.end();
    return image.save(path, "PNG");
}

QImage imageOf(const QIcon &icon, int size = 16)
{
    return icon.pixmap(size, size).toImage().convertToFormat(QImage::Format_ARGB32);
}

ZvString numberedName(int number)
{
    return ("Layer " + std::to_string(10000 + number)).c_str();
}

ZvCmColor indexColour(int index)
{
    ZvCmColor colour;
    colour.setColorIndex(std::uint16_t(index));
    return colour;
}

QImage overWhite(const QPixmap &pixmap)
{
    QPixmap picture(pixmap.size());
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawPixmap(0, 0, pixmap);
    painter.end();
    return picture.toImage().convertToFormat(QImage::Format_RGB32);
}

/// What a picture of the closed box looks like over white, put together without the control.
QImage expectedPicture(const QSize &combo, bool off, bool frozen, bool locked, const QColor &colour,
                       const QString &name, bool hasIcons = true)
{
    QPixmap picture(combo.width() - 22, combo.height() - 4);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    if (hasIcons) {
        painter.drawImage(1, 1, iconImage(switchIcon(off)));
        painter.drawImage(19, 1, iconImage(freezeIcon(frozen)));
        painter.drawImage(37, 1, iconImage(lockIcon(locked)));
    }
    ZvColorButtonWidget swatch(nullptr);
    painter.drawPixmap(55, 1, swatch.getColorPixmapWithBorder(16, 16, colour));
    QRect area;
    area.setCoords(77, 0, combo.width() - 1, combo.height() - 5);
    painter.drawText(area, 129, name);
    painter.end();
    return overWhite(picture);
}

/// A layer combo in a window of its own.
class Box
{
public:
    explicit Box(bool hooked = true, int width = 200) : combo(hooked, &window), table(combo.findChild<QTableWidget *>())
    {
        combo.setGeometry(10, 10, width, 26);
        window.resize(width + 20, 60);
    }
    bool show()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }
    bool open()
    {
        if (!window.isVisible() && !show())
            return false;
        QTest::mouseClick(&combo, Qt::LeftButton);
        return QTest::qWaitFor([this] { return table->isVisible(); });
    }
    void click(int row, int column) { QTest::mouseClick(button(row, column), Qt::LeftButton); }
    QPoint placeOfName(int row) const { return table->visualRect(table->model()->index(row, kName)).center(); }
    void pressName(int row) { QTest::mousePress(table->viewport(), Qt::LeftButton, Qt::NoModifier, placeOfName(row)); }
    /// With the button down.
    void dragTo(int row)
    {
        const QPoint place = placeOfName(row);
        QMouseEvent move(QEvent::MouseMove, place, table->viewport()->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(table->viewport(), &move);
    }
    QPushButton *button(int row, int column) const
    {
        return qobject_cast<QPushButton *>(table->cellWidget(row, column));
    }
    QLabel *label() const { return combo.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly); }
    QImage picture() const { return label()->pixmap() ? overWhite(*label()->pixmap()) : QImage(); }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < table->rowCount(); ++row)
            list << table->item(row, kName)->text();
        return list;
    }
    int icon(int row, int column) const
    {
        for (int icon = 0; icon < 6; ++icon) {
            if (imageOf(button(row, column)->icon()) == iconImage(icon))
                return icon;
        }
        return -1;
    }
    QImage expected(bool off, bool frozen, bool locked, const QColor &colour, const QString &name) const
    {
        return expectedPicture(combo.size(), off, frozen, locked, colour, name);
    }

    QWidget window;
    ZvLayerUltralComboBox combo;
    QTableWidget *const table;
};

/// The host's service, counting.
class CountingBus : public ZvQtUpdateBusService
{
public:
    void addReceiver(CZvQtControlHelp *receiver) override { joined << receiver; }
    void removeReceiver(CZvQtControlHelp *receiver) override { left << receiver; }

    static inline QVector<CZvQtControlHelp *> joined;
    static inline QVector<CZvQtControlHelp *> left;
};

const QColor kWhite(255, 255, 255);
const QColor kRed(255, 0, 0);
const QColor kGreen(0, 255, 0);

const char kDrawingWithReference[] = "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n2\n"
                                     "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
                                     "0\nLAYER\n2\nHouse|Walls\n70\n48\n62\n3\n6\nCONTINUOUS\n"
                                     "0\nLAYER\n2\n*HELP\n70\n0\n62\n3\n6\nCONTINUOUS\n"
                                     "0\nLAYER\n2\nA*B\n70\n0\n62\n3\n6\nCONTINUOUS\n"
                                     "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";

const ZvString kRefused
    = L"无法将选定图层置为当前图层。\r\n\r\n无法将选定图层置为当前图层:\r\n 依赖外部参照的图层\n 冻结的图层\n";

} // namespace

Q_DECLARE_METATYPE(ZvCmColor)

class TestLayerComboBox : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // construction
    void unhookedAndHooked();
    void partsOfTheControl();
    void tableBeforeTheFirstOpening();
    void iconsOfTheFolder();
    void missingIconFiles();
    void iconsFollowTheirFiles();
    void iconFilesOfOtherSizes();
    void fullPathIsBesideTheExecutable();
    void metaObjectFindsTheReceiver();
    void worksWithoutTheBus();
    void busOfAWrongClassThrows();
    void joinsTheBusAndLeavesIt_data();
    void joinsTheBusAndLeavesIt();

    // rows
    void rowsAreSortedAndShowTheirStates();
    void rowsLeaveOutHiddenLayers();
    void namesOfAllKinds_data();
    void namesOfAllKinds();
    void refillShowsWhatTheDrawingHas();
    void refillKeepsThePicture();
    void refillOfUnchangedLayersKeepsTheButtons();
    void refillAfterUndo();
    void refillWithAnotherPalette();
    void refillWithAnotherDrawing();
    void refillTellsNothing();
    void errorWhileFillingGetsOut();
    void withoutDocumentThereAreNoRows();
    void layerByLayerFollowsTheCurrentOne();
    void addedRowStandsForNoLayer();
    void twoThousandLayersHaveAllTheirButtons();
    void moreLayersHaveThemOnceInView();

    // the closed box
    void pictureHasItsPlaces_data();
    void pictureHasItsPlaces();
    void pictureNeedsRoom();
    void pictureFollowsTheFontOfTheControl();
    void labelLeavesTheArrowFree();
    void rowIsShownWithFreshState();
    void rowWithoutALayerIsBlank_data();
    void rowWithoutALayerIsBlank();
    void rowIsAppliedToTheDrawing();
    void refusedRowLeavesAll_data();
    void refusedRowLeavesAll();
    void erasedLayerIsRefused();
    void closedBoxWithoutItsLabel();
    void lostLayerIsShownWithoutItsState_data();
    void lostLayerIsShownWithoutItsState();

    // following the drawing
    void statusDecidesWhatIsShown_data();
    void statusDecidesWhatIsShown();
    void selectionIsFollowed();
    void layerNamesAreMatchedWithoutCase();
    void newLayerIsPaintedAndTheIndexStays();
    void newLayerLeavesABlankBoxBlank();
    void starInAnAbsentNameLeavesTheBox();
    void listWithoutRowsLeavesTheBox();
    void currentLayerThatCannotBeRead_data();
    void currentLayerThatCannotBeRead();
    void noticesAreFiltered_data();
    void noticesAreFiltered();
    void frozenInAViewportIsANotice();
    void unhookedHearsNoNotice();
    void errorWhileShowingIsAnAssertion();
    void withoutDocumentNothingHappens();
    void showingTellsNothing();

    // the list
    void listOpens_data();
    void listOpens();
    void unhookedListIsNeverReadAgain();
    void listIsWideEnough_data();
    void listIsWideEnough();
    void listOpensAtTheShownLayer();
    void lostNameOpensWithoutARow();
    void shownNameIsFoundByItsCase();
    void withoutLabelOrTableTheListIsNotRead_data();
    void withoutLabelOrTableTheListIsNotRead();
    void keyboardGoesBackToTheDrawing();
    void listOpensAgainWhereItWouldBeFoundAnew_data();
    void listOpensAgainWhereItWouldBeFoundAnew();
    void rowsAreNotMeasuredAgain_data();
    void rowsAreNotMeasuredAgain();
    void dragThroughTheListOpenedAgain();
    void releaseOfAnotherPressIsNoChoice();

    // the row buttons
    void listStaysOpenForTheNextSwitch();
    void controlIsDisabledWhileARowWrites();
    void switchedStateIsShown_data();
    void switchedStateIsShown();
    void closedBoxFollowsByTheNotice();
    void currentLayerIsSwitchedOffAfterAQuestion_data();
    void currentLayerIsSwitchedOffAfterAQuestion();
    void currentLayerIsNotFrozen();
    void layerThatCannotBeWritten();
    void buttonsOfARowWithoutALayer();
    void unhookedButtonsWrite();
    void switchesOfOneOpeningAreOneStep();
    void switchesOfTwoOpeningsAreTwoSteps();
    void clicksBesideAnOpenListAreStepsOfTheirOwn();
    void commandsInBetweenPartTheSteps();
    void switchDuringACommandBelongsToIt();

    // colours
    void dialogIsAskedForTheLayersColour_data();
    void dialogIsAskedForTheLayersColour();
    void dialogIsGivenItsKeys_data();
    void dialogIsGivenItsKeys();
    void dialogIsAskedForTheColourOfTheList();
    void answersOfAnotherDialog_data();
    void answersOfAnotherDialog();
    void dialogColourIsWritten_data();
    void dialogColourIsWritten();
    void dismissedDialogChangesNothing();
    void missingDialogChangesNothing();
    void listOpensAgainAfterTheDialog();
    void recolouredCurrentRowIsPaintedWithTheStatesItWasMadeWith();
    void recolouredOtherRowLeavesTheBox();
    void deletedWhileTheDialogRuns();
    void drawingClosedWhileTheDialogRuns();

    // rows pressed
    void pressOnANameMakesTheLayerCurrent();
    void pressMovesTheSelection();
    void pressOnAnUnhookedOneChangesThePictureOnly();
    void pressOnAFrozenLayerIsRefused();
    void pressClosesTheListAsTheClassDoes();

    // a day at work
    void journeyThroughTheList();
    void switchedStatesAreInTheSavedFile();

private:
    ZvDbObjectId addLayerWith(const ZvString &name, int colour, bool off = false, bool frozen = false,
                              bool locked = false)
    {
        const ZvDbObjectId id = addLayer(name);
        change<ZvDbLayerTableRecord>(id, [&](ZvDbLayerTableRecord &layer) {
            layer.setColor(indexColour(colour));
            layer.setIsOff(off);
            layer.setIsFrozen(frozen);
            layer.setIsLocked(locked);
        });
        return id;
    }
    /// "0", then "A" (red) and "B" (green, off, frozen and locked).
    void addTwo()
    {
        m_a = addLayerWith(L"A", 1);
        m_b = addLayerWith(L"B", 3, true, true, true);
        drawing().clearUndo();
    }
    bool openDrawingWithReference()
    {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbFileReport report;
        if (database->readStream(kDrawingWithReference, sizeof kDrawingWithReference - 1, report) != Zv::eOk)
            return false;
        zvDocManagerPtr()->addDocument(database, L"");
        bus().enableUpdateUI(true);
        return true;
    }
    bool isOff(ZvDbObjectId id)
    {
        return read<ZvDbLayerTableRecord>(id, [](const ZvDbLayerTableRecord &layer) { return layer.isOff(); });
    }
    bool isFrozen(ZvDbObjectId id)
    {
        return read<ZvDbLayerTableRecord>(id, [](const ZvDbLayerTableRecord &layer) { return layer.isFrozen(); });
    }
    bool isLocked(ZvDbObjectId id)
    {
        return read<ZvDbLayerTableRecord>(id, [](const ZvDbLayerTableRecord &layer) { return layer.isLocked(); });
    }
    ZvCmColor colourOf(ZvDbObjectId id)
    {
        return read<ZvDbLayerTableRecord>(id, [](const ZvDbLayerTableRecord &layer) { return layer.color(); });
    }
    void notifyCommandEnded()
    {
        CZvGlobalUIReactorHelp notice;
        notice.kind = kNoticeCommandEnded;
        bus().notifyUpdateUI(notice);
    }

    ZvDbObjectId m_a;
    ZvDbObjectId m_b;
};

// ---- construction ---------------------------------------------------------------------------------------------------

void TestLayerComboBox::unhookedAndHooked()
{
    const ZvLayerUltralComboBox plain(nullptr);
    QVERIFY(!plain.hooked);
    QVERIFY(!plain.pickFirstInfo);
    const ZvLayerUltralComboBox unhooked(false, nullptr);
    QVERIFY(!unhooked.hooked);
    QVERIFY(!unhooked.pickFirstInfo);
    const ZvLayerUltralComboBox hooked(true, nullptr);
    QVERIFY(hooked.hooked);
    QVERIFY(hooked.pickFirstInfo);
}

void TestLayerComboBox::partsOfTheControl()
{
    for (const bool hooked : {false, true}) {
        const Box box(hooked);
        QCOMPARE(box.combo.objectName(), QStringLiteral("ZvLayerUltralComboBox"));
        QCOMPARE(box.combo.maxVisibleItems(), 200);
        QCOMPARE(box.table->objectName(), QStringLiteral("m_listView"));
        QCOMPARE(box.combo.view(), static_cast<QAbstractItemView *>(box.table));
        QCOMPARE(box.combo.model(), box.table->model());
        QVERIFY(box.label());
        QCOMPARE(box.combo.currentIndex(), 0);
        QVERIFY(!box.combo.signalsBlocked());
    }
}

void TestLayerComboBox::tableBeforeTheFirstOpening()
{
    const Box box;
    QCOMPARE(box.table->verticalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
    QCOMPARE(box.table->horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(box.table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(box.table->rowHeight(0), 24);
    QCOMPARE(box.table->columnCount(), 5);
    QVERIFY(box.table->windowState() & Qt::WindowFullScreen); // asked for, of a table that is no window
    QVERIFY(!box.table->isWindow());
    QVERIFY(!box.table->isVisible());
}

/// Runs beside the folder of icons, and in a copy of the program without it.
void TestLayerComboBox::iconsOfTheFolder()
{
    addTwo();
    Box box;
    const bool hasIcons = QFile::exists(iconPath(0));
    QVERIFY(box.show());
    for (const int row : {0, 2}) {
        for (int column = 0; column < 3; ++column)
            QCOMPARE(box.button(row, column)->icon().isNull(), !hasIcons);
        QVERIFY(!box.button(row, kColour)->icon().isNull());
    }
    box.combo.drawSectionView(true, true, true, kRed, QStringLiteral("A"));
    COMPARE_PICTURES(box.picture(),
                     expectedPicture(box.combo.size(), true, true, true, kRed, QStringLiteral("A"), hasIcons));
    const MessageBoxes boxes;
    box.click(1, kLock);
    QVERIFY(isLocked(m_a));
    QCOMPARE(box.button(1, kLock)->icon().isNull(), !hasIcons);
    QCOMPARE(boxes.shown().size(), std::size_t(0));
}

void TestLayerComboBox::missingIconFiles()
{
    const QTemporaryDir folder;
    const QString program = folder.filePath(QStringLiteral("without_icons"));
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {QStringLiteral("iconsOfTheFolder")});
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
}

/// Runs beside the folder of icons, and in a copy of the program with files of other sizes, which it may draw anew.
void TestLayerComboBox::iconsFollowTheirFiles()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    for (const int row : {0, 2}) {
        const bool isB = row == 2; // which is off, frozen and locked
        const int expected[] = {switchIcon(isB), freezeIcon(isB), lockIcon(isB)};
        for (int column = 0; column < 3; ++column)
            QCOMPARE(imageOf(box.button(row, column)->icon()), iconImage(expected[column]));
        box.combo.drawSectionView(isB, isB, isB, kRed, QStringLiteral("A"));
        COMPARE_PICTURES(box.picture(), box.expected(isB, isB, isB, kRed, QStringLiteral("A")));
    }
    if (QImage(iconPath(0)).size() == QSize(16, 16))
        return;
    // The closed box reads its files each time; the rows have what they were made with.
    const QImage before = iconImage(0);
    QVERIFY(drawIconFile(iconPath(0), QSize(50, 10), Qt::cyan, Qt::magenta));
    QVERIFY(iconImage(0) != before);
    box.combo.drawSectionView(false, false, false, kRed, QStringLiteral("A"));
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("A")));
    QCOMPARE(imageOf(box.button(0, kSwitch)->icon()), before);
}

void TestLayerComboBox::iconFilesOfOtherSizes()
{
    const QTemporaryDir folder;
    const QString program = folder.filePath(QStringLiteral("other_icons"));
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("ico_zeva")));
    for (int icon = 0; icon < 6; ++icon)
        QVERIFY(drawIconFile(folder.filePath(QStringLiteral("ico_zeva/%1.ico").arg(kIconNames[icon])), QSize(31, 20),
                             QColor(40 * icon, 200, 20), QColor(250, 10, 40 * icon)));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {QStringLiteral("iconsFollowTheirFiles")});
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
    const QImage drawnAnew(folder.filePath(QStringLiteral("ico_zeva/layer_on.ico")));
    QCOMPARE(drawnAnew.size(), QSize(50, 10)); // it came to its end
}

void TestLayerComboBox::fullPathIsBesideTheExecutable()
{
    ZvLayerUltralComboBox combo(nullptr);
    QCOMPARE(combo.toFullPath(QStringLiteral("/ico_zeva/layer_on.ico")), iconPath(0));
    QCOMPARE(combo.toFullPath(QString()), QCoreApplication::applicationDirPath());
}

void TestLayerComboBox::metaObjectFindsTheReceiver()
{
    QObject *object = new ZvLayerUltralComboBox(false, nullptr);
    QVERIFY(qobject_cast<CZvQtControlHelp *>(object));
    delete object;
}

void TestLayerComboBox::worksWithoutTheBus()
{
    zv_arbitDict_clearservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)));
    const ZvLayerUltralComboBox combo(true, nullptr);
    QVERIFY(combo.hooked);
}

void TestLayerComboBox::busOfAWrongClassThrows()
{
    const ZvString key(wchar_t(ZvQtUpdateBusService::kKey));
    const ZvRxObjectPtr bus = zv_arbitDict_getservice(key);
    zv_arbitDict_regservice(key, Stranger::make());
    QVERIFY_EXCEPTION_THROWN(ZvLayerUltralComboBox(true, nullptr), ZvError_NotThatKindOfClass);
    zv_arbitDict_regservice(key, bus);
}

void TestLayerComboBox::joinsTheBusAndLeavesIt_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<bool>("isHookedAtTheEnd");
    QTest::newRow("hooked") << true << true;
    QTest::newRow("hooked, cleared by a failed filling") << true << false;
    QTest::newRow("not hooked") << false << false;
}

void TestLayerComboBox::joinsTheBusAndLeavesIt()
{
    QFETCH(bool, hooked);
    QFETCH(bool, isHookedAtTheEnd);
    CountingBus::joined.clear();
    CountingBus::left.clear();
    const ZvString key(wchar_t(ZvQtUpdateBusService::kKey));
    const ZvRxObjectPtr bus = zv_arbitDict_getservice(key);
    zv_arbitDict_regservice(key, ZvRxObjectPtr::adopt(new ZvRxObjectImpl<CountingBus>));
    auto combo = std::make_unique<ZvLayerUltralComboBox>(hooked, nullptr);
    const QVector<CZvQtControlHelp *> expected(hooked ? 1 : 0, combo.get());
    QCOMPARE(CountingBus::joined, expected);
    QVERIFY(CountingBus::left.isEmpty());
    combo->hooked = isHookedAtTheEnd;
    combo.reset();
    QCOMPARE(CountingBus::left, expected);
    QCOMPARE(CountingBus::joined, expected);
    zv_arbitDict_regservice(key, bus);
}

// ---- rows -----------------------------------------------------------------------------------------------------------

void TestLayerComboBox::rowsAreSortedAndShowTheirStates()
{
    addTwo();
    addLayerWith(L"aa", 2, false, true, false);
    const Box box;
    QCOMPARE(box.names(),
             QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("aa")}));
    const int expected[4][3] = {{0, 3, 5}, {0, 3, 5}, {1, 2, 4}, {0, 2, 5}};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column)
            QCOMPARE(box.icon(row, column), expected[row][column]);
    }
    ZvColorButtonWidget swatch(nullptr);
    const QColor colours[] = {kWhite, kRed, kGreen, QColor(255, 255, 0)};
    for (int row = 0; row < 4; ++row)
        QCOMPARE(
            imageOf(box.button(row, kColour)->icon(), 24),
            swatch.getColorPixmapWithBorder(24, 24, colours[row]).toImage().convertToFormat(QImage::Format_ARGB32));
}

void TestLayerComboBox::rowsLeaveOutHiddenLayers()
{
    QVERIFY(openDrawingWithReference());
    QVERIFY(!layerNamed(L"*HELP").isNull());
    const Box box;
    QCOMPARE(box.names(),
             QStringList({QStringLiteral("0"), QStringLiteral("House|Walls")})); // and no layer with a "*" anywhere
}

void TestLayerComboBox::namesOfAllKinds_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Chinese") << "标注图层-第一";
    QTest::newRow("255 characters") << QString(255, QLatin1Char('W'));
    QTest::newRow("255 Chinese characters") << QString(255, QChar(0x5C42));
    QTest::newRow("blanks") << "a layer with blanks";
    QTest::newRow("an ampersand is no mnemonic") << "A&B";
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("\xF0\xA0\x80\x80 layer");
    QTest::newRow("markup is text") << "A &lt B &amp C";
}

void TestLayerComboBox::namesOfAllKinds()
{
    QFETCH(QString, name);
    const ZvDbObjectId id = addLayer(ZvString(name.toUtf8().constData()));
    QVERIFY(!id.isNull());
    Box box;
    QVERIFY(box.open());
    const int row = box.names().indexOf(name);
    QVERIFY(row >= 0);
    QCOMPARE(box.table->item(row, kName)->toolTip(), name);
    box.click(row, kLock);
    QVERIFY(isLocked(id));
    box.pressName(row);
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), id);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kWhite, name));
}

void TestLayerComboBox::refillShowsWhatTheDrawingHas()
{
    addTwo();
    Box box;
    change<ZvDbLayerTableRecord>(m_a, [](ZvDbLayerTableRecord &layer) { layer.setIsOff(true); });
    addLayer(L"AA");
    QCOMPARE(
        box.names(),
        QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B")})); // not before it is asked for
    QCOMPARE(box.icon(1, kSwitch), 0);
    box.combo.init();
    QCOMPARE(box.names(),
             QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("AA"), QStringLiteral("B")}));
    QCOMPARE(box.icon(1, kSwitch), 1);
    QCOMPARE(box.icon(3, kLock), 4);
    change<ZvDbLayerTableRecord>(m_a, [](ZvDbLayerTableRecord &layer) { layer.erase(); });
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setName(L"Z"); });
    box.combo.init();
    QCOMPARE(box.names(), QStringList({QStringLiteral("0"), QStringLiteral("AA"), QStringLiteral("Z")}));
    QCOMPARE(box.icon(2, kLock), 4);
    QCOMPARE(box.combo.currentIndex(), 0);
}

void TestLayerComboBox::refillKeepsThePicture()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    box.combo.setCurrentIndexEx(2, false);
    const QImage before = box.picture();
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setName(L"Other"); });
    const QImage after = box.picture();
    box.combo.init();
    COMPARE_PICTURES(box.picture(), after);
    COMPARE_PICTURES(before, box.expected(true, true, true, kGreen, QStringLiteral("B")));
    QVERIFY(box.label()->isVisible());
}

void TestLayerComboBox::refillOfUnchangedLayersKeepsTheButtons()
{
    addTwo();
    Box box;
    const QWidget *button = box.button(2, kFreeze);
    box.combo.setCurrentIndex(2);
    box.combo.init();
    QCOMPARE(static_cast<const QWidget *>(box.button(2, kFreeze)), button);
    QCOMPARE(box.combo.currentIndex(), 0); // as in a box that was filled anew
}

void TestLayerComboBox::refillAfterUndo()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.click(1, kLock);
    QCOMPARE(box.icon(1, kLock), 4);
    QTest::keyClick(box.table, Qt::Key_Escape);
    QVERIFY(drawing().undo());
    box.combo.init();
    QCOMPARE(box.icon(1, kLock), 5);
}

void TestLayerComboBox::refillWithAnotherPalette()
{
    addTwo();
    Box box;
    unsigned palette[256] = {};
    palette[1] = 0x123456; // blue 12, green 34, red 56
    box.combo.readLayerData(palette);
    QCOMPARE(imageOf(box.button(1, kColour)->icon(), 24).pixelColor(12, 12), QColor(0x56, 0x34, 0x12));
    box.combo.init();
    QCOMPARE(imageOf(box.button(1, kColour)->icon(), 24).pixelColor(12, 12), kRed);
}

void TestLayerComboBox::refillWithAnotherDrawing()
{
    addTwo();
    Box box;
    openAnother();
    box.combo.init();
    QCOMPARE(box.names(), QStringList({QStringLiteral("0")}));
    zvDocManagerPtr()->closeDocument(document());
    box.combo.init();
    QCOMPARE(box.names(), QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B")}));
}

void TestLayerComboBox::refillTellsNothing()
{
    addTwo();
    Box box;
    const QSignalSpy index(&box.combo, qOverload<int>(&QComboBox::currentIndexChanged));
    addLayer(L"C");
    box.combo.init();
    box.combo.init();
    QCOMPARE(index.size(), 0);
    QVERIFY(box.combo.hooked);
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::errorWhileFillingGetsOut()
{
    addTwo();
    Box box;
    const auto failing = connect(box.table->model(), &QAbstractItemModel::dataChanged, this,
                                 [] { throw ZvError("it cannot be shown"); });
    addLayer(L"C");
    QVERIFY_EXCEPTION_THROWN(box.combo.init(), ZvError);
    QVERIFY(box.combo.signalsBlocked());
    QVERIFY(!box.combo.hooked);
    disconnect(failing);
    box.combo.init();
    QCOMPARE(box.names(),
             QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
    QVERIFY(!box.combo.signalsBlocked());
    QVERIFY(!box.combo.hooked); // nobody has put it back
}

void TestLayerComboBox::withoutDocumentThereAreNoRows()
{
    Box open;
    zvDocManagerPtr()->closeDocument(document());
    open.combo.init();
    QCOMPARE(open.table->rowCount(), 0);
    QCOMPARE(open.combo.currentIndex(), -1);
    const Box made;
    QCOMPARE(made.table->rowCount(), 0);
}

void TestLayerComboBox::layerByLayerFollowsTheCurrentOne()
{
    addTwo();
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setColor(ZvCmColor()); });
    Box box;
    QCOMPARE(imageOf(box.button(2, kColour)->icon(), 24).pixelColor(12, 12), kWhite);
    drawing().setClayer(m_a);
    box.combo.init();
    QCOMPARE(imageOf(box.button(2, kColour)->icon(), 24).pixelColor(12, 12), kRed);
}

void TestLayerComboBox::addedRowStandsForNoLayer()
{
    Box box;
    box.combo.addItemLayerInfo(true, false, true, kRed, QStringLiteral("extra"));
    QCOMPARE(box.names(), QStringList({QStringLiteral("0"), QStringLiteral("extra")}));
    QCOMPARE(box.icon(1, kSwitch), 1);
    QCOMPARE(box.icon(1, kFreeze), 3);
    QCOMPARE(box.icon(1, kLock), 4);
    box.combo.setCurrentIndexEx(1, false);
    QVERIFY(box.label()->isHidden());
    box.combo.init();
    QCOMPARE(box.names(), QStringList({QStringLiteral("0")}));
}

void TestLayerComboBox::twoThousandLayersHaveAllTheirButtons()
{
    for (int i = 0; i < 1999; ++i)
        addLayer(numberedName(i));
    Box box;
    QCOMPARE(box.table->rowCount(), 2000);
    for (int turn = 0; turn < 2; ++turn) {
        for (int row = 0; row < 2000; ++row) {
            for (int column = 0; column < 4; ++column)
                QVERIFY(box.button(row, column));
        }
        QVERIFY(box.open());
    }
    const QString last = box.names().last();
    box.button(1999, kLock)->click(); // out of view
    QVERIFY(isLocked(layerNamed(ZvString(last.toUtf8().constData()))));
    QVERIFY(box.table->isVisible());
    box.table->scrollToBottom();
    QCOMPARE(box.icon(1999, kLock), 4);
    QVERIFY(box.button(1999, kLock)->isVisible());
}

void TestLayerComboBox::moreLayersHaveThemOnceInView()
{
    for (int i = 0; i < 2500; ++i)
        addLayer(numberedName(i));
    Box box;
    QVERIFY(!box.button(0, 0));
    QVERIFY(box.open());
    QVERIFY(box.button(0, 0));
    QVERIFY(!box.button(2500, 0));
    box.table->scrollToBottom();
    QVERIFY(box.button(2500, 0));
    box.click(2500, kLock);
    QVERIFY(box.table->isVisible());
    QVERIFY(isLocked(layerNamed(ZvString(box.names().last().toUtf8().constData()))));
    QVERIFY(box.button(0, 0));
}

// ---- the closed box -------------------------------------------------------------------------------------------------

void TestLayerComboBox::pictureHasItsPlaces_data()
{
    QTest::addColumn<bool>("off");
    QTest::addColumn<bool>("frozen");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<QString>("name");
    QTest::newRow("on, thawed, unlocked") << false << false << false << "Walls";
    QTest::newRow("off") << true << false << false << "Walls";
    QTest::newRow("frozen") << false << true << false << "Walls";
    QTest::newRow("locked") << false << false << true << "Walls";
    QTest::newRow("all of it") << true << true << true << "墙体";
    QTest::newRow("a name beyond the box") << true << true << true << QString(255, QLatin1Char('W'));
    QTest::newRow("no name") << false << false << false << "";
}

void TestLayerComboBox::pictureHasItsPlaces()
{
    QFETCH(bool, off);
    QFETCH(bool, frozen);
    QFETCH(bool, locked);
    QFETCH(QString, name);
    Box box;
    QVERIFY(box.show());
    for (const QColor &colour : {kRed, QColor(12, 34, 56)}) {
        box.combo.drawSectionView(off, frozen, locked, colour, name);
        QCOMPARE(box.label()->pixmap()->size(), QSize(200 - 22, 26 - 4));
        COMPARE_PICTURES(box.picture(), box.expected(off, frozen, locked, colour, name));
        QCOMPARE(box.label()->pixmap()->toImage().pixelColor(0, 0).alpha(), 0);
    }
}

void TestLayerComboBox::pictureNeedsRoom()
{
    ZvLayerUltralComboBox combo(nullptr);
    auto *label = combo.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QSize &size : {QSize(22, 26), QSize(10, 2), QSize(100, 4)}) {
        combo.resize(size);
        combo.drawSectionView(true, true, true, kRed, QStringLiteral("Walls"));
        QVERIFY(!label->pixmap() || label->pixmap()->isNull());
    }
}

void TestLayerComboBox::pictureFollowsTheFontOfTheControl()
{
    Box box;
    QFont large = box.combo.font();
    large.setPointSize(14);
    box.combo.setFont(large);
    box.combo.drawSectionView(false, false, false, kRed, QStringLiteral("Walls"));
    QVERIFY(box.picture() != box.expected(false, false, false, kRed, QStringLiteral("Walls")));
}

void TestLayerComboBox::labelLeavesTheArrowFree()
{
    Box box;
    QVERIFY(box.show());
    QCOMPARE(box.label()->geometry(), QRect(2, 2, 200 - 22, 26 - 4));
    box.combo.resize(300, 40);
    QCOMPARE(box.label()->geometry(), QRect(2, 2, 278, 36));
    box.label()->setGeometry(0, 0, 5, 5);
    QResizeEvent same(QSize(300, 40), QSize(300, 40));
    QApplication::sendEvent(&box.combo, &same);
    QCOMPARE(box.label()->geometry(), QRect(0, 0, 5, 5));
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::rowIsShownWithFreshState()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    change<ZvDbLayerTableRecord>(m_a, [](ZvDbLayerTableRecord &layer) {
        layer.setIsLocked(true);
        layer.setColor(indexColour(3));
    });
    box.combo.setCurrentIndexEx(1, false);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kGreen, QStringLiteral("A")));
    QCOMPARE(box.icon(1, kLock), 5); // the row stays as it was drawn
    QCOMPARE(box.combo.currentIndex(), 1);
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::rowWithoutALayerIsBlank_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("-1") << -1;
    QTest::newRow("behind the last") << 3;
    QTest::newRow("far away") << 100000;
}

void TestLayerComboBox::rowWithoutALayerIsBlank()
{
    QFETCH(int, row);
    addTwo();
    Box box;
    QVERIFY(box.show());
    const MessageBoxes boxes;
    for (const bool apply : {false, true}) {
        box.combo.setCurrentIndexEx(1, false);
        QVERIFY(!box.label()->isHidden());
        box.combo.setCurrentIndexEx(row, apply);
        QVERIFY(box.label()->isHidden());
        QCOMPARE(box.combo.currentIndex(), 1);
    }
    QVERIFY(!zvedQueueHasInput()); // nothing was asked of the drawing
    QCOMPARE(boxes.shown().size(), std::size_t(0));
    box.combo.setCurrentIndexEx(1, false);
    box.combo.SetNullItem();
    QVERIFY(box.label()->isHidden());
}

void TestLayerComboBox::rowIsAppliedToTheDrawing()
{
    addTwo();
    Box box;
    box.combo.setCurrentIndexEx(1, true);
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), m_a);
    QCOMPARE(box.combo.currentIndex(), 1);
}

void TestLayerComboBox::refusedRowLeavesAll_data()
{
    QTest::addColumn<bool>("isReferenced");
    QTest::newRow("a frozen layer") << false;
    QTest::newRow("a layer of an external reference") << true;
}

void TestLayerComboBox::refusedRowLeavesAll()
{
    QFETCH(bool, isReferenced);
    if (isReferenced)
        QVERIFY(openDrawingWithReference());
    else
        addLayerWith(L"B", 3, false, true);
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    const QImage before = box.picture();
    const ZvDbObjectId current = drawing().clayer();
    const MessageBoxes boxes;
    box.combo.setCurrentIndexEx(1, true);
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), current);
    QCOMPARE(box.combo.currentIndex(), 0);
    COMPARE_PICTURES(box.picture(), before);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown().front().text, kRefused);
    QCOMPARE(boxes.shown().front().caption, ZvString(L"图层 - 无法置为当前"));
    QCOMPARE(boxes.shown().front().flags, 64u);
}

void TestLayerComboBox::erasedLayerIsRefused()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    const QImage before = box.picture();
    change<ZvDbLayerTableRecord>(m_a, [](ZvDbLayerTableRecord &layer) { layer.erase(); });
    box.combo.setCurrentIndexEx(1, true);
    COMPARE_PICTURES(box.picture(), before);
    QCOMPARE(box.combo.currentIndex(), 0);
}

void TestLayerComboBox::closedBoxWithoutItsLabel()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    delete box.label();
    box.combo.resize(300, 40);
    box.combo.setCurrentIndexEx(1, false);
    QCOMPARE(box.combo.currentIndex(), 1);
    box.combo.SetNullItem();
    box.combo.drawSectionView(true, true, true, kRed, QStringLiteral("B"));
    drawing().setClayer(m_b);
    notifyCommandEnded();
    QCOMPARE(box.combo.currentIndex(), 2);
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::lostLayerIsShownWithoutItsState_data()
{
    QTest::addColumn<bool>("isErased");
    QTest::newRow("erased") << true;
    QTest::newRow("open for write elsewhere") << false;
}

void TestLayerComboBox::lostLayerIsShownWithoutItsState()
{
    QFETCH(bool, isErased);
    addTwo();
    Box box;
    QVERIFY(box.show());
    ZvDbObjectPointer<ZvDbLayerTableRecord> writer(m_b, ZvDb::kForWrite);
    if (isErased) {
        writer->erase();
        writer.close();
    }
    box.combo.setCurrentIndexEx(2, false);
    const ZvCmEntityColor none = ZvCmColor().entityColor();
    COMPARE_PICTURES(
        box.picture(),
        box.expected(false, false, false, QColor(none.red(), none.green(), none.blue()), QStringLiteral("B")));
}

// ---- following the drawing ------------------------------------------------------------------------------------------

void TestLayerComboBox::statusDecidesWhatIsShown_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("hasDrawing");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("blank");
    QTest::addColumn<int>("row");
    QTest::newRow("no document") << 0 << true << false << true << 0;
    QTest::newRow("no selection") << 1 << true << true << false << 0;
    QTest::newRow("uniform") << 2 << true << true << false << 2;
    QTest::newRow("mixed") << 3 << true << true << true << 0;
    QTest::newRow("no database, no selection") << 1 << false << false << true << 0;
    QTest::newRow("no database, uniform") << 2 << false << false << true << 0;
    QTest::newRow("no database, mixed") << 3 << false << true << true << 0;
}

void TestLayerComboBox::statusDecidesWhatIsShown()
{
    QFETCH(int, status);
    QFETCH(bool, hasDrawing);
    QFETCH(bool, enabled);
    QFETCH(bool, blank);
    QFETCH(int, row);
    addTwo();
    Box box;
    QVERIFY(box.show());
    box.combo.pickFirstInfo->status = status;
    static_cast<ZvGlobalUIReactorHelp::SLayerInfo *>(box.combo.pickFirstInfo)->value = m_b;
    if (!hasDrawing)
        zvDocManagerPtr()->addDocument(ZvDbDatabasePtr(), L"");
    QVERIFY(hasDrawing || (document() && !document()->database()));
    box.combo.pickFirstInfo->status = status;
    box.combo.setEnabled(!enabled);
    box.combo.updateData(false);
    QCOMPARE(box.combo.isEnabled(), enabled);
    QCOMPARE(box.label()->isHidden(), blank);
    if (!blank)
        QCOMPARE(box.combo.currentIndex(), row);
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::selectionIsFollowed()
{
    addTwo();
    const ZvDbObjectId locked = addLayerWith(L"C", 3, false, false, true); // what is off or frozen cannot be selected
    Box box;
    QVERIFY(box.show());
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId other = addLine();
    change<ZvDbEntity>(line, [&](ZvDbEntity &entity) { entity.setLayer(locked); });
    select({line});
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kGreen, QStringLiteral("C")));
    select({line, other});
    QVERIFY(box.label()->isHidden());
    QVERIFY(box.combo.isEnabled());
    select({});
    QVERIFY(!box.label()->isHidden());
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kWhite, QStringLiteral("0")));
}

void TestLayerComboBox::layerNamesAreMatchedWithoutCase()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    drawing().setClayer(m_a);
    change<ZvDbLayerTableRecord>(m_a, [](ZvDbLayerTableRecord &layer) { layer.setName(L"a"); });
    notifyCommandEnded();
    QCOMPARE(box.combo.currentIndex(), 1);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("A"))); // the list's name
}

void TestLayerComboBox::newLayerIsPaintedAndTheIndexStays()
{
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    const ZvDbObjectId id = addLayerWith(L"New", 3, true);
    drawing().setClayer(id);
    notifyCommandEnded();
    COMPARE_PICTURES(box.picture(), box.expected(true, false, false, kGreen, QStringLiteral("New")));
    QCOMPARE(box.combo.currentIndex(), 0);
    QVERIFY(box.combo.hooked);
    QVERIFY(box.open());
    QCOMPARE(box.combo.currentIndex(), 1);
}

void TestLayerComboBox::newLayerLeavesABlankBoxBlank()
{
    Box box;
    QVERIFY(box.show());
    drawing().setClayer(addLayerWith(L"New", 3, true));
    box.combo.SetNullItem();
    box.combo.setEnabled(false);
    notifyCommandEnded();
    QVERIFY(box.label()->isHidden());
    QVERIFY(box.combo.isEnabled());
}

void TestLayerComboBox::starInAnAbsentNameLeavesTheBox()
{
    QVERIFY(openDrawingWithReference());
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    const QImage before = box.picture();
    for (const wchar_t *name : {L"*HELP", L"A*B"}) {
        drawing().setClayer(layerNamed(name));
        QCOMPARE(drawing().clayer(), layerNamed(name));
        notifyCommandEnded();
        COMPARE_PICTURES(box.picture(), before);
        QVERIFY(box.combo.hooked);
        QVERIFY(!box.combo.signalsBlocked());
    }
}

/// As of a drawing with hidden layers only, which no drawing of this kernel is: the layer 0 stays.
void TestLayerComboBox::listWithoutRowsLeavesTheBox()
{
    zvDocManagerPtr()->closeDocument(document());
    Box box;
    QVERIFY(box.show());
    QCOMPARE(box.table->rowCount(), 0);
    box.combo.drawSectionView(true, true, true, kRed, QStringLiteral("old"));
    openAnother();
    box.combo.setEnabled(false);
    notifyCommandEnded();
    COMPARE_PICTURES(box.picture(), box.expected(true, true, true, kRed, QStringLiteral("old")));
    QVERIFY(!box.combo.isEnabled()); // the end comes before all else
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::currentLayerThatCannotBeRead_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("erased") << "erased";
    QTest::newRow("open for write elsewhere") << "open";
    QTest::newRow("null") << "null";
}

void TestLayerComboBox::currentLayerThatCannotBeRead()
{
    QFETCH(QString, how);
    addTwo();
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    const QImage before = box.picture();
    ZvDbObjectPointer<ZvDbLayerTableRecord> writer(how == QLatin1String("open") ? m_b : ZvDbObjectId(),
                                                   ZvDb::kForWrite);
    auto *info = static_cast<ZvGlobalUIReactorHelp::SLayerInfo *>(box.combo.pickFirstInfo);
    if (how == QLatin1String("erased"))
        change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.erase(); });
    info->status = ZvGlobalUIReactorHelp::kInfoUniform;
    info->value = how == QLatin1String("null") ? ZvDbObjectId() : m_b;
    box.combo.updateData(false);
    COMPARE_PICTURES(box.picture(), before);
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::noticesAreFiltered_data()
{
    addNoticeRows({"CLAYER", "CVPORT", "BLOCKEDITOR", "TILEMODE", "clayer", "CECOLOR"});
    addObjectNotice("a viewport", "viewport", false, true);
    addObjectNotice("the dictionary of layer states", "states", false, true);
    addObjectNotice("another dictionary", "dictionary", false, false);
    addObjectNotice("a viewport of model space", "vport", false, false);
}

void TestLayerComboBox::noticesAreFiltered()
{
    QFETCH(QString, object);
    QFETCH(bool, passes);
    addTwo();
    ZvDbObjectId id = m_a;
    if (object == QLatin1String("line"))
        id = addLine();
    else if (object == QLatin1String("viewport"))
        id = add(new ZvDbViewport);
    else if (object == QLatin1String("vport"))
        id = drawing().currentViewportId();
    else if (object == QLatin1String("states"))
        id = drawing().layerStateDictionaryId(true);
    else if (object == QLatin1String("dictionary"))
        id = drawing().groupDictionaryId(true);
    zv_arbitDict_clearservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey))); // this control hears what it is told only
    Box box;
    QVERIFY(box.show());
    box.combo.pickFirstInfo->status = ZvGlobalUIReactorHelp::kInfoNoSelection;
    drawing().setClayer(m_b);
    tellNotice(box.combo, drawing(), id);
    QCOMPARE(box.combo.currentIndex(), passes ? 2 : 0);
}

void TestLayerComboBox::frozenInAViewportIsANotice()
{
    addTwo();
    const ZvDbObjectId viewport = add(new ZvDbViewport);
    Box box;
    QVERIFY(box.show());
    box.combo.SetNullItem();
    drawing().clearUndo();
    change<ZvDbViewport>(viewport, [this](ZvDbViewport &entity) { entity.freezeLayer(m_a, true); });
    QVERIFY(!box.label()->isHidden());
    QVERIFY(!isFrozen(m_a)); // in this viewport only
    box.combo.SetNullItem();
    QVERIFY(drawing().undo());
    QVERIFY(!box.label()->isHidden());
    QVERIFY(!read<ZvDbViewport>(viewport, [this](const ZvDbViewport &entity) { return entity.isLayerFrozen(m_a); }));
}

void TestLayerComboBox::unhookedHearsNoNotice()
{
    addTwo();
    Box box(false);
    QVERIFY(box.show());
    box.combo.setCurrentIndexEx(1, false);
    const QImage before = box.picture();
    drawing().setClayer(m_b);
    notifyCommandEnded();
    select({addLine()});
    COMPARE_PICTURES(box.picture(), before);
    QCOMPARE(box.combo.currentIndex(), 1);
    QVERIFY(box.combo.isEnabled());
}

void TestLayerComboBox::errorWhileShowingIsAnAssertion()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    drawing().setClayer(m_b);
    const FailingControl failing(box.combo);
    const Assertions assertions;
    notifyCommandEnded();
    QCOMPARE(assertions.list(), QStringList{QStringLiteral("false, zvlayerultralcombobox, 694")});
    QVERIFY(!box.combo.signalsBlocked());
    QVERIFY(box.combo.hooked);
    QCOMPARE(box.combo.currentIndex(), 0);
}

void TestLayerComboBox::withoutDocumentNothingHappens()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    const QImage before = box.picture();
    zvDocManagerPtr()->closeDocument(document());
    box.combo.updateData(false);
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticeCommandEnded;
    box.combo.acceptUpdateUI(notice);
    COMPARE_PICTURES(box.picture(), before);
    QVERIFY(box.combo.isEnabled());
}

void TestLayerComboBox::showingTellsNothing()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    const QSignalSpy index(&box.combo, qOverload<int>(&QComboBox::currentIndexChanged));
    drawing().setClayer(m_b);
    notifyCommandEnded();
    QVERIFY(box.open());
    QCOMPARE(box.combo.currentIndex(), 2);
    QCOMPARE(index.size(), 0);
    QVERIFY(!box.combo.signalsBlocked());
}

// ---- the list -------------------------------------------------------------------------------------------------------

void TestLayerComboBox::listOpens_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<int>("state");
    for (const bool hooked : {true, false}) {
        for (std::size_t i = 0; i < std::size(kCommandStates); ++i)
            QTest::addRow("%s, %s", hooked ? "hooked" : "unhooked", kCommandStates[i].name) << hooked << int(i);
    }
}

void TestLayerComboBox::listOpens()
{
    QFETCH(bool, hooked);
    QFETCH(int, state);
    Box box(hooked);
    QVERIFY(box.show());
    ListOpener opener(box.combo);
    opener.run(kCommandStates[state]);
    QCOMPARE(opener.active(), kCommandStates[state].active);
    QCOMPARE(opener.wasOpen(), kCommandStates[state].opens || !hooked);
}

void TestLayerComboBox::unhookedListIsNeverReadAgain()
{
    addTwo();
    Box unhooked(false);
    Box hooked(true);
    addLayer(L"C");
    QVERIFY(unhooked.open());
    QCOMPARE(unhooked.names(), QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B")}));
    unhooked.combo.hidePopup();
    QVERIFY(hooked.open());
    QCOMPARE(hooked.names(),
             QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
    hooked.combo.hidePopup();
}

void TestLayerComboBox::listIsWideEnough_data()
{
    QTest::addColumn<int>("comboWidth");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("width"); // 0: of the name
    QTest::newRow("short names") << 150 << "Walls" << 220;
    QTest::newRow("a wide control") << 400 << "Walls" << 400;
    QTest::newRow("a long name") << 150 << QString(60, QLatin1Char('W')) << 0;
    QTest::newRow("a long Chinese name") << 150 << QString(60, QChar(0x5C42)) << 0;
}

void TestLayerComboBox::listIsWideEnough()
{
    QFETCH(int, comboWidth);
    QFETCH(QString, name);
    QFETCH(int, width);
    addLayer(ZvString(name.toUtf8().constData()));
    Box box(true, comboWidth);
    QVERIFY(box.open());
    if (width == 0)
        width = int(QFontMetricsF(box.combo.font()).horizontalAdvance(name) + 3.0) + 120;
    QCOMPARE(box.table->minimumWidth(), width);
    QVERIFY(box.table->width() >= qMin(width, 800 - 2)); // the screen's
    box.combo.hidePopup();
    QFont large = box.combo.font();
    large.setPointSize(18);
    box.combo.setFont(large);
    QVERIFY(box.open());
    if (name.size() == 60)
        QVERIFY(box.table->minimumWidth() > width);
}

void TestLayerComboBox::listOpensAtTheShownLayer()
{
    for (int i = 0; i < 300; ++i)
        addLayer(numberedName(i));
    Box box;
    const int row = 250;
    drawing().setClayer(layerNamed(ZvString(box.names().at(row).toUtf8().constData())));
    notifyCommandEnded();
    QVERIFY(box.open());
    QCOMPARE(box.combo.currentIndex(), row);
    QCOMPARE(box.table->selectionModel()->selectedRows().size(), 1);
    QCOMPARE(box.table->currentRow(), row);
    QVERIFY(box.table->viewport()->rect().contains(box.table->visualRect(box.table->model()->index(row, 0)).center()));
    QVERIFY(box.button(row, kLock)->isVisible());
}

void TestLayerComboBox::lostNameOpensWithoutARow()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    notifyCommandEnded();
    drawing().setClayer(m_b);
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setName(L"Gone"); });
    bus().enableUpdateUI(false);
    notifyCommandEnded();
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setName(L"Lost"); });
    QVERIFY(box.open());
    QCOMPARE(box.combo.currentIndex(), -1);
    QVERIFY(!box.table->selectionModel()->isRowSelected(2, QModelIndex()));
    bus().enableUpdateUI(true);
}

void TestLayerComboBox::shownNameIsFoundByItsCase()
{
    addTwo();
    Box box;
    drawing().setClayer(m_a);
    notifyCommandEnded();
    QVERIFY(box.open());
    QCOMPARE(box.combo.currentIndex(), 1);
    box.combo.hidePopup();
    bus().enableUpdateUI(false);
    change<ZvDbLayerTableRecord>(m_a, [](ZvDbLayerTableRecord &layer) { layer.setName(L"a"); });
    QVERIFY(box.open());
    const int row = box.names().indexOf(QStringLiteral("a"));
    QVERIFY(row > 0);
    QCOMPARE(box.combo.currentIndex(), -1); // the box shows "A"
    QVERIFY(!box.table->selectionModel()->isRowSelected(row, QModelIndex()));
    box.combo.hidePopup();
    bus().enableUpdateUI(true);
}

void TestLayerComboBox::withoutLabelOrTableTheListIsNotRead_data()
{
    QTest::addColumn<bool>("isTable");
    QTest::newRow("without its label") << false;
    QTest::newRow("without its table") << true;
}

void TestLayerComboBox::withoutLabelOrTableTheListIsNotRead()
{
    QFETCH(bool, isTable);
    addTwo();
    Box box;
    QVERIFY(box.show());
    if (isTable)
        delete box.table;
    else
        delete box.label();
    const int rows = box.combo.count();
    QCOMPARE(rows, isTable ? 0 : 3);
    addLayer(L"C");
    const ListOpener opener(box.combo);
    QVERIFY(runMacro(L"_.OPENLIST ")); // in a command too
    QCOMPARE(opener.wasOpen(), !isTable); // an empty list does not open
    QCOMPARE(box.combo.count(), rows);
    QVERIFY(!box.combo.signalsBlocked());
}

void TestLayerComboBox::keyboardGoesBackToTheDrawing()
{
    addTwo();
    Box box;
    QWidget view(&box.window);
    view.setFocusPolicy(Qt::StrongFocus);
    const FocusView focus(&view);
    QVERIFY(box.show());
    QApplication::setActiveWindow(&box.window);
    QVERIFY(zevaWaitForActive(&box.window));
    box.combo.setFocus();
    QVERIFY(box.open());
    box.click(1, kLock);
    QVERIFY(box.table->isVisible());
    QCOMPARE(box.window.focusWidget(), &view);
    box.combo.setFocus();
    box.pressName(1);
    QTRY_VERIFY(!box.table->isVisible());
    QCOMPARE(box.window.focusWidget(), &view);
    QVERIFY(runCommands());
}

using Change = std::function<void(Box &box)>;
Q_DECLARE_METATYPE(Change)

void TestLayerComboBox::listOpensAgainWhereItWouldBeFoundAnew_data()
{
    QTest::addColumn<int>("layers");
    QTest::addColumn<Change>("change"); // between the openings
    const auto shows = [](int row) {
        return Change([row](Box &box) {
            ZvDbDatabase &drawing = *zvDocManagerPtr()->currentDocument()->database();
            drawing.setClayer(layerNamed(ZvString(box.names().at(row).toUtf8().constData())));
            box.combo.updateData(false);
        });
    };
    for (const int layers : {3, 25, 300}) {
        QTest::addRow("%d, nothing", layers) << layers << Change([](Box &) {});
        QTest::addRow("%d, another row", layers) << layers << shows(layers / 2);
        QTest::addRow("%d, last row", layers) << layers << shows(layers);
        QTest::addRow("%d, moved down", layers) << layers << Change([](Box &box) { box.window.move(100, 600); });
        QTest::addRow("%d, moved right", layers) << layers << Change([](Box &box) { box.window.move(760, 300); });
        QTest::addRow("%d, wider", layers) << layers << Change([](Box &box) { box.combo.resize(420, 26); });
        QTest::addRow("%d, right to left", layers)
            << layers << Change([](Box &box) { box.combo.setLayoutDirection(Qt::RightToLeft); });
        QTest::addRow("%d, font", layers) << layers << Change([](Box &box) {
            QFont font = box.combo.font();
            font.setPointSize(20);
            box.combo.setFont(font);
        });
        QTest::addRow("%d, rows higher", layers)
            << layers << Change([](Box &box) { box.table->verticalHeader()->setDefaultSectionSize(31); });
        QTest::addRow("%d, a row hidden", layers)
            << layers << Change([](Box &box) { box.table->setRowHidden(1, true); });
        QTest::addRow("%d, a text beside the buttons", layers) << layers << Change([](Box &box) {
            box.table->setItem(1, kSwitch, new QTableWidgetItem(QString(50, QLatin1Char('W'))));
        });
        QTest::addRow("%d, frame", layers)
            << layers << Change([](Box &box) { box.table->setStyleSheet(QStringLiteral("border: 7px solid red;")); });
        QTest::addRow("%d, columns too wide", layers) << layers << Change([](Box &box) {
            box.table->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
            box.table->horizontalHeader()->setStretchLastSection(false);
            box.table->setColumnWidth(kName, 2000);
        });
        QTest::addRow("%d, scrolled", layers)
            << layers << Change([](Box &box) { box.table->verticalScrollBar()->setValue(7); });
        QTest::addRow("%d, no popup", layers)
            << layers << Change([](Box &box) { box.combo.setStyleSheet(QStringLiteral("combobox-popup: 0;")); });
    }
}

void TestLayerComboBox::listOpensAgainWhereItWouldBeFoundAnew()
{
    QFETCH(int, layers);
    QFETCH(Change, change);
    for (int i = 0; i < layers; ++i)
        addLayer(numberedName(i));
    const auto opened = [&](bool isFoundAnew) {
        Box box;
        drawing().setClayer(layerNamed(L"0"));
        notifyCommandEnded();
        QStringList report;
        for (int opening = 0; opening < 4; ++opening) {
            if (isFoundAnew) {
                const QModelIndex first = box.table->model()->index(0, kName);
                Q_EMIT box.table->model()->dataChanged(first, first); // a new text may need more room
            }
            if (!box.open())
                return QStringList();
            QCoreApplication::processEvents(); // places the arrows of a list that scrolls
            const QWidget *list = box.table->window();
            QString line;
            QDebug(&line) << list->geometry() << box.table->geometry() << box.table->viewport()->geometry()
                          << box.table->verticalScrollBar()->value() << box.table->currentRow()
                          << box.table->selectionModel()->selectedRows().size() << box.combo.currentIndex()
                          << list->updatesEnabled() << (list->focusWidget() == box.table);
            for (const QWidget *part : list->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
                QDebug(&line) << part->metaObject()->className() << part->isVisible() << part->geometry();
            report << line;
            box.combo.hidePopup();
            if (opening == 1) {
                change(box);
                QCoreApplication::processEvents();
            }
        }
        return report;
    };
    const QStringList expected = opened(true);
    QCOMPARE(expected.size(), 4);
    QCOMPARE(opened(false), expected);
}

void TestLayerComboBox::rowsAreNotMeasuredAgain_data()
{
    QTest::addColumn<int>("layers");
    QTest::addColumn<int>("row"); // made current in between
    QTest::addColumn<bool>("isMeasured");
    QTest::newRow("a few, nothing changed") << 5 << 0 << false;
    QTest::newRow("a few, at another row") << 5 << 3 << true; // which the list is to lie over
    QTest::newRow("many, nothing changed") << 300 << 0 << false;
    QTest::newRow("many, at another row") << 300 << 200 << false; // they fill the screen
}

void TestLayerComboBox::rowsAreNotMeasuredAgain()
{
    QFETCH(int, layers);
    QFETCH(int, row);
    QFETCH(bool, isMeasured);
    class MeasuringStyle : public QProxyStyle
    {
    public:
        QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                               const QWidget *widget) const override
        {
            measured += type == CT_ComboBox;
            return QProxyStyle::sizeFromContents(type, option, size, widget);
        }
        mutable int measured = 0;
    } style;
    for (int i = 0; i < layers; ++i)
        addLayer(numberedName(i));
    Box box;
    box.combo.setStyle(&style);
    notifyCommandEnded();
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(box.open());
        box.combo.hidePopup();
    }
    drawing().setClayer(layerNamed(ZvString(box.names().at(row).toUtf8().constData())));
    notifyCommandEnded();
    QCoreApplication::processEvents();
    style.measured = 0;
    QVERIFY(box.open());
    QCOMPARE(style.measured > 0, isMeasured);
    QCOMPARE(box.table->currentRow(), row);
    QVERIFY(box.table->viewport()->rect().contains(box.table->visualRect(box.table->model()->index(row, 0)).center()));
    box.combo.hidePopup();
    box.combo.setStyle(nullptr);
}

/// Press on the box, move to a row and release, as in any drop-down.
void TestLayerComboBox::dragThroughTheListOpenedAgain()
{
    addTwo();
    Box box;
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(box.open());
        box.combo.hidePopup();
    }
    QSignalSpy activated(&box.combo, qOverload<int>(&QComboBox::activated));
    QWidget *viewport = box.table->viewport();
    QTest::mousePress(&box.combo, Qt::LeftButton);
    QTRY_VERIFY(box.table->isVisible());
    // Released where it was pressed and soon, the list stays open.
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, box.placeOfName(0));
    QVERIFY(box.table->isVisible());
    box.dragTo(0);
    box.dragTo(2);
    QCOMPARE(box.table->currentRow(), 2);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, box.placeOfName(2));
    QVERIFY(!box.table->isVisible());
    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated.first().first().toInt(), 2);
}

/// Others open the list while a button of the mouse is down on them.
void TestLayerComboBox::releaseOfAnotherPressIsNoChoice()
{
    addTwo();
    Box box;
    notifyCommandEnded();
    QPushButton opener(QStringLiteral("Layers"), &box.window);
    opener.setGeometry(10, 40, 60, 18);
    QObject::connect(&opener, &QPushButton::pressed, &box.combo, [&] { box.combo.showPopup(); });
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(box.open());
        box.dragTo(2);
        box.combo.hidePopup();
    }
    QTest::mousePress(box.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, opener.geometry().center());
    QTRY_VERIFY(box.table->isVisible());
    QTest::mouseRelease(box.table->viewport(), Qt::LeftButton, Qt::NoModifier, box.placeOfName(1));
    QVERIFY(box.table->isVisible());
    QTest::mouseRelease(box.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, opener.geometry().center());
    box.combo.hidePopup();
}

// ---- the row buttons ------------------------------------------------------------------------------------------------

void TestLayerComboBox::listStaysOpenForTheNextSwitch()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.click(1, kSwitch);
    QVERIFY(box.table->isVisible());
    QVERIFY(box.combo.isEnabled());
    box.click(1, kFreeze);
    QVERIFY(box.table->isVisible());
    box.click(1, kLock);
    box.click(2, kLock);
    QVERIFY(box.table->isVisible());
    QVERIFY(isOff(m_a) && isFrozen(m_a) && isLocked(m_a));
    QVERIFY(!isLocked(m_b));
    QCoreApplication::processEvents();
    QVERIFY(box.table->isVisible());
    QVERIFY(box.button(1, kSwitch)->isEnabled());
    box.combo.setEnabled(false); // by others it closes
    QVERIFY(!box.table->isVisible());
}

void TestLayerComboBox::controlIsDisabledWhileARowWrites()
{
    addTwo();
    struct Watch : public ZvStaticRxObject<ZvDbDatabaseReactor>
    {
        void objectModified(const ZvDbDatabase *, const ZvDbObject *) override
        {
            wasEnabled = combo->isEnabled();
            wasBlocked = combo->signalsBlocked();
            ++count;
        }
        ZvLayerUltralComboBox *combo = nullptr;
        bool wasEnabled = true;
        bool wasBlocked = false;
        int count = 0;
    } watch;
    Box box(false); // a hooked one is enabled again by the notice
    watch.combo = &box.combo;
    drawing().addReactor(&watch);
    QVERIFY(box.open());
    box.click(1, kLock);
    drawing().removeReactor(&watch);
    QCOMPARE(watch.count, 1);
    QVERIFY(!watch.wasEnabled);
    QVERIFY(watch.wasBlocked);
    QVERIFY(box.combo.isEnabled());
    QVERIFY(!box.combo.signalsBlocked());
    QVERIFY(box.table->isVisible());
}

void TestLayerComboBox::switchedStateIsShown_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("icon");
    QTest::newRow("switch off") << int(kSwitch) << 1 << 1;
    QTest::newRow("switch on") << int(kSwitch) << 2 << 0;
    QTest::newRow("freeze") << int(kFreeze) << 1 << 2;
    QTest::newRow("thaw") << int(kFreeze) << 2 << 3;
    QTest::newRow("lock") << int(kLock) << 1 << 4;
    QTest::newRow("unlock") << int(kLock) << 2 << 5;
}

void TestLayerComboBox::switchedStateIsShown()
{
    QFETCH(int, column);
    QFETCH(int, row);
    QFETCH(int, icon);
    addTwo();
    Box box;
    QVERIFY(box.open());
    const int before = box.icon(row, column);
    box.click(row, column);
    QCOMPARE(box.icon(row, column), icon);
    box.click(row, column);
    QCOMPARE(box.icon(row, column), before);
    box.click(row, column);
    box.combo.hidePopup();
    QVERIFY(box.open()); // read anew
    QCOMPARE(box.icon(row, column), icon);
    const ZvDbObjectId id = row == 1 ? m_a : m_b;
    const bool states[] = {isOff(id), isFrozen(id), isLocked(id)};
    QCOMPARE(states[column], icon == 1 || icon == 2 || icon == 4);
}

void TestLayerComboBox::closedBoxFollowsByTheNotice()
{
    addTwo();
    drawing().setClayer(m_a);
    Box box;
    QVERIFY(box.open());
    notifyCommandEnded();
    box.click(1, kLock);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kRed, QStringLiteral("A")));
    bus().enableUpdateUI(false); // no notice, no change
    box.click(1, kLock);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kRed, QStringLiteral("A")));
    bus().enableUpdateUI(true);
    notifyCommandEnded();
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("A")));
}

void TestLayerComboBox::currentLayerIsSwitchedOffAfterAQuestion_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("off");
    QTest::newRow("yes, keep it on") << 6 << false;
    QTest::newRow("no") << 7 << true;
}

void TestLayerComboBox::currentLayerIsSwitchedOffAfterAQuestion()
{
    QFETCH(int, answer);
    QFETCH(bool, off);
    addTwo();
    drawing().setClayer(m_a);
    Box box;
    QVERIFY(box.open());
    const MessageBoxes boxes(answer);
    box.click(1, kSwitch);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown().front().text, ZvString(L"当前图层将被关闭。\n是否要使当前图层保持打开状态?\n"));
    QCOMPARE(boxes.shown().front().caption, ZvString(L"Zevara"));
    QCOMPARE(boxes.shown().front().flags, 68u);
    QCOMPARE(isOff(m_a), off);
    QCOMPARE(box.icon(1, kSwitch), off ? 1 : 0);
    QVERIFY(box.table->isVisible());
    if (off) {
        box.click(1, kSwitch); // on again without a question
        QCOMPARE(boxes.shown().size(), std::size_t(1));
        QVERIFY(!isOff(m_a));
    }
}

void TestLayerComboBox::currentLayerIsNotFrozen()
{
    addTwo();
    drawing().setClayer(m_a);
    Box box;
    QVERIFY(box.open());
    const MessageBoxes boxes;
    box.click(1, kFreeze);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown().front().text, ZvString(L"不能冻结当前图层\n"));
    QCOMPARE(boxes.shown().front().caption, ZvString(L"Zevara"));
    QCOMPARE(boxes.shown().front().flags, 64u);
    QVERIFY(!isFrozen(m_a));
    QCOMPARE(box.icon(1, kFreeze), 3);
    QVERIFY(box.table->isVisible());
}

void TestLayerComboBox::layerThatCannotBeWritten()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> reader(m_b, ZvDb::kForRead);
        box.click(2, kSwitch);
    }
    QVERIFY(isOff(m_b));
    QCOMPARE(box.icon(2, kSwitch), 0); // as for a layer that is on
    box.combo.hidePopup();
    QVERIFY(box.open());
    QCOMPARE(box.icon(2, kSwitch), 1);
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.erase(); });
    box.click(2, kLock);
    QCOMPARE(box.icon(2, kLock), 5);
    QVERIFY(box.combo.isEnabled());
}

void TestLayerComboBox::buttonsOfARowWithoutALayer()
{
    Box box(false);
    box.combo.addItemLayerInfo(true, true, true, kRed, QStringLiteral("extra"));
    QVERIFY(box.open());
    drawing().clearUndo();
    for (int column = 0; column < 3; ++column)
        box.click(1, column);
    QCOMPARE(box.icon(1, kSwitch), 0);
    QCOMPARE(box.icon(1, kFreeze), 3);
    QCOMPARE(box.icon(1, kLock), 5);
    QVERIFY(!drawing().canUndo());
}

void TestLayerComboBox::unhookedButtonsWrite()
{
    addTwo();
    Box box(false);
    QVERIFY(box.open());
    box.click(1, kLock);
    QVERIFY(isLocked(m_a));
    QVERIFY(box.table->isVisible());
}

void TestLayerComboBox::switchesOfOneOpeningAreOneStep()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.click(1, kSwitch);
    box.click(1, kLock);
    box.click(2, kLock);
    QVERIFY(isOff(m_a) && isLocked(m_a) && !isLocked(m_b));
    QVERIFY(runMacro(L"_.U "));
    QVERIFY(!isOff(m_a) && !isLocked(m_a) && isLocked(m_b));
    QVERIFY(!drawing().canUndo());
    QVERIFY(runMacro(L"_.REDO "));
    QVERIFY(isOff(m_a) && isLocked(m_a) && !isLocked(m_b));
}

void TestLayerComboBox::switchesOfTwoOpeningsAreTwoSteps()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.click(1, kSwitch);
    box.click(1, kLock);
    box.combo.hidePopup();
    QVERIFY(box.open());
    box.click(1, kFreeze);
    QVERIFY(drawing().undo());
    QVERIFY(isOff(m_a) && isLocked(m_a) && !isFrozen(m_a));
    QVERIFY(drawing().undo());
    QVERIFY(!isOff(m_a) && !isLocked(m_a));
    QVERIFY(!drawing().canUndo());
}

void TestLayerComboBox::clicksBesideAnOpenListAreStepsOfTheirOwn()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    box.button(1, kSwitch)->click();
    box.button(1, kLock)->click();
    QVERIFY(drawing().undo());
    QVERIFY(isOff(m_a) && !isLocked(m_a));
}

void TestLayerComboBox::commandsInBetweenPartTheSteps()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.click(1, kSwitch);
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setColor(indexColour(5)); });
    box.click(1, kLock);
    QVERIFY(drawing().undo());
    QVERIFY(isOff(m_a) && !isLocked(m_a));
    QCOMPARE(colourOf(m_b), indexColour(5));
    QVERIFY(drawing().undo());
    QCOMPARE(colourOf(m_b), indexColour(3));
    QVERIFY(isOff(m_a));
}

void TestLayerComboBox::switchDuringACommandBelongsToIt()
{
    addTwo();
    Box box;
    drawing().beginUndoStep(L"WORK");
    change<ZvDbLayerTableRecord>(m_b, [](ZvDbLayerTableRecord &layer) { layer.setColor(indexColour(5)); });
    box.button(1, kLock)->click();
    drawing().endUndoStep();
    QCOMPARE(drawing().undoName(), ZvString(L"WORK"));
    QVERIFY(drawing().undo());
    QVERIFY(!isLocked(m_a));
    QCOMPARE(colourOf(m_b), indexColour(3));
}

// ---- colours --------------------------------------------------------------------------------------------------------

void TestLayerComboBox::dialogIsAskedForTheLayersColour_data()
{
    QTest::addColumn<ZvCmColor>("colour");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    ZvCmColor colour;
    QTest::newRow("by layer") << colour << 192 << 256;
    colour.setColorMethod(ZvCm::kByBlock);
    QTest::newRow("by block") << colour << 193 << 0;
    QTest::newRow("an index") << indexColour(42) << 195 << 42;
    colour.setRGB(10, 20, 30);
    QTest::newRow("a true colour, red lowest") << colour << 194 << packed(10, 20, 30);
}

void TestLayerComboBox::dialogIsAskedForTheLayersColour()
{
    QFETCH(ZvCmColor, colour);
    QFETCH(int, method);
    QFETCH(int, value);
    addTwo();
    change<ZvDbLayerTableRecord>(m_a, [&colour](ZvDbLayerTableRecord &layer) { layer.setColor(colour); });
    QCOMPARE(colourOf(m_a), colour);
    Box box;
    QVERIFY(box.open());
    int shownTab = -1;
    QString shownText;
    bool isChild = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        shownTab = dialog->findChild<QTabWidget *>()->currentIndex();
        auto *text = shownTab == 0
            ? dialog->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>()
            : dialog->findChild<ZvTrueColorWnd *>()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
        shownText = text->text();
        isChild = dialog->parentWidget() == &box.combo;
        dialog->reject();
    });
    box.click(1, kColour);
    QVERIFY(driver.finished());
    QCOMPARE(shownTab, method == 194 ? 1 : 0);
    const QString expected = method == 192 ? QStringLiteral("BYLAYER")
        : method == 193                    ? QStringLiteral("BYBLOCK")
        : method == 195                    ? QString::number(value)
                                           : QStringLiteral("10,20,30");
    QCOMPARE(shownText, expected);
    QVERIFY(isChild);
}

void TestLayerComboBox::dialogIsGivenItsKeys_data()
{
    dialogIsAskedForTheLayersColour_data();
}

void TestLayerComboBox::dialogIsGivenItsKeys()
{
    QFETCH(ZvCmColor, colour);
    QFETCH(int, method);
    QFETCH(int, value);
    addTwo();
    change<ZvDbLayerTableRecord>(m_a, [&colour](ZvDbLayerTableRecord &layer) { layer.setColor(colour); });
    Box box;
    QVERIFY(box.open());
    int keys[3] = {};
    bool wasEnabled = true;
    bool wasBlocked = false;
    const DialogStandIn dialog([&](const ZvJsonPtr &params) {
        keys[0] = intOf(params, "clrMethod");
        keys[1] = intOf(params, "selectClr");
        keys[2] = intOf(params, "backgroundColor");
        wasEnabled = box.combo.isEnabled();
        wasBlocked = box.combo.signalsBlocked();
        return 2;
    });
    box.click(1, kColour);
    QCOMPARE(dialog.name(), ZvString(L"ColorDialog"));
    QCOMPARE(dialog.parent(), static_cast<void *>(static_cast<QWidget *>(&box.combo)));
    QCOMPARE(keys[0], method);
    QCOMPARE(keys[1], value);
    QCOMPARE(keys[2], int(0xff30281e));
    QVERIFY(!wasEnabled);
    QVERIFY(wasBlocked);
}

/// That of the row's record, as old as the list; of the row that was made current since, as old as that.
void TestLayerComboBox::dialogIsAskedForTheColourOfTheList()
{
    addTwo();
    Box box(false);
    for (const ZvDbObjectId &id : {m_a, m_b})
        change<ZvDbLayerTableRecord>(id, [](ZvDbLayerTableRecord &layer) { layer.setColor(indexColour(5)); });
    box.combo.setCurrentIndexEx(1, false);
    const int expected[] = {5, 3};
    for (const int row : {1, 2}) {
        int asked = -1;
        const DialogStandIn dialog([&](const ZvJsonPtr &params) {
            asked = intOf(params, "selectClr");
            return 2;
        });
        box.button(row, kColour)->click();
        QCOMPARE(asked, expected[row - 1]);
    }
    QCOMPARE(imageOf(box.button(1, kColour)->icon(), 24).pixelColor(12, 12), kRed); // stays as it was drawn
}

void TestLayerComboBox::answersOfAnotherDialog_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    QTest::addColumn<ZvCmColor>("written");
    QTest::addColumn<QColor>("swatch"); // invalid: as before
    ZvCmColor black;
    black.setRGB(0, 0, 0);
    ZvCmColor dark;
    dark.setRGB(10, 20, 30);
    const QColor none;
    QTest::newRow("by layer, whatever the value") << 1 << 192 << 5 << black << QColor(0, 0, 0);
    QTest::newRow("by block, whatever the value") << 1 << 193 << 5 << black << QColor(0, 0, 0);
    QTest::newRow("a method unknown") << 1 << 200 << 5 << black << QColor(0, 0, 0);
    QTest::newRow("an index is cut to 16 bits") << 1 << 195 << 0x10005 << indexColour(5) << QColor(0, 0, 255);
    QTest::newRow("bits above a true colour are cut") << 1 << 194 << 0x7F1E140A << dark << QColor(10, 20, 30);
    QTest::newRow("a true colour without a value") << 1 << 194 << kMissing << black << QColor(0, 0, 0);
    QTest::newRow("cancelled with a colour") << 2 << 195 << 5 << indexColour(3) << none;
    QTest::newRow("undecided with a colour") << -1 << 195 << 5 << indexColour(3) << none;
    QTest::newRow("another result") << 6 << 195 << 5 << indexColour(3) << none;
    QTest::newRow("no result at all") << 0 << 195 << 5 << indexColour(3) << none;
}

void TestLayerComboBox::answersOfAnotherDialog()
{
    QFETCH(int, result);
    QFETCH(int, method);
    QFETCH(int, value);
    QFETCH(ZvCmColor, written);
    QFETCH(QColor, swatch);
    addTwo();
    Box box;
    QVERIFY(box.open());
    QImage expected = imageOf(box.button(2, kColour)->icon(), 24);
    if (swatch.isValid())
        expected.fill(swatch);
    const DialogStandIn dialog([&](const ZvJsonPtr &params) {
        params->SetDataI("clrMethod", method);
        if (value == kMissing)
            params->SetDataJ("selectClr", nullptr);
        else
            params->SetDataI("selectClr", value);
        return result;
    });
    box.click(2, kColour);
    QCOMPARE(dialog.name(), ZvString(L"ColorDialog"));
    QCOMPARE(colourOf(m_b), written);
    QCOMPARE(imageOf(box.button(2, kColour)->icon(), 24), expected);
    QVERIFY(box.combo.isEnabled());
    QVERIFY(!box.combo.signalsBlocked());
    QVERIFY(box.table->isVisible());
}

void TestLayerComboBox::dialogColourIsWritten_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("isTrueColour");
    QTest::addColumn<ZvCmColor>("written");
    QTest::addColumn<QColor>("swatch");
    QTest::newRow("an index") << "5" << false << indexColour(5) << QColor(0, 0, 255);
    ZvCmColor colour;
    colour.setRGB(10, 20, 30);
    QTest::newRow("a true colour") << "10,20,30" << true << colour << QColor(10, 20, 30);
    colour.setRGB(0, 0, 0);
    QTest::newRow("by layer is black") << "BYLAYER" << false << colour << QColor(0, 0, 0);
    QTest::newRow("by block is black") << "BYBLOCK" << false << colour << QColor(0, 0, 0);
}

void TestLayerComboBox::dialogColourIsWritten()
{
    QFETCH(QString, typed);
    QFETCH(bool, isTrueColour);
    QFETCH(ZvCmColor, written);
    QFETCH(QColor, swatch);
    addTwo();
    Box box;
    QVERIFY(box.open());
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        dialog->findChild<QTabWidget *>()->setCurrentIndex(isTrueColour ? 1 : 0);
        if (typed.startsWith(QLatin1Char('B'))) {
            for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
                if (button->text().startsWith(typed == QLatin1String("BYLAYER") ? QStringLiteral("ByLayer")
                                                                                : QStringLiteral("ByBlock")))
                    QTest::mouseClick(button, Qt::LeftButton);
            }
            dialog->accept();
            return;
        }
        auto *text = isTrueColour
            ? dialog->findChild<ZvTrueColorWnd *>()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly)
            : dialog->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>();
        text->setFocus();
        text->selectAll();
        QTest::keyClicks(text, typed);
        QTest::keyClick(text, Qt::Key_Return);
    });
    box.click(2, kColour);
    QVERIFY(driver.finished());
    QCOMPARE(colourOf(m_b), written);
    QImage plain(24, 24, QImage::Format_ARGB32);
    plain.fill(swatch);
    QCOMPARE(imageOf(box.button(2, kColour)->icon(), 24), plain); // without a border
    QVERIFY(box.combo.isEnabled());
    QVERIFY(!box.combo.signalsBlocked());
    QVERIFY(drawing().undo());
    QCOMPARE(colourOf(m_b), indexColour(3));
}

void TestLayerComboBox::dismissedDialogChangesNothing()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    const QImage before = imageOf(box.button(2, kColour)->icon(), 24);
    ModalDriver driver;
    driver.next([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    box.click(2, kColour);
    QVERIFY(driver.finished());
    QCOMPARE(colourOf(m_b), indexColour(3));
    QCOMPARE(imageOf(box.button(2, kColour)->icon(), 24), before);
    QVERIFY(box.combo.isEnabled());
    QVERIFY(!box.combo.signalsBlocked());
    QVERIFY(!drawing().canUndo());
}

void TestLayerComboBox::missingDialogChangesNothing()
{
    addTwo();
    Box box;
    QVERIFY(box.show());
    zvrxEntryPoint(kZvRxUnloadModule);
    box.button(2, kColour)->click();
    zvrxEntryPoint(kZvRxLoadModule);
    QCOMPARE(colourOf(m_b), indexColour(3));
    QVERIFY(box.combo.isEnabled());
}

void TestLayerComboBox::listOpensAgainAfterTheDialog()
{
    for (int i = 0; i < 300; ++i)
        addLayer(numberedName(i));
    Box box;
    QVERIFY(box.open());
    box.table->verticalScrollBar()->setValue(120);
    const QWidget *button = box.button(125, kColour);
    ModalDriver driver;
    driver.next([](QDialog *dialog) { dialog->accept(); });
    driver.next([](QDialog *dialog) { dialog->reject(); });
    box.click(125, kColour);
    QTRY_VERIFY(box.table->isVisible());
    QCOMPARE(box.table->verticalScrollBar()->value(), 120);
    QCOMPARE(box.icon(125, kLock), 5);
    QCOMPARE(static_cast<const QWidget *>(box.button(125, kColour)), button); // as it was, not filled anew
    box.click(126, kLock);
    QVERIFY(box.table->isVisible());
    box.click(127, kColour);
    QTRY_VERIFY(box.table->isVisible());
    QVERIFY(driver.finished());
}

void TestLayerComboBox::recolouredCurrentRowIsPaintedWithTheStatesItWasMadeWith()
{
    addTwo();
    drawing().setClayer(m_a);
    Box box;
    QVERIFY(box.open());
    notifyCommandEnded();
    box.click(1, kLock);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kRed, QStringLiteral("A")));
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        auto *text = dialog->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>();
        text->setFocus();
        text->selectAll();
        QTest::keyClicks(text, QStringLiteral("3"));
        QTest::keyClick(text, Qt::Key_Return);
    });
    box.click(1, kColour);
    QVERIFY(driver.finished());
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kGreen, QStringLiteral("A"))); // as when made
    notifyCommandEnded();
    COMPARE_PICTURES(box.picture(), box.expected(false, false, true, kGreen, QStringLiteral("A")));
}

void TestLayerComboBox::recolouredOtherRowLeavesTheBox()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.combo.setCurrentIndexEx(1, false);
    const QImage before = box.picture();
    bus().enableUpdateUI(false); // only what the button itself does
    const DialogStandIn dialog([](const ZvJsonPtr &params) {
        params->SetDataI("selectClr", 5);
        return 1;
    });
    box.click(2, kColour);
    QCOMPARE(colourOf(m_b), indexColour(5));
    COMPARE_PICTURES(box.picture(), before);
    bus().enableUpdateUI(true);
}

void TestLayerComboBox::deletedWhileTheDialogRuns()
{
    addTwo();
    auto *combo = new ZvLayerUltralComboBox(true, nullptr);
    QPointer<QPushButton> button
        = qobject_cast<QPushButton *>(combo->findChild<QTableWidget *>()->cellWidget(2, kColour));
    ModalDriver driver;
    driver.next([combo](QDialog *) { delete combo; });
    button->click();
    QVERIFY(driver.finished());
    QVERIFY(!button);
    QCOMPARE(colourOf(m_b), indexColour(3));
}

void TestLayerComboBox::drawingClosedWhileTheDialogRuns()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    ModalDriver driver;
    driver.next([this, &box](QDialog *dialog) {
        zvDocManagerPtr()->closeDocument(document());
        box.combo.init();
        dialog->accept();
    });
    box.click(2, kColour);
    QVERIFY(driver.finished());
    QCOMPARE(box.table->rowCount(), 0);
    QVERIFY(!box.combo.signalsBlocked());
}

// ---- rows pressed ---------------------------------------------------------------------------------------------------

void TestLayerComboBox::pressOnANameMakesTheLayerCurrent()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    box.pressName(1);
    QVERIFY(!box.table->isVisible());
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), m_a);
    QCOMPARE(box.combo.currentIndex(), 1);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("A")));
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(drawing().clayer(), drawing().layerZero());
}

void TestLayerComboBox::pressMovesTheSelection()
{
    addTwo();
    Box box;
    const ZvDbObjectId line = addLine();
    select({line});
    QVERIFY(box.open());
    box.pressName(1);
    QVERIFY(runCommands());
    QCOMPARE(read<ZvDbEntity>(line, [](const ZvDbEntity &entity) { return entity.layerId(); }), m_a);
    QCOMPARE(drawing().clayer(), drawing().layerZero());
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("A")));
}

void TestLayerComboBox::pressOnAnUnhookedOneChangesThePictureOnly()
{
    addTwo();
    Box box(false);
    QVERIFY(box.open());
    box.pressName(2);
    QVERIFY(!box.table->isVisible());
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), drawing().layerZero());
    COMPARE_PICTURES(box.picture(), box.expected(true, true, true, kGreen, QStringLiteral("B")));
}

void TestLayerComboBox::pressOnAFrozenLayerIsRefused()
{
    addTwo();
    Box box;
    QVERIFY(box.open());
    notifyCommandEnded();
    const MessageBoxes boxes;
    box.pressName(2);
    QVERIFY(!box.table->isVisible());
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown().front().text, kRefused);
    QVERIFY(runCommands());
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kWhite, QStringLiteral("0")));
}

/// A host's class may do more when its list closes.
void TestLayerComboBox::pressClosesTheListAsTheClassDoes()
{
    class Own : public ZvLayerUltralComboBox
    {
    public:
        using ZvLayerUltralComboBox::ZvLayerUltralComboBox;
        void hidePopup() override
        {
            rowWhenHidden = currentIndex();
            ZvLayerUltralComboBox::hidePopup();
        }
        int rowWhenHidden = -1;
    };
    addTwo();
    Own combo(false, nullptr);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    combo.showPopup();
    auto *table = combo.findChild<QTableWidget *>();
    QTRY_VERIFY(table->isVisible());
    combo.rowWhenHidden = -1;
    QTest::mousePress(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualRect(table->model()->index(2, kName)).center());
    QCOMPARE(combo.rowWhenHidden, 2);
    QVERIFY(!table->isVisible());
}

// ---- a day at work --------------------------------------------------------------------------------------------------

void TestLayerComboBox::journeyThroughTheList()
{
    addTwo();
    Box box;
    const ZvDbObjectId line = addLine();
    drawing().clearUndo();
    QVERIFY(box.open());
    box.click(2, kFreeze);
    box.click(2, kLock);
    box.click(2, kSwitch);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        auto *text = dialog->findChild<ZvIndexColorWnd *>()->findChild<QLineEdit *>();
        text->setFocus();
        text->selectAll();
        QTest::keyClicks(text, QStringLiteral("1"));
        QTest::keyClick(text, Qt::Key_Return);
    });
    box.click(2, kColour);
    QVERIFY(driver.finished());
    QTRY_VERIFY(box.table->isVisible());
    box.pressName(2); // thawed, it can be made current
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), m_b);
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("B")));
    select({line});
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kWhite, QStringLiteral("0")));
    QVERIFY(box.open());
    box.pressName(1);
    QVERIFY(runCommands());
    COMPARE_PICTURES(box.picture(), box.expected(false, false, false, kRed, QStringLiteral("A")));
    select({});
    QVERIFY(runMacro(L"_.U "));
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(drawing().clayer(), drawing().layerZero());
    QVERIFY(runMacro(L"_.U ")); // all that was switched and recoloured in the first opening
    QVERIFY(isOff(m_b) && isFrozen(m_b) && isLocked(m_b));
    QCOMPARE(colourOf(m_b), indexColour(3));
    QVERIFY(!drawing().canUndo());
}

void TestLayerComboBox::switchedStatesAreInTheSavedFile()
{
    const QTemporaryDir folder;
    const ZvString path((folder.path() + QStringLiteral("/layers.dxf")).toUtf8().constData());
    addTwo();
    {
        Box box;
        QVERIFY(box.open());
        box.click(1, kSwitch);
        box.click(1, kLock);
        box.click(2, kFreeze);
    }
    ZvDbFileReport report;
    QCOMPARE(zvDocManagerPtr()->saveDocument(document(), path, report), Zv::eOk);
    zvDocManagerPtr()->closeDocument(document());
    QVERIFY(zvDocManagerPtr()->openDocument(path, report));
    bus().enableUpdateUI(true);
    const Box box;
    QCOMPARE(box.names(), QStringList({QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B")}));
    QCOMPARE(box.icon(1, kSwitch), 1);
    QCOMPARE(box.icon(1, kLock), 4);
    QCOMPARE(box.icon(2, kFreeze), 3);
    QCOMPARE(box.icon(2, kSwitch), 1);
}

ZEVA_TEST_MAIN(TestLayerComboBox)
#include "tst_layercombobox.moc"
