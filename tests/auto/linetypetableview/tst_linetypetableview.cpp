// SPDX-License-Identifier: MIT
#include "dialogbag.h"
#include "dialogstandin.h"
#include "drawingtest.h"
#include "menudriver.h"
#include "modaldriver.h"
#include "paintcount.h"
#include "zvpreviewitemdelegate.h"
#include "zvqtlinetypetableview.h"
#include "zvsortfilterproxymodel.h"

#include "utils/zventityimage.h"

#include <QAbstractButton>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>

#include <memory>

Q_DECLARE_METATYPE(ZvJsonPtr)

namespace {

typedef ZvQtLinetypeTableView View;

struct Row
{
    int idx;
    const char *name;
    const char *comments;
    int xref;
};

ZvJsonPtr element(const Row &row)
{
    const ZvJsonPtr node = ElementValue::createObject(IElementValueBase::kObject);
    node->SetDataI("idx", row.idx);
    node->SetDataS("name", row.name);
    node->SetDataS("comments", row.comments);
    node->SetDataI("xref", row.xref);
    return node;
}

ZvJsonPtr bagOf(const std::vector<ZvJsonPtr> &elements)
{
    const ZvJsonPtr array = ElementValue::createObject(IElementValueBase::kArray);
    for (const ZvJsonPtr &node : elements)
        array->append(node);
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    bag->SetDataJ("elements", array);
    return bag;
}

ZvJsonPtr bagOf(const std::vector<Row> &rows)
{
    std::vector<ZvJsonPtr> elements;
    for (const Row &row : rows)
        elements.push_back(element(row));
    return bagOf(elements);
}

/// Names in an order that no sorting gives.
std::vector<Row> sixRows()
{
    return {{10, "ByLayer", "of the layer", 0}, {11, "ByBlock", "of the block", 0}, {12, "Continuous", "solid", 0},
            {13, "DASHED", "b - -", 0},         {14, "ANGLE", "c _ .", 0},          {15, "ZIGZAG", "a /\\", 0}};
}

/// Leftmost and rightmost pixel that is not transparent; -1 for none.
QPair<int, int> inkExtent(const QPixmap &picture)
{
    const QImage image = picture.toImage();
    int first = -1;
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qAlpha(image.pixel(x, y)) == 0)
                continue;
            first = first < 0 ? x : first;
            last = x;
            break;
        }
    }
    return {first, last};
}

} // namespace

class tst_linetypetableview : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void aNewTable();
    void theMixinIsAtRest();
    void theMetatypeHasItsName();
    void aDefaultRecordStandsForNoRow();

    void loadingFillsThreeColumns();
    void loadingWithWhatTheBagLacks_data();
    void loadingWithWhatTheBagLacks();
    void loadingAgainReplacesTheRows();
    void xrefRowsByMode_data();
    void xrefRowsByMode();
    void onlyAnXrefOfOneIsLeftOut();

    void sortingLeavesTheFirstTwoRowsOnTop_data();
    void sortingLeavesTheFirstTwoRowsOnTop();
    void aClickOnTheHeaderSorts();
    void lessThanOfNoIndex();

    void clicksAndMovesTellTheirRow();
    void aDoubleClickTellsBothIndexes();
    void otherModesTellNothingOfTheMouse_data();
    void otherModesTellNothingOfTheMouse();
    void aHostMayWireThemItself();
    void aPressInTheBlankSpace();
    void aPressBetweenTwoPixels_data();
    void aPressBetweenTwoPixels();
    void theHostHearsOfABlankPressBeforeItCounts();
    void afterABlankPressTheDataIsRefused();
    void theMessageOfARefusal();
    void keyboardMovesDoNotForgetTheBlankPress();
    void ctrlASelectsAll_data();
    void ctrlASelectsAll();
    void allAreSelectedAsTheClassDoes();
    void keysGoPastTheTable();
    void theRowMenu_data();
    void theRowMenu();
    void theRowMenuNeedsARow();
    void theHeaderMenuWidensTheColumns();
    void theMenusComeWhereThePointerIs();
    void otherModesHaveNoMenus_data();
    void otherModesHaveNoMenus();
    void noCellShowsTheFocus();

    void theCurrentRow();
    void noCurrentRow();
    void anEmptyRowHoldsNoRecord();
    void theSelectedRows();
    void selectingByName_data();
    void selectingByName();
    void recordsByModelIndex();
    void indexIsOfTheSortedTable();

    void renamingInAnEditor_data();
    void renamingInAnEditor();
    void anUnchangedNameAsksNobody();
    void theHostMayChangeTheName();
    void theHostMayRenameTheRowItself();
    void withoutAHostARenameIsRefused();
    void editorsOfOtherKindsWriteNothing();
    void settingTheNameOfTheCurrentRow();
    void settingTheNameByModelIndex();
    void theOldNameKeepsItsPicture();
    void aNewNameTakesThePictureOver();
    void aNewNameWithoutAPictureIsDrawn();
    void settingTheComments();

    void picturesAreDrawnOncePerName();
    void theRasterIsWiderThanTheCell_data();
    void theRasterIsWiderThanTheCell();
    void thePictureIsCroppedAndTransparent();
    void thePictureStandsInTheMiddleColumn();
    void namesWithoutAPicture_data();
    void namesWithoutAPicture();
    void aMissingPictureAsksForAPaint();
    void dependentLineTypesByMode();
    void rasterImageArguments_data();
    void rasterImageArguments();
    void patternsAreScaledToTheWidth();
    void recordsThatCannotBeOpened();
    void withoutADocument();
    void scrollingDrawsNothingAnew();

private:
    View &show(int mode, const ZvJsonPtr &bag);
    QStandardItemModel &source() { return *m_view->findChild<QStandardItemModel *>(); }
    QPoint cell(int row, int column) { return m_view->visualRect(m_view->model()->index(row, column)).center(); }
    void click(int row, int column)
    {
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, cell(row, column));
    }
    QPoint blank() { return {20, m_view->viewport()->height() - 5}; }
    QStringList names() const;
    ZvDbObjectId addPattern(const ZvString &name, const std::vector<double> &lengths);
    QLineEdit *openEditor(int row);
    /// The delegate takes the key over when the editor has had it.
    void finishEditor(QLineEdit *editor, Qt::Key key)
    {
        QTest::keyClick(editor, key);
        QTRY_VERIFY(!m_view->viewport()->findChild<QLineEdit *>());
    }
    static QString modelText(const QModelIndex &index) { return index.data().toString(); }

    std::unique_ptr<View> m_view;
};

void tst_linetypetableview::init()
{
    DrawingTest::init();
}

void tst_linetypetableview::cleanup()
{
    m_view.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    DrawingTest::cleanup();
}

View &tst_linetypetableview::show(int mode, const ZvJsonPtr &bag)
{
    m_view = std::make_unique<View>(mode, nullptr);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->loadLtypeData(bag);
    m_view->resize(700, 400);
    m_view->show();
    if (!QTest::qWaitForWindowExposed(m_view.get()))
        qWarning("the table is not exposed");
    return *m_view;
}

QStringList tst_linetypetableview::names() const
{
    QStringList list;
    for (int row = 0; row < m_view->model()->rowCount(); ++row)
        list.append(m_view->model()->index(row, View::kNameColumn).data().toString());
    return list;
}

ZvDbObjectId tst_linetypetableview::addPattern(const ZvString &name, const std::vector<double> &lengths)
{
    const ZvDbObjectId id = addLineType(name);
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes;
    for (const double length : lengths) {
        dashes.emplace_back();
        dashes.back().length = length;
    }
    change<ZvDbLinetypeTableRecord>(id, [&](ZvDbLinetypeTableRecord &record) { record.setDashes(dashes); });
    return id;
}

