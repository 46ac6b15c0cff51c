// SPDX-License-Identifier: MIT
#include "drawingtest.h"
#include "zvqtcommonuisvr.h"

#include "base/zverror.h"
#include "base/zvlog.h"
#include "base/zvregistry.h"
#include "core/zvsystem.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbhostservice.h"

#include <QFocusEvent>
#include <QLineEdit>

#include <cmath>

namespace {

ZvQtCommonUISvr *mailbox()
{
    return dynamic_cast<ZvQtCommonUISvr *>(grUISvr(L"Dialog/Common"));
}

/// The application's window, as far as its main view goes.
class MainWindow : public ZvApWindow, public ZvApView
{
public:
    void *handle() const override { return nullptr; }
    ZvApView *mainView() const override { return hasView ? const_cast<MainWindow *>(this) : nullptr; }
    void *widget() const override { return viewWidget; }

    bool hasView = true;
    QWidget *viewWidget = nullptr;
};

/// Stands in for the link between a drawing and its layout object.
class LayoutLink : public ZvGsDbRootLinkage::DatabaseExtension
{
public:
    explicit LayoutLink(ZvRxObject *object) : m_object(object), m_previous(ZvGsDbRootLinkage::getDbBaseDatabasePE())
    {
        ZvGsDbRootLinkage::setDbBaseDatabasePE(this);
    }
    ~LayoutLink() override { ZvGsDbRootLinkage::setDbBaseDatabasePE(m_previous); }
    ZvRxObject *layoutObject(const ZvDbDatabase *) const override { return m_object; }

private:
    ZvRxObject *m_object;
    DatabaseExtension *m_previous;
};

/// A host that keeps the state of the echo at the time of each macro, and has nothing to give.
class MacroHost : public ZvEdHost
{
public:
    explicit MacroHost(ZvEdDisplayContext *display) : m_display(display), m_before(zvedHost()) { zvedSetHost(this); }
    ~MacroHost() override { zvedSetHost(m_before); }
    Q_DISABLE_COPY(MacroHost)
    void queueFilled() override { echoes.push_back(m_display->commandEcho()); }
    bool waitForInput(const ZvEdPrompt &) override { return false; }
    void print(const ZvString &) override { }
    void changeView(const ViewRequest &) override { }
    void pick(const ZvGePoint3d &, std::vector<ZvDbObjectId> &) override { }
    void pickWindow(const ZvGePoint3d &, const ZvGePoint3d &, bool, std::vector<ZvDbObjectId> &) override { }
    bool currentView(ViewState &) override { return false; }
    ZvString askFileName(bool, const ZvString &) override { return ZvString(); }
    bool mayClose(ZvApDocument *) override { return true; }
    ZvDbProgress *beginProgress(const ZvString &) override { return nullptr; }
    void endProgress() override { }
    void showFileReport(const ZvString &, const ZvDbFileReport &) override { }
    void quit() override { }

    std::vector<bool> echoes;

private:
    ZvEdDisplayContext *m_display;
    ZvEdHost *m_before;
};

/// Why the keyboard came.
class FocusWatch : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;
    Qt::FocusReason reason = Qt::NoFocusReason;

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        reason = event->reason();
        QLineEdit::focusInEvent(event);
    }
};

std::vector<QByteArray> s_logLines;

void keepLogLine(int level, int, const char *file, const char *function, const char *text)
{
    s_logLines.push_back(QByteArray::number(level) + ' ' + file + ' ' + function + ' ' + text);
}

// A drawing whose layers a program cannot make: one of an external reference.
const char kDrawingWithReference[] = "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n2\n"
                                     "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
                                     "0\nLAYER\n2\nHouse|Walls\n70\n48\n62\n3\n6\nCONTINUOUS\n"
                                     "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";

struct Case
{
    const char *name;
    int kind;
    const wchar_t *wanted;
};

constexpr Case kNamed[] = {
    {"line type", 2, L"HIDDEN"},   {"layer", 3, L"Walls"},       {"material", 4, L"Brick"},
    {"dimension style", 5, L"Fine"}, {"text style", 6, L"Small"}, {"table style", 7, L"Plain"},
    {"multileader style", 8, L"Bold"}, {"plot style", 9, L"Thin"},
};

} // namespace

class TestFacadeCurrent : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // setters without a selection
    void pickedColorBecomesCurrent();
    void pickedLineWeightBecomesCurrent();
    void pickedNameBecomesCurrent_data();
    void pickedNameBecomesCurrent();
    void validIdComesBeforeTheName_data();
    void validIdComesBeforeTheName();
    void unknownNameWritesNothing_data();
    void unknownNameWritesNothing();
    void equalValueLeavesNoUndoStep_data();
    void equalValueLeavesNoUndoStep();
    void newestRequestWins();
    void requestStaysAndRunsOnceMoreWithoutHarm();
    void pickIsOneStepOfUndo();
    void pickDuringACommandFallsIntoIt();
    void pickDuringADialogIsWrittenAtOnce();
    void pickWithUnreadableCommandStateIssuesTheMacro();
    void macroIsIssuedUnseen_data();
    void macroIsIssuedUnseen();
    void unknownRequestDoesNothing_data();
    void unknownRequestDoesNothing();
    void newRequestIsEmpty();
    void commandEchoIsPutBack_data();
    void commandEchoIsPutBack();
    void pickWorksWithoutAnEditingContext();
    void pickWithoutADrawingWritesNothing();
    void pickWithoutTheServiceIsLost();
    void pickThrowsWhereTheServiceIsOfAWrongClass();
    void commandFailsWhereTheServiceIsOfAWrongClass();
    void commandWithoutTheServiceDoesNothing();
    void dimensionStyleBringsItsVariables();
    void unknownDimensionStyleIsTheLastOne();
    void settersFillWhatTheTableSays_data();
    void settersFillWhatTheTableSays();
    void invalidCurrentTableStyleStays();
    void invalidCurrentMultileaderStyleIsReplaced();
    void plotStyleComparesWithoutCase();

    // setters with a selection
    void selectedEntitiesChangeAndTheCurrentValueStays();
    void emptyNameWritesNothingToASelection_data();
    void emptyNameWritesNothingToASelection();
    void styleOfASelectionIsFoundByName();
    void idOrNameCountsForASelection_data();
    void idOrNameCountsForASelection();

    // the layer
    void layerThatIsCurrentAlreadyIsAccepted();
    void currentLayerIsAcceptedThoughFrozen();
    void frozenLayerIsRefusedWithAMessage();
    void referencedLayerIsRefusedOnlyWithoutASelection();
    void erasedLayerIsRefused();
    void emptyLayerNameIsRefused();
    void layerThatCannotBeReadIsPassedOn();
    void layerIsPassedOnWithoutACurrentDrawing();
    void layerErasedMeanwhileStaysAway();
    void layerHeldByAReaderBecomesCurrent();
    void layerThatBecomesCurrentIsNotTold();

    // layer states
    void layerStateIsFlipped_data();
    void layerStateIsFlipped();
    void layerColorIsSet();
    void currentLayerIsSwitchedOffOnlyAfterAQuestion_data();
    void currentLayerIsSwitchedOffOnlyAfterAQuestion();
    void otherLayersAreNeverAskedFor();
    void currentLayerIsNotFrozen();
    void currentLayerIsLockedAndColouredUnasked();
    void layerStatesNeedACurrentDrawing();
    void unknownLayerStateChangesNothing();
    void layerThatCannotBeWrittenIsLeft();
    void layerStateIsUndoable();

    // readers
    void currentColorIndex();
    void colorOfTheLayerFollowsTheSelection();
    void colorOfNoLayerThatOpensIsTheDefault();
    void currentLayerColorNeverLooksAtTheSelection();
    void currentLayerColorBringsTheUsageUpToDate();
    void defaultLineWeightComesFromTheApplication();
    void lineWeightHasItsLabel_data();
    void lineWeightHasItsLabel();
    void unknownLineWeightHasAnEmptyLabel();
    void currentLineTypeName();
    void currentValuesAreThoseOfTheCurrentDrawing();
    void emptyOperationsDoNothing();

    // work block and focus
    void workBlockIsModelSpaceWithTiles();
    void workBlockIsThePaperOnALayout();
    void workBlockIsModelSpaceInsideAViewport();
    void workBlockIsModelSpaceInTheBlockEditor();
    void workBlockIsNullForALayoutWithoutABlock();
    void workBlockIsNullWithoutALayoutObject();
    void workBlockThrowsForAnObjectThatIsNoLayout();
    void focusGoesToTheMainView();
    void focusStaysWithoutAView();

