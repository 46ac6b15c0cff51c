// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "commandline.h"
#include "controlsdriver.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "modaldriver.h"
#include "namedkinds.h"
#include "textforms.h"
#include "viewmanager.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvodasetting.h"

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QToolBar>
#include <QTreeWidget>

#include <iterator>
#include <memory>

namespace {

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

struct Drawing
{
    const char *name;
    const char *path;
};
const Drawing kDrawings[] = {
    {"sample", ZEVA_SAMPLES_DIR "/plan.dxf"},
    {"all entities", ZEVA_DRAWINGS_DIR "/dxf/all-entities-r2018.dxf"},
    {"another program's", ZEVA_DRAWINGS_DIR "/dxf/netdxf-sample-r2018.dxf"},
};

/// The drop-downs of the tool bars that follow the selection.
const struct
{
    const char *kind;
    const char *combo;
} kCombos[] = {
    {"text style", "textStyleCombo"},   {"dimension style", "dimensionStyleCombo"}, {"multileader style", "multileaderStyleCombo"},
    {"table style", "tableStyleCombo"}, {"material", "materialCombo"},              {"plot style name", "plotStyleCombo"},
};

const NamedKind &kindOf(const char *name)
{
    for (const NamedKind &kind : kNamedKinds) {
        if (qstrcmp(kind.name, name) == 0)
            return kind;
    }
    qFatal("no such kind");
}

QString kindOfEntity(const NamedKind &kind, ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
    return entity ? toQString(kind.of(*entity)) : QString();
}

} // namespace

/// Styles, named objects, coordinate systems and views in the workbench: tool bars, the window of controls, the view
/// manager, and journeys over them.
class tst_workbench_names : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theToolBarsShowTheDrawing();
    void withoutADrawingAllAreDisabled();
    void everyPickerOfTheWindow_data();
    void everyPickerOfTheWindow();
    void cellStylesFollowTheTableStyle_data();
    void cellStylesFollowTheTableStyle();

    void journeyOfNamedObjects_data();
    void journeyOfNamedObjects();
    void namesOfAllKindsReachTheFile_data();
    void namesOfAllKindsReachTheFile();
    void renamedAndDeletedStyles_data();
    void renamedAndDeletedStyles();
    void layoutsHaveSystemsAndViewsOfTheirOwn_data() { drawings(); }
    void layoutsHaveSystemsAndViewsOfTheirOwn();
    void previousSystemComesBack_data() { drawings(); }
    void previousSystemComesBack();
    void viewsArePickedByAllKindsOfNames_data();
    void viewsArePickedByAllKindsOfNames();

    void viewManagerSavesRenamesAndDeletes();
    void viewManagerShowsWhichViewItWorksOn();
    void viewManagerRefusesNames_data();
    void viewManagerRefusesNames();
    void viewManagerShowsAView();
    void viewRowOpensTheManager();
    void viewCommandInAMacroAsksNobody();
    void viewsAreListedAtTheCommandLine();

