// SPDX-License-Identifier: MIT
#include "zvmonitorglobaluisystemvarreactor.h"

#include "private/zvcurrentdrawing.h"
#include "zvodasetting.h"
#include "zvqtcontrolhelp.h"

#include "base/zvarray.h"
#include "base/zvos.h"
#include "base/zvregistry.h"
#include "core/zvsystem.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"

using ZvGlobalUIReactorHelp::SPickFirstInfo;

struct ZvMonitorGlobalUISystemVarReactor::MonitorState
{
    ZvArray<CZvQtControlHelp *> receivers {0, 8}; // not owned
    ZvArray<SPickFirstInfo *> pickFirstInfos {0, 8}; // not owned: members of the receivers
    std::uint64_t lastTick = zvutTickCount(); // for the debugger: nothing reads it
    bool enabled = true;
    bool commandRunning = false;
    bool delivering = false; // a notice of an object or of the selection
    bool documentChanging = false; // for the debugger: nothing reads it
};

namespace {

/// Sets a flag at the end of a scope, also when a receiver throws.
class FlagAtEnd
{
public:
    FlagAtEnd(bool &flag, bool value) : m_flag(flag), m_value(value) { }
    ~FlagAtEnd() { m_flag = m_value; }
    Q_DISABLE_COPY(FlagAtEnd)

private:
    bool &m_flag;
    const bool m_value;
};

CZvGlobalUIReactorHelp noticeOf(ZvNoticeKind kind)
{
    CZvGlobalUIReactorHelp notice;
    notice.kind = kind;
    return notice;
}

CZvGlobalUIReactorHelp objectNotice(const ZvDbDatabase *database, const ZvDbObject *object)
{
    CZvGlobalUIReactorHelp notice = noticeOf(kNoticeObject);
    notice.object = object;
    notice.database = database;
    return notice;
}

/// Calls \a act with each reactor list of the kernel that is there.
template<class Editor, class Documents, class Layouts>
void visitReactorLists(Editor editorList, Documents documentList, Layouts layoutList)
{
    if (auto *editor = zvrxCast<ZvEditor>(zvrxSysRegistry()->at(L"ZvEditor")))
        editorList(*editor);
    CHcSystem *system = CHcSystem::instance();
    if (!system)
        return;
    if (ZvApDocManager *documents = system->docManager())
        documentList(*documents);
    if (ZvApApplication *application = system->application()) {
        // The layout manager is counted, and must not go while it is being told.
        if (const ZvSmartPtr<ZvDbLayoutManager> layouts = application->layoutManager())
            layoutList(*layouts);
    }
}

/// Drawings are joined one by one and would tell a listener that is gone.
void leaveOpenDrawings(ZvDbDatabaseReactor *reactor)
{
    const ZvApDocManager *documents = zvDocManagerPtr();
    for (int i = 0; documents && i < documents->documentCount(); ++i) {
        if (ZvDbDatabase *database = documents->documentAt(i)->database())
            database->removeReactor(reactor);
    }
}

} // namespace

ZvMonitorGlobalUISystemVarReactor::ZvMonitorGlobalUISystemVarReactor() : m_state(new MonitorState)
{
    loadReactor();
}

ZvMonitorGlobalUISystemVarReactor::~ZvMonitorGlobalUISystemVarReactor()
{
    unloadReactor();
    leaveOpenDrawings(this);
}

void ZvMonitorGlobalUISystemVarReactor::loadReactor()
{
    visitReactorLists([this](ZvEditor &editor) { editor.addReactor(this); },
                      [this](ZvApDocManager &documents) { documents.addReactor(this); },
                      [this](ZvDbLayoutManager &layouts) { layouts.addReactor(this); });
}

void ZvMonitorGlobalUISystemVarReactor::unloadReactor()
{
    visitReactorLists([this](ZvEditor &editor) { editor.removeReactor(this); },
                      [this](ZvApDocManager &documents) { documents.removeReactor(this); },
                      [this](ZvDbLayoutManager &layouts) { layouts.removeReactor(this); });
}

void ZvMonitorGlobalUISystemVarReactor::enableUpdateUI(bool enable)
{
    m_state->enabled = enable;
}

void ZvMonitorGlobalUISystemVarReactor::notifyUpdateUI(const CZvGlobalUIReactorHelp &notice)
{
    const CHcSystem *system = CHcSystem::instance();
    const ZvApDocManager *documents = system ? system->docManager() : nullptr;
    if (!documents || documents->documentCount() < 1 || !m_state->enabled)
        return;

    if (notice.kind != kNoticeHostFirst && notice.kind != kNoticeHostSecond) {
        const ZvArray<SPickFirstInfo *> &infos = m_state->pickFirstInfos;
        for (int i = 0; i < infos.length(); ++i) {
            if (SPickFirstInfo *info = infos.asArrayPtr()[i])
                info->reset();
        }
        ZevaUISetting::getPickFirstInfos(infos);
    }

    // The length is read at each step: receivers come and go in here. One that goes moves the next into its place, which
    // misses the notice; hosts count on the order of delivery being that of the list at every moment.
    const ZvArray<CZvQtControlHelp *> &receivers = m_state->receivers;
    for (int i = 0; i < receivers.length(); ++i) {
        if (CZvQtControlHelp *receiver = receivers.asArrayPtr()[i])
            receiver->acceptUpdateUI(notice);
    }
    m_state->documentChanging = false;
}

