// SPDX-License-Identifier: MIT
#ifndef ZVROWPICTURE_H
#define ZVROWPICTURE_H

#include <QSize>

QT_BEGIN_NAMESPACE
class QComboBox;
class QResizeEvent;
QT_END_NAMESPACE

/// Size of the row pictures in the lists of line types and line weights, in pixels.
constexpr QSize kZvRowPictureSize(80, 25);

/// Back to the standard size.
void zvResetRowPictures(QComboBox &combo, int &width, int &height);

/// Fits the size of the row pictures to a control that gets its first size, which \a sized remembers; later sizes
/// change nothing. Pictures are as high as the control and never smaller than the standard size. Rows keep the ones
/// they have.
void zvFitRowPictures(QComboBox &combo, const QResizeEvent &event, bool &sized, int &width, int &height);

#endif