private:
    static void drawings()
    {
        QTest::addColumn<QString>("path");
        for (const Drawing &drawing : kDrawings)
            QTest::newRow(drawing.name) << s(drawing.path);
    }
    MainWindow &window() { return m_session->window(); }
    ZvDbDatabase &database() { return m_session->database(); }
    QComboBox &combo(const char *name) { return *window().findChild<QComboBox *>(QLatin1String(name)); }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    void pick(const char *name, const QString &text)
    {
        pickByMouse(combo(name), text);
        waitForIdle();
    }
    void run(const char *macro)
    {
        zvedMenuMacro(ZvString(macro), false);
        waitForIdle();
    }
    void undo()
    {
        m_session->action("undo")->trigger();
        waitForIdle();
    }
    bool open(const QString &path)
    {
        ZvDbFileReport report;
        const bool isOpen = zvDocManagerPtr()->openDocument(toZvString(path), report);
        return QTest::qWaitFor([this] { return !window().host()->isBusy(); }) && isOpen;
    }
    void select(const std::vector<ZvDbObjectId> &ids)
    {
        m_session->document()->editingContext()->selectionHolder()->set(ids);
    }
    template <class Table, class Record> ZvDbObjectId addRecord(const QString &name)
    {
        return ::addRecord<Table, Record>(database(), toZvString(name));
    }
    ZvDbObjectId addTextStyle(const QString &name)
    {
        return addRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(name);
    }
    /// What is saved now, read again.
    ZvDbDatabasePtr reread()
    {
        const QTemporaryDir folder;
        ZvDbFileReport report;
        const ZvString path = toZvString(folder.filePath(s("saved.dxf")));
        ZvDbDatabasePtr database = ZvDbDatabase::create();
        if (zvDocManagerPtr()->saveDocument(m_session->document(), path, report) != Zv::eOk
            || database->readFile(path, report) != Zv::eOk)
            QTest::qFail(report.message.toUtf8().c_str(), __FILE__, __LINE__);
        return database;
    }
    QTreeWidget &views(ViewManager &manager) { return *manager.findChild<QTreeWidget *>(s("viewList")); }
    static QString message(ViewManager &manager) { return manager.findChild<QLabel *>(s("message"))->text(); }
    static void press(ViewManager &manager, const char *button)
    {
        QTest::mouseClick(manager.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
    }
    /// Types into the editor of the row at hand.
    void typeName(ViewManager &manager, const QString &name)
    {
        auto *editor = views(manager).findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        editor->insert(name);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!views(manager).findChild<QLineEdit *>());
    }
    QStringList viewNames(ViewManager &manager)
    {
        QStringList names;
        for (int row = 0; row < views(manager).topLevelItemCount(); ++row)
            names << views(manager).topLevelItem(row)->text(0);
        return names;
    }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_names::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    window().resize(1500, 800);
}

