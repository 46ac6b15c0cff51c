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
    return zvToQString(text.toUtf8());
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
