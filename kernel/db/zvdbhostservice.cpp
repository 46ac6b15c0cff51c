// SPDX-License-Identifier: MIT
#include "db/zvdbhostservice.h"

#include "base/zvregistry.h"
#include "db/zvdbstyles.h"
#include "zvdbdatabase_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbHostService, ZvRxObject)

// ---- the edit frame

void ZvDbHostService::beginFrame(ZvDbDatabase *database)
{
    if (database)
        database->beginFrame();
}

void ZvDbHostService::endFrame(ZvDbDatabase *database)
{
    if (database)
        database->endFrame();
}

void ZvDbHostService::abortFrame(ZvDbDatabase *database)
{
    if (database)
        database->abortFrame();
}

// ---- variables

ZvResBuf *ZvDbHostService::readVariable(const ZvString &name, const ZvDbDatabase *database)
{
    if (!database)
        return nullptr;
    ZvResBuf *value = zvutNewRb(ZvRes::kNone);
    if (database->getVariable(name, *value) == Zv::eOk)
        return value;
    zvutRelRb(value);
    return nullptr;
}

Zv::ErrorStatus ZvDbHostService::writeVariable(const ZvString &name, const ZvResBuf *value, ZvDbDatabase *database)
{
    if (!database || !value)
        return Zv::eInvalidInput;
    return database->setVariable(name, *value);
}

// ---- blocks, viewports, dictionaries

ZvDbObjectId ZvDbHostService::modelSpaceId(const ZvDbDatabase *database)
{
    return database ? database->modelSpaceId() : ZvDbObjectId();
}

ZvDbObjectId ZvDbHostService::paperSpaceId(const ZvDbDatabase *database)
{
    return database ? database->paperSpaceId() : ZvDbObjectId();
}

void ZvDbHostService::layoutIds(const ZvDbLayout *layout, ZvDbObjectId &active, ZvDbObjectId &overall)
{
    active = overall = ZvDbObjectId();
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(layout);
    if (!d)
        return;
    if (layout->isModelType()) {
        active = overall = d->recordId("VPORT", L"*Active");
        return;
    }
    active = overall = d->overallViewport(layout->getBlockTableRecordId());
    const ZvDbObjectId workedIn = d->viewportWorkedIn();
    if (!workedIn.isNull() && d->stubs[workedIn.index()].owner == layout->getBlockTableRecordId().index())
        active = workedIn;
}

ZvDbObjectId ZvDbHostService::currentViewportId(const ZvDbDatabase *database)
{
    return database ? database->currentViewportId() : ZvDbObjectId();
}

ZvDbObjectId ZvDbHostService::materialDictionaryId(const ZvDbDatabase *database)
{
    return database ? database->materialDictionaryId() : ZvDbObjectId();
}

ZvDbObjectId ZvDbHostService::plotStyleDictionaryId(const ZvDbDatabase *database, bool create)
{
    return database ? database->plotStyleDictionaryId(create) : ZvDbObjectId();
}

ZvDbObjectId ZvDbHostService::mleaderStyleDictionaryId(const ZvDbDatabase *database)
{
    return database ? database->mleaderStyleDictionaryId() : ZvDbObjectId();
}

ZvDbObjectId ZvDbHostService::tableStyleDictionaryId(const ZvDbDatabase *database)
{
    return database ? database->tableStyleDictionaryId() : ZvDbObjectId();
}

// ---- text styles

namespace {

/// The last switch among the extended data of an application: "AcadAnnotative" has a version in front of it.
bool lastSwitch(const ZvDbTextStyleTableRecord *record, const ZvString &application)
{
    bool on = false;
    ZvResBuf *chain = record ? record->xData(application) : nullptr;
    for (const ZvResBuf *value = chain; value; value = value->rbnext) {
        if (value->restype == 1070)
            on = value->resval.rint != 0;
    }
    zvutRelRb(chain);
    return on;
}

} // namespace

bool ZvDbHostService::textStyleFirstFlag(const ZvDbTextStyleTableRecord *record)
{
    static const ZvString application(L"AcadAnnotative");
    return lastSwitch(record, application);
}

bool ZvDbHostService::textStyleSecondFlag(const ZvDbTextStyleTableRecord *record)
{
    static const ZvString application(L"AcadAnnoPO");
    return lastSwitch(record, application);
}

// ---- ZvGsDbRootLinkage

namespace {

class LayoutExtension : public ZvGsDbRootLinkage::DatabaseExtension
{
public:
    ZvRxObject *layoutObject(const ZvDbDatabase *database) const override
    {
        const ZvDbObjectId id = database ? database->currentLayoutId() : ZvDbObjectId();
        return id.isNull() ? nullptr : database->priv()->objectAt(id.index());
    }
};

ZvGsDbRootLinkage::DatabaseExtension *&extension()
{
    static LayoutExtension standard;
    static ZvGsDbRootLinkage::DatabaseExtension *current = &standard;
    return current;
}

[[maybe_unused]] const bool serviceRegistered = [] {
    static ZvDbHostService service;
    zvrxSetService(3, &service);
    return true;
}();

} // namespace

ZvGsDbRootLinkage::DatabaseExtension::~DatabaseExtension() = default;

ZvGsDbRootLinkage::DatabaseExtension *ZvGsDbRootLinkage::getDbBaseDatabasePE()
{
    return extension();
}

void ZvGsDbRootLinkage::setDbBaseDatabasePE(DatabaseExtension *value)
{
    extension() = value;
}
