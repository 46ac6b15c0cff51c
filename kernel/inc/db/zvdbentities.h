// SPDX-License-Identifier: MIT
#ifndef ZVDBENTITIES_H
#define ZVDBENTITIES_H

#include "db/zvdbentity.h"

#include <memory>
#include <vector>

// All lengths are drawing units, all angles radians, all points world coordinates unless a text says otherwise.

/// What every class of entities declares; \a FileName is the record's name in drawing files.
#define ZVDB_ENTITY_COMMON(ClassName, FileName)                                 \
    ZVRX_DECLARE_MEMBERS(ClassName)                                             \
public:                                                                         \
    ClassName();                                                                \
    const char *fileName() const override { return FileName; }                  \
    void fileFields(ZvDbFiler &filer) override;                                 \
    Zv::ErrorStatus transformBy(const ZvGeMatrix3d &matrix) override;           \
    Zv::ErrorStatus getGeomExtents(ZvGeExtents3d &extents) const override;      \
    void worldDraw(ZvGiWorldDraw &draw) const override;

/// A straight line.
class ZV_EXPORT ZvDbLine : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbLine, "LINE")
    /// From \a start to \a end.
    ZvDbLine(const ZvGePoint3d &start, const ZvGePoint3d &end);
    /// Where the line begins and ends.
    ZvGePoint3d startPoint() const { return m_start; }
    ZvGePoint3d endPoint() const { return m_end; }
    Zv::ErrorStatus setStartPoint(const ZvGePoint3d &point);
    Zv::ErrorStatus setEndPoint(const ZvGePoint3d &point);

private:
    ZvGePoint3d m_start;
    ZvGePoint3d m_end;
};

/// Endless from the base point in one direction.
class ZV_EXPORT ZvDbRay : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbRay, "RAY")
    /// Where the ray begins; any point of a construction line.
    ZvGePoint3d basePoint() const { return m_base; }
    Zv::ErrorStatus setBasePoint(const ZvGePoint3d &point);
    /// Of length 1.
    ZvGeVector3d unitDir() const { return m_direction; }
    Zv::ErrorStatus setUnitDir(const ZvGeVector3d &direction);

protected:
    ZvGePoint3d m_base;
    ZvGeVector3d m_direction {1, 0, 0};
};

/// Endless construction line.
class ZV_EXPORT ZvDbXline : public ZvDbRay
{
    ZVRX_DECLARE_MEMBERS(ZvDbXline)
public:
    ZvDbXline() = default;
    const char *fileName() const override { return "XLINE"; }
    void fileFields(ZvDbFiler &filer) override;
    void worldDraw(ZvGiWorldDraw &draw) const override;
};

/// A point, shown as the drawing shows points.
class ZV_EXPORT ZvDbPoint : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbPoint, "POINT")
    /// At \a position.
    explicit ZvDbPoint(const ZvGePoint3d &position);
    /// Where it is.
    ZvGePoint3d position() const { return m_position; }
    Zv::ErrorStatus setPosition(const ZvGePoint3d &position);

private:
    ZvGePoint3d m_position;
};

/// A full circle.
class ZV_EXPORT ZvDbCircle : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbCircle, "CIRCLE")
    /// Around \a center in the plane across \a normal, of length 1.
    ZvDbCircle(const ZvGePoint3d &center, const ZvGeVector3d &normal, double radius);
    /// In world coordinates.
    ZvGePoint3d center() const;
    Zv::ErrorStatus setCenter(const ZvGePoint3d &center);
    /// Above 0.
    double radius() const { return m_radius; }
    Zv::ErrorStatus setRadius(double radius);
    /// Of the plane, of length 1.
    ZvGeVector3d normal() const { return m_normal; }

protected:
    ZvGePoint3d m_center; // in the coordinates of its plane, as in the file
    ZvGeVector3d m_normal {0, 0, 1};
    double m_radius = 0.0;
};

