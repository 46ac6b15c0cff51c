// SPDX-License-Identifier: MIT
// Entities of no database: what lists and previews make for themselves.
#include "db/zvdbentities.h"
#include "recording_draw.h"

#include <cmath>
#include <functional>

namespace {
const double kPi = 3.14159265358979323846;

/// A map of each kind that a drawing is edited with, and its inverse.
struct Map
{
    const char *name;
    ZvGeMatrix3d matrix;
};

std::vector<Map> maps()
{
    return {
        {"move", ZvGeMatrix3d::translation({3, -4, 5})},
        {"turn", ZvGeMatrix3d::rotation(0.7, ZvGeVector3d::kZAxis, {1, 2, 0})},
        {"scale", ZvGeMatrix3d::scaling(2.5, {1, 1, 0})},
        {"mirror", ZvGeMatrix3d::mirroring({1, 0, 0}, {1, 0, 0})},
        {"mirror across", ZvGeMatrix3d::mirroring({0, 0, 0}, ZvGeVector3d(1, 2, 0).normal())},
        {"turn in space", ZvGeMatrix3d::rotation(1.1, ZvGeVector3d(1, 1, 1).normal())},
        {"all of it", ZvGeMatrix3d::rotation(0.3, ZvGeVector3d::kXAxis) * ZvGeMatrix3d::mirroring({0, 3, 0}, {0, 1, 0})
             * ZvGeMatrix3d::scaling(0.5) * ZvGeMatrix3d::translation({9, 8, 7})},
    };
}

/// Points on what an entity draws, to compare two pictures.
std::vector<ZvGePoint3d> pictureOf(const ZvDbEntity &entity)
{
    std::vector<ZvGePoint3d> all;
    const RecordingDraw draw(entity);
    for (const RecordingDraw::Path &path : draw.paths)
        all.insert(all.end(), path.points.begin(), path.points.end());
    for (const RecordingDraw::Arc &arc : draw.arcs) {
        if (arc.sweep > 2 * kPi - 1e-9) { // a full circle has no start to compare
            all.push_back(arc.center);
            all.push_back(arc.center + arc.normal * arc.radius);
            continue;
        }
        const ZvGeVector3d x = arc.normal.arbitraryXAxis();
        const ZvGeVector3d y = arc.normal.crossProduct(x);
        for (double t : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            const double a = arc.start + arc.sweep * t;
            all.push_back(arc.center + (x * std::cos(a) + y * std::sin(a)) * arc.radius);
        }
    }
    for (const RecordingDraw::Ellipse &e : draw.ellipses) {
        for (double t : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            const double a = e.start + e.sweep * t;
            all.push_back(e.center + e.major * std::cos(a) + e.minor * std::sin(a));
        }
    }
    for (const ZvGiFill &fill : draw.fills) {
        for (const std::vector<ZvGePoint3d> &loop : fill.loops)
            all.insert(all.end(), loop.begin(), loop.end());
    }
    all.insert(all.end(), draw.points.begin(), draw.points.end());
    for (const RecordingDraw::Ray &ray : draw.rays) {
        all.push_back(ray.base);
        all.push_back(ray.base + ray.direction);
    }
    for (const ZvGiText &text : draw.texts) { // the box of its first letter
        const ZvGeVector3d along = text.direction * (text.widthFactor * text.height * (text.backward ? -1.0 : 1.0));
        const ZvGeVector3d up = text.normal.crossProduct(text.direction) * (text.height * (text.upsideDown ? -1.0 : 1.0))
            + text.direction * (std::tan(text.oblique) * text.height * (text.backward ? -1.0 : 1.0));
        all.push_back(text.position);
        all.push_back(text.position + along);
        all.push_back(text.position + up);
    }
    for (const RecordingDraw::Block &block : draw.blocks) {
        for (const ZvGePoint3d &p : {ZvGePoint3d(0, 0, 0), ZvGePoint3d(1, 0, 0), ZvGePoint3d(0, 1, 0), ZvGePoint3d(0, 0, 1)})
            all.push_back(ZvGePoint3d(p).transformBy(block.matrix));
    }
    return all;
}

/// Largest distance from a point of one picture to the nearest of the other: pictures may run the other way round.
double apart(const std::vector<ZvGePoint3d> &a, const std::vector<ZvGePoint3d> &b)
{
    double largest = 0.0;
    for (const ZvGePoint3d &p : a) {
        double nearest = 1e300;
        for (const ZvGePoint3d &q : b)
            nearest = std::min(nearest, p.distanceTo(q));
        largest = std::max(largest, nearest);
    }
    return largest;
}

/// Largest distance from a point to a closed path: the chords of a scaled arc are other chords.
double apartFromPath(const std::vector<ZvGePoint3d> &points, const std::vector<ZvGePoint3d> &path)
{
    double largest = 0.0;
    for (const ZvGePoint3d &p : points) {
        double nearest = 1e300;
        for (std::size_t i = 0; i < path.size(); ++i) {
            const ZvGePoint3d &from = path[i];
            const ZvGeVector3d chord = path[(i + 1) % path.size()] - from;
            const double t = std::min(std::max((p - from).dotProduct(chord) / chord.dotProduct(chord), 0.0), 1.0);
            nearest = std::min(nearest, p.distanceTo(from + chord * t));
        }
        largest = std::max(largest, nearest);
    }
    return largest;
}

struct Kind
{
    const char *name;
    std::function<std::unique_ptr<ZvDbEntity>()> make;
};

std::vector<Kind> kinds()
{
    return {
        {"line", [] { return std::make_unique<ZvDbLine>(ZvGePoint3d(1, 2, 3), ZvGePoint3d(4, 6, 8)); }},
        {"point", [] { return std::make_unique<ZvDbPoint>(ZvGePoint3d(1, 2, 3)); }},
        {"ray",
         [] {
             auto ray = std::make_unique<ZvDbRay>();
             ray->setBasePoint({1, 1, 0});
             return ray;
         }},
        {"circle", [] { return std::make_unique<ZvDbCircle>(ZvGePoint3d(2, 3, 4), ZvGeVector3d(0, -1, 0), 5.0); }},
        {"arc", [] { return std::make_unique<ZvDbArc>(ZvGePoint3d(2, 3, 0), 5.0, 0.2, 1.9); }},
        {"ellipse", [] { return std::make_unique<ZvDbEllipse>(); }},
        {"polyline",
         [] {
             auto polyline = std::make_unique<ZvDbPolyline>();
             polyline->addVertex({0, 0}, 0.5);
             polyline->addVertex({4, 0}, 0.0);
             polyline->addVertex({4, 3}, -1.0);
             polyline->setClosed(true);
             return polyline;
         }},
        {"solid",
         [] {
             auto solid = std::make_unique<ZvDbSolid>();
             solid->setPointAt(1, {2, 0, 0});
             solid->setPointAt(2, {0, 3, 0});
             solid->setPointAt(3, {2, 4, 0});
             return solid;
         }},
        {"text", [] { return std::make_unique<ZvDbText>(ZvGePoint3d(1, 2, 0), "Ab", ZvDbObjectId(), 2.0, 0.4); }},
    };
}
}

