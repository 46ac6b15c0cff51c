// SPDX-License-Identifier: MIT
#include "private/zvupdatecommand.h"

#include "private/zvpropertywriters.h"
#include "zevaqt.h"
#include "zvqtcommonuisvr.h"

#include <array>

namespace {

typedef void (*PropertyWriter)(const ZvUiPendingUpdate &update);

/// By ZvUiPendingUpdate::kind.
constexpr std::array<PropertyWriter, 10> kWriters = {
    zvWriteColor,    zvWriteLineWeight, zvWriteLineType,   zvWriteLayer,        zvWriteMaterial,
    zvWriteDimStyle, zvWriteTextStyle,  zvWriteTableStyle, zvWriteMLeaderStyle, zvWritePlotStyle,
};

} // namespace

ZvQtCommonUISvr *zvUpdateMailbox()
{
    ZvRxObject *object = grUISvr(L"Dialog/Common");
    return object ? dynamic_cast<ZvQtCommonUISvr *>(zvqt_queryRequired<ZvUiService>(object)) : nullptr;
}

void zvWritePendingUpdate()
{
    ZvQtCommonUISvr *service = zvUpdateMailbox();
    if (!service)
        return;
    // A copy: what the write brings about may leave the next request.
    const ZvUiPendingUpdate update = *service->pendingUpdate();
    if (update.kind >= 0 && update.kind < int(kWriters.size()))
        kWriters[std::size_t(update.kind)](update);
}
