// SPDX-License-Identifier: MIT
#ifndef METAMETHODS_H
#define METAMETHODS_H

#include <QMetaMethod>
#include <QMetaObject>
#include <QMetaType>
#include <QStringList>

#include <initializer_list>

typedef const QMetaObject *MetaType; ///< For a column of a test's table.
Q_DECLARE_METATYPE(MetaType)

/// The signals of a class and then its slots, without those of its bases: in the order of their declaration, and as
/// connections by text spell them.
inline QStringList ownMethods(const QMetaObject &type)
{
    QStringList signatures;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i)
        signatures << QString::fromLatin1(type.method(i).methodSignature());
    return signatures;
}

inline QStringList signaturesOf(std::initializer_list<const char *> signatures)
{
    QStringList texts;
    for (const char *signature : signatures)
        texts << QString::fromLatin1(signature);
    return texts;
}

#endif
