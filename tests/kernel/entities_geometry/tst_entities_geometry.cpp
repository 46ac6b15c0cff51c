// SPDX-License-Identifier: MIT
#include "entity_geometry.h"

#include <gtest/gtest.h>

#include <limits>

using namespace zvdbgeo;

namespace {
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

void expectPoint(const ZvGePoint3d &p, double x, double y, double z, double tolerance = 1e-9)
{
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
    EXPECT_NEAR(p.z, z, tolerance);
}

ZvGePoint3d bezier(const std::vector<ZvGePoint3d> &p, double t)
{
    const double s = 1.0 - t;
    const double b[4] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    ZvGePoint3d sum;
    for (int i = 0; i < 4; ++i)
        sum = sum + p[std::size_t(i)].asVector() * b[i];
    return sum;
}

double distanceToPath(const ZvGePoint3d &p, const std::vector<ZvGePoint3d> &path)
{
    double nearest = 1e300;
    for (std::size_t i = 1; i < path.size(); ++i) {
        const ZvGeVector3d chord = path[i] - path[i - 1];
        const double t = std::min(std::max((p - path[i - 1]).dotProduct(chord) / chord.dotProduct(chord), 0.0), 1.0);
        nearest = std::min(nearest, p.distanceTo(path[i - 1] + chord * t));
    }
    return nearest;
}
}

TEST(EntityGeometry, usableNumbers)
{
    EXPECT_TRUE(isUsable(0.0));
    EXPECT_TRUE(isUsable(-1e17));
    EXPECT_FALSE(isUsable(kNaN));
    EXPECT_FALSE(isUsable(kInfinity));
    EXPECT_FALSE(isUsable(1e30));
    EXPECT_FALSE(isUsable(ZvGePoint3d(0, 0, kNaN)));
}

TEST(EntityGeometry, unusablePointsDoNotReachABox)
{
    ZvGeExtents3d box;
    addPoint(box, {kNaN, 0, 0});
    addPoint(box, {1e300, 0, 0});
    EXPECT_TRUE(box.isEmpty());
    addPoint(box, {1, 2, 3});
    EXPECT_FALSE(box.isEmpty());
    expectPoint(box.maximum, 1, 2, 3);
}

TEST(EntityGeometry, anglesBecomeSweeps)
{
    EXPECT_NEAR(normalized(-kPi / 2), 1.5 * kPi, 1e-12);
    EXPECT_NEAR(normalized(7 * kPi), kPi, 1e-12);
    EXPECT_EQ(normalized(kNaN), 0.0);
    EXPECT_NEAR(sweepOf(0, kPi / 2), kPi / 2, 1e-12);
    EXPECT_NEAR(sweepOf(1.5 * kPi, kPi / 2), kPi, 1e-12);
    EXPECT_NEAR(sweepOf(1, 1), kTwoPi, 1e-12);
}

TEST(EntityGeometry, aPlaneFollowsTheArbitraryAxisRule)
{
    const Plane down(ZvGeVector3d(0, 0, -1)); // near Z: the X axis is Y cross normal
    expectPoint(down.toWorld({1, 2, 3}), -1, 2, -3);
    const Plane front(ZvGeVector3d(0, -1, 0)); // else Z cross normal
    expectPoint(front.toWorld({1, 2, 3}), 1, -3, 2);
    const Plane tilted(ZvGeVector3d(1, 2, 5)); // any length
    expectPoint(tilted.fromWorld(tilted.toWorld({4, -5, 6})), 4, -5, 6);
    EXPECT_NEAR(tilted.x().z, 0.0, 1e-12);
}

TEST(EntityGeometry, aNormalOfNoDirectionCountsAsZ)
{
    for (const ZvGeVector3d &normal : {ZvGeVector3d(0, 0, 0), ZvGeVector3d(kNaN, 0, 1), ZvGeVector3d(kInfinity, 0, 0)})
        expectPoint(Plane(normal).toWorld({1, 2, 3}), 1, 2, 3);
}

TEST(EntityGeometry, aMoveKeepsTheNormalToTheLastBit)
{
    const ZvGeVector3d normal = ZvGeVector3d(0.1, 0.2, 0.97).normal();
    const PlaneMap map(ZvGeMatrix3d::translation({1, 2, 3}), normal);
    ASSERT_TRUE(map.isValid());
    EXPECT_TRUE(map.keepsDirections());
    EXPECT_EQ(map.normal().x, Plane(normal).z().x);
    EXPECT_EQ(map.angle(0.3), 0.3);
    expectPoint(Plane(map.normal()).toWorld(map.point(ZvGePoint3d(5, 6, 7))),
                Plane(normal).toWorld({5, 6, 7}).x + 1, Plane(normal).toWorld({5, 6, 7}).y + 2,
                Plane(normal).toWorld({5, 6, 7}).z + 3);
}

