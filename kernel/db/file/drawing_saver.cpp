// SPDX-License-Identifier: MIT
#include "drawing_file.h"

#include "db/zvdbentities.h"
#include "dxf_number.h"
#include "dxf_writer.h"
#include "record_writer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

using zvdxf::OwnedTag;
using zvdxf::SectionKind;

namespace {

typedef std::vector<OwnedTag> Record;

const char *const kNotInVersion = "an entity of a kind that the file's version does not know was left out";
const char *const kNotInFile = "an object could not be read from the file again and stays as it is there";

/// Entities that a version of the file format begins with.
ZvDb::FileVersion entitySince(const char *type)
{
    static const struct
    {
        const char *type;
        ZvDb::FileVersion since;
    } table[] = {
        {"LWPOLYLINE", ZvDb::kR14},    {"HATCH", ZvDb::kR14},        {"IMAGE", ZvDb::kR14}, {"WIPEOUT", ZvDb::kR2000},
        {"MULTILEADER", ZvDb::kR2000}, {"ACAD_TABLE", ZvDb::kR2004}, {"RAY", ZvDb::kR13},   {"XLINE", ZvDb::kR13},
        {"ELLIPSE", ZvDb::kR13},       {"SPLINE", ZvDb::kR13},       {"MTEXT", ZvDb::kR13}, {"LEADER", ZvDb::kR13},
        {"VIEWPORT", ZvDb::kR12},
    };
    for (const auto &entry : table) {
        if (std::string_view(entry.type) == type)
            return entry.since;
    }
    return ZvDb::kR12;
}

/// References that note which objects have to be in the file although nobody changed them.
class SavedReferences : public ZvDbFileReferences
{
public:
    explicit SavedReferences(ZvDbDatabase &database) : ZvDbFileReferences(database) { }
    std::uint64_t handleOf(ZvDbObjectId id) override
    {
        if (id.isNull() || id.isErased())
            return 0;
        need(id);
        return ZvDbFileReferences::handleOf(id);
    }
    std::string nameOf(ZvDbFiler::Table table, ZvDbObjectId id) override
    {
        if (!id.isNull())
            need(id);
        return ZvDbFileReferences::nameOf(table, id);
    }
    void need(ZvDbObjectId id)
    {
        if (m_database.priv()->owns(id) && m_database.priv()->stubs[id.index()].record == 0)
            needed.insert(id.index());
    }
    std::set<std::uint32_t> needed;
};

/// What happens at one record of the source file.
struct Edit
{
    std::vector<Record> before; ///< Records put in in front of it.
    bool isDropped = false;
    bool isReplaced = false;
    Record record;
};

class DrawingSaver
{
public:
    DrawingSaver(ZvDbDatabasePrivate &database, ZvDbWarnings &warnings)
        : d(database), m_file(static_cast<ZvDbDrawingFile *>(database.source.get())), m_warnings(warnings),
          m_codec(m_file ? m_file->store.codec() : zvdxf::TextCodec()), m_references(database.q),
          m_writer(m_codec, m_references, database.version)
    {
    }

    /// Finds out what differs from the file and encodes it.
    void plan();
    bool write(zvdxf::Output &output, ZvDbProgress *progress, std::string &error, bool &cancelled);

private:
    const zvdxf::Store &store() const { return m_file->store; }
    bool isNew(const ZvDbStub &stub) const { return stub.record == 0; }
    bool hasHandles() const { return m_file ? m_file->hasHandles : d.version >= ZvDb::kR13; }
    bool hasOwners() const { return m_file ? m_file->hasOwners : d.version >= ZvDb::kR2000; }
    bool hasRecords() const { return d.version >= ZvDb::kR13; }

    void planObjects();
    bool isOwnerGone(std::uint32_t index) const;
    void planExisting(std::uint32_t index);
    /// Number of the first record that is no vertex of the polyline.
    std::uint32_t planVertices(std::uint32_t index, ZvDb2dPolyline &polyline, const ZvDbEntityProperties &before,
                               const ZvDbEntityProperties &now);
    void planNew(std::uint32_t index);
    void planBlock(std::uint32_t index);
    void planNewBlock(std::uint32_t index);
    void planAttributes(std::uint32_t reference, bool any);
    void planTables();
    void planVariables();
    void planClasses();
    void addEntity(std::uint32_t block, std::vector<Record> records);
    void addRecord(ZvDbTableKind kind, Record record);
    void dropRecords(std::uint32_t first, std::uint32_t last);
    void replace(std::uint32_t record, Record tags);
    Edit &editAt(std::uint32_t record) { return m_edits[record]; }

    Record source(std::uint32_t record) const;
    /// A record for a copy to start from: without what belongs to the original alone.
    Record copiedSource(std::uint32_t record, const ZvDbStub &copy) const;
    /// The object's record as it is now; \a changed tells whether it differs from the one it started with.
    Record encode(std::uint32_t index, ZvDbObject &object, bool &changed);
    std::vector<Record> encodeNewEntity(std::uint32_t index, ZvDbObject &object);
    /// A flat polyline in the form that the oldest versions know.
    std::vector<Record> encodeOldPolyline(std::uint32_t index, const ZvDbPolyline &polyline);
    void encodeExtendedData(std::uint32_t index);
    void encodeExtensionDictionary(std::uint32_t index);
    /// Tells the records that belong to an entity (vertices, the end of a sequence) what changed of its shared
    /// properties, and what their layers and line types are called now.
    void followEntity(std::uint32_t record, const ZvDbEntityProperties &before, const ZvDbEntityProperties &now);
    /// The same for records that belong to no entity.
    void followRenames(std::uint32_t record) { followEntity(record, {}, {}); }
    Record blockBegin(std::uint32_t index, ZvDbBlockTableRecord &block, std::uint32_t record, bool &changed);
    Record blockEnd(std::uint32_t index);
    Record sequenceEnd(std::uint32_t index, const ZvDbEntity &owner);
    Record tableBegin(int kind, int count);
    std::uint32_t lastSubentity(std::uint32_t record) const;
    std::uint64_t newHandle();
    /// Whether the entities of the block stand in the section of entities.
    bool isInEntities(std::uint32_t block) const;
    std::uint64_t highestNewHandle() const;
    std::vector<OwnedTag> variableTags(int number, const ZvDbVariableValue &value);

