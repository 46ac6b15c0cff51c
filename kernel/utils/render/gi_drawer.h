// SPDX-License-Identifier: MIT
#ifndef GI_DRAWER_H
#define GI_DRAWER_H

#include "db/zvdbentity.h"
#include "db/zvgiworlddraw.h"
#include "gi_blocks.h"
#include "gi_images.h"
#include "gi_sink.h"
#include "gi_styles.h"
#include "gi_text.h"
#include "utils/zvrenderer.h"

#include <QRectF>

#include <functional>

/// What a drawing goes to, and how fine it is.
struct GiTarget
{
    GiSink *sink = nullptr;
    QRectF clip; ///< Device units; nothing outside is drawn.
    /// The smallest length that counts, in device units: 1 for pixels, less for paper.
    double resolution = 1.0;
    /// Device units for a millimetre of line weight.
    double unitsPerMillimetre = 96.0 / 25.4;
    double minimumWidth = 1.0; ///< Of lines, in device units.
    bool nativeArcs = false; ///< The sink takes arcs as arcs.
};

/// Turns entities into strokes and areas: resolves properties, patterns and texts, and goes down into blocks and
/// viewports. One serves for one drawing.
class GiDrawer : public ZvGiWorldDraw
{
public:
    GiDrawer(ZvDbDatabase *database, GiStyles &styles, GiBlocks &blocks, GiImages &images,
             const ZvGiRenderer::Options &options, const GiTarget &target);
    /// Brings out what the sink still holds: its patterns are the drawer's.
    ~GiDrawer() override;

    /// \a width and \a height in device units.
    void setView(const ZvGiView &view, double width, double height);
    /// Factor on the line type scale of what follows: the drawing's by default.
    void setLinetypeScale(double scale) { m_linetypeScale = scale; }
    /// Only where things are: lines without their patterns, texts as their boxes, areas as wholes, points as dots.
    void setPlain(bool plain) { m_isPlain = plain; }
    /// Asked now and then while a viewport shows its model; false ends everything.
    void setKeepGoingInside(const std::function<bool()> &keepGoing) { m_keepGoingInside = keepGoing; }
    void drawEntity(const ZvDbEntity &entity);
    /// Entities of \a block from position \a first of its index on, those only that can be in the clip; goes on as long
    /// as \a keepGoing says. The position to go on with, -1 at the end.
    int drawBlock(ZvDbObjectId block, int first, const std::function<bool()> &keepGoing);
    /// All entities of \a block in their order, without an index: for one pass in which all is seen.
    bool drawWhole(ZvDbObjectId block, const std::function<bool(std::size_t done, std::size_t all)> &keepGoing);
    int visited() const { return m_visited; }

    ZvGiTraits &traits() override;
    double deviation() const override;
    bool isAborted() const override { return m_isAborted; }
    void polyline(const ZvGePoint3d *points, int count, bool closed) override;
    void widePolyline(const ZvGePoint3d *points, const double *startWidths, const double *endWidths, int count,
                      bool closed, const ZvGeVector3d &normal) override;
    void arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &normal, double start, double sweep) override;
    void ellipse(const ZvGePoint3d &center, const ZvGeVector3d &majorAxis, const ZvGeVector3d &minorAxis, double start,
                 double sweep) override;
    void point(const ZvGePoint3d &position) override;
    void ray(const ZvGePoint3d &base, const ZvGeVector3d &direction, bool both) override;
    void fill(const ZvGiFill &fill) override;
    void text(const ZvGiText &text) override;
    void mtext(const ZvGiMText &text) override;
    void image(const ZvString &path, const ZvGePoint3d &origin, const ZvGeVector3d &u, const ZvGeVector3d &v,
               const std::vector<ZvGePoint2d> &clip) override;
    void block(ZvDbObjectId block, const ZvGeMatrix3d &blockToWorld) override;
    void viewport(ZvDbObjectId viewport) override;

