// SPDX-License-Identifier: MIT
#include "gi_drawer.h"

#include "db/zvdbentities.h"
#include "db/zvresbuf.h"
#include "gi_hatch.h"
#include "gi_pick_sink.h"

#include <QLinearGradient>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kMaxDepth = 24;
// Coordinates beyond this far outside the clip are cut off: paint engines lose their footing with large numbers.
constexpr double kSafeMargin = 2000.0;
constexpr double kMaxDashes = 50000.0;
constexpr int kMaxChords = 4096;
constexpr double kChordTolerance = 0.2; ///< Of the resolution.
constexpr double kReadableHeight = 3.0; ///< Of capitals, times the resolution; below, texts are lines.
constexpr double kReadablePatternHeight = 2.0; ///< The same for texts in patterns: in a list's picture a hint is enough.
constexpr int kMaxPatternFigures = 2000;
constexpr int kDefaultWeight = 25; ///< Hundredths of a millimetre.
constexpr double kHighlightDash = 6.0;
constexpr double kHighlightGap = 3.0;
constexpr std::uint32_t kMaxKnownLooks = 1 << 20;
constexpr int kKeepGoingInterval = 64;

// Bits of the variable "PDMODE" above the figure in 0 to 4.
enum PointFrame { kPointCircle = 32, kPointSquare = 64 };

QRgb fromPacked(std::uint32_t packed)
{
    return qRgb(int(packed & 0xFF), int((packed >> 8) & 0xFF), int((packed >> 16) & 0xFF));
}

double length(const QPointF &v)
{
    return std::hypot(v.x(), v.y());
}

