// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbrecords.h"
#include "entity_draw.h"
#include "entity_geometry.h"

#include <algorithm>
#include <charconv>
#include <memory>

using namespace zvdbgeo;

namespace {
enum DimensionType { kLinear, kAligned, kAngular, kDiameter, kRadius, kAngularThreePoint, kOrdinate };
enum DimensionFlag { kOrdinateOfX = 64 };

/// What the plain picture takes from the dimension style.
struct DimLook
{
    double textHeight = 2.5;
    double arrowSize = 2.5;
    double extensionOffset = 0.625;
    double extensionBeyond = 1.25;
    double gap = 0.625;
    double factor = 1.0;
    int decimals = 2;
    int angleDecimals = 0;
    bool trimZeros = true;
    bool horizontalText = false;
    ZvDbObjectId textStyle;
};

double usableOr(double value, double otherwise)
{
    return isUsable(value) && value >= 0.0 ? value : otherwise;
}

DimLook lookOf(ZvDbObjectId style)
{
    DimLook look;
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> record(style, ZvDb::kForRead);
    if (!record)
        return look;
    double scale = usableOr(record->real("DIMSCALE"), 1.0);
    if (!(scale > 0.0)) // 0: fitted to the layout
        scale = 1.0;
    look.textHeight = usableOr(record->real("DIMTXT"), look.textHeight) * scale;
    look.arrowSize = usableOr(record->real("DIMASZ"), look.arrowSize) * scale;
    look.extensionOffset = usableOr(record->real("DIMEXO"), look.extensionOffset) * scale;
    look.extensionBeyond = usableOr(record->real("DIMEXE"), look.extensionBeyond) * scale;
    const double gap = record->real("DIMGAP"); // below 0: framed text
    look.gap = isUsable(gap) ? std::fabs(gap) * scale : look.gap * scale;
    const double factor = record->real("DIMLFAC");
    look.factor = isUsable(factor) && factor != 0.0 ? std::fabs(factor) : 1.0;
    look.decimals = std::min(std::max(record->integer("DIMDEC"), 0), 8);
    look.angleDecimals = std::min(std::max(record->integer("DIMADEC"), 0), 8);
    look.trimZeros = (record->integer("DIMZIN") & 8) != 0;
    look.horizontalText = record->integer("DIMTIH") != 0;
    look.textStyle = record->idValue("DIMTXSTY");
    return look;
}

/// By std::to_chars: an application may have set a locale with decimal commas.
ZvString formatted(double value, int decimals, bool trimZeros)
{
    char text[64];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    if (end.ec != std::errc())
        return ZvString("0");
    std::string_view view(text, std::size_t(end.ptr - text));
    if (trimZeros && view.find('.') != std::string_view::npos) {
        view = view.substr(0, view.find_last_not_of('0') + 1);
        if (view.back() == '.')
            view.remove_suffix(1);
    }
    return ZvString(view);
}

ZvGePoint3d middleOf(const ZvGePoint3d &a, const ZvGePoint3d &b)
{
    return a + (b - a) * 0.5;
}

/// Where two lines meet, in the plane; false for parallel ones.
bool meet(const ZvGePoint3d &a, const ZvGeVector3d &u, const ZvGePoint3d &b, const ZvGeVector3d &v, ZvGePoint3d &at)
{
    const double det = u.x * v.y - u.y * v.x;
    if (!(std::fabs(det) > 1e-12 * u.length() * v.length()))
        return false;
    const ZvGeVector3d d = b - a;
    at = a + u * ((d.x * v.y - d.y * v.x) / det);
    return isUsable(at);
}

/// Draws the plain picture in the coordinates of the dimension's plane.
class PlainDimension
{
public:
    PlainDimension(ZvGiWorldDraw &draw, const Plane &plane, const DimLook &look) : m_draw(draw), m_plane(plane), m_look(look) { }

