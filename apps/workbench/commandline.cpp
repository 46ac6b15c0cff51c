// SPDX-License-Identifier: MIT
#include "commandline.h"

#include "look.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStringListModel>
#include <QVBoxLayout>

CommandLine::CommandLine(QWidget *parent)
    : QWidget(parent), m_history(new QPlainTextEdit), m_prompt(new QLabel), m_edit(new QLineEdit),
      m_completer(new QCompleter(this)), m_names(new QStringListModel(this))
{
    const QFont mono = monospaceFont(font());

    m_history->setObjectName(QStringLiteral("history"));
    m_history->setAccessibleName(tr("Command history"));
    m_history->setReadOnly(true);
    m_history->setFocusPolicy(Qt::ClickFocus);
    m_history->setMaximumBlockCount(kHistoryLines);
    m_history->setFrameShape(QFrame::NoFrame);
    m_history->setFont(mono);
    m_history->setMinimumHeight(m_history->fontMetrics().lineSpacing() * 2 + 8);

    m_prompt->setObjectName(QStringLiteral("prompt"));
    m_prompt->setAccessibleName(tr("Prompt"));
    m_prompt->setTextFormat(Qt::PlainText);
    m_prompt->setFont(mono);

    m_edit->setObjectName(QStringLiteral("commandEdit"));
    m_edit->setAccessibleName(tr("Command line"));
    m_edit->setFrame(false);
    m_edit->setFont(mono);
    m_edit->installEventFilter(this);
    m_prompt->setBuddy(m_edit);

    m_completer->setModel(m_names);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setCompletionMode(QCompleter::PopupCompletion);
    m_completer->setWidget(m_edit);
    m_completer->popup()->installEventFilter(this);
    connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), m_edit, &QLineEdit::setText);
    connect(m_edit, &QLineEdit::textEdited, this, &CommandLine::complete);

    auto *line = new QFrame;
    line->setObjectName(QStringLiteral("commandLineRow"));
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Base);
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(6, 4, 6, 4);
    row->setSpacing(6);
    row->addWidget(m_prompt);
    row->addWidget(m_edit, 1);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    column->addWidget(m_history, 1);
    column->addWidget(line);
    clearPrompt();
}

void CommandLine::print(const QString &text)
{
    m_history->appendPlainText(text);
}

QString CommandLine::history() const
{
    return m_history->toPlainText();
}

void CommandLine::setPrompt(const QString &text, bool takesBlanks)
{
    m_prompt->setText(text);
    m_waitsForCommand = false;
    m_takesBlanks = takesBlanks;
}

void CommandLine::clearPrompt()
{
    m_prompt->setText(tr("Command:"));
    m_waitsForCommand = true;
    m_takesBlanks = false;
}

QString CommandLine::prompt() const
{
    return m_prompt->text();
}

QString CommandLine::text() const
{
    return m_edit->text();
}

void CommandLine::setCommandNames(const QStringList &names)
{
    m_names->setStringList(names);
}

void CommandLine::typeKey(QKeyEvent *event)
{
    QCoreApplication::sendEvent(m_edit, event);
}

bool CommandLine::eventFilter(QObject *watched, QEvent *event)
{
    const bool ours = watched == m_edit || watched == m_completer->popup();
    if (ours && event->type() == QEvent::KeyPress && handleKey(static_cast<QKeyEvent *>(event)))
        return true;
    // Keys that are also shortcuts of the window belong to the line while it has the keyboard and text to edit.
    if (watched == m_edit && event->type() == QEvent::ShortcutOverride && m_edit->text().isEmpty()) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Delete || static_cast<QKeyEvent *>(event)->matches(QKeySequence::SelectAll)
            || static_cast<QKeyEvent *>(event)->matches(QKeySequence::Undo)
            || static_cast<QKeyEvent *>(event)->matches(QKeySequence::Redo))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

bool CommandLine::handleKey(QKeyEvent *event)
{
    QAbstractItemView *popup = m_completer->popup();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (popup->isVisible() && popup->currentIndex().isValid())
            m_edit->setText(popup->currentIndex().data().toString());
        popup->hide();
        send();
        return true;
    case Qt::Key_Space:
        if (m_takesBlanks)
            return false;
        popup->hide();
        send();
        return true;
    case Qt::Key_Tab:
        if (!m_waitsForCommand || m_edit->text().isEmpty())
            return false;
        m_completer->setCompletionPrefix(m_edit->text());
        if (m_completer->completionCount() > 0)
            m_edit->setText(m_completer->currentCompletion());
        popup->hide();
        return true;
    case Qt::Key_Escape:
        popup->hide();
        if (m_edit->text().isEmpty())
            Q_EMIT cancelled();
        m_edit->clear();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (popup->isVisible())
            return false;
        recall(event->key() == Qt::Key_Up ? -1 : 1);
        return true;
    default:
        return false;
    }
}

void CommandLine::send()
{
    const QString line = m_edit->text();
    m_edit->clear();
    if (!line.isEmpty() && (m_sent.isEmpty() || m_sent.last() != line))
        m_sent << line;
    m_recalled = m_sent.size();
    Q_EMIT lineEntered(line);
}

void CommandLine::recall(int step)
{
    m_recalled = qBound(0, m_recalled + step, m_sent.size());
    m_edit->setText(m_sent.value(m_recalled));
}

void CommandLine::complete()
{
    if (!m_waitsForCommand || m_edit->text().isEmpty()) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->setCompletionPrefix(m_edit->text());
    if (m_completer->completionCount() == 0) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->complete(QRect(0, 0, 240, m_edit->height()));
}
