// SPDX-License-Identifier: MIT
#ifndef ZVQTENTRYPOINT_H
#define ZVQTENTRYPOINT_H

#include "base/zvexport.h"

#include <cstdint>

/// Messages of the module loader. Others are ignored.
enum ZvRxModuleMessage : std::int32_t {
    kZvRxLoadModule = 1,
    kZvRxUnloadModule = 2,
};

/// The library's door as an application module; what follows the message is not read.
///
/// Load registers the service "Dialog/Common" and adds the command "GLOBAL_UI_UPDATEDB" to the group "ZEVA"; unload
/// removes the command, then clears the service, whether or not the module was loaded before. Both require the command
/// stack ("ACRX_REGISTERED_COMMANDS" in the system registry): the core has to be started.
///
/// Always 0. Main thread.
extern "C" ZV_EXPORT int zvrxEntryPoint(std::int32_t message, ...);

#endif
