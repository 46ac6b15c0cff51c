// SPDX-License-Identifier: MIT
#ifndef ZVUTILSGRADIENTCOLORPUSHBUTTON_H
#define ZVUTILSGRADIENTCOLORPUSHBUTTON_H

#include "base/zvexport.h"
#include "zvutilsiconpushbutton.h"

#include <QColor>

#include <cstdint>

/// A button with a swatch of a gradient fill, 4 pixels inside its frame. The owner writes the members and then calls
/// update(). A button of no more than 8 pixels either way has no swatch.
class ZV_EXPORT ZvUtilsGradientColorPushButton : public ZvUtilsIconPushButton
{
    Q_OBJECT
    /// The members below, for forms: setting one of these repaints the button.
    Q_PROPERTY(QColor firstColor MEMBER m_firstColor NOTIFY appearanceChanged)
    Q_PROPERTY(QColor secondColor MEMBER m_secondColor NOTIFY appearanceChanged)
    Q_PROPERTY(bool centered MEMBER m_centered NOTIFY appearanceChanged)
    Q_PROPERTY(bool twoColors MEMBER m_twoColors NOTIFY appearanceChanged)
    Q_PROPERTY(int angle MEMBER m_angle NOTIFY appearanceChanged)
    Q_PROPERTY(int shade MEMBER m_shade NOTIFY appearanceChanged)
    Q_PROPERTY(int pattern MEMBER m_pattern NOTIFY appearanceChanged)
    Q_PROPERTY(bool selected MEMBER m_selected NOTIFY appearanceChanged)
public:
    /// Owned by \a parent.
    explicit ZvUtilsGradientColorPushButton(QWidget *parent = nullptr);

    QColor m_firstColor = QColor(0, 0, 255); ///< The first colour, or the only one.
    /// Counts with m_twoColors only.
    QColor m_secondColor = QColor(255, 255, 0);
    /// The gradient lies in the middle instead of to one side.
    bool m_centered = false;
    /// Without it the second colour is the first one in the lightness of m_shade.
    bool m_twoColors = false;
    /// In degrees, from 0 to 360: the direction, counter-clockwise from the right.
    std::int32_t m_angle = 0;
    /// From -99, black, to 99, white. A value beyond counts as the nearer of these.
    std::int32_t m_shade = 99;
    /// The kind of gradient: 1 linear; 2 linear, there and back; 3 the same with the colours exchanged; 4, 5 and 6
    /// around the middle, from a side and from further away; 7, 8 and 9 the same with the colours exchanged. Any other
    /// fills with the first colour alone.
    std::int32_t m_pattern = 0;
    /// Shows a thick frame.
    bool m_selected = false;

protected:
    void paintEvent(QPaintEvent *event) override;
};

#endif
