// SPDX-License-Identifier: MIT
#include "zvlastimageinfomanagersvr.h"

#include <algorithm>

ZVRX_DEFINE_MEMBERS(ZvLastImageInfoManagerSvr, ZvRxObject)

namespace {
constexpr int kSmallestGrowth = 8192;
}

ZvLastImageInfoManagerSvr::~ZvLastImageInfoManagerSvr()
{
    pthread_mutex_lock(&m_mutex);
    // The kernel fills the list, and a length below zero is one that it spoilt: make room before setting it right.
    if (m_infos.logicalLength() < 0) {
        m_infos.setPhysicalLength(m_infos.physicalLength() + std::max(m_infos.growLength(), kSmallestGrowth));
        if (m_infos.logicalLength() > m_infos.physicalLength())
            ZvAssert("mLogicalLen <= mPhysicalLen", __FILE__, __LINE__);
        // Counting up from there would make pictures in front of the list's memory.
        ZvArray<ZvSmartPtr<ZvLastImageInfo>> none;
        m_infos.swap(none);
    }
    m_infos.setLogicalLength(0);
    pthread_mutex_unlock(&m_mutex);
    pthread_mutex_destroy(&m_mutex);
}