QRectF boxOf(const QPointF *points, int count)
{
    double left = points[0].x();
    double right = left;
    double top = points[0].y();
    double bottom = top;
    for (int i = 1; i < count; ++i) {
        left = std::min(left, points[i].x());
        right = std::max(right, points[i].x());
        top = std::min(top, points[i].y());
        bottom = std::max(bottom, points[i].y());
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

bool isFinite(const QRectF &box)
{
    return std::isfinite(box.left()) && std::isfinite(box.right()) && std::isfinite(box.top())
        && std::isfinite(box.bottom());
}

double variable(const ZvDbDatabase *database, const char *name, double standard)
{
    ZvResBuf value;
    return database->getVariable(name, value) == Zv::eOk ? value.number() : standard;
}

/// Cuts a closed polygon to a rectangle. What lies outside ends up on the rectangle's edge, which for the even-odd rule
/// is as good as gone.
void clipPolygon(QPolygonF &polygon, const QRectF &box)
{
    struct Side
    {
        bool isX;
        double at;
        bool keepsBelow;
    };
    const Side sides[] = {
        {true, box.left(), false}, {true, box.right(), true}, {false, box.top(), false}, {false, box.bottom(), true}};
    for (const Side &side : sides) {
        const auto place = [&side](const QPointF &p) {
            const double value = side.isX ? p.x() : p.y();
            return side.keepsBelow ? side.at - value : value - side.at;
        };
        QPolygonF kept;
        for (int i = 0; i < polygon.size(); ++i) {
            const QPointF &a = polygon[i];
            const QPointF &b = polygon[(i + 1) % polygon.size()];
            const double pa = place(a);
            const double pb = place(b);
            if (pa >= 0.0)
                kept.append(a);
            if ((pa < 0.0) != (pb < 0.0))
                kept.append(a + (b - a) * (pa / (pa - pb)));
        }
        polygon = kept;
        if (polygon.isEmpty())
            return;
    }
}

} // namespace

GiDrawer::GiDrawer(ZvDbDatabase *database, GiStyles &styles, GiBlocks &blocks, GiImages &images,
                   const ZvGiRenderer::Options &options, const GiTarget &target)
    : m_database(database), m_styles(styles), m_blocks(blocks), m_images(images), m_options(options), m_target(target),
      m_palette(zvcmAcadPalette(options.background)), m_linetypeScale(database->ltscale()),
      m_pointSize(variable(database, "PDSIZE", 0.0)), m_pointMode(int(variable(database, "PDMODE", 0.0))),
      m_layerZero(database->layerZero()), m_byLayerLinetype(database->byLayerLinetype()),
      m_byBlockLinetype(database->byBlockLinetype())
{
    if (!(m_linetypeScale > 0.0))
        m_linetypeScale = 1.0;
    if (options.highlight)
        m_highlightDashes = {kHighlightDash * target.resolution, kHighlightGap * target.resolution};
    ZvCmColor foreground;
    foreground.setColorIndex(7);
    m_frame.look.color = rgbOf(foreground, GiLayer());
    m_frame.look.linetype = database->continuousLinetype();
}

GiDrawer::~GiDrawer()
{
    m_target.sink->flush();
}

void GiDrawer::setRows(Frame &frame, const ZvGeMatrix3d &toDisplay, double scale, const QPointF &origin) const
{
    double longest = 0.0;
    for (int column = 0; column < 3; ++column)
        longest = std::max(longest, std::hypot(toDisplay.entry[0][column], toDisplay.entry[1][column]));
    for (int column = 0; column < 4; ++column) {
        frame.rows[0][column] = toDisplay.entry[0][column] * scale;
        frame.rows[1][column] = -toDisplay.entry[1][column] * scale;
    }
    frame.rows[0][3] += origin.x();
    frame.rows[1][3] += origin.y();
    frame.scale = longest * scale;
}

void GiDrawer::setView(const ZvGiView &view, double width, double height)
{
    const double scale = view.height > 0.0 ? height / view.height : 1.0;
    setRows(m_frame, view.worldToDisplay(), scale,
            {width / 2 - view.center.x * scale, height / 2 + view.center.y * scale});
    m_frame.patternScale = scale;
}

QPointF GiDrawer::map(const ZvGePoint3d &p) const
{
    const auto &m = m_frame.rows;
    return {m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + m[0][3],
            m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + m[1][3]};
}

QPointF GiDrawer::mapVector(const ZvGeVector3d &v) const
{
    const auto &m = m_frame.rows;
    return {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z, m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z};
}

GiBoxQuery GiDrawer::query(double margin) const
{
    GiBoxQuery query;
    std::copy(&m_frame.rows[0][0], &m_frame.rows[0][0] + 8, &query.rows[0][0]);
    query.minimum[0] = m_target.clip.left() - margin;
    query.minimum[1] = m_target.clip.top() - margin;
    query.maximum[0] = m_target.clip.right() + margin;
    query.maximum[1] = m_target.clip.bottom() + margin;
    return query;
}

// ---- walking

int GiDrawer::drawBlock(ZvDbObjectId block, int first, const std::function<bool()> &keepGoing)
{
    // The margin leaves room for line weights.
    const double margin = m_options.lineWeights ? 2.5 * m_target.unitsPerMillimetre : m_target.minimumWidth;
    const auto positions = m_blocks.find(block, query(margin));
    const GiIndex &index = m_blocks.index(block);
    const std::uint64_t high = std::uint64_t(m_database->number()) << 32;
    int count = 0;
    for (auto next = std::lower_bound(positions->begin(), positions->end(), std::uint32_t(first));
         next != positions->end(); ++next) {
        const std::uint32_t position = *next;
        if (keepGoing && ++count % kKeepGoingInterval == 0) {
            m_blocks.closeAll(); // whoever is asked may write
            if (!keepGoing())
                return int(position);
        }
        const GiIndex::Entry &entry = index.entries()[position];
        if (entry.layer == 0)
            continue;
        ++m_visited;
        ZvDbObjectPointer<ZvDbEntity> entity(ZvDbObjectId::fromInt64(high | entry.entity), ZvDb::kForRead);
        if (entity)
            drawEntity(*entity);
        if (m_isAborted)
            return int(position);
    }
    return -1;
}

bool GiDrawer::drawWhole(ZvDbObjectId block, const std::function<bool(std::size_t, std::size_t)> &keepGoing)
{
    std::vector<std::uint32_t> entities;
    {
        ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
        if (!record)
            return true;
        entities = record->entityIndices();
    }
    const std::uint64_t high = std::uint64_t(m_database->number()) << 32;
    constexpr std::size_t kInterval = 4096;
    for (std::size_t i = 0; i < entities.size(); ++i) {
        if (keepGoing && i % kInterval == kInterval - 1) {
            m_blocks.closeAll();
            if (!keepGoing(i, entities.size()))
                return false;
        }
        ++m_visited;
        ZvDbObjectPointer<ZvDbEntity> entity(ZvDbObjectId::fromInt64(high | entities[i]), ZvDb::kForRead);
        if (entity)
            drawEntity(*entity);
        if (m_isAborted)
            return false;
    }
    return true;
}

void GiDrawer::drawEntity(const ZvDbEntity &entity)
{
    m_entity = &entity;
    m_hasTraits = false;
    m_look = lookOf(entity);
    // What is on a layer that is off may show things that are not: blocks and viewports.
    const bool showsOthers = entity.isKindOf(ZvDbBlockReference::desc()) || entity.isKindOf(ZvDbViewport::desc());
    if (m_look.isFrozen || (!m_look.isVisible && !showsOthers))
        return;
    entity.worldDraw(*this);
}

void GiDrawer::block(ZvDbObjectId id, const ZvGeMatrix3d &blockToWorld)
{
    const Look reference = look();
    if (reference.isFrozen || m_frame.depth >= kMaxDepth)
        return;
    Frame inner = m_frame;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = column == 3 ? m_frame.rows[row][3] : 0.0;
            for (int i = 0; i < 3; ++i)
                sum += m_frame.rows[row][i] * blockToWorld.entry[i][column];
            inner.rows[row][column] = sum;
        }
    }
    inner.scale = 0.0;
    for (int column = 0; column < 3; ++column)
        inner.scale = std::max(inner.scale, std::hypot(inner.rows[0][column], inner.rows[1][column]));
    inner.look = reference;
    inner.layer = reference.layer;
    inner.isDimension = m_frame.isDimension || (m_entity && m_entity->isKindOf(ZvDbDimension::desc()));
    ++inner.depth;

    const std::vector<const ZvDbEntity *> &entities = m_blocks.entities(id);
    const GiIndex &index = m_blocks.index(id);
    const std::vector<GiIndex::Entry> &entries = index.entries();
    const Frame outer = m_frame;
    const ZvDbEntity *const outerEntity = m_entity;
    const ZvGiTraits outerTraits = m_traits;
    const bool outerHasTraits = m_hasTraits;
    m_frame = inner;
    const GiBoxQuery visible = query(2.5 * m_target.unitsPerMillimetre);
    double low[2];
    double high[2];
    visible.image(index.bounds(), low, high);
    const bool isTiny
        = !index.bounds().isEmpty() && high[0] - low[0] < m_target.resolution && high[1] - low[1] < m_target.resolution;
    if (isTiny && reference.isVisible)
        dot(reference, QPointF((low[0] + high[0]) / 2, (low[1] + high[1]) / 2));
    for (std::size_t i = 0; i < entities.size() && !isTiny; ++i) {
        if (!entities[i] || entries[i].layer == 0 || (!entries[i].box.isEmpty() && !visible.meets(entries[i].box)))
            continue;
        // Definitions of attributes are asked for values: the reference shows these.
        if (entities[i]->isKindOf(ZvDbAttributeDefinition::desc())
            && !static_cast<const ZvDbAttributeDefinition *>(entities[i])->isConstant())
            continue;
        drawEntity(*entities[i]);
    }
    m_frame = outer;
    m_entity = outerEntity;
    m_traits = outerTraits;
    m_hasTraits = outerHasTraits;
    m_look = reference;
}

