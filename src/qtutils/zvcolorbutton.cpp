// SPDX-License-Identifier: MIT
#include "zvcolorbutton.h"

#include "private/zvaccessibility.h"
#include "private/zvcolorchoice.h"
#include "private/zvcolorswatch.h"
#include "private/zvframepen.h"
#include "private/zvqtcolor.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPainter>
#include <QPointer>
#include <QPushButton>

namespace {

constexpr int kHeight = 25;
constexpr int kButtonMargin = 5; // beside the text
constexpr int kButtonHeight = 20;
constexpr qreal kBorderWidth = 2.0;

} // namespace

ZvColorButtonWidget::ZvColorButtonWidget(QWidget *parent) : QWidget(parent)
{
    ZvColorButtonWidget::initBtn();
    zvNameForReaders(this);
}

ZvColorButtonWidget::~ZvColorButtonWidget() = default;

void ZvColorButtonWidget::initBtn()
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(0);
    setFixedHeight(kHeight);
    const QString text = QStringLiteral("...");
    m_pInnerBtn.reset(new QPushButton(text));
    m_pInnerBtn->setFixedSize(m_pInnerBtn->fontMetrics().horizontalAdvance(text) + kButtonMargin, kButtonHeight);
    m_pInnerBtn->setAccessibleName(QCoreApplication::translate("ZvAccessibility", "Choose a colour"));
    layout->addWidget(m_pInnerBtn.data(), 0, Qt::AlignRight);
    connect(m_pInnerBtn.data(), &QPushButton::clicked, this, &ZvColorButtonWidget::slot_onInnerButtonClicked);
}

void ZvColorButtonWidget::setColor(ZvCmColor color)
{
    m_color = color;
    update();
}

QColor ZvColorButtonWidget::shownColor() const
{
    return zvToQColor(m_color);
}

void ZvColorButtonWidget::showColor(const QColor &color)
{
    ZvCmColor trueColor;
    trueColor.setRGB(std::uint8_t(color.red()), std::uint8_t(color.green()), std::uint8_t(color.blue()));
    setColor(trueColor);
}

QPixmap ZvColorButtonWidget::getColorPixmapWithBorder(int w, int h, const QColor &color)
{
    return zvColorPixmapWithBorder(w, h, color);
}

void ZvColorButtonWidget::mousePressEvent(QMouseEvent *event)
{
    QWidget::mousePressEvent(event);
}

void ZvColorButtonWidget::mouseDoubleClickEvent(QMouseEvent *)
{
    slot_onInnerButtonClicked(true);
}

void ZvColorButtonWidget::enterEvent(QEvent *)
{
    m_bHover = true;
    update();
}

void ZvColorButtonWidget::leaveEvent(QEvent *)
{
    m_bHover = false;
    update();
}

void ZvColorButtonWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_bDrawBorder)
        painter.setPen(zvFramePen(QColor(m_bHover ? kZvActiveFrameColor : kZvFrameColor), kBorderWidth));
    painter.setBrush(zvToQColor(m_color));
    painter.drawRect(0, 0, width() - 1, height() - 1);
}

void ZvColorButtonWidget::slot_onInnerButtonClicked(bool)
{
    const ZvJsonPtr params = zvColorDialogParams(zvColorChoiceOf(m_color));
    zvForbidByLayerAndBlock(params);
    const QPointer<ZvColorButtonWidget> self(this);
    ZvColorChoice choice;
    if (!zvRunColorDialog(params, this, choice) || !self)
        return;
    // By layer and by block come back from a dialog that was accepted as it opened. Kept: callers get a true colour
    // made of the index for them, since a button never gives another method than these two.
    if (choice.method == ZvCm::kByACI)
        m_color.setColorIndex(std::uint16_t(choice.value));
    else
        m_color.setRGB(std::uint8_t(zvPackedRed(choice.value)), std::uint8_t(zvPackedGreen(choice.value)),
                       std::uint8_t(zvPackedBlue(choice.value)));
    Q_EMIT colorChanged();
    update();
}
