// SPDX-License-Identifier: MIT
#include "zvimagecombobox.h"

#include "private/zvaccessibility.h"
#include "zvimageitem.h"
#include "zvimagevew.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <QResizeEvent>
#include <QStyle>
#include <QStyleOption>
#include <QTextOption>

namespace {

constexpr int kArrowWidth = 21;
constexpr int kBesideItem = 22; // arrow and border
constexpr int kAroundItem = 2; // border above and below

constexpr QRgb kFrame = qRgb(205, 205, 205);
constexpr QRgb kActiveFrame = qRgb(13, 124, 211);

const char kLook[] = "border-style:solid; border-width:1px;border-color:rgb(205, 205, 205); border-radius:1px;";
const char kHoverLook[] = "border-style:solid; border-width:1px;border-color:rgb(13, 124, 211); border-radius:1px;";
const char kPressedLook[] = "background-color:rgb(204, 228, 247);border-style:solid; "
                            "border-width:1px;border-color:rgb(13, 124, 211); border-radius:1px;";

// Latin letters that stand where an arrow is expected. Kept as users know them.
const char kArrowText[] = "\xD0\xB4\xD1\x83";

/// The picture in a closed box, one for all combos: hosts count on seeing it in the combo that was used last only.
QPointer<ZvImageItem> s_header;

int middleOf(const QRect &rect)
{
    return (rect.top() + rect.bottom()) / 2;
}

QHBoxLayout *makeLayout(const char *name)
{
    auto *layout = new QHBoxLayout;
    layout->setObjectName(QLatin1String(name));
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

} // namespace

ZvImageComboBox::ZvImageComboBox(QWidget *parent)
    : QWidget(parent), m_view(new ZvImageVew(parent)), m_phorizontalLayout(makeLayout("m_phorizontalLayout")),
      m_pItemErea(makeLayout("m_pItemErea")), m_pBtnErea(makeLayout("m_pBtnErea"))
{
    setStyleSheet(QLatin1String(kLook));
    m_view->setWindowFlags(Qt::FramelessWindowHint);
    m_view->setGeometry(QRect(QPoint(0, 0), QPoint(99, 99)));
    m_view->hide();

    // A widget takes one layout; the other two become its own through the first.
    setLayout(m_phorizontalLayout);
    m_phorizontalLayout->addLayout(m_pItemErea, 3);
    m_phorizontalLayout->addLayout(m_pBtnErea, 1);
    setFocusPolicy(Qt::TabFocus);
    zvNameForReaders(this);
    connect(m_view, &QDialog::rejected, this, [this] { setFocus(Qt::OtherFocusReason); });
    connect(m_view, &ZvImageVew::colorItemSelected, this, &ZvImageComboBox::colorItemSelected);
}

ZvImageComboBox::~ZvImageComboBox()
{
    delete m_view;
}

ZvImageItem *ZvImageComboBox::makeItem()
{
    return new ZvImageItem(width() - kBesideItem, height() - kAroundItem, nullptr);
}

void ZvImageComboBox::createCustomItem(const QString &name, ItemModeEx mode)
{
    if (!m_view)
        return;
    ZvImageItem *item = makeItem();
    item->setObjectName(name);
    item->ratio = ratio;
    item->mode = mode;
    connect(item, &ZvImageItem::drawLocalGraphic, this,
            [this, item](QPainter *painter, const QRect &rect, QString &text) {
                drawCustomGraphic(item, painter, rect, text);
            });
    m_view->addItem(item);
}

void ZvImageComboBox::setCurrentItem(int index)
{
    // Kept: a count of colours bounds the rows, so that only the first 256 can be set.
    if (index < 0 || !m_view || m_view->colorCount() < 1 || index >= m_view->colorCount())
        return;
    cloneItem2Header(m_view->itemAt(index));
}

void ZvImageComboBox::cloneItem2Header(ZvImageItem *item)
{
    if (!item || item->mode != kItemShown)
        return;
    const QPixmap picture = item->pixmap; // the item may be the header itself
    if (s_header) {
        m_pItemErea->removeWidget(s_header);
        delete s_header;
    }
    s_header = makeItem();
    s_header->pixmap = picture;
    // The header may span the arrow, which the combo's look when pressed would then paint over.
    s_header->setStyleSheet(QStringLiteral("background-color:transparent;"));
    s_header->update();
    m_pItemErea->addWidget(s_header);
}

void ZvImageComboBox::drawCustomGraphic(ZvImageItem *item, QPainter *painter, const QRect &rect, QString &text)
{
    Q_EMIT onDraw(item, painter, rect, text);
}

void ZvImageComboBox::drawSolidLine(QPainter *painter, const QRect &rect, QString &)
{
    painter->drawLine(rect.left(), middleOf(rect), rect.right(), middleOf(rect));
}

void ZvImageComboBox::drawGradientColor(QPainter *painter, const QRect &rect, QString &)
{
    QLinearGradient gradient(rect.left(), middleOf(rect), rect.right(), middleOf(rect));
    gradient.setColorAt(0.2, Qt::gray);
    gradient.setColorAt(0.4, Qt::green);
    gradient.setColorAt(0.6, Qt::red);
    gradient.setColorAt(0.8, Qt::magenta);
    gradient.setColorAt(1.0, Qt::black);
    painter->setBrush(gradient);
    painter->drawRects(&rect, 1);
}

void ZvImageComboBox::drawColorGrid(QPainter *painter, const QRect &rect, QColor &color, QString &)
{
    QPixmap picture(rect.size());
    picture.fill(color);
    painter->drawPixmap(rect, picture);
}

void ZvImageComboBox::colorItemSelected(QWidget *item)
{
    cloneItem2Header(qobject_cast<ZvImageItem *>(item));
    Q_EMIT itemChanged(item);
}

void ZvImageComboBox::toggleList()
{
    // Kept: a count of colours is asked for where one of rows would be expected, so that an empty list opens too.
    if (m_view && m_view->colorCount() > 0) {
        m_view->setWidth(width());
        m_view->move(pos().x(), pos().y() + height());
        m_view->setVisible(!m_view->isVisible());
        m_view->raise(); // above what stands below the combo
        m_view->setFocus(Qt::OtherFocusReason);
    }
}

void ZvImageComboBox::mousePressEvent(QMouseEvent *)
{
    toggleList();
    setStyleSheet(QLatin1String(kPressedLook));
    frameColor = QColor(kActiveFrame);
}

void ZvImageComboBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Down || event->key() == Qt::Key_F4)
        toggleList();
    else
        QWidget::keyPressEvent(event);
}

void ZvImageComboBox::enterEvent(QEvent *)
{
    setStyleSheet(QLatin1String(kHoverLook));
    frameColor = QColor(kActiveFrame);
}

void ZvImageComboBox::leaveEvent(QEvent *)
{
    setStyleSheet(QLatin1String(kLook));
    frameColor = QColor(kFrame);
}

void ZvImageComboBox::resizeEvent(QResizeEvent *event)
{
    arrowRect
        = QRect(QPoint(event->size().width() - kArrowWidth, 0), QPoint(event->size().width(), event->size().height()));
}

void ZvImageComboBox::paintEvent(QPaintEvent *)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    painter.setPen(frameColor);
    painter.drawLine(arrowRect.topLeft(), arrowRect.bottomLeft());
    painter.drawText(QRectF(arrowRect), QString::fromLatin1(kArrowText),
                     QTextOption(Qt::AlignHCenter | Qt::AlignVCenter));
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(2, 2, -kBesideItem, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}
