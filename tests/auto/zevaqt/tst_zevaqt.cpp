// SPDX-License-Identifier: MIT
#include "modaldriver.h"
#include "zevaqt.h"
#include "zevatest.h"

#include <QEventLoop>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

namespace {

/// A dialog with one value, that notes what is asked of it.
class ProbeDialog : public ZvQtModeDialogImpl<ProbeDialog, QDialog>
{
public:
    ProbeDialog(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags)
        : ZvQtModeDialogImpl(owner, parent, flags), givenOwner(owner), givenFlags(flags)
    {
        ++alive;
    }
    ~ProbeDialog() override { --alive; }

    int exec() override
    {
        ++execCount;
        return ZvQtModeDialogImpl::exec();
    }
    void setVisible(bool visible) override
    {
        calls << (visible ? QStringLiteral("show") : QStringLiteral("hide"));
        ZvQtModeDialogImpl::setVisible(visible);
    }
    bool onCreate() override
    {
        ++createCount;
        wasModalAtCreation = isModal();
        nameAtCreation = name();
        return createResult;
    }
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override
    {
        return ZvQtModeDialogImpl::onInit(params, helper) && initResult;
    }
    void setExtraData(ZvJsonPtr extra) override
    {
        ++extraCount;
        extraData = extra;
    }
    bool exchangeData(bool save) override
    {
        calls << (save ? QStringLiteral("save") : QStringLiteral("restore"));
        if (save)
            kept = edit.text();
        else
            edit.setText(kept);
        return false;
    }
    ZvJsonPtr notify(int what, ZvJsonPtr data) override
    {
        notified = what;
        return data;
    }
    using ZvQtModeDialogImpl::params;

    static int alive;
    static bool createResult;
    static bool initResult;

    ZvQtUIModeDialogBase *givenOwner;
    Qt::WindowFlags givenFlags;
    QLineEdit edit{this};
    QString kept;
    QStringList calls;
    int execCount = 0;
    int createCount = 0;
    bool wasModalAtCreation = false;
    ZvUtf8String nameAtCreation;
    int extraCount = 0;
    ZvJsonPtr extraData;
    int notified = 0;
};

int ProbeDialog::alive = 0;
bool ProbeDialog::createResult = true;
bool ProbeDialog::initResult = true;

typedef ZvQtRxObjectImpl<ZvQtModeDialog<ProbeDialog>, ZvQtModeDialog<ProbeDialog>> ProbeAdapter;
typedef ZvSmartPtr<ProbeAdapter> ProbeAdapterPtr;

ProbeAdapterPtr makeAdapter(QWidget *parent = nullptr, const char *name = nullptr)
{
    ProbeAdapterPtr adapter = ProbeAdapterPtr::adopt(new ProbeAdapter);
    adapter->createDialog(parent, Qt::WindowFlags(), name);
    return adapter;
}

ProbeDialog *dialogOf(const ProbeAdapterPtr &adapter)
{
    return static_cast<ProbeDialog *>(adapter->getDlg());
}

/// The base alone, over any widget.
class BareAdapterBase : public ZvQtUIModeDialogBase
{
public:
    void setWidget(QWidget *widget) { m_pWidget = widget; }
    const ZvJsonPtr &params() const { return m_pParams; }
    const ZvRxObjectPtr &helper() const { return m_pHelper; }
};
typedef ZvQtRxObjectImpl<BareAdapterBase> BareAdapter;
typedef ZvSmartPtr<BareAdapter> BareAdapterPtr;

BareAdapterPtr makeBareAdapter()
{
    return BareAdapterPtr::adopt(new BareAdapter);
}

/// Notes which of its own operations the base calls, in order.
class OrderAdapter : public ZvQtUIModeDialogBase
{
public:
    QStringList calls;

    void endDialog(int code) override { calls << QStringLiteral("endDialog %1").arg(code); }
    bool exchangeData(bool save) override
    {
        calls << (save ? QStringLiteral("exchangeData true") : QStringLiteral("exchangeData false"));
        return true;
    }
    void hide() override { calls << QStringLiteral("hide"); }
    void show() override { calls << QStringLiteral("show"); }
    void onCancel() override
    {
        calls << QStringLiteral("onCancel");
        ZvQtUIModeDialogBase::onCancel();
    }
    void onOk() override
    {
        calls << QStringLiteral("onOk");
        ZvQtUIModeDialogBase::onOk();
    }
};

class CountingWidget : public QWidget
{
public:
    int visibleCalls = 0;

