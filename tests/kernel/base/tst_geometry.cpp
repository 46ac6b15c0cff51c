// SPDX-License-Identifier: MIT
#include "base/zvge3d.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
const double kPi = std::acos(-1.0);

void expectNear(const ZvGePoint2d &a, const ZvGePoint2d &b)
{
    EXPECT_NEAR(a.x, b.x, 1e-9);
    EXPECT_NEAR(a.y, b.y, 1e-9);
}
}

TEST(ZvGeMatrix2d, theTwoProductsTakeTheTwoSides)
{
    const ZvGeMatrix2d move = ZvGeMatrix2d::translation({10, 0});
    const ZvGeMatrix2d turn = ZvGeMatrix2d::rotation(kPi / 2);
    ZvGeMatrix2d after = turn;
    after *= move; // turned first, then moved
    expectNear(ZvGePoint2d(1, 0).transformBy(after), {10, 1});
    ZvGeMatrix2d before = turn;
    before.postMultBy(move); // moved first, then turned
    expectNear(ZvGePoint2d(1, 0).transformBy(before), {0, 11});
}

TEST(ZvGeMatrix2d, scaleOfAUniformMap)
{
    EXPECT_NEAR((ZvGeMatrix2d::rotation(1.0) * ZvGeMatrix2d::scaling(2.5)).scale(), 2.5, 1e-12);
}

TEST(ZvGeMatrix2d, setCoordSystemPutsColumns)
{
    ZvGeMatrix2d m;
    m.setCoordSystem({5, 6}, {1, 2}, {3, 4});
    expectNear(ZvGePoint2d(1, 0).transformBy(m), {6, 8});
    expectNear(ZvGePoint2d(0, 1).transformBy(m), {8, 10});
}

TEST(ZvGeMatrix2d, alignCoordSysCarriesSizesAndAFlip)
{
    // A sheet of 297 by 210 onto 1000 by 707 pixels, y downwards.
    const auto m = ZvGeMatrix2d::alignCoordSys({0, 0}, {297, 0}, {0, 210}, {10, 717}, {1000, 0}, {0, -707});
    expectNear(ZvGePoint2d(0, 0).transformBy(m), {10, 717});
    expectNear(ZvGePoint2d(297, 210).transformBy(m), {1010, 10});
}

