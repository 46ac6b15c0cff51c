// SPDX-License-Identifier: MIT
#ifndef ZVSMARTPTR_H
#define ZVSMARTPTR_H

#include "base/zvrxobject.h"

#include <cstddef>

/// The counted pointer. It works on any ZvRxObject; on one that is not counted it is a plain pointer.
template<class T>
class ZvSmartPtr
{
public:
    ZvSmartPtr() = default;
    /// No object.
    ZvSmartPtr(std::nullptr_t) { }
    /// Adds a reference of its own.
    ZvSmartPtr(T *object) : m_object(object) { addRef(); }
    /// Adds a reference.
    ZvSmartPtr(const ZvSmartPtr &other) : m_object(other.m_object) { addRef(); }
    /// Takes the reference over; \a other is null then.
    ZvSmartPtr(ZvSmartPtr &&other) noexcept : m_object(other.m_object) { other.m_object = nullptr; }
    /// Adds a reference; of a pointer to a class derived from \a T.
    template<class U>
    ZvSmartPtr(const ZvSmartPtr<U> &other) : m_object(other.get())
    {
        addRef();
    }
    ~ZvSmartPtr() { release(); }

    /// Takes over the reference that the caller holds: the usual way to hold what `new` has made.
    static ZvSmartPtr adopt(T *object)
    {
        ZvSmartPtr pointer;
        pointer.m_object = object;
        return pointer;
    }

    /// Drops the reference to the object before.
    ZvSmartPtr &operator=(const ZvSmartPtr &other)
    {
        ZvSmartPtr(other).swap(*this);
        return *this;
    }
    ZvSmartPtr &operator=(ZvSmartPtr &&other) noexcept
    {
        ZvSmartPtr(std::move(other)).swap(*this);
        return *this;
    }

    /// Exchanges the objects; no count changes.
    void swap(ZvSmartPtr &other) noexcept { std::swap(m_object, other.m_object); }
    /// The object, without a reference; may be null.
    T *get() const { return m_object; }
    /// No null check: callers test first.
    T *operator->() const { return m_object; }
    T &operator*() const { return *m_object; }
    /// The same, wherever a plain pointer is wanted.
    operator T *() const { return m_object; }
    /// Whether there is no object.
    bool isNull() const { return m_object == nullptr; }

private:
    void addRef()
    {
        if (m_object)
            zvrxAddRef(m_object);
    }
    void release()
    {
        if (m_object)
            zvrxRelease(m_object);
    }

    T *m_object = nullptr;
};

/// Counted pointer to any object of the kernel.
typedef ZvSmartPtr<ZvRxObject> ZvRxObjectPtr;

/// \a object as \a T without a reference, or null. T needs a descriptor.
template<class T>
T *zvrxCast(const ZvRxObject *object)
{
    return object ? static_cast<T *>(object->queryX(T::desc())) : nullptr;
}

#endif
