// SPDX-License-Identifier: MIT
#ifndef ZVLASTIMAGEINFOMANAGERSVR_H
#define ZVLASTIMAGEINFOMANAGERSVR_H

#include "base/zvarray.h"
#include "base/zvsmartptr.h"
#include "utils/zvraster.h"

#include <pthread.h>

/// The pictures that the kernel made last. The kernel derives from it, fills it and decides who locks when, since it
/// reaches the list from more than one thread; the library only knows how to let go of it. The order of the members is
/// binding.
class ZV_EXPORT ZvLastImageInfoManagerSvr : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvLastImageInfoManagerSvr)
public:
    ZvLastImageInfoManagerSvr() { pthread_mutex_init(&m_mutex, nullptr); }
    ~ZvLastImageInfoManagerSvr() override;
    ZvLastImageInfoManagerSvr(const ZvLastImageInfoManagerSvr &) = delete;
    ZvLastImageInfoManagerSvr &operator=(const ZvLastImageInfoManagerSvr &) = delete;

protected:
    ZvArray<ZvSmartPtr<ZvLastImageInfo>> m_infos; ///< The pictures, kept by a reference each.
    ZvRxObjectPtr m_keptObject; ///< Whatever must live as long as the list.
    pthread_mutex_t m_mutex; ///< Guards the list; who locks when is the kernel's matter.
};

#endif
