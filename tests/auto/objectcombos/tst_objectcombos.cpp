// SPDX-License-Identifier: MIT
// What each drop-down of named objects has of its own; what they share is tested by namedcombos.
#include "combodriver.h"
#include "drawingtest.h"
#include "drawingtexts.h"
#include "notices.h"

#include "zvqtplotservice.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsblockcombobox.h"
#include "zvutilsblockunitcombobox.h"
#include "zvutilshatchnamecombobox.h"
#include "zvutilslayercombobox.h"
#include "zvutilsplotstylenamecombobox.h"
#include "zvutilsplotstyletablecombobox.h"
#include "zvutilsshadeplotcombobox.h"

#include "base/zvconfig.h"
#include "base/zverror.h"
#include "base/zvregistry.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

typedef std::unique_ptr<QComboBox> Combo;

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

template <class T> Combo make()
{
    return std::make_unique<T>(true, nullptr);
}

Combo makeLayers()
{
    return std::make_unique<ZvUtilsLayerComboBox>(true, ZvUtilsLayerComboBox::kPlain, nullptr);
}

Combo makeBlocks()
{
    return std::make_unique<ZvUtilsBlockComboBox>(true, nullptr, false);
}

const ObjectRow kRules[] = {
    {"layer: its record", makeLayers, isFollowedOfClass<ZvDbLayerTableRecord>, true, true},
    {"layer: viewport", makeLayers, isFollowedOfClass<ZvDbViewport>, true, true},
    {"layer: dictionary of layer states", makeLayers, isFollowedOfDictionary<&ZvDbDatabase::layerStateDictionaryId>,
     true, true},
    {"layer: another dictionary", makeLayers, isFollowedOfDictionary<&ZvDbDatabase::groupDictionaryId>, true, false},
    {"layer: line", makeLayers, isFollowedOfClass<ZvDbLine>, true, false},
    {"layer: no object", makeLayers, isFollowedOfNothing, true, false},
    {"material: the material", make<ZvUtilsMaterialComboBox>, isFollowedOfClass<ZvDbMaterial>, true, true},
    {"material: its dictionary", make<ZvUtilsMaterialComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::materialDictionaryId>, true, false},
    {"material: line", make<ZvUtilsMaterialComboBox>, isFollowedOfClass<ZvDbLine>, true, false},
    {"material: no object", make<ZvUtilsMaterialComboBox>, isFollowedOfNothing, true, false},
    {"plot style name: its dictionary", make<ZvUtilsPlotStyleNameComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::plotStyleDictionaryId>, true, true},
    {"plot style name: another dictionary", make<ZvUtilsPlotStyleNameComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::groupDictionaryId>, true, false},
    {"plot style name: the style", make<ZvUtilsPlotStyleNameComboBox>, isFollowedOfClass<ZvDbPlaceHolder>, true, false},
    {"plot style name: no object", make<ZvUtilsPlotStyleNameComboBox>, isFollowedOfNothing, true, false},
    {"block: block", makeBlocks, isFollowedOfClass<ZvDbBlockTableRecord>, false, false},
    {"block unit: block", make<ZvUtilsBlockUnitComboBox>, isFollowedOfClass<ZvDbBlockTableRecord>, false, false},
    {"hatch name: hatch", make<ZvUtilsHatchNameComboBox>, isFollowedOfClass<ZvDbHatch>, false, false},
    {"plot style table: dictionary of plot styles", make<ZvUtilsPlotStyleTableComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::plotStyleDictionaryId>, false, false},
    {"shade plot: viewport", make<ZvUtilsShadePlotComboBox>, isFollowedOfClass<ZvDbViewport>, false, false},
};

ZvJsonPtr node(int kind)
{
    return ElementValue::createObject(kind);
}

/// One mode: an object of which the first value is the text.
ZvJsonPtr mode(const char *text)
{
    const ZvJsonPtr object = node(IElementValueBase::kObject);
    object->SetDataS("name", text);
    object->SetDataI("code", 7);
    return object;
}

ZvJsonPtr arrayOf(const std::vector<ZvJsonPtr> &elements)
{
    const ZvJsonPtr array = node(IElementValueBase::kArray);
    for (const ZvJsonPtr &element : elements)
        array->append(element);
    return array;
}

/// The application's plotting, for the life of the object.
class PlotService
{
public:
    explicit PlotService(const ZvJsonPtr &modes)
    {
        s_modes = modes;
        s_asked.clear();
        zv_arbitDict_regservice(ZvString(ZvQtPlotService::kKey), ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Service>));
    }
    ~PlotService()
    {
        zv_arbitDict_clearservice(ZvString(ZvQtPlotService::kKey));
        s_modes = ZvJsonPtr();
    }
    Q_DISABLE_COPY(PlotService)

    static const std::vector<ZvDbDatabase *> &asked() { return s_asked; }
    static void setModes(const ZvJsonPtr &modes) { s_modes = modes; }

