// SPDX-License-Identifier: MIT
#include "zvutilsiconpushbutton.h"

#include "private/zvaccessibility.h"
#include "private/zvframepen.h"

#include <QFileInfo>
#include <QPainter>
#include <QPixmap>
#include <QStringList>

ZvUtilsIconPushButton::ZvUtilsIconPushButton(const QString &imagePaths, QString stateNames, bool framed,
                                             QWidget *parent)
    : QPushButton(parent), m_imagePaths(imagePaths), m_stateNames(std::move(stateNames)), m_framed(framed)
{
    zvNameForReaders(this);
    setObjectName(QStringLiteral("normal"));
    connect(this, &ZvUtilsIconPushButton::appearanceChanged, this, qOverload<>(&QWidget::update));
}

void ZvUtilsIconPushButton::enterEvent(QEvent *)
{
    m_hovered = true;
}

void ZvUtilsIconPushButton::leaveEvent(QEvent *)
{
    m_hovered = false;
}

QString ZvUtilsIconPushButton::imagePath() const
{
    const QChar separator = QLatin1Char('$');
    const int state = m_stateNames.split(separator).indexOf(objectName());
    return state < 0 ? QString() : m_imagePaths.split(separator).value(state);
}

void ZvUtilsIconPushButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_framed) {
        painter.setPen(zvFramePen(QColor(m_hovered ? kZvActiveFrameColor : kZvFrameColor), 1.0));
        painter.setBrush(QColor(m_hovered ? kZvActiveFrameFill : kZvFrameFill));
    }
    const QString path = imagePath();
    if (path.isEmpty()) {
        painter.drawRect(rect());
        return;
    }
    if (!QFileInfo::exists(path))
        return;
    const QPixmap picture(path);
    painter.drawRect(0, 0, picture.width() + 3, picture.height() + 3);
    painter.drawPixmap(2, 2, picture);
    setFixedSize(picture.width() + 4, picture.height() + 4);
}
