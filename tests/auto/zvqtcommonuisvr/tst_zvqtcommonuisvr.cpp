// SPDX-License-Identifier: MIT
#include "mainwindowhost.h"
#include "modaldriver.h"
#include "modulesession.h"
#include "zevatest.h"
#include "zvqtcommonuisvr.h"

#include "base/zverror.h"
#include "core/zvapdocument.h"
#include "core/zveditor.h"

#include <QLibrary>
#include <QPushButton>
#include <QWidget>

namespace {

/// A dialog service of another maker, which makes nothing.
class OtherService : public ZvUiService
{
public:
    ZvUiDialogBasePtr createDialog(const ZvString &, void *) override { return ZvUiDialogBasePtr(); }
};

const ZvEdCommand *updateCommand()
{
    return zvedCommandStack()->lookUp(L"GLOBAL_UI_UPDATEDB");
}

ZvQtCommonUISvr *service()
{
    return dynamic_cast<ZvQtCommonUISvr *>(grUISvr(L"Dialog/Common"));
}

ZvJsonPtr messageParams()
{
    const ZvJsonPtr params = ElementValue::createObject(2);
    params->SetDataI("contentFlag", 1);
    params->SetDataSW("msg", ZvString(L"是否保存?"));
    return params;
}

void pressFirstButton(QDialog *dialog)
{
    QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
}

} // namespace

Q_DECLARE_METATYPE(ZvString)

class TestZvQtCommonUISvr : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    // the module entry
    void loaderFindsTheEntryByItsCName();
    void loadRegistersTheServiceAndAddsTheCommand();
    void unloadRemovesTheCommandAndClearsTheService();
    void unloadWithoutLoadIsHarmless();
    void unloadRemovesTheCommandThoughTheServiceIsGone();
    void moduleLoadsAgainAfterUnload();
    void otherMessagesTouchNothing_data();
    void otherMessagesTouchNothing();

    // the mailbox
    void newServiceHasAnEmptyMailbox();
    void mailboxHoldsTheLastRecord();

    // the factory
    void nameReachesItsDialog_data();
    void nameReachesItsDialog();
    void callerGetsTheOnlyReference();
    void eachCallMakesADialogOfItsOwn();
    void dialogStandsBeforeTheGivenWindow();
    void dialogWithoutHandleStandsBeforeTheMainWindow();
    void dialogWithoutAnyWindowIsTopLevelAndRuns();
    void dialogOutlivesTheService();
    void dialogComesThroughTheKernelsCall();
    void kernelsCallGivesNoResultForAnUnknownDialog();

    // the handler of the command
    void commandRunsFromTheQueue();
    void handlerIgnoresAKindThatNoPropertyHas_data();
    void handlerIgnoresAKindThatNoPropertyHas();
    void handlerDoesNothingWithoutTheService();
    void handlerDoesNothingWithAServiceOfAnotherMaker();
    void handlerThrowsWhereTheServiceIsOfAWrongClass();
};

void TestZvQtCommonUISvr::loaderFindsTheEntryByItsCName()
{
    QLibrary library(QStringLiteral(ZEVA_QTUTILS_FILE));
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    QVERIFY(library.resolve("zvrxEntryPoint"));
}

void TestZvQtCommonUISvr::loadRegistersTheServiceAndAddsTheCommand()
{
    CHcSystem::start();
    QVERIFY(!grUISvr(L"Dialog/Common"));
    QVERIFY(!updateCommand());
    QCOMPARE(zvrxEntryPoint(1), 0);

    ZvRxObject *object = grUISvr(L"Dialog/Common");
    QVERIFY(object);
    QCOMPARE(object->isA(), ZvUiService::desc());
    QCOMPARE(zvrxNumRefs(object), 1); // the registry's
    QVERIFY(service());

    const ZvEdCommand *command = updateCommand();
    QVERIFY(command);
    QVERIFY(command->group == L"ZEVA");
    QVERIFY(command->globalName == L"GLOBAL_UI_UPDATEDB");
    QVERIFY(command->localName == L"GLOBAL_UI_UPDATEDB");
    QCOMPARE(command->flags, 12648470);
    QCOMPARE(command->code, -1);
    QCOMPARE(command->context, nullptr);
    QVERIFY(command->function);

    zvrxEntryPoint(2);
    CHcSystem::stop();
}

