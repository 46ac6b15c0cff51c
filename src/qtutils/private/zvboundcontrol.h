// SPDX-License-Identifier: MIT
#ifndef ZVBOUNDCONTROL_H
#define ZVBOUNDCONTROL_H

#include "private/zvcurrentdrawing.h"
#include "private/zvqtstring.h"
#include "private/zvrowmodel.h"
#include "private/zvupdatebus.h"
#include "qt_utils.h"
#include "zvodasetting.h"
#include "zvqtcontrolhelp.h"

#include "base/zvlog.h"

#include <QComboBox>

#include <vector>

/// \file
/// What the drop-downs that follow the drawing have in common. A control's own unit holds its rows, its filter and its
/// setter, and puts them together like this:
///
/// \code
/// MaterialBox::MaterialBox(bool hook, QWidget *parent) : QComboBox(parent), CZvQtControlHelp(hook, &m_info)
/// {
///     const ZvUpdateBusJoin joined(*this);
///     connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &MaterialBox::curIndexChanged);
///     init();
/// }
/// MaterialBox::~MaterialBox() { zvLeaveUpdateBus(*this); }
///
/// void MaterialBox::init()
/// {
///     const ZvHookedCleared filling(*this);
///     ... clear(), addItem() ...
/// }
/// void MaterialBox::curIndexChanged(int index)
/// {
///     if (zvTakePick(*this, *this, index, [](const ZvString &name) { ZevaUISetting::setCMaterial({}, name); }))
///         emit itemChanged(currentText());
/// }
/// void MaterialBox::showPopup()
/// {
///     if (zvRefillForOpening(*this, *this, [this] { init(); }))
///         QComboBox::showPopup();
/// }
/// void MaterialBox::acceptUpdateUI(const CZvGlobalUIReactorHelp &notice)
/// {
///     if (!zvNoticeConcerns(filter(), notice))
///         return;
///     const ZvShown shown = zvWhatToShow(m_info);
///     if (zvIsBlank(shown))
///         zvShowBlank(*this, shown);
///     else
///         zvShowName(*this, *this, name(shown), ZvNameMatch::kExact);
/// }
/// \endcode

// ---- which notices concern a control

/// An object of which a control wants to hear.
struct ZvObjectRule
{
    enum Match { kExact, kDerived };
    enum When { kAlways, kAffectingSelection };

    ZvRxClass *(*cls)();
    Match match = kExact;
    When when = kAlways;
    /// Only the object of this id in the notice's database; null: every object of the class.
    ZvDbObjectId (*onlyId)(const ZvDbDatabase *database) = nullptr;
};

/// The notices that make a control read the drawing again. Kinds without a rule here do so always.
struct ZvNoticeFilter
{
    /// System variables, tested one after the other: a notice whose name differs from any of them ends there. One name
    /// lets that variable through; of several, no name equals all, and variables never get through. Controls with several
    /// follow the ends of commands instead, and hosts count on their being quiet in between.
    std::vector<const wchar_t *> variables;
    /// A notice that affects the selection gets through, whatever its object.
    bool affectingPasses = true;
    /// Any of these gets through.
    std::vector<ZvObjectRule> objects;
};

/// False without a current document.
bool zvNoticeConcerns(const ZvNoticeFilter &filter, const CZvGlobalUIReactorHelp &notice);

// ---- what a control shows

enum class ZvShown {
    kBlankDisabled, ///< There is no drawing.
    kBlankEnabled, ///< The selected entities differ.
    kCurrentValue, ///< Nothing is selected: the drawing's current value.
    kSelectionValue, ///< The value of the control's summary.
};

/// By the summary's status and the current document's drawing.
ZvShown zvWhatToShow(const ZvGlobalUIReactorHelp::SPickFirstInfo &info);

inline bool zvIsBlank(ZvShown shown)
{
    return shown == ZvShown::kBlankDisabled || shown == ZvShown::kBlankEnabled;
}

/// Whether the control's summary says that the selected entities differ.
inline bool zvIsMixed(const CZvQtControlHelp &control)
{
    return control.pickFirstInfo && control.pickFirstInfo->status == ZvGlobalUIReactorHelp::kInfoMixed;
}