private:
    class Service : public ZvQtPlotService
    {
    public:
        ZvJsonPtr shadePlotModes(ZvDbDatabase *database) override
        {
            s_asked.push_back(database);
            return s_modes;
        }
    };
    static inline ZvJsonPtr s_modes;
    static inline std::vector<ZvDbDatabase *> s_asked;
};

/// Folders with plot style tables, in the settings for the life of the object.
class PlotStyleFolder
{
public:
    explicit PlotStyleFolder(const QStringList &files)
    {
        for (const QString &name : files) {
            QFile file(m_folder.filePath(name));
            if (!file.open(QIODevice::WriteOnly))
                qFatal("cannot write there");
        }
        const ZvJsonPtr paths = node(IElementValueBase::kArray);
        paths->append(ElementValue::createString(m_folder.path().toUtf8().constData()));
        const ZvJsonPtr settings = node(IElementValueBase::kObject);
        settings->SetDataJ("plotStylePaths", paths);
        zv_runtime_settings()->SetDataJ("paths", settings);
    }
    ~PlotStyleFolder() { zv_runtime_settings()->SetDataJ("paths", nullptr); }
    Q_DISABLE_COPY(PlotStyleFolder)

private:
    QTemporaryDir m_folder;
};

} // namespace

Q_DECLARE_METATYPE(ZvJsonPtr)

class TestObjectCombos : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void objectsAreFollowedByTheirClass_data();
    void objectsAreFollowedByTheirClass();

    // layers
    void layersAreListedByMode_data();
    void layersAreListedByMode();
    void layersWithoutANameAreLeftOut();
    void frozenLayerLeavesTheListOfUseCurrent();
    void anyPickWithUseCurrentWritesNothing();
    void layerPickTellsItsRow();
    void layerNames();
    void frozenLayerFallsBack_data();
    void frozenLayerFallsBack();
    void frozenLayerIsGuardedAgainstTheUserOnly();
    void openingNotesTheRowToFallBackTo_data();
    void openingNotesTheRowToFallBackTo();

    // materials
    void materialIsTheNameExactly();
    void currentMaterialIsToldByNameAndId();
    void unreadableMaterialMovesNothing();
    void commonMaterialWithoutANameHasItsRow();

    // plot style names
    void normalIsShownAsUsersKnowIt_data();
    void normalIsShownAsUsersKnowIt();
    void normalKeepsItsPlace();
    void normalIsWrittenAsTheDrawingNamesIt();
    void firstMatchingPlotStyleRowIsShown_data();
    void firstMatchingPlotStyleRowIsShown();
    void unreadPlotStyleMovesNothing_data();
    void unreadPlotStyleMovesNothing();

    void errorIsSwallowedWithAnAssertion_data();
    void errorIsSwallowedWithAnAssertion();

    // plot style tables
    void plotStyleTablesOfTheSettings_data();
    void plotStyleTablesOfTheSettings();

    // blocks and hatches
    void blocksThatUsersInsert_data();
    void blocksThatUsersInsert();
    void hatchPatternsOfTheSpace();
    void twentyUnits();
    void secondFillConnectsTwice_data();
    void secondFillConnectsTwice();

    // shade plot modes
    void shadePlotModes_data();
    void shadePlotModes();
    void shadePlotWithoutAService();
    void shadePlotWithAServiceOfAnotherClass();
    void shadePlotWithoutADocument();
    void shadePlotRefillsWhenHooked_data();
    void shadePlotRefillsWhenHooked();
    void blankShadePlotShowsItsFirstModeWhenItOpens_data();
    void blankShadePlotShowsItsFirstModeWhenItOpens();

private:
    void endCommand() { bus().commandEnded(L"LINE"); }
    static ZvDbObjectId addFrozenLayer(const ZvString &name)
    {
        const ZvDbObjectId id = addLayer(name);
        change<ZvDbLayerTableRecord>(id, [](ZvDbLayerTableRecord &layer) { layer.setIsFrozen(true); });
        return id;
    }
};

void TestObjectCombos::objectsAreFollowedByTheirClass_data()
{
    QTest::addColumn<int>("rule");
    for (const ObjectRow &rule : kRules)
        QTest::newRow(rule.name) << int(&rule - kRules);
}