private:
    void makeRecords()
    {
        addLineType(L"HIDDEN");
        addLayer(L"Walls");
        addMaterial(L"Brick");
        addDimStyle(L"Fine");
        addTextStyle(L"Small");
        addTableStyle(L"Plain");
        addMLeaderStyle(L"Bold");
        addPlotStyle(L"Thin");
    }
    /// Drawings of old know neither table nor multileader styles.
    void openDrawingWithoutCurrentStyles()
    {
        openDrawing(kDrawingWithReference);
        addTableStyle(L"Plain");
        addMLeaderStyle(L"Bold");
    }
    static void namedCases()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("wanted");
        for (const Case &row : kNamed)
            QTest::newRow(row.name) << row.kind << QString::fromWCharArray(row.wanted);
    }
    static void request(int kind, ZvDbObjectId id, const ZvString &name)
    {
        switch (kind) {
        case 2:
            return ZevaUISetting::setCeLType(id, name);
        case 3:
            QVERIFY(ZevaUISetting::setCLayer(id, name));
            return;
        case 4:
            return ZevaUISetting::setCMaterial(id, name);
        case 5:
            return ZevaUISetting::setCDimStyle(id, name);
        case 6:
            return ZevaUISetting::setCTextStyle(id, name);
        case 7:
            return ZevaUISetting::setCTableStyle(id, name);
        case 8:
            return ZevaUISetting::setCMLeaderStyle(id, name);
        default:
            return ZevaUISetting::setCPlotStyle(id, name);
        }
    }
    static ZvDbObjectId find(int kind, const ZvString &name)
    {
        switch (kind) {
        case 2:
            return ZevaUISetting::findLineStyleTableRecordByName(name, nullptr);
        case 3:
            return ZevaUISetting::findLayerTableRecordByName(name, nullptr);
        case 4:
            return ZevaUISetting::findMaterialByName(name, nullptr);
        case 5:
            return ZevaUISetting::findDimStyleTableRecordByName(name, nullptr);
        case 6:
            return ZevaUISetting::findTextStyleTableRecordByName(name, nullptr);
        case 7:
            return ZevaUISetting::findTableStyleTableRecordByName(name, nullptr);
        default:
            return ZevaUISetting::findMleaderStyleTableRecordByName(name, nullptr);
        }
    }
    static ZvDbObjectId current(int kind)
    {
        switch (kind) {
        case 2:
            return drawing().celtype();
        case 3:
            return drawing().clayer();
        case 4:
            return drawing().cmaterial();
        case 5:
            return drawing().dimstyle();
        case 6:
            return drawing().textstyle();
        case 7:
            return drawing().tablestyle();
        default:
            return drawing().mleaderstyle();
        }
    }
    static ZvString toZv(const QString &text) { return ZvString(text.toUtf8().constData()); }
};

// ---- setters without a selection

void TestFacadeCurrent::pickedColorBecomesCurrent()
{
    ZevaUISetting::setCeColor(colorOfIndex(3));
    QCOMPARE(drawing().cecolor(), ZvCmColor()); // not before the command
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), colorOfIndex(3));
}

void TestFacadeCurrent::pickedLineWeightBecomesCurrent()
{
    ZevaUISetting::setCeWeight(ZvDb::kLnWt070);
    QVERIFY(runCommands());
    QCOMPARE(drawing().celweight(), ZvDb::kLnWt070);
    ZevaUISetting::setCeWeight(ZvDb::kLnWtByBlock);
    QVERIFY(runCommands());
    QCOMPARE(drawing().celweight(), ZvDb::kLnWtByBlock);
}

void TestFacadeCurrent::pickedNameBecomesCurrent_data()
{
    namedCases();
}

void TestFacadeCurrent::pickedNameBecomesCurrent()
{
    QFETCH(int, kind);
    QFETCH(QString, wanted);
    makeRecords();
    request(kind, ZvDbObjectId(), toZv(wanted.toUpper()));
    QVERIFY(runCommands());
    if (kind == ZevaUISetting::kPlotStyle) {
        QCOMPARE(drawing().cplotstyle().compareNoCase(toZv(wanted)), 0);
        return;
    }
    QVERIFY(current(kind).isValid());
    QCOMPARE(current(kind), find(kind, toZv(wanted)));
}

void TestFacadeCurrent::validIdComesBeforeTheName_data()
{
    namedCases();
}

void TestFacadeCurrent::validIdComesBeforeTheName()
{
    QFETCH(int, kind);
    QFETCH(QString, wanted);
    makeRecords();
    if (kind == ZevaUISetting::kPlotStyle) { // goes by the name alone
        addPlotStyle(L"Other");
        const ZvDbObjectPointer<ZvDbDictionary> styles(drawing().plotStyleDictionaryId(), ZvDb::kForRead);
        ZvDbObjectId other;
        QCOMPARE(styles->getAt(L"Other", other), Zv::eOk);
        request(kind, other, toZv(wanted));
        QVERIFY(runCommands());
        QCOMPARE(drawing().cplotstyle(), toZv(wanted));
        return;
    }
    const ZvDbObjectId id = find(kind, toZv(wanted));
    request(kind, id, L"some other name");
    QVERIFY(runCommands());
    QCOMPARE(current(kind), id);
}

void TestFacadeCurrent::unknownNameWritesNothing_data()
{
    namedCases();
}

void TestFacadeCurrent::unknownNameWritesNothing()
{
    QFETCH(int, kind);
    makeRecords();
    if (kind == ZevaUISetting::kLayer) {
        QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L"no such name"));
        QVERIFY(!zvedQueueHasInput());
        return;
    }
    const ZvDbObjectId before = current(kind);
    const ZvString plotStyle = drawing().cplotstyle();
    request(kind, ZvDbObjectId(), kind == ZevaUISetting::kDimStyle ? L"" : L"no such name");
    QVERIFY(runCommands());
    QCOMPARE(current(kind), before);
    QCOMPARE(drawing().cplotstyle(), plotStyle);
}

