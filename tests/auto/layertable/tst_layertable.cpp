// SPDX-License-Identifier: MIT
#include "private/zvlayertable.h"
#include "zevatest.h"

#include <QHeaderView>
#include <QProcess>
#include <QScrollBar>
#include <QSignalSpy>

#include <functional>

Q_DECLARE_METATYPE(std::function<void(QPushButton &)>)

namespace {

const ZvArray<QIcon> &stateIcons()
{
    static ZvArray<QIcon> icons;
    if (icons.isEmpty()) {
        for (int i = 0; i < 6; ++i) {
            QPixmap pixmap(16, 16);
            pixmap.fill(QColor(40 * i, 10, 20));
            icons.append(QIcon(pixmap));
        }
    }
    return icons;
}

QVector<ZvLayerTable::Layer> layers(int count)
{
    QVector<ZvLayerTable::Layer> made;
    for (int i = 0; i < count; ++i)
        made.append({i % 2 == 1, i % 3 == 1, i % 5 == 1, QColor(i % 7, 0, 0), QStringLiteral("Layer %1").arg(i)});
    return made;
}

QRgb colorOf(const QIcon &icon)
{
    return icon.pixmap(16, 16).toImage().pixel(8, 8);
}

} // namespace

/// The table behind the layer combo, by itself.
class TestLayerTable : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void looks();
    void rowsHaveTheirButtons_data();
    void rowsHaveTheirButtons();
    void buttonsAnswerWithoutBeingInView();
    void longListsBuildWhatComesIntoView();
    void buttonsLieOnTheirCells();
    void buttonsLookAsOthersWithTheirStyleSheet_data();
    void buttonsLookAsOthersWithTheirStyleSheet();
    void buttonsFollowStyleSheets_data();
    void buttonsFollowStyleSheets();
    void scaledScreens_data();
    void scaledScreens();
    void emptyCellsFollowStyleSheets();
    void nothingLiesOverAButton();
    void fewWidgetsAreShown();
    void unchangedRowsKeepTheirButtons();
    void changedStatesShow();
    void stateSetByAClickIsPutRightByTheNextFilling();
    void iconGoesNowhereOnceTheRowIsAnothers_data();
    void iconGoesNowhereOnceTheRowIsAnothers();
    void listGrowsAndShrinks_data();
    void listGrowsAndShrinks();
    void appendedRows();
    void rowsOfOthersHaveNoButtons();
    void clearedByOthers();
    void rowRemovedInTheMiddle();
    void clickTellsRowAndColumn();
    void clickMakesItsRowCurrentAndDoesNotScroll();
    void keyboardStaysWhenItsButtonLeavesTheView();
    void rowsGoInTheClickOfTheirButton();
    void rightToLeft();
    void tenThousandRowsBesideAShownViewport();

private:
    static bool hasButtons(const ZvLayerTable &table, int row)
    {
        for (int column = 0; column < ZvLayerTable::kButtons; ++column) {
            if (!qobject_cast<QPushButton *>(table.cellWidget(row, column)))
                return false;
        }
        return true;
    }
    static int rowsWithButtons(const ZvLayerTable &table)
    {
        int count = 0;
        for (int row = 0; row < table.rowCount(); ++row)
            count += hasButtons(table, row);
        return count;
    }
    static int shownButtons(const ZvLayerTable &table)
    {
        int count = 0;
        for (const QPushButton *button : table.findChildren<QPushButton *>())
            count += button->isVisible();
        return count;
    }
    static QPushButton *button(const ZvLayerTable &table, int row, int column)
    {
        return qobject_cast<QPushButton *>(table.cellWidget(row, column));
    }
    /// A push button that only has what \a model was given.
    static QPushButton *twinOf(const QPushButton &model)
    {
        auto *twin = new QPushButton(model.parentWidget());
        twin->setObjectName(model.objectName());
        twin->setStyleSheet(model.styleSheet());
        twin->setIconSize(model.iconSize());
        twin->setIcon(model.icon());
        twin->setGeometry(model.geometry());
        return twin;
    }
    static QImage inTheTable(ZvLayerTable &table, QPushButton *shown, QPushButton *hidden)
    {
        hidden->hide();
        shown->show();
        return table.viewport()->grab().toImage();
    }
    static void show(ZvLayerTable &table)
    {
        table.resize(240, 240);
        table.show();
        QVERIFY(QTest::qWaitForWindowExposed(&table));
    }
};