void TestObjectCombos::objectsAreFollowedByTheirClass()
{
    QFETCH(int, rule);
    const ZvDbObjectId brick = addMaterial(L"Brick");
    drawing().setCmaterial(brick);
    drawing().setCplotstyle(L"ByLayer");
    const Combo combo = kRules[rule].make();
    combo->addItem(s("of somebody else"));
    endCommand();
    QCOMPARE(kRules[rule].isFollowed(*combo, drawing(), true), kRules[rule].whenAffecting);
    QCOMPARE(kRules[rule].isFollowed(*combo, drawing(), false), kRules[rule].otherwise);
}

// ---- layers

void TestObjectCombos::layersAreListedByMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("rows");
    // "*Helper" is hidden; "walls" is frozen.
    QTest::newRow("0, frozen ones too") << 0 << QStringList{s("0"), s("Doors"), s("House|Walls"), s("walls")};
    QTest::newRow("1, use the current one first, no frozen ones")
        << 1 << QStringList{s("使用当前项"), s("0"), s("Doors"), s("House|Walls")};
    QTest::newRow("another") << 2 << QStringList{s("0"), s("Doors"), s("House|Walls"), s("walls")};
}

void TestObjectCombos::layersAreListedByMode()
{
    QFETCH(int, mode);
    QFETCH(QStringList, rows);
    openDrawing(kDrawing);
    QCOMPARE(rowsOf(ZvUtilsLayerComboBox(mode, nullptr)), rows);
    ZvUtilsLayerComboBox hooked(true, mode, nullptr);
    QCOMPARE(rowsOf(hooked), rows);
    QVERIFY(hooked.hooked);
    hooked.onInit();
    QCOMPARE(rowsOf(hooked), rows);
}

void TestObjectCombos::layersWithoutANameAreLeftOut()
{
    openDrawing(drawingOfTable("LAYER",
                               "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
                               "0\nLAYER\n2\n\n70\n0\n62\n7\n6\nCONTINUOUS\n"
                               "0\nLAYER\n2\nDoors\n70\n0\n62\n7\n6\nCONTINUOUS\n"));
    ZvUtilsLayerComboBox combo(true, 0, nullptr);
    QCOMPARE(rowsOf(combo), (QStringList{s("0"), s("Doors")}));
    const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layerNamed(L"Doors"), ZvDb::kForWrite);
    combo.init(); // nor has one that cannot be read
    QCOMPARE(rowsOf(combo), QStringList{s("0")});
}

void TestObjectCombos::frozenLayerLeavesTheListOfUseCurrent()
{
    const ZvDbObjectId alpha = addLayer(L"Alpha");
    ZvUtilsLayerComboBox combo(true, ZvUtilsLayerComboBox::kWithUseCurrent, nullptr);
    for (const bool frozen : {false, true, false}) {
        change<ZvDbLayerTableRecord>(alpha, [frozen](ZvDbLayerTableRecord &layer) { layer.setIsFrozen(frozen); });
        combo.showPopup();
        combo.hidePopup();
        QCOMPARE(combo.findText(s("Alpha")) < 0, frozen);
        QCOMPARE(combo.itemText(0), s("使用当前项"));
    }
}

void TestObjectCombos::anyPickWithUseCurrentWritesNothing()
{
    addLayer(L"Alpha");
    ZvUtilsLayerComboBox combo(true, ZvUtilsLayerComboBox::kWithUseCurrent, nullptr);
    QCOMPARE(combo.itemText(0), s("使用当前项"));
    QSignalSpy told(&combo, &ZvUtilsLayerComboBox::layerItemChanged);
    for (int row = combo.count() - 1; row >= 0; --row)
        combo.setCurrentIndex(row);
    QCOMPARE(told.size(), combo.count());
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(drawing().clayer(), layerNamed(L"0"));
}

void TestObjectCombos::layerPickTellsItsRow()
{
    addLayer(L"Alpha");
    addLayer(L"Beta");
    ZvUtilsLayerComboBox combo(0, nullptr);
    QSignalSpy told(&combo, &ZvUtilsLayerComboBox::layerItemChanged);
    combo.setCurrentIndex(2);
    QCOMPARE(told, (QList<QVariantList>{{2}}));
}

void TestObjectCombos::layerNames()
{
    addLayer(L"Alpha");
    ZvUtilsLayerComboBox combo(0, nullptr);
    QCOMPARE(combo.getLayerName(1), s("Alpha"));
    QCOMPARE(combo.getLayerName(2), s(""));
    QCOMPARE(combo.getLayerName(-1), s(""));
    combo.setCurrentIndex(1);
    QCOMPARE(combo.getCurrentLayerName(), s("Alpha"));
    combo.setCurrentIndex(-1);
    QCOMPARE(combo.getCurrentLayerName(), s(""));
}

void TestObjectCombos::frozenLayerFallsBack_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("stays");
    QTest::newRow("without the bus, nothing selected") << false << false << false;
    QTest::newRow("without the bus, something selected") << false << true << true;
    QTest::newRow("the other form has no guard") << true << false << true;
}