    void setVisible(bool visible) override
    {
        ++visibleCalls;
        QWidget::setVisible(visible);
    }
};

/// The toolkit behind the kernel, as far as the cursor goes.
class CursorHost : public ZvUiHost
{
public:
    CursorHost() { zvuiSetHost(this); }
    ~CursorHost() override { zvuiSetHost(nullptr); }
    void *mainWindow() override { return nullptr; }
    int setCursor(void *window, int cursor) override
    {
        calls.append(qMakePair(window, cursor));
        return std::exchange(current, cursor);
    }

    QList<QPair<void *, int>> calls;
    int current = 17;
};

/// Notes how many dialogs live when it is let go.
class LastHelper : public ZvUiHelper
{
public:
    explicit LastHelper(int *dialogsAlive) : m_dialogsAlive(dialogsAlive) { }
    ~LastHelper() override { *m_dialogsAlive = ProbeDialog::alive; }

private:
    int *m_dialogsAlive;
};

int resultOf(const ZvJsonPtr &tree)
{
    int code = -99;
    tree->GetDataI("result", code);
    return code;
}

ZvJsonPtr makeTree()
{
    return ElementValue::createObject(2);
}

ZvRxObjectPtr makeHelper()
{
    return ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvUiHelper>);
}

} // namespace

class TestZevaQt : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    // the adapter's base
    void newAdapterHasOneReferenceAndAnEmptyResultTree();
    void baseKeepsWhatOnInitIsGiven();
    void baseAnswersTrueAndDoesNothing();
    void doModalWithoutADialogReturnsTheStoredResult_data();
    void doModalWithoutADialogReturnsTheStoredResult();
    void endDialogWritesTheCodeAndClosesTheWidget();
    void endDialogWithoutAWidgetWritesTheCode();
    void baseHidesAndShowsOnlyWhatIsNotSoAlready();
    void stepsOfAnEditorCommandGoThroughTheVirtualOperations_data();
    void stepsOfAnEditorCommandGoThroughTheVirtualOperations();

    // making and deleting
    void createDialogNamesItMakesItModalAndAsksIt();
    void createDialogWithoutANameLeavesItEmpty();
    void createDialogTwiceKeepsTheFirst();
    void createDialogFailsWhenTheDialogSaysSo();
    void adapterTellsItsClasses();
    void lastReleaseDeletesTheDialogAndLetsGoOfItsTrees();
    void helperIsLetGoAfterTheDialog();
    void adapterDeletesTheDialogThoughItHasAQtParent();
    void adapterOutlivesADialogThatItsQtParentTook();
    void onFinalDeconstructDeletesTheDialogEarly();
    void onInitIsTheDialogsAnswer();
    void onInitWithoutADialogIsFalse();
    void exchangeDataIsTrueWhateverTheDialogSays();
    void adapterHidesAndShowsWhateverIsVisible();

    // the modal run
    void codeOfTheRun_data();
    void codeOfTheRun();
    void resultIsUndecidedWhileTheDialogRuns();
    void secondRunForgetsTheFirstCode();
    void dialogNeverRunHasNoResultKey();
    void cursorIsSetAndPutBack();
    void dialogDeletedInItsRunLeavesTheAdapterConsistent();

    // leaving for the drawing
    void restoredDialogRunsOnWithItsValues();
    void dialogIsHiddenWhileTheUserWorksInTheDrawing();
    void completingTwiceRunsTheDialogOnOnce();
    void completedWithoutRestoringEndsAsAccepted();
    void cancelledInTheDrawingEndsAsCancelled();
    void lastWordInTheDrawingCounts_data();
    void lastWordInTheDrawingCounts();
    void dialogCanBeLeftSeveralTimes();

    // the dialog's side
    void textIsTheIdOrTheFallback_data();
    void textIsTheIdOrTheFallback();
    void helperOfAnotherClassIsNone_data();
    void helperOfAnotherClassIsNone();
    void onInitKeepsTheTreeAndCallsTheDataHook();
    void notificationGivesNullByDefault();
    void endDialogOfTheDialogIsTheAdapters();
    void invokerIsMadeOnce();
    void invokerForwardsToTheDialog();
    void invokerOutlivesTheDialog();
    void queryThatMustSucceedThrows();
};

void TestZevaQt::init()
{
    ZevaTest::init();
    ProbeDialog::createResult = true;
    ProbeDialog::initResult = true;
}

