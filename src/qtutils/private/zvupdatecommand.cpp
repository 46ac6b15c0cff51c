// SPDX-License-Identifier: MIT
#include "private/zvupdatecommand.h"

#include "zevaqt.h"
#include "zvqtcommonuisvr.h"

#include <array>

namespace {

typedef void (*PropertyWriter)(const ZvUiPendingUpdate &update);

/// By ZvUiPendingUpdate::kind. A property without a writer is not written.
constexpr std::array<PropertyWriter, 10> kWriters = {};

} // namespace

void zvWritePendingUpdate()
{
    ZvRxObject *object = grUISvr(L"Dialog/Common");
    if (!object)
        return;
    // A dialog service of another maker has no mailbox.
    auto *service = dynamic_cast<ZvQtCommonUISvr *>(zvqt_queryRequired<ZvUiService>(object));
    if (!service)
        return;

    const ZvUiPendingUpdate &update = *service->pendingUpdate();
    if (update.kind < 0 || update.kind >= int(kWriters.size()))
        return;
    if (const PropertyWriter write = kWriters[std::size_t(update.kind)])
        write(update);
}
