// SPDX-License-Identifier: MIT
#include "file_support.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

ZvDbDatabasePtr drawing(int lines)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbObjectId id;
    for (int i = 0; i < lines; ++i)
        database->appendEntity(new ZvDbLine(ZvGePoint3d(i, 0.1, 0), ZvGePoint3d(1, i, 0)), database->modelSpaceId(),
                               id);
    return database;
}

/// Cancels at the \a at-th call.
class Cancelling : public ZvDbProgress
{
public:
    explicit Cancelling(int at) : m_at(at) { }
    bool progress(double fraction) override
    {
        EXPECT_GE(fraction, last);
        EXPECT_LE(fraction, 1.0);
        last = fraction;
        return ++calls < m_at;
    }
    double last = 0.0;
    int calls = 0;

private:
    int m_at;
};

std::size_t filesIn(const std::string &folder)
{
    return std::size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

TEST(Saving, aNewDrawingIsReadAgain)
{
    const ZvDbDatabasePtr database = drawing(10);
    EXPECT_TRUE(database->isModified());
    const Folder folder;
    ZvDbFileReport report;
    ASSERT_EQ(database->saveAs(folder.file("a.dxf").c_str(), report), Zv::eOk);
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(filesIn(folder.path()), 1u);
    const ZvDbDatabasePtr again = ZvDbDatabase::create();
    ASSERT_EQ(again->readFile(folder.file("a.dxf").c_str(), report), Zv::eOk);
    EXPECT_TRUE(report.warnings.isEmpty());
    EXPECT_EQ(again->entityCount(), 10);
    EXPECT_EQ(again->fileVersion(), database->fileVersion());
    // What was saved says the same when it is saved again.
    EXPECT_TRUE(saveDrawing(*again) == readAll(folder.file("a.dxf")));
}

TEST(Saving, savingTwiceGivesTheSame)
{
    const ZvDbDatabasePtr database = readDrawing(saveDrawing(*drawing(3)));
    ZvDbObjectId id;
    database->appendEntity(new ZvDbPoint(ZvGePoint3d(1, 2, 3)), database->modelSpaceId(), id);
    const std::string first = saveDrawing(*database);
    EXPECT_TRUE(saveDrawing(*database) == first);
    EXPECT_TRUE(saveDrawing(*readDrawing(first)) == first);
}

TEST(Saving, coordinatesSurviveBitForBit)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    const double values[]
        = {1234567.891, 0.1, 1e-300, -1.7976931348623157e308, 4.9e-324, 1.0 / 3.0, -0.0, 123456789012345680.0};
    ZvDbObjectId id;
    for (const double value : values)
        database->appendEntity(new ZvDbPoint(ZvGePoint3d(value, -value, value)), database->modelSpaceId(), id);
    const ZvDbDatabasePtr again = readDrawing(saveDrawing(*database));
    const std::vector<ZvDbObjectId> ids = entitiesOf(again->modelSpaceId());
    ASSERT_EQ(ids.size(), std::size(values));
    for (std::size_t i = 0; i < ids.size(); ++i) {
        ZvDbObjectPointer<ZvDbPoint> point(ids[i], ZvDb::kForRead);
        EXPECT_EQ(point->position().x, values[i]);
        EXPECT_EQ(point->position().y, -values[i]);
    }
}

TEST(Saving, aFolderWithoutRightsLeavesTheOldFileWhole)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";
    const Folder folder;
    writeAll(folder.file("a.dxf"), "old");
    fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    ZvDbFileReport report;
    EXPECT_EQ(drawing(3)->saveAs(folder.file("a.dxf").c_str(), report), Zv::eFileAccess);
    EXPECT_FALSE(report.message.isEmpty());
    fs::permissions(folder.path(), fs::perms::owner_all);
    EXPECT_EQ(readAll(folder.file("a.dxf")), "old");
}

TEST(Saving, aFolderThatIsNotThereIsAnError)
{
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = drawing(3);
    EXPECT_EQ(database->saveAs(L"/nowhere/at/all.dxf", report), Zv::eFileAccess);
    EXPECT_EQ(report.status, Zv::eFileAccess);
    EXPECT_GE(report.message.find(L"all.dxf"), 0) << report.message.toStdString();
    EXPECT_TRUE(database->isModified());
}

TEST(Saving, aFullDiskLeavesTheOldFileWhole)
{
    // A limit on the size of files does what a full disk does.
    const Folder folder;
    writeAll(folder.file("a.dxf"), "old");
    const ZvDbDatabasePtr database = drawing(2000);
    struct rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit limit = before;
    limit.rlim_cur = 50000;
    setrlimit(RLIMIT_FSIZE, &limit);
    ZvDbFileReport report;
    const Zv::ErrorStatus status = database->saveAs(folder.file("a.dxf").c_str(), report);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(status, Zv::eFileAccess);
    EXPECT_FALSE(report.message.isEmpty());
    EXPECT_EQ(readAll(folder.file("a.dxf")), "old");
    EXPECT_EQ(filesIn(folder.path()), 1u);
    EXPECT_TRUE(database->isModified());
}

TEST(Saving, cancellingLeavesTheOldFileWhole)
{
    const Folder folder;
    writeAll(folder.file("a.dxf"), "old");
    const ZvDbDatabasePtr database = drawing(20000);
    ZvDbFileReport report;
    Cancelling progress(2);
    EXPECT_EQ(database->saveAs(folder.file("a.dxf").c_str(), report, &progress), Zv::eCancelled);
    EXPECT_EQ(readAll(folder.file("a.dxf")), "old");
    EXPECT_EQ(filesIn(folder.path()), 1u);
    Cancelling whole(1 << 30);
    EXPECT_EQ(database->saveAs(folder.file("a.dxf").c_str(), report, &whole), Zv::eOk);
    EXPECT_GT(whole.calls, 1);
}

TEST(Reading, cancellingGivesAnEmptyDatabase)
{
    const Folder folder;
    ZvDbFileReport report;
    ASSERT_EQ(drawing(20000)->saveAs(folder.file("a.dxf").c_str(), report), Zv::eOk);
    for (const int at : {1, 3, 5}) {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        Cancelling progress(at);
        EXPECT_EQ(database->readFile(folder.file("a.dxf").c_str(), report, &progress), Zv::eCancelled);
        EXPECT_EQ(progress.calls, at);
        EXPECT_EQ(report.status, Zv::eCancelled);
        EXPECT_TRUE(entitiesOf(database->modelSpaceId()).empty());
    }
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    Cancelling whole(1 << 30);
    EXPECT_EQ(database->readFile(folder.file("a.dxf").c_str(), report, &whole), Zv::eOk);
    EXPECT_EQ(whole.last, 1.0);
}

TEST(Reading, aRecordStaysClosedUntilItIsOpened)
{
    const std::string bytes = saveDrawing(*drawing(100));
    const ZvDbDatabasePtr database = readDrawing(bytes);
    {
        const ZvDbDatabase::TransientReads transient(*database);
        for (const ZvDbObjectId id : entitiesOf(database->modelSpaceId())) {
            ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
            ASSERT_TRUE(line);
            EXPECT_EQ(line->startPoint().y, 0.1);
        }
    }
    // Decoded once more, after it was let go of.
    ZvDbObjectPointer<ZvDbLine> line(entitiesOf(database->modelSpaceId())[7], ZvDb::kForRead);
    EXPECT_EQ(line->startPoint().x, 7);
}
