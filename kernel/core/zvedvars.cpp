// SPDX-License-Identifier: MIT
#include "core/zvedvars.h"

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "db/zvdbdatabase.h"
#include "zvcore_p.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <set>
#include <string>

namespace {

/// A variable of the application. Those of the drawing are the drawing's own business.
struct AppVariable
{
    const char *name;
    int type; ///< kShort, kReal or kText.
    double number; ///< Default.
    double least;
    double most;
    bool readOnly;
    ZvString (*computedText)(); ///< For read-only texts; null otherwise.
    int (*computed)(); ///< For read-only numbers; null otherwise.
};

ZvString currentFile()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    return document ? document->fileName() : ZvString();
}

ZvString drawingName()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    return document ? document->title() : ZvString();
}

ZvString drawingPrefix()
{
    const ZvString file = currentFile();
    int end = 0;
    for (int slash = file.find(L'/'); slash >= 0; slash = file.find(L'/', end))
        end = slash + 1;
    return file.left(end);
}

ZvString commandNames()
{
    return zvedRunningCommand();
}

int drawingModified()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    return document && document->isModified() ? 1 : 0;
}

bool s_isBlockEditorOpen = false; // the block editor is no part of this kernel: its host tells

int blockEditorOpen()
{
    return s_isBlockEditorOpen ? 1 : 0;
}

int defaultLineWeight()
{
    CHcSystem *system = CHcSystem::instance();
    ZvApApplication *application = system ? system->application() : nullptr;
    return application ? application->defaultLineWeight() : 0;
}

const AppVariable kVariables[] = {
    {"BLOCKEDITOR", ZvRes::kShort, 0, 0, 0, true, nullptr, blockEditorOpen},
    {"CMDACTIVE", ZvRes::kShort, 0, 0, 0, true, nullptr, zvcoreCommandActive},
    {"CMDECHO", ZvRes::kShort, 1, 0, 1, false, nullptr, nullptr},
    {"CMDNAMES", ZvRes::kText, 0, 0, 0, true, commandNames, nullptr},
    {"DBMOD", ZvRes::kShort, 0, 0, 0, true, nullptr, drawingModified},
    {"DWGNAME", ZvRes::kText, 0, 0, 0, true, drawingName, nullptr},
    {"DWGPREFIX", ZvRes::kText, 0, 0, 0, true, drawingPrefix, nullptr},
    {"HIGHLIGHT", ZvRes::kShort, 1, 0, 1, false, nullptr, nullptr},
    {"LWDEFAULT", ZvRes::kShort, 25, 0, 211, false, nullptr, defaultLineWeight},
    {"PICKADD", ZvRes::kShort, 2, 0, 2, false, nullptr, nullptr},
    {"PICKBOX", ZvRes::kShort, 5, 0, 50, false, nullptr, nullptr},
    {"PICKFIRST", ZvRes::kShort, 1, 0, 1, false, nullptr, nullptr},
    {"SAVETIME", ZvRes::kShort, 1, 0, 600, false, nullptr, nullptr},
    {"ZOOMFACTOR", ZvRes::kShort, 60, 3, 100, false, nullptr, nullptr},
};

/// What was set; the default stands for the others.
std::map<std::string, double> &values()
{
    static std::map<std::string, double> all;
    return all;
}

/// Names of the variables that cannot be read for the time being.
std::set<std::string> &unreadable()
{
    static std::set<std::string> all;
    return all;
}

const AppVariable *findVariable(const ZvString &name)
{
    for (const AppVariable &variable : kVariables) {
        if (name.compareNoCase(variable.name) == 0)
            return &variable;
    }
    return nullptr;
}

double valueOf(const AppVariable &variable)
{
    if (variable.computed)
        return variable.computed();
    const auto it = values().find(variable.name);
    return it == values().end() ? variable.number : it->second;
}

void setDefaultLineWeight(int weight)
{
    CHcSystem *system = CHcSystem::instance();
    ZvApApplication *application = system ? system->application() : nullptr;
    if (application)
        application->setDefaultLineWeight(weight);
}

bool isNumber(const ZvResBuf &value)
{
    return value.restype == ZvRes::kShort || value.restype == ZvRes::kLong || value.restype == ZvRes::kReal;
}

std::string shortest(double number)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::string(buffer, result.ptr);
}

bool parseReal(const std::string &text, double &value)
{
    const char *from = text.c_str() + (!text.empty() && text.front() == '+' ? 1 : 0);
    const char *to = text.c_str() + text.size();
    const auto result = std::from_chars(from, to, value);
    return result.ec == std::errc() && result.ptr == to;
}

}

int zvedGetVar(const ZvString &name, ZvResBuf *value)
{
    if (!value)
        return ZvRes::kError;
    if (const AppVariable *variable = findVariable(name)) {
        if (unreadable().count(variable->name))
            return ZvRes::kError;
        value->restype = variable->type;
        if (variable->type == ZvRes::kText)
            value->resval.rstring = zvutNewString(variable->computedText().wstr());
        else if (variable->type == ZvRes::kReal)
            value->resval.rreal = valueOf(*variable);
        else
            value->resval.rint = short(valueOf(*variable));
        return ZvRes::kNormal;
    }
    const ZvDbDatabase *database = zvcoreCurrentDatabase();
    return database && database->getVariable(name, *value) == Zv::eOk ? ZvRes::kNormal : ZvRes::kError;
}