QLineEdit *tst_linetypetableview::openEditor(int row)
{
    const QModelIndex index = m_view->index(row, View::kNameColumn, QModelIndex());
    m_view->setCurrentIndex(index);
    m_view->edit(index);
    auto *editor = m_view->viewport()->findChild<QLineEdit *>();
    if (editor)
        editor->selectAll();
    return editor;
}

// ---- a new table

void tst_linetypetableview::aNewTable()
{
    View view(View::kPlain, nullptr);
    QCOMPARE(view.selectionBehavior(), QAbstractItemView::SelectRows);
    QVERIFY(!view.horizontalHeader()->highlightSections());
    QVERIFY(view.verticalHeader()->isHidden());
    QVERIFY(view.isSortingEnabled());
    QCOMPARE(view.editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(view.contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(view.horizontalHeader()->contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(view.horizontalHeader()->sectionSize(1), 250);
    QVERIFY(qobject_cast<ZvPreviewItemDelegate *>(view.itemDelegate()));
    const auto *proxy = qobject_cast<ZvSortFilterProxyModel *>(view.model());
    QVERIFY(proxy && proxy->parent() == &view);
    const auto *model = qobject_cast<QStandardItemModel *>(proxy->sourceModel());
    QVERIFY(model && model->parent() == &view);
    QCOMPARE(model->columnCount(), 3);
    QCOMPARE(model->rowCount(), 0);
    const char *const titles[] = {"线型", "外观", "说明"};
    for (int column = 0; column < 3; ++column)
        QCOMPARE(proxy->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QString::fromUtf8(titles[column]));
}

void tst_linetypetableview::theMixinIsAtRest()
{
    View view(View::kInteractive, nullptr);
    QVERIFY(!view.hooked);
    QVERIFY(!view.pickFirstInfo);
    QCOMPARE(qobject_cast<CZvQtControlHelp *>(static_cast<QObject *>(&view)), static_cast<CZvQtControlHelp *>(&view));
    view.loadLtypeData(bagOf(sixRows()));
    view.acceptUpdateUI(CZvGlobalUIReactorHelp());
    QCOMPARE(view.model()->rowCount(), 6);
}

void tst_linetypetableview::theMetatypeHasItsName()
{
    const View view(View::kPlain, nullptr);
    QCOMPARE(QMetaType::type("LtypeData"), qMetaTypeId<LtypeData>());
}

void tst_linetypetableview::aDefaultRecordStandsForNoRow()
{
    const LtypeData data;
    QCOMPARE(data.idx, -1);
    QVERIFY(data.name.isEmpty() && data.comments.isEmpty());
    QCOMPARE(data.xref, 0);
    QVERIFY(data.ltypeId.isNull());
}

// ---- loading

void tst_linetypetableview::loadingFillsThreeColumns()
{
    const ZvJsonPtr node = element({7, "虚线", "短划 - -", 1});
    node->SetDataId("ltypeId", drawing().continuousLinetype().asInt64());
    View &view = show(View::kInteractive, bagOf({node}));
    QCOMPARE(view.model()->rowCount(), 1);
    QCOMPARE(source().item(0, 0)->text(), QStringLiteral("虚线"));
    QCOMPARE(source().item(0, 1)->text(), QString());
    QCOMPARE(source().item(0, 2)->text(), QStringLiteral("短划 - -"));
    const auto data = source().item(0, 1)->data(Qt::UserRole).value<LtypeData>();
    QCOMPARE(data.idx, 7);
    QCOMPARE(data.name, QStringLiteral("虚线"));
    QCOMPARE(data.comments, QStringLiteral("短划 - -"));
    QCOMPARE(data.xref, 1);
    QCOMPARE(data.ltypeId, drawing().continuousLinetype());
}

void tst_linetypetableview::loadingWithWhatTheBagLacks_data()
{
    const auto object = [] { return ElementValue::createObject(IElementValueBase::kObject); };
    const auto array = [] { return ElementValue::createObject(IElementValueBase::kArray); };
    QTest::addColumn<ZvJsonPtr>("bag");
    QTest::addColumn<int>("rows");
    QTest::newRow("no bag") << ZvJsonPtr() << 0;
    QTest::newRow("no elements") << object() << 0;
    ZvJsonPtr bag = object();
    bag->SetDataJ("elements", nullptr);
    QTest::newRow("null elements") << bag << 0;
    bag = object();
    bag->SetDataJ("elements", array());
    QTest::newRow("empty array") << bag << 0;
    bag = object();
    bag->SetDataI("elements", 3);
    QTest::newRow("a number for the array") << bag << 0;
    bag = object();
    bag->SetDataS("elements", "DASHED");
    QTest::newRow("a text for the array") << bag << 0;
    QTest::newRow("an array for the bag") << array() << 0;
    QTest::newRow("an element without members") << bagOf({object()}) << 1;
    bag = object();
    bag->SetDataS("elements/0", "DASHED");
    QTest::newRow("a text for an element") << bag << 1;
    bag = object();
    bag->SetDataJ("elements/0", nullptr);
    QTest::newRow("a null element") << bag << 1;
    const ZvJsonPtr wrong = object();
    wrong->SetDataS("idx", "many");
    wrong->SetDataJ("name", array());
    wrong->SetDataJ("comments", object());
    wrong->SetDataS("xref", "yes");
    wrong->SetDataS("ltypeId", "none");
    QTest::newRow("members of wrong types") << bagOf({wrong}) << 1;
    const ZvJsonPtr nulls = object();
    for (const char *key : {"idx", "name", "comments", "xref", "ltypeId"})
        nulls->SetDataJ(key, nullptr);
    QTest::newRow("null members") << bagOf({nulls}) << 1;
}

void tst_linetypetableview::loadingWithWhatTheBagLacks()
{
    QFETCH(ZvJsonPtr, bag);
    QFETCH(int, rows);
    View &view = show(View::kInteractive, bag);
    QCOMPARE(view.model()->rowCount(), rows);
    if (rows == 0)
        return;
    const LtypeData data = view.getLtypeDataByModelIdx(source().index(0, 0));
    QCOMPARE(data.idx, 0);
    QCOMPARE(data.name, QString());
    QCOMPARE(data.comments, QString());
    QCOMPARE(data.xref, 0);
    QVERIFY(data.ltypeId.isNull());
    QVERIFY(!view.grab().isNull());
}

void tst_linetypetableview::loadingAgainReplacesTheRows()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    view.sortByColumn(View::kCommentsColumn, Qt::DescendingOrder);
    view.loadLtypeData(bagOf({{1, "ByLayer", "", 0}, {2, "ByBlock", "", 0}, {3, "z", "1", 0}, {4, "y", "2", 0}}));
    QCOMPARE(names(), (QStringList{"ByLayer", "ByBlock", "y", "z"}));
    QCOMPARE(view.horizontalHeader()->sortIndicatorSection(), 0);
    QCOMPARE(view.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
    view.loadLtypeData(nullptr);
    QCOMPARE(view.model()->rowCount(), 0);
}

void tst_linetypetableview::xrefRowsByMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("names");
    const QStringList all{"ByLayer", "ByBlock", "A|X", "B", "C|X"};
    QTest::newRow("mode 0 leaves an empty row") << 0 << QStringList{"ByLayer", "ByBlock", "B", ""};
    QTest::newRow("mode 1 lists them") << 1 << all;
    QTest::newRow("another mode lists them") << 2 << all;
    QTest::newRow("so does one below 0") << -1 << all;
}

void tst_linetypetableview::xrefRowsByMode()
{
    QFETCH(int, mode);
    QFETCH(QStringList, names);
    View &view = show(
        mode,
        bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "A|X", "", 1}, {3, "B", "", 0}, {4, "C|X", "", 1}}));
    QCOMPARE(this->names(), names);
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(3, 0)).idx, 3);
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(2, 0)).idx, mode == 0 ? -1 : 2);
    QVERIFY(!view.grab().isNull());
}