    void line(const ZvGePoint3d &from, const ZvGePoint3d &to) const
    {
        zvdbDrawLine(m_draw, m_plane.toWorld(from), m_plane.toWorld(to));
    }
    void arrow(const ZvGePoint3d &tip, const ZvGePoint3d &from) const
    {
        zvdbDrawArrow(m_draw, m_plane.toWorld(tip), m_plane.toWorld(from), m_look.arrowSize, m_plane.z());
    }
    /// From beside the measured point to beyond the dimension line.
    void extension(const ZvGePoint3d &measured, const ZvGePoint3d &foot) const
    {
        const ZvGeVector3d along = (foot - measured).normal();
        if (measured.distanceTo(foot) > m_look.extensionOffset)
            line(measured + along * m_look.extensionOffset, foot + along * m_look.extensionBeyond);
    }
    void measuredLine(const ZvGePoint3d &from, const ZvGePoint3d &to) const
    {
        line(from, to);
        arrow(from, to);
        arrow(to, from);
    }
    void measuredArc(const ZvGePoint3d &center, double radius, double start, double end) const
    {
        if (!isUsable(center) || !isUsable(radius) || !(radius > 0.0))
            return;
        const double sweep = sweepOf(start, end);
        m_draw.arc(m_plane.toWorld(center), radius, m_plane.z(), start, sweep);
        const auto at = [&](double angle) { return center + ZvGeVector3d(std::cos(angle), std::sin(angle), 0.0) * radius; };
        const double head = std::min(m_look.arrowSize / radius, 0.5 * sweep);
        arrow(at(start), at(start + head));
        arrow(at(end), at(end - head));
    }
    void text(const ZvString &text, const ZvGePoint3d &middle, ZvGeVector3d along) const
    {
        if (text.isEmpty() || !isUsable(middle) || !(m_look.textHeight > 0.0))
            return;
        if (m_look.horizontalText || !(along.length() > 0.0))
            along = ZvGeVector3d::kXAxis;
        if (along.x < -1e-9 || (along.x < 1e-9 && along.y < 0.0)) // readable from below or from the right
            along = -along;
        ZvGiMText block;
        block.contents = text;
        block.position = m_plane.toWorld(middle);
        block.direction = (m_plane.x() * along.x + m_plane.y() * along.y).normal();
        block.normal = m_plane.z();
        block.height = m_look.textHeight;
        block.attachment = 5;
        block.style = m_look.textStyle;
        m_draw.mtext(block);
    }

private:
    ZvGiWorldDraw &m_draw;
    const Plane &m_plane;
    const DimLook &m_look;
};
}

ZVRX_DEFINE_MEMBERS(ZvDbDimension, ZvDbEntity)
ZvDbDimension::ZvDbDimension() = default;

ZvDbObjectId ZvDbDimension::dimensionStyle() const
{
    return m_style.isNull() && database() ? database()->dimstyle() : m_style;
}

Zv::ErrorStatus ZvDbDimension::setDimensionStyle(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbDimStyleTableRecord::desc()))
        return Zv::eInvalidInput;
    return store(m_style, id);
}

Zv::ErrorStatus ZvDbDimension::setDimstyleData(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbDimStyleTableRecord::desc()))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    // The overrides stand in the extended data, as a group behind the text "DSTYLE"; what else is there stays.
    ZvResBuf *const chain = xData("ACAD");
    ZvResBuf **link = chain ? const_cast<ZvResBuf **>(&chain->rbnext) : nullptr;
    bool changed = false;
    while (link && *link) {
        if ((*link)->restype != 1000 || (*link)->text() != "DSTYLE") {
            link = &(*link)->rbnext;
            continue;
        }
        ZvResBuf *const first = *link;
        ZvResBuf *last = first;
        int depth = 0;
        while (last->rbnext && (last->rbnext->restype == 1002 || depth > 0)) {
            last = last->rbnext;
            if (last->restype == 1002)
                depth += last->text() == "{" ? 1 : -1;
            if (depth <= 0)
                break;
        }
        *link = last->rbnext;
        last->rbnext = nullptr;
        zvutRelRb(first);
        changed = true;
    }
    if (changed)
        setXData(chain);
    if (chain)
        zvutRelRb(chain);
    makePicture(); // the block at hand shows the old style
    return Zv::eOk;
}

ZvDbObjectId ZvDbDimension::textStyleId() const
{
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> style(dimensionStyle(), ZvDb::kForRead);
    return style ? style->idValue("DIMTXSTY") : ZvDbObjectId();
}

const ZvGePoint3d *ZvDbDimension::pointOf(int code) const
{
    for (const auto &[pointCode, point] : m_points) {
        if (pointCode == code)
            return isUsable(point) ? &point : nullptr;
    }
    return nullptr;
}