void TestObjectCombos::frozenLayerFallsBack()
{
    QFETCH(bool, hooked);
    QFETCH(bool, selected);
    QFETCH(bool, stays);
    addLayer(L"Alpha");
    addFrozenLayer(L"Ice");
    addLayer(L"Zulu");
    const auto combo = hooked ? std::make_unique<ZvUtilsLayerComboBox>(false, 0, nullptr)
                              : std::make_unique<ZvUtilsLayerComboBox>(0, nullptr);
    combo->setCurrentIndex(1);
    if (selected)
        select({addLine()});
    combo->show();
    QVERIFY(QTest::qWaitForWindowExposed(combo.get()));
    pickByMouse(*combo, combo->findText(s("Ice")));
    QCOMPARE(combo->currentText(), stays ? s("Ice") : s("Alpha"));
    pickByMouse(*combo, combo->findText(s("Zulu"))); // others are free
    QCOMPARE(combo->currentText(), s("Zulu"));
}

void TestObjectCombos::frozenLayerIsGuardedAgainstTheUserOnly()
{
    addFrozenLayer(L"Ice");
    ZvUtilsLayerComboBox combo(0, nullptr);
    combo.setCurrentIndex(1);
    QCOMPARE(combo.currentText(), s("Ice"));
    combo.activatedIndexChanged(-1);
    QCOMPARE(combo.currentText(), s("Ice"));
    combo.activatedIndexChanged(1); // no list was opened: the first row
    QCOMPARE(combo.currentIndex(), 0);
}

void TestObjectCombos::openingNotesTheRowToFallBackTo_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked") << true;
    QTest::newRow("not hooked") << false;
}

void TestObjectCombos::openingNotesTheRowToFallBackTo()
{
    QFETCH(bool, hooked);
    addLayer(L"Alpha");
    addFrozenLayer(L"Ice");
    ZvUtilsLayerComboBox combo(hooked, 0, nullptr);
    const auto showQuietly = [&combo](int row) {
        combo.blockSignals(true);
        combo.setCurrentIndex(row);
        combo.blockSignals(false);
    };
    showQuietly(1);
    combo.showPopup();
    combo.hidePopup();
    showQuietly(2);
    QCOMPARE(combo.currentText(), s("Ice"));
    combo.activatedIndexChanged(2);
    QCOMPARE(combo.currentText(), s("Alpha"));
}

// ---- materials

void TestObjectCombos::materialIsTheNameExactly()
{
    addMaterial(L"Brick");
    ZvUtilsMaterialComboBox combo(true, nullptr);
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setMaterial(ZvString(L"Brick")); });
    select({line});
    QCOMPARE(combo.currentText(), s("Brick"));
    combo.setItemText(combo.findText(s("Brick")), s("BRICK"));
    const int rows = combo.count();
    endCommand();
    QCOMPARE(combo.currentText(), s("Brick"));
    QCOMPARE(combo.currentIndex(), rows); // a new last row
}

void TestObjectCombos::currentMaterialIsToldByNameAndId()
{
    const ZvDbObjectId brick = addMaterial(L"Brick");
    ZvUtilsMaterialComboBox combo(nullptr);
    combo.setCurrentText(s("Brick"));
    QCOMPARE(combo.getCurrentMaterialName(), s("Brick"));
    QCOMPARE(combo.getCurrentMaterialId(), brick);
    combo.setCurrentIndex(-1);
    QCOMPARE(combo.getCurrentMaterialName(), s(""));
    QVERIFY(combo.getCurrentMaterialId().isNull());
    combo.addItem(s("of somebody else"));
    combo.setCurrentIndex(combo.count() - 1);
    QVERIFY(combo.getCurrentMaterialId().isNull());
}

void TestObjectCombos::unreadableMaterialMovesNothing()
{
    const ZvDbObjectId brick = addMaterial(L"Brick");
    drawing().setCmaterial(brick);
    ZvUtilsMaterialComboBox combo(true, nullptr);
    endCommand();
    QCOMPARE(combo.currentText(), s("Brick"));
    const int rows = combo.count();
    {
        const ZvDbObjectPointer<ZvDbMaterial> held(brick, ZvDb::kForWrite);
        endCommand();
    }
    QCOMPARE(combo.currentText(), s("Brick"));
    QCOMPARE(combo.count(), rows);
}

