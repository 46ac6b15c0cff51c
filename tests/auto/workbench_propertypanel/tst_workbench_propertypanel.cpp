// SPDX-License-Identifier: MIT
#include "db/zvdbdictionary.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "modaldriver.h"
#include "propertypanel.h"
#include "textforms.h"
#include "updatebushost.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvodasetting.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <memory>

namespace {

enum Row {
    kLayer,
    kColor,
    kLineType,
    kLineWeight,
    kMaterial,
    kPlotStyle,
    kTextStyle,
    kDimStyle,
    kMLeaderStyle,
    kTableStyle
};

}

/// The panel in the workbench's own window, used by mouse and keyboard.
class tst_workbench_propertypanel : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void isReachedFromTheViewMenu();
    void isOnTheBusOnlyWhileVisible();
    void withoutADrawingNothingCanBeWritten();
    void showsTheCurrentValues();
    void aCommandsNewCurrentValueIsShown();
    void twoLayersAreMixed();
    void aMixedRowUnfoldsIntoItsValues();
    void nothingIsCountedUntilUnfolded();
    void styleRowsCountWhatHasNone();
    void aClickOnAValueNarrowsTheSelection();
    void enterOnAValueNarrowsTheSelection();
    void anUnfoldedRowFollowsTheSelection();
    void aLargeUnfoldedSelectionFoldsWhenItChanges();
    void writingColourIsOneStepAndSaved();
    void writesEveryProperty_data();
    void writesEveryProperty();
    void writesCurrentValues_data();
    void writesCurrentValues();
    void writesCurrentStyles_data();
    void writesCurrentStyles();
    void writesStylesOfEntities();
    void aTypedColourIsWritten();
    void textsThatAreNoColourAreNotWritten_data();
    void textsThatAreNoColourAreNotWritten();
    void theKeyboardEditsToo_data();
    void theKeyboardEditsToo();
    void escapeWritesNothing();
    void theSameValueIsNotWrittenAgain();
    void lockedLayersAreReported();
    void undoIsShown();
    void anotherDrawingIsShown();
    void isOpenAgainTheNextTime();

private:
    MainWindow &window() { return m_session->window(); }
    PropertyPanel &panel() { return *window().findChild<PropertyPanel *>(); }
    QTreeWidget &tree() { return *panel().tree(); }
    QString valueText(int row) { return tree().topLevelItem(row)->text(1); }
    QStringList values(int row);
    QString summary() { return panel().findChild<QLabel *>(QStringLiteral("propertySummary"))->text(); }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    void select(const std::vector<ZvDbObjectId> &ids)
    {
        m_session->document()->editingContext()->selectionHolder()->set(ids);
    }
    ZvDbObjectId addLayer(const char *name, bool locked = false);
    void click(QTreeWidgetItem *item, int column);
    QComboBox *openEditor(int row);
    void pick(int row, const QString &value);
    template <class T, class Get> auto read(ZvDbObjectId id, Get get)
    {
        const ZvDbObjectPointer<T> object(id, ZvDb::kForRead);
        return get(*object);
    }
    QString colorOf(ZvDbObjectId id)
    {
        return read<ZvDbEntity>(id, [](const ZvDbEntity &entity) { return colorText(entity.color()); });
    }
    void addStyles();
    /// Two lines on the layers "walls" and "doors".
    void makeTwoLayers();

    std::unique_ptr<WorkbenchSession> m_session;
    ZvDbObjectId m_wall;
    ZvDbObjectId m_door;
};

void tst_workbench_propertypanel::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    window().findChild<QDockWidget *>(QStringLiteral("propertyPanelDock"))->show();
    QTRY_VERIFY(panel().isVisible());
}

void tst_workbench_propertypanel::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

QStringList tst_workbench_propertypanel::values(int row)
{
    QStringList list;
    const QTreeWidgetItem *item = tree().topLevelItem(row);
    for (int i = 0; i < item->childCount(); ++i)
        list << item->child(i)->text(0) + QStringLiteral(": ") + item->child(i)->text(1);
    return list;
}

