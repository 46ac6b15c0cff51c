// SPDX-License-Identifier: MIT
#include "statusfields.h"

#include "base/zvcmcolor.h"
#include "core/zvapdocument.h"
#include "db/zvdbrecords.h"
#include "look.h"
#include "textforms.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QStatusBar>
#include <QToolButton>

#include <cmath>

namespace {

QLabel *field(const QString &name, const QString &accessibleName)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(6, 0, 6, 0);
    return label;
}

QPixmap swatch(const QColor &color, double pixelRatio)
{
    constexpr int kSize = 12;
    QPixmap pixmap(qRound(kSize * pixelRatio), qRound(kSize * pixelRatio));
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setBrush(color);
    painter.setPen(color.darker(180));
    painter.drawRect(QRectF(0.5, 0.5, kSize - 1, kSize - 1));
    return pixmap;
}

QString coordinateText(double value)
{
    return QString::number(value, 'f', 4);
}

} // namespace

StatusFields::StatusFields(QStatusBar *bar)
    : QObject(bar), m_bar(bar), m_coordinates(field(QStringLiteral("coordinates"), tr("Coordinates of the pointer"))),
      m_selection(field(QStringLiteral("selectionCount"), tr("Number of selected entities"))), m_layerColor(new QLabel),
      m_layer(field(QStringLiteral("currentLayer"), tr("Current layer"))),
      m_layout(field(QStringLiteral("currentLayout"), tr("Current layout"))), m_lineWeights(new QToolButton)
{
    m_coordinates->setFont(monospaceFont(m_coordinates->font()));
    m_coordinates->setMinimumWidth(
        m_coordinates->fontMetrics().horizontalAdvance(QStringLiteral("-000000.0000, -000000.0000")) + 12);
    m_lineWeights->setObjectName(QStringLiteral("lineWeightSwitch"));
    m_lineWeights->setAccessibleName(tr("Show line weights"));
    m_lineWeights->setToolTip(tr("Show lines as wide as they are plotted"));
    m_lineWeights->setText(tr("LWT"));
    m_lineWeights->setCheckable(true);
    m_lineWeights->setAutoRaise(true);
    m_lineWeights->setFocusPolicy(Qt::NoFocus);
    connect(m_lineWeights, &QToolButton::clicked, this, &StatusFields::lineWeightsToggled);

    auto *layer = new QWidget;
    auto *row = new QHBoxLayout(layer);
    row->setContentsMargins(6, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_layerColor);
    row->addWidget(m_layer);

    bar->addWidget(m_coordinates);
    bar->addPermanentWidget(m_selection);
    bar->addPermanentWidget(layer);
    bar->addPermanentWidget(m_layout);
    bar->addPermanentWidget(m_lineWeights);
}

void StatusFields::setProgressWidget(QWidget *widget)
{
    m_bar->insertPermanentWidget(1, widget); // behind the coordinates, which are no permanent widget
}

void StatusFields::showCoordinates(const ZvGePoint3d &point)
{
    QString text = coordinateText(point.x) + QStringLiteral(", ") + coordinateText(point.y);
    if (std::abs(point.z) > 5e-5)
        text += QStringLiteral(", ") + coordinateText(point.z);
    m_coordinates->setText(text);
}

void StatusFields::clearCoordinates()
{
    m_coordinates->clear();
}

void StatusFields::showDocument(ZvApDocument *document)
{
    const ZvDbDatabase *database = document ? document->database() : nullptr;
    m_lineWeights->setEnabled(database != nullptr);
    m_lineWeights->setChecked(database && database->lineWeightDisplay());
    if (!database) {
        for (QLabel *label : {m_coordinates, m_selection, m_layerColor, m_layer, m_layout})
            label->clear();
        return;
    }
    ZvEdContext *context = document->editingContext();
    const int selected = context && context->selectionHolder() ? int(context->selectionHolder()->ids().size()) : 0;
    m_selection->setText(selected > 0 ? tr("%1 selected").arg(selected) : QString());
    m_layout->setText(toQString(database->currentLayoutName()));
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(database->clayer(), ZvDb::kForRead);
    if (!layer) {
        m_layer->clear();
        m_layerColor->clear();
        return;
    }
    const ZvCmColor color = layer->color();
    m_layer->setText(toQString(layer->name()));
    m_layerColor->setPixmap(swatch(QColor(color.red(), color.green(), color.blue()), m_bar->devicePixelRatioF()));
}
