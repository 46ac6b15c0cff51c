// SPDX-License-Identifier: MIT
#include "common/zvprintpreviewwidget.h"

#include "private/zvbagreader.h"
#include "utils/zvcanvas.h"
#include "zevaqt.h"
#include "zvqtcanvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kPaperUnitIsDevice = 2;
constexpr int kDotsPerInch = 88; // the number by which a device is asked for them
constexpr double kMillimetresPerInch = 25.4;
constexpr double kPixelsPerMillimetre = 3.7795275590551185; // at 96 dots per inch
constexpr double kNoDeviceUnits = 10.0;
constexpr double kBorder = 1.1;
constexpr double kMinScale = 1e-5;
constexpr double kMaxScale = 100000.0;
constexpr double kWheelIn = 1.25;
constexpr double kWheelOut = 0.8;
constexpr double kMaxPixel = 1e9; // so that the size of a rectangle is a number, too

const QColor kDesk(128, 128, 128);
const QColor kPaper(224, 224, 224);
const QColor kPrintable(255, 255, 255);

ZvRxObjectPtr bagObject(const ZvJsonPtr &params, const char *key)
{
    ZvRxObjectPtr object;
    if (params)
        params->GetDataO(key, object);
    return object ? ZvRxObjectPtr(zvqt_queryRequired<ZvRxObject>(object.get())) : ZvRxObjectPtr();
}

int toPixel(double value)
{
    return int(std::min(std::max(value, -kMaxPixel), kMaxPixel));
}

} // namespace

ZvPrintPreviewWidget::ZvPrintPreviewWidget(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus); // a click on the sheet leaves the zoom box
}

void ZvPrintPreviewWidget::setPage(const ZvJsonPtr &params)
{
    m_renderObject = bagObject(params, "intHelper");
    m_referenceDevice = bagObject(params, "refDC");
    const ZvJsonPtr paper = zvBagTree(params, "paper");
    m_paperCode = zvBagInt(paper, "paper_code", 0);
    m_paperName = ZvString();
    if (paper)
        paper->GetDataSW("name", m_paperName);
    m_paperUnit = zvBagInt(paper, "paper_unit", 0);
    m_paperWidth = zvBagDouble(paper, "paper_w", 0.0);
    m_paperHeight = zvBagDouble(paper, "paper_h", 0.0);
    m_printLeft = zvBagDouble(paper, "paper_margin_left", 0.0);
    m_printTop = zvBagDouble(paper, "paper_margin_top", 0.0);
    m_printRight = m_paperWidth - zvBagDouble(paper, "paper_margin_right", 0.0);
    m_printBottom = m_paperHeight - zvBagDouble(paper, "paper_margin_bottom", 0.0);
    m_devicePerUnit = 0.0;
    m_picture = QImage();
}

/// 0 while there is no reference device to ask: such a sheet cannot be shown.
double ZvPrintPreviewWidget::devicePerUnit()
{
    if (m_devicePerUnit != 0.0)
        return m_devicePerUnit;
    if (m_paperUnit == kPaperUnitIsDevice)
        m_devicePerUnit = 1.0;
    else if (auto *device = zvrxCast<ZvsiReferenceDevice>(m_referenceDevice))
        m_devicePerUnit = device->capability(kDotsPerInch) / kMillimetresPerInch;
    return m_devicePerUnit;
}

// ---- the view -----------------------------------------------------------------------------------

/// In device units. The y axis points up and the paper begins below the origin by its *upper* margin: a sheet with
/// other margins above than below shows them exchanged. Callers' pages come out as their users know them by that.
QRectF ZvPrintPreviewWidget::paperOnDevice(double d) const
{
    return QRectF(-m_printLeft * d, -m_printTop * d, m_paperWidth * d, m_paperHeight * d);
}

/// Of the paper with a border, in device units.
QRectF ZvPrintPreviewWidget::extents()
{
    // Without a reference device ten units, also where the paper's own unit is the device's: callers that show such a
    // page get their first view by that.
    const double d = m_referenceDevice ? devicePerUnit() : kNoDeviceUnits;
    const QRectF paper = paperOnDevice(d);
    QRectF extents(QPointF(), paper.size() * kBorder);
    extents.moveCenter(paper.center());
    return extents;
}

void ZvPrintPreviewWidget::fitPage()
{
    const QRectF box = extents();
    setView(box, box.height());
}

void ZvPrintPreviewWidget::fitWidth()
{
    const QRectF box = extents();
    setView(box, box.width() * m_widgetHeight / m_widgetWidth);
}