void tst_linetypetableview::onlyAnXrefOfOneIsLeftOut()
{
    View &view = show(View::kPlain, bagOf({{0, "a", "", 0}, {1, "b", "", 2}, {2, "c", "", -1}, {3, "d", "", 1}}));
    QCOMPARE(names(), (QStringList{"a", "b", "c"}));
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(1, 0)).xref, 2);
}

// ---- sorting

void tst_linetypetableview::sortingLeavesTheFirstTwoRowsOnTop_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("ascending");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("name, rising") << 0 << true
                                  << QStringList{"ByLayer", "ByBlock", "ANGLE", "Continuous", "DASHED", "ZIGZAG"};
    QTest::newRow("name, falling") << 0 << false
                                   << QStringList{"ByLayer", "ByBlock", "ZIGZAG", "DASHED", "Continuous", "ANGLE"};
    QTest::newRow("picture, rising") << 1 << true
                                     << QStringList{"ByLayer", "ByBlock", "Continuous", "DASHED", "ANGLE", "ZIGZAG"};
    QTest::newRow("picture, falling") << 1 << false
                                      << QStringList{"ByLayer", "ByBlock", "Continuous", "DASHED", "ANGLE", "ZIGZAG"};
    QTest::newRow("description, rising") << 2 << true << QStringList{"ByLayer", "ByBlock", "ZIGZAG",
                                                                     "DASHED",  "ANGLE",   "Continuous"};
    QTest::newRow("description, falling")
        << 2 << false << QStringList{"ByLayer", "ByBlock", "Continuous", "ANGLE", "DASHED", "ZIGZAG"};
}

void tst_linetypetableview::sortingLeavesTheFirstTwoRowsOnTop()
{
    QFETCH(int, column);
    QFETCH(bool, ascending);
    QFETCH(QStringList, names);
    View &view = show(View::kInteractive, bagOf(sixRows()));
    // Fresh from the bag, and after every other order.
    for (const bool before : {true, false, ascending}) {
        view.model()->sort(column, before ? Qt::AscendingOrder : Qt::DescendingOrder);
        QCOMPARE(this->names().mid(0, 2), (QStringList{"ByLayer", "ByBlock"}));
    }
    QStringList sorted = this->names();
    if (column == 1) { // cells without a text are equal: any order will do
        sorted.sort();
        names.sort();
    }
    QCOMPARE(sorted, names);
}

void tst_linetypetableview::aClickOnTheHeaderSorts()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    QCOMPARE(names().at(2), QStringLiteral("ANGLE"));
    const QPoint title(view.horizontalHeader()->sectionViewportPosition(0) + 20, view.horizontalHeader()->height() / 2);
    QTest::mouseClick(view.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, title);
    QCOMPARE(names(), (QStringList{"ByLayer", "ByBlock", "ZIGZAG", "DASHED", "Continuous", "ANGLE"}));
    QTest::mouseClick(view.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, title);
    QCOMPARE(names().at(2), QStringLiteral("ANGLE"));
}

void tst_linetypetableview::lessThanOfNoIndex()
{
    class Open : public ZvSortFilterProxyModel
    {
    public:
        using ZvSortFilterProxyModel::filterAcceptsRow;
        using ZvSortFilterProxyModel::lessThan;
    };
    QStandardItemModel model(4, 1);
    Open proxy;
    proxy.setSourceModel(&model);
    QVERIFY(!proxy.lessThan(QModelIndex(), model.index(0, 0)));
    QVERIFY(!proxy.lessThan(model.index(0, 0), QModelIndex()));
    for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        proxy.sort(0, order);
        const bool rising = order == Qt::AscendingOrder;
        QCOMPARE(proxy.lessThan(model.index(0, 0), model.index(1, 0)), rising);
        QCOMPARE(proxy.lessThan(model.index(1, 0), model.index(0, 0)), !rising);
        QCOMPARE(proxy.lessThan(model.index(1, 0), model.index(3, 0)), rising);
        QCOMPARE(proxy.lessThan(model.index(3, 0), model.index(1, 0)), !rising);
        QVERIFY(!proxy.lessThan(model.index(2, 0), model.index(3, 0)));
    }
    QVERIFY(proxy.filterAcceptsRow(0, QModelIndex()));
}

// ---- the mouse and the keyboard

void tst_linetypetableview::clicksAndMovesTellTheirRow()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    view.sortByColumn(0, Qt::DescendingOrder);
    QSignalSpy spy(&view, &View::ltypeItemSelect);
    click(2, 0); // ZIGZAG
    QCOMPARE(spy.size(), 2);
    // The press makes the row current: an index of the sorted table.
    const auto current = spy[0][0].value<QModelIndex>();
    QCOMPARE(current.model(), static_cast<const QAbstractItemModel *>(view.model()));
    QCOMPARE(current.row(), 2);
    // The click comes with the release: an index of the source.
    const auto clicked = spy[1][0].value<QModelIndex>();
    QCOMPARE(clicked.model(), static_cast<const QAbstractItemModel *>(&source()));
    QCOMPARE(clicked.row(), 5);
    QCOMPARE(modelText(clicked), QStringLiteral("ZIGZAG"));
    spy.clear();
    click(2, 2); // the same row: no move
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].value<QModelIndex>(), source().index(5, 2));
}

void tst_linetypetableview::aDoubleClickTellsBothIndexes()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    QSignalSpy spy(&view, &View::ltypeItemDoubleClicked);
    click(2, 0);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, cell(2, 0));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].value<QModelIndex>(), source().index(4, 0));
    QCOMPARE(spy[0][1].value<QModelIndex>(), view.model()->index(2, 0));
    QVERIFY(!view.viewport()->findChild<QLineEdit *>());
}

void tst_linetypetableview::otherModesTellNothingOfTheMouse_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("0") << 0;
    QTest::newRow("2") << 2;
    QTest::newRow("-1") << -1;
}

void tst_linetypetableview::otherModesTellNothingOfTheMouse()
{
    QFETCH(int, mode);
    View &view = show(mode, bagOf(sixRows()));
    const QSignalSpy selected(&view, &View::ltypeItemSelect);
    const QSignalSpy doubled(&view, &View::ltypeItemDoubleClicked);
    click(2, 0);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, cell(2, 0));
    QCOMPARE(selected.size(), 0);
    QCOMPARE(doubled.size(), 0);
    QCOMPARE(view.getCurrLtypeData().name, QStringLiteral("ANGLE")); // the table itself works
}

void tst_linetypetableview::aHostMayWireThemItself()
{
    View &view = show(View::kPlain, bagOf(sixRows()));
    view.resConnect();
    const QSignalSpy selected(&view, &View::ltypeItemSelect);
    const QSignalSpy doubled(&view, &View::ltypeItemDoubleClicked);
    click(2, 0);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, cell(2, 0));
    QVERIFY(selected.size() >= 2);
    QCOMPARE(doubled.size(), 1);
    const MenuDriver menu(QString{});
    MenuDriver::openContextMenu(view.viewport(), cell(2, 0));
    QVERIFY(menu.finished());
}

