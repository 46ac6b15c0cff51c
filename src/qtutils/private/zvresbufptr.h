// SPDX-License-Identifier: MIT
#ifndef ZVRESBUFPTR_H
#define ZVRESBUFPTR_H

#include "db/zvresbuf.h"

#include <memory>

struct ZvResBufDeleter
{
    void operator()(ZvResBuf *chain) const { zvutRelRb(chain); }
};

/// A chain of result buffers that the holder frees, texts and all.
typedef std::unique_ptr<ZvResBuf, ZvResBufDeleter> ZvResBufPtr;

#endif
