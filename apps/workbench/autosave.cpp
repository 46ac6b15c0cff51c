// SPDX-License-Identifier: MIT
#include "autosave.h"

#include "infobar.h"
#include "mainwindow.h"
#include "recoverystore.h"
#include "textforms.h"
#include "workprogress.h"

namespace {

constexpr int kRetry = 1000; // milliseconds until the next look when the moment was a bad one

} // namespace

Autosave::Autosave(MainWindow &window, RecoveryStore &store, int seconds) : m_window(window), m_store(store)
{
    connect(&m_events, &KernelEvents::documentToBeDestroyed, this, &Autosave::forget);
    connect(&m_timer, &QTimer::timeout, this, &Autosave::writeCopies);
    m_timer.setInterval(seconds * 1000);
    if (seconds > 0)
        m_timer.start();
    if (!store.error().isEmpty())
        tell(store.error());
}

void Autosave::writeCopies()
{
    if (!m_store.isReady())
        return;
    bool isLate = m_window.progress()->isRunning();
    const ZvApDocManager &documents = *zvDocManagerPtr();
    for (int i = 0; i < documents.documentCount() && !isLate; ++i) {
        ZvApDocument *document = documents.documentAt(i);
        ZvDbDatabase *database = document->database();
        if (!database)
            continue;
        if (!database->isModified()) {
            forget(document);
            continue;
        }
        isLate = database->openObjectCount() > 0;
        Copy &copy = m_copies[document];
        if (!isLate && (!copy.isWritten || copy.stamp != database->changeStamp()))
            writeCopy(document, copy);
    }
    if (isLate)
        QTimer::singleShot(kRetry, this, &Autosave::writeCopies);
}

void Autosave::writeCopy(ZvApDocument *document, Copy &copy)
{
    if (copy.number == 0)
        copy.number = ++m_lastNumber;
    const std::uint64_t stamp = document->database()->changeStamp();
    ZvDbFileReport report;
    if (document->database()->writeCopy(toZvString(m_store.copyPath(copy.number)), report) != Zv::eOk) {
        tell(toQString(report.message));
        return;
    }
    if (!m_store.describe(copy.number, toQString(document->fileName()), toQString(document->title()))) {
        tell(m_store.error());
        return;
    }
    copy.stamp = stamp;
    copy.isWritten = true;
    m_hasFailed = false;
}

bool Autosave::hasCopy(const ZvApDocument *document) const
{
    const auto copy = m_copies.find(document);
    return copy != m_copies.end() && copy->second.isWritten
        && copy->second.stamp == document->database()->changeStamp();
}

void Autosave::forget(ZvApDocument *document)
{
    const auto copy = m_copies.find(document);
    if (copy == m_copies.end())
        return;
    m_store.drop(copy->second.number);
    m_copies.erase(copy);
}

void Autosave::tell(const QString &error)
{
    // Once: it would come again with every copy.
    if (!m_hasFailed)
        m_window.infoBar()->showMessage(tr("Changes are not kept for recovery until you save."), error);
    m_hasFailed = true;
}
