// SPDX-License-Identifier: MIT
#include "recoverystore.h"

#include "wholefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QUuid>

#include <algorithm>

namespace {

const QLatin1String kLockName("lock");

/// Null where another program that runs has it.
std::unique_ptr<QLockFile> lockFolder(const QString &folder)
{
    auto lock = std::make_unique<QLockFile>(folder + QLatin1Char('/') + kLockName);
    lock->setStaleLockTime(0); // a program may run for weeks; only a dead one gives its lock up
    if (!lock->tryLock(0))
        return nullptr;
    return lock;
}

/// The lock's file goes last, so that no other program takes a folder that is going.
void removeFolder(QDir folder, QLockFile &lock)
{
    const QStringList files = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &file : files) {
        if (file != kLockName)
            folder.remove(file);
    }
    lock.unlock();
    folder.rmdir(folder.path());
}

} // namespace

RecoveryStore::RecoveryStore(const QString &folder) : m_common(folder)
{
    if (folder.isEmpty())
        return;
    m_own = folder + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (QDir().mkpath(m_own))
        m_lock = lockFolder(m_own);
    if (!m_lock)
        m_error = QCoreApplication::translate("RecoveryStore", "The folder %1 cannot be written.").arg(folder);
}

RecoveryStore::~RecoveryStore()
{
    if (m_lock)
        removeFolder(QDir(m_own), *m_lock);
}

QString RecoveryStore::copyPath(int number) const
{
    return QStringLiteral("%1/%2.dxf").arg(m_own).arg(number);
}

QString RecoveryStore::descriptionPath(int number) const
{
    return QStringLiteral("%1/%2.json").arg(m_own).arg(number);
}

bool RecoveryStore::describe(int number, const QString &path, const QString &title)
{
    const QJsonObject object = {
        {QStringLiteral("copy"), QFileInfo(copyPath(number)).fileName()},
        {QStringLiteral("path"), path},
        {QStringLiteral("title"), title},
        {QStringLiteral("written"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
    };
    QSaveFile file(descriptionPath(number));
    const QByteArray json = QJsonDocument(object).toJson();
    if (file.open(QIODevice::WriteOnly) && writeWhole(file, json))
        return true;
    m_error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    return false;
}

void RecoveryStore::drop(int number)
{
    // The description first: a copy alone is never offered, a description alone would offer nothing.
    QFile::remove(descriptionPath(number));
    QFile::remove(copyPath(number));
}

QVector<RecoveryStore::Leftover> RecoveryStore::takeLeftovers()
{
    QVector<Leftover> leftovers;
    if (m_common.isEmpty())
        return leftovers;
    const QStringList folders = QDir(m_common).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : folders) {
        const QDir folder(m_common + QLatin1Char('/') + name);
        const QStringList descriptions = folder.entryList({QStringLiteral("*.json")}, QDir::Files);
        // One without either is about to be set up by another program.
        if (folder.path() == m_own || (!folder.exists(kLockName) && descriptions.isEmpty()))
            continue;
        std::unique_ptr<QLockFile> lock = lockFolder(folder.path());
        if (!lock)
            continue;
        const int before = leftovers.size();
        for (const QString &description : descriptions) {
            QFile file(folder.filePath(description));
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
            Leftover leftover;
            leftover.copy = folder.filePath(QFileInfo(object.value(QLatin1String("copy")).toString()).fileName());
            leftover.path = object.value(QLatin1String("path")).toString();
            leftover.title = object.value(QLatin1String("title")).toString();
            leftover.written
                = QDateTime::fromString(object.value(QLatin1String("written")).toString(), Qt::ISODateWithMs);
            if (QFileInfo(leftover.copy).isFile())
                leftovers << leftover;
        }
        if (leftovers.size() > before)
            m_taken[folder.path()] = std::move(lock);
        else
            removeFolder(folder, *lock);
    }
    std::sort(leftovers.begin(), leftovers.end(),
              [](const Leftover &a, const Leftover &b) { return a.written < b.written; });
    return leftovers;
}

void RecoveryStore::drop(const Leftover &leftover)
{
    const QFileInfo copy(leftover.copy);
    const QDir folder = copy.dir();
    QFile::remove(folder.filePath(copy.completeBaseName() + QLatin1String(".json")));
    QFile::remove(leftover.copy);
    const auto taken = m_taken.find(folder.path());
    if (taken == m_taken.end() || !folder.entryList({QStringLiteral("*.json")}, QDir::Files).isEmpty())
        return;
    removeFolder(folder, *taken->second);
    m_taken.erase(taken);
}
