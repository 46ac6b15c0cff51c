// SPDX-License-Identifier: MIT
#include "infobar.h"

#include "icons.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QToolButton>

InfoBar::InfoBar(QWidget *parent)
    : QFrame(parent), m_text(new QLabel), m_unfold(new QToolButton), m_details(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("infoBar"));
    setAccessibleName(tr("Message"));
    setAutoFillBackground(true);
    QPalette colors = palette();
    colors.setColor(QPalette::Window, QColor(255, 244, 214));
    colors.setColor(QPalette::WindowText, QColor(72, 56, 16));
    setPalette(colors);

    auto *icon = new QLabel;
    icon->setPixmap(Icons::icon(QStringLiteral("warning")).pixmap(18, 18));
    m_text->setObjectName(QStringLiteral("infoText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_unfold->setObjectName(QStringLiteral("infoDetailsButton"));
    m_unfold->setText(tr("Details"));
    m_unfold->setCheckable(true);
    m_unfold->setAutoRaise(true);
    auto *close = new QToolButton;
    close->setObjectName(QStringLiteral("infoCloseButton"));
    close->setAccessibleName(tr("Dismiss the message"));
    close->setToolTip(tr("Dismiss"));
    close->setIcon(Icons::icon(QStringLiteral("close")));
    close->setAutoRaise(true);
    m_details->setObjectName(QStringLiteral("infoDetails"));
    m_details->setAccessibleName(tr("Details of the message"));
    m_details->setReadOnly(true);
    m_details->setMaximumHeight(110);
    m_details->hide();

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(10, 5, 6, 5);
    grid->addWidget(icon, 0, 0);
    grid->addWidget(m_text, 0, 1);
    grid->addWidget(m_unfold, 0, 2);
    grid->addWidget(close, 0, 3);
    grid->addWidget(m_details, 1, 1, 1, 2);
    grid->setColumnStretch(1, 1);

    connect(m_unfold, &QToolButton::toggled, m_details, &QWidget::setVisible);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void InfoBar::showMessage(const QString &text, const QString &details)
{
    m_text->setText(text);
    m_details->setPlainText(details);
    m_unfold->setChecked(false);
    m_unfold->setVisible(!details.isEmpty());
    show();
}

QString InfoBar::text() const
{
    return m_text->text();
}

QString InfoBar::details() const
{
    return m_details->toPlainText();
}