/// Counter-clockwise around its normal.
class ZV_EXPORT ZvDbArc : public ZvDbCircle
{
    ZVDB_ENTITY_COMMON(ZvDbArc, "ARC")
    /// In the plane of X and Y; from \a startAngle to \a endAngle, counter-clockwise.
    ZvDbArc(const ZvGePoint3d &center, double radius, double startAngle, double endAngle);
    /// In radians, from the X axis of the arc's plane.
    double startAngle() const { return m_startAngle; }
    double endAngle() const { return m_endAngle; }
    Zv::ErrorStatus setStartAngle(double angle);
    Zv::ErrorStatus setEndAngle(double angle);

private:
    double m_startAngle = 0.0;
    double m_endAngle = 0.0;
};

/// An ellipse or an arc of one.
class ZV_EXPORT ZvDbEllipse : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbEllipse, "ELLIPSE")
    /// In world coordinates.
    ZvGePoint3d center() const { return m_center; }
    /// Half of it, from the centre to the curve.
    ZvGeVector3d majorAxis() const { return m_majorAxis; }
    /// At right angles to the major axis, shorter by the ratio.
    ZvGeVector3d minorAxis() const;
    /// Of the minor axis to the major one, up to 1.
    double radiusRatio() const { return m_ratio; }
    /// Parameters in radians where the arc begins and ends, counter-clockwise; 0 and 2 pi for the full ellipse.
    double startParam() const { return m_start; }
    double endParam() const { return m_end; }

private:
    ZvGePoint3d m_center;
    ZvGeVector3d m_majorAxis {1, 0, 0};
    ZvGeVector3d m_normal {0, 0, 1};
    double m_ratio = 1.0;
    double m_start = 0.0;
    double m_end = 6.283185307179586;
};

/// Flat polyline with bulges and widths ("LWPOLYLINE").
class ZV_EXPORT ZvDbPolyline : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbPolyline, "LWPOLYLINE")
    /// A vertex, with what leads to the next one.
    struct Vertex
    {
        ZvGePoint2d point; ///< In the coordinates of the polyline's plane.
        double bulge = 0.0; ///< Tangent of a quarter of the arc's angle to the next vertex.
        /// Of the stroke at either end of the segment; 0 for a plain line.
        double startWidth = 0.0;
        double endWidth = 0.0;
    };
    /// Number of vertices.
    int numVerts() const { return int(m_vertices.size()); }
    /// In order.
    const std::vector<Vertex> &vertices() const { return m_vertices; }
    /// Adds at the end.
    Zv::ErrorStatus addVertex(const ZvGePoint2d &point, double bulge = 0.0, double startWidth = 0.0, double endWidth = 0.0);
    /// Replaces all.
    Zv::ErrorStatus setVertices(const std::vector<Vertex> &vertices);
    /// The last vertex is joined with the first.
    bool isClosed() const { return (m_flags & 1) != 0; }
    Zv::ErrorStatus setClosed(bool closed);
    /// Of the plane, along its normal.
    double elevation() const { return m_elevation; }
    /// Of the plane, of length 1.
    ZvGeVector3d normal() const { return m_normal; }

private:
    std::vector<Vertex> m_vertices; // in the coordinates of its plane
    ZvGeVector3d m_normal {0, 0, 1};
    double m_elevation = 0.0;
    double m_constantWidth = 0.0;
    int m_flags = 0;
};

/// The older polyline with vertex records: flat, in space, mesh or polyface ("POLYLINE").
class ZV_EXPORT ZvDb2dPolyline : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDb2dPolyline, "POLYLINE")
    /// A vertex record.
    struct Vertex
    {
        ZvGePoint3d point; ///< In the coordinates of the polyline's plane, or in space.
        double bulge = 0.0; ///< Tangent of a quarter of the arc's angle to the next vertex.
        /// Of the stroke at either end of the segment; 0 for a plain line.
        double startWidth = 0.0;
        double endWidth = 0.0;
        int flags = 0; ///< As in the file (70): 16 a point of a frame, 64 of a mesh, 128 of a polyface.
        int faces[4] = {0, 0, 0, 0}; ///< Vertex numbers from 1 of a polyface's face, below 0 for a hidden edge.
    };
    /// In file order.
    const std::vector<Vertex> &vertices() const { return m_vertices; }
    /// 1 closed, 2 curve-fit, 4 spline-fit, 8 in space, 16 mesh, 32 mesh closed in N, 64 polyface.
    int polylineFlags() const { return m_flags; }

