// SPDX-License-Identifier: MIT
#ifndef COMBOBAR_H
#define COMBOBAR_H

#include <QToolBar>

class QComboBox;

/// A tool bar of the library's drop-downs.
class ComboBar : public QToolBar
{
    Q_OBJECT
public:
    ComboBar(const QString &id, const QString &title, QWidget *parent = nullptr);

protected:
    void addCombo(QComboBox *combo, const QString &name, const QString &toolTip);
};

#endif
