// SPDX-License-Identifier: MIT
#include "base/zvregistry.h"

#include <map>
#include <unordered_map>

ZVRX_DEFINE_MEMBERS(ZvRxDictionary, ZvRxObject)

struct ZvRxDictionary::Private
{
    std::unordered_map<ZvString, ZvRxObjectPtr> objects;
};

ZvRxDictionary::ZvRxDictionary() : d(new Private) { }

ZvRxDictionary::~ZvRxDictionary()
{
    delete d;
}

ZvRxObject *ZvRxDictionary::at(const ZvString &name) const
{
    const auto it = d->objects.find(name);
    return it == d->objects.end() ? nullptr : it->second.get();
}

void ZvRxDictionary::atPut(const ZvString &name, ZvRxObject *object)
{
    if (object)
        d->objects[name] = ZvRxObjectPtr(object);
    else
        remove(name);
}

void ZvRxDictionary::remove(const ZvString &name)
{
    // The last reference may go here, and its destructor may come back to the registry: take it out first.
    const auto it = d->objects.find(name);
    if (it == d->objects.end())
        return;
    const ZvRxObjectPtr last = std::move(it->second);
    d->objects.erase(it);
}

namespace {

/// The dictionaries are never destroyed: services may be cleared as late as the process's exit.
ZvRxDictionary *services()
{
    static auto *dictionary = new ZvRxDictionary;
    return dictionary;
}

std::map<int, ZvRxObject *> &numberedServices()
{
    static auto *services = new std::map<int, ZvRxObject *>;
    return *services;
}

}

ZvRxDictionary *zvrxSysRegistry()
{
    static auto *dictionary = new ZvRxDictionary;
    return dictionary;
}

void zv_arbitDict_regservice(const ZvString &name, const ZvRxObjectPtr &service)
{
    services()->atPut(name, service);
}

ZvRxObject *zv_arbitDict_getservice(const ZvString &key)
{
    return services()->at(key);
}

void zv_arbitDict_clearservice(const ZvString &name)
{
    services()->remove(name);
}

ZvRxObject *grUISvr(const ZvString &name)
{
    return zv_arbitDict_getservice(name);
}

ZvRxObject *zvrxGetService(int number)
{
    const auto it = numberedServices().find(number);
    return it == numberedServices().end() ? nullptr : it->second;
}

void zvrxSetService(int number, ZvRxObject *service)
{
    numberedServices()[number] = service;
}
