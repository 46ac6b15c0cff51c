// SPDX-License-Identifier: MIT
// Entities as drawing files describe them, and what they draw.
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "recording_draw.h"

#include <cmath>
#include <memory>
#include <sstream>

namespace {
const double kPi = 3.14159265358979323846;

/// Readable in a failure.
std::string utf8(const ZvString &text)
{
    return text.toStdString();
}

/// "code value" pieces between bars, as the lines of a text file.
std::string tags(const std::string &pieces)
{
    std::string text;
    std::istringstream stream(pieces);
    for (std::string piece; std::getline(stream, piece, '|');) {
        const std::size_t blank = piece.find(' ');
        text += piece.substr(0, blank) + "\n" + (blank == std::string::npos ? std::string() : piece.substr(blank + 1)) + "\n";
    }
    return text;
}

class FileEntities : public testing::Test
{
protected:
    /// A drawing of these entities and blocks.
    void read(const std::string &entities, const std::string &blocks = std::string())
    {
        std::string text = tags("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|0 ENDSEC");
        if (!blocks.empty())
            text += tags("0 SECTION|2 BLOCKS") + tags(blocks) + tags("0 ENDSEC");
        text += tags("0 SECTION|2 ENTITIES") + tags(entities) + tags("0 ENDSEC|0 EOF");
        ZvDbFileReport report;
        ASSERT_EQ(database->readStream(text.data(), text.size(), report), Zv::eOk) << report.message.toStdString();
        ZvDbObjectPointer<ZvDbBlockTableRecord> space(database->modelSpaceId(), ZvDb::kForRead);
        ASSERT_TRUE(space);
        ZvDbBlockTableRecordIterator *iterator = nullptr;
        ASSERT_EQ(space->newIterator(iterator), Zv::eOk);
        for (std::unique_ptr<ZvDbBlockTableRecordIterator> at(iterator); !at->done(); at->step())
            ids.push_back(at->entityId());
        ASSERT_FALSE(ids.empty());
    }
    void setDecimals(int decimals, int zeros)
    {
        ZvDbObjectPointer<ZvDbDimStyleTableRecord> style(database->dimstyle(), ZvDb::kForWrite);
        ASSERT_TRUE(style);
        style->setInteger("DIMDEC", decimals);
        style->setInteger("DIMZIN", zeros);
    }
    void TearDown() override { EXPECT_EQ(database->openObjectCount(), 0); }

    ZvDbDatabasePtr database = ZvDbDatabase::create();
    std::vector<ZvDbObjectId> ids; // of model space
};

const char kDoor[] = "0 BLOCK|8 0|100 AcDbEntity|100 AcDbBlockBegin|2 Door|70 0|10 1|20 1|30 0|3 Door|0 LINE|8 0|100 AcDbEntity|"
                     "100 AcDbLine|10 1|20 1|30 0|11 3|21 2|31 0|0 ENDBLK|8 0|100 AcDbEntity|100 AcDbBlockEnd";
}

