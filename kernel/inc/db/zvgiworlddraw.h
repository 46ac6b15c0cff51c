// SPDX-License-Identifier: MIT
#ifndef ZVGIWORLDDRAW_H
#define ZVGIWORLDDRAW_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"

#include <vector>

/// Properties that what is drawn next has. They start as the entity's own; by layer and by block are resolved by the
/// one who draws.
struct ZV_EXPORT ZvGiTraits
{
    ZvCmColor color; ///< By layer and by block not resolved.
    ZvDbObjectId layer; ///< Layer of what is drawn.
    ZvDbObjectId linetype; ///< By layer and by block not resolved.
    ZvDb::LineWeight lineWeight = ZvDb::kLnWtByLayer; ///< Hundredths of a millimetre, or a negative value.
    double linetypeScale = 1.0; ///< The entity's own factor, beside the drawing's.
    ZvCmTransparency transparency; ///< By layer and by block not resolved.
};

/// One line of text.
struct ZV_EXPORT ZvGiText
{
    /// Where the position lies along the line of text.
    enum Horizontal { kLeft, kCenter, kRight, kAligned, kMiddle, kFit };
    /// Where the position lies across it.
    enum Vertical { kBaseline, kBottom, kVMiddle, kTop };
    ZvString text; ///< As in the drawing, control codes such as %%c included.
    ZvGePoint3d position; ///< The point that the alignment speaks of.
    ZvGePoint3d secondPosition; ///< End of the base line for kAligned and kFit.
    ZvGeVector3d direction {1, 0, 0}; ///< Of the base line, in world coordinates.
    ZvGeVector3d normal {0, 0, 1}; ///< Of the plane of the text.
    double height = 1.0; ///< Of capitals, in drawing units.
    double widthFactor = 1.0; ///< Width of a character as a part of its natural width.
    double oblique = 0.0; ///< Radians.
    ZvDbObjectId style; ///< The text style's record.
    /// Where \a position lies in the text.
    Horizontal horizontal = kLeft;
    Vertical vertical = kBaseline;
    bool backward = false; ///< Mirrored along the base line.
    bool upsideDown = false; ///< Mirrored across the base line.
};

/// A block of text with inline formatting.
struct ZV_EXPORT ZvGiMText
{
    ZvString contents; ///< With its formatting codes.
    ZvGePoint3d position; ///< The point that the attachment speaks of.
    ZvGeVector3d direction {1, 0, 0}; ///< Of the lines, in world coordinates.
    ZvGeVector3d normal {0, 0, 1}; ///< Of the plane of the text.
    double height = 1.0; ///< Of capitals, in drawing units.
    double width = 0.0; ///< Lines break here; 0 for no breaks.
    double lineSpacing = 1.0; ///< Factor on the natural distance, 5/3 of the height.
    bool exactSpacing = false; ///< The distance of lines does not grow with what stands in them.
    int attachment = 1; ///< 1 top left, 2 top centre, 3 top right, 4 to 6 middle, 7 to 9 bottom.
    ZvDbObjectId style; ///< The text style's record.
    bool backgroundFill = false; ///< An area behind the text.
    ZvCmColor backgroundColor; ///< Of that area.
    double backgroundScale = 1.5; ///< Size of that area as a part of the text height: 1 hugs the text.
};

/// A filled area.
struct ZV_EXPORT ZvGiFill
{
    std::vector<std::vector<ZvGePoint3d>> loops; ///< Closed; filled by the even-odd rule.
    /// Families of pattern lines; none for a solid fill.
    struct PatternLine
    {
        double angle = 0.0; ///< Radians.
        ZvGePoint2d base; ///< A point of one line, in the plane.
        ZvGeVector2d offset; ///< From one line of the family to the next, in the plane.
        std::vector<double> dashes; ///< Drawing units, below 0 for gaps.
    };
    std::vector<PatternLine> pattern; ///< Families of lines; empty for a solid fill.
    bool solid = true; ///< Filled all over.
    ZvGeVector3d normal {0, 0, 1}; ///< Of the plane of the area.
    double elevation = 0.0; ///< Distance of the plane from the origin, along the normal.
    bool gradient = false; ///< Filled with a run of the two colours.
    ZvCmColor gradientColors[2]; ///< From the first to the second.
    double gradientAngle = 0.0; ///< Radians.
    bool wipeout = false; ///< Filled with the background.
};

/// Receives what an entity looks like, in world coordinates (of the block, inside a block). Made by the one who draws,
/// who resolves colours, line types, weights and fonts. All operations use the traits at hand.
class ZV_EXPORT ZvGiWorldDraw
{
public:
    virtual ~ZvGiWorldDraw();
    /// Traits for what follows, until the entity ends.
    virtual ZvGiTraits &traits() = 0;
    /// Largest distance between a curve and its chords that still looks smooth, in drawing units.
    virtual double deviation() const = 0;
    /// True: stop as soon as possible.
    virtual bool isAborted() const { return false; }

    /// A line through \a count points.
    virtual void polyline(const ZvGePoint3d *points, int count, bool closed) = 0;
    /// A stroke with a width in drawing units at each end of each segment, filled.
    virtual void widePolyline(const ZvGePoint3d *points, const double *startWidths, const double *endWidths, int count, bool closed,
                              const ZvGeVector3d &normal) = 0;
    /// From \a start by \a sweep radians, counter-clockwise around the normal; a sweep of 2 pi is the full circle.
    virtual void arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &normal, double start, double sweep) = 0;
    /// Parameters in radians; a sweep of 2 pi is the full ellipse.
    virtual void ellipse(const ZvGePoint3d &center, const ZvGeVector3d &majorAxis, const ZvGeVector3d &minorAxis, double start,
                         double sweep) = 0;
    /// A point, shown as the drawing shows points.
    virtual void point(const ZvGePoint3d &position) = 0;
    /// Endless in one direction, or in both.
    virtual void ray(const ZvGePoint3d &base, const ZvGeVector3d &direction, bool both) = 0;
    /// A filled area.
    virtual void fill(const ZvGiFill &fill) = 0;
    /// One line of text.
    virtual void text(const ZvGiText &text) = 0;
    /// A block of text.
    virtual void mtext(const ZvGiMText &text) = 0;
    /// The image file, with its lower left corner and the vectors of its whole width and height. \a clip is a polygon in
    /// fractions of them, (0, 0) the lower left and (1, 1) the upper right corner; empty for the whole image.
    virtual void image(const ZvString &path, const ZvGePoint3d &origin, const ZvGeVector3d &u, const ZvGeVector3d &v,
                       const std::vector<ZvGePoint2d> &clip) = 0;
    /// The content of a block under a map from its coordinates; \a traits of the reference give "by block" its meaning.
    virtual void block(ZvDbObjectId block, const ZvGeMatrix3d &blockToWorld) = 0;
    /// The content of a viewport: model space seen through it.
    virtual void viewport(ZvDbObjectId viewport) = 0;
};

#endif
