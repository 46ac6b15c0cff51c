// SPDX-License-Identifier: MIT
// Every entity of real drawings.
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "recording_draw.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>

namespace {
std::vector<std::string> drawings()
{
    std::vector<std::string> paths;
    for (const char *folder : {ZEVA_DRAWINGS_DIR "/dxf", ZEVA_SAMPLES_DIR}) {
        std::error_code missing;
        for (const auto &entry : std::filesystem::directory_iterator(folder, missing)) {
            if (entry.path().extension() == ".dxf")
                paths.push_back(entry.path().string());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

ZvDbDatabasePtr open(const std::string &path)
{
    ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    return database->readFile(path.c_str(), report) == Zv::eOk ? database : ZvDbDatabasePtr();
}

std::vector<ZvDbObjectId> entitiesOf(ZvDbDatabase &database)
{
    std::vector<ZvDbObjectId> ids;
    ZvDbObjectPointer<ZvDbBlockTableRecord> space(database.modelSpaceId(), ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *iterator = nullptr;
    if (space && space->newIterator(iterator) == Zv::eOk) {
        for (std::unique_ptr<ZvDbBlockTableRecordIterator> at(iterator); !at->done(); at->step())
            ids.push_back(at->entityId());
    }
    return ids;
}

bool isFinite(const ZvGePoint3d &p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

std::string nameOf(const testing::TestParamInfo<std::string> &info)
{
    std::string name = std::filesystem::path(info.param).stem().string();
    std::replace_if(name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

class CollectedEntities : public testing::TestWithParam<std::string>
{
protected:
    void SetUp() override
    {
        database = open(GetParam());
        if (!database)
            GTEST_SKIP() << "not a drawing that opens";
    }
    void TearDown() override
    {
        if (database) {
            EXPECT_EQ(database->openObjectCount(), 0);
        }
    }
    ZvDbDatabasePtr database;
};
}

TEST_P(CollectedEntities, drawNothingButNumbers)
{
    for (ZvDbObjectId id : entitiesOf(*database)) {
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (!entity)
            continue;
        const RecordingDraw draw(*entity);
        for (const RecordingDraw::Path &path : draw.paths)
            ASSERT_TRUE(std::all_of(path.points.begin(), path.points.end(), isFinite)) << entity->isA()->name();
        for (const ZvGiFill &fill : draw.fills) {
            for (const std::vector<ZvGePoint3d> &loop : fill.loops)
                ASSERT_TRUE(std::all_of(loop.begin(), loop.end(), isFinite)) << entity->isA()->name();
        }
        for (const RecordingDraw::Arc &arc : draw.arcs)
            ASSERT_TRUE(isFinite(arc.center) && std::isfinite(arc.radius) && arc.sweep > 0.0) << entity->isA()->name();
    }
}

TEST_P(CollectedEntities, whatIsDrawnLiesInTheBox)
{
    for (ZvDbObjectId id : entitiesOf(*database)) {
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        ZvGeExtents3d box;
        if (!entity || entity->getGeomExtents(box) != Zv::eOk)
            continue;
        const double slack = 2e-5 * (1.0 + box.minimum.distanceTo(box.maximum));
        const RecordingDraw draw(*entity);
        for (const RecordingDraw::Path &path : draw.paths) {
            for (const ZvGePoint3d &p : path.points) {
                ASSERT_GE(p.x, box.minimum.x - slack) << entity->isA()->name() << " " << entity->handle();
                ASSERT_LE(p.x, box.maximum.x + slack) << entity->isA()->name() << " " << entity->handle();
                ASSERT_GE(p.y, box.minimum.y - slack) << entity->isA()->name() << " " << entity->handle();
                ASSERT_LE(p.y, box.maximum.y + slack) << entity->isA()->name() << " " << entity->handle();
            }
        }
    }
}

TEST_P(CollectedEntities, turnedAndTurnedBackTheyAreTheSame)
{
    const ZvGeMatrix3d turn = ZvGeMatrix3d::rotation(0.7, ZvGeVector3d::kZAxis, {100, 50, 0});
    const ZvGeMatrix3d back = turn.inverse();
    for (ZvDbObjectId id : entitiesOf(*database)) {
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite);
        ZvGeExtents3d before;
        if (!entity || entity->getGeomExtents(before) != Zv::eOk || entity->isKindOf(ZvDbDimension::desc()))
            continue; // the box of a turned block is a box around a box
        if (entity->transformBy(turn) != Zv::eOk)
            continue;
        ASSERT_EQ(entity->transformBy(back), Zv::eOk) << entity->isA()->name();
        ZvGeExtents3d after;
        ASSERT_EQ(entity->getGeomExtents(after), Zv::eOk) << entity->isA()->name();
        const double size = 1.0 + before.minimum.distanceTo(before.maximum) + before.minimum.distanceTo(ZvGePoint3d());
        ASSERT_LT(before.minimum.distanceTo(after.minimum), 1e-7 * size) << entity->isA()->name() << " " << entity->handle();
        ASSERT_LT(before.maximum.distanceTo(after.maximum), 1e-7 * size) << entity->isA()->name() << " " << entity->handle();
    }
}

TEST_P(CollectedEntities, damagedNumbersNeitherCrashNorShow)
{
    std::ifstream file(GetParam(), std::ios::binary);
    const std::string text {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (text.size() > 400000 || text.find('\0') != std::string::npos)
        return; // large and binary ones bring nothing that the others have not
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    static const char *const kBad[] = {"nan", "inf", "-1e308", "1e300", "0", "-1", "32767", "2147483647", "-2147483648", "1e-320"};
    std::minstd_rand random(12345);
    int opened = 0;
    for (int round = 0; round < 3; ++round) {
        std::vector<std::string> damaged = lines;
        for (std::size_t i = 1; i < damaged.size(); i += 2) {
            const int code = std::atoi(damaged[i - 1].c_str());
            const bool isNumber = (code >= 10 && code < 80) || (code >= 90 && code < 100) || (code >= 210 && code < 240);
            if (isNumber && random() % 12 == 0)
                damaged[i] = kBad[random() % (sizeof kBad / sizeof *kBad)];
        }
        std::string bytes;
        for (const std::string &line : damaged)
            bytes += line + "\n";
        const ZvDbDatabasePtr broken = ZvDbDatabase::create();
        ZvDbFileReport report;
        if (broken->readStream(bytes.data(), bytes.size(), report) != Zv::eOk)
            continue;
        ++opened;
        for (ZvDbObjectId id : entitiesOf(*broken)) {
            ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite);
            if (!entity)
                continue;
            {
                const RecordingDraw draw(*entity);
                for (const RecordingDraw::Path &path : draw.paths)
                    ASSERT_TRUE(std::all_of(path.points.begin(), path.points.end(), isFinite)) << entity->isA()->name();
            }
            ZvGeExtents3d box;
            if (entity->getGeomExtents(box) == Zv::eOk) {
                ASSERT_TRUE(isFinite(box.minimum) && isFinite(box.maximum)) << entity->isA()->name();
            }
            entity->transformBy(ZvGeMatrix3d::rotation(0.7, ZvGeVector3d::kZAxis) * ZvGeMatrix3d::scaling(2));
        }
    }
    EXPECT_GT(opened, 0); // bad numbers are no reason to refuse a file
}

INSTANTIATE_TEST_SUITE_P(All, CollectedEntities, testing::ValuesIn(drawings()), nameOf);

namespace {
/// Drawings whose header holds the box that the program which saved them had found.
const char *const kMeasured[] = {"bin-r14",          "model-paperspace",       "poli-all210-r12",     "sanitary-r14",
                                 "section-f-house-r2018", "steel-plate-shopdrawing", "text-fonts",     "wall-section-f3-r2018",
                                 "wall-section-k1-r2007"};
class MeasuredDrawings : public testing::TestWithParam<const char *>
{
};
}

TEST_P(MeasuredDrawings, theBoxIsTheOneThatItsHeaderTells)
{
    const std::string path = std::string(ZEVA_DRAWINGS_DIR "/dxf/") + GetParam() + ".dxf";
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "no such drawing here";
    const ZvDbDatabasePtr database = open(path);
    ASSERT_TRUE(database);
    ZvResBuf minimum;
    ZvResBuf maximum;
    ASSERT_EQ(database->getVariable("EXTMIN", minimum), Zv::eOk);
    ASSERT_EQ(database->getVariable("EXTMAX", maximum), Zv::eOk);
    const ZvGeExtents3d box = database->extents(database->modelSpaceId());
    EXPECT_NEAR(box.minimum.x, minimum.resval.rpoint[0], 1e-3);
    EXPECT_NEAR(box.minimum.y, minimum.resval.rpoint[1], 1e-3);
    EXPECT_NEAR(box.maximum.x, maximum.resval.rpoint[0], 1e-3);
    EXPECT_NEAR(box.maximum.y, maximum.resval.rpoint[1], 1e-3);
}

INSTANTIATE_TEST_SUITE_P(All, MeasuredDrawings, testing::ValuesIn(kMeasured));
