// SPDX-License-Identifier: MIT
#ifndef COMMANDLINE_H
#define COMMANDLINE_H

#include <QStringList>
#include <QWidget>

class QCompleter;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QStringListModel;

/// The command line: the history of what was said, the prompt, and a line to answer in.
///
/// Enter sends the line, and so does Space unless the prompt takes text with blanks. Up and Down bring back lines sent
/// before. While no command runs, names of commands are completed. Escape empties the line; on an empty one it cancels.
class CommandLine : public QWidget
{
    Q_OBJECT
public:
    explicit CommandLine(QWidget *parent = nullptr);

    /// Adds a line to the history, which keeps the last kHistoryLines.
    void print(const QString &text);
    QString history() const;
    /// Asks for an answer. \a takesBlanks: Space is a blank here.
    void setPrompt(const QString &text, bool takesBlanks);
    /// Waits for a command.
    void clearPrompt();
    QString prompt() const;
    QString text() const;
    void setCommandNames(const QStringList &names);
    /// Treats a key that was pressed elsewhere as typed here; the keyboard stays where it is.
    void typeKey(QKeyEvent *event);

    static constexpr int kHistoryLines = 2000;

Q_SIGNALS:
    void lineEntered(const QString &line);
    void cancelled();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool handleKey(QKeyEvent *event);
    void send();
    void recall(int step);
    void complete();

    QPlainTextEdit *m_history;
    QLabel *m_prompt;
    QLineEdit *m_edit;
    QCompleter *m_completer;
    QStringListModel *m_names;
    QStringList m_sent;
    int m_recalled = 0; // position in m_sent; its size while nothing is recalled
    bool m_waitsForCommand = true;
    bool m_takesBlanks = false;
};

#endif