private:
    friend class ZvDbObjectAccess;
    std::vector<Vertex> m_vertices;
    ZvGeVector3d m_normal {0, 0, 1};
    double m_elevation = 0.0;
    double m_startWidth = 0.0;
    double m_endWidth = 0.0;
    int m_flags = 0;
    int m_meshM = 0;
    int m_meshN = 0;
};

/// A spline curve, with or without weights.
class ZV_EXPORT ZvDbSpline : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbSpline, "SPLINE")
    /// 1 and up.
    int degree() const { return m_degree; }
    /// Start and end are one.
    bool isClosed() const { return (m_flags & 1) != 0; }
    /// Ascending.
    const std::vector<double> &knots() const { return m_knots; }
    /// In world coordinates.
    const std::vector<ZvGePoint3d> &controlPoints() const { return m_controlPoints; }
    /// One for each control point; none for a curve without weights.
    const std::vector<double> &weights() const { return m_weights; }
    /// Points that the curve was made to pass; may be none.
    const std::vector<ZvGePoint3d> &fitPoints() const { return m_fitPoints; }
    /// Points along the curve, within \a deviation of it.
    void sample(double deviation, std::vector<ZvGePoint3d> &points) const;

private:
    std::vector<double> m_knots;
    std::vector<double> m_weights;
    std::vector<ZvGePoint3d> m_controlPoints;
    std::vector<ZvGePoint3d> m_fitPoints;
    int m_degree = 3;
    int m_flags = 0;
};

/// Filled triangle or quadrilateral in the plane ("SOLID").
class ZV_EXPORT ZvDbSolid : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbSolid, "SOLID")
    /// Four corners; the third and fourth are in zigzag order.
    ZvGePoint3d pointAt(int i) const { return m_points[i]; }
    Zv::ErrorStatus setPointAt(int i, const ZvGePoint3d &point);

private:
    ZvGePoint3d m_points[4];
    ZvGeVector3d m_normal {0, 0, 1};
};

/// Face in space with three or four edges ("3DFACE").
class ZV_EXPORT ZvDbFace : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbFace, "3DFACE")
    /// A corner, \a i from 0 to 3. The fourth is the third for a triangle.
    ZvGePoint3d vertexAt(int i) const { return m_points[i]; }
    /// The edge from corner \a i to the next.
    bool isEdgeVisible(int i) const { return (m_hiddenEdges & (1 << i)) == 0; }

private:
    ZvGePoint3d m_points[4];
    int m_hiddenEdges = 0;
};

/// One line of text.
class ZV_EXPORT ZvDbText : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbText, "TEXT")
    /// At \a position, aligned to the left on the base line; a null \a style is the drawing's standard.
    ZvDbText(const ZvGePoint3d &position, const ZvString &text, ZvDbObjectId style, double height, double rotation);
    /// With its control codes, such as %%c.
    ZvString textString() const { return m_text; }
    Zv::ErrorStatus setTextString(const ZvString &text);
    /// Left end of the base line, in world coordinates.
    ZvGePoint3d position() const;
    /// Of capitals; above 0.
    double height() const { return m_height; }
    Zv::ErrorStatus setHeight(double height);
    /// Of the base line.
    double rotation() const { return m_rotation; }
    /// Width of a character as a part of its natural width.
    double widthFactor() const { return m_widthFactor; }
    /// Slant of the characters.
    double oblique() const { return m_oblique; }
    /// Its record.
    ZvDbObjectId textStyle() const;
    Zv::ErrorStatus setTextStyle(ZvDbObjectId id);
    /// What is drawn.
    void describe(ZvGiText &text) const;

