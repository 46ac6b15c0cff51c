// SPDX-License-Identifier: MIT
#include "drawing_file.h"

#include "db/zvdbentities.h"

#include <cstring>
#include <unordered_map>

using zvdxf::RecordView;
using zvdxf::SectionKind;
using zvdxf::Tag;

namespace {

// What loading may find, in words for people.
const char *const kDuplicateHandle = "two objects have the same handle; the second one got another";
const char *const kDuplicateName = "a table has two records of the same name";
const char *const kDuplicateTable = "a table stands in the file twice";
const char *const kUnknownTable = "a table of an unknown kind is kept but not understood";
const char *const kStrayRecord = "a record stands where none belongs; it is kept but not understood";
const char *const kMisplacedRecord = "a record does not stand in its table; it is taken for one of it";
const char *const kMissingLayer = "an object is on a layer that the drawing does not have; the layer was made";
const char *const kMissingLinetype = "an object has a line type that the drawing does not have";
const char *const kMissingBlockRecord = "a block has no record in the table of blocks";
const char *const kMissingBlock = "a record in the table of blocks has no block";
const char *const kWrongOwner = "an entity names an owner that is not the block it stands in";
const char *const kStraySubentity = "a vertex or attribute belongs to nothing; it is kept but not understood";
const char *const kDuplicateBlock = "a block stands in the file twice";
const char *const kNoHandle = "an object has no handle; it got one for the time being";
const char *const kNoRoot = "the drawing has no dictionary of its dictionaries";
const char *const kNoName = "a record of a table has no name";
const char *const kTablesMissing = "the file has no section of tables";

/// The shared properties of an entity as its record tells them, small enough to be compared at once.
struct RawProperties
{
    std::uint32_t layer = 0;
    std::uint32_t linetype = 0;
    std::uint32_t color = 0;
    std::int32_t lineWeight = ZvDb::kLnWtByLayer;
    std::uint32_t transparency = 0;
    std::uint16_t plotStyleType = 0;
    std::uint16_t invisible = 0;
    double linetypeScale = 1.0;
    std::uint64_t material = 0;
    std::uint64_t plotStyle = 0;

    bool operator==(const RawProperties &o) const { return std::memcmp(this, &o, sizeof o) == 0; }
};
static_assert(sizeof(RawProperties) == 48, "compared byte by byte: no gaps");

struct RawPropertiesHash
{
    std::size_t operator()(const RawProperties &properties) const
    {
        std::uint64_t words[6];
        std::memcpy(words, &properties, sizeof words);
        std::uint64_t hash = 0;
        for (const std::uint64_t word : words)
            hash = (hash ^ word) * 0x9E3779B97F4A7C15ull + (hash >> 31);
        return std::size_t(hash);
    }
};

/// Makes the database's record blocks out of what the store tells, in one pass.
class DrawingLoader : public zvdxf::Visitor
{
public:
    DrawingLoader(ZvDbDatabasePrivate &database, ZvDbDrawingFile &file, ZvDbWarnings &warnings)
        : d(database), m_file(file), m_warnings(warnings), m_classes(ZvDbClassTable::instance()),
          m_proxyEntity(m_classes.numberOf(ZvDbProxyEntity::desc())),
          m_proxyObject(m_classes.numberOf(ZvDbProxyObject::desc())),
          m_polyline(m_classes.numberOf(ZvDb2dPolyline::desc())),
          m_insert(m_classes.numberOf(ZvDbBlockReference::desc())),
          m_attribute(m_classes.numberOf(ZvDbAttribute::desc())), m_solid(m_classes.numberOf(ZvDbSolid::desc())),
          m_mleader(m_classes.numberOf(ZvDbMLeader::desc()))
    {
        m_knownProperties.max_load_factor(0.7f);
    }

    void beginSection(SectionKind kind, std::string_view) override;
    void endSection(SectionKind kind) override;
    void record(SectionKind section, const RecordView &record) override;
    /// What can be done only when all of the file is known.
    void finish();

private:
    void tableRecord(const RecordView &record);
    /// Lets references by name find a record of a table.
    void noteName(int kind, const ZvString &name, std::uint32_t index);
    void blockRecord(const RecordView &record);
    void entityRecord(const RecordView &record);
    void objectRecord(const RecordView &record);

    std::uint32_t add(std::uint16_t cls, std::uint64_t handle, std::uint32_t owner, const RecordView &record);
    std::uint32_t addImplied(ZvDbObject *object, std::uint32_t owner);
    void giveUpHandle(std::uint64_t handle);
    void findRecord(std::uint32_t index, std::uint64_t handle, const RecordView &record);
    std::uint32_t tableObject(int kind, std::uint64_t handle, const RecordView *record);
    std::uint32_t impliedRecord(int kind, const ZvString &name);
    std::uint32_t spaceBlock(bool paper);
    std::uint16_t entityClass(std::string_view type);
    std::uint32_t namedRecord(ZvDbFiler::Table table, const RecordView &record, const Tag &tag);
    std::uint32_t properties(const RawProperties &raw, const RecordView &record, const Tag *book);
    std::uint32_t ownerBlock(const RecordView &record, std::uint64_t owner, bool paper);
    void addToBlock(std::uint32_t block, std::uint32_t entity);
    std::vector<std::uint32_t> &entitiesOf(std::uint32_t block);
    void settleObjects();
    void settleHandles();
    void settleBlocks();
    void settleLayouts();
    void ensureStandardRecords();
    void warn(const char *text, const RecordView &record) { m_warnings.add(text, record[0].offset); }

