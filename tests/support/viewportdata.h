// SPDX-License-Identifier: MIT
#ifndef VIEWPORTDATA_H
#define VIEWPORTDATA_H

#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

#include <QTest>

/// Goes into a viewport of the current layout, which is made for it: what is worked in is model space.
inline void workInAViewport(ZvDbDatabase &drawing)
{
    ZvDbObjectId viewport;
    QCOMPARE(drawing.appendEntity(new ZvDbViewport, drawing.paperSpaceId(), viewport), Zv::eOk);
    if (drawing.currentViewportId() == viewport) { // that is the paper's own now
        QCOMPARE(drawing.appendEntity(new ZvDbViewport, drawing.paperSpaceId(), viewport), Zv::eOk);
    }
    QCOMPARE(drawing.setCurrentViewport(viewport), Zv::eOk);
}

/// A viewport object that knows no viewport data, for the life of the object.
class NoViewportData
{
public:
    NoViewportData() : m_data(ZvDbViewportTableRecord::desc()->getX(ZvDbAbstractViewportData::desc()))
    {
        ZvDbViewportTableRecord::desc()->addX(ZvDbAbstractViewportData::desc(), nullptr);
    }
    ~NoViewportData() { ZvDbViewportTableRecord::desc()->addX(ZvDbAbstractViewportData::desc(), m_data); }
    Q_DISABLE_COPY(NoViewportData)

private:
    ZvRxObject *m_data;
};

#endif