ZvDbObjectId tst_workbench_propertypanel::addLayer(const char *name, bool locked)
{
    ZvDbLayerTable *table = nullptr;
    ZvDbObjectId id;
    if (m_session->database().getSymbolTable(table, ZvDb::kForWrite) != Zv::eOk)
        return id;
    auto *layer = new ZvDbLayerTableRecord;
    layer->setName(name);
    layer->setIsLocked(locked);
    if (table->add(layer, id) == Zv::eOk)
        layer->close();
    table->close();
    return id;
}

void tst_workbench_propertypanel::makeTwoLayers()
{
    m_session->newDrawing();
    addLayer("walls");
    addLayer("doors");
    m_wall = m_session->addLine({0, 0, 0}, {100, 0, 0});
    m_door = m_session->addLine({0, 50, 0}, {100, 50, 0});
    for (const auto &[id, layer] : {std::pair(m_wall, "walls"), std::pair(m_door, "doors")}) {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite);
        QCOMPARE(entity->setLayer(ZvString(layer)), Zv::eOk);
    }
    m_session->database().clearUndo();
    m_session->database().setModified(false);
}

void tst_workbench_propertypanel::click(QTreeWidgetItem *item, int column)
{
    tree().scrollToItem(item);
    const QRect rect = tree().visualItemRect(item);
    const int x = tree().columnViewportPosition(column) + 10;
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(column == 0 ? rect.left() + 10 : x, rect.center().y()));
}

QComboBox *tst_workbench_propertypanel::openEditor(int row)
{
    click(tree().topLevelItem(row), 1);
    return tree().findChild<QComboBox *>(QStringLiteral("propertyEditor"));
}

void tst_workbench_propertypanel::pick(int row, const QString &value)
{
    QComboBox *editor = openEditor(row);
    QVERIFY(editor);
    const int index = editor->findText(value);
    QVERIFY2(index >= 0, qPrintable(value));
    QTRY_VERIFY(editor->view()->isVisible()); // the list opens by itself
    QWidget *list = editor->view()->viewport();
    editor->view()->scrollTo(editor->model()->index(index, 0));
    const QRect rect = editor->view()->visualRect(editor->model()->index(index, 0));
    // A release soon after the opening counts as the end of the click that opened it.
    QTest::mouseMove(list, rect.center());
    editor->view()->setCurrentIndex(editor->model()->index(index, 0));
    QTest::keyClick(editor->view(), Qt::Key_Return);
    waitForIdle();
}

void tst_workbench_propertypanel::isReachedFromTheViewMenu()
{
    QMenu *menu = m_session->action("barsMenu")->menu();
    Q_EMIT menu->aboutToShow();
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts << action->text();
    QVERIFY(texts.contains(QStringLiteral("Properties")));
    auto *dock = window().findChild<QDockWidget *>(QStringLiteral("propertyPanelDock"));
    QVERIFY(menu->actions().contains(dock->toggleViewAction()));
    dock->toggleViewAction()->trigger();
    QVERIFY(!panel().isVisible());
    QTest::keyClick(&window(), Qt::Key_1, Qt::ControlModifier);
    QVERIFY(panel().isVisible());
    QVERIFY(!panel().accessibleName().isEmpty());
    QVERIFY(!tree().accessibleName().isEmpty());
}

void tst_workbench_propertypanel::isOnTheBusOnlyWhileVisible()
{
    makeTwoLayers();
    QSignalSpy refreshed(panel().rows()[kLayer], &PropertyRow::refreshed);
    select({m_wall});
    QCOMPARE(refreshed.count(), 1);
    auto *dock = window().findChild<QDockWidget *>(QStringLiteral("propertyPanelDock"));
    dock->hide();
    select({m_door});
    QCOMPARE(refreshed.count(), 1);
    dock->show();
    QCOMPARE(valueText(kLayer), QStringLiteral("doors"));
}