void ZvPrintPreviewWidget::setView(const QRectF &extents, double viewHeight)
{
    // Paper without a size fits nothing.
    if (std::isfinite(viewHeight) && viewHeight > 0.0) {
        m_viewHeight = viewHeight;
        m_scaleX = m_widgetHeight / m_viewHeight;
        m_scaleY = -m_scaleX;
        m_centerX = extents.center().x();
        m_centerY = extents.center().y();
        placeCenter();
    }
    showChange();
}

void ZvPrintPreviewWidget::placeCenter()
{
    m_offsetX = std::floor(m_widgetWidth * 0.5 - m_centerX * m_scaleX + 0.5);
    m_offsetY = std::floor(m_widgetHeight * 0.5 - m_centerY * m_scaleY + 0.5);
}

void ZvPrintPreviewWidget::readCenter()
{
    m_centerX = (m_widgetWidth - 2.0 * m_offsetX) / (2.0 * m_scaleX);
    m_centerY = (m_widgetHeight - 2.0 * m_offsetY) / (2.0 * m_scaleY);
}

void ZvPrintPreviewWidget::zoomTo(double scale, const QPointF &fixed)
{
    const double s = std::min(std::max(scale, kMinScale), kMaxScale);
    m_offsetX += fixed.x() * m_scaleX - fixed.x() * s;
    m_offsetY += fixed.y() * m_scaleY - fixed.y() * -s;
    m_scaleX = s;
    m_scaleY = -s;
    m_viewHeight = m_widgetHeight / s;
    readCenter();
    showChange();
    Q_EMIT zoomed();
}

void ZvPrintPreviewWidget::zoomBy(double factor)
{
    zoomTo(m_scaleX * factor, viewCenter());
}

void ZvPrintPreviewWidget::zoomToPercent(double percent)
{
    zoomTo(percent / 100.0 * (kPixelsPerMillimetre / devicePerUnit()), viewCenter());
}

double ZvPrintPreviewWidget::pixelScalePercent()
{
    return devicePerUnit() * m_scaleX / kPixelsPerMillimetre * 100.0;
}

void ZvPrintPreviewWidget::showChange()
{
    if (isVisible())
        update();
    Q_EMIT scaleChanged();
}

void ZvPrintPreviewWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_widgetWidth = std::max(1, event->size().width());
    m_widgetHeight = std::max(1, event->size().height());
    m_scaleX = m_widgetHeight / m_viewHeight;
    m_scaleY = -m_scaleX;
    placeCenter();
    showChange();
}

void ZvPrintPreviewWidget::showEvent(QShowEvent *event)
{
    m_picture = QImage(); // while the dialog was away the user may have worked in the drawing
    QWidget::showEvent(event);
}

// ---- the mouse ----------------------------------------------------------------------------------

void ZvPrintPreviewWidget::wheelEvent(QWheelEvent *event)
{
    const QPoint pos = event->position().toPoint();
    const QPointF under((pos.x() - m_offsetX) / m_scaleX, (pos.y() - m_offsetY) / m_scaleY);
    zoomTo(m_scaleX * (event->angleDelta().y() > 0 ? kWheelIn : kWheelOut), under);
}

void ZvPrintPreviewWidget::mousePressEvent(QMouseEvent *event)
{
    m_lastPos = event->localPos().toPoint();
    m_isDragging = true;
}

void ZvPrintPreviewWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (m_isDragging)
        dragTo(event->localPos().toPoint());
}

void ZvPrintPreviewWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_isDragging)
        dragTo(event->localPos().toPoint());
    m_isDragging = false;
}

void ZvPrintPreviewWidget::dragTo(const QPoint &pos)
{
    m_offsetX += pos.x() - m_lastPos.x();
    m_offsetY += pos.y() - m_lastPos.y();
    m_lastPos = pos;
    readCenter();
    update();
}

// ---- the picture --------------------------------------------------------------------------------

QRect ZvPrintPreviewWidget::toPixels(const QRectF &device) const
{
    const auto x = [this](double v) { return toPixel(std::floor(v * m_scaleX + 0.5) + m_offsetX); };
    const auto y = [this](double v) { return toPixel(std::floor(v * m_scaleY + 0.5) + m_offsetY); };
    // The greatest device y is the top.
    return QRect(QPoint(x(device.left()), y(device.bottom())), QPoint(x(device.right()) - 1, y(device.top()) - 1));
}

ZvPrintPreviewWidget::Sheet ZvPrintPreviewWidget::sheet()
{
    const double d = devicePerUnit();
    const QRectF paper = paperOnDevice(d);
    if (!(paper.width() >= 1.0) || !(paper.height() >= 1.0))
        return {};
    const QRectF printable(0.0, 0.0, (m_printRight - m_printLeft) * d, (m_printBottom - m_printTop) * d);
    return {toPixels(paper), toPixels(printable)};
}

