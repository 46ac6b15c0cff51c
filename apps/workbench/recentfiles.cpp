// SPDX-License-Identifier: MIT
#include "recentfiles.h"

#include <QFileInfo>
#include <QSettings>

namespace {
const char *const kKey = "recentFiles";
}

RecentFiles::RecentFiles(QSettings *settings, QObject *parent) : QObject(parent), m_settings(settings)
{
    if (settings)
        m_paths = settings->value(QLatin1String(kKey)).toStringList().mid(0, kMost);
}

void RecentFiles::add(const QString &path)
{
    if (path.isEmpty())
        return;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    m_paths.removeAll(absolute);
    m_paths.prepend(absolute);
    m_paths = m_paths.mid(0, kMost);
    store();
}

void RecentFiles::clear()
{
    m_paths.clear();
    store();
}

void RecentFiles::store()
{
    if (m_settings)
        m_settings->setValue(QLatin1String(kKey), m_paths);
    Q_EMIT changed();
}
