// SPDX-License-Identifier: MIT
#include "panels.h"

#include "busmonitor.h"
#include "mainwindow.h"
#include "previewpanel.h"
#include "propertypanel.h"

#include <QAction>
#include <QCoreApplication>
#include <QDockWidget>

namespace {

void addPanel(MainWindow &window, QWidget *panel, const QString &title, Qt::DockWidgetArea area,
              const QKeySequence &shortcut)
{
    auto *dock = new QDockWidget(title, &window);
    dock->setObjectName(panel->objectName() + QLatin1String("Dock"));
    dock->setWidget(panel);
    window.addDockWidget(area, dock);
    dock->hide();
    // The menu that shows the action is filled when it opens: the window has it for the shortcut.
    QAction *toggle = dock->toggleViewAction();
    toggle->setShortcut(shortcut);
    window.addAction(toggle);
}

} // namespace

void addPanels(MainWindow &window, UpdateBusHost &bus)
{
    addPanel(window, new PropertyPanel(bus, *window.host()), QCoreApplication::translate("Panels", "Properties"),
             Qt::RightDockWidgetArea, QKeySequence(Qt::CTRL + Qt::Key_1));
    addPanel(window, new BusMonitor(bus), QCoreApplication::translate("Panels", "Bus Monitor"),
             Qt::BottomDockWidgetArea, QKeySequence(Qt::CTRL + Qt::Key_2));
    addPanel(window, new PreviewPanel, QCoreApplication::translate("Panels", "Preview"), Qt::RightDockWidgetArea,
             QKeySequence(Qt::CTRL + Qt::Key_3));
}
