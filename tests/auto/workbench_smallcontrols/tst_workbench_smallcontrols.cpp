// SPDX-License-Identifier: MIT
#include "controlsdriver.h"
#include "menudriver.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvimagecombobox.h"
#include "zvimagevew.h"
#include "zvmenupushbutton.h"
#include "zvtextedit.h"
#include "zvunitlineedit.h"
#include "zvutilsgradientcolorpushbutton.h"

#include <QAccessible>
#include <QCheckBox>
#include <QListWidget>
#include <QSpinBox>

#include <memory>

/// The picture list, the fields and the buttons on the window of controls, used by hand.
class tst_workbench_smallcontrols : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void pictureListIsUsed();
    void emptyPictureListOpens();
    void fieldsTellWhatTheyEmit();
    void menuButtonRunsAnAction();
    void iconButtonChangesItsState();
    void gradientButtonsFollowTheSettings();
    void everyControlHasANameAndTheKeyboard_data();
    void everyControlHasANameAndTheKeyboard();

private:
    void openPage(const char *page)
    {
        m_controls.reset();
        m_controls = std::make_unique<ControlsDriver>(*m_session, page);
    }
    template <class Control> Control *control(const char *name) { return m_controls->control<Control>(name); }
    QString told() const { return m_controls->told().value(m_controls->told().size() - 1); }

    std::unique_ptr<WorkbenchSession> m_session;
    std::unique_ptr<ControlsDriver> m_controls;
};

void tst_workbench_smallcontrols::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_smallcontrols::cleanup()
{
    m_controls.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void tst_workbench_smallcontrols::pictureListIsUsed()
{
    openPage("ZvImageComboBox");
    auto *combo = control<ZvImageComboBox>("imageCombo");
    QVERIFY(combo);
    QTest::mouseClick(combo, Qt::LeftButton);
    ZvImageVew *view = nullptr;
    for (ZvImageVew *candidate : m_controls->page().findChildren<ZvImageVew *>()) {
        if (candidate->isVisible())
            view = candidate;
    }
    QVERIFY(view);
    auto *list = view->findChild<QListWidget *>();
    QCOMPARE(list->count(), 5);
    QTest::mouseClick(list->itemWidget(list->item(1)), Qt::LeftButton);
    QCOMPARE(told(), QStringLiteral("imageCombo: itemChanged(Gradient)"));
    QTest::mouseClick(combo, Qt::LeftButton);
    QVERIFY(!view->isVisible());
}

void tst_workbench_smallcontrols::emptyPictureListOpens()
{
    openPage("ZvImageComboBox");
    auto *combo = control<ZvImageComboBox>("imageComboEmpty");
    QVERIFY(combo);
    QTest::mouseClick(combo, Qt::LeftButton);
    QTest::mouseClick(combo, Qt::LeftButton);
    QCOMPARE(m_controls->told(), QStringList());
}

void tst_workbench_smallcontrols::fieldsTellWhatTheyEmit()
{
    openPage("ZvUnitLineEdit");
    m_controls->window().activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &m_controls->window());
    auto *field = control<ZvUnitLineEdit>("unitField");
    QVERIFY(field);
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("12x5"));
    QTest::keyClick(field, Qt::Key_Tab);
    QVERIFY(m_controls->told().contains(QStringLiteral("unitField: textEdited(125)")));
    QVERIFY(m_controls->told().contains(QStringLiteral("unitField: returnPressed()")));
    QCOMPARE(field->text(), QStringLiteral("125"));
    QCOMPARE(field->QLineEdit::text(), field->text());
    control<QCheckBox>("otherUnit")->click();
    QCOMPARE(field->text(), QStringLiteral("125"));
    QVERIFY(field->QLineEdit::text() != field->text());
    openPage("ZvTextEdit");
    auto *box = control<ZvTextEdit>("textBox");
    MenuDriver::openContextMenu(box->viewport(), QPoint(4, 5));
    QCOMPARE(told(), QStringLiteral("textBox: customContextMenuRequested(4, 5)"));
}

void tst_workbench_smallcontrols::menuButtonRunsAnAction()
{
    openPage("ZvMenuPushButton");
    auto *button = control<ZvMenuPushButton>("menuButton");
    QVERIFY(button);
    MenuDriver driver(QStringLiteral("Move"));
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, QPoint(button->width() - 4, 8));
    QVERIFY(driver.finished());
    QVERIFY(m_controls->told().contains(QStringLiteral("Move: triggered(false)")));
}

void tst_workbench_smallcontrols::iconButtonChangesItsState()
{
    openPage("ZvUtilsIconPushButton");
    auto *button = control<ZvUtilsIconPushButton>("iconButton");
    QVERIFY(button);
    QTRY_COMPARE(button->size(), QSize(30, 30));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(told(), QStringLiteral("iconButton: clicked(false)"));
    QCOMPARE(button->objectName(), QStringLiteral("pressed"));
    QTRY_COMPARE(button->size(), QSize(31, 31));
    QTest::mouseClick(button, Qt::LeftButton);
    QTRY_COMPARE(button->size(), QSize(30, 30));
}

void tst_workbench_smallcontrols::gradientButtonsFollowTheSettings()
{
    openPage("ZvUtilsGradientColorPushButton");
    const auto buttons = m_controls->page().findChildren<ZvUtilsGradientColorPushButton *>();
    QCOMPARE(buttons.size(), 11); // one of them disabled
    QTest::mouseClick(buttons[5], Qt::LeftButton);
    QCOMPARE(told(), QStringLiteral("gradientButton5: clicked(false)"));
    QVERIFY(buttons[5]->m_selected && !buttons[1]->m_selected);
    control<QCheckBox>("centered")->click();
    control<QCheckBox>("twoColors")->click();
    control<QSpinBox>("angle")->setValue(120);
    control<QSpinBox>("shade")->setValue(-20);
    for (const ZvUtilsGradientColorPushButton *button : buttons) {
        QVERIFY(button->m_centered && button->m_twoColors);
        QCOMPARE(button->m_angle, 120);
        QCOMPARE(button->m_shade, -20);
    }
}

void tst_workbench_smallcontrols::everyControlHasANameAndTheKeyboard_data()
{
    QTest::addColumn<QString>("page");
    for (const QString &page : ControlsWindow::pageNames())
        QTest::newRow(qPrintable(page)) << page;
}

void tst_workbench_smallcontrols::everyControlHasANameAndTheKeyboard()
{
    QFETCH(QString, page);
    m_session->newDrawing();
    openPage(page.toUtf8());
    m_controls->window().activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &m_controls->window());
    auto *search = m_controls->window().findChild<QWidget *>(QStringLiteral("searchPages"));
    search->setFocus();
    QWidgetList reached;
    do {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget *widget = QApplication::focusWidget();
        QVERIFY(widget);
        QVERIFY2(!reached.contains(widget), widget->metaObject()->className());
        reached << widget;
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(face);
        QVERIFY2(!face->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
    } while (QApplication::focusWidget() != search);
    auto *shown = qobject_cast<ControlPage *>(&m_controls->page());
    if (!shown)
        return;
    for (QWidget *control : shown->controls()) {
        const bool takesKeyboard = control->focusPolicy() & Qt::TabFocus && control->isEnabled();
        QVERIFY2(reached.contains(control) == takesKeyboard, qPrintable(ControlPage::nameOf(*control)));
    }
}

ZEVA_TEST_MAIN(tst_workbench_smallcontrols)
#include "tst_workbench_smallcontrols.moc"
