// SPDX-License-Identifier: MIT
#include "private/zvcurrentucs.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvresbufptr.h"
#include "zevaqt.h"
#include "zvodasetting.h"

#include "db/zvdbrecords.h"

namespace {

int readInteger(const wchar_t *variable, const ZvDbDatabase &drawing)
{
    const ZvResBufPtr value(zvHostService()->readVariable(variable, &drawing));
    return value ? int(value->number()) : 0;
}

} // namespace

bool zvHasPreviousUcs()
{
    const ZvDbDatabase *database = zvCurrentDocumentDatabase();
    if (!database)
        return false;
    const ZvDbObjectPointer<ZvDbObject> viewport(zvHostService()->currentViewportId(database), ZvDb::kForRead);
    if (!viewport)
        return false;
    const auto *data = zvqt_queryRequired<ZvDbAbstractViewportData>(viewport.get());
    ZvGeMatrix3d previous;
    return data->hasPreviousUcs(viewport.get(), previous);
}

ZvCurrentUcs::ZvCurrentUcs(const ZvDbDatabase &drawing)
{
    if (ZevaUISetting::getWorkBlockRecId(&drawing) == zvHostService()->modelSpaceId(&drawing)) {
        name = drawing.ucsname();
        orthographic = readInteger(L"UCSORTHOVIEW", drawing);
        origin = drawing.ucsorg();
        x = drawing.ucsxdir();
        y = drawing.ucsydir();
    } else {
        name = drawing.pucsname();
        orthographic = readInteger(L"PUCSORTHOVIEW", drawing);
        origin = drawing.pucsorg();
        x = drawing.pucsxdir();
        y = drawing.pucsydir();
    }
}

bool ZvCurrentUcs::isWorld() const
{
    return origin.isEqualTo(ZvGePoint3d::kOrigin) && x.isEqualTo(ZvGeVector3d::kXAxis)
        && y.isEqualTo(ZvGeVector3d::kYAxis);
}
