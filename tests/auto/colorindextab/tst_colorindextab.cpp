// SPDX-License-Identifier: MIT
#include "colordialogrun.h"
#include "metamethods.h"
#include "paintcount.h"
#include "zevatest.h"

#include "base/zvcmcolor.h"

#include <QAction>
#include <QLabel>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace {

struct GridRow
{
    int mode;
    int rows;
    int cols;
    int cell;
};
constexpr GridRow kGrids[] = {{1, 5, 24, 12}, {2, 5, 24, 12}, {3, 1, 9, 17}, {4, 1, 6, 17}};

const GridRow &gridRow(int mode)
{
    return kGrids[mode - 1];
}

ZvPaleteWnd *makeGrid(int mode, QWidget *parent)
{
    const GridRow &grid = gridRow(mode);
    return new ZvPaleteWnd(unsigned(mode), unsigned(grid.rows), unsigned(grid.cols), unsigned(grid.cell), parent);
}

QRgb toRgb(unsigned packedColor)
{
    return qRgb(int(packedColor & 0xFF), int(packedColor >> 8 & 0xFF), int(packedColor >> 16 & 0xFF));
}

/// What a grid shows: cells at a pitch of two more than their side, a thin outline over each, then the frames. A row
/// below zero: no such frame.
QImage expectedGrid(const QSize &size, int mode, unsigned background, int hoverRow, int hoverCol, int frameRow,
                    int frameCol)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    const GridRow &grid = gridRow(mode);
    const int pitch = grid.cell + 2;
    for (int row = 0; row < grid.rows; ++row) {
        for (int col = 0; col < grid.cols; ++col) {
            int index = 0;
            switch (mode) {
            case 1:
                index = (col * 5 + 5 - row) * 2 + 8;
                break;
            case 2:
                index = (row + col * 5 + 5) * 2 + 1;
                break;
            case 3:
                index = col + 1;
                break;
            default:
                index = col + 250;
                break;
            }
            const int x = col * pitch + 2;
            const int y = row * pitch + 2;
            const QRgb color = toRgb(zvcmAcadPalette(background)[index]);
            setPixels(image, x, y, x + grid.cell - 1, y + grid.cell - 1, color);
            setThinOutline(image, x, y, x + grid.cell, y + grid.cell);
        }
    }
    const auto frame = [&](int row, int col) {
        if (row < 0)
            return;
        const int x = col * pitch + 1;
        const int y = row * pitch + 1;
        setBevelledFrame(image, x, y, x + grid.cell + 3, y + grid.cell + 3);
    };
    frame(hoverRow, hoverCol);
    frame(frameRow, frameCol);
    return image;
}

} // namespace

class TestColorIndexTab : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void methodsAreAsTold_data();
    void methodsAreAsTold();

    // a grid by itself
    void cellsHaveTheirIndices_data();
    void cellsHaveTheirIndices();
    void cornersOfTheGrids_data();
    void cornersOfTheGrids();
    void outsideAGridThereIsNoIndex_data();
    void outsideAGridThereIsNoIndex();
    void foreignIndicesHaveNoCell_data();
    void foreignIndicesHaveNoCell();
    void gridTracksTheMouse();
    void releaseSelects_data();
    void releaseSelects();
    void pressAloneSelectsNothing();
    void doubleClickTellsTheSelectedIndexAndAccepts();
    void doubleClickOutsideDoesNothing();
    void moveTellsTheIndex_data();
    void moveTellsTheIndex();
    void leavingIsTold();

    // painting
    void gridRepaintsAtOnce_data();
    void gridRepaintsAtOnce();
    void gridIsPainted_data();
    void gridIsPainted();
    void hoverFrameIsPainted_data();
    void hoverFrameIsPainted();
    void hoverAtTheEdgeHasNoFrame_data();
    void hoverAtTheEdgeHasNoFrame();
    void selectionFrameIsPainted_data();
    void selectionFrameIsPainted();
    void gridOfNoTabIsBlack();

    // the tab
    void layoutIsAsTold();
    void paletteColors_data();
    void paletteColors();
    void openingShowsTheColour_data();
    void openingShowsTheColour();
    void backgroundIsReadLast();
    void enableKeys_data();
    void enableKeys();
    void hoverShowsIndexAndRgb();
    void clickOnACellChooses_data();
    void clickOnACellChooses();
    void onlyTheOwningGridHasAFrame();
    void buttonsChoose_data();
    void buttonsChoose();
    void buttonsLeaveTheFrameOfTheGrids();
    void acceleratorsWork_data();
    void acceleratorsWork();
    void altCSelectsTheTextEachTime_data();
    void altCSelectsTheTextEachTime();
    void lettersGoIntoTheTextEntry();
    void showingATrueColourWritesNothing();

    // the text entry
    void textIsValidated_data();
    void textIsValidated();
    void trueColourTextIsKeptOnly_data();
    void trueColourTextIsKeptOnly();
    void keywordStandsForTheCurrentColour_data();
    void keywordStandsForTheCurrentColour();

private:
    QScopedPointer<ModuleSession> m_session;
    QScopedPointer<MessageBoxes> m_messages;
};

void TestColorIndexTab::init()
{
    ZevaTest::init();
    m_session.reset(new ModuleSession);
    m_messages.reset(new MessageBoxes);
}

void TestColorIndexTab::cleanup()
{
    zvcmSetPaletteAvailable(true);
    m_messages.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void TestColorIndexTab::methodsAreAsTold_data()
{
    QTest::addColumn<MetaType>("type");
    QTest::addColumn<QStringList>("methods");
    QTest::newRow("the swatch") << &ZvColorLabel::staticMetaObject << signaturesOf({"doubleClicked()"});
    QTest::newRow("a grid") << &ZvPaleteWnd::staticMetaObject
                            << signaturesOf({"selColorChanged(Zevos::UInt32)", "colorSelected(Zevos::UInt32,int)",
                                             "leaveWidget()"});
    QTest::newRow("the tab") << &ZvIndexColorWnd::staticMetaObject
                             << signaturesOf({"colorSelected(Zevos::UInt32)", "slot_colorChange(Zevos::UInt32)",
                                              "slot_colorSelected(Zevos::UInt32)", "slot_btnByBlockClicked()",
                                              "slot_btnByLayerClicked()", "slot_KeyC_clicked()", "slot_leave_widget()",
                                              "slot_color_label_double_clicked()"});
}

void TestColorIndexTab::methodsAreAsTold()
{
    QFETCH(MetaType, type);
    QFETCH(QStringList, methods);
    QCOMPARE(ownMethods(*type), methods);
}

// ---- a grid by itself -----------------------------------------------------------------------------------------------

static void addGridRows()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("1, even") << 1;
    QTest::newRow("2, odd") << 2;
    QTest::newRow("3, 1 to 9") << 3;
    QTest::newRow("4, 250 to 255") << 4;
}