void ZvMonitorGlobalUISystemVarReactor::addUpdateUIReceiver(CZvQtControlHelp *receiver)
{
    if (!m_state->receivers.contains(receiver))
        m_state->receivers.append(receiver);
    SPickFirstInfo *info = receiver->pickFirstInfo;
    if (info && !m_state->pickFirstInfos.contains(info))
        m_state->pickFirstInfos.append(info);
}

void ZvMonitorGlobalUISystemVarReactor::removeUpdateUIReceiver(CZvQtControlHelp *receiver)
{
    m_state->receivers.remove(receiver);
    if (SPickFirstInfo *info = receiver->pickFirstInfo)
        m_state->pickFirstInfos.remove(info);
}

bool ZvMonitorGlobalUISystemVarReactor::isIdle() const
{
    return !m_state->commandRunning && !m_state->delivering && !zvIsCommandActive();
}

void ZvMonitorGlobalUISystemVarReactor::notifyDelivering(const CZvGlobalUIReactorHelp &notice)
{
    m_state->delivering = true;
    // Cleared, not put back: the end of an inner notice lets through what the outer one would have kept out.
    const FlagAtEnd clear(m_state->delivering, false);
    notifyUpdateUI(notice);
}

// ---- the editor

void ZvMonitorGlobalUISystemVarReactor::commandWillStart(const ZvString &)
{
    m_state->lastTick = 0;
    m_state->commandRunning = true;
}

void ZvMonitorGlobalUISystemVarReactor::commandEnded(const ZvString &name)
{
    m_state->lastTick = 0;
    // No count is kept: of nested commands the first end clears it.
    m_state->commandRunning = false;
    CZvGlobalUIReactorHelp notice = noticeOf(kNoticeCommandEnded);
    notice.name = name;
    // The one notice that gets through while updates are off: controls live on it.
    const FlagAtEnd restore(m_state->enabled, m_state->enabled);
    m_state->enabled = true;
    notifyUpdateUI(notice);
}

void ZvMonitorGlobalUISystemVarReactor::commandCancelled(const ZvString &)
{
    m_state->lastTick = 0;
    m_state->commandRunning = false;
}

void ZvMonitorGlobalUISystemVarReactor::sysVarChanged(const ZvString &name, bool)
{
    if (!m_state->enabled || !isIdle())
        return;
    CZvGlobalUIReactorHelp notice = noticeOf(kNoticeSysVar);
    notice.name = name;
    notifyUpdateUI(notice);
}

void ZvMonitorGlobalUISystemVarReactor::pickfirstModified()
{
    m_state->lastTick = 0;
    notifyDelivering(noticeOf(kNoticePickFirst));
}

void ZvMonitorGlobalUISystemVarReactor::layoutSwitched(const ZvString &)
{
    m_state->lastTick = 0;
    notifyUpdateUI(noticeOf(kNoticeLayoutSwitched));
}

// ---- the documents

void ZvMonitorGlobalUISystemVarReactor::documentCreated(ZvApDocument *)
{
    m_state->enabled = false; // until the host says that the document is ready
    if (ZvDbDatabase *database = curDatabase())
        database->addReactor(this);
}

void ZvMonitorGlobalUISystemVarReactor::documentToBeDestroyed(ZvApDocument *)
{
    m_state->documentChanging = true;
    // The current drawing, not the document's: a drawing that dies while another is current lets go of us by itself.
    if (ZvDbDatabase *database = curDatabase())
        database->removeReactor(this);
}

void ZvMonitorGlobalUISystemVarReactor::documentDestroyed(const ZvString &) { }

void ZvMonitorGlobalUISystemVarReactor::documentBecameCurrent(ZvApDocument *)
{
    m_state->lastTick = 0;
    m_state->documentChanging = true;
    notifyUpdateUI(noticeOf(kNoticeDocumentCurrent));
}

void ZvMonitorGlobalUISystemVarReactor::documentToBeActivated(ZvApDocument *) { }

// ---- the drawings

void ZvMonitorGlobalUISystemVarReactor::objectAppended(const ZvDbDatabase *database, const ZvDbObject *object)
{
    if (m_state->enabled && isIdle())
        notifyDelivering(objectNotice(database, object));
}

void ZvMonitorGlobalUISystemVarReactor::objectModified(const ZvDbDatabase *database, const ZvDbObject *object)
{
    if (!object || !object->isModified() || !m_state->enabled || !isIdle())
        return;
    const bool hasSelection = ZevaUISetting::hasSelected();
    const ZvRxClass *cls = object->isA();
    if (hasSelection && cls->isDerivedFrom(ZvDbViewportTableRecord::desc()))
        return;
    CZvGlobalUIReactorHelp notice = objectNotice(database, object);
    // Of records the layer's own class only, no class derived from it.
    notice.affectsSelection =
        hasSelection && (cls->isDerivedFrom(ZvDbEntity::desc()) || cls == ZvDbLayerTableRecord::desc());
    notifyDelivering(notice);
}

void ZvMonitorGlobalUISystemVarReactor::objectErased(const ZvDbDatabase *database, const ZvDbObject *object, bool)
{
    if (m_state->enabled && isIdle())
        notifyDelivering(objectNotice(database, object));
}
