// SPDX-License-Identifier: MIT
#ifndef ZVQTSTRING_H
#define ZVQTSTRING_H

#include "base/zvstring.h"

#include <QString>

// The kernel's strings and Qt's. UTF-8 is the common ground: both sides convert it without loss.

inline QString zvToQString(const ZvUtf8String &text)
{
    return QString::fromUtf8(text.c_str(), text.length());
}

inline QString zvToQString(const ZvString &text)
{
    // Names go to the lists by thousands, and hardly ever hold a character that Qt splits in two.
    const int length = text.length();
    const wchar_t *from = text.wstr();
    QString result(length, Qt::Uninitialized);
    QChar *to = result.data();
    for (int i = 0; i < length; ++i) {
        if (from[i] < 0 || from[i] >= 0xD800)
            return zvToQString(text.toUtf8());
        to[i] = QChar(ushort(from[i]));
    }
    return result;
}

inline ZvUtf8String zvToZvUtf8String(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    return ZvUtf8String(utf8.constData(), utf8.size());
}

inline ZvString zvToZvString(const QString &text)
{
    return zvToZvUtf8String(text).toWide();
}

#endif