void TestColorIndexTab::cellsHaveTheirIndices_data()
{
    addGridRows();
}

void TestColorIndexTab::cellsHaveTheirIndices()
{
    QFETCH(int, mode);
    QWidget parent;
    const ZvPaleteWnd *grid = makeGrid(mode, &parent);
    QSet<int> seen;
    for (unsigned row = 0; row < unsigned(gridRow(mode).rows); ++row) {
        for (unsigned col = 0; col < unsigned(gridRow(mode).cols); ++col) {
            const int index = grid->indexAt(row, col);
            unsigned backRow = 99;
            unsigned backCol = 99;
            QVERIFY(ZvPaleteWnd::cellOf(index, unsigned(mode), backRow, backCol));
            QCOMPARE(backRow, row);
            QCOMPARE(backCol, col);
            seen << index;
        }
    }
    QSet<int> expected;
    for (int index = 1; index <= 255; ++index) {
        const int owner = index < 10 ? 3 : index >= 250 ? 4 : index % 2 == 0 ? 1 : 2;
        if (owner == mode)
            expected << index;
    }
    QCOMPARE(seen, expected);
}

void TestColorIndexTab::cornersOfTheGrids_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("col");
    QTest::addColumn<QList<int>>("indices"); // from the top
    QTest::newRow("even, first column") << 1 << 0 << QList<int>{18, 16, 14, 12, 10};
    QTest::newRow("even, last column") << 1 << 23 << QList<int>{248, 246, 244, 242, 240};
    QTest::newRow("odd, first column") << 2 << 0 << QList<int>{11, 13, 15, 17, 19};
    QTest::newRow("odd, last column") << 2 << 23 << QList<int>{241, 243, 245, 247, 249};
    QTest::newRow("standard, first") << 3 << 0 << QList<int>{1};
    QTest::newRow("standard, last") << 3 << 8 << QList<int>{9};
    QTest::newRow("greys, first") << 4 << 0 << QList<int>{250};
    QTest::newRow("greys, last") << 4 << 5 << QList<int>{255};
}

void TestColorIndexTab::cornersOfTheGrids()
{
    QFETCH(int, mode);
    QFETCH(int, col);
    QFETCH(QList<int>, indices);
    QWidget parent;
    const ZvPaleteWnd *grid = makeGrid(mode, &parent);
    for (int row = 0; row < indices.size(); ++row)
        QCOMPARE(grid->indexAt(unsigned(row), unsigned(col)), indices.at(row));
}

void TestColorIndexTab::outsideAGridThereIsNoIndex_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("col");
    QTest::newRow("row too large") << 1 << 5 << 0;
    QTest::newRow("column too large") << 2 << 0 << 24;
    QTest::newRow("second row of one") << 3 << 1 << 0;
    QTest::newRow("column behind the greys") << 4 << 0 << 6;
    QTest::newRow("below zero") << 1 << -1 << 0;
    QTest::newRow("mode 0") << 0 << 0 << 0;
    QTest::newRow("mode 5") << 5 << 0 << 0;
}

void TestColorIndexTab::outsideAGridThereIsNoIndex()
{
    QFETCH(int, mode);
    QFETCH(int, row);
    QFETCH(int, col);
    QWidget parent;
    const GridRow size = mode >= 1 && mode <= 4 ? gridRow(mode) : GridRow{mode, 5, 5, 12};
    const ZvPaleteWnd grid(unsigned(mode), unsigned(size.rows), unsigned(size.cols), unsigned(size.cell), &parent);
    QCOMPARE(grid.indexAt(unsigned(row), unsigned(col)), -1);
}

void TestColorIndexTab::foreignIndicesHaveNoCell_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("index");
    QTest::newRow("odd in the even grid") << 1 << 11;
    QTest::newRow("below the even grid") << 1 << 8;
    QTest::newRow("above the even grid") << 1 << 250;
    QTest::newRow("even in the odd grid") << 2 << 10;
    QTest::newRow("below the odd grid") << 2 << 9;
    QTest::newRow("above the odd grid") << 2 << 251;
    QTest::newRow("0 in the standard grid") << 3 << 0;
    QTest::newRow("10 in the standard grid") << 3 << 10;
    QTest::newRow("249 in the greys") << 4 << 249;
    QTest::newRow("by layer in the greys") << 4 << 256;
    QTest::newRow("none") << 2 << -1;
    QTest::newRow("mode 0") << 0 << 5;
    QTest::newRow("mode 5") << 5 << 5;
}

void TestColorIndexTab::foreignIndicesHaveNoCell()
{
    QFETCH(int, mode);
    QFETCH(int, index);
    unsigned row = 77;
    unsigned col = 88;
    QVERIFY(!ZvPaleteWnd::cellOf(index, unsigned(mode), row, col));
    QCOMPARE(row, 77u);
    QCOMPARE(col, 88u);
}

void TestColorIndexTab::gridTracksTheMouse()
{
    QWidget parent;
    const ZvPaleteWnd *grid = makeGrid(1, &parent);
    QVERIFY(grid->hasMouseTracking());
    QCOMPARE(grid->parentWidget(), &parent);
    QCOMPARE(grid->selected(), 0);
}

void TestColorIndexTab::releaseSelects_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("index"); // -1: nothing is told
    QTest::newRow("first even cell") << 1 << QPointF(3, 3) << 18;
    QTest::newRow("the gap before the first cell") << 1 << QPointF(0, 0) << 18;
    QTest::newRow("the gap right of a cell and below it") << 1 << QPointF(15.2, 13.4) << 28;
    QTest::newRow("rounded into the next column") << 1 << QPointF(13.5, 3) << 28;
    QTest::newRow("rounded down into the first column") << 1 << QPointF(13.4, 3) << 18;
    QTest::newRow("last odd cell") << 2 << QPointF(23 * 14 + 5, 4 * 14 + 5) << 249;
    QTest::newRow("right of the last column") << 1 << QPointF(24 * 14, 3) << -1;
    QTest::newRow("below the last row") << 2 << QPointF(3, 5 * 14) << -1;
    QTest::newRow("left of the grid") << 1 << QPointF(-1, 3) << -1;
    QTest::newRow("above the grid") << 1 << QPointF(3, -1) << -1;
    QTest::newRow("standard 9") << 3 << QPointF(8 * 19 + 9, 9) << 9;
    QTest::newRow("below the standard row") << 3 << QPointF(9, 19) << -1;
    QTest::newRow("grey 255") << 4 << QPointF(5 * 19 + 9, 9) << 255;
}

