// SPDX-License-Identifier: MIT
#include "drawing_file.h"

#include "db/zvdbentities.h"
#include "dxf_number.h"

#include <cstring>

namespace {

// In the order of ZvDbTableKind.
const char *const kTableNames[kTableCount]
    = {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"};

struct VersionName
{
    const char *name;
    ZvDb::FileVersion version;
};
const VersionName kVersionNames[] = {
    {"AC1009", ZvDb::kR12},   {"AC1012", ZvDb::kR13},   {"AC1014", ZvDb::kR14},
    {"AC1015", ZvDb::kR2000}, {"AC1018", ZvDb::kR2004}, {"AC1021", ZvDb::kR2007},
    {"AC1024", ZvDb::kR2010}, {"AC1027", ZvDb::kR2013}, {"AC1032", ZvDb::kR2018},
};

} // namespace

const char *zvdbFileTableName(int kind)
{
    return kTableNames[kind];
}

int zvdbFileTableKind(std::string_view name)
{
    for (int kind = 0; kind < kTableCount; ++kind) {
        if (name == kTableNames[kind])
            return kind;
    }
    return -1;
}

ZvDb::FileVersion zvdbFileVersion(std::string_view acadver)
{
    // Between two known versions the older one's rules hold; beyond the last, the last one's.
    ZvDb::FileVersion version = ZvDb::kR12;
    for (const VersionName &known : kVersionNames) {
        if (acadver.size() == 6 && acadver >= known.name)
            version = known.version;
    }
    return version;
}

const char *zvdbVersionName(ZvDb::FileVersion version)
{
    for (const VersionName &known : kVersionNames) {
        if (known.version == version)
            return known.name;
    }
    return kVersionNames[0].name;
}

int zvdbSpaceOfBlock(const ZvString &name)
{
    if (name.isEmpty() || (name.at(0) != L'*' && name.at(0) != L'$'))
        return -1;
    const ZvString rest = name.mid(1);
    if (rest.compareNoCase(L"Model_Space") == 0)
        return 0;
    // Papers that are not current have numbers behind the name.
    return rest.startsWithNoCase(L"Paper_Space") ? 1 : -1;
}

// ---- references

ZvDbObjectId ZvDbFileReferences::ofHandle(std::uint64_t handle) const
{
    const ZvDbDatabasePrivate &d = *m_database.priv();
    return handle ? d.idAt(d.handles.find(handle)) : ZvDbObjectId();
}

ZvDbObjectId ZvDbFileReferences::ofName(ZvDbFiler::Table table, std::string_view name) const
{
    const ZvDbDatabasePrivate &d = *m_database.priv();
    const ZvDbDrawingFile *file = static_cast<const ZvDbDrawingFile *>(d.source.get());
    if (!file)
        return ZvDbObjectId();
    // As the names were when the file was read: records may have others by now.
    const ZvDbNameMap &names = file->names(table);
    const auto found = names.find(ZvString(name));
    return found == names.end() ? ZvDbObjectId() : d.idAt(found->second);
}

bool ZvDbFileReferences::isRenamed(ZvDbObjectId id) const
{
    const ZvDbDatabasePrivate &d = *m_database.priv();
    if (id.isNull() || !d.owns(id) || !d.stubs[id.index()].has(ZvDbStub::kFileChanged))
        return false;
    const ZvDbDrawingFile *file = static_cast<const ZvDbDrawingFile *>(d.source.get());
    const ZvString now = d.nameOf(id);
    for (int table = 0; file && table <= ZvDbFiler::kBlocks; ++table) {
        const ZvDbNameMap &names = file->names(ZvDbFiler::Table(table));
        const auto found = names.find(now);
        if (found != names.end() && found->second == id.index())
            return false;
    }
    return true;
}

std::int64_t ZvDbFileReferences::recordOf(ZvDbObjectId id) const
{
    const ZvDbDatabasePrivate &d = *m_database.priv();
    return id.isNull() || !d.owns(id) ? -1 : std::int64_t(d.stubs[id.index()].record) - 1;
}

bool ZvDbFileReferences::isImplied(ZvDbObjectId id) const
{
    const ZvDbDatabasePrivate &d = *m_database.priv();
    return !id.isNull() && d.owns(id) && d.stubs[id.index()].record == 0
        && !d.stubs[id.index()].has(ZvDbStub::kFileChanged);
}

bool ZvDbFileReferences::isStandard(ZvDbFiler::Table table, ZvDbObjectId id) const
{
    switch (table) {
    case ZvDbFiler::kLinetypes:
        return isByLayer(id);
    case ZvDbFiler::kTextStyles:
    case ZvDbFiler::kDimStyles:
        return ofName(table, "Standard") == id;
    default:
        return false;
    }
}

bool ZvDbFileReferences::isByLayer(ZvDbObjectId id) const
{
    return !id.isNull() && id == m_database.priv()->idAt(m_database.priv()->byLayer);
}

std::uint64_t ZvDbFileReferences::handleOf(ZvDbObjectId id)
{
    const ZvDbDatabasePrivate &d = *m_database.priv();
    return id.isNull() || !d.owns(id) ? 0 : d.stubs[id.index()].handle;
}

std::string ZvDbFileReferences::nameOf(ZvDbFiler::Table table, ZvDbObjectId id)
{
    if (!id.isNull())
        return m_database.priv()->nameOf(id).toStdString();
    switch (table) {
    case ZvDbFiler::kLayers:
        return "0";
    case ZvDbFiler::kLinetypes:
        return "ByLayer";
    case ZvDbFiler::kBlocks:
        return {};
    default:
        return "Standard";
    }
}

// ---- the file

ZvDbDrawingFile::ZvDbDrawingFile(ZvDbDatabasePrivate &database) : d(database), m_references(database.q) { }

ZvDbDrawingFile::~ZvDbDrawingFile() = default;

std::uint32_t ZvDbDrawingFile::recordOf(std::uint32_t index) const
{
    const std::uint32_t record = d.stubs[index].record;
    return record ? record - 1 : kNoRecord;
}

ZvDbObject *ZvDbDrawingFile::decode(std::uint32_t index)
{
    ZvDbObject *object = ZvDbObjectAccess::make(d, index);
    if (object)
        decodeInto(index, *object);
    return object;
}

void ZvDbDrawingFile::decodeInto(std::uint32_t index, ZvDbObject &object)
{
    // One reader serves all, unless decoding one object asks for another.
    std::unique_ptr<ZvDbRecordReader> reader = std::move(m_reader);
    if (!reader)
        reader = std::make_unique<ZvDbRecordReader>(store, m_references, d.version);
    const std::uint32_t record = recordOf(index);
    if (record != kNoRecord) {
        reader->setRecord(record);
        object.fileFields(*reader);
    }
    if (object.isKindOf(ZvDbBlockTableRecord::desc())) {
        const auto found = blocks.find(index);
        if (found != blocks.end() && found->second.begin != kNoRecord) {
            reader->setRecord(found->second.begin);
            ZvDbObjectAccess::blockBeginFields(static_cast<ZvDbBlockTableRecord &>(object), *reader, ZvDbObjectId());
        }
    } else if (object.isKindOf(ZvDb2dPolyline::desc()) && record != kNoRecord) {
        ZvDb2dPolyline &polyline = static_cast<ZvDb2dPolyline &>(object);
        for (std::uint32_t next = record + 1; next < store.wholeRecords() && store.type(next) == "VERTEX"; ++next) {
            reader->setRecord(next);
            ZvDbObjectAccess::addVertex(polyline, *reader);
        }
    } else if (object.isKindOf(ZvDbBlockReference::desc())) {
        std::vector<ZvDbObjectId> attributes;
        for (std::uint32_t next = index + 1; next < d.stubs.end(); ++next) {
            if (!d.stubs.isUsed(next))
                continue;
            if (d.stubs[next].owner != index)
                break;
            attributes.push_back(d.idAt(next));
        }
        ZvDbObjectAccess::setAttributes(static_cast<ZvDbBlockReference &>(object), std::move(attributes));
    }
    m_reader = std::move(reader);
}

ZvDbEntityProperties ZvDbDrawingFile::propertiesIn(std::uint32_t record)
{
    ZvDbRecordReader reader(store, m_references, d.version);
    reader.setRecord(record);
    reader.subclass("AcDbEntity");
    ZvDbEntityProperties properties;
    zvdbPropertyFields(reader, properties);
    return properties;
}

ZvString ZvDbDrawingFile::recordName(std::uint32_t index)
{
    const std::uint32_t record = recordOf(index);
    return record == kNoRecord ? ZvString() : ZvString(store.type(record));
}

void ZvDbDrawingFile::addReferences(std::uint32_t index, std::vector<ZvDbObjectId> &ids)
{
    constexpr int kLinetypeName = 6;
    const std::uint32_t record = recordOf(index);
    if (record == kNoRecord)
        return;
    std::vector<zvdxf::Tag> tags;
    const zvdxf::RecordView view = store.view(record, tags);
    const bool isElementOfMultiline = view.type() == "MLINESTYLE"; // the one that names them beside entities and layers
    for (const zvdxf::Tag &tag : view) {
        ZvDbObjectId id;
        if (zvdxf::valueKind(tag.code) == zvdxf::ValueKind::Handle)
            id = m_references.ofHandle(view.handle(tag));
        else if (isElementOfMultiline && tag.code == kLinetypeName)
            id = m_references.ofName(ZvDbFiler::kLinetypes, view.name(tag));
        if (!id.isNull() && id.index() != index)
            ids.push_back(id);
    }
}

ZvDbObjectId ZvDbDrawingFile::extensionDictionary(std::uint32_t index)
{
    const std::uint32_t record = recordOf(index);
    if (record == kNoRecord)
        return ZvDbObjectId();
    std::vector<zvdxf::Tag> tags;
    const zvdxf::RecordView view = store.view(record, tags);
    bool isInGroup = false;
    for (const zvdxf::Tag &tag : view) {
        if (tag.code == 100)
            break;
        if (tag.code == 102)
            isInGroup = view.raw(tag).find("{ACAD_XDICTIONARY") != std::string_view::npos;
        else if (isInGroup && (tag.code == 360 || tag.code == 350))
            return m_references.ofHandle(view.handle(tag));
    }
    return ZvDbObjectId();
}

ZvResBuf *ZvDbDrawingFile::readXData(std::uint32_t index)
{
    const std::uint32_t record = recordOf(index);
    if (record == kNoRecord)
        return nullptr;
    std::vector<zvdxf::Tag> tags;
    const zvdxf::RecordView view = store.view(record, tags);
    ZvResBuf *first = nullptr;
    ZvResBuf **next = &first;
    for (std::size_t i = 0; i < view.size(); ++i) {
        const zvdxf::Tag &tag = view[i];
        if (tag.code < 1000 || (!first && tag.code != 1001))
            continue;
        // The second and third coordinates of a point have tags of their own.
        if (tag.code >= 1020 && tag.code <= 1039)
            continue;
        ZvResBuf *buffer = zvutNewRb(tag.code);
        if (tag.code >= 1010 && tag.code <= 1013) {
            buffer->resval.rpoint[0] = view.real(tag);
            for (int k = 1; k < 3; ++k) {
                if (i + std::size_t(k) < view.size() && view[i + std::size_t(k)].code == tag.code + 10 * k)
                    buffer->resval.rpoint[k] = view.real(view[i + std::size_t(k)]);
            }
        } else if (tag.code >= 1040 && tag.code <= 1042) {
            buffer->resval.rreal = view.real(tag);
        } else if (tag.code == 1070) {
            buffer->resval.rint = short(view.integer(tag));
        } else if (tag.code == 1071) {
            buffer->resval.rlong = zvdbClampedInt(view.integer(tag));
        } else {
            buffer->resval.rstring = zvutNewString(ZvString(std::string_view(view.text(tag))).wstr());
        }
        *next = buffer;
        next = &buffer->rbnext;
    }
    return first;
}

bool ZvDbDrawingFile::fileVariable(int number, ZvDbVariableValue &value)
{
    const ZvDbVariable &variable = zvdbVariable(number);
    if (variable.place != ZvDbVariable::kHeader)
        return false;
    const zvdxf::HeaderVariable *found = store.headerVariable("$" + std::string(variable.name));
    if (!found || found->tagCount == 0)
        return false;
    const zvdxf::RecordView view = store.headerValues(*found);
    const zvdxf::Tag &tag = view[0];
    switch (variable.type) {
    case ZvDbVariable::kShort:
    case ZvDbVariable::kLong:
        value.integer = view.integer(tag);
        break;
    case ZvDbVariable::kReal:
        value.real[0] = view.real(tag);
        break;
    case ZvDbVariable::kText:
        value.text = ZvString(std::string_view(view.text(tag)));
        break;
    case ZvDbVariable::kPoint2d:
    case ZvDbVariable::kPoint3d:
        for (std::size_t i = 0; i < 3; ++i)
            value.real[i] = i < view.size() ? view.real(view[i]) : 0.0;
        break;
    case ZvDbVariable::kColor:
        value.color = zvdbFileColor(view.integer(tag), false, 0, ZvString());
        break;
    case ZvDbVariable::kNameId:
        value.id = d.recordId(variable.text, ZvString(std::string_view(view.name(tag))));
        break;
    case ZvDbVariable::kHandleId:
        value.id = m_references.ofHandle(view.handle(tag));
        break;
    case ZvDbVariable::kObjectId:
        return false;
    }
    return true;
}

// ---- warnings

void ZvDbWarnings::add(const char *text, std::uint64_t offset)
{
    for (Entry &entry : m_entries) {
        if (std::strcmp(entry.text, text) == 0) {
            ++entry.count;
            return;
        }
    }
    m_entries.push_back({text, 1, offset});
}

void ZvDbWarnings::finish(const zvdxf::Store *store)
{
    for (const Entry &entry : m_entries) {
        ZvDbFileReport::Warning warning;
        warning.text = entry.text;
        warning.count = entry.count;
        warning.firstLine = (long long)(entry.offset);
        if (store && !store->style().binary)
            warning.firstLine = (long long)(store->lineAt(entry.offset));
        m_report.warnings.append(warning);
    }
    m_entries.clear();
}
