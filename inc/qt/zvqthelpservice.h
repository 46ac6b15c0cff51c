// SPDX-License-Identifier: MIT
#ifndef ZVQTHELPSERVICE_H
#define ZVQTHELPSERVICE_H

#include "base/zvexport.h"
#include "base/zvrxobject.h"

/// How dialogs find the application's help: the host registers one under the key that is the single character of code 1.
///
/// \code
/// zv_arbitDict_regservice(ZvString(wchar_t(ZvQtHelpService::kKey)), service);
/// \endcode
///
/// The operation is called by its place, the first behind those of ZvRxObject: a host with a class of its own declares
/// it so. Without the service a help button does nothing.
class ZV_EXPORT ZvQtHelpService : public ZvRxObject
{
public:
    enum { kKey = 1 };

    ~ZvQtHelpService() override;
    /// The user asks for the help of the dialog at hand.
    virtual void showHelp() = 0;
};

#endif
