// SPDX-License-Identifier: MIT
#include "private/zvupdatebus.h"

#include "zevaqt.h"
#include "zvqtcontrolhelp.h"
#include "zvqtupdatebusservice.h"

#include "base/zvregistry.h"

#include <exception>

namespace {

ZvRxObject *busObject()
{
    return zv_arbitDict_getservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)));
}

/// A host may have declared the service in a class of its own: it is known by the places of its operations.
ZvQtUpdateBusService *asBusService(ZvRxObject *object)
{
    return static_cast<ZvQtUpdateBusService *>(object);
}

} // namespace

ZvUpdateBusJoin::ZvUpdateBusJoin(CZvQtControlHelp &control) : m_control(control), m_errors(std::uncaught_exceptions())
{
    if (!control.hooked)
        return;
    if (ZvRxObject *object = busObject())
        asBusService(zvqt_queryRequired<ZvRxObject>(object))->addReceiver(&control);
}

ZvUpdateBusJoin::~ZvUpdateBusJoin()
{
    if (std::uncaught_exceptions() > m_errors)
        zvLeaveUpdateBus(m_control);
}

void zvLeaveUpdateBus(CZvQtControlHelp &control) noexcept
{
    if (!control.hooked)
        return;
    if (ZvRxObject *object = zvrxCast<ZvRxObject>(busObject()))
        asBusService(object)->removeReceiver(&control);
}