void tst_workbench_propertypanel::withoutADrawingNothingCanBeWritten()
{
    QCOMPARE(summary(), QStringLiteral("No drawing is open"));
    QVERIFY(!tree().isEnabled());
    for (PropertyRow *row : panel().rows()) {
        QCOMPARE(row->text(), QString());
        QVERIFY(!row->write(QStringLiteral("ByLayer")));
        QVERIFY(row->choices().isEmpty());
    }
    m_session->newDrawing();
    QVERIFY(tree().isEnabled());
    QCOMPARE(valueText(kLayer), QStringLiteral("0"));
    zvDocManagerPtr()->closeDocument(m_session->document());
    QCOMPARE(summary(), QStringLiteral("No drawing is open"));
    QVERIFY(!tree().isEnabled());
    QCOMPARE(valueText(kLayer), QString());
}

void tst_workbench_propertypanel::showsTheCurrentValues()
{
    m_session->newDrawing();
    QCOMPARE(summary(), QStringLiteral("Nothing selected: current values"));
    const QStringList expected{"0", "ByLayer", "ByLayer", "ByLayer", "ByLayer", "ByLayer"};
    for (int row = 0; row < expected.size(); ++row)
        QCOMPARE(valueText(row), expected[row]);
    QCOMPARE(valueText(kTextStyle), nameOf(m_session->database().textstyle()));
    QCOMPARE(valueText(kDimStyle), nameOf(m_session->database().dimstyle()));
}

void tst_workbench_propertypanel::aCommandsNewCurrentValueIsShown()
{
    m_session->newDrawing();
    zvedCommandLine("_.SETVAR CECOLOR 3");
    waitForIdle();
    QCOMPARE(valueText(kColor), QStringLiteral("3"));
    QVERIFY(!tree().topLevelItem(kColor)->icon(1).isNull());
}

void tst_workbench_propertypanel::twoLayersAreMixed()
{
    makeTwoLayers();
    select({m_wall, m_door});
    QCOMPARE(summary(), QStringLiteral("2 entities selected"));
    QCOMPARE(valueText(kLayer), QStringLiteral("mixed"));
    QCOMPARE(valueText(kColor), QStringLiteral("ByLayer"));
    QCOMPARE(tree().topLevelItem(kLayer)->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
    QCOMPARE(tree().topLevelItem(kColor)->childIndicatorPolicy(), QTreeWidgetItem::DontShowIndicator);
    select({m_wall});
    QCOMPARE(summary(), QStringLiteral("1 entity selected"));
    QCOMPARE(valueText(kLayer), QStringLiteral("walls"));
}

void tst_workbench_propertypanel::aMixedRowUnfoldsIntoItsValues()
{
    makeTwoLayers();
    const ZvDbObjectId another = m_session->addLine({0, 80, 0}, {100, 80, 0});
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(another, ZvDb::kForWrite);
        entity->setLayer(ZvString("doors"));
    }
    select({m_wall, m_door, another});
    tree().setCurrentItem(tree().topLevelItem(kLayer));
    QTest::keyClick(&tree(), Qt::Key_Right);
    QCOMPARE(valueText(kLayer), QStringLiteral("mixed (2 values)"));
    QCOMPARE(values(kLayer), QStringList({"walls: 1 entity", "doors: 2 entities"}));
}

void tst_workbench_propertypanel::nothingIsCountedUntilUnfolded()
{
    makeTwoLayers();
    const std::uint64_t before = m_session->database().openingsCount();
    select({m_wall, m_door});
    const std::uint64_t afterSelection = m_session->database().openingsCount();
    QCOMPARE(tree().topLevelItem(kLayer)->childCount(), 0);
    tree().topLevelItem(kLayer)->setExpanded(true);
    QVERIFY(m_session->database().openingsCount() >= afterSelection + 2);
    QVERIFY(afterSelection >= before);
    // Folding and unfolding again counts nothing.
    const std::uint64_t counted = m_session->database().openingsCount();
    tree().topLevelItem(kLayer)->setExpanded(false);
    tree().topLevelItem(kLayer)->setExpanded(true);
    QCOMPARE(m_session->database().openingsCount(), counted);
}

