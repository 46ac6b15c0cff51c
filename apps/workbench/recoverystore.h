// SPDX-License-Identifier: MIT
#ifndef RECOVERYSTORE_H
#define RECOVERYSTORE_H

#include <QDateTime>
#include <QString>
#include <QVector>

#include <map>
#include <memory>

class QLockFile;

/// Copies of drawings that are not saved yet, kept where a program that is killed leaves them behind. Knows files only.
///
/// Each running program has a folder of its own in a common one. A lock in it tells whether the program still runs: the
/// copies of one that does not are leftovers, to be offered to the user. The folder goes away at a proper end.
class RecoveryStore
{
public:
    struct Leftover
    {
        QString copy; ///< The file with the drawing.
        QString path; ///< The drawing's own file; empty for one that was never saved.
        QString title;
        QDateTime written;
    };

    /// An empty \a folder keeps nothing.
    explicit RecoveryStore(const QString &folder);
    /// Drops this program's own copies.
    ~RecoveryStore();
    RecoveryStore(const RecoveryStore &) = delete;
    RecoveryStore &operator=(const RecoveryStore &) = delete;

    /// Copies can be kept. Otherwise error() says why not.
    bool isReady() const { return m_lock != nullptr; }
    QString error() const { return m_error; }

    /// Where the copy of drawing number \a number belongs.
    QString copyPath(int number) const;
    /// Tells what the copy is of. Without it the copy is no leftover. False with error() when that cannot be written.
    bool describe(int number, const QString &path, const QString &title);
    void drop(int number);

    /// What programs that no longer run have left behind, oldest first. From now on no other program is offered them.
    QVector<Leftover> takeLeftovers();
    void drop(const Leftover &leftover);

private:
    QString descriptionPath(int number) const;

    QString m_common;
    QString m_own;
    QString m_error;
    std::unique_ptr<QLockFile> m_lock;
    std::map<QString, std::unique_ptr<QLockFile>> m_taken; // by folder with leftovers
};

#endif
