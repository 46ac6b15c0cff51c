// SPDX-License-Identifier: MIT
#include "propertybar.h"

#include "zvcolorcombobox.h"

#include <QSignalBlocker>

namespace {
constexpr int kComboWidth = 22; // in average characters
}

PropertyBar::PropertyBar(QWidget *parent) : QToolBar(tr("Properties"), parent)
{
    setObjectName(QStringLiteral("propertiesBar"));
    setAccessibleName(tr("Properties"));
    auto *color = new ZvColorComboBox(true, this);
    color->setAccessibleName(tr("Colour"));
    color->setToolTip(tr("Colour of the selected entities, or of new ones"));
    color->setMinimumWidth(kComboWidth * fontMetrics().averageCharWidth());
    addWidget(color);

    connect(&m_events, &KernelEvents::documentCreated, this, &PropertyBar::followDocuments);
    connect(&m_events, &KernelEvents::documentDestroyed, this, &PropertyBar::followDocuments);
    followDocuments();
}

void PropertyBar::followDocuments()
{
    const ZvApDocManager *documents = zvDocManagerPtr();
    const bool hasDrawing = documents && documents->documentCount() > 0;
    setEnabled(hasDrawing);
    if (hasDrawing)
        return;
    const QList<QComboBox *> combos = findChildren<QComboBox *>();
    for (QComboBox *combo : combos) {
        const QSignalBlocker quiet(combo);
        combo->setCurrentIndex(-1);
    }
}