void ZvDbDimension::setPointOf(int code, const ZvGePoint3d &point)
{
    for (auto &[pointCode, old] : m_points) {
        if (pointCode == code) {
            old = point;
            return;
        }
    }
    m_points.emplace_back(code, point);
}

namespace {
bool isInPlane(int code)
{
    return code == 11 || code == 12 || code == 16;
}

/// A new, empty block for a dimension's picture; the null id where it cannot be made.
ZvDbObjectId newPictureBlock(ZvDbDatabase &database, const ZvGePoint3d &origin)
{
    ZvDbBlockTable *table = nullptr;
    if (database.getSymbolTable(table, ZvDb::kForWrite) != Zv::eOk)
        return ZvDbObjectId();
    auto *record = new ZvDbBlockTableRecord;
    record->setName("*D"); // the table adds the number
    record->setOrigin(origin);
    ZvDbObjectId id;
    if (table->add(record, id) == Zv::eOk)
        record->close();
    else
        delete record;
    table->close();
    return id;
}

/// Makes entities of what a dimension draws by itself: lines, arrow heads, an arc, a text.
class PictureMaker : public ZvGiWorldDraw
{
public:
    std::vector<std::unique_ptr<ZvDbEntity>> entities;

    ZvGiTraits &traits() override { return m_traits; }
    double deviation() const override { return 0.0; }
    void polyline(const ZvGePoint3d *points, int count, bool) override
    {
        for (int i = 1; i < count; ++i)
            entities.push_back(std::make_unique<ZvDbLine>(points[i - 1], points[i]));
    }
    void arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &, double start, double sweep) override
    {
        entities.push_back(std::make_unique<ZvDbArc>(center, radius, start, start + sweep));
    }
    void fill(const ZvGiFill &fill) override
    {
        for (const std::vector<ZvGePoint3d> &loop : fill.loops) {
            if (loop.size() != 3)
                continue;
            auto solid = std::make_unique<ZvDbSolid>();
            for (int i = 0; i < 4; ++i)
                solid->setPointAt(i, loop[std::size_t(std::min(i, 2))]);
            entities.push_back(std::move(solid));
        }
    }
    void mtext(const ZvGiMText &text) override
    {
        auto block = std::make_unique<ZvDbMText>();
        block->setContents(text.contents);
        block->setLocation(text.position);
        block->setDirection(text.direction);
        block->setTextHeight(text.height);
        block->setAttachment(text.attachment);
        if (!text.style.isNull())
            block->setTextStyle(text.style);
        entities.push_back(std::move(block));
    }
    void widePolyline(const ZvGePoint3d *, const double *, const double *, int, bool, const ZvGeVector3d &) override { }
    void ellipse(const ZvGePoint3d &, const ZvGeVector3d &, const ZvGeVector3d &, double, double) override { }
    void point(const ZvGePoint3d &) override { }
    void ray(const ZvGePoint3d &, const ZvGeVector3d &, bool) override { }
    void text(const ZvGiText &) override { }
    void image(const ZvString &, const ZvGePoint3d &, const ZvGeVector3d &, const ZvGeVector3d &,
               const std::vector<ZvGePoint2d> &) override
    {
    }
    void block(ZvDbObjectId, const ZvGeMatrix3d &) override { }
    void viewport(ZvDbObjectId) override { }

private:
    ZvGiTraits m_traits;
};

/// A copy of a dimension's picture under a map, in a block of its own; the null id where that cannot be made.
ZvDbObjectId copyPicture(ZvDbObjectId block, const ZvGeMatrix3d &matrix)
{
    std::vector<ZvDbObjectId> entities;
    ZvGePoint3d origin;
    {
        ZvDbObjectPointer<ZvDbBlockTableRecord> from(block, ZvDb::kForRead);
        if (!from)
            return ZvDbObjectId();
        origin = from->origin();
        const std::uint64_t high = block.asInt64() & ~std::uint64_t(0xFFFFFFFF);
        for (std::uint32_t index : from->entityIndices()) {
            const ZvDbObjectId id = ZvDbObjectId::fromInt64(high | index);
            if (!id.isErased())
                entities.push_back(id);
        }
    }
    const ZvDbObjectId copy = newPictureBlock(*block.database(), origin);
    if (copy.isNull())
        return copy;
    for (ZvDbObjectId id : entities) {
        ZvDbObjectId entity;
        zvdbCopyEntity(id, copy, matrix, entity);
    }
    return copy;
}
}