    ZvDbDatabasePrivate &d;
    ZvDbDrawingFile &m_file;
    ZvDbWarnings &m_warnings;
    const ZvDbClassTable &m_classes;
    const std::uint16_t m_proxyEntity;
    const std::uint16_t m_proxyObject;
    const std::uint16_t m_polyline;
    const std::uint16_t m_insert;
    const std::uint16_t m_attribute;
    const std::uint16_t m_solid;
    const std::uint16_t m_mleader;

    int m_table = -1; // kind of the table at hand
    std::uint32_t m_block = 0; // block at hand in the BLOCKS section
    bool m_isInBlock = false;
    std::uint32_t m_parent = 0; // polyline or reference whose vertices or attributes follow
    std::uint32_t m_spaces[2] = {};
    bool m_anyHandle = false;
    bool m_anyOwner = false;
    bool m_tablesSeen = false;

    // the last of each kind: neighbours are alike
    std::string_view m_lastType;
    std::uint16_t m_lastClass = 0;
    RawProperties m_lastRaw;
    std::uint32_t m_lastProperties = 0;
    std::uint64_t m_lastOwner = 0;
    std::uint32_t m_lastOwnerBlock = 0;
    std::uint32_t m_entitiesBlock = 0;
    std::vector<std::uint32_t> *m_entities = nullptr;
    std::unordered_map<RawProperties, std::uint32_t, RawPropertiesHash> m_knownProperties;
    struct NameCache
    {
        std::string_view last;
        std::uint32_t lastIndex = 0;
        std::unordered_map<std::string_view, std::uint32_t> known; // bytes of the file
    } m_nameCaches[2];

