// SPDX-License-Identifier: MIT
#ifndef INFOBAR_H
#define INFOBAR_H

#include <QFrame>

class QLabel;
class QPlainTextEdit;
class QToolButton;

/// A line above the drawing that tells something without asking, with details to unfold. Hidden until it is used.
class InfoBar : public QFrame
{
    Q_OBJECT
public:
    explicit InfoBar(QWidget *parent = nullptr);
    /// Replaces what the bar showed. Without \a details there is nothing to unfold.
    void showMessage(const QString &text, const QString &details = QString());
    QString text() const;
    QString details() const;

private:
    QLabel *m_text;
    QToolButton *m_unfold;
    QPlainTextEdit *m_details;
};

#endif
