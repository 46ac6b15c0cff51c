// SPDX-License-Identifier: MIT
#ifndef PROPERTYBAR_H
#define PROPERTYBAR_H

#include <QToolBar>

class QComboBox;

/// The tool bar with the library's property controls, hooked to the drawing. Needs the update bus on offer.
class PropertyBar : public QToolBar
{
    Q_OBJECT
public:
    explicit PropertyBar(QWidget *parent = nullptr);

private:
    void addCombo(QComboBox *combo, const QString &name, const QString &toolTip);
};

#endif