void ZvDbDimension::makePicture()
{
    ZvDbDatabase *owner = database() ? database() : m_style.database();
    PictureMaker maker;
    if (owner)
        drawPlain(maker, ZvGeVector3d::kZAxis);
    m_block = maker.entities.empty() ? ZvDbObjectId() : newPictureBlock(*owner, ZvGePoint3d());
    if (pointOf(12))
        setPointOf(12, ZvGePoint3d());
    ZvDbObjectPointer<ZvDbBlockTableRecord> block(m_block, ZvDb::kForWrite);
    if (!block) {
        m_block = ZvDbObjectId(); // drawn from its points, then
        return;
    }
    ZvCmColor byBlock;
    byBlock.setColorMethod(ZvCm::kByBlock); // the dimension's own colour
    for (std::unique_ptr<ZvDbEntity> &entity : maker.entities) {
        ZvDbObjectId id;
        entity->setColor(byBlock);
        entity->transformBy(ZvGeMatrix3d::planeToWorld(m_normal));
        if (block->appendEntity(entity.get(), id) == Zv::eOk)
            entity.release()->close();
    }
}

Zv::ErrorStatus ZvDbDimension::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid() || !map.isSimilar())
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    const ZvGePoint3d *moved = pointOf(12);
    const ZvGePoint3d before = Plane(m_normal).toWorld(moved ? *moved : ZvGePoint3d());
    const bool sameSize = std::fabs(map.scale() - 1.0) < 1e-9;
    if (map.keepsDirections()) {
        // A move shifts the picture as a whole; its block may serve several copies of the dimension.
        const ZvGeVector3d shift(matrix.entry[0][3], matrix.entry[1][3], matrix.entry[2][3]);
        if (!m_block.isNull())
            setPointOf(12, Plane(m_normal).fromWorld(before + shift));
    } else if (sameSize && !m_block.isNull()) {
        m_block = copyPicture(m_block, matrix * ZvGeMatrix3d::translation(before.asVector()));
        if (moved)
            setPointOf(12, ZvGePoint3d());
    }
    for (auto &[code, point] : m_points) {
        if (code == 12)
            continue;
        if (isInPlane(code))
            point = map.point(point);
        else
            point.transformBy(matrix);
    }
    if (!map.keepsDirections())
        m_rotation = map.angle(m_rotation);
    if (dimensionType() != kAngular && dimensionType() != kAngularThreePoint)
        m_measurement *= map.scale();
    m_normal = map.normal();
    if (!sameSize && !m_block.isNull())
        makePicture(); // the old one shows the old number
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDimension::getGeomExtents(ZvGeExtents3d &extents) const
{
    return zvdbExtentsOfPicture(*this, extents);
}

void ZvDbDimension::worldDraw(ZvGiWorldDraw &draw) const
{
    if (m_block.isNull() || m_block.isErased()) {
        drawPlain(draw, m_normal);
        return;
    }
    const ZvGePoint3d *moved = pointOf(12);
    const ZvGePoint3d offset = Plane(m_normal).toWorld(moved ? *moved : ZvGePoint3d());
    draw.block(m_block, ZvGeMatrix3d::translation(offset.asVector()));
}