void TestColorIndexTab::releaseSelects()
{
    QFETCH(int, mode);
    QFETCH(QPointF, position);
    QFETCH(int, index);
    QWidget parent;
    ZvPaleteWnd *grid = makeGrid(mode, &parent);
    grid->setSelected(-1);
    const QSignalSpy spy(grid, &ZvPaleteWnd::colorSelected);
    sendMouse(grid, QEvent::MouseButtonRelease, position);
    QCOMPARE(grid->selected(), index);
    QCOMPARE(spy.size(), index < 0 ? 0 : 1);
    if (index >= 0) {
        QCOMPARE(spy.at(0).at(0).value<Zevos::UInt32>(), Zevos::UInt32(index));
        QCOMPARE(spy.at(0).at(1).toInt(), mode);
    }
}

void TestColorIndexTab::pressAloneSelectsNothing()
{
    QWidget parent;
    ZvPaleteWnd *grid = makeGrid(1, &parent);
    const QSignalSpy spy(grid, &ZvPaleteWnd::colorSelected);
    sendMouse(grid, QEvent::MouseButtonPress, QPointF(5, 5));
    QCOMPARE(spy.size(), 0);
    QCOMPARE(grid->selected(), 0);
}

void TestColorIndexTab::doubleClickTellsTheSelectedIndexAndAccepts()
{
    QDialog dialog;
    ZvPaleteWnd *grid = makeGrid(3, &dialog);
    grid->setSelected(7);
    const QSignalSpy selected(grid, &ZvPaleteWnd::colorSelected);
    const QSignalSpy accepted(&dialog, &QDialog::accepted);
    int toldBefore = -1;
    connect(&dialog, &QDialog::accepted, this, [&] { toldBefore = selected.size(); });
    sendMouse(grid, QEvent::MouseButtonDblClick, cellCentre(0, 0, 17));
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).value<Zevos::UInt32>(), 7u);
    QCOMPARE(selected.at(0).at(1).toInt(), 3);
    QCOMPARE(accepted.size(), 1);
    QCOMPARE(toldBefore, 1); // the answer is there when the dialog ends
}

void TestColorIndexTab::doubleClickOutsideDoesNothing()
{
    QDialog dialog;
    ZvPaleteWnd *grid = makeGrid(3, &dialog);
    const QSignalSpy selected(grid, &ZvPaleteWnd::colorSelected);
    const QSignalSpy accepted(&dialog, &QDialog::accepted);
    sendMouse(grid, QEvent::MouseButtonDblClick, QPointF(9 * 19 + 3, 9));
    QCOMPARE(selected.size(), 0);
    QCOMPARE(accepted.size(), 0);
}

void TestColorIndexTab::moveTellsTheIndex_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("index");
    QTest::newRow("a cell") << 1 << QPointF(5, 5) << 18;
    QTest::newRow("at the very corner") << 2 << QPointF(0, 0) << 11;
    QTest::newRow("the gap right of the last column") << 1 << QPointF(24 * 14 + 1, 5) << -1;
    QTest::newRow("the gap right of column 22") << 1 << QPointF(23 * 14, 5) << 248;
    QTest::newRow("below the last row") << 1 << QPointF(5, 70) << -1;
    QTest::newRow("above the grid") << 1 << QPointF(5, -1) << -1;
}

void TestColorIndexTab::moveTellsTheIndex()
{
    QFETCH(int, mode);
    QFETCH(QPointF, position);
    QFETCH(int, index);
    QWidget parent;
    ZvPaleteWnd *grid = makeGrid(mode, &parent);
    const QSignalSpy spy(grid, &ZvPaleteWnd::selColorChanged);
    sendMouse(grid, QEvent::MouseMove, position, Qt::NoButton);
    QCOMPARE(spy.size(), index < 0 ? 0 : 1);
    if (index >= 0)
        QCOMPARE(spy.at(0).at(0).value<Zevos::UInt32>(), Zevos::UInt32(index));
}

void TestColorIndexTab::leavingIsTold()
{
    QWidget parent;
    ZvPaleteWnd *grid = makeGrid(1, &parent);
    const QSignalSpy spy(grid, &ZvPaleteWnd::leaveWidget);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(grid, &leave);
    QCOMPARE(spy.size(), 1);
}

// ---- painting -------------------------------------------------------------------------------------------------------

void TestColorIndexTab::gridRepaintsAtOnce_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("paints");
    const QPointF cell(9, 9);
    const QPointF outside(9 * 19 + 3, 9);
    QTest::newRow("a move over a cell") << int(QEvent::MouseMove) << cell << 1;
    QTest::newRow("a move outside") << int(QEvent::MouseMove) << outside << 1;
    QTest::newRow("a release on a cell") << int(QEvent::MouseButtonRelease) << cell << 1;
    QTest::newRow("a release outside") << int(QEvent::MouseButtonRelease) << outside << 1;
    QTest::newRow("the pointer leaves") << int(QEvent::Leave) << cell << 1;
    QTest::newRow("a press changes nothing") << int(QEvent::MouseButtonPress) << cell << 0;
}

void TestColorIndexTab::gridRepaintsAtOnce()
{
    QFETCH(int, type);
    QFETCH(QPointF, position);
    QFETCH(int, paints);
    QWidget window;
    ZvPaleteWnd *grid = makeGrid(3, &window);
    grid->resize(200, 25);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    const PaintCount count(grid);
    if (type == QEvent::Leave) {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(grid, &leave);
    } else {
        sendMouse(grid, QEvent::Type(type), position, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton);
    }
    QCOMPARE(count.count, paints);
}

void TestColorIndexTab::gridIsPainted_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("background");
    for (const GridRow &grid : kGrids) {
        QTest::addRow("grid %d, no background", grid.mode) << grid.mode << kMissing;
        QTest::addRow("grid %d, dark background", grid.mode) << grid.mode << int(0xFF30281E);
        QTest::addRow("grid %d, light background", grid.mode) << grid.mode << 0xFFFFFF;
    }
}

