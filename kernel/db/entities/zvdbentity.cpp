// SPDX-License-Identifier: MIT
#include "db/zvdbentity.h"

#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "entity_draw.h"
#include "entity_geometry.h"
#include "zvdbdatabase_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbEntity, ZvDbObject)
ZvDbEntity::ZvDbEntity() = default;

// ---- shared properties

namespace {

const ZvString &byLayerName()
{
    static const ZvString name(L"ByLayer");
    return name;
}

const ZvString &byBlockName()
{
    static const ZvString name(L"ByBlock");
    return name;
}

const ZvString &normalName()
{
    static const ZvString name(L"Normal");
    return name;
}

bool isSameName(const ZvString &a, const ZvString &b)
{
    return a.compareNoCase(b) == 0;
}

/// The drawing in which an entity's names are looked up: its own, or the current one for an entity of none.
ZvDbDatabase *nameSpaceOf(const ZvDbEntity &entity)
{
    return entity.database() ? entity.database() : curDatabase();
}

ZvString nameOf(ZvDbObjectId id)
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(id);
    return database ? database->nameOf(id) : ZvString();
}

/// Null where the drawing has no such entry.
ZvDbObjectId entryOf(ZvDbObjectId dictionaryId, const ZvString &name)
{
    ZvDbObjectPointer<ZvDbDictionary> dictionary(dictionaryId, ZvDb::kForRead);
    return dictionary ? dictionary->getIdAt(name) : ZvDbObjectId();
}

/// Sets one property of the entity and, if asked, of the attributes that it owns.
template<class T>
Zv::ErrorStatus change(ZvDbEntity &entity, T ZvDbEntityProperties::*member, const T &value, bool doSubents)
{
    ZvDbEntityProperties properties = zvdbProperties(entity);
    properties.*member = value;
    const Zv::ErrorStatus status = zvdbSetProperties(entity, properties);
    if (!doSubents || status != Zv::eOk || !entity.isKindOf(ZvDbBlockReference::desc()) || entity.objectId().isNull())
        return status;
    for (ZvDbObjectId id : static_cast<const ZvDbBlockReference &>(entity).attributeIds()) {
        ZvDbObjectPointer<ZvDbAttribute> attribute(id, ZvDb::kForWrite);
        if (attribute && attribute->ownerId() == entity.objectId())
            change(*attribute, member, value, false);
    }
    return status;
}
}

bool zvdbMayReferTo(const ZvDbEntity &entity, ZvDbObjectId id, const ZvRxClass *cls)
{
    const ZvRxClass *actual = id.objectClass();
    return actual && actual->isDerivedFrom(cls) && !id.isErased() && (!entity.database() || entity.database() == id.database());
}

ZvCmColor ZvDbEntity::color() const
{
    return zvdbProperties(*this).color;
}

Zv::ErrorStatus ZvDbEntity::setColor(const ZvCmColor &color, bool doSubents)
{
    return change(*this, &ZvDbEntityProperties::color, color, doSubents);
}

ZvDbObjectId ZvDbEntity::layerId() const
{
    return zvdbProperties(*this).layer;
}

ZvString ZvDbEntity::layer() const
{
    return nameOf(layerId());
}

Zv::ErrorStatus ZvDbEntity::setLayer(const ZvString &name, bool doSubents, bool allowHidden)
{
    ZvDbDatabase *database = nameSpaceOf(*this);
    if (!database)
        return Zv::eNoDatabase;
    const ZvDbObjectId id = database->priv()->recordId("LAYER", name);
    return id.isNull() ? Zv::eKeyNotFound : setLayer(id, doSubents, allowHidden);
}

Zv::ErrorStatus ZvDbEntity::setLayer(ZvDbObjectId id, bool doSubents, bool allowHidden)
{
    if (!zvdbMayReferTo(*this, id, ZvDbLayerTableRecord::desc()))
        return Zv::eInvalidInput;
    if (!allowHidden) {
        ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
        if (layer && layer->isHidden())
            return Zv::eInvalidInput;
    }
    return change(*this, &ZvDbEntityProperties::layer, id, doSubents);
}

