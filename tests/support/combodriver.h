// SPDX-License-Identifier: MIT
#ifndef COMBODRIVER_H
#define COMBODRIVER_H

#include "core/zveditor.h"
#include "core/zvedvars.h"
#include "core/zvsystem.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QMouseEvent>
#include <QStringList>
#include <QTest>
#include <QWheelEvent>

// Drop-downs, driven as a user does.

inline QStringList rowsOf(const QComboBox &combo)
{
    QStringList rows;
    for (int row = 0; row < combo.count(); ++row)
        rows << combo.itemText(row);
    return rows;
}

/// Moves the mouse over the list. What QTest::mouseMove() asks of a real display comes at some later time.
inline void hoverOver(QWidget &viewport, const QPoint &place)
{
    QMouseEvent move(QEvent::MouseMove, place, viewport.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&viewport, &move);
}

/// Picks a row of the open list by the mouse.
inline void pickInOpenList(QComboBox &combo, int row)
{
    QAbstractItemView &view = *combo.view();
    // Until the mouse has moved, the list takes a release for the end of the click that opened it.
    const QRect area = view.viewport()->rect();
    hoverOver(*view.viewport(), area.center() + QPoint(area.width() / 4, 0));
    view.scrollTo(view.model()->index(row, 0));
    const QPoint place = (view.visualRect(view.model()->index(row, 0)) & area).center();
    hoverOver(*view.viewport(), place);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTRY_VERIFY(!view.isVisible());
}

/// Opens the list by the mouse and picks a row by the mouse. The control must be shown.
inline void pickByMouse(QComboBox &combo, int row)
{
    QTest::mouseClick(&combo, Qt::LeftButton);
    QTRY_VERIFY(combo.view()->isVisible());
    pickInOpenList(combo, row);
}

/// The same by the row's text, of a list that is filled when it opens.
inline void pickByMouse(QComboBox &combo, const QString &text)
{
    combo.showPopup();
    const int row = combo.findText(text);
    combo.hidePopup();
    QVERIFY2(row >= 0, qPrintable(text));
    pickByMouse(combo, row);
}

/// The same, with the keyboard in the open list: as many times down as told.
inline void pickByKeys(QComboBox &combo, int down)
{
    QTest::mouseClick(&combo, Qt::LeftButton);
    QTRY_VERIFY(combo.view()->isVisible());
    for (int i = 0; i < down; ++i)
        QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QTRY_VERIFY(!combo.view()->isVisible());
}

/// Turns the wheel over the closed control: steps above 0 go down the list.
inline void turnWheel(QComboBox &combo, int steps)
{
    const QPointF place = combo.rect().center();
    for (int i = 0; i < qAbs(steps); ++i) {
        QWheelEvent event(place, combo.mapToGlobal(place.toPoint()), QPoint(), QPoint(0, steps > 0 ? -120 : 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&combo, &event);
    }
}

/// Makes a widget the drawing's view for the life of the object: where the keyboard goes back to.
class FocusView : public ZvApView, public ZvApWindow
{
public:
    explicit FocusView(QWidget *view) : m_view(view) { CHcSystem::instance()->application()->setWindow(this); }
    ~FocusView() override { CHcSystem::instance()->application()->setWindow(nullptr); }
    void *widget() const override { return m_view; }
    void *handle() const override { return m_view->window(); }
    ZvApView *mainView() const override { return const_cast<FocusView *>(this); }

private:
    QWidget *m_view;
};

/// The states of "CMDACTIVE" in which a list is opened, and how a user comes to them.
struct CommandState
{
    const char *name;
    const char *macro; ///< Runs "OPENLIST"; empty for no command.
    bool hasDialog;
    int active; ///< "CMDACTIVE" when the list is opened.
    bool opens; ///< A list that stays closed during an ordinary command.
};

constexpr CommandState kCommandStates[] = {
    {"0, no command", "", false, 0, true},
    {"1, an ordinary command", "_.OPENLIST ", false, 1, false},
    {"2, a transparent command alone", "'_.OPENLIST ", false, 2, true},
    {"3, a transparent command in another", "_.CIRCLE '_.OPENLIST ^C^C", false, 3, false},
    {"8, a dialog", "", true, 8, true},
    {"9, a dialog of a command", "_.OPENLIST ", true, 9, false},
};

/// Opens a list in such a state, as a click does while a command waits.
class ListOpener
{
public:
    explicit ListOpener(QComboBox &combo)
    {
        s_combo = &combo;
        zvedCommandStack()->addCommand(L"TEST", L"OPENLIST", L"OPENLIST", ZvEdCommand::kTransparent, open, nullptr, -1,
                                       ZvRxResourceInstance(nullptr), 0);
    }
    ~ListOpener() { zvedCommandStack()->removeCmd(L"TEST", L"OPENLIST"); }

    void run(const CommandState &state)
    {
        if (state.hasDialog)
            zvedDialogStarted();
        if (state.macro[0] == 0) {
            open();
        } else {
            zvedMenuMacro(ZvString(state.macro), false);
            zvedRunQueue();
        }
        if (state.hasDialog)
            zvedDialogEnded();
    }
    int active() const { return s_active; }
    bool wasOpen() const { return s_wasOpen; }

private:
    static void open()
    {
        ZvResBuf value;
        s_active = zvedGetVar(L"CMDACTIVE", &value) == ZvRes::kNormal ? value.resval.rint : -1;
        s_combo->showPopup();
        s_wasOpen = s_combo->view()->isVisible();
        s_combo->hidePopup();
    }

    static inline QComboBox *s_combo = nullptr;
    static inline int s_active = -1;
    static inline bool s_wasOpen = false;
};

/// The commands that were started, in order.
class StartedCommands : public ZvEditorReactor
{
public:
    StartedCommands() { zvedEditor()->addReactor(this); }
    ~StartedCommands() override { zvedEditor()->removeReactor(this); }
    void commandWillStart(const ZvString &name) override { names << QString::fromUtf8(name.toUtf8().c_str()); }

    QStringList names;
};

#endif