void tst_linetypetableview::aPressInTheBlankSpace()
{
    for (const int mode : {0, 1}) {
        View &view = show(mode, bagOf(sixRows()));
        const QSignalSpy spy(&view, &View::clickBlankArea);
        click(2, 0);
        QCOMPARE(spy.size(), 0);
        QVERIFY(view.selectionModel()->hasSelection());
        QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, blank());
        QCOMPARE(spy.size(), 1);
        QVERIFY(!view.selectionModel()->hasSelection());
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, blank());
        QCOMPARE(spy.size(), 1);
    }
}

void tst_linetypetableview::aPressBetweenTwoPixels_data()
{
    QTest::addColumn<double>("below"); // the last pixel of the last row
    QTest::addColumn<bool>("isBlank");
    QTest::newRow("rounded to the row") << 0.4 << false;
    QTest::newRow("rounded to the blank space") << 0.6 << true;
}

void tst_linetypetableview::aPressBetweenTwoPixels()
{
    QFETCH(double, below);
    QFETCH(bool, isBlank);
    View &view = show(View::kInteractive, bagOf(sixRows()));
    const QSignalSpy spy(&view, &View::clickBlankArea);
    const QPointF place(20, view.rowViewportPosition(5) + view.rowHeight(5) - 1 + below);
    QMouseEvent press(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &press);
    QCOMPARE(spy.size(), isBlank ? 1 : 0);
    QCOMPARE(view.selectionModel()->isRowSelected(5, QModelIndex()), !isBlank);
}

/// While it is told, the row that was current can still be read, and nothing is selected any more.
void tst_linetypetableview::theHostHearsOfABlankPressBeforeItCounts()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    click(2, 0);
    int told = 0;
    bool wasSelected = true;
    bool wasGiven = false;
    QString name;
    connect(&view, &View::clickBlankArea, this, [&] {
        ++told;
        wasSelected = view.selectionModel()->hasSelection();
        const DialogStandIn message([](const ZvJsonPtr &) { return 1; }); // not to be asked for
        int idx = 0;
        ZvDbObjectId id;
        wasGiven = view.getLtypeData(idx, name, id);
    });
    QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, blank());
    QCOMPARE(told, 1);
    QVERIFY(!wasSelected);
    QVERIFY(wasGiven);
    QCOMPARE(name, QStringLiteral("ANGLE"));
}

void tst_linetypetableview::afterABlankPressTheDataIsRefused()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    int idx = 99;
    QString name = QStringLiteral("before");
    ZvDbObjectId id = drawing().layerZero();
    click(2, 0);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, blank());
    ModalDriver driver;
    QString title;
    QStringList texts;
    QStringList buttons;
    driver.next([&](QDialog *dialog) {
        title = dialog->windowTitle();
        const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
        for (const QLabel *label : labels)
            texts.append(label->text());
        const QList<QAbstractButton *> all = dialog->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : all)
            buttons.append(button->text());
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QVERIFY(!view.getLtypeData(idx, name, id));
    QVERIFY(driver.finished());
    QCOMPARE(title, QStringLiteral("Zevara"));
    QVERIFY2(texts.contains(QStringLiteral("请选择单个线型。")), qPrintable(texts.join('|')));
    QCOMPARE(buttons, (QStringList{"是(&Y)", "否(&N)", "取消(&C)"}));
    QCOMPARE(idx, 99);
    QCOMPARE(name, QStringLiteral("before"));
    QCOMPARE(id, drawing().layerZero());
    // A press on a cell, and all is well again.
    click(3, 0);
    QVERIFY(view.getLtypeData(idx, name, id));
    QCOMPARE(idx, 12);
    QCOMPARE(name, QStringLiteral("Continuous"));
    QVERIFY(id.isNull());
}

void tst_linetypetableview::theMessageOfARefusal()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, blank());
    ZvString title;
    ZvString text;
    int buttons = 0;
    int icon = 0;
    const DialogStandIn message([&](const ZvJsonPtr &params) {
        params->GetDataSW("title", title);
        params->GetDataSW("msg", text);
        buttons = intOf(params, "flag");
        icon = intOf(params, "dlgtype");
        return 1;
    });
    int idx = 0;
    QString name;
    ZvDbObjectId id;
    QVERIFY(!view.getLtypeData(idx, name, id));
    QCOMPARE(message.name(), ZvString(L"MessageBox"));
    QCOMPARE(title, ZvString(L"Zevara"));
    QCOMPARE(text, ZvString(L"请选择单个线型。"));
    QCOMPARE(buttons, 3);
    QCOMPARE(icon, 64);
}

void tst_linetypetableview::keyboardMovesDoNotForgetTheBlankPress()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, blank());
    view.setCurrentIndex(view.model()->index(3, 0)); // what a host makes of a key
    int idx = 0;
    QString name;
    ZvDbObjectId id;
    ModalDriver driver;
    driver.next([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QVERIFY(!view.getLtypeData(idx, name, id));
    QVERIFY(driver.finished());
    QCOMPARE(view.getCurrLtypeData().name, QStringLiteral("Continuous"));
}

void tst_linetypetableview::ctrlASelectsAll_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("rows");
    QTest::newRow("Ctrl+A") << 1 << int(Qt::Key_A) << int(Qt::ControlModifier) << 6;
    QTest::newRow("Ctrl+A in mode 0") << 0 << int(Qt::Key_A) << int(Qt::ControlModifier) << 6;
    QTest::newRow("Ctrl+Shift+A") << 1 << int(Qt::Key_A) << int(Qt::ControlModifier | Qt::ShiftModifier) << 0;
    QTest::newRow("A") << 1 << int(Qt::Key_A) << int(Qt::NoModifier) << 0;
    QTest::newRow("Ctrl+B") << 1 << int(Qt::Key_B) << int(Qt::ControlModifier) << 0;
}

void tst_linetypetableview::ctrlASelectsAll()
{
    QFETCH(int, mode);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, rows);
    View &view = show(mode, bagOf(sixRows()));
    const QSignalSpy spy(&view, &View::clearSignals);
    QTest::keyClick(&view, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(view.selectionModel()->selectedRows().size(), rows);
    QCOMPARE(spy.size(), rows > 0 ? 1 : 0);
}

/// A host's class may have its own idea of all rows.
void tst_linetypetableview::allAreSelectedAsTheClassDoes()
{
    class Own : public View
    {
    public:
        using View::View;
        void selectAll() override { ++asked; }
        int asked = 0;
    };
    auto own = std::make_unique<Own>(View::kInteractive, nullptr);
    Own &view = *own;
    m_view = std::move(own);
    view.loadLtypeData(bagOf(sixRows()));
    view.resize(700, 400);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QSignalSpy spy(&view, &View::clearSignals);
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier);
    event.accept();
    QApplication::sendEvent(&view, &event);
    QVERIFY(!event.isAccepted()); // left to the host all the same
    QCOMPARE(view.asked, 1);
    QCOMPARE(spy.size(), 1);
    const MenuDriver menu(QStringLiteral("全部选择(&S)"));
    MenuDriver::openContextMenu(view.viewport(), cell(2, 0));
    QVERIFY(menu.finished());
    QCOMPARE(view.asked, 2);
    QCOMPARE(spy.size(), 2);
    QVERIFY(!view.selectionModel()->hasSelection());
}

void tst_linetypetableview::keysGoPastTheTable()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    click(2, 0);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_F2, Qt::Key_Z}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.accept();
        QApplication::sendEvent(&view, &event);
        QVERIFY2(!event.isAccepted(), qPrintable(QKeySequence(key).toString())); // left to the host
        QCOMPARE(view.currentIndex().row(), 2);
        QVERIFY(!view.viewport()->findChild<QLineEdit *>());
    }
}

void tst_linetypetableview::theRowMenu_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("signalsSent");
    QTest::newRow("select all") << QStringLiteral("全部选择(&S)") << 6 << 1;
    QTest::newRow("clear all") << QStringLiteral("全部清除(&C)") << 0 << 1;
    QTest::newRow("escape") << QString() << 1 << 0;
}