ZvDb::LineWeight ZvDbEntity::lineWeight() const
{
    return zvdbProperties(*this).lineWeight;
}

Zv::ErrorStatus ZvDbEntity::setLineWeight(ZvDb::LineWeight weight, bool doSubents)
{
    return change(*this, &ZvDbEntityProperties::lineWeight, weight, doSubents);
}

ZvString ZvDbEntity::linetype() const
{
    const ZvDbObjectId id = linetypeId();
    return id.isNull() ? byLayerName() : nameOf(id);
}

ZvDbObjectId ZvDbEntity::linetypeId() const
{
    const ZvDbObjectId id = zvdbProperties(*this).linetype;
    return id.isNull() && database() ? database()->byLayerLinetype() : id;
}

Zv::ErrorStatus ZvDbEntity::setLinetype(const ZvString &name, bool doSubents)
{
    ZvDbDatabase *database = nameSpaceOf(*this);
    const ZvDbObjectId id = database ? database->priv()->recordId("LTYPE", name) : ZvDbObjectId();
    if (!id.isNull())
        return setLinetype(id, doSubents);
    if (isSameName(name, byLayerName()))
        return change(*this, &ZvDbEntityProperties::linetype, ZvDbObjectId(), doSubents);
    return database ? Zv::eKeyNotFound : Zv::eNoDatabase;
}

Zv::ErrorStatus ZvDbEntity::setLinetype(ZvDbObjectId id, bool doSubents)
{
    if (!zvdbMayReferTo(*this, id, ZvDbLinetypeTableRecord::desc()))
        return Zv::eInvalidInput;
    // By layer is the null id: equal properties must be equal values.
    const bool isByLayer = id == id.database()->byLayerLinetype();
    return change(*this, &ZvDbEntityProperties::linetype, isByLayer ? ZvDbObjectId() : id, doSubents);
}

double ZvDbEntity::linetypeScale() const
{
    return zvdbProperties(*this).linetypeScale;
}

Zv::ErrorStatus ZvDbEntity::setLinetypeScale(double scale, bool doSubents)
{
    if (!(scale > 0.0) || !zvdbgeo::isUsable(scale))
        return Zv::eInvalidInput;
    return change(*this, &ZvDbEntityProperties::linetypeScale, scale, doSubents);
}

ZvString ZvDbEntity::material() const
{
    const ZvDbObjectId id = materialId();
    return id.isNull() ? byLayerName() : nameOf(id);
}

ZvDbObjectId ZvDbEntity::materialId() const
{
    return zvdbProperties(*this).material;
}

Zv::ErrorStatus ZvDbEntity::setMaterial(const ZvString &name, bool doSubents)
{
    if (isSameName(name, byLayerName()))
        return change(*this, &ZvDbEntityProperties::material, ZvDbObjectId(), doSubents);
    ZvDbDatabase *database = nameSpaceOf(*this);
    if (!database)
        return Zv::eNoDatabase;
    const ZvDbObjectId id = entryOf(database->materialDictionaryId(), name);
    if (id.isNull())
        return Zv::eKeyNotFound;
    return change(*this, &ZvDbEntityProperties::material, id, doSubents);
}

ZvString ZvDbEntity::plotStyleName() const
{
    const ZvDbEntityProperties &properties = zvdbProperties(*this);
    switch (properties.plotStyleType) {
    case ZvDb::kPlotStyleByLayer:
        return byLayerName();
    case ZvDb::kPlotStyleByBlock:
        return byBlockName();
    case ZvDb::kPlotStyleNormal:
        return normalName();
    case ZvDb::kPlotStyleById:
        break;
    }
    return nameOf(properties.plotStyle);
}