void TestFacadeCurrent::equalValueLeavesNoUndoStep_data()
{
    namedCases();
    QTest::newRow("colour") << 0 << QString();
    QTest::newRow("line weight") << 1 << QString();
}

void TestFacadeCurrent::equalValueLeavesNoUndoStep()
{
    QFETCH(int, kind);
    QFETCH(QString, wanted);
    makeRecords();
    const auto pick = [&] {
        if (kind == 0)
            ZevaUISetting::setCeColor(colorOfIndex(5));
        else if (kind == 1)
            ZevaUISetting::setCeWeight(ZvDb::kLnWt070);
        else
            request(kind, ZvDbObjectId(), toZv(wanted));
        QVERIFY(runCommands());
    };
    pick();
    drawing().clearUndo();
    pick();
    QVERIFY(!drawing().canUndo());
}

void TestFacadeCurrent::newestRequestWins()
{
    ZevaUISetting::setCeColor(colorOfIndex(1));
    ZevaUISetting::setCeColor(colorOfIndex(2));
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), colorOfIndex(2));
    QVERIFY(drawing().undo()); // both runs of the command made one change
    QCOMPARE(drawing().cecolor(), ZvCmColor());
}

void TestFacadeCurrent::requestStaysAndRunsOnceMoreWithoutHarm()
{
    ZevaUISetting::setCeColor(colorOfIndex(1));
    QVERIFY(runCommands());
    QCOMPARE(mailbox()->pendingUpdate()->kind, 0);
    QCOMPARE(mailbox()->pendingUpdate()->color, colorOfIndex(1));
    drawing().clearUndo();
    QVERIFY(runMacro(L"GLOBAL_UI_UPDATEDB"));
    QVERIFY(!drawing().canUndo());
}

void TestFacadeCurrent::pickIsOneStepOfUndo()
{
    makeRecords();
    ZevaUISetting::setCLayer(ZvDbObjectId(), L"Walls");
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), layerNamed(L"Walls"));
    QVERIFY(drawing().undo());
    QCOMPARE(drawing().clayer(), layerNamed(L"0"));
    QVERIFY(drawing().redo());
    QCOMPARE(drawing().clayer(), layerNamed(L"Walls"));
}

void TestFacadeCurrent::pickDuringACommandFallsIntoIt()
{
    const WorkCommand command([] {
        addLine();
        ZevaUISetting::setCeColor(colorOfIndex(4));
        QCOMPARE(drawing().cecolor(), colorOfIndex(4)); // at once
        ZevaUISetting::setCeWeight(ZvDb::kLnWt050);
    });
    const int entities = drawing().entityCount();
    QVERIFY(runMacro(L"TESTWORK"));
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(drawing().entityCount(), entities + 1);
    QCOMPARE(drawing().celweight(), ZvDb::kLnWt050);
    QVERIFY(drawing().undo());
    QCOMPARE(drawing().entityCount(), entities);
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    QCOMPARE(drawing().celweight(), ZvDb::kLnWtByLayer);
}

void TestFacadeCurrent::pickDuringADialogIsWrittenAtOnce()
{
    zvedDialogStarted();
    ZevaUISetting::setCeColor(colorOfIndex(4));
    zvedDialogEnded();
    QCOMPARE(drawing().cecolor(), colorOfIndex(4));
    QVERIFY(!zvedQueueHasInput());
}

void TestFacadeCurrent::pickWithUnreadableCommandStateIssuesTheMacro()
{
    // Even while a command runs: what cannot be read counts as none.
    const WorkCommand command([] {
        zvedSetVarReadable(L"CMDACTIVE", false);
        ZevaUISetting::setCeColor(colorOfIndex(4));
        zvedSetVarReadable(L"CMDACTIVE", true);
        QCOMPARE(drawing().cecolor(), ZvCmColor()); // not here
        QVERIFY(zvedQueueHasInput());
    });
    QVERIFY(runMacro(L"TESTWORK"));
    QCOMPARE(drawing().cecolor(), colorOfIndex(4));
}

void TestFacadeCurrent::macroIsIssuedUnseen_data()
{
    QTest::addColumn<bool>("ofDocument"); // where the state is looked at
    QTest::addColumn<bool>("documentHasContext");
    QTest::addColumn<bool>("echo"); // at the time of the macro
    QTest::newRow("the document's context") << true << true << false;
    QTest::newRow("the default one beside it") << false << true << true;
    QTest::newRow("the default one alone") << false << false << false;
}

void TestFacadeCurrent::macroIsIssuedUnseen()
{
    QFETCH(bool, ofDocument);
    QFETCH(bool, documentHasContext);
    QFETCH(bool, echo);
    ZvEdContext *context = ofDocument ? document()->editingContext() : zvDocManagerPtr()->defaultEditingContext();
    ZvEdDisplayContext *display = context->displayContext();
    document()->setEditingContextAvailable(documentHasContext);
    const MacroHost host(display);
    QVERIFY(display->commandEcho());
    ZevaUISetting::setCeColor(colorOfIndex(4));
    document()->setEditingContextAvailable(true);
    QCOMPARE(host.echoes, std::vector<bool>{echo});
    QVERIFY(display->commandEcho()); // switched off for the macro alone
    QVERIFY(runCommands());
}

void TestFacadeCurrent::unknownRequestDoesNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("below the first") << -1;
    QTest::newRow("beyond the last") << 10;
    QTest::newRow("far beyond") << 1000000;
}

void TestFacadeCurrent::unknownRequestDoesNothing()
{
    QFETCH(int, kind);
    ZvUiPendingUpdate update;
    update.kind = kind;
    update.color = colorOfIndex(4);
    update.name = L"0";
    mailbox()->setPendingUpdate(update);
    drawing().clearUndo();
    QVERIFY(runMacro(L"GLOBAL_UI_UPDATEDB"));
    QVERIFY(!drawing().canUndo());
    QCOMPARE(mailbox()->pendingUpdate()->kind, kind); // it stays as it is
}

void TestFacadeCurrent::newRequestIsEmpty()
{
    const ZvUiPendingUpdate update;
    QCOMPARE(update.kind, 0);
    QCOMPARE(update.color, ZvCmColor());
    QCOMPARE(update.firstWord, std::int64_t(0));
    QCOMPARE(update.secondWord, std::uint64_t(0));
    QVERIFY(update.name.isEmpty());
    const ZevaUISetting::EntityValue value;
    QCOMPARE(value.color, ZvCmColor());
    QCOMPARE(int(value.lineWeight), 0);
    QVERIFY(value.objectId.isNull());
    QVERIFY(value.name.isEmpty());
    QCOMPARE(int(ZevaUISetting::kLayerOnOff), 0);
    QCOMPARE(int(ZevaUISetting::kLayerFreeze), 1);
    QCOMPARE(int(ZevaUISetting::kLayerLock), 2);
    QCOMPARE(int(ZevaUISetting::kLayerColor), 3);
}

void TestFacadeCurrent::commandFailsWhereTheServiceIsOfAWrongClass()
{
    ZevaUISetting::setCeColor(colorOfIndex(4));
    zv_arbitDict_regservice(L"Dialog/Common", ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvRxDictionary>));
    QVERIFY(!runCommands());
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    QCOMPARE(variable(L"CMDACTIVE"), 0.0);
}

