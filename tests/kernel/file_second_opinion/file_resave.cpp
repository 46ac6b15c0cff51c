// SPDX-License-Identifier: MIT
// file_resave new OUT                 a new drawing with an entity of every kind that can be made
// file_resave add|copy|erase IN OUT   a drawing with things added, every entity copied, every second one erased
// file_resave settings IN OUT         every current setting another one
// file_resave viewport OUT            a new drawing that is worked in through a viewport of its layout
// file_resave recolor IN OUT          every entity of another colour, on another layer
#include "file_support.h"

#include <cstdio>
#include <memory>

namespace {

void append(ZvDbDatabase &database, ZvDbEntity *entity, ZvDbObjectId block = ZvDbObjectId())
{
    ZvDbObjectId id;
    if (database.appendEntity(entity, block.isNull() ? database.modelSpaceId() : block, id) != Zv::eOk)
        delete entity;
}

void add(ZvDbDatabase &database)
{
    append(database, new ZvDbLine(ZvGePoint3d(1234567.891, 0, 0), ZvGePoint3d(1, 2, 3)));
    append(database, new ZvDbCircle(ZvGePoint3d(0, 0, 0), ZvGeVector3d(0, 0, 1), 5));
    append(database, new ZvDbArc(ZvGePoint3d(0, 0, 0), 5, 0.5, 1), database.paperSpaceId());
    append(database, new ZvDbText(ZvGePoint3d(0, 0, 0), L"Stra\u00dfe \u5899", ZvDbObjectId(), 5, 1));
    auto *polyline = new ZvDbPolyline;
    polyline->addVertex({0, 0});
    polyline->addVertex({1, 0}, 1);
    polyline->addVertex({1, 1});
    append(database, polyline);
    auto *mtext = new ZvDbMText;
    mtext->setContents(ZvString(std::string(900, 'x').c_str()));
    append(database, mtext);
    append(database, new ZvDbEllipse);
    append(database, new ZvDbRay);
    append(database, new ZvDbXline);
    append(database, new ZvDbSolid);
    append(database, new ZvDbFace);
    append(database, new ZvDbPoint);

    ZvDbObjectId id;
    ZvDbLinetypeTable *linetypes = nullptr;
    database.getSymbolTable(linetypes, ZvDb::kForWrite);
    auto *linetype = new ZvDbLinetypeTableRecord;
    linetype->setName(L"Added dashes");
    ZvDbLinetypeTableRecord::Dash dash;
    dash.length = 5;
    ZvDbLinetypeTableRecord::Dash gap;
    gap.length = -2;
    linetype->setDashes({dash, gap});
    linetypes->add(linetype, id);
    linetype->close();
    linetypes->close();

    ZvDbLayerTable *layers = nullptr;
    database.getSymbolTable(layers, ZvDb::kForWrite);
    auto *layer = new ZvDbLayerTableRecord;
    layer->setName(L"Added layer");
    layer->setLinetypeObjectId(id);
    layers->add(layer, id);
    layer->close();
    layers->close();
    database.setClayer(id);

    ZvDbBlockTable *blocks = nullptr;
    database.getSymbolTable(blocks, ZvDb::kForWrite);
    auto *block = new ZvDbBlockTableRecord;
    block->setName(L"Added block");
    ZvDbObjectId blockId;
    blocks->add(block, blockId);
    auto *line = new ZvDbLine(ZvGePoint3d(0, 0, 0), ZvGePoint3d(1, 2, 3));
    block->appendEntity(line, id);
    line->close();
    block->close();
    blocks->close();
    auto *reference = new ZvDbBlockReference;
    reference->setBlockTableRecord(blockId);
    append(database, reference);

    if (database.fileVersion() >= ZvDb::kR2000) {
        ZvDbObjectPointer<ZvDbDictionary> styles(database.mleaderStyleDictionaryId(true), ZvDb::kForWrite);
        if (styles) {
            auto *style = new ZvDbMLeaderStyle;
            if (styles->setAt(L"Added style", style, id) == Zv::eOk)
                style->close();
        }
        styles.close();
        database.setMleaderstyle(id);
    }
}

void copy(ZvDbDatabase &database)
{
    for (const ZvDbObjectId id : entitiesOf(database.modelSpaceId())) {
        ZvDbObjectId copied;
        zvdbCopyEntity(id, database.modelSpaceId(), ZvGeMatrix3d::translation(ZvGeVector3d(50, 0, 0)), copied);
    }
}

void erase(ZvDbDatabase &database)
{
    bool second = false;
    for (const ZvDbObjectId id : entitiesOf(database.modelSpaceId())) {
        second = !second;
        if (second)
            change<ZvDbEntity>(id, [](ZvDbEntity &entity) { entity.erase(); });
    }
}

void workInAViewport(ZvDbDatabase &database)
{
    database.setTilemode(false);
    ZvDbObjectId viewport;
    database.appendEntity(new ZvDbViewport, database.paperSpaceId(), viewport);
    database.setCurrentViewport(viewport);
}

void recolor(ZvDbDatabase &database)
{
    const ZvDbObjectId layer = addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(database, L"Picked layer");
    ZvCmColor color;
    color.setColorIndex(77);
    for (const ZvDbObjectId id : entitiesOf(database.modelSpaceId()))
        change<ZvDbEntity>(id, [&](ZvDbEntity &entity) {
            entity.setColor(color, true);
            entity.setLayer(layer, true);
        });
}

} // namespace

int main(int argc, char **argv)
{
    const std::string mode = argc > 2 ? argv[1] : "";
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    if (argc == 4 && database->readFile(argv[2], report) != Zv::eOk) {
        std::fprintf(stderr, "%s\n", report.message.toUtf8().c_str());
        return 1;
    }
    if (mode == "new" || mode == "add")
        add(*database);
    else if (mode == "copy")
        copy(*database);
    else if (mode == "erase")
        erase(*database);
    else if (mode == "settings")
        changeSettings(*database);
    else if (mode == "viewport")
        workInAViewport(*database);
    else if (mode == "recolor")
        recolor(*database);
    else
        return 2;
    if (database->saveAs(argv[argc - 1], report) != Zv::eOk) {
        std::fprintf(stderr, "%s\n", report.message.toUtf8().c_str());
        return 1;
    }
    return 0;
}