void tst_workbench_propertypanel::styleRowsCountWhatHasNone()
{
    makeTwoLayers();
    ZvDbObjectId text;
    auto *entity = new ZvDbText;
    QCOMPARE(m_session->database().appendEntity(entity, m_session->database().modelSpaceId(), text), Zv::eOk);
    select({m_wall, text, m_door});
    QCOMPARE(valueText(kTextStyle), QStringLiteral("mixed"));
    tree().topLevelItem(kTextStyle)->setExpanded(true);
    const QString style = nameOf(m_session->database().textstyle());
    QCOMPARE(values(kTextStyle), QStringList({"(has none): 2 entities", style + ": 1 entity"}));
    click(tree().topLevelItem(kTextStyle)->child(0), 0);
    QCOMPARE(m_session->selection(), (std::vector<ZvDbObjectId>{m_wall, m_door}));
}

void tst_workbench_propertypanel::aClickOnAValueNarrowsTheSelection()
{
    makeTwoLayers();
    select({m_wall, m_door});
    tree().topLevelItem(kLayer)->setExpanded(true);
    click(tree().topLevelItem(kLayer)->child(1), 1);
    QCOMPARE(m_session->selection(), std::vector<ZvDbObjectId>{m_door});
    QCOMPARE(valueText(kLayer), QStringLiteral("doors"));
    QCOMPARE(tree().topLevelItem(kLayer)->childCount(), 0);
}

void tst_workbench_propertypanel::enterOnAValueNarrowsTheSelection()
{
    makeTwoLayers();
    select({m_wall, m_door});
    tree().topLevelItem(kLayer)->setExpanded(true);
    tree().setFocus();
    tree().setCurrentItem(tree().topLevelItem(kLayer)->child(0));
    QTest::keyClick(&tree(), Qt::Key_Return);
    QCOMPARE(m_session->selection(), std::vector<ZvDbObjectId>{m_wall});
}

void tst_workbench_propertypanel::anUnfoldedRowFollowsTheSelection()
{
    makeTwoLayers();
    const ZvDbObjectId zero = m_session->addLine({0, 80, 0}, {100, 80, 0});
    select({m_wall, m_door});
    tree().topLevelItem(kLayer)->setExpanded(true);
    select({m_wall, m_door, zero});
    QTRY_COMPARE(valueText(kLayer), QStringLiteral("mixed (3 values)"));
    QCOMPARE(values(kLayer), QStringList({"walls: 1 entity", "doors: 1 entity", "0: 1 entity"}));
    select({});
    QCOMPARE(tree().topLevelItem(kLayer)->childCount(), 0);
    QCOMPARE(valueText(kLayer), QStringLiteral("0"));
}

void tst_workbench_propertypanel::aLargeUnfoldedSelectionFoldsWhenItChanges()
{
    makeTwoLayers();
    std::vector<ZvDbObjectId> ids{m_wall, m_door};
    for (int i = 0; i < 20001; ++i)
        ids.push_back(m_session->addLine({double(i), 0, 0}, {double(i), 10, 0}));
    select(ids);
    QTreeWidgetItem *item = tree().topLevelItem(kLayer);
    item->setExpanded(true);
    QCOMPARE(item->childCount(), 3);
    ids.pop_back();
    select(ids);
    QTRY_VERIFY(!item->isExpanded());
    QCOMPARE(valueText(kLayer), QStringLiteral("mixed"));
    QCOMPARE(item->childCount(), 0);
}