void TestFacadeCurrent::commandWithoutTheServiceDoesNothing()
{
    ZevaUISetting::setCeColor(colorOfIndex(4));
    const ZvRxObjectPtr service = zv_arbitDict_getservice(L"Dialog/Common");
    QVERIFY(service);
    zv_arbitDict_clearservice(L"Dialog/Common");
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    zv_arbitDict_regservice(L"Dialog/Common", service);
    QVERIFY(runMacro(L"GLOBAL_UI_UPDATEDB")); // the request is still there
    QCOMPARE(drawing().cecolor(), colorOfIndex(4));
}

void TestFacadeCurrent::dimensionStyleBringsItsVariables()
{
    const ZvDbObjectId style = addDimStyle(L"Fine");
    change<ZvDbDimStyleTableRecord>(style, [](ZvDbDimStyleTableRecord &record) { record.setReal("DIMSCALE", 12.5); });
    drawing().clearUndo();
    ZevaUISetting::setCDimStyle(ZvDbObjectId(), L"Fine");
    QVERIFY(runCommands());
    QCOMPARE(drawing().dimstyle(), style);
    QCOMPARE(variable(L"DIMSCALE"), 12.5);
    QVERIFY(drawing().undo());
    QVERIFY(variable(L"DIMSCALE") != 12.5);
    QVERIFY(!drawing().canUndo()); // style and variables in one step
}

void TestFacadeCurrent::unknownDimensionStyleIsTheLastOne()
{
    addDimStyle(L"Fine");
    const ZvDbObjectId last = addDimStyle(L"Last");
    ZevaUISetting::setCDimStyle(ZvDbObjectId(), L"no such name");
    QVERIFY(runCommands());
    QCOMPARE(drawing().dimstyle(), last);
    const ZvDbObjectId dimension = add(new ZvDbDimension);
    change<ZvDbDimension>(dimension, [](ZvDbDimension &entity) { entity.setDimensionStyle(find(5, L"Fine")); });
    select({dimension});
    ZevaUISetting::setCDimStyle(ZvDbObjectId(), L"no such name");
    QVERIFY(runCommands());
    read<ZvDbDimension>(dimension, [=](const ZvDbDimension &entity) { QCOMPARE(entity.dimensionStyle(), last); });
}

void TestFacadeCurrent::commandEchoIsPutBack_data()
{
    QTest::addColumn<bool>("echo");
    QTest::newRow("on") << true;
    QTest::newRow("off") << false;
}

void TestFacadeCurrent::commandEchoIsPutBack()
{
    QFETCH(bool, echo);
    ZvEdDisplayContext *display = document()->editingContext()->displayContext();
    display->setCommandEcho(echo);
    ZevaUISetting::setCeColor(colorOfIndex(4));
    QCOMPARE(display->commandEcho(), echo);
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), colorOfIndex(4));
}

void TestFacadeCurrent::pickWorksWithoutAnEditingContext()
{
    document()->setEditingContextAvailable(false);
    ZevaUISetting::setCeColor(colorOfIndex(4));
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), colorOfIndex(4));
    document()->setEditingContextAvailable(true);
}

void TestFacadeCurrent::pickWithoutADrawingWritesNothing()
{
    zvDocManagerPtr()->closeDocument(document());
    ZevaUISetting::setCeColor(colorOfIndex(4));
    ZevaUISetting::setCeLType(ZvDbObjectId(), L"HIDDEN");
    ZevaUISetting::setCTableStyle(ZvDbObjectId(), L"Standard");
    ZevaUISetting::setCPlotStyle(ZvDbObjectId(), L"Normal");
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L"0"));
    runCommands(); // whether commands without a document run is the editor's affair
    QVERIFY(!zvDocManagerPtr()->currentDocument());
}

void TestFacadeCurrent::pickWithoutTheServiceIsLost()
{
    zvrxEntryPoint(kZvRxUnloadModule);
    ZevaUISetting::setCeColor(colorOfIndex(4));
    QVERIFY(!zvedQueueHasInput());
    zvrxEntryPoint(kZvRxLoadModule);
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), ZvCmColor());
}

void TestFacadeCurrent::pickThrowsWhereTheServiceIsOfAWrongClass()
{
    zv_arbitDict_regservice(L"Dialog/Common", ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvRxDictionary>));
    QVERIFY_EXCEPTION_THROWN(ZevaUISetting::setCeColor(colorOfIndex(4)), ZvError_NotThatKindOfClass);
}

void TestFacadeCurrent::settersFillWhatTheTableSays_data()
{
    namedCases();
}

void TestFacadeCurrent::settersFillWhatTheTableSays()
{
    QFETCH(int, kind);
    makeRecords();
    ZevaUISetting::setCeWeight(ZvDb::kLnWt070);
    QCOMPARE(mailbox()->pendingUpdate()->kind, 1);
    QCOMPARE(mailbox()->pendingUpdate()->firstWord, std::int64_t(70));
    QCOMPARE(mailbox()->pendingUpdate()->secondWord, std::uint64_t(0));
    select({addLine()}); // a layer passes by its name then
    const ZvDbObjectId id = layerNamed(L"Walls");
    request(kind, id, L"name");
    const ZvUiPendingUpdate *update = mailbox()->pendingUpdate();
    QCOMPARE(update->kind, kind);
    QCOMPARE(update->color, ZvCmColor());
    QCOMPARE(update->firstWord, std::int64_t(0)); // nothing of the request before
    QCOMPARE(update->secondWord, std::uint64_t(id.asInt64()));
    QCOMPARE(update->name, ZvString(L"name"));
}

void TestFacadeCurrent::invalidCurrentTableStyleStays()
{
    openDrawingWithoutCurrentStyles();
    QVERIFY(!drawing().tablestyle().isValid());
    ZevaUISetting::setCTableStyle(ZvDbObjectId(), L"Plain");
    QVERIFY(runCommands());
    QVERIFY(!drawing().tablestyle().isValid());
}

void TestFacadeCurrent::invalidCurrentMultileaderStyleIsReplaced()
{
    openDrawingWithoutCurrentStyles();
    QVERIFY(!drawing().mleaderstyle().isValid());
    ZevaUISetting::setCMLeaderStyle(ZvDbObjectId(), L"Bold");
    QVERIFY(runCommands());
    QCOMPARE(drawing().mleaderstyle(), ZevaUISetting::findMleaderStyleTableRecordByName(L"Bold", nullptr));
}

void TestFacadeCurrent::plotStyleComparesWithoutCase()
{
    makeRecords();
    ZevaUISetting::setCPlotStyle(ZvDbObjectId(), L"Thin");
    QVERIFY(runCommands());
    const ZvString before = drawing().cplotstyle();
    drawing().clearUndo();
    ZevaUISetting::setCPlotStyle(ZvDbObjectId(), L"THIN");
    ZevaUISetting::setCPlotStyle(ZvDbObjectId(), L"");
    QVERIFY(runCommands());
    QCOMPARE(drawing().cplotstyle(), before);
    QVERIFY(!drawing().canUndo());
}

// ---- setters with a selection

