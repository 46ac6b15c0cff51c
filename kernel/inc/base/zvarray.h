// SPDX-License-Identifier: MIT
#ifndef ZVARRAY_H
#define ZVARRAY_H

#include "base/zvlog.h"
#include "base/zvrxobject.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Allocation policy of the arrays: copies and destroys elements as objects.
template<class T>
struct ZvObjectsAllocator
{
    /// Room for \a count elements, not constructed.
    static T *allocate(int count) { return static_cast<T *>(::operator new(sizeof(T) * std::size_t(count))); }
    /// Gives back room that allocate() gave.
    static void free(T *memory) { ::operator delete(memory); }
    /// Makes an element at this place, value-initialised or as a copy.
    static void construct(T *at) { new (static_cast<void *>(at)) T(); }
    static void construct(T *at, const T &value) { new (static_cast<void *>(at)) T(value); }
    /// Moves an element into a place without one; \a from is destroyed.
    static void move(T *to, T *from)
    {
        new (static_cast<void *>(to)) T(std::move(*from));
        from->~T();
    }
    /// Ends an element's life; the room stays.
    static void destroy(T *at) { at->~T(); }
};

/// Growable, contiguous array. The logical length counts elements, the physical length the room for them.
/// An index out of range is reported through ZvAssert and answered with a value-initialised spare element.
template<class T, class A = ZvObjectsAllocator<T>>
class ZvArray
{
public:
    /// The type of an element.
    typedef T value_type;
    /// Runs over the elements; good until the array grows.
    typedef T *iterator;
    /// The same for reading.
    typedef const T *const_iterator;

    /// Empty with room for \a physicalLength elements. The room grows by \a growLength at least, or by half.
    explicit ZvArray(int physicalLength = 0, int growLength = 8) : m_grow(growLength) { setPhysicalLength(physicalLength); }
    /// Copies the elements.
    ZvArray(const ZvArray &other) : m_grow(other.m_grow) { append(other); }
    /// Takes the elements over.
    ZvArray(ZvArray &&other) noexcept { swap(other); }
    /// Takes over the elements; the step of growth of the other array too.
    ZvArray &operator=(const ZvArray &other)
    {
        if (this != &other) {
            ZvArray copy(other);
            swap(copy);
        }
        return *this;
    }
    ZvArray &operator=(ZvArray &&other) noexcept
    {
        swap(other);
        return *this;
    }
    ~ZvArray()
    {
        destroyFrom(0);
        A::free(m_elements);
    }

    /// Number of elements.
    int length() const { return m_length; }
    /// The same.
    int logicalLength() const { return m_length; }
    /// Number of elements that there is room for.
    int physicalLength() const { return m_room; }
    /// By how many elements the room grows at least.
    int growLength() const { return m_grow; }
    /// True without elements.
    bool isEmpty() const { return m_length == 0; }
    /// Whether there is an element \a i.
    bool isValid(int i) const { return i >= 0 && i < m_length; }

    /// The element \a i, from 0.
    T &operator[](int i) { return isValid(i) ? m_elements[i] : outOfRange(); }
    const T &operator[](int i) const { return isValid(i) ? m_elements[i] : const_cast<ZvArray *>(this)->outOfRange(); }
    /// The same.
    T &at(int i) { return (*this)[i]; }
    const T &at(int i) const { return (*this)[i]; }
    /// The element at the end in question.
    T &first() { return (*this)[0]; }
    T &last() { return (*this)[m_length - 1]; }
    /// The first of the elements, which lie one behind the other; may be null for an empty array.
    const T *asArrayPtr() const { return m_elements; }
    T *asArrayPtr() { return m_elements; }

    /// For walks over all elements.
    iterator begin() { return m_elements; }
    iterator end() { return m_elements + m_length; }
    const_iterator begin() const { return m_elements; }
    const_iterator end() const { return m_elements + m_length; }

