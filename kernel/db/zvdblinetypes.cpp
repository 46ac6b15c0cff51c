// SPDX-License-Identifier: MIT
#include "db/zvdblinetypes.h"

#include "shape_names_p.h"
#include "zvdbdatabase_p.h"
#include "zvdbfiler.h"

namespace {

typedef ZvDbLinetypeTableRecord::Dash Dash;
typedef ZvDbLinetypeDefinition::Element Element;

/// Of dimension styles, which keep ids in them, and of the drawing, which keeps names.
const char *const kDimensionVariables[] = {"DIMLTYPE", "DIMLTEX1", "DIMLTEX2"};

bool isFixed(ZvDbObjectId id)
{
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(id);
    return !d || d->isIndispensable(id.index());
}

/// The text style of that name, or the null id.
ZvDbObjectId textStyle(const ZvDbDatabase &database, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbTextStyleTable> table(database.textStyleTableId(), ZvDb::kForRead);
    return table ? table->getIdAt(name) : ZvDbObjectId();
}

/// The record that stands for a shape file, which is added where it is missing.
ZvDbObjectId shapeFile(ZvDbDatabase &database, const ZvString &file)
{
    ZvDbObjectPointer<ZvDbTextStyleTable> table(database.textStyleTableId(), ZvDb::kForWrite);
    if (!table)
        return ZvDbObjectId();
    for (const std::uint32_t index : ZvDbObjectAccess::recordsOf(*table)) {
        const auto *style = static_cast<const ZvDbTextStyleTableRecord *>(database.priv()->objectAt(index));
        if (style && !style->isErased() && style->isShapeFile() && style->fontFileName().compareNoCase(file) == 0)
            return style->objectId();
    }
    auto *style = new ZvDbTextStyleTableRecord;
    style->setIsShapeFile(true);
    style->setFontFileName(file);
    ZvDbObjectId id;
    if (table->add(style, id) == Zv::eOk)
        style->close();
    else
        delete style;
    return id;
}

std::string folderOf(const ZvString &path)
{
    const std::string utf8 = path.toStdString();
    const std::size_t end = utf8.rfind('/');
    return end == std::string::npos ? "." : utf8.substr(0, end);
}

/// False: \a why tells what the drawing or the folder lacks.
bool makeDash(ZvDbDatabase &database, const Element &element, const std::string &folder, Dash &dash, ZvString &why)
{
    dash.length = element.length;
    if (element.kind == Element::kPlain)
        return true;
    dash.flags = (element.kind == Element::kText ? 2 : 4) | (element.isAbsolute ? 1 : 0);
    dash.scale = element.scale;
    dash.rotation = element.rotation;
    dash.offsetX = element.offsetX;
    dash.offsetY = element.offsetY;
    if (element.kind == Element::kText) {
        dash.text = element.content;
        dash.styleId = textStyle(database, element.style);
        if (dash.styleId.isNull())
            why = ZvString(L"the drawing has no text style ") + element.style;
        return !dash.styleId.isNull();
    }
    const auto number = zvdbShapeNumber(folder, element.style.toStdString(), element.content.toStdString());
    if (!number) {
        why = ZvString(L"there is no shape ") + element.content + ZvString(L" in a file ") + element.style;
        return false;
    }
    dash.shapeNumber = *number;
    dash.styleId = shapeFile(database, element.style);
    return !dash.styleId.isNull();
}

Zv::ErrorStatus store(ZvDbDatabase &database, const ZvDbLinetypeDefinition &definition, const std::vector<Dash> &dashes,
                      ZvDbObjectId &id)
{
    if (!id.isNull()) {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForWrite);
        if (!record)
            return record.openStatus();
        record->setComments(definition.comments);
        record->setDashes(dashes);
        return Zv::eOk;
    }
    const ZvDbObjectPointer<ZvDbLinetypeTable> table(database.linetypeTableId(), ZvDb::kForWrite);
    if (!table)
        return table.openStatus();
    auto *record = new ZvDbLinetypeTableRecord;
    record->setName(definition.name);
    record->setComments(definition.comments);
    record->setDashes(dashes);
    const Zv::ErrorStatus status = table->add(record, id);
    if (status == Zv::eOk)
        record->close();
    else
        delete record;
    return status;
}

