// SPDX-License-Identifier: MIT
#ifndef ZVUPDATEBUS_H
#define ZVUPDATEBUS_H

class CZvQtControlHelp;

/// Takes a control off the bus if it is hooked: the first thing its destructor does. Unlike joining it throws nothing,
/// since it runs in destructors.
void zvLeaveUpdateBus(CZvQtControlHelp &control) noexcept;

/// Puts a control on the update bus if it is hooked: made in its constructor, for the rest of that. Nothing where the
/// host offers no bus. Where a later step of the constructor throws, no destructor runs, and the bus would call what
/// has never come to be: the control is taken off again.
class ZvUpdateBusJoin
{
public:
    /// \throws ZvError_NotThatKindOfClass where the bus's key holds what is no ZvRxObject.
    explicit ZvUpdateBusJoin(CZvQtControlHelp &control);
    ~ZvUpdateBusJoin();
    ZvUpdateBusJoin(const ZvUpdateBusJoin &) = delete;
    ZvUpdateBusJoin &operator=(const ZvUpdateBusJoin &) = delete;

private:
    CZvQtControlHelp &m_control;
    const int m_errors; // on their way when the constructor began
};

#endif
