// SPDX-License-Identifier: MIT
#ifndef ZVRXOBJECT_H
#define ZVRXOBJECT_H

#include "base/zvexport.h"
#include "base/zvrxclass.h"

#include <atomic>
#include <cstdint>
#include <utility>

/// Root of all kernel classes.
///
/// The virtual table holds exactly eight slots before a derived class's own: two for the destructor, then the six
/// operations in the order declared here. Services are called by their first own slots, so the order is binding.
///
/// A plain object is not counted. ZvRxObjectImpl adds a count, ZvStaticRxObject states that there is none.
class ZV_EXPORT ZvRxObject
{
public:
    virtual ~ZvRxObject();
    /// The object's actual class.
    virtual ZvRxClass *isA() const;
    /// A new object equal to this one, owned by the caller; null where a class does not support it (the default).
    virtual ZvRxObject *clone() const;
    /// Takes over the state of \a other; false where the classes do not fit (the default).
    virtual bool copyFrom(const ZvRxObject *other);
    /// Identity by default.
    virtual bool isEqualTo(const ZvRxObject *other) const;
    /// Below, equal to or above zero; 0 by default.
    virtual int comparedTo(const ZvRxObject *other) const;
    /// Answers what is no class of the object's own line: the protocol object of its class by default. The counting
    /// mixins answer the three marker classes here, the number of references as a small integer in pointer form.
    virtual ZvRxObject *subQueryX(const ZvRxClass *cls) const;

    /// The object as \a cls, or null. Adds no reference.
    ZvRxObject *queryX(const ZvRxClass *cls) const
    {
        return isA()->isDerivedFrom(cls) ? const_cast<ZvRxObject *>(this) : subQueryX(cls);
    }
    /// Whether the object is of \a cls or a class derived from it; protocol objects do not count.
    bool isKindOf(const ZvRxClass *cls) const { return isA()->isDerivedFrom(cls); }

    /// The class's descriptor. Never null.
    static ZvRxClass *desc();
};

/// Stands in the class: desc() and isA(). What follows is private.
#define ZVRX_DECLARE_MEMBERS(ClassName) \
public:                                 \
    static ZvRxClass *desc();           \
    ZvRxClass *isA() const override;    \
                                        \
private:

/// Stands in one source file: the descriptor of a class, below that of its parent.
#define ZVRX_DEFINE_MEMBERS(ClassName, ParentName)                   \
    ZvRxClass *ClassName::desc()                                     \
    {                                                                \
        static ZvRxClass descriptor(#ClassName, ParentName::desc()); \
        return &descriptor;                                          \
    }                                                                \
    ZvRxClass *ClassName::isA() const                                \
    {                                                                \
        return desc();                                               \
    }

/// Marker classes passed to subQueryX().
ZV_EXPORT const ZvRxClass *zvrxIsAddRef();
/// Asks for one reference less.
ZV_EXPORT const ZvRxClass *zvrxIsRelease();
/// Asks for the number of references.
ZV_EXPORT const ZvRxClass *zvrxIsNumRefs();

/// Add, drop and count references through the markers. On an object that is not counted, and on null: no effect, 0.
ZV_EXPORT void zvrxAddRef(const ZvRxObject *object);
/// Drops a reference; the last one deletes the object. Null, and an object that is not counted: no effect.
ZV_EXPORT void zvrxRelease(const ZvRxObject *object);
/// Number of references; 0 for null and an object that is not counted.
ZV_EXPORT int zvrxNumRefs(const ZvRxObject *object);

/// Reports "(m_nRefCounter > 0)" through ZvAssert when \a count is no positive number. Used by the counting mixins.
ZV_EXPORT void zvrxCheckRefCounter(std::int32_t count);

/// Counting mixin on top of \a T. The count starts at 1, changes atomically, and the object deletes itself at 0.
/// The second parameter is the class whose subQueryX() answers everything but the markers.
template<class T, class Base = T>
class ZvRxObjectImpl : public T
{
public:
    /// Passes all arguments on to the class below.
    template<class... Args>
    explicit ZvRxObjectImpl(Args &&...args) : T(std::forward<Args>(args)...)
    {
    }

    /// Adds, drops and counts references for the three markers.
    ZvRxObject *subQueryX(const ZvRxClass *cls) const override
    {
        if (cls == zvrxIsAddRef()) {
            m_nRefCounter.fetch_add(1, std::memory_order_relaxed);
            return nullptr;
        }
        if (cls == zvrxIsRelease()) {
            zvrxCheckRefCounter(m_nRefCounter.load(std::memory_order_relaxed));
            if (m_nRefCounter.fetch_sub(1, std::memory_order_acq_rel) == 1)
                delete this;
            return nullptr;
        }
        if (cls == zvrxIsNumRefs())
            return reinterpret_cast<ZvRxObject *>(std::intptr_t(m_nRefCounter.load(std::memory_order_relaxed)));
        return Base::subQueryX(cls);
    }

private:
    mutable std::atomic<std::int32_t> m_nRefCounter {1};
};

/// Mixin for objects whose life somebody else governs: the marker queries have no effect.
template<class T>
class ZvStaticRxObject : public T
{
public:
    using T::T;
    /// Null for the three markers.
    ZvRxObject *subQueryX(const ZvRxClass *cls) const override
    {
        if (cls == zvrxIsAddRef() || cls == zvrxIsRelease() || cls == zvrxIsNumRefs())
            return nullptr;
        return T::subQueryX(cls);
    }
};

#endif