void TestColorIndexTab::gridIsPainted()
{
    QFETCH(int, mode);
    QFETCH(int, background);
    ColorKeys keys{{"clrMethod", 192}, {"selectClr", 256}};
    if (background != kMissing)
        keys << ColorKey("backgroundColor", background);
    ColorDialogRun run(keys);
    QVERIFY(run.show());
    ZvPaleteWnd *grid = run.grid(mode);
    const unsigned expected = background == kMissing ? 0u : unsigned(background);
    COMPARE_PICTURES(pictureOf(grid), expectedGrid(grid->size(), mode, expected, -1, -1, -1, -1));
}

void TestColorIndexTab::hoverFrameIsPainted_data()
{
    addGridRows();
}

void TestColorIndexTab::hoverFrameIsPainted()
{
    QFETCH(int, mode);
    ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    QVERIFY(run.show());
    ZvPaleteWnd *grid = run.grid(mode);
    const int row = gridRow(mode).rows / 2;
    const int col = gridRow(mode).cols / 2;
    sendMouse(grid, QEvent::MouseMove, cellCentre(row, col, gridRow(mode).cell), Qt::NoButton);
    COMPARE_PICTURES(pictureOf(grid), expectedGrid(grid->size(), mode, 0, row, col, -1, -1));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(grid, &leave);
    COMPARE_PICTURES(pictureOf(grid), expectedGrid(grid->size(), mode, 0, -1, -1, -1, -1));
}

void TestColorIndexTab::hoverAtTheEdgeHasNoFrame_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::newRow("x is 0") << QPointF(0, 5);
    QTest::newRow("y is 0") << QPointF(5, 0);
    QTest::newRow("the gap right of the last column") << QPointF(24 * 14 + 1, 5);
    QTest::newRow("below the last row") << QPointF(5, 71);
}

void TestColorIndexTab::hoverAtTheEdgeHasNoFrame()
{
    QFETCH(QPointF, position);
    ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    QVERIFY(run.show());
    ZvPaleteWnd *grid = run.grid(1);
    sendMouse(grid, QEvent::MouseMove, position, Qt::NoButton);
    COMPARE_PICTURES(pictureOf(grid), expectedGrid(grid->size(), 1, 0, -1, -1, -1, -1));
}

void TestColorIndexTab::selectionFrameIsPainted_data()
{
    addGridRows();
}

void TestColorIndexTab::selectionFrameIsPainted()
{
    QFETCH(int, mode);
    ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    QVERIFY(run.show());
    ZvPaleteWnd *grid = run.grid(mode);
    const int row = gridRow(mode).rows - 1;
    sendMouse(grid, QEvent::MouseButtonRelease, cellCentre(row, 1, gridRow(mode).cell));
    COMPARE_PICTURES(pictureOf(grid), expectedGrid(grid->size(), mode, 0, -1, -1, row, 1));
}

void TestColorIndexTab::gridOfNoTabIsBlack()
{
    QWidget parent;
    ZvPaleteWnd *grid = makeGrid(4, &parent);
    grid->resize(120, 25);
    QImage expected(grid->size(), QImage::Format_RGB32);
    expected.fill(Qt::white);
    for (int col = 0; col < 6; ++col)
        setPixels(expected, col * 19 + 2, 2, col * 19 + 18, 18, qRgb(0, 0, 0));
    for (int col = 0; col < 6; ++col)
        setThinOutline(expected, col * 19 + 2, 2, col * 19 + 19, 19);
    COMPARE_PICTURES(pictureOf(grid), expected);
}

// ---- the tab --------------------------------------------------------------------------------------------------------