void tst_workbench_propertypanel::writingColourIsOneStepAndSaved()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("coloured.dxf"));
    makeTwoLayers();
    select({m_wall, m_door});
    pick(kColor, QStringLiteral("3"));
    QCOMPARE(colorOf(m_wall), QStringLiteral("3"));
    QCOMPARE(colorOf(m_door), QStringLiteral("3"));
    QCOMPARE(valueText(kColor), QStringLiteral("3"));
    QCOMPARE(m_session->selection().size(), std::size_t(2));
    QCOMPARE(colorText(m_session->database().cecolor()), QStringLiteral("ByLayer"));
    QCOMPARE(window().focusWidget(), static_cast<QWidget *>(&m_session->view()));

    ZvDbFileReport report;
    QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), toZvString(path), report), Zv::eOk);
    const ZvDbDatabasePtr reread = ZvDbDatabase::create();
    QCOMPARE(reread->readFile(toZvString(path), report), Zv::eOk);
    QCOMPARE(reread->entityCount(), 2);
    for (const ZvDbObjectId id : {m_wall, m_door})
        QCOMPARE(colorOf(reread->idOfHandle(id.handle())), QStringLiteral("3"));

    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(colorOf(m_wall), QStringLiteral("ByLayer"));
    QCOMPARE(colorOf(m_door), QStringLiteral("ByLayer"));
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_propertypanel::writesEveryProperty_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("value");
    QTest::newRow("layer") << int(kLayer) << "doors";
    QTest::newRow("colour") << int(kColor) << "ByBlock";
    QTest::newRow("line type") << int(kLineType) << "Continuous";
    QTest::newRow("line weight") << int(kLineWeight) << "0.50";
    QTest::newRow("line weight default") << int(kLineWeight) << "Default";
    QTest::newRow("material") << int(kMaterial) << "ByBlock";
    QTest::newRow("plot style") << int(kPlotStyle) << "ByBlock";
}

void tst_workbench_propertypanel::writesEveryProperty()
{
    QFETCH(int, row);
    QFETCH(QString, value);
    makeTwoLayers();
    select({m_wall});
    QVERIFY(valueText(row) != value);
    pick(row, value);
    QCOMPARE(valueText(row), value);
    QVERIFY(m_session->database().canUndo());
    m_session->action("undo")->trigger();
    waitForIdle();
    QVERIFY(!m_session->database().canUndo());
    QVERIFY(valueText(row) != value);
}

void tst_workbench_propertypanel::writesCurrentValues_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("value");
    QTest::newRow("layer") << int(kLayer) << "walls";
    QTest::newRow("colour") << int(kColor) << "5";
    QTest::newRow("line type") << int(kLineType) << "ByBlock";
    QTest::newRow("line weight") << int(kLineWeight) << "0.35";
}

void tst_workbench_propertypanel::writesCurrentValues()
{
    QFETCH(int, row);
    QFETCH(QString, value);
    makeTwoLayers();
    pick(row, value);
    QCOMPARE(valueText(row), value);
    QCOMPARE(colorOf(m_wall), QStringLiteral("ByLayer"));
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {1, 1, 0});
    select({line});
    QCOMPARE(valueText(row), value);
}

void tst_workbench_propertypanel::addStyles()
{
    m_session->newDrawing();
    ZvDbDatabase &database = m_session->database();
    ZvDbObjectId id;
    {
        auto *style = new ZvDbTextStyleTableRecord;
        style->setName("Titles");
        const ZvDbObjectPointer<ZvDbTextStyleTable> table(database.textStyleTableId(), ZvDb::kForWrite);
        QCOMPARE(table->add(style, id), Zv::eOk);
        style->close();
    }
    {
        auto *style = new ZvDbDimStyleTableRecord;
        style->setName("Site");
        const ZvDbObjectPointer<ZvDbDimStyleTable> table(database.dimStyleTableId(), ZvDb::kForWrite);
        QCOMPARE(table->add(style, id), Zv::eOk);
        style->close();
    }
    for (const auto &[dictionary, style] :
         {std::pair<ZvDbObjectId, ZvDbObject *>(database.mleaderStyleDictionaryId(true), new ZvDbMLeaderStyle),
          std::pair<ZvDbObjectId, ZvDbObject *>(database.tableStyleDictionaryId(true), new ZvDbTableStyle)}) {
        const ZvDbObjectPointer<ZvDbDictionary> entries(dictionary, ZvDb::kForWrite);
        QCOMPARE(entries->setAt("Small", style, id), Zv::eOk);
        style->close();
    }
    database.clearUndo();
}

