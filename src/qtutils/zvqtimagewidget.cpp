// SPDX-License-Identifier: MIT
#include "zvqtimagewidget.h"

#include "private/zvaccessibility.h"
#include "private/zvbagreader.h"
#include "private/zvrasterview.h"

#include "utils/zventityimage.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace {

constexpr QSize kSmallest(10, 10);
constexpr qreal kBorderWidth = 3.0;
constexpr QRgb kBorderColor = qRgb(105, 105, 105);
constexpr int kWhite = int(0xFFFFFFFF);
constexpr int kBlack = int(0xFF000000);

} // namespace

ZvQtImageWidget::ZvQtImageWidget(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(kSmallest);
    zvNameForReaders(this);
}

ZvQtImageWidget::~ZvQtImageWidget() = default;

void ZvQtImageWidget::attachDbEntities(const Entities &entities, ZvDbDatabasePtr db, ZvJsonPtr options)
{
    m_entities = entities;
    m_database = db ? db : ZvDbDatabasePtr(curDatabase());
    m_options = options ? options : ElementValue::createObject(IElementValueBase::kObject);
    if (!m_options->hasKey("width") || !m_options->hasKey("height")) {
        m_options->SetDataI("width", width());
        m_options->SetDataI("height", height());
    }
    writeMissingBackground();
    if (isVisible())
        update();
}

void ZvQtImageWidget::writeMissingBackground()
{
    if (m_options->hasKey("background"))
        return;
    const bool showsPaper = m_database && !m_database->tilemode();
    m_options->SetDataI("background", showsPaper ? kWhite : kBlack);
}

void ZvQtImageWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (!m_options)
        m_options = ElementValue::createObject(IElementValueBase::kObject);
    m_options->SetDataI("width", width());
    m_options->SetDataI("height", height());
    writeMissingBackground();
    if (isVisible())
        update();
}

void ZvQtImageWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const ZvSmartPtr<ZvGiRasterImage> raster = zvsiutCreateEntityImage(m_database, m_entities, m_options);
    if (!raster)
        return;
    const QImage image = zvRasterView(
        *raster, zvIs32BitsWithAlpha(raster->pixelFormat()) ? QImage::Format_RGBX8888 : QImage::Format_RGB888);
    if (image.isNull())
        return;
    QRect place = rect();
    const int padding = zvBagInt(m_options, "padding_size", 0);
    if (padding > 0) {
        QColor frame = QApplication::style()->standardPalette().color(QPalette::Window);
        if (m_options)
            frame.setRgba(QRgb(zvBagInt(m_options, "padding_clr", 0)));
        painter.fillRect(place, frame);
        place.adjust(padding, padding, -padding, -padding);
    }
    if (!place.isEmpty())
        painter.drawImage(place, image);
    painter.setPen(QPen(QColor(kBorderColor), kBorderWidth));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRect(rect());
}

ZvQtImageWidget *zvqt_createImageWidget(QWidget *parent, ZvDbDatabasePtr database,
                                        const ZvQtImageWidget::Entities &entities, ZvJsonPtr options)
{
    auto *widget = new ZvQtImageWidget(parent);
    widget->attachDbEntities(entities, database, options);
    return widget;
}
