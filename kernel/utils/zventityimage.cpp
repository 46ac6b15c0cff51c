// SPDX-License-Identifier: MIT
#include "utils/zventityimage.h"

#include "db/zvdbentities.h"
#include "render/gi_drawer.h"
#include "render/gi_painter_sink.h"
#include "utils/zvrenderer.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstring>
#include <list>
#include <unordered_map>

namespace {

constexpr int kStandardSize = 100;
constexpr int kMaxSize = 16384;
constexpr std::size_t kMaxKeptBytes = 32 << 20;
constexpr double kMargin = 0.05; ///< Of the picture's size, on each side, where there is height and width to fit.

std::uint64_t g_drawn = 0;
unsigned g_displayBackground = 0x0021211E;

/// Gathers values into one number.
class Fingerprint
{
public:
    void add(std::uint64_t value)
    {
        m_value = (m_value ^ value) * 0x9E3779B97F4A7C15ull;
        m_value ^= m_value >> 29;
    }
    void add(double value)
    {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        add(bits);
    }
    void add(const ZvString &text) { add(std::uint64_t(text.hash())); }
    std::uint64_t value() const { return m_value; }

private:
    std::uint64_t m_value = 0;
};

/// What decides a picture of one plain line, which is what lists of line types are full of. Line types that are drawn
/// alike share a picture, whatever their drawings.
struct PictureKey
{
    std::uint64_t pattern = 0; ///< Fingerprint of all that is drawn of the line type.
    int width = 0;
    int height = 0;
    std::uint32_t background = 0;
    std::uint32_t color = 0;
    int alpha = 0;
    int weight = 0;
    bool showsWeights = false;
    double scale = 0.0;
    double alongX = 0.0; ///< From the line's start to its end.
    double alongY = 0.0;

    bool operator==(const PictureKey &o) const
    {
        return pattern == o.pattern && width == o.width && height == o.height && background == o.background
            && color == o.color && alpha == o.alpha && weight == o.weight && showsWeights == o.showsWeights
            && scale == o.scale && alongX == o.alongX && alongY == o.alongY;
    }
};

struct PictureKeyHash
{
    std::size_t operator()(const PictureKey &key) const
    {
        Fingerprint print;
        print.add(key.pattern);
        print.add(std::uint64_t(key.width) << 32 | std::uint64_t(key.height));
        print.add(std::uint64_t(key.background) << 32 | key.color);
        print.add(key.scale);
        print.add(key.alongX);
        return print.value();
    }
};

/// Pictures that were drawn last, the most recently used first.
class KeptPictures
{
public:
    ZvGiRasterImagePtr find(const PictureKey &key)
    {
        const auto found = m_byKey.find(key);
        if (found == m_byKey.end())
            return nullptr;
        m_pictures.splice(m_pictures.begin(), m_pictures, found->second);
        return found->second->second;
    }
    void add(const PictureKey &key, const ZvGiRasterImagePtr &picture)
    {
        m_pictures.emplace_front(key, picture);
        m_byKey[key] = m_pictures.begin();
        m_bytes += bytesOf(*picture);
        while (m_bytes > kMaxKeptBytes) {
            m_bytes -= bytesOf(*m_pictures.back().second);
            m_byKey.erase(m_pictures.back().first);
            m_pictures.pop_back();
        }
    }

private:
    static std::size_t bytesOf(const ZvGiRasterImage &picture)
    {
        return std::size_t(picture.scanLineSize()) * picture.pixelHeight();
    }