void TestFacadeCurrent::selectedEntitiesChangeAndTheCurrentValueStays()
{
    makeRecords();
    const ZvDbObjectId line = addLine();
    select({line});
    ZevaUISetting::setCeColor(colorOfIndex(2));
    QVERIFY(runCommands());
    ZevaUISetting::setCeWeight(ZvDb::kLnWt030);
    QVERIFY(runCommands());
    for (const int kind : {2, 3, 4, 9}) {
        for (const Case &row : kNamed) {
            if (row.kind == kind)
                request(kind, ZvDbObjectId(), row.wanted);
        }
        QVERIFY(runCommands());
    }
    read<ZvDbEntity>(line, [](const ZvDbEntity &entity) {
        QCOMPARE(entity.color(), colorOfIndex(2));
        QCOMPARE(entity.lineWeight(), ZvDb::kLnWt030);
        QCOMPARE(entity.linetype(), ZvString(L"HIDDEN"));
        QCOMPARE(entity.layer(), ZvString(L"Walls"));
        QCOMPARE(entity.material(), ZvString(L"Brick"));
        QCOMPARE(entity.plotStyleName(), ZvString(L"Thin"));
    });
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    QCOMPARE(drawing().celweight(), ZvDb::kLnWtByLayer);
    QCOMPARE(drawing().celtype(), drawing().byLayerLinetype());
    QCOMPARE(drawing().clayer(), layerNamed(L"0"));
    QVERIFY(ZevaUISetting::hasSelected()); // the command leaves it in place
}

void TestFacadeCurrent::emptyNameWritesNothingToASelection_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("line type") << 2;
    QTest::newRow("layer") << 3;
    QTest::newRow("material") << 4;
    QTest::newRow("dimension style") << 5;
    QTest::newRow("plot style") << 9;
}

void TestFacadeCurrent::emptyNameWritesNothingToASelection()
{
    QFETCH(int, kind);
    makeRecords();
    auto *dimension = new ZvDbDimension;
    const ZvDbObjectId id = add(dimension);
    select({id});
    // A request that got as far as the entities would report this one.
    change<ZvDbLayerTableRecord>(layerNamed(L"0"), [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
    const MessageBoxes boxes;
    drawing().clearUndo();
    if (kind == 3) {
        QVERIFY(!ZevaUISetting::setCLayer(layerNamed(L"Walls"), L""));
        QVERIFY(!zvedQueueHasInput());
    } else if (kind == 5) {
        request(kind, ZvDbObjectId(), L"");
    } else {
        request(kind, find(kind == 9 ? 2 : kind, kind == 4 ? L"Brick" : L"HIDDEN"), L"");
    }
    QVERIFY(runCommands());
    QVERIFY(!drawing().canUndo());
    QVERIFY(boxes.shown().empty());
}

void TestFacadeCurrent::styleOfASelectionIsFoundByName()
{
    makeRecords();
    const ZvDbObjectId dimension = add(new ZvDbDimension);
    const ZvDbObjectId text = add(new ZvDbMText);
    const ZvDbObjectId table = add(new ZvDbTable);
    const ZvDbObjectId leader = add(new ZvDbMLeader);
    select({dimension, text, table, leader, addLine()});
    const ZvDbObjectId currentStyle = drawing().dimstyle();
    ZevaUISetting::setCDimStyle(ZvDbObjectId(), L"fine");
    QVERIFY(runCommands());
    ZevaUISetting::setCTextStyle(ZvDbObjectId(), L"small");
    QVERIFY(runCommands());
    ZevaUISetting::setCTableStyle(ZvDbObjectId(), L"plain");
    QVERIFY(runCommands());
    ZevaUISetting::setCMLeaderStyle(ZvDbObjectId(), L"bold");
    QVERIFY(runCommands());
    read<ZvDbDimension>(dimension, [](const ZvDbDimension &entity) { QCOMPARE(entity.dimensionStyle(), find(5, L"Fine")); });
    read<ZvDbMText>(text, [](const ZvDbMText &entity) { QCOMPARE(entity.textStyle(), find(6, L"Small")); });
    read<ZvDbTable>(table, [](const ZvDbTable &entity) { QCOMPARE(entity.tableStyle(), find(7, L"Plain")); });
    read<ZvDbMLeader>(leader, [](const ZvDbMLeader &entity) { QCOMPARE(entity.MLeaderStyle(), find(8, L"Bold")); });
    QCOMPARE(drawing().dimstyle(), currentStyle);
    // An unknown name is the last dimension style's, and no text style's.
    drawing().clearUndo();
    ZevaUISetting::setCTextStyle(ZvDbObjectId(), L"no such name");
    QVERIFY(runCommands());
    QVERIFY(!drawing().canUndo());
}

void TestFacadeCurrent::idOrNameCountsForASelection_data()
{
    namedCases();
}

void TestFacadeCurrent::idOrNameCountsForASelection()
{
    QFETCH(int, kind);
    QFETCH(QString, wanted);
    makeRecords();
    addLineType(L"Other");
    addLayer(L"Other");
    addMaterial(L"Other");
    addDimStyle(L"Other");
    addTextStyle(L"Other");
    addTableStyle(L"Other");
    addMLeaderStyle(L"Other");
    addPlotStyle(L"Other");
    const ZvDbObjectId id = kind == 5 ? add(new ZvDbDimension)
        : kind == 6                   ? add(new ZvDbText)
        : kind == 7                   ? add(new ZvDbTable)
        : kind == 8                   ? add(new ZvDbMLeader)
                                      : addLine();
    select({id});
    const bool isStyle = kind >= 5 && kind <= 8;
    const ZvDbObjectId other = find(isStyle ? kind : 2, L"Other");
    QVERIFY(other.isValid());
    request(kind, other, toZv(wanted));
    QVERIFY(runCommands());
    read<ZvDbEntity>(id, [&](const ZvDbEntity &changed) {
        switch (kind) {
        case 2:
            QCOMPARE(changed.linetype(), toZv(wanted));
            break;
        case 3:
            QCOMPARE(changed.layer(), toZv(wanted));
            break;
        case 4:
            QCOMPARE(changed.material(), toZv(wanted));
            break;
        case 5:
            QCOMPARE(zvrxCast<ZvDbDimension>(&changed)->dimensionStyle(), other);
            break;
        case 6:
            QCOMPARE(zvrxCast<ZvDbText>(&changed)->textStyle(), other);
            break;
        case 7:
            QCOMPARE(zvrxCast<ZvDbTable>(&changed)->tableStyle(), other);
            break;
        case 8:
            QCOMPARE(zvrxCast<ZvDbMLeader>(&changed)->MLeaderStyle(), other);
            break;
        default:
            QCOMPARE(changed.plotStyleName(), toZv(wanted));
            break;
        }
    });
}

// ---- the layer

void TestFacadeCurrent::layerThatIsCurrentAlreadyIsAccepted()
{
    drawing().clearUndo();
    QVERIFY(ZevaUISetting::setCLayer(ZvDbObjectId(), L"0"));
    QVERIFY(runCommands());
    QVERIFY(!drawing().canUndo());
}

void TestFacadeCurrent::currentLayerIsAcceptedThoughFrozen()
{
    change<ZvDbLayerTableRecord>(layerNamed(L"0"), [](ZvDbLayerTableRecord &record) { record.setIsFrozen(true); });
    const MessageBoxes boxes;
    QVERIFY(ZevaUISetting::setCLayer(ZvDbObjectId(), L"0"));
    QVERIFY(boxes.shown().empty());
    QVERIFY(zvedQueueHasInput()); // passed on like any other
    QVERIFY(runCommands());
}

void TestFacadeCurrent::frozenLayerIsRefusedWithAMessage()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsFrozen(true); });
    const MessageBoxes boxes;
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L"Walls"));
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown()[0].text,
             ZvString(L"无法将选定图层置为当前图层。\r\n\r\n无法将选定图层置为当前图层:\r\n 依赖外部参照的图层\n "
                      L"冻结的图层\n"));
    QCOMPARE(boxes.shown()[0].caption, ZvString(L"图层 - 无法置为当前"));
    QCOMPARE(boxes.shown()[0].flags, 64u);
}