void tst_workbench_propertypanel::writesCurrentStyles_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("value");
    QTest::newRow("text style") << int(kTextStyle) << "Titles";
    QTest::newRow("dimension style") << int(kDimStyle) << "Site";
    QTest::newRow("multileader style") << int(kMLeaderStyle) << "Small";
    QTest::newRow("table style") << int(kTableStyle) << "Small";
}

void tst_workbench_propertypanel::writesCurrentStyles()
{
    QFETCH(int, row);
    QFETCH(QString, value);
    addStyles();
    const QString before = valueText(row);
    QVERIFY(before != value);
    pick(row, value);
    QCOMPARE(valueText(row), value);
    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(valueText(row), before);
}

void tst_workbench_propertypanel::writesStylesOfEntities()
{
    addStyles();
    ZvDbDatabase &database = m_session->database();
    ZvDbObjectId text;
    ZvDbObjectId another;
    QCOMPARE(database.appendEntity(new ZvDbText, database.modelSpaceId(), text), Zv::eOk);
    QCOMPARE(database.appendEntity(new ZvDbText, database.modelSpaceId(), another), Zv::eOk);
    database.clearUndo();
    const QString current = nameOf(database.textstyle());
    select({text, another});
    QCOMPARE(valueText(kTextStyle), current);
    pick(kTextStyle, QStringLiteral("Titles"));
    QCOMPARE(valueText(kTextStyle), QStringLiteral("Titles"));
    for (const ZvDbObjectId id : {text, another})
        QCOMPARE(read<ZvDbText>(id, [](const ZvDbText &entity) { return nameOf(entity.textStyle()); }),
                 QStringLiteral("Titles"));
    QCOMPARE(nameOf(database.textstyle()), current);
}

void tst_workbench_propertypanel::aTypedColourIsWritten()
{
    makeTwoLayers();
    select({m_wall});
    QComboBox *editor = openEditor(kColor);
    QVERIFY(editor && editor->isEditable());
    QTRY_VERIFY(editor->view()->isVisible());
    editor->hidePopup();
    editor->lineEdit()->selectAll();
    QTest::keyClicks(editor->lineEdit(), QStringLiteral("255, 128,0"));
    QTest::keyClick(editor->lineEdit(), Qt::Key_Return);
    waitForIdle();
    QTRY_COMPARE(valueText(kColor), QStringLiteral("255,128,0"));
    QCOMPARE(colorOf(m_wall), QStringLiteral("255,128,0"));
}

void tst_workbench_propertypanel::textsThatAreNoColourAreNotWritten_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "0", "256", "-1", "red", "1,2", "1,2,3,4", "1,2,256", "1,2,x"})
        QTest::newRow(*text ? text : "empty") << QString::fromLatin1(text);
}

void tst_workbench_propertypanel::textsThatAreNoColourAreNotWritten()
{
    QFETCH(QString, text);
    makeTwoLayers();
    select({m_wall});
    QVERIFY(!panel().rows()[kColor]->write(text));
    waitForIdle();
    QCOMPARE(colorOf(m_wall), QStringLiteral("ByLayer"));
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_propertypanel::theKeyboardEditsToo_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("F2") << int(Qt::Key_F2);
}

void tst_workbench_propertypanel::theKeyboardEditsToo()
{
    QFETCH(int, key);
    makeTwoLayers();
    select({m_wall});
    window().activateWindow();
    tree().setFocus();
    tree().setCurrentItem(tree().topLevelItem(kLayer)); // in the first column
    QTest::keyClick(&tree(), Qt::Key(key));
    auto *editor = tree().findChild<QComboBox *>(QStringLiteral("propertyEditor"));
    QVERIFY(editor);
    QCOMPARE(editor->currentText(), QStringLiteral("walls"));
    QTRY_VERIFY(editor->view()->isVisible());
    editor->view()->setCurrentIndex(editor->model()->index(editor->findText(QStringLiteral("doors")), 0));
    QTest::keyClick(editor->view(), Qt::Key_Return);
    waitForIdle();
    QCOMPARE(valueText(kLayer), QStringLiteral("doors"));
}