    struct Handles
    {
        std::uint32_t index;
        std::uint64_t material;
        std::uint64_t plotStyle;
    };
    std::vector<std::uint32_t> m_withoutHandle; // of those made in advance
    std::vector<Handles> m_handles; // of properties that refer to objects further down
    std::vector<std::pair<std::uint32_t, std::uint64_t>> m_owners; // of objects
    std::vector<std::uint32_t> m_blocks; // blocks in file order
    std::uint32_t m_firstDictionary = 0;
};

std::uint32_t DrawingLoader::add(std::uint16_t cls, std::uint64_t handle, std::uint32_t owner, const RecordView &record)
{
    if (handle != 0) {
        m_anyHandle = true;
        giveUpHandle(handle);
        if (d.handles.find(handle) != 0)
            warn(kDuplicateHandle, record);
    } else if (d.version >= ZvDb::kR13) {
        warn(kNoHandle, record);
    }
    return d.addStub(cls, handle, owner, record.index() + 1);
}

/// What was made in advance has some handle that was free then. The file's own object comes before it.
void DrawingLoader::giveUpHandle(std::uint64_t handle)
{
    const std::uint32_t index = d.handles.find(handle);
    if (index == 0 || d.stubs[index].record != 0)
        return;
    d.handles.insert(handle, 0);
    m_withoutHandle.push_back(index);
}

/// What was made in advance turns out to stand in the file.
void DrawingLoader::findRecord(std::uint32_t index, std::uint64_t handle, const RecordView &record)
{
    ZvDbStub &stub = d.stubs[index];
    stub.record = record.index() + 1;
    if (handle == 0 || d.handles.find(handle) != 0)
        return;
    if (d.handles.find(stub.handle) == index)
        d.handles.insert(stub.handle, 0);
    stub.handle = handle;
    d.handles.insert(handle, index);
    d.raiseHandleSeed(handle + 1);
    m_anyHandle = true;
}

/// An object that the drawing needs and the file lacks. It gets into the file once something changes or needs it.
std::uint32_t DrawingLoader::addImplied(ZvDbObject *object, std::uint32_t owner)
{
    const std::uint32_t index = d.adopt(object, owner);
    d.stubs[index].set(ZvDbStub::kFileChanged, false);
    return index;
}

template <class T> ZvDbObject *makeObject()
{
    return new T;
}

std::uint32_t DrawingLoader::tableObject(int kind, std::uint64_t handle, const RecordView *record)
{
    static ZvDbObject *(*const makers[kTableCount])() = {
        makeObject<ZvDbViewportTable>,  makeObject<ZvDbLinetypeTable>, makeObject<ZvDbLayerTable>,
        makeObject<ZvDbTextStyleTable>, makeObject<ZvDbViewTable>,     makeObject<ZvDbUCSTable>,
        makeObject<ZvDbRegAppTable>,    makeObject<ZvDbDimStyleTable>, makeObject<ZvDbBlockTable>,
    };
    if (d.tables[kind] == 0) {
        ZvDbObject *table = makers[kind]();
        if (record) {
            const std::uint32_t index = add(m_classes.numberOf(table->isA()), handle, 0, *record);
            d.attach(table, index);
            d.tables[kind] = index;
        } else {
            d.tables[kind] = addImplied(table, 0);
        }
    } else if (record && d.stubs[d.tables[kind]].record == 0) {
        findRecord(d.tables[kind], handle, *record); // an object stands before its table
    }
    return d.tables[kind];
}

void DrawingLoader::noteName(int kind, const ZvString &name, std::uint32_t index)
{
    switch (kind) {
    case kLayerTable:
        m_file.names(ZvDbFiler::kLayers).emplace(name, index);
        break;
    case kLinetypeTable:
        m_file.names(ZvDbFiler::kLinetypes).emplace(name, index);
        break;
    case kTextStyleTable:
        m_file.names(ZvDbFiler::kTextStyles).emplace(name, index);
        break;
    case kDimStyleTable:
        m_file.names(ZvDbFiler::kDimStyles).emplace(name, index);
        break;
    case kBlockTable:
        m_file.names(ZvDbFiler::kBlocks).emplace(name, index);
        m_blocks.push_back(index);
        break;
    default:
        break;
    }
}

std::uint32_t DrawingLoader::impliedRecord(int kind, const ZvString &name)
{
    ZvDbSymbolTableRecord *record = nullptr;
    switch (kind) {
    case kLinetypeTable:
        record = new ZvDbLinetypeTableRecord;
        break;
    case kLayerTable: {
        ZvDbLayerTableRecord *layer = new ZvDbLayerTableRecord;
        ZvCmColor white;
        white.setColorIndex(7);
        layer->setColor(white);
        record = layer;
        break;
    }
    case kTextStyleTable:
        record = new ZvDbTextStyleTableRecord;
        break;
    case kDimStyleTable:
        record = new ZvDbDimStyleTableRecord;
        break;
    case kViewportTable:
        record = new ZvDbViewportTableRecord;
        break;
    case kBlockTable:
        record = new ZvDbBlockTableRecord;
        break;
    default:
        record = new ZvDbRegAppTableRecord;
        break;
    }
    ZvDbObjectAccess::setName(*record, name);
    const std::uint32_t index = addImplied(record, tableObject(kind, 0, nullptr));
    ZvDbObjectAccess::addToTable(*d.table(ZvDbTableKind(kind)), name, index);
    noteName(kind, name, index);
    return index;
}

void DrawingLoader::beginSection(SectionKind kind, std::string_view)
{
    d.version = zvdbFileVersion(m_file.store.version());
    m_tablesSeen |= kind == SectionKind::Tables;
    m_table = -1;
    m_isInBlock = false;
    m_parent = 0;
}

void DrawingLoader::endSection(SectionKind)
{
    m_isInBlock = false;
    m_parent = 0;
    m_table = -1;
}

void DrawingLoader::record(SectionKind section, const RecordView &record)
{
    switch (section) {
    case SectionKind::Entities:
        entityRecord(record);
        break;
    case SectionKind::Blocks:
        blockRecord(record);
        break;
    case SectionKind::Tables:
        tableRecord(record);
        break;
    case SectionKind::Objects:
        objectRecord(record);
        break;
    default:
        break;
    }
}

// ---- tables

/// What the head of a record tells of itself: everything in front of its first marker but the groups.
struct RecordHead
{
    std::uint64_t handle = 0;
    std::uint64_t owner = 0;
    bool hasOwner = false;
    const Tag *name = nullptr; // first tag 2 anywhere