TEST(DetachedEntities, setColorAndTheOthersWorkAndRaiseNothing)
{
    const AssertWatch watch;
    ZvSmartPtr<ZvDbLine> line = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
    ZvCmColor red;
    red.setColorIndex(1);
    ZvCmTransparency half;
    half.setAlphaPercent(0.5);
    EXPECT_TRUE(line->color().isByLayer());
    EXPECT_EQ(line->setColor(red, true), Zv::eOk);
    EXPECT_EQ(line->setLineWeight(ZvDb::kLnWt050, true), Zv::eOk);
    EXPECT_EQ(line->setLinetypeScale(3.0, true), Zv::eOk);
    EXPECT_EQ(line->setTransparency(half, true), Zv::eOk);
    EXPECT_EQ(line->setStartPoint({1, 2, 3}), Zv::eOk);
    EXPECT_EQ(line->setEndPoint({4, 5, 6}), Zv::eOk);
    EXPECT_EQ(line->color(), red);
    EXPECT_EQ(line->lineWeight(), ZvDb::kLnWt050);
    EXPECT_EQ(line->linetypeScale(), 3.0);
    EXPECT_EQ(line->transparency(), half);
    expectPoint(line->startPoint(), 1, 2, 3);
    EXPECT_EQ(line->database(), nullptr);
    EXPECT_EQ(line->propertiesNumber(), 0u);
    EXPECT_TRUE(AssertWatch::texts().empty());
}

