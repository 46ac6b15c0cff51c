// SPDX-License-Identifier: MIT
#ifndef VIEWMANAGER_H
#define VIEWMANAGER_H

#include "db/zvdbdatabase.h"
#include "dialogcommand.h"

#include <QDialog>

#include <vector>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

/// The named views of a drawing: save what is seen as a new one, rename, delete, show. What cannot be done is told in a
/// line below the list.
class ViewManager : public QDialog
{
    Q_OBJECT
public:
    explicit ViewManager(ZvDbDatabase &database, QWidget *parent = nullptr);

private:
    void fill(ZvDbObjectId selected);
    void create();
    void edit();
    void remove();
    void makeCurrent();
    void rename(QTreeWidgetItem *item);
    ZvDbObjectId idOf(const QTreeWidgetItem *item) const;
    QString freeName() const;
    void tell(const QString &text);

    ZvDbDatabasePtr m_database;
    QTreeWidget *m_list;
    QLabel *m_message;
    std::vector<ZvDbObjectId> m_ids; // of the rows
};

/// While it lives, the command VIEW works by that dialog.
class ViewCommand : public DialogCommand
{
public:
    ViewCommand();
};

#endif