    std::list<std::pair<PictureKey, ZvGiRasterImagePtr>> m_pictures;
    std::unordered_map<PictureKey, std::list<std::pair<PictureKey, ZvGiRasterImagePtr>>::iterator, PictureKeyHash>
        m_byKey;
    std::size_t m_bytes = 0;
};

KeptPictures &keptPictures()
{
    static KeptPictures pictures;
    return pictures;
}

/// All that is drawn of a line type. An edit gives another fingerprint, and taking it back the first one again.
std::uint64_t patternOf(const ZvDbDatabase *database, ZvDbObjectId linetype)
{
    Fingerprint print;
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(linetype, ZvDb::kForRead);
    if (!record)
        return print.value(); // drawn as a continuous line
    for (int i = 0; i < record->numDashes(); ++i) {
        const ZvDbLinetypeTableRecord::Dash &dash = record->dashAt(i);
        print.add(dash.length);
        print.add(std::uint64_t(dash.flags));
        if (dash.flags == 0)
            continue;
        print.add(std::uint64_t(dash.shapeNumber));
        for (double value : {dash.scale, dash.rotation, dash.offsetX, dash.offsetY})
            print.add(value);
        print.add(dash.text);
        const ZvDbObjectPointer<ZvDbTextStyleTableRecord> style(dash.styleId, ZvDb::kForRead);
        if (!style)
            continue;
        for (const ZvString &name : {style->typeface(), style->fontFileName(), style->bigFontFileName()})
            print.add(name);
        for (double value : {style->textSize(), style->xScale(), style->obliquingAngle()})
            print.add(value);
        print.add(std::uint64_t(style->flags() << 2 | int(style->isBold()) << 1 | int(style->isItalic())));
        if (style->isShapeFile()) {
            const GiFoundShapeFile file = giFindShapeFile(*database, style->fontFileName());
            print.add(std::uint64_t(qHash(file.path)));
            print.add(std::uint64_t(file.written.toMSecsSinceEpoch()));
            print.add(std::uint64_t(file.size));
        }
    }
    return print.value();
}

/// True when the picture hangs on nothing but the key: one level line of no database, with properties of its own.
bool describeLine(ZvDbDatabase *database, ZvDbEntity &entity, PictureKey &key)
{
    if (entity.database() || !entity.isKindOf(ZvDbLine::desc()))
        return false;
    const auto &line = static_cast<const ZvDbLine &>(entity);
    const ZvGeVector3d along = line.endPoint() - line.startPoint();
    // What is by layer hangs on the layer too, which is left to drawing anew; a line of no layer has plain defaults.
    if (along.z != 0.0 || !entity.layerId().isNull() || entity.visibility() != ZvDb::kVisible)
        return false;
    const ZvDbObjectId linetype = entity.linetypeId();
    const bool isDefault = linetype == database->byLayerLinetype() || linetype == database->byBlockLinetype();
    key.alpha = entity.transparency().method() == ZvCmTransparency::kByAlpha ? entity.transparency().alpha() : -1;
    key.pattern = patternOf(database, isDefault ? ZvDbObjectId() : linetype);
    key.color = entity.color().color();
    key.weight = entity.lineWeight();
    key.scale = entity.linetypeScale() * database->celtscale();
    key.alongX = along.x;
    key.alongY = along.y;
    key.showsWeights = database->lineWeightDisplay();
    return true;
}

ZvGiRasterImagePtr wrap(const QImage &image)
{
    return zvutImageWrap(image.constBits(), std::uint32_t(image.width()), std::uint32_t(image.height()), 32);
}

ZvGeExtents3d extentsOf(ZvArrayEx<ZvSmartPtr<ZvDbEntity>> &entities, GiStyles &styles)
{
    ZvGeExtents3d all;
    for (const ZvSmartPtr<ZvDbEntity> &entity : entities) {
        ZvGeExtents3d one;
        if (entity && giExtents(*entity, styles, one))
            all.add(one);
    }
    return all;
}

void drawEntities(QImage &image, unsigned background, ZvDbDatabase *database,
                  ZvArrayEx<ZvSmartPtr<ZvDbEntity>> &entities)
{
    GiStyles styles(database);
    const ZvGeExtents3d extents = extentsOf(entities, styles);
    if (extents.isEmpty())
        return;
    const double width = image.width();
    const double height = image.height();
    const double spanX = extents.maximum.x - extents.minimum.x;
    const double spanY = extents.maximum.y - extents.minimum.y;
    // What is as good as a line in one direction is fitted in the other alone, and may use the whole of it.
    const double scaleX = spanX > 0.0 ? width * (1.0 - 2.0 * kMargin) / spanX : 0.0;
    const double scaleY = spanY > 0.0 ? height * (1.0 - 2.0 * kMargin) / spanY : 0.0;
    double scale = scaleX > 0.0 && scaleY > 0.0 ? std::min(scaleX, scaleY) : std::max(scaleX, scaleY);
    if (!(scale > 0.0) || !std::isfinite(scale))
        scale = 1.0;
    ZvGiView view;
    view.target
        = ZvGePoint3d((extents.minimum.x + extents.maximum.x) / 2, (extents.minimum.y + extents.maximum.y) / 2, 0.0);
    view.height = height / scale;
    // A level line comes to lie on the middle of a row of pixels: it would be blurred between two.
    if (spanY == 0.0 && image.height() % 2 == 0)
        view.center.y = 0.5 / scale;
    if (spanX == 0.0 && image.width() % 2 == 0)
        view.center.x = 0.5 / scale;

    ZvGiRenderer::Options options;
    options.background = background;
    options.lineWeights = database->lineWeightDisplay();
    QPainter painter(&image);
    GiPainterSink sink(painter, true);
    GiTarget target;
    target.sink = &sink;
    target.clip = QRectF(0, 0, width, height);
    target.unitsPerMillimetre = options.pixelsPerMillimetre;
    GiBlocks blocks(database, styles);
    GiImages images;
    GiDrawer drawer(database, styles, blocks, images, options, target);
    drawer.setView(view, width, height);
    for (const ZvSmartPtr<ZvDbEntity> &entity : entities) {
        if (!entity)
            continue;
        // An entity of no drawing is shown as it would be made: with the scale for new entities, and without the one
        // of the drawing, which would make the lists of line types useless in drawings of a large scale.
        drawer.setLinetypeScale(entity->database() ? database->ltscale() : database->celtscale());
        drawer.drawEntity(*entity);
    }
}

} // namespace

