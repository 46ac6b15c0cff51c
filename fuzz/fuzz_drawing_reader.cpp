// SPDX-License-Identifier: MIT
// Reads the input as a drawing. What comes of it is walked through, changed, saved and read again: saving what was just
// read has to give the input back.
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

std::string saved(ZvDbDatabase &database)
{
    // Saving waits for the disk: a folder in memory makes a run many times faster.
    static const char *const folder = std::getenv("TMPDIR");
    static const std::string path
        = std::string(folder ? folder : "/tmp") + "/fuzz_drawing_" + std::to_string(getpid()) + ".dxf";
    ZvDbFileReport report;
    if (database.saveAs(path.c_str(), report) != Zv::eOk)
        std::abort();
    std::ifstream file(path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::remove(path.c_str());
    return bytes;
}

template <class Iterator, class Table, class Visit> void walk(ZvDbObjectId id, Visit visit)
{
    ZvDbObjectPointer<Table> table(id, ZvDb::kForRead);
    Iterator *raw = nullptr;
    if (!table || table->newIterator(raw) != Zv::eOk)
        return;
    const std::unique_ptr<Iterator> iterator(raw);
    table.close();
    for (; !iterator->done(); iterator->step())
        visit(*iterator);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    if (database->readStream(data, size, report) != Zv::eOk)
        return 0;
    const std::string input(reinterpret_cast<const char *>(data), size);
    if (saved(*database) != input)
        std::abort();

    int number = 0;
    walk<ZvDbSymbolTableIterator, ZvDbBlockTable>(database->blockTableId(), [&](const ZvDbSymbolTableIterator &block) {
        walk<ZvDbBlockTableRecordIterator, ZvDbBlockTableRecord>(
            block.getRecordId(), [&](const ZvDbBlockTableRecordIterator &at) {
                ZvDbEntity *entity = nullptr;
                const bool writes = ++number % 3 == 0;
                if (at.getEntity(entity, writes ? ZvDb::kForWrite : ZvDb::kForRead) != Zv::eOk)
                    return;
                ZvGeExtents3d box;
                entity->getGeomExtents(box);
                if (writes) {
                    entity->setLinetypeScale(number);
                    entity->transformBy(ZvGeMatrix3d::translation(ZvGeVector3d(1, 2, 0)));
                    if (number % 2 == 0)
                        entity->erase();
                }
                entity->close();
            });
    });
    for (const ZvDbObjectId table :
         {database->layerTableId(), database->linetypeTableId(), database->textStyleTableId(),
          database->dimStyleTableId(), database->viewTableId(), database->UCSTableId()}) {
        walk<ZvDbSymbolTableIterator, ZvDbSymbolTable>(table, [&](const ZvDbSymbolTableIterator &at) {
            ZvDbObjectPointer<ZvDbSymbolTableRecord> record(at.getRecordId(), ZvDb::kForWrite);
            if (record && ++number % 5 == 0)
                record->erase();
        });
    }
    const std::string changed = saved(*database);
    const ZvDbDatabasePtr again = ZvDbDatabase::create();
    if (again->readStream(changed.data(), changed.size(), report) != Zv::eOk)
        std::abort();
    return 0;
}
