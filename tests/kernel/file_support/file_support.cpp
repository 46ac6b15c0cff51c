// SPDX-License-Identifier: MIT
#include "file_support.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <sstream>

namespace fs = std::filesystem;

std::ostream &operator<<(std::ostream &out, const FileTag &tag)
{
    return out << tag.code << " " << tag.value;
}

std::vector<std::string> drawingNames()
{
    std::vector<std::string> names;
    for (const fs::path &folder : {fs::path(ZEVA_SAMPLES_DIR), fs::path(ZEVA_DRAWINGS_DIR) / "dxf"}) {
        if (!fs::is_directory(folder))
            continue;
        for (const auto &entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".dxf")
                names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string drawingPath(const std::string &name)
{
    const fs::path sample = fs::path(ZEVA_SAMPLES_DIR) / name;
    return fs::exists(sample) ? sample.string() : (fs::path(ZEVA_DRAWINGS_DIR) / "dxf" / name).string();
}

std::string readAll(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void writeAll(const std::string &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

Folder::Folder()
{
    std::string name = (fs::temp_directory_path() / "zvfileXXXXXX").string();
    m_path = mkdtemp(name.data());
}

Folder::~Folder()
{
    std::error_code ignored;
    fs::permissions(m_path, fs::perms::owner_all, ignored);
    fs::remove_all(m_path, ignored);
}

ZvDbDatabasePtr readDrawing(const std::string &bytes, ZvDbFileReport *report)
{
    ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport own;
    ZvDbFileReport &used = report ? *report : own;
    if (database->readStream(bytes.data(), bytes.size(), used) != Zv::eOk)
        return nullptr;
    return database;
}

std::string saveDrawing(ZvDbDatabase &database, ZvDbFileReport *report)
{
    const Folder folder;
    ZvDbFileReport own;
    const std::string path = folder.file("saved.dxf");
    if (database.saveAs(path.c_str(), report ? *report : own) != Zv::eOk)
        return {};
    return readAll(path);
}

std::vector<FileTag> tagsOf(const std::string &bytes)
{
    std::vector<FileTag> result;
    zvdxf::Store store;
    if (!store.load(zvdxf::Buffer(bytes)))
        return result;
    std::vector<zvdxf::Tag> tags;
    for (std::uint32_t record = 0; record < store.records().size(); ++record) {
        store.tags(record, tags);
        for (const zvdxf::Tag &tag : tags) {
            std::string value = store.asciiValue(tag);
            const zvdxf::RecordView view(store, &tag, 1, record);
            std::ostringstream number;
            switch (zvdxf::valueKind(tag.code)) {
            case zvdxf::ValueKind::Real:
                number << std::hexfloat << view.real(tag);
                value = number.str();
                break;
            case zvdxf::ValueKind::Text:
                break;
            case zvdxf::ValueKind::Handle:
                value = std::to_string(view.handle(tag));
                break;
            case zvdxf::ValueKind::Chunk:
                break;
            default:
                value = std::to_string(view.integer(tag));
            }
            result.push_back({tag.code, std::move(value)});
        }
    }
    return result;
}

TagDifference difference(const std::vector<FileTag> &a, const std::vector<FileTag> &b)
{
    std::size_t first = 0;
    while (first < a.size() && first < b.size() && a[first] == b[first])
        ++first;
    std::size_t lastA = a.size();
    std::size_t lastB = b.size();
    while (lastA > first && lastB > first && a[lastA - 1] == b[lastB - 1]) {
        --lastA;
        --lastB;
    }
    // Between the two ends: the shortest edit by the greedy walk along diagonals.
    const long n = long(lastA - first);
    const long m = long(lastB - first);
    const long limit = n + m;
    TagDifference result;
    std::vector<std::vector<long>> trace;
    std::vector<long> reach(std::size_t(2 * limit + 3), 0);
    const auto at = [limit](long k) { return std::size_t(k + limit + 1); };
    for (long steps = 0; steps <= limit; ++steps) {
        if (steps > 4000) {
            // Too different to be worth the walk.
            result.removed.assign(a.begin() + long(first), a.begin() + long(lastA));
            result.added.assign(b.begin() + long(first), b.begin() + long(lastB));
            return result;
        }
        trace.emplace_back(reach.begin() + long(at(-steps - 1)), reach.begin() + long(at(steps + 1)) + 1);
        bool done = false;
        for (long k = -steps; k <= steps; k += 2) {
            long x = k == -steps || (k != steps && reach[at(k - 1)] < reach[at(k + 1)]) ? reach[at(k + 1)]
                                                                                        : reach[at(k - 1)] + 1;
            long y = x - k;
            while (x < n && y < m && a[first + std::size_t(x)] == b[first + std::size_t(y)]) {
                ++x;
                ++y;
            }
            reach[at(k)] = x;
            if (x >= n && y >= m) {
                done = true;
                break;
            }
        }
        if (done)
            break;
    }
    long x = n;
    long y = m;
    for (long steps = long(trace.size()) - 1; steps >= 0 && (x > 0 || y > 0); --steps) {
        const std::vector<long> &before = trace[std::size_t(steps)];
        const auto was = [&](long k) { return before[std::size_t(k + steps + 1)]; };
        const long k = x - y;
        const long from = k == -steps || (k != steps && was(k - 1) < was(k + 1)) ? k + 1 : k - 1;
        const long fromX = was(from);
        const long fromY = fromX - from;
        while (x > fromX && y > fromY) {
            --x;
            --y;
        }
        if (steps == 0)
            break;
        if (x == fromX)
            result.added.push_back(b[first + std::size_t(fromY)]);
        else
            result.removed.push_back(a[first + std::size_t(fromX)]);
        x = fromX;
        y = fromY;
    }
    std::reverse(result.removed.begin(), result.removed.end());
    std::reverse(result.added.begin(), result.added.end());
    return result;
}

TagDifference difference(const std::string &before, const std::string &after)
{
    return difference(tagsOf(before), tagsOf(after));
}

std::string describe(const TagDifference &difference)
{
    std::ostringstream out;
    for (const FileTag &tag : difference.removed)
        out << "- " << tag << "\n";
    for (const FileTag &tag : difference.added)
        out << "+ " << tag << "\n";
    return out.str();
}

std::vector<ZvDbObjectId> entitiesOf(ZvDbObjectId block)
{
    std::vector<ZvDbObjectId> ids;
    ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *iterator = nullptr;
    if (!record || record->newIterator(iterator) != Zv::eOk)
        return ids;
    const std::unique_ptr<ZvDbBlockTableRecordIterator> owned(iterator);
    for (; !iterator->done(); iterator->step())
        ids.push_back(iterator->entityId());
    return ids;
}

std::vector<ZvDbObjectId> recordsOf(ZvDbObjectId table)
{
    std::vector<ZvDbObjectId> ids;
    ZvDbObjectPointer<ZvDbSymbolTable> opened(table, ZvDb::kForRead);
    ZvDbSymbolTableIterator *iterator = nullptr;
    if (!opened || opened->newIterator(iterator) != Zv::eOk)
        return ids;
    const std::unique_ptr<ZvDbSymbolTableIterator> owned(iterator);
    for (; !iterator->done(); iterator->step())
        ids.push_back(iterator->getRecordId());
    return ids;
}

std::string text(std::initializer_list<std::pair<int, const char *>> tags)
{
    std::string result;
    for (const auto &[code, value] : tags)
        result += std::to_string(code) + "\n" + value + "\n";
    return result;
}

void changeSettings(ZvDbDatabase &database)
{
    const ZvDb::FileVersion version = database.fileVersion();
    ZvCmColor green;
    green.setColorIndex(3);
    database.beginUndoStep("settings");
    EXPECT_EQ(database.setCecolor(green), Zv::eOk);
    EXPECT_EQ(database.setCeltype(addRecord<ZvDbLinetypeTable, ZvDbLinetypeTableRecord>(database, L"Picked dashes")),
              Zv::eOk);
    EXPECT_EQ(database.setClayer(addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(database, L"Picked layer")), Zv::eOk);
    const ZvDbObjectId textStyle = addRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(database, L"Picked texts");
    EXPECT_EQ(database.setTextstyle(textStyle), Zv::eOk);
    const ZvDbObjectId dimStyle = addRecord<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>(database, L"Picked dimensions");
    change<ZvDbDimStyleTableRecord>(dimStyle, [](ZvDbDimStyleTableRecord &style) { style.setReal("DIMSCALE", 12.5); });
    EXPECT_EQ(database.setDimstyle(dimStyle), Zv::eOk);
    EXPECT_EQ(database.setDimstyleData(dimStyle), Zv::eOk);
    database.setTilemode(true);
    EXPECT_EQ(database.setUcs({1, 2, 3}, {0, 1, 0}, {-1, 0, 0},
                              addRecord<ZvDbUCSTable, ZvDbUCSTableRecord>(database, L"Picked system"), 0),
              Zv::eOk);
    if (version >= ZvDb::kR13)
        change<ZvDbTextStyleTableRecord>(textStyle, [](ZvDbTextStyleTableRecord &style) {
            EXPECT_EQ(style.setFont(L"Liberation Sans", true, true), Zv::eOk);
        });
    if (version >= ZvDb::kR2000) {
        EXPECT_EQ(database.setCelweight(ZvDb::kLnWt070), Zv::eOk);
        addEntry<ZvDbPlaceHolder>(database.plotStyleDictionaryId(true), L"Picked plot style");
        EXPECT_EQ(database.setCplotstyle(L"Picked plot style"), Zv::eOk);
        EXPECT_EQ(
            database.setTablestyle(addEntry<ZvDbTableStyle>(database.tableStyleDictionaryId(true), L"Picked tables")),
            Zv::eOk);
        EXPECT_EQ(database.setMleaderstyle(
                      addEntry<ZvDbMLeaderStyle>(database.mleaderStyleDictionaryId(true), L"Picked leaders")),
                  Zv::eOk);
        addEntry<ZvDbDictionaryVar>(database.layerStateDictionaryId(true), L"Picked state");
    }
    if (version >= ZvDb::kR2007) {
        const ZvDbObjectId material = addEntry<ZvDbMaterial>(database.materialDictionaryId(true), L"Picked material");
        EXPECT_EQ(database.setCmaterial(material), Zv::eOk);
    }
    database.endUndoStep();
}