void TestFacadeCurrent::referencedLayerIsRefusedOnlyWithoutASelection()
{
    openDrawing(kDrawingWithReference);
    const MessageBoxes boxes;
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L"House|Walls"));
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    select({addLine()});
    QVERIFY(ZevaUISetting::setCLayer(ZvDbObjectId(), L"House|Walls"));
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    runCommands();
}

void TestFacadeCurrent::erasedLayerIsRefused()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.erase(); });
    QVERIFY(!ZevaUISetting::setCLayer(layer, L""));
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L"Walls"));
}

void TestFacadeCurrent::emptyLayerNameIsRefused()
{
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L""));
    select({addLine()});
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L""));
}

void TestFacadeCurrent::layerThatCannotBeReadIsPassedOn()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layer, ZvDb::kForWrite);
    QVERIFY(ZevaUISetting::setCLayer(layer, L""));
}

void TestFacadeCurrent::layerIsPassedOnWithoutACurrentDrawing()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsFrozen(true); });
    const MessageBoxes boxes;
    zvdbSetCurDatabase(nullptr);
    QVERIFY(ZevaUISetting::setCLayer(layer, L""));
    QVERIFY(!ZevaUISetting::setCLayer(ZvDbObjectId(), L"Walls")); // without one no name is found
    QVERIFY(runCommands());
    zvdbSetCurDatabase(document()->database());
    QVERIFY(boxes.shown().empty());
    QCOMPARE(drawing().clayer(), layerNamed(L"0"));
}

void TestFacadeCurrent::layerErasedMeanwhileStaysAway()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    QVERIFY(ZevaUISetting::setCLayer(layer, L""));
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.erase(); });
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), layerNamed(L"0"));
}

void TestFacadeCurrent::layerHeldByAReaderBecomesCurrent()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layer, ZvDb::kForRead);
    QVERIFY(ZevaUISetting::setCLayer(layer, L""));
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), layer);
}

void TestFacadeCurrent::layerThatBecomesCurrentIsNotTold()
{
    // Its frozen state is written as it is, which is no change.
    const ZvDbObjectId layer = addLayer(L"Walls");
    const std::uint64_t stamp = drawing().changeStamp(drawing().layerTableId());
    QVERIFY(ZevaUISetting::setCLayer(layer, L""));
    QVERIFY(runCommands());
    QCOMPARE(drawing().clayer(), layer);
    QCOMPARE(drawing().changeStamp(drawing().layerTableId()), stamp);
    QVERIFY(!ZevaUISetting::getLayInfo(L"Walls").isFrozen);
}

// ---- layer states

void TestFacadeCurrent::layerStateIsFlipped_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("on and off") << int(ZevaUISetting::kLayerOnOff);
    QTest::newRow("freeze") << int(ZevaUISetting::kLayerFreeze);
    QTest::newRow("lock") << int(ZevaUISetting::kLayerLock);
}

void TestFacadeCurrent::layerStateIsFlipped()
{
    QFETCH(int, type);
    const ZvDbObjectId layer = addLayer(L"Walls");
    const auto state = [&] {
        return read<ZvDbLayerTableRecord>(layer, [&](const ZvDbLayerTableRecord &record) {
            return type == 0 ? record.isOff() : type == 1 ? record.isFrozen() : record.isLocked();
        });
    };
    const auto typed = ZevaUISetting::Layer_Info_Type(type);
    QVERIFY(ZevaUISetting::changeLayerStatus(typed, L"walls", ZvCmColor()));
    QVERIFY(state());
    QVERIFY(!ZevaUISetting::changeLayerStatus(typed, L"Walls", ZvCmColor()));
    QVERIFY(!state());
    QVERIFY(!zvedQueueHasInput()); // no command
}

void TestFacadeCurrent::layerColorIsSet()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerColor, L"Walls", colorOfIndex(3)));
    QCOMPARE(read<ZvDbLayerTableRecord>(layer, [](const ZvDbLayerTableRecord &record) { return record.color(); }),
             colorOfIndex(3));
}

void TestFacadeCurrent::currentLayerIsSwitchedOffOnlyAfterAQuestion_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isOff");
    QTest::newRow("keep it on") << 6 << false;
    QTest::newRow("switch it off") << 7 << true;
    QTest::newRow("closed without an answer") << 0 << true;
}

void TestFacadeCurrent::currentLayerIsSwitchedOffOnlyAfterAQuestion()
{
    QFETCH(int, answer);
    QFETCH(bool, isOff);
    const MessageBoxes boxes(answer);
    QCOMPARE(ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerOnOff, L"0", ZvCmColor()), isOff);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown()[0].text, ZvString(L"当前图层将被关闭。\n是否要使当前图层保持打开状态?\n"));
    QCOMPARE(boxes.shown()[0].caption, ZvString(L"Zevara"));
    QCOMPARE(boxes.shown()[0].flags, 68u);
    QCOMPARE(ZevaUISetting::getLayInfo(L"0").isOff, isOff);
    if (isOff) { // on again: no question
        QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerOnOff, L"0", ZvCmColor()));
        QCOMPARE(boxes.shown().size(), std::size_t(1));
    }
}

void TestFacadeCurrent::otherLayersAreNeverAskedFor()
{
    addLayer(L"Walls");
    const MessageBoxes boxes;
    QVERIFY(ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerOnOff, L"Walls", ZvCmColor()));
    QVERIFY(ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerFreeze, L"Walls", ZvCmColor()));
    QVERIFY(boxes.shown().empty());
}

void TestFacadeCurrent::currentLayerIsNotFrozen()
{
    const MessageBoxes boxes;
    QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerFreeze, L"0", ZvCmColor()));
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(boxes.shown()[0].text, ZvString(L"不能冻结当前图层\n"));
    QCOMPARE(boxes.shown()[0].caption, ZvString(L"Zevara"));
    QCOMPARE(boxes.shown()[0].flags, 64u);
    QVERIFY(!ZevaUISetting::getLayInfo(L"0").isFrozen);
}

void TestFacadeCurrent::currentLayerIsLockedAndColouredUnasked()
{
    const MessageBoxes boxes;
    QVERIFY(ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerLock, L"0", ZvCmColor()));
    QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerColor, L"0", colorOfIndex(3)));
    QVERIFY(boxes.shown().empty());
    QVERIFY(ZevaUISetting::getLayInfo(L"0").isLocked);
    QCOMPARE(ZevaUISetting::getLayInfo(L"0").color, colorOfIndex(3));
}

void TestFacadeCurrent::layerStatesNeedACurrentDrawing()
{
    zvdbSetCurDatabase(nullptr);
    QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerLock, L"0", ZvCmColor()));
    zvdbSetCurDatabase(document()->database());
    QVERIFY(!ZevaUISetting::getLayInfo(L"0").isLocked);
}