void TestZevaQt::cleanup()
{
    ZevaTest::cleanup();
    QCOMPARE(ProbeDialog::alive, 0);
}

void TestZevaQt::newAdapterHasOneReferenceAndAnEmptyResultTree()
{
    const BareAdapterPtr adapter = makeBareAdapter();
    QCOMPARE(zvrxNumRefs(adapter), 1);
    QCOMPARE(adapter->getDlg(), nullptr);
    const ZvJsonPtr result = adapter->getResult();
    QVERIFY(result);
    QVERIFY(result->typeFlags() & IElementValueBase::kFlagObject);
    QCOMPARE(result->elementCount(), 0);
    QCOMPARE(adapter->getResult().get(), result.get());
}

void TestZevaQt::baseKeepsWhatOnInitIsGiven()
{
    const BareAdapterPtr adapter = makeBareAdapter();
    QVERIFY(!adapter->params());
    QVERIFY(!adapter->helper());
    const ZvJsonPtr params = makeTree();
    const ZvRxObjectPtr helper = makeHelper();
    QVERIFY(adapter->onInit(params, helper));
    QCOMPARE(adapter->params().get(), params.get());
    QCOMPARE(adapter->helper().get(), helper.get());
    QCOMPARE(zvrxNumRefs(helper), 2);
    QVERIFY(adapter->onInit(nullptr, nullptr));
    QCOMPARE(zvrxNumRefs(helper), 1);
}

void TestZevaQt::baseAnswersTrueAndDoesNothing()
{
    const BareAdapterPtr adapter = makeBareAdapter();
    QVERIFY(adapter->freshAndActive(makeTree()));
    QVERIFY(adapter->freshAndActive(nullptr));
    QVERIFY(adapter->exchangeData(true));
    QVERIFY(adapter->exchangeData(false));
    auto *widget = new QWidget;
    adapter->setWidget(widget);
    QPointer<QWidget> guard(widget);
    adapter->onFinalDeconstruct();
    QVERIFY(guard);
    QCOMPARE(adapter->getResult()->elementCount(), 0);
}

void TestZevaQt::doModalWithoutADialogReturnsTheStoredResult_data()
{
    QTest::addColumn<bool>("hasWidget");
    QTest::addColumn<bool>("isEnded");
    QTest::addColumn<int>("code");
    QTest::newRow("no widget") << false << false << -1;
    QTest::newRow("no widget, ended with 5") << false << true << 5;
    QTest::newRow("a widget that is no dialog") << true << false << -1;
    QTest::newRow("a widget that is no dialog, ended with 5") << true << true << 5;
}

void TestZevaQt::doModalWithoutADialogReturnsTheStoredResult()
{
    QFETCH(bool, hasWidget);
    QFETCH(bool, isEnded);
    QFETCH(int, code);
    CursorHost host;
    const BareAdapterPtr adapter = makeBareAdapter();
    auto *widget = hasWidget ? new CountingWidget : nullptr;
    adapter->setWidget(widget);
    if (isEnded)
        adapter->endDialog(5);
    QCOMPARE(adapter->doModal(), code);
    QVERIFY(!widget || !widget->isVisible());
    QCOMPARE(host.calls.size(), 0);
}

void TestZevaQt::endDialogWritesTheCodeAndClosesTheWidget()
{
    const BareAdapterPtr adapter = makeBareAdapter();
    auto *widget = new QWidget;
    adapter->setWidget(widget);
    widget->show();
    adapter->endDialog(42);
    QCOMPARE(resultOf(adapter->getResult()), 42);
    QVERIFY(!widget->isVisible());
    widget->show();
    adapter->onOk();
    QCOMPARE(resultOf(adapter->getResult()), 1);
    QVERIFY(!widget->isVisible());
    widget->show();
    adapter->onCancel();
    QCOMPARE(resultOf(adapter->getResult()), 2);
    QVERIFY(!widget->isVisible());
}

void TestZevaQt::endDialogWithoutAWidgetWritesTheCode()
{
    const BareAdapterPtr adapter = makeBareAdapter();
    adapter->endDialog(-3);
    QCOMPARE(resultOf(adapter->getResult()), -3);
    adapter->hide();
    adapter->show();
}

