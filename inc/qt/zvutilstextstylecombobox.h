// SPDX-License-Identifier: MIT
#ifndef ZVUTILSTEXTSTYLECOMBOBOX_H
#define ZVUTILSTEXTSTYLECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"
#include "zvodasetting.h"

#include <QComboBox>
#include <QMetaType>

Q_DECLARE_METATYPE(ZevaUISetting::ZvsiTextStyleInfoItem)

/// The drop-down of text styles.
///
/// Hooked it follows the drawing, showing the current style or that of the selected texts, and writes what is picked.
/// Its list is filled anew each time it opens, also during a command. Unhooked it only tells what is picked.
///
/// Each row holds its record, a ZevaUISetting::ZvsiTextStyleInfoItem, under Qt::UserRole. Styles of external references
/// are not listed; one that is current all the same is shown by a row without a record, until the next refill.
class ZV_EXPORT ZvUtilsTextStyleComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked. \a sorted: by name, otherwise in the drawing's order.
    ZvUtilsTextStyleComboBox(QWidget *parent, bool sorted);
    /// With \a hook it follows the drawing and writes to it; \a sorted as above.
    ZvUtilsTextStyleComboBox(bool hook, QWidget *parent, bool sorted);
    /// What a form makes: not hooked, sorted.
    explicit ZvUtilsTextStyleComboBox(QWidget *parent) : ZvUtilsTextStyleComboBox(parent, true) { }
    ~ZvUtilsTextStyleComboBox() override;

    /// Fills the list; signals are not blocked.
    void init();
    /// Fills the list anew and keeps what is shown: for the host, after a style was edited.
    void updateTextStyle();
    /// Shows the style of that id, if it is listed.
    void setCurrentTextStyle(ZvDbObjectId id);
    /// First row of exactly that name, -1 when there is none.
    int findItemByTextStyle(const QString &name);
    /// The record of a row, -1 for the current one. False for a row without one and out of range.
    bool getTextStyleInfo(ZevaUISetting::ZvsiTextStyleInfoItem &item, int index);
    /// The name that is shown; empty for a blank box.
    QString getCurrentTextStyleName() const;
    /// Null when nothing is shown and where the drawing has no such style.
    ZvDbObjectId getCurrentTextStyleId() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked a style.
    void textStyleTableItemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's name, and textStyleTableItemChanged()
    /// is emitted.
    void curIndexChanged(int index);

protected:
    bool event(QEvent *event) override;

private:
    const bool m_sorted;
    ZvGlobalUIReactorHelp::STextStyleInfo m_info;
};

#endif
