// SPDX-License-Identifier: MIT
#ifndef LINETYPEMANAGER_H
#define LINETYPEMANAGER_H

#include "db/zvdbdatabase.h"
#include "zvqtlinetypetableview.h"

#include <QDialog>

class QLabel;
class QVBoxLayout;

/// The line types of a drawing: load, make, rename, delete, set current. Each change is an undo step of its own, unless
/// a step is open around the dialog. What cannot be done is told in a line below the table.
class LinetypeManager : public QDialog
{
    Q_OBJECT
public:
    enum Purpose {
        kManage, ///< A double click or Enter makes the line type current; the dialog is closed.
        kChoose, ///< A double click, Enter or OK accepts the dialog: chosen() is the answer.
    };

    LinetypeManager(ZvDbDatabase &database, Purpose purpose, QWidget *parent = nullptr);
    ~LinetypeManager() override;

    void select(const QString &name);
    /// The line type that the dialog was accepted with.
    const LtypeData &chosen() const { return m_chosen; }
    ZvQtLinetypeTableView *table() const { return m_table; }

    /// The bag of a table of line types: those of the drawing, ByLayer and ByBlock first.
    static ZvJsonPtr tableBag(const ZvDbDatabase &database);

    void accept() override;

protected:
    /// The keys that the table leaves to its host.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeTable();
    void fillTable(const QString &selected);
    void load();
    void create();
    void edit();
    bool rename(QString &name, const QModelIndex &index);
    void remove();
    void removeUnused();
    void makeCurrent();
    /// What a double click or Enter in the table does.
    void takeRow();
    void showCurrent();
    void tell(const QString &text);
    bool moveBy(int key);

    ZvDbDatabasePtr m_database;
    const Purpose m_purpose;
    ZvQtLinetypeTableView *m_table = nullptr;
    QVBoxLayout *m_tablePlace;
    QLabel *m_current;
    QLabel *m_message;
    LtypeData m_chosen;
};

#endif