    RecordHead(const RecordView &record, int handleCode)
    {
        bool isInGroup = false;
        bool isHead = true;
        for (std::size_t i = 1; i < record.size(); ++i) {
            const Tag &tag = record[i];
            if (tag.code == 102) {
                isInGroup = record.raw(tag).find('{') != std::string_view::npos;
            } else if (tag.code == 100) {
                isHead = isInGroup = false;
            } else if (tag.code >= 1000) {
                return;
            } else if (isInGroup) {
                continue;
            } else if (tag.code == 2 && !name) {
                name = &tag;
            } else if (tag.code == handleCode && handle == 0) {
                handle = record.handle(tag);
            } else if (tag.code == 330 && isHead && !hasOwner) {
                owner = record.handle(tag);
                hasOwner = true;
            }
        }
    }
};

void DrawingLoader::tableRecord(const RecordView &record)
{
    const std::string_view type = record.type();
    if (type == "TABLE") {
        const RecordHead head(record, 5);
        m_table = head.name ? zvdbFileTableKind(record.raw(*head.name)) : -1;
        if (m_table < 0 && head.name)
            m_table = zvdbFileTableKind(record.name(*head.name));
        if (m_table < 0) {
            warn(kUnknownTable, record);
            return;
        }
        if (m_file.tables[m_table].begin != ZvDbDrawingFile::kNoRecord) {
            warn(kDuplicateTable, record);
            return;
        }
        tableObject(m_table, head.handle, &record);
        m_file.tables[m_table].begin = record.index();
        return;
    }
    if (type == "ENDTAB") {
        if (m_table >= 0 && m_file.tables[m_table].end == ZvDbDrawingFile::kNoRecord)
            m_file.tables[m_table].end = record.index();
        m_table = -1;
        return;
    }
    const int kind = zvdbFileTableKind(type);
    if (kind < 0) {
        warn(kStrayRecord, record);
        return;
    }
    if (kind != m_table) {
        // The beginning of its table is lost, or it stands in another's: it belongs to its own all the same.
        warn(kMisplacedRecord, record);
        m_table = m_file.tables[kind].begin == ZvDbDrawingFile::kNoRecord ? kind : m_table;
    }
    const RecordHead head(record, kind == kDimStyleTable ? 105 : 5);
    m_anyOwner |= head.hasOwner;
    if (!head.name) {
        warn(kNoName, record);
        return;
    }
    const ZvString name(std::string_view(record.name(*head.name)));
    const std::uint32_t table = tableObject(kind, 0, nullptr);
    ZvDbSymbolTable &entries = *d.table(ZvDbTableKind(kind));
    const std::uint32_t before = kind == kViewportTable ? 0 : entries.getIdAt(name).index();
    if (before && d.stubs[before].record == 0 && kind == kLayerTable) {
        // An entity stands before the tables.
        ZvDbStub &stub = d.stubs[before];
        delete stub.object;
        stub.object = nullptr;
        findRecord(before, head.handle, record);
        return;
    }
    if (before && !name.isEmpty()) // shape files have records without names
        warn(kDuplicateName, record);
    const std::uint32_t index = add(m_classes.numberOfFileName(type, m_proxyObject), head.handle, table, record);
    ZvDbObjectAccess::addToTable(
        entries, kind == kBlockTable && zvdbSpaceOfBlock(name) >= 0 ? ZvString(L"*") + name.mid(1) : name, index);
    noteName(kind, name, index);
    if (kind == kBlockTable)
        ZvDbObjectAccess::make(d, index); // its entities are told to it as they come
}

// ---- blocks and entities

void DrawingLoader::blockRecord(const RecordView &record)
{
    const std::string_view type = record.type();
    if (type == "BLOCK") {
        const RecordHead head(record, 5);
        m_isInBlock = false;
        m_parent = 0;
        if (!head.name) {
            warn(kStrayRecord, record);
            return;
        }
        if (head.handle)
            d.raiseHandleSeed(head.handle + 1);
        const ZvString name(std::string_view(record.name(*head.name)));
        const ZvDbNameMap &names = m_file.names(ZvDbFiler::kBlocks);
        const auto known = names.find(name);
        m_block = known == names.end() ? 0 : known->second;
        if (m_block == 0) {
            const int space = zvdbSpaceOfBlock(name);
            if (d.version >= ZvDb::kR13)
                warn(kMissingBlockRecord, record);
            m_block = impliedRecord(kBlockTable, space >= 0 ? ZvString(L"*") + name.mid(1) : name);
            m_file.names(ZvDbFiler::kBlocks).emplace(name, m_block);
        }
        ZvDbDrawingFile::BlockRecords &place = m_file.blocks[m_block];
        m_isInBlock = true;
        if (place.begin != ZvDbDrawingFile::kNoRecord)
            warn(kDuplicateBlock, record);
        else
            place.begin = record.index();
        return;
    }
    if (type == "ENDBLK") {
        if (m_isInBlock) {
            ZvDbDrawingFile::BlockRecords &place = m_file.blocks[m_block];
            if (place.end == ZvDbDrawingFile::kNoRecord)
                place.end = record.index();
        } else {
            warn(kStrayRecord, record);
        }
        const RecordHead head(record, 5);
        if (head.handle)
            d.raiseHandleSeed(head.handle + 1);
        m_isInBlock = false;
        m_parent = 0;
        return;
    }
    if (!m_isInBlock) {
        warn(kStrayRecord, record);
        return;
    }
    entityRecord(record);
}

std::uint16_t DrawingLoader::entityClass(std::string_view type)
{
    if (type == m_lastType)
        return m_lastClass;
    std::uint16_t cls = m_classes.numberOfFileName(type, m_proxyEntity);
    if (type == "TRACE")
        cls = m_solid;
    else if (type == "MLEADER")
        cls = m_mleader;
    else if (!m_classes.at(cls).isEntity)
        cls = m_proxyEntity;
    m_lastType = type;
    m_lastClass = cls;
    return cls;
}

std::uint32_t DrawingLoader::namedRecord(ZvDbFiler::Table table, const RecordView &record, const Tag &tag)
{
    NameCache &cache = m_nameCaches[table == ZvDbFiler::kLayers ? 0 : 1];
    const std::string_view bytes = record.raw(tag);
    if (cache.last == bytes && cache.last.data())
        return cache.lastIndex;
    std::uint32_t index = 0;
    const auto known = cache.known.find(bytes);
    if (known != cache.known.end()) {
        index = known->second;
        if (index == 0)
            warn(kMissingLinetype, record);
    } else {
        const ZvString name(std::string_view(record.name(tag)));
        const ZvDbNameMap &names = m_file.names(table);
        const auto found = names.find(name);
        if (found != names.end()) {
            index = found->second;
        } else if (table == ZvDbFiler::kLayers) {
            warn(kMissingLayer, record);
            index = impliedRecord(kLayerTable, name);
        } else if (name.compareNoCase(L"ByLayer") != 0 && name.compareNoCase(L"ByBlock") != 0) {
            warn(kMissingLinetype, record);
        } else {
            index = impliedRecord(kLinetypeTable, name);
        }
        cache.known.emplace(bytes, index);
    }
    if (index) {
        cache.last = bytes;
        cache.lastIndex = index;
    }
    return index;
}

std::uint32_t DrawingLoader::properties(const RawProperties &raw, const RecordView &record, const Tag *book)
{
    if (!book && m_lastProperties && raw == m_lastRaw)
        return m_lastProperties;
    if (!book) {
        const auto known = m_knownProperties.find(raw);
        if (known != m_knownProperties.end()) {
            m_lastRaw = raw;
            return m_lastProperties = known->second;
        }
    }
    ZvDbEntityProperties properties;
    properties.layer = d.idAt(raw.layer);
    properties.linetype = d.idAt(raw.linetype);
    properties.color.setColor(raw.color);
    properties.lineWeight = ZvDb::LineWeight(raw.lineWeight);
    properties.linetypeScale = raw.linetypeScale;
    properties.visibility = raw.invisible ? ZvDb::kInvisible : ZvDb::kVisible;
    properties.plotStyleType = ZvDb::PlotStyleNameType(raw.plotStyleType & 3);
    if (raw.transparency & 0x02000000)
        properties.transparency.setAlpha(std::uint8_t(raw.transparency));
    else if (raw.transparency & 0x01000000)
        properties.transparency.setMethod(ZvCmTransparency::kByBlock);
    if (book)
        properties.color.setBookName(ZvString(std::string_view(record.text(*book))));
    const std::uint32_t number = d.propertiesTable.intern(properties);
    if (book)
        return number;
    m_knownProperties.emplace(raw, number);
    m_lastRaw = raw;
    return m_lastProperties = number;
}

std::vector<std::uint32_t> &DrawingLoader::entitiesOf(std::uint32_t block)
{
    if (block != m_entitiesBlock || !m_entities) {
        m_entitiesBlock = block;
        m_entities = &ZvDbObjectAccess::entitiesOf(static_cast<ZvDbBlockTableRecord &>(*d.stubs[block].object));
    }
    return *m_entities;
}

void DrawingLoader::addToBlock(std::uint32_t block, std::uint32_t entity)
{
    entitiesOf(block).push_back(entity);
}

std::uint32_t DrawingLoader::spaceBlock(bool paper)
{
    std::uint32_t &block = m_spaces[paper];
    if (block == 0) {
        const ZvDbNameMap &names = m_file.names(ZvDbFiler::kBlocks);
        for (const wchar_t *name :
             {paper ? L"*Paper_Space" : L"*Model_Space", paper ? L"$Paper_Space" : L"$Model_Space"}) {
            const auto found = names.find(name);
            if (block == 0 && found != names.end())
                block = found->second;
        }
        if (block == 0)
            block = impliedRecord(kBlockTable, paper ? L"*Paper_Space" : L"*Model_Space");
    }
    return block;
}

/// The block of an entity in the section of entities.
std::uint32_t DrawingLoader::ownerBlock(const RecordView &record, std::uint64_t owner, bool paper)
{
    if (owner == 0)
        return spaceBlock(paper);
    if (owner == m_lastOwner)
        return m_lastOwnerBlock;
    const std::uint32_t index = d.handles.find(owner);
    const bool isBlock = index && d.stubs[index].owner && d.stubs[index].owner == d.tables[kBlockTable];
    if (!isBlock) {
        warn(kWrongOwner, record);
        return spaceBlock(paper);
    }
    m_lastOwner = owner;
    m_lastOwnerBlock = index;
    return index;
}

void DrawingLoader::entityRecord(const RecordView &record)
{
    RawProperties raw;
    raw.color = std::uint32_t(ZvCm::kByLayer) << 24;
    std::uint64_t handle = 0;
    std::uint64_t owner = 0;
    std::uint64_t material = 0;
    std::uint64_t plotStyle = 0;
    const Tag *layer = nullptr;
    const Tag *book = nullptr;
    bool hasTrueColor = false;
    bool paper = false;
    bool isInGroup = false;
    bool isHead = true;
    const std::size_t count = record.size();
    for (std::size_t i = 1; i < count; ++i) {
        const Tag &tag = record[i];
        switch (tag.code) {
        case 100: {
            isInGroup = false;
            isHead = false;
            std::string_view marker = record.raw(tag);
            while (!marker.empty() && marker.front() == ' ')
                marker.remove_prefix(1);
            if (marker.substr(0, 10) != "AcDbEntity")
                i = count; // what follows is the entity's own
            break;
        }
        case 102:
            isInGroup = record.raw(tag).find('{') != std::string_view::npos;
            break;
        case 5:
            if (handle == 0 && !isInGroup)
                handle = record.handle(tag);
            break;
        case 330:
            if (owner == 0 && isHead && !isInGroup)
                owner = record.handle(tag);
            break;
        case 8:
            if (!layer)
                layer = &tag;
            break;
        case 6:
            raw.linetype = namedRecord(ZvDbFiler::kLinetypes, record, tag);
            break;
        case 62:
            if (!hasTrueColor)
                raw.color = zvdbFileColor(record.integer(tag), false, 0, ZvString()).color();
            break;
        case 420:
            hasTrueColor = true;
            raw.color = std::uint32_t(ZvCm::kByColor) << 24 | (std::uint32_t(record.integer(tag)) & 0xFFFFFFu);
            break;
        case 430:
            book = &tag;
            break;
        case 440:
            raw.transparency = std::uint32_t(record.integer(tag));
            break;
        case 370:
            raw.lineWeight = zvdbClampedInt(record.integer(tag));
            break;
        case 48:
            raw.linetypeScale = record.real(tag);
            break;
        case 60:
            raw.invisible = record.integer(tag) != 0;
            break;
        case 67:
            paper = record.integer(tag) != 0;
            break;
        case 347:
            material = record.handle(tag);
            break;
        case 380:
            raw.plotStyleType = std::uint16_t(record.integer(tag));
            break;
        case 390:
            plotStyle = record.handle(tag);
            break;
        default:
            if (tag.code >= 1000)
                i = count;
            break;
        }
    }
    m_anyOwner |= owner != 0;

    const std::string_view type = record.type();
    if (type == "VERTEX" || type == "SEQEND" || type == "ATTRIB") {
        const bool isAttribute = type == "ATTRIB";
        const bool fits = m_parent != 0 && (!isAttribute || d.stubs[m_parent].cls != m_polyline);
        if (handle != 0) {
            m_anyHandle = true;
            if (!isAttribute || !fits)
                d.raiseHandleSeed(handle + 1);
        }
        if (!fits)
            warn(kStraySubentity, record);
        if (type == "SEQEND")
            m_parent = 0;
        if (!isAttribute || !fits)
            return;
    }
    if (layer)
        raw.layer = namedRecord(ZvDbFiler::kLayers, record, *layer);
    else
        raw.layer = d.recordId("LAYER", L"0").index();

    std::uint32_t index = 0;
    if (type == "ATTRIB") {
        index = add(m_attribute, handle, m_parent, record);
    } else {
        const std::uint16_t cls = entityClass(type);
        std::uint32_t block = m_block;
        if (!m_isInBlock)
            block = ownerBlock(record, owner, paper);
        else if (owner != 0 && owner != d.stubs[block].handle)
            warn(kWrongOwner, record);
        index = add(cls, handle, block, record);
        addToBlock(block, index);
        m_parent = cls == m_polyline || cls == m_insert || m_classes.at(cls).isBlockReference ? index : 0;
    }
    if (material || plotStyle) {
        // Objects stand further down in the file.
        m_handles.push_back({index, material, plotStyle});
    }
    d.propertyNumbers[index] = properties(raw, record, hasTrueColor ? book : nullptr);
}

// ---- objects

void DrawingLoader::objectRecord(const RecordView &record)
{
    const RecordHead head(record, 5);
    const std::string_view type = record.type();
    std::uint16_t cls = m_classes.numberOfFileName(type, m_proxyObject);
    if (m_classes.at(cls).isEntity || m_classes.at(cls).isSymbolTable
        || m_classes.at(cls).descriptor->isDerivedFrom(ZvDbSymbolTableRecord::desc()))
        cls = m_proxyObject;
    const std::uint32_t index = add(cls, head.handle, 0, record);
    if (head.owner)
        m_owners.emplace_back(index, head.owner);
    if (m_firstDictionary == 0 && type == "DICTIONARY")
        m_firstDictionary = index;
    if (d.rootDictionary == 0 && type == "DICTIONARY" && head.owner == 0)
        d.rootDictionary = index;
}

// ---- when all is read

void DrawingLoader::finish()
{
    d.version = zvdbFileVersion(m_file.store.version());
    d.binary = m_file.store.style().binary;
    m_file.hasHandles = d.version >= ZvDb::kR13 || m_anyHandle;
    m_file.hasOwners = d.version >= ZvDb::kR2000 || m_anyOwner;
    if (!m_tablesSeen)
        m_warnings.add(kTablesMissing);
    for (int kind = 0; kind < kTableCount; ++kind)
        tableObject(kind, 0, nullptr);
    ensureStandardRecords();
    spaceBlock(false);
    spaceBlock(true);
    for (const zvdxf::HeaderVariable &variable : m_file.store.headerVariables()) {
        if (variable.name != "$HANDSEED" || variable.tagCount == 0)
            continue;
        const zvdxf::RecordView view = m_file.store.headerValues(variable);
        d.raiseHandleSeed(view.handle(view[0]));
    }
    for (const std::uint32_t index : m_withoutHandle) {
        if (d.handles.find(d.stubs[index].handle) != index)
            d.giveHandle(index);
    }
    settleObjects();
    settleHandles();
    settleBlocks();
    settleLayouts();
    for (int number = 0; number < zvdbVariableCount(); ++number) {
        ZvDbVariableValue value = d.variable(number);
        if (!m_file.fileVariable(number, value))
            continue;
        d.loadVariable(number, value);
        d.variableInFile[std::size_t(number)] = true;
    }
}

void DrawingLoader::ensureStandardRecords()
{
    const struct
    {
        int kind;
        const wchar_t *name;
    } standard[] = {
        {kLinetypeTable, L"ByBlock"}, {kLinetypeTable, L"ByLayer"},   {kLinetypeTable, L"Continuous"},
        {kLayerTable, L"0"},          {kTextStyleTable, L"Standard"}, {kDimStyleTable, L"Standard"},
        {kViewportTable, L"*Active"},
    };
    for (const auto &entry : standard) {
        if (!d.table(ZvDbTableKind(entry.kind))->has(entry.name))
            impliedRecord(entry.kind, entry.name);
    }
    ZvDbSymbolTable &linetypes = *d.table(kLinetypeTable);
    const std::uint32_t continuous = linetypes.getIdAt(L"Continuous").index();
    for (const std::uint32_t index : ZvDbObjectAccess::recordsOf(*d.table(kLayerTable))) {
        ZvDbLayerTableRecord *layer = static_cast<ZvDbLayerTableRecord *>(d.stubs[index].object);
        if (layer && d.stubs[index].record == 0)
            ZvDbObjectAccess::setLinetype(*layer, d.idAt(continuous));
    }
}

void DrawingLoader::settleObjects()
{
    for (const auto &[index, owner] : m_owners)
        d.stubs[index].owner = d.handles.find(owner);
    if (d.rootDictionary == 0)
        d.rootDictionary = m_firstDictionary;
    if (d.rootDictionary == 0) {
        if (d.version >= ZvDb::kR13)
            m_warnings.add(kNoRoot);
        d.rootDictionary = addImplied(new ZvDbDictionary, 0);
        return;
    }
    // The dictionaries that the drawing is known by are asked all the time.
    const ZvDbDictionary *root = static_cast<const ZvDbDictionary *>(d.objectAt(d.rootDictionary));
    const std::unique_ptr<ZvDbDictionaryIterator> entries(root->newIterator());
    for (; !entries->done(); entries->next()) {
        const std::uint32_t index = entries->objectId().index();
        if (index && d.classAt(index).descriptor->isDerivedFrom(ZvDbDictionary::desc()))
            d.objectAt(index);
    }
}

void DrawingLoader::settleHandles()
{
    struct Key
    {
        std::uint32_t properties;
        std::uint64_t material;
        std::uint64_t plotStyle;
        bool operator==(const Key &o) const
        {
            return properties == o.properties && material == o.material && plotStyle == o.plotStyle;
        }
    };
    Key last{0, 0, 0};
    std::uint32_t number = 0;
    for (const Handles &handles : m_handles) {
        const Key key{d.propertyNumbers[handles.index], handles.material, handles.plotStyle};
        if (number == 0 || !(key == last)) {
            ZvDbEntityProperties properties = d.propertiesTable.at(key.properties);
            properties.material = d.idAt(d.handles.find(key.material));
            properties.plotStyle = d.idAt(d.handles.find(key.plotStyle));
            if (!properties.plotStyle.isNull())
                properties.plotStyleType = ZvDb::kPlotStyleById;
            number = d.propertiesTable.intern(properties);
            last = key;
        }
        d.propertyNumbers[handles.index] = number;
    }
}

void DrawingLoader::settleBlocks()
{
    for (const std::uint32_t index : m_blocks) {
        ZvDbObject *block = d.stubs[index].object;
        m_file.decodeInto(index, *block);
        const ZvString name = d.nameOf(d.idAt(index));
        ZvDbObjectAccess::setName(static_cast<ZvDbSymbolTableRecord &>(*block), name);
        const bool isSpace = zvdbSpaceOfBlock(name) >= 0;
        if (!isSpace && m_file.blocks.find(index) == m_file.blocks.end())
            m_warnings.add(kMissingBlock);
    }
}

/// Papers and model space have layouts, whether the file tells of them (R2000 and later) or not.
void DrawingLoader::settleLayouts()
{
    ZvDbDictionary &root = *static_cast<ZvDbDictionary *>(d.stubs[d.rootDictionary].object);
    std::uint32_t dictionary = root.getIdAt(L"ACAD_LAYOUT").index();
    if (dictionary && !d.classAt(dictionary).descriptor->isDerivedFrom(ZvDbDictionary::desc()))
        return;
    if (dictionary == 0) {
        dictionary = addImplied(new ZvDbDictionary, d.rootDictionary);
        ZvDbObjectAccess::addToDictionary(root, L"ACAD_LAYOUT", d.idAt(dictionary));
    }
    ZvDbDictionary &layouts = *static_cast<ZvDbDictionary *>(d.stubs[dictionary].object);
    std::vector<std::uint32_t> laidOut;
    const std::unique_ptr<ZvDbDictionaryIterator> entries(layouts.newIterator());
    for (; !entries->done(); entries->next()) {
        const std::uint32_t index = entries->objectId().index();
        if (!index || !d.classAt(index).descriptor->isDerivedFrom(ZvDbLayout::desc()))
            continue;
        if (const ZvDbObject *layout = d.objectAt(index))
            laidOut.push_back(static_cast<const ZvDbLayout *>(layout)->getBlockTableRecordId().index());
    }
    int number = 0;
    for (const std::uint32_t block : {m_spaces[0], m_spaces[1]}) {
        const bool isModel = number++ == 0;
        if (std::find(laidOut.begin(), laidOut.end(), block) != laidOut.end())
            continue;
        if (!isModel && !laidOut.empty() && laidOut.size() > 1)
            continue; // the papers are other blocks
        ZvDbLayout *layout = new ZvDbLayout;
        ZvString name = isModel ? L"Model" : L"Layout1";
        for (int i = 2; layouts.has(name); ++i)
            name = ZvString(L"Layout") + ZvString(std::to_string(i).c_str());
        ZvDbObjectAccess::setName(*layout, name);
        const std::uint32_t index = addImplied(layout, dictionary);
        ZvDbObjectAccess::addToDictionary(layouts, name, d.idAt(index));
        ZvDbObjectAccess::setBlock(*layout, d.idAt(block));
        ZvDbObjectAccess::setPage(*layout, isModel ? 0 : 1);
        ZvDbObjectAccess::setLayout(static_cast<ZvDbBlockTableRecord &>(*d.stubs[block].object), d.idAt(index));
    }
}

Zv::ErrorStatus statusOf(const zvdxf::LoadResult &result)
{
    switch (result.status) {
    case zvdxf::LoadStatus::Ok:
        return Zv::eOk;
    case zvdxf::LoadStatus::Cancelled:
        return Zv::eCancelled;
    case zvdxf::LoadStatus::CannotRead:
    case zvdxf::LoadStatus::TooLarge:
        return Zv::eFileAccess;
    default:
        return Zv::eFileDamaged;
    }
}

} // namespace

