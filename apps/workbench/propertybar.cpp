// SPDX-License-Identifier: MIT
#include "propertybar.h"

#include "zvcolorcombobox.h"
#include "zvlayerultralcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"

namespace {
constexpr int kLayerStates = 77; // pixels before the name of the layer
}

PropertyBar::PropertyBar(QWidget *parent)
    : ComboBar(QStringLiteral("propertiesBar"), tr("Properties"), parent), m_layer(new ZvLayerUltralComboBox(true, this))
{
    addCombo(m_layer, tr("Layer"), tr("Layer of the selected entities, or of new ones; its list switches layers"));
    m_layer->setMinimumWidth(m_layer->minimumWidth() + kLayerStates);
    auto *color = new ZvColorComboBox(true, this);
    addCombo(color, tr("Colour"), tr("Colour of the selected entities, or of new ones"));
    addCombo(new ZvLineTypeComboBox(true, this), tr("Line type"),
             tr("Line type of the selected entities, or of new ones"));
    addCombo(new ZvLineWidthComboBox(true,
                                     ZvLineWidthComboBox::kItemByLayer | ZvLineWidthComboBox::kItemByBlock
                                         | ZvLineWidthComboBox::kItemDefault,
                                     this),
             tr("Line weight"), tr("Line weight of the selected entities, or of new ones"));

    // Filled without a drawing the colour list is empty. What it is then told to show it keeps as a colour that the user
    // has added, "ByLayer" too, and lists it once more beside the fixed row of that name.
    const auto fillColors = [color] {
        color->init(ZvCmColor(), false, ZvDbObjectId());
        color->updateData(false);
    };
    connect(&m_events, &KernelEvents::documentCreated, color, fillColors);
    connect(&m_events, &KernelEvents::documentBecameCurrent, color, fillColors);
    connect(&m_events, &KernelEvents::documentCreated, this, &PropertyBar::readLayers);
    connect(&m_events, &KernelEvents::documentBecameCurrent, this, &PropertyBar::readLayers);
}

/// By itself the layer list is read when it opens, and knows no layer of another drawing before.
void PropertyBar::readLayers()
{
    m_layer->init();
    m_layer->updateData(false);
}