    void writeSection(zvdxf::Writer &writer, SectionKind kind, const char *name, const std::vector<Record> &records);
    std::vector<Record> tableRecords();

    ZvDbDatabasePrivate &d;
    ZvDbDrawingFile *m_file;
    ZvDbWarnings &m_warnings;
    zvdxf::TextCodec m_codec;
    SavedReferences m_references;
    ZvDbRecordWriter m_writer;

    std::map<std::uint32_t, Edit> m_edits; // by record of the source
    std::set<std::uint32_t> m_planned; // new objects that have their records
    std::vector<Record> m_newTableRecords[kTableCount];
    int m_erasedTableRecords[kTableCount] = {};
    std::vector<Record> m_newBlocks;
    std::vector<Record> m_newEntities;
    std::vector<Record> m_newObjects;
    std::vector<Record> m_newClasses;
    std::map<std::string, std::vector<OwnedTag>> m_variables;
    std::vector<std::string> m_variableOrder; // of a new file
    std::set<std::uint32_t> m_attributeOwners; // whose attributes came or went
    std::set<std::uint32_t> m_dictionaries; // whose entries were erased
    bool m_anyRename = false;
};

// ---- planning

void DrawingSaver::plan()
{
    d.writeDictionaryVariables();
    d.writeViewportWorkedIn();
    planObjects();
    planTables();
    planVariables();
    planClasses();
}

std::uint64_t DrawingSaver::newHandle()
{
    const std::uint64_t handle = d.handleSeed();
    d.raiseHandleSeed(handle + 1);
    return handle;
}

Record DrawingSaver::source(std::uint32_t record) const
{
    std::vector<zvdxf::Tag> tags;
    store().tags(record, tags);
    Record result;
    result.reserve(tags.size() + 4);
    for (const zvdxf::Tag &tag : tags)
        result.push_back(store().owned(tag));
    return result;
}

Record DrawingSaver::copiedSource(std::uint32_t record, const ZvDbStub &copy) const
{
    const Record original = source(record);
    const bool isHatch = original.front().value == "HATCH";
    const bool isEntity = copy.has(ZvDbStub::kEntity);
    const bool inPaper = isEntity && zvdbSpaceOfBlock(d.nameOf(d.idAt(copy.owner))) == 1;
    Record result;
    bool isInGroup = false;
    int markers = 0;
    for (std::size_t i = 0; i < original.size(); ++i) {
        const OwnedTag &tag = original[i];
        if (tag.code == 102 && markers == 0) {
            isInGroup = tag.value.find('{') != std::string::npos;
            continue; // reactors, the extension dictionary
        }
        markers += tag.code == 100;
        if (tag.code == 100 || tag.code >= 1000)
            isInGroup = false;
        if (isInGroup || (tag.code == 360 && markers > 0))
            continue; // objects that the original owns
        if (isEntity && (tag.code == 67 || tag.code == 410) && markers <= 1)
            continue;
        if (isHatch && tag.code == 330 && markers > 1)
            continue; // the objects that its outline was made of
        result.push_back(tag);
        if (isHatch && ((tag.code == 97 && i + 1 < original.size() && original[i + 1].code == 330) || tag.code == 71)) {
            result.back().value = "0";
            result.back().source = OwnedTag::noSource;
        }
        if (inPaper && tag.code == 100 && markers == 1)
            result.push_back({67, "1"});
    }
    if (inPaper && markers == 0)
        result.insert(result.begin() + 1, {67, "1"});
    return result;
}

std::uint32_t DrawingSaver::lastSubentity(std::uint32_t record) const
{
    std::uint32_t next = record + 1;
    for (; next < store().wholeRecords(); ++next) {
        const std::string_view type = store().type(next);
        if (type == "SEQEND")
            return next + 1;
        if (type != "VERTEX" && type != "ATTRIB")
            return next;
    }
    return next;
}

void DrawingSaver::dropRecords(std::uint32_t first, std::uint32_t last)
{
    for (std::uint32_t record = first; record < last; ++record)
        editAt(record).isDropped = true;
}

void DrawingSaver::replace(std::uint32_t record, Record tags)
{
    Edit &edit = editAt(record);
    edit.isReplaced = true;
    edit.record = std::move(tags);
}

bool DrawingSaver::isInEntities(std::uint32_t block) const
{
    const ZvString name = d.nameOf(d.idAt(block));
    const int space = zvdbSpaceOfBlock(name);
    // Of the papers, the one without a number is current: its entities stand beside those of model space.
    return space == 0 || (space == 1 && name.length() == int(sizeof("*Paper_Space")) - 1);
}

void DrawingSaver::planObjects()
{
    const std::uint32_t end = d.stubs.end();
    for (int kind = 0; kind < kTableCount; ++kind) {
        for (const std::uint32_t index : ZvDbObjectAccess::recordsOf(*d.table(ZvDbTableKind(kind)))) {
            const ZvDbStub &stub = d.stubs[index];
            if (m_file && stub.record && stub.has(ZvDbStub::kFileChanged) && !stub.isErased() && kind != kViewportTable
                && kind != kRegAppTable && m_references.isRenamed(d.idAt(index)))
                m_anyRename = true;
        }
    }
    for (std::uint32_t index = 1; index < end; ++index) {
        if (!d.stubs.isUsed(index))
            continue;
        const ZvDbStub &stub = d.stubs[index];
        if (stub.isErased() && !isNew(stub) && stub.owner
            && d.classAt(stub.owner).descriptor->isDerivedFrom(ZvDbDictionary::desc()))
            m_dictionaries.insert(stub.owner);
    }
    for (std::uint32_t index = 1; index < end; ++index) {
        if (!d.stubs.isUsed(index))
            continue;
        const ZvDbStub &stub = d.stubs[index];
        if (!stub.has(ZvDbStub::kEntity) && !stub.isErased() && stub.owner && isOwnerGone(index)) {
            if (!isNew(stub))
                dropRecords(stub.record - 1, stub.record);
            continue;
        }
        if (!isNew(stub)) {
            if (stub.isErased() || stub.has(ZvDbStub::kFileChanged) || m_anyRename || m_dictionaries.count(index))
                planExisting(index);
        } else if (m_file && m_file->blocks.count(index)) {
            if (stub.isErased() || stub.has(ZvDbStub::kFileChanged) || m_anyRename)
                planBlock(index);
        } else if (!stub.isErased() && stub.has(ZvDbStub::kFileChanged)) {
            planNew(index);
        }
    }
    std::set<std::uint32_t> withAttributes;
    for (std::uint32_t index = 1; index < end && !m_attributeOwners.empty(); ++index) {
        if (d.stubs.isUsed(index) && !d.stubs[index].isErased() && m_attributeOwners.count(d.stubs[index].owner))
            withAttributes.insert(d.stubs[index].owner);
    }
    for (const std::uint32_t reference : m_attributeOwners)
        planAttributes(reference, withAttributes.count(reference) != 0);
    // What new records refer to has to be there, and what that refers to.
    while (!m_references.needed.empty()) {
        const std::uint32_t index = *m_references.needed.begin();
        m_references.needed.erase(m_references.needed.begin());
        if (!d.stubs[index].isErased())
            planNew(index);
    }
}

/// Whether what owns the object is erased, or what owns that: its extension dictionary is no use then. The same for new
/// objects that the dictionary they belong to has lost since.
bool DrawingSaver::isOwnerGone(std::uint32_t index) const
{
    constexpr int kMostOwners = 64; // damaged files may have rings of them
    for (int i = 0; i < kMostOwners && d.stubs[index].owner; ++i) {
        const std::uint32_t owner = d.stubs[index].owner;
        if (d.stubs[owner].isErased())
            return true;
        if (isNew(d.stubs[index]) && d.classAt(owner).descriptor->isDerivedFrom(ZvDbDictionary::desc())) {
            const ZvDbDictionary *dictionary = static_cast<const ZvDbDictionary *>(d.objectAt(owner));
            if (dictionary && !dictionary->hasEntry(d.idAt(index)))
                return true;
        }
        index = owner;
    }
    return false;
}

void DrawingSaver::encodeExtendedData(std::uint32_t index)
{
    const auto found = d.xdata.find(index);
    if (found == d.xdata.end())
        return;
    std::vector<OwnedTag> tags;
    for (const ZvResBuf *data = found->second.get(); data; data = data->rbnext) {
        const int code = data->restype;
        if (code >= 1010 && code <= 1013) {
            for (int i = 0; i < 3; ++i)
                tags.push_back({code + 10 * i, zvdxf::formatReal(data->resval.rpoint[i])});
        } else if (code >= 1040 && code <= 1042) {
            tags.push_back({code, zvdxf::formatReal(data->resval.rreal)});
        } else if (code == 1070) {
            tags.push_back({code, zvdxf::formatInteger(data->resval.rint)});
        } else if (code == 1071) {
            tags.push_back({code, zvdxf::formatInteger(data->resval.rlong)});
        } else {
            tags.push_back({code, m_writer.encoded(data->text())});
        }
    }
    m_writer.setExtendedData(tags);
}

void DrawingSaver::encodeExtensionDictionary(std::uint32_t index)
{
    const auto made = d.extensions.find(index);
    if (made == d.extensions.end() || !hasRecords())
        return;
    const ZvDbObjectId id = d.objectAt(index)->extensionDictionary();
    m_writer.setExtensionDictionary(m_references.handleOf(id));
}

Record DrawingSaver::encode(std::uint32_t index, ZvDbObject &object, bool &changed)
{
    const ZvDbStub &stub = d.stubs[index];
    const bool isDimStyle = object.isKindOf(ZvDbDimStyleTableRecord::desc());
    const std::uint32_t start = m_file ? d.recordToStartFrom(index) : 0;
    if (stub.record && m_file) {
        m_writer.beginExisting(source(start - 1));
    } else if (start) {
        const std::uint64_t owner = stub.owner ? m_references.handleOf(d.idAt(stub.owner)) : 0;
        m_writer.beginExisting(copiedSource(start - 1, stub));
        m_writer.setHead(isDimStyle ? 105 : 5, hasHandles() ? stub.handle : 0, hasOwners() ? owner : 0);
    } else {
        m_writer.beginNew(object.fileName());
        const std::uint64_t owner = stub.owner ? m_references.handleOf(d.idAt(stub.owner)) : 0;
        const bool isRoot = index == d.rootDictionary;
        if (hasHandles())
            m_writer.setHead(isDimStyle ? 105 : 5, stub.handle, hasOwners() ? owner : 0);
        if (isRoot || (stub.owner == 0 && hasOwners() && hasRecords()))
            m_writer.put(330, "0");
    }
    object.fileFields(m_writer);
    encodeExtensionDictionary(index);
    encodeExtendedData(index);
    changed = m_writer.isChanged();
    return m_writer.takeTags();
}

void DrawingSaver::planExisting(std::uint32_t index)
{
    const ZvDbStub &stub = d.stubs[index];
    const std::uint32_t record = stub.record - 1;
    const ZvRxClass *cls = d.classAt(index).descriptor;
    const bool isBlock = cls->isDerivedFrom(ZvDbBlockTableRecord::desc());
    if (isBlock)
        planBlock(index);
    if (stub.isErased()) {
        std::uint32_t last = record + 1;
        if (stub.has(ZvDbStub::kEntity) && !cls->isDerivedFrom(ZvDbAttribute::desc()))
            last = lastSubentity(record);
        dropRecords(record, last);
        if (cls == ZvDbAttribute::desc() && d.stubs[stub.owner].record != 0 && !d.stubs[stub.owner].isErased())
            m_attributeOwners.insert(stub.owner);
        for (int kind = 0; kind < kTableCount; ++kind)
            m_erasedTableRecords[kind] += stub.owner && stub.owner == d.tables[kind];
        return;
    }
    // A block that stands within an erased one is gone with it.
    ZvDbObject *object = d.objectAt(index);
    if (!object) {
        m_warnings.add(kNotInFile, store().records()[record].offset);
        return;
    }
    if (cls->isDerivedFrom(ZvDbSymbolTable::desc()))
        return; // the table's own record counts its entries, see planTables()
    bool changed = false;
    Record tags = encode(index, *object, changed);
    if (changed)
        replace(record, std::move(tags));
    const bool isPolyline = cls->isDerivedFrom(ZvDb2dPolyline::desc());
    if (!isPolyline && !cls->isDerivedFrom(ZvDbBlockReference::desc()))
        return;
    ZvDbEntityProperties before = m_file->propertiesIn(record);
    if (before.layer.isNull())
        before.layer = d.idAt(d.layerZero);
    const ZvDbEntityProperties &now = d.propertiesOf(index);
    std::uint32_t next = record + 1;
    if (isPolyline)
        next = planVertices(index, static_cast<ZvDb2dPolyline &>(*object), before, now);
    while (next < store().wholeRecords() && store().type(next) == "ATTRIB")
        ++next; // entities of their own
    if (next >= store().wholeRecords() || store().type(next) != "SEQEND")
        return;
    m_writer.beginExisting(source(next));
    followEntity(next, before, now);
    if (m_writer.isChanged())
        replace(next, m_writer.takeTags());
}

std::uint32_t DrawingSaver::planVertices(std::uint32_t index, ZvDb2dPolyline &polyline,
                                         const ZvDbEntityProperties &before, const ZvDbEntityProperties &now)
{
    const ZvDbStub &stub = d.stubs[index];
    // Vertices have records of their own. Those that are left over go, new ones stand before the end.
    const std::size_t count = polyline.vertices().size();
    std::size_t number = 0;
    std::uint32_t next = stub.record; // behind the polyline's own
    for (; next < store().wholeRecords() && store().type(next) == "VERTEX"; ++next, ++number) {
        if (number >= count) {
            dropRecords(next, next + 1);
            continue;
        }
        m_writer.beginExisting(source(next));
        followEntity(next, before, now);
        ZvDbObjectAccess::vertexFields(polyline, number, m_writer);
        if (m_writer.isChanged())
            replace(next, m_writer.takeTags());
    }
    for (; number < count; ++number) {
        m_writer.beginNew("VERTEX");
        if (hasHandles())
            m_writer.setHead(5, newHandle(), hasOwners() ? stub.handle : 0);
        ZvDbObjectAccess::vertexFields(polyline, number, m_writer);
        editAt(next).before.push_back(m_writer.takeTags());
    }
    return next;
}

void DrawingSaver::followEntity(std::uint32_t record, const ZvDbEntityProperties &before,
                                const ZvDbEntityProperties &now)
{
    if (before == now && !m_anyRename)
        return;
    // What the record says differently from its entity it goes on saying, until the entity says something new.
    ZvDbEntityProperties properties = m_file->propertiesIn(record);
    const auto follow = [&](auto member) {
        if (!(before.*member == now.*member))
            properties.*member = now.*member;
    };
    follow(&ZvDbEntityProperties::layer);
    follow(&ZvDbEntityProperties::linetype);
    follow(&ZvDbEntityProperties::linetypeScale);
    follow(&ZvDbEntityProperties::color);
    follow(&ZvDbEntityProperties::lineWeight);
    follow(&ZvDbEntityProperties::transparency);
    follow(&ZvDbEntityProperties::material);
    follow(&ZvDbEntityProperties::plotStyle);
    follow(&ZvDbEntityProperties::plotStyleType);
    follow(&ZvDbEntityProperties::visibility);
    m_writer.subclass("AcDbEntity");
    zvdbPropertyFields(m_writer, properties);
}

/// The reference says whether attributes follow, and their end has a record of its own.
void DrawingSaver::planAttributes(std::uint32_t reference, bool any)
{
    const std::uint32_t record = d.stubs[reference].record - 1;
    std::uint32_t end = record + 1;
    while (end < store().wholeRecords() && store().type(end) == "ATTRIB")
        ++end;
    const bool hasEnd = end < store().wholeRecords() && store().type(end) == "SEQEND";
    if (hasEnd && !any)
        dropRecords(end, end + 1);
    if (!hasEnd && any)
        editAt(end).before.push_back(sequenceEnd(reference, static_cast<const ZvDbEntity &>(*d.objectAt(reference))));
    Edit &edit = editAt(record);
    m_writer.beginExisting(edit.isReplaced ? edit.record : source(record));
    m_writer.subclass("AcDbBlockReference");
    int follow = any ? 1 : 0;
    m_writer.integer(66, follow, 0);
    if (m_writer.isChanged())
        replace(record, m_writer.takeTags());
    else if (!edit.isReplaced && edit.before.empty())
        m_edits.erase(record);
}

Record DrawingSaver::blockBegin(std::uint32_t index, ZvDbBlockTableRecord &block, std::uint32_t record, bool &changed)
{
    if (record != ZvDbDrawingFile::kNoRecord) {
        m_writer.beginExisting(source(record));
        followRenames(record);
    } else {
        m_writer.beginNew("BLOCK");
        if (hasHandles())
            m_writer.setHead(5, newHandle(), hasOwners() ? m_references.handleOf(d.idAt(index)) : 0);
    }
    ZvDbObjectAccess::blockBeginFields(block, m_writer, d.idAt(d.layerZero));
    changed = m_writer.isChanged();
    return m_writer.takeTags();
}

Record DrawingSaver::blockEnd(std::uint32_t index)
{
    m_writer.beginNew("ENDBLK");
    if (hasHandles())
        m_writer.setHead(5, newHandle(), hasOwners() ? m_references.handleOf(d.idAt(index)) : 0);
    m_writer.subclass("AcDbEntity");
    ZvDbObjectId layer = d.idAt(d.layerZero);
    m_writer.nameIn(ZvDbFiler::kLayers, 8, layer, true);
    m_writer.subclass("AcDbBlockEnd");
    return m_writer.takeTags();
}

Record DrawingSaver::sequenceEnd(std::uint32_t index, const ZvDbEntity &owner)
{
    m_writer.beginNew("SEQEND");
    if (hasHandles())
        m_writer.setHead(5, newHandle(), hasOwners() ? d.stubs[index].handle : 0);
    m_writer.subclass("AcDbEntity");
    ZvDbObjectId layer = owner.layerId();
    m_writer.nameIn(ZvDbFiler::kLayers, 8, layer, true);
    return m_writer.takeTags();
}

/// A block of the file that was changed or erased: its pair in the section of blocks.
void DrawingSaver::planBlock(std::uint32_t index)
{
    if (!m_file)
        return;
    const auto found = m_file->blocks.find(index);
    if (found == m_file->blocks.end() || found->second.begin == ZvDbDrawingFile::kNoRecord)
        return;
    const ZvDbDrawingFile::BlockRecords &place = found->second;
    if (d.stubs[index].isErased()) {
        if (place.end != ZvDbDrawingFile::kNoRecord)
            dropRecords(place.begin, place.end + 1);
        return;
    }
    bool changed = false;
    Record tags = blockBegin(index, static_cast<ZvDbBlockTableRecord &>(*d.objectAt(index)), place.begin, changed);
    if (changed)
        replace(place.begin, std::move(tags));
    if (!m_anyRename || place.end == ZvDbDrawingFile::kNoRecord)
        return;
    m_writer.beginExisting(source(place.end));
    followRenames(place.end);
    if (m_writer.isChanged())
        replace(place.end, m_writer.takeTags());
}

void DrawingSaver::addRecord(ZvDbTableKind kind, Record record)
{
    m_newTableRecords[kind].push_back(std::move(record));
}

void DrawingSaver::addEntity(std::uint32_t block, std::vector<Record> records)
{
    if (isInEntities(block)) {
        std::move(records.begin(), records.end(), std::back_inserter(m_newEntities));
        return;
    }
    if (!m_file)
        return; // the block writes them with itself
    const auto found = m_file->blocks.find(block);
    if (found == m_file->blocks.end() || found->second.end == ZvDbDrawingFile::kNoRecord)
        return; // the same
    Edit &edit = editAt(found->second.end);
    std::move(records.begin(), records.end(), std::back_inserter(edit.before));
}

std::vector<Record> DrawingSaver::encodeNewEntity(std::uint32_t index, ZvDbObject &object)
{
    std::vector<Record> records;
    if (entitySince(object.fileName()) > d.version) {
        if (object.isKindOf(ZvDbPolyline::desc()))
            return encodeOldPolyline(index, static_cast<const ZvDbPolyline &>(object));
        m_warnings.add(kNotInVersion);
        return records;
    }
    bool changed = false;
    records.push_back(encode(index, object, changed));
    const ZvDbEntity &entity = static_cast<const ZvDbEntity &>(object);
    if (object.isKindOf(ZvDb2dPolyline::desc())) {
        ZvDb2dPolyline &polyline = static_cast<ZvDb2dPolyline &>(object);
        for (std::size_t number = 0; number < polyline.vertices().size(); ++number) {
            m_writer.beginNew("VERTEX");
            if (hasHandles())
                m_writer.setHead(5, newHandle(), hasOwners() ? d.stubs[index].handle : 0);
            ZvDbObjectAccess::vertexFields(polyline, number, m_writer);
            records.push_back(m_writer.takeTags());
        }
        records.push_back(sequenceEnd(index, entity));
    } else if (object.isKindOf(ZvDbBlockReference::desc())) {
        bool any = false;
        for (const ZvDbObjectId id : static_cast<const ZvDbBlockReference &>(object).attributeIds()) {
            if (!d.owns(id) || d.stubs[id.index()].isErased())
                continue;
            ZvDbObject *attribute = d.objectAt(id.index());
            if (!attribute)
                continue;
            records.push_back(encode(id.index(), *attribute, changed));
            any = true;
        }
        if (any)
            records.push_back(sequenceEnd(index, entity));
    }
    return records;
}

std::vector<Record> DrawingSaver::encodeOldPolyline(std::uint32_t index, const ZvDbPolyline &polyline)
{
    std::vector<Record> records;
    ZvDbEntityProperties properties = zvdbProperties(polyline);
    ZvGeVector3d normal = polyline.normal();
    const auto begin = [&](const char *type, const char *marker, std::uint64_t handle, std::uint64_t owner) {
        m_writer.beginNew(type);
        if (hasHandles())
            m_writer.setHead(5, handle, hasOwners() ? owner : 0);
        m_writer.subclass("AcDbEntity");
        zvdbPropertyFields(m_writer, properties);
        if (marker)
            m_writer.subclass(marker);
    };
    const std::uint64_t handle = d.stubs[index].handle;
    begin("POLYLINE", "AcDb2dPolyline", handle, m_references.handleOf(d.idAt(d.stubs[index].owner)));
    m_writer.constant(66, 1);
    m_writer.constantPoint(10, 0.0, 0.0, polyline.elevation());
    m_writer.constant(70, polyline.isClosed() ? 1 : 0);
    m_writer.vector(210, normal, ZvGeVector3d(0, 0, 1));
    encodeExtendedData(index);
    records.push_back(m_writer.takeTags());
    for (ZvDbPolyline::Vertex vertex : polyline.vertices()) {
        begin("VERTEX", "AcDbVertex", newHandle(), handle);
        m_writer.subclass("AcDb2dVertex");
        m_writer.constantPoint(10, vertex.point.x, vertex.point.y, polyline.elevation());
        m_writer.real(40, vertex.startWidth, 0.0);
        m_writer.real(41, vertex.endWidth, 0.0);
        m_writer.real(42, vertex.bulge, 0.0);
        records.push_back(m_writer.takeTags());
    }
    begin("SEQEND", nullptr, newHandle(), handle);
    records.push_back(m_writer.takeTags());
    return records;
}

void DrawingSaver::planNewBlock(std::uint32_t index)
{
    ZvDbBlockTableRecord &block = static_cast<ZvDbBlockTableRecord &>(*d.objectAt(index));
    bool changed = false;
    if (hasRecords())
        addRecord(kBlockTable, encode(index, block, changed));
    if (m_file && m_file->blocks.count(index))
        return; // only its record in the table was missing
    const bool isSpace = zvdbSpaceOfBlock(d.nameOf(d.idAt(index))) >= 0;
    if (isSpace && !hasRecords())
        return;
    m_newBlocks.push_back(blockBegin(index, block, ZvDbDrawingFile::kNoRecord, changed));
    if (!isInEntities(index)) {
        for (const std::uint32_t entity : block.entityIndices()) {
            ZvDbObject *object = d.stubs[entity].isErased() ? nullptr : d.objectAt(entity);
            if (!object)
                continue;
            std::vector<Record> records = encodeNewEntity(entity, *object);
            std::move(records.begin(), records.end(), std::back_inserter(m_newBlocks));
        }
    }
    m_newBlocks.push_back(blockEnd(index));
}

void DrawingSaver::planNew(std::uint32_t index)
{
    if (!m_planned.insert(index).second)
        return;
    const ZvDbStub &stub = d.stubs[index];
    ZvDbObject *object = d.objectAt(index);
    if (!object)
        return;
    const ZvRxClass *cls = object->isA();
    if (cls->isDerivedFrom(ZvDbSymbolTable::desc()))
        return; // planTables()
    if (stub.has(ZvDbStub::kEntity)) {
        const std::uint32_t block = stub.owner;
        if (block == 0 || d.stubs[block].isErased())
            return;
        if (d.stubs[block].has(ZvDbStub::kEntity)) {
            // An attribute of a reference that is in the file stands behind that one's other attributes.
            if (d.stubs[block].record == 0 || !m_file)
                return;
            m_attributeOwners.insert(block);
            const std::uint32_t parent = d.stubs[block].record - 1;
            std::uint32_t next = parent + 1;
            while (next < store().wholeRecords() && store().type(next) == "ATTRIB")
                ++next;
            bool changed = false;
            editAt(next).before.push_back(encode(index, *object, changed));
            return;
        }
        if (!isInEntities(block) && (!m_file || !m_file->blocks.count(block)))
            return; // planNewBlock() tells it
        if (hasRecords() && d.stubs[block].record == 0)
            m_references.need(d.idAt(block));
        addEntity(block, encodeNewEntity(index, *object));
        return;
    }
    if (cls->isDerivedFrom(ZvDbBlockTableRecord::desc())) {
        planNewBlock(index);
        return;
    }
    bool changed = false;
    if (cls->isDerivedFrom(ZvDbSymbolTableRecord::desc())) {
        for (int kind = 0; kind < kTableCount; ++kind) {
            if (d.tables[kind] == stub.owner)
                addRecord(ZvDbTableKind(kind), encode(index, *object, changed));
        }
        return;
    }
    if (!hasRecords() || (cls->isDerivedFrom(ZvDbLayout::desc()) && d.version < ZvDb::kR2000))
        return; // the oldest versions have no objects, the next no layouts
    m_newObjects.push_back(encode(index, *object, changed));
    // The dictionary that holds it has to be there, with its entry.
    if (stub.owner && m_file && d.stubs[stub.owner].record != 0 && !d.stubs[stub.owner].has(ZvDbStub::kFileChanged)
        && m_dictionaries.insert(stub.owner).second)
        planExisting(stub.owner);
}

Record DrawingSaver::tableBegin(int kind, int count)
{
    Record tags;
    tags.push_back({0, "TABLE"});
    tags.push_back({2, zvdbFileTableName(kind)});
    const ZvDbStub &stub = d.stubs[d.tables[kind]];
    if (hasHandles())
        tags.push_back({5, zvdxf::formatHandle(stub.handle)});
    if (hasOwners())
        tags.push_back({330, "0"});
    if (hasRecords())
        tags.push_back({100, "AcDbSymbolTable"});
    tags.push_back({70, std::to_string(count)});
    if (kind == kDimStyleTable && d.version >= ZvDb::kR2000)
        tags.push_back({100, "AcDbDimStyleTable"});
    m_writer.beginExisting(std::move(tags));
    encodeExtensionDictionary(d.tables[kind]);
    return m_writer.takeTags();
}

void DrawingSaver::planTables()
{
    for (int kind = 0; kind < kTableCount; ++kind) {
        const int added = int(m_newTableRecords[kind].size());
        const int change = added - m_erasedTableRecords[kind];
        if (!m_file || !m_file->hasTable(kind))
            continue; // written as a whole where it is needed
        const ZvDbDrawingFile::TableRecords &place = m_file->tables[kind];
        const bool isExtended = d.extensions.count(d.tables[kind]) != 0;
        if ((change != 0 || isExtended) && place.begin != ZvDbDrawingFile::kNoRecord) {
            m_writer.beginExisting(source(place.begin));
            m_writer.subclass("AcDbSymbolTable");
            const ZvDbFiler::Groups before = m_writer.existing(70, {});
            if (!before.empty()) {
                int count = std::max(0, zvdbClampedInt(before.front().integer) + change);
                m_writer.integer(70, count);
            }
            if (isExtended)
                encodeExtensionDictionary(d.tables[kind]);
            if (m_writer.isChanged())
                replace(place.begin, m_writer.takeTags());
        }
        std::uint32_t end = place.end;
        if (end == ZvDbDrawingFile::kNoRecord) {
            // The file was cut off or damaged: behind the records of the table that are there.
            end = place.begin + 1;
            while (end < store().wholeRecords() && store().type(end) == zvdbFileTableName(kind))
                ++end;
        }
        if (added) {
            Edit &edit = editAt(end);
            std::move(m_newTableRecords[kind].begin(), m_newTableRecords[kind].end(), std::back_inserter(edit.before));
            m_newTableRecords[kind].clear();
        }
    }
}

// ---- variables

std::vector<OwnedTag> DrawingSaver::variableTags(int number, const ZvDbVariableValue &value)
{
    const ZvDbVariable &variable = zvdbVariable(number);
    const int code = variable.code;
    switch (variable.type) {
    case ZvDbVariable::kShort:
    case ZvDbVariable::kLong:
        return {{code, zvdxf::formatInteger(value.integer)}};
    case ZvDbVariable::kReal:
        return {{code, zvdxf::formatReal(value.real[0])}};
    case ZvDbVariable::kText:
        return {{code, m_codec.encode(value.text.toStdString())}};
    case ZvDbVariable::kPoint2d:
    case ZvDbVariable::kPoint3d: {
        std::vector<OwnedTag> tags;
        for (int i = 0; i < (variable.type == ZvDbVariable::kPoint2d ? 2 : 3); ++i)
            tags.push_back({code + 10 * i, zvdxf::formatReal(value.real[i])});
        return tags;
    }
    case ZvDbVariable::kColor: {
        const int index = value.color.isByColor() ? zvdbNearestColorIndex(value.color) : value.color.colorIndex();
        return {{code, zvdxf::formatInteger(index)}};
    }
    case ZvDbVariable::kNameId:
        if (!value.id.isNull())
            m_references.need(value.id);
        return {{code, m_codec.encode(d.nameOf(value.id).toStdString())}};
    case ZvDbVariable::kHandleId:
        return {{code, zvdxf::formatHandle(m_references.handleOf(value.id))}};
    case ZvDbVariable::kObjectId:
        break;
    }
    return {};
}

void DrawingSaver::planVariables()
{
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    for (int number = 0; number < zvdbVariableCount(); ++number) {
        const ZvDbVariable &variable = zvdbVariable(number);
        if (variable.place != ZvDbVariable::kHeader || number == n.handseed)
            continue;
        ZvDbVariableValue value = d.variable(number);
        const std::string name = "$" + std::string(variable.name);
        if (m_file) {
            const bool isThere = store().headerVariable(name) != nullptr;
            const bool isRenamed = variable.type == ZvDbVariable::kNameId && m_references.isRenamed(value.id);
            if (value == m_file->variables[std::size_t(number)] && !(isThere && isRenamed))
                continue;
            if (!isThere && variable.since > d.version)
                continue;
        } else if (variable.since > d.version) {
            continue;
        }
        if (variable.type == ZvDbVariable::kHandleId && value.id.isNull())
            continue;
        if (!m_file && std::string_view(variable.name) == "ACADVER")
            value.text = zvdbVersionName(d.version);
        m_variables[name] = variableTags(number, value);
        m_variableOrder.push_back(name);
    }
    while (!m_references.needed.empty()) {
        const std::uint32_t index = *m_references.needed.begin();
        m_references.needed.erase(m_references.needed.begin());
        if (!d.stubs[index].isErased())
            planNew(index);
    }
    if (!hasHandles())
        return;
    std::uint64_t seed = 0;
    const zvdxf::HeaderVariable *found = m_file ? store().headerVariable("$HANDSEED") : nullptr;
    if (found && found->tagCount) {
        const zvdxf::RecordView view = store().headerValues(*found);
        seed = view.handle(view[0]);
    }
    const std::uint64_t highest = highestNewHandle();
    if (!m_file || (highest != 0 && highest >= seed)) {
        m_variables["$HANDSEED"] = {{5, zvdxf::formatHandle(d.handleSeed())}};
        m_variableOrder.push_back("$HANDSEED");
    }
}

// ---- classes

void DrawingSaver::planClasses()
{
    // Records of kinds that came after R13 are announced in the section of classes.
    static const struct
    {
        const char *record;
        const char *cls;
        const char *application;
        int flags;
        int isEntity;
    } table[] = {
        {"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", "ObjectDBX Classes", 0, 0},
        {"ACDBPLACEHOLDER", "AcDbPlaceHolder", "ObjectDBX Classes", 0, 0},
        {"LAYOUT", "AcDbLayout", "ObjectDBX Classes", 0, 0},
        {"DICTIONARYVAR", "AcDbDictionaryVar", "ObjectDBX Classes", 0, 0},
        {"MATERIAL", "AcDbMaterial", "ObjectDBX Classes", 1153, 0},
        {"MLEADERSTYLE", "AcDbMLeaderStyle", "ACDB_MLEADERSTYLE_CLASS", 4095, 0},
        {"TABLESTYLE", "AcDbTableStyle", "ObjectDBX Classes", 4095, 0},
        {"MULTILEADER", "AcDbMLeader", "ACDB_MLEADER_CLASS", 1025, 1},
        {"ACAD_TABLE", "AcDbTable", "ObjectDBX Classes", 1025, 1},
        {"IMAGE", "AcDbRasterImage", "ISM", 2175, 1},
        {"WIPEOUT", "AcDbWipeout", "WipeOut", 2175, 1},
    };
    if (!hasRecords())
        return;
    std::set<std::string> known;
    if (m_file) {
        std::vector<zvdxf::Tag> tags;
        if (const zvdxf::Section *section = store().section(SectionKind::Classes)) {
            for (std::uint32_t record = section->first; record < section->last; ++record) {
                const zvdxf::RecordView view = store().view(record, tags);
                for (const zvdxf::Tag &tag : view) {
                    if (tag.code == 1) {
                        known.insert(view.name(tag));
                        break;
                    }
                }
            }
        }
    }
    std::set<std::string> used;
    const auto collect = [&used](const std::vector<Record> &records) {
        for (const Record &record : records)
            used.insert(record.front().value);
    };
    collect(m_newObjects);
    collect(m_newEntities);
    collect(m_newBlocks);
    for (const auto &[record, edit] : m_edits)
        collect(edit.before);
    for (const auto &entry : table) {
        if (!used.count(entry.record) || known.count(entry.record))
            continue;
        Record record;
        record.push_back({0, "CLASS"});
        record.push_back({1, entry.record});
        record.push_back({2, entry.cls});
        record.push_back({3, entry.application});
        record.push_back({90, std::to_string(entry.flags)});
        if (d.version >= ZvDb::kR2004)
            record.push_back({91, "1"});
        record.push_back({280, "0"});
        record.push_back({281, std::to_string(entry.isEntity)});
        m_newClasses.push_back(std::move(record));
    }
}

std::uint64_t DrawingSaver::highestNewHandle() const
{
    std::uint64_t highest = 0;
    const auto look = [&highest](const std::vector<Record> &records) {
        for (const Record &record : records) {
            for (const OwnedTag &tag : record) {
                if (tag.code == 100)
                    break;
                std::uint64_t handle = 0;
                if ((tag.code == 5 || tag.code == 105) && zvdxf::parseHandle(tag.value, handle))
                    highest = std::max(highest, handle);
            }
        }
    };
    look(m_newEntities);
    look(m_newObjects);
    look(m_newBlocks);
    for (const auto &records : m_newTableRecords)
        look(records);
    for (const auto &[record, edit] : m_edits)
        look(edit.before);
    return highest;
}

// ---- writing

std::vector<Record> DrawingSaver::tableRecords()
{
    std::vector<Record> records;
    for (int kind = 0; kind < kTableCount; ++kind) {
        const std::vector<Record> &added = m_newTableRecords[kind];
        const bool isThere = m_file && m_file->hasTable(kind);
        if (isThere || (m_file && added.empty()) || (kind == kBlockTable && !hasRecords()))
            continue;
        records.push_back(tableBegin(kind, int(added.size())));
        records.insert(records.end(), added.begin(), added.end());
        records.push_back({{0, "ENDTAB"}});
    }
    return records;
}

void DrawingSaver::writeSection(zvdxf::Writer &writer, SectionKind kind, const char *name,
                                const std::vector<Record> &records)
{
    if (kind == SectionKind::Header ? m_variableOrder.empty() : records.empty() && m_file)
        return;
    writer.record({{0, "SECTION"}, {2, name}});
    if (kind == SectionKind::Header) {
        for (const std::string &variable : m_variableOrder) {
            writer.tag(9, variable);
            for (const OwnedTag &tag : m_variables[variable])
                writer.tag(tag.code, tag.value);
        }
    }
    for (const Record &record : records)
        writer.record(record);
    writer.record({{0, "ENDSEC"}});
}

bool DrawingSaver::write(zvdxf::Output &output, ZvDbProgress *progress, std::string &error, bool &cancelled)
{
    std::unique_ptr<zvdxf::Writer> owned;
    if (m_file) {
        owned = std::make_unique<zvdxf::Writer>(m_file->store, output);
    } else {
        owned = std::make_unique<zvdxf::Writer>(output, zvdxf::FileStyle());
    }
    zvdxf::Writer &writer = *owned;
    if (progress)
        writer.setProgress([progress](std::uint64_t done, std::uint64_t total) {
            return progress->progress(total ? std::min(1.0, double(done) / double(total)) : 1.0);
        });
    const struct
    {
        SectionKind kind;
        const char *name;
        std::vector<Record> records;
    } sections[] = {
        {SectionKind::Classes, "CLASSES", m_newClasses}, {SectionKind::Tables, "TABLES", tableRecords()},
        {SectionKind::Blocks, "BLOCKS", m_newBlocks},    {SectionKind::Entities, "ENTITIES", m_newEntities},
        {SectionKind::Objects, "OBJECTS", m_newObjects},
    };
    if (!m_file) {
        writeSection(writer, SectionKind::Header, "HEADER", {});
        for (const auto &section : sections) {
            if (hasRecords() || (section.kind != SectionKind::Classes && section.kind != SectionKind::Objects))
                writeSection(writer, section.kind, section.name, section.records);
        }
        writer.end();
    } else {
        for (const auto &[name, tags] : m_variables)
            writer.setHeaderVariable(name, tags);
        const zvdxf::Store &file = store();
        // New records stand at the end of their section, a missing section before the one that follows it in order.
        const std::uint32_t whole = file.wholeRecords();
        std::uint32_t place = whole;
        for (std::uint32_t record = whole; record > 0; --record) {
            if (file.type(record - 1) == "EOF")
                place = record - 1;
        }
        std::vector<std::pair<std::uint32_t, std::vector<Record>>> insertions;
        for (auto section = std::rbegin(sections); section != std::rend(sections); ++section) {
            const zvdxf::Section *there = file.section(section->kind);
            if (there)
                place = there->first;
            if (section->records.empty())
                continue;
            if (there) {
                const std::uint32_t end = there->closed ? there->last - 1 : std::min(there->last, whole);
                insertions.emplace_back(end, section->records);
                continue;
            }
            std::vector<Record> records;
            records.push_back({{0, "SECTION"}, {2, section->name}});
            records.insert(records.end(), section->records.begin(), section->records.end());
            records.push_back({{0, "ENDSEC"}});
            insertions.emplace_back(place, std::move(records));
        }
        // Found from the last to the first: of those at one place the later found stand in front.
        for (auto &[record, records] : insertions) {
            std::vector<Record> &before = editAt(record).before;
            const bool isSection = records.front().front().value == "SECTION";
            before.insert(isSection ? before.begin() : before.end(), records.begin(), records.end());
        }
        const bool isCut = whole < file.records().size();
        if (m_edits.empty() && m_variables.empty()) {
            writer.keepAll();
        } else {
            writer.keepPreamble();
            std::uint32_t next = 0;
            for (const auto &[record, edit] : m_edits) {
                if (record > next)
                    writer.keep(next, record - next);
                next = record;
                for (const Record &added : edit.before)
                    writer.record(added);
                if (edit.isDropped || edit.isReplaced) {
                    if (!edit.isDropped)
                        writer.record(edit.record);
                    ++next;
                }
            }
            if (next < whole)
                writer.keep(next, whole - next);
            if (isCut)
                writer.end();
        }
    }
    const bool ok = writer.finish();
    cancelled = writer.isCancelled();
    error = writer.error();
    return ok;
}

} // namespace

Zv::ErrorStatus zvdbSaveDrawing(ZvDbDatabasePrivate &database, const std::string &path, ZvDbFileReport &report,
                                ZvDbProgress *progress)
{
    report = ZvDbFileReport();
    ZvDbWarnings warnings(report);
    ++database.undo.suspended;
    const bool modified = database.modified;
    DrawingSaver saver(database, warnings);
    saver.plan();
    database.modified = modified;
    --database.undo.suspended;
    zvdxf::AtomicFile file;
    std::string error;
    bool cancelled = false;
    bool ok = file.open(path) && saver.write(file, progress, error, cancelled) && file.commit();
    if (!ok) {
        file.discard();
        report.status = cancelled ? Zv::eCancelled : Zv::eFileAccess;
        report.message = ZvString(std::string_view(file.error().empty() ? error : file.error()));
        return report.status;
    }
    warnings.finish(nullptr);
    return Zv::eOk;
}