void TestZevaQt::baseHidesAndShowsOnlyWhatIsNotSoAlready()
{
    const BareAdapterPtr adapter = makeBareAdapter();
    auto *widget = new CountingWidget;
    adapter->setWidget(widget);
    adapter->hide();
    QCOMPARE(widget->visibleCalls, 0);
    adapter->show();
    QCOMPARE(widget->visibleCalls, 1);
    QVERIFY(widget->isVisible());
    adapter->show();
    QCOMPARE(widget->visibleCalls, 1);
    adapter->hide();
    QCOMPARE(widget->visibleCalls, 2);
    QVERIFY(!widget->isVisible());
}

void TestZevaQt::stepsOfAnEditorCommandGoThroughTheVirtualOperations_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("begin") << QStringLiteral("begin") << QStringList{"exchangeData true", "hide"};
    QTest::newRow("complete, restored") << QStringLiteral("restore") << QStringList{"show", "exchangeData false"};
    QTest::newRow("complete") << QStringLiteral("complete") << QStringList{"onOk", "endDialog 1"};
    QTest::newRow("cancel") << QStringLiteral("cancel") << QStringList{"onCancel", "endDialog 2"};
}

void TestZevaQt::stepsOfAnEditorCommandGoThroughTheVirtualOperations()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, calls);
    OrderAdapter adapter;
    if (operation == QLatin1String("begin"))
        adapter.beginEditorCommand();
    else if (operation == QLatin1String("cancel"))
        adapter.cancelEditorCommand();
    else
        adapter.completeEditorCommand(operation == QLatin1String("restore"));
    QCOMPARE(adapter.calls, calls);
}

void TestZevaQt::createDialogNamesItMakesItModalAndAsksIt()
{
    QWidget parent;
    const ProbeAdapterPtr adapter = ProbeAdapterPtr::adopt(new ProbeAdapter);
    QCOMPARE(adapter->getDlg(), nullptr);
    QVERIFY(adapter->createDialog(&parent, Qt::FramelessWindowHint, "CADPreviewDialog"));
    ProbeDialog *dialog = dialogOf(adapter);
    QVERIFY(dialog);
    QCOMPARE(dialog->parentWidget(), &parent);
    QCOMPARE(dialog->givenOwner, static_cast<ZvQtUIModeDialogBase *>(adapter.get()));
    QCOMPARE(dialog->givenFlags, Qt::WindowFlags(Qt::FramelessWindowHint));
    QCOMPARE(dialog->createCount, 1);
    QVERIFY(dialog->wasModalAtCreation);
    QVERIFY(dialog->nameAtCreation == ZvUtf8String("CADPreviewDialog"));
    QVERIFY(dialog->name() == ZvUtf8String("CADPreviewDialog"));
}

void TestZevaQt::createDialogWithoutANameLeavesItEmpty()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    QVERIFY(dialogOf(adapter)->name().isEmpty());
    QVERIFY(dialogOf(adapter)->isModal());
    QCOMPARE(dialogOf(adapter)->parentWidget(), nullptr);
}

void TestZevaQt::createDialogTwiceKeepsTheFirst()
{
    const ProbeAdapterPtr adapter = makeAdapter(nullptr, "first");
    ProbeDialog *dialog = dialogOf(adapter);
    QVERIFY(adapter->createDialog(nullptr, Qt::WindowFlags(), "second"));
    QCOMPARE(dialogOf(adapter), dialog);
    QCOMPARE(dialog->createCount, 1);
    QVERIFY(dialog->name() == ZvUtf8String("first"));
    QCOMPARE(ProbeDialog::alive, 1);
}

void TestZevaQt::createDialogFailsWhenTheDialogSaysSo()
{
    ProbeDialog::createResult = false;
    const ProbeAdapterPtr adapter = ProbeAdapterPtr::adopt(new ProbeAdapter);
    QVERIFY(!adapter->createDialog(nullptr, Qt::WindowFlags(), nullptr));
    QCOMPARE(ProbeDialog::alive, 1); // until the adapter is released
}

void TestZevaQt::adapterTellsItsClasses()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    QCOMPARE(adapter->isA(), ZvUiModeDialogBase::desc());
    QVERIFY(adapter->queryX(ZvUiDialogBase::desc()));
    QVERIFY(adapter->queryX(ZvRxObject::desc()));
    QVERIFY(!adapter->queryX(ZvUiService::desc()));
}

