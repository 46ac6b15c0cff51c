// SPDX-License-Identifier: MIT
#ifndef MODULESESSION_H
#define MODULESESSION_H

#include "zvqtentrypoint.h"

#include "base/zvregistry.h"
#include "core/zvsystem.h"
#include "core/zvui.h"

#include <QDialog>

/// The core started and the library loaded as the host's module loader does it, for the life of the object.
class ModuleSession
{
public:
    ModuleSession()
    {
        CHcSystem::start();
        zvrxEntryPoint(kZvRxLoadModule);
    }
    ~ModuleSession()
    {
        zvrxEntryPoint(kZvRxUnloadModule);
        CHcSystem::stop();
    }
    ModuleSession(const ModuleSession &) = delete;
    ModuleSession &operator=(const ModuleSession &) = delete;

    static ZvUiService *dialogService() { return zvrxCast<ZvUiService>(grUISvr(L"Dialog/Common")); }
    static ZvUiDialogBasePtr createDialog(const ZvString &name, void *parent = nullptr)
    {
        return dialogService()->createDialog(name, parent);
    }
    static QDialog *dialogOf(const ZvUiDialogBasePtr &dialog) { return static_cast<QDialog *>(dialog->getDlg()); }
};

#endif