protected:
    /// The fields that all texts have; see ZvDbObject::fileFields().
    void textFields(ZvDbFiler &filer);

    ZvString m_text;
    ZvDbObjectId m_style;
    ZvGePoint3d m_position; // in the coordinates of its plane
    ZvGePoint3d m_alignment;
    ZvGeVector3d m_normal {0, 0, 1};
    double m_height = 2.5;
    double m_rotation = 0.0;
    double m_widthFactor = 1.0;
    double m_oblique = 0.0;
    int m_generation = 0;
    int m_horizontal = 0;
    int m_vertical = 0;
};

/// Value of an attribute, owned by a block reference.
class ZV_EXPORT ZvDbAttribute : public ZvDbText
{
    ZVRX_DECLARE_MEMBERS(ZvDbAttribute)
public:
    ZvDbAttribute() = default;
    /// Names the attribute in its block.
    ZvString tag() const { return m_tag; }
    /// Not shown.
    bool isInvisible() const { return (m_attributeFlags & 1) != 0; }
    const char *fileName() const override { return "ATTRIB"; }
    void fileFields(ZvDbFiler &filer) override;
    void worldDraw(ZvGiWorldDraw &draw) const override;

protected:
    ZvString m_tag;
    int m_attributeFlags = 0;
};

/// Definition of an attribute in a block.
class ZV_EXPORT ZvDbAttributeDefinition : public ZvDbAttribute
{
    ZVRX_DECLARE_MEMBERS(ZvDbAttributeDefinition)
public:
    ZvDbAttributeDefinition() = default;
    /// What the user is asked for its value.
    ZvString prompt() const { return m_prompt; }
    /// The same in all references.
    bool isConstant() const { return (m_attributeFlags & 2) != 0; }
    const char *fileName() const override { return "ATTDEF"; }
    void fileFields(ZvDbFiler &filer) override;
    void worldDraw(ZvGiWorldDraw &draw) const override;

private:
    ZvString m_prompt;
};

/// Text of several lines, with formatting inside.
class ZV_EXPORT ZvDbMText : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbMText, "MTEXT")
    /// With its formatting codes.
    ZvString contents() const { return m_contents; }
    Zv::ErrorStatus setContents(const ZvString &contents);
    /// The point that the attachment speaks of, in world coordinates.
    ZvGePoint3d location() const { return m_location; }
    Zv::ErrorStatus setLocation(const ZvGePoint3d &location);
    /// Of capitals; above 0.
    double textHeight() const { return m_height; }
    Zv::ErrorStatus setTextHeight(double height);
    /// Lines break here; 0 for no breaks.
    double width() const { return m_width; }
    /// Of the lines, of length 1, in world coordinates.
    ZvGeVector3d direction() const;
    Zv::ErrorStatus setDirection(const ZvGeVector3d &direction);
    /// 1 top left, 2 top centre, 3 top right, 4 to 6 middle, 7 to 9 bottom.
    int attachment() const { return m_attachment; }
    Zv::ErrorStatus setAttachment(int attachment);
    /// Its record.
    ZvDbObjectId textStyle() const;
    Zv::ErrorStatus setTextStyle(ZvDbObjectId id);
    /// What is drawn.
    void describe(ZvGiMText &text) const;

private:
    ZvString m_contents;
    ZvDbObjectId m_style;
    ZvGePoint3d m_location;
    ZvGeVector3d m_direction {1, 0, 0};
    ZvGeVector3d m_normal {0, 0, 1};
    double m_height = 2.5;
    double m_width = 0.0;
    double m_rotation = 0.0;
    double m_lineSpacing = 1.0;
    int m_spacingStyle = 1;
    int m_attachment = 1;
    int m_drawingDirection = 1;
    int m_backgroundFlags = 0;
    ZvCmColor m_backgroundColor;
    double m_backgroundScale = 1.5;
};