void TestColorIndexTab::layoutIsAsTold()
{
    ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    QVERIFY(run.show());
    auto *layout = qobject_cast<QVBoxLayout *>(run.indexTab()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->spacing(), 2);
    QCOMPARE(layout->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(layout->count(), 6);
    QCOMPARE(layout->itemAt(1)->widget(), run.grid(1));
    QCOMPARE(layout->itemAt(2)->widget(), run.grid(2));

    auto *caption = qobject_cast<QLabel *>(layout->itemAt(0)->layout()->itemAt(0)->widget());
    QCOMPARE(caption->text(), QStringLiteral("Zevara 颜色索引(ACI):"));
    QCOMPARE(caption->height(), 20);
    for (int i = 0; i < 2; ++i) {
        auto *label = qobject_cast<QLabel *>(layout->itemAt(3)->layout()->itemAt(i)->widget());
        QCOMPARE(label->text(), QString());
        QCOMPARE(label->height(), 20);
    }

    QLayout *standard = layout->itemAt(4)->layout();
    QCOMPARE(standard->itemAt(0)->widget(), run.grid(3));
    QCOMPARE(run.grid(3)->height(), 25);
    const QString texts[] = {QStringLiteral("ByLayer(&L)"), QStringLiteral("ByBlock(&K)")};
    for (int i = 0; i < 2; ++i) {
        auto *button = qobject_cast<QPushButton *>(standard->itemAt(i + 1)->widget());
        QCOMPARE(button->text(), texts[i]);
        QCOMPARE(button->width(), 75);
        QCOMPARE(button->styleSheet(), QStringLiteral("color:#666666"));
    }

    auto *last = qobject_cast<QHBoxLayout *>(layout->itemAt(5)->layout());
    QCOMPARE(last->count(), 4);
    QCOMPARE(last->stretch(1), 6);
    QCOMPARE(last->stretch(3), 4);
    auto *swatch = qobject_cast<ZvColorLabel *>(last->itemAt(2)->widget());
    QCOMPARE(swatch->frameShape(), QFrame::Box);
    QCOMPARE(swatch->size(), QSize(50, 50));
    QCOMPARE(swatch->styleSheet(), QStringLiteral("QLabel { background-color : white; color : gray; }"));
    QLayout *column = last->itemAt(0)->layout();
    auto *frame = qobject_cast<QFrame *>(column->itemAt(0)->widget());
    QCOMPARE(frame->size(), QSize(120, 35));
    QCOMPARE(frame->frameStyle(), 32);
    QCOMPARE(frame->layout()->contentsMargins(), QMargins());
    QCOMPARE(frame->layout()->spacing(), 0);
    QCOMPARE(frame->layout()->itemAt(0)->widget(), run.grid(4));
    QLayout *textRow = column->itemAt(1)->layout();
    auto *label = qobject_cast<QLabel *>(textRow->itemAt(0)->widget());
    QCOMPARE(label->text(), QStringLiteral("颜色(&C):"));
    QCOMPARE(label->buddy(), run.indexText());
    QCOMPARE(run.indexText()->width(), 170);
    QCOMPARE(qobject_cast<QHBoxLayout *>(textRow)->stretch(2), 2);

    // all cells can be seen
    for (const GridRow &grid : kGrids) {
        const QSize need = run.grid(grid.mode)->gridSize();
        QVERIFY(run.grid(grid.mode)->width() >= need.width() && run.grid(grid.mode)->height() >= need.height());
    }
}

void TestColorIndexTab::paletteColors_data()
{
    QTest::addColumn<unsigned>("index");
    QTest::addColumn<int>("background");
    QTest::addColumn<bool>("hasPalette");
    QTest::addColumn<int>("color");
    QTest::newRow("red") << 1u << 0 << true << packed(255, 0, 0);
    QTest::newRow("white on dark") << 7u << int(0xFF30281E) << true << packed(255, 255, 255);
    QTest::newRow("black on white") << 7u << 0xFFFFFF << true << 0;
    QTest::newRow("255") << 255u << 0 << true << packed(255, 255, 255);
    QTest::newRow("256 is outside") << 256u << 0 << true << 0;
    QTest::newRow("-1 is outside") << unsigned(-1) << 0 << true << 0;
    QTest::newRow("no palette") << 1u << 0 << false << 0;
}

void TestColorIndexTab::paletteColors()
{
    QFETCH(unsigned, index);
    QFETCH(int, background);
    QFETCH(bool, hasPalette);
    QFETCH(int, color);
    const ColorDialogRun run({{"backgroundColor", background}});
    zvcmSetPaletteAvailable(hasPalette);
    QCOMPARE(run.indexTab()->paletteColor(index), unsigned(color));
}

void TestColorIndexTab::openingShowsTheColour_data()
{
    QTest::addColumn<ColorKeys>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("swatch"); // empty: as made
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("methodAfter");
    QTest::newRow("nothing is by block") << ColorKeys{} << "BYBLOCK"
                                         << "" << 0 << kMissing;
    QTest::newRow("by block") << ColorKeys{{"clrMethod", 193}, {"selectClr", 0}} << "BYBLOCK"
                              << "" << 0 << 193;
    QTest::newRow("by layer") << ColorKeys{{"clrMethod", 192}, {"selectClr", 256}} << "BYLAYER"
                              << "" << 256 << 192;
    QTest::newRow("by layer with the layer's colour")
        << ColorKeys{{"clrMethod", 192}, {"selectClr", 256}, {"layerClr", packed(1, 2, 3)}} << "BYLAYER"
        << "1,2,3" << 256 << 192;
    QTest::newRow("by block with the layer's colour")
        << ColorKeys{{"clrMethod", 193}, {"selectClr", 0}, {"layerClr", packed(1, 2, 3)}} << "BYBLOCK"
        << "1,2,3" << 0 << 193;
    QTest::newRow("by layer under method 195") << ColorKeys{{"clrMethod", 195}, {"selectClr", 256}} << "BYLAYER"
                                               << "" << 256 << 195;
    QTest::newRow("by layer forbidden reads white")
        << ColorKeys{{"clrMethod", 192}, {"selectClr", 256}, {"isByLayerEnable", 0}} << "白"
        << "" << 256 << 192;
    QTest::newRow("by layer named as allowed reads white as well")
        << ColorKeys{{"clrMethod", 192}, {"selectClr", 256}, {"isByLayerEnable", 1}} << "白"
        << "" << 256 << 192;
    QTest::newRow("value below zero counts as above 255")
        << ColorKeys{{"clrMethod", 195}, {"selectClr", -1}} << "BYLAYER"
        << "" << -1 << 195;
    QTest::newRow("7 is white") << ColorKeys{{"clrMethod", 195}, {"selectClr", 7}} << "白"
                                << "255,255,255" << 7 << 195;
    QTest::newRow("8 has no name") << ColorKeys{{"clrMethod", 195}, {"selectClr", 8}} << "8"
                                   << "128,128,128" << 8 << 195;
    QTest::newRow("6 is magenta") << ColorKeys{{"clrMethod", 195}, {"selectClr", 6}} << "洋红"
                                  << "255,0,255" << 6 << 195;
    QTest::newRow("255") << ColorKeys{{"clrMethod", 195}, {"selectClr", 255}} << "255"
                         << "255,255,255" << 255 << 195;
    QTest::newRow("an index without a method is written as one") << ColorKeys{{"selectClr", 3}} << "绿"
                                                                 << "0,255,0" << 3 << 195;
    QTest::newRow("an index under by layer is written as one")
        << ColorKeys{{"clrMethod", 192}, {"selectClr", 3}} << "绿"
        << "0,255,0" << 3 << 195;
    QTest::newRow("true colour shows red for blue")
        << ColorKeys{{"clrMethod", 194}, {"selectClr", packed(10, 20, 30)}} << "10,20,10"
        << "10,20,10" << -1 << 194;
    QTest::newRow("unknown method is a true colour")
        << ColorKeys{{"clrMethod", 200}, {"selectClr", packed(4, 5, 6)}} << "4,5,4"
        << "4,5,4" << -1 << 200;
}

void TestColorIndexTab::openingShowsTheColour()
{
    QFETCH(ColorKeys, keys);
    QFETCH(QString, text);
    QFETCH(QString, swatch);
    QFETCH(int, selected);
    QFETCH(int, methodAfter);
    const ColorDialogRun run(keys);
    QCOMPARE(run.indexText()->text(), text);
    const QString expected = swatch.isEmpty()
        ? QStringLiteral("QLabel { background-color : white; color : gray; }")
        : QStringLiteral("QLabel{ background-color:rgb(%1);  color : gray; }").arg(swatch);
    QCOMPARE(run.indexTab()->findChild<ZvColorLabel *>()->styleSheet(), expected);
    for (int mode = 1; mode <= 4; ++mode)
        QCOMPARE(run.grid(mode)->selected(), selected);
    QCOMPARE(run.method(), methodAfter);
}

void TestColorIndexTab::backgroundIsReadLast()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 7}, {"backgroundColor", 0xFFFFFF}});
    const QString white = QStringLiteral("QLabel{ background-color:rgb(255,255,255);  color : gray; }");
    QCOMPARE(run.indexTab()->findChild<ZvColorLabel *>()->styleSheet(), white);
    QCOMPARE(run.indexTab()->paletteColor(7), 0u); // from now on it counts
}

