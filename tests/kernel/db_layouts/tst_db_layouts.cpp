// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include "base/zvregistry.h"
#include "db/zvdbhostservice.h"

using namespace db_testing;

namespace {

class Layouts : public DatabaseTest
{
protected:
    Layouts() { db.addReactor(&listener); }
    ~Layouts() override { db.removeReactor(&listener); }
    void SetUp() override { listener.take(); }

    ZvDbObjectId addViewport()
    {
        ZvDbObjectId id;
        EXPECT_EQ(db.appendEntity(new ZvDbViewport, db.paperSpaceId(), id), Zv::eOk);
        return id;
    }

    Listener listener;
    const ZvGeVector3d x{1, 0, 0};
    const ZvGeVector3d y{0, 1, 0};
};

ZvDbHostService &service()
{
    return *static_cast<ZvDbHostService *>(zvrxGetService(3));
}

} // namespace

TEST_F(Layouts, modelSpaceComesFirst)
{
    ZvArray<ZvString> names;
    db.layoutNames(names);
    ASSERT_EQ(names.length(), 2);
    EXPECT_EQ(names[0], L"Model");
    EXPECT_EQ(names[1], L"Layout1");
    EXPECT_TRUE(db.tilemode());
    EXPECT_EQ(db.currentLayoutName(), L"Model");
    EXPECT_EQ(db.currentSpaceId(), db.modelSpaceId());
    EXPECT_NE(db.paperSpaceId(), db.modelSpaceId());
}

TEST_F(Layouts, switchingByName)
{
    EXPECT_EQ(db.setCurrentLayout(L"layout1"), Zv::eOk);
    EXPECT_EQ(listener.take(), (Events{"variable TILEMODE", "variable CTAB", "variable CVPORT"}));
    EXPECT_FALSE(db.tilemode());
    EXPECT_EQ(db.currentLayoutName(), L"Layout1");
    EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId());
    EXPECT_EQ(db.setCurrentLayout(L"Layout1"), Zv::eOk);
    EXPECT_TRUE(listener.events.empty());
    EXPECT_EQ(db.setCurrentLayout(L"No such"), Zv::eKeyNotFound);
    EXPECT_TRUE(db.undo());
    EXPECT_TRUE(db.tilemode());
    EXPECT_FALSE(db.canUndo()) << "one step";
}

TEST_F(Layouts, switchingByTilemode)
{
    EXPECT_EQ(db.setTilemode(false), Zv::eOk);
    EXPECT_EQ(db.currentLayoutName(), L"Layout1");
    EXPECT_EQ(db.setTilemode(true), Zv::eOk);
    EXPECT_EQ(db.currentLayoutName(), L"Model");
}

TEST_F(Layouts, theLayoutObjectIsReachedByTheLinkage)
{
    ZvGsDbRootLinkage::DatabaseExtension *extension = ZvGsDbRootLinkage::getDbBaseDatabasePE();
    ASSERT_NE(extension, nullptr);
    const auto block = [&] {
        const ZvDbLayout *layout = zvrxCast<ZvDbLayout>(extension->layoutObject(&db));
        return layout ? layout->getBlockTableRecordId() : ZvDbObjectId();
    };
    EXPECT_EQ(block(), db.modelSpaceId());
    db.setTilemode(false);
    EXPECT_EQ(block(), db.paperSpaceId());
    EXPECT_EQ(extension->layoutObject(nullptr), nullptr);
    ZvGsDbRootLinkage::setDbBaseDatabasePE(nullptr);
    EXPECT_EQ(ZvGsDbRootLinkage::getDbBaseDatabasePE(), nullptr);
    ZvGsDbRootLinkage::setDbBaseDatabasePE(extension);
}

