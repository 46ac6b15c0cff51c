// SPDX-License-Identifier: MIT
#ifndef MAINWINDOWHOST_H
#define MAINWINDOWHOST_H

#include "core/zvui.h"

#include <QWidget>

/// Offers a window as the application's main window, for the life of the object.
class MainWindowHost : public ZvUiHost
{
public:
    explicit MainWindowHost(QWidget *window) : m_window(window) { zvuiSetHost(this); }
    ~MainWindowHost() override { zvuiSetHost(nullptr); }
    void *mainWindow() override { return m_window; }
    int setCursor(void *, int cursor) override { return cursor; }

private:
    QWidget *m_window;
};

#endif
