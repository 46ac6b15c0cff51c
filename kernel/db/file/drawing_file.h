// SPDX-License-Identifier: MIT
#ifndef DRAWING_FILE_H
#define DRAWING_FILE_H

#include "dxf_store.h"
#include "record_reader.h"
#include "zvdbdatabase_p.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Names as tables compare them.
struct ZvDbNameHash
{
    std::size_t operator()(const ZvString &name) const { return name.hashNoCase(); }
};
struct ZvDbNameEqual
{
    bool operator()(const ZvString &a, const ZvString &b) const { return a.compareNoCase(b) == 0; }
};
typedef std::unordered_map<ZvString, std::uint32_t, ZvDbNameHash, ZvDbNameEqual> ZvDbNameMap;

/// The file that a database was read from, kept whole: its objects are decoded from it when they are first opened, and
/// saving goes along it. Objects are told by their positions in the database.
class ZvDbDrawingFile : public ZvDbFileSource
{
public:
    static constexpr std::uint32_t kNoRecord = 0xFFFFFFFFu;

    explicit ZvDbDrawingFile(ZvDbDatabasePrivate &database);
    ~ZvDbDrawingFile() override;

    ZvDbObject *decode(std::uint32_t index) override;
    ZvResBuf *readXData(std::uint32_t index) override;
    ZvDbObjectId extensionDictionary(std::uint32_t index) override;
    ZvString recordName(std::uint32_t index) override;
    void addReferences(std::uint32_t index, std::vector<ZvDbObjectId> &ids) override;

    /// Reads the object's own data into an object that is there already.
    void decodeInto(std::uint32_t index, ZvDbObject &object);
    /// The shared properties that the record of an entity, a vertex, the end of a sequence or of a block tells. The layer
    /// is null where it names none.
    ZvDbEntityProperties propertiesIn(std::uint32_t record);
    /// Number of the object's record, kNoRecord when it has none.
    std::uint32_t recordOf(std::uint32_t index) const;
    /// What the file has for a variable; false when it has none or says nothing that can be read.
    bool fileVariable(int number, ZvDbVariableValue &value);
    /// Table of names of the records that entities refer to.
    ZvDbNameMap &names(ZvDbFiler::Table table) { return m_names[table]; }
    const ZvDbNameMap &names(ZvDbFiler::Table table) const { return m_names[table]; }
    /// Whether the file tells handles, and owners.
    bool hasHandles = true;
    bool hasOwners = true;

    /// Where a block stands in the BLOCKS section.
    struct BlockRecords
    {
        std::uint32_t begin = kNoRecord;
        std::uint32_t end = kNoRecord;
    };
    std::unordered_map<std::uint32_t, BlockRecords> blocks;
    /// Where a table stands in the TABLES section.
    struct TableRecords
    {
        std::uint32_t begin = kNoRecord;
        std::uint32_t end = kNoRecord;
    };
    TableRecords tables[kTableCount];
    /// Also of one whose beginning or end is lost.
    bool hasTable(int kind) const { return tables[kind].begin != kNoRecord || tables[kind].end != kNoRecord; }
    /// Variables as they were when the file had been read.
    std::vector<ZvDbVariableValue> variables;

    zvdxf::Store store;
    ZvDbDatabasePrivate &d;

private:
    ZvDbFileReferences m_references;
    ZvDbNameMap m_names[ZvDbFiler::kBlocks + 1];
    std::unique_ptr<ZvDbRecordReader> m_reader;
};

/// The tables of a file by kind.
const char *zvdbFileTableName(int kind);
/// -1 for a name that is none's.
int zvdbFileTableKind(std::string_view name);
/// Version of a file by its $ACADVER, the oldest for what is unknown or missing.
ZvDb::FileVersion zvdbFileVersion(std::string_view acadver);
const char *zvdbVersionName(ZvDb::FileVersion version);
/// Whether it is the block of model space (0), of a paper (1), or neither (-1). Files of the oldest versions begin such
/// names with another character.
int zvdbSpaceOfBlock(const ZvString &name);

/// Builds up the report of a file, one warning for each text.
class ZvDbWarnings
{
public:
    explicit ZvDbWarnings(ZvDbFileReport &report) : m_report(report) { }
    /// \a offset: byte in the file, of the first time only.
    void add(const char *text, std::uint64_t offset = 0);
    /// Puts what has come together into the report, with lines in place of bytes.
    void finish(const zvdxf::Store *store);

private:
    struct Entry
    {
        const char *text;
        int count;
        std::uint64_t offset;
    };
    ZvDbFileReport &m_report;
    std::vector<Entry> m_entries;
};

/// Reads a file into an empty database.
Zv::ErrorStatus zvdbLoadDrawing(ZvDbDatabasePrivate &database, zvdxf::Buffer *bytes, const std::string &path,
                                ZvDbFileReport &report, ZvDbProgress *progress);
Zv::ErrorStatus zvdbSaveDrawing(ZvDbDatabasePrivate &database, const std::string &path, ZvDbFileReport &report,
                                ZvDbProgress *progress);

#endif
