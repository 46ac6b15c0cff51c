// SPDX-License-Identifier: MIT
#include "zvdbundo_p.h"

#include "zvdbdatabase_p.h"

#include <algorithm>
#include <iterator>

ZvDbChange::Payload::~Payload() = default;

namespace {

/// What is to be told of an object once all changes of a step are back.
struct Notice
{
    std::uint32_t index = 0;
    bool wasErased = false;
    bool created = false;
    bool modified = false;
};

/// Exchanges changes with what is there, and gathers one notice an object.
class Exchange
{
public:
    explicit Exchange(ZvDbDatabasePrivate &database) : m_database(database) { }

    void apply(ZvDbChange &change)
    {
        switch (change.kind) {
        case ZvDbChange::kVariable:
            exchangeVariable(change);
            return;
        case ZvDbChange::kUcsHistory:
            exchangeUcs(static_cast<ZvDbUcsPayload &>(*change.payload));
            return;
        default:
            break;
        }
        ZvDbStub &stub = m_database.stubs[change.index];
        if (stub.has(ZvDbStub::kOpenForWrite))
            stub.set(ZvDbStub::kModified, true);
        Notice &notice = noticeOf(change.index);
        switch (change.kind) {
        case ZvDbChange::kCreated:
            notice.created = true;
            m_database.setErased(stub, !stub.isErased());
            break;
        case ZvDbChange::kErased:
            m_database.setErased(stub, !stub.isErased());
            break;
        case ZvDbChange::kProperties:
            notice.modified = true;
            std::swap(change.properties, m_database.propertyNumbers[change.index]);
            break;
        case ZvDbChange::kXData:
            notice.modified = true;
            exchangeXData(change);
            break;
        default:
            notice.modified = true;
            exchangeState(*stub.object, static_cast<ZvDbStatePayload &>(*change.payload));
            break;
        }
        const bool fileChanged = stub.has(ZvDbStub::kFileChanged);
        m_database.touch(change.index);
        // What is as the file has it again is not written anew.
        stub.set(ZvDbStub::kFileChanged, change.fileChanged);
        change.fileChanged = fileChanged;
    }

    void deliver()
    {
        for (const Notice &notice : m_notices) {
            const ZvDbStub &stub = m_database.stubs[notice.index];
            if (stub.has(ZvDbStub::kOpenForWrite))
                continue; // its close will tell
            const bool erased = stub.isErased();
            if (erased != notice.wasErased) {
                if (!erased && notice.created)
                    m_database.notifyAppended(notice.index);
                else
                    m_database.notifyErased(notice.index, erased);
            }
            if (notice.modified && !notice.created && !m_database.stubs[notice.index].isErased())
                m_database.notifyModified(notice.index);
        }
        for (const char *variable : m_variables)
            m_database.notifyVariable(variable);
    }

private:
    Notice &noticeOf(std::uint32_t index)
    {
        const auto found = m_positions.emplace(index, m_notices.size());
        if (found.second) {
            Notice notice;
            notice.index = index;
            notice.wasErased = m_database.stubs[index].isErased();
            m_notices.push_back(notice);
        }
        return m_notices[found.first->second];
    }

    void exchangeState(ZvDbObject &object, ZvDbStatePayload &payload)
    {
        std::unique_ptr<ZvDbObject> now = ZvDbObjectAccess::copyState(object);
        ZvDbObjectAccess::restoreState(object, *payload.state);
        if (object.isKindOf(ZvDbSymbolTableRecord::desc())) {
            const ZvString name = static_cast<ZvDbSymbolTableRecord &>(object).name();
            if (name != static_cast<ZvDbSymbolTableRecord &>(*now).name())
                m_database.renameRecord(static_cast<ZvDbSymbolTableRecord &>(object), name);
        }
        payload.state = std::move(now);
    }