TEST_F(FileEntities, aCircleSeenFromBelow)
{
    read("0 CIRCLE|8 0|100 AcDbEntity|100 AcDbCircle|10 5|20 1|30 0|40 2|210 0|220 0|230 -1");
    ZvDbObjectPointer<ZvDbCircle> circle(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(circle);
    expectPoint(circle->center(), -5, 1); // its plane's X axis points left
    expectBox(*circle, -7, -1, -3, 3);
}

TEST_F(FileEntities, anEllipticArcIsMeasuredExactly)
{
    read("0 ELLIPSE|8 0|100 AcDbEntity|100 AcDbEllipse|10 1|20 2|30 0|11 4|21 0|31 0|210 0|220 0|230 1|40 0.5|41 0|42 1.5707963267948966");
    ZvDbObjectPointer<ZvDbEllipse> ellipse(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(ellipse);
    expectBox(*ellipse, 1, 2, 5, 4);
    const RecordingDraw draw(*ellipse);
    ASSERT_EQ(draw.ellipses.size(), 1u);
    EXPECT_NEAR(draw.ellipses[0].minor.y, 2.0, 1e-12);
    EXPECT_NEAR(draw.ellipses[0].sweep, kPi / 2, 1e-12);
}

TEST_F(FileEntities, constantWidthAndElevationOfAPolyline)
{
    read("0 LWPOLYLINE|8 0|100 AcDbEntity|100 AcDbPolyline|90 2|70 0|43 0.5|38 3|10 0|20 0|10 10|20 0");
    ZvDbObjectPointer<ZvDbPolyline> polyline(ids[0], ZvDb::kForWrite);
    ASSERT_TRUE(polyline);
    expectBox(*polyline, 0, -0.25, 10, 0.25);
    const RecordingDraw draw(*polyline);
    ASSERT_EQ(draw.paths.size(), 1u);
    ASSERT_EQ(draw.paths[0].startWidths.size(), 1u);
    EXPECT_EQ(draw.paths[0].startWidths[0], 0.5);
    expectPoint(draw.paths[0].points[1], 10, 0, 3);
    ASSERT_EQ(polyline->transformBy(ZvGeMatrix3d::scaling(2)), Zv::eOk);
    expectPoint(RecordingDraw(*polyline).paths[0].points[1], 20, 0, 6);
    EXPECT_EQ(RecordingDraw(*polyline).paths[0].endWidths[0], 1.0);
}

namespace {
/// \a kind is the marker of the vertices; what begins with a marker of its own is no vertex.
std::string vertices(const std::string &kind, const std::vector<std::string> &each)
{
    std::string all;
    for (const std::string &one : each)
        all += "|0 VERTEX|8 0|100 AcDbEntity|" + (one.substr(0, 3) == "100" ? one : "100 AcDbVertex|100 " + kind + "|" + one);
    return all + "|0 SEQEND|8 0|100 AcDbEntity";
}
}

TEST_F(FileEntities, olderFlatPolylineWithBulge)
{
    read("0 POLYLINE|8 0|100 AcDbEntity|100 AcDb2dPolyline|66 1|10 0|20 0|30 0|70 0"
         + vertices("AcDb2dVertex", {"10 0|20 0|30 0|42 1", "10 2|20 0|30 0"}));
    ZvDbObjectPointer<ZvDb2dPolyline> polyline(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(polyline);
    ASSERT_EQ(polyline->vertices().size(), 2u);
    expectBox(*polyline, 0, -1, 2, 0);
    EXPECT_GT(RecordingDraw(*polyline).paths[0].points.size(), 8u);
}

TEST_F(FileEntities, splineFrameOfAFittedPolylineIsNotShown)
{
    read("0 POLYLINE|8 0|100 AcDbEntity|100 AcDb2dPolyline|66 1|10 0|20 0|30 0|70 4"
         + vertices("AcDb2dVertex", {"10 0|20 0|30 0|70 8", "10 5|20 99|30 0|70 16", "10 9|20 1|30 0|70 8"}));
    ZvDbObjectPointer<ZvDb2dPolyline> polyline(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(polyline);
    expectBox(*polyline, 0, 0, 9, 1);
    EXPECT_EQ(RecordingDraw(*polyline).paths[0].points.size(), 2u);
}

TEST_F(FileEntities, polylineInSpace)
{
    read("0 POLYLINE|8 0|100 AcDbEntity|100 AcDb3dPolyline|66 1|10 0|20 0|30 0|70 9"
         + vertices("AcDb3dPolylineVertex", {"10 0|20 0|30 1|70 32", "10 2|20 0|30 2|70 32", "10 2|20 3|30 3|70 32"}));
    ZvDbObjectPointer<ZvDb2dPolyline> polyline(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(polyline);
    const RecordingDraw draw(*polyline);
    ASSERT_EQ(draw.paths.size(), 1u);
    EXPECT_TRUE(draw.paths[0].closed);
    expectPoint(draw.paths[0].points[2], 2, 3, 3);
}

TEST_F(FileEntities, aMeshIsDrawnByItsRowsAndColumns)
{
    read("0 POLYLINE|8 0|100 AcDbEntity|100 AcDbPolygonMesh|66 1|10 0|20 0|30 0|70 16|71 3|72 2"
         + vertices("AcDbPolygonMeshVertex", {"10 0|20 0|30 0|70 64", "10 0|20 1|30 0|70 64", "10 1|20 0|30 0|70 64", "10 1|20 1|30 0|70 64",
                     "10 2|20 0|30 0|70 64", "10 2|20 1|30 5|70 64"}));
    ZvDbObjectPointer<ZvDb2dPolyline> mesh(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(mesh);
    const RecordingDraw draw(*mesh);
    ASSERT_EQ(draw.paths.size(), 5u); // 3 rows of 2, 2 columns of 3
    EXPECT_EQ(draw.paths[0].points.size(), 2u);
    EXPECT_EQ(draw.paths[4].points.size(), 3u);
    expectPoint(draw.paths[4].points[2], 2, 1, 5);
}

TEST_F(FileEntities, aPolyfaceHidesTheEdgesItSays)
{
    read("0 POLYLINE|8 0|100 AcDbEntity|100 AcDbPolyFaceMesh|66 1|10 0|20 0|30 0|70 64|71 3|72 2"
         + vertices("AcDbPolyFaceMeshVertex", {"10 0|20 0|30 0|70 192", "10 1|20 0|30 0|70 192", "10 0|20 1|30 0|70 192",
                     "100 AcDbFaceRecord|10 0|20 0|30 0|70 128|71 1|72 -2|73 3", "100 AcDbFaceRecord|10 0|20 0|30 0|70 128|71 9|72 1|73 2"}));
    ZvDbObjectPointer<ZvDb2dPolyline> face(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(face);
    EXPECT_EQ(RecordingDraw(*face).paths.size(), 2u); // 1-2 and 3-1; a face of unknown vertices shows nothing
}

TEST_F(FileEntities, splines)
{
    read("0 SPLINE|8 0|100 AcDbEntity|100 AcDbSpline|70 8|71 3|72 8|73 4|74 0|40 0|40 0|40 0|40 0|40 1|40 1|40 1|40 1|10 0|20 0|30 0|"
         "10 0|20 4|30 0|10 4|20 4|30 0|10 4|20 0|30 0|"
         "0 SPLINE|8 0|100 AcDbEntity|100 AcDbSpline|70 8|71 3|72 0|73 0|74 3|11 0|21 0|31 0|11 2|21 3|31 0|11 5|21 0|31 0");
    {
        ZvDbObjectPointer<ZvDbSpline> spline(ids[0], ZvDb::kForRead);
        ASSERT_TRUE(spline);
        EXPECT_EQ(spline->controlPoints().size(), 4u);
        expectBox(*spline, 0, 0, 4, 3, 1e-4); // the middle of this curve is at 3/4 of its frame
        std::vector<ZvGePoint3d> coarse;
        std::vector<ZvGePoint3d> fine;
        spline->sample(0.5, coarse);
        spline->sample(0.0001, fine);
        EXPECT_LT(coarse.size(), fine.size());
    }
    ZvDbObjectPointer<ZvDbSpline> through(ids[1], ZvDb::kForRead);
    ASSERT_TRUE(through);
    const RecordingDraw draw(*through);
    ASSERT_EQ(draw.paths.size(), 1u);
    expectPoint(draw.paths[0].points.front(), 0, 0);
    expectPoint(draw.paths[0].points.back(), 5, 0);
    EXPECT_GT(draw.paths[0].points.size(), 10u);
}

TEST_F(FileEntities, alignedTextsSpeakOfTheSecondPoint)
{
    read("0 TEXT|8 0|100 AcDbEntity|100 AcDbText|10 1|20 1|30 0|40 2|1 Middle|72 4|11 5|21 6|31 0|100 AcDbText|"
         "0 TEXT|8 0|100 AcDbEntity|100 AcDbText|10 1|20 1|30 0|40 2|1 Right|72 2|11 5|21 6|31 0|100 AcDbText|73 3|"
         "0 TEXT|8 0|100 AcDbEntity|100 AcDbText|10 1|20 1|30 0|40 2|1 Fit|72 5|11 1|21 9|31 0|100 AcDbText");
    ZvGiText text;
    {
        ZvDbObjectPointer<ZvDbText> middle(ids[0], ZvDb::kForRead);
        ASSERT_TRUE(middle);
        middle->describe(text);
        EXPECT_EQ(text.horizontal, ZvGiText::kMiddle);
        expectPoint(text.position, 5, 6);
    }
    {
        ZvDbObjectPointer<ZvDbText> right(ids[1], ZvDb::kForRead);
        right->describe(text);
        EXPECT_EQ(text.horizontal, ZvGiText::kRight);
        EXPECT_EQ(text.vertical, ZvGiText::kTop);
        ZvGeExtents3d box;
        ASSERT_EQ(right->getGeomExtents(box), Zv::eOk);
        EXPECT_NEAR(box.maximum.x, 5.0, 1e-9);
        EXPECT_NEAR(box.maximum.y, 6.0, 1e-9);
    }
    ZvDbObjectPointer<ZvDbText> fit(ids[2], ZvDb::kForRead);
    fit->describe(text);
    EXPECT_EQ(text.horizontal, ZvGiText::kFit);
    expectPoint(text.position, 1, 1);
    expectPoint(text.secondPosition, 1, 9);
    EXPECT_NEAR(text.direction.y, 1.0, 1e-12); // along its points, whatever the rotation says
}

TEST_F(FileEntities, referencesInRowsAndColumns)
{
    read("0 INSERT|8 0|100 AcDbEntity|100 AcDbMInsertBlock|2 Door|10 10|20 0|30 0|50 90|70 3|71 2|44 5|45 7", kDoor);
    ZvDbObjectPointer<ZvDbBlockReference> insert(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(insert);
    const RecordingDraw draw(*insert);
    ASSERT_EQ(draw.blocks.size(), 6u);
    // Columns run along the turned X axis, rows along the turned Y axis.
    const ZvGePoint3d last = ZvGePoint3d(1, 1, 0).transformBy(draw.blocks[5].matrix);
    expectPoint(last, 10 - 7, 10);
    expectBox(*insert, 10 - 7 - 1, 0, 10, 10 + 2);
}

TEST_F(FileEntities, aReferenceMirroredByItsNormal)
{
    read("0 INSERT|8 0|100 AcDbEntity|100 AcDbBlockReference|2 Door|10 10|20 0|30 0|210 0|220 0|230 -1", kDoor);
    ZvDbObjectPointer<ZvDbBlockReference> insert(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(insert);
    expectPoint(insert->position(), -10, 0);
    expectPoint(ZvGePoint3d(3, 2, 0).transformBy(insert->blockTransform()), -12, 1);
}

namespace {
const char kWithAttributes[] =
    "0 INSERT|8 0|100 AcDbEntity|100 AcDbBlockReference|66 1|2 Door|10 10|20 0|30 0|"
    "0 ATTRIB|8 0|62 1|100 AcDbEntity|100 AcDbText|10 11|20 1|30 0|40 2|1 seen|100 AcDbAttribute|2 NAME|70 0|"
    "0 ATTRIB|8 0|100 AcDbEntity|100 AcDbText|10 12|20 2|30 0|40 2|1 not seen|100 AcDbAttribute|2 CODE|70 1|0 SEQEND|8 0|100 AcDbEntity";
}

TEST_F(FileEntities, aReferenceShowsItsAttributes)
{
    read(kWithAttributes, kDoor);
    ZvDbObjectPointer<ZvDbBlockReference> insert(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(insert);
    ASSERT_EQ(insert->attributeIds().size(), 2u);
    RecordingDraw draw(*insert);
    ASSERT_EQ(draw.texts.size(), 1u);
    EXPECT_EQ(draw.texts[0].text, "seen");
    EXPECT_TRUE(draw.traits().color.isByLayer()); // its own again, behind the red attribute
}

TEST_F(FileEntities, attributesGoWithTheirReference)
{
    read(kWithAttributes, kDoor);
    ZvDbObjectId copy;
    ASSERT_EQ(zvdbCopyEntity(ids[0], database->modelSpaceId(), ZvGeMatrix3d::translation({0, 50, 0}), copy), Zv::eOk);
    {
        ZvDbObjectPointer<ZvDbBlockReference> insert(ids[0], ZvDb::kForWrite);
        ASSERT_EQ(insert->transformBy(ZvGeMatrix3d::translation({100, 0, 0})), Zv::eOk);
        ASSERT_EQ(insert->setLineWeight(ZvDb::kLnWt050, true), Zv::eOk);
        const RecordingDraw draw(*insert);
        expectPoint(draw.texts.at(0).position, 111, 1);
        ZvDbObjectPointer<ZvDbAttribute> attribute(insert->attributeIds()[0], ZvDb::kForRead);
        EXPECT_EQ(attribute->lineWeight(), ZvDb::kLnWt050);
    }
    ZvDbObjectPointer<ZvDbBlockReference> insert(copy, ZvDb::kForRead);
    ASSERT_TRUE(insert);
    ASSERT_EQ(insert->attributeIds().size(), 2u);
    EXPECT_NE(insert->attributeIds()[0], ZvDbObjectId());
    expectPoint(RecordingDraw(*insert).texts.at(0).position, 11, 51);
    ZvDbObjectPointer<ZvDbAttribute> attribute(insert->attributeIds()[0], ZvDb::kForRead);
    EXPECT_EQ(attribute->ownerId(), copy);
    EXPECT_EQ(attribute->tag(), "NAME");
    EXPECT_EQ(attribute->lineWeight(), ZvDb::kLnWtByLayer);
}

namespace {
/// A hatch around these loops.
std::string hatch(const std::string &loops, int count, const std::string &behind = "75 0|76 1", const std::string &head = "2 SOLID|70 1")
{
    return "0 HATCH|8 0|100 AcDbEntity|100 AcDbHatch|10 0|20 0|30 0|210 0|220 0|230 1|" + head + "|71 0|91 " + std::to_string(count)
        + "|" + loops + "|" + behind + "|98 0";
}
const char kOuterSquare[] = "92 3|72 0|73 1|93 4|10 0|20 0|10 10|20 0|10 10|20 10|10 0|20 10|97 0";
const char kInnerSquare[] = "92 18|72 0|73 1|93 4|10 2|20 2|10 8|20 2|10 8|20 8|10 2|20 8|97 0";
const char kInmostSquare[] = "92 2|72 0|73 1|93 4|10 4|20 4|10 6|20 4|10 6|20 6|10 4|20 6|97 0";
}

TEST_F(FileEntities, hatchLoopsOfBulges)
{
    read(hatch("92 3|72 1|73 1|93 2|10 0|20 0|42 1|10 2|20 0|42 1|97 0", 1));
    ZvDbObjectPointer<ZvDbHatch> entity(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(entity);
    expectBox(*entity, 0, -1, 2, 1); // two half circles
    ZvGiFill fill;
    entity->describe(fill, 0.001);
    ASSERT_EQ(fill.loops.size(), 1u);
    for (const ZvGePoint3d &p : fill.loops[0])
        EXPECT_NEAR(p.distanceTo({1, 0, 0}), 1.0, 1e-9);
    EXPECT_GT(fill.loops[0].front().distanceTo(fill.loops[0].back()), 1e-6); // the start is not repeated
    EXPECT_TRUE(fill.solid);
}

TEST_F(FileEntities, hatchLoopsOfEdgesInAnyDirection)
{
    // A line to the right, a clockwise half circle told by clockwise angles, back along a line given the wrong way round.
    read(hatch("92 1|93 4|72 1|10 0|20 0|11 4|21 0|72 2|10 4|20 1|40 1|50 270|51 90|73 1|72 1|10 0|20 2|11 4|21 2|"
               "72 2|10 0|20 1|40 1|50 270|51 450|73 0|97 0", 1));
    ZvDbObjectPointer<ZvDbHatch> entity(ids[0], ZvDb::kForWrite);
    ASSERT_TRUE(entity);
    ZvGiFill fill;
    entity->describe(fill, 0.001);
    ASSERT_EQ(fill.loops.size(), 1u);
    const std::vector<ZvGePoint3d> &loop = fill.loops[0];
    double area = 0.0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const ZvGePoint3d &a = loop[i];
        const ZvGePoint3d &b = loop[(i + 1) % loop.size()];
        area += 0.5 * (a.x * b.y - a.y * b.x);
    }
    // The clockwise edge runs from 90 down to -90 degrees: a bite out of the left side, as large as the bulge at the right.
    EXPECT_NEAR(std::fabs(area), 8.0, 0.01);
    const std::size_t points = loop.size();
    for (const ZvGeMatrix3d &map : {ZvGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0}), ZvGeMatrix3d::rotation(0.5, ZvGeVector3d::kZAxis)}) {
        entity->describe(fill, 0.001);
        std::vector<ZvGePoint3d> expected = fill.loops[0];
        ASSERT_EQ(entity->transformBy(map), Zv::eOk);
        entity->describe(fill, 0.001);
        ASSERT_EQ(fill.loops[0].size(), points);
        for (ZvGePoint3d &p : expected) {
            p.transformBy(map);
            double nearest = 1e300;
            for (const ZvGePoint3d &q : fill.loops[0])
                nearest = std::min(nearest, p.distanceTo(q));
            EXPECT_LT(nearest, 1e-9);
        }
    }
}

TEST_F(FileEntities, hatchStylesChooseTheirLoops)
{
    const std::string loops = std::string(kOuterSquare) + "|" + kInnerSquare + "|" + kInmostSquare;
    read(hatch(loops, 3, "75 0|76 1") + "|" + hatch(loops, 3, "75 1|76 1") + "|" + hatch(loops, 3, "75 2|76 1"));
    const std::size_t expected[] = {3, 2, 1};
    for (int i = 0; i < 3; ++i) {
        ZvDbObjectPointer<ZvDbHatch> entity(ids[std::size_t(i)], ZvDb::kForRead);
        ASSERT_TRUE(entity);
        EXPECT_EQ(entity->numLoops(), 3);
        ZvGiFill fill;
        entity->describe(fill, 0.01);
        EXPECT_EQ(fill.loops.size(), expected[i]) << i;
    }
}

TEST_F(FileEntities, hatchPatternsTurnAndScale)
{
    read(hatch(kOuterSquare, 1, "75 0|76 1|52 0|41 1|77 0|78 2|53 0|43 0|44 0|45 0|46 2|79 2|49 1|49 -0.5|53 45|43 0|44 0|45 0|46 0|79 0",
               "2 ANSI31|70 0"));
    ZvDbObjectPointer<ZvDbHatch> entity(ids[0], ZvDb::kForWrite);
    ASSERT_TRUE(entity);
    EXPECT_EQ(entity->patternName(), "ANSI31");
    ZvGiFill fill;
    entity->describe(fill, 0.01);
    EXPECT_FALSE(fill.solid);
    ASSERT_EQ(fill.pattern.size(), 1u); // the second family would lie on itself without end
    ASSERT_EQ(entity->transformBy(ZvGeMatrix3d::rotation(kPi / 2, ZvGeVector3d::kZAxis) * ZvGeMatrix3d::scaling(3)), Zv::eOk);
    entity->describe(fill, 0.01);
    EXPECT_NEAR(fill.pattern[0].angle, kPi / 2, 1e-9);
    EXPECT_NEAR(fill.pattern[0].offset.x, -6.0, 1e-9);
    EXPECT_NEAR(fill.pattern[0].dashes[0], 3.0, 1e-9);
    EXPECT_NEAR(fill.pattern[0].dashes[1], -1.5, 1e-9);
}

namespace {
const char kPicture[] = "0 BLOCK|8 0|100 AcDbEntity|100 AcDbBlockBegin|2 *D1|70 1|10 0|20 0|30 0|3 *D1|0 LINE|8 0|100 AcDbEntity|"
                        "100 AcDbLine|10 0|20 5|30 0|11 8|21 5|31 0|0 ENDBLK|8 0|100 AcDbEntity|100 AcDbBlockEnd";

std::string dimension(const std::string &block)
{
    return "0 DIMENSION|8 0|100 AcDbEntity|100 AcDbDimension|" + block + "10 8|20 5|30 0|11 4|21 6|31 0|70 0|3 Standard|"
           "100 AcDbAlignedDimension|13 0|23 0|33 0|14 8|24 1|34 0|50 0|100 AcDbRotatedDimension";
}
}

TEST_F(FileEntities, aDimensionShowsItsBlock)
{
    read(dimension("2 *D1|"), kPicture);
    ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(entity);
    const RecordingDraw draw(*entity);
    ASSERT_EQ(draw.count(), 1u);
    ASSERT_EQ(draw.blocks.size(), 1u);
    EXPECT_TRUE(draw.blocks[0].matrix.isEqualTo(ZvGeMatrix3d()));
    expectBox(*entity, 0, 5, 8, 5);
}

TEST_F(FileEntities, movedAndCopiedDimensionsShowTheirPictureThere)
{
    read(dimension("2 *D1|"), kPicture);
    ZvDbObjectId copy;
    ASSERT_EQ(zvdbCopyEntity(ids[0], database->modelSpaceId(), ZvGeMatrix3d::translation({100, 0, 0}), copy), Zv::eOk);
    database->beginUndoStep("MOVE");
    {
        ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForWrite);
        ASSERT_EQ(entity->transformBy(ZvGeMatrix3d::translation({0, 10, 0})), Zv::eOk);
        ASSERT_EQ(entity->transformBy(ZvGeMatrix3d::translation({1, 0, 0})), Zv::eOk);
        expectBox(*entity, 1, 15, 9, 15);
    }
    database->endUndoStep();
    {
        ZvDbObjectPointer<ZvDbDimension> entity(copy, ZvDb::kForRead);
        expectBox(*entity, 100, 5, 108, 5);
    }
    ASSERT_TRUE(database->undo());
    ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForRead);
    expectBox(*entity, 0, 5, 8, 5);
}

TEST_F(FileEntities, aTurnedDimensionGetsAPictureOfItsOwn)
{
    read(dimension("2 *D1|"), kPicture);
    ZvDbObjectId before;
    database->beginUndoStep("ROTATE");
    {
        ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForWrite);
        before = entity->dimBlockId();
        ASSERT_EQ(entity->transformBy(ZvGeMatrix3d::rotation(kPi / 2, ZvGeVector3d::kZAxis)), Zv::eOk);
        EXPECT_FALSE(entity->dimBlockId().isNull());
        EXPECT_NE(entity->dimBlockId(), before);
        expectBox(*entity, -5, 0, -5, 8);
    }
    database->endUndoStep();
    ASSERT_TRUE(database->undo());
    ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForRead);
    EXPECT_EQ(entity->dimBlockId(), before);
    expectBox(*entity, 0, 5, 8, 5);
}

TEST_F(FileEntities, aScaledDimensionShowsItsNewMeasure)
{
    read(dimension("2 *D1|"), kPicture);
    setDecimals(2, 8);
    ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForWrite);
    const ZvDbObjectId before = entity->dimBlockId();
    ASSERT_EQ(entity->transformBy(ZvGeMatrix3d::scaling(2)), Zv::eOk);
    ASSERT_FALSE(entity->dimBlockId().isNull());
    EXPECT_NE(entity->dimBlockId(), before);
    ZvDbObjectPointer<ZvDbBlockTableRecord> block(entity->dimBlockId(), ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *iterator = nullptr;
    ASSERT_EQ(block->newIterator(iterator), Zv::eOk);
    std::vector<std::string> texts;
    for (std::unique_ptr<ZvDbBlockTableRecordIterator> at(iterator); !at->done(); at->step()) {
        ZvDbObjectPointer<ZvDbMText> text(at->entityId(), ZvDb::kForRead);
        if (text) {
            texts.push_back(utf8(text->contents()));
            expectPoint(text->location(), 8, 12);
            EXPECT_EQ(text->attachment(), 5);
        }
    }
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0], "16");
}

TEST_F(FileEntities, aRestyledDimensionIsDrawnAnew)
{
    read(dimension("2 *D1|"), kPicture);
    setDecimals(3, 0);
    ZvDbObjectId before;
    database->beginUndoStep("DIMSTYLE");
    {
        ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForWrite);
        before = entity->dimBlockId();
        ASSERT_EQ(entity->setDimstyleData(database->dimstyle()), Zv::eOk);
        EXPECT_NE(entity->dimBlockId(), before);
        ASSERT_FALSE(entity->dimBlockId().isNull());
        ZvDbObjectPointer<ZvDbBlockTableRecord> block(entity->dimBlockId(), ZvDb::kForRead);
        EXPECT_TRUE(block->isAnonymous());
        EXPECT_EQ(block->entityCount(), 6); // two extension lines, the dimension line, two arrow heads, the text
    }
    database->endUndoStep();
    ASSERT_TRUE(database->undo());
    ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForRead);
    EXPECT_EQ(entity->dimBlockId(), before);
}

