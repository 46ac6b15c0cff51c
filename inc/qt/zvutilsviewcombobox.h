// SPDX-License-Identifier: MIT
#ifndef ZVUTILSVIEWCOMBOBOX_H
#define ZVUTILSVIEWCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// A launcher of view commands in the shape of a drop-down: preset views, the drawing's named views, the view manager.
///
/// It does not know which view is in force: it shows the last pick. Picks go to the command line as menu macros, hooked
/// or not; hooked, its list is filled anew each time it opens. Each row holds its Code as an int under Qt::UserRole.
class ZV_EXPORT ZvUtilsViewComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// What a row does.
    enum Code : int {
        kCurrent = 0, ///< Sends nothing.
        kTop = 1,
        kBottom = 2,
        kLeft = 3,
        kRight = 4,
        kFront = 5,
        kBack = 6,
        kSouthWest = 7,
        kSouthEast = 8,
        kNorthEast = 9,
        kNorthWest = 10,
        kNamed = 11,
        kManager = 12,
    };

    /// Not hooked.
    explicit ZvUtilsViewComboBox(QWidget *parent);
    /// With \a hook the list is filled anew each time it opens.
    ZvUtilsViewComboBox(bool hook, QWidget *parent);
    ~ZvUtilsViewComboBox() override;

    /// Fills the list: the presets, the drawing's named views, and the view manager.
    void init();
    /// Sends the macro of a preset view or of the view manager; false for the other codes, which have none.
    bool setPredefinedView(int code);
    /// Sends the macro that restores a named view. The name stands in it as it is, without quotes. Always true.
    bool setCustomDefinedView(const ZvString &name);
    /// The text that is shown; empty for a blank box.
    QString getCurrentName() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// Of each pick, also of one that sends nothing.
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a pick does, the same row picked again included: sends the row's macro and emits itemChanged().
    void activateIndex(int index);

protected:
    bool event(QEvent *event) override;
};

#endif
