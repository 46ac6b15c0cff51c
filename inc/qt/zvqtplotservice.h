// SPDX-License-Identifier: MIT
#ifndef ZVQTPLOTSERVICE_H
#define ZVQTPLOTSERVICE_H

#include "base/zvexport.h"
#include "base/zvjson.h"
#include "base/zvrxobject.h"

class ZvDbDatabase;

/// How controls learn what the application's plotting offers: the host registers one under the key "Utils/PlotUtility".
///
/// The host derives its service from this class: what is registered and is no such object is an error of the host, and
/// asking it throws ZvError_NotThatKindOfClass. The place of the operation, the first behind those of ZvRxObject, is
/// binding. Without the service there are no shade plot modes.
class ZV_EXPORT ZvQtPlotService : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvQtPlotService)
public:
    static constexpr const wchar_t *kKey = L"Utils/PlotUtility"; ///< The service's key.

    ~ZvQtPlotService() override;
    /// The shade plot modes for \a database, which is null for a document without a drawing: an array, of whose
    /// elements the first value is the text that the user sees. Null where there are none.
    virtual ZvJsonPtr shadePlotModes(ZvDbDatabase *database) = 0;
};

#endif