Zv::ErrorStatus ZvDbEntity::setPlotStyleName(const ZvString &name, bool doSubents)
{
    ZvDb::PlotStyleNameType type = ZvDb::kPlotStyleById;
    ZvDbObjectId id;
    if (isSameName(name, byLayerName())) {
        type = ZvDb::kPlotStyleByLayer;
    } else if (isSameName(name, byBlockName())) {
        type = ZvDb::kPlotStyleByBlock;
    } else if (isSameName(name, normalName())) {
        type = ZvDb::kPlotStyleNormal;
    } else {
        ZvDbDatabase *database = nameSpaceOf(*this);
        if (!database)
            return Zv::eNoDatabase;
        id = entryOf(database->plotStyleDictionaryId(), name);
        if (id.isNull())
            return Zv::eKeyNotFound;
    }
    const Zv::ErrorStatus status = change(*this, &ZvDbEntityProperties::plotStyle, id, doSubents);
    return status == Zv::eOk ? change(*this, &ZvDbEntityProperties::plotStyleType, type, doSubents) : status;
}

ZvCmTransparency ZvDbEntity::transparency() const
{
    return zvdbProperties(*this).transparency;
}

Zv::ErrorStatus ZvDbEntity::setTransparency(const ZvCmTransparency &transparency, bool doSubents)
{
    return change(*this, &ZvDbEntityProperties::transparency, transparency, doSubents);
}

ZvDb::Visibility ZvDbEntity::visibility() const
{
    return zvdbProperties(*this).visibility;
}

Zv::ErrorStatus ZvDbEntity::setVisibility(ZvDb::Visibility visibility, bool doSubents)
{
    return change(*this, &ZvDbEntityProperties::visibility, visibility, doSubents);
}

void ZvDbEntity::setPropertiesFrom(const ZvDbEntity *other)
{
    if (other)
        zvdbSetProperties(*this, zvdbProperties(*other));
}

void ZvDbEntity::setDatabaseDefaults(const ZvDbDatabase *database)
{
    if (!database)
        database = curDatabase();
    if (!database)
        return;
    ZvDbEntityProperties properties;
    properties.color = database->cecolor();
    properties.layer = database->clayer();
    properties.linetype = database->celtype() == database->byLayerLinetype() ? ZvDbObjectId() : database->celtype();
    properties.lineWeight = database->celweight();
    properties.linetypeScale = database->celtscale();
    const ZvDbObjectId material = database->cmaterial();
    properties.material = isSameName(nameOf(material), byLayerName()) ? ZvDbObjectId() : material;
    zvdbSetProperties(*this, properties);
    setPlotStyleName(database->cplotstyle());
}

std::uint32_t ZvDbEntity::propertiesNumber() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this);
    return database ? database->propertyNumbers[ZvDbStubTable::indexOf(ZvDbObjectAccess::stub(this))] : 0;
}

// ---- what a kind of entity may leave as it is

Zv::ErrorStatus ZvDbEntity::transformBy(const ZvGeMatrix3d &)
{
    return Zv::eInvalidInput;
}

Zv::ErrorStatus ZvDbEntity::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    return Zv::eFailed;
}

void ZvDbEntity::worldDraw(ZvGiWorldDraw &) const { }

// ---- copies