/// A block placed in the drawing.
class ZV_EXPORT ZvDbBlockReference : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbBlockReference, "INSERT")
    /// The block that is shown.
    ZvDbObjectId blockTableRecord() const { return m_block; }
    Zv::ErrorStatus setBlockTableRecord(ZvDbObjectId id);
    /// Where the block's origin is, in world coordinates.
    ZvGePoint3d position() const;
    Zv::ErrorStatus setPosition(const ZvGePoint3d &position);
    /// Along the axes of the block; below 0 mirrors.
    ZvGeVector3d scaleFactors() const { return m_scale; }
    /// Around the normal.
    double rotation() const { return m_rotation; }
    /// From the block's coordinates to those around the reference.
    ZvGeMatrix3d blockTransform() const;
    /// Attributes that the reference owns, in order.
    const std::vector<ZvDbObjectId> &attributeIds() const { return m_attributes; }

protected:
    friend class ZvDbObjectAccess;
    friend Zv::ErrorStatus zvdbCopyEntity(ZvDbObjectId source, ZvDbObjectId block, const ZvGeMatrix3d &matrix, ZvDbObjectId &copy);
    ZvDbObjectId m_block;
    ZvGePoint3d m_position; // in the coordinates of its plane
    ZvGeVector3d m_scale {1, 1, 1};
    ZvGeVector3d m_normal {0, 0, 1};
    double m_rotation = 0.0;
    int m_columns = 1;
    int m_rows = 1;
    double m_columnSpacing = 0.0;
    double m_rowSpacing = 0.0;
    std::vector<ZvDbObjectId> m_attributes;
};

/// A filled area.
class ZV_EXPORT ZvDbHatch : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbHatch, "HATCH")
    /// May be empty.
    ZvString patternName() const { return m_patternName; }
    /// Filled all over, without a pattern.
    bool isSolidFill() const { return m_solid; }
    /// Filled with a run of two colours.
    bool isGradient() const { return m_gradient; }
    /// Number of boundaries.
    int numLoops() const;
    /// What is drawn, with curves within \a deviation.
    void describe(ZvGiFill &fill, double deviation) const;

private:
    struct Edge
    {
        int type = 0; // 1 line, 2 circular arc, 3 elliptic arc, 4 spline
        ZvGePoint2d start;
        ZvGePoint2d end; // or the end of the major axis
        double radius = 0.0; // or the ratio of the axes
        double startAngle = 0.0;
        double endAngle = 0.0;
        bool counterClockwise = true;
        int degree = 3;
        std::vector<double> knots;
        std::vector<double> weights;
        std::vector<ZvGePoint2d> points;
    };
    struct Loop
    {
        int flags = 0;
        bool closed = true;
        std::vector<ZvGePoint2d> vertices; // of a polyline loop
        std::vector<double> bulges;
        std::vector<Edge> edges;
    };
    ZvString m_patternName;
    std::vector<Loop> m_loops;
    std::vector<ZvGiFill::PatternLine> m_pattern;
    ZvGeVector3d m_normal {0, 0, 1};
    double m_elevation = 0.0;
    bool m_solid = true;
    bool m_gradient = false;
    ZvCmColor m_gradientColors[2];
    double m_gradientAngle = 0.0;
    double m_patternAngle = 0.0; // already applied to the pattern's lines
    double m_patternScale = 1.0; // the same
    int m_hatchStyle = 0; // 0 by turns, 1 the outer area, 2 without islands
};