TEST(DetachedEntities, namesWithoutADrawing)
{
    ZvDbLine line;
    EXPECT_EQ(line.linetype(), "ByLayer");
    EXPECT_EQ(line.material(), "ByLayer");
    EXPECT_EQ(line.plotStyleName(), "ByLayer");
    EXPECT_TRUE(line.layer().isEmpty());
    EXPECT_EQ(line.setPlotStyleName("BYBLOCK"), Zv::eOk);
    EXPECT_EQ(line.plotStyleName(), "ByBlock");
    EXPECT_EQ(line.setPlotStyleName("normal"), Zv::eOk);
    EXPECT_EQ(line.plotStyleName(), "Normal");
    EXPECT_EQ(line.setLinetype("ByLayer"), Zv::eOk);
    EXPECT_EQ(line.setMaterial("bylayer"), Zv::eOk);
    EXPECT_EQ(line.setLayer("Walls"), Zv::eNoDatabase);
    EXPECT_EQ(line.setLayer(ZvDbObjectId()), Zv::eInvalidInput);
    EXPECT_EQ(line.setLinetype(ZvDbObjectId()), Zv::eInvalidInput);
}

TEST(DetachedEntities, badValuesAreRefused)
{
    ZvDbCircle circle({0, 0, 0}, ZvGeVector3d::kZAxis, 2.0);
    EXPECT_EQ(circle.setRadius(-1.0), Zv::eInvalidInput);
    EXPECT_EQ(circle.setRadius(std::nan("")), Zv::eInvalidInput);
    EXPECT_EQ(circle.radius(), 2.0);
    EXPECT_EQ(circle.setLinetypeScale(0.0), Zv::eInvalidInput);
    ZvDbText text;
    EXPECT_EQ(text.setHeight(0.0), Zv::eInvalidInput);
    ZvDbRay ray;
    EXPECT_EQ(ray.setUnitDir({0, 0, 0}), Zv::eInvalidInput);
    EXPECT_EQ(ray.setUnitDir({0, 3, 4}), Zv::eOk);
    EXPECT_NEAR(ray.unitDir().y, 0.6, 1e-12);
    ZvDbSolid solid;
    EXPECT_EQ(solid.setPointAt(4, {}), Zv::eInvalidInput);
}

TEST(DetachedEntities, copiesAreEqualAndOfTheirOwn)
{
    ZvDbPolyline polyline;
    polyline.addVertex({0, 0}, 0.5);
    polyline.addVertex({4, 0});
    polyline.setLineWeight(ZvDb::kLnWt030);
    std::unique_ptr<ZvRxObject> clone(polyline.clone());
    auto *copy = zvrxCast<ZvDbPolyline>(clone.get());
    ASSERT_NE(copy, nullptr);
    polyline.addVertex({9, 9});
    EXPECT_EQ(copy->numVerts(), 2);
    EXPECT_EQ(copy->vertices()[0].bulge, 0.5);
    EXPECT_EQ(copy->lineWeight(), ZvDb::kLnWt030);
    EXPECT_TRUE(copy->copyFrom(&polyline));
    EXPECT_EQ(copy->numVerts(), 3);
    ZvDbLine line;
    EXPECT_FALSE(copy->copyFrom(&line));
}

TEST(DetachedEntities, descriptorsKnowTheirLine)
{
    EXPECT_TRUE(ZvDbWipeout::desc()->isDerivedFrom(ZvDbRasterImage::desc()));
    EXPECT_TRUE(ZvDbTable::desc()->isDerivedFrom(ZvDbBlockReference::desc()));
    EXPECT_TRUE(ZvDbArc::desc()->isDerivedFrom(ZvDbCircle::desc()));
    EXPECT_TRUE(ZvDbAttributeDefinition::desc()->isDerivedFrom(ZvDbText::desc()));
    EXPECT_FALSE(ZvDbMText::desc()->isDerivedFrom(ZvDbText::desc()));
    EXPECT_STREQ(ZvDbLine::desc()->name(), "ZvDbLine");
    EXPECT_EQ(ZvDbXline().isA(), ZvDbXline::desc());
}

