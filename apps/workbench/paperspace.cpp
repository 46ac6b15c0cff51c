// SPDX-License-Identifier: MIT
#include "paperspace.h"

#include "db/zvdbentities.h"
#include "db/zvdbstyles.h"

LayoutPaper layoutPaper(const ZvDbDatabase &database)
{
    ZvDbObjectPointer<ZvDbLayout> layout(database.currentLayoutId(), ZvDb::kForRead);
    if (!layout || layout->isModelType())
        return {};
    const double unit = layout->paperUnits() == 0 ? 25.4 : 1.0;
    const ZvGePoint2d size = layout->paperSize();
    const ZvGePoint2d low = layout->marginsMinimum();
    const ZvGePoint2d high = layout->marginsMaximum();
    LayoutPaper paper;
    paper.sheet = QRectF(-low.x / unit, -low.y / unit, size.x / unit, size.y / unit);
    paper.printable = paper.sheet.adjusted(low.x / unit, low.y / unit, -high.x / unit, -high.y / unit);
    return paper;
}

bool isViewport(ZvDbObjectId id)
{
    const ZvRxClass *kind = id.objectClass();
    return kind && kind->isDerivedFrom(ZvDbViewport::desc());
}

QRectF viewportBorder(ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbViewport> viewport(id, ZvDb::kForRead);
    if (!viewport || viewport->number() == 1)
        return QRectF();
    const ZvGePoint3d center = viewport->centerPoint();
    return QRectF(center.x - viewport->width() / 2, center.y - viewport->height() / 2, viewport->width(),
                  viewport->height());
}

bool takesViewport(ZvDbObjectId id, const QRectF &window, bool crossing)
{
    const QRectF border = viewportBorder(id);
    if (border.isEmpty())
        return false;
    return crossing ? border.intersects(window) && !border.contains(window) : window.contains(border);
}
