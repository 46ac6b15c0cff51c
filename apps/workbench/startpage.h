// SPDX-License-Identifier: MIT
#ifndef STARTPAGE_H
#define STARTPAGE_H

#include <QWidget>

class QVBoxLayout;

/// What the window shows while no drawing is open: the ways to begin.
class StartPage : public QWidget
{
    Q_OBJECT
public:
    explicit StartPage(QWidget *parent = nullptr);
    void setRecentFiles(const QStringList &paths);

Q_SIGNALS:
    void newWanted();
    void openWanted();
    void fileWanted(const QString &path);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *m_recent;
    QVBoxLayout *m_recentColumn;
};

#endif