void TestLayerTable::looks()
{
    QWidget parent;
    parent.resize(200, 30);
    ZvLayerTable table(&stateIcons(), &parent);
    QCOMPARE(table.columnCount(), 5);
    QCOMPARE(table.rowCount(), 0);
    table.setLayers(layers(1));
    QCOMPARE(table.verticalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
    QCOMPARE(table.horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table.editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
    QVERIFY(table.horizontalHeader()->stretchLastSection());
    QVERIFY(table.horizontalHeader()->isHidden());
    QVERIFY(table.verticalHeader()->isHidden());
    QVERIFY(!table.showGrid());
    QCOMPARE(table.frameShape(), QFrame::NoFrame);
    QCOMPARE(table.styleSheet(), QStringLiteral("selection-background-color:lightblue;"));
    QCOMPARE(table.palette().color(QPalette::HighlightedText), QColor(Qt::black));
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), 24);
    QCOMPARE(table.horizontalHeader()->minimumSectionSize(), 18);
    for (int column = 0; column < 4; ++column)
        QCOMPARE(table.columnWidth(column), 18); // 16, but not below the least
}

void TestLayerTable::rowsHaveTheirButtons_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("on and off") << 0 << "pSwitch"
                                << "开/关图层";
    QTest::newRow("freeze") << 1 << "pFreeze"
                            << "在所有视口中冻结/解冻";
    QTest::newRow("lock") << 2 << "pLocked"
                          << "锁定/解锁图层";
    QTest::newRow("colour") << 3 << "pClr"
                            << "图层颜色";
}

void TestLayerTable::rowsHaveTheirButtons()
{
    QFETCH(int, column);
    QFETCH(QString, name);
    QFETCH(QString, toolTip);
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(3));
    for (int row = 0; row < 3; ++row) {
        const QPushButton *cell = button(table, row, column);
        QVERIFY(cell);
        QCOMPARE(cell->objectName(), name);
        QCOMPARE(cell->toolTip(), toolTip);
        QCOMPARE(cell->iconSize(), QSize(16, 16));
        QCOMPARE(cell->styleSheet(), QStringLiteral("QPushButton{border: 0px solid;}"));
        const QTableWidgetItem *item = table.item(row, 4);
        QCOMPARE(item->type(), 0);
        QCOMPARE(item->data(Qt::DisplayRole).toString(), QStringLiteral("Layer %1").arg(row));
        QCOMPARE(item->data(Qt::ToolTipRole).toString(), QStringLiteral("Layer %1").arg(row));
    }
    const int states[3][3] = {{0, 3, 5}, {1, 2, 4}, {0, 3, 5}}; // of rows 0 to 2
    for (int row = 0; row < 3 && column < 3; ++row)
        QCOMPARE(colorOf(button(table, row, column)->icon()), colorOf(stateIcons()[states[row][column]]));
}

void TestLayerTable::buttonsAnswerWithoutBeingInView()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(ZvLayerTable::kAllBuilt));
    QCOMPARE(rowsWithButtons(table), ZvLayerTable::kAllBuilt);
    show(table);
    QCOMPARE(rowsWithButtons(table), ZvLayerTable::kAllBuilt);
    const QSignalSpy spy(&table, &ZvLayerTable::buttonClicked);
    button(table, 1999, 2)->click();
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0), QVariantList({1999, 2}));
    QCOMPARE(table.findChildren<QPushButton *>(QStringLiteral("pLocked")).size(), ZvLayerTable::kAllBuilt);
}

void TestLayerTable::longListsBuildWhatComesIntoView()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(ZvLayerTable::kAllBuilt + 1));
    QCOMPARE(rowsWithButtons(table), 0);
    show(table);
    QCOMPARE(rowsWithButtons(table), 10);
    table.verticalScrollBar()->setValue(1000);
    QVERIFY(hasButtons(table, 0)); // once in view
    QVERIFY(hasButtons(table, 1000));
    QVERIFY(!hasButtons(table, 500));
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum());
    QVERIFY(hasButtons(table, ZvLayerTable::kAllBuilt));
    QVERIFY(button(table, ZvLayerTable::kAllBuilt, 0)->isVisible());
}