void TestColorIndexTab::enableKeys_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("asNumber"); // else as a bool
    QTest::addColumn<bool>("layerEnabled");
    QTest::addColumn<bool>("blockEnabled");
    QTest::addColumn<bool>("layerKey"); // pressing L still works
    QTest::addColumn<bool>("blockKey");
    const QByteArray byLayer("isByLayerEnable");
    const QByteArray byBlock("isByBLockEnable");
    QTest::newRow("none") << QByteArray() << 0 << false << true << true << true << true;
    QTest::newRow("by layer off") << byLayer << 0 << false << false << true << false << true;
    QTest::newRow("by layer on kills its accelerator") << byLayer << 1 << false << true << true << false << true;
    QTest::newRow("by block off") << byBlock << 0 << false << true << false << true << false;
    QTest::newRow("by block on kills its accelerator") << byBlock << 1 << false << true << true << true << false;
    QTest::newRow("by layer off by a number") << byLayer << 0 << true << false << true << false << true;
    QTest::newRow("by layer on by a number") << byLayer << 1 << true << true << true << false << true;
    QTest::newRow("by block off by a number") << byBlock << 0 << true << true << false << true << false;
    QTest::newRow("another spelling is no key")
        << QByteArray("isByBlockEnable") << 0 << false << true << true << true << true;
}

void TestColorIndexTab::enableKeys()
{
    QFETCH(QByteArray, key);
    QFETCH(int, value);
    QFETCH(bool, layerEnabled);
    QFETCH(bool, blockEnabled);
    QFETCH(bool, layerKey);
    QFETCH(bool, blockKey);
    QFETCH(bool, asNumber);
    const ZvJsonPtr params = colorParams({{"clrMethod", 195}, {"selectClr", 1}});
    if (asNumber)
        params->SetDataI(key.constData(), value);
    else if (!key.isEmpty())
        params->SetDataB(key.constData(), value != 0);
    const ColorDialogRun run(params);
    QCOMPARE(run.buttonOf(QStringLiteral("ByLayer(&L)"))->isEnabled(), layerEnabled);
    QCOMPARE(run.buttonOf(QStringLiteral("ByBlock(&K)"))->isEnabled(), blockEnabled);
    int afterL = 0;
    int afterK = 0;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QTest::keyClick(dialog, Qt::Key_L);
        afterL = run.method();
        run.params->SetDataI("clrMethod", 195);
        QTest::keyClick(dialog, Qt::Key_K);
        afterK = run.method();
        dialog->reject();
    });
    run.adapter->doModal();
    QVERIFY(driver.finished());
    QCOMPARE(afterL, layerKey ? 192 : 195);
    QCOMPARE(afterK, blockKey ? 193 : 195);
}

void TestColorIndexTab::hoverShowsIndexAndRgb()
{
    ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    QVERIFY(run.show());
    QLayout *row = run.indexTab()->layout()->itemAt(3)->layout();
    auto *index = qobject_cast<QLabel *>(row->itemAt(0)->widget());
    auto *rgb = qobject_cast<QLabel *>(row->itemAt(1)->widget());
    sendMouse(run.grid(3), QEvent::MouseMove, cellCentre(0, 3, 17), Qt::NoButton);
    QCOMPARE(index->text(), QStringLiteral("索引颜色: 4"));
    QCOMPARE(rgb->text(), QStringLiteral("RGB: 0, 255, 255"));
    sendMouse(run.grid(1), QEvent::MouseMove, cellCentre(4, 0, 12), Qt::NoButton);
    QCOMPARE(index->text(), QStringLiteral("索引颜色: 10"));
    QCOMPARE(rgb->text(), QStringLiteral("RGB: 255, 0, 0"));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(run.grid(1), &leave);
    QCOMPARE(index->text(), QString());
    QCOMPARE(rgb->text(), QString());
    QCOMPARE(run.method(), 192); // hovering chooses nothing
}

void TestColorIndexTab::clickOnACellChooses_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("col");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    const QString names[] = {QStringLiteral("红"), QStringLiteral("黄"),   QStringLiteral("绿"), QStringLiteral("青"),
                             QStringLiteral("蓝"), QStringLiteral("洋红"), QStringLiteral("白")};
    for (int i = 0; i < 7; ++i)
        QTest::addRow("named colour %d", i + 1) << 3 << 0 << i << i + 1 << names[i];
    QTest::newRow("8 by number") << 3 << 0 << 7 << 8 << "8";
    QTest::newRow("even") << 1 << 2 << 3 << (3 * 5 + 3) * 2 + 8 << QString::number((3 * 5 + 3) * 2 + 8);
    QTest::newRow("odd") << 2 << 2 << 3 << (2 + 15 + 5) * 2 + 1 << QString::number((2 + 15 + 5) * 2 + 1);
    QTest::newRow("grey") << 4 << 0 << 2 << 252 << "252";
}

void TestColorIndexTab::clickOnACellChooses()
{
    QFETCH(int, mode);
    QFETCH(int, row);
    QFETCH(int, col);
    QFETCH(int, index);
    QFETCH(QString, text);
    ColorDialogRun run({{"clrMethod", 192}, {"selectClr", 256}});
    QVERIFY(run.show());
    QTest::mouseClick(run.grid(mode), Qt::LeftButton, Qt::NoModifier, cellCentre(row, col, gridRow(mode).cell));
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), index);
    QCOMPARE(run.indexText()->text(), text);
    const QRgb color = toRgb(zvcmAcadPalette(0)[index]);
    QCOMPARE(run.indexTab()->findChild<ZvColorLabel *>()->styleSheet(),
             QStringLiteral("QLabel{ background-color:rgb(%1,%2,%3);  color : gray; }")
                 .arg(qRed(color))
                 .arg(qGreen(color))
                 .arg(qBlue(color)));
    // and the swatch is of that colour inside its frame
    QCOMPARE(pictureOf(run.indexTab()->findChild<ZvColorLabel *>()).pixel(25, 25), color);
    unsigned accepted = 0;
    QVERIFY(run.indexTab()->selectedIndex(accepted));
    QCOMPARE(accepted, unsigned(index));
}