void tst_workbench_propertypanel::escapeWritesNothing()
{
    makeTwoLayers();
    select({m_wall, m_door});
    QComboBox *editor = openEditor(kLayer);
    QVERIFY(editor);
    QCOMPARE(editor->currentIndex(), -1); // of a mixed row
    QTRY_VERIFY(editor->view()->isVisible());
    QTest::keyClick(editor->view(), Qt::Key_Escape);
    QTest::keyClick(editor, Qt::Key_Escape);
    QTRY_VERIFY(!tree().findChild<QComboBox *>(QStringLiteral("propertyEditor")));
    waitForIdle();
    QCOMPARE(valueText(kLayer), QStringLiteral("mixed"));
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_propertypanel::theSameValueIsNotWrittenAgain()
{
    makeTwoLayers();
    select({m_wall});
    QSignalSpy refreshed(panel().rows()[kLayer], &PropertyRow::refreshed);
    pick(kLayer, QStringLiteral("walls"));
    QCOMPARE(refreshed.count(), 0); // no command ran
}

void tst_workbench_propertypanel::lockedLayersAreReported()
{
    makeTwoLayers();
    addLayer("fixed", true);
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(m_door, ZvDb::kForWrite);
        entity->setLayer(ZvString("fixed"));
    }
    select({m_wall, m_door});
    ModalDriver driver;
    QString message;
    driver.next([&message](QDialog *dialog) {
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            message += label->text();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    pick(kColor, QStringLiteral("1"));
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QVERIFY2(message.contains(QStringLiteral("在锁定图层上有 1 个对象未被更新。")), qPrintable(message));
    QCOMPARE(colorOf(m_wall), QStringLiteral("1"));
    QCOMPARE(colorOf(m_door), QStringLiteral("ByLayer"));
    QCOMPARE(valueText(kColor), QStringLiteral("mixed"));
}

void tst_workbench_propertypanel::undoIsShown()
{
    makeTwoLayers();
    select({m_wall});
    pick(kLayer, QStringLiteral("doors"));
    QCOMPARE(valueText(kLayer), QStringLiteral("doors"));
    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(valueText(kLayer), m_session->selection().empty() ? QStringLiteral("0") : QStringLiteral("walls"));
    m_session->action("redo")->trigger();
    waitForIdle();
    select({m_wall});
    QCOMPARE(valueText(kLayer), QStringLiteral("doors"));
}

void tst_workbench_propertypanel::anotherDrawingIsShown()
{
    makeTwoLayers();
    ZvApDocument *first = m_session->document();
    select({m_wall});
    m_session->newDrawing();
    QCOMPARE(valueText(kLayer), QStringLiteral("0"));
    QCOMPARE(summary(), QStringLiteral("Nothing selected: current values"));
    zvDocManagerPtr()->setCurrentDocument(first);
    QCOMPARE(valueText(kLayer), QStringLiteral("walls"));
}

void tst_workbench_propertypanel::isOpenAgainTheNextTime()
{
    m_session.reset();
    const QTemporaryDir folder;
    const QString ini = folder.filePath(QStringLiteral("settings.ini"));
    for (const bool isOpen : {false, true, true}) {
        Workbench workbench(std::make_unique<QSettings>(ini, QSettings::IniFormat));
        workbench.window().show();
        auto *dock = workbench.window().findChild<QDockWidget *>(QStringLiteral("propertyPanelDock"));
        QCOMPARE(dock->isVisible(), isOpen);
        dock->show();
        workbench.window().close();
    }
}

ZEVA_TEST_MAIN(tst_workbench_propertypanel)
#include "tst_workbench_propertypanel.moc"