void GiDrawer::viewport(ZvDbObjectId id)
{
    ZvDbObjectPointer<ZvDbViewport> window(id, ZvDb::kForRead);
    if (!window || !window->isOn() || m_frame.depth > 0 || !(window->viewHeight() > 0.0) || !(window->height() > 0.0))
        return;
    const ZvGeVector3d across(window->width() / 2, 0, 0);
    const ZvGeVector3d up(0, window->height() / 2, 0);
    const ZvGePoint3d middle = window->centerPoint();
    QPolygonF outline;
    outline << map(middle - across - up) << map(middle + across - up) << map(middle + across + up)
            << map(middle - across + up);
    const QRectF box = outline.boundingRect();
    if (isOutside(box) || box.width() < m_target.resolution || box.height() < m_target.resolution)
        return;

    ZvGiView view;
    view.target = window->viewTarget();
    view.direction = window->viewDirection();
    view.twist = window->twistAngle();
    const double scale = window->height() / window->viewHeight(); // of the paper for a unit of the model
    // From the model's world over its display plane to the paper.
    const ZvGeMatrix3d toPaper = ZvGeMatrix3d::translation({middle.x - window->viewCenter().x * scale,
                                                            middle.y - window->viewCenter().y * scale, 0.0})
        * ZvGeMatrix3d::scaling(scale, scale, scale) * view.worldToDisplay();
    const Frame outer = m_frame;
    const GiTarget outerTarget = m_target;
    const ZvDbEntity *const outerEntity = m_entity;
    const Look outerLook = m_look;
    const bool outerHasTraits = m_hasTraits;
    const double outerLinetypeScale = m_linetypeScale;
    Frame inner = m_frame;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = column == 3 ? outer.rows[row][3] : 0.0;
            for (int i = 0; i < 3; ++i)
                sum += outer.rows[row][i] * toPaper.entry[i][column];
            inner.rows[row][column] = sum;
        }
    }
    inner.scale = 0.0;
    for (int column = 0; column < 3; ++column)
        inner.scale = std::max(inner.scale, std::hypot(inner.rows[0][column], inner.rows[1][column]));
    // By default the paper's scale rules the patterns, so that they look alike in all viewports.
    const bool byPaper = variable(m_database, "PSLTSCALE", 1.0) != 0.0;
    inner.patternScale = byPaper ? outer.patternScale : outer.patternScale * scale;
    const std::vector<ZvDbObjectId> frozen = window->frozenLayers();
    inner.frozenLayers = frozen.empty() ? nullptr : &frozen;
    inner.depth = 1;

    QPainterPath clip;
    clip.addPolygon(outline);
    clip.closeSubpath();
    m_target.sink->pushClip(clip);
    m_target.clip = m_target.clip.intersected(box);
    m_frame = inner;
    std::vector<bool> knownLooks;
    m_knownLooks.swap(knownLooks); // looks depend on what the viewport freezes
    m_isAborted = drawBlock(m_database->modelSpaceId(), 0, m_keepGoingInside) >= 0;
    m_knownLooks.swap(knownLooks);
    m_target.sink->popClip();
    m_target = outerTarget;
    m_frame = outer;
    m_entity = outerEntity;
    m_look = outerLook;
    m_hasTraits = outerHasTraits;
    m_linetypeScale = outerLinetypeScale;
}

// ---- properties

QRgb GiDrawer::rgbOf(const ZvCmColor &color, const GiLayer &layer) const
{
    if (m_options.highlight)
        return fromPacked(m_options.highlightColor);
    const auto ofPalette
        = [this](unsigned index) { return m_palette ? fromPacked(m_palette[index & 0xFF]) : qRgb(128, 128, 128); };
    switch (color.colorMethod()) {
    case ZvCm::kByLayer:
        return layer.color.isByLayer() || layer.color.isByBlock() ? ofPalette(7) : rgbOf(layer.color, layer);
    case ZvCm::kByBlock:
        return m_frame.look.color;
    case ZvCm::kByColor:
        return qRgb(color.red(), color.green(), color.blue());
    case ZvCm::kByACI:
        if (color.colorIndex() == ZvCm::kACIbyBlock)
            return m_frame.look.color;
        if (color.colorIndex() == ZvCm::kACIbyLayer)
            return rgbOf(layer.color, layer);
        return ofPalette(color.colorIndex());
    default:
        return ofPalette(7);
    }
}

QRgb GiDrawer::shown(QRgb color, int alpha) const
{
    if (m_options.monochrome)
        color = m_palette ? fromPacked(m_palette[7]) : qRgb(0, 0, 0);
    return qRgba(qRed(color), qGreen(color), qBlue(color), alpha);
}

GiDrawer::Look GiDrawer::resolve(const ZvCmColor &color, ZvDbObjectId layerId, ZvDbObjectId linetype,
                                 ZvDb::LineWeight weight, double scale, const ZvCmTransparency &transparency)
{
    Look look;
    look.layer = !m_frame.layer.isNull() && (layerId == m_layerZero || layerId.isNull()) ? m_frame.layer : layerId;
    const GiLayer &layer = m_styles.layer(look.layer);
    look.isFrozen = layer.isFrozen;
    if (m_frame.frozenLayers && !look.isFrozen)
        look.isFrozen = std::find(m_frame.frozenLayers->begin(), m_frame.frozenLayers->end(), look.layer)
            != m_frame.frozenLayers->end();
    look.isVisible = !look.isFrozen && !layer.isOff && !(m_options.plotting && !layer.isPlottable);
    look.color = rgbOf(color, layer);
    switch (transparency.method()) {
    case ZvCmTransparency::kByLayer:
        look.alpha = layer.alpha;
        break;
    case ZvCmTransparency::kByBlock:
        look.alpha = m_frame.look.alpha;
        break;
    case ZvCmTransparency::kByAlpha:
        look.alpha = transparency.alpha();
        break;
    }
    look.weight = weight == ZvDb::kLnWtByLayer ? layer.lineWeight
        : weight == ZvDb::kLnWtByBlock         ? m_frame.look.weight
                                               : weight;
    look.linetype = linetype.isNull() || linetype == m_byLayerLinetype ? layer.linetype
        : linetype == m_byBlockLinetype                                ? m_frame.look.linetype
                                                                       : linetype;
    look.linetypeScale = scale > 0.0 && std::isfinite(scale) ? scale : 1.0;
    return look;
}

GiDrawer::Look GiDrawer::lookOf(const ZvDbEntity &entity)
{
    const auto make = [&] {
        Look look = resolve(entity.color(), entity.layerId(), entity.linetypeId(), entity.lineWeight(),
                            entity.linetypeScale(), entity.transparency());
        if (entity.visibility() != ZvDb::kVisible)
            look.isFrozen = true; // whatever it is, nothing of it shows
        return look;
    };
    const std::uint32_t number = entity.propertiesNumber();
    if (m_frame.depth > 0 || number == 0 || number > kMaxKnownLooks)
        return make();
    if (number >= m_knownLooks.size()) {
        m_knownLooks.resize(number + 64);
        m_looks.resize(std::max(m_looks.size(), m_knownLooks.size()));
    }
    if (!m_knownLooks[number]) {
        m_looks[number] = make();
        m_knownLooks[number] = true;
    }
    return m_looks[number];
}

const GiDrawer::Look &GiDrawer::look()
{
    // Once asked for, the traits may change at any time.
    if (m_hasTraits)
        m_look = resolve(m_traits.color, m_traits.layer, m_traits.linetype, m_traits.lineWeight, m_traits.linetypeScale,
                         m_traits.transparency);
    return m_look;
}