void TestFacadeCurrent::unknownLayerStateChangesNothing()
{
    addLayer(L"Walls");
    drawing().clearUndo();
    QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::Layer_Info_Type(4), L"Walls", colorOfIndex(1)));
    QVERIFY(!drawing().canUndo());
}

void TestFacadeCurrent::layerThatCannotBeWrittenIsLeft()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerLock, L"no such layer", ZvCmColor()));
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layer, ZvDb::kForRead);
        QVERIFY(!ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerLock, L"Walls", ZvCmColor()));
    }
    QVERIFY(!ZevaUISetting::getLayInfo(L"Walls").isLocked);
}

void TestFacadeCurrent::layerStateIsUndoable()
{
    addLayer(L"Walls");
    ZevaUISetting::changeLayerStatus(ZevaUISetting::kLayerLock, L"Walls", ZvCmColor());
    QVERIFY(drawing().undo());
    QVERIFY(!ZevaUISetting::getLayInfo(L"Walls").isLocked);
}

// ---- readers

void TestFacadeCurrent::currentColorIndex()
{
    QCOMPARE(int(ZevaUISetting::getCeColor()), 256);
    drawing().setCecolor(colorOfIndex(5));
    QCOMPARE(int(ZevaUISetting::getCeColor()), 5);
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(int(ZevaUISetting::getCeColor()), 256);
}

void TestFacadeCurrent::colorOfTheLayerFollowsTheSelection()
{
    const ZvDbObjectId walls = addLayer(L"Walls");
    const ZvDbObjectId doors = addLayer(L"Doors");
    change<ZvDbLayerTableRecord>(walls, [](ZvDbLayerTableRecord &record) { record.setColor(colorOfIndex(1)); });
    change<ZvDbLayerTableRecord>(doors, [](ZvDbLayerTableRecord &record) { record.setColor(colorOfIndex(2)); });
    drawing().setClayer(walls);
    QCOMPARE(ZevaUISetting::getCLayerColor(), colorOfIndex(1));
    const ZvDbObjectId first = addLine();
    const ZvDbObjectId second = addLine();
    change<ZvDbEntity>(first, [=](ZvDbEntity &entity) { entity.setLayer(doors); });
    change<ZvDbEntity>(second, [=](ZvDbEntity &entity) { entity.setLayer(walls); });
    select({first, second});
    QCOMPARE(ZevaUISetting::getCLayerColor(), colorOfIndex(2));
    {
        const ZvDbObjectPointer<ZvDbEntity> held(first, ZvDb::kForWrite);
        QCOMPARE(ZevaUISetting::getCLayerColor(), colorOfIndex(1)); // the next one that can be read
    }
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(ZevaUISetting::getCLayerColor(), ZvCmColor());
}

void TestFacadeCurrent::colorOfNoLayerThatOpensIsTheDefault()
{
    const ZvDbObjectId walls = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(walls, [](ZvDbLayerTableRecord &record) { record.setColor(colorOfIndex(1)); });
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [=](ZvDbEntity &entity) { entity.setLayer(walls); });
    select({line});
    drawing().setClayer(walls);
    const ZvDbObjectPointer<ZvDbLayerTableRecord> held(walls, ZvDb::kForWrite);
    QCOMPARE(ZevaUISetting::getCLayerColor(), ZvCmColor());
    selection().clear();
    QCOMPARE(ZevaUISetting::getCLayerColor(), ZvCmColor());
}

void TestFacadeCurrent::currentLayerColorBringsTheUsageUpToDate()
{
    const ZvDbObjectId walls = addLayer(L"Walls");
    const ZvDbObjectId empty = addLayer(L"Empty");
    const ZvDbObjectId line = addLine();
    const auto isUsed = [](ZvDbObjectId layer) {
        return read<ZvDbLayerTableRecord>(layer, [](const ZvDbLayerTableRecord &record) { return record.isInUse(); });
    };
    for (const ZvDbObjectId layer : {walls, empty}) {
        change<ZvDbEntity>(line, [=](ZvDbEntity &entity) { entity.setLayer(layer); });
        ZvCmColor color;
        QCOMPARE(int(ZevaUISetting::getCurrentLayerColor(color)), 0);
        QCOMPARE(isUsed(walls), layer == walls);
        QCOMPARE(isUsed(empty), layer == empty);
    }
}

void TestFacadeCurrent::currentLayerColorNeverLooksAtTheSelection()
{
    const ZvDbObjectId walls = addLayer(L"Walls");
    change<ZvDbLayerTableRecord>(walls, [](ZvDbLayerTableRecord &record) { record.setColor(colorOfIndex(1)); });
    select({addLine()});
    drawing().setClayer(walls);
    ZvCmColor color;
    QCOMPARE(int(ZevaUISetting::getCurrentLayerColor(color)), 0);
    QCOMPARE(color, colorOfIndex(1));
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> held(walls, ZvDb::kForWrite);
        color = colorOfIndex(9);
        QCOMPARE(int(ZevaUISetting::getCurrentLayerColor(color)), 208);
        QCOMPARE(color, colorOfIndex(9));
    }
    {
        const ZvDbObjectPointer<ZvDbObject> held(drawing().layerTableId(), ZvDb::kForWrite);
        QCOMPARE(int(ZevaUISetting::getCurrentLayerColor(color)), 208);
    }
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(int(ZevaUISetting::getCurrentLayerColor(color)), 208);
}

void TestFacadeCurrent::defaultLineWeightComesFromTheApplication()
{
    CHcSystem::instance()->application()->setDefaultLineWeight(35);
    QCOMPARE(ZevaUISetting::getLWDefault(), 35);
    CHcSystem::instance()->setApplicationAvailable(false);
    QCOMPARE(ZevaUISetting::getLWDefault(), 0);
    CHcSystem::instance()->setApplicationAvailable(true);
    CHcSystem::setInstanceAvailable(false);
    QCOMPARE(ZevaUISetting::getLWDefault(), 0);
}

void TestFacadeCurrent::lineWeightHasItsLabel_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<QString>("millimetres");
    QTest::addColumn<QString>("inches");
    QTest::newRow("-3") << -3 << QStringLiteral("默认") << QStringLiteral("默认");
    QTest::newRow("-2") << -2 << QStringLiteral("ByBlock") << QStringLiteral("ByBlock");
    QTest::newRow("-1") << -1 << QStringLiteral("ByLayer") << QStringLiteral("ByLayer");
    for (const int weight : {0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211}) {
        // Three decimals of an inch of 25.4 mm.
        QTest::newRow(qPrintable(QString::number(weight)))
            << weight << QString::asprintf("%.2f mm", weight / 100.0)
            << QString::asprintf("%.3f\"", std::floor(weight / 2540.0 * 1000.0 + 0.5) / 1000.0);
    }
}

void TestFacadeCurrent::lineWeightHasItsLabel()
{
    QFETCH(int, weight);
    const auto typed = ZvDb::LineWeight(weight);
    QTEST(QString::fromUtf8(ZevaUISetting::getLineName(false, typed)), "millimetres");
    QTEST(QString::fromUtf8(ZevaUISetting::getLineName(true, typed)), "inches");
    QCOMPARE(ZevaUISetting::getLineName(true, typed), ZevaUISetting::getLineName(true, typed));
}