void tst_workbench_names::cleanup()
{
    if (m_session->document())
        database().setModified(false);
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

#define OPEN_OR_SKIP(path)                                                                                             \
    do {                                                                                                               \
        if (!QFile::exists(path))                                                                                      \
            QSKIP("the drawing is not here");                                                                          \
        QVERIFY(open(path));                                                                                           \
    } while (false)

// ---- tool bars and window

void tst_workbench_names::theToolBarsShowTheDrawing()
{
    m_session->newDrawing();
    QCOMPARE(combo("textStyleCombo").currentText(), s("Standard"));
    QCOMPARE(combo("dimensionStyleCombo").currentText(), nameOf(database().dimstyle()));
    QCOMPARE(combo("ucsCombo").currentText(), s("世界"));
    QCOMPARE(combo("viewCombo").currentText(), s("当前"));
    QCOMPARE(combo("plotStyleCombo").currentText(), s("ByLayer"));
    QVERIFY(!combo("materialCombo").currentText().isEmpty());
    int highest = 0;
    for (const char *bar : {"stylesBar", "viewsBar"}) {
        const auto *found = window().findChild<QToolBar *>(QLatin1String(bar));
        QVERIFY(found && found->isVisible());
        QCOMPARE(found->findChildren<QComboBox *>().size(), 4);
        for (const QComboBox *one : found->findChildren<QComboBox *>()) {
            QVERIFY2(!one->accessibleName().isEmpty() && !one->toolTip().isEmpty(), qPrintable(one->objectName()));
            QVERIFY(highest == 0 || qAbs(one->height() - highest) <= 2);
            highest = one->height();
        }
    }
}

void tst_workbench_names::withoutADrawingAllAreDisabled()
{
    const char *const names[] = {"textStyleCombo", "dimensionStyleCombo", "multileaderStyleCombo", "tableStyleCombo",
                                 "ucsCombo",       "materialCombo",       "plotStyleCombo"};
    m_session->newDrawing();
    for (const char *name : names)
        QVERIFY2(combo(name).isEnabled(), name);
    zvDocManagerPtr()->closeDocument(m_session->document());
    for (const char *name : names) {
        QVERIFY2(!combo(name).isEnabled(), name);
        QCOMPARE(combo(name).currentText(), QString());
    }
    m_session->newDrawing();
    for (const char *name : names)
        QVERIFY2(combo(name).isEnabled(), name);
}

void tst_workbench_names::everyPickerOfTheWindow_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QStringList>("rows"); // that the list begins with
    QTest::newRow("layers") << "ZvUtilsLayerComboBox"
                            << "layerPicker" << QStringList{s("0")};
    QTest::newRow("layers or the current one") << "ZvUtilsLayerComboBox"
                                               << "layerPickerCurrent" << QStringList{s("使用当前项"), s("0")};
    QTest::newRow("text styles") << "ZvUtilsTextStyleComboBox"
                                 << "textStylePicker" << QStringList{s("Annotative"), s("Standard")};
    QTest::newRow("table styles") << "ZvUtilsTableStyleComboBox"
                                  << "tableStylePicker" << QStringList{s("Standard")};
    QTest::newRow("cell styles") << "ZvUtilsTableCellStyleComboBox"
                                 << "cellStylePicker" << QStringList{s("按行/列"), s("表头"), s("标题"), s("数据")};
    QTest::newRow("cell styles of a row") << "ZvUtilsTableCellRowStyleComboBox"
                                          << "rowStylePicker" << QStringList{s("表头"), s("标题"), s("数据")};
    QTest::newRow("cell styles of a column")
        << "ZvUtilsTableCellColStyleComboBox"
        << "columnStylePicker" << QStringList{s("(无)"), s("表头"), s("标题"), s("数据")};
    QTest::newRow("units") << "ZvUtilsBlockUnitComboBox"
                           << "unitPicker" << QStringList{s("无单位"), s("英寸")};
    QTest::newRow("plot style tables") << "ZvUtilsPlotStyleTableComboBox"
                                       << "plotTablePicker" << QStringList{s("无")};
    QTest::newRow("shade plot modes") << "ZvUtilsShadePlotComboBox"
                                      << "shadePlotPicker" << QStringList{s("As displayed"), s("Wireframe")};
}

void tst_workbench_names::everyPickerOfTheWindow()
{
    QFETCH(QString, page);
    QFETCH(QString, id);
    QFETCH(QStringList, rows);
    m_session->newDrawing();
    ControlsDriver controls(*m_session, page.toUtf8());
    auto *picker = controls.control<QComboBox>(id.toUtf8());
    QVERIFY(picker && picker->isVisible());
    QCOMPARE(rowsOf(*picker).mid(0, rows.size()), rows);
    const std::uint64_t before = database().changeStamp();
    const int row = rows.size() - 1;
    pickByMouse(*picker, row);
    waitForIdle();
    QVERIFY(controls.told().contains(s("%1: activated(%2)").arg(id).arg(row)));
    QVERIFY(controls.told().contains(s("%1: textActivated(%2)").arg(id, rows.last())));
    QCOMPARE(database().changeStamp(), before);
}

void tst_workbench_names::cellStylesFollowTheTableStyle_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("id");
    QTest::newRow("cells") << "ZvUtilsTableCellStyleComboBox"
                           << "cellStylePicker";
    QTest::newRow("rows") << "ZvUtilsTableCellRowStyleComboBox"
                          << "rowStylePicker";
    QTest::newRow("columns") << "ZvUtilsTableCellColStyleComboBox"
                             << "columnStylePicker";
}