ZvGiTraits &GiDrawer::traits()
{
    if (!m_hasTraits && m_entity) {
        m_traits.color = m_entity->color();
        m_traits.layer = m_entity->layerId();
        m_traits.linetype = m_entity->linetypeId();
        m_traits.lineWeight = m_entity->lineWeight();
        m_traits.linetypeScale = m_entity->linetypeScale();
        m_traits.transparency = m_entity->transparency();
        m_hasTraits = true;
    }
    return m_traits;
}

double GiDrawer::deviation() const
{
    return m_frame.scale > 0.0 ? kChordTolerance * m_target.resolution / m_frame.scale : 0.0;
}

double GiDrawer::widthOf(const Look &look) const
{
    if (!m_options.lineWeights)
        return m_target.minimumWidth;
    const int weight = look.weight >= 0 ? int(look.weight) : kDefaultWeight;
    return std::max(m_target.minimumWidth, weight / 100.0 * m_target.unitsPerMillimetre);
}

GiStroke GiDrawer::strokeOf(const Look &look, double &dashStart, double &dashTotal)
{
    GiStroke stroke;
    stroke.color = shown(look.color, look.alpha);
    stroke.width = widthOf(look);
    dashStart = 0.0;
    dashTotal = 0.0;
    if (m_isPlain)
        return stroke;
    if (m_options.highlight) {
        stroke.dashes = &m_highlightDashes;
        dashTotal = m_highlightDashes[0] + m_highlightDashes[1];
        return stroke;
    }
    const double scale = m_frame.patternScale * m_linetypeScale * look.linetypeScale;
    const double dotLength = std::max(m_target.resolution, stroke.width);
    if (const GiDashes *dashes = m_styles.dashes(look.linetype, scale, dotLength, m_target.resolution)) {
        stroke.dashes = &dashes->lengths;
        dashStart = dashes->start;
        dashTotal = dashes->total;
    }
    return stroke;
}

// ---- strokes

void GiDrawer::strokeClipped(const GiStroke &stroke, const QPointF *points, int count, double start, double total,
                             const QRectF &box)
{
    std::vector<QPointF> run;
    double runStart = 0.0;
    double along = start;
    const auto end = [&] {
        if (run.size() > 1)
            m_target.sink->stroke(stroke, run.data(), int(run.size()), total > 0.0 ? std::fmod(runStart, total) : 0.0);
        run.clear();
    };
    for (int i = 1; i < count; ++i) {
        QPointF a = points[i - 1];
        QPointF b = points[i];
        double from = 0.0;
        double to = 1.0;
        const double segment = stroke.dashes ? length(b - a) : 0.0;
        if (giClipSegment(box, a, b, from, to)) {
            if (from > 0.0)
                end();
            if (run.empty()) {
                runStart = along + segment * from;
                run.push_back(a);
            }
            run.push_back(b);
            if (to < 1.0)
                end();
        } else {
            end();
        }
        along += segment;
    }
    end();
}

void GiDrawer::strokePlain(const Look &look, const QPointF *points, int count)
{
    GiStroke stroke;
    stroke.color = shown(look.color, look.alpha);
    stroke.width = m_target.minimumWidth;
    const QRectF box = boxOf(points, count);
    if (!isFinite(box) || isOutside(box))
        return;
    const QRectF safe = m_target.clip.adjusted(-kSafeMargin, -kSafeMargin, kSafeMargin, kSafeMargin);
    strokeClipped(stroke, points, count, 0.0, 0.0, safe);
}

void GiDrawer::dot(const Look &look, const QPointF &at)
{
    const double half = m_target.resolution / 2;
    const QPointF points[2] = {at - QPointF(half, 0.0), at + QPointF(half, 0.0)};
    strokePlain(look, points, 2);
}

void GiDrawer::strokePoints(std::vector<QPointF> &points)
{
    const Look &current = look();
    if (!current.isVisible || points.size() < 2)
        return;
    const QRectF box = boxOf(points.data(), int(points.size()));
    if (!isFinite(box))
        return;
    double start = 0.0;
    double total = 0.0;
    GiStroke stroke = strokeOf(current, start, total);
    const double half = stroke.width / 2;
    if (isOutside(box.adjusted(-half, -half, half, half)))
        return;
    if (box.width() < m_target.resolution && box.height() < m_target.resolution) {
        dot(current, box.center());
        return;
    }
    if (stroke.dashes) {
        double sum = 0.0;
        for (std::size_t i = 1; i < points.size(); ++i)
            sum += length(points[i] - points[i - 1]);
        // The raster engine cuts thin lines at its own clip without turning their pattern on, so they end there.
        const double margin = stroke.width > 1.5 ? stroke.width : 0.0;
        const QRectF near = m_target.clip.adjusted(-margin, -margin, margin, margin);
        const double inView
            = near.contains(box) ? sum : std::min(sum, double(points.size()) * (near.width() + near.height()));
        if (inView / total * double(stroke.dashes->size()) > kMaxDashes) {
            stroke.dashes = nullptr;
        } else {
            if (near.contains(box))
                m_target.sink->stroke(stroke, points.data(), int(points.size()), start);
            else
                strokeClipped(stroke, points.data(), int(points.size()), start, total, near);
            if (!m_options.highlight && m_styles.linetype(current.linetype).isComplex)
                drawPatternFigures(points);
            return;
        }
    }
    const QRectF safe = m_target.clip.adjusted(-kSafeMargin, -kSafeMargin, kSafeMargin, kSafeMargin);
    if (points.size() > 32) {
        // Maps and scans have far more points than pixels.
        const double near = 0.3 * m_target.resolution;
        std::size_t kept = 0;
        for (std::size_t i = 1; i < points.size(); ++i) {
            const QPointF step = points[i] - points[kept];
            if (std::abs(step.x()) > near || std::abs(step.y()) > near || i + 1 == points.size())
                points[++kept] = points[i];
        }
        points.resize(kept + 1);
    }
    if (safe.contains(box))
        m_target.sink->stroke(stroke, points.data(), int(points.size()), 0.0);
    else
        strokeClipped(stroke, points.data(), int(points.size()), 0.0, 0.0, safe);
    // A pattern may have texts or shapes and no gaps.
    if (!m_isPlain && !m_options.highlight && m_styles.linetype(current.linetype).isComplex)
        drawPatternFigures(points);
}