int zvedSetVar(const ZvString &name, const ZvResBuf *value)
{
    if (!value)
        return ZvRes::kError;
    const AppVariable *variable = findVariable(name);
    if (!variable) {
        ZvDbDatabase *database = zvcoreCurrentDatabase();
        // The drawing tells of its changes itself.
        return database && database->setVariable(name, *value) == Zv::eOk ? ZvRes::kNormal : ZvRes::kError;
    }
    const double number = value->number();
    if (variable->readOnly || !isNumber(*value) || !(number >= variable->least && number <= variable->most)
        || (variable->type == ZvRes::kShort && number != std::floor(number)))
        return ZvRes::kError;
    if (valueOf(*variable) == number)
        return ZvRes::kNormal;
    if (variable->computed == defaultLineWeight)
        setDefaultLineWeight(int(number));
    else
        values()[variable->name] = number;
    if (ZvEditor *editor = zvedEditor())
        editor->fireSysVarChanged(variable->name, true);
    return ZvRes::kNormal;
}

void zvedSetVarReadable(const ZvString &name, bool readable)
{
    const AppVariable *variable = findVariable(name);
    if (!variable)
        return;
    if (readable)
        unreadable().erase(variable->name);
    else
        unreadable().insert(variable->name);
}

void zvedSetBlockEditorOpen(bool open)
{
    if (s_isBlockEditorOpen == open)
        return;
    s_isBlockEditorOpen = open;
    if (ZvEditor *editor = zvedEditor())
        editor->fireSysVarChanged(L"BLOCKEDITOR", true);
}

void zvedVarList(std::vector<ZvEdVarInfo> &variables)
{
    variables.clear();
    for (const AppVariable &variable : kVariables)
        variables.push_back({variable.name, variable.type, variable.readOnly, false});
    if (const ZvDbDatabase *database = zvcoreCurrentDatabase()) {
        ZvArray<ZvString> names;
        database->variableNames(names);
        for (const ZvString &name : names) {
            ZvResBuf value;
            if (database->getVariable(name, value) != Zv::eOk)
                continue;
            variables.push_back({name, value.restype, false, true});
            if (value.restype == ZvRes::kText)
                zvutDelString(value.resval.rstring);
        }
    }
    std::sort(variables.begin(), variables.end(),
              [](const ZvEdVarInfo &a, const ZvEdVarInfo &b) { return a.name.compareNoCase(b.name) < 0; });
}

ZvString zvedVarText(const ZvString &name)
{
    ZvResBuf *value = zvutNewRb(ZvRes::kNone);
    ZvString text;
    if (zvedGetVar(name, value) == ZvRes::kNormal) {
        switch (value->restype) {
        case ZvRes::kShort:
        case ZvRes::kLong:
            text = ZvString(std::to_string((long long)(value->number())).c_str());
            break;
        case ZvRes::kReal:
            text = ZvString(shortest(value->resval.rreal).c_str());
            break;
        case ZvRes::kPoint2d:
        case ZvRes::kPoint3d:
            for (int i = 0; i < (value->restype == ZvRes::kPoint2d ? 2 : 3); ++i)
                text += ZvString(((i ? "," : "") + shortest(value->resval.rpoint[i])).c_str());
            break;
        case ZvRes::kObjectId: {
            char buffer[24];
            const auto result = std::to_chars(buffer, buffer + sizeof buffer, value->getObjectId().handle(), 16);
            text = ZvString(std::string(buffer, result.ptr).c_str());
            break;
        }
        default:
            text = value->text();
        }
    }
    zvutRelRb(value);
    return text;
}

int zvedSetVarText(const ZvString &name, const ZvString &text)
{
    ZvResBuf *value = zvutNewRb(ZvRes::kNone);
    int result = zvedGetVar(name, value);
    if (result == ZvRes::kNormal) {
        const std::string plain = text.toStdString();
        double number = 0.0;
        switch (value->restype) {
        case ZvRes::kShort:
        case ZvRes::kLong:
        case ZvRes::kReal:
            result = parseReal(plain, number) ? ZvRes::kNormal : ZvRes::kError;
            value->restype = ZvRes::kReal;
            value->resval.rreal = number;
            break;
        case ZvRes::kPoint2d:
        case ZvRes::kPoint3d: {
            std::size_t from = 0;
            for (int i = 0; i < 3 && result == ZvRes::kNormal; ++i) {
                const std::size_t comma = plain.find(',', from);
                if (!parseReal(plain.substr(from, comma == std::string::npos ? comma : comma - from), value->resval.rpoint[i]))
                    result = ZvRes::kError;
                if (comma == std::string::npos)
                    break;
                from = comma + 1;
            }
            break;
        }
        case ZvRes::kText:
            zvutDelString(value->resval.rstring);
            value->resval.rstring = zvutNewString(text.wstr());
            break;
        default:
            result = ZvRes::kError;
        }
        if (result == ZvRes::kNormal)
            result = zvedSetVar(name, value);
    }
    zvutRelRb(value);
    return result;
}
