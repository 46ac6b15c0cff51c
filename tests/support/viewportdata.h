// SPDX-License-Identifier: MIT
#ifndef VIEWPORTDATA_H
#define VIEWPORTDATA_H

#include "db/zvdbrecords.h"

#include <QtGlobal>

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