TEST(EntityGeometry, aMapOfAPlaneAgreesWithTheMapOfSpace)
{
    const ZvGeMatrix3d matrix = ZvGeMatrix3d::rotation(0.7, ZvGeVector3d(1, 1, 0), {3, 4, 5}) * ZvGeMatrix3d::scaling(2.0, {1, 0, 0});
    const ZvGeVector3d normal(0.3, -0.4, 0.8);
    const PlaneMap map(matrix, normal);
    ASSERT_TRUE(map.isValid());
    EXPECT_TRUE(map.isSimilar());
    EXPECT_FALSE(map.isMirrored());
    EXPECT_NEAR(map.scale(), 2.0, 1e-9);
    ZvGePoint3d expected = Plane(normal).toWorld({1, 2, 3});
    expected.transformBy(matrix);
    const ZvGePoint3d got = Plane(map.normal()).toWorld(map.point(ZvGePoint3d(1, 2, 3)));
    expectPoint(got, expected.x, expected.y, expected.z);
}

TEST(EntityGeometry, aMirroredDrawingKeepsItsNormal)
{
    const PlaneMap map(ZvGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0}), ZvGeVector3d::kZAxis);
    ASSERT_TRUE(map.isValid());
    EXPECT_TRUE(map.isMirrored());
    EXPECT_TRUE(map.isSimilar());
    EXPECT_NEAR(map.normal().z, 1.0, 1e-12);
    EXPECT_NEAR(map.angle(0.0), kPi, 1e-12);
    EXPECT_NEAR(map.angle(kPi / 2), kPi / 2, 1e-12);
}

TEST(EntityGeometry, unevenAndCrushingMaps)
{
    EXPECT_FALSE(PlaneMap(ZvGeMatrix3d::scaling(2, 3, 1), ZvGeVector3d::kZAxis).isSimilar());
    EXPECT_TRUE(PlaneMap(ZvGeMatrix3d::scaling(2, 2, 7), ZvGeVector3d::kZAxis).isSimilar());
    EXPECT_FALSE(PlaneMap(ZvGeMatrix3d::scaling(0, 1, 1), ZvGeVector3d::kZAxis).isValid());
    ZvGeMatrix3d broken;
    broken.entry[0][3] = kNaN;
    EXPECT_FALSE(PlaneMap(broken, ZvGeVector3d::kZAxis).isValid());
}

TEST(EntityGeometry, aBulgeOfOneIsAHalfCircleToTheRightOfItsChord)
{
    BulgeArc arc;
    ASSERT_TRUE(bulgeArc({0, 0}, {2, 0}, 1.0, arc));
    EXPECT_NEAR(arc.center.x, 1.0, 1e-12);
    EXPECT_NEAR(arc.center.y, 0.0, 1e-12);
    EXPECT_NEAR(arc.radius, 1.0, 1e-12);
    EXPECT_NEAR(arc.sweep, kPi, 1e-12);
    const double middle = arc.start + 0.5 * arc.sweep;
    EXPECT_NEAR(arc.center.y + arc.radius * std::sin(middle), -1.0, 1e-12);
    ASSERT_TRUE(bulgeArc({0, 0}, {2, 0}, -1.0, arc));
    EXPECT_NEAR(arc.sweep, -kPi, 1e-12);
}

TEST(EntityGeometry, aBulgeIsTheTangentOfAQuarterOfTheAngle)
{
    BulgeArc arc;
    ASSERT_TRUE(bulgeArc({1, 0}, {0, 1}, std::tan(kPi / 8), arc)); // a quarter of the unit circle
    EXPECT_NEAR(arc.center.x, 0.0, 1e-12);
    EXPECT_NEAR(arc.center.y, 0.0, 1e-12);
    EXPECT_NEAR(arc.radius, 1.0, 1e-12);
    EXPECT_NEAR(arc.sweep, kPi / 2, 1e-12);
}

TEST(EntityGeometry, damagedBulgesAreStraight)
{
    BulgeArc arc;
    for (double bulge : {0.0, kNaN, kInfinity, 1e300})
        EXPECT_FALSE(bulgeArc({0, 0}, {2, 0}, bulge, arc)) << bulge;
    EXPECT_FALSE(bulgeArc({1, 1}, {1, 1}, 1.0, arc));
}