void tst_workbench_names::cellStylesFollowTheTableStyle()
{
    QFETCH(QString, page);
    QFETCH(QString, id);
    m_session->newDrawing();
    {
        const ZvDbObjectPointer<ZvDbDictionary> styles(database().tableStyleDictionaryId(true), ZvDb::kForWrite);
        auto *style = new ZvDbTableStyle;
        ZvDbObjectId added;
        QCOMPARE(styles->setAt(L"Other", style, added), Zv::eOk);
        style->close();
    }
    ControlsDriver controls(*m_session, page.toUtf8());
    auto *cells = controls.control<QComboBox>(id.toUtf8());
    cells->addItem(s("left over"));
    pickByMouse(*controls.control<QComboBox>("tableStyle"), s("Other"));
    QVERIFY(!rowsOf(*cells).contains(s("left over"))); // filled anew
}

// ---- journeys

void tst_workbench_names::journeyOfNamedObjects_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<QString>("path");
    for (int at = 0; at < int(std::size(kCombos)); ++at) {
        for (const Drawing &drawing : kDrawings)
            QTest::addRow("%s, %s", kCombos[at].kind, drawing.name) << at << s(drawing.path);
    }
}

void tst_workbench_names::journeyOfNamedObjects()
{
    QFETCH(int, at);
    QFETCH(QString, path);
    OPEN_OR_SKIP(path);
    const NamedKind &kind = kindOf(kCombos[at].kind);
    QComboBox &list = combo(kCombos[at].combo);
    const ZvDbObjectId alpha = kind.add(database(), L"Journey Alpha");
    const ZvDbObjectId gamma = kind.add(database(), L"Journey Gamma");
    kind.add(database(), L"Journey Beta");
    const ZvDbObjectId first = kind.addEntity(database(), alpha, L"Journey Alpha");
    const ZvDbObjectId second = kind.addEntity(database(), gamma, L"Journey Gamma");
    const ZvString current = kind.current(database());
    const QString shown = list.currentText();
    select({first, second});
    QCOMPARE(list.currentIndex(), -1);
    QVERIFY(list.isEnabled());
    select({first});
    QCOMPARE(list.currentText(), s("Journey Alpha"));
    select({first, second});
    pick(kCombos[at].combo, s("Journey Beta"));
    QCOMPARE(kindOfEntity(kind, first), s("Journey Beta"));
    QCOMPARE(kindOfEntity(kind, second), s("Journey Beta"));
    QCOMPARE(list.currentText(), s("Journey Beta"));
    QCOMPARE(toQString(kind.current(database())), toQString(current));
    QCOMPARE(window().focusWidget(), static_cast<QWidget *>(&m_session->view()));
    {
        const ZvDbDatabasePtr saved = reread();
        QCOMPARE(kindOfEntity(kind, saved->idOfHandle(first.handle())), s("Journey Beta"));
        QCOMPARE(kindOfEntity(kind, saved->idOfHandle(second.handle())), s("Journey Beta"));
    }
    undo();
    QCOMPARE(kindOfEntity(kind, first), s("Journey Alpha"));
    QCOMPARE(kindOfEntity(kind, second), s("Journey Gamma"));
    QCOMPARE(list.currentIndex(), -1);
    select({});
    QCOMPARE(list.currentText(), shown);
    pick(kCombos[at].combo, s("Journey Beta")); // with nothing selected: of new entities
    QCOMPARE(toQString(kind.current(database())), s("Journey Beta"));
    QCOMPARE(toQString(kind.current(*reread())), s("Journey Beta"));
    undo();
    QCOMPARE(toQString(kind.current(database())), toQString(current));
    QCOMPARE(list.currentText(), shown);
}

void tst_workbench_names::namesOfAllKindsReachTheFile_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<QString>("name");
    const struct
    {
        const char *row;
        QString name;
    } names[] = {
        {"blanks", s("two  words here")},
        {"apostrophe", s("the owner's")},
        {"quotes", s("the \"best\" one")},
        {"semicolon", s("a;b")},
        {"Chinese", s("建筑 标准")},
        {"caret", s("^C^C up^")},
        {"percent signs", s("%%c 100%")},
        {"escapes of texts", s("\\P {x}")},
        {"255 characters", QString(255, QLatin1Char('x'))},
        {"255 Chinese characters", QString(255, QChar(0x5EFA))},
    };
    for (int at = 0; at < int(std::size(kCombos)); ++at) {
        for (const auto &name : names)
            QTest::addRow("%s, %s", kCombos[at].kind, name.row) << at << name.name;
    }
}

