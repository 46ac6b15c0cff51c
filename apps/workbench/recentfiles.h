// SPDX-License-Identifier: MIT
#ifndef RECENTFILES_H
#define RECENTFILES_H

#include <QObject>
#include <QStringList>

class QSettings;

/// The files opened last, newest first, kept in the settings where there are any.
class RecentFiles : public QObject
{
    Q_OBJECT
public:
    /// \a settings may be null and must outlive this object.
    explicit RecentFiles(QSettings *settings, QObject *parent = nullptr);
    QStringList paths() const { return m_paths; }
    /// Puts the file first. Nothing for an empty path.
    void add(const QString &path);
    void clear();

    static constexpr int kMost = 9;

Q_SIGNALS:
    void changed();

private:
    void store();

    QSettings *m_settings;
    QStringList m_paths;
};

#endif
