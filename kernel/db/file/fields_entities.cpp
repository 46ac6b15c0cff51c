// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"
#include "drawing_file.h"
#include "zvdbdatabase_p.h"
#include "zvdbfiler.h"

#include <cmath>

namespace {

const ZvGeVector3d kUp(0, 0, 1);

/// A point that an older flat record may lack takes the place of the one before it.
void corner(ZvDbFiler &filer, int code, ZvGePoint3d &value, const ZvGePoint3d &before)
{
    if (filer.isNewRecord())
        filer.point(code, value);
    else
        filer.point(code, value, before);
}

bool isInPaper(const ZvDbEntity &entity)
{
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(&entity);
    return d && zvdbSpaceOfBlock(d->nameOf(entity.ownerId())) == 1;
}

} // namespace

void zvdbPropertyFields(ZvDbFiler &filer, ZvDbEntityProperties &properties)
{
    filer.nameIn(ZvDbFiler::kLayers, 8, properties.layer, true);
    filer.nameIn(ZvDbFiler::kLinetypes, 6, properties.linetype);
    filer.since(ZvDb::kR2007);
    filer.handle(347, properties.material);
    filer.since(ZvDb::kR12);
    filer.color(62, 420, 430, properties.color, ZvCmColor());
    filer.since(ZvDb::kR2004);
    int transparency = 0;
    switch (properties.transparency.method()) {
    case ZvCmTransparency::kByBlock:
        transparency = 0x01000000;
        break;
    case ZvCmTransparency::kByAlpha:
        transparency = 0x02000000 | properties.transparency.alpha();
        break;
    default:
        break;
    }
    filer.integer(440, transparency, 0);
    filer.since(ZvDb::kR2000);
    int weight = properties.lineWeight;
    filer.integer(370, weight, ZvDb::kLnWtByLayer);
    filer.since(ZvDb::kR13);
    filer.real(48, properties.linetypeScale, 1.0);
    int invisible = properties.visibility;
    filer.integer(60, invisible, 0);
    filer.since(ZvDb::kR2000);
    int styleType = properties.plotStyleType;
    filer.integer(380, styleType, 0);
    filer.handle(390, properties.plotStyle);
    filer.since(ZvDb::kR12);
    if (!filer.isReading())
        return;
    properties.transparency = ZvCmTransparency();
    if (transparency & 0x02000000)
        properties.transparency.setAlpha(std::uint8_t(transparency));
    else if (transparency & 0x01000000)
        properties.transparency.setMethod(ZvCmTransparency::kByBlock);
    properties.lineWeight = ZvDb::LineWeight(weight);
    properties.visibility = invisible ? ZvDb::kInvisible : ZvDb::kVisible;
    properties.plotStyleType
        = properties.plotStyle.isNull() ? ZvDb::PlotStyleNameType(styleType & 3) : ZvDb::kPlotStyleById;
}

void ZvDbEntity::fileFields(ZvDbFiler &filer)
{
    ZvDbObject::fileFields(filer);
    filer.subclass("AcDbEntity");
    if (filer.isReading())
        return; // the database has the shared properties since the file was read
    int inPaper = filer.isNewRecord() && isInPaper(*this) ? 1 : 0;
    if (inPaper)
        filer.integer(67, inPaper);
    ZvDbEntityProperties properties = zvdbProperties(*this);
    zvdbPropertyFields(filer, properties);
}

void ZvDbLine::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbLine");
    filer.point(10, m_start);
    filer.point(11, m_end);
}

void ZvDbRay::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbRay");
    filer.point(10, m_base);
    filer.vector(11, m_direction);
}

void ZvDbXline::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbXline");
    filer.point(10, m_base);
    filer.vector(11, m_direction);
}

void ZvDbPoint::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbPoint");
    filer.point(10, m_position);
}

void ZvDbCircle::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbCircle");
    filer.point(10, m_center);
    filer.real(40, m_radius);
    filer.vector(210, m_normal, kUp);
}

void ZvDbArc::fileFields(ZvDbFiler &filer)
{
    ZvDbCircle::fileFields(filer);
    filer.subclass("AcDbArc");
    filer.angle(50, m_startAngle);
    filer.angle(51, m_endAngle);
}

void ZvDbEllipse::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbEllipse");
    filer.point(10, m_center);
    filer.vector(11, m_majorAxis);
    filer.vector(210, m_normal, kUp);
    filer.real(40, m_ratio);
    filer.real(41, m_start);
    filer.real(42, m_end);
}

