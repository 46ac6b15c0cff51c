// SPDX-License-Identifier: MIT
#ifndef DIALOGPAGE_H
#define DIALOGPAGE_H

#include "dialogdemo.h"
#include "dialogkeys.h"
#include "valuefield.h"

#include <QWidget>

class QComboBox;
class QTableWidget;
class QTableWidgetItem;
class QTreeWidget;

/// A common dialog: all its keys with fields to fill in, a button that shows it with them, and what it gave back.
///
/// A key goes to the dialog when it is ticked. Trees are written as JSON; objects come from the examples.
class DialogPage : public QWidget
{
    Q_OBJECT
public:
    explicit DialogPage(const DialogDescription &dialog, QWidget *parent = nullptr);

    /// What the ticked keys make. False, with nothing in \a params, where a tree is no JSON.
    bool makeParameters(ZvJsonPtr &params) const;

public Q_SLOTS:
    /// Shows the dialog and then its answers.
    void showDialog();

private:
    struct Row
    {
        const DialogKey *key;
        QTableWidgetItem *tick; // null for what is only answered
        ValueField field;
    };

    QWidget *makeKeys();
    void loadExample();
    void showAnswers(const ZvJsonPtr &result, const ZvJsonPtr &params);

    const DialogDescription &m_dialog;
    QVector<DialogDemo> m_examples;
    QComboBox *m_example;
    QTableWidget *m_keys;
    QTreeWidget *m_answers;
    QVector<Row> m_rows;
    ZvJsonPtr m_objects; // of the example
};

#endif
