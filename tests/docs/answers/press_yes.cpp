// SPDX-License-Identifier: MIT
// Answers the one question of a document's program, which ends with 0 for this answer.
#include "modaldriver.h"

#include <QCoreApplication>
#include <QPushButton>

static void answer()
{
    auto *driver = new ModalDriver;
    driver->setParent(QCoreApplication::instance());
    driver->next([](QDialog *dialog) {
        const QList<QPushButton *> buttons = dialog->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            if (button->isVisible() && button->text() == QStringLiteral("是(&Y)"))
                button->click();
        }
    });
}

Q_COREAPP_STARTUP_FUNCTION(answer)