TEST_F(Layouts, theTwoIdsOfALayoutAreEqualOnThePaper)
{
    db.setTilemode(false);
    const ZvDbObjectId window = addViewport();
    listener.take();
    ZvDbObjectPointer<ZvDbLayout> layout(db.currentLayoutId(), ZvDb::kForRead);
    ZvDbObjectId active;
    ZvDbObjectId overall;
    service().layoutIds(layout.get(), active, overall);
    EXPECT_EQ(active, overall);
    EXPECT_FALSE(overall.isNull());
    EXPECT_EQ(db.currentViewportId(), overall);

    EXPECT_EQ(db.setCurrentViewport(window), Zv::eOk);
    EXPECT_EQ(listener.take(), Events{"variable CVPORT"});
    service().layoutIds(layout.get(), active, overall);
    EXPECT_EQ(active, window);
    EXPECT_NE(active, overall);
    EXPECT_EQ(db.currentViewportId(), window);
    EXPECT_EQ(db.currentSpaceId(), db.modelSpaceId()) << "work goes through the window";

    EXPECT_EQ(db.setCurrentViewport(ZvDbObjectId()), Zv::eOk);
    EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId());
    EXPECT_EQ(db.setCurrentViewport(db.layerZero()), Zv::eInvalidInput);
    db.setCurrentViewport(window);
    db.setTilemode(true);
    EXPECT_EQ(db.setCurrentViewport(window), Zv::eInvalidInput) << "model space has no windows";
    db.setTilemode(false);
    EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId()) << "a layout is entered on its paper";
    service().layoutIds(nullptr, active, overall);
    EXPECT_TRUE(active.isNull() && overall.isNull());
}

TEST_F(Layouts, anErasedViewportIsWorkedInNoMore)
{
    db.setTilemode(false);
    const ZvDbObjectId window = addViewport();
    db.setCurrentViewport(window);
    erase(window);
    EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId());
}

// ---- coordinate systems

TEST_F(Layouts, aUcsOfModelSpace)
{
    EXPECT_EQ(db.setUcs(ZvGePoint3d(1, 2, 3), y, -x, ZvDbObjectId(), 0), Zv::eOk);
    EXPECT_EQ(listener.take(), Events{"variable UCS"});
    EXPECT_TRUE(db.ucsorg().isEqualTo(ZvGePoint3d(1, 2, 3)));
    EXPECT_TRUE(db.ucsxdir().isEqualTo(y));
    EXPECT_TRUE(db.ucsydir().isEqualTo(-x));
    EXPECT_TRUE(db.pucsxdir().isEqualTo(x)) << "paper space has its own";
    ZvGePoint3d point(1, 0, 0);
    point.transformBy(db.ucsMatrix());
    EXPECT_TRUE(point.isEqualTo(ZvGePoint3d(1, 3, 3)));
    EXPECT_EQ(db.setUcs(ZvGePoint3d(1, 2, 3), y, -x, ZvDbObjectId(), 0), Zv::eOk);
    EXPECT_TRUE(listener.events.empty());
}

TEST_F(Layouts, orthographicAndNamedSystems)
{
    ZvDbObjectId named;
    edit<ZvDbUCSTable>(db.UCSTableId(), [&](ZvDbUCSTable &table) {
        ZvDbUCSTableRecord *record = new ZvDbUCSTableRecord;
        record->setName(L"Roof");
        ASSERT_EQ(table.add(record, named), Zv::eOk);
        record->close();
    });
    listener.take();
    EXPECT_EQ(db.setUcs(ZvGePoint3d(), x, ZvGeVector3d(0, 0, 1), named, 3), Zv::eOk);
    EXPECT_EQ(listener.take(), (Events{"variable UCSNAME", "variable UCSORTHOVIEW", "variable UCS"}));
    EXPECT_EQ(db.ucsname(), named);
    ZvResBuf *number = service().readVariable(L"UCSORTHOVIEW", &db);
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->resval.rlong, 3);
    zvutRelRb(number);

    EXPECT_EQ(db.setUcs(ZvGePoint3d(), x, x, ZvDbObjectId(), 0), Zv::eInvalidInput);
    EXPECT_EQ(db.setUcs(ZvGePoint3d(), x, y, ZvDbObjectId(), 7), Zv::eInvalidInput);
    EXPECT_EQ(db.setUcs(ZvGePoint3d(), x, y, db.layerZero(), 0), Zv::eInvalidInput);
}