void tst_linetypetableview::theRowMenu()
{
    QFETCH(QString, entry);
    QFETCH(int, selected);
    QFETCH(int, signalsSent);
    View &view = show(View::kInteractive, bagOf(sixRows()));
    click(2, 0);
    const QSignalSpy spy(&view, &View::clearSignals);
    const MenuDriver menu(entry);
    MenuDriver::openContextMenu(view.viewport(), cell(2, 0));
    QVERIFY(menu.finished());
    QCOMPARE(menu.entries(), (QStringList{"全部选择(&S)", "全部清除(&C)"}));
    QCOMPARE(view.selectionModel()->selectedRows().size(), selected);
    QCOMPARE(spy.size(), signalsSent);
}

void tst_linetypetableview::theRowMenuNeedsARow()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    MenuDriver menu(QString{});
    MenuDriver::openContextMenu(view.viewport(), blank());
    QCoreApplication::processEvents();
    QVERIFY(!menu.finished());
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_linetypetableview::theHeaderMenuWidensTheColumns()
{
    View &view
        = show(View::kInteractive,
               bagOf({{0, "ByLayer", "", 0}, {1, "a long name that does not fit into its column at all", "x", 0}}));
    const int before = view.columnWidth(0);
    const MenuDriver menu(QStringLiteral("最大化列标题"));
    MenuDriver::openContextMenu(view.horizontalHeader()->viewport(), {20, 5});
    QVERIFY(menu.finished());
    QCOMPARE(menu.entries(), QStringList{"最大化列标题"});
    QVERIFY(view.columnWidth(0) > before);
    QVERIFY(view.columnWidth(0) >= view.fontMetrics().horizontalAdvance(view.model()->index(1, 0).data().toString()));
}

/// Which need not be where the event says that it is: keys ask for menus too.
void tst_linetypetableview::theMenusComeWhereThePointerIs()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    view.move(50, 50);
    QPoint place = view.mapToGlobal(QPoint(230, 170));
    for (QWidget *part : {view.viewport(), view.horizontalHeader()->viewport()}) {
        place += QPoint(30, 20);
        QCursor::setPos(place);
        const MenuDriver menu(QString{});
        const QPoint asked(20, 5);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, asked, part->mapToGlobal(asked));
        QApplication::sendEvent(part, &event);
        QVERIFY(menu.finished());
        QCOMPARE(menu.place(), place);
    }
}

void tst_linetypetableview::otherModesHaveNoMenus_data()
{
    otherModesTellNothingOfTheMouse_data();
}

void tst_linetypetableview::otherModesHaveNoMenus()
{
    QFETCH(int, mode);
    View &view = show(mode, bagOf(sixRows()));
    const QPair<QWidget *, QPoint> places[]
        = {{view.viewport(), cell(2, 0)}, {view.horizontalHeader()->viewport(), {20, 5}}};
    for (const auto &place : places) {
        const MenuDriver menu(QString{}); // for each, or a menu that comes stays
        MenuDriver::openContextMenu(place.first, place.second);
        QCoreApplication::processEvents();
        QVERIFY(!menu.finished());
    }
}

void tst_linetypetableview::noCellShowsTheFocus()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    const auto painted = [&](QStyle::State extra) {
        QImage image(100, 30, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.state = QStyle::State_Enabled | QStyle::State_Active | extra;
        option.rect = image.rect();
        option.widget = &view;
        view.itemDelegate()->paint(&painter, option, view.model()->index(2, 0));
        return image;
    };
    QCOMPARE(painted(QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange),
             painted(QStyle::State_KeyboardFocusChange));
}

// ---- reading back

void tst_linetypetableview::theCurrentRow()
{
    const ZvJsonPtr node = element({21, "ours", "text", 0});
    node->SetDataId("ltypeId", drawing().continuousLinetype().asInt64());
    View &view
        = show(View::kInteractive, bagOf({element({19, "ByLayer", "", 0}), element({20, "ByBlock", "", 0}), node}));
    click(2, 1);
    int idx = 0;
    QString name;
    ZvDbObjectId id;
    QVERIFY(view.getLtypeData(idx, name, id));
    QCOMPARE(idx, 21);
    QCOMPARE(name, QStringLiteral("ours"));
    QCOMPARE(id, drawing().continuousLinetype());
    QCOMPARE(view.getCurrLtypeData().idx, 21);
    QCOMPARE(view.getCurrLtypeData().comments, QStringLiteral("text"));
}

void tst_linetypetableview::noCurrentRow()
{
    View &view = show(View::kInteractive, nullptr);
    QCOMPARE(view.getCurrLtypeData().idx, -1);
    QVERIFY(view.getCurrLtypeDatas().isEmpty());
    int idx = 5;
    QString name;
    ZvDbObjectId id;
    QVERIFY(!view.getLtypeData(idx, name, id));
    QCOMPARE(idx, 5);
    view.setCurrLtypeName(false, QStringLiteral("X"));
    view.setCurrLtypeName(true, QStringLiteral("X"));
    view.setCurrLtypeComments(true, QStringLiteral("X"));
    view.setCurrLtypeComments(false, QStringLiteral("X"));
    view.setCurrSelLtypeName(QStringLiteral("X"));
    QCOMPARE(view.model()->rowCount(), 0);
}

void tst_linetypetableview::anEmptyRowHoldsNoRecord()
{
    View &view = show(View::kPlain, bagOf({{0, "a", "", 0}, {1, "b", "", 0}, {2, "c|d", "x", 1}, {3, "e", "", 0}}));
    const int row = names().indexOf(QString());
    QVERIFY(row >= 2);
    click(row, 0);
    int idx = 5;
    QString name = QStringLiteral("before");
    ZvDbObjectId id;
    QVERIFY(!view.getLtypeData(idx, name, id));
    QCOMPARE(idx, 5);
    QCOMPARE(name, QStringLiteral("before"));
    QCOMPARE(view.getCurrLtypeData().idx, -1);
    QCOMPARE(view.getCurrLtypeDatas().size(), 1);
    QCOMPARE(view.getCurrLtypeDatas().first().idx, -1);
    for (const bool textOnly : {false, true}) {
        view.setCurrLtypeName(textOnly, QStringLiteral("X"));
        view.setLtypeNameByModelIdx(source().index(2, 0), textOnly, QStringLiteral("X"));
        view.setCurrLtypeComments(textOnly, QStringLiteral("X"));
    }
    for (int column = 0; column < 3; ++column)
        QVERIFY(!source().item(2, column));
}

void tst_linetypetableview::theSelectedRows()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    click(4, 0); // DASHED
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ControlModifier, cell(2, 0)); // ANGLE
    QStringList names;
    const QList<LtypeData> datas = view.getCurrLtypeDatas();
    for (const LtypeData &data : datas)
        names.append(data.name);
    QCOMPARE(names, (QStringList{"DASHED", "ANGLE"}));
}

void tst_linetypetableview::selectingByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("selected");
    QTest::newRow("as it stands") << "ZIGZAG"
                                  << "ZIGZAG";
    QTest::newRow("in other case") << "dashed"
                                   << "DASHED";
    QTest::newRow("no such name: the top row") << "none"
                                               << "ByLayer";
    QTest::newRow("no name: the top row") << QString() << "ByLayer";
    QTest::newRow("of two, the first in the bag") << "twin"
                                                  << "Twin";
}

