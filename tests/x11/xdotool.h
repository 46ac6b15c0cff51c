// SPDX-License-Identifier: MIT
#ifndef XDOTOOL_H
#define XDOTOOL_H

#include <QApplication>
#include <QPoint>
#include <QProcess>
#include <QStringList>
#include <QTest>
#include <QWidget>

// Pointer and keyboard of the display itself: what the window manager has a say in comes as it does from a person.

inline bool xdotool(const QStringList &arguments, QByteArray *output = nullptr)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    const bool isDone = process.waitForFinished(30000) && process.exitCode() == 0;
    if (output)
        *output = process.readAllStandardOutput().trimmed();
    return isDone;
}

/// Waits until \a window has the keyboard. To Qt a dialog is active as soon as that was asked of the window manager;
/// where it is closed before it was done, nobody tells Qt that its parent has the keyboard as before.
inline bool waitForKeyboard(const QWidget *window)
{
    return QTest::qWaitFor([window] {
        QByteArray focus;
        return QApplication::activeWindow() == window && xdotool({QStringLiteral("getwindowfocus")}, &focus)
            && focus.toULongLong() == window->effectiveWinId();
    });
}

inline bool typeText(const QString &text)
{
    return xdotool({QStringLiteral("type"), text});
}

/// Such as "Escape" or "alt+c".
inline bool pressKey(const QString &key)
{
    return xdotool({QStringLiteral("key"), key});
}

/// The pointer goes to a place of the screen.
inline bool pointAt(const QPoint &place)
{
    return xdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
}

inline bool click()
{
    return xdotool({QStringLiteral("click"), QStringLiteral("1")});
}

inline bool clickAt(const QPoint &place)
{
    return pointAt(place) && click();
}

#endif