TEST(DetachedEntities, everyMapMovesThePictureAndItsInverseBringsItBack)
{
    for (const Kind &kind : kinds()) {
        for (const Map &map : maps()) {
            SCOPED_TRACE(std::string(kind.name) + ", " + map.name);
            const std::unique_ptr<ZvDbEntity> entity = kind.make();
            const std::vector<ZvGePoint3d> before = pictureOf(*entity);
            ASSERT_FALSE(before.empty());
            std::vector<ZvGePoint3d> expected = before;
            for (ZvGePoint3d &p : expected)
                p.transformBy(map.matrix);
            // A scaled ray still draws its direction with length 1.
            if (std::string(kind.name) == "ray")
                expected[1] = expected[0] + (expected[1] - expected[0]).normal();
            ASSERT_EQ(entity->transformBy(map.matrix), Zv::eOk);
            const bool curved = std::string(kind.name) == "polyline";
            const std::vector<ZvGePoint3d> after = pictureOf(*entity);
            EXPECT_LT(curved ? apartFromPath(expected, after) : apart(expected, after), curved ? 2e-3 : 1e-9);
            ASSERT_EQ(entity->transformBy(map.matrix.inverse()), Zv::eOk);
            const std::vector<ZvGePoint3d> back = pictureOf(*entity);
            EXPECT_LT(curved ? apartFromPath(before, back) : apart(before, back), curved ? 2e-3 : 1e-8);
            EXPECT_LT(curved ? apartFromPath(back, before) : apart(back, before), curved ? 2e-3 : 1e-8);
        }
    }
}

TEST(DetachedEntities, mapsThatAnEntityCannotFollowChangeNothing)
{
    const ZvGeMatrix3d uneven = ZvGeMatrix3d::scaling(2, 1, 1);
    ZvDbCircle circle({1, 1, 0}, ZvGeVector3d::kZAxis, 2.0);
    EXPECT_EQ(circle.transformBy(uneven), Zv::eInvalidInput);
    EXPECT_EQ(circle.radius(), 2.0);
    expectPoint(circle.center(), 1, 1);
    ZvDbArc arc({1, 1, 0}, 2.0, 0.1, 0.2);
    EXPECT_EQ(arc.transformBy(uneven), Zv::eInvalidInput);
    EXPECT_EQ(arc.startAngle(), 0.1);
    ZvGeMatrix3d broken;
    broken.entry[1][1] = std::nan("");
    ZvDbLine line({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(line.transformBy(broken), Zv::eInvalidInput);
    expectPoint(line.endPoint(), 4, 5, 6);
}

TEST(DetachedEntities, anEllipseFollowsAnyMap)
{
    ZvDbEllipse ellipse; // the unit circle
    ASSERT_EQ(ellipse.transformBy(ZvGeMatrix3d::scaling(2, 3, 1)), Zv::eOk);
    expectBox(ellipse, -2, -3, 2, 3);
    EXPECT_NEAR(ellipse.majorAxis().length(), 3.0, 1e-12);
    EXPECT_NEAR(ellipse.radiusRatio(), 2.0 / 3.0, 1e-12);
    ZvGeMatrix3d shear;
    shear.entry[0][1] = 1.0; // x += y
    ASSERT_EQ(ellipse.transformBy(shear), Zv::eOk);
    expectBox(ellipse, -std::sqrt(13.0), -3, std::sqrt(13.0), 3);
    EXPECT_NEAR(ellipse.majorAxis().dotProduct(ellipse.minorAxis()), 0.0, 1e-9);
}

TEST(DetachedEntities, aMirroredArcRunsCounterClockwiseStill)
{
    ZvDbArc arc({3, 0, 0}, 2.0, 0.0, kPi / 2);
    ASSERT_EQ(arc.transformBy(ZvGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0})), Zv::eOk);
    expectPoint(arc.center(), -3, 0);
    EXPECT_NEAR(arc.normal().z, 1.0, 1e-12);
    EXPECT_NEAR(arc.startAngle(), kPi / 2, 1e-12);
    EXPECT_NEAR(arc.endAngle(), kPi, 1e-12);
    expectBox(arc, -5, 0, -3, 2);
}