void TestObjectCombos::commonMaterialWithoutANameHasItsRow()
{
    ZvUtilsMaterialComboBox combo(true, nullptr);
    const int rows = combo.count();
    auto &info = static_cast<ZvGlobalUIReactorHelp::SMaterialInfo &>(*combo.pickFirstInfo);
    info.status = ZvGlobalUIReactorHelp::kInfoUniform;
    info.value = ZvString();
    combo.acceptUpdateUI(noticeOf(kNoticeCommandEnded));
    QCOMPARE(combo.count(), rows + 1); // an empty name is one
    QCOMPARE(combo.currentIndex(), rows);
    QCOMPARE(combo.currentText(), s(""));
}

// ---- plot style names

void TestObjectCombos::normalIsShownAsUsersKnowIt_data()
{
    QTest::addColumn<QStringList>("styles");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("Normal") << QStringList{s("Normal")} << QStringList{s("普通")};
    QTest::newRow("Normal between others")
        << QStringList{s("Fine"), s("Normal"), s("Thick")} << QStringList{s("Fine"), s("普通"), s("Thick")};
    QTest::newRow("another case") << QStringList{s("NORMAL")} << QStringList{s("NORMAL")};
    QTest::newRow("more than that") << QStringList{s("Normal 2")} << QStringList{s("Normal 2")};
}

void TestObjectCombos::normalIsShownAsUsersKnowIt()
{
    QFETCH(QStringList, styles);
    QFETCH(QStringList, rows);
    if (!styles.contains(s("Normal"))) { // new drawings have it
        const ZvDbObjectPointer<ZvDbDictionary> dictionary(drawing().plotStyleDictionaryId(true), ZvDb::kForWrite);
        dictionary->remove(L"Normal");
    }
    QStringList kept;
    {
        ZvArray<ZvString> names;
        ZevaUISetting::getPlotStyleNames(names, nullptr);
        for (const ZvString &name : names)
            kept << s(name.toUtf8().c_str());
    }
    for (const QString &style : qAsConst(styles)) {
        if (!kept.contains(style))
            addPlotStyle(ZvUtf8String(style.toUtf8().constData()).toWide());
    }
    ZvUtilsPlotStyleNameComboBox combo(nullptr);
    QStringList shown = rowsOf(combo);
    QCOMPARE(shown.mid(0, 2), (QStringList{s("ByLayer"), s("ByBlock")}));
    shown = shown.mid(2);
    shown.sort();
    rows.sort();
    QCOMPARE(shown, rows);
}

void TestObjectCombos::normalKeepsItsPlace()
{
    openDrawing(kDrawing);
    QCOMPARE(rowsOf(ZvUtilsPlotStyleNameComboBox(nullptr)),
             (QStringList{s("ByLayer"), s("ByBlock"), s("thick"), s("普通")}));
    addPlotStyle(L"Zulu");
    QStringList rows = rowsOf(ZvUtilsPlotStyleNameComboBox(nullptr));
    QCOMPARE(rows.size(), 5);
    QVERIFY(rows.removeOne(s("Zulu")));
    QCOMPARE(rows, (QStringList{s("ByLayer"), s("ByBlock"), s("thick"), s("普通")}));
}

void TestObjectCombos::normalIsWrittenAsTheDrawingNamesIt()
{
    if (!rowsOf(ZvUtilsPlotStyleNameComboBox(nullptr)).contains(s("普通")))
        addPlotStyle(L"Normal");
    ZvUtilsPlotStyleNameComboBox combo(true, nullptr);
    drawing().setCplotstyle(L"ByLayer");
    endCommand();
    QSignalSpy told(&combo, &ZvUtilsPlotStyleNameComboBox::plotStyleTableItemChanged);
    combo.setCurrentText(s("普通"));
    QCOMPARE(told, (QList<QVariantList>{{s("普通")}}));
    QVERIFY(runCommands());
    QCOMPARE(drawing().cplotstyle(), ZvString(L"Normal"));
    QCOMPARE(combo.getCurrentPlotStyleName(), s("普通")); // and back again
    drawing().setCplotstyle(L"ByBlock");
    endCommand();
    QCOMPARE(combo.currentText(), s("ByBlock"));
}

void TestObjectCombos::firstMatchingPlotStyleRowIsShown_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("row");
    QTest::newRow("the name itself before the users' word") << QStringList{s("normal"), s("普通")} << s("Normal") << 0;
    QTest::newRow("the users' word before the name itself") << QStringList{s("普通"), s("normal")} << s("Normal") << 0;
    QTest::newRow("the users' word alone") << QStringList{s("x"), s("普通")} << s("NORMAL") << 1;
    QTest::newRow("a name in another case") << QStringList{s("x"), s("FINE")} << s("Fine") << 1;
    QTest::newRow("a new row") << QStringList{s("x")} << s("Fine") << 1;
}