Zv::ErrorStatus zvdbCopyEntity(ZvDbObjectId source, ZvDbObjectId block, const ZvGeMatrix3d &matrix, ZvDbObjectId &copy)
{
    copy = ZvDbObjectId();
    ZvDbObjectPointer<ZvDbEntity> original(source, ZvDb::kForRead);
    if (!original)
        return original.openStatus();
    if (source.database() != block.database())
        return Zv::eInvalidInput;
    const auto cloneOf = [](const ZvDbEntity &entity) {
        return std::unique_ptr<ZvDbEntity>(static_cast<ZvDbEntity *>(entity.clone()));
    };
    std::unique_ptr<ZvDbEntity> entity = cloneOf(*original);
    if (!entity)
        return Zv::eInvalidInput;
    Zv::ErrorStatus status = entity->transformBy(matrix);
    if (status != Zv::eOk)
        return status;
    // The attributes of the copy are copies too; until they are there it has none.
    std::vector<ZvDbObjectId> attributes;
    auto *insert = zvrxCast<ZvDbBlockReference>(entity.get());
    if (insert)
        attributes.swap(insert->m_attributes);
    {
        ZvDbObjectPointer<ZvDbBlockTableRecord> owner(block, ZvDb::kForWrite);
        if (!owner)
            return owner.openStatus();
        status = owner->appendEntity(entity.get(), copy);
        if (status != Zv::eOk)
            return status;
    }
    ZvDbEntity *const added = entity.release(); // the database's now, open for write
    for (ZvDbObjectId id : attributes) {
        ZvDbObjectPointer<ZvDbAttribute> attribute(id, ZvDb::kForRead);
        std::unique_ptr<ZvDbEntity> attributeCopy = attribute ? cloneOf(*attribute) : nullptr;
        ZvDbObjectId attributeId;
        if (!attributeCopy || attributeCopy->transformBy(matrix) != Zv::eOk
            || copy.database()->addObject(attributeCopy.get(), attributeId, copy) != Zv::eOk)
            continue;
        insert->m_attributes.push_back(attributeId);
        attributeCopy.release()->close();
    }
    added->close();
    return Zv::eOk;
}

// ---- classes

void zvdbListEntityClasses(std::deque<ZvDbClass> &classes)
{
    classes.push_back(ZvDbClass::of<ZvDbLine>("LINE"));
    classes.push_back(ZvDbClass::of<ZvDbRay>("RAY"));
    classes.push_back(ZvDbClass::of<ZvDbXline>("XLINE"));
    classes.push_back(ZvDbClass::of<ZvDbPoint>("POINT"));
    classes.push_back(ZvDbClass::of<ZvDbCircle>("CIRCLE"));
    classes.push_back(ZvDbClass::of<ZvDbArc>("ARC"));
    classes.push_back(ZvDbClass::of<ZvDbEllipse>("ELLIPSE"));
    classes.push_back(ZvDbClass::of<ZvDbPolyline>("LWPOLYLINE"));
    classes.push_back(ZvDbClass::of<ZvDb2dPolyline>("POLYLINE"));
    classes.push_back(ZvDbClass::of<ZvDbSpline>("SPLINE"));
    classes.push_back(ZvDbClass::of<ZvDbSolid>("SOLID"));
    classes.push_back(ZvDbClass::of<ZvDbFace>("3DFACE"));
    classes.push_back(ZvDbClass::of<ZvDbText>("TEXT"));
    classes.push_back(ZvDbClass::of<ZvDbAttribute>("ATTRIB"));
    classes.push_back(ZvDbClass::of<ZvDbAttributeDefinition>("ATTDEF"));
    classes.push_back(ZvDbClass::of<ZvDbMText>("MTEXT"));
    classes.push_back(ZvDbClass::of<ZvDbBlockReference>("INSERT"));
    classes.push_back(ZvDbClass::of<ZvDbHatch>("HATCH"));
    classes.push_back(ZvDbClass::of<ZvDbDimension>("DIMENSION"));
    classes.push_back(ZvDbClass::of<ZvDbLeader>("LEADER"));
    classes.push_back(ZvDbClass::of<ZvDbMLeader>("MULTILEADER"));
    classes.push_back(ZvDbClass::of<ZvDbTable>("ACAD_TABLE"));
    classes.push_back(ZvDbClass::of<ZvDbRasterImage>("IMAGE"));
    classes.push_back(ZvDbClass::of<ZvDbWipeout>("WIPEOUT"));
    classes.push_back(ZvDbClass::of<ZvDbViewport>("VIEWPORT"));
    classes.push_back(ZvDbClass::of<ZvDbProxyEntity>(nullptr));
    for (ZvDbClass &cls : classes) {
        cls.isEntity = cls.isEntity || cls.descriptor->isDerivedFrom(ZvDbEntity::desc());
        cls.isBlockReference = cls.isBlockReference || cls.descriptor->isDerivedFrom(ZvDbBlockReference::desc());
    }
}
