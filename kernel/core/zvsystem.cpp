// SPDX-License-Identifier: MIT
#include "core/zvsystem.h"

#include "base/zvreactorlist.h"
#include "base/zvregistry.h"
#include "core/zveditor.h"
#include "zvcore_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbLayoutManager, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvApApplication, ZvRxObject)

struct ZvDbLayoutManager::Private
{
    ZvReactorList<ZvDbLayoutManagerReactor> reactors;
};

ZvDbLayoutManager::ZvDbLayoutManager() : d(new Private) { }

ZvDbLayoutManager::~ZvDbLayoutManager()
{
    delete d;
}

void ZvDbLayoutManager::addReactor(ZvDbLayoutManagerReactor *reactor)
{
    d->reactors.add(reactor);
}

void ZvDbLayoutManager::removeReactor(ZvDbLayoutManagerReactor *reactor)
{
    d->reactors.remove(reactor);
}

void ZvDbLayoutManager::fireLayoutBecameCurrent(const ZvDbDatabase *database, const ZvString &name)
{
    d->reactors.deliver([&](ZvDbLayoutManagerReactor &reactor) { reactor.layoutBecameCurrent(database, name); });
}

ZvApView::~ZvApView() = default;
ZvApWindow::~ZvApWindow() = default;

struct ZvApApplication::Private
{
    ZvSmartPtr<ZvDbLayoutManager> layouts = ZvSmartPtr<ZvDbLayoutManager>::adopt(new ZvRxObjectImpl<ZvDbLayoutManager>);
    bool layoutsAvailable = true;
    int lineWeight = 25;
    ZvApWindow *window = nullptr;
};

ZvApApplication::ZvApApplication() : d(new Private) { }

ZvApApplication::~ZvApApplication()
{
    delete d;
}

ZvDbLayoutManager *ZvApApplication::layoutManager() const
{
    return d->layoutsAvailable ? d->layouts.get() : nullptr;
}

void ZvApApplication::setLayoutManagerAvailable(bool available)
{
    d->layoutsAvailable = available;
}

int ZvApApplication::defaultLineWeight() const
{
    return d->lineWeight;
}

void ZvApApplication::setDefaultLineWeight(int weight)
{
    d->lineWeight = weight;
}

ZvApWindow *ZvApApplication::window() const
{
    return d->window;
}

void ZvApApplication::setWindow(ZvApWindow *window)
{
    d->window = window;
}

void *ZvApApplication::windowHandle() const
{
    return d->window ? d->window->handle() : nullptr;
}

struct CHcSystem::Private
{
    ZvStaticRxObject<ZvEditor> editor;
    ZvStaticRxObject<ZvEdCommandStack> commands;
    ZvStaticRxObject<ZvApDocManager> documents;
    ZvStaticRxObject<ZvApApplication> application;
    bool docManagerAvailable = true;
    bool applicationAvailable = true;
};

namespace {
CHcSystem *s_system = nullptr;
bool s_instanceAvailable = true;
}

CHcSystem::CHcSystem() : d(new Private) { }

CHcSystem::~CHcSystem()
{
    delete d;
}

void CHcSystem::start()
{
    if (s_system)
        return;
    s_system = new CHcSystem;
    zvrxSysRegistry()->atPut("ZvEditor", &s_system->d->editor);
    zvrxSysRegistry()->atPut("ACRX_REGISTERED_COMMANDS", &s_system->d->commands);
    zvcoreAddBuiltInCommands(s_system->d->commands);
}

void CHcSystem::stop()
{
    if (!s_system)
        return;
    zvcoreDropQueue();
    while (s_system->d->documents.documentCount() > 0)
        s_system->d->documents.closeDocument(s_system->d->documents.documentAt(0));
    zvrxSysRegistry()->remove("ZvEditor");
    zvrxSysRegistry()->remove("ACRX_REGISTERED_COMMANDS");
    delete s_system;
    s_system = nullptr;
}

CHcSystem *CHcSystem::instance()
{
    return s_instanceAvailable ? s_system : nullptr;
}

void CHcSystem::setInstanceAvailable(bool available)
{
    s_instanceAvailable = available;
}

void CHcSystem::setDocManagerAvailable(bool available)
{
    d->docManagerAvailable = available;
}

void CHcSystem::setApplicationAvailable(bool available)
{
    d->applicationAvailable = available;
}

ZvApDocManager *CHcSystem::docManager() const
{
    return d->docManagerAvailable ? &d->documents : nullptr;
}

ZvApApplication *CHcSystem::application() const
{
    return d->applicationAvailable ? &d->application : nullptr;
}

ZvApDocManager *CHcSystem::documentsOfRunningSystem()
{
    return s_system ? &s_system->d->documents : nullptr;
}

ZvApDocManager *zvDocManagerPtr()
{
    // The same object as the system's, also while that is hidden: callers of this one make no test.
    return CHcSystem::documentsOfRunningSystem();
}
