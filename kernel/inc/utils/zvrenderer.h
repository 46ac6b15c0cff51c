// SPDX-License-Identifier: MIT
#ifndef ZVRENDERER_H
#define ZVRENDERER_H

#include "base/zvge3d.h"
#include "db/zvdbdatabase.h"

#include <functional>
#include <memory>
#include <vector>

class QPainter;

/// How one looks at a drawing: the plane through the target across the direction, its point `center` in the middle of
/// the picture.
struct ZV_EXPORT ZvGiView
{
    ZvGePoint3d target; ///< The point looked at, in world coordinates.
    ZvGeVector3d direction {0, 0, 1}; ///< From the target to the eye.
    double twist = 0.0; ///< Radians.
    ZvGePoint2d center; ///< In display coordinates.
    double height = 1.0; ///< Of what is seen, in drawing units.

    /// From world to display coordinates: x to the right, y up, z towards the eye.
    ZvGeMatrix3d worldToDisplay() const;
};

/// Draws a database. The one renderer behind the views, the exports, the entity pictures and the print preview.
///
/// It resolves by layer and by block, leaves out what is off, frozen or invisible, draws line types with their texts and
/// shapes, line weights, hatches, fonts, blocks, images and viewports.
class ZV_EXPORT ZvGiRenderer
{
public:
    /// How a drawing is drawn.
    struct Options
    {
        unsigned background = 0xFF21211E; ///< Packed, red in bits 0 to 7; decides white or black for colour 7.
        bool lineWeights = false; ///< Show weights; else every line is one pixel.
        double pixelsPerMillimetre = 96.0 / 25.4; ///< For line weights.
        bool plotting = false; ///< Leave out what is not plottable; colours as on paper.
        bool monochrome = false; ///< Every line and area black, or white on a dark background.
        bool antialiasing = true; ///< Smooth edges.
        bool highlight = false; ///< Draw all as selected.
        unsigned highlightColor = 0xFFE8A317; ///< Of what is drawn as selected; packed.
    };

    /// For drawings of \a database, which must outlive it; null draws nothing.
    explicit ZvGiRenderer(ZvDbDatabase *database);
    ~ZvGiRenderer();
    ZvGiRenderer(const ZvGiRenderer &) = delete;
    ZvGiRenderer &operator=(const ZvGiRenderer &) = delete;

    /// Draws \a block as \a view sees it into a picture of \a width by \a height device pixels whose upper left corner
    /// is the painter's origin. Only what is in the clip region of the picture is visited. \a keepGoing is asked now and
    /// then; false stops and gives false back: the picture is not complete.
    bool draw(QPainter &painter, const Options &options, ZvDbObjectId block, const ZvGiView &view, double width, double height,
              const std::function<bool()> &keepGoing = {});
    /// The same for some entities of the drawing.
    bool drawEntities(QPainter &painter, const Options &options, const std::vector<ZvDbObjectId> &entities,
                      const ZvGiView &view, double width, double height, const std::function<bool()> &keepGoing = {});

    /// Slices for a view that must stay responsive: draws entities of \a block from number \a first on until \a budget
    /// milliseconds are used; the number to go on with, or -1 at the end.
    int drawSlice(QPainter &painter, const Options &options, ZvDbObjectId block, const ZvGiView &view, double width,
                  double height, int first, int budget);

    /// What is in a rectangle of the view, topmost first. \a inside takes only what lies in it wholly.
    void pick(ZvDbObjectId block, const ZvGiView &view, const ZvGePoint2d &displayMinimum, const ZvGePoint2d &displayMaximum,
              bool inside, std::vector<ZvDbObjectId> &ids);
    /// Box of a block in display coordinates of the view; visible entities only.
    ZvGeExtents2d displayExtents(ZvDbObjectId block, const ZvGiView &view);
    /// Entities visited by the last drawing: those that could be in the picture.
    int lastVisited() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Exports the space at hand to a picture (PNG), PDF or SVG by the ending. \a width and \a height in pixels for PNG,
/// 0 for a size that fits; PDF and SVG take the layout's paper, or A3 across in model space.
ZV_EXPORT Zv::ErrorStatus zvgiExport(ZvDbDatabase *database, const ZvString &path, ZvString &message, int width = 0, int height = 0,
                                     ZvDbProgress *progress = nullptr);

#endif