/// Any dimension: the picture is the block that the dimension names.
class ZV_EXPORT ZvDbDimension : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbDimension, "DIMENSION")
    /// Its record.
    ZvDbObjectId dimensionStyle() const;
    Zv::ErrorStatus setDimensionStyle(ZvDbObjectId id);
    /// Drops the overrides of the dimension, so that it looks as its style says.
    Zv::ErrorStatus setDimstyleData(ZvDbObjectId id);
    /// Text style of its dimension style; null where that cannot be read.
    ZvDbObjectId textStyleId() const;
    /// The block with the picture; null where there is none yet.
    ZvDbObjectId dimBlockId() const { return m_block; }
    /// 0 linear, 1 aligned, 2 angular, 3 diameter, 4 radius, 5 three-point angular, 6 ordinate.
    int dimensionType() const { return m_type & 7; }
    /// What was measured: drawing units, or radians for an angle.
    double measurement() const { return m_measurement; }
    /// The text that replaces the measurement; empty for that itself.
    ZvString dimensionText() const { return m_text; }

private:
    ZvDbObjectId m_style;
    ZvDbObjectId m_block;
    ZvString m_text;
    const ZvGePoint3d *pointOf(int code) const;
    void setPointOf(int code, const ZvGePoint3d &point);
    void drawPlain(ZvGiWorldDraw &draw, const ZvGeVector3d &normal) const;
    void makePicture();

    // By group code; 11, 12 and 16 in the coordinates of its plane, the others in the world's. 12 is by how much the
    // picture is moved against its block.
    std::vector<std::pair<int, ZvGePoint3d>> m_points;
    ZvGeVector3d m_normal {0, 0, 1};
    double m_rotation = 0.0; // of a linear dimension's line, in its plane
    double m_measurement = 0.0;
    int m_type = 0;
};

/// An arrow with a line, styled as a dimension.
class ZV_EXPORT ZvDbLeader : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbLeader, "LEADER")
    /// From the tip on, in world coordinates.
    const std::vector<ZvGePoint3d> &vertices() const { return m_vertices; }
    /// Whether the tip has an arrow.
    bool hasArrowHead() const { return m_arrow; }
    /// Its record.
    ZvDbObjectId dimensionStyle() const { return m_style; }

private:
    std::vector<ZvGePoint3d> m_vertices;
    ZvDbObjectId m_style;
    bool m_arrow = true;
    int m_pathType = 0;
};

/// A text or block with lines that point at things.
class ZV_EXPORT ZvDbMLeader : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbMLeader, "MULTILEADER")
    /// Its record.
    ZvDbObjectId MLeaderStyle() const { return m_style; }
    Zv::ErrorStatus setMLeaderStyle(ZvDbObjectId id);
    /// Text style of its text; that of its style where it has none. Null where that cannot be read.
    ZvDbObjectId textStyleId() const;
    /// The text, with its formatting codes; empty for a block.
    ZvString contents() const { return m_contents; }

private:
    ZvDbObjectId m_style;
    ZvDbObjectId m_textStyle;
    ZvDbObjectId m_block;
    ZvString m_contents;
    ZvGePoint3d m_textLocation;
    ZvGeVector3d m_textDirection {1, 0, 0};
    ZvGeVector3d m_normal {0, 0, 1};
    double m_textHeight = 4.0;
    double m_textWidth = 0.0;
    double m_arrowSize = 4.0;
    double m_scale = 1.0;
    int m_attachment = 1;
    std::vector<std::vector<ZvGePoint3d>> m_lines; // with the landing as last point
    ZvCmColor m_lineColor;
    ZvCmColor m_textColor;
};

/// Table: the picture is the block that the table names.
class ZV_EXPORT ZvDbTable : public ZvDbBlockReference
{
    ZVRX_DECLARE_MEMBERS(ZvDbTable)
public:
    ZvDbTable() = default;
    /// Its record.
    ZvDbObjectId tableStyle() const { return m_tableStyle; }
    Zv::ErrorStatus setTableStyle(ZvDbObjectId id);
    const char *fileName() const override { return "ACAD_TABLE"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    ZvDbObjectId m_tableStyle;
};

/// A picture file placed in the drawing; also the base of the wipeout.
class ZV_EXPORT ZvDbRasterImage : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbRasterImage, "IMAGE")
    /// Path as the definition has it; empty where that cannot be read.
    ZvString imagePath() const;
    /// Lower left corner, in world coordinates.
    ZvGePoint3d position() const { return m_position; }
    /// Vectors of one pixel.
    ZvGeVector3d pixelU() const { return m_u; }
    ZvGeVector3d pixelV() const { return m_v; }
    /// In pixels.
    ZvGePoint2d imageSize() const { return m_size; }
    /// What is shown of it, in pixels, y down; empty for all.
    const std::vector<ZvGePoint2d> &clipBoundary() const { return m_clip; }

