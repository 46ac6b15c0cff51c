// SPDX-License-Identifier: MIT
#ifndef PROPERTYBAR_H
#define PROPERTYBAR_H

#include "kernelevents.h"

#include <QToolBar>

class QComboBox;
class ZvLayerUltralComboBox;

/// The tool bar with the library's property controls, hooked to the drawing. Needs the update bus on offer.
class PropertyBar : public QToolBar
{
    Q_OBJECT
public:
    explicit PropertyBar(QWidget *parent = nullptr);

private:
    void addCombo(QComboBox *combo, const QString &name, const QString &toolTip);
    void readLayers();

    ZvLayerUltralComboBox *const m_layer;
    KernelEvents m_events;
};

#endif