TEST_F(FileEntities, aDimensionWithoutABlockIsDrawnFromItsPoints)
{
    read(dimension(""));
    setDecimals(2, 8);
    ZvDbObjectPointer<ZvDbDimension> entity(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(entity);
    const RecordingDraw draw(*entity);
    EXPECT_EQ(draw.paths.size(), 3u); // two extension lines and the dimension line
    EXPECT_EQ(draw.fills.size(), 2u); // two arrow heads
    ASSERT_EQ(draw.mtexts.size(), 1u);
    EXPECT_EQ(utf8(draw.mtexts[0].contents), "8");
    expectPoint(draw.mtexts[0].position, 4, 6);
    bool found = false;
    for (const RecordingDraw::Path &path : draw.paths)
        found = found || (path.points[0].isEqualTo({0, 5, 0}) && path.points[1].isEqualTo({8, 5, 0}));
    EXPECT_TRUE(found);
}

TEST_F(FileEntities, otherDimensionsWithoutABlock)
{
    const std::string head = "0 DIMENSION|8 0|100 AcDbEntity|100 AcDbDimension|10 0|20 0|30 0|70 ";
    read(head + "4|3 Standard|100 AcDbRadialDimension|15 3|25 4|35 0|"
         + head + "3|3 Standard|1 <> H7|100 AcDbDiametricDimension|15 6|25 8|35 0|"
         + "0 DIMENSION|8 0|100 AcDbEntity|100 AcDbDimension|10 5|20 5|30 0|70 5|3 Standard|100 AcDb3PointAngularDimension|"
           "13 10|23 0|33 0|14 0|24 10|34 0|15 0|25 0|35 0|"
         + "0 DIMENSION|8 0|100 AcDbEntity|100 AcDbDimension|10 0|20 10|30 0|70 2|3 Standard|100 AcDb2LineAngularDimension|"
           "13 0|23 0|33 0|14 10|24 0|34 0|15 0|25 0|35 0|16 5|26 5|36 0");
    setDecimals(1, 0);
    const char *texts[] = {"R5.0", "%%c10.0 H7", "90\xC2\xB0", "90\xC2\xB0"};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        ZvDbObjectPointer<ZvDbDimension> entity(ids[i], ZvDb::kForRead);
        ASSERT_TRUE(entity);
        const RecordingDraw draw(*entity);
        ASSERT_EQ(draw.mtexts.size(), 1u);
        EXPECT_EQ(utf8(draw.mtexts[0].contents), texts[i]);
        if (i >= 2) {
            ASSERT_EQ(draw.arcs.size(), 1u);
            EXPECT_NEAR(draw.arcs[0].start, 0.0, 1e-9);
            EXPECT_NEAR(draw.arcs[0].sweep, kPi / 2, 1e-9);
            EXPECT_NEAR(draw.arcs[0].radius, std::sqrt(50.0), 1e-9);
        }
    }
}

