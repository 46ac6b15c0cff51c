// SPDX-License-Identifier: MIT
#ifndef ZVUNITLINEEDIT_H
#define ZVUNITLINEEDIT_H

#include "base/zvexport.h"

#include <QLineEdit>
#include <QString>

#include <cstdint>

/// A field for a number with a unit. It accepts digits with an optional minus sign before and an optional point behind
/// or among them: "-12." and "3.5", neither ".5" nor "1e3".
///
/// What was set and what is shown are two things: text() is the value as last set, QLineEdit::text() what stands in the
/// field. What the user types becomes the value when the field loses the keyboard.
class ZV_EXPORT ZvUnitLineEdit : public QLineEdit
{
    Q_OBJECT
    /// The value, where the base class has what stands in the field.
    Q_PROPERTY(QString text READ text WRITE setText)
public:
    /// The numbers are the host's. All but the first are shown alike.
    enum EngineeringUnits : int {
        kUnitAsGiven = 0, ///< the value is shown as it was set
        kUnitOne = 1,
        kUnitTwo = 2,
        kUnitThree = 3,
    };
    Q_ENUM(EngineeringUnits)

    /// An empty field. Owned by \a parent.
    explicit ZvUnitLineEdit(QWidget *parent = nullptr);
    /// \a value as by setText().
    explicit ZvUnitLineEdit(const QString &value, QWidget *parent = nullptr);

    /// The value as last set. What is being typed is not part of it.
    QString text() const;
    /// Takes any text as the value, a number or not, and shows it in the current unit. Emits textChanged() as
    /// QLineEdit::setText() does.
    void setText(const QString &value);

    /// The value in \a unit: as it is for kUnitAsGiven. For every other unit, known or not, it is a fixed English line,
    /// since this library converts no units: that is the host's, who relies on the line to see it.
    QString Conver2EngineeringUnits(EngineeringUnits unit);

Q_SIGNALS:
    /// For hosts that change the unit; this library does not.
    void UnitsChanged(EngineeringUnits unit);

protected:
    void focusInEvent(QFocusEvent *event) override;
    /// Losing the keyboard is like pressing Return: the typed text becomes the value, and returnPressed() is emitted,
    /// whether the text is a number or not.
    void focusOutEvent(QFocusEvent *event) override;

    QString m_value; ///< The value as last set.
    std::int32_t m_reservedFirst = 0; ///< The host's; not read here.
    EngineeringUnits m_units = kUnitAsGiven; ///< The current unit.
    std::int32_t m_reservedSecond = 0; ///< The host's; not read here.
    std::int32_t m_reservedThird = 6; ///< The host's; not read here.
};

#endif