    void exchangeXData(ZvDbChange &change)
    {
        ZvDbXDataPayload &payload = static_cast<ZvDbXDataPayload &>(*change.payload);
        const auto it = m_database.xdata.find(change.index);
        const bool isSet = it != m_database.xdata.end();
        const ZvDbSharedChain chain = isSet ? it->second : ZvDbSharedChain();
        if (payload.isSet)
            m_database.xdata[change.index] = payload.chain;
        else
            m_database.xdata.erase(change.index);
        payload.isSet = isSet;
        payload.chain = chain;
    }

    void exchangeVariable(ZvDbChange &change)
    {
        ZvDbVariablePayload &before = static_cast<ZvDbVariablePayload &>(*change.payload);
        std::swap(before.value, m_database.variables[change.index]);
        const bool isInFile = m_database.variableInFile[change.index];
        m_database.variableInFile[change.index] = before.isInFile;
        before.isInFile = isInFile;
        m_database.touchDatabase();
        const char *name = zvdbVariableNotice(int(change.index));
        if (std::find(m_variables.begin(), m_variables.end(), name) == m_variables.end())
            m_variables.push_back(name);
    }

    void exchangeUcs(ZvDbUcsPayload &payload)
    {
        payload.systems.swap(m_database.ucsHistory[payload.paper]);
        m_database.touchDatabase();
    }

    ZvDbDatabasePrivate &m_database;
    std::vector<Notice> m_notices;
    std::unordered_map<std::uint32_t, std::size_t> m_positions;
    std::vector<const char *> m_variables; // each name stands at one address
};

} // namespace

// ---- what goes on record

void ZvDbUndo::noteState(ZvDbStub &stub)
{
    if (suspended || stub.serial == std::uint16_t(m_serial))
        return;
    if (m_levels.empty())
        push(Level::kImplicit, ZvString());
    stub.serial = std::uint16_t(m_serial);
    // Tables only ever grow: what was added goes when its record is erased.
    if (ZvDbClassTable::instance().at(stub.cls).isSymbolTable)
        return;
    const std::uint32_t index = ZvDbStubTable::indexOf(&stub);
    if (!m_levels.back().states.insert(index).second)
        return;
    auto payload = std::make_unique<ZvDbStatePayload>();
    payload->state = ZvDbObjectAccess::copyState(*stub.object);
    if (!payload->state)
        return;
    ZvDbChange change;
    change.kind = ZvDbChange::kState;
    change.fileChanged = stub.has(ZvDbStub::kFileChanged);
    change.index = index;
    change.payload = std::move(payload);
    m_current.changes.push_back(std::move(change));
}

void ZvDbUndo::note(ZvDbChange &&change)
{
    if (suspended)
        return;
    if (m_levels.empty())
        push(Level::kImplicit, ZvString());
    if (change.kind != ZvDbChange::kVariable && change.kind != ZvDbChange::kUcsHistory)
        change.fileChanged = m_database.stubs[change.index].has(ZvDbStub::kFileChanged);
    // An object's creation puts its state on record: undone, it is gone, whatever was changed in it.
    if (change.kind == ZvDbChange::kCreated)
        m_levels.back().states.insert(change.index);
    m_current.changes.push_back(std::move(change));
}

// ---- steps and frames

void ZvDbUndo::push(Level::Kind kind, const ZvString &name)
{
    if (m_current.name.isEmpty())
        m_current.name = name;
    m_levels.push_back({kind, m_current.changes.size(), {}});
    // 0 is kept for objects whose state is not on record.
    if (std::uint16_t(++m_serial) == 0)
        ++m_serial;
}

void ZvDbUndo::pop()
{
    Level level = std::move(m_levels.back());
    m_levels.pop_back();
    if (std::uint16_t(++m_serial) == 0)
        ++m_serial;
    if (m_levels.empty()) {
        commit();
        return;
    }
    Level &outer = m_levels.back();
    if (outer.states.empty())
        outer.states.swap(level.states);
    else
        outer.states.insert(level.states.begin(), level.states.end());
}

void ZvDbUndo::beginStep(const ZvString &name)
{
    push(Level::kStep, name);
}