void tst_workbench_names::namesOfAllKindsReachTheFile()
{
    QFETCH(int, at);
    QFETCH(QString, name);
    m_session->newDrawing();
    const NamedKind &kind = kindOf(kCombos[at].kind);
    if (kind.add(database(), toZvString(name)).isNull()) {
        // Records of tables have neither of these in their names; objects in dictionaries may.
        QVERIFY(QByteArray(kind.name) == "text style" || QByteArray(kind.name) == "dimension style");
        QVERIFY(name.contains(QRegularExpression(s("[\";\\\\]"))));
        return;
    }
    const ZvDbObjectId other = kind.add(database(), L"Other");
    const ZvDbObjectId entity = kind.addEntity(database(), other, L"Other");
    pick(kCombos[at].combo, name);
    QCOMPARE(toQString(kind.current(database())), name);
    select({entity});
    QCOMPARE(combo(kCombos[at].combo).currentText(), s("Other"));
    pick(kCombos[at].combo, name);
    QCOMPARE(kindOfEntity(kind, entity), name);
    QCOMPARE(combo(kCombos[at].combo).currentText(), name);
    const ZvDbDatabasePtr saved = reread();
    QCOMPARE(toQString(kind.current(*saved)), name);
    QCOMPARE(kindOfEntity(kind, saved->idOfHandle(entity.handle())), name);
}

void tst_workbench_names::renamedAndDeletedStyles_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<bool>("isOpen");
    for (int at = 0; at < int(std::size(kCombos)); ++at) {
        QTest::addRow("%s, with the list open", kCombos[at].kind) << at << true;
        QTest::addRow("%s, with the list closed", kCombos[at].kind) << at << false;
    }
}

/// Gives an object another name: a record by itself, another one in its dictionary.
static void renameObject(ZvDbObjectId id, const ZvString &name)
{
    ZvDbObjectId owner;
    {
        const ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForWrite);
        if (auto *record = zvrxCast<ZvDbSymbolTableRecord>(object.get())) {
            QCOMPARE(record->setName(name), Zv::eOk);
            return;
        }
        owner = object->ownerId();
    }
    const ZvDbObjectPointer<ZvDbDictionary> dictionary(owner, ZvDb::kForWrite);
    QCOMPARE(dictionary->rename(dictionary->nameAt(id), name), Zv::eOk);
}

void tst_workbench_names::renamedAndDeletedStyles()
{
    QFETCH(int, at);
    QFETCH(bool, isOpen);
    m_session->newDrawing();
    const NamedKind &kind = kindOf(kCombos[at].kind);
    const ZvDbObjectId shown = kind.add(database(), L"Shown");
    const ZvDbObjectId other = kind.add(database(), L"Other");
    kind.set(database(), shown, L"Shown");
    run("_.REGEN"); // not every control hears of every variable
    QComboBox &styles = combo(kCombos[at].combo);
    QCOMPARE(styles.currentText(), s("Shown"));
    styles.showPopup();
    QTRY_VERIFY(styles.view()->isVisible());
    if (!isOpen)
        styles.hidePopup();
    renameObject(shown, L"Renamed");
    {
        const ZvDbObjectPointer<ZvDbObject> record(other, ZvDb::kForWrite);
        QCOMPARE(record->erase(), Zv::eOk);
    }
    run("_.REGEN");
    const QString name = toQString(kind.current(database()));
    QCOMPARE(styles.currentText(), name);
    QVERIFY(styles.findText(s("Other")) >= 0); // until the list is filled again
    if (isOpen) { // what is not there any more is picked: nothing happens to the drawing
        const int row = styles.findText(s("Other"));
        styles.view()->scrollTo(styles.model()->index(row, 0));
        styles.view()->setCurrentIndex(styles.model()->index(row, 0));
        QTest::keyClick(styles.view(), Qt::Key_Return);
        QTRY_VERIFY(!styles.view()->isVisible());
        waitForIdle();
        QCOMPARE(toQString(kind.current(database())), name);
        QCOMPARE(styles.currentText(), name); // and the end of the command shows what is
    }
    styles.showPopup();
    QTRY_VERIFY(styles.view()->isVisible());
    QCOMPARE(styles.findText(s("Other")), -1);
    QCOMPARE(styles.findText(s("Shown")) >= 0, name == s("Shown"));
    QVERIFY(styles.findText(s("Renamed")) >= 0);
    QCOMPARE(styles.currentText(), name);
    styles.hidePopup();
}