void ZvDbPolyline::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbPolyline");
    filer.count(90, m_vertices.size());
    filer.integer(70, m_flags);
    filer.real(43, m_constantWidth, 0.0);
    filer.real(38, m_elevation, 0.0);
    ZvDbFiler::Groups groups;
    if (!filer.isReading()) {
        for (const Vertex &vertex : m_vertices) {
            const bool isWide = vertex.startWidth != 0.0 || vertex.endWidth != 0.0;
            groups.emplace_back(10, vertex.point.x);
            groups.emplace_back(20, vertex.point.y);
            groups.emplace_back(40, vertex.startWidth, !isWide);
            groups.emplace_back(41, vertex.endWidth, !isWide);
            groups.emplace_back(42, vertex.bulge, vertex.bulge == 0.0);
        }
    }
    filer.run({10, 20, 40, 41, 42, 91}, groups);
    if (filer.isReading()) {
        m_vertices.clear();
        for (const ZvDbFiler::Group &group : groups) {
            if (group.code == 10) {
                m_vertices.emplace_back();
                m_vertices.back().point.x = group.real;
                continue;
            }
            Vertex &vertex = m_vertices.back(); // the run begins with a 10
            if (group.code == 20)
                vertex.point.y = group.real;
            else if (group.code == 40)
                vertex.startWidth = group.real;
            else if (group.code == 41)
                vertex.endWidth = group.real;
            else if (group.code == 42)
                vertex.bulge = group.real;
        }
    }
    filer.vector(210, m_normal, kUp);
}

void ZvDb2dPolyline::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    const char *const markers[] = {"AcDb3dPolyline", "AcDbPolygonMesh", "AcDbPolyFaceMesh"};
    const int kinds[] = {8, 16, 64};
    const char *marker = "AcDb2dPolyline";
    for (int i = 0; i < 3; ++i) {
        if (filer.isNewRecord() ? (m_flags & kinds[i]) != 0 : filer.hasSubclass(markers[i]))
            marker = markers[i];
    }
    filer.subclass(marker);
    filer.constant(66, 1);
    filer.elevation(10, m_elevation);
    filer.integer(70, m_flags, filer.isNewRecord() ? -1 : 0);
    filer.real(40, m_startWidth, 0.0);
    filer.real(41, m_endWidth, 0.0);
    filer.integer(71, m_meshM, 0);
    filer.integer(72, m_meshN, 0);
    filer.vector(210, m_normal, kUp);
}

void ZvDbObjectAccess::vertexFields(ZvDb2dPolyline &polyline, std::size_t number, ZvDbFiler &filer)
{
    ZvDb2dPolyline::Vertex &vertex = polyline.m_vertices[number];
    const int kind = polyline.m_flags;
    filer.subclass("AcDbEntity");
    if (filer.isNewRecord()) {
        // The vertices look as the polyline does.
        ZvDbEntityProperties properties = zvdbProperties(polyline);
        zvdbPropertyFields(filer, properties);
    }
    const bool isFace = filer.isNewRecord() ? (kind & 64) != 0 && (vertex.flags & 128) != 0 && (vertex.flags & 64) == 0
                                            : filer.hasSubclass("AcDbFaceRecord");
    if (!isFace)
        filer.subclass("AcDbVertex");
    filer.subclass((kind & 8)        ? "AcDb3dPolylineVertex"
                       : (kind & 16) ? "AcDbPolygonMeshVertex"
                       : isFace      ? "AcDbFaceRecord"
                       : (kind & 64) ? "AcDbPolyFaceMeshVertex"
                                     : "AcDb2dVertex");
    filer.point(10, vertex.point);
    // A vertex that says nothing is as wide as its polyline says.
    filer.real(40, vertex.startWidth, polyline.m_startWidth);
    filer.real(41, vertex.endWidth, polyline.m_endWidth);
    filer.real(42, vertex.bulge, 0.0);
    filer.integer(70, vertex.flags, 0);
    for (int i = 0; i < 4; ++i)
        filer.integer(71 + i, vertex.faces[i], 0);
}

void ZvDbObjectAccess::addVertex(ZvDb2dPolyline &polyline, ZvDbFiler &filer)
{
    polyline.m_vertices.emplace_back();
    vertexFields(polyline, polyline.m_vertices.size() - 1, filer);
}

void ZvDbObjectAccess::setAttributes(ZvDbBlockReference &reference, std::vector<ZvDbObjectId> attributes)
{
    reference.m_attributes = std::move(attributes);
}

void ZvDbSpline::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbSpline");
    filer.integer(70, m_flags);
    filer.integer(71, m_degree);
    filer.count(72, m_knots.size());
    filer.count(73, m_controlPoints.size());
    filer.count(74, m_fitPoints.size());
    filer.constant(42, 1e-9);
    filer.constant(43, 1e-10);
    filer.reals(40, m_knots);
    filer.reals(41, m_weights);
    filer.points(10, m_controlPoints);
    filer.points(11, m_fitPoints);
}

void ZvDbSolid::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbTrace");
    for (int i = 0; i < 3; ++i)
        filer.point(10 + i, m_points[i]);
    corner(filer, 13, m_points[3], m_points[2]);
    filer.vector(210, m_normal, kUp);
}

