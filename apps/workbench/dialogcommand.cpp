// SPDX-License-Identifier: MIT
#include "dialogcommand.h"

#include "core/zvui.h"

#include <QWidget>

namespace {
const char *const kGroup = "WORKBENCH";
}

DialogCommand::DialogCommand(const char *name, int extraFlags, ZvEdCommandFunction function) : m_name(name)
{
    ZvEdCommandStack *stack = zvedCommandStack();
    const ZvEdCommand *builtIn = stack->lookUp(name);
    if (builtIn) {
        m_builtIn = *builtIn;
        stack->removeCmd(m_builtIn.group, m_builtIn.globalName);
    }
    stack->addCommand(kGroup, name, name, m_builtIn.flags | extraFlags, function, nullptr, -1,
                      ZvRxResourceInstance(nullptr), 0);
}

DialogCommand::~DialogCommand()
{
    ZvEdCommandStack *stack = zvedCommandStack();
    stack->removeCmd(kGroup, m_name);
    if (m_builtIn.function)
        stack->addCommand(m_builtIn.group, m_builtIn.globalName, m_builtIn.localName, m_builtIn.flags,
                          m_builtIn.function, m_builtIn.context, m_builtIn.code, ZvRxResourceInstance(nullptr), 0);
}

bool DialogCommand::isForPerson()
{
    const auto *window = static_cast<QWidget *>(zvuiMainWindow());
    return !zvedQueueHasInput() && window && window->isVisible();
}

void DialogCommand::runLineForm(const char *name)
{
    if (const ZvEdCommand *command = zvedCommandStack()->lookUp(ZvString("_-") + ZvString(name)))
        command->function();
}