void TestZevaQt::lastReleaseDeletesTheDialogAndLetsGoOfItsTrees()
{
    const ZvJsonPtr params = makeTree();
    const ZvRxObjectPtr helper = makeHelper();
    {
        const ProbeAdapterPtr adapter = makeAdapter();
        QVERIFY(adapter->onInit(params, helper));
        QVERIFY(zvrxNumRefs(params) > 1);
        QVERIFY(zvrxNumRefs(helper) > 1);
        const ZvUiDialogBasePtr second(adapter.get());
        QCOMPARE(zvrxNumRefs(adapter), 2);
    }
    QCOMPARE(ProbeDialog::alive, 0);
    QCOMPARE(zvrxNumRefs(params), 1);
    QCOMPARE(zvrxNumRefs(helper), 1);
}

void TestZevaQt::helperIsLetGoAfterTheDialog()
{
    int dialogsAlive = -1;
    ProbeAdapterPtr adapter = makeAdapter();
    // Given to the adapter alone, past the dialog.
    adapter->ZvQtUIModeDialogBase::onInit(makeTree(),
                                          ZvRxObjectPtr::adopt(new ZvRxObjectImpl<LastHelper>(&dialogsAlive)));
    adapter = nullptr;
    QCOMPARE(dialogsAlive, 0);
}

void TestZevaQt::adapterDeletesTheDialogThoughItHasAQtParent()
{
    QWidget parent;
    ProbeAdapterPtr adapter = makeAdapter(&parent);
    QCOMPARE(ProbeDialog::alive, 1);
    adapter = nullptr;
    QCOMPARE(ProbeDialog::alive, 0);
    QCOMPARE(parent.children().size(), 0);
}

void TestZevaQt::adapterOutlivesADialogThatItsQtParentTook()
{
    auto *parent = new QWidget;
    const ProbeAdapterPtr adapter = makeAdapter(parent);
    delete parent;
    QCOMPARE(ProbeDialog::alive, 0);
    QCOMPARE(adapter->getDlg(), nullptr);
    QCOMPARE(adapter->doModal(), -1);
    adapter->endDialog(3);
    QCOMPARE(adapter->doModal(), 3);
}

void TestZevaQt::onFinalDeconstructDeletesTheDialogEarly()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    adapter->onFinalDeconstruct();
    QCOMPARE(ProbeDialog::alive, 0);
    QCOMPARE(adapter->getDlg(), nullptr);
    adapter->hide();
    adapter->show();
    QVERIFY(adapter->exchangeData(true));
    QCOMPARE(adapter->doModal(), -1);
}

void TestZevaQt::onInitIsTheDialogsAnswer()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    const ZvJsonPtr params = makeTree();
    QVERIFY(adapter->onInit(params, nullptr));
    QCOMPARE(dialogOf(adapter)->params().get(), params.get());
    ProbeDialog::initResult = false;
    QVERIFY(!adapter->onInit(params, nullptr));
}

void TestZevaQt::onInitWithoutADialogIsFalse()
{
    const ProbeAdapterPtr adapter = ProbeAdapterPtr::adopt(new ProbeAdapter);
    QVERIFY(!adapter->onInit(makeTree(), nullptr));
}

void TestZevaQt::exchangeDataIsTrueWhateverTheDialogSays()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    QVERIFY(adapter->exchangeData(true));
    QVERIFY(adapter->exchangeData(false));
    QCOMPARE(dialogOf(adapter)->calls, (QStringList{"save", "restore"}));
}

void TestZevaQt::adapterHidesAndShowsWhateverIsVisible()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ProbeDialog *dialog = dialogOf(adapter);
    adapter->hide();
    QCOMPARE(dialog->calls, QStringList{"hide"});
    adapter->show();
    adapter->show();
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->calls, (QStringList{"hide", "show", "show"}));
    adapter->hide();
    adapter->hide();
    QCOMPARE(dialog->calls, (QStringList{"hide", "show", "show", "hide", "hide"}));
}

void TestZevaQt::codeOfTheRun_data()
{
    QTest::addColumn<QString>("ending");
    QTest::addColumn<int>("code");
    QTest::newRow("accept gives 1") << QStringLiteral("accept") << 1;
    QTest::newRow("reject gives 2") << QStringLiteral("reject") << 2;
    QTest::newRow("done with another value leaves -1") << QStringLiteral("done 5") << -1;
    QTest::newRow("closed by its frame gives 2") << QStringLiteral("close") << 2;
    QTest::newRow("Escape gives 2") << QStringLiteral("escape") << 2;
    QTest::newRow("endDialog(7) gives 7 though exec() is rejected") << QStringLiteral("end 7") << 7;
    QTest::newRow("endDialog(6), as print") << QStringLiteral("end 6") << 6;
    QTest::newRow("endDialog(0) gives 0") << QStringLiteral("end 0") << 0;
    QTest::newRow("endDialog(-1) decides nothing: the rejected exec() gives 2") << QStringLiteral("end -1") << 2;
    QTest::newRow("onOk gives 1") << QStringLiteral("onOk") << 1;
    QTest::newRow("onCancel gives 2") << QStringLiteral("onCancel") << 2;
}

