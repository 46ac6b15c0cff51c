// SPDX-License-Identifier: MIT
#ifndef STRANGER_H
#define STRANGER_H

#include "base/zvrxobject.h"
#include "base/zvsmartptr.h"

/// An object that is of no class the library knows: no ZvRxObject even, as far as it says itself. For places where a
/// host registers or hands over the wrong thing.
class Stranger : public ZvRxObjectImpl<ZvRxObject>
{
public:
    static ZvRxObjectPtr make() { return ZvRxObjectPtr::adopt(new Stranger); }
    ZvRxClass *isA() const override
    {
        static ZvRxClass descriptor("Stranger", nullptr);
        return &descriptor;
    }
};

#endif