/// Shows that there is no value, with signals blocked. \a setNull shows no item.
template<class SetNull>
void zvShowBlank(QWidget &control, ZvShown shown, SetNull setNull)
{
    const ZvQtBlockSignalUtil block(&control);
    control.setEnabled(shown == ZvShown::kBlankEnabled);
    setNull();
}

void zvShowBlank(QComboBox &combo, ZvShown shown);

enum class ZvNameMatch { kExact, kIgnoreCase };

/// First row with this text, -1 when there is none.
int zvFindRow(const QComboBox &combo, const QString &name, ZvNameMatch match);

/// A row at the end with nothing but its text.
void zvAddPlainRow(QComboBox &combo, const QString &name);

/// Adds rows at the end, all at once: combo and view hear of one change and not of one a row.
void zvAppendRows(QComboBox &combo, std::vector<ZvRow> rows);

/// The control is being filled: hooked is cleared for the length of a scope.
class ZvHookedCleared
{
public:
    explicit ZvHookedCleared(CZvQtControlHelp &control) : m_control(control), m_hooked(control.hooked)
    {
        control.hooked = false;
    }
    ~ZvHookedCleared() { m_control.hooked = m_hooked; }
    Q_DISABLE_COPY(ZvHookedCleared)

private:
    CZvQtControlHelp &m_control;
    const bool m_hooked;
};

/// Enables the control and makes the row of this name current, with signals blocked. Without such a row \a addRow has to
/// add it; nothing for a null name. An empty one that is not null is a name like others.
template<class AddRow>
void zvShowName(QComboBox &combo, CZvQtControlHelp &control, const QString &name, ZvNameMatch match, AddRow addRow)
{
    const ZvQtBlockSignalUtil block(&combo);
    combo.setEnabled(true);
    const int row = zvFindRow(combo, name, match);
    if (row >= 0) {
        combo.setCurrentIndex(row);
    } else if (!name.isNull()) {
        const ZvHookedCleared adding(control);
        addRow(name);
        combo.setCurrentText(name);
    }
}

/// The same with a plain row.
void zvShowName(QComboBox &combo, CZvQtControlHelp &control, const QString &name, ZvNameMatch match);

// ---- what the user does

/// Fills a list anew and keeps the text that is shown, with signals blocked. \a fill may use guards of its own. Without a
/// text it shows what its filling shows, but not while the selected entities differ: the first row could not be picked
/// then.
template<class Fill>
void zvRefillKeepingText(QComboBox &combo, const CZvQtControlHelp &control, Fill fill)
{
    const ZvQtBlockSignalUtil block(&combo);
    const QString text = combo.currentText();
    fill();
    // The end of a guard within has unblocked early, and the text must not be taken for a pick.
    combo.blockSignals(true);
    if (!text.isEmpty())
        combo.setCurrentText(text);
    else if (zvIsMixed(control))
        combo.setCurrentIndex(-1);
}

/// What comes before QComboBox::showPopup() of a list that stays closed during an ordinary command: a bound one is filled
/// anew. False where it must not open.
template<class Fill>
bool zvRefillForOpening(QComboBox &combo, const CZvQtControlHelp &control, Fill fill)
{
    if (!control.hooked)
        return true;
    if (zvIsOrdinaryCommandActive())
        return false;
    zvRefillKeepingText(combo, control, fill);
    return true;
}

/// What every pick of a named row begins with: gives the keyboard back to the drawing and, in a bound control, passes the
/// row's text to \a write, with signals blocked. False for a negative index: there is no pick, and no signal to emit.
template<class Write>
bool zvTakePick(QComboBox &combo, const CZvQtControlHelp &control, int index, Write write)
{
    if (index < 0)
        return false;
    ZevaUISetting::restoreFocus2MainView();
    const ZvQtBlockSignalUtil block(&combo);
    const QString name = combo.itemText(index);
    if (control.hooked && !name.isEmpty())
        write(zvToZvString(name));
    return true;
}

/// Runs what reads the drawing, and swallows the kernel's errors with the assertion "false", told of this place.
template<class Read>
void zvSwallowKernelError(const char *unit, int line, Read read)
{
    try {
        read();
    } catch (const ZvError &) {
        ZvAssert("false", unit, line);
    }
}

#endif