void TestFacadeCurrent::unknownLineWeightHasAnEmptyLabel()
{
    for (const int weight : {-4, 1, 26, 212}) {
        for (const bool inches : {false, true}) {
            const char *label = ZevaUISetting::getLineName(inches, ZvDb::LineWeight(weight));
            QVERIFY(label);
            QCOMPARE(label, "");
        }
    }
}

void TestFacadeCurrent::currentLineTypeName()
{
    QCOMPARE(ZevaUISetting::getLineTypeName().compareNoCase(L"ByLayer"), 0);
    drawing().setCeltype(addLineType(L"HIDDEN"));
    QCOMPARE(ZevaUISetting::getLineTypeName(), ZvString(L"HIDDEN"));
    zvDocManagerPtr()->closeDocument(document());
    QVERIFY(ZevaUISetting::getLineTypeName().isEmpty());
}

void TestFacadeCurrent::currentValuesAreThoseOfTheCurrentDrawing()
{
    // It may be another than the document's.
    drawing().setCelweight(ZvDb::kLnWt070);
    drawing().setCeltype(addLineType(L"HIDDEN"));
    const ZvDbDatabasePtr other = readDrawing(kDrawingWithReference);
    zvdbSetCurDatabase(other);
    other->setCecolor(colorOfIndex(5));
    QCOMPARE(int(ZevaUISetting::getCeColor()), 5);
    QCOMPARE(ZevaUISetting::getLineTypeName(), ZvString(L"HIDDEN")); // the document's
    zvedDialogStarted(); // written at once
    ZevaUISetting::setCeColor(colorOfIndex(4));
    ZevaUISetting::setCeWeight(ZvDb::kLnWt100);
    zvedDialogEnded();
    zvdbSetCurDatabase(document()->database());
    QCOMPARE(other->cecolor(), colorOfIndex(4));
    QCOMPARE(other->celweight(), ZvDb::kLnWt100);
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    QCOMPARE(drawing().celweight(), ZvDb::kLnWt070);
}

void TestFacadeCurrent::emptyOperationsDoNothing()
{
    drawing().clearUndo();
    const std::uint64_t openings = drawing().openingsCount();
    ZevaUISetting::getLWeight();
    ZevaUISetting::getLType();
    QCOMPARE(drawing().openingsCount(), openings);
    QVERIFY(!zvedQueueHasInput());
}

// ---- work block and focus

void TestFacadeCurrent::workBlockIsModelSpaceWithTiles()
{
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().modelSpaceId());
    QVERIFY(ZevaUISetting::getWorkBlockRecId(nullptr).isNull());
    const LayoutLink link(nullptr); // no layout is asked for
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().modelSpaceId());
}

void TestFacadeCurrent::workBlockIsThePaperOnALayout()
{
    drawing().setTilemode(false);
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().paperSpaceId());
}

void TestFacadeCurrent::workBlockIsModelSpaceInsideAViewport()
{
    drawing().setTilemode(false);
    ZvDbObjectId viewport;
    QCOMPARE(drawing().appendEntity(new ZvDbViewport, drawing().paperSpaceId(), viewport), Zv::eOk);
    QCOMPARE(drawing().setCurrentViewport(viewport), Zv::eOk);
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().modelSpaceId());
    QCOMPARE(drawing().setCurrentViewport(ZvDbObjectId()), Zv::eOk);
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().paperSpaceId());
}

void TestFacadeCurrent::workBlockIsModelSpaceInTheBlockEditor()
{
    drawing().setTilemode(false);
    zvedSetBlockEditorOpen(true);
    const int level = zeva_log_level();
    const ZvLogHandler handler = zvSetLogHandler(keepLogLine);
    s_logLines.clear();
    zeva_set_log_level(6);
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().modelSpaceId());
    QVERIFY(s_logLines.empty());
    zeva_set_log_level(5);
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().modelSpaceId());
    zeva_set_log_level(level);
    zvSetLogHandler(handler);
    zvedSetBlockEditorOpen(false);
    QCOMPARE(s_logLines.size(), std::size_t(1));
    QCOMPARE(s_logLines[0], QByteArray("5 zvodasetting getWorkBlockRecId 后面要加上块在位编辑时返回的块表记录"));
    QCOMPARE(ZevaUISetting::getWorkBlockRecId(&drawing()), drawing().paperSpaceId());
}

void TestFacadeCurrent::workBlockIsNullForALayoutWithoutABlock()
{
    drawing().setTilemode(false);
    ZvDbLayout layout; // on its paper, which no block holds
    const LayoutLink link(&layout);
    QVERIFY(ZevaUISetting::getWorkBlockRecId(&drawing()).isNull());
}

void TestFacadeCurrent::workBlockIsNullWithoutALayoutObject()
{
    drawing().setTilemode(false);
    {
        const LayoutLink link(nullptr);
        QVERIFY(ZevaUISetting::getWorkBlockRecId(&drawing()).isNull());
    }
    ZvGsDbRootLinkage::DatabaseExtension *extension = ZvGsDbRootLinkage::getDbBaseDatabasePE();
    ZvGsDbRootLinkage::setDbBaseDatabasePE(nullptr);
    QVERIFY(ZevaUISetting::getWorkBlockRecId(&drawing()).isNull());
    ZvGsDbRootLinkage::setDbBaseDatabasePE(extension);
}

void TestFacadeCurrent::workBlockThrowsForAnObjectThatIsNoLayout()
{
    drawing().setTilemode(false);
    ZvStaticRxObject<ZvRxDictionary> other;
    const LayoutLink link(&other);
    QVERIFY_EXCEPTION_THROWN(ZevaUISetting::getWorkBlockRecId(&drawing()), ZvError_NotThatKindOfClass);
}

void TestFacadeCurrent::focusGoesToTheMainView()
{
    QWidget window;
    QLineEdit control(&window);
    FocusWatch view(&window);
    MainWindow main;
    main.viewWidget = &view;
    CHcSystem::instance()->application()->setWindow(&main);
    window.show();
    window.activateWindow();
    QVERIFY(zevaWaitForActive(&window));
    control.setFocus();
    QVERIFY(control.hasFocus());
    ZevaUISetting::restoreFocus2MainView();
    QVERIFY(view.hasFocus());
    QCOMPARE(view.reason, Qt::OtherFocusReason);
    CHcSystem::instance()->application()->setWindow(nullptr);
}

void TestFacadeCurrent::focusStaysWithoutAView()
{
    MainWindow main;
    ZvApApplication *application = CHcSystem::instance()->application();
    ZevaUISetting::restoreFocus2MainView(); // no window
    application->setWindow(&main);
    ZevaUISetting::restoreFocus2MainView(); // no widget
    main.hasView = false;
    ZevaUISetting::restoreFocus2MainView();
    application->setWindow(nullptr);
    CHcSystem::instance()->setApplicationAvailable(false);
    ZevaUISetting::restoreFocus2MainView();
    CHcSystem::instance()->setApplicationAvailable(true);
    CHcSystem::setInstanceAvailable(false);
    ZevaUISetting::restoreFocus2MainView();
}

ZEVA_TEST_MAIN(TestFacadeCurrent)
#include "tst_facade_current.moc"
