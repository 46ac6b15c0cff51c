// SPDX-License-Identifier: MIT
#ifndef ZVERROR_H
#define ZVERROR_H

#include "base/zvexport.h"
#include "base/zvrxclass.h"

#include <stdexcept>
#include <string>

/// Results of kernel calls. Values other than eOk and eFailed have no meaning as numbers.
namespace Zv {
/// eOk, or why a call has changed nothing.
enum ErrorStatus {
    eOk = 0,
    eFailed = 208, ///< The general failure; the value is part of the interface.
    eNullObjectId = 1,
    eWasErased,
    eNotThatKindOfClass,
    eWasOpenForRead,
    eWasOpenForWrite,
    eNotOpenForWrite,
    eInvalidInput,
    eKeyNotFound,
    eDuplicateKey,
    eNoDatabase,
    eObjectReferenced, ///< Still in use: a layer with entities, the current style.
    eFileAccess,
    eFileDamaged,
    eCancelled,
};
}

/// Base of the exceptions that may leave a kernel call.
class ZV_EXPORT ZvError : public std::runtime_error
{
public:
    /// \a what tells it in plain words, for logs.
    explicit ZvError(const std::string &what);
    ~ZvError() override;
};

/// A query for a class failed where success is required.
class ZV_EXPORT ZvError_NotThatKindOfClass : public ZvError
{
public:
    /// \a actual is the class of the object at hand (null for a null object), \a wanted the class asked for.
    ZvError_NotThatKindOfClass(const ZvRxClass *actual, const ZvRxClass *wanted);
    ~ZvError_NotThatKindOfClass() override;
    /// Class of the object at hand; null for a null object.
    const ZvRxClass *actual() const { return m_actual; }
    /// The class that was asked for.
    const ZvRxClass *wanted() const { return m_wanted; }

private:
    const ZvRxClass *m_actual;
    const ZvRxClass *m_wanted;
};

#endif