void GiDrawer::polyline(const ZvGePoint3d *points, int count, bool closed)
{
    if (count < 1)
        return;
    if (count == 1) {
        point(points[0]);
        return;
    }
    m_points.resize(std::size_t(count));
    for (int i = 0; i < count; ++i)
        m_points[std::size_t(i)] = map(points[i]);
    if (closed && count > 2)
        m_points.push_back(m_points.front());
    strokePoints(m_points);
}

void GiDrawer::arcAt(const QPointF &center, const QPointF &u, const QPointF &v, double start, double sweep)
{
    const double radius = std::max(length(u), length(v));
    const double reachX = std::hypot(u.x(), v.x());
    const double reachY = std::hypot(u.y(), v.y());
    const QRectF box(center.x() - reachX, center.y() - reachY, 2 * reachX, 2 * reachY);
    const double margin = 2.5 * m_target.unitsPerMillimetre;
    if (!isFinite(box) || isOutside(box.adjusted(-margin, -margin, margin, margin)))
        return;
    const Look &current = look();
    if (!current.isVisible)
        return;
    if (radius < m_target.resolution / 2) {
        dot(current, center);
        return;
    }
    const QRectF safe = m_target.clip.adjusted(-kSafeMargin, -kSafeMargin, kSafeMargin, kSafeMargin);
    if (m_target.nativeArcs && safe.contains(box)) {
        double dashStart = 0.0;
        double total = 0.0;
        const GiStroke stroke = strokeOf(current, dashStart, total);
        if (dashStart == 0.0 && !m_styles.linetype(current.linetype).isComplex
            && m_target.sink->strokeArc(stroke, center, u, v, start, sweep))
            return;
    }
    const auto at = [&](double t) { return center + u * std::cos(t) + v * std::sin(t); };
    const double tolerance = kChordTolerance * m_target.resolution;
    const double step = 2.0 * std::acos(std::max(0.0, 1.0 - tolerance / radius));
    const double wanted = std::ceil(std::abs(sweep) / std::max(step, 1e-9));
    std::vector<QPointF> &points = m_points;
    points.clear();
    if (wanted <= kMaxChords) {
        const int count = std::max(int(wanted), std::max(1, int(std::ceil(std::abs(sweep) / (kPi / 4)))));
        points.reserve(std::size_t(count) + 1);
        // Turning a vector on by the same angle is cheaper than asking for the sine of each.
        const double c = std::cos(sweep / count);
        const double s = std::sin(sweep / count);
        double x = std::cos(start);
        double y = std::sin(start);
        for (int i = 0; i <= count; ++i) {
            points.push_back(center + u * x + v * y);
            const double turned = x * c - y * s;
            y = x * s + y * c;
            x = turned;
        }
        points.back() = at(start + sweep);
        strokePoints(points);
        return;
    }
    // A close look at a piece of a large arc: only the pieces in view are made fine.
    const int pieces = 256;
    const double piece = sweep / pieces;
    const double bulge = radius * (1.0 - std::cos(piece / 2));
    for (int i = 0; i < pieces; ++i) {
        const double from = start + piece * i;
        const QPointF ends[2] = {at(from), at(from + piece)};
        points.push_back(ends[0]);
        if (isOutside(boxOf(ends, 2).adjusted(-bulge - margin, -bulge - margin, bulge + margin, bulge + margin)))
            continue;
        const int count = int(std::min(std::ceil(std::abs(piece) / step), double(kMaxChords)));
        for (int k = 1; k < count; ++k)
            points.push_back(at(from + piece * k / count));
    }
    points.push_back(at(start + sweep));
    strokePoints(points);
}

void GiDrawer::arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &normal, double start, double sweep)
{
    const bool isPlain = normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0;
    const ZvGeVector3d x = isPlain ? ZvGeVector3d(1, 0, 0) : normal.arbitraryXAxis();
    const ZvGeVector3d y = isPlain ? ZvGeVector3d(0, 1, 0) : normal.normal().crossProduct(x);
    arcAt(map(center), mapVector(x * radius), mapVector(y * radius), start, sweep);
}

void GiDrawer::ellipse(const ZvGePoint3d &center, const ZvGeVector3d &majorAxis, const ZvGeVector3d &minorAxis,
                       double start, double sweep)
{
    arcAt(map(center), mapVector(majorAxis), mapVector(minorAxis), start, sweep);
}

void GiDrawer::point(const ZvGePoint3d &position)
{
    const Look current = look();
    if (!current.isVisible)
        return;
    const QPointF at = map(position);
    // The points that a dimension was made from are dots, whatever points look like.
    if (m_isPlain || m_frame.isDimension) {
        dot(current, at);
        return;
    }
    const int figure = m_pointMode & 7;
    // Above 0 in drawing units, below 0 in per cent of the view's height, 0 for five per cent of it.
    const double size = m_pointSize > 0.0 ? m_pointSize * m_frame.scale
                                          : m_target.clip.height() * (m_pointSize < 0.0 ? -m_pointSize / 100.0 : 0.05);
    const double half = size / 2;
    const bool hasFrame = (m_pointMode & (kPointCircle | kPointSquare)) != 0;
    const auto line = [&](const QPointF &from, const QPointF &to) {
        const QPointF ends[2] = {at + from, at + to};
        strokePlain(current, ends, 2);
    };
    if (figure == 0 || (size < m_target.resolution && (figure != 1 || hasFrame)))
        dot(current, at);
    if (size < m_target.resolution)
        return;
    if (figure == 2) {
        line({-size, 0}, {size, 0});
        line({0, -size}, {0, size});
    } else if (figure == 3) {
        line({-size, -size}, {size, size});
        line({-size, size}, {size, -size});
    } else if (figure == 4) {
        line({0, -half}, {0, 0});
    }
    if (m_pointMode & kPointSquare) {
        const QPointF corners[] = {at + QPointF(-half, -half), at + QPointF(half, -half), at + QPointF(half, half),
                                   at + QPointF(-half, half), at + QPointF(-half, -half)};
        strokePlain(current, corners, 5);
    }
    if (m_pointMode & kPointCircle) {
        std::vector<QPointF> circle;
        constexpr int kChords = 32;
        for (int i = 0; i <= kChords; ++i)
            circle.push_back(at + QPointF(std::cos(2 * kPi * i / kChords), std::sin(2 * kPi * i / kChords)) * half);
        strokePlain(current, circle.data(), int(circle.size()));
    }
}