void TestZvQtCommonUISvr::unloadRemovesTheCommandAndClearsTheService()
{
    CHcSystem::start();
    zvrxEntryPoint(1);
    QCOMPARE(zvrxEntryPoint(2), 0);
    QVERIFY(!updateCommand());
    QVERIFY(!grUISvr(L"Dialog/Common"));
    CHcSystem::stop();
}

void TestZvQtCommonUISvr::unloadWithoutLoadIsHarmless()
{
    CHcSystem::start();
    QCOMPARE(zvrxEntryPoint(2), 0);
    QVERIFY(!updateCommand());
    QVERIFY(!grUISvr(L"Dialog/Common"));
    CHcSystem::stop();
}

void TestZvQtCommonUISvr::unloadRemovesTheCommandThoughTheServiceIsGone()
{
    CHcSystem::start();
    zvrxEntryPoint(1);
    zv_arbitDict_clearservice(L"Dialog/Common");
    QVERIFY(updateCommand());
    QCOMPARE(zvrxEntryPoint(2), 0);
    QVERIFY(!updateCommand());
    CHcSystem::stop();
}

void TestZvQtCommonUISvr::moduleLoadsAgainAfterUnload()
{
    for (int i = 0; i < 2; ++i) {
        const ModuleSession session;
        QVERIFY(service());
        QVERIFY(updateCommand());
    }
}

void TestZvQtCommonUISvr::otherMessagesTouchNothing_data()
{
    QTest::addColumn<int>("message");
    QTest::newRow("0") << 0;
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
    QTest::newRow("257, whose low byte is 1") << 257;
}

void TestZvQtCommonUISvr::otherMessagesTouchNothing()
{
    QFETCH(int, message);
    {
        const ModuleSession session;
        ZvRxObject *before = grUISvr(L"Dialog/Common");
        QCOMPARE(zvrxEntryPoint(message), 0);
        QCOMPARE(grUISvr(L"Dialog/Common"), before);
        QCOMPARE(zvrxNumRefs(before), 1);
        QVERIFY(updateCommand());
    }
    // Not even the command stack is asked for.
    QCOMPARE(zvrxEntryPoint(message), 0);
    QVERIFY(!grUISvr(L"Dialog/Common"));
}

void TestZvQtCommonUISvr::newServiceHasAnEmptyMailbox()
{
    const ModuleSession session;
    const ZvUiPendingUpdate *update = service()->pendingUpdate();
    QVERIFY(update);
    QVERIFY(update->color == ZvCmColor());
    QCOMPARE(update->firstWord, std::int64_t(0));
    QCOMPARE(update->secondWord, std::uint64_t(0));
    QVERIFY(update->name.isEmpty());
}

void TestZvQtCommonUISvr::mailboxHoldsTheLastRecord()
{
    const ModuleSession session;
    ZvUiPendingUpdate *inPlace = service()->pendingUpdate();
    ZvUiPendingUpdate update;
    update.kind = 3;
    update.name = ZvString(L"墙体");
    update.secondWord = 77;
    service()->setPendingUpdate(update);
    update.kind = 1;
    update.color.setColorIndex(5);
    update.firstWord = -3;
    update.secondWord = 0;
    update.name = ZvString();
    service()->setPendingUpdate(update);

    QCOMPARE(service()->pendingUpdate(), inPlace);
    QCOMPARE(inPlace->kind, 1);
    QCOMPARE(int(inPlace->color.colorIndex()), 5);
    QCOMPARE(inPlace->firstWord, std::int64_t(-3));
    QCOMPARE(inPlace->secondWord, std::uint64_t(0));
    QVERIFY(inPlace->name.isEmpty());
}