    /// The new element's position.
    int append(const T &value)
    {
        insertAt(m_length, value);
        return m_length - 1;
    }
    /// Adds all elements of the other array at the end.
    void append(const ZvArray &other)
    {
        setPhysicalLength(std::max(m_room, m_length + other.m_length));
        for (int i = 0, n = other.m_length; i < n; ++i)
            append(other.m_elements[i]);
    }
    /// Inserts before the element \a position, or at the end; \a position lies between 0 and the length.
    void insertAt(int position, const T &value)
    {
        T copy(value); // the value may be one of ours, and move with the growth
        if (m_length == m_room)
            setPhysicalLength(m_room + std::max({m_grow, m_room / 2, 1}));
        for (int i = m_length; i > position; --i)
            A::move(m_elements + i, m_elements + i - 1);
        new (static_cast<void *>(m_elements + position)) T(std::move(copy));
        ++m_length;
    }
    /// Keeps the order of the others.
    void removeAt(int position)
    {
        if (!isValid(position)) {
            outOfRange();
            return;
        }
        A::destroy(m_elements + position);
        for (int i = position + 1; i < m_length; ++i)
            A::move(m_elements + i - 1, m_elements + i);
        --m_length;
    }
    /// Removes the element at the end in question; reported through ZvAssert for an empty array.
    void removeFirst() { removeAt(0); }
    void removeLast() { removeAt(m_length - 1); }
    /// Removes the first equal element; false when there is none.
    bool remove(const T &value)
    {
        const int position = find(value);
        if (position < 0)
            return false;
        removeAt(position);
        return true;
    }
    /// Position of the first equal element from \a from on, -1 when there is none.
    int find(const T &value, int from = 0) const
    {
        for (int i = std::max(from, 0); i < m_length; ++i) {
            if (m_elements[i] == value)
                return i;
        }
        return -1;
    }
    /// Whether some element is equal.
    bool contains(const T &value) const { return find(value) >= 0; }
    /// Removes all elements; the room stays.
    void clear() { destroyFrom(0); }

    /// New elements are value-initialised; elements past the length are destroyed from the last to the first.
    void setLogicalLength(int length)
    {
        if (length > m_room)
            setPhysicalLength(length);
        destroyFrom(length);
        for (; m_length < length; ++m_length)
            A::construct(m_elements + m_length);
    }
    /// Never below the logical length.
    void setPhysicalLength(int room)
    {
        room = std::max(room, m_length);
        if (room == m_room)
            return;
        T *elements = room ? A::allocate(room) : nullptr;
        for (int i = 0; i < m_length; ++i)
            A::move(elements + i, m_elements + i);
        A::free(m_elements);
        m_elements = elements;
        m_room = room;
    }
    /// Exchanges the content without copying an element.
    void swap(ZvArray &other) noexcept
    {
        std::swap(m_elements, other.m_elements);
        std::swap(m_length, other.m_length);
        std::swap(m_room, other.m_room);
        std::swap(m_grow, other.m_grow);
    }

private:
    void destroyFrom(int length)
    {
        for (; m_length > length; --m_length)
            A::destroy(m_elements + m_length - 1);
    }
    T &outOfRange()
    {
        ZvAssert("this->isValid(i)", __FILE__, __LINE__);
        static thread_local std::unique_ptr<T> spare;
        spare = std::make_unique<T>();
        return *spare;
    }

    T *m_elements = nullptr;
    int m_length = 0;
    int m_room = 0;
    int m_grow = 8;
};

/// Array with shared, counted storage: an assignment shares it and drops the old one, and the elements are released
/// from the last to the first when the last owner lets go. A change through one owner is seen by all.
template<class T, class A = ZvObjectsAllocator<T>>
class ZvArrayEx
{
public:
    /// Empty, with storage of its own; see ZvArray for the two numbers.
    explicit ZvArrayEx(int physicalLength = 0, int growLength = 8)
        : m_storage(std::make_shared<ZvArray<T, A>>(physicalLength, growLength))
    {
    }

    /// Number of elements.
    int length() const { return m_storage->length(); }
    /// True without elements.
    bool isEmpty() const { return m_storage->isEmpty(); }
    /// The element \a i, from 0; as in ZvArray out of range.
    T &operator[](int i) { return (*m_storage)[i]; }
    const T &operator[](int i) const { return static_cast<const ZvArray<T, A> &>(*m_storage)[i]; }
    /// Adds at the end, for all owners; the new element's position.
    int append(const T &value) { return m_storage->append(value); }
    /// Removes an element, for all owners; the order of the others stays.
    void removeAt(int position) { m_storage->removeAt(position); }
    /// Removes all elements, for all owners.
    void clear() { m_storage->clear(); }
    /// For walks over all elements.
    T *begin() { return m_storage->begin(); }
    T *end() { return m_storage->end(); }
    const T *begin() const { return static_cast<const ZvArray<T, A> &>(*m_storage).begin(); }
    const T *end() const { return static_cast<const ZvArray<T, A> &>(*m_storage).end(); }

private:
    std::shared_ptr<ZvArray<T, A>> m_storage;
};

#endif
