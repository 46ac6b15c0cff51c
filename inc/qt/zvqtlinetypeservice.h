// SPDX-License-Identifier: MIT
#ifndef ZVQTLINETYPESERVICE_H
#define ZVQTLINETYPESERVICE_H

#include "base/zvexport.h"
#include "base/zvjson.h"
#include "base/zvrxobject.h"

class ZvDbDatabase;

/// How controls find the application's line type manager: the host registers one under the key that is the single
/// character of code 19.
///
/// \code
/// zv_arbitDict_regservice(ZvString(wchar_t(ZvQtLinetypeService::kKey)), service);
/// \endcode
///
/// The host derives its manager from this class: what is registered and is no such object is an error of the host, and
/// opening the manager throws ZvError_NotThatKindOfClass. The place of the operation, the first behind those of
/// ZvRxObject, is binding. Without the service there is no manager to be opened.
class ZV_EXPORT ZvQtLinetypeService : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvQtLinetypeService)
public:
    enum { kKey = 19 };

    ~ZvQtLinetypeService() override;
    /// Runs the manager on \a database, modal. \a bag is the caller's and not null:
    ///
    /// | key | type | |
    /// |---|---|---|
    /// | "curSelName" | text | in: the line type to be selected at the start |
    /// | "idx" | integer | out: the row that the user chose |
    /// | "ltypeName" | text | out: its name |
    /// | "ltypeId" | object id | out: its record |
    ///
    /// When the user gives up, nothing is written.
    virtual void manageLinetypes(ZvDbDatabase *database, ZvJsonPtr bag) = 0;
};

#endif
