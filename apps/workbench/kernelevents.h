// SPDX-License-Identifier: MIT
#ifndef KERNELEVENTS_H
#define KERNELEVENTS_H

#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "db/zvdbreactor.h"

#include <QObject>
#include <QTimer>

/// Turns the notices of editor and document manager into signals. Needs the core started, and must end before it stops.
class KernelEvents : public QObject
{
    Q_OBJECT
public:
    explicit KernelEvents(QObject *parent = nullptr);
    ~KernelEvents() override;

Q_SIGNALS:
    void documentCreated(ZvApDocument *document);
    void documentToBeDestroyed(ZvApDocument *document);
    void documentDestroyed();
    void documentBecameCurrent(ZvApDocument *document);
    void commandStarted();
    void commandDone();
    void selectionChanged();
    void layoutSwitched();

private:
    class EditorListener : public ZvStaticRxObject<ZvEditorReactor>
    {
    public:
        explicit EditorListener(KernelEvents &events) : m_events(events) { }
        void commandWillStart(const ZvString &) override { Q_EMIT m_events.commandStarted(); }
        void commandEnded(const ZvString &) override { Q_EMIT m_events.commandDone(); }
        void commandCancelled(const ZvString &) override { Q_EMIT m_events.commandDone(); }
        void commandFailed(const ZvString &) override { Q_EMIT m_events.commandDone(); }
        void pickfirstModified() override { Q_EMIT m_events.selectionChanged(); }
        void layoutSwitched(const ZvString &) override { Q_EMIT m_events.layoutSwitched(); }

    private:
        KernelEvents &m_events;
    };
    class DocumentListener : public ZvStaticRxObject<ZvApDocManagerReactor>
    {
    public:
        explicit DocumentListener(KernelEvents &events) : m_events(events) { }
        void documentCreated(ZvApDocument *document) override { Q_EMIT m_events.documentCreated(document); }
        void documentToBeDestroyed(ZvApDocument *document) override { Q_EMIT m_events.documentToBeDestroyed(document); }
        void documentDestroyed(const ZvString &) override { Q_EMIT m_events.documentDestroyed(); }
        void documentBecameCurrent(ZvApDocument *document) override { Q_EMIT m_events.documentBecameCurrent(document); }

    private:
        KernelEvents &m_events;
    };

    EditorListener m_editorListener;
    DocumentListener m_documentListener;
};

/// Watches one drawing and tells, gathered until the event loop is idle, that something in it changed.
class DatabaseWatcher : public QObject
{
    Q_OBJECT
public:
    /// \a database may be null.
    explicit DatabaseWatcher(ZvDbDatabase *database, QObject *parent = nullptr);
    ~DatabaseWatcher() override;

Q_SIGNALS:
    /// \a picture: what is drawn may look different. Otherwise only settings have changed.
    void changed(bool picture);

private:
    class Listener : public ZvStaticRxObject<ZvDbDatabaseReactor>
    {
    public:
        explicit Listener(DatabaseWatcher &watcher) : m_watcher(watcher) { }
        void objectAppended(const ZvDbDatabase *, const ZvDbObject *) override { m_watcher.note(true); }
        void objectModified(const ZvDbDatabase *, const ZvDbObject *) override { m_watcher.note(true); }
        void objectErased(const ZvDbDatabase *, const ZvDbObject *, bool) override { m_watcher.note(true); }
        void headerVariableChanged(const ZvDbDatabase *, const ZvString &name) override;
        void databaseToBeDestroyed(const ZvDbDatabase *) override { m_watcher.m_database = nullptr; }

    private:
        DatabaseWatcher &m_watcher;
    };
    void note(bool picture);

    ZvDbDatabase *m_database; // not owned
    Listener m_listener;
    QTimer m_timer;
    bool m_picture = false;
};

#endif