void TestObjectCombos::firstMatchingPlotStyleRowIsShown()
{
    QFETCH(QStringList, rows);
    QFETCH(QString, name);
    QFETCH(int, row);
    ZvUtilsPlotStyleNameComboBox combo(true, nullptr);
    auto &info = static_cast<ZvGlobalUIReactorHelp::SPlotStyleInfo &>(*combo.pickFirstInfo);
    info.status = ZvGlobalUIReactorHelp::kInfoUniform;
    info.value = ZvUtf8String(name.toUtf8().constData()).toWide();
    combo.blockSignals(true);
    combo.clear();
    combo.addItems(rows);
    combo.setCurrentIndex(-1);
    combo.blockSignals(false);
    combo.acceptUpdateUI(noticeOf(kNoticeCommandEnded));
    QCOMPARE(combo.currentIndex(), row);
    QCOMPARE(combo.count(), qMax(row + 1, rows.size()));
}

void TestObjectCombos::unreadPlotStyleMovesNothing_data()
{
    QTest::addColumn<bool>("isSelected");
    QTest::newRow("of the selection") << true;
    QTest::newRow("the current one") << false;
}

void TestObjectCombos::unreadPlotStyleMovesNothing()
{
    QFETCH(bool, isSelected);
    addPlotStyle(L"Late");
    ZvUtilsPlotStyleNameComboBox combo(true, nullptr);
    drawing().setCplotstyle(L"Late");
    endCommand();
    QCOMPARE(combo.currentText(), s("Late"));
    const int rows = combo.count();
    combo.setEnabled(false);
    auto &info = static_cast<ZvGlobalUIReactorHelp::SPlotStyleInfo &>(*combo.pickFirstInfo);
    if (isSelected) {
        info.status = ZvGlobalUIReactorHelp::kInfoUniform;
        info.value = ZvString();
    } else {
        change<ZvDbDictionary>(drawing().plotStyleDictionaryId(true),
                               [](ZvDbDictionary &styles) { styles.remove(L"Late"); });
        QCOMPARE(drawing().cplotstyle(), ZvString());
        QCOMPARE(int(info.status), int(ZvGlobalUIReactorHelp::kInfoNoSelection));
    }
    combo.acceptUpdateUI(noticeOf(kNoticeCommandEnded));
    QCOMPARE(combo.currentText(), s("Late"));
    QCOMPARE(combo.count(), rows);
    QVERIFY(!combo.isEnabled());
}

// ---- errors

void TestObjectCombos::errorIsSwallowedWithAnAssertion_data()
{
    QTest::addColumn<bool>("isLayer");
    QTest::addColumn<QString>("assertion");
    QTest::newRow("layer") << true << s("false, zvutilslayercombobox, 253");
    QTest::newRow("plot style name") << false << s("false, zvutilsplotstylenamecombobox, 218");
}

void TestObjectCombos::errorIsSwallowedWithAnAssertion()
{
    QFETCH(bool, isLayer);
    QFETCH(QString, assertion);
    const Combo combo = isLayer ? makeLayers() : make<ZvUtilsPlotStyleNameComboBox>();
    if (isLayer)
        drawing().setClayer(addLayer(L"Late"));
    addPlotStyle(L"Late");
    drawing().setCplotstyle(L"Late");
    const FailingControl failing(*combo);
    const Assertions assertions;
    endCommand();
    QCOMPARE(assertions.list(), QStringList{assertion});
    QVERIFY(!combo->signalsBlocked());
    QVERIFY(qobject_cast<CZvQtControlHelp *>(combo.get())->hooked);
}

// ---- plot style tables

void TestObjectCombos::plotStyleTablesOfTheSettings_data()
{
    QTest::addColumn<int>("mode"); // -1: cannot be read
    QTest::addColumn<QStringList>("rows");
    const QStringList byColor = {s("无"), s("a b.ctb"), s("彩色.CTB")};
    QTest::newRow("1, by colour") << 1 << byColor;
    QTest::newRow("0, by name") << 0 << QStringList{s("无"), s("named.stb")};
    QTest::newRow("unreadable counts as 1") << -1 << byColor;
}

void TestObjectCombos::plotStyleTablesOfTheSettings()
{
    QFETCH(int, mode);
    QFETCH(QStringList, rows);
    const PlotStyleFolder folder({s("a b.ctb"), s("彩色.CTB"), s("named.stb"), s("notes.txt")});
    if (mode >= 0)
        openDrawing("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$PSTYLEMODE\n290\n" + QByteArray::number(mode)
                    + "\n0\nENDSEC\n0\nEOF\n");
    else
        zvDocManagerPtr()->closeDocument(document());
    ZvUtilsPlotStyleTableComboBox combo(nullptr);
    QCOMPARE(rowsOf(combo), rows);
    combo.setCurrentIndex(1);
    QCOMPARE(combo.getCurrentPlotStyleName(), rows[1]);
}

