// SPDX-License-Identifier: MIT
#ifndef ZVDBENTITY_H
#define ZVDBENTITY_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "db/zvdbobject.h"
#include "db/zvgiworlddraw.h"

/// Base of all entities.
///
/// The properties that all entities share stand side by side in the database, apart from the entity's own data:
/// reading them from a million entities touches nothing else and allocates nothing. Names are shared strings.
///
/// In the setters, \a doSubents passes the change on to what the entity owns (vertices, attributes).
class ZV_EXPORT ZvDbEntity : public ZvDbObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbEntity)
public:
    /// By layer is not resolved.
    ZvCmColor color() const;
    Zv::ErrorStatus setColor(const ZvCmColor &color, bool doSubents = true);
    /// The layer's record.
    ZvDbObjectId layerId() const;
    /// Name of the layer; empty where it cannot be read.
    ZvString layer() const;
    /// eKeyNotFound for an unknown name, without a message. \a allowHidden accepts hidden layers.
    Zv::ErrorStatus setLayer(const ZvString &name, bool doSubents = true, bool allowHidden = false);
    Zv::ErrorStatus setLayer(ZvDbObjectId id, bool doSubents = true, bool allowHidden = false);
    /// Hundredths of a millimetre, or a negative value that refers; not resolved.
    ZvDb::LineWeight lineWeight() const;
    Zv::ErrorStatus setLineWeight(ZvDb::LineWeight weight, bool doSubents = true);
    /// Name of the line type; empty where it cannot be read.
    ZvString linetype() const;
    /// The line type's record; that of "ByLayer" or "ByBlock" is not resolved.
    ZvDbObjectId linetypeId() const;
    /// eKeyNotFound for an unknown name, eInvalidInput for an id that is no line type of the drawing.
    Zv::ErrorStatus setLinetype(const ZvString &name, bool doSubents = true);
    Zv::ErrorStatus setLinetype(ZvDbObjectId id, bool doSubents = true);
    /// Factor on the lengths of the pattern, beside the drawing's own; above 0.
    double linetypeScale() const;
    Zv::ErrorStatus setLinetypeScale(double scale, bool doSubents = true);
    /// "ByLayer" (also where nothing is set), "ByBlock", or a name; empty where it cannot be read.
    ZvString material() const;
    /// The material's record; null for by layer and by block.
    ZvDbObjectId materialId() const;
    /// "ByLayer", "ByBlock" or a name; eKeyNotFound for an unknown one.
    Zv::ErrorStatus setMaterial(const ZvString &name, bool doSubents = true);
    /// "ByLayer", "ByBlock", "Normal", or a name; empty where it cannot be read.
    ZvString plotStyleName() const;
    Zv::ErrorStatus setPlotStyleName(const ZvString &name, bool doSubents = true);
    /// By layer is not resolved.
    ZvCmTransparency transparency() const;
    Zv::ErrorStatus setTransparency(const ZvCmTransparency &transparency, bool doSubents = true);
    /// Whether the entity is shown at all.
    ZvDb::Visibility visibility() const;
    Zv::ErrorStatus setVisibility(ZvDb::Visibility visibility, bool doSubents = true);
    /// Takes the shared properties of another entity of the same database.
    void setPropertiesFrom(const ZvDbEntity *other);
    /// Gives an entity its shared properties from the drawing's current settings.
    void setDatabaseDefaults(const ZvDbDatabase *database);

    /// The block that it stands in.
    ZvDbObjectId blockId() const { return ownerId(); }
    /// Number of the entity's shared properties in the database's table of distinct combinations: equal numbers, equal
    /// properties. 0 for an entity of no database.
    std::uint32_t propertiesNumber() const;

    /// eInvalidInput for a kind of entity that the map cannot be applied to.
    virtual Zv::ErrorStatus transformBy(const ZvGeMatrix3d &matrix);
    /// Box in world coordinates (of the block, inside a block); eFailed for what has none.
    virtual Zv::ErrorStatus getGeomExtents(ZvGeExtents3d &extents) const;
    /// Shows itself.
    virtual void worldDraw(ZvGiWorldDraw &draw) const;

    void fileFields(ZvDbFiler &filer) override;

protected:
    ZvDbEntity();
    /// What a setter ends with: eNotOpenForWrite for an entity that may not be written.
    template<class T>
    Zv::ErrorStatus store(T &field, const T &value)
    {
        if (!assertWriteEnabled())
            return Zv::eNotOpenForWrite;
        field = value;
        return Zv::eOk;
    }

private:
    friend class ZvDbObjectAccess;
    friend class ZvDbDatabase;
};

/// Adds a copy of an entity, moved by \a matrix, to a block of the same database, with all that the entity owns
/// (attributes). The copy has the shared properties of its original and is closed. eInvalidInput for a kind of entity
/// that the map cannot be applied to: nothing is added then.
ZV_EXPORT Zv::ErrorStatus zvdbCopyEntity(ZvDbObjectId source, ZvDbObjectId block, const ZvGeMatrix3d &matrix, ZvDbObjectId &copy);

#endif
