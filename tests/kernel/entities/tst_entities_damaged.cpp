// SPDX-License-Identifier: MIT
// Numbers of damaged files: nothing crashes, loops, or reaches a picture.
#include "db/zvdbentities.h"
#include "recording_draw.h"

#include <cmath>
#include <limits>

namespace {
const double kBad[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                       -std::numeric_limits<double>::infinity(), 1e300, -1e300};

void expectUsable(const ZvDbEntity &entity)
{
    const RecordingDraw draw(entity, 1e-9);
    for (const RecordingDraw::Path &path : draw.paths) {
        EXPECT_LT(path.points.size(), 300000u);
        for (const ZvGePoint3d &p : path.points)
            EXPECT_TRUE(std::fabs(p.x) < 1e19 && std::fabs(p.y) < 1e19 && std::fabs(p.z) < 1e19);
    }
    for (const RecordingDraw::Arc &arc : draw.arcs)
        EXPECT_TRUE(std::isfinite(arc.center.x) && std::isfinite(arc.radius) && std::isfinite(arc.start) && std::isfinite(arc.sweep));
    ZvGeExtents3d box;
    if (entity.getGeomExtents(box) == Zv::eOk) {
        EXPECT_TRUE(std::isfinite(box.minimum.x) && std::isfinite(box.maximum.x));
        EXPECT_LE(box.minimum.x, box.maximum.x);
    }
}
}

TEST(DamagedEntities, pointsThatAreNone)
{
    for (double bad : kBad) {
        SCOPED_TRACE(bad);
        ZvDbLine line({0, 0, 0}, {bad, 1, 0});
        EXPECT_EQ(RecordingDraw(line).count(), 0u);
        expectBox(line, 0, 0, 0, 0); // of the end that is good
        expectUsable(ZvDbPoint({0, bad, 0}));
        expectUsable(ZvDbCircle({bad, 0, 0}, ZvGeVector3d::kZAxis, 1));
        expectUsable(ZvDbCircle({0, 0, 0}, ZvGeVector3d::kZAxis, bad));
        expectUsable(ZvDbCircle({0, 0, 0}, ZvGeVector3d(bad, bad, 1), 1));
        expectUsable(ZvDbArc({0, 0, 0}, 1, bad, 1));
        expectUsable(ZvDbArc({0, 0, 0}, 1, 1, bad));
        expectUsable(ZvDbText({bad, 0, 0}, "abc", ZvDbObjectId(), 1, 0));
        expectUsable(ZvDbText({0, 0, 0}, "abc", ZvDbObjectId(), bad, 0));
        expectUsable(ZvDbText({0, 0, 0}, "abc", ZvDbObjectId(), 1, bad));
        ZvDbSolid solid;
        solid.setPointAt(2, {bad, 0, 0});
        expectUsable(solid);
        ZvDbMText text;
        text.setContents("abc");
        text.setLocation({0, bad, 0});
        expectUsable(text);
        ZvDbBlockReference insert;
        insert.setPosition({bad, 0, 0});
        expectUsable(insert);
    }
}

TEST(DamagedEntities, polylinesWithBadVerticesDrawTheOthers)
{
    for (double bad : kBad) {
        SCOPED_TRACE(bad);
        ZvDbPolyline polyline;
        polyline.addVertex({0, 0}, bad, bad, bad);
        polyline.addVertex({bad, 0});
        polyline.addVertex({4, 0}, bad);
        polyline.addVertex({4, 3}, 1e-300);
        polyline.setClosed(true);
        expectUsable(polyline);
        const RecordingDraw draw(polyline);
        ASSERT_EQ(draw.paths.size(), 1u);
        EXPECT_EQ(draw.paths[0].points.size(), 3u);
        expectBox(polyline, 0, 0, 4, 3);
    }
}

TEST(DamagedEntities, emptyAndDegenerateOnes)
{
    ZvGeExtents3d box;
    EXPECT_EQ(ZvDbPolyline().getGeomExtents(box), Zv::eFailed);
    EXPECT_EQ(RecordingDraw(ZvDbPolyline()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDb2dPolyline()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbSpline()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbHatch()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbLeader()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbMLeader()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbDimension()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbViewport()).count(), 0u);
    EXPECT_EQ(RecordingDraw(ZvDbProxyEntity()).count(), 0u);
    EXPECT_EQ(ZvDbProxyEntity().getGeomExtents(box), Zv::eFailed);
    EXPECT_EQ(ZvDbSpline().getGeomExtents(box), Zv::eFailed);
    ZvDbPolyline dot;
    dot.addVertex({3, 4});
    expectBox(dot, 3, 4, 3, 4);
    ZvDbPolyline same;
    same.addVertex({3, 4}, 1.0, 1.0, 1.0);
    same.addVertex({3, 4}, 1.0, 1.0, 1.0);
    expectBox(same, 3, 4, 3, 4);
    expectUsable(same);
}

TEST(DamagedEntities, formattingCodesThatBreakOff)
{
    for (const char *contents : {"\\", "{{{{", "}}}}", "\\H", "\\H1e999x;a", "\\H-5;a", "\\S1/2", "\\U+", "\\fArial", "%%", "a%%", "\\Hx;a",
                                 "\\P\\P\\P", "\\p", "abc\\"}) {
        SCOPED_TRACE(contents);
        ZvDbMText text;
        text.setContents(contents);
        expectUsable(text);
    }
}

TEST(DamagedEntities, hugeHeightsAndEndlessNests)
{
    ZvDbMText text;
    std::string contents;
    for (int i = 0; i < 500; ++i)
        contents += "\\H100x;{a";
    text.setContents(contents.c_str());
    expectUsable(text);
}