void tst_workbench_names::layoutsHaveSystemsAndViewsOfTheirOwn()
{
    QFETCH(QString, path);
    OPEN_OR_SKIP(path);
    database().setTilemode(true);
    waitForIdle();
    run("_.-VIEW _Save Seen in the model;");
    pick("ucsCombo", s("前视"));
    QCOMPARE(combo("ucsCombo").currentText(), s("前视"));
    database().setTilemode(false);
    waitForIdle();
    const QString onPaper = combo("ucsCombo").currentText();
    QVERIFY(onPaper != s("前视"));
    run("_.-VIEW _Save Seen on paper;");
    combo("viewCombo").showPopup();
    combo("viewCombo").hidePopup();
    QVERIFY(combo("viewCombo").findText(s("Seen on paper")) >= 0);
    QCOMPARE(combo("viewCombo").findText(s("Seen in the model")), -1);
    database().setTilemode(true);
    waitForIdle();
    QCOMPARE(combo("ucsCombo").currentText(), s("前视"));
    combo("viewCombo").showPopup();
    combo("viewCombo").hidePopup();
    QVERIFY(combo("viewCombo").findText(s("Seen in the model")) >= 0);
    QCOMPARE(combo("viewCombo").findText(s("Seen on paper")), -1);
    // All of it is in the file.
    const ZvDbDatabasePtr saved = reread();
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> views;
    ZevaUISetting::getCustomViews(views, saved);
    QStringList names;
    for (const ZevaUISetting::ZvsiViewInfoItem &view : views)
        names << toQString(view.name);
    QVERIFY(names.contains(s("Seen in the model")));
    QVERIFY(!names.contains(s("Seen on paper")));
    QVERIFY(saved->ucsydir().isEqualTo(ZvGeVector3d(0, 0, 1)));
}

void tst_workbench_names::previousSystemComesBack()
{
    QFETCH(QString, path);
    OPEN_OR_SKIP(path);
    database().setTilemode(true);
    waitForIdle();
    pick("ucsCombo", s("左视"));
    run("_.UCS _Named _Save Site;");
    QCOMPARE(combo("ucsCombo").currentText(), s("Site"));
    pick("ucsCombo", s("世界"));
    QCOMPARE(combo("ucsCombo").currentText(), s("世界"));
    pick("ucsCombo", s("上一个"));
    QCOMPARE(combo("ucsCombo").currentText(), s("Site"));
    undo();
    QCOMPARE(combo("ucsCombo").currentText(), s("世界"));
    pick("ucsCombo", s("Site"));
    QCOMPARE(combo("ucsCombo").currentText(), s("Site"));
    const ZvDbDatabasePtr saved = reread();
    QCOMPARE(nameOf(saved->ucsname()), s("Site"));
    QVERIFY(saved->ucsxdir().isEqualTo(ZvGeVector3d(0, -1, 0)));
}

void tst_workbench_names::viewsArePickedByAllKindsOfNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << s("ground floor  east");
    QTest::newRow("apostrophe") << s("the owner's");
    QTest::newRow("Chinese") << s("南立面 一层");
    QTest::newRow("255 characters") << QString(255, QLatin1Char('w'));
    QTest::newRow("a keyword") << s("TOP");
    QTest::newRow("caret") << s("^C^C up");
}

