// SPDX-License-Identifier: MIT
#ifndef ZVRXCLASS_H
#define ZVRXCLASS_H

#include "base/zvexport.h"

class ZvRxObject;

/// Run-time descriptor of a class. One exists per class, for the life of the process; its address is its identity.
///
/// A class declares its descriptor with ZVRX_DECLARE_MEMBERS and defines it, in one source file, with
/// ZVRX_DEFINE_MEMBERS. The descriptor is made when it is first asked for, after its parent's.
class ZV_EXPORT ZvRxClass
{
public:
    /// \a name is borrowed and must live as long as the process; \a parent is null for the root only.
    ZvRxClass(const char *name, ZvRxClass *parent);
    ZvRxClass(const ZvRxClass &) = delete;
    ZvRxClass &operator=(const ZvRxClass &) = delete;

    /// As it is spelled in the code. Never null.
    const char *name() const { return m_name; }
    /// Null for the root only.
    const ZvRxClass *parent() const { return m_parent; }

    /// True for the class itself and every ancestor. One comparison, whatever the depth.
    bool isDerivedFrom(const ZvRxClass *other) const
    {
        return other && other->m_depth <= m_depth && m_ancestors[other->m_depth] == other;
    }

    /// Attaches a protocol object: objects of this class and of its descendants answer \a protocol with it when they
    /// are queried, unless a descendant has one of its own. Not owned. Null detaches.
    void addX(const ZvRxClass *protocol, ZvRxObject *object);
    /// The protocol object for \a protocol of this class or of its nearest ancestor that has one; null when none has.
    ZvRxObject *getX(const ZvRxClass *protocol) const;

    static constexpr int kMaxDepth = 16; ///< Most ancestors that a class may have.

private:
    struct Protocol
    {
        const ZvRxClass *protocol;
        ZvRxObject *object;
        Protocol *next;
    };

    const char *m_name;
    ZvRxClass *m_parent;
    int m_depth;
    const ZvRxClass *m_ancestors[kMaxDepth] = {};
    Protocol *m_protocols = nullptr;
};

#endif
