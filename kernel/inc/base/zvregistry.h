// SPDX-License-Identifier: MIT
#ifndef ZVREGISTRY_H
#define ZVREGISTRY_H

#include "base/zvsmartptr.h"
#include "base/zvstring.h"

/// Objects by name. Names compare with case.
class ZV_EXPORT ZvRxDictionary : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvRxDictionary)
public:
    ZvRxDictionary();
    ~ZvRxDictionary() override;
    /// The object under \a name, without a reference; null when there is none.
    ZvRxObject *at(const ZvString &name) const;
    /// Adds or replaces; holds a reference. Null removes.
    void atPut(const ZvString &name, ZvRxObject *object);
    /// Removes and drops the reference; an unknown name: nothing.
    void remove(const ZvString &name);

private:
    struct Private;
    Private *d;
};

/// The system registry: "ACRX_REGISTERED_COMMANDS" holds the command stack, "ZvEditor" the editor. Never null.
ZV_EXPORT ZvRxDictionary *zvrxSysRegistry();

/// Services by key. The registry holds a reference of its own until the key is cleared or registered anew.
ZV_EXPORT void zv_arbitDict_regservice(const ZvString &name, const ZvRxObjectPtr &service);
/// The service without a reference; null when there is none.
ZV_EXPORT ZvRxObject *zv_arbitDict_getservice(const ZvString &key);
/// An unknown name: nothing.
ZV_EXPORT void zv_arbitDict_clearservice(const ZvString &name);
/// The same registry, seen as the dialog services.
ZV_EXPORT ZvRxObject *grUISvr(const ZvString &name);

/// Services by number. 3 is the database's host service. Not owned; null when there is none.
ZV_EXPORT ZvRxObject *zvrxGetService(int number);
/// Not owned; null takes the service away.
ZV_EXPORT void zvrxSetService(int number, ZvRxObject *service);

#endif