TEST(EntityGeometry, chordsKeepTheDeviation)
{
    for (double deviation : {0.5, 0.01, 1e-5}) {
        std::vector<ZvGePoint3d> points;
        sampleArc({0, 0, 0}, {10, 0, 0}, {0, 10, 0}, 0.3, 4.0, deviation, true, points);
        for (std::size_t i = 1; i < points.size(); ++i) {
            const ZvGePoint3d middle = points[i - 1] + (points[i] - points[i - 1]) * 0.5;
            EXPECT_LE(10.0 - middle.distanceTo({0, 0, 0}), deviation * 1.0001);
        }
        expectPoint(points.front(), 10 * std::cos(0.3), 10 * std::sin(0.3), 0);
        expectPoint(points.back(), 10 * std::cos(4.3), 10 * std::sin(4.3), 0);
    }
}

TEST(EntityGeometry, chordCountsAreBounded)
{
    EXPECT_EQ(chordCount(1e18, kTwoPi, 1e-300), kMostChords);
    EXPECT_GE(chordCount(1.0, kTwoPi, 100.0), 8);
    EXPECT_EQ(chordCount(kNaN, kTwoPi, kNaN), chordCount(1.0, kTwoPi, 0.0));
    EXPECT_EQ(chordCount(1.0, kNaN, 0.1), 1);
    EXPECT_LE(chordCount(1.0, 1e300, 0.01), kMostChords);
}

TEST(EntityGeometry, boxesOfArcsAreExact)
{
    ZvGeExtents3d box;
    addArcExtents(box, {1, 2, 0}, {5, 0, 0}, {0, 5, 0}, kPi / 4, kPi / 2); // over the top
    expectPoint(box.minimum, 1 - 5 * std::sqrt(0.5), 2 + 5 * std::sqrt(0.5), 0);
    expectPoint(box.maximum, 1 + 5 * std::sqrt(0.5), 7, 0);
    ZvGeExtents3d clockwise;
    addArcExtents(clockwise, {1, 2, 0}, {5, 0, 0}, {0, 5, 0}, 0.75 * kPi, -kPi / 2);
    expectPoint(clockwise.maximum, box.maximum.x, box.maximum.y, 0);
    // An ellipse across the axes reaches sqrt(u.x^2 + v.x^2) in x.
    ZvGeExtents3d ellipse;
    addArcExtents(ellipse, {0, 0, 0}, {3, 4, 0}, {-2, 1.5, 0}, 0, kTwoPi);
    expectPoint(ellipse.maximum, std::sqrt(9.0 + 4.0), std::sqrt(16.0 + 2.25), 0);
}

TEST(EntityGeometry, aSplineWithBezierKnotsIsTheBezierCurve)
{
    const std::vector<ZvGePoint3d> control = {{0, 0, 0}, {1, 3, 0}, {4, 3, 1}, {5, 0, 2}};
    std::vector<ZvGePoint3d> points;
    sampleSpline(3, {0, 0, 0, 0, 1, 1, 1, 1}, {}, control, 1e-3, points);
    expectPoint(points.front(), 0, 0, 0);
    expectPoint(points.back(), 5, 0, 2);
    for (int i = 0; i <= 50; ++i)
        EXPECT_LE(distanceToPath(bezier(control, i / 50.0), points), 1.1e-3) << i;
}

