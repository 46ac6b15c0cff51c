// SPDX-License-Identifier: MIT
#ifndef ZVQTCONTROLHELP_H
#define ZVQTCONTROLHELP_H

#include "zvglobaluireactorhelp.h"

#include <QObject>

/// Mixin of everything that hears notices of the update bus; a control inherits it behind its widget class and names it
/// in Q_INTERFACES, so that it can be reached from a QObject:
///
/// \code
/// if (auto *receiver = qobject_cast<CZvQtControlHelp *>(object)) ...
/// \endcode
///
/// A receiver must have left the bus when it dies. The order of the virtual operations is binding.
class ZV_EXPORT CZvQtControlHelp
{
public:
    /// \a followDrawing becomes hooked. \a info is the control's own, and may be null.
    explicit CZvQtControlHelp(bool followDrawing = false, ZvGlobalUIReactorHelp::SPickFirstInfo *info = nullptr);
    virtual ~CZvQtControlHelp();

    /// Something changed. To be filtered first, since most notices do not concern a control; then what is shown is read
    /// again. Called directly, on the main thread, and maybe from inside another such call.
    virtual void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) = 0;

    /// The control follows the drawing, writes to it and fills its list anew when it opens. Set by the constructor;
    /// cleared for the time in which the list is filled.
    bool hooked;
    /// Summary of the selection that the bus keeps up to date; null for a control that needs none. Not owned; must be
    /// set before the control joins the bus, and live until it has left.
    ZvGlobalUIReactorHelp::SPickFirstInfo *pickFirstInfo;
};

Q_DECLARE_INTERFACE(CZvQtControlHelp, "CZvQtControlHelp")

#endif
