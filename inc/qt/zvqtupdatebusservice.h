// SPDX-License-Identifier: MIT
#ifndef ZVQTUPDATEBUSSERVICE_H
#define ZVQTUPDATEBUSSERVICE_H

#include "base/zvexport.h"
#include "base/zvrxobject.h"

class CZvQtControlHelp;

/// How controls find the update bus: the host registers one under the key that is the single character of code 14, and
/// passes both operations on to its ZvMonitorGlobalUISystemVarReactor:
///
/// \code
/// zv_arbitDict_regservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)), service);
/// \endcode
///
/// The operations are called by their places, the first two behind those of ZvRxObject: a host with a class of its own
/// declares them so. Without the service controls work, but do not follow the drawing.
class ZV_EXPORT ZvQtUpdateBusService : public ZvRxObject
{
public:
    enum { kKey = 14 };

    ~ZvQtUpdateBusService() override;
    /// To be passed on to the bus; see ZvMonitorGlobalUISystemVarReactor::addUpdateUIReceiver(). \a receiver is not
    /// null.
    virtual void addReceiver(CZvQtControlHelp *receiver) = 0;
    virtual void removeReceiver(CZvQtControlHelp *receiver) = 0;
};

#endif
