// SPDX-License-Identifier: MIT
#ifndef GI_STYLES_H
#define GI_STYLES_H

#include "base/zvcmcolor.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbrecords.h"
#include "gi_shapes.h"

#include <QRgb>

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

/// What the renderer needs of a layer.
struct GiLayer
{
    ZvCmColor color;
    ZvDbObjectId linetype;
    ZvDb::LineWeight lineWeight = ZvDb::kLnWtByLwDefault;
    int alpha = 255;
    bool isOff = false;
    bool isFrozen = false;
    bool isPlottable = true;
};

/// A line type, in drawing units.
struct GiLinetype
{
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes; ///< None for a continuous line.
    double length = 0.0;
    bool isComplex = false; ///< Some element carries a text or a shape.
};

/// A line type at a size: what a pen needs.
struct GiDashes
{
    std::vector<double> lengths; ///< Device units, dash and gap in turn, a dash first. None: draw continuous.
    double start = 0.0; ///< How far into the lengths the pattern begins.
    double total = 0.0;
};

/// A text style, as far as the renderer follows it.
struct GiTextStyle
{
    ZvString typeface;
    ZvString fontFile;
    ZvString bigFontFile;
    bool bold = false;
    bool italic = false;
    bool vertical = false;
    double widthFactor = 1.0;
    double oblique = 0.0; ///< Radians.
    double fixedHeight = 0.0;
};

/// Layers, line types and text styles of a drawing, read when first asked for and kept until their table changes.
class GiStyles
{
public:
    explicit GiStyles(ZvDbDatabase *database);

    /// Forgets what has changed since. To be called before each drawing.
    void refresh();
    const GiLayer &layer(ZvDbObjectId id);
    const GiLinetype &linetype(ZvDbObjectId id);
    const GiTextStyle &textStyle(ZvDbObjectId id);
    /// The shape of that number in the file that \a id names: the file's own or one of the usual. Null for none.
    const GiShape *shape(ZvDbObjectId id, int number);
    /// The pattern of a line type where a drawing unit is \a scale device units. Null where the line is to be drawn
    /// continuous: no pattern, or one too fine to be seen. \a dot is the length of a dot, \a finest the shortest length
    /// that can be seen, both in device units.
    const GiDashes *dashes(ZvDbObjectId linetype, double scale, double dot, double finest);

private:
    struct DashesKey
    {
        std::uint32_t linetype;
        float scale;
        float dot;
        bool operator<(const DashesKey &o) const
        {
            return linetype != o.linetype ? linetype < o.linetype : scale != o.scale ? scale < o.scale : dot < o.dot;
        }
    };
    ZvDbDatabase *m_database;
    std::uint64_t m_layerStamp = 0;
    std::uint64_t m_linetypeStamp = 0;
    std::uint64_t m_textStyleStamp = 0;
    std::unordered_map<std::uint32_t, GiLayer> m_layers;
    std::unordered_map<std::uint32_t, GiLinetype> m_linetypes;
    std::unordered_map<std::uint32_t, GiTextStyle> m_textStyles;
    std::unordered_map<std::uint32_t, std::shared_ptr<const GiShapeFile>> m_shapeFiles; // null for those not found
    std::map<DashesKey, GiDashes> m_dashes;
};

#endif