void TestColorIndexTab::onlyTheOwningGridHasAFrame()
{
    ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 252}});
    QVERIFY(run.show());
    QTest::mouseClick(run.grid(1), Qt::LeftButton, Qt::NoModifier, cellCentre(0, 0, 12));
    for (int mode = 1; mode <= 4; ++mode) {
        ZvPaleteWnd *grid = run.grid(mode);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(grid, &leave);
        const int frame = mode == 1 ? 0 : -1;
        COMPARE_PICTURES(pictureOf(grid), expectedGrid(grid->size(), mode, 0, -1, -1, frame, frame));
    }
}

void TestColorIndexTab::buttonsChoose_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("layerColor");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("color");
    QTest::addColumn<QString>("swatch");
    QTest::newRow("by block") << "ByBlock(&K)" << false << "BYBLOCK" << 193 << 0 << "255,255,255";
    QTest::newRow("by block beside a layer's colour")
        << "ByBlock(&K)" << true << "BYBLOCK" << 193 << 0 << "255,255,255";
    QTest::newRow("by layer keeps the swatch") << "ByLayer(&L)" << false << "BYLAYER" << 192 << 256 << "255,0,0";
    QTest::newRow("by layer shows the layer's colour") << "ByLayer(&L)" << true << "BYLAYER" << 192 << 256 << "1,2,3";
}

void TestColorIndexTab::buttonsChoose()
{
    QFETCH(QString, button);
    QFETCH(bool, layerColor);
    QFETCH(QString, text);
    QFETCH(int, method);
    QFETCH(int, color);
    QFETCH(QString, swatch);
    ColorKeys keys{{"clrMethod", 195}, {"selectClr", 1}};
    if (layerColor)
        keys << ColorKey("layerClr", packed(1, 2, 3));
    ColorDialogRun run(keys);
    QVERIFY(run.show());
    QApplication::setActiveWindow(run.dialog);
    QTest::mouseClick(run.buttonOf(button), Qt::LeftButton);
    QCOMPARE(run.dialog->focusWidget(), run.buttonOf(button));
    QCOMPARE(run.indexText()->text(), text);
    QCOMPARE(run.method(), method);
    QCOMPARE(run.color(), color);
    QCOMPARE(run.indexTab()->findChild<ZvColorLabel *>()->styleSheet(),
             QStringLiteral("QLabel{ background-color:rgb(%1);  color : gray; }").arg(swatch));
    unsigned index = 99;
    QVERIFY(run.indexTab()->selectedIndex(index));
    QCOMPARE(index, unsigned(color));
}

void TestColorIndexTab::buttonsLeaveTheFrameOfTheGrids()
{
    ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 1}});
    QVERIFY(run.show());
    QTest::mouseClick(run.buttonOf(QStringLiteral("ByLayer(&L)")), Qt::LeftButton);
    QTest::mouseClick(run.buttonOf(QStringLiteral("ByBlock(&K)")), Qt::LeftButton);
    for (int mode = 1; mode <= 4; ++mode)
        QCOMPARE(run.grid(mode)->selected(), 1);
}

void TestColorIndexTab::acceleratorsWork_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifier");
    QTest::addColumn<int>("method");
    QTest::addColumn<bool>("textHasFocus");
    QTest::newRow("L") << int(Qt::Key_L) << 0 << 192 << false;
    QTest::newRow("K") << int(Qt::Key_K) << 0 << 193 << false;
    QTest::newRow("C") << int(Qt::Key_C) << 0 << 195 << true;
    QTest::newRow("Alt and C") << int(Qt::Key_C) << int(Qt::AltModifier) << 195 << true;
}

void TestColorIndexTab::acceleratorsWork()
{
    QFETCH(int, key);
    QFETCH(int, modifier);
    QFETCH(int, method);
    QFETCH(bool, textHasFocus);
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 3}});
    bool hasFocus = false;
    QString selected;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QTest::keyClick(dialog, Qt::Key(key), Qt::KeyboardModifiers(modifier));
        hasFocus = run.indexText()->hasFocus();
        selected = run.indexText()->selectedText();
        dialog->reject();
    });
    run.adapter->doModal();
    QVERIFY(driver.finished());
    QCOMPARE(run.method(), method);
    QCOMPARE(hasFocus, textHasFocus);
    QCOMPARE(selected, textHasFocus ? QStringLiteral("绿") : QString());
}

void TestColorIndexTab::altCSelectsTheTextEachTime_data()
{
    QTest::addColumn<bool>("fromTheEntry");
    QTest::newRow("from a button") << false;
    QTest::newRow("from the entry itself") << true;
}

void TestColorIndexTab::altCSelectsTheTextEachTime()
{
    QFETCH(bool, fromTheEntry);
    // The label's mnemonic is the same key: whichever is called, the text is ready to be typed over.
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 3}});
    QStringList selected;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        for (int i = 0; i < 3; ++i) {
            (fromTheEntry ? static_cast<QWidget *>(run.indexText()) : run.button(0))->setFocus();
            run.indexText()->deselect();
            QTest::keyClick(dialog, Qt::Key_C, Qt::AltModifier);
            selected << run.indexText()->selectedText();
        }
        dialog->reject();
    });
    run.adapter->doModal();
    QVERIFY(driver.finished());
    const QString green = QStringLiteral("绿");
    QCOMPARE(selected, (QStringList{green, green, green}));
}

void TestColorIndexTab::lettersGoIntoTheTextEntry()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 3}});
    QString text;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        run.indexText()->setFocus();
        run.indexText()->selectAll();
        QTest::keyClicks(run.indexText(), QStringLiteral("lkc"));
        text = run.indexText()->text();
        dialog->reject();
    });
    run.adapter->doModal();
    QVERIFY(driver.finished());
    QCOMPARE(text, QStringLiteral("lkc"));
    QCOMPARE(run.method(), 195);
}

void TestColorIndexTab::showingATrueColourWritesNothing()
{
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 3}});
    run.indexTab()->showTrueColor(10, 20, 30);
    QCOMPARE(run.indexText()->text(), QStringLiteral("10,20,30"));
    QCOMPARE(run.indexTab()->findChild<ZvColorLabel *>()->styleSheet(),
             QStringLiteral("QLabel{ background-color:rgb(10,20,30);  color : gray; }"));
    for (int mode = 1; mode <= 4; ++mode)
        QCOMPARE(run.grid(mode)->selected(), -1);
    QCOMPARE(run.method(), 195);
    QCOMPARE(run.color(), 3);
}

