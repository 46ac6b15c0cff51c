// SPDX-License-Identifier: MIT
#include "startpage.h"

#include "icons.h"
#include "viewcolors.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const char *const kStyle = R"(
QLabel { color: #dfe6ee; }
QLabel#startTitle { font-size: 26px; font-weight: 600; }
QLabel#startHint { color: #9fadbc; font-size: 13px; }
QLabel#recentTitle { color: #9fadbc; font-weight: 600; }
QPushButton {
    color: #f2f6fa; background: #2c3846; border: 1px solid #43566a; border-radius: 6px;
    padding: 10px 22px; font-size: 14px; text-align: left;
}
QPushButton:hover, QPushButton:focus { background: #35506d; border-color: #4f94d8; }
QPushButton:pressed { background: #27435f; }
QToolButton {
    color: #86bdf5; background: transparent; border: 1px solid transparent; border-radius: 4px;
    padding: 4px 8px; font-size: 13px;
}
QToolButton:hover, QToolButton:focus { background: #2a3643; border-color: #3a4b5d; }
)";

QPushButton *bigButton(const QString &name, const QString &icon, const QString &text)
{
    auto *button = new QPushButton(Icons::icon(icon), text);
    button->setObjectName(name);
    button->setIconSize(QSize(28, 28));
    button->setMinimumWidth(190);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

} // namespace

StartPage::StartPage(QWidget *parent) : QWidget(parent), m_recent(new QWidget)
{
    setObjectName(QStringLiteral("startPage"));
    setAccessibleName(tr("Start"));
    setStyleSheet(QLatin1String(kStyle));

    auto *title = new QLabel(tr("Workbench"));
    title->setObjectName(QStringLiteral("startTitle"));
    auto *hint = new QLabel(tr("Start a drawing or open one. A file can be dropped here, too."));
    hint->setObjectName(QStringLiteral("startHint"));
    QPushButton *create = bigButton(QStringLiteral("startNew"), QStringLiteral("new"), tr("&New drawing"));
    QPushButton *open = bigButton(QStringLiteral("startOpen"), QStringLiteral("open"), tr("&Open a drawing..."));
    connect(create, &QPushButton::clicked, this, &StartPage::newWanted);
    connect(open, &QPushButton::clicked, this, &StartPage::openWanted);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addWidget(create);
    buttons->addWidget(open);
    buttons->addStretch();

    m_recentColumn = new QVBoxLayout(m_recent);
    m_recentColumn->setContentsMargins(0, 18, 0, 0);
    m_recentColumn->setSpacing(1);

    auto *column = new QVBoxLayout;
    column->setSpacing(10);
    column->addStretch(2);
    column->addWidget(title);
    column->addWidget(hint);
    column->addSpacing(12);
    column->addLayout(buttons);
    column->addWidget(m_recent);
    column->addStretch(3);

    auto *row = new QHBoxLayout(this);
    row->addStretch();
    row->addLayout(column);
    row->addStretch();
}

void StartPage::setRecentFiles(const QStringList &paths)
{
    while (QLayoutItem *item = m_recentColumn->takeAt(0)) {
        // One of them may have sent the click that brought us here.
        if (QWidget *widget = item->widget()) {
            widget->hide();
            widget->deleteLater();
        }
        delete item;
    }
    m_recent->setVisible(!paths.isEmpty());
    if (paths.isEmpty())
        return;
    auto *title = new QLabel(tr("Recent drawings"));
    title->setObjectName(QStringLiteral("recentTitle"));
    m_recentColumn->addWidget(title);
    for (const QString &path : paths) {
        auto *link = new QToolButton;
        link->setObjectName(QStringLiteral("recentFile"));
        QString text = QFileInfo(path).fileName();
        link->setText(text.replace(QLatin1Char('&'), QLatin1String("&&")));
        link->setToolTip(path);
        link->setCursor(Qt::PointingHandCursor);
        connect(link, &QToolButton::clicked, this, [this, path] { Q_EMIT fileWanted(path); });
        m_recentColumn->addWidget(link);
    }
}

void StartPage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), ViewColors::kModelGround);
}