// ---- blocks and hatches

void TestObjectCombos::blocksThatUsersInsert_data()
{
    QTest::addColumn<bool>("usedOnly");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("all") << false << QStringList{s("Door"), s("WINDOW")};
    QTest::newRow("used ones only") << true << QStringList{s("Door")};
}

void TestObjectCombos::blocksThatUsersInsert()
{
    QFETCH(bool, usedOnly);
    openDrawing(kDrawing);
    QTEST(rowsOf(ZvUtilsBlockComboBox(nullptr, usedOnly)), "rows");
    QTEST(rowsOf(ZvUtilsBlockComboBox(true, nullptr, usedOnly)), "rows");
}

void TestObjectCombos::hatchPatternsOfTheSpace()
{
    openDrawing(drawingOf(QByteArray(), hatch("SAND") + hatch("ANSI31") + hatch("SAND") + hatch("PAPER", true)));
    const ZvUtilsHatchNameComboBox combo(nullptr);
    QCOMPARE(rowsOf(combo), (QStringList{s("SAND"), s("ANSI31")}));
    QCOMPARE(combo.getCurrentStyleName(), s("SAND"));
    drawing().setTilemode(false);
    QCOMPARE(rowsOf(combo).size(), 2); // filled once
    QCOMPARE(rowsOf(ZvUtilsHatchNameComboBox(true, nullptr)), QStringList{s("PAPER")});
}

void TestObjectCombos::twentyUnits()
{
    QCOMPARE(rowsOf(ZvUtilsBlockUnitComboBox(nullptr)),
             (QStringList{s("无单位"), s("英寸"),   s("英尺"),     s("英里"), s("毫米"), s("厘米"),   s("米"),
                          s("千米"),   s("微英寸"), s("密耳"),     s("码"),   s("埃"),   s("毫微米"), s("分米"),
                          s("十米"),   s("百米"),   s("百万公里"), s("天文"), s("光年"), s("秒差距")}));
}

void TestObjectCombos::secondFillConnectsTwice_data()
{
    QTest::addColumn<bool>("isHatch");
    QTest::newRow("block unit") << false;
    QTest::newRow("hatch name") << true;
}

void TestObjectCombos::secondFillConnectsTwice()
{
    QFETCH(bool, isHatch);
    openDrawing(drawingOf(QByteArray(), hatch("SAND") + hatch("ANSI31")));
    ZvUtilsHatchNameComboBox hatches(nullptr);
    ZvUtilsBlockUnitComboBox units(nullptr);
    QComboBox &combo = isHatch ? static_cast<QComboBox &>(hatches) : units;
    const int rows = combo.count();
    QSignalSpy told(&combo, isHatch ? SIGNAL(styleTableItemChanged(QString)) : SIGNAL(itemChanged(QString)));
    QVERIFY(told.isValid());
    combo.setCurrentIndex(1);
    QCOMPARE(told.size(), 1);
    if (isHatch)
        hatches.init();
    else
        units.init();
    QCOMPARE(combo.count(), 2 * rows); // nor is the list emptied
    told.clear();
    combo.setCurrentIndex(0);
    QCOMPARE(told.size(), 2);
}

// ---- shade plot modes

void TestObjectCombos::shadePlotModes_data()
{
    QTest::addColumn<ZvJsonPtr>("modes");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("null") << ZvJsonPtr() << QStringList();
    QTest::newRow("an object, no array") << mode("Wireframe") << QStringList();
    QTest::newRow("a text, no array") << ElementValue::createString("Wireframe") << QStringList();
    QTest::newRow("no elements") << arrayOf({}) << QStringList();
    QTest::newRow("modes") << arrayOf({mode("As displayed"), mode("线框")})
                           << QStringList{s("As displayed"), s("线框")};
    const ZvJsonPtr number = node(IElementValueBase::kObject);
    number->SetDataI("code", 7);
    const ZvJsonPtr nothing = node(IElementValueBase::kObject);
    nothing->SetDataJ("name", ZvJsonPtr());
    QTest::newRow("elements in arrays") << arrayOf({arrayOf({ElementValue::createString("a"), number})})
                                        << QStringList{s("a")};
    QTest::newRow("an element without values")
        << arrayOf({mode("a"), node(IElementValueBase::kObject), mode("b")}) << QStringList{s("a"), s(""), s("b")};
    QTest::newRow("an element that is a plain value")
        << arrayOf({ElementValue::createInteger(5)}) << QStringList{s("")};
    QTest::newRow("a null value") << arrayOf({nothing}) << QStringList{s("")};
    QTest::newRow("a null element") << arrayOf({ZvJsonPtr(), mode("a")}) << QStringList{s(""), s("a")};
}