/// Marks what the variables and the records of the tables refer to, by position.
void markReferences(const ZvDbDatabase &database, std::vector<bool> &used)
{
    const ZvDbDatabasePrivate &d = *database.priv();
    const auto mark = [&](ZvDbObjectId id) {
        if (d.owns(id))
            used[id.index()] = true;
    };
    mark(database.celtype());
    for (const std::uint32_t index : ZvDbObjectAccess::recordsOf(*d.table(kLayerTable))) {
        const ZvDbObject *layer = d.objectAt(index);
        if (layer && !layer->isErased())
            mark(static_cast<const ZvDbLayerTableRecord *>(layer)->linetypeObjectId());
    }
    for (const char *name : kDimensionVariables) {
        for (const std::uint32_t index : ZvDbObjectAccess::recordsOf(*d.table(kDimStyleTable))) {
            const ZvDbObject *style = d.objectAt(index);
            if (style && !style->isErased())
                mark(static_cast<const ZvDbDimStyleTableRecord *>(style)->idValue(name));
        }
        mark(d.recordId("LTYPE", d.variable(zvdbVariableNumber(name)).text));
    }
}

} // namespace

Zv::ErrorStatus zvdbAddLinetype(ZvDbDatabase &database, const ZvDbLinetypeDefinition &definition, const ZvString &path,
                                bool redefine, ZvDbObjectId &id, ZvString &why)
{
    id = ZvDbObjectId();
    if (!ZvDbSymbolTableRecord::isValidName(definition.name)) {
        why = ZvString(L"not a valid name");
        return Zv::eInvalidInput;
    }
    ZvDbObjectId existing;
    if (const ZvDbObjectPointer<ZvDbLinetypeTable> table(database.linetypeTableId(), ZvDb::kForRead); table)
        existing = table->getIdAt(definition.name);
    if (!existing.isNull() && (!redefine || isFixed(existing))) {
        why = redefine ? ZvString(L"every drawing has it as it is") : ZvString(L"the drawing has one of that name");
        return redefine ? Zv::eInvalidInput : Zv::eDuplicateKey;
    }
    const std::string folder = folderOf(path);
    database.beginFrame();
    std::vector<Dash> dashes;
    Zv::ErrorStatus status = Zv::eOk;
    for (const Element &element : definition.elements) {
        dashes.emplace_back();
        if (!makeDash(database, element, folder, dashes.back(), why)) {
            status = Zv::eKeyNotFound;
            break;
        }
    }
    if (status == Zv::eOk)
        status = store(database, definition, dashes, existing);
    if (status == Zv::eOk) {
        database.endFrame();
        id = existing;
    } else {
        database.abortFrame();
        if (why.isEmpty())
            why = ZvString(L"the drawing is in use");
    }
    return status;
}

Zv::ErrorStatus zvdbRenameLinetype(ZvDbObjectId id, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForWrite);
    if (!record)
        return record.openStatus();
    if (record->isDependent() || isFixed(id))
        return Zv::eInvalidInput;
    const ZvString before = record->name();
    const Zv::ErrorStatus status = record->setName(name);
    if (status != Zv::eOk)
        return status;
    ZvDbDatabasePrivate &d = *ZvDbDatabasePrivate::of(id);
    for (const char *variable : kDimensionVariables) {
        const int number = zvdbVariableNumber(variable);
        ZvDbVariableValue value = d.variable(number);
        if (value.text.isEmpty() || value.text.compareNoCase(before) != 0)
            continue;
        value.text = name;
        d.setVariable(number, value);
    }
    return Zv::eOk;
}

void zvdbUnusedLinetypes(const ZvDbDatabase &database, ZvArray<ZvDbObjectId> &ids)
{
    ids.clear();
    const ZvDbDatabasePrivate &d = *database.priv();
    std::vector<bool> used(d.stubs.end());
    const std::vector<bool> usedCombinations = d.usedProperties();
    for (std::uint32_t number = 1; number < d.propertiesTable.end(); ++number) {
        if (usedCombinations[number])
            used[d.propertiesTable.at(number).linetype.index()] = true;
    }
    markReferences(database, used);
    std::vector<ZvDbObjectId> references;
    for (std::uint32_t index = 1; d.source && index < d.stubs.end(); ++index) {
        if (!d.stubs.isUsed(index) || d.stubs[index].isErased())
            continue;
        references.clear();
        d.source->addReferences(index, references);
        for (const ZvDbObjectId &id : references)
            used[id.index()] = true;
    }
    for (const std::uint32_t index : ZvDbObjectAccess::recordsOf(*d.table(kLinetypeTable))) {
        if (used[index] || d.stubs[index].isErased() || d.isIndispensable(index))
            continue;
        const auto *record = static_cast<const ZvDbLinetypeTableRecord *>(d.objectAt(index));
        if (record && !record->isDependent())
            ids.append(d.idAt(index));
    }
}

Zv::ErrorStatus zvdbEraseLinetype(ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForWrite);
    if (!record)
        return record.openStatus();
    if (record->isDependent() || isFixed(id))
        return Zv::eInvalidInput;
    ZvArray<ZvDbObjectId> unused;
    zvdbUnusedLinetypes(*record->database(), unused);
    return unused.contains(id) ? record->erase() : Zv::eObjectReferenced;
}
