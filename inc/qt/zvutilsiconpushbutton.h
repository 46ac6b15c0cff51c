// SPDX-License-Identifier: MIT
#ifndef ZVUTILSICONPUSHBUTTON_H
#define ZVUTILSICONPUSHBUTTON_H

#include "base/zvexport.h"

#include <QPushButton>
#include <QString>

/// A push button that is a picture in a frame. Its object name is its state, "normal" at the start, and each state has
/// a picture of its own; after changing the name call update().
///
/// The button takes the size of its picture and 4 pixels more each way when it is painted. Without pictures it is a
/// rectangle of the size that it has.
class ZV_EXPORT ZvUtilsIconPushButton : public QPushButton
{
    Q_OBJECT
    /// What the constructor tells, for forms.
    Q_PROPERTY(QString imagePaths MEMBER m_imagePaths NOTIFY appearanceChanged)
    Q_PROPERTY(QString stateNames MEMBER m_stateNames NOTIFY appearanceChanged)
    Q_PROPERTY(bool framed MEMBER m_framed NOTIFY appearanceChanged)
public:
    /// \a imagePaths are the picture files (":/..." too) and \a stateNames the states they belong to, in the same
    /// order, each list separated by "$". Of a state named twice the first counts.
    ///
    /// A state without a picture path shows the frame alone, a path without a file nothing at all. A file that is no
    /// picture counts as one of no size. With \a framed the frame is grey, and blue under the pointer; without, it is a
    /// line in the colour of the text, and the button's background shows through.
    ZvUtilsIconPushButton(const QString &imagePaths, QString stateNames, bool framed, QWidget *parent);
    /// What a form makes: framed, without pictures.
    explicit ZvUtilsIconPushButton(QWidget *parent) : ZvUtilsIconPushButton(QString(), QString(), true, parent) { }

Q_SIGNALS:
    /// One of the properties was set to another value. Writing a member directly tells nothing.
    void appearanceChanged();

protected:
    // These two do not repaint: the frame changes with the next painting, which most styles ask for themselves.
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Empty where the state has none.
    QString imagePath() const;

    bool m_hovered = false;
    QString m_imagePaths;
    QString m_stateNames;
    bool m_framed;
};

#endif