// ---- the text entry -------------------------------------------------------------------------------------------------

void TestColorIndexTab::textIsValidated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("index"); // kMissing: left alone
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("color");
    // in front of all: by block, so that what is written can be seen
    QTest::newRow("BYLAYER is the current colour") << "BYLAYER" << true << 0 << 193 << 0;
    QTest::newRow("BYBLOCK is the current colour") << "BYBLOCK" << true << 0 << 193 << 0;
    QTest::newRow("ByLayer is no keyword") << "ByLayer" << false << kMissing << 193 << 0;
    QTest::newRow("byblock is no keyword") << "byblock" << false << kMissing << 193 << 0;
    QTest::newRow("empty") << "" << false << kMissing << 193 << 0;
    const QString names[] = {QStringLiteral("红"), QStringLiteral("黄"),   QStringLiteral("绿"), QStringLiteral("青"),
                             QStringLiteral("蓝"), QStringLiteral("洋红"), QStringLiteral("白")};
    for (int i = 0; i < 7; ++i)
        QTest::addRow("name %d passes without being written", i + 1) << names[i] << true << i + 1 << 193 << 0;
    QTest::newRow("black is no name") << "黑" << false << kMissing << 193 << 0;
    QTest::newRow("0") << "0" << true << 0 << 195 << 0;
    QTest::newRow("1") << "1" << true << 1 << 195 << 1;
    QTest::newRow("255") << "255" << true << 255 << 195 << 255;
    QTest::newRow("256") << "256" << true << 256 << 195 << 256;
    QTest::newRow("257") << "257" << false << kMissing << 193 << 0;
    QTest::newRow("above a signed number") << "2147483648" << false << kMissing << 193 << 0;
    QTest::newRow("above an unsigned number") << "4294967297" << false << kMissing << 193 << 0;
    QTest::newRow("below zero") << "-1" << false << kMissing << 193 << 0;
    QTest::newRow("a fraction") << "1.5" << false << kMissing << 193 << 0;
    QTest::newRow("hexadecimal") << "0x10" << false << kMissing << 193 << 0;
    QTest::newRow("a word") << "red" << false << kMissing << 193 << 0;
    QTest::newRow("two parts") << "1,2" << false << kMissing << 193 << 0;
    QTest::newRow("four parts") << "1,2,3,4" << false << kMissing << 193 << 0;
    QTest::newRow("three parts, none a number") << "a,b,c" << true << kMissing << 193 << 0;
    QTest::newRow("three parts, the last empty") << "1,2," << true << kMissing << 193 << 0;
    QTest::newRow("three parts, one below zero") << "1,-2,3" << true << kMissing << 193 << 0;
    QTest::newRow("a new true colour") << "1,2,3" << false << kMissing << 193 << 0;
}

void TestColorIndexTab::textIsValidated()
{
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    QFETCH(int, index);
    QFETCH(int, method);
    QFETCH(int, color);
    const ColorDialogRun run({{"clrMethod", 193}, {"selectClr", 0}});
    run.indexText()->setText(text);
    unsigned result = unsigned(kMissing);
    QCOMPARE(run.indexTab()->selectedIndex(result), accepted);
    QCOMPARE(int(result), index);
    QCOMPARE(run.method(), method);
    QCOMPARE(run.color(), color);
    QCOMPARE(run.indexText()->text(), text);
    QCOMPARE(m_messages->lines(), accepted ? QStringList() : QStringList{badIndexText()});
}

void TestColorIndexTab::trueColourTextIsKeptOnly_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("color");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("the colour of the parameters") << 194 << packed(10, 20, 30) << "10,20,30" << true;
    QTest::newRow("components are cut to 8 bits") << 194 << packed(10, 20, 30) << "266,276,286" << true;
    QTest::newRow("another red") << 194 << packed(10, 20, 30) << "11,20,30" << false;
    QTest::newRow("another green") << 194 << packed(10, 20, 30) << "10,21,30" << false;
    QTest::newRow("another blue") << 194 << packed(10, 20, 30) << "10,20,31" << false;
    QTest::newRow("the same value by index") << 195 << packed(10, 20, 30) << "10,20,30" << false;
}

void TestColorIndexTab::trueColourTextIsKeptOnly()
{
    QFETCH(int, method);
    QFETCH(int, color);
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    const ColorDialogRun run({{"clrMethod", 194}, {"selectClr", color}});
    run.params->SetDataI("clrMethod", method);
    run.indexText()->setText(text);
    unsigned index = 77;
    QCOMPARE(run.indexTab()->selectedIndex(index), accepted);
    QCOMPARE(index, 77u);
    QCOMPARE(run.method(), method);
    QCOMPARE(run.color(), color);
    QCOMPARE(m_messages->lines().size(), accepted ? 0 : 1);
}

void TestColorIndexTab::keywordStandsForTheCurrentColour_data()
{
    QTest::addColumn<QString>("before"); // typed and taken
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("index");
    QTest::newRow("BYLAYER after a number") << "42"
                                            << "BYLAYER" << 42;
    QTest::newRow("BYBLOCK after a number") << "42"
                                            << "BYBLOCK" << 42;
    QTest::newRow("BYLAYER after a name") << "绿"
                                          << "BYLAYER" << 3;
    QTest::newRow("BYBLOCK after by layer's index") << "256"
                                                    << "BYBLOCK" << 256;
    QTest::newRow("a refused number is not taken") << "257"
                                                   << "BYLAYER" << 5;
    QTest::newRow("three parts change nothing") << "a,b,c"
                                                << "BYLAYER" << 5;
}

void TestColorIndexTab::keywordStandsForTheCurrentColour()
{
    QFETCH(QString, before);
    QFETCH(QString, keyword);
    QFETCH(int, index);
    const ColorDialogRun run({{"clrMethod", 195}, {"selectClr", 5}});
    unsigned result = 0;
    run.indexText()->setText(before);
    run.indexTab()->selectedIndex(result);
    const QList<int> written{run.method(), run.color()};
    run.indexText()->setText(keyword);
    QVERIFY(run.indexTab()->selectedIndex(result));
    QCOMPARE(result, unsigned(index));
    QCOMPARE((QList<int>{run.method(), run.color()}), written); // the keyword writes nothing
}

ZEVA_TEST_MAIN(TestColorIndexTab)
#include "tst_colorindextab.moc"
