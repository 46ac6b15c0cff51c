// SPDX-License-Identifier: MIT
#ifndef LINETYPEFORMS_H
#define LINETYPEFORMS_H

#include "db/zvdblinetypes.h"

#include <QDialog>

#include <vector>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;

/// Asks for name, description and pattern. Whatever is wrong with them shows at once, and OK waits until nothing is.
class NewLinetypeDialog : public QDialog
{
    Q_OBJECT
public:
    explicit NewLinetypeDialog(QWidget *parent = nullptr);
    const ZvDbLinetypeDefinition &definition() const { return m_definition; }
    void tell(const QString &text);

private:
    void check();

    QLineEdit *m_name;
    QLineEdit *m_comments;
    QLineEdit *m_pattern;
    QLabel *m_message;
    QDialogButtonBox *m_buttons;
    ZvDbLinetypeDefinition m_definition;
};

/// Picks line types from a file; starts with the file that comes with the program. What is wrong with a file is told
/// with the lines.
class LoadLinetypesDialog : public QDialog
{
    Q_OBJECT
public:
    /// The drawing tells the code page of files that do not tell theirs.
    explicit LoadLinetypesDialog(const ZvDbDatabase &database, QWidget *parent = nullptr);
    QString path() const;
    std::vector<ZvDbLinetypeDefinition> chosen() const;
    /// Line types that the drawing has take their patterns from the file.
    bool isRedefining() const;

    /// The file that comes with the program.
    static QString standardFile();

private:
    void browse();
    void readFile();
    void check();

    const ZvDbDatabase &m_database;
    ZvDbLinetypeFile m_file;
    QLineEdit *m_path;
    QListWidget *m_list;
    QCheckBox *m_redefine;
    QLabel *m_message;
    QDialogButtonBox *m_buttons;
};

#endif
