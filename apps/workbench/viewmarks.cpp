// SPDX-License-Identifier: MIT
#include "viewmarks.h"

#include "viewcolors.h"

#include <cmath>

namespace {

constexpr int kCrosshairArm = 46;

const QColor &crosshairColor(ViewGround ground)
{
    return ground == ViewGround::Paper ? ViewColors::kCrosshairOnLight : ViewColors::kCrosshairOnDark;
}

} // namespace

void paintPaperGround(QPainter &painter, const ViewCamera &camera, const LayoutPaper &paper)
{
    painter.fillRect(QRectF(QPointF(), camera.size()), ViewColors::kDesk);
    const QRectF sheet = camera.toWidget(paper.sheet);
    constexpr int kShadow = 7;
    for (int i = kShadow; i > 0; --i)
        painter.fillRect(sheet.translated(i, i), QColor(0, 0, 0, 14));
    painter.fillRect(sheet, ViewColors::kPaper);
    painter.setPen(QPen(ViewColors::kPaperMargin, 1.0, Qt::DashLine));
    painter.drawRect(camera.toWidget(paper.printable));
}

void paintRubberBand(QPainter &painter, const QPointF &base, const QPointF &pointer, bool asRectangle)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ViewColors::kRubberBand, 1.2));
    if (asRectangle)
        painter.drawRect(QRectF(base, pointer).normalized());
    else
        painter.drawLine(base, pointer);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void paintSelectionWindow(QPainter &painter, const QPointF &start, const QPointF &pointer)
{
    const bool crossing = pointer.x() < start.x();
    QColor color = crossing ? ViewColors::kCrossingWindow : ViewColors::kInsideWindow;
    painter.setPen(QPen(color, 1.0, crossing ? Qt::DashLine : Qt::SolidLine));
    color.setAlpha(46);
    painter.setBrush(color);
    painter.drawRect(QRectF(start, pointer).normalized());
    painter.setBrush(Qt::NoBrush);
}

void paintAxes(QPainter &painter, const ViewCamera &camera, const ZvGeMatrix3d &ucs, ViewGround ground)
{
    const bool isPaper = ground == ViewGround::Paper;
    const ZvGeMatrix3d toDisplay = camera.view().worldToDisplay();
    struct Axis
    {
        int column;
        QString label;
        QColor color;
    };
    const Axis axes[] = {{2, QStringLiteral("Z"), ViewColors::kAxisZ},
                         {1, QStringLiteral("Y"), ViewColors::kAxisY},
                         {0, QStringLiteral("X"), ViewColors::kAxisX}};
    constexpr double kLength = 42.0;
    const QPointF corner(62.0, camera.size().height() - 46.0); // room for an axis that points left

    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = painter.font();
    font.setPixelSize(12);
    font.setBold(true);
    painter.setFont(font);
    for (const Axis &axis : axes) {
        ZvGeVector3d direction(ucs(0, axis.column), ucs(1, axis.column), ucs(2, axis.column));
        direction = direction.normal().transformBy(toDisplay);
        const QPointF way(direction.x * kLength, -direction.y * kLength);
        const double length = std::hypot(way.x(), way.y());
        if (length < 4.0)
            continue; // towards the eye
        const QColor color = isPaper ? axis.color.darker(140) : axis.color;
        const QPointF unit = way / length;
        const QPointF across(-unit.y(), unit.x());
        const QPointF end = corner + way;
        painter.setPen(QPen(color, 2.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(corner, end - unit * 6.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(QPolygonF({end, end - unit * 9.0 + across * 3.5, end - unit * 9.0 - across * 3.5}));
        painter.setPen(color);
        const QPointF label = end + unit * 9.0;
        painter.drawText(QRectF(label.x() - 8, label.y() - 8, 16, 16), Qt::AlignCenter, axis.label);
    }
    painter.setBrush(isPaper ? ViewColors::kDesk : ViewColors::kModelGround);
    painter.setPen(QPen(crosshairColor(ground), 1.4));
    painter.drawRect(QRectF(corner.x() - 3.5, corner.y() - 3.5, 7.0, 7.0));
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void paintCrosshair(QPainter &painter, const QPoint &middle, Crosshair crosshair, int pickBox, ViewGround ground)
{
    painter.setPen(crosshairColor(ground));
    if (crosshair != Crosshair::Plain)
        painter.drawRect(QRect(middle - QPoint(pickBox, pickBox), QSize(2 * pickBox, 2 * pickBox)));
    if (crosshair == Crosshair::PickBox)
        return;
    const int gap = crosshair == Crosshair::Both ? pickBox : 0;
    painter.drawLine(middle - QPoint(kCrosshairArm, 0), middle - QPoint(gap, 0));
    painter.drawLine(middle + QPoint(gap, 0), middle + QPoint(kCrosshairArm, 0));
    painter.drawLine(middle - QPoint(0, kCrosshairArm), middle - QPoint(0, gap));
    painter.drawLine(middle + QPoint(0, gap), middle + QPoint(0, kCrosshairArm));
}

QRegion crosshairRegion(const QPointF &pos, int pickBox)
{
    const QPoint middle = pos.toPoint();
    QRegion region(
        QRect(middle.x() - kCrosshairArm - 1, middle.y() - pickBox - 2, 2 * kCrosshairArm + 3, 2 * pickBox + 5));
    region += QRect(middle.x() - pickBox - 2, middle.y() - kCrosshairArm - 1, 2 * pickBox + 5, 2 * kCrosshairArm + 3);
    return region;
}