void tst_linetypetableview::selectingByName()
{
    QFETCH(QString, name);
    QFETCH(QString, selected);
    std::vector<Row> rows = sixRows();
    rows.push_back({30, "Twin", "", 0});
    rows.push_back({31, "TWIN", "", 0});
    View &view = show(View::kInteractive, bagOf(rows));
    view.activateWindow();
    QVERIFY(zevaWaitForActive(&view));
    view.setCurrSelLtypeName(name);
    QCOMPARE(view.getCurrLtypeData().name, selected);
    QCOMPARE(view.selectionModel()->selectedRows().size(), 1);
    QVERIFY(view.hasFocus());
}

void tst_linetypetableview::recordsByModelIndex()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    view.sortByColumn(0, Qt::DescendingOrder);
    // The row counts in the source, whatever model the index is of.
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(4, 0)).name, QStringLiteral("ANGLE"));
    QCOMPARE(view.getLtypeDataByModelIdx(view.model()->index(4, 0)).name, QStringLiteral("ANGLE"));
    QCOMPARE(view.getLtypeDataByModelIdx(QModelIndex()).idx, -1);
}

void tst_linetypetableview::indexIsOfTheSortedTable()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    QCOMPARE(view.index(2, 0, QModelIndex()), view.model()->index(2, 0));
    QVERIFY(!view.index(99, 0, QModelIndex()).isValid());
    QVERIFY(!view.index(-1, 0, QModelIndex()).isValid());
}

// ---- renaming

void tst_linetypetableview::renamingInAnEditor_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<bool>("escape");
    QTest::addColumn<int>("asked");
    QTest::addColumn<QString>("shown");
    QTest::newRow("taken over") << "Renamed" << true << false << 1 << "Renamed";
    QTest::newRow("refused by the host") << "Renamed" << false << false << 1 << "ANGLE";
    QTest::newRow("a star is the host's to judge") << "a*b" << false << false << 1 << "ANGLE";
    QTest::newRow("a bar is the host's to judge") << "a|b" << true << false << 1 << "a|b";
    QTest::newRow("given up") << "Renamed" << true << true << 0 << "ANGLE";
    QTest::newRow("only the case") << "angle" << true << false << 1 << "angle";
    QTest::newRow("nothing") << "" << false << false << 1 << "ANGLE";
}

void tst_linetypetableview::renamingInAnEditor()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    QFETCH(bool, escape);
    QFETCH(int, asked);
    QFETCH(QString, shown);
    View &view = show(View::kInteractive, bagOf(sixRows()));
    QStringList names;
    QModelIndex index;
    connect(&view, &View::ltypeRename, this, [&](QString &name, const QModelIndex &of) {
        names.append(name);
        index = of;
        return accepted;
    });
    QLineEdit *editor = openEditor(2);
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("ANGLE"));
    if (typed.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, typed);
    finishEditor(editor, escape ? Qt::Key_Escape : Qt::Key_Return);
    QCOMPARE(names.size(), asked);
    if (asked) {
        QCOMPARE(names.first(), typed);
        QCOMPARE(index, source().index(4, 0));
    }
    QCOMPARE(source().item(4, 0)->text(), shown);
    // The record is the host's business.
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(4, 0)).name, QStringLiteral("ANGLE"));
}

void tst_linetypetableview::anUnchangedNameAsksNobody()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    int asked = 0;
    connect(&view, &View::ltypeRename, this, [&](QString &, const QModelIndex &) { return ++asked > 0; });
    QLineEdit *editor = openEditor(2);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("ANGLE"));
    finishEditor(editor, Qt::Key_Return);
    QCOMPARE(asked, 0);
}

void tst_linetypetableview::theHostMayChangeTheName()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    connect(&view, &View::ltypeRename, this, [](QString &name, const QModelIndex &) {
        name = name.trimmed().toUpper();
        return true;
    });
    QLineEdit *editor = openEditor(2);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral(" mine "));
    finishEditor(editor, Qt::Key_Return);
    QCOMPARE(source().item(4, 0)->text(), QStringLiteral("MINE"));
}

void tst_linetypetableview::theHostMayRenameTheRowItself()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    connect(&view, &View::ltypeRename, this, [&](QString &name, const QModelIndex &index) {
        view.setLtypeNameByModelIdx(index, false, name); // which sorts: the row goes to the end
        return true;
    });
    QLineEdit *editor = openEditor(2);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("ZZZ"));
    finishEditor(editor, Qt::Key_Return);
    QCOMPARE(names(), (QStringList{"ByLayer", "ByBlock", "Continuous", "DASHED", "ZIGZAG", "ZZZ"}));
    QCOMPARE(view.getCurrLtypeData().name, QStringLiteral("ZZZ"));
}

void tst_linetypetableview::withoutAHostARenameIsRefused()
{
    show(View::kInteractive, bagOf(sixRows()));
    QLineEdit *editor = openEditor(2);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("X"));
    finishEditor(editor, Qt::Key_Return);
    QCOMPARE(source().item(4, 0)->text(), QStringLiteral("ANGLE"));
}

void tst_linetypetableview::editorsOfOtherKindsWriteNothing()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    int asked = 0;
    connect(&view, &View::ltypeRename, this, [&](QString &, const QModelIndex &) { return ++asked > 0; });
    QLabel label(QStringLiteral("X"));
    view.itemDelegate()->setModelData(&label, view.model(), view.model()->index(2, 0));
    QLineEdit edit(QStringLiteral("X"));
    view.itemDelegate()->setModelData(&edit, &source(), source().index(4, 0)); // not the sorted table
    QCOMPARE(asked, 0);
    QCOMPARE(source().item(4, 0)->text(), QStringLiteral("ANGLE"));
    view.itemDelegate()->setModelData(&edit, view.model(), view.model()->index(2, 0));
    QCOMPARE(asked, 1);
    QCOMPARE(source().item(4, 0)->text(), QStringLiteral("X"));
}

void tst_linetypetableview::settingTheNameOfTheCurrentRow()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    click(2, 0);
    view.setCurrLtypeName(true, QStringLiteral("shown"));
    QCOMPARE(source().item(4, 0)->text(), QStringLiteral("shown"));
    QCOMPARE(view.getCurrLtypeData().name, QStringLiteral("ANGLE"));
    view.setCurrLtypeName(false, QStringLiteral("kept"));
    QCOMPARE(source().item(4, 0)->text(), QStringLiteral("kept"));
    QCOMPARE(view.getCurrLtypeData().name, QStringLiteral("kept"));
    QCOMPARE(view.getCurrLtypeData().idx, 14);
}

void tst_linetypetableview::settingTheNameByModelIndex()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    view.setLtypeNameByModelIdx(source().index(5, 0), false, QStringLiteral("kept"));
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(5, 0)).name, QStringLiteral("kept"));
    QCOMPARE(source().item(5, 0)->text(), QStringLiteral("kept"));
    view.setLtypeNameByModelIdx(source().index(3, 2), true, QStringLiteral("shown"));
    QCOMPARE(view.getLtypeDataByModelIdx(source().index(3, 0)).name, QStringLiteral("DASHED"));
    QCOMPARE(source().item(3, 0)->text(), QStringLiteral("shown"));
    const QStringList before = names();
    view.setLtypeNameByModelIdx(QModelIndex(), false, QStringLiteral("X"));
    QCOMPARE(names(), before);
}