Zv::ErrorStatus zvdbLoadDrawing(ZvDbDatabasePrivate &database, zvdxf::Buffer *bytes, const std::string &path,
                                ZvDbFileReport &report, ZvDbProgress *progress)
{
    report = ZvDbFileReport();
    database.clear();
    auto owned = std::make_unique<ZvDbDrawingFile>(database);
    ZvDbDrawingFile &file = *owned;
    database.source = std::move(owned);
    ++database.undo.suspended;
    ZvDbWarnings warnings(report);
    DrawingLoader loader(database, file, warnings);
    zvdxf::Progress report100;
    if (progress)
        report100 = [progress](std::uint64_t done, std::uint64_t total) {
            return progress->progress(total ? double(done) / double(total) : 1.0);
        };
    const zvdxf::LoadResult result
        = bytes ? file.store.load(std::move(*bytes), &loader, report100) : file.store.load(path, &loader, report100);
    report.status = statusOf(result);
    if (report.status != Zv::eOk) {
        report.message = ZvString(std::string_view(result.error));
        database.clear();
        --database.undo.suspended;
        return report.status;
    }
    for (std::size_t kind = 0; kind < result.warnings.size(); ++kind) {
        const zvdxf::Warning &found = result.warnings[kind];
        if (found.count == 0)
            continue;
        ZvDbFileReport::Warning warning;
        warning.text = zvdxf::warningText(zvdxf::WarningKind(kind));
        warning.count = int(found.count);
        warning.firstLine = (long long)(file.store.style().binary ? found.firstOffset : found.firstLine);
        report.warnings.append(warning);
    }
    loader.finish();
    database.contentLoaded();
    file.variables = database.variables;
    --database.undo.suspended;
    warnings.finish(&file.store);
    return Zv::eOk;
}