ZvSmartPtr<ZvGiRasterImage> zvsiutCreateEntityImage(ZvDbDatabasePtr database,
                                                    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> &entities, ZvJsonPtr options)
{
    int width = kStandardSize;
    int height = kStandardSize;
    int packedBackground = -1;
    if (options) {
        options->GetDataI("width", width);
        options->GetDataI("height", height);
        options->GetDataI("background", packedBackground);
    }
    if (width < 1 || height < 1 || width > kMaxSize || height > kMaxSize)
        return nullptr;
    const auto background = std::uint32_t(packedBackground);

    PictureKey key;
    const bool isKept = database && entities.length() == 1 && entities[0] && zvcmAcadPalette(background)
        && describeLine(database, *entities[0], key);
    if (isKept) {
        key.width = width;
        key.height = height;
        key.background = background;
        if (ZvGiRasterImagePtr kept = keptPictures().find(key))
            return kept;
    }
    QImage image(width, height, QImage::Format_RGBA8888_Premultiplied);
    if (image.isNull())
        return nullptr; // no memory for one so large
    image.fill(QColor(int(background & 0xFF), int((background >> 8) & 0xFF), int((background >> 16) & 0xFF)));
    if (database && !entities.isEmpty())
        drawEntities(image, background, database, entities);
    ++g_drawn;
    const ZvGiRasterImagePtr picture = wrap(image);
    if (isKept && picture)
        keptPictures().add(key, picture);
    return picture;
}

std::uint64_t zvsiutEntityImagesDrawn()
{
    return g_drawn;
}

const std::uint32_t *zvsiutCurPalette()
{
    if (const std::uint32_t *palette = zvcmAcadPalette(g_displayBackground))
        return palette;
    static const std::uint32_t none[256] = {};
    return none;
}

void zvsiutSetDisplayBackground(unsigned background)
{
    g_displayBackground = background & 0x00FFFFFFu;
}

unsigned zvsiutDisplayBackground()
{
    return g_displayBackground;
}
