// SPDX-License-Identifier: MIT
#ifndef VALUEFIELD_H
#define VALUEFIELD_H

#include <QStringList>
#include <QVariant>

#include <functional>

class QWidget;

/// What values a field takes. The type of \a initial settles what kind of field it is: a check box for bool, a number
/// field for int and double, a colour button for QColor, a line for QString; with \a choices a list of these, whose
/// value is an int, the number of the choice from 0.
struct ValueKind
{
    QVariant initial;
    QStringList choices = {};
    double least = -1e6;
    double most = 1e6;
    double step = 1;
    QString unit = {}; ///< Stands behind a number.
};

/// A field to enter one value in. The widget belongs to its parent.
struct ValueField
{
    QWidget *widget = nullptr; ///< Null for a type of value that there is no field for.
    std::function<QVariant()> value;
    std::function<void(const QVariant &)> setValue;
};

/// \a changed is called with each new value that the user enters or setValue() brings.
ValueField makeValueField(const ValueKind &kind, QWidget *parent, const std::function<void(const QVariant &)> &changed);

#endif
