// SPDX-License-Identifier: MIT
#ifndef ZVOS_H
#define ZVOS_H

#include "base/zvexport.h"

#include <cstdint>

/// Integer types whose spelling is part of an interface: they stand in the text of signals and slots.
namespace Zevos {
/// Unsigned, 32 bits.
typedef std::uint32_t UInt32;
}

/// Milliseconds of a steady clock.
ZV_EXPORT std::uint64_t zvutTickCount();

#endif
