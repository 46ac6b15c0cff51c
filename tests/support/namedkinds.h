// SPDX-License-Identifier: MIT
#ifndef NAMEDKINDS_H
#define NAMEDKINDS_H

#include "addrecord.h"

#include "base/zvregistry.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbhostservice.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

/// A kind of named object that drop-downs list, that the drawing has one current of, and that entities have. All that a
/// test has to know of it to try a drop-down as it tries the others.
struct NamedKind
{
    const char *name;
    const wchar_t *variable; ///< The one that its control follows; null where a chain of several lets none through.
    ZvDbObjectId (*add)(ZvDbDatabase &drawing, const ZvString &name);
    /// An entity of model space that has it.
    ZvDbObjectId (*addEntity)(ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &name);
    void (*set)(ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &name); ///< Makes it current.
    ZvString (*current)(const ZvDbDatabase &drawing); ///< Name of the current one.
    ZvString (*of)(const ZvDbEntity &entity); ///< Name of what an entity has.
};

template <class T> ZvString nameOfObject(ZvDbObjectId id)
{
    const ZvDbObjectPointer<T> object(id, ZvDb::kForRead);
    return object ? object->name() : ZvString();
}

inline ZvDbHostService &hostService()
{
    return *zvrxCast<ZvDbHostService>(zvrxGetService(3));
}

/// Id that a variable of the drawing holds.
inline ZvDbObjectId styleVariable(const ZvDbDatabase &drawing, const wchar_t *name)
{
    ZvResBuf *value = hostService().readVariable(name, &drawing);
    const ZvDbObjectId id = value ? value->getObjectId(&drawing) : ZvDbObjectId();
    zvutRelRb(value);
    return id;
}

inline void setStyleVariable(ZvDbDatabase &drawing, const wchar_t *name, ZvDbObjectId id)
{
    ZvResBuf *value = hostService().readVariable(name, &drawing);
    value->setObjectId(id);
    hostService().writeVariable(name, value, &drawing);
    zvutRelRb(value);
}

/// Adds an entity to model space and hands it to \a change.
template <class Entity, class Change> ZvDbObjectId addToModel(ZvDbDatabase &drawing, Change change)
{
    ZvDbObjectId id;
    auto *made = new Entity;
    if (drawing.appendEntity(made, drawing.modelSpaceId(), id) != Zv::eOk) {
        delete made;
        return id;
    }
    if (const ZvDbObjectPointer<Entity> entity{id, ZvDb::kForWrite})
        change(*entity);
    return id;
}

constexpr NamedKind kNamedKinds[] = {
    {"text style", L"TEXTSTYLE", addRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>,
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) {
         return addToModel<ZvDbText>(drawing, [&](ZvDbText &text) {
             text.setTextString(L"text");
             text.setHeight(2.5);
             text.setTextStyle(id);
         });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) { drawing.setTextstyle(id); },
     [](const ZvDbDatabase &drawing) { return nameOfObject<ZvDbTextStyleTableRecord>(drawing.textstyle()); },
     [](const ZvDbEntity &entity) {
         return nameOfObject<ZvDbTextStyleTableRecord>(static_cast<const ZvDbText &>(entity).textStyle());
     }},
    {"dimension style", L"DIMSTYLE", addRecord<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>,
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) {
         return addToModel<ZvDbDimension>(drawing, [id](ZvDbDimension &dimension) { dimension.setDimensionStyle(id); });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) { drawing.setDimstyle(id); },
     [](const ZvDbDatabase &drawing) { return nameOfObject<ZvDbDimStyleTableRecord>(drawing.dimstyle()); },
     [](const ZvDbEntity &entity) {
         return nameOfObject<ZvDbDimStyleTableRecord>(static_cast<const ZvDbDimension &>(entity).dimensionStyle());
     }},
    {"multileader style", L"CMLEADERSTYLE",
     [](ZvDbDatabase &drawing, const ZvString &name) {
         return addEntry(drawing.mleaderStyleDictionaryId(true), new ZvDbMLeaderStyle, name);
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) {
         return addToModel<ZvDbMLeader>(drawing, [id](ZvDbMLeader &leader) { leader.setMLeaderStyle(id); });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) { setStyleVariable(drawing, L"CMLEADERSTYLE", id); },
     [](const ZvDbDatabase &drawing) {
         return nameOfObject<ZvDbMLeaderStyle>(styleVariable(drawing, L"CMLEADERSTYLE"));
     },
     [](const ZvDbEntity &entity) {
         return nameOfObject<ZvDbMLeaderStyle>(static_cast<const ZvDbMLeader &>(entity).MLeaderStyle());
     }},
    {"table style", L"CTABLESTYLE",
     [](ZvDbDatabase &drawing, const ZvString &name) {
         return addEntry(drawing.tableStyleDictionaryId(true), new ZvDbTableStyle, name);
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) {
         return addToModel<ZvDbTable>(drawing, [id](ZvDbTable &table) { table.setTableStyle(id); });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) { setStyleVariable(drawing, L"CTABLESTYLE", id); },
     [](const ZvDbDatabase &drawing) { return nameOfObject<ZvDbTableStyle>(styleVariable(drawing, L"CTABLESTYLE")); },
     [](const ZvDbEntity &entity) {
         return nameOfObject<ZvDbTableStyle>(static_cast<const ZvDbTable &>(entity).tableStyle());
     }},
    {"layer", nullptr, addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>,
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) {
         return addToModel<ZvDbLine>(drawing, [id](ZvDbLine &line) { line.setLayer(id); });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) { drawing.setClayer(id); },
     [](const ZvDbDatabase &drawing) { return nameOfObject<ZvDbLayerTableRecord>(drawing.clayer()); },
     [](const ZvDbEntity &entity) { return nameOfObject<ZvDbLayerTableRecord>(entity.layerId()); }},
    {"material", L"CMATERIAL",
     [](ZvDbDatabase &drawing, const ZvString &name) {
         return addEntry(drawing.materialDictionaryId(true), new ZvDbMaterial, name);
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId, const ZvString &name) {
         return addToModel<ZvDbLine>(drawing, [&name](ZvDbLine &line) { line.setMaterial(name); });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId id, const ZvString &) { drawing.setCmaterial(id); },
     [](const ZvDbDatabase &drawing) { return nameOfObject<ZvDbMaterial>(drawing.cmaterial()); },
     [](const ZvDbEntity &entity) { return entity.material(); }},
    {"plot style name", nullptr,
     [](ZvDbDatabase &drawing, const ZvString &name) {
         return addEntry(drawing.plotStyleDictionaryId(true), new ZvDbPlaceHolder, name);
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId, const ZvString &name) {
         return addToModel<ZvDbLine>(drawing, [&name](ZvDbLine &line) { line.setPlotStyleName(name); });
     },
     [](ZvDbDatabase &drawing, ZvDbObjectId, const ZvString &name) { drawing.setCplotstyle(name); },
     [](const ZvDbDatabase &drawing) { return drawing.cplotstyle(); },
     [](const ZvDbEntity &entity) { return entity.plotStyleName(); }},
};

#endif
