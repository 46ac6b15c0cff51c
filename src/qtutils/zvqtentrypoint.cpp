// SPDX-License-Identifier: MIT
#include "zvqtentrypoint.h"

#include "private/zvupdatecommand.h"
#include "zvqtcommonuisvr.h"

#include "base/zvregistry.h"
#include "core/zveditor.h"

namespace {

constexpr wchar_t kServiceName[] = L"Dialog/Common";
constexpr wchar_t kCommandGroup[] = L"ZEVA";
constexpr wchar_t kCommandName[] = L"GLOBAL_UI_UPDATEDB";
constexpr int kCommandFlags = 0xC10016; // as the command stack defines them; the pick-first set stays in place

/// Must exist while the library is loaded.
ZvEdCommandStack *commandStack()
{
    return zvrxCast<ZvEdCommandStack>(zvrxSysRegistry()->at(L"ACRX_REGISTERED_COMMANDS"));
}

void load()
{
    zv_arbitDict_regservice(kServiceName, ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvQtCommonUISvr, ZvQtCommonUISvr>()));
    commandStack()->addCommand(kCommandGroup, kCommandName, kCommandName, kCommandFlags, zvWritePendingUpdate, nullptr,
                               -1, ZvRxResourceInstance(nullptr), 0);
}

void unload()
{
    commandStack()->removeCmd(kCommandGroup, kCommandName);
    zv_arbitDict_clearservice(kServiceName);
}

} // namespace

int zvrxEntryPoint(std::int32_t message, ...)
{
    switch (message) {
    case kZvRxLoadModule:
        load();
        break;
    case kZvRxUnloadModule:
        unload();
        break;
    default:
        break;
    }
    return 0;
}