void TestZvQtCommonUISvr::nameReachesItsDialog_data()
{
    QTest::addColumn<ZvString>("name");
    QTest::addColumn<bool>("isMade");
    QTest::newRow("MessageBox") << ZvString(L"MessageBox") << true;
    QTest::newRow("lower case") << ZvString(L"messagebox") << true;
    QTest::newRow("upper case") << ZvString(L"MESSAGEBOX") << true;
    QTest::newRow("mixed case") << ZvString(L"mESSAGEbOX") << true;
    QTest::newRow("FileDialogBox") << ZvString(L"FileDialogBox") << true;
    QTest::newRow("FileNavDialogBox") << ZvString(L"FileNavDialogBox") << true;
    QTest::newRow("file dialog in lower case") << ZvString(L"filedialogbox") << true;
    QTest::newRow("CADPreviewDialog") << ZvString(L"CADPreviewDialog") << true;
    QTest::newRow("print preview in lower case") << ZvString(L"cadpreviewdialog") << true;
    QTest::newRow("TaskDialog") << ZvString(L"TaskDialog") << true;
    QTest::newRow("ColorDialog") << ZvString(L"ColorDialog") << true;
    QTest::newRow("colour dialog in lower case") << ZvString(L"colordialog") << true;
    QTest::newRow("empty name") << ZvString() << false;
    QTest::newRow("unknown name") << ZvString(L"PlotDialog") << false;
    QTest::newRow("beginning of a name") << ZvString(L"Message") << false;
    QTest::newRow("name with a blank behind") << ZvString(L"MessageBox ") << false;
}

void TestZvQtCommonUISvr::nameReachesItsDialog()
{
    QFETCH(ZvString, name);
    QFETCH(bool, isMade);
    const ModuleSession session;
    const ZvUiDialogBasePtr dialog = session.createDialog(name);
    QCOMPARE(!dialog.isNull(), isMade);
    QVERIFY(!isMade || dialog->isKindOf(ZvUiModeDialogBase::desc()));
}

void TestZvQtCommonUISvr::callerGetsTheOnlyReference()
{
    const ModuleSession session;
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    QCOMPARE(zvrxNumRefs(dialog), 1);
    QVERIFY(session.dialogOf(dialog)->isModal());
    QVERIFY(!session.dialogOf(dialog)->isVisible());
}

void TestZvQtCommonUISvr::eachCallMakesADialogOfItsOwn()
{
    const ModuleSession session;
    const ZvUiDialogBasePtr first = session.createDialog(L"MessageBox");
    const ZvUiDialogBasePtr second = session.createDialog(L"MessageBox");
    QVERIFY(first.get() != second.get());
    QVERIFY(first->getDlg() != second->getDlg());
}

void TestZvQtCommonUISvr::dialogStandsBeforeTheGivenWindow()
{
    const ModuleSession session;
    QWidget mainWindow;
    QWidget given;
    const MainWindowHost host(&mainWindow);
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox", &given);
    QCOMPARE(session.dialogOf(dialog)->parentWidget(), &given);
}

void TestZvQtCommonUISvr::dialogWithoutHandleStandsBeforeTheMainWindow()
{
    const ModuleSession session;
    QWidget mainWindow;
    const MainWindowHost host(&mainWindow);
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    QCOMPARE(session.dialogOf(dialog)->parentWidget(), &mainWindow);
}

void TestZvQtCommonUISvr::dialogWithoutAnyWindowIsTopLevelAndRuns()
{
    const ModuleSession session;
    QVERIFY(!zvuiMainWindow());
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    QCOMPARE(session.dialogOf(dialog)->parentWidget(), nullptr);
    QVERIFY(session.dialogOf(dialog)->isWindow());
    QVERIFY(dialog->onInit(messageParams(), nullptr));
    ModalDriver driver;
    driver.next(pressFirstButton);
    QCOMPARE(dialog->doModal(), 1);
    QVERIFY(driver.finished());
}

