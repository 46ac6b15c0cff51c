// SPDX-License-Identifier: MIT
// A piece of code inside a function: ended by what it may return, with a window to stand before.
#include <base/zvjson.h>
#include <core/zvui.h>

[[maybe_unused]] static void example([[maybe_unused]] void *mainWindow)
{
    // the code
}
