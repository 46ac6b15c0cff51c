// SPDX-License-Identifier: MIT
#include "core/zveditor.h"

#include "base/zvreactorlist.h"
#include "base/zvregistry.h"

#include <algorithm>
#include <memory>

ZVRX_DEFINE_MEMBERS(ZvEditorReactor, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvEditor, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvEdCommandStack, ZvRxObject)

void ZvEditorReactor::commandWillStart(const ZvString &) { }
void ZvEditorReactor::commandEnded(const ZvString &) { }
void ZvEditorReactor::commandCancelled(const ZvString &) { }
void ZvEditorReactor::sysVarChanged(const ZvString &, bool) { }
void ZvEditorReactor::pickfirstModified() { }
void ZvEditorReactor::layoutSwitched(const ZvString &) { }
void ZvEditorReactor::commandFailed(const ZvString &) { }

ZvEdHost::~ZvEdHost() = default;

struct ZvEditor::Private
{
    ZvReactorList<ZvEditorReactor> reactors;
};

ZvEditor::ZvEditor() : d(new Private) { }

ZvEditor::~ZvEditor()
{
    delete d;
}

void ZvEditor::addReactor(ZvEditorReactor *reactor)
{
    d->reactors.add(reactor);
}

void ZvEditor::removeReactor(ZvEditorReactor *reactor)
{
    d->reactors.remove(reactor);
}

void ZvEditor::fireSysVarChanged(const ZvString &name, bool success)
{
    d->reactors.deliver([&](ZvEditorReactor &reactor) { reactor.sysVarChanged(name, success); });
}

void ZvEditor::firePickfirstModified()
{
    d->reactors.deliver([](ZvEditorReactor &reactor) { reactor.pickfirstModified(); });
}

void ZvEditor::fireLayoutSwitched(const ZvString &name)
{
    d->reactors.deliver([&](ZvEditorReactor &reactor) { reactor.layoutSwitched(name); });
}

void ZvEditor::fireCommandWillStart(const ZvString &name)
{
    d->reactors.deliver([&](ZvEditorReactor &reactor) { reactor.commandWillStart(name); });
}

void ZvEditor::fireCommandDone(const ZvString &name, CommandEnd end)
{
    d->reactors.deliver([&](ZvEditorReactor &reactor) {
        switch (end) {
        case kEnded:
            reactor.commandEnded(name);
            break;
        case kCancelled:
            reactor.commandCancelled(name);
            break;
        case kFailed:
            reactor.commandFailed(name);
            break;
        }
    });
}

ZvEditor *zvedEditor()
{
    return zvrxCast<ZvEditor>(zvrxSysRegistry()->at("ZvEditor"));
}

struct ZvEdCommandStack::Private
{
    std::vector<std::unique_ptr<ZvEdCommand>> commands;

    auto find(const ZvString &group, const ZvString &globalName)
    {
        return std::find_if(commands.begin(), commands.end(), [&](const auto &command) {
            return command->globalName.compareNoCase(globalName) == 0 && command->group.compareNoCase(group) == 0;
        });
    }
};

ZvEdCommandStack::ZvEdCommandStack() : d(new Private) { }

ZvEdCommandStack::~ZvEdCommandStack()
{
    delete d;
}

Zv::ErrorStatus ZvEdCommandStack::addCommand(const ZvString &group, const ZvString &globalName, const ZvString &localName,
                                             int flags, ZvEdCommandFunction function, ZvRxObject *context,
                                             int commandCode, const ZvRxResourceInstance &, int)
{
    if (globalName.isEmpty() || !function)
        return Zv::eInvalidInput;
    if (d->find(group, globalName) != d->commands.end())
        return Zv::eDuplicateKey;
    auto command = std::make_unique<ZvEdCommand>();
    command->group = group;
    command->globalName = globalName;
    command->localName = localName;
    command->flags = flags;
    command->function = function;
    command->context = context;
    command->code = commandCode;
    d->commands.push_back(std::move(command));
    return Zv::eOk;
}

Zv::ErrorStatus ZvEdCommandStack::removeCmd(const ZvString &group, const ZvString &globalName)
{
    const auto it = d->find(group, globalName);
    if (it == d->commands.end())
        return Zv::eKeyNotFound;
    d->commands.erase(it);
    return Zv::eOk;
}

const ZvEdCommand *ZvEdCommandStack::lookUp(const ZvString &name) const
{
    // "_" asks for the global name, "." for the built-in form, which is the only one here; they come in any order.
    ZvString plain = name;
    bool global = false;
    while (!plain.isEmpty() && (plain.at(0) == L'_' || plain.at(0) == L'.')) {
        global = global || plain.at(0) == L'_';
        plain = plain.mid(1);
    }
    for (const auto &command : d->commands) {
        if ((global ? command->globalName : command->localName).compareNoCase(plain) == 0)
            return command.get();
    }
    return nullptr;
}

void ZvEdCommandStack::commands(std::vector<const ZvEdCommand *> &list) const
{
    list.clear();
    for (const auto &command : d->commands)
        list.push_back(command.get());
    std::sort(list.begin(), list.end(), [](const ZvEdCommand *a, const ZvEdCommand *b) {
        return a->globalName.compareNoCase(b->globalName) < 0;
    });
}

ZvEdCommandStack *zvedCommandStack()
{
    return zvrxCast<ZvEdCommandStack>(zvrxSysRegistry()->at("ACRX_REGISTERED_COMMANDS"));
}
