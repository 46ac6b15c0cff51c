// SPDX-License-Identifier: MIT
// Shows a compiled form with every widget. 0 when they are there.
#include "ui_all_widgets.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    Ui::AllWidgets form;
    form.setupUi(&window);
    window.show();
    application.processEvents();
    return form.aUnitLineEdit->text() == QLatin1String("12.5") && form.aColorComboBox->isVisible() ? 0 : 1;
}
