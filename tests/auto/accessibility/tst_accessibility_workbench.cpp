// SPDX-License-Identifier: MIT
// The workbench, as a screen reader and a keyboard find it.
#include "readable.h"
#include "workbenchtest.h"
#include "zevatest.h"

#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace {

void collect(const QMenu *menu, QSet<QAction *> &actions)
{
    const QList<QAction *> entries = menu->actions();
    for (QAction *action : entries) {
        actions << action;
        if (action->menu())
            collect(action->menu(), actions);
    }
}

} // namespace

class TestAccessibilityWorkbench : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void everythingHasAName();
    void everyButtonOfAToolBarHasACommandInTheMenus();
};

void TestAccessibilityWorkbench::everythingHasAName()
{
    WorkbenchSession session;
    QVERIFY(session.isExposed());
    session.newDrawing();
    const QList<QDockWidget *> docks = session.window().findChildren<QDockWidget *>();
    QVERIFY(!docks.isEmpty());
    for (QDockWidget *dock : docks) {
        QVERIFY2(!dock->windowTitle().isEmpty(), qPrintable(dock->objectName()));
        dock->show();
    }
    const QList<QToolBar *> bars = session.window().findChildren<QToolBar *>();
    for (QToolBar *bar : bars)
        bar->show();
    QCoreApplication::processEvents();
    QCOMPARE(withoutName(&session.window()).join(QLatin1Char('\n')), QString());
}

void TestAccessibilityWorkbench::everyButtonOfAToolBarHasACommandInTheMenus()
{
    WorkbenchSession session;
    session.newDrawing();
    QSet<QAction *> inMenus;
    const QList<QAction *> menus = session.window().menuBar()->actions();
    for (const QAction *menu : menus) {
        if (menu->menu())
            collect(menu->menu(), inMenus);
    }
    QStringList missing;
    const QList<QToolBar *> bars = session.window().findChildren<QToolBar *>();
    for (const QToolBar *bar : bars) {
        const QList<QAction *> actions = bar->actions();
        for (QAction *action : actions) {
            const auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(action));
            if (button && !inMenus.contains(action) && action->shortcut().isEmpty()
                && !(button->focusPolicy() & Qt::TabFocus))
                missing << bar->objectName() + QLatin1Char('/') + action->text();
        }
    }
    QCOMPARE(missing.join(QLatin1Char('\n')), QString());
}

ZEVA_TEST_MAIN(TestAccessibilityWorkbench)
#include "tst_accessibility_workbench.moc"