void TestZvQtCommonUISvr::dialogOutlivesTheService()
{
    ZvUiDialogBasePtr dialog;
    {
        const ModuleSession session;
        dialog = session.createDialog(L"MessageBox");
    }
    const ZvJsonPtr params = messageParams();
    QVERIFY(dialog->onInit(params, nullptr));
    ModalDriver driver;
    driver.next(pressFirstButton);
    QCOMPARE(dialog->doModal(), 1);
    QVERIFY(driver.finished());
    QVERIFY(params->hasKey("ControlBtn"));
}

void TestZvQtCommonUISvr::dialogComesThroughTheKernelsCall()
{
    const ModuleSession session;
    const ZvJsonPtr params = messageParams();
    ModalDriver driver;
    driver.next(pressFirstButton);
    const ZvJsonPtr result = zvuiShowModelDialogEx(L"Dialog/Common", L"MessageBox", params, nullptr, nullptr);
    QVERIFY(driver.finished());
    QCOMPARE(result->member("result")->asInteger(), 1);
    QVERIFY(!result->hasKey("ControlBtn"));
    QVERIFY(params->hasKey("ControlBtn"));
    QVERIFY(!params->hasKey("result"));
}

void TestZvQtCommonUISvr::kernelsCallGivesNoResultForAnUnknownDialog()
{
    const ModuleSession session;
    const ZvJsonPtr result = zvuiShowModelDialogEx(L"Dialog/Common", L"", messageParams(), nullptr, nullptr);
    QVERIFY(!result->hasKey("result"));
}

void TestZvQtCommonUISvr::commandRunsFromTheQueue()
{
    const ModuleSession session;
    QVERIFY(zvDocManagerPtr()->newDocument());
    zvedMenuMacro(L"GLOBAL_UI_UPDATEDB", false);
    ZvString error;
    QVERIFY2(zvedRunQueue(&error), error.toStdString().c_str());
}

void TestZvQtCommonUISvr::handlerIgnoresAKindThatNoPropertyHas_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("-1") << -1;
    QTest::newRow("10") << 10;
    QTest::newRow("the highest number") << std::numeric_limits<int>::max();
}

void TestZvQtCommonUISvr::handlerIgnoresAKindThatNoPropertyHas()
{
    QFETCH(int, kind);
    const ModuleSession session;
    ZvUiPendingUpdate update;
    update.kind = kind;
    update.name = ZvString(L"0");
    service()->setPendingUpdate(update);
    updateCommand()->function();
    QCOMPARE(service()->pendingUpdate()->kind, kind);
}

void TestZvQtCommonUISvr::handlerDoesNothingWithoutTheService()
{
    const ModuleSession session;
    const ZvEdCommandFunction handler = updateCommand()->function;
    zv_arbitDict_clearservice(L"Dialog/Common");
    handler();
    QVERIFY(!grUISvr(L"Dialog/Common"));
}

void TestZvQtCommonUISvr::handlerDoesNothingWithAServiceOfAnotherMaker()
{
    const ModuleSession session;
    const ZvEdCommandFunction handler = updateCommand()->function;
    const ZvRxObjectPtr other = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<OtherService>);
    zv_arbitDict_regservice(L"Dialog/Common", other);
    handler();
    QCOMPARE(grUISvr(L"Dialog/Common"), other.get());
}

void TestZvQtCommonUISvr::handlerThrowsWhereTheServiceIsOfAWrongClass()
{
    const ModuleSession session;
    const ZvEdCommandFunction handler = updateCommand()->function;
    zv_arbitDict_regservice(L"Dialog/Common", ZvRxObjectPtr(ElementValue::createObject(2)));
    QVERIFY_EXCEPTION_THROWN(handler(), ZvError_NotThatKindOfClass);
}

ZEVA_TEST_MAIN(TestZvQtCommonUISvr)
#include "tst_zvqtcommonuisvr.moc"
