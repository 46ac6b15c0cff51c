// SPDX-License-Identifier: MIT
#ifndef RECORDEDBUS_H
#define RECORDEDBUS_H

#include "base/zvregistry.h"
#include "zvqtcontrolhelp.h"
#include "zvqtupdatebusservice.h"

#include <algorithm>
#include <vector>

/// An update bus that tells nobody anything and knows who is on it, in place of the host's for the life of the object.
class RecordedBus
{
public:
    RecordedBus() : m_before(zv_arbitDict_getservice(key()))
    {
        receivers().clear();
        zv_arbitDict_regservice(key(), ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Service>));
    }
    ~RecordedBus() { zv_arbitDict_regservice(key(), m_before); }
    RecordedBus(const RecordedBus &) = delete;
    RecordedBus &operator=(const RecordedBus &) = delete;

    /// Those that have joined and not left, in the order in which they joined; twice where they joined twice.
    static std::vector<CZvQtControlHelp *> &receivers()
    {
        static std::vector<CZvQtControlHelp *> joined;
        return joined;
    }

private:
    class Service : public ZvQtUpdateBusService
    {
    public:
        void addReceiver(CZvQtControlHelp *receiver) override { receivers().push_back(receiver); }
        void removeReceiver(CZvQtControlHelp *receiver) override
        {
            const auto at = std::find(receivers().begin(), receivers().end(), receiver);
            if (at != receivers().end())
                receivers().erase(at);
        }
    };
    static ZvString key() { return ZvString(wchar_t(ZvQtUpdateBusService::kKey)); }

    const ZvRxObjectPtr m_before;
};

#endif