void TestObjectCombos::shadePlotModes()
{
    QFETCH(ZvJsonPtr, modes);
    QFETCH(QStringList, rows);
    const PlotService service(modes);
    const ZvUtilsShadePlotComboBox combo(nullptr);
    QCOMPARE(rowsOf(combo), rows);
    QCOMPARE(service.asked(), std::vector<ZvDbDatabase *>{&drawing()});
    for (int row = 0; row < combo.count(); ++row) {
        QCOMPARE(combo.itemData(row).userType(), int(QMetaType::QString));
        QCOMPARE(combo.itemData(row).toString(), rows[row]);
        QVERIFY(combo.itemIcon(row).isNull());
    }
    QCOMPARE(combo.getCurrentName(), rows.value(0, s("")));
}

void TestObjectCombos::shadePlotWithoutAService()
{
    ZvUtilsShadePlotComboBox combo(true, nullptr);
    QCOMPARE(combo.count(), 0);
    QCOMPARE(combo.getCurrentName(), s(""));
    QVERIFY(combo.hooked);
}

void TestObjectCombos::shadePlotWithAServiceOfAnotherClass()
{
    ZvUtilsShadePlotComboBox combo(true, nullptr);
    const ZvString key(ZvQtPlotService::kKey);
    zv_arbitDict_regservice(key, zv_arbitDict_getservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey))));
    combo.addItem(s("of somebody else"));
    QVERIFY_EXCEPTION_THROWN(combo.init(), ZvError_NotThatKindOfClass);
    QCOMPARE(combo.count(), 0);
    QVERIFY(combo.hooked);
    QVERIFY_EXCEPTION_THROWN(combo.showPopup(), ZvError_NotThatKindOfClass);
    QVERIFY(!combo.signalsBlocked());
    zv_arbitDict_clearservice(key);
}

void TestObjectCombos::shadePlotWithoutADocument()
{
    const PlotService service(arrayOf({mode("a")}));
    zvDocManagerPtr()->closeDocument(document());
    const ZvUtilsShadePlotComboBox combo(true, nullptr);
    QCOMPARE(combo.count(), 0);
    QVERIFY(service.asked().empty());
    QVERIFY(combo.hooked);
    ZvDbDatabasePtr none;
    zvDocManagerPtr()->addDocument(none, L""); // one without a drawing is asked about
    QCOMPARE(rowsOf(ZvUtilsShadePlotComboBox(nullptr)), QStringList{s("a")});
    QCOMPARE(service.asked(), std::vector<ZvDbDatabase *>{nullptr});
}

void TestObjectCombos::shadePlotRefillsWhenHooked_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked") << true;
    QTest::newRow("not hooked") << false;
}

void TestObjectCombos::shadePlotRefillsWhenHooked()
{
    QFETCH(bool, hooked);
    const PlotService service(arrayOf({mode("a"), mode("b")}));
    ZvUtilsShadePlotComboBox combo(hooked, nullptr);
    combo.setCurrentIndex(1);
    service.setModes(arrayOf({mode("new"), mode("a"), mode("b")}));
    QSignalSpy told(&combo, &ZvUtilsShadePlotComboBox::ItemChanged);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.count(), hooked ? 3 : 2);
    QCOMPARE(combo.getCurrentName(), s("b"));
    QCOMPARE(told.size(), 0);
}

void TestObjectCombos::blankShadePlotShowsItsFirstModeWhenItOpens_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<bool>("isServiceLate");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no service before") << true << true << s("a");
    QTest::newRow("no row before") << true << false << s("a");
    QTest::newRow("not hooked, no service before") << false << true << s("");
    QTest::newRow("not hooked, no row before") << false << false << s("");
}

void TestObjectCombos::blankShadePlotShowsItsFirstModeWhenItOpens()
{
    QFETCH(bool, hooked);
    QFETCH(bool, isServiceLate);
    std::unique_ptr<ZvUtilsShadePlotComboBox> combo;
    if (isServiceLate)
        combo = std::make_unique<ZvUtilsShadePlotComboBox>(hooked, nullptr);
    const PlotService service(arrayOf({mode("a"), mode("b")}));
    if (!combo)
        combo = std::make_unique<ZvUtilsShadePlotComboBox>(hooked, nullptr);
    combo->setCurrentIndex(-1);
    QSignalSpy told(combo.get(), &ZvUtilsShadePlotComboBox::ItemChanged);
    combo->showPopup();
    combo->hidePopup();
    QTEST(combo->getCurrentName(), "shown");
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo->signalsBlocked());
}

ZEVA_TEST_MAIN(TestObjectCombos)
#include "tst_objectcombos.moc"