TEST(ZvGeMatrix2d, inverseOfASingularMapIsIdentity)
{
    bool ok = true;
    ZvGeMatrix2d flat;
    flat.setCoordSystem({0, 0}, {1, 1}, {2, 2});
    const ZvGeMatrix2d inverse = flat.inverse(&ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(inverse.entry[0][0], 1.0);
}

TEST(ZvGeCircArc2d, throughThreePointsCounterClockwise)
{
    ZvGeCircArc2d arc;
    arc.set({1, 0}, {0, 1}, {-1, 0});
    expectNear(arc.center(), {0, 0});
    EXPECT_NEAR(arc.radius(), 1.0, 1e-12);
    EXPECT_FALSE(arc.isClockWise());
    EXPECT_NEAR(arc.endAng() - arc.startAng(), kPi, 1e-9);
    expectNear(arc.startPoint(), {1, 0});
    expectNear(arc.endPoint(), {-1, 0});
    EXPECT_FALSE(arc.isClosed());
}

TEST(ZvGeCircArc2d, throughThreePointsClockwiseTheLongWay)
{
    ZvGeCircArc2d arc;
    arc.set({1, 0}, {0, -1}, {0, 1}); // three quarters, clockwise
    EXPECT_TRUE(arc.isClockWise());
    EXPECT_NEAR(std::fabs(arc.endAng() - arc.startAng()), 1.5 * kPi, 1e-9);
    expectNear(arc.endPoint(), {0, 1});
}

TEST(ZvGeCircArc2d, pointsOnALineGiveNoRadius)
{
    ZvGeCircArc2d arc;
    EXPECT_LE(arc.set({0, 0}, {1, 1}, {2, 2}).radius(), 1e-10);
    EXPECT_LE(arc.set({3, 3}, {3, 3}, {3, 3}).radius(), 1e-10);
    EXPECT_LE(arc.set({0, 0}, {1e6, 1e6}, {2e6, 2e6}).radius(), 1e-10);
}

TEST(ZvGeCircArc2d, aFullCircleStartsAtItsReferenceVector)
{
    ZvGeCircArc2d circle;
    circle.set(ZvGePoint2d(2, 3), 5.0).setRefVec({0, 2});
    EXPECT_TRUE(circle.isClosed());
    expectNear(circle.startPoint(), {2, 8});
}

TEST(ZvGeCircArc2d, samplesAreEvenWithBothEnds)
{
    ZvGeCircArc2d arc;
    arc.set({1, 0}, {std::sqrt(0.5), std::sqrt(0.5)}, {0, 1});
    ZvArray<ZvGePoint2d> points;
    arc.getSamplePoints(3, points);
    ASSERT_EQ(points.length(), 3);
    expectNear(points[0], {1, 0});
    expectNear(points[1], {std::sqrt(0.5), std::sqrt(0.5)});
    expectNear(points[2], {0, 1});
    arc.getSamplePoints(0, points);
    EXPECT_EQ(points.length(), 0);
    arc.getSamplePoints(1, points);
    expectNear(points[0], {1, 0});
}

TEST(ZvGeExtents2d, isEmptyAtTheStart)
{
    ZvGeExtents2d box;
    EXPECT_TRUE(box.isEmpty());
    EXPECT_EQ(box.minimum.x, 1e20);
    EXPECT_EQ(box.maximum.y, -1e20);
    box.add({1, 2});
    EXPECT_FALSE(box.isEmpty());
}

TEST(ZvGeVector3d, arbitraryAxisRule)
{
    EXPECT_TRUE(ZvGeVector3d(0, 0, 1).arbitraryXAxis().isEqualTo({1, 0, 0}));
    EXPECT_TRUE(ZvGeVector3d(0, 0, -1).arbitraryXAxis().isEqualTo({-1, 0, 0}));
    EXPECT_TRUE(ZvGeVector3d(1, 0, 0).arbitraryXAxis().isEqualTo({0, 1, 0}));
    EXPECT_TRUE(ZvGeVector3d(0, -1, 0).arbitraryXAxis().isEqualTo({1, 0, 0}));
}

TEST(ZvGeMatrix3d, inverseUndoes)
{
    const ZvGeMatrix3d m = ZvGeMatrix3d::translation({1, 2, 3}) * ZvGeMatrix3d::rotation(0.7, {1, 1, 0})
        * ZvGeMatrix3d::scaling(2, 3, 4);
    bool ok = false;
    EXPECT_TRUE((m * m.inverse(&ok)).isEqualTo(ZvGeMatrix3d::kIdentity, {1e-9, 1e-9}));
    EXPECT_TRUE(ok);
}

TEST(ZvGeMatrix3d, mirrorsAndTurnsAroundAPoint)
{
    ZvGePoint3d p(3, 0, 0);
    p.transformBy(ZvGeMatrix3d::mirroring({1, 0, 0}, {1, 0, 0}));
    EXPECT_TRUE(p.isEqualTo({-1, 0, 0}));
    ZvGePoint3d q(2, 0, 0);
    q.transformBy(ZvGeMatrix3d::rotation(kPi / 2, ZvGeVector3d::kZAxis, {1, 0, 0}));
    EXPECT_TRUE(q.isEqualTo({1, 1, 0}));
}

TEST(ZvGeExtents3d, transformedByTakesTheCorners)
{
    ZvGeExtents3d box;
    box.add(ZvGePoint3d(0, 0, 0));
    box.add(ZvGePoint3d(2, 1, 0));
    const ZvGeExtents3d turned = box.transformedBy(ZvGeMatrix3d::rotation(kPi / 2, ZvGeVector3d::kZAxis));
    EXPECT_NEAR(turned.minimum.x, -1, 1e-12);
    EXPECT_NEAR(turned.maximum.y, 2, 1e-12);
    EXPECT_TRUE(ZvGeExtents3d().transformedBy(ZvGeMatrix3d::kIdentity).isEmpty());
}