TEST_F(Layouts, thePreviousSystemComesBack)
{
    EXPECT_FALSE(db.hasPreviousUcs());
    EXPECT_EQ(db.restorePreviousUcs(), Zv::eKeyNotFound);
    db.setUcs(ZvGePoint3d(1, 0), x, y, ZvDbObjectId(), 0);
    db.setUcs(ZvGePoint3d(2, 0), x, y, ZvDbObjectId(), 0);
    EXPECT_TRUE(db.hasPreviousUcs());
    EXPECT_EQ(db.restorePreviousUcs(), Zv::eOk);
    EXPECT_EQ(db.ucsorg().x, 1.0);
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(db.ucsorg().x, 2.0);
    db.restorePreviousUcs();
    db.restorePreviousUcs();
    EXPECT_EQ(db.ucsorg().x, 0.0);
    EXPECT_FALSE(db.hasPreviousUcs());
}

TEST_F(Layouts, paperSpaceHasItsOwnSystemAndHistory)
{
    db.setUcs(ZvGePoint3d(1, 0), x, y, ZvDbObjectId(), 0);
    db.setTilemode(false);
    EXPECT_FALSE(db.hasPreviousUcs());
    listener.take();
    db.setUcs(ZvGePoint3d(5, 0), x, y, ZvDbObjectId(), 1);
    EXPECT_EQ(listener.take(), (Events{"variable PUCSORTHOVIEW", "variable PUCS"}));
    EXPECT_EQ(db.pucsorg().x, 5.0);
    EXPECT_EQ(db.ucsorg().x, 1.0);
    EXPECT_TRUE(db.hasPreviousUcs());
}

TEST_F(Layouts, aSystemSetInsideAViewportIsTheModels)
{
    db.setTilemode(false);
    db.setUcs(ZvGePoint3d(5, 0), x, y, ZvDbObjectId(), 0);
    const ZvDbObjectId window = addViewport();
    ASSERT_EQ(db.setCurrentViewport(window), Zv::eOk);
    EXPECT_FALSE(db.hasPreviousUcs());
    EXPECT_TRUE(db.ucsMatrix().isEqualTo(ZvGeMatrix3d()));
    listener.take();
    db.setUcs(ZvGePoint3d(7, 0), x, y, ZvDbObjectId(), 0);
    EXPECT_EQ(listener.take(), Events{"variable UCS"});
    EXPECT_EQ(db.ucsorg().x, 7.0);
    EXPECT_EQ(db.pucsorg().x, 5.0);
    {
        ZvDbObjectPointer<ZvDbObject> viewport(window, ZvDb::kForRead);
        ZvGeMatrix3d previous;
        EXPECT_TRUE(zvrxCast<ZvDbAbstractViewportData>(viewport.get())->hasPreviousUcs(viewport.get(), previous));
        EXPECT_EQ(previous(0, 3), 0.0);
    }
    EXPECT_EQ(db.restorePreviousUcs(), Zv::eOk);
    EXPECT_EQ(db.ucsorg().x, 0.0);
    db.setCurrentViewport(ZvDbObjectId());
    EXPECT_TRUE(db.hasPreviousUcs()) << "the paper remembers its own";
    EXPECT_EQ(db.restorePreviousUcs(), Zv::eOk);
    EXPECT_EQ(db.pucsorg().x, 0.0);
}

TEST_F(Layouts, bothKindsOfViewportKnowThePreviousSystem)
{
    db.setUcs(ZvGePoint3d(1, 0), x, y, ZvDbObjectId(), 0);
    db.setUcs(ZvGePoint3d(2, 0), x, y, ZvDbObjectId(), 0);
    const auto ask = [&](ZvGeMatrix3d &previous) {
        ZvDbObjectPointer<ZvDbObject> viewport(db.currentViewportId(), ZvDb::kForRead);
        const ZvDbAbstractViewportData *data = viewport ? zvrxCast<ZvDbAbstractViewportData>(viewport.get()) : nullptr;
        EXPECT_NE(data, nullptr);
        return data && data->hasPreviousUcs(viewport.get(), previous);
    };
    ZvGeMatrix3d previous;
    EXPECT_TRUE(ask(previous));
    EXPECT_EQ(previous(0, 3), 1.0);
    db.setTilemode(false);
    EXPECT_FALSE(ask(previous));
    db.setUcs(ZvGePoint3d(2, 0), x, y, ZvDbObjectId(), 0);
    EXPECT_TRUE(ask(previous));
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(db.layerZero(), ZvDb::kForRead);
    EXPECT_EQ(zvrxCast<ZvDbAbstractViewportData>(layer.get()), nullptr);
}
