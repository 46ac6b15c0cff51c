// SPDX-License-Identifier: MIT
#ifndef PROPERTYBAR_H
#define PROPERTYBAR_H

#include "kernelevents.h"

#include <QToolBar>

class QComboBox;

/// The tool bar with the library's property controls, hooked to the drawing. Needs the update bus on offer. Without a
/// drawing it is disabled, since the bus is silent then.
class PropertyBar : public QToolBar
{
    Q_OBJECT
public:
    explicit PropertyBar(QWidget *parent = nullptr);

private:
    void addCombo(QComboBox *combo, const QString &name, const QString &toolTip);
    void followDocuments();

    KernelEvents m_events;
};

#endif
