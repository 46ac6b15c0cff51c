// SPDX-License-Identifier: MIT
#include "private/zvdialogparent.h"

#include "qt_utils.h"

#include "core/zvsystem.h"
#include "core/zvui.h"

namespace {

void *systemWindow()
{
    const CHcSystem *system = CHcSystem::instance();
    const ZvApApplication *application = system ? system->application() : nullptr;
    return application ? application->windowHandle() : nullptr;
}

} // namespace

QWidget *zvDialogParent(ZvDialogParent rule, void *givenHandle)
{
    void *handle = rule == ZvDialogParent::kMainWindow ? nullptr : givenHandle;
    if (!handle)
        handle = zvuiMainWindow();
    if (!handle && rule == ZvDialogParent::kGivenOrSystem)
        handle = systemWindow();
    return qt_windowHandle_to_widget(handle);
}
