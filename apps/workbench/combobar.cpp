// SPDX-License-Identifier: MIT
#include "combobar.h"

#include <QComboBox>

namespace {
constexpr int kComboWidth = 16; // of the text, in average characters
constexpr int kComboFrame = 10; // pixels above and below the text
} // namespace

ComboBar::ComboBar(const QString &id, const QString &title, QWidget *parent) : QToolBar(title, parent)
{
    setObjectName(id);
    setAccessibleName(title);
}

void ComboBar::addCombo(QComboBox *combo, const QString &name, const QString &toolTip)
{
    combo->setAccessibleName(name);
    combo->setToolTip(toolTip);
    combo->setMinimumWidth(kComboWidth * fontMetrics().averageCharWidth() + combo->iconSize().width());
    // The line controls' pictures would grow with the bar, and the bar with them.
    combo->setMaximumHeight(fontMetrics().height() + kComboFrame);
    addWidget(combo);
}
