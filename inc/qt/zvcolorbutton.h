// SPDX-License-Identifier: MIT
#ifndef ZVCOLORBUTTON_H
#define ZVCOLORBUTTON_H

#include "base/zvcmcolor.h"
#include "base/zvexport.h"

#include <QPixmap>
#include <QSharedPointer>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QColor;
class QPushButton;
QT_END_NAMESPACE

/// A swatch with a "..." button at its right end. The button, or a double click on the swatch, opens the colour dialog,
/// without by layer and by block. It knows no drawing.
///
/// A colour by layer or by block can be shown all the same. Accepting the dialog without a choice then turns it into a
/// true colour made of the index: by layer into 0,1,0, by block into 0,0,0.
class ZV_EXPORT ZvColorButtonWidget : public QWidget
{
    Q_OBJECT
    /// For forms: as a true colour.
    Q_PROPERTY(QColor color READ shownColor WRITE showColor)
public:
    /// By layer, until setColor() says otherwise. Owned by \a parent.
    explicit ZvColorButtonWidget(QWidget *parent);
    ~ZvColorButtonWidget() override;

    /// Emits nothing.
    void setColor(ZvCmColor color);
    /// The colour shown: what was set last, or what the user chose since.
    ZvCmColor color() const { return m_color; }
    /// Kept for the caller's use; this class does not read it.
    void setViewStyle(unsigned style) { m_viewStyle = style; }

    /// A picture of \a color, \a w by \a h pixels, with a thin black border.
    QPixmap getColorPixmapWithBorder(int w, int h, const QColor &color);

Q_SIGNALS:
    /// The user accepted the dialog.
    void colorChanged();

public Q_SLOTS:
    /// Opens the dialog.
    void slot_onInnerButtonClicked(bool checked);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// Makes the button and fixes the widget's height.
    virtual void initBtn();

private:
    QColor shownColor() const;
    void showColor(const QColor &color);

    unsigned m_viewStyle = 0;
    QSharedPointer<QPushButton> m_pInnerBtn;
    ZvCmColor m_color;
    bool m_bHover = false;
    bool m_bDrawBorder = true;
};

#endif
