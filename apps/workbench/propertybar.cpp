// SPDX-License-Identifier: MIT
#include "propertybar.h"

#include "zvcolorcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"

namespace {
constexpr int kComboWidth = 16; // of the text, in average characters
constexpr int kComboFrame = 10; // pixels above and below the text
}

PropertyBar::PropertyBar(QWidget *parent) : QToolBar(tr("Properties"), parent)
{
    setObjectName(QStringLiteral("propertiesBar"));
    setAccessibleName(tr("Properties"));
    addCombo(new ZvColorComboBox(true, this), tr("Colour"), tr("Colour of the selected entities, or of new ones"));
    addCombo(new ZvLineTypeComboBox(true, this), tr("Line type"),
             tr("Line type of the selected entities, or of new ones"));
    addCombo(new ZvLineWidthComboBox(true,
                                     ZvLineWidthComboBox::kItemByLayer | ZvLineWidthComboBox::kItemByBlock
                                         | ZvLineWidthComboBox::kItemDefault,
                                     this),
             tr("Line weight"), tr("Line weight of the selected entities, or of new ones"));
}

void PropertyBar::addCombo(QComboBox *combo, const QString &name, const QString &toolTip)
{
    combo->setAccessibleName(name);
    combo->setToolTip(toolTip);
    combo->setMinimumWidth(kComboWidth * fontMetrics().averageCharWidth() + combo->iconSize().width());
    // The line controls' pictures would grow with the bar, and the bar with them.
    combo->setMaximumHeight(fontMetrics().height() + kComboFrame);
    addWidget(combo);
}
