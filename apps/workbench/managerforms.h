// SPDX-License-Identifier: MIT
#ifndef MANAGERFORMS_H
#define MANAGERFORMS_H

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <cstddef>

// What the dialogs have in common that manage named objects of a drawing.

/// A button below the list.
template <class Manager> struct ManagerButton
{
    const char *id;
    const char *text; ///< To be translated.
    void (Manager::*run)();
};

template <class Manager, std::size_t count>
QHBoxLayout *makeActionRow(Manager &manager, const ManagerButton<Manager> (&buttons)[count])
{
    auto *actions = new QHBoxLayout;
    for (const ManagerButton<Manager> &row : buttons) {
        auto *button = new QPushButton(Manager::tr(row.text));
        button->setObjectName(QLatin1String(row.id));
        button->setAutoDefault(false);
        QObject::connect(button, &QPushButton::clicked, &manager, row.run);
        actions->addWidget(button);
    }
    actions->addStretch();
    return actions;
}

/// The line that tells what cannot be done.
inline void setUpMessage(QLabel &message)
{
    message.setObjectName(QStringLiteral("message"));
    message.setAccessibleName(QCoreApplication::translate("ManagerForms", "Message"));
    message.setWordWrap(true);
}

#endif