void TestLayerTable::buttonsLieOnTheirCells()
{
    for (const int count : {300, 3000}) {
        ZvLayerTable table(&stateIcons(), nullptr);
        table.setLayers(layers(count));
        show(table);
        for (const int place : {0, 7, 8, 100, 97, 290, 3, 0}) {
            table.verticalScrollBar()->setValue(place);
            for (int row = place; row < place + 10; ++row) {
                for (int column = 0; column < 4; ++column) {
                    const QPushButton *cell = button(table, row, column);
                    QVERIFY(cell->isVisible());
                    const QRect area(cell->mapTo(table.viewport(), QPoint(0, 0)), cell->size());
                    QCOMPARE(area, table.visualRect(table.model()->index(row, column)));
                }
            }
        }
    }
}

void TestLayerTable::buttonsLookAsOthersWithTheirStyleSheet_data()
{
    using Change = std::function<void(QPushButton &)>;
    QTest::addColumn<Change>("change");
    QTest::newRow("at rest") << Change([](QPushButton &) {});
    QTest::newRow("under the mouse") << Change([](QPushButton &cell) { cell.setAttribute(Qt::WA_UnderMouse); });
    QTest::newRow("pressed") << Change([](QPushButton &cell) { cell.setDown(true); });
    QTest::newRow("disabled") << Change([](QPushButton &cell) { cell.setEnabled(false); });
    QTest::newRow("focused") << Change([](QPushButton &cell) { cell.setFocus(Qt::TabFocusReason); });
    QTest::newRow("no icon") << Change([](QPushButton &cell) { cell.setIcon(QIcon()); });
    QTest::newRow("small icon") << Change([](QPushButton &cell) { cell.setIconSize(QSize(8, 8)); });
    QTest::newRow("smaller") << Change([](QPushButton &cell) { cell.resize(13, 19); });
    QTest::newRow("right to left") << Change([](QPushButton &cell) { cell.setLayoutDirection(Qt::RightToLeft); });
    QTest::newRow("flat") << Change([](QPushButton &cell) { cell.setFlat(true); });
    QTest::newRow("with a text") << Change([](QPushButton &cell) { cell.setText(QStringLiteral("x")); });
    QTest::newRow("checked") << Change([](QPushButton &cell) {
        cell.setCheckable(true);
        cell.setChecked(true);
    });
    QTest::newRow("with another style sheet")
        << Change([](QPushButton &cell) { cell.setStyleSheet(QStringLiteral("QPushButton{background:red;}")); });
}

void TestLayerTable::buttonsLookAsOthersWithTheirStyleSheet()
{
    QFETCH(std::function<void(QPushButton &)>, change);
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(20));
    show(table);
    table.activateWindow();
    QVERIFY(zevaWaitForActive(&table));
    table.setAttribute(Qt::WA_KeyboardFocusChange);
    for (int column = 0; column < 4; ++column) {
        QPushButton *cell = button(table, 2, column);
        QPushButton *twin = twinOf(*cell);
        QCOMPARE(inTheTable(table, cell, twin), inTheTable(table, twin, cell)); // also makes what may be kept
        cell->show();
        change(*cell);
        const QImage alone = cell->grab().toImage();
        const QImage placed = inTheTable(table, cell, twin);
        twin->show();
        change(*twin);
        QCOMPARE(alone, twin->grab().toImage());
        QCOMPARE(placed, inTheTable(table, twin, cell));
    }
}

void TestLayerTable::buttonsFollowStyleSheets_data()
{
    QTest::addColumn<QString>("styleSheet");
    QTest::addColumn<bool>("isMarked");
    QTest::newRow("for all buttons") << "QPushButton{background:#00FF00;}" << false;
    QTest::newRow("for the place of the icon") << "QPushButton{padding-left:5px;}" << false;
    QTest::newRow("for one kind") << "#pFreeze{background:#00FF00;}" << false;
    QTest::newRow("for those with a property") << "QPushButton[marked=\"true\"]{background:#00FF00;}" << true;
}