void TestZevaQt::codeOfTheRun()
{
    QFETCH(QString, ending);
    QFETCH(int, code);
    const ProbeAdapterPtr adapter = makeAdapter();
    QVERIFY(adapter->onInit(makeTree(), nullptr));
    const QString word = ending.section(QLatin1Char(' '), 0, 0);
    const int number = ending.section(QLatin1Char(' '), 1).toInt();

    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        if (word == QLatin1String("accept"))
            dialog->accept();
        else if (word == QLatin1String("reject"))
            dialog->reject();
        else if (word == QLatin1String("done"))
            dialog->done(number);
        else if (word == QLatin1String("close"))
            dialog->close();
        else if (word == QLatin1String("escape"))
            QTest::keyClick(dialog, Qt::Key_Escape);
        else if (word == QLatin1String("end"))
            adapter->endDialog(number);
        else if (word == QLatin1String("onOk"))
            adapter->onOk();
        else
            adapter->onCancel();
    });
    const int returned = adapter->doModal();
    QVERIFY(driver.finished());
    QCOMPARE(returned, code);
    QCOMPARE(resultOf(adapter->getResult()), code);
    QCOMPARE(dialogOf(adapter)->execCount, 1);
    QVERIFY(!dialogOf(adapter)->isVisible());
    QCOMPARE(zvrxNumRefs(adapter), 1);
}

void TestZevaQt::resultIsUndecidedWhileTheDialogRuns()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    int meanwhile = 0;
    bool isModal = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        meanwhile = resultOf(adapter->getResult());
        isModal = dialog->isModal();
        dialog->accept();
    });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(meanwhile, -1);
    QVERIFY(isModal);
}

void TestZevaQt::secondRunForgetsTheFirstCode()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) { adapter->endDialog(9); });
    driver.next([](QDialog *dialog) { dialog->reject(); });
    QCOMPARE(adapter->doModal(), 9);
    QCOMPARE(adapter->doModal(), 2);
    QVERIFY(driver.finished());
}

void TestZevaQt::dialogNeverRunHasNoResultKey()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    QVERIFY(adapter->onInit(makeTree(), nullptr));
    const ZvJsonPtr result = adapter->getResult();
    QVERIFY(result);
    QVERIFY(!result->hasKey("result"));
}

void TestZevaQt::cursorIsSetAndPutBack()
{
    CursorHost host;
    const ProbeAdapterPtr adapter = makeAdapter();
    int callsInTheRun = 0;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        callsInTheRun = host.calls.size();
        dialog->accept();
    });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(callsInTheRun, 1);
    QCOMPARE(host.calls.size(), 2);
    void *widget = static_cast<QWidget *>(dialogOf(adapter));
    QCOMPARE(host.calls.at(0), qMakePair(widget, 256));
    QCOMPARE(host.calls.at(1), qMakePair(widget, 17));
}

void TestZevaQt::dialogDeletedInItsRunLeavesTheAdapterConsistent()
{
    CursorHost host;
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) { adapter->onFinalDeconstruct(); });
    QCOMPARE(adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(host.calls.size(), 1);
}

void TestZevaQt::restoredDialogRunsOnWithItsValues()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ProbeDialog *dialog = dialogOf(adapter);
    QString restored;
    ModalDriver driver;
    driver.next([&](QDialog *) {
        dialog->edit.setText(QStringLiteral("12.5"));
        adapter->beginEditorCommand();
        dialog->edit.clear();
        adapter->completeEditorCommand(true);
    });
    driver.next([&](QDialog *again) {
        restored = dialog->edit.text();
        again->accept();
    });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(restored, QStringLiteral("12.5"));
    QCOMPARE(dialog->execCount, 2);
    // The last "show" is exec() making sure of what is visible already.
    QCOMPARE(dialog->calls, (QStringList{"show", "save", "hide", "show", "restore", "show", "hide"}));
}