TEST_F(FileEntities, leadersHaveAnArrowAtTheirStart)
{
    read("0 LEADER|8 0|100 AcDbEntity|100 AcDbLeader|3 Standard|71 1|72 0|73 3|76 3|10 0|20 0|30 0|10 20|20 20|30 0|10 40|20 20|30 0");
    ZvDbObjectPointer<ZvDbLeader> leader(ids[0], ZvDb::kForRead);
    ASSERT_TRUE(leader);
    const RecordingDraw draw(*leader);
    ASSERT_EQ(draw.paths.size(), 1u);
    EXPECT_EQ(draw.paths[0].points.size(), 3u);
    ASSERT_EQ(draw.fills.size(), 1u);
    expectPoint(draw.fills[0].loops[0][0], 0, 0);
}

TEST_F(FileEntities, imagesAndTheirClips)
{
    const std::string body = "90 0|10 5|20 5|30 0|11 0.1|21 0|31 0|12 0|22 0.1|32 0|13 100|23 50|340 0|";
    read("0 IMAGE|8 0|100 AcDbEntity|100 AcDbRasterImage|" + body + "70 7|280 1|71 1|91 2|14 9.5|24 9.5|14 59.5|24 39.5|"
         + "0 WIPEOUT|8 0|100 AcDbEntity|100 AcDbWipeout|90 0|10 1|20 2|30 0|11 4|21 0|31 0|12 0|22 4|32 0|13 1|23 1|340 0|70 7|280 1|"
           "71 2|91 4|14 -0.5|24 -0.5|14 0.5|24 -0.5|14 0.5|24 0.5|14 -0.5|24 -0.5");
    {
        ZvDbObjectPointer<ZvDbRasterImage> image(ids[0], ZvDb::kForRead);
        ASSERT_TRUE(image);
        const RecordingDraw draw(*image);
        ASSERT_EQ(draw.images.size(), 1u);
        expectPoint(draw.images[0].origin, 5, 5);
        EXPECT_NEAR(draw.images[0].u.x, 10.0, 1e-9);
        EXPECT_NEAR(draw.images[0].v.y, 5.0, 1e-9);
        ASSERT_EQ(draw.images[0].clip.size(), 4u);
        EXPECT_NEAR(draw.images[0].clip[0].x, 0.1, 1e-9);
        EXPECT_NEAR(draw.images[0].clip[0].y, 0.8, 1e-9); // rows count downwards
        expectBox(*image, 6, 6, 11, 9);
    }
    ZvDbObjectPointer<ZvDbWipeout> wipeout(ids[1], ZvDb::kForRead);
    ASSERT_TRUE(wipeout);
    const RecordingDraw draw(*wipeout);
    ASSERT_EQ(draw.fills.size(), 1u);
    EXPECT_TRUE(draw.fills[0].wipeout);
    expectBox(*wipeout, 1, 2, 5, 6);
}

