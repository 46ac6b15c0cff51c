// SPDX-License-Identifier: MIT
#ifndef AUTOSAVE_H
#define AUTOSAVE_H

#include "core/zvapdocument.h"
#include "kernelevents.h"

#include <QObject>
#include <QTimer>

#include <map>

class MainWindow;
class RecoveryStore;

/// Writes a copy of each drawing that has changed into the recovery store, time and again, so that a program that is
/// killed loses little. Saved, unchanged and closed drawings have no copy. A copy is not a save: the drawing stays as
/// modified as it was.
class Autosave : public QObject
{
    Q_OBJECT
public:
    static constexpr int kDefaultSeconds = 30;

    /// Both must outlive the object. With \a seconds 0 copies are written on demand only.
    Autosave(MainWindow &window, RecoveryStore &store, int seconds);

    /// Writes what has changed since the last time. Waits for a moment where long work runs or an object is open.
    void writeCopies();
    /// A copy of the document as it is now is there.
    bool hasCopy(const ZvApDocument *document) const;

private:
    struct Copy
    {
        int number = 0;
        std::uint64_t stamp = 0; ///< Change stamp of the drawing when it was written.
        bool isWritten = false;
    };
    void writeCopy(ZvApDocument *document, Copy &copy);
    void forget(ZvApDocument *document);
    void tell(const QString &error);

    MainWindow &m_window;
    RecoveryStore &m_store;
    KernelEvents m_events;
    QTimer m_timer;
    std::map<const ZvApDocument *, Copy> m_copies;
    int m_lastNumber = 0;
    bool m_hasFailed = false;
};

#endif
