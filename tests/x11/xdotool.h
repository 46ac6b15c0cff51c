// SPDX-License-Identifier: MIT
#ifndef XDOTOOL_H
#define XDOTOOL_H

#include <QPoint>
#include <QProcess>
#include <QStringList>

// Pointer and keyboard of the display itself: what the window manager has a say in comes as it does from a person.

inline bool xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    return process.waitForFinished(30000) && process.exitCode() == 0;
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
