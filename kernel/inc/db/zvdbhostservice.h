// SPDX-License-Identifier: MIT
#ifndef ZVDBHOSTSERVICE_H
#define ZVDBHOSTSERVICE_H

#include "db/zvdbdatabase.h"
#include "db/zvresbuf.h"

class ZvDbLayout;
class ZvDbTextStyleTableRecord;

/// The host database service, zvrxGetService(3): what applications ask about a database beside its own operations.
/// Never null while the kernel is loaded.
class ZV_EXPORT ZvDbHostService : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbHostService)
public:
    /// The object with all these operations, which is the service itself: callers reach them either way. Never null.
    ZvDbHostService *applicationObject() { return this; }

    /// The edit frame of a database. Frames nest; abort puts back everything written since the matching begin. A frame
    /// in which nothing was written leaves no undo step. Null: nothing.
    void beginFrame(ZvDbDatabase *database);
    void endFrame(ZvDbDatabase *database);
    void abortFrame(ZvDbDatabase *database);

    /// A variable of the drawing by name: "CTABLESTYLE" and "CMLEADERSTYLE" as ids, "UCSORTHOVIEW" and "PUCSORTHOVIEW"
    /// as 32-bit integers. A buffer that the caller frees, null when it cannot be read.
    ZvResBuf *readVariable(const ZvString &name, const ZvDbDatabase *database);
    /// Raises the change of the variable.
    Zv::ErrorStatus writeVariable(const ZvString &name, const ZvResBuf *value, ZvDbDatabase *database);

    /// Block of model space; null for null.
    ZvDbObjectId modelSpaceId(const ZvDbDatabase *database);
    /// Block of the current paper layout; null for null.
    ZvDbObjectId paperSpaceId(const ZvDbDatabase *database);
    /// The active viewport of a layout and its overall viewport: equal while the work is on the paper itself.
    void layoutIds(const ZvDbLayout *layout, ZvDbObjectId &active, ZvDbObjectId &overall);
    /// The viewport at work; may be null.
    ZvDbObjectId currentViewportId(const ZvDbDatabase *database);

    /// Null when the drawing has none.
    ZvDbObjectId materialDictionaryId(const ZvDbDatabase *database);
    /// Dictionary of the plot styles by name; made where \a create says so.
    ZvDbObjectId plotStyleDictionaryId(const ZvDbDatabase *database, bool create = false);
    /// Dictionary of the multileader styles; null when the drawing has none.
    ZvDbObjectId mleaderStyleDictionaryId(const ZvDbDatabase *database);
    /// Dictionary of the table styles; null when the drawing has none.
    ZvDbObjectId tableStyleDictionaryId(const ZvDbDatabase *database);

    /// Two questions on a text style: whether it is annotative, and whether it matches the layout's orientation.
    bool textStyleFirstFlag(const ZvDbTextStyleTableRecord *record);
    bool textStyleSecondFlag(const ZvDbTextStyleTableRecord *record);
};

/// Yields the layout object of a database, a link between the database and what draws it.
class ZV_EXPORT ZvGsDbRootLinkage
{
public:
    /// What an application adds to databases.
    class ZV_EXPORT DatabaseExtension
    {
    public:
        virtual ~DatabaseExtension();
        /// The object of the layout at hand, closed; null when there is none. A ZvDbLayout in this kernel.
        virtual ZvRxObject *layoutObject(const ZvDbDatabase *database) const = 0;
    };
    /// Null is a state that callers survive.
    static DatabaseExtension *getDbBaseDatabasePE();
    /// Not owned; null takes the extension away.
    static void setDbBaseDatabasePE(DatabaseExtension *extension);
};

#endif
