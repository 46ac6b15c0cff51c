// SPDX-License-Identifier: MIT
#ifndef COLORDIALOGRUN_H
#define COLORDIALOGRUN_H

#include "dialogbag.h"
#include "messageboxes.h"
#include "modaldriver.h"
#include "modulesession.h"

#include "base/zvjson.h"
#include "core/zvui.h"

#include "common/uicolorindextab.h"
#include "common/uitruecolortab.h"
#include "common/zvcolordialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QImage>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

typedef QPair<const char *, int> ColorKey;
typedef QList<ColorKey> ColorKeys;
Q_DECLARE_METATYPE(ColorKey)

inline ZvJsonPtr colorParams(const ColorKeys &keys)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    for (const auto &key : keys)
        params->SetDataI(key.first, key.second);
    return params;
}

inline int packed(int red, int green, int blue)
{
    return red | green << 8 | blue << 16;
}

inline QString badIndexText()
{
    return QStringLiteral("不是有效的颜色名或值。|Zevara|0");
}

inline QString badTrueColorText()
{
    return QStringLiteral("不是有效的真彩色值。|Zevara|0");
}

/// A colour dialog of the service with its parameters, to be run or looked at.
class ColorDialogRun
{
public:
    explicit ColorDialogRun(const ZvJsonPtr &parameters, const ZvRxObjectPtr &helper = nullptr,
                            QWidget *parent = nullptr)
        : params(parameters), adapter(ModuleSession::createDialog(L"ColorDialog", parent)), dialog(findDialog())
    {
        isReady = adapter->onInit(params, helper);
    }
    explicit ColorDialogRun(const ColorKeys &keys) : ColorDialogRun(colorParams(keys)) { }

    /// Shows it without running it.
    bool show()
    {
        dialog->show();
        return QTest::qWaitForWindowExposed(dialog);
    }
    QTabWidget *tabs() const { return dialog->findChild<QTabWidget *>(); }
    ZvIndexColorWnd *indexTab() const { return dialog->findChild<ZvIndexColorWnd *>(); }
    ZvTrueColorWnd *trueColorTab() const { return dialog->findChild<ZvTrueColorWnd *>(); }
    QLineEdit *indexText() const { return indexTab()->findChild<QLineEdit *>(); }
    QLineEdit *trueColorText() const
    {
        return trueColorTab()->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QComboBox *modeCombo() const { return trueColorTab()->findChild<QComboBox *>(); }
    /// 0 OK, 1 cancel, 2 help.
    QPushButton *button(int index) const
    {
        return qobject_cast<QPushButton *>(dialog->findChild<QDialogButtonBox *>()->buttons().at(index));
    }
    QPushButton *buttonOf(const QString &text) const
    {
        for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    /// By mode, 1 to 4.
    ZvPaleteWnd *grid(int mode) const { return indexTab()->findChildren<ZvPaleteWnd *>().at(order(mode)); }
    int method() const { return intOf(params, "clrMethod"); }
    int color() const { return intOf(params, "selectClr"); }

    static ZvColorDialog *findDialog()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *dialog = qobject_cast<ZvColorDialog *>(widget))
                return dialog;
        }
        return nullptr;
    }

    ZvJsonPtr params;
    ZvUiDialogBasePtr adapter;
    ZvColorDialog *dialog;
    bool isReady = false;

private:
    /// Children are found depth first: the grids stand in the order of their modes.
    static int order(int mode) { return mode - 1; }
};

/// Centre of a cell of a grid with cells of this side.
inline QPoint cellCentre(int row, int col, int cell)
{
    return QPoint(col * (cell + 2) + 2 + cell / 2, row * (cell + 2) + 2 + cell / 2);
}

/// The widget alone, over white.
inline QImage pictureOf(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// Where two pictures differ first, for the message of a failing test; empty when they are equal.
inline QString firstDifference(const QImage &actual, const QImage &expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("%1x%2 and %3x%4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y))
                return QStringLiteral("(%1, %2): %3, expected %4")
                    .arg(x)
                    .arg(y)
                    .arg(actual.pixel(x, y), 0, 16)
                    .arg(expected.pixel(x, y), 0, 16);
        }
    }
    return QString();
}
#define COMPARE_PICTURES(actual, expected) QCOMPARE(firstDifference(actual, expected), QString())

/// Sets the pixels of a rectangle that lie in the picture: what painters are compared with is not painted by one.
inline void setPixels(QImage &image, int left, int top, int right, int bottom, QRgb color)
{
    for (int y = std::max(top, 0); y <= std::min(bottom, image.height() - 1); ++y) {
        for (int x = std::max(left, 0); x <= std::min(right, image.width() - 1); ++x)
            image.setPixel(x, y, color);
    }
}

/// The outline of one pixel through these four sides.
inline void setOutline(QImage &image, int left, int top, int right, int bottom, QRgb color)
{
    setPixels(image, left, top, right, top, color);
    setPixels(image, left, bottom, right, bottom, color);
    setPixels(image, left, top, left, bottom, color);
    setPixels(image, right, top, right, bottom, color);
}

/// The outline of a black pen of 0.3 pixels: it covers that share of each pixel once, which is 75 of 255 steps.
inline void setThinOutline(QImage &image, int left, int top, int right, int bottom)
{
    const auto cover = [&image](int x, int y) {
        const QRgb under = image.pixel(x, y);
        const auto part = [](int component) { return (component * (255 - 75) + 127) / 255; };
        image.setPixel(x, y, qRgb(part(qRed(under)), part(qGreen(under)), part(qBlue(under))));
    };
    for (int x = left; x <= right; ++x) {
        cover(x, top);
        cover(x, bottom);
    }
    for (int y = top + 1; y < bottom; ++y) {
        cover(left, y);
        cover(right, y);
    }
}

/// The outline of a black pen of two pixels with bevelled corners: the pixel before and the pixel at each side. The
/// bevel goes through the middle of the outermost pixels; those on the right are taken as inside it.
inline void setBevelledFrame(QImage &image, int left, int top, int right, int bottom)
{
    const QRgb black = qRgb(0, 0, 0);
    setPixels(image, left, top - 1, right, top - 1, black);
    setPixels(image, left, bottom, right, bottom, black);
    setPixels(image, left - 1, top, left - 1, bottom - 1, black);
    setPixels(image, right, top, right, bottom - 1, black);
    setOutline(image, left, top, right - 1, bottom - 1, black);
}

/// A mouse event with fractions of a pixel.
inline void sendMouse(QWidget *widget, QEvent::Type type, const QPointF &position,
                      Qt::MouseButton button = Qt::LeftButton)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, position, widget->mapToGlobal(position.toPoint()), isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

#endif