void ZvDbFace::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbFace");
    for (int i = 0; i < 3; ++i)
        filer.point(10 + i, m_points[i]);
    corner(filer, 13, m_points[3], m_points[2]);
    filer.integer(70, m_hiddenEdges, 0);
}

void ZvDbBlockReference::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass(filer.hasSubclass("AcDbMInsertBlock") || (filer.isNewRecord() && (m_columns > 1 || m_rows > 1))
                       ? "AcDbMInsertBlock"
                       : "AcDbBlockReference");
    if (filer.isNewRecord() && !m_attributes.empty())
        filer.constant(66, 1);
    filer.nameIn(ZvDbFiler::kBlocks, 2, m_block, true);
    filer.point(10, m_position);
    filer.real(41, m_scale.x, 1.0);
    filer.real(42, m_scale.y, 1.0);
    filer.real(43, m_scale.z, 1.0);
    filer.angle(50, m_rotation, 0.0);
    filer.integer(70, m_columns, 1);
    filer.integer(71, m_rows, 1);
    filer.real(44, m_columnSpacing, 0.0);
    filer.real(45, m_rowSpacing, 0.0);
    filer.vector(210, m_normal, kUp);
}

void ZvDbTable::fileFields(ZvDbFiler &filer)
{
    ZvDbBlockReference::fileFields(filer);
    filer.subclass("AcDbTable");
    filer.handle(342, m_tableStyle);
    if (filer.isNewRecord())
        filer.handle(343, m_block);
}

void ZvDbLeader::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbLeader");
    filer.nameIn(ZvDbFiler::kDimStyles, 3, m_style, true);
    if (filer.isNewRecord()) {
        int arrow = m_arrow ? 1 : 0;
        filer.integer(71, arrow);
    } else {
        filer.boolean(71, m_arrow, true);
    }
    filer.integer(72, m_pathType, 0);
    filer.constant(73, 3); // without an annotation
    filer.constants({74, 75}, 0);
    filer.constants({40, 41}, 1.0);
    filer.count(76, m_vertices.size());
    filer.points(10, m_vertices);
}

void ZvDbRasterImage::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    imageFields(filer, "AcDbRasterImage");
}

void ZvDbWipeout::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    imageFields(filer, "AcDbWipeout");
}

void ZvDbRasterImage::imageFields(ZvDbFiler &filer, const char *marker)
{
    filer.subclass(marker);
    filer.constant(90, 0);
    filer.point(10, m_position);
    filer.vector(11, m_u);
    filer.vector(12, m_v);
    filer.point2d(13, m_size);
    filer.handle(340, m_definition, true);
    filer.integer(70, m_displayFlags);
    filer.constant(280, 0);
    filer.constants({281, 282}, 50);
    filer.constant(283, 0);
    filer.constant(71, m_clip.size() == 2 ? 1 : 2);
    filer.count(91, m_clip.size());
    filer.points2d(14, m_clip);
    if (!filer.isReading())
        return;
    m_path = ZvString();
    for (const ZvDbFiler::Group &group : filer.groupsOf(m_definition, "AcDbRasterImageDef")) {
        if (group.code == 1 && m_path.isEmpty())
            m_path = group.text;
    }
}

void ZvDbViewport::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbViewport");
    filer.point(10, m_center);
    filer.real(40, m_width);
    filer.real(41, m_height);
    filer.integer(68, m_status, filer.isNewRecord() ? -1 : 1);
    filer.integer(69, m_number);
    // The oldest files keep the view in extended data of their own, which stays as it is.
    filer.since(ZvDb::kR13);
    const bool hasView = filer.isReading() || filer.isNewRecord() || filer.has(12);
    if (hasView)
        filer.point2d(12, m_viewCenter);
    filer.vector(16, m_direction, filer.isNewRecord() ? ZvGeVector3d() : kUp);
    filer.point(17, m_target, ZvGePoint3d());
    filer.constant(42, 50.0);
    filer.real(45, m_viewHeight, 1.0);
    filer.angle(51, m_twist, 0.0);
    filer.constant(72, 1000);
    filer.since(ZvDb::kR2000);
    filer.handles(331, m_frozenLayers);
    filer.constant(90, 0);
}

void ZvDbProxyEntity::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    if (!filer.isReading())
        return;
    m_points.clear();
    for (const ZvDbFiler::Group &group : filer.groupsOf(objectId(), nullptr)) {
        // Whatever stands under the codes of points is taken for one.
        if (group.code >= 10 && group.code <= 18)
            m_points.emplace_back(group.real, 0.0, 0.0);
        else if (group.code >= 20 && group.code <= 28 && !m_points.empty())
            m_points.back().y = group.real;
        else if (group.code >= 30 && group.code <= 37 && !m_points.empty())
            m_points.back().z = group.real;
    }
}