/// Draws the dimension from its points, in the plane of \a normal: its own, or Z for a picture in its own coordinates.
void ZvDbDimension::drawPlain(ZvGiWorldDraw &draw, const ZvGeVector3d &normal) const
{
    const Plane plane(m_normal);
    const Plane shown(normal);
    const DimLook look = lookOf(dimensionStyle());
    const PlainDimension picture(draw, shown, look);
    const auto flat = [&](int code) {
        const ZvGePoint3d *point = pointOf(code);
        return !point ? ZvGePoint3d() : isInPlane(code) ? *point : plane.fromWorld(*point);
    };
    const ZvGePoint3d p10 = flat(10);
    const ZvGePoint3d p13 = flat(13);
    const ZvGePoint3d p14 = flat(14);
    const ZvGePoint3d p15 = flat(15);
    const ZvGePoint3d p16 = flat(16);
    ZvGePoint3d textMiddle = p10;
    ZvGeVector3d along(1.0, 0.0, 0.0);
    double measured = 0.0; // without the style's factor; an angle in radians
    ZvString prefix;
    switch (dimensionType()) {
    case kLinear:
    case kAligned: {
        if (!pointOf(13) || !pointOf(14))
            return;
        const ZvGeVector3d direct(p14.x - p13.x, p14.y - p13.y, 0.0);
        along = dimensionType() == kAligned && direct.length() > 0.0 ? direct.normal()
                                                                    : ZvGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0.0);
        if (!isUsable(along))
            return;
        const ZvGePoint3d from = p10 + along * (p13 - p10).dotProduct(along);
        const ZvGePoint3d to = p10 + along * (p14 - p10).dotProduct(along);
        picture.extension(p13, from);
        picture.extension(p14, to);
        picture.measuredLine(from, to);
        measured = from.distanceTo(to);
        textMiddle = middleOf(from, to);
        break;
    }
    case kDiameter:
        picture.measuredLine(p10, p15);
        measured = p10.distanceTo(p15);
        along = p15 - p10;
        textMiddle = middleOf(p10, p15);
        prefix = "%%c"; // the diameter sign, whichever the font has
        break;
    case kRadius:
        picture.line(p10, p15);
        picture.arrow(p15, p10);
        measured = p10.distanceTo(p15);
        along = p15 - p10;
        textMiddle = middleOf(p10, p15);
        prefix = "R";
        break;
    case kAngular:
    case kAngularThreePoint: {
        ZvGePoint3d center = p15;
        ZvGeVector3d first = p13 - p15;
        ZvGeVector3d second = p14 - p15;
        ZvGePoint3d on = p10;
        if (dimensionType() == kAngular) { // between the lines 13-14 and 15-10; 16 is on the arc
            first = p14 - p13;
            second = p10 - p15;
            on = p16;
            if (!meet(p13, first, p15, second, center))
                return;
            // Each line counts towards the side that the arc is on.
            const ZvGeVector3d toArc = on - center;
            const double det = first.x * second.y - first.y * second.x;
            if ((toArc.x * second.y - toArc.y * second.x) * det < 0.0)
                first = -first;
            if ((first.x * toArc.y - first.y * toArc.x) * (first.x * second.y - first.y * second.x) < 0.0)
                second = -second;
        }
        const double radius = ZvGePoint3d(on.x, on.y, center.z).distanceTo(center);
        double start = normalized(std::atan2(first.y, first.x));
        double end = normalized(std::atan2(second.y, second.x));
        const double middle = normalized(std::atan2(on.y - center.y, on.x - center.x));
        if (normalized(middle - start) > sweepOf(start, end))
            std::swap(start, end);
        picture.measuredArc(center, radius, start, end);
        measured = sweepOf(start, end);
        const double half = start + 0.5 * measured;
        textMiddle = center + ZvGeVector3d(std::cos(half), std::sin(half), 0.0) * radius;
        along = ZvGeVector3d(-std::sin(half), std::cos(half), 0.0);
        break;
    }
    case kOrdinate: {
        const bool ofX = (m_type & kOrdinateOfX) != 0;
        picture.line(p13, p14);
        measured = ofX ? std::fabs(p13.x - p10.x) : std::fabs(p13.y - p10.y);
        textMiddle = p14;
        along = ofX ? ZvGeVector3d(0.0, 1.0, 0.0) : ZvGeVector3d(1.0, 0.0, 0.0);
        break;
    }
    default:
        return;
    }
    if (m_text == " ") // suppressed
        return;
    if (m_measurement > 0.0 && isUsable(m_measurement))
        measured = m_measurement;
    const bool angular = dimensionType() == kAngular || dimensionType() == kAngularThreePoint;
    ZvString text = angular ? formatted(measured * 180.0 / kPi, look.angleDecimals, look.trimZeros) + ZvString(wchar_t(0xB0))
                            : prefix + formatted(measured * look.factor, look.decimals, look.trimZeros);
    if (const int at = m_text.find(ZvString("<>")); at >= 0)
        text = m_text.left(at) + text + m_text.mid(at + 2);
    else if (!m_text.isEmpty())
        text = m_text;
    if (pointOf(11)) {
        textMiddle = flat(11);
    } else {
        const ZvGeVector3d up = ZvGeVector3d(-along.y, along.x, 0.0).normal();
        textMiddle = textMiddle + up * (look.gap + 0.5 * look.textHeight);
    }
    picture.text(text, textMiddle, along);
}