void ZvPrintPreviewWidget::paintEvent(QPaintEvent *)
{
    const Sheet now = sheet();
    QPainter painter(this);
    painter.fillRect(rect(), kDesk);
    if (now.paper.isNull())
        return;
    updatePicture(now);
    const QPoint moved = now.printable.topLeft() - m_pictureSheet.printable.topLeft();
    painter.drawImage(m_pictureRect.translated(moved).topLeft(), m_picture);
}

/// Whether the picture shows this sheet, if perhaps elsewhere.
bool ZvPrintPreviewWidget::isPictureOf(const Sheet &sheet) const
{
    const QPoint moved = sheet.printable.topLeft() - m_pictureSheet.printable.topLeft();
    return !m_picture.isNull() && m_picture.devicePixelRatio() == devicePixelRatioF()
        && m_pictureSheet.printable.translated(moved) == sheet.printable
        && m_pictureSheet.paper.translated(moved) == sheet.paper;
}

/// Makes the picture hold what is in view: all of it for another sheet or scale, else only what came into view.
void ZvPrintPreviewWidget::updatePicture(const Sheet &now)
{
    QRegion missing(rect());
    QRect wanted = rect();
    QImage before;
    QRect beforeRect;
    if (isPictureOf(now)) {
        before = m_picture;
        beforeRect = m_pictureRect.translated(now.printable.topLeft() - m_pictureSheet.printable.topLeft());
        missing -= beforeRect;
        // Beside the paper there is the desk, and what a sheet draws there can wait for the end of the drag.
        if (!m_hasStrays || m_isDragging)
            missing &= now.paper;
        if (missing.isEmpty())
            return;
        // What comes into view in one direction will go on doing so: half a view more on all sides, as far as there is
        // paper.
        const QRect around = rect().adjusted(-width() / 2, -height() / 2, width() / 2, height() / 2);
        wanted |= around & now.paper;
        missing = QRegion(wanted) - beforeRect;
    }
    const double ratio = devicePixelRatioF();
    m_picture = QImage(wanted.size() * ratio, QImage::Format_RGB32);
    m_picture.setDevicePixelRatio(ratio);
    m_pictureRect = wanted;
    m_pictureSheet = now;
    QPainter painter(&m_picture);
    painter.translate(-wanted.topLeft());
    if (!before.isNull())
        painter.drawImage(beforeRect.topLeft(), before);
    painter.resetTransform();
    painter.setClipRegion(missing.translated(-wanted.topLeft()));
    drawSheet(painter, {now.paper.translated(-wanted.topLeft()), now.printable.translated(-wanted.topLeft())});
    painter.end();
    m_hasStrays = m_hasStrays && !before.isNull();
    m_hasStrays = m_hasStrays || isDrawnBeyond(now.paper.translated(-wanted.topLeft()));
}

void ZvPrintPreviewWidget::drawSheet(QPainter &painter, const Sheet &sheet)
{
    const QRect all(QPoint(), m_pictureRect.size());
    painter.fillRect(all, kDesk);
    painter.fillRect(sheet.paper & all, kPaper);
    painter.fillRect(sheet.printable & all, kPrintable);
    auto *object = zvrxCast<ZvsiRenderObject>(m_renderObject);
    const double d = devicePerUnit();
    const double width = (m_printRight - m_printLeft) * d;
    const double height = (m_printBottom - m_printTop) * d;
    if (!object || !(width > 0.0) || !(height > 0.0))
        return;
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->attachPainter(&painter);
    const QRect &white = sheet.printable;
    canvas->setMatrix(ZvGeMatrix2d::alignCoordSys(ZvGePoint2d::kOrigin, ZvGeVector2d(width, 0.0),
                                                  ZvGeVector2d(0.0, height), ZvGePoint2d(white.x(), white.y()),
                                                  ZvGeVector2d(white.width(), 0.0), ZvGeVector2d(0.0, white.height())));
    object->draw(canvas);
}

/// Whether the picture has anything beside the paper. What lies farther out than the first view is not looked for.
bool ZvPrintPreviewWidget::isDrawnBeyond(const QRect &paper) const
{
    const double ratio = m_picture.devicePixelRatio();
    const QRect all(QPoint(), m_pictureRect.size());
    for (const QRect &part : QRegion(all) - paper.adjusted(-1, -1, 1, 1)) {
        const QRect pixels = QRectF(part.topLeft() * ratio, QSizeF(part.size()) * ratio).toRect() & m_picture.rect();
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(m_picture.constScanLine(y));
            if (!std::all_of(line + pixels.left(), line + pixels.right() + 1,
                             [](QRgb pixel) { return pixel == kDesk.rgb(); }))
                return true;
        }
    }
    return false;
}