void tst_workbench_names::viewsArePickedByAllKindsOfNames()
{
    QFETCH(QString, name);
    m_session->newDrawing();
    const ZvDbObjectId view = addRecord<ZvDbViewTable, ZvDbViewTableRecord>(name);
    {
        const ZvDbObjectPointer<ZvDbViewTableRecord> record(view, ZvDb::kForWrite);
        QVERIFY(record);
        record->setCenterPoint({1000, 2000});
        record->setWidth(10);
        record->setHeight(10);
    }
    const ZvDbObjectId system = addRecord<ZvDbUCSTable, ZvDbUCSTableRecord>(name);
    {
        const ZvDbObjectPointer<ZvDbUCSTableRecord> record(system, ZvDb::kForWrite);
        record->setOrigin({7, 8, 9});
    }
    pick("viewCombo", name);
    QVERIFY(qAbs(m_session->view().camera().view().center.x - 1000) < 1e-6);
    QVERIFY(qAbs(m_session->view().camera().view().center.y - 2000) < 1e-6);
    QCOMPARE(combo("viewCombo").currentText(), name);
    pick("ucsCombo", name);
    QCOMPARE(database().ucsname(), system);
    QCOMPARE(combo("ucsCombo").currentText(), name);
}

// ---- the view manager

void tst_workbench_names::viewManagerSavesRenamesAndDeletes()
{
    m_session->newDrawing();
    ViewManager manager(database(), &window());
    manager.show();
    QVERIFY(QTest::qWaitForWindowExposed(&manager));
    QCOMPARE(viewNames(manager), QStringList());
    QCOMPARE(message(manager), s("The drawing has no named views."));
    press(manager, "newButton");
    typeName(manager, s("south side"));
    QCOMPARE(viewNames(manager), QStringList{s("south side")});
    QCOMPARE(message(manager), QString());
    press(manager, "newButton");
    typeName(manager, s("北"));
    QCOMPARE(viewNames(manager).size(), 2);
    press(manager, "renameButton");
    typeName(manager, s("north"));
    QVERIFY(viewNames(manager).contains(s("north")));
    {
        ZvArray<ZevaUISetting::ZvsiViewInfoItem> rows;
        ZevaUISetting::getCustomViews(rows, &database());
        QCOMPARE(rows.length(), 2);
        const ZvDbObjectPointer<ZvDbViewTableRecord> record(rows[0].objectId, ZvDb::kForRead);
        QCOMPARE(record->height(), m_session->view().camera().view().height);
    }
    QTest::keyClick(&views(manager), Qt::Key_Delete);
    QCOMPARE(viewNames(manager), QStringList{s("south side")});
    press(manager, "deleteButton");
    QCOMPARE(viewNames(manager), QStringList());
    press(manager, "deleteButton"); // nothing is left, and nothing happens
    press(manager, "renameButton");
    press(manager, "currentButton");
}

void tst_workbench_names::viewManagerShowsWhichViewItWorksOn()
{
    m_session->newDrawing();
    for (const bool hasViews : {false, true}) {
        if (hasViews) {
            addRecord<ZvDbViewTable, ZvDbViewTableRecord>(s("First"));
            addRecord<ZvDbViewTable, ZvDbViewTableRecord>(s("Second"));
        }
        ViewManager manager(database(), &window());
        manager.show();
        QVERIFY(QTest::qWaitForWindowExposed(&manager));
        for (const char *button : {"renameButton", "deleteButton", "currentButton"})
            QCOMPARE(manager.findChild<QPushButton *>(QLatin1String(button))->isEnabled(), hasViews);
        QVERIFY(manager.findChild<QPushButton *>(s("newButton"))->isEnabled());
        if (!hasViews)
            continue;
        QCOMPARE(views(manager).selectedItems(), QList<QTreeWidgetItem *>{views(manager).topLevelItem(0)});
        press(manager, "deleteButton");
        QCOMPARE(views(manager).selectedItems(), QList<QTreeWidgetItem *>{views(manager).topLevelItem(0)});
        QCOMPARE(viewNames(manager), QStringList{s("Second")});
        press(manager, "deleteButton");
        QVERIFY(!manager.findChild<QPushButton *>(s("deleteButton"))->isEnabled());
        press(manager, "newButton");
        QVERIFY(manager.findChild<QPushButton *>(s("deleteButton"))->isEnabled());
    }
}