void GiDrawer::ray(const ZvGePoint3d &base, const ZvGeVector3d &direction, bool both)
{
    const QPointF from = map(base);
    const QPointF along = mapVector(direction);
    const double speed = length(along);
    if (!(speed > 0.0) || !std::isfinite(speed)) {
        point(base);
        return;
    }
    // Far enough to leave the clip from wherever the base lies.
    const QPointF middle = m_target.clip.center();
    const double reach = length(from - middle) + m_target.clip.width() + m_target.clip.height();
    if (!std::isfinite(reach))
        return;
    const QPointF step = along / speed * reach;
    m_points.clear();
    m_points.push_back(both ? from - step : from);
    m_points.push_back(from + step);
    strokePoints(m_points);
}

void GiDrawer::widePolyline(const ZvGePoint3d *points, const double *startWidths, const double *endWidths, int count,
                            bool closed, const ZvGeVector3d &normal)
{
    const Look current = look();
    if (!current.isVisible || count < 2)
        return;
    const int segments = closed ? count : count - 1;
    double widest = 0.0;
    for (int i = 0; i < segments; ++i)
        widest = std::max({widest, startWidths[i], endWidths[i]});
    if (widest * m_frame.scale <= m_target.minimumWidth || m_options.highlight) {
        polyline(points, count, closed);
        return;
    }
    // Directions across each segment in its plane.
    std::vector<ZvGeVector3d> across(static_cast<std::size_t>(segments));
    for (int i = 0; i < segments; ++i)
        across[std::size_t(i)] = normal.crossProduct(points[(i + 1) % count] - points[i]).normal();
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const auto miter = [&](int before, int after, double width, ZvGeVector3d &side) {
        // Both segments end on the line that halves their angle, unless the corner is too sharp for that.
        const ZvGeVector3d a = across[std::size_t(before)];
        const ZvGeVector3d b = across[std::size_t(after)];
        const ZvGeVector3d sum = a + b;
        const double cosine = sum.lengthSqrd() / 4.0;
        if (cosine < 0.03)
            return false;
        side = sum * (width / 4.0 / cosine);
        return true;
    };
    for (int i = 0; i < segments; ++i) {
        const int next = (i + 1) % count;
        ZvGeVector3d from = across[std::size_t(i)] * (startWidths[i] / 2);
        ZvGeVector3d to = across[std::size_t(i)] * (endWidths[i] / 2);
        const int before = i > 0 ? i - 1 : closed ? segments - 1 : -1;
        const int after = i + 1 < segments ? i + 1 : closed ? 0 : -1;
        if (before >= 0 && std::abs(endWidths[before] - startWidths[i]) < 1e-9 * widest)
            miter(before, i, startWidths[i], from);
        if (after >= 0 && std::abs(endWidths[i] - startWidths[after]) < 1e-9 * widest)
            miter(i, after, endWidths[i], to);
        QPolygonF quad;
        quad << map(points[i] + from) << map(points[next] + to) << map(points[next] - to) << map(points[i] - from);
        if (isOutside(quad.boundingRect()))
            continue;
        clipPolygon(quad, m_target.clip.adjusted(-kSafeMargin, -kSafeMargin, kSafeMargin, kSafeMargin));
        if (quad.isEmpty())
            continue;
        path.addPolygon(quad);
        path.closeSubpath();
    }
    if (!path.isEmpty())
        m_target.sink->fill(path, QColor::fromRgba(shown(current.color, current.alpha)));
}

// ---- areas

QPainterPath GiDrawer::fillPath(const ZvGiFill &fill) const
{
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    const QRectF safe = m_target.clip.adjusted(-kSafeMargin, -kSafeMargin, kSafeMargin, kSafeMargin);
    for (const auto &loop : fill.loops) {
        QPolygonF polygon;
        polygon.reserve(int(loop.size()) + 1);
        for (const ZvGePoint3d &p : loop)
            polygon.append(map(p));
        const QRectF box = polygon.boundingRect();
        if (!isFinite(box))
            continue;
        if (!safe.contains(box))
            clipPolygon(polygon, safe);
        if (polygon.size() < 3)
            continue;
        path.addPolygon(polygon);
        path.closeSubpath();
    }
    return path;
}

void GiDrawer::fill(const ZvGiFill &fill)
{
    const Look current = look();
    if (!current.isVisible)
        return;
    const QPainterPath path = fillPath(fill);
    if (path.isEmpty() || isOutside(path.boundingRect()))
        return;
    if (fill.wipeout) {
        m_target.sink->fill(path, QColor::fromRgb(fromPacked(m_options.background)));
        return;
    }
    if (fill.gradient && !m_options.highlight) {
        const QRectF box = path.boundingRect();
        const QPointF direction(std::cos(fill.gradientAngle), -std::sin(fill.gradientAngle));
        const double reach = (std::abs(direction.x()) * box.width() + std::abs(direction.y()) * box.height()) / 2;
        QLinearGradient gradient(box.center() - direction * reach, box.center() + direction * reach);
        const GiLayer layer = m_styles.layer(current.layer);
        gradient.setColorAt(0.0, QColor::fromRgba(shown(rgbOf(fill.gradientColors[0], layer), current.alpha)));
        gradient.setColorAt(1.0, QColor::fromRgba(shown(rgbOf(fill.gradientColors[1], layer), current.alpha)));
        m_target.sink->fill(path, gradient);
        return;
    }
    if (fill.solid || m_isPlain) {
        // What is selected stays visible below the highlight.
        const int alpha = m_options.highlight ? current.alpha / 2 : current.alpha;
        m_target.sink->fill(path, QColor::fromRgba(shown(current.color, alpha)));
        return;
    }
    fillPattern(fill, path);
}

