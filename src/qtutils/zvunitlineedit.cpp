// SPDX-License-Identifier: MIT
#include "zvunitlineedit.h"

#include "private/zvaccessibility.h"

#include <QRegExp>
#include <QRegExpValidator>

ZvUnitLineEdit::ZvUnitLineEdit(QWidget *parent) : QLineEdit(parent)
{
    zvNameForReaders(this);
    setValidator(new QRegExpValidator(QRegExp(QStringLiteral("^(-?\\d+)(\\.\\d*)?$"), Qt::CaseSensitive), this));
}

ZvUnitLineEdit::ZvUnitLineEdit(const QString &value, QWidget *parent) : ZvUnitLineEdit(parent)
{
    setText(value);
}

QString ZvUnitLineEdit::text() const
{
    return m_value;
}

void ZvUnitLineEdit::setText(const QString &value)
{
    m_value = value;
    QLineEdit::setText(Conver2EngineeringUnits(m_units));
}

QString ZvUnitLineEdit::Conver2EngineeringUnits(EngineeringUnits unit)
{
    if (unit == kUnitAsGiven)
        return m_value;
    // Kept to the letter: hosts tell by this text that they have to convert.
    return QStringLiteral("code was cleared, please use ODA func");
}

void ZvUnitLineEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
}

void ZvUnitLineEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    setText(QLineEdit::text());
    Q_EMIT returnPressed();
}