void tst_linetypetableview::theOldNameKeepsItsPicture()
{
    const ZvDbObjectId id = addPattern(L"OLD", {5, -5});
    View &view = show(View::kInteractive, bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "OLD", "", 0}}));
    click(2, 0);
    const QImage before = view.createLineTypeImage(QStringLiteral("OLD"), 200, 30).toImage();
    change<ZvDbLinetypeTableRecord>(id,
                                    [](ZvDbLinetypeTableRecord &record) { QCOMPARE(record.setName(L"NEW"), Zv::eOk); });
    view.setCurrLtypeName(false, QStringLiteral("NEW"));
    view.grab();
    const std::uint64_t drawn = zvsiutEntityImagesDrawn();
    QCOMPARE(view.createLineTypeImage(QStringLiteral("NEW"), 200, 30).toImage(), before);
    view.loadLtypeData(bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "OLD", "", 0}}));
    view.grab();
    QCOMPARE(view.createLineTypeImage(QStringLiteral("OLD"), 200, 30).toImage(), before); // of a name that is gone
    QCOMPARE(zvsiutEntityImagesDrawn(), drawn);
}

/// Also where there was another one of that name.
void tst_linetypetableview::aNewNameTakesThePictureOver()
{
    addPattern(L"OLD", {5, -5});
    addPattern(L"NEW", {1, -9});
    View &view = show(View::kInteractive, bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "OLD", "", 0}}));
    click(2, 0);
    const QImage old = view.createLineTypeImage(QStringLiteral("OLD"), 200, 30).toImage();
    QVERIFY(view.createLineTypeImage(QStringLiteral("NEW"), 200, 30).toImage() != old);
    view.setCurrLtypeName(true, QStringLiteral("NEW")); // the text alone
    QVERIFY(view.createLineTypeImage(QStringLiteral("NEW"), 200, 30).toImage() != old);
    view.setCurrLtypeName(false, QStringLiteral("NEW"));
    QCOMPARE(view.createLineTypeImage(QStringLiteral("NEW"), 200, 30).toImage(), old);
    QCOMPARE(view.createLineTypeImage(QStringLiteral("OLD"), 200, 30).toImage(), old);
}

void tst_linetypetableview::aNewNameWithoutAPictureIsDrawn()
{
    addPattern(L"NEW", {1, -9});
    View &view = show(View::kInteractive, bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "NONE", "", 0}}));
    const QImage picture = view.createLineTypeImage(QStringLiteral("NEW"), 200, 30).toImage();
    QVERIFY(!picture.isNull());
    view.setLtypeNameByModelIdx(source().index(2, 0), false, QStringLiteral("NEW")); // from a name that has no picture
    QCOMPARE(view.createLineTypeImage(QStringLiteral("NEW"), 200, 30).toImage(), picture);
}

void tst_linetypetableview::settingTheComments()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    click(2, 0);
    view.setCurrLtypeComments(true, QStringLiteral("shown"));
    QCOMPARE(source().item(4, 2)->text(), QStringLiteral("shown"));
    QCOMPARE(view.getCurrLtypeData().comments, QStringLiteral("c _ ."));
    view.setCurrLtypeComments(false, QStringLiteral("kept"));
    QCOMPARE(source().item(4, 2)->text(), QStringLiteral("shown"));
    QCOMPARE(view.getCurrLtypeData().comments, QStringLiteral("kept"));
}

// ---- pictures

void tst_linetypetableview::picturesAreDrawnOncePerName()
{
    addPattern(L"DASHED", {5, -5});
    View &view = show(View::kInteractive, bagOf(sixRows()));
    view.grab();
    const std::uint64_t drawn = zvsiutEntityImagesDrawn();
    for (const int width : {250, 251, 100, 400, 3000})
        view.createLineTypeImage(QStringLiteral("DASHED"), width, 30);
    view.setColumnWidth(1, 500);
    view.loadLtypeData(bagOf(sixRows()));
    view.grab();
    QCOMPARE(zvsiutEntityImagesDrawn(), drawn);
}

void tst_linetypetableview::theRasterIsWiderThanTheCell_data()
{
    QTest::addColumn<int>("cell");
    QTest::addColumn<int>("raster");
    QTest::newRow("1") << 1 << 1000;
    QTest::newRow("999") << 999 << 1000;
    QTest::newRow("1000") << 1000 << 2000;
    QTest::newRow("1001") << 1001 << 2000;
    QTest::newRow("2000") << 2000 << 3000;
}

void tst_linetypetableview::theRasterIsWiderThanTheCell()
{
    QFETCH(int, cell);
    QFETCH(int, raster);
    View view(View::kInteractive, nullptr);
    view.createLineTypeImage(QStringLiteral("Continuous"), cell, 30);
    // The picture is kept, so a wider cell shows where it ends.
    const QPair<int, int> ink = inkExtent(view.createLineTypeImage(QStringLiteral("Continuous"), 3500, 30));
    QVERIFY2(ink.second < raster && ink.second > raster * 9 / 10, qPrintable(QString::number(ink.second)));
}

void tst_linetypetableview::thePictureIsCroppedAndTransparent()
{
    View view(View::kInteractive, nullptr);
    const QImage wide = view.createLineTypeImage(QStringLiteral("Continuous"), 300, 30).toImage();
    QCOMPARE(wide.size(), QSize(300, 30));
    QCOMPARE(qAlpha(wide.pixel(150, 2)), 0);
    int lineAt = -1;
    for (int y = 0; y < 30; ++y) {
        if (qAlpha(wide.pixel(150, y)) > 0)
            lineAt = y;
    }
    QVERIFY(lineAt >= 10 && lineAt <= 20);
    QCOMPARE(wide.pixel(150, lineAt), qRgb(0, 0, 0));
    // Cut at the right and at the bottom, never scaled.
    const QImage small = view.createLineTypeImage(QStringLiteral("Continuous"), 100, 20).toImage();
    QCOMPARE(small, wide.copy(0, 0, 100, 20).convertToFormat(small.format()));
    const QImage high = view.createLineTypeImage(QStringLiteral("Continuous"), 100, 50).toImage();
    QCOMPARE(high.copy(0, 0, 100, 30), wide.copy(0, 0, 100, 30).convertToFormat(high.format()));
    QCOMPARE(qAlpha(high.pixel(50, 45)), 0);
}

void tst_linetypetableview::thePictureStandsInTheMiddleColumn()
{
    View &view
        = show(View::kInteractive, bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "Continuous", "", 0}}));
    const QRect rect = view.visualRect(view.model()->index(2, 1));
    const QImage painted = view.viewport()->grab(rect).toImage();
    const QImage picture
        = view.createLineTypeImage(QStringLiteral("Continuous"), rect.width(), rect.height()).toImage();
    int inked = 0;
    for (int y = 0; y < rect.height(); ++y) {
        for (int x = 0; x < rect.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) < 255)
                continue;
            ++inked;
            QCOMPARE(painted.pixel(x, y), picture.pixel(x, y));
        }
    }
    QVERIFY(inked > 100);
}

void tst_linetypetableview::namesWithoutAPicture_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("unknown") << "no such line type";
    QTest::newRow("empty") << QString();
    QTest::newRow("a star") << "a*b";
    QTest::newRow("erased") << "GONE";
}

void tst_linetypetableview::namesWithoutAPicture()
{
    QFETCH(QString, name);
    const ZvDbObjectId gone = addPattern(L"GONE", {5, -5});
    change<ZvDbLinetypeTableRecord>(gone, [](ZvDbLinetypeTableRecord &record) { record.erase(); });
    View view(View::kInteractive, nullptr);
    QVERIFY(view.createLineTypeImage(name, 250, 30).isNull());
    // It may be there later.
    if (name != QStringLiteral("GONE"))
        return;
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(gone, ZvDb::kForWrite, true);
    record->erase(false);
    const_cast<ZvDbObjectPointer<ZvDbLinetypeTableRecord> &>(record).close();
    QVERIFY(!view.createLineTypeImage(name, 250, 30).isNull());
}