void GiDrawer::fillPattern(const ZvGiFill &fill, const QPainterPath &path)
{
    const Look current = look();
    const ZvGeMatrix3d toWorld = ZvGeMatrix3d::planeToWorld(fill.normal);
    bool ok = false;
    const ZvGeMatrix3d toPlane = toWorld.inverse(&ok);
    if (!ok)
        return;
    std::vector<std::vector<QPointF>> loops;
    for (const auto &loop : fill.loops) {
        loops.emplace_back();
        for (ZvGePoint3d p : loop) {
            p.transformBy(toPlane);
            loops.back().emplace_back(p.x, p.y);
        }
    }
    // The plane's two axes and origin on the device, and back from there: what of the plane is in view?
    const ZvGePoint3d origin = ZvGePoint3d(0, 0, fill.elevation).transformBy(toWorld);
    const ZvGePoint3d alongX = ZvGePoint3d(1, 0, fill.elevation).transformBy(toWorld);
    const ZvGePoint3d alongY = ZvGePoint3d(0, 1, fill.elevation).transformBy(toWorld);
    const QPointF o = map(origin);
    const QPointF x = map(alongX) - o;
    const QPointF y = map(alongY) - o;
    const QTransform toDevice(x.x(), x.y(), y.x(), y.y(), o.x(), o.y());
    bool isInvertible = false;
    const QTransform fromDevice = toDevice.inverted(&isInvertible);
    const double unit = std::max(length(x), length(y));
    if (!isInvertible || !(unit > 0.0))
        return; // seen from the side
    const QRectF visible = fromDevice.mapRect(m_target.clip.intersected(path.boundingRect()).adjusted(-1, -1, 1, 1));
    const GiHatchLines lines = giHatchLines(loops, fill.pattern, visible, m_target.resolution / unit);
    if (lines.coverage > 0.0) {
        const int alpha = int(current.alpha * lines.coverage);
        m_target.sink->fill(path, QColor::fromRgba(shown(current.color, alpha)));
        return;
    }
    GiStroke stroke;
    stroke.color = shown(current.color, current.alpha);
    stroke.width = widthOf(current);
    for (std::size_t i = 0; i + 1 < lines.ends.size(); i += 2) {
        const QPointF ends[2] = {toDevice.map(lines.ends[i]), toDevice.map(lines.ends[i + 1])};
        m_target.sink->stroke(stroke, ends, 2, 0.0);
    }
}

void GiDrawer::image(const ZvString &path, const ZvGePoint3d &origin, const ZvGeVector3d &u, const ZvGeVector3d &v,
                     const std::vector<ZvGePoint2d> &clip)
{
    const Look current = look();
    if (!current.isVisible)
        return;
    const QPointF o = map(origin);
    const QPointF x = mapVector(u);
    const QPointF y = mapVector(v);
    const QPolygonF outline({o, o + x, o + x + y, o + y});
    if (!isFinite(outline.boundingRect()) || isOutside(outline.boundingRect()))
        return;
    const int side = int(std::clamp(std::max(length(x), length(y)) / m_target.resolution, 1.0, 8192.0));
    const QImage picture = m_options.highlight ? QImage() : m_images.image(path, side);
    if (picture.isNull()) {
        // A frame with its diagonals stands for a picture that cannot be read.
        const QPointF frame[] = {outline[0], outline[1], outline[2], outline[3], outline[0], outline[2]};
        strokePlain(current, frame, 6);
        const QPointF diagonal[] = {outline[1], outline[3]};
        strokePlain(current, diagonal, 2);
        return;
    }
    // From the unit square, y up, to the device; the image itself counts from its upper left corner.
    const QTransform square(x.x(), x.y(), y.x(), y.y(), o.x(), o.y());
    const QTransform place = QTransform(1.0 / picture.width(), 0, 0, -1.0 / picture.height(), 0, 1) * square;
    QPainterPath clipPath;
    if (clip.size() > 2) {
        QPolygonF polygon;
        for (const ZvGePoint2d &corner : clip)
            polygon << square.map(QPointF(corner.x, corner.y));
        if (isFinite(polygon.boundingRect())) {
            clipPath.addPolygon(polygon);
            clipPath.closeSubpath();
        }
    }
    if (!clipPath.isEmpty())
        m_target.sink->pushClip(clipPath);
    m_target.sink->image(picture, place);
    if (!clipPath.isEmpty())
        m_target.sink->popClip();
}

// ---- texts

void GiDrawer::drawLayout(const GiTextLayout &layout, const ZvGePoint3d &position, const ZvGeVector3d &direction,
                          const ZvGeVector3d &normal, double height)
{
    const Look current = look();
    const QPointF o = map(position);
    const QPointF x = mapVector(direction.normal());
    const QPointF y = mapVector(normal.crossProduct(direction).normal());
    const QTransform place(x.x(), x.y(), y.x(), y.y(), o.x(), o.y());
    const double reach = height * m_frame.scale;
    const QRectF box = place.mapRect(layout.box);
    if (!isFinite(box) || isOutside(box.adjusted(-reach, -reach, reach, reach)))
        return;
    if (m_isPlain) {
        QPainterPath area;
        area.addPolygon(place.map(QPolygonF(layout.box)));
        area.closeSubpath();
        m_target.sink->fill(area, QColor::fromRgba(current.color));
        return;
    }
    if (height * std::max(length(x), length(y)) < kReadableHeight * m_target.resolution || layout.pieces.empty()) {
        for (const QLineF &line : layout.lines) {
            const QPointF ends[2] = {place.map(line.p1()), place.map(line.p2())};
            if (length(ends[1] - ends[0]) < m_target.resolution)
                dot(current, ends[0]);
            else
                strokePlain(current, ends, 2);
        }
        return;
    }
    const GiLayer layer = m_styles.layer(current.layer);
    const auto colorOf = [&](bool hasColor, const ZvCmColor &color) {
        if (!hasColor || color.isByBlock())
            return shown(current.color, current.alpha);
        return shown(rgbOf(color, layer), current.alpha);
    };
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    QRgb pathColor = 0;
    const auto bringOut = [&] {
        if (!path.isEmpty())
            m_target.sink->fill(path, QColor::fromRgba(pathColor));
        path = QPainterPath();
        path.setFillRule(Qt::WindingFill);
    };
    const auto startWith = [&](QRgb color) {
        if (color != pathColor)
            bringOut();
        pathColor = color;
    };
    for (const GiTextLayout::Piece &piece : layout.pieces) {
        const QTransform glyphPlace = piece.place * place;
        const double size = reach;
        const QPointF at = glyphPlace.map(QPointF(0.5, 0.5));
        if (isOutside(QRectF(at.x() - 4 * size, at.y() - 4 * size, 8 * size, 8 * size)))
            continue; // a long line of text of which one sees a part
        startWith(colorOf(piece.hasColor, piece.color));
        path.addPath(glyphPlace.map(piece.glyph->path));
    }
    for (const GiTextLayout::Bar &bar : layout.bars) {
        startWith(colorOf(bar.hasColor, bar.color));
        const QPointF from = place.map(bar.from);
        const QPointF to = place.map(bar.to);
        const QPointF along = to - from;
        const double size = length(along);
        if (!(size > 0.0))
            continue;
        const QPointF side = QPointF(-along.y(), along.x()) / size
            * std::max(bar.thickness * m_frame.scale, m_target.minimumWidth) / 2.0;
        path.addPolygon(QPolygonF({from + side, to + side, to - side, from - side}));
        path.closeSubpath();
    }
    bringOut();
}

