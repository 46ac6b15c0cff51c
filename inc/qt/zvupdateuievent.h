// SPDX-License-Identifier: MIT
#ifndef ZVUPDATEUIEVENT_H
#define ZVUPDATEUIEVENT_H

#include "zvglobaluireactorhelp.h"

#include <QEvent>

/// A notice as an event, for a receiver that wants it from Qt's event queue. The library neither posts nor handles any.
///
/// The pointers of the notice are copied as they are: what they point at may be gone by the time the event arrives.
/// They serve for comparing.
class ZV_EXPORT ZvUpdateUiEvent : public QEvent
{
public:
    /// \a type is the caller's own: no number belongs to the class.
    ZvUpdateUiEvent(const CZvGlobalUIReactorHelp &notice, QEvent::Type type);
    ~ZvUpdateUiEvent() override;

    std::uint64_t kind; ///< A ZvNoticeKind.
    ZvString name; ///< Of the variable or the command; empty for other kinds.
    const ZvDbObject *object; ///< May be gone: to be compared, not to be followed.
    const ZvDbDatabase *database; ///< The same.
    bool affectsSelection; ///< What the selected entities look like may have changed with the object.
};

#endif
