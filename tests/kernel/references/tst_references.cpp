// SPDX-License-Identifier: MIT
#include "db_testing.h"
#include "file_support.h"

#include "db/zvdbreferences.h"

using namespace db_testing;

namespace {

ZvDbObjectId styleNamed(const ZvDbDatabase &database, const wchar_t *name)
{
    const ZvDbObjectPointer<ZvDbTextStyleTable> table(database.textStyleTableId(), ZvDb::kForRead);
    return table->getIdAt(name);
}

class References : public DatabaseTest
{
protected:
    ZvDbObjectId addStyle(const wchar_t *name)
    {
        const ZvDbObjectPointer<ZvDbTextStyleTable> table(db.textStyleTableId(), ZvDb::kForWrite);
        auto *record = new ZvDbTextStyleTableRecord;
        record->setName(name);
        ZvDbObjectId id;
        EXPECT_EQ(table->add(record, id), Zv::eOk);
        record->close();
        return id;
    }
    static std::string handleText(ZvDbObjectId id)
    {
        char handle[32];
        std::snprintf(handle, sizeof handle, "%llX", static_cast<unsigned long long>(id.handle()));
        return handle;
    }
    /// The drawing as it is read back with a record more at its end.
    ZvDbDatabasePtr rereadWith(const std::string &record)
    {
        std::string bytes = saveDrawing(db);
        const std::size_t at = bytes.rfind("  0\nENDSEC\n  0\nEOF\n");
        EXPECT_NE(at, std::string::npos);
        bytes.insert(at, record);
        return readDrawing(bytes);
    }
};

} // namespace

TEST_F(References, objectThatNoClassReads)
{
    const std::string used = handleText(addStyle(L"USED"));
    addStyle(L"FREE");
    const ZvDbDatabasePtr reread = rereadWith("  0\nSOMETHING\n  5\nF002\n330\n0\n100\nSomething\n340\n" + used + "\n");
    ASSERT_TRUE(reread);
    EXPECT_TRUE(zvdbIsReferenced(styleNamed(*reread, L"USED")));
    EXPECT_FALSE(zvdbIsReferenced(styleNamed(*reread, L"FREE")));
}

TEST_F(References, entityThatNoClassReads)
{
    const std::string used = handleText(addStyle(L"USED"));
    addStyle(L"FREE");
    std::string bytes = saveDrawing(db);
    const std::string entities = "  2\nENTITIES\n";
    const std::size_t at = bytes.find(entities);
    ASSERT_NE(at, std::string::npos);
    bytes.insert(at + entities.size(),
                 "  0\nSOMESHAPE\n  5\nF002\n100\nAcDbEntity\n  8\n0\n100\nSomething\n342\n" + used + "\n");
    const ZvDbDatabasePtr reread = readDrawing(bytes);
    ASSERT_TRUE(reread);
    const ZvDbObjectId style = styleNamed(*reread, L"USED");
    EXPECT_TRUE(zvdbIsReferenced(style));
    EXPECT_FALSE(zvdbIsReferenced(styleNamed(*reread, L"FREE")));

    // An erased user is none.
    erase(reread->idOfHandle(0xF002));
    EXPECT_FALSE(zvdbIsReferenced(style));
}

TEST_F(References, extendedData)
{
    const ZvDbObjectId used = addStyle(L"USED");
    const ZvDbObjectId line = addLine(db);
    EXPECT_FALSE(zvdbIsReferenced(used));
    ZvResBuf *data = zvutNewRb(1001);
    data->resval.rstring = zvutNewString(L"ACAD");
    data->rbnext = zvutNewRb(1005);
    data->rbnext->resval.rstring = zvutNewString(ZvString(handleText(used).c_str()).wstr());
    edit<ZvDbEntity>(line, [&](ZvDbEntity &entity) { EXPECT_EQ(entity.setXData(data), Zv::eOk); });
    zvutRelRb(data);
    EXPECT_TRUE(zvdbIsReferenced(used));

    const ZvDbDatabasePtr reread = rereadWith("");
    ASSERT_TRUE(reread);
    EXPECT_TRUE(zvdbIsReferenced(styleNamed(*reread, L"USED")));

    EXPECT_TRUE(db.undo());
    EXPECT_FALSE(zvdbIsReferenced(used));
}

/// What a record of a known class referred to in the file counts no more once it refers to something else.
TEST_F(References, changedSinceItWasRead)
{
    const ZvDbObjectId used = addStyle(L"USED");
    edit<ZvDbDimStyleTableRecord>(db.dimstyle(),
                                  [&](ZvDbDimStyleTableRecord &style) { style.setIdValue("DIMTXSTY", used); });
    const ZvDbDatabasePtr reread = rereadWith("");
    ASSERT_TRUE(reread);
    const ZvDbObjectId style = styleNamed(*reread, L"USED");
    EXPECT_TRUE(zvdbIsReferenced(style));
    edit<ZvDbDimStyleTableRecord>(reread->dimstyle(), [&](ZvDbDimStyleTableRecord &dimensions) {
        dimensions.setIdValue("DIMTXSTY", styleNamed(*reread, L"Standard"));
    });
    EXPECT_FALSE(zvdbIsReferenced(style));
}