TEST_F(FileEntities, facesHideTheEdgesTheySay)
{
    const std::string corners = "10 0|20 0|30 0|11 4|21 0|31 0|12 4|22 3|32 1|13 0|23 3|33 1";
    read("0 3DFACE|8 0|100 AcDbEntity|100 AcDbFace|" + corners + "|0 3DFACE|8 0|100 AcDbEntity|100 AcDbFace|" + corners + "|70 5");
    {
        ZvDbObjectPointer<ZvDbFace> whole(ids[0], ZvDb::kForRead);
        ASSERT_TRUE(whole);
        const RecordingDraw draw(*whole);
        ASSERT_EQ(draw.paths.size(), 1u);
        EXPECT_TRUE(draw.paths[0].closed);
    }
    ZvDbObjectPointer<ZvDbFace> partly(ids[1], ZvDb::kForRead);
    EXPECT_FALSE(partly->isEdgeVisible(0));
    EXPECT_TRUE(partly->isEdgeVisible(1));
    EXPECT_EQ(RecordingDraw(*partly).paths.size(), 2u);
}

TEST_F(FileEntities, theDirectionOfFormattedText)
{
    const std::string head = "0 MTEXT|8 0|100 AcDbEntity|100 AcDbMText|10 1|20 2|30 0|40 2.5|41 50|71 5|72 1|1 abc|";
    read(head + "50 90|" + head + "11 0|21 -1|31 0");
    ZvGiMText text;
    {
        ZvDbObjectPointer<ZvDbMText> byAngle(ids[0], ZvDb::kForWrite);
        ASSERT_TRUE(byAngle);
        byAngle->describe(text);
        EXPECT_NEAR(text.direction.y, 1.0, 1e-9);
        EXPECT_EQ(text.attachment, 5);
        EXPECT_EQ(text.width, 50.0);
        ASSERT_EQ(byAngle->transformBy(ZvGeMatrix3d::rotation(kPi / 2, ZvGeVector3d::kZAxis)), Zv::eOk);
        byAngle->describe(text);
        EXPECT_NEAR(text.direction.x, -1.0, 1e-9);
        expectPoint(text.position, -2, 1);
    }
    ZvDbObjectPointer<ZvDbMText> byVector(ids[1], ZvDb::kForRead);
    byVector->describe(text);
    EXPECT_NEAR(text.direction.y, -1.0, 1e-9);
}

TEST_F(FileEntities, whatIsNotModelledHasTheBoxOfItsPoints)
{
    read("0 HELIX|8 0|100 AcDbEntity|100 AcDbSpline|10 1|20 2|30 0|11 7|21 9|31 0");
    ZvDbObjectPointer<ZvDbEntity> entity(ids[0], ZvDb::kForWrite);
    ASSERT_TRUE(entity);
    const auto *proxy = zvrxCast<ZvDbProxyEntity>(entity.get());
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->originalFileName(), "HELIX");
    expectBox(*proxy, 1, 2, 7, 9);
    EXPECT_GT(RecordingDraw(*proxy).paths.size(), 8u);
    EXPECT_EQ(entity->transformBy(ZvGeMatrix3d::translation({1, 0, 0})), Zv::eInvalidInput);
}
