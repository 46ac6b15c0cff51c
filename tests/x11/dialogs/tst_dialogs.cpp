// SPDX-License-Identifier: MIT
#include "mainwindowhost.h"
#include "modaldriver.h"
#include "modulesession.h"
#include "x11client.h"
#include "xdotool.h"
#include "zevatest.h"

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

namespace {

ZvJsonPtr question()
{
    const ZvJsonPtr params = ElementValue::createObject(2);
    params->SetDataI("contentFlag", 1);
    params->SetDataI("flag", 3);
    params->SetDataI("dlgtype", 32);
    params->SetDataSW("title", ZvString(L"Zevara"));
    params->SetDataSW("msg", ZvString(L"是否将改动保存到 plan.dxf?"));
    return params;
}

} // namespace

/// Common dialogs before a real window manager.
class TestDialogs : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void closeButtonOfTheFrameRejects();
    void keyboardGoesToTheDialogAndBack();
    void dialogComesBackFromTheDrawing();
};

void TestDialogs::closeButtonOfTheFrameRejects()
{
    const ModuleSession session;
    QWidget mainWindow;
    const MainWindowHost host(&mainWindow);
    mainWindow.show();
    QVERIFY(waitForKeyboard(&mainWindow));
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    const ZvJsonPtr params = question();
    QVERIFY(dialog->onInit(params, nullptr));

    X11Client client;
    ModalDriver driver;
    driver.next([&](QDialog *box) {
        QVERIFY(waitForKeyboard(box));
        client.pressCloseButton(box->winId());
        QTRY_VERIFY(!box->isVisible());
    });
    QCOMPARE(dialog->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(params->member("ControlBtn")->asInteger(), 2); // the cancel button, the last one
}

void TestDialogs::keyboardGoesToTheDialogAndBack()
{
    const ModuleSession session;
    QWidget mainWindow;
    QLineEdit edit(&mainWindow);
    const MainWindowHost host(&mainWindow);
    mainWindow.show();
    edit.setFocus();
    QVERIFY(waitForKeyboard(&mainWindow));
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    const ZvJsonPtr params = question();
    QVERIFY(dialog->onInit(params, nullptr));

    bool hadKeyboard = false;
    ModalDriver driver;
    driver.next([&](QDialog *box) {
        QVERIFY(waitForKeyboard(box));
        hadKeyboard = QApplication::focusWidget() && box->isAncestorOf(QApplication::focusWidget());
        QTest::mouseClick(box->findChildren<QPushButton *>().first(), Qt::LeftButton);
    });
    QCOMPARE(dialog->doModal(), 1);
    QVERIFY(driver.finished());
    QVERIFY(hadKeyboard);
    QCOMPARE(params->member("ControlBtn")->asInteger(), 6);
    QVERIFY(waitForKeyboard(&mainWindow));
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(&edit));
}

void TestDialogs::dialogComesBackFromTheDrawing()
{
    const ModuleSession session;
    QWidget mainWindow;
    const MainWindowHost host(&mainWindow);
    mainWindow.show();
    QVERIFY(waitForKeyboard(&mainWindow));
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    QVERIFY(dialog->onInit(question(), nullptr));

    bool drawingHadKeyboard = false;
    bool wasVisible = true;
    bool cameBack = false;
    ModalDriver driver;
    driver.next([&](QDialog *box) {
        QVERIFY(waitForKeyboard(box));
        dialog->beginEditorCommand();
        drawingHadKeyboard = waitForKeyboard(&mainWindow);
        wasVisible = box->isVisible();
        dialog->completeEditorCommand(true);
    });
    driver.next([&](QDialog *box) {
        cameBack = waitForKeyboard(box);
        QTest::mouseClick(box->findChildren<QPushButton *>().first(), Qt::LeftButton);
    });
    QCOMPARE(dialog->doModal(), 1);
    QVERIFY(driver.finished());
    QVERIFY(drawingHadKeyboard);
    QVERIFY(!wasVisible);
    QVERIFY(cameBack);
}

ZEVA_TEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