TEST(DetachedEntities, plainKindsDrawTheirPrimitive)
{
    const RecordingDraw line(ZvDbLine({1, 2, 3}, {4, 5, 6}));
    ASSERT_EQ(line.paths.size(), 1u);
    ASSERT_EQ(line.paths[0].points.size(), 2u);
    expectPoint(line.paths[0].points[1], 4, 5, 6);
    const RecordingDraw circle(ZvDbCircle({1, 2, 3}, {0, 0, -1}, 4));
    ASSERT_EQ(circle.arcs.size(), 1u);
    expectPoint(circle.arcs[0].center, 1, 2, 3);
    EXPECT_NEAR(circle.arcs[0].normal.z, -1.0, 1e-12);
    EXPECT_NEAR(circle.arcs[0].sweep, 2 * kPi, 1e-12);
    const RecordingDraw arc(ZvDbArc({1, 2, 0}, 4, 1.5 * kPi, 0.5 * kPi));
    ASSERT_EQ(arc.arcs.size(), 1u);
    EXPECT_NEAR(arc.arcs[0].start, 1.5 * kPi, 1e-12);
    EXPECT_NEAR(arc.arcs[0].sweep, kPi, 1e-12);
    ZvDbXline xline;
    ASSERT_EQ(RecordingDraw(xline).rays.size(), 1u);
    EXPECT_TRUE(RecordingDraw(xline).rays[0].both);
    ZvGeExtents3d none;
    EXPECT_EQ(xline.getGeomExtents(none), Zv::eFailed);
    EXPECT_EQ(RecordingDraw(ZvDbPoint({7, 8, 9})).points.size(), 1u);
}

TEST(DetachedEntities, polylinesWithBulgesAndWidths)
{
    ZvDbPolyline polyline;
    polyline.addVertex({0, 0}, 1.0);
    polyline.addVertex({2, 0}, 0.0, 0.5, 1.0);
    polyline.addVertex({2, 5});
    expectBox(polyline, 0, -1, 2.5, 5, 1e-9);
    const RecordingDraw draw(polyline, 0.001);
    ASSERT_EQ(draw.paths.size(), 1u);
    const RecordingDraw::Path &path = draw.paths[0];
    EXPECT_FALSE(path.closed);
    ASSERT_EQ(path.startWidths.size(), path.points.size() - 1);
    EXPECT_EQ(path.startWidths.front(), 0.0);
    EXPECT_EQ(path.startWidths.back(), 0.5);
    EXPECT_EQ(path.endWidths.back(), 1.0);
    for (std::size_t i = 0; i + 1 < path.points.size(); ++i)
        EXPECT_NEAR(path.points[i].distanceTo({1, 0, 0}), 1.0, 1e-9);
    expectPoint(path.points.back(), 2, 5);
}

TEST(DetachedEntities, aClosedPolylineDoesNotRepeatItsStart)
{
    ZvDbPolyline polyline;
    polyline.setVertices({{{0, 0}, 0, 0, 0}, {{4, 0}, 0, 0, 0}, {{4, 3}, 0, 0, 0}});
    polyline.setClosed(true);
    const RecordingDraw draw(polyline);
    ASSERT_EQ(draw.paths.size(), 1u);
    EXPECT_TRUE(draw.paths[0].closed);
    EXPECT_EQ(draw.paths[0].points.size(), 3u);
    polyline.setClosed(false);
    EXPECT_FALSE(RecordingDraw(polyline).paths[0].closed);
}

TEST(DetachedEntities, aSolidIsFilledRoundItsCorners)
{
    ZvDbSolid solid;
    solid.setPointAt(1, {2, 0, 0});
    solid.setPointAt(2, {0, 3, 0});
    solid.setPointAt(3, {2, 3, 0});
    const RecordingDraw draw(solid);
    ASSERT_EQ(draw.fills.size(), 1u);
    ASSERT_EQ(draw.fills[0].loops.size(), 1u);
    expectPoint(draw.fills[0].loops[0][2], 2, 3); // not the bow tie of the stored order
    expectPoint(draw.fills[0].loops[0][3], 0, 3);
    EXPECT_TRUE(draw.fills[0].solid);
}

