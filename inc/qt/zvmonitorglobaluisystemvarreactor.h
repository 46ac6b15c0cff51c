// SPDX-License-Identifier: MIT
#ifndef ZVMONITORGLOBALUISYSTEMVARREACTOR_H
#define ZVMONITORGLOBALUISYSTEMVARREACTOR_H

#include "zvglobaluireactorhelp.h"

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "db/zvdbreactor.h"

#include <memory>

class CZvQtControlHelp;

/// The update bus: turns what editor, documents and drawings report into notices for the controls.
///
/// The host makes exactly one, hands it to the controls through the service of ZvQtUpdateBusService, and deletes it when
/// it unloads the library. Databases are joined as their documents are created: a drawing that was open before is not
/// heard of.
///
/// A notice is delivered at once, to all receivers in the order in which they joined, or not at all. Dropping is what
/// keeps the traffic bearable, and the end of a command makes up for it:
///
/// - without an open document nothing is delivered;
/// - switched off (see enableUpdateUI()), only the end of a command gets through;
/// - system variables and objects are not told of while a command runs (also a nested one's caller: of several ends the
///   first counts), while "CMDACTIVE" is above 0, and while a notice of an object or of the selection is on its way;
/// - a viewport's record is not told of while something is selected.
///
/// Before a notice goes out the summaries of the selection that the receivers lent are brought up to date, by one scan
/// for all of them; equal selection and equal drawing need none.
///
/// Everything runs on the main thread. Receivers may come and go, and raise further notices, inside a delivery.
class ZV_EXPORT ZvMonitorGlobalUISystemVarReactor : public ZvStaticRxObject<ZvEditorReactor>,
                                                    public ZvStaticRxObject<ZvApDocManagerReactor>,
                                                    public ZvStaticRxObject<ZvDbDatabaseReactor>,
                                                    public ZvStaticRxObject<ZvDbLayoutManagerReactor>
{
public:
    /// Calls loadReactor().
    ZvMonitorGlobalUISystemVarReactor();
    /// Calls unloadReactor() and leaves the drawings that are open. Receivers and summaries are not touched.
    ~ZvMonitorGlobalUISystemVarReactor() override;
    ZvMonitorGlobalUISystemVarReactor(const ZvMonitorGlobalUISystemVarReactor &) = delete;
    ZvMonitorGlobalUISystemVarReactor &operator=(const ZvMonitorGlobalUISystemVarReactor &) = delete;

    /// Joins editor, document manager and layout manager; what is absent is left out.
    void loadReactor();
    /// Leaves them. The drawings that were joined stay joined.
    void unloadReactor();

    /// The master switch. Each new document switches it off; the host switches it on when the document is ready. No
    /// notice is made up for.
    void enableUpdateUI(bool enable);
    /// Delivers a notice, also the host's own. For the kinds kNoticeHostFirst and kNoticeHostSecond the summaries stay as
    /// the last notice left them.
    void notifyUpdateUI(const CZvGlobalUIReactorHelp &notice);

    /// Not null, not owned. Adding one twice keeps one. One added during a delivery takes part in it.
    void addUpdateUIReceiver(CZvQtControlHelp *receiver);
    /// Removing an absent one is nothing. The order of the others is kept; when one is removed during a delivery that has
    /// reached it, the receiver behind it misses the notice.
    void removeUpdateUIReceiver(CZvQtControlHelp *receiver);

    void commandWillStart(const ZvString &name) override;
    void commandEnded(const ZvString &name) override;
    /// Raises nothing; system variables and objects are told of again.
    void commandCancelled(const ZvString &name) override;
    void sysVarChanged(const ZvString &name, bool success) override;
    void pickfirstModified() override;
    /// Raises kNoticeLayoutSwitched, without the name.
    void layoutSwitched(const ZvString &layoutName) override;

    void documentCreated(ZvApDocument *document) override;
    void documentToBeDestroyed(ZvApDocument *document) override;
    /// Nothing.
    void documentDestroyed(const ZvString &fileName) override;
    /// Raises kNoticeDocumentCurrent.
    void documentBecameCurrent(ZvApDocument *document) override;
    /// Nothing.
    void documentToBeActivated(ZvApDocument *document) override;

    void objectAppended(const ZvDbDatabase *database, const ZvDbObject *object) override;
    void objectModified(const ZvDbDatabase *database, const ZvDbObject *object) override;
    void objectErased(const ZvDbDatabase *database, const ZvDbObject *object, bool erased) override;

private:
    struct MonitorState;

    bool isIdle() const;
    void notifyDelivering(const CZvGlobalUIReactorHelp &notice);

    const std::unique_ptr<MonitorState> m_state;
};

#endif