void TestLayerTable::buttonsFollowStyleSheets()
{
    QFETCH(QString, styleSheet);
    QFETCH(bool, isMarked);
    QWidget parent;
    ZvLayerTable table(&stateIcons(), &parent);
    table.setLayers(layers(20));
    parent.resize(300, 300);
    table.resize(240, 240);
    parent.show();
    parent.activateWindow();
    QVERIFY(zevaWaitForActive(&parent)); // it changes the look by itself
    QPushButton *cell = button(table, 2, 1);
    const QPushButton *neighbour = button(table, 3, 1); // with the same icon
    const QImage before = table.viewport()->grab().toImage();
    parent.setStyleSheet(styleSheet);
    if (isMarked) {
        cell->setProperty("marked", true);
        cell->setStyleSheet(QString()); // asked again
        cell->setStyleSheet(neighbour->styleSheet());
    }
    const QImage styled = table.viewport()->grab().toImage();
    const QRect place(cell->mapTo(table.viewport(), QPoint(0, 0)), cell->size());
    const QRect beside(neighbour->mapTo(table.viewport(), QPoint(0, 0)), neighbour->size());
    QVERIFY(styled.copy(place) != before.copy(place));
    QCOMPARE(styled.copy(beside) != before.copy(beside), !isMarked);
    parent.setStyleSheet(QString());
    QCOMPARE(table.viewport()->grab().toImage(), before);
}

void TestLayerTable::scaledScreens_data()
{
    QTest::addColumn<QByteArray>("scale");
    QTest::newRow("150 %") << QByteArray("1.5");
    QTest::newRow("200 %") << QByteArray("2");
}

/// The scale is a matter of the process.
void TestLayerTable::scaledScreens()
{
    QFETCH(QByteArray, scale);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("buttonsLookAsOthersWithTheirStyleSheet")});
    QVERIFY(process.waitForFinished(120000));
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, process.readAll().constData());
}

void TestLayerTable::emptyCellsFollowStyleSheets()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(20));
    show(table);
    const QPoint place = table.visualRect(table.model()->index(2, 0)).topLeft();
    const QString own = table.styleSheet();
    const QImage before = table.viewport()->grab().toImage();
    table.setStyleSheet(QStringLiteral("QTableView::item{background:#00FF00;}"));
    QCOMPARE(table.viewport()->grab().toImage().pixelColor(place), QColor(Qt::green));
    table.setStyleSheet(own);
    QCOMPARE(table.viewport()->grab().toImage(), before);
    table.selectRow(2);
    QCOMPARE(table.viewport()->grab().toImage().pixelColor(place), QColor("lightblue"));
    table.clearSelection();
    table.setItem(2, 0, new QTableWidgetItem);
    table.item(2, 0)->setBackground(Qt::green);
    QCOMPARE(table.viewport()->grab().toImage().pixelColor(place), QColor(Qt::green));
}

/// Not even those of rows on the same block that were never in view.
void TestLayerTable::nothingLiesOverAButton()
{
    for (const int count : {300, 3000}) {
        ZvLayerTable table(&stateIcons(), nullptr);
        table.setLayers(layers(count));
        show(table);
        for (const int place : {0, 20, 37, 100}) {
            table.verticalScrollBar()->setValue(place);
            for (int row = place; row < place + 10; ++row) {
                for (int column = 0; column < 4; ++column) {
                    const QPoint middle = table.visualRect(table.model()->index(row, column)).center();
                    QCOMPARE(table.viewport()->childAt(middle), table.cellWidget(row, column));
                }
            }
        }
    }
}

void TestLayerTable::fewWidgetsAreShown()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(600));
    show(table);
    for (const int place : {0, 250, 590, 40}) {
        table.verticalScrollBar()->setValue(place);
        QVERIFY(shownButtons(table) >= 40);
        QVERIFY(shownButtons(table) <= 4 * 3 * ZvLayerTable::kBlockRows);
    }
}

void TestLayerTable::unchangedRowsKeepTheirButtons()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(50));
    QVector<QWidget *> before;
    for (int row = 0; row < 50; ++row)
        before << table.cellWidget(row, 1);
    table.setLayers(layers(50));
    for (int row = 0; row < 50; ++row)
        QCOMPARE(table.cellWidget(row, 1), before.at(row));
}

void TestLayerTable::changedStatesShow()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    QVector<ZvLayerTable::Layer> rows = layers(20);
    table.setLayers(rows);
    rows[4].off = true;
    rows[5].frozen = true;
    rows[6].locked = false;
    rows[7].color = Qt::green;
    rows[8].name = QStringLiteral("renamed");
    table.setLayers(rows);
    QCOMPARE(colorOf(button(table, 4, 0)->icon()), colorOf(stateIcons()[1]));
    QCOMPARE(colorOf(button(table, 5, 1)->icon()), colorOf(stateIcons()[2]));
    QCOMPARE(colorOf(button(table, 6, 2)->icon()), colorOf(stateIcons()[5]));
    QCOMPARE(colorOf(button(table, 7, 3)->icon()), QColor(Qt::green).rgb());
    QCOMPARE(table.item(8, 4)->text(), QStringLiteral("renamed"));
    QCOMPARE(table.item(8, 4)->toolTip(), QStringLiteral("renamed"));
}

