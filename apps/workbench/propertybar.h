// SPDX-License-Identifier: MIT
#ifndef PROPERTYBAR_H
#define PROPERTYBAR_H

#include "combobar.h"
#include "kernelevents.h"

class ZvLayerUltralComboBox;

/// The tool bar with the library's property controls, hooked to the drawing. Needs the update bus on offer.
class PropertyBar : public ComboBar
{
    Q_OBJECT
public:
    explicit PropertyBar(QWidget *parent = nullptr);

private:
    void readLayers();

    ZvLayerUltralComboBox *const m_layer;
    KernelEvents m_events;
};

#endif