protected:
    /// The fields that all images have, under the class marker \a marker; see ZvDbObject::fileFields().
    void imageFields(ZvDbFiler &filer, const char *marker);

    ZvDbObjectId m_definition;
    ZvString m_path; // of the definition, read together with the image
    ZvGePoint3d m_position;
    ZvGeVector3d m_u {1, 0, 0};
    ZvGeVector3d m_v {0, 1, 0};
    ZvGePoint2d m_size;
    std::vector<ZvGePoint2d> m_clip; // pixels, y down; the middle of the upper left pixel is (0, 0)
    int m_displayFlags = 7;
};

/// An area that covers what was drawn before it.
class ZV_EXPORT ZvDbWipeout : public ZvDbRasterImage
{
    ZVRX_DECLARE_MEMBERS(ZvDbWipeout)
public:
    ZvDbWipeout() = default;
    const char *fileName() const override { return "WIPEOUT"; }
    void fileFields(ZvDbFiler &filer) override;
    void worldDraw(ZvGiWorldDraw &draw) const override;
};

/// Window of a paper layout into model space.
class ZV_EXPORT ZvDbViewport : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbViewport, "VIEWPORT")
    /// On the paper.
    ZvGePoint3d centerPoint() const { return m_center; }
    /// Of the window, on the paper.
    double width() const { return m_width; }
    double height() const { return m_height; }
    /// 1 is the paper itself.
    int number() const { return m_number; }
    /// Whether it shows anything.
    bool isOn() const { return m_status != 0; }
    /// Middle of what is seen, in display coordinates.
    ZvGePoint2d viewCenter() const { return m_viewCenter; }
    /// Of what is seen, in drawing units.
    double viewHeight() const { return m_viewHeight; }
    /// The point looked at, in world coordinates.
    ZvGePoint3d viewTarget() const { return m_target; }
    /// From the target to the eye.
    ZvGeVector3d viewDirection() const { return m_direction; }
    /// Around the view direction.
    double twistAngle() const { return m_twist; }
    /// Layers that are frozen in this viewport only.
    const std::vector<ZvDbObjectId> &frozenLayers() const { return m_frozenLayers; }
    /// Freezes a layer in this viewport only, or thaws it there. eInvalidInput for an id that is not valid.
    Zv::ErrorStatus freezeLayer(ZvDbObjectId layer, bool frozen);
    /// Whether the layer is frozen here, whatever it is elsewhere.
    bool isLayerFrozen(ZvDbObjectId layer) const;

private:
    friend class ZvDbObjectAccess;
    ZvGePoint3d m_center;
    double m_width = 0.0;
    double m_height = 0.0;
    int m_number = 0;
    int m_status = 1;
    ZvGePoint2d m_viewCenter;
    double m_viewHeight = 1.0;
    ZvGePoint3d m_target;
    ZvGeVector3d m_direction {0, 0, 1};
    double m_twist = 0.0;
    std::vector<ZvDbObjectId> m_frozenLayers;
};

/// An entity of a kind that the database does not model. Its record is kept whole; it takes part in selections by its
/// shared properties. Its extents are those of the points in its record, its picture a dashed box where it has any.
class ZV_EXPORT ZvDbProxyEntity : public ZvDbEntity
{
    ZVDB_ENTITY_COMMON(ZvDbProxyEntity, "ACAD_PROXY_ENTITY")
    /// Class name of the record in the file.
    ZvString originalFileName() const;

private:
    std::vector<ZvGePoint3d> m_points; // those of the record
};

#endif