void ZvDbUndo::endStep()
{
    while (!m_levels.empty() && m_levels.back().kind == Level::kFrame)
        pop(); // frames that were left open end with their step
    if (!m_levels.empty() && m_levels.back().kind == Level::kStep)
        pop();
    endImplicitStep();
}

void ZvDbUndo::beginFrame()
{
    push(Level::kFrame, ZvString());
}

void ZvDbUndo::endFrame()
{
    if (!m_levels.empty() && m_levels.back().kind == Level::kFrame)
        pop();
    endImplicitStep();
}

void ZvDbUndo::abortFrame()
{
    if (m_levels.empty() || m_levels.back().kind != Level::kFrame)
        return;
    std::vector<ZvDbChange> changes;
    const std::size_t mark = m_levels.back().mark;
    changes.assign(std::make_move_iterator(m_current.changes.begin() + std::ptrdiff_t(mark)),
                   std::make_move_iterator(m_current.changes.end()));
    m_current.changes.resize(mark);
    m_levels.back().states.clear();
    pop();
    endImplicitStep();

    const ZvDbDatabasePtr hold(&m_database.q);
    Exchange exchange(m_database);
    for (auto it = changes.rbegin(); it != changes.rend(); ++it)
        exchange.apply(*it);
    settleModified();
    exchange.deliver();
}

void ZvDbUndo::settleModified()
{
    if (isAsSaved())
        m_database.modified = false;
}

int ZvDbUndo::frameDepth() const
{
    return int(std::count_if(m_levels.begin(), m_levels.end(),
                             [](const Level &level) { return level.kind == Level::kFrame; }));
}

void ZvDbUndo::endImplicitStep()
{
    if (m_levels.size() == 1 && m_levels.back().kind == Level::kImplicit && m_database.writeCount == 0)
        pop();
}

void ZvDbUndo::commit()
{
    Step step = std::move(m_current);
    m_current = Step();
    if (step.changes.empty())
        return;
    m_undone.clear();
    if (m_savedSteps > std::ptrdiff_t(m_done.size()))
        m_savedSteps = kNowhere; // it lay among the steps that can no longer be redone
    if (!m_mergeKey.isEmpty() && !m_done.empty() && m_done.back().mergeKey == m_mergeKey) {
        if (isAsSaved())
            m_savedSteps = kNowhere; // the saved state lies inside the joined step now
        std::vector<ZvDbChange> &changes = m_done.back().changes;
        changes.insert(changes.end(), std::make_move_iterator(step.changes.begin()),
                       std::make_move_iterator(step.changes.end()));
        return;
    }
    step.mergeKey = m_mergeKey;
    m_done.push_back(std::move(step));
}

void ZvDbUndo::setMergeKey(const ZvString &key)
{
    m_mergeKey = key;
    if (key.isEmpty() && !m_done.empty())
        m_done.back().mergeKey = key;
}

ZvString ZvDbUndo::exchangeMergeKey(const ZvString &key)
{
    const ZvString before = m_mergeKey;
    m_mergeKey = key;
    return before;
}

// ---- the history

bool ZvDbUndo::undo()
{
    if (!canUndo())
        return false;
    const ZvDbDatabasePtr hold(&m_database.q);
    Exchange exchange(m_database);
    Step step = std::move(m_done.back());
    m_done.pop_back();
    step.mergeKey = ZvString();
    for (auto it = step.changes.rbegin(); it != step.changes.rend(); ++it)
        exchange.apply(*it);
    m_undone.push_back(std::move(step));
    settleModified();
    exchange.deliver();
    return true;
}

bool ZvDbUndo::redo()
{
    if (!canRedo())
        return false;
    const ZvDbDatabasePtr hold(&m_database.q);
    Exchange exchange(m_database);
    Step step = std::move(m_undone.back());
    m_undone.pop_back();
    for (ZvDbChange &change : step.changes)
        exchange.apply(change);
    m_done.push_back(std::move(step));
    settleModified();
    exchange.deliver();
    return true;
}

void ZvDbUndo::clear()
{
    m_done.clear();
    m_undone.clear();
    m_savedSteps = m_database.modified ? kNowhere : 0;
}