void TestZevaQt::dialogIsHiddenWhileTheUserWorksInTheDrawing()
{
    QWidget mainWindow;
    mainWindow.show();
    QVERIFY(QTest::qWaitForWindowExposed(&mainWindow));
    const ProbeAdapterPtr adapter = makeAdapter(&mainWindow);
    bool wasVisible = true;
    QWidget *modalWindow = &mainWindow;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        adapter->beginEditorCommand();
        QEventLoop drawing;
        QTimer::singleShot(0, &drawing, [&] {
            wasVisible = dialog->isVisible();
            modalWindow = QApplication::activeModalWidget();
            drawing.quit();
        });
        drawing.exec();
        adapter->completeEditorCommand(true);
    });
    driver.next([](QDialog *dialog) { dialog->reject(); });
    QCOMPARE(adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QVERIFY(!wasVisible);
    QCOMPARE(modalWindow, nullptr); // the drawing takes input
}

void TestZevaQt::completingTwiceRunsTheDialogOnOnce()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) {
        adapter->beginEditorCommand();
        adapter->completeEditorCommand(true);
        adapter->completeEditorCommand(true);
    });
    driver.next([](QDialog *dialog) { dialog->accept(); });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(dialogOf(adapter)->execCount, 2);
}

void TestZevaQt::completedWithoutRestoringEndsAsAccepted()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) {
        adapter->beginEditorCommand();
        adapter->completeEditorCommand(false);
    });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(dialogOf(adapter)->execCount, 1);
    QCOMPARE(dialogOf(adapter)->calls.count(QStringLiteral("show")), 1);
}

void TestZevaQt::cancelledInTheDrawingEndsAsCancelled()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) {
        adapter->beginEditorCommand();
        adapter->cancelEditorCommand();
    });
    QCOMPARE(adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(dialogOf(adapter)->execCount, 1);
    QCOMPARE(dialogOf(adapter)->calls.count(QStringLiteral("show")), 1);
}

void TestZevaQt::lastWordInTheDrawingCounts_data()
{
    QTest::addColumn<bool>("isCancelled");
    QTest::addColumn<int>("code");
    QTest::newRow("restored, then completed") << false << 1;
    QTest::newRow("restored, then cancelled") << true << 2;
}

void TestZevaQt::lastWordInTheDrawingCounts()
{
    QFETCH(bool, isCancelled);
    QFETCH(int, code);
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) {
        adapter->beginEditorCommand();
        adapter->completeEditorCommand(true);
        if (isCancelled)
            adapter->cancelEditorCommand();
        else
            adapter->completeEditorCommand(false);
    });
    QCOMPARE(adapter->doModal(), code);
    QVERIFY(driver.finished());
    QCOMPARE(dialogOf(adapter)->execCount, 1);
}

void TestZevaQt::dialogCanBeLeftSeveralTimes()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    for (int i = 0; i < 3; ++i) {
        driver.next([&](QDialog *) {
            adapter->beginEditorCommand();
            adapter->completeEditorCommand(true);
        });
    }
    driver.next([&](QDialog *) {
        adapter->beginEditorCommand();
        adapter->completeEditorCommand(false);
    });
    QCOMPARE(adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(dialogOf(adapter)->execCount, 4);
}

void TestZevaQt::textIsTheIdOrTheFallback_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("id") << QByteArray("IDS_OK") << QByteArray("IDS_OK");
    QTest::newRow("empty id") << QByteArray("") << QByteArray("");
    QTest::newRow("null id") << QByteArray() << QByteArray("确定");
}

void TestZevaQt::textIsTheIdOrTheFallback()
{
    QFETCH(QByteArray, id);
    QFETCH(QByteArray, text);
    const ProbeAdapterPtr adapter = makeAdapter();
    const ZvUtf8String got = dialogOf(adapter)->text(id.isNull() ? nullptr : id.constData(), "确定");
    QCOMPARE(QByteArray(got.c_str()), text);
}

void TestZevaQt::helperOfAnotherClassIsNone_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("isHelper");
    QTest::newRow("a helper") << 0 << true;
    QTest::newRow("null") << 1 << false;
    QTest::newRow("another class") << 2 << false;
}

void TestZevaQt::helperOfAnotherClassIsNone()
{
    QFETCH(int, kind);
    QFETCH(bool, isHelper);
    const ProbeAdapterPtr adapter = makeAdapter();
    const ZvRxObjectPtr given = kind == 0 ? makeHelper() : kind == 1 ? ZvRxObjectPtr() : ZvRxObjectPtr(makeTree());
    QVERIFY(adapter->onInit(makeTree(), given));
    const ZvUiHelperPtr helper = dialogOf(adapter)->helper();
    QCOMPARE(static_cast<ZvRxObject *>(helper.get()), isHelper ? given.get() : nullptr);
}