void tst_linetypetableview::aMissingPictureAsksForAPaint()
{
    View &view = show(View::kInteractive, bagOf({{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}, {2, "LATER", "", 0}}));
    QCoreApplication::processEvents();
    PaintCount paints(&view);
    view.viewport()->update();
    QTRY_VERIFY(paints.count > 0);
    // It comes to rest, however often the events are looked at.
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    const int settled = paints.count;
    PaintCount cells(view.viewport());
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(paints.count, settled);
    QCOMPARE(cells.count, 0);
    // With the line type in the drawing the next paint shows it.
    addPattern(L"LATER", {5, -5});
    view.viewport()->update();
    QTRY_VERIFY(cells.count > 0);
    QVERIFY(!view.createLineTypeImage(QStringLiteral("LATER"), 250, 30).isNull());
}

void tst_linetypetableview::dependentLineTypesByMode()
{
    const ZvDbObjectId id = addPattern(L"House", {5, -5});
    // What a file with an external reference gives: the flag and the bar in the name.
    ZvDbFileReport report;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("x.dxf"));
    QCOMPARE(drawing().saveAs(ZvString(path.toUtf8().constData()), report), Zv::eOk);
    Q_UNUSED(id)
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    const int name = bytes.indexOf("House");
    QVERIFY(name > 0);
    bytes.replace(name, 5, "X|LTY");
    const int flags = bytes.indexOf(" 70\n", name) + 4;
    bytes.replace(flags, bytes.indexOf('\n', flags) - flags, "    48");
    file.resize(0);
    file.seek(0);
    file.write(bytes);
    file.close();
    QVERIFY(zvDocManagerPtr()->openDocument(ZvString(path.toUtf8().constData()), report));
    QVERIFY(read<ZvDbLinetypeTableRecord>(ZevaUISetting::findLineStyleTableRecordByName(L"X|LTY", nullptr),
                                          [](const ZvDbLinetypeTableRecord &record) { return record.isDependent(); }));
    for (const int mode : {0, 1, 2}) {
        View view(mode, nullptr);
        QCOMPARE(view.createLineTypeImage(QStringLiteral("X|LTY"), 250, 30).isNull(), mode != 1);
        QVERIFY(!view.createLineTypeImage(QStringLiteral("continuous"), 250, 30).isNull());
    }
}

void tst_linetypetableview::rasterImageArguments_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("made");
    QTest::newRow("all is well") << "Continuous" << QSize(1000, 30) << true;
    QTest::newRow("another case") << "CONTINUOUS" << QSize(1000, 30) << true;
    QTest::newRow("no name") << QString() << QSize(1000, 30) << false;
    QTest::newRow("an unknown name") << "none" << QSize(1000, 30) << false;
    QTest::newRow("no width") << "Continuous" << QSize(0, 30) << false;
    QTest::newRow("a width below 0") << "Continuous" << QSize(-5, 30) << false;
    QTest::newRow("no height") << "Continuous" << QSize(1000, 0) << false;
}

void tst_linetypetableview::rasterImageArguments()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(bool, made);
    View view(View::kInteractive, nullptr);
    const std::uint32_t pixel = 0;
    const ZvSmartPtr<ZvGiRasterImage> before = zvutImageWrap(&pixel, 1, 1, 32);
    ZvSmartPtr<ZvGiRasterImage> image = before;
    view.getLineTypeRasterImage(ZvString(name.toUtf8().constData()), size.width(), size.height(), image, true);
    QCOMPARE(image.get() != before.get(), made);
    if (made) {
        QCOMPARE(int(image->pixelWidth()), size.width());
        QCOMPARE(int(image->pixelHeight()), size.height());
    }
}

void tst_linetypetableview::patternsAreScaledToTheWidth()
{
    // 25 repeats of a picture less 10 pixels, whatever the pattern's length: 12 mm and 1200 mm look alike. The current
    // scale of line types is taken out again.
    addPattern(L"SMALL", {6, -6});
    addPattern(L"LARGE", {600, -600});
    View view(View::kInteractive, nullptr);
    const QImage small = view.createLineTypeImage(QStringLiteral("SMALL"), 990, 30).toImage();
    QCOMPARE(view.createLineTypeImage(QStringLiteral("LARGE"), 990, 30).toImage(), small);
    int dashes = 0;
    for (int x = 1; x < small.width(); ++x) {
        const auto inked = [&](int at) {
            for (int y = 0; y < 30; ++y) {
                if (qAlpha(small.pixel(at, y)) > 0)
                    return true;
            }
            return false;
        };
        dashes += inked(x) && !inked(x - 1) ? 1 : 0;
    }
    QVERIFY2(dashes >= 24 && dashes <= 26, qPrintable(QString::number(dashes)));
    drawing().setCeltscale(7.0);
    View scaled(View::kInteractive, nullptr);
    QCOMPARE(scaled.createLineTypeImage(QStringLiteral("SMALL"), 990, 30).toImage(), small);
}

void tst_linetypetableview::recordsThatCannotBeOpened()
{
    const ZvDbObjectId id = addPattern(L"BUSY", {5, -5});
    View view(View::kInteractive, nullptr);
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForWrite);
        QVERIFY(view.createLineTypeImage(QStringLiteral("BUSY"), 250, 30).isNull());
    }
    {
        const ZvDbObjectPointer<ZvDbLinetypeTable> table(drawing().linetypeTableId(), ZvDb::kForWrite);
        QVERIFY(view.createLineTypeImage(QStringLiteral("BUSY"), 250, 30).isNull());
    }
    QVERIFY(!view.createLineTypeImage(QStringLiteral("BUSY"), 250, 30).isNull());
}

void tst_linetypetableview::withoutADocument()
{
    View &view = show(View::kInteractive, bagOf(sixRows()));
    zvDocManagerPtr()->closeDocument(document());
    View fresh(View::kInteractive, nullptr);
    QVERIFY(fresh.createLineTypeImage(QStringLiteral("Continuous"), 250, 30).isNull());
    QVERIFY(!view.createLineTypeImage(QStringLiteral("Continuous"), 250, 30).isNull()); // kept
    zvDocManagerPtr()->addDocument(ZvDbDatabasePtr(), L"");
    QVERIFY(document() && !document()->database());
    QVERIFY(fresh.createLineTypeImage(QStringLiteral("Continuous"), 250, 30).isNull());
    CHcSystem::setInstanceAvailable(false);
    QVERIFY(fresh.createLineTypeImage(QStringLiteral("Continuous"), 250, 30).isNull());
}

void tst_linetypetableview::scrollingDrawsNothingAnew()
{
    std::vector<Row> rows{{0, "ByLayer", "", 0}, {1, "ByBlock", "", 0}};
    std::vector<QByteArray> kept;
    kept.reserve(500);
    for (int i = 0; i < 500; ++i) {
        kept.push_back(QByteArray("TYPE") + QByteArray::number(i));
        addPattern(ZvString(kept.back().constData()), {1.0 + i, -1.0});
        rows.push_back({i + 2, kept.back().constData(), "", 0});
    }
    View &view = show(View::kInteractive, bagOf(rows));
    QScrollBar *bar = view.verticalScrollBar();
    for (int value = 0; value <= bar->maximum(); value += bar->pageStep()) {
        bar->setValue(value);
        view.grab();
    }
    bar->setValue(bar->maximum());
    view.grab();
    const std::uint64_t drawn = zvsiutEntityImagesDrawn();
    QVERIFY(drawn >= 500);
    for (int value = bar->maximum(); value >= 0; value -= 3) {
        bar->setValue(value);
        view.grab();
    }
    QCOMPARE(zvsiutEntityImagesDrawn(), drawn);
}

ZEVA_TEST_MAIN(tst_linetypetableview)
#include "tst_linetypetableview.moc"