TEST(EntityGeometry, aRationalQuadraticIsAQuarterCircle)
{
    std::vector<ZvGePoint3d> points;
    sampleSpline(2, {0, 0, 0, 1, 1, 1}, {1, std::sqrt(0.5), 1}, {{2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 1e-4, points);
    ASSERT_GT(points.size(), 8u);
    for (const ZvGePoint3d &p : points)
        EXPECT_NEAR(p.distanceTo({0, 0, 0}), 2.0, 1e-9);
}

TEST(EntityGeometry, aPeriodicSplineComesBackToItsStart)
{
    // Control points wrapped by the degree, evenly knotted.
    std::vector<ZvGePoint3d> control = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};
    for (int i = 0; i < 3; ++i)
        control.push_back(control[std::size_t(i)]);
    std::vector<double> knots;
    for (int i = 0; i < int(control.size()) + 4; ++i)
        knots.push_back(i);
    std::vector<ZvGePoint3d> points;
    sampleSpline(3, knots, {}, control, 0.01, points);
    EXPECT_NEAR(points.front().distanceTo(points.back()), 0.0, 1e-9);
    EXPECT_GT(points.size(), 12u);
}

TEST(EntityGeometry, splinesThatDoNotFitTogetherAreDrawnAllTheSame)
{
    const std::vector<ZvGePoint3d> control = {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}, {6, 1, 0}};
    const std::vector<std::vector<double>> knotVectors = {
        {}, {0, 1}, {0, 0, 0, 0, kNaN, 1, 1, 1, 1}, {9, 8, 7, 6, 5, 4, 3, 2, 1}, {0, 0, 0, 0, 0, 0, 0, 0, 0}};
    for (const std::vector<double> &knots : knotVectors) {
        std::vector<ZvGePoint3d> points;
        sampleSpline(3, knots, {}, control, 0.01, points);
        ASSERT_GT(points.size(), 4u);
        expectPoint(points.front(), 0, 0, 0);
        expectPoint(points.back(), 6, 1, 0);
    }
    for (int degree : {-5, 0, 100, 1000000}) {
        std::vector<ZvGePoint3d> points;
        sampleSpline(degree, {}, {}, control, 0.01, points);
        EXPECT_GE(points.size(), 5u) << degree;
    }
}

TEST(EntityGeometry, unusableControlPointsAndWeightsEndInFewPoints)
{
    std::vector<ZvGePoint3d> points;
    sampleSpline(3, {0, 0, 0, 0, 1, 1, 1, 1}, {0, 0, 0, 0}, {{0, 0, 0}, {1, 3, 0}, {4, 3, 1}, {5, 0, 2}}, 1e-6, points);
    EXPECT_LE(points.size(), kMostPoints);
    sampleSpline(3, {0, 0, 0, 0, 1, 1, 1, 1}, {}, {{0, 0, 0}, {kNaN, 3, 0}, {kInfinity, 3, 1}, {5, 0, 2}}, 1e-6, points);
    for (const ZvGePoint3d &p : points)
        EXPECT_TRUE(isUsable(p));
    sampleSpline(3, {0, 0, 0, 0, 1, 1, 1, 1}, {}, {{0, 0, 0}, {1e17, 3, 0}, {-1e17, 3, 1}, {5, 0, 2}}, 1e-12, points);
    EXPECT_LE(points.size(), kMostPoints + 4096);
}

TEST(EntityGeometry, aCurveThroughPointsMeetsThemAndStaysSmooth)
{
    const std::vector<ZvGePoint3d> through = {{0, 0, 0}, {2, 3, 0}, {5, 3, 0}, {7, -1, 0}};
    std::vector<ZvGePoint3d> points;
    sampleThrough(through, false, 1e-3, points);
    for (const ZvGePoint3d &p : through)
        EXPECT_LE(distanceToPath(p, points), 1e-9);
    double sharpest = 0.0; // turn between neighbouring chords
    for (std::size_t i = 2; i < points.size(); ++i) {
        const ZvGeVector3d a = (points[i - 1] - points[i - 2]).normal();
        const ZvGeVector3d b = (points[i] - points[i - 1]).normal();
        sharpest = std::max(sharpest, std::acos(std::min(a.dotProduct(b), 1.0)));
    }
    EXPECT_LT(sharpest, 0.2);
}

TEST(EntityGeometry, pointsOfACircleGiveNearlyTheCircle)
{
    std::vector<ZvGePoint3d> through;
    for (int i = 0; i < 12; ++i)
        through.push_back({std::cos(i * kTwoPi / 12), std::sin(i * kTwoPi / 12), 0});
    std::vector<ZvGePoint3d> points;
    sampleThrough(through, true, 1e-4, points);
    expectPoint(points.back(), 1, 0, 0);
    for (const ZvGePoint3d &p : points)
        EXPECT_NEAR(p.distanceTo({0, 0, 0}), 1.0, 3e-3);
}

TEST(EntityGeometry, fewOrEqualPointsGiveWhatIsThere)
{
    std::vector<ZvGePoint3d> points;
    sampleThrough({}, false, 0.1, points);
    EXPECT_TRUE(points.empty());
    sampleThrough({{1, 1, 0}, {1, 1, 0}, {1, 1, 0}}, true, 0.1, points);
    EXPECT_EQ(points.size(), 1u);
    sampleThrough({{0, 0, 0}, {kNaN, 0, 0}, {3, 0, 0}}, false, 0.1, points);
    EXPECT_EQ(points.size(), 2u);
}
