// SPDX-License-Identifier: MIT
#ifndef ZVUPDATEBUS_H
#define ZVUPDATEBUS_H

#include <exception>

class CZvQtControlHelp;

/// Puts a control on the update bus if it is hooked; the last thing its constructor does for the bus. Nothing where the
/// host offers no bus.
/// \throws ZvError_NotThatKindOfClass where the bus's key holds what is no ZvRxObject.
void zvJoinUpdateBus(CZvQtControlHelp &control);

/// Takes a control off the bus if it is hooked: the first thing its destructor does. Unlike joining it throws nothing,
/// since it runs in destructors.
void zvLeaveUpdateBus(CZvQtControlHelp &control) noexcept;

/// Joins the bus as the first step of a constructor of which a later step may throw. No destructor runs then, and the
/// bus would call what has never come to be: the control is taken off again.
class ZvUpdateBusJoin
{
public:
    explicit ZvUpdateBusJoin(CZvQtControlHelp &control) : m_control(control), m_errors(std::uncaught_exceptions())
    {
        zvJoinUpdateBus(control);
    }
    ~ZvUpdateBusJoin()
    {
        if (std::uncaught_exceptions() > m_errors)
            zvLeaveUpdateBus(m_control);
    }
    ZvUpdateBusJoin(const ZvUpdateBusJoin &) = delete;
    ZvUpdateBusJoin &operator=(const ZvUpdateBusJoin &) = delete;

private:
    CZvQtControlHelp &m_control;
    const int m_errors; // on their way when the constructor began
};

#endif