void TestLayerTable::stateSetByAClickIsPutRightByTheNextFilling()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(5));
    table.cellAt(2, 0).setIcon(stateIcons()[1]);
    QCOMPARE(colorOf(button(table, 2, 0)->icon()), colorOf(stateIcons()[1]));
    QVERIFY(!table.cellAt(2, 0).layer().off); // as it was made
    table.setLayers(layers(5));
    QCOMPARE(colorOf(button(table, 2, 0)->icon()), colorOf(stateIcons()[0]));
}

void TestLayerTable::iconGoesNowhereOnceTheRowIsAnothers_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isSet");
    QTest::newRow("the same layer") << 5 << "Layer 2" << true;
    QTest::newRow("another layer") << 5 << "another" << false;
    QTest::newRow("the row is gone") << 2 << "" << false;
    QTest::newRow("all rows are gone") << 0 << "" << false;
}

void TestLayerTable::iconGoesNowhereOnceTheRowIsAnothers()
{
    QFETCH(int, rows);
    QFETCH(QString, name);
    QFETCH(bool, isSet);
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(5));
    const ZvLayerTable::Cell cell = table.cellAt(2, 0);
    QVector<ZvLayerTable::Layer> now = layers(rows);
    if (rows > 2)
        now[2].name = name;
    table.setLayers(now);
    cell.setIcon(stateIcons()[5]);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    cell.setIcon(stateIcons()[5]);
    if (rows > 2)
        QCOMPARE(colorOf(button(table, 2, 0)->icon()) == colorOf(stateIcons()[5]), isSet);
}

void TestLayerTable::listGrowsAndShrinks_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("none to some") << 0 << 30;
    QTest::newRow("some to none") << 30 << 0;
    QTest::newRow("fewer") << 300 << 17;
    QTest::newRow("more") << 17 << 300;
    QTest::newRow("to a long list") << 1990 << 2010;
    QTest::newRow("from a long list") << 2010 << 1990;
}

void TestLayerTable::listGrowsAndShrinks()
{
    QFETCH(int, before);
    QFETCH(int, after);
    for (const bool isShown : {false, true}) {
        if (isShown && qMax(before, after) > 1000)
            continue; // the same, only slower
        ZvLayerTable table(&stateIcons(), nullptr);
        table.setLayers(layers(before));
        if (isShown)
            show(table);
        table.setLayers(layers(after));
        QCOMPARE(table.rowCount(), after);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const int expected = after <= ZvLayerTable::kAllBuilt ? after : before;
        QCOMPARE(rowsWithButtons(table), expected);
        QCOMPARE(table.findChildren<QPushButton *>().size(), 4 * expected);
        if (isShown && after > 0)
            QVERIFY(button(table, 0, 0)->isVisible());
    }
}

void TestLayerTable::appendedRows()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    show(table);
    for (int row = 0; row < 20; ++row) {
        table.appendLayer(layers(20).at(row));
        QCOMPARE(table.rowCount(), row + 1);
        QVERIFY(hasButtons(table, row));
    }
    QVERIFY(button(table, 3, 3)->isVisible());
    QCOMPARE(table.item(19, 4)->text(), QStringLiteral("Layer 19"));
}

void TestLayerTable::rowsOfOthersHaveNoButtons()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(40));
    show(table);
    const QWidget *third = table.cellWidget(3, 0);
    table.insertRow(2);
    QVERIFY(!hasButtons(table, 2));
    QCOMPARE(table.cellWidget(4, 0), third);
    table.viewport()->repaint();
    QVERIFY(!hasButtons(table, 2));
    table.setLayers(layers(41));
    QVERIFY(hasButtons(table, 2));
    QCOMPARE(rowsWithButtons(table), 41);
}

