// SPDX-License-Identifier: MIT
#include "zvcommands_p.h"

#include <charconv>
#include <string>

void zvcoreAddBuiltInCommands(ZvEdCommandStack &stack)
{
    const ZvBuiltInCommands units[] = {zvcoreFileCommands(),     zvcoreDrawCommands(),   zvcoreModifyCommands(),
                                       zvcoreLinetypeCommands(), zvcoreSelectCommands(), zvcoreSettingCommands(),
                                       zvcoreUndoCommands(),     zvcoreUcsCommands(),    zvcoreViewCommands()};
    const ZvRxResourceInstance program(nullptr);
    for (const ZvBuiltInCommands &unit : units) {
        for (int i = 0; i < unit.count; ++i) {
            const ZvBuiltInCommand &command = unit.rows[i];
            stack.addCommand("ZEVA_BUILTIN", command.name, command.name, command.flags, command.function, nullptr, -1,
                             program, 0);
        }
    }
}

ZvEdPrompt zvcorePrompt(ZvEdPrompt::Kind kind, const ZvString &text, const ZvString &keywords)
{
    ZvEdPrompt prompt;
    prompt.kind = kind;
    prompt.text = text;
    prompt.keywords = keywords;
    return prompt;
}

ZvEdPrompt zvcorePromptFrom(ZvEdPrompt::Kind kind, const ZvString &text, const ZvGePoint3d &base, const ZvString &keywords)
{
    ZvEdPrompt prompt = zvcorePrompt(kind, text, keywords);
    prompt.base = base;
    prompt.hasBase = true;
    return prompt;
}

bool zvcoreAskName(const ZvString &text, ZvString &name)
{
    if (zvedGetString(zvcorePrompt(ZvEdPrompt::kStringWithBlanks, text), name) != ZvEdInput::kNormal)
        return false;
    name = name.trimmed();
    return !name.isEmpty();
}

ZvString zvcoreNumber(double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return ZvString(std::string(buffer, result.ptr).c_str());
}
