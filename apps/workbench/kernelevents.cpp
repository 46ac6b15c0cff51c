// SPDX-License-Identifier: MIT
#include "kernelevents.h"

KernelEvents::KernelEvents(QObject *parent) : QObject(parent), m_editorListener(*this), m_documentListener(*this)
{
    if (ZvEditor *editor = zvedEditor())
        editor->addReactor(&m_editorListener);
    if (ZvApDocManager *documents = zvDocManagerPtr())
        documents->addReactor(&m_documentListener);
}

KernelEvents::~KernelEvents()
{
    if (ZvEditor *editor = zvedEditor())
        editor->removeReactor(&m_editorListener);
    if (ZvApDocManager *documents = zvDocManagerPtr())
        documents->removeReactor(&m_documentListener);
}

DatabaseWatcher::DatabaseWatcher(ZvDbDatabase *database, QObject *parent)
    : QObject(parent), m_database(database), m_listener(*this)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        const bool picture = m_picture;
        m_picture = false;
        Q_EMIT changed(picture);
    });
    if (m_database)
        m_database->addReactor(&m_listener);
}

DatabaseWatcher::~DatabaseWatcher()
{
    if (m_database)
        m_database->removeReactor(&m_listener);
}

void DatabaseWatcher::note(bool picture)
{
    // Called for every object of a large change: nothing here may cost.
    m_picture = m_picture || picture;
    if (!m_timer.isActive())
        m_timer.start();
}

void DatabaseWatcher::Listener::headerVariableChanged(const ZvDbDatabase *, const ZvString &name)
{
    static const char *const visible[]
        = {"LTSCALE", "LWDISPLAY", "PDMODE", "PDSIZE", "PSLTSCALE", "MSLTSCALE", "FILLMODE", "QTEXTMODE"};
    bool picture = false;
    for (const char *variable : visible)
        picture = picture || name.compareNoCase(variable) == 0;
    m_watcher.note(picture);
}