void tst_workbench_names::viewManagerRefusesNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told"); // how it begins
    QTest::newRow("empty") << QString() << s("\"\" is not a valid name");
    QTest::newRow("a sign that names cannot hold") << s("a|b") << s("\"a|b\" is not a valid name");
    QTest::newRow("in use") << s("FIRST") << s("There is a view already named FIRST.");
}

void tst_workbench_names::viewManagerRefusesNames()
{
    QFETCH(QString, name);
    QFETCH(QString, told);
    m_session->newDrawing();
    addRecord<ZvDbViewTable, ZvDbViewTableRecord>(s("First"));
    ViewManager manager(database(), &window());
    manager.show();
    QVERIFY(QTest::qWaitForWindowExposed(&manager));
    press(manager, "newButton");
    typeName(manager, name);
    QVERIFY2(message(manager).startsWith(told), qPrintable(message(manager)));
    QCOMPARE(viewNames(manager), (QStringList{s("First"), s("View 1")}));
}

void tst_workbench_names::viewManagerShowsAView()
{
    m_session->newDrawing();
    const ZvDbObjectId id = addRecord<ZvDbViewTable, ZvDbViewTableRecord>(s("Far away"));
    {
        const ZvDbObjectPointer<ZvDbViewTableRecord> record(id, ZvDb::kForWrite);
        record->setCenterPoint({5000, 0});
        record->setWidth(10);
        record->setHeight(10);
    }
    ViewManager manager(database(), &window());
    manager.show();
    QVERIFY(QTest::qWaitForWindowExposed(&manager));
    views(manager).setCurrentItem(views(manager).topLevelItem(0));
    press(manager, "currentButton");
    QVERIFY(qAbs(m_session->view().camera().view().center.x - 5000) < 1e-6);
}

void tst_workbench_names::viewRowOpensTheManager()
{
    m_session->newDrawing();
    bool wasOpen = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        wasOpen = qobject_cast<ViewManager *>(dialog) != nullptr;
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    combo("viewCombo").setCurrentIndex(combo("viewCombo").count() - 1);
    QCOMPARE(combo("viewCombo").currentText(), s("视图管理器..."));
    QTest::keyClick(&combo("viewCombo"), Qt::Key_Up);
    waitForIdle();
    QTest::keyClick(&combo("viewCombo"), Qt::Key_Down);
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QVERIFY(wasOpen);
}

void tst_workbench_names::viewCommandInAMacroAsksNobody()
{
    m_session->newDrawing();
    run("_.VIEW _Save by macro;");
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> rows;
    ZevaUISetting::getCustomViews(rows, &database());
    QCOMPARE(rows.length(), 1);
    QCOMPARE(toQString(rows[0].name), s("by macro"));
}

void tst_workbench_names::viewsAreListedAtTheCommandLine()
{
    m_session->newDrawing();
    run("_.-VIEW ?");
    const QString none = window().commandLine()->history();
    QVERIFY2(none.contains(s("The drawing has no named views.")), qPrintable(none));
    run("_.-VIEW _Save south side;");
    run("_.-VIEW ?");
    const QString text = window().commandLine()->history();
    QVERIFY2(text.contains(s("M  south side")), qPrintable(text));
}

ZEVA_TEST_MAIN(tst_workbench_names)
#include "tst_workbench_names.moc"