void TestZevaQt::onInitKeepsTheTreeAndCallsTheDataHook()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ProbeDialog *dialog = dialogOf(adapter);
    QVERIFY(!dialog->params());
    QCOMPARE(dialog->extraCount, 0);
    const ZvJsonPtr params = makeTree();
    QVERIFY(adapter->onInit(params, nullptr));
    QCOMPARE(dialog->params().get(), params.get());
    QCOMPARE(dialog->extraCount, 1);
    QVERIFY(!dialog->extraData);
}

void TestZevaQt::notificationGivesNullByDefault()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    QVERIFY(!dialogOf(adapter)->ZvQtModeDialogImpl::notify(3, makeTree()));
}

void TestZevaQt::endDialogOfTheDialogIsTheAdapters()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ModalDriver driver;
    driver.next([&](QDialog *) { dialogOf(adapter)->endDialog(6); });
    QCOMPARE(adapter->doModal(), 6);
    QVERIFY(driver.finished());
}

void TestZevaQt::invokerIsMadeOnce()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    const ZvRxObjectPtr invoker = dialogOf(adapter)->invoker();
    QVERIFY(invoker);
    QVERIFY(invoker->isKindOf(ZvUiDialogInvoker::desc()));
    QCOMPARE(dialogOf(adapter)->invoker().get(), invoker.get());
    QCOMPARE(zvrxNumRefs(invoker), 2);
}

void TestZevaQt::invokerForwardsToTheDialog()
{
    const ProbeAdapterPtr adapter = makeAdapter();
    ProbeDialog *dialog = dialogOf(adapter);
    const ZvRxObjectPtr object = dialog->invoker();
    auto *invoker = zvrxCast<ZvUiDialogInvoker>(object);
    QVERIFY(invoker);

    const ZvJsonPtr data = makeTree();
    ZvJsonPtr answer;
    bool exchanged = true;
    ModalDriver driver;
    driver.next([&](QDialog *) {
        answer = invoker->notify(12, data);
        exchanged = invoker->exchangeData(true);
        invoker->beginEditorCommand();
        invoker->completeEditorCommand(true);
    });
    driver.next([&](QDialog *) {
        invoker->beginEditorCommand();
        invoker->cancelEditorCommand();
    });
    driver.next([&](QDialog *) { invoker->endDialog(11); });
    QCOMPARE(adapter->doModal(), 2);
    QCOMPARE(dialog->execCount, 2);
    QCOMPARE(adapter->doModal(), 11);
    QVERIFY(driver.finished());
    QCOMPARE(dialog->notified, 12);
    QCOMPARE(answer.get(), data.get());
    QVERIFY(!exchanged);
}

void TestZevaQt::invokerOutlivesTheDialog()
{
    ProbeAdapterPtr adapter = makeAdapter();
    const ZvRxObjectPtr object = dialogOf(adapter)->invoker();
    adapter = nullptr;
    auto *invoker = zvrxCast<ZvUiDialogInvoker>(object);
    invoker->endDialog(1);
    invoker->beginEditorCommand();
    invoker->completeEditorCommand(true);
    invoker->cancelEditorCommand();
    QVERIFY(!invoker->exchangeData(true));
    QVERIFY(!invoker->notify(1, makeTree()));
}

void TestZevaQt::queryThatMustSucceedThrows()
{
    const ZvRxObjectPtr helper = makeHelper();
    QCOMPARE(zvqt_queryRequired<ZvUiHelper>(helper), static_cast<ZvUiHelper *>(helper.get()));
    try {
        zvqt_queryRequired<ZvUiService>(helper);
        QFAIL("a helper passed for a service");
    } catch (const ZvError_NotThatKindOfClass &error) {
        QCOMPARE(error.actual(), static_cast<const ZvRxClass *>(ZvUiHelper::desc()));
        QCOMPARE(error.wanted(), static_cast<const ZvRxClass *>(ZvUiService::desc()));
    }
    QVERIFY_EXCEPTION_THROWN(zvqt_queryRequired<ZvUiService>(nullptr), ZvError_NotThatKindOfClass);
}

ZEVA_TEST_MAIN(TestZevaQt)
#include "tst_zevaqt.moc"