TEST(DetachedEntities, textsTellWhatIsDrawn)
{
    ZvDbText text({1, 2, 0}, "%%c20", ZvDbObjectId(), 2.0, kPi / 2);
    ZvGiText described;
    text.describe(described);
    EXPECT_EQ(described.text, "%%c20");
    expectPoint(described.position, 1, 2);
    EXPECT_NEAR(described.direction.y, 1.0, 1e-12);
    EXPECT_EQ(described.height, 2.0);
    ZvGeExtents3d box;
    ASSERT_EQ(text.getGeomExtents(box), Zv::eOk);
    EXPECT_NEAR(box.minimum.x, 1.0 - 2.0, 1e-9); // written upwards, its capitals reach to the left
    EXPECT_GT(box.maximum.y, 2.0 + 2.0);
    EXPECT_EQ(RecordingDraw(text).texts.size(), 1u);
    text.setTextString(ZvString());
    EXPECT_EQ(RecordingDraw(text).count(), 0u);
}

TEST(DetachedEntities, aTextIsScaledUnevenlyByItsWidthFactor)
{
    ZvDbText text({1, 1, 0}, "A", ZvDbObjectId(), 2.0, 0.0);
    ASSERT_EQ(text.transformBy(ZvGeMatrix3d::scaling(3, 2, 1)), Zv::eOk);
    EXPECT_NEAR(text.height(), 4.0, 1e-12);
    EXPECT_NEAR(text.widthFactor(), 1.5, 1e-12);
    EXPECT_NEAR(text.oblique(), 0.0, 1e-12);
    expectPoint(text.position(), 3, 2);
}

TEST(DetachedEntities, formattedTextMeasuresItsLinesWithoutTheirCodes)
{
    ZvDbMText plain;
    plain.setContents("abc\\Pabc");
    plain.setTextHeight(2.0);
    ZvDbMText coded;
    coded.setContents("{\\fArial|b0|i0;abc}\\P\\C1;ab\\Lc\\l");
    coded.setTextHeight(2.0);
    ZvGeExtents3d a;
    ZvGeExtents3d b;
    ASSERT_EQ(plain.getGeomExtents(a), Zv::eOk);
    ASSERT_EQ(coded.getGeomExtents(b), Zv::eOk);
    EXPECT_NEAR(a.maximum.x, b.maximum.x, 1e-9);
    EXPECT_NEAR(a.minimum.y, b.minimum.y, 1e-9);
    EXPECT_NEAR(a.maximum.y, 0.0, 1e-9); // hangs from its upper left corner
    EXPECT_LT(a.minimum.y, -2.0 * (1.0 + 5.0 / 3.0) + 1e-9);
    ZvDbMText larger;
    larger.setContents("\\H2x;abc");
    larger.setTextHeight(2.0);
    ZvGeExtents3d c;
    ASSERT_EQ(larger.getGeomExtents(c), Zv::eOk);
    EXPECT_NEAR(c.maximum.x, 2.0 * a.maximum.x, 1e-9);
}

TEST(DetachedEntities, mirroredFormattedTextStaysReadable)
{
    ZvDbMText text;
    text.setContents("abc");
    text.setLocation({5, 1, 0});
    ASSERT_EQ(text.transformBy(ZvGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0})), Zv::eOk);
    ZvGiMText described;
    text.describe(described);
    expectPoint(described.position, -5, 1);
    EXPECT_NEAR(described.direction.x, 1.0, 1e-12);
    EXPECT_EQ(described.attachment, 3); // top right: it lies where its mirror image lies
    ASSERT_EQ(text.transformBy(ZvGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0})), Zv::eOk);
    text.describe(described);
    EXPECT_EQ(described.attachment, 1);
}

TEST(DetachedEntities, aReferenceOfNoBlockIsHarmless)
{
    ZvDbBlockReference insert;
    insert.setPosition({4, 5, 6});
    ZvGeExtents3d box;
    EXPECT_EQ(insert.getGeomExtents(box), Zv::eFailed);
    EXPECT_EQ(RecordingDraw(insert).count(), 0u);
    expectPoint(ZvGePoint3d().transformBy(insert.blockTransform()), 4, 5, 6);
    EXPECT_EQ(insert.setColor(ZvCmColor(), true), Zv::eOk);
}