void TestLayerTable::clearedByOthers()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(40));
    show(table);
    table.clear();
    QCOMPARE(rowsWithButtons(table), 0);
    table.setRowCount(0);
    table.setLayers(layers(40));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(rowsWithButtons(table), 40);
    QCOMPARE(table.findChildren<QPushButton *>().size(), 160);
    QVERIFY(button(table, 0, 0)->isVisible());
}

void TestLayerTable::rowRemovedInTheMiddle()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(40));
    show(table);
    const QWidget *fifth = table.cellWidget(5, 2);
    table.removeRow(1);
    QCOMPARE(table.cellWidget(4, 2), fifth);
    QTRY_COMPARE(fifth->mapTo(table.viewport(), QPoint(0, 0)).y(), 4 * 24);
    for (int row = 39; row > 0; --row)
        table.removeRow(row - 1);
    QCOMPARE(table.rowCount(), 0);
}

void TestLayerTable::clickTellsRowAndColumn()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(40));
    show(table);
    const QSignalSpy spy(&table, &ZvLayerTable::buttonClicked);
    const QSignalSpy pressed(&table, &QTableWidget::cellPressed);
    QTest::mouseClick(table.cellWidget(3, 1), Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0), QVariantList({3, 1}));
    QCOMPARE(pressed.size(), 0);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier,
                      table.visualRect(table.model()->index(3, 4)).center());
    QCOMPARE(pressed.size(), 1);
    QCOMPARE(spy.size(), 1);
}

void TestLayerTable::clickMakesItsRowCurrentAndDoesNotScroll()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(400));
    show(table);
    table.activateWindow();
    QVERIFY(zevaWaitForActive(&table));
    for (const int place : {0, 120, 37}) {
        table.verticalScrollBar()->setValue(place);
        for (int row = place; row < place + 10; ++row) {
            QTest::mouseClick(table.cellWidget(row, row % 4), Qt::LeftButton);
            QCOMPARE(table.currentRow(), row);
            QCOMPARE(table.currentColumn(), row % 4);
            QCOMPARE(table.verticalScrollBar()->value(), place);
        }
    }
}

void TestLayerTable::keyboardStaysWhenItsButtonLeavesTheView()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(400));
    show(table);
    table.activateWindow();
    QVERIFY(zevaWaitForActive(&table));
    QTest::mouseClick(table.cellWidget(9, 2), Qt::LeftButton);
    QVERIFY(table.cellWidget(9, 2)->hasFocus());
    table.verticalScrollBar()->setValue(120);
    QVERIFY(table.hasFocus());
    QCOMPARE(table.currentRow(), 9);
    QCOMPARE(table.verticalScrollBar()->value(), 120);
}

void TestLayerTable::rowsGoInTheClickOfTheirButton()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayers(layers(40));
    show(table);
    connect(&table, &ZvLayerTable::buttonClicked, &table, [&table] { table.setLayers({}); });
    QTest::mouseClick(table.cellWidget(3, 1), Qt::LeftButton);
    QCOMPARE(table.rowCount(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(table.findChildren<QPushButton *>().size(), 0);
}

void TestLayerTable::rightToLeft()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    table.setLayoutDirection(Qt::RightToLeft);
    table.setLayers(layers(40));
    show(table);
    for (int column = 0; column < 4; ++column) {
        const QWidget *cell = table.cellWidget(3, column);
        QCOMPARE(QRect(cell->mapTo(table.viewport(), QPoint(0, 0)), cell->size()),
                 table.visualRect(table.model()->index(3, column)));
    }
    QVERIFY(table.cellWidget(3, 0)->mapTo(table.viewport(), QPoint(0, 0)).x()
            > table.cellWidget(3, 3)->mapTo(table.viewport(), QPoint(0, 0)).x());
}

/// Buttons that are all siblings overflow the stack here.
void TestLayerTable::tenThousandRowsBesideAShownViewport()
{
    ZvLayerTable table(&stateIcons(), nullptr);
    show(table);
    table.setLayers(layers(10000));
    for (int place = 0; place < 10000; place += 81) {
        table.verticalScrollBar()->setValue(place);
        QCoreApplication::processEvents();
    }
    table.viewport()->repaint();
    QVERIFY(rowsWithButtons(table) > 1000);
    table.hide();
    table.show();
    table.viewport()->repaint();
    QVERIFY(shownButtons(table) <= 4 * 3 * ZvLayerTable::kBlockRows);
}

ZEVA_TEST_MAIN(TestLayerTable)
#include "tst_layertable.moc"