private:
    /// Properties with by layer and by block resolved.
    struct Look
    {
        QRgb color = 0;
        int alpha = 255;
        ZvDb::LineWeight weight = ZvDb::kLnWtByLwDefault;
        ZvDbObjectId linetype;
        ZvDbObjectId layer;
        double linetypeScale = 1.0;
        bool isFrozen = false;
        bool isVisible = true;
    };
    /// What a block reference or a viewport adds.
    struct Frame
    {
        double rows[2][4] = {}; ///< To device coordinates.
        double scale = 1.0; ///< Device units for a drawing unit.
        double patternScale = 1.0; ///< The same for line type patterns.
        Look look; ///< Of the reference: what by block means.
        ZvDbObjectId layer; ///< Of the reference: what layer "0" means. Null outside blocks.
        const std::vector<ZvDbObjectId> *frozenLayers = nullptr; ///< Of the viewport.
        bool isDimension = false; ///< Within the picture of a dimension.
        int depth = 0;
    };

    QPointF map(const ZvGePoint3d &p) const;
    QPointF mapVector(const ZvGeVector3d &v) const;
    void setRows(Frame &frame, const ZvGeMatrix3d &toDisplay, double scale, const QPointF &displayOrigin) const;
    GiBoxQuery query(double margin) const;

    Look resolve(const ZvCmColor &color, ZvDbObjectId layer, ZvDbObjectId linetype, ZvDb::LineWeight weight,
                 double scale, const ZvCmTransparency &transparency);
    Look lookOf(const ZvDbEntity &entity);
    const Look &look();
    QRgb rgbOf(const ZvCmColor &color, const GiLayer &layer) const;
    QRgb shown(QRgb color, int alpha) const;
    double widthOf(const Look &look) const;
    GiStroke strokeOf(const Look &look, double &dashStart, double &dashTotal);

    void strokePoints(std::vector<QPointF> &points);
    void strokeClipped(const GiStroke &stroke, const QPointF *points, int count, double start, double total,
                       const QRectF &box);
    void strokePlain(const Look &look, const QPointF *points, int count);
    void arcAt(const QPointF &center, const QPointF &u, const QPointF &v, double start, double sweep);
    void drawPatternFigures(const std::vector<QPointF> &points);
    /// A text or shape of a line type, \a place taking it to the device.
    void drawPatternText(const Look &look, const GiTextLayout &layout, const QTransform &place);
    void drawPatternShape(const Look &look, const GiShape &shape, const QTransform &place);
    void dot(const Look &look, const QPointF &at);
    void drawLayout(const GiTextLayout &layout, const ZvGePoint3d &position, const ZvGeVector3d &direction,
                    const ZvGeVector3d &normal, double height);
    QPainterPath fillPath(const ZvGiFill &fill) const;
    void fillPattern(const ZvGiFill &fill, const QPainterPath &path);
    bool isOutside(const QRectF &box) const
    {
        return !(m_target.clip.left() <= box.right() && box.left() <= m_target.clip.right()
                 && m_target.clip.top() <= box.bottom() && box.top() <= m_target.clip.bottom());
    }

    ZvDbDatabase *m_database;
    GiStyles &m_styles;
    GiBlocks &m_blocks;
    GiImages &m_images;
    ZvGiRenderer::Options m_options;
    GiTarget m_target;
    const std::uint32_t *m_palette = nullptr;
    std::vector<double> m_highlightDashes;
    double m_linetypeScale = 1.0;
    double m_pointSize = 0.0;
    int m_pointMode = 0;
    ZvDbObjectId m_layerZero;
    ZvDbObjectId m_byLayerLinetype;
    ZvDbObjectId m_byBlockLinetype;

    Frame m_frame;
    const ZvDbEntity *m_entity = nullptr;
    Look m_look;
    ZvGiTraits m_traits;
    bool m_hasTraits = false; ///< The entity has asked for them, and may have changed them.
    std::vector<Look> m_looks; ///< By number of the properties' combination, outside blocks.
    std::vector<bool> m_knownLooks;
    std::vector<QPointF> m_points;
    int m_visited = 0;
    bool m_isPlain = false;
    bool m_isAborted = false;
    std::function<bool()> m_keepGoingInside;
};

#endif
