// SPDX-License-Identifier: MIT
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
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTabWidget>

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
    /// The control of the window by its name, on its page.
    template <class Control> Control *control(const char *id)
    {
        auto *found = m_controls->findChild<Control *>(QLatin1String(id));
        if (found)
            showPageOf(found);
        return found;
    }
    void showPageOf(QWidget *widget)
    {
        auto *pages = m_controls->findChild<QTabWidget *>();
        for (int i = 0; i < pages->count(); ++i) {
            if (pages->widget(i)->isAncestorOf(widget))
                pages->setCurrentIndex(i);
        }
    }
    void showPage(const QString &title)
    {
        auto *pages = m_controls->findChild<QTabWidget *>();
        for (int i = 0; i < pages->count(); ++i) {
            if (pages->tabText(i) == title)
                pages->setCurrentIndex(i);
        }
    }
    QString told() const { return m_controls->findChild<QLabel *>(QStringLiteral("lastSignal"))->text(); }

    std::unique_ptr<WorkbenchSession> m_session;
    QPointer<QDialog> m_controls;
};

void tst_workbench_smallcontrols::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    m_session->action("controls")->trigger();
    m_controls = m_session->window().findChild<QDialog *>(QStringLiteral("controlsWindow"));
    QVERIFY(m_controls);
    m_controls->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), m_controls.data());
}

void tst_workbench_smallcontrols::cleanup()
{
    m_session.reset();
    ZevaTest::cleanup();
}

void tst_workbench_smallcontrols::pictureListIsUsed()
{
    auto *combo = control<ZvImageComboBox>("imageCombo");
    QVERIFY(combo);
    QTest::mouseClick(combo, Qt::LeftButton);
    ZvImageVew *view = nullptr;
    for (ZvImageVew *candidate : m_controls->findChildren<ZvImageVew *>()) {
        if (candidate->isVisible())
            view = candidate;
    }
    QVERIFY(view);
    auto *list = view->findChild<QListWidget *>();
    QCOMPARE(list->count(), 5);
    QTest::mouseClick(list->itemWidget(list->item(1)), Qt::LeftButton);
    QCOMPARE(told(), QStringLiteral("itemChanged: Gradient"));
    QTest::mouseClick(combo, Qt::LeftButton);
    QVERIFY(!view->isVisible());
}

void tst_workbench_smallcontrols::emptyPictureListOpens()
{
    auto *combo = control<ZvImageComboBox>("imageComboEmpty");
    QVERIFY(combo);
    const QString before = told();
    QTest::mouseClick(combo, Qt::LeftButton);
    QTest::mouseClick(combo, Qt::LeftButton);
    QCOMPARE(told(), before);
}

void tst_workbench_smallcontrols::fieldsTellWhatTheyEmit()
{
    auto *field = control<ZvUnitLineEdit>("unitField");
    QVERIFY(field);
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("12x5"));
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(told(), QStringLiteral("returnPressed: 125"));
    auto *other = control<ZvUnitLineEdit>("unitFieldOther");
    QCOMPARE(other->text(), QStringLiteral("3.50"));
    QVERIFY(other->QLineEdit::text() != other->text());
    auto *box = control<ZvTextEdit>("textBox");
    MenuDriver::openContextMenu(box->viewport(), QPoint(4, 5));
    QCOMPARE(told(), QStringLiteral("customContextMenuRequested: 4, 5"));
}

void tst_workbench_smallcontrols::menuButtonRunsAnAction()
{
    auto *button = control<ZvMenuPushButton>("menuButton");
    QVERIFY(button);
    MenuDriver driver(QStringLiteral("Move"));
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, QPoint(button->width() - 4, 8));
    QVERIFY(driver.finished());
    QCOMPARE(told(), QStringLiteral("triggered: Move"));
}

void tst_workbench_smallcontrols::iconButtonChangesItsState()
{
    showPage(QStringLiteral("Buttons"));
    ZvUtilsIconPushButton *button = nullptr;
    for (ZvUtilsIconPushButton *candidate : m_controls->findChildren<ZvUtilsIconPushButton *>()) {
        if (candidate->property("id").toString() == QLatin1String("iconButton"))
            button = candidate;
    }
    QVERIFY(button);
    QTRY_COMPARE(button->size(), QSize(30, 30));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(told(), QStringLiteral("clicked: now pressed"));
    QTRY_COMPARE(button->size(), QSize(31, 31));
    QTest::mouseClick(button, Qt::LeftButton);
    QTRY_COMPARE(button->size(), QSize(30, 30));
}

void tst_workbench_smallcontrols::gradientButtonsFollowTheSettings()
{
    showPage(QStringLiteral("Gradients"));
    auto *page = m_controls->findChild<QWidget *>(QStringLiteral("gradientPage"));
    const auto buttons = page->findChildren<ZvUtilsGradientColorPushButton *>();
    QCOMPARE(buttons.size(), 10);
    QTest::mouseClick(buttons[5], Qt::LeftButton);
    QCOMPARE(told(), QStringLiteral("clicked: pattern 5"));
    QVERIFY(buttons[5]->m_selected && !buttons[1]->m_selected);
    page->findChild<QCheckBox *>(QStringLiteral("gradientCentered"))->click();
    page->findChild<QCheckBox *>(QStringLiteral("gradientTwoColors"))->click();
    page->findChild<QSpinBox *>(QStringLiteral("gradientAngle"))->setValue(120);
    page->findChild<QSpinBox *>(QStringLiteral("gradientShade"))->setValue(-20);
    for (const ZvUtilsGradientColorPushButton *button : buttons) {
        QVERIFY(button->m_centered && button->m_twoColors);
        QCOMPARE(button->m_angle, 120);
        QCOMPARE(button->m_shade, -20);
    }
}

void tst_workbench_smallcontrols::everyControlHasANameAndTheKeyboard_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("controls");
    QTest::newRow("picture list") << "Picture list" << 3;
    QTest::newRow("fields") << "Fields" << 4; // and a disabled one
    QTest::newRow("buttons") << "Buttons" << 5;
    QTest::newRow("gradients") << "Gradients" << 14;
}

void tst_workbench_smallcontrols::everyControlHasANameAndTheKeyboard()
{
    QFETCH(QString, page);
    QFETCH(int, controls);
    showPage(page);
    auto *pages = m_controls->findChild<QTabWidget *>();
    pages->setFocus();
    QWidgetList reached;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget *widget = QApplication::focusWidget();
        QVERIFY(widget);
        if (!pages->currentWidget()->isAncestorOf(widget)) {
            if (reached.isEmpty())
                continue; // the arrows beside the tabs
            break;
        }
        QVERIFY2(!reached.contains(widget), widget->metaObject()->className());
        reached << widget;
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(face);
        QVERIFY2(!face->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
    }
    QCOMPARE(reached.size(), controls);
}

ZEVA_TEST_MAIN(tst_workbench_smallcontrols)
#include "tst_workbench_smallcontrols.moc"