void GiDrawer::text(const ZvGiText &text)
{
    if (!look().isVisible || !(text.height > 0.0))
        return;
    GiTextLayout layout;
    giLayoutText(text, m_styles.textStyle(text.style), layout);
    drawLayout(layout, text.position, text.direction, text.normal, text.height);
}

void GiDrawer::mtext(const ZvGiMText &text)
{
    if (!look().isVisible || !(text.height > 0.0))
        return;
    GiTextLayout layout;
    giLayoutMText(text, m_styles.textStyle(text.style), layout);
    if (text.backgroundFill && !layout.lines.empty()) {
        const ZvGeVector3d x = text.direction.normal();
        const ZvGeVector3d y = text.normal.crossProduct(text.direction).normal();
        const double margin = (text.backgroundScale - 1.0) * text.height;
        const QRectF box = layout.box.adjusted(-margin, -margin, margin, margin);
        QPolygonF polygon;
        for (const QPointF &corner : {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()})
            polygon << map(text.position + x * corner.x() + y * corner.y());
        if (isFinite(polygon.boundingRect()) && !isOutside(polygon.boundingRect()) && !m_options.highlight) {
            QPainterPath path;
            path.addPolygon(polygon);
            path.closeSubpath();
            const bool isPlain = text.backgroundColor.isByLayer() || text.backgroundColor.isByBlock();
            const GiLayer layer = m_styles.layer(look().layer);
            const QRgb color = isPlain ? fromPacked(m_options.background) : rgbOf(text.backgroundColor, layer);
            m_target.sink->fill(path, QColor::fromRgb(color));
        }
    }
    drawLayout(layout, text.position, text.direction, text.normal, text.height);
}

void GiDrawer::drawPatternText(const Look &look, const GiTextLayout &layout, const QTransform &place)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const GiTextLayout::Piece &piece : layout.pieces)
        path.addPath((piece.place * place).map(piece.glyph->path));
    if (!path.isEmpty())
        m_target.sink->fill(path, QColor::fromRgba(shown(look.color, look.alpha)));
}

void GiDrawer::drawPatternShape(const Look &look, const GiShape &shape, const QTransform &place)
{
    const QRectF box = place.mapRect(shape.box);
    if (!isFinite(box) || isOutside(box)
        || (box.width() < m_target.resolution / 2 && box.height() < m_target.resolution / 2))
        return;
    GiStroke stroke;
    stroke.color = shown(look.color, look.alpha);
    stroke.width = widthOf(look);
    const QRectF safe = m_target.clip.adjusted(-kSafeMargin, -kSafeMargin, kSafeMargin, kSafeMargin);
    std::vector<QPointF> points;
    for (const std::vector<QPointF> &line : shape.strokes) {
        points.clear();
        for (const QPointF &point : line)
            points.push_back(place.map(point));
        strokeClipped(stroke, points.data(), int(points.size()), 0.0, 0.0, safe);
    }
}

void GiDrawer::drawPatternFigures(const std::vector<QPointF> &points)
{
    const Look current = look();
    const GiLinetype linetype = m_styles.linetype(current.linetype);
    const double scale = m_frame.patternScale * m_linetypeScale * current.linetypeScale;
    const double period = linetype.length * scale;
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        sum += length(points[i] - points[i - 1]);
    if (!(period > 0.0) || sum / period > kMaxPatternFigures)
        return;
    double end = 0.0; // of the element at hand, within the pattern
    for (const auto &dash : linetype.dashes) {
        end += std::abs(dash.length) * scale;
        const bool isText = (dash.flags & 2) != 0 && !dash.text.isEmpty();
        const GiShape *shape = (dash.flags & 4) != 0 ? m_styles.shape(dash.styleId, dash.shapeNumber) : nullptr;
        if (!isText && !shape)
            continue;
        const GiTextStyle &style = m_styles.textStyle(dash.styleId);
        GiTextLayout layout;
        double size = dash.scale * scale; // of the text's capitals, or of the shape's unit
        double reach = 0.0; // nothing of it is farther from its place
        if (isText) {
            size *= style.fixedHeight > 0.0 ? style.fixedHeight : 1.0;
            reach = 8.0 * size;
            if (!(size >= kReadablePatternHeight * m_target.resolution))
                continue;
            ZvGiText text;
            text.text = dash.text;
            text.height = size;
            text.widthFactor = style.widthFactor;
            text.oblique = style.oblique;
            giLayoutText(text, style, layout);
        } else {
            const QRectF &box = shape->box;
            reach = std::abs(size)
                * std::max({std::abs(box.left()), std::abs(box.right()), std::abs(box.top()), std::abs(box.bottom())})
                * 1.5;
        }
        double along = 0.0; // up to the start of the segment
        double next = end;
        for (std::size_t i = 1; i < points.size(); ++i) {
            const QPointF step = points[i] - points[i - 1];
            const double distance = length(step);
            for (; next <= along + distance && distance > 0.0; next += period) {
                const QPointF direction = step / distance;
                const QPointF up(direction.y(), -direction.x()); // y runs down
                const QPointF at
                    = points[i - 1] + direction * (next - along + dash.offsetX * scale) + up * (dash.offsetY * scale);
                if (isOutside(QRectF(at.x() - reach, at.y() - reach, 2 * reach, 2 * reach)))
                    continue;
                const double angle
                    = dash.rotation + ((dash.flags & 1) ? 0.0 : std::atan2(-direction.y(), direction.x()));
                const double c = std::cos(angle);
                const double s = std::sin(angle);
                QTransform place(c, -s, -s, -c, at.x(), at.y());
                if (shape) {
                    drawPatternShape(current, *shape, QTransform::fromScale(size, size) * place);
                    continue;
                }
                // On a line that runs to the left it would stand on its head: turn it around its own middle.
                if (c < -1e-6)
                    place = QTransform(-1, 0, 0, -1, layout.lines[0].x2(), size) * place;
                drawPatternText(current, layout, place);
            }
            along += distance;
        }
    }
}
